#!/usr/bin/env bash
# Renders through the effect modules for a long time in one process, sizes, formats and
# hosts alternating, and fails when its memory grows or a result changes.
#   tools/long-run.sh [RENDERS]      100000 by default, which take a minute
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset gcc >/dev/null
cmake --build --preset gcc --target long_run | tail -n 1
build/gcc/tests/endurance/long_run "${1:-100000}"
