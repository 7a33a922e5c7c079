#!/usr/bin/env bash
# make demo: installs what is missing (the sample photograph's package too),
# builds the demo host and the dialogs, then
#  - with a display (DISPLAY set): starts qvdemo.exe under Wine on the sample
#    photograph;
#  - without one: runs the tour in a virtual X server, which opens every
#    dialog the library exports, and prints the path of its index.html.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh demo
bash scripts/build.sh windows --target qvdemo
source scripts/wine-env.sh
qv_wine_prefix
if [ -n "${DISPLAY:-}" ]; then
  cd "$QV_BIN"
  exec wine64 qvdemo.exe "$@"
fi
out=$QV_ROOT/build/demo/tour
rm -rf "$out"
mkdir -p "$out"
# Wine maps / to drive Z:. No Wine program may run before xvfb-run here: the
# first one starts the session's desktop on whatever display it has.
winout="Z:${out//\//\\}"
# The virtual X server runs no window manager, so the tour's windows are made
# unmanaged: Wine then draws their frames itself (the screenshots show them)
# and does not wait for a manager that never answers. The setting applies to
# qvdemo.exe only and is removed again, so a later run on a real display is
# managed as usual.
key='HKCU\Software\Wine\AppDefaults\qvdemo.exe\X11 Driver'
rc=0
( cd "$QV_BIN" && xvfb-run -a -s "-screen 0 1280x1024x24" bash -c '
    wine64 reg add "$1" /v Managed /d N /f >/dev/null 2>&1
    wine64 qvdemo.exe --tour "$2"; status=$?
    wine64 reg delete "$1" /v Managed /f >/dev/null 2>&1
    exit $status' _ "$key" "$winout" ) || rc=$?
if [ -f "$out/index.html" ]; then
  echo "tour: $out/index.html"
else
  echo "the tour wrote no index.html (exit $rc)" >&2
  [ "$rc" -ne 0 ] || rc=1
fi
exit "$rc"
