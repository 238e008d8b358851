#!/bin/sh
# tests/faults/run_all.sh [FILTER]   runs all, or what the filter takes out
# tests/faults/run_all.sh --table    prints the counts of the last run as docs/reliability.md holds them
# Every fault of every shop, where ./test tries a sample: each call that fails, each kill, each power cut,
# many processes, large shops. Builds a program without sanitizers, which is some ten times as quick, into
# build/faults. The tables are left in build/faults/report.txt; their first lines are printed.
# KORVANTI_SEED=7 takes other chances of the power cuts. About three minutes on two processors.
# Exit status 1 when there is any finding, or a test ended early.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$root/build/faults
report=$build/report.txt
filter=${1-*}

if [ "$filter" = --table ]; then
    echo "| Fault | tried | whole | reported | findings |"
    echo "|---|---|---|---|---|"
    sed -nE 's/^(.*): ([0-9]+) tried, ([0-9]+) whole, ([0-9]+) reported, ([0-9]+) findings(.*)$/| \1 | \2 | \3 | \4 | \5\6 |/p' \
        "$report" | LC_ALL=C sort
    exit
fi

launcher=$(command -v ccache || true)
window=OFF # whose tests want Qt
[ -z "$(find /usr/lib /opt -path "*/cmake/Qt6Widgets" -print -quit 2>/dev/null)" ] || window=ON
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O1 -DKORVANTI_BATCHES=ON \
    -DKORVANTI_TESTS=ON -DKORVANTI_WINDOW="$window" -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher" >/dev/null
cmake --build "$build" --target korvanti_fault_tests -j "$(nproc)"

# In memory: a flush of a real disk takes milliseconds, and the system's own order of writing is not asked for.
folder=$(mktemp -d /dev/shm/kXXXX)
trap 'rm -rf "$folder"' EXIT
trap 'exit 1' HUP INT TERM
rm -f "$report"
: "${KORVANTI_RANDOM=100000}"
export KORVANTI_RANDOM
pieces=2 piece=0 running=
while [ "$piece" -lt "$pieces" ]; do
    TMPDIR=$folder GTEST_TOTAL_SHARDS=$pieces GTEST_SHARD_INDEX=$piece KORVANTI_FAULT_REPORT=$report \
        "$build/tests/korvanti_fault_tests" --gtest_color=no --gtest_filter="$filter" >"$build/piece$piece.out" 2>&1 &
    running="$running $!"
    piece=$((piece + 1))
done
status=0
for process in $running; do
    wait "$process" || status=1
done
cat "$build"/piece*.out | grep -h '^\[ FAULTS' || true
if [ "$status" = 0 ]; then
    echo "no findings"
else
    cat "$build"/piece*.out | grep -h '^\[  FAILED  \].*ms)$' || tail -n 20 "$build"/piece*.out
    echo "findings: $report, $build/piece*.out"
fi
exit "$status"
