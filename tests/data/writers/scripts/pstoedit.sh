#!/bin/sh
# By pstoedit from PostScript, which has no layers: one drawing for each, joined under the layers' names. Circles
# are curves there, and come out as splines.
# pstoedit.sh OUT
set -eu
work=$(mktemp -d)
part() { # LAYER PATH
    printf '%%!PS-Adobe-3.0 EPSF-3.0\n%%%%BoundingBox: 0 0 600 400\n%%%%HiResBoundingBox: 0 0 600 400\n.1 setlinewidth\nnewpath %s stroke\nshowpage\n' "$2" >"$work/part.eps"
    pstoedit -q -f 'dxf_s: -splineasbspline -mm' -xscale 2.834645669 -yscale 2.834645669 "$work/part.eps" "$work/part.dxf" 2>/dev/null
    awk -v layer="$1" '{ sub(/\r$/, "") } NR % 2 { code = $1; next }
        code == 2 && $1 == "ENTITIES" { inside = 1; next } code == 0 && $1 == "ENDSEC" { inside = 0 }
        inside { print code; print (code == 8 ? layer : $0) }' "$work/part.dxf" >>"$work/all"
}
part BORDER_Z18 '0 0 moveto 600 0 lineto 600 400 lineto 0 400 lineto closepath'
for at in '50 50' '50 350' '550 50' '550 350' '300 50' '300 350'; do part VBORE_Z12 "$at 2.5 0 360 arc closepath"; done
for at in '25 120' '575 280'; do part VBORE_Z13 "$at 17.5 0 360 arc closepath"; done
for at in '34.5 142.5' '34.5 97.5' '565.5 302.5' '565.5 257.5'; do part VBORE_Z10 "$at 4 0 360 arc closepath"; done
part GROOVED4Z8 '100 380 moveto 500 380 lineto'
part ROUTE1_Z5_T71 '220 180 moveto 380 180 lineto 380 200 20 270 360 arc 400 240 lineto 380 240 20 0 90 arc 220 260 lineto 220 240 20 90 180 arc 200 200 lineto 220 200 20 180 270 arc'
part EXCAV_K8_Z6_D12_T30 '450 120 30 0 360 arc closepath'
{
    printf '0\nSECTION\n2\nENTITIES\n'
    cat "$work/all"
    printf '0\nENDSEC\n0\nEOF\n'
} >"$1"
rm -r "$work"
