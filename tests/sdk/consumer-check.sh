#!/usr/bin/env bash
# The SDK as a host developer receives it, checked from the outside (run by the Wine suite, inside its X server):
#  1. every export of the three DLLs is in both kinds of import library (MinGW .dll.a and MSVC .lib);
#  2. the sample CMake host configures with find_package(Quorvelix CONFIG) against the unpacked SDK alone,
#     builds with MinGW, runs under Wine and gets OK back from a real dialog;
#  3. a host compiled for the MSVC ABI and linked by lld-link in MSVC mode against lib/msvc runs under Wine.
set -euo pipefail
source "$(dirname "$0")/../../scripts/wine-env.sh"
cd "$QV_ROOT"
bash scripts/sdk.sh
sdk=$QV_ROOT/dist/quorvelix-sdk-$(cat build/win/quorvelix-version.txt)-x64
work=$QV_ROOT/build/win/sdk-check
rm -rf "$work" && mkdir -p "$work"
fail() { echo "FAILED: $*"; exit 1; }

echo "-- exports in both import libraries"
for dll in Qvkrnx Qvdlgkrnx Qvdlgclrx; do
  exported=$(x86_64-w64-mingw32-objdump -p "$sdk/bin/$dll.dll" | sed -n '/Ordinal\/Name Pointer/,/^$/p' |
    grep '^[[:space:]]*\[ *[0-9]' | awk '{print $NF}' | sort)
  [ -n "$exported" ] || fail "$dll exports nothing"
  for lib in "$sdk/lib/mingw/$dll.dll.a" "$sdk/lib/msvc/$dll.lib"; do
    imported=$(llvm-nm "$lib" 2>/dev/null | awk '$2 == "T" || $2 == "I" {print $3}' | grep -v '^__' | sort -u)
    missing=$(comm -23 <(echo "$exported") <(echo "$imported"))
    [ -z "$missing" ] || fail "$(basename "$lib") lacks: $missing"
  done
  echo "   $dll: $(echo "$exported" | wc -l) exports in .dll.a and .lib"
done

echo "-- sample CMake host from the unpacked SDK"
cmake -S "$sdk/samples/CMakeHost" -B "$work/cmake-host" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_TOOLCHAIN_FILE="$QV_ROOT/cmake/mingw-w64-x86_64.cmake" -DCMAKE_PREFIX_PATH="$sdk" >"$work/configure.log"
cmake --build "$work/cmake-host" >"$work/build.log"
out=$(cd "$work/cmake-host" && timeout 120 wine64 cmake_host.exe /ok-after 1500 2>/dev/null | tr -d '\r')
echo "   $out"
[[ "$out" == *"returned 100 (brightness 200)"* ]] || fail "the CMake host did not get OK from the dialog"

echo "-- MSVC-mode host linked by lld-link against lib/msvc"
printf 'LIBRARY kernel32.dll\nEXPORTS\n  ExitProcess\n' >"$work/kernel32.def"
llvm-dlltool -m i386:x86-64 -d "$work/kernel32.def" -l "$work/kernel32.lib"
# The object is compiled against MinGW's Windows headers (the only ones on this machine; they do not build for the
# MSVC target) to the same x64 C calling convention, then linked exactly as an MSVC project links.
clang --target=x86_64-w64-windows-gnu -O1 -c tests/sdk/MsvcModeHost.c -o "$work/msvc-host.obj" -I "$sdk/include"
lld-link /nologo /entry:HostEntry /subsystem:console /nodefaultlib /out:"$work/msvc-host.exe" "$work/msvc-host.obj" \
  "$sdk/lib/msvc/Qvkrnx.lib" "$sdk/lib/msvc/Qvdlgkrnx.lib" "$sdk/lib/msvc/Qvdlgclrx.lib" "$work/kernel32.lib"
cp "$sdk"/bin/*.dll "$work/"
rc=0; (cd "$work" && timeout 60 wine64 msvc-host.exe) || rc=$?
[ "$rc" -eq 0 ] || fail "the MSVC-mode host exited with $rc"
echo "   msvc-host.exe: exit 0"
echo "SDK consumer checks passed"
