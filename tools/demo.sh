#!/usr/bin/env bash
# Grades the sample photograph: installs what building needs, builds the program and the
# effects, and takes the warm cast out of samples/coffee.png with Color Balance.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-packages.sh build
echo "build: build/release"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
{ cmake --preset release && cmake --build --preset release --target zelfx; } >"$log" 2>&1 ||
  { cat "$log" >&2; exit 1; }

mkdir -p out
grade=(-s master.red=-9    -s master.blue=12
       -s highlights.red=3 -s highlights.blue=-6
       -s midtones.red=-12 -s midtones.green=3 -s midtones.blue=30
       -s shadows.blue=8)
echo "grade: samples/coffee.png through Color Balance, ${grade[*]}"
build/release/zelfx render samples/coffee.png out/coffee-graded.png --effect color_balance "${grade[@]}"
echo "done: the warm cast is taken out. Before: samples/coffee.png, after: out/coffee-graded.png"
