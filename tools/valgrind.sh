#!/usr/bin/env bash
# Runs tests under valgrind, which sees what the sanitizers cannot: values that were never
# set, and code that nobody compiled with a sanitizer.
#   tools/valgrind.sh quick          the modules, as an editor drives them: a few minutes
#   tools/valgrind.sh                that and the engine, the host side and the strain tests
#   tools/valgrind.sh PROGRAM...     these test programs, below build/valgrind/tests
set -euo pipefail
cd "$(dirname "$0")/.."

command -v valgrind >/dev/null || { echo "valgrind is missing: apt-get install valgrind" >&2; exit 1; }

# Long by design, and about figures that valgrind changes.
skip='-*LongRun*:*Domain*:*Whole*:*Sweep*'
case "${1:-all}" in
  quick) programs=(host/module_tests) ;;
  all) programs=(host/module_tests host/host_tests headless/headless_tests lut/lut_tests
                 effects/effects_tests endurance/endurance_tests) ;;
  *) programs=("$@") ;;
esac

# With lines to name, and at an instruction set that valgrind knows.
build=build/valgrind
cmake --preset gcc -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZEL_BUILD_CLI=OFF -DZEL_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target "${programs[@]##*/}" | tail -n 1
export ZELFX_CPU=${ZELFX_CPU:-avx2}
for program in "${programs[@]}"; do
  echo "== $program"
  valgrind --quiet --error-exitcode=9 --leak-check=full --show-leak-kinds=definite \
    --errors-for-leak-kinds=definite "$build/tests/$program" --gtest_brief=1 \
    --gtest_filter="$skip"
done
echo "valgrind found nothing in: ${programs[*]}"
