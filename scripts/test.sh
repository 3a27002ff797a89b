#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test.
#   bash scripts/test.sh             the suites, in build/
#   bash scripts/test.sh --sanitize  the same suites built with ASan and UBSan, in build-asan/
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh

dir=build
args=()
if [ "${1:-}" = "--sanitize" ]; then
    dir=build-asan
    args+=(-DKORVANE_SANITIZE=ON -DKORVANE_BENCH=OFF)
    export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    export LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp
fi
bash scripts/build.sh "$dir" "${args[@]}"
ctest --test-dir "$dir" --output-on-failure --parallel "$(nproc)"
