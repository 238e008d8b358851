#!/usr/bin/env python3
"""Draws the example drawings that come from ezdxf, as a cabinet designer would have them.

Needs the distribution's python3-ezdxf; run it as: /usr/bin/python3 make_drawings.py FOLDER
The drawings kept beside this script are the ones that the expected programs were worked out for; a
new run gives the same entities (dates and identifiers in the header differ).
"""
import math
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
    drawing = ezdxf.new("R2010", units=ezdxf.units.MM)
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
    drawing = ezdxf.new("R2010", units=ezdxf.units.MM)
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


def frame(space, corners, layer):
    """Four lines around the corners, as an exploded rectangle."""
    for start, end in zip(corners, corners[1:] + corners[:1]):
        space.add_line(start, end, dxfattribs={"layer": layer})


def rounded_outline(x, y, width, height, radius):
    """Vertices with bulges, counter-clockwise, from the middle of the lower side."""
    quarter = 0.4142135623730951  # tan(90 / 4): a quarter circle
    right, top = x + width, y + height
    return [(x + width / 2, y, 0), (right - radius, y, quarter), (right, y + radius, 0),
            (right, top - radius, quarter), (right - radius, top, 0), (x + radius, top, quarter),
            (x, top - radius, 0), (x, y + radius, quarter), (x + radius, y, 0)]


def rounded_lines(space, x, y, width, height, radius, layer):
    """The same as lines and arcs, counter-clockwise from the lower left corner."""
    right, top = x + width, y + height
    on_layer = {"layer": layer}
    space.add_line((x + radius, y), (right - radius, y), dxfattribs=on_layer)
    space.add_arc((right - radius, y + radius), radius, 270, 360, dxfattribs=on_layer)
    space.add_line((right, y + radius), (right, top - radius), dxfattribs=on_layer)
    space.add_arc((right - radius, top - radius), radius, 0, 90, dxfattribs=on_layer)
    space.add_line((right - radius, top), (x + radius, top), dxfattribs=on_layer)
    space.add_arc((x + radius, top - radius), radius, 90, 180, dxfattribs=on_layer)
    space.add_line((x, top - radius), (x, y + radius), dxfattribs=on_layer)
    space.add_arc((x + radius, y + radius), radius, 180, 270, dxfattribs=on_layer)


def clockwise(outline):
    """The outline the other way round: the bulge of a span goes with its other end."""
    points = [(x, y) for x, y, _ in outline]
    bulges = [-bulge for _, _, bulge in outline]
    return [(*point, bulge) for point, bulge in zip(points[:1] + points[:0:-1], bulges[::-1])]


def routed_door(folder):
    """A door with a profile, an open ornament, a pocket of each kind and its outline, in R2010."""
    drawing = ezdxf.new("R2010", units=ezdxf.units.MM)
    space = drawing.modelspace()
    space.add_lwpolyline(rectangle(50, 40, 596, 716), close=True, dxfattribs={"layer": "BORDER_Z19"})
    for handle_y in (340, 468):
        space.add_circle((606, handle_y), 2.5, dxfattribs={"layer": "DRILLING_Z20"})

    # The profile around the field: lines and an arch, counter-clockwise, the tool inside.
    profile = {"layer": "ROUTE1_Z5_T102_L6_S18_F4000_FD2000_LD20"}
    space.add_line((118, 120), (578, 120), dxfattribs=profile)
    space.add_line((578, 120), (578, 596), dxfattribs=profile)
    space.add_line((578, 596), (498, 596), dxfattribs=profile)
    space.add_arc((348, 396), 250, math.degrees(math.atan2(200, 150)),
                  math.degrees(math.atan2(200, -150)), dxfattribs=profile)
    space.add_line((198, 596), (118, 596), dxfattribs=profile)
    space.add_line((118, 596), (118, 120), dxfattribs=profile)

    # An open ornament, drawn in no order: its pieces find each other.
    ornament = {"layer": "ROUTE2_Z3_T105_S18_F5000_FA3000_FD2000"}
    space.add_line((308, 690), (308, 680), dxfattribs=ornament)
    space.add_arc((328, 690), 20, 90, 180, dxfattribs=ornament)
    space.add_line((208, 660), (288, 660), dxfattribs=ornament)
    space.add_line((408, 710), (328, 710), dxfattribs=ornament)
    space.add_arc((288, 680), 20, 270, 360, dxfattribs=ornament)

    # The pockets: a rounded rectangle with its start mark, which ends where the first line begins
    # and points along it, and a circle.
    pocket = "EXCAV_K8_Z8_T103_R6_S18_F5000_FD1500"
    rounded_lines(space, 250, 200, 196, 100, 36, pocket)
    space.add_lwpolyline([(276, 200, 2, 0), (286, 200, 0, 0)], format="xyse", dxfattribs={"layer": pocket})
    space.add_circle((348, 420), 40, dxfattribs={"layer": pocket})

    # The outline comes last; it begins in mid-edge, so that the tool comes in from outside.
    space.add_lwpolyline(rounded_outline(50, 40, 596, 716, 10), format="xyb", close=True,
                         dxfattribs={"layer": "ROUTE9_Z20_T71_R8_S18_F6000_FA3000_FD3000"})
    drawing.saveas(folder / "routed_door.dxf")


