#!/usr/bin/env bash
# Installs what building or testing needs on Debian 12, by package name; does nothing
# for what is there already.
#   tools/install-packages.sh build|test|targets|farm
# "test" is what the tests of this machine's own build need on top of "build"; "targets"
# adds the compilers and emulators of the others: 32-bit, Windows, aarch64. "farm"
# is what tools/slurm-test.sh and tools/speed-test.sh run.
set -euo pipefail

build=(g++ cmake ninja-build pkg-config libopenimageio-dev libopenexr-dev libcli11-dev nlohmann-json3-dev
       libcairo2-dev libssl-dev fonts-dejavu-core)
test=(clang llvm libclang-rt-14-dev clang-format g++-12-multilib binutils
      libgtest-dev libbenchmark-dev
      openimageio-tools imagemagick ffmpeg valgrind
      opencolorio-tools libopencolorio-dev libxml2-utils libplist-utils
      zsh groff-base)
# Not g++-multilib: it refuses to be installed beside a cross compiler, over the one link
# that it brings (/usr/include/asm). cmake/toolchains/m32.cmake does without the link.
targets=(g++-12-multilib g++-aarch64-linux-gnu libc6-dev-arm64-cross g++-mingw-w64-x86-64-posix
         googletest wine wine64 qemu-user icoutils zip)
farm=(slurm-wlm munge python3-minimal bc ffmpeg openimageio-tools)

case "${1:-}" in
  build)   wanted=("${build[@]}") ;;
  test)    wanted=("${build[@]}" "${test[@]}") ;;
  targets) wanted=("${build[@]}" "${test[@]}" "${targets[@]}") ;;
  farm)    wanted=("${build[@]}" "${farm[@]}") ;;
  *)       echo "usage: tools/install-packages.sh build|test|targets|farm" >&2; exit 2 ;;
esac

installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

missing=()
for package in "${wanted[@]}"; do installed "$package" || missing+=("$package"); done
if [ ${#missing[@]} -eq 0 ]; then
  echo "packages: all ${#wanted[@]} are installed"
  exit 0
fi

echo "packages: installing ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
