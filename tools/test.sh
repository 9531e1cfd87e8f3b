#!/usr/bin/env bash
# Runs every test: installs what testing needs, checks the formatting, then builds and
# tests with g++, with clang++, and with g++ under the address and undefined-behaviour
# sanitizers.
#   tools/test.sh [PRESET...]      only these presets of CMakePresets.json
set -euo pipefail
cd "$(dirname "$0")/.."

presets=("$@")
[ $# -gt 0 ] || presets=(gcc clang asan-ubsan)

tools/install-packages.sh test

echo "format: clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror

for preset in "${presets[@]}"; do
  echo "== $preset: build"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -- -k 0 | tail -n 3
  echo "== $preset: test"
  ctest --preset "$preset"
done
echo "all tests passed: ${presets[*]}"
