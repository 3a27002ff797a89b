# Helpers for driving Korvane's real windows under Xvfb with xdotool, sourced by smoke.sh and
# proof.sh. The sourcing script defines visible_windows (the windows that count as the
# program's) and may set patience (seconds to wait for a window; 10 by default).

# Polls until the command prints something and echoes what it printed.
wait_for() {
    local found
    for _ in $(seq $((${patience:-10} * 5))); do
        found=$("$@" 2>/dev/null || true)
        if [ -n "$found" ]; then
            echo "$found"
            return 0
        fi
        sleep 0.2
    done
    return 1
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
