#!/usr/bin/env bash
# Planted-fault run: shows which small, deliberate faults in the product code the tests catch.
#
# How it works. The product tree of one commit (HEAD unless -r) is exported with `git archive`
# into a temporary folder and built there once (Ninja, benchmarks off); the unchanged tree must
# pass. Then, for each fault file tests/mutation/*.fault of the checkout (or those matching the
# globs given), the script puts the fault into its product file, rebuilds incrementally in the
# same build folder, runs ctest and puts the file back. Each fault ends as
#   caught  - the build passed and at least one test failed (or timed out),
#   missed  - the build passed and every test passed,
#   broken  - the fault did not apply (its text is not found exactly once) or did not build.
# ctest runs the offscreen suites only: the slow real-display tests are left out with
# -E 'session_|proof_leaks|xvfb_smoke'. One line per fault and a summary go to the terminal and
# to the report file.
#
# A fault file is plain text:
#   file: <product file, relative to the top of the tree; never under tests/>
#   breaks: <one line: the behaviour the fault breaks>
#   find:
#   <whole lines, copied exactly from the file; they must occur exactly once>
#   replace:
#   <the lines that take their place, up to the end of the fault file; none deletes them>
#
# Usage: scripts/mutation.sh [-n] [-o REPORT] [-r REV] [-t SECONDS] [-k] [GLOB...]
#   -n  only check that each fault applies (no build, no tests)
#   -o  report file (default: $TMPDIR/korvane-mutation-report.txt)
#   -r  commit whose product tree is measured (default HEAD)
#   -t  ctest timeout per test, in seconds (default 120)
#   -k  keep the work folder (source copy, build folder, logs) afterwards
#   GLOB  run only the faults whose file names match, e.g. '3*' or '*record*'
# Exit status: 0 when every fault was caught or missed, 1 when one was broken or the unchanged
# tree failed its build or tests, 2 on a usage error.
set -euo pipefail

root=$(git -C "$(dirname "$0")/.." rev-parse --show-toplevel)
exclude='session_|proof_leaks|xvfb_smoke'
report='' rev=HEAD timeout=120 keep=0 dry=0
while getopts 'no:r:t:kh' opt; do
    case $opt in
        o) report=$(realpath -m "$OPTARG") ;;
        r) rev=$OPTARG ;;
        t) timeout=$OPTARG ;;
        k) keep=1 ;;
        n) dry=1 ;;
        *) sed -n '2,/^set -euo/p' "$0" | sed '$d; s/^# \{0,1\}//'; exit 2 ;;
    esac
done
shift $((OPTIND - 1))
globs=("${@:-*}")

