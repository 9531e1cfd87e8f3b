#!/usr/bin/env bash
# Runs every test: installs what testing needs, checks the formatting, then builds and
# tests each preset, and takes the modules through valgrind. A preset that fails does not
# keep the others from running; at the end stand the tests that failed with what they
# said, which presets failed, and how long each took.
#   tools/test.sh [PRESET...]      only these presets of CMakePresets.json, or "valgrind"
set -uo pipefail
cd "$(dirname "$0")/.."

presets=("$@")
[ $# -gt 0 ] || presets=(gcc clang asan-ubsan tsan valgrind m32 mingw aarch64)

packages=test
for preset in "${presets[@]}"; do
  case $preset in m32 | mingw | aarch64) packages=targets ;; esac
done
tools/install-packages.sh "$packages" || exit 1

# Compilers behind ccache where it is: presets share much, and so do runs.
if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi

failed=()
summary=()
log=$(mktemp)
failures=$(mktemp)
trap 'rm -f "$log" "$failures"' EXIT
# quietly COMMAND...: shows what the command said only when it fails, the errors first.
quietly() {
  "$@" >"$log" 2>&1 && return
  {
    echo "failed: $*"
    grep -E 'error|FAILED' "$log" | head -n 20
    tail -n 20 "$log"
  } | tee -a "$failures"
  return 1
}
run_preset() {
  if [ "$1" = valgrind ]; then
    quietly tools/valgrind.sh quick
    return
  fi
  echo "== $1: build"
  quietly cmake --preset "$1" || return 1
  quietly cmake --build --preset "$1" -- -k 0 || return 1
  echo "== $1: test"
  ctest --preset "$1" 2>&1 | tee "$log" && return
  keep_failures "$1"
  return 1
}
# keep_failures PRESET: keeps of the log of ctest what the tests that failed said, and the
# list of them, for the end: a log of thousands of lines is read from there.
keep_failures() {
  {
    echo "== $1: failed tests"
    awk '/^ *[0-9]+\/[0-9]+ Test +#/ { failed = /\*\*\*/ && !/Skipped/; lines = 0 }
         /^ *Start +[0-9]+:/ || /tests passed,/ { failed = 0 }
         failed && ++lines <= 25' "$log" | cut -c -300 | head -n 70
    sed -n '/The following tests FAILED/,$p' "$log" | head -n 20
  } >>"$failures"
}

echo "format: clang-format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror || failed+=(format)

for preset in "${presets[@]}"; do
  start=$SECONDS
  verdict=passed
  run_preset "$preset" || { verdict=FAILED; failed+=("$preset"); }
  took=$((SECONDS - start))
  summary+=("$(printf '%-12s %-7s %3d:%02d' "$preset" "$verdict" $((took / 60)) $((took % 60)))")
  echo "== ${summary[-1]}"
done

cat "$failures"
printf '%s\n' "${summary[@]}"
printf '%-12s %-7s %3d:%02d\n' all "" $((SECONDS / 60)) $((SECONDS % 60))
if [ ${#failed[@]} -gt 0 ]; then
  echo "failed: ${failed[*]}"
  exit 1
fi
echo "all tests passed: ${presets[*]}"
