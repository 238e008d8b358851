#!/bin/sh
# run_tests.sh TESTS.EXE PREFIX
# Runs the Windows test program under Wine, in as many processes as there are processors: a start of Wine
# costs more than most tests. Shows what failed; the closing line counts.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
tests=$1 prefix=$2
fail() {
    echo "run_tests: $1" >&2
    exit 1
}
. "$here/wine.sh"
make_prefix

# They write to the drive C, which is a folder of the test on another host and the machine's own disk here.
elsewhere=Navetta.WithoutVariablesTheControlsOwnFoldersServe:PathFields.FolderOnAGoodDriveIsMade

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
    echo "work $shards $shard *-$elsewhere $tests"
    shard=$((shard + 1))
done | KORVANTI_LAUNCHER=wine "$root/tests/run_tests.sh" Windows "$output/out"
