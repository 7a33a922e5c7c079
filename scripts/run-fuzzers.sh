#!/usr/bin/env bash
# Builds the fuzz configuration and runs every file-reader fuzzer listed in build/fuzz/fuzzers.txt for a
# bounded time (QV_FUZZ_SECONDS, 20 by default), starting from its seed files and the corpus earlier runs
# kept under build/fuzz/corpus. A crash, a read outside a buffer, a leak or undefined behaviour stops that
# fuzzer; the input that did it lands in build/fuzz/crashes and the script fails.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${QV_FUZZ_SECONDS:-20}
bash scripts/build.sh fuzz --target qv_fuzzers
mkdir -p build/fuzz/crashes build/fuzz/logs
status=0
while read -r exe seeds; do
  [ -n "$exe" ] || continue
  name=$(basename "$exe")
  corpus=build/fuzz/corpus/$name
  log=build/fuzz/logs/$name.log
  mkdir -p "$corpus"
  if "$exe" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
       -artifact_prefix="build/fuzz/crashes/$name-" "$corpus" "$seeds" >"$log" 2>&1; then
    echo "$name: $(grep -o 'Done [0-9]* runs in [0-9]* second(s)' "$log" || echo done), no failure"
  else
    echo "$name: FAILED (see $log)"
    tail -n 30 "$log"
    status=1
  fi
done < build/fuzz/fuzzers.txt
exit $status
