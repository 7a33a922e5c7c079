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
  # The prefix keeps Wine's windows unmanaged for the virtual X server of the
  # tests; on a real desktop the window manager should manage the demo.
  wine64 reg add 'HKCU\Software\Wine\AppDefaults\qvdemo.exe\X11 Driver' /v Managed /d Y /f >/dev/null 2>&1 || true
  cd "$QV_BIN"
  exec wine64 qvdemo.exe "$@"
fi
out=$QV_ROOT/build/demo/tour
rm -rf "$out"
mkdir -p "$out"
# Wine maps / to drive Z:. No Wine program may run before xvfb-run here: the
# first one starts the session's desktop on whatever display it has.
winout="Z:${out//\//\\}"
# The prefix's windows are unmanaged (see wine-env.sh), so the screenshots
# show Wine's own frames and no window waits for a manager that is not there.
# The German tour goes into de/ beside the English one.
rc=0
( cd "$QV_BIN" && xvfb-run -a -s "-screen 0 1280x1024x24" sh -c \
  "wine64 qvdemo.exe --tour '$winout' && wine64 qvdemo.exe --lang de --tour '$winout\\de'" ) || rc=$?
if [ -f "$out/index.html" ] && [ -f "$out/de/index.html" ]; then
  echo "tour: $out/index.html"
  echo "German tour: $out/de/index.html"
else
  echo "the tour wrote no index.html (exit $rc)" >&2
  [ "$rc" -ne 0 ] || rc=1
fi
exit "$rc"
