#!/usr/bin/env bash
# Runs every Wine test executable listed by the Windows build, inside the
# X server that xvfb-run started for us, and prints one summary line for the
# whole suite. A test binary that crashes or hangs counts as a failure.
set -uo pipefail
source "$(dirname "$0")/wine-env.sh"
qv_wine_prefix
list=$QV_ROOT/build/win/wine-tests.txt
logdir=$QV_ROOT/build/win/logs
mkdir -p "$logdir"
passed=0; failed=0; broken=()
while read -r exe; do
  [ -n "$exe" ] || continue
  name=$(basename "$exe" .exe)
  log=$logdir/$name.log
  echo "== $name"
  if [[ "$exe" == *.sh ]]; then
    # A script check counts as one test.
    timeout 900 bash "$exe" >"$log" 2>&1
    rc=$?
    if [ $rc -eq 0 ]; then passed=$((passed + 1)); echo "   passed"; else
      failed=$((failed + 1)); broken+=("$name (exit $rc, see $log)"); fi
    continue
  fi
  ( cd "$QV_BIN" && timeout 600 wine64 "$exe" "$@" ) >"$log" 2>&1
  rc=$?
  grep -E '^\[(  PASSED  |  FAILED  |==========)\]|^\[  FAILED  \]' "$log" | sed 's/^/   /'
  p=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$log" | tail -1)
  f=$(sed -n 's/^\[  FAILED  \] \([0-9]*\) test.*/\1/p' "$log" | tail -1)
  passed=$((passed + ${p:-0})); failed=$((failed + ${f:-0}))
  if [ $rc -ne 0 ] && [ -z "$f" ]; then
    failed=$((failed + 1)); broken+=("$name (exit $rc, see $log)")
  fi
done < "$list"
wineserver -w 2>/dev/null || true
for b in "${broken[@]}"; do echo "broken: $b"; done
echo "Wine suite: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
