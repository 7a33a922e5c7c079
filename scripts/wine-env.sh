# Sourced by the scripts that run Windows programs: a private Wine prefix inside
# the build tree, no Mono or Gecko installer prompts, quiet Wine logging.
QV_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export PATH=/usr/lib/wine:$PATH
export WINEPREFIX=${WINEPREFIX:-$QV_ROOT/build/win/wineprefix}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-"mscoree=;mshtml="}
export WINEARCH=win64
QV_BIN=$QV_ROOT/build/win/bin

# Creates the prefix on first use (about 20 seconds) and applies our settings
# once (a marker file records it), then waits for the wineserver so that the
# first test does not race the prefix set-up.
#  - no crash dialog: a crashing test must fail, not wait for someone to close it;
#  - unmanaged windows: under xvfb there is no window manager, and a managed
#    Wine window waits for one on every close (about 2 s) and gets no frame in
#    screenshots.
qv_wine_prefix() {
  local marker=$WINEPREFIX/.qv-settings-1
  [ -f "$marker" ] && return 0
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    echo "creating Wine prefix in $WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    wine64 wineboot -i >/dev/null 2>&1 || true
  fi
  wine64 reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1 || true
  wine64 reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1 || true
  wineserver -w
  touch "$marker"
}
