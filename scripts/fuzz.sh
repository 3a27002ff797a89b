#!/usr/bin/env bash
# Builds the libFuzzer targets with clang, AddressSanitizer and UndefinedBehaviorSanitizer, and
# runs them, one at a time.
#   bash scripts/fuzz.sh                   each target for a bounded count of inputs (CTest)
#   bash scripts/fuzz.sh --long [seconds]  each target for that many seconds (default 600);
#                                          new inputs go to build-fuzz/corpus-<target>, a
#                                          failing input to build-fuzz/fuzz/
# The build folder is build-fuzz, or KORVANE_FUZZ_DIR when set.
set -euo pipefail
cd "$(dirname "$0")/.."

usage="usage: bash scripts/fuzz.sh [--long [seconds]]"
long=0
seconds=600
case "${1:-}" in
    "") ;;
    --long)
        long=1
        seconds=${2:-600}
        ;;
    *)
        echo "$usage" >&2
        exit 2
        ;;
esac
if ! [[ "$seconds" =~ ^[1-9][0-9]*$ ]]; then
    echo "$usage" >&2
    exit 2
fi

bash scripts/deps.sh

dir=${KORVANE_FUZZ_DIR:-build-fuzz}
targets=(record_fuzz val_format_fuzz calc_fuzz)
cmake -S . -B "$dir" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DKORVANE_FUZZ=ON -DKORVANE_GUI=OFF \
    -DKORVANE_BENCH=OFF >/dev/null
cmake --build "$dir" --parallel "$(nproc)" --target "${targets[@]}"

if [ "$long" -eq 0 ]; then
    ctest --test-dir "$dir" -R _run --output-on-failure
    exit 0
fi

# The seeds are read, never written: libFuzzer adds what it finds to the first folder only.
for target in "${targets[@]}"; do
    corpus="$dir/corpus-$target"
    log="$dir/fuzz/$target.log"
    mkdir -p "$corpus"
    echo "== $target: ${seconds}s, log in $log"
    if ! "$dir/fuzz/$target" -max_total_time="$seconds" -print_final_stats=1 \
        -artifact_prefix="$dir/fuzz/" "$corpus" "fuzz/corpus/${target%_fuzz}" >"$log" 2>&1; then
        tail -n 60 "$log"
        echo "== $target FAILED; the input that failed is in $dir/fuzz/" >&2
        exit 1
    fi
    grep -E '^#[0-9]+[[:space:]]+DONE|^stat::' "$log"
done
