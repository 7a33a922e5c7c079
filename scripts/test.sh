#!/usr/bin/env bash
# make test: install what is missing, build the native, sanitizer and Windows
# configurations, run the native tests (plain and sanitized), fuzz each file
# reader for a bounded time, then the Wine tests under a virtual X server.
# Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
status=0

echo "== native build"
bash scripts/build.sh native
echo "== native tests"
ctest --test-dir build/native --output-on-failure -j 2 || status=1

echo "== sanitizer build"
bash scripts/build.sh asan
echo "== native tests under AddressSanitizer and UndefinedBehaviorSanitizer"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
  ctest --test-dir build/asan --output-on-failure -j 2 || status=1

echo "== file readers under libFuzzer"
bash scripts/run-fuzzers.sh || status=1

echo "== windows build"
bash scripts/build.sh windows
echo "== wine tests"
xvfb-run -a -s "-screen 0 1600x1200x24" bash scripts/run-wine-tests.sh || status=1

exit $status
