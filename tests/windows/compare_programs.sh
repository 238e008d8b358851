#!/bin/sh
# compare_programs.sh LINUX_KORVANTI WINDOWS_KORVANTI RANDOM_DRAWINGS PREFIX
# Converts all examples and 1,000 random drawings for each of the three controls, once on this system and
# once under Wine, and compares every file that was written byte for byte. Ends with one line that says
# how many files were alike; any difference is named and gives exit status 1.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
linux=$1 windows=$2 draw=$3 prefix=$4
fail() {
    echo "compare_programs: $1" >&2
    exit 1
}
. "$root/packaging/windows/wine.sh"
make_prefix

# Short, since a path in the settings has 79 characters at most; in memory, since each file is flushed.
memory=/dev/shm
[ -w "$memory" ] || memory=${TMPDIR:-/tmp}
work=$(mktemp -d "$memory/kvcmp.XXXXXX")
trap 'rm -rf "$work"' EXIT

"$draw" "$work/drawings"
mkdir "$work/drawings/examples"
cp "$root"/examples/drawings/*.dxf "$work/drawings/examples"
drawings=$(find "$work/drawings" -name '*.dxf' | wc -l)

# Settings of a folder of drawings, so that each switch of the operator is on for some.
settings_of() {
    case $1 in
    examples) echo "LeadS=1 MakeHBD=1" ;;
    0) echo "LeadS=0" ;;
    1) echo "LeadS=1 LeadLength=30 LeadRampIn=1" ;;
    2) echo "LeadS=1 LeadRampOut=1 CornerComp=1 Optimizer=1" ;;
    3) echo "RemoveBorderRoute=1 DRAlternate=1 Optimizer=1" ;;
    4) echo "PrecisionMetric=6 LineOrigin=UR" ;;
    5) echo "MakeHBD=1 HBDGlue=1 LineOrigin=UL" ;;
    6) echo "UnitMode=1 PrecisionInch=5" ;;
    7) echo "LineLimit=200 Sequence=RVGH LeadS=1" ;;
    8) echo "Origin=1 RouteTolerance=20 EvOptOff=False EvOptGS=True" ;;
    *) echo "SawKerf=6 MakeHBD=1 HBDDowel=1 Optimizer=1 LineOrigin=LR" ;;
    esac
}

# convert SIDE ROOT_OF_PATHS COMMAND...: all folders of drawings for all controls, into work/SIDE.
convert() {
    side=$1 drive=$2
    shift 2
    for system in cnc90 genesis evolution; do
        for folder in "$work"/drawings/*; do
            group=$(basename "$folder")
            out="$work/$side/$system/$group"
            mkdir -p "$out"
            cp -r "$root/examples/install" "$out/shop"
            # Options for settings are words without blanks.
            # shellcheck disable=SC2046
            (
                cd "$folder"
                status=0
                "$@" --home "$drive$out/shop" convert --system "$system" \
                    $(for setting in $(settings_of "$group") \
                        "DestinationPath90=$drive$out/shop/" "DestinationPathGen=$drive$out/shop/" \
                        "DestinationPathEV=$drive$out/shop/" "HBDDestinationPath=$drive$out/shop/" \
                        "PTSDATA.Path=$drive$out/shop/"; do echo --set "$setting"; done) \
                    $(ls) >"$work/report" 2>"$work/errors" || status=$?
                # Some random drawings are refused, which is status 1; anything else is no conversion.
                [ "$status" -le 1 ] || fail "$side, $system, $group: status $status: $(tail -n 3 "$work/errors")"
                sed "s/^korvanti: \([^:]*\): .*/\1/" "$work/errors" | tr -d '\r' >"$out/failed"
            )
        done
    done
}

day=
while [ "$day" != "$(date +%D)" ]; do # the index says the day: what spans midnight is no comparison
    day=$(date +%D)
    rm -rf "$work/linux" "$work/windows"
    convert linux "" "$linux"
    convert windows Z: wine "$windows"
done

programs=$(find "$work/linux" -type f -path '*/shop/*' | wc -l)
failed=$(cat "$work"/linux/*/*/failed | wc -l)
if ! diff -rq --exclude="*.lock" "$work/linux" "$work/windows" >"$work/differences" 2>&1; then
    sed "s|$work/||g" "$work/differences" | head -n 50
    echo "Windows: $(wc -l <"$work/differences") of $programs files differ from those written on Linux"
    exit 1
fi
echo "Windows: $programs files of $drawings drawings for three controls are the same bytes as on Linux ($failed refused alike)"