def countertop(folder):
    """A countertop with cut-outs in depth passes, tap holes and a drip groove, in R12."""
    drawing = ezdxf.new("R12")
    space = drawing.modelspace()
    x0, y0, width, height = 100, 100, 2400, 600
    frame(space, rectangle(x0, y0, width, height), "BORDER_Z38")
    for row, line in enumerate(("POST INSTRUCTIONS", "CORNERCOMP ON")):
        space.add_text(line, dxfattribs={"layer": "INSTR", "height": 10, "insert": (x0, y0 - 30 - 20 * row)})

    # The sink: clockwise with the tool to the right is inside; four passes; ramps of 3 mm.
    sink = rounded_outline(x0 + 300, y0 + 80, 760, 440, 60)
    space.add_polyline2d(clockwise(sink), format="xyb", close=True,
                         dxfattribs={"layer": "ROUTE2_Z40_T71_R9_M4_S18_F5000_FA3000_FD1500_LD30_RI3_RO3"})
    # The hob is drawn from a corner: CORNERCOMP moves its start to the middle of the first side.
    hob = rectangle(x0 + 1500, y0 + 55, 560, 490)
    space.add_polyline2d(hob[:1] + hob[:0:-1], close=True,
                         dxfattribs={"layer": "ROUTE3_Z40_T71_R9_M2_S18_F5000_FD1500_LD30"})
    # One tap hole is drilled, one routed with a lead of its own.
    space.add_circle((x0 + 680, y0 + 560), 17.5, dxfattribs={"layer": "VBORE_Z39_S3_FD800"})
    space.add_circle((x0 + 1200, y0 + 500), 25, dxfattribs={"layer": "ROUTE1_Z40_T71_R9_S18_F3000_FD1500_LD12"})
    # The drip groove runs out at both ends; it is drawn in two pieces.
    for start, end in ((0, 1100), (1100, width)):
        space.add_line((x0 + start, y0 + 20), (x0 + end, y0 + 20),
                       dxfattribs={"layer": "ROUTE4_Z4_T5_S12_F6000_FD2000"})
    drawing.saveas(folder / "countertop.dxf")


def nested_sheet(folder):
    """A sheet with 32 parts in four shapes, each with bores and a cut-out, in R2010."""
    drawing = ezdxf.new("R2010", units=ezdxf.units.MM)
    space = drawing.modelspace()
    x0, y0 = 10, 10
    space.add_lwpolyline(rectangle(x0, y0, 2500, 1250), close=True, dxfattribs={"layer": "BORDER_Z18"})
    inner = {"layer": "ROUTE1_Z18P2_T71_R6_S18_F5000_FA2500_FD2000_LD8"}
    outline = {"layer": "ROUTE2_Z18P2_T71_R6_S18_F6000_FA3000_FD2000_LD8"}
    for number in range(32):
        column, row = number % 8, number // 8
        x, y = x0 + 22 + 308 * column, y0 + 25 + 304 * row
        width, height = 276 - 2 * (number % 3), 270 - 3 * (number % 5)
        for step_x in (37, width - 37):
            for step_y in (30, height - 30):
                space.add_point((x + step_x, y + step_y), dxfattribs={"layer": "VBORE_D5_Z12"})
        # The part's outline: counter-clockwise, the tool to the right of it, outside.
        shape = number % 4
        if shape == 0:
            space.add_lwpolyline(rounded_outline(x, y, width, height, 15), format="xyb", close=True,
                                 dxfattribs=outline)
        elif shape == 1:
            frame(space, rectangle(x, y, width, height), outline["layer"])
        elif shape == 2:
            rounded_lines(space, x, y, width, height, 24, outline["layer"])
        else:
            notch = [(x, y), (x + width, y), (x + width, y + height - 60), (x + width - 90, y + height - 60),
                     (x + width - 90, y + height), (x, y + height)]
            space.add_lwpolyline(notch, close=True, dxfattribs=outline)
        # The cut-out within: clockwise, the tool to the right of it, inside.
        middle_x, middle_y = x + 130, y + 120
        if number % 3 == 0:
            space.add_circle((middle_x, middle_y), 30 + number % 4, dxfattribs=inner)
        elif number % 3 == 1:
            hole = rectangle(middle_x - 40, middle_y - 25, 80, 50)
            space.add_lwpolyline(hole[:1] + hole[:0:-1], close=True, dxfattribs=inner)
        else:
            hole = rounded_outline(middle_x - 45, middle_y - 30, 90, 60, 12)
            space.add_lwpolyline(clockwise(hole), format="xyb", close=True, dxfattribs=inner)
    drawing.saveas(folder / "nested_sheet.dxf")


