#!/usr/bin/env bash
# The real-window run: Korvane under Xvfb from start to exit, driven from outside as a user would.
# The about window comes up first; a click on it brings up the calculator; one calculation of
# independent means fills the result column; closing the calculator ends the run with status 0.
#   bash scripts/smoke.sh [program] [close helper]
# Screenshots go to $SMOKE_OUT (a new temporary folder if unset).
set -euo pipefail
# shellcheck source=scripts/xdrive.sh
source "$(dirname "$(realpath "$0")")/xdrive.sh"

if [ "${1:-}" != "--under-xvfb" ]; then
    self=$(realpath "$0")
    cd "$(dirname "$self")/.."
    under_xvfb "$self" "$(realpath "${1:-build/app/korvane}")" \
        "$(realpath "${2:-build/tests/app/x_close_window}")"
fi
program=$2
closer=$3
out=${SMOKE_OUT:-$(mktemp -d)}
mkdir -p "$out"
log=$out/program.log

fail() {
    echo "smoke: $*" >&2
    echo "smoke: screenshots and the program's output are in $out" >&2
    [ -n "$pid" ] && kill "$pid" 2>/dev/null
    exit 1
}

visible_windows() { xdotool search --onlyvisible --pid "$pid" 2>/dev/null || true; }

"$program" >"$log" 2>&1 &
pid=$!

about=$(wait_for window_of_size 500x200) || fail "the about window did not come up"
import -window "$about" "$out/1-about.png"
[ "$(visible_windows | wc -l)" -eq 1 ] || fail "another window is up beside the about window"

click "$about" 250 20
calculator=$(wait_for xdotool search --onlyvisible --pid "$pid" --name '^Korvane$') ||
    fail "the calculator did not come up after a click on the about window"
[ -z "$(window_of_size 500x200)" ] || fail "the about window stayed up"

# The content is 500 x 400 below the menu bar.
size=$(window_size "$calculator")
top=$((${size#*x} - 400))
import -window "$calculator" "$out/2-calculator.png"
[ "$(ink_percent "$out/2-calculator.png" 369 $((top + 192)) 80 117)" -eq 0 ] ||
    fail "the result column shows something before any calculation"

calculate "$calculator" "$top"
import -window "$calculator" "$out/3-result.png"
[ "$(ink_percent "$out/3-result.png" 369 $((top + 192)) 80 117)" -ge 3 ] ||
    fail "the result column stayed empty after Calculate"
# Every picture so far, the program's and the style's, was read as the PNG it is: a reader left
# to guess the format would have loaded all of Qt's image-format plug-ins.
plugins=$(grep -o '[^/]*/imageformats/[^ ]*' "/proc/$pid/maps" | sort -u || true)
[ -z "$plugins" ] || fail "image-format plug-ins were loaded: $plugins"

"$closer" "$calculator"
wait_for_exit
[ "$status" -eq 0 ] || fail "the program ended with status $status"
if grep -q "Korvane:" "$out/program.log"; then
    fail "the program reported a fault: $(grep "Korvane:" "$out/program.log")"
fi
echo "smoke: about window, calculator, one calculation, closed with status 0 ($out)"
