#!/bin/sh
# run_tests.sh LABEL FOLDER <PIECES: runs tests in many processes and shows what failed.
# A piece is a line  KIND SHARDS SHARD FILTER PROGRAM: this share of what the filter takes out of a test
# program, which KORVANTI_LAUNCHER runs where it is set (wine). Pieces of kind "work" run in the order of
# the lines, as many at a time as there are processors; those of kind "wait" run beside them. Output is
# kept in FOLDER. The closing line counts: "LABEL: 12 passed, 0 failed, 0 skipped".
# Exit status 1 when a test failed, a process ended early or none ran.
set -eu
longest=900 # seconds of one piece

# A piece, called by the lines below: its output and status go to files of its number.
if [ "$1" = --piece ]; then
    folder=$2
    read -r number _ GTEST_TOTAL_SHARDS GTEST_SHARD_INDEX filter program <<LINE
$3
LINE
    export GTEST_TOTAL_SHARDS GTEST_SHARD_INDEX
    status=0
    timeout "$longest" ${KORVANTI_LAUNCHER-} "$program" --gtest_color=no "--gtest_filter=$filter" \
        >"$folder/$number.out" 2>&1 || status=$?
    echo "$status" >"$folder/$number.status"
    exit 0
fi

label=$1 folder=$2
rm -rf "$folder"
mkdir -p "$folder"
awk '{print NR, $0}' >"$folder/pieces"

# The tests' files lie in memory where there is room: each one that is replaced is flushed to its disk.
# The folder's name is short, since a path in the settings has 79 characters at most.
if [ -z "${TMPDIR-}" ] && [ -w /dev/shm ]; then
    turn=1
    until mkdir "/dev/shm/k$turn" 2>/dev/null || [ "$turn" = 99 ]; do turn=$((turn + 1)); done
    if [ "$turn" != 99 ]; then
        TMPDIR=/dev/shm/k$turn
        export TMPDIR
        trap 'rm -rf "$TMPDIR"' EXIT
        trap 'exit 1' HUP INT TERM
    fi
fi
# Stacks of allocations cost more than the allocations: one call deep will do until a fault is looked at.
: "${ASAN_OPTIONS=malloc_context_size=1:quarantine_size_mb=32:allocator_release_to_os_interval_ms=-1}"
: "${QT_QPA_PLATFORM=offscreen}"
export ASAN_OPTIONS QT_QPA_PLATFORM

# run KIND PROCESSES
run() {
    awk -v kind="$1" '$2 == kind' "$folder/pieces" |
        xargs -r -d '\n' -P "$2" -n 1 "$0" --piece "$folder"
}
run wait 8 &
run work "$(nproc)"
wait
LC_ALL=C # what tests print has letters of any code
export LC_ALL

# counted WORD FILE: the number behind the word in a summary line.
counted() {
    found=$(sed -n "s/^\[  $1 *\] \([0-9]*\) tests\{0,1\}[.,].*/\1/p" "$2" | tail -n 1)
    echo "${found:-0}"
}
passed=0 failed=0 skipped=0
while read -r number _ _ _ _ program; do
    out=$folder/$number.out
    tr -d '\r' <"$out" >"$out.text"
    mv "$out.text" "$out"
    bad=$(counted FAILED "$out")
    passed=$((passed + $(counted PASSED "$out")))
    skipped=$((skipped + $(counted SKIPPED "$out")))
    # All that a failing test said; of one that ended its process, the last lines.
    awk '/^\[ RUN/ {said = ""} {said = said $0 "\n"} /^\[  FAILED  \].*ms\)$/ {printf "%s", said}' "$out"
    status=$(cat "$folder/$number.status" 2>/dev/null || echo "none")
    if ! grep -q '^\[==========\] [0-9]* tests\{0,1\} from .* ran\.' "$out" || { [ "$status" != 0 ] && [ "$bad" = 0 ]; }; then
        tail -n 40 "$out"
        echo "$label: ${program##*/} ended with status $status in the middle of its tests"
        bad=$((bad + 1))
    fi
    failed=$((failed + bad))
done <"$folder/pieces"
grep -hE '^\[  SKIPPED \] [^0-9].* \(' "$folder"/*.out || true
if [ $((passed + failed)) = 0 ]; then
    echo "$label: no test has that name" >&2
    exit 1
fi
echo "$label: $passed passed, $failed failed, $skipped skipped" | tee "$folder/summary"
[ "$failed" = 0 ]
