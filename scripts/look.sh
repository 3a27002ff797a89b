#!/usr/bin/env bash
# Shows Korvane at work without a display: starts it under Xvfb, drives one independent and one
# related calculation with real mouse clicks and key presses (xdotool), opens the information
# window, quits with Ctrl+Q and saves screenshots to out/:
#   out/korvane-independent.png   the form with the results of an independent test
#   out/korvane-related.png       the form with the results of a related test, title hovered
#   out/korvane-information.png   the information window
# Builds nothing: it runs build/app/korvane (bash scripts/build.sh makes it), or $KORVANE_EXE.
set -euo pipefail
cd "$(dirname "$0")/.."

exe=${KORVANE_EXE:-build/app/korvane}

if [ "${1:-}" != "--under-xvfb" ]; then
    if [ ! -x "$exe" ]; then
        echo "look.sh: $exe is not built yet; run: bash scripts/build.sh" >&2
        exit 1
    fi
    mkdir -p out
    # shellcheck source=scripts/xdrive.sh
    source scripts/xdrive.sh
    under_xvfb "$PWD/scripts/look.sh"
fi

korvane_pid=""
cleanup() {
    if [ -n "$korvane_pid" ] && kill -0 "$korvane_pid" 2>/dev/null; then
        kill "$korvane_pid" 2>/dev/null || true
    fi
}
trap cleanup EXIT

pause() { sleep "${1:-0.3}"; }

# The visible window of that exact title, waiting up to 15 seconds for it.
window_titled() {
    local id=""
    for _ in $(seq 1 75); do
        id=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1 || true)
        [ -n "$id" ] && break
        sleep 0.2
    done
    if [ -z "$id" ]; then
        echo "look.sh: no window titled '$1' came up" >&2
        exit 1
    fi
    echo "$id"
}

# Sets X, Y, WIDTH and HEIGHT to the window's place on the screen.
geometry() { eval "$(xdotool getwindowgeometry --shell "$1")"; }

# Control positions below count from the top-left corner of the form's content, which lies under
# the window's menu bar: the content is the bottom 400 pixels of the window.
click() {
    geometry "$form"
    xdotool mousemove $((X + $1)) $((Y + HEIGHT - 400 + $2))
    pause 0.1
    xdotool click 1
    pause 0.2
}

# Clicks into the field at that place and types the text key by key.
type_into() {
    click "$1" "$2"
    xdotool type --delay 60 "$3"
    pause 0.1
}

shot() {  # shot <window id> <file>: the screen, cut to that window
    geometry "$1"
    import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" +repage "$2"
    echo "saved $2"
}

# Centres of the controls, from the form's layout.
IBTN="98 139"
RBTN="247 139"
M1="92 203"
SD1="92 248"
N1="92 298"
M2="253 203"
SD2="253 248"
N2_OR_R="253 298"
CALC="61 375"
HELP="251 375"
CLEAR="441 375"
TITLE="250 30"

"$exe" &
korvane_pid=$!

# The about window opens the run and gives way to the form after four seconds.
form=$(window_titled "Korvane")
pause 1

# Independent means: 10 and 8, SDs 2 and 3, N 10 and 12.
click $IBTN
type_into $M1 "10"
type_into $M2 "8"
type_into $SD1 "2"
type_into $SD2 "3"
type_into $N1 "10"
type_into $N2_OR_R "12"
click $CALC
pause 0.5
shot "$form" out/korvane-independent.png

# Related means: 50 and 47, SDs 10 and 10, 25 pairs, r .8, on a cleared form.
click $CLEAR
click $RBTN
type_into $M1 "50"
type_into $M2 "47"
type_into $SD1 "10"
type_into $SD2 "10"
type_into $N1 "25"
type_into $N2_OR_R ".8"
click $CALC
geometry "$form"
xdotool mousemove $((X + ${TITLE% *})) $((Y + HEIGHT - 400 + ${TITLE#* }))  # shows the attribution
pause 0.5
shot "$form" out/korvane-related.png

# The information window comes up on the press of "?".
click $HELP
information=$(window_titled "t-test Information")
pause 0.8
shot "$information" out/korvane-information.png

# Quit from the keyboard, as a user would, and expect a clean exit.
click $M1
xdotool key ctrl+q
status=0
for _ in $(seq 1 50); do
    kill -0 "$korvane_pid" 2>/dev/null || break
    sleep 0.1
done
if kill -0 "$korvane_pid" 2>/dev/null; then
    echo "look.sh: Korvane did not quit on Ctrl+Q" >&2
    exit 1
fi
wait "$korvane_pid" || status=$?
korvane_pid=""
if [ "$status" -ne 0 ]; then
    echo "look.sh: Korvane ended with status $status" >&2
    exit 1
fi
echo "Korvane quit cleanly; screenshots are in out/"
