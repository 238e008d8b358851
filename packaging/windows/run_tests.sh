#!/bin/sh
# run_tests.sh TESTS.EXE PREFIX [GTEST_OPTION...]
# Runs the Windows test program under Wine, in as many processes as there are processors: a start of Wine
# costs more than most tests. Shows what failed; the closing line says how many tests passed.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
tests=$1 prefix=$2
shift 2
fail() {
    echo "run_tests: $1" >&2
    exit 1
}
. "$here/wine.sh"
make_prefix

# They write to the drive C, which is a folder of the test on another host and the machine's own disk here.
elsewhere=Navetta.WithoutVariablesTheControlsOwnFoldersServe:PathFields.FolderOnAGoodDriveIsMade
case "$*" in *--gtest_filter*) ;; *) set -- "$@" "--gtest_filter=-$elsewhere" ;; esac

# The tests' files lie in memory where there is room: each one that is replaced is flushed to its disk.
memory=/dev/shm
[ -w "$memory" ] || memory=${TMPDIR:-/tmp}
output=$(mktemp -d "$memory/kvwin.XXXXXX")
mkdir "$output/temp"
temp=$(find "$prefix/drive_c/users" -mindepth 2 -maxdepth 2 -name Temp | head -n 1)
[ -n "$temp" ] || fail "Wine has no folder for temporary files"
rm -rf "$temp"
ln -s "$output/temp" "$temp"
trap 'rm -rf "$output" "$temp" && mkdir "$temp"' EXIT
shards=$(nproc)
shard=0
while [ "$shard" -lt "$shards" ]; do
    (
        status=0
        GTEST_TOTAL_SHARDS=$shards GTEST_SHARD_INDEX=$shard \
            wine "$tests" --gtest_color=no "$@" >"$output/$shard" 2>&1 || status=$?
        echo "$status" >"$output/$shard.status"
    ) &
    shard=$((shard + 1))
done
wait

passed=0 bad=0 skipped=0 shard=0
while [ "$shard" -lt "$shards" ]; do
    text=$output/$shard.txt
    tr -d '\r' <"$output/$shard" >"$text"
    count=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\{0,1\}\..*/\1/p' "$text" | tail -n 1)
    passed=$((passed + ${count:-0}))
    skipped=$((skipped + $(grep -c '^\[  SKIPPED \] .*ms)$' "$text" || true)))
    if [ "$(cat "$output/$shard.status")" != 0 ] || [ -z "$count" ]; then
        bad=1
        # All that a failing test said, then the list of those that failed; a crash shows its last test.
        awk '/^\[ RUN/ {said = ""} {said = said $0 "\n"} /^\[  FAILED  \].*ms\)$/ {printf "%s", said}' "$text"
        tail -n 20 "$text"
        echo "Windows: process $shard of the tests ended with status $(cat "$output/$shard.status")" >&2
    fi
    shard=$((shard + 1))
done
[ "$skipped" = 0 ] || echo "Windows: $skipped tests were skipped"
if [ "$bad" != 0 ]; then
    echo "Windows: tests FAILED under Wine; $passed passed" >&2
    exit 1
fi
[ "$passed" -gt 0 ] || fail "no test ran"
echo "Windows: $passed tests passed under Wine"
