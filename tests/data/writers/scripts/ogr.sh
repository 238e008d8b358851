#!/bin/sh
# By GDAL: points and lines of its own model from plain.dxf; circles become polygons, the layers stay.
# ogr.sh PLAIN OUT
set -eu
rm -f "$2"
OGR_ARC_STEPSIZE=2 ogr2ogr -f DXF "$2" "$1"
