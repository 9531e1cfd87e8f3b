#!/usr/bin/env bash
# Makes what is given to people, in dist/: the archive for Windows, the archive and the
# Debian package for Linux. Bundles of the Mac are made on a Mac: docs/hosts.md.
#   tools/dist.sh [windows] [linux]        default: both
set -euo pipefail
cd "$(dirname "$0")/.."

version=$(sed -nE 's/^project\(zelfx VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
modules=(zel_color_balance zel_brightness_contrast_pivot zel_gamma_gain_offset zel_log_linear_conversion)
mkdir -p dist
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT

# build PRESET [TARGET...]
build() {
  local preset=$1
  shift
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" ${1:+--target "$@"} | tail -n 1
}
readme() { sed "s/@VERSION@/$version/" "packaging/README-$1.txt"; }

make_windows() {
  local name=zelfx-$version-windows-x64 form
  declare -A preset=([classic]=windows [current]=windows-conformant)
  for form in classic current; do
    build "${preset[$form]}" "${modules[@]}"
    mkdir -p "$stage/$name/$form"
    for module in "${modules[@]}"; do
      x86_64-w64-mingw32-strip -o "$stage/$name/$form/$module.aex" \
        "build/${preset[$form]}/modules/$module.aex"
    done
  done
  readme windows | sed 's/$/\r/' >"$stage/$name/README.txt"
  rm -f "dist/$name.zip"
  (cd "$stage" && zip -q -r -X "$name.zip" "$name")
  mv "$stage/$name.zip" dist/
  echo "dist/$name.zip"
}

make_linux() {
  local name=zelfx-$version-linux-x86_64
  build package
  cmake --install build/package --prefix "$stage/$name" --strip >/dev/null
  readme linux >"$stage/$name/README.txt"
  tar -C "$stage" --sort=name --owner=0 --group=0 --numeric-owner -czf "dist/$name.tar.gz" "$name"
  echo "dist/$name.tar.gz"
  cpack --preset package -B "$stage/deb" >/dev/null
  local package
  for package in "$stage"/deb/*.deb; do
    mv "$package" dist/
    echo "dist/${package##*/}"
  done
}

[ $# -gt 0 ] || set -- windows linux
for what in "$@"; do
  case $what in
    windows) tools/install-packages.sh targets && make_windows ;;
    linux)   tools/install-packages.sh build && make_linux ;;
    *)       echo "usage: tools/dist.sh [windows] [linux]" >&2; exit 2 ;;
  esac
done
