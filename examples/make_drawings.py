#!/usr/bin/env python3
"""Draws the example drawings that come from ezdxf, as a cabinet designer would have them.

Needs the distribution's python3-ezdxf; run it as: /usr/bin/python3 make_drawings.py FOLDER
The drawings kept beside this script are the ones that the expected programs were worked out for; a
new run gives the same entities (dates and identifiers in the header differ).
"""
import sys
from pathlib import Path

import ezdxf
from ezdxf.addons import r12writer
from ezdxf.math import OCS


def rectangle(x, y, width, height):
    return [(x, y), (x + width, y), (x + width, y + height), (x, y + height)]


def door(folder):
    """A door with hinge cups, in R12: border as an old polyline, bores as circles."""
    drawing = ezdxf.new("R12")
    space = drawing.modelspace()
    x0, y0, width, height = 50, 40, 596, 716
    space.add_polyline2d(rectangle(x0, y0, width, height), close=True, dxfattribs={"layer": "BORDER_Z19"})
    for cup_y in (100, 616):
        space.add_circle((x0 + 22.5, y0 + cup_y), 17.5, dxfattribs={"layer": "VBORE_D35_Z13_FD1500"})
        for step in (-22.5, 22.5):
            space.add_circle((x0 + 32, y0 + cup_y + step), 4, dxfattribs={"layer": "VBORE_D8_Z12P5"})
    for handle_y in (300, 428):
        space.add_circle((x0 + 556, y0 + handle_y), 2.5, dxfattribs={"layer": "DRILLING_Z20"})
    # What the shop draws for itself is on other layers and is passed over.
    space.add_text("DOOR LEFT", dxfattribs={"layer": "TITLE", "height": 10, "insert": (x0, y0 - 20)})
    space.add_arc((x0, y0), 60, 0, 90, dxfattribs={"layer": "SYMBOLS"})
    drawing.saveas(folder / "door.dxf")


def side(folder):
    """A cabinet side with two rows at 32 mm and grooves, in R2010: border as four lines."""
    drawing = ezdxf.new("R2010")
    space = drawing.modelspace()
    corners = rectangle(0, 0, 720, 560)
    for start, end in zip(corners, corners[1:] + corners[:1]):
        space.add_line(start, end, dxfattribs={"layer": "BORDER", "thickness": 19})
    for row_y in (37, 523):
        for hole in range(19):
            space.add_point((72 + 32 * hole, row_y), dxfattribs={"layer": "VBORE_T05_Z13_S6_FD3000"})
    for x in (9.5, 710.5):
        for y in (50, 280, 510):
            space.add_circle((x, y), 4, dxfattribs={"layer": "VBORE_Z12"})
    space.add_line((0, 545), (720, 545), dxfattribs={"layer": "GROOVE_D8_K4_Z9"})
    space.add_line((360, 0), (360, 560), dxfattribs={"layer": "GROOVE_D10_K4_Z6_T62"})
    space.add_text("SIDE LEFT OAK", dxfattribs={"layer": "DESCR", "height": 10, "insert": (20, 580)})
    drawing.saveas(folder / "side.dxf")


def bottom(folder):
    """A bottom with dowel bores in its edges, drawn as circles that face the edge, in R2010."""
    drawing = ezdxf.new("R2010")
    space = drawing.modelspace()
    x0, y0, width, height = 20, 10, 568, 500
    space.add_lwpolyline(rectangle(x0, y0, width, height), close=True, dxfattribs={"layer": "BORDER_Z19"})

    def edge_bore(layer, normal, point, radius, depth):
        centre = OCS(normal).from_wcs(point)
        space.add_circle(centre, radius,
                         dxfattribs={"layer": layer, "extrusion": normal, "thickness": -depth})

    # Drawn in the order of a walk around the panel from its upper right corner.
    for y in (450, 250, 50):
        edge_bore("VBORE_S4_F1200", (1, 0, 0), (x0 + width, y0 + y, 9.5), 4, 30)
    for x in (100, 468):
        edge_bore("VBORE", (0, -1, 0), (x0 + x, y0, 9.5), 2.5, 34)
    for y in (50, 250, 450):
        edge_bore("VBORE_S4_F1200", (-1, 0, 0), (x0, y0 + y, 9.5), 4, 30)
    # This one is drawn from inside the panel: the side follows the place, not the normal.
    edge_bore("VBORE", (0, -1, 0), (x0 + 284, y0 + height, 9.5), 2.5, 34)
    for x, y in ((64, 64), (504, 64), (64, 436), (504, 436)):
        space.add_point((x0 + x, y0 + y), dxfattribs={"layer": "VBORE_D5_Z12"})
    space.add_lwpolyline([(x0, y0 + 485), (x0 + width, y0 + 485)],
                         dxfattribs={"layer": "GROOVE_K4_Z8_F4000_FD2000"})
    drawing.saveas(folder / "bottom.dxf")


def inch(folder):
    """An inch panel by the plain R12 stream writer."""
    with r12writer(folder / "inch.dxf") as drawing:
        drawing.add_polyline_2d(rectangle(1, 1, 30, 20), closed=True, layer="BORDER_ZP75")
        for x in (3, 28):
            for y in (3, 18):
                drawing.add_circle((1 + x, 1 + y), 0.125, layer="VBORE_ZP5")
        drawing.add_point((1 + 15.5, 1 + 10.0625), layer="VBORE_DP1875_ZP625_S18")
        drawing.add_line((1, 20.5), (31, 20.5), layer="GROOVE_DP25_ZP375")


if __name__ == "__main__":
    target = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent / "drawings")
    for draw in (door, side, bottom, inch):
        draw(target)
