#!/usr/bin/env python3
"""Writes drawings with one mistake each into a folder: a panel of 600 x 400 x 19 mm with bores, a groove
and a route that are right, and one thing that is not. The entity at fault has the handle BAD1.

The drawings have short names, so that their programs keep them. mistakes.txt says for each: its name, its
mistake and the words that the call needs, for mistakes that show with other settings alone.

    make_mistakes.py FOLDER
"""
import math
import pathlib
import sys

BAD = "BAD1"
BORE = "VBORE_D5_Z13"
ROUTE = "ROUTE1_Z8_T71_D12"


class Drawing:
    """An R12 drawing with handles. `bad` marks the entity that is the mistake."""

    def __init__(self, unit=4):
        self.unit = unit
        self.text = []
        self.layers = {}  # name: flags
        self.blocks = []
        self.handle = 0x20

    def entity(self, kind, layer, pairs, bad=False, handle=True):
        self.layers.setdefault(layer, 0)
        self.handle += 1
        head = [(0, kind)]
        if handle:
            head.append((5, BAD if bad else f"{self.handle:X}"))
        self.text += head + [(8, layer)] + pairs

    def line(self, layer, x1, y1, x2, y2, bad=False, more=()):
        self.entity("LINE", layer, [(10, x1), (20, y1), (30, 0), (11, x2), (21, y2), (31, 0), *more], bad)

    def circle(self, layer, x, y, radius, bad=False, more=()):
        self.entity("CIRCLE", layer, [(10, x), (20, y), (30, 0), (40, radius), *more], bad)

    def arc(self, layer, x, y, radius, start, end, bad=False):
        self.entity("ARC", layer, [(10, x), (20, y), (30, 0), (40, radius), (50, start), (51, end)], bad)

    def polyline(self, layer, points, closed=True, bad=False, more=()):
        """Points are (x, y) or (x, y, width at the start, width at the end)."""
        self.entity("POLYLINE", layer,
                    [(66, 1), (10, 0), (20, 0), (30, 0), (70, 1 if closed else 0), *more], bad)
        for point in points:
            widths = [(40, point[2]), (41, point[3])] if len(point) > 2 else []
            self.entity("VERTEX", layer, [(10, point[0]), (20, point[1]), (30, 0), *widths])
        self.entity("SEQEND", layer, [])

    def rectangle(self, layer, x, y, width, height, bad=False):
        self.polyline(layer, [(x, y), (x + width, y), (x + width, y + height), (x, y + height)], bad=bad)

    def four_lines(self, layer, x, y, width, height, gap=0.0, bad=False):
        """The last side ends `gap` before the corner where the first begins; it is the one that is bad."""
        right, top = x + width, y + height
        self.line(layer, x, y, right, y)
        self.line(layer, right, y, right, top)
        self.line(layer, right, top, x, top)
        self.line(layer, x, top, x, y + gap, bad)

    def write_text(self, layer, x, y, text, bad=False):
        self.entity("TEXT", layer, [(10, x), (20, y), (30, 0), (40, 8), (1, text)], bad)

    def instructions(self, *lines):
        """The title and its lines; the last line is the mistake."""
        self.write_text("INFO", 120, 60, "POST INSTRUCTIONS")
        for i, text in enumerate(lines):
            self.write_text("INFO", 120, 48 - 12 * i, text, bad=i == len(lines) - 1)

    def panel(self, layer="BORDER_Z19", **more):
        self.rectangle(layer, 100, 100, 600, 400, **more)

    def good_work(self):
        for x in (150, 182, 214, 246):
            self.circle(BORE, x, 140, 2.5)
        self.line("GROOVE_Z8", 100, 460, 700, 460)
        self.line(ROUTE, 200, 200, 400, 200)

    def dxf(self):
        header = [(0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1009"), (9, "$INSUNITS"),
                  (70, self.unit), (9, "$HANDLING"), (70, 1), (0, "ENDSEC")]
        table = [(0, "SECTION"), (2, "TABLES"), (0, "TABLE"), (2, "LAYER"), (70, len(self.layers))]
        for name, flags in self.layers.items():
            table += [(0, "LAYER"), (2, name), (70, flags), (62, 7), (6, "CONTINUOUS")]
        table += [(0, "ENDTAB"), (0, "ENDSEC")]
        blocks = [(0, "SECTION"), (2, "BLOCKS"), *self.blocks, (0, "ENDSEC")]
        pairs = header + table + blocks + [(0, "SECTION"), (2, "ENTITIES")] + self.text
        pairs += [(0, "ENDSEC"), (0, "EOF")]
        return "".join(f"{code}\r\n{shown(value)}\r\n" for code, value in pairs)


def shown(value):
    return f"{value:.6f}" if isinstance(value, float) else str(value)


MISTAKES = {}  # mistake: (maker, words of the call)


def mistake(name, *words):
    def keep(maker):
        MISTAKES[name] = (maker, words)
        return maker
    return keep


def with_work(name, *words):
    """A mistake beside a panel and work that are right."""
    def keep(maker):
        def whole(d):
            d.panel()
            d.good_work()
            maker(d)
        MISTAKES[name] = (whole, words)
        return maker
    return keep


def single(name, add, *words):
    with_work(name, *words)(add)


# Depths

single("depth_of_zero", lambda d: d.circle("VBORE_D5", 300, 300, 2.5, bad=True))
single("too_deep", lambda d: d.circle("VBORE_D5_Z31", 300, 300, 2.5, bad=True))
single("z_typed_as_120", lambda d: d.circle("VBORE_D5_Z120", 300, 300, 2.5, bad=True))
single("off_the_panel", lambda d: d.circle(BORE, 800, 300, 2.5, bad=True))
single("route_off_the_panel", lambda d: d.line(ROUTE, 800, 200, 900, 200, bad=True))

# Names of layers

single("misspelt_bore", lambda d: d.circle("VBOR_D5_Z13", 300, 300, 2.5, bad=True))
single("misspelt_groove", lambda d: d.line("GROVE_Z8", 100, 300, 700, 300, bad=True))
single("misspelt_route", lambda d: d.line("RUOTE1_Z8_T71_D12", 300, 300, 400, 300, bad=True))


@mistake("misspelt_border")
def _(d):
    d.panel("BODER_Z19", bad=True)
    d.good_work()


single("comma_as_point", lambda d: d.circle("VBORE_D5_Z12,5", 300, 300, 2.5, bad=True))
single("layer_of_120_letters",
       lambda d: d.circle("VBORE_" + "HINGE_CUP_OF_THE_LEFT_DOOR_" * 4 + "D35_Z1", 300, 300, 17.5, bad=True))

# Kinds of entities


@with_work("bore_of_two_arcs")
def _(d):
    d.arc("VBORE_D35_Z13", 300, 300, 17.5, 0, 180, bad=True)
    d.arc("VBORE_D35_Z13", 300, 300, 17.5, 180, 360)


single("bore_as_ellipse", lambda d: d.entity("ELLIPSE", "VBORE_D35_Z13", [
    (10, 300), (20, 300), (30, 0), (11, 17.5), (21, 0), (31, 0), (40, 1), (41, 0), (42, 2 * math.pi)],
    bad=True))


@with_work("bore_as_block")
def _(d):
    d.blocks = [(0, "BLOCK"), (8, "0"), (2, "HINGE"), (70, 0), (10, 0), (20, 0), (30, 0), (0, "CIRCLE"),
                (8, "VBORE_D35_Z13"), (10, 0), (20, 0), (30, 0), (40, 17.5), (0, "ENDBLK"), (8, "0")]
    d.entity("INSERT", "VBORE_D35_Z13", [(2, "HINGE"), (10, 300), (20, 300), (30, 0)], bad=True)


@with_work("block_on_layer_0")
def _(d):
    d.blocks = [(0, "BLOCK"), (8, "0"), (2, "HINGE"), (70, 0), (10, 0), (20, 0), (30, 0), (0, "CIRCLE"),
                (8, "VBORE_D35_Z13"), (10, 0), (20, 0), (30, 0), (40, 17.5), (0, "ENDBLK"), (8, "0")]
    d.entity("INSERT", "0", [(2, "HINGE"), (10, 300), (20, 300), (30, 0)], bad=True)


single("spline_on_a_route", lambda d: d.entity("SPLINE", ROUTE, [
    (70, 8), (71, 3), (72, 8), (73, 4), *[(40, k) for k in (0, 0, 0, 0, 1, 1, 1, 1)],
    *[pair for x, y in ((300, 300), (340, 350), (380, 250), (420, 300))
      for pair in ((10, x), (20, y), (30, 0))]], bad=True))

# Routes

single("contour_open_with_r",
       lambda d: d.four_lines("ROUTE2_Z19_T71_R6_LD20", 250, 250, 150, 100, gap=1.5, bad=True))


@with_work("line_drawn_twice")
def _(d):
    d.line(ROUTE, 200, 300, 400, 300)
    d.line(ROUTE, 200, 300, 400, 300, bad=True)


@mistake("route_without_tool")
def _(d):
    d.panel()
    d.circle(BORE, 150, 140, 2.5)
    d.line("ROUTE1_Z8", 200, 200, 400, 200, bad=True)


single("tapered_polyline", lambda d: d.polyline(ROUTE, [(300, 300, 4, 8), (400, 300, 8, 4), (400, 350)],
                                                closed=False, bad=True))
single("lead_longer_than_contour",
       lambda d: d.rectangle("ROUTE2_Z19_T71_L6_LD200", 250, 250, 60, 40, bad=True))
single("negative_tool", lambda d: d.line("ROUTE2_Z8_T-71", 300, 300, 400, 300, bad=True))
single("line_of_no_length", lambda d: d.line(ROUTE, 300, 300, 300, 300, bad=True))

# Border


@mistake("border_below_zero")
def _(d):
    d.rectangle("BORDER_Z19", -20, -10, 600, 400, bad=True)
    d.circle(BORE, 150, 140, 2.5)


@mistake("border_open")
def _(d):
    d.four_lines("BORDER_Z19", 100, 100, 600, 400, gap=2, bad=True)
    d.good_work()


@mistake("border_with_a_stray_line")
def _(d):
    d.panel()
    d.line("BORDER_Z19", 300, 300, 330, 320, bad=True)
    d.good_work()


mistake("no_border")(lambda d: d.good_work())


@mistake("paper_space_frame")
def _(d):
    d.panel()
    d.good_work()
    d.polyline("BORDER_Z19", [(10, 10), (830, 10), (830, 584), (10, 584)], bad=True, more=[(67, 1)])


@mistake("border_on_frozen_layer")
def _(d):
    d.panel()
    d.good_work()
    d.layers["BORDER_OLD_Z19"] = 1
    d.rectangle("BORDER_OLD_Z19", 100, 100, 620, 400, bad=True)


@mistake("panel_solid_without_area")
def _(d):
    d.entity("SOLID", "PANEL", [(10, 100), (20, 500), (30, 0), (11, 100), (21, 500), (31, 0), (12, 100),
                                (22, 500), (32, 0), (13, 100), (23, 500), (33, 0), (39, 19)], bad=True)
    d.good_work()


@mistake("no_thickness")
def _(d):
    d.panel("BORDER", bad=True)
    d.good_work()


# Units


@mistake("small_metric_part")
def _(d):
    d.rectangle("BORDER_Z19", 100, 100, 150, 80, bad=True)
    d.circle(BORE, 150, 140, 2.5)


@mistake("inch_drawing_that_says_mm")
def _(d):
    d.rectangle("BORDER_Z0.75", 4, 4, 24, 16, bad=True)
    d.circle("VBORE_D0.25_Z0.5", 6, 6, 0.125)


# Pockets

POCKET = "EXCAV_Z8_T103_R6_K8"


def start_mark(d, layer, x, y):
    d.polyline(layer, [(x - 20, y, 0, 8), (x, y)], closed=False)


single("pocket_without_start_mark", lambda d: d.four_lines(POCKET, 300, 250, 200, 100, bad=True))


@with_work("pocket_without_pitch")
def _(d):
    start_mark(d, "EXCAV_Z8_T103", 300, 250)
    d.four_lines("EXCAV_Z8_T103", 300, 250, 200, 100, bad=True)


@with_work("pocket_outline_open")
def _(d):
    start_mark(d, POCKET, 300, 250)
    d.four_lines(POCKET, 300, 250, 200, 100, gap=3, bad=True)


@with_work("pocket_narrower_than_tool")
def _(d):
    start_mark(d, POCKET, 300, 250)
    d.four_lines(POCKET, 300, 250, 200, 10, bad=True)


# The border's flags and the settings


@mistake("sequence_without_v")
def _(d):
    d.panel("BORDER_Z19_SQHRG", bad=True)
    d.good_work()


@mistake("alternation_loses_bores", "--set=DRAlternate=1")
def _(d):
    d.panel()
    d.good_work()
    for i in range(3):
        d.line(f"ROUTE{i + 2}_Z8_T7{i + 2}_D12", 200, 240 + 20 * i, 400, 240 + 20 * i)


@mistake("optimizer_with_evolution", "--system=evolution")
def _(d):
    d.panel("BORDER_Z19_OP", bad=True)
    d.good_work()


# Names and texts

single("name_of_13_letters", lambda d: d.write_text("NAME", 120, 60, "KITCHENDOOR_1", bad=True))
single("name_with_a_folder", lambda d: d.write_text("NAME", 120, 60, "ORDERS/DOOR", bad=True))
single("name_as_mtext", lambda d: d.entity("MTEXT", "NAME", [(10, 120), (20, 60), (30, 0), (40, 8),
                                                              (1, "{\\fArial;DOOR}")], bad=True))
single("same_name_a", lambda d: d.write_text("NAME", 120, 60, "SHELF"))
single("same_name_b", lambda d: (d.write_text("NAME", 120, 60, "SHELF", bad=True),
                                 d.circle(BORE, 300, 300, 2.5)), "{same_name_a}.dxf")
single("pts_with_unknown_field", lambda d: d.instructions("PTS COLOUR=OAK"))
single("text_nocode", lambda d: d.instructions("NOCODE"))

# Grooves and edges

single("groove_askew", lambda d: d.line("GROOVE_D8_Z8", 150, 300, 600, 320, bad=True))
single("groove_without_kerf", lambda d: d.line("GROOVE_D8_Z8", 100, 300, 700, 300, bad=True), "--set=SawKerf=0")
single("edge_bore_without_bar", lambda d: d.line("HBORE_Z9", 100, 300, 130, 300, bad=True))
single("edge_circle_in_no_view", lambda d: d.circle("HBORE_Z30", 400, 900, 4, bad=True))


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_mistakes.py FOLDER")
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    files = {name: f"m{number:02}" for number, name in enumerate(MISTAKES, 1)}
    index = []
    for name, (maker, words) in MISTAKES.items():
        drawing = Drawing()
        maker(drawing)
        (folder / f"{files[name]}.dxf").write_bytes(drawing.dxf().encode("cp1252"))
        index.append(" ".join([files[name], name, *(word.format(**files) for word in words)]) + "\n")
    (folder / "mistakes.txt").write_text("".join(index), newline="\n")


if __name__ == "__main__":
    main()
