#!/bin/sh
# By OpenSCAD, which writes all on layer 0: one drawing for each layer, joined here under the layers' names.
# openscad.sh OUT
set -eu
work=$(mktemp -d)
export QT_QPA_PLATFORM=offscreen
part() { # LAYER SCAD
    printf '$fn=360;\n%s\n' "$2" >"$work/part.scad"
    openscad -q -o "$work/part.dxf" "$work/part.scad"
    # the entities alone, under the layer's name
    awk -v layer="$1" '{ sub(/\r$/, "") } NR % 2 { code = $1; next }
        code == 2 && $1 == "ENTITIES" { inside = 1; next } code == 0 && $1 == "ENDSEC" { inside = 0 }
        inside { print code; print (code == 8 ? layer : $0) }' "$work/part.dxf" >>"$work/all"
}
part BORDER_Z18 'square([600,400]);'
for at in 50,50 50,350 550,50 550,350 300,50 300,350; do part VBORE_Z12 "translate([$at]) circle(r=2.5);"; done
part VBORE_Z13 'translate([25,120]) circle(r=17.5); translate([575,280]) circle(r=17.5);'
part VBORE_Z10 'for (p=[[34.5,142.5],[34.5,97.5],[565.5,302.5],[565.5,257.5]]) translate(p) circle(r=4);'
part ROUTE1_Z5_T71 'translate([220,200]) minkowski() { square([160,40]); circle(r=20); }'
part EXCAV_K8_Z6_D12_T30 'translate([450,120]) circle(r=30);'
{
    printf '0\nSECTION\n2\nENTITIES\n'
    cat "$work/all"
    # It knows areas alone: the groove's line is added.
    printf '0\nLINE\n8\nGROOVED4Z8\n10\n100\n20\n380\n11\n500\n21\n380\n0\nENDSEC\n0\nEOF\n'
} >"$1"
rm -r "$work"
