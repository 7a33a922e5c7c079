#!/usr/bin/env bash
# make demo (interim): builds the Windows configuration, then opens the sample
# dialog under the dialog driver inside a virtual X server, lets the driver set
# a few values and saves the dialog's screenshot to build/demo/sample.png.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
bash scripts/build.sh windows
source scripts/wine-env.sh
qv_wine_prefix
mkdir -p build/demo
# Wine maps / to drive Z:. No Wine program may run before xvfb-run here: the
# first one starts the session's desktop on whatever display it has.
png="Z:${QV_ROOT//\//\\}\\build\\demo\\sample.png"
# The virtual X server runs no window manager, so the tour's windows are made
# unmanaged: Wine then draws their frames itself and does not wait for a
# manager that never answers. The setting applies to this one program only.
key='HKCU\Software\Wine\AppDefaults\qvsampletour.exe\X11 Driver'
( cd "$QV_BIN" && xvfb-run -a -s "-screen 0 1280x1024x24" \
    bash -c 'wine64 reg add "$1" /v Managed /d N /f >/dev/null 2>&1; wine64 qvsampletour.exe "$2"' _ "$key" "$png" )
echo "screenshot: $QV_ROOT/build/demo/sample.png"