def edge_views(folder):
    """A panel with routed edges in four edge views around the face, in R12."""
    drawing = ezdxf.new("R12")
    space = drawing.modelspace()
    for corner_x, corner_y, width, height in ((120, 120, 600, 400), (120, 580, 600, 22), (120, 38, 600, 22),
                                              (38, 120, 22, 400), (780, 120, 22, 400)):
        space.add_polyline2d(rectangle(corner_x, corner_y, width, height), close=True,
                             dxfattribs={"layer": "BORDER"})
    for row, line in enumerate(("POST INSTRUCTIONS", "LEAD=OFF")):
        space.add_text(line, dxfattribs={"layer": "INSTR", "height": 10, "insert": (120, 640 - 15 * row)})

    # Above: a slot of lines and half circles. Below: the same kind of slot as a polyline.
    slot = {"layer": "ROUTE1_Z12_T123_S18_F3000_FA1500_FD1500"}
    space.add_line((220, 586), (360, 586), dxfattribs=slot)
    space.add_arc((360, 591), 5, 270, 90, dxfattribs=slot)
    space.add_line((360, 596), (220, 596), dxfattribs=slot)
    space.add_arc((220, 591), 5, 90, 270, dxfattribs=slot)
    space.add_polyline2d([(320, 44, 0), (520, 44, 1), (520, 54, 0), (320, 54, 1)], format="xyb", close=True,
                         dxfattribs=slot)
    # Left: one straight slot. Right: a line that swings up to the top of the edge.
    space.add_line((49, 200), (49, 440), dxfattribs={"layer": "ROUTE2_Z20_T123_S18_F3000_FD1500"})
    edge = {"layer": "ROUTE3_Z6_T71_S18_F3000_FA1500_FD1500"}
    space.add_line((791, 180), (791, 400), dxfattribs=edge)
    space.add_arc((801, 400), 10, 90, 180, dxfattribs=edge)
    # On the face: a groove across the panel that asks for a lead of its own at both ends.
    space.add_line((120, 300), (720, 300), dxfattribs={"layer": "ROUTE4_Z8_T71_S18_F6000_FD2000_LD20"})
    drawing.saveas(folder / "edge_views.dxf")


