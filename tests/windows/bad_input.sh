#!/bin/sh
# bad_input.sh KORVANTI_EXE HOLD_FILE_EXE PREFIX
# Runs the Windows console under Wine with what goes wrong in a shop: names that no path can hold, paths of
# 300 characters, drives and machines that are gone, folders and files that are read-only or that another
# program holds. Looks at exit status, the exact lines that tell it and that nothing is half written or left
# behind. Ends with one line that says how many cases were told; the first that fails gives status 1.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
korvanti=$1 holder=$2 prefix=$3
fail() {
    printf 'bad_input: %s\n' "$1" >&2
    exit 1
}
. "$root/packaging/windows/wine.sh"
make_prefix

# Short, since a path in the settings has 79 characters at most; in memory, since each file is flushed.
memory=/dev/shm
[ -w "$memory" ] || memory=${TMPDIR:-/tmp}
work=$(mktemp -d "$memory/kvbad.XXXXXX")
share="$prefix/dosdevices/unc/shop" # what stands here is the machine \\shop for Wine
trap 'rm -f "$work/sign"; wait; chmod -R u+w "$work"; rm -rf "$work" "$share"' EXIT
cd "$work"
here=$(printf %s "Z:$work" | tr / '\\') # as the program shows it
cases=0
home=home

# convert STATUS WORD...: one run of the console; what it says is left in `said`.
convert() {
    wanted=$1 status=0
    shift
    timeout 60 wine "$korvanti" --home "$home" convert "$@" >said 2>&1 || status=$?
    [ "$status" = "$wanted" ] || fail "status $status, not $wanted, for $*: $(cat said)"
    if grep -q "$(printf '\r')" said; then fail "lines end in CR LF for $*"; fi
    left=$(find . -name '.kv-*' ! -name '.kv-*.lock') # locks stay, free
    [ -z "$left" ] || fail "left behind by $*: $left"
}
# at HOME COMMAND...: the same with another installation.
at() {
    home=$1
    shift
    "$@"
    home=home
}
# told LINE...: all these lines were said; one case.
told() {
    for line; do
        grep -Fxq -- "$line" said || fail "not told: $line
$(cat said)"
    done
    cases=$((cases + 1))
}
# told_why PATH: a line names it and, in the system's own words, why it cannot be told.
told_why() {
    why="$1: " awk 'index($0, ENVIRON["why"]) == 1 { found = 1 } END { exit !found }' said || fail "not told why: $1
$(cat said)"
}
# told_missing PATH: the same, or that it is not there: of a machine that nobody knows some systems say one
# thing and some the other.
told_missing() {
    grep -qxF "$1  NOT FOUND" said || told_why "$1"
}
# written DRAWING...: their programs stand, whole; they are taken away for the next run.
written() {
    for drawing; do
        place=$(printf 'prog/SRG/%.1s/%s' "$drawing" "${drawing#?}")
        tail -n 1 "$place" 2>/dev/null | grep -q '^M2' || fail "$place is not written whole: $(cat said)"
        rm "$place"
    done
}
no_program() {
    programs=$(find prog/SRG -type f 2>/dev/null || true)
    [ -z "$programs" ] || fail "written though it failed: $programs"
}
# hold MILLISECONDS FILE...: another program has them open, until the time is over or let_go.
hold() {
    wine "$holder" sign "$@" &
    tries=0
    until [ -f sign ]; do
        sleep 0.05
        tries=$((tries + 1))
        [ "$tries" -lt 600 ] || fail "the files cannot be held"
    done
}
let_go() {
    rm -f sign
    wait
}

# programs_in INSTALLATION FOLDER: its settings name the folder for programs.
programs_in() {
    sed -i "s|^DestinationPath90=.*|DestinationPath90=$(printf %s "$2" | sed 's/\\/\\\\/g')|" "$1/KV90.INI"
}

