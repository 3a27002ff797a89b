# Helpers for driving Korvane's real windows under Xvfb with xdotool, sourced by smoke.sh and
# proof.sh (look.sh and bench_startup.sh take only under_xvfb). The sourcing script defines
# visible_windows (the windows that count as the program's) and fail, sets pid to the running
# program's and may set patience (seconds to wait for a window; 10 by default).

# Runs the sourcing script again on a display of its own, as
#   <script> --under-xvfb <arguments...>
# after checking that every tool named in $tools is installed (a missing one is an error: the
# dependency script installs them all), and ends with its status. The display number is drawn at
# random, away from the low ones other runs take; Xvfb writes it back once it takes clients
# (-displayfd), so the program never starts before its display is there, and a number another
# server holds is given up for the next draw. -noreset keeps the server from resetting when its
# last client leaves: a program started again in that moment would be turned away.
under_xvfb() {
    local script=$1 tool numbers status=0
    shift
    for tool in Xvfb xdotool import convert ${tools:-}; do
        command -v "$tool" >/dev/null || { echo "$tool is not installed (scripts/deps.sh installs it)" >&2; exit 1; }
    done
    numbers=$(mktemp)
    trap 'kill "$xvfb" 2>/dev/null; rm -f "$numbers"' EXIT
    for _ in 1 2 3 4 5; do
        display=$((100 + RANDOM % 800))
        Xvfb ":$display" -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$numbers" 2>/dev/null &
        xvfb=$!
        if display_up; then
            DISPLAY=:$display bash "$script" --under-xvfb "$@" || status=$?
            exit "$status"
        fi
    done
    echo "Xvfb did not start" >&2
    exit 1
}

# Waits until the Xvfb just started ($xvfb) reports $display in $numbers; false if it ends first.
display_up() {
    for _ in $(seq 100); do
        grep -qx "$display" "$numbers" && return 0
        kill -0 "$xvfb" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

# Polls until the command prints something and echoes what it printed. Gives up at once when the
# program has ended, and says so with the end of what it printed ($log).
wait_for() {
    local found
    for _ in $(seq $((${patience:-10} * 5))); do
        found=$("$@" 2>/dev/null || true)
        if [ -n "$found" ]; then
            echo "$found"
            return 0
        fi
        if [ -n "${pid:-}" ] && ! kill -0 "$pid" 2>/dev/null; then
            echo "the program ended early; the end of its output: $(tail -5 "${log:-/dev/null}")" >&2
            return 1
        fi
        sleep 0.2
    done
    return 1
}

# Waits for the program to end by itself after its window was closed; its status in $status.
wait_for_exit() {
    for _ in $(seq $((${patience:-10} * 10))); do
        kill -0 "$pid" 2>/dev/null || break
        sleep 0.1
    done
    kill -0 "$pid" 2>/dev/null && fail "the program still runs after its window was closed"
    status=0
    wait "$pid" || status=$?
    pid=""
}

window_size() { xdotool getwindowgeometry "$1" | awk '/Geometry:/ {print $2}'; }

# The visible window of that size (e.g. 500x200), if there is one.
window_of_size() {
    local id
    for id in $(visible_windows); do
        [ "$(window_size "$id")" = "$1" ] && echo "$id"
    done
    return 0
}

# The share of pixels in a window's region (x y width height) that are not white, in percent.
ink_percent() {
    convert "$1" -crop "$4x$5+$2+$3" +repage -fuzz 8% -fill black +opaque white -negate \
        -format "%[fx:round(100*mean)]" info:
}

click() {  # window x y, in the window's own coordinates
    xdotool mousemove --window "$1" "$2" "$3" click 1
    sleep 0.3
}

# One calculation of independent means (5, 1, 10 against 6, 1, 10) typed with the mouse and the
# keyboard into the calculator window $1, whose 500 x 400 content starts $2 pixels down.
calculate() {
    local x y text
    click "$1" 98 $(($2 + 139))  # Independent Means
    for entry in "92 203 5" "92 248 1" "92 298 10" "253 203 6" "253 248 1" "253 298 10"; do
        read -r x y text <<<"$entry"
        click "$1" "$x" $(($2 + y))
        xdotool type --delay 80 "$text"
    done
    click "$1" 61 $(($2 + 375))  # Calculate
}
