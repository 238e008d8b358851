#!/bin/sh
# By Inkscape's extension for outlines (release 14), run by itself: circles and corners become splines, each curve
# is closed by a polyline of no length.
# inkscape.sh OUT
set -eu
here=$(cd "$(dirname "$0")" && pwd)
PYTHONDONTWRITEBYTECODE=1 PYTHONPATH=$here python3 "$here/write_svg.py" "$1.svg"
out=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
(cd /usr/share/inkscape/extensions && python3 dxf_outlines.py --units=25.4/96 --ROBO=false --POLY=true "$out.svg" >"$out")
rm "$1.svg"
