#!/usr/bin/env bash
# Measures which lines and branches of the system itself the tests reach, and names every
# one that they do not: lut/, ip/, host/ and effects/, all processor levels together.
#   tools/coverage.sh [FOLDER]     report in FOLDER, default out/coverage
set -euo pipefail
cd "$(dirname "$0")/.."
out=$(realpath -m "${1:-out/coverage}")
build=build/coverage
llvm=$(dirname "$(readlink -f "$(command -v clang++)")")

cmake --preset coverage >/dev/null
cmake --build --preset coverage | tail -n 1
rm -rf "$out"; mkdir -p "$out/raw"
LLVM_PROFILE_FILE="$out/raw/%p-%m.profraw" ctest --preset coverage --output-on-failure | tail -n 3
"$llvm/llvm-profdata" merge -sparse "$out"/raw/*.profraw -o "$out/all.profdata"
rm -rf "$out/raw"

mapfile -t files < <(find $build/tests $build/fuzz $build/modules -type f -executable ! -name '*alone*')
objects=("${files[@]/#/-object=}")
folders=(lut ip host effects)
"$llvm/llvm-cov" report "${files[0]}" "${objects[@]:1}" -instr-profile "$out/all.profdata" \
  "${folders[@]}" | tee "$out/report.txt"
"$llvm/llvm-cov" show "${files[0]}" "${objects[@]:1}" -instr-profile "$out/all.profdata" \
  -show-branches=count -format=html -output-dir "$out/html" "${folders[@]}"
echo "line by line: $out/html/index.html"
