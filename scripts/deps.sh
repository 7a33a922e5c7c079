#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, without asking,
# and only when one of them is missing (so a warm machine pays one dpkg query).
set -euo pipefail
# Usage: deps.sh [demo] (the list covers the demo too). python3-skimage ships the sample photograph of the demo
# and of the quantizer's quality test; libmagick++-dev and libimagequant-dev are
# only the color-reduction benchmark's yardsticks.
packages=(cmake ninja-build g++ googletest libgtest-dev libbenchmark-dev libstb-dev
          g++-mingw-w64-x86-64-posix wine64 xvfb xauth liblcms2-dev libopencv-dev
          clang libclang-rt-14-dev llvm lld zip python3-skimage libmagick++-dev libimagequant-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -q
$sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
