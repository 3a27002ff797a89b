#!/usr/bin/env bash
# Start-up time and memory of Korvane against the floor of any Qt program here: a minimal Qt 6
# program that shows one empty window of the control window's size. Both run under one Xvfb,
# taking turns, N times each after one warm-up run; the medians and their ratios are printed.
#   bash scripts/bench_startup.sh [runs] [build folder]     (21 runs, build-bench)
# Time: from the process's start to its first window shown (Korvane's is the about window).
# Memory: resident set once the window is up and painted (Korvane's: the control window).
# Build first, optimised:
#   cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release && cmake --build build-bench
set -euo pipefail

if [ "${1:-}" != "--under-xvfb" ]; then
    self=$(realpath "$0")
    cd "$(dirname "$self")/.."
    runs=${1:-21}
    build=$(realpath "${2:-build-bench}")
    for program in korvane_startup startup_floor; do
        if [ ! -x "$build/bench/$program" ]; then
            echo "bench_startup: $build/bench/$program is not built" >&2
            exit 1
        fi
    done
    # shellcheck source=scripts/xdrive.sh
    source scripts/xdrive.sh
    under_xvfb "$self" "$runs" "$build"
fi
runs=$2
build=$3

median() { sort -n | awk '{v[NR] = $1} END {print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2}'; }
field() { sed -n "s/.*$1=\\([^ ]*\\).*/\\1/p"; }

one_run() {  # program [arguments]: its report line
    local line
    line=$(timeout 60 "$@" 2>/dev/null | grep '^shown_ms=') ||
        { echo "bench_startup: $1 gave no report" >&2; exit 1; }
    echo "$line"
}

# The floors' window takes Korvane's control window's size.
size=$(one_run "$build/bench/korvane_startup" | field window)
floors=(empty text text+icon)
results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT
for floor in "${floors[@]}"; do
    one_run "$build/bench/startup_floor" "$size" "$floor" >/dev/null
done
for _ in $(seq "$runs"); do
    one_run "$build/bench/korvane_startup" >>"$results/korvane"
    for floor in "${floors[@]}"; do
        one_run "$build/bench/startup_floor" "$size" "$floor" >>"$results/$floor"
    done
done

k_ms=$(field shown_ms <"$results/korvane" | median)
k_rss=$(field rss_kib <"$results/korvane" | median)
echo "medians of $runs runs each under Xvfb, window $size"
printf "%-34s %14s %14s\n" "" "to first window" "resident"
printf "%-34s %11.1f ms %10.1f MiB\n" "Korvane" "$k_ms" "$(awk "BEGIN {print $k_rss / 1024}")"
for floor in "${floors[@]}"; do
    f_ms=$(field shown_ms <"$results/$floor" | median)
    f_rss=$(field rss_kib <"$results/$floor" | median)
    awk -v name="Qt floor, $floor window" -v km="$k_ms" -v fm="$f_ms" -v kr="$k_rss" -v fr="$f_rss" \
        'BEGIN { printf "%-34s %11.1f ms %10.1f MiB   Korvane/floor: %.2f time, %.2f memory\n",
                        name, fm, fr / 1024, km / fm, kr / fr }'
done
echo "goal: Korvane within 1.15 in time and 1.10 in memory of the floor with one line of text"
