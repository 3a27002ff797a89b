#!/usr/bin/env bash
# Proof of what a whole run of Korvane holds on to and reaches out to. Under Xvfb, a user's run
# (the about window, the calculator, one calculation, the information window, the close) is played
# twice with xdotool:
#   1. under a leak checker: valgrind --leak-check=full for a plain build, LeakSanitizer for a
#      build with -DKORVANE_SANITIZE=ON. No block of the program's own may be lost.
#   2. under strace -f: the program and any process it starts may connect only to the display
#      server's sockets, and may write no file but those listed below.
#   bash scripts/proof.sh [program] [close helper]
# Logs go to $PROOF_OUT (a new temporary folder if unset).
#
# What counts as the display server's. The X server's socket (/tmp/.X11-unix/X<n>, also in the
# abstract namespace), and the desktop's message buses that Qt asks about accessibility: the
# session and system D-Bus and the accessibility (AT-SPI) bus, through which a screen reader reads
# the windows. Local sockets all; a connection of any other family (AF_INET, AF_INET6, ...) fails
# the proof. The C library's name-service cache (nscd) is asked for the user's home folder; it is
# local and read-only, and allowed. Where no session bus is announced (CI), libdbus tries to start
# one with "dbus-launch --autolaunch"; that is the one program the run may try to start.
#
# What may be written. Devices (/dev), the kernel's files (/proc), Qt's runtime folder for the
# user ($XDG_RUNTIME_DIR, else /tmp/runtime-<user>), and fontconfig's font cache
# (~/.cache/fontconfig, /var/cache/fontconfig), which fontconfig refreshes when fonts change.
# Any other open for writing, creat, rename, unlink or mkdir fails the proof: the program stores
# nothing.
set -euo pipefail
root=$(realpath "$(dirname "$0")/..")
# shellcheck source=scripts/xdrive.sh
source "$root/scripts/xdrive.sh"

if [ "${1:-}" != "--under-xvfb" ]; then
    cd "$root"
    program=$(realpath "${1:-build/app/korvane}")
    tools=strace
    # grep reads all of ldd's output: with -q it could stop early, and pipefail would then take
    # ldd's broken pipe for "not sanitized".
    ldd "$program" | grep libasan >/dev/null || tools+=" valgrind"
    under_xvfb "$root/scripts/proof.sh" "$program" \
        "$(realpath "${2:-build/tests/app/x_close_window}")"
fi
program=$2
closer=$3
out=${PROOF_OUT:-$(mktemp -d)}
mkdir -p "$out"
pid=""
patience=20  # seconds to wait for a window; valgrind needs far more

fail() {
    echo "proof: $*" >&2
    [ -n "${log:-}" ] && echo "proof: the end of the program's output: $(tail -5 "$log")" >&2
    echo "proof: logs and screenshots are in $out" >&2
    if [ -n "$pid" ]; then
        pkill -P "$pid" 2>/dev/null || true  # what strace runs goes first: strace would detach
        kill "$pid" 2>/dev/null || true
    fi
    exit 1
}

# The display is Xvfb's own, so every window on it is the program's.
visible_windows() { xdotool search --onlyvisible --name '' 2>/dev/null || true; }
titled() { xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1 || true; }
not_about() {
    local id
    for id in $(titled Korvane); do
        [ "$(window_size "$id")" != 500x200 ] && echo "$id"
    done
    return 0
}

# Prints "shown" once the result column of the calculator holds something.
results_shown() {
    import -window "$1" "$out/$3-result.png"
    [ "$(ink_percent "$out/$3-result.png" 369 $(($2 + 192)) 80 117)" -ge 3 ] && echo shown
    return 0
}

# The user's run. $1 names it in the screenshots.
walk() {
    local about calculator top information settle=$((patience / 30 + 1))
    about=$(wait_for window_of_size 500x200) || fail "$1: the about window did not come up"
    click "$about" 250 20
    calculator=$(wait_for not_about) || fail "$1: the calculator did not come up"
    sleep "$settle"  # let it be activated before the test is chosen
    top=$(($(window_size "$calculator" | cut -dx -f2) - 400))  # the content is 500 x 400
    calculate "$calculator" "$top"
    wait_for results_shown "$calculator" "$top" "$1" >/dev/null ||
        fail "$1: the result column stayed empty after Calculate"
    click "$calculator" 251 $((top + 375))  # "?": the information window
    information=$(wait_for titled "t-test Information") ||
        fail "$1: the information window did not come up"
    sleep "$settle"
    "$closer" "$information"
    sleep "$settle"
    "$closer" "$calculator"
}

# --- 1. Leaks ---
if ldd "$program" | grep libasan >/dev/null; then
    checker="LeakSanitizer"
    ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 \
        LSAN_OPTIONS=suppressions=$root/tests/lsan.supp:print_suppressions=0 \
        "$program" >"$out/leaks.log" 2>&1 &
    pid=$!
    log=$out/leaks.log
    patience=60
else
    checker="valgrind"
    valgrind --leak-check=full --show-leak-kinds=definite,indirect --child-silent-after-fork=yes \
        --errors-for-leak-kinds=definite,indirect --num-callers=40 \
        --suppressions="$root/tests/proof/valgrind.supp" --log-file="$out/leaks.log" \
        "$program" >"$out/leaks-program.log" 2>&1 &
    pid=$!
    log=$out/leaks.log  # valgrind's own report says how the program ended
    patience=180
