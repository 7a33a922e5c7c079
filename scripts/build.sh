#!/usr/bin/env bash
# Configures (once) and builds one of the two configurations:
#   native   - the portable libraries, native tests and benchmarks (Linux g++)
#   asan     - the same with AddressSanitizer and UndefinedBehaviorSanitizer
#   windows  - the DLLs, the demo and the Wine test executables (MinGW-w64)
#   fuzz     - clang with libFuzzer and the sanitizers, for the file-reader fuzzers (target qv_fuzzers)
set -euo pipefail
cd "$(dirname "$0")/.."
config=${1:?native, asan or windows}
shift || true
jobs=${QV_JOBS:-2}
case "$config" in
  native)  dir=build/native; args=(-DCMAKE_BUILD_TYPE=Release) ;;
  asan)    dir=build/asan;   args=(-DCMAKE_BUILD_TYPE=Debug -DQV_SANITIZE=ON -DQV_BENCHMARKS=OFF) ;;
  fuzz)    dir=build/fuzz;   args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DQV_FUZZ=ON -DQV_BENCHMARKS=OFF
                                 -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++) ;;
  windows) dir=build/win;    args=(-DCMAKE_BUILD_TYPE=Release -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake) ;;
  *) echo "unknown configuration $config" >&2; exit 2 ;;
esac
# ccache, when installed, makes rebuilds in a second checkout cheap; paths are
# taken relative to the checkout so two checkouts share the cache.
if command -v ccache >/dev/null; then
  args+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
fi
if [ ! -f "$dir/build.ninja" ]; then
  cmake -S . -B "$dir" -G Ninja "${args[@]}" >/dev/null
fi
cmake --build "$dir" -j "$jobs" "$@"