cp -r "$root/examples/install" home
chmod -R u+w home
programs_in home "$here\\prog"
mkdir prog dxf
cp home/INDICE.PRG prog
for name in DOOR BOARD 'Türe' 'αβ' '文'; do cp "$root/examples/drawings/door.dxf" "dxf/$name.dxf"; done
folders=$(printf 'a-folder-of-twenty-c/%.0s' 1 2 3 4 5 6 7 8 9 10 11 12 13 14)
long="$work/$folders"
mkdir -p "$long"
cp dxf/DOOR.dxf "$long/LONG.dxf"
[ ${#long} -gt 300 ] || fail "the long path is not long"
shown_long=$(printf %s "Z:$long" | tr / '\\')
name300=$(printf '%0300d' 0)

# Drawings: each bad one is told by name, as it was typed too, and the others go on.
convert 1 'dxf/αβ.dxf' 'dxf/文.dxf' 'Q:\x.dxf' '\\no-such-machine\dxf\x.dxf' "$name300.dxf" dxf nul \
    'dxf\DOOR.dxf' 'dxf/Türe.dxf' "$long/LONG.dxf" "\\\\?\\$here\\dxf\\BOARD.dxf"
told 'αβ is called av in programs and lists' '文 is called 7ED8B36E in programs and lists'
told 'Q:\x.dxf  NOT FOUND' 'korvanti: Q:\x.dxf: failed'
told_missing '\\no-such-machine\dxf\x.dxf'
told 'korvanti: \\no-such-machine\dxf\x.dxf: failed'
told "$here\\$name300.dxf  NOT FOUND" "korvanti: $name300.dxf: failed"
told "$here\\dxf.DXF  NOT FOUND" "korvanti: dxf: failed"
told 'korvanti: nul: failed'
written DOOR LONG BOARD AV 7ED8B36E
[ -f prog/SRG/T/ÜRE ] || fail "the name with an umlaut is not kept: $(find prog)"
rm prog/SRG/T/ÜRE
no_program

# The shell leaves patterns to the program; one that no file answers is a name that no file has.
convert 1 'dxf\*O*R*.DXF' 'dxf/none*.dxf'
told "$here\\dxf\\none*.dxf  NOT FOUND" 'korvanti: dxf/none*.dxf: failed'
[ "$(grep -c 'CONVERSION COMPLETED' said)" = 2 ] || fail "a pattern counts other files: $(cat said)"
written DOOR BOARD

# Program folders that are not there.
convert 1 dxf/DOOR.dxf --set 'DestinationPath90=Q:\prog'
told 'CNC90/Winner90 Index File Q:\prog\INDICE.PRG Not Found' 'Q:\prog\: the program folder does not exist'
convert 1 dxf/DOOR.dxf -o '\\no-such-machine\prog\'
grep -qxF '\\no-such-machine\prog\: the program folder does not exist' said ||
    told_why "$here\\dxf\\DOOR.dxf: "'\\no-such-machine\prog\INDICE.PRG'
convert 1 dxf/DOOR.dxf -o "$long/none/"
told "$shown_long"'none\: the program folder does not exist'
convert 1 dxf/DOOR.dxf -o 'αβ/'
told "$here\\αβ\\: the program folder does not exist"
no_program

# An installation that is gone, and a word that no call knows.
for gone in 'Q:\home' 'αβ'; do
    at "$gone" convert 2 dxf/DOOR.dxf
    told 'korvanti: the folder named by --home or KORVANTI_HOME is not there'
done
convert 2 dxf/DOOR.dxf --colour
told 'korvanti: "--colour" is no word of this call; drawings that begin with a dash stand behind --' \
    'korvanti convert --help tells how it is called.'
no_program

# A folder with a path of 300 characters serves as well as any, for programs and as the installation. A
# path in the settings is read up to 79 characters, so a longer one there leads nowhere and is told so.
cp home/INDICE.PRG home/KV90.INI "$long"
convert 0 dxf/DOOR.dxf -o "$long"
[ -s "$long/SRG/D/OOR" ] || fail "no program below the long path: $(cat said)"
rm -r "$long/SRG"
at "$long" convert 0 dxf/DOOR.dxf
written DOOR
cases=$((cases + 2))
kept=$(printf '%.79s' "$shown_long")
cp -r home cut
programs_in cut "$shown_long"
at cut convert 1 dxf/DOOR.dxf
told "$kept\\: the program folder does not exist"
no_program

# An installation on a machine of the network serves too.
mkdir -p "$share"
ln -s "$work" "$share/dxf"
at '\\shop\dxf\home' convert 0 '\\shop\dxf\dxf\DOOR.dxf' //shop/dxf/dxf/BOARD.dxf -o '\\shop\dxf\prog\'
written DOOR BOARD
cases=$((cases + 1))

# An installation that is read-only: nothing is to be kept there, and the programs go elsewhere.
find home -type f -exec cksum {} + | sort >before
chmod -R a-w home
convert 0 dxf/DOOR.dxf
written DOOR
find home -type f -exec cksum {} + | sort | cmp -s before - || fail "the read-only installation has changed"
chmod -R u+w home
cases=$((cases + 1))

# Files that are read-only stay as they are and are told; the other drawings go on.
convert 0 dxf/DOOR.dxf
chmod a-w prog/SRG/D/OOR
sed 's/VBORE_D8_Z12P5/VBORE_D8_Z11P5/' dxf/DOOR.dxf >dxf/other && mv dxf/other dxf/DOOR.dxf
cp prog/SRG/D/OOR old
convert 1 dxf/DOOR.dxf dxf/BOARD.dxf
told 70 "$here\\prog\\SRG\\D\\OOR: Access denied."
cmp -s old prog/SRG/D/OOR || fail "a read-only program has changed"
chmod u+w prog/SRG/D/OOR
written BOARD
chmod a-w prog/INDICE.PRG
cp prog/INDICE.PRG index
convert 1 dxf/DOOR.dxf
told "PROBLEM ACCESSING $here\\prog\\INDICE.PRG FOR WRITE" "$here\\prog\\INDICE.PRG: Access denied."
chmod u+w prog/INDICE.PRG

# Files that another program holds for ever: told by name, the old ones as they were, the others go on.
hold 60000 prog/SRG/D/OOR
convert 1 dxf/DOOR.dxf dxf/BOARD.dxf
told "$here\\dxf\\DOOR.dxf: $here\\prog\\SRG\\D\\OOR: in use by another program"
let_go
cmp -s old prog/SRG/D/OOR || fail "a program that was held has changed"
written BOARD
cp prog/INDICE.PRG index
hold 60000 prog/INDICE.PRG
convert 1 dxf/DOOR.dxf
told "$here\\prog\\INDICE.PRG: in use by another program"
let_go
cmp -s index prog/INDICE.PRG || fail "an index that was held has changed"
hold 60000 dxf/DOOR.dxf
convert 1 dxf/DOOR.dxf dxf/BOARD.dxf
told "$here\\dxf\\DOOR.dxf: in use by another program" 'korvanti: dxf/DOOR.dxf: failed'
let_go
written BOARD

# Held for a second: the conversion waits for it.
hold 1000 prog/SRG/D/OOR prog/INDICE.PRG
convert 0 dxf/DOOR.dxf
let_go
cmp -s old prog/SRG/D/OOR && fail "the program is still the old one"
written DOOR
hold 1000 dxf/DOOR.dxf
convert 0 dxf/DOOR.dxf
let_go
written DOOR
cases=$((cases + 2))

# What is read by other programs is UTF-8 with LF; a reader that goes away is told.
convert 0 --report json dxf/Türe.dxf
grep -q '"drawing": "dxf/Türe.dxf"' said || fail "the name is no UTF-8: $(cat said)"
(wine "$korvanti" --home home trace dxf/*.dxf 2>errors || echo "$?" >status) | head -c 5 >said
[ "$(cat status)" = 1 ] || fail "the status of a broken pipe is not 1"
mv errors said
told 'korvanti: standard output cannot be written'

echo "Windows: $cases cases of bad input were told"