fi
started=$(date +%s)
walk leaks
wait_for_exit
echo "proof: the run under $checker took $(($(date +%s) - started)) s"
[ "$status" -eq 0 ] || fail "under $checker the program ended with status $status"
if [ "$checker" = valgrind ]; then
    lost=$(awk '/definitely lost:|indirectly lost:/ {gsub(",", "", $4); sum += $4} END {print sum + 0}' \
        "$out/leaks.log")
    grep -q "LEAK SUMMARY\|All heap blocks were freed" "$out/leaks.log" ||
        fail "valgrind gave no leak summary"
    [ "$lost" -eq 0 ] || fail "valgrind found $lost bytes lost: $(grep -A3 'lost in loss' "$out/leaks.log" | head -20)"
    # Reads and writes of freed or unowned memory count as much as a leak, also at the exit.
    errors=$(sed -n 's/.*ERROR SUMMARY: \([0-9]*\) errors.*/\1/p' "$out/leaks.log" | tail -1)
    [ "${errors:-1}" -eq 0 ] ||
        fail "valgrind found ${errors:-no summary of} errors: $(grep -A6 'Invalid\|uninitialised' "$out/leaks.log" | head -20)"
    echo "proof: valgrind: no block lost; $(grep 'still reachable:' "$out/leaks.log" | sed 's/^==[0-9]*== *//') (held to the end by Qt and the libraries)"
else
    grep -q "LeakSanitizer" "$out/leaks.log" && fail "LeakSanitizer found a leak"
    echo "proof: LeakSanitizer: no leak"
fi

# --- 2. Connections and files ---
calls=execve,connect,open,openat,creat,rename,renameat,renameat2,unlink,unlinkat,mkdir,mkdirat
# LeakSanitizer cannot stop the threads of a process that strace already traces: it checks in
# the run above.
ASAN_OPTIONS=detect_leaks=0 strace -f -qq -e trace="$calls" -o "$out/strace.log" "$program" \
    >"$out/strace-program.log" 2>&1 &
log=$out/strace-program.log
pid=$!
patience=20
walk strace
wait_for_exit
[ "$status" -eq 0 ] || fail "under strace the program ended with status $status"

runtime_dir=${XDG_RUNTIME_DIR:-/tmp/runtime-$(id -un)}
home=${HOME:-/root}
problems=$(awk -v runtime="$runtime_dir" -v home="$home" -v program="$program" '
    function allowed_write(path) {
        return path ~ "^/dev/" || path ~ "^/proc/" || index(path, runtime) == 1 ||
               index(path, home "/.cache/fontconfig") == 1 || path ~ "^/var/cache/fontconfig"
    }
    function path_of(line) {
        if (match(line, /"[^"]*"/)) return substr(line, RSTART + 1, RLENGTH - 2)
        return "?"
    }
    / connect\(/ {
        if ($0 ~ /sa_family=AF_UNIX/) {
            match($0, /sun_path=@?"[^"]*"/)
            socket = substr($0, RSTART + 9, RLENGTH - 9)
            gsub(/"/, "", socket)
            if (socket ~ /^@?\/tmp\/\.X11-unix\/X[0-9]+$/ ||
                socket ~ /^@?\/tmp\/dbus-/ || socket ~ /^@?\/run\/user\/[0-9]+\/(bus|at-spi\/)/ ||
                socket ~ /^\/(var\/)?run\/dbus\/system_bus_socket$/ ||
                socket ~ /^\/(var\/)?run\/nscd\/socket$/)
                next
            print "connect to the local socket " socket
        } else {
            print "connect outside the machine: " $0
        }
        next
    }
    / execve\(/ {
        path = path_of($0)
        if (path == program || path ~ /\/dbus-launch$/) next
        print "starts another program: " path
        next
    }
    / (open|openat)\(/ && /O_WRONLY|O_RDWR|O_CREAT|O_TRUNC|O_APPEND/ {
        path = path_of($0)
        if (!allowed_write(path)) print "opens for writing: " $0
        next
    }
    / (creat|rename|renameat|renameat2|unlink|unlinkat|mkdir|mkdirat)\(/ {
        path = path_of($0)
        if (!allowed_write(path)) print "changes a file: " $0
        next
    }
' "$out/strace.log")
[ -z "$problems" ] || fail "under strace: $problems"

echo "proof: connections seen:"
grep -o 'connect([0-9]*, {sa_family=[A-Z_0-9]*, sun_path=[^}]*} *, *[0-9]*) = [-0-9]* *[A-Z]*' \
    "$out/strace.log" | sed 's/connect([0-9]*, {//; s/}.*) = / -> /' | sort | uniq -c || true
echo "proof: writes seen:"
grep -E ' (open|openat)\(.*(O_WRONLY|O_RDWR|O_CREAT)| (creat|rename|renameat2?|unlink|unlinkat|mkdir|mkdirat)\(' \
    "$out/strace.log" | sed 's/^[0-9]* *//' | sort | uniq -c || true
echo "proof: programs started, besides the program itself:"
grep ' execve(' "$out/strace.log" | grep -v "execve(\"$program\"" |
    sed 's/^[0-9]* *execve("[^"]*\/\([^/"]*\)".*) = \(.*\)/\1 -> \2/' | sort | uniq -c || true
echo "proof: no leak, no connection beyond the display server's, no file written ($out)"
