#!/bin/sh
# try_window.sh KV90WIN.EXE KORVANTI PREFIX PICTURES
# Starts the Windows window program under Wine on a virtual screen and works with it as an operator and a
# design program do: idle, a conversion of three drawings, Setup, autostart with BATCH.LST, /K, a second
# start, a drawing on the command line. What it writes is compared with what KORVANTI, the command of this
# system, writes. A picture of each station goes to PICTURES, to be looked at. The closing line says how many
# stations went as they should.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
program=$1 linux=$2 prefix=$3 pictures=$4
fail() {
    [ -z "${DISPLAY-}" ] || picture failed
    echo "try_window: $1" >&2
    exit 1
}
. "$root/packaging/windows/wine.sh"
make_prefix
for tool in Xvfb xdotool import; do
    command -v "$tool" >/dev/null || fail "$tool is not installed (xvfb, xdotool, imagemagick)"
done
# The typeface of Windows windows; without it Wine takes one whose lines do not fit their fields.
fonts=/usr/share/wine/fonts
[ -f "$fonts/tahoma.ttf" ] || fail "fonts-wine is not installed"
cp "$fonts"/tahoma*.ttf "$prefix/drive_c/windows/Fonts"
mkdir -p "$pictures"
work=$(mktemp -d /tmp/kvwin.XXXXXX) # short: a path in the settings has 79 characters at most
screen=
finish() {
    wineserver -k 2>/dev/null || true
    [ -z "$screen" ] || kill "$screen"
    rm -rf "$work"
}
trap finish EXIT

Xvfb -displayfd 3 -screen 0 1280x1024x24 3>"$work/display" 2>/dev/null &
screen=$!
until [ -s "$work/display" ]; do sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY

stations=0
station() {
    stations=$((stations + 1))
    echo "$stations. $1"
}
picture() { import -window root "$pictures/windows_$1.png"; }
# await WHAT COMMAND...: asks again until COMMAND says yes, for a minute.
await() {
    what=$1 tries=0
    shift
    until "$@" >/dev/null 2>&1; do
        tries=$((tries + 1))
        [ "$tries" -lt 240 ] || fail "waited for a minute for $what"
        sleep 0.25
    done
}
settle() { sleep 1.5; } # the picture is drawn behind the work
# shop NAME KEY=VALUE...: an installation of its own, with a folder for drawings and one for programs.
shop() {
    home=$work/$1
    shift
    mkdir -p "$home/in" "$home/out"
    cp -r "$root/examples/install/." "$home"
    cp "$root/examples/install/INDICE.PRG" "$home/out"
    for setting in "SourcePath90=Z:$home/in/" "DestinationPath90=Z:$home/out/" "Path=Z:$home/out/" "$@"; do
        value=$(printf '%s' "${setting#*=}" | tr / '\\' | sed 's/\\/\\\\/g')
        sed -i "s/^${setting%%=*}=.*/${setting%%=*}=$value/" "$home/KV90.INI"
    done
}
start() { # with the words of the command line
    wine "$program" --home "Z:$home" "$@" >"$home/said" 2>&1 &
    running=$!
}
ended() { ! kill -0 "$running" 2>/dev/null; }
ends_with() { # STATUS
    await "the end of the program" ended
    status=0
    wait "$running" || status=$?
    [ "$status" = "$1" ] || fail "the program ended with status $status, not $1: $(cat "$home/said")"
}
window() { xdotool search --onlyvisible --name "$1"; }
no_window() { ! window "$1"; }
programs() { find "$home/out/SRG" -type f 2>/dev/null; }
has_programs() { [ "$(programs | wc -l)" -ge "$1" ]; }
# same_programs DRAWING...: the programs of these drawings by the command of this system, byte for byte.
same_programs() {
    mkdir "$home/linux"
    cp "$root/examples/install/INDICE.PRG" "$home/linux"
    "$linux" --home "$home" convert -o "$home/linux/" --set "PTSDATA.Path=$home/linux/" "$@" >/dev/null 2>"$home/errors" || fail "$(cat "$home/errors")"
    diff -r --exclude="*.lock" "$home/linux" "$home/out" || fail "the programs differ from those of this system"
}

station "idle"
shop operator
for drawing in door drawer_front side; do cp "$root/examples/drawings/$drawing.dxf" "$home/in"; done
start
await "the main window" window '^Korvanti'
settle
picture idle

station "three drawings are selected and converted by keys"
main=$(window '^Korvanti' | tail -n 1)
eval "$(xdotool getwindowgeometry --shell "$main" | sed 's/^/AT_/')"
xdotool mousemove $((AT_X + 60)) $((AT_Y + 120)) click 1
settle
xdotool key ctrl+a
sleep 0.5
xdotool key alt+p
await "three programs" has_programs 3
settle
picture converted
same_programs "$home"/in/*.dxf

station "Setup opens by its key and closes with Escape"
xdotool key alt+s
await "Setup" window '^Set'
settle
picture setup
xdotool key Escape
await "the end of Setup" no_window '^Set'

station "a second start brings the first to the front and ends"
first=$running
start
ends_with 0
running=$first
kill -0 "$running" || fail "the first window is gone"

station "a drawing for a second start is told as not run"
start "Z:$home/in/door.dxf"
ends_with 1
grep -q 'door.dxf was not run' "$home/said" || fail "the drawing that was not run is not told"
running=$first

station "Exit ends the program and keeps the place of the window"
xdotool key alt+e
ends_with 0

station "BATCH.LST of a design program is done by itself, and /K ends"
shop batch AutoStartBatch=True
cp "$root"/examples/drawings/*.dxf "$home/in"
start /K
await "the main window" window '^Korvanti'
settle
printf 'door.dxf\r\nside.dxf\r\nrouted_door.dxf\r\n' >"$home/batch"
mv "$home/batch" "$home/in/BATCH.LST"
await "PROC.LST" test -s "$home/in/PROC.LST"
picture autostart
ends_with 0
[ ! -e "$home/in/BATCH.LST" ] || fail "BATCH.LST is still there"
[ "$(wc -l <"$home/in/PROC.LST")" = 3 ] || fail "PROC.LST does not name three programs"
same_programs "$home/in/door.dxf" "$home/in/side.dxf" "$home/in/routed_door.dxf"

station "a drawing on the command line is converted and the program ends"
shop drawing
start "Z:$root/examples/drawings/routed_door.dxf"
ends_with 0
same_programs "$root/examples/drawings/routed_door.dxf"

station "a drawing that is none ends with status 1"
echo nonsense >"$home/in/none.dxf"
start "Z:$home/in/none.dxf"
ends_with 1

echo "Windows: the window went through $stations stations as it should; look at $pictures"
