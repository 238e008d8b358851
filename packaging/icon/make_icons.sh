#!/bin/sh
# Draws the program's icon from korvanti.svg.
#   make_icons.sh             makes korvanti.ico (16 to 256 pixels), which the Windows programs carry
#   make_icons.sh 128 korvanti_128.png   makes the picture of the window's title bar
#   make_icons.sh SIZE FILE   makes one picture of SIZE pixels as a PNG file
# Needs rsvg-convert (librsvg2-bin), and for korvanti.ico ImageMagick.
set -eu

here=$(cd "$(dirname "$0")" && pwd)

fail() {
    echo "make_icons.sh: $1" >&2
    exit 1
}

command -v rsvg-convert >/dev/null || fail "rsvg-convert is missing (package librsvg2-bin)"

draw() {
    rsvg-convert --width "$1" --height "$1" --output "$2" "$here/korvanti.svg"
}

if [ $# = 2 ]; then
    draw "$1" "$2"
    exit
fi
[ $# = 0 ] || fail "wrong number of words; the head of this script tells how it is called"

command -v convert >/dev/null || fail "convert is missing (package imagemagick)"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
set --
for size in 16 24 32 48 64 256; do
    draw "$size" "$scratch/$size.png"
    set -- "$@" "$scratch/$size.png"
done
convert "$@" "$scratch/korvanti.ico"
mv "$scratch/korvanti.ico" "$here/korvanti.ico"