def t_lines(folder):
    """A panel whose edge bores are drawn in plan: an axis from the edge, a line across its inner end."""
    drawing = ezdxf.new("R2010", units=ezdxf.units.MM)
    space = drawing.modelspace()
    x0, y0, width, height = 30, 20, 600, 400
    space.add_lwpolyline(rectangle(x0, y0, width, height), close=True, dxfattribs={"layer": "BORDER_Z18"})

    def edge_bore(layer, outer, inner, diameter, from_edge=True):
        along_x = outer[1] == inner[1]
        half = (0, diameter / 2) if along_x else (diameter / 2, 0)
        axis = (outer, inner) if from_edge else (inner, outer)
        cross = ((inner[0] - half[0], inner[1] - half[1]), (inner[0] + half[0], inner[1] + half[1]))
        for start, end in (axis, cross):
            space.add_line((x0 + start[0], y0 + start[1]), (x0 + end[0], y0 + end[1]),
                           dxfattribs={"layer": layer})

    # Right: a dowel with glue, one without, and a bore that stays empty.
    edge_bore("HBORE_Z9_T03_DG", (600, 64), (570, 64), 8)
    edge_bore("HBORE_Z9_T03_DI", (600, 336), (570, 336), 8, from_edge=False)
    edge_bore("HBORE_Z9_F1200", (600, 200), (566, 200), 5)
    # Left: bores with a spindle speed, which the horizontal machine leaves to the others.
    for along in (64, 336):
        edge_bore("HBORE_Z9_S4_F1200", (0, along), (30, along), 8)
    # Above and below: two bores of 8 and 5 mm each.
    for along, diameter in ((100, 8), (500, 5)):
        edge_bore("HBORE_Z9_F1200", (along, 400), (along, 370), diameter)
        edge_bore("HBORE_Z9_F1200", (along, 0), (along, 30), diameter, from_edge=False)
    # An axis without its cross line and a loose line make no bore.
    space.add_line((x0 + 300, y0), (x0 + 300, y0 + 30), dxfattribs={"layer": "HBORE_Z9"})
    space.add_line((x0 + 290, y0 + 80), (x0 + 310, y0 + 80), dxfattribs={"layer": "HBORE_Z9"})

    # Fitting bores near the right edge with their mirror images near the left one; one pair differs in
    # depth, one bore near the edge has a tool that the horizontal machine does not have.
    for along in (32, 96, 304, 368):
        for x in (566, 34):
            space.add_circle((x0 + x, y0 + along), 4, dxfattribs={"layer": "VBORE_Z13_FD2000"})
    for x, depth in ((566, 13), (34, 11)):
        space.add_circle((x0 + x, y0 + 200), 2.5, dxfattribs={"layer": f"VBORE_Z{depth}"})
    space.add_circle((x0 + 580, y0 + 120), 5, dxfattribs={"layer": "VBORE_Z12"})
    space.add_point((x0 + 300, y0 + 200), dxfattribs={"layer": "VBORE_D35_Z13_FD1500"})
    # A slot across the middle.
    space.add_lwpolyline([(x0 + 200, y0 + 250), (x0 + 400, y0 + 250)],
                         dxfattribs={"layer": "ROUTE1_Z6_T102_S18_F4000_FD2000"})
    drawing.saveas(folder / "t_lines.dxf")


def system_rows(folder):
    """A cabinet side with rows of bores at 32 mm both ways; its border asks for the drill optimizer."""
    drawing = ezdxf.new("R2010", units=ezdxf.units.MM)
    space = drawing.modelspace()
    x0, y0 = 15, 25
    space.add_lwpolyline(rectangle(x0, y0, 1184, 560), close=True, dxfattribs={"layer": "BORDER_OP_Z19"})

    def bores(layer, points):
        for x, y in points:
            space.add_point((x0 + x, y0 + y), dxfattribs={"layer": layer})

    five = "VBORE_D5_Z13_S6_FD3000"
    # Along X: two rows at 32, as long as the head's, one of them with a bore drawn twice; one at 64.
    bores(five, [(144 + 32 * hole, 37) for hole in range(8)])
    bores(five, [(144 + 32 * hole, 523) for hole in range(8)] + [(208.1, 523)])
    bores(five, [(608 + 64 * hole, 37) for hole in range(4)])
    # Along Y: a row of three and a bore 160 above it, which rides along with the row; a pair and a
    # bore 160 below it, which does when the pair is drilled with other spindles of the row.
    bores(five, [(1000, 150 + 32 * hole) for hole in range(3)] + [(1000, 374)])
    bores(five, [(900, 310), (900, 342), (900, 150)])
    # Dowels: pairs at 32 both ways, and one bore alone.
    eight = "VBORE_D8_Z12"
    bores(eight, [(60, 264), (60, 296), (1124, 280), (500, 280), (532, 280)])
    # A cup, a bore through the side, a diameter that the head has not, and one spindle by its number.
    bores("VBORE_D35_Z13_FD1500", [(700, 280)])
    bores("VBORE_D10_Z20", [(800, 300)])
    bores("VBORE_D12_Z13", [(400, 420)])
    bores("VBORE_D5_T07_Z13", [(300, 300)])
    # Routes and grooves do not care for the head.
    space.add_line((x0, y0 + 545), (x0 + 1184, y0 + 545), dxfattribs={"layer": "GROOVE_D8_K4_Z9"})
    drawing.saveas(folder / "system_rows.dxf")


if __name__ == "__main__":
    target = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent / "drawings")
    for draw in (door, side, bottom, inch, routed_door, countertop, nested_sheet, edge_views,
                 t_lines, system_rows):
        draw(target)
