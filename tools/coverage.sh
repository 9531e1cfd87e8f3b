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
# llvm-cov OUTPUT...: of the four folders, and nothing else that is compiled with them.
of_folders() {
  "$llvm/llvm-cov" "$@" "${files[0]}" "${objects[@]:1}" -instr-profile "$out/all.profdata" \
    -ignore-filename-regex='/(abi|fuzz|headless|packaging|tests|usr)/' 2>/dev/null
}
of_folders report | tee "$out/report.txt"
of_folders show -show-branches=count -format=html -output-dir "$out/html"
echo "line by line: $out/html/index.html"