faults=()
for fault in "$root"/tests/mutation/*.fault; do
    for glob in "${globs[@]}"; do
        # shellcheck disable=SC2053  # the glob is meant to match as a pattern
        if [[ $(basename "$fault") == $glob || $(basename "$fault" .fault) == $glob ]]; then
            faults+=("$fault")
            break
        fi
    done
done
((${#faults[@]})) || { echo "no fault matches: ${globs[*]}" >&2; exit 2; }

commit=$(git -C "$root" rev-parse --verify "$rev^{commit}")
work=$(mktemp -d "${TMPDIR:-/tmp}/korvane-mutation.XXXXXX")
src=$work/src build=$work/build logs=$work/logs
mkdir -p "$src" "$logs"
report=${report:-${TMPDIR:-/tmp}/korvane-mutation-report.txt}
finish() { if ((keep)); then echo "work folder kept: $work"; else rm -rf "$work"; fi; }
trap finish EXIT
git -C "$root" archive "$commit" | tar -x -C "$src"
jobs=$(nproc)

# Puts the fault into the tree, the file as it was saved to $2; prints "file<TAB>breaks".
# Fails with a reason on stderr and leaves the tree as it was.
apply_fault() {
    python3 - "$1" "$src" "$2" <<'PY'
import pathlib, sys
text = pathlib.Path(sys.argv[1]).read_text()
head, sep, rest = text.partition("\nfind:\n")
find, sep2, replace = rest.partition("\nreplace:\n")
if not sep or not sep2:
    sys.exit("no 'find:' or 'replace:' line")
fields = dict(line.split(": ", 1) for line in head.splitlines() if ": " in line)
name, breaks = fields.get("file", ""), fields.get("breaks", "")
if not name or name.startswith("tests/"):
    sys.exit("no product file named")
find += "\n"
target = pathlib.Path(sys.argv[2], name)
if not target.is_file():
    sys.exit(f"{name}: no such file")
source = target.read_text()
count = source.count(find)
if count != 1:
    sys.exit(f"{name}: the text to replace occurs {count} times")
pathlib.Path(sys.argv[3]).write_text(source)
target.write_text(source.replace(find, replace))
print(f"{name}\t{breaks}")
PY
}

build_tree() { cmake --build "$build" --parallel "$jobs" >"$1" 2>&1; }
run_tests() {
    ctest --test-dir "$build" -E "$exclude" --parallel "$jobs" --timeout "$timeout" \
        --output-on-failure >"$1" 2>&1
}
# The tests that failed, from ctest's closing list: "name, name (Timeout)".
failed_tests() {
    awk '/tests FAILED:/ { list = 1; next }
         list && /^[[:space:]]*[0-9]+ - / {
             status = $0; sub(/^[^(]*\(/, "", status); sub(/\)$/, "", status)
             printf "%s%s%s", sep, $3, status == "Failed" ? "" : " (" status ")"; sep = ", "
         }
         END { print "" }' "$1"
}

if ((dry)); then
    for fault in "${faults[@]}"; do
        id=$(basename "$fault" .fault)
        if applied=$(apply_fault "$fault" "$logs/$id.original" 2>&1); then
            cp "$logs/$id.original" "$src/${applied%%$'\t'*}"
            echo "$id applies to ${applied%%$'\t'*}"
        else
            echo "$id does not apply: $applied"
            dry=2
        fi
    done
    exit $((dry - 1))
fi

started=$(date +%s)
{
    echo "Planted-fault run of Korvane"
    echo "commit:  $commit ($(git -C "$root" log -1 --format=%s "$commit"))"
    echo "date:    $(date -u '+%Y-%m-%d %H:%M:%S UTC')"
    echo "host:    $jobs cores; ctest -E '$exclude' --timeout $timeout"
    echo "faults:  ${#faults[@]} of $root/tests/mutation"
    echo
} | tee "$report"

echo "building the unchanged tree ..."
if ! cmake -S "$src" -B "$build" -G Ninja -DKORVANE_BENCH=OFF >"$logs/configure.log" 2>&1 ||
    ! build_tree "$logs/baseline-build.log"; then
    echo "the unchanged tree does not build; logs in $logs" | tee -a "$report"
    keep=1
    exit 1
fi
if ! run_tests "$logs/baseline-test.log"; then
    echo "the unchanged tree fails: $(failed_tests "$logs/baseline-test.log")" | tee -a "$report"
    keep=1
    exit 1
fi
echo "baseline: builds and passes ($(($(date +%s) - started)) s)" | tee -a "$report"
echo | tee -a "$report"

caught=0 missed=0 broken=0
for fault in "${faults[@]}"; do
    id=$(basename "$fault" .fault)
    t0=$(date +%s)
    detail='' file=''
    saved=$logs/$id.original
    if ! applied=$(apply_fault "$fault" "$saved" 2>"$logs/$id.apply"); then
        result=broken detail="does not apply: $(tail -1 "$logs/$id.apply")"
    else
        file=${applied%%$'\t'*}
        if ! build_tree "$logs/$id.build.log"; then
            result=broken detail="does not build: $(grep -m1 'error' "$logs/$id.build.log" || true)"
        elif run_tests "$logs/$id.test.log"; then
            result=missed detail="${applied#*$'\t'}"
        else
            result=caught detail="by $(failed_tests "$logs/$id.test.log")"
        fi
        # The file goes back as it was; its new time makes the next build recompile it.
        cp "$saved" "$src/$file"
    fi
    case $result in caught) ((++caught)) ;; missed) ((++missed)) ;; broken) ((++broken)) ;; esac
    printf '%-36s %-7s %4ss  %s\n' "$id" "$result" "$(($(date +%s) - t0))" "$detail" |
        tee -a "$report"
done

# The last fault's file is back; one more build leaves the folder as the commit (for -k).
build_tree "$logs/final-build.log" || true
elapsed=$(($(date +%s) - started))
{
    echo
    echo "caught $caught, missed $missed, broken $broken of ${#faults[@]} faults"
    printf 'wall time: %dm%02ds\n' $((elapsed / 60)) $((elapsed % 60))
} | tee -a "$report"
echo "report: $report"
((broken == 0))
