#!/usr/bin/env bash
# make sdk: builds the Windows configuration and lays out the SDK a host developer receives,
#   dist/quorvelix-sdk-<version>-x64/   include/qv, bin (DLLs and their .debug symbol files), lib/mingw (.dll.a),
#                                        lib/msvc (.lib), cmake (find_package(Quorvelix CONFIG)), samples, README.md
#   dist/quorvelix-sdk-<version>-x64.zip the same folder zipped.
# The version is the project's (CMakeLists.txt), the one the DLLs' version resources carry.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
bash scripts/build.sh windows --target Qvkrnx Qvdlgkrnx Qvdlgclrx

build=build/win
version=$(cat $build/quorvelix-version.txt)
name=quorvelix-sdk-$version-x64
out=dist/$name
rm -rf "$out" "dist/$name.zip"
mkdir -p "$out"/{bin,lib/mingw,lib/msvc,cmake,samples}

cp -r include "$out/"
cp sdk/README.md "$out/README.md"
cp -r sdk/samples/. "$out/samples/"
cp sdk/cmake/QuorvelixConfig.cmake "$out/cmake/"
sed -e "s/@QV_VERSION@/$version/" -e "s/@QV_VERSION_MAJOR@/${version%%.*}/" \
  sdk/cmake/QuorvelixConfigVersion.cmake.in >"$out/cmake/QuorvelixConfigVersion.cmake"

# Each DLL ships stripped, with its debug information beside it in a .debug file that the DLL names
# (a debug link), so a debugger that reads DWARF finds the symbols.
defs=(src/imaging/Qvkrnx.def src/dlgkernel/Qvdlgkrnx.def src/dlgclr/Qvdlgclrx.def)
for def in "${defs[@]}"; do
  dll=$(basename "$def" .def)
  [ -f "$build/$def" ] && def=$build/$def   # the kernel's .def is generated from its export lists
  x86_64-w64-mingw32-objcopy --only-keep-debug "$build/bin/$dll.dll" "$out/bin/$dll.dll.debug"
  x86_64-w64-mingw32-objcopy --strip-debug --add-gnu-debuglink="$out/bin/$dll.dll.debug" \
    "$build/bin/$dll.dll" "$out/bin/$dll.dll"
  cp "$build/lib/$dll.dll.a" "$out/lib/mingw/"
  llvm-dlltool -m i386:x86-64 -d "$def" -D "$dll.dll" -l "$out/lib/msvc/$dll.lib"
done

(cd dist && rm -f "$name.zip" && zip -qr "$name.zip" "$name")
echo "$out"
echo "dist/$name.zip"
