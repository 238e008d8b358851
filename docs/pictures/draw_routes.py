#!/usr/bin/env python3
"""Draws the pictures of the drawing guide from the records that Korvanti itself makes.

Each picture is a drawing of this folder (or of examples/drawings), run through `korvanti trace`; what
the router does is read from the records after a stage, never drawn by hand. The standard library is
enough. From the top of the tree:

    python3 docs/pictures/draw_routes.py [KORVANTI [FOLDER]]

KORVANTI is the program, build/release/korvanti if not told; FOLDER takes the SVG files, this folder if
not told. The settings are those of examples/install, and what a picture sets beside them.
"""
import json
import math
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from xml.sax.saxutils import escape

HERE = Path(__file__).resolve().parent
TREE = HERE.parent.parent
ROUTE_START = -8

COLOURS = ["#1f5fa8", "#b5501b", "#2e7d4f", "#7a3e9d", "#8a6d00", "#a0304f", "#00707a", "#55606e"]
LEAD = "#d02020"
DRAWN = "#9a9a9a"
PANEL = "#f6efe1"
INK = "#222222"


# ---------------------------------------------------------------------------------------------
# From records to moves

def point_of(record):
    return (record.get("X", 0.0), record.get("Y", 0.0))


def polar(centre, radius, degrees):
    angle = math.radians(degrees)
    return (centre[0] + radius * math.cos(angle), centre[1] + radius * math.sin(angle))


class Move:
    """A stretch of the way as points; an arc is cut into short pieces."""

    def __init__(self, points, depth, is_arc=False):
        self.points, self.depth, self.is_arc = points, depth, is_arc
        self.is_lead = False

    def key(self):
        ends = sorted([self.points[0], self.points[-1]])
        middle = self.points[len(self.points) // 2] if self.is_arc else (0, 0)
        return tuple(round(value, 1) + 0.0 for point in (*ends, middle) for value in point)

    def is_full_circle(self):
        return self.is_arc and math.dist(self.points[0], self.points[-1]) < 0.01

    def length(self):
        return sum(math.dist(a, b) for a, b in zip(self.points, self.points[1:]))


def arc_points(centre, radius, start, end, counter_clockwise, end_radius=None):
    """From one angle to the other; equal angles are a full turn."""
    turn = (end - start) % 360 if counter_clockwise else -((start - end) % 360)
    if abs(turn) < 1e-3 or abs(abs(turn) - 360) < 1e-3:
        turn = 360 if counter_clockwise else -360
    steps = max(8, int(abs(turn) / 3))
    grow = 0 if end_radius is None else end_radius - radius
    return [polar(centre, radius + grow * step / steps, start + turn * step / steps)
            for step in range(steps + 1)]


def bulge_points(start, end, bulge):
    chord = math.dist(start, end)
    if not chord:
        return [start, end]
    radius = chord * (1 + bulge * bulge) / (4 * abs(bulge))
    direction = math.degrees(math.atan2(end[1] - start[1], end[0] - start[0]))
    tangent = direction - math.degrees(2 * math.atan(bulge))
    sense = 1 if bulge > 0 else -1
    centre = polar(start, radius, tangent + 90 * sense)
    turn = math.degrees(4 * math.atan(bulge))
    steps = max(8, int(abs(turn) / 3))
    begin = tangent - 90 * sense
    return [polar(centre, radius, begin + turn * step / steps) for step in range(steps)] + [end]


class Route:
    """One router start: where it begins, its moves, its first record."""

    def __init__(self, first):
        self.first, self.start, self.moves = first, point_of(first), []


def routes_of(records):
    """The way that the router really goes: a start inside of a route writes no line of its own."""
    routes = []
    here, before, arc = None, {}, None
    for record in records:
        kind, place = record.get("Kind", 0), point_of(record)
        if record.get("Dir", 0) == ROUTE_START:
            routes.append(Route(record))
            here = place
        if not routes or abs(kind) == 4:
            before = record
            continue
        if kind == -3:
            arc = record
        elif kind == 3 and arc is not None:
            centre = (arc.get("Aux1", 0.0), arc.get("Aux2", 0.0))
            # A program states the centre and the end's angle; the arc begins where the tool stands.
            begin = math.degrees(math.atan2(here[1] - centre[1], here[0] - centre[0]))
            points = arc_points(centre, math.dist(here, centre), begin, record.get("Aux2", 0.0),
                                record.get("Dir", 0) != 0, math.dist(point_of(arc), centre))
            routes[-1].moves.append(Move(points, record.get("Z", 0.0), True))
            here, arc = points[-1], None
        elif kind > 0:
            bulge = before.get("Aux2", 0.0) if abs(before.get("Kind", 0)) == 5 else 0.0
            points = bulge_points(here, place, bulge) if bulge else [here, place]
            routes[-1].moves.append(Move(points, record.get("Z", 0.0), bool(bulge)))
            here = place
        before = record
    return routes


def shifted(routes, dx, dy):
    for route in routes:
        route.start = (route.start[0] + dx, route.start[1] + dy)
        for move in route.moves:
            move.points = [(x + dx, y + dy) for x, y in move.points]
    return routes


def drawn_curves(entities):
    """What the designer drew on route layers, as curves."""
    curves, vertices, header = [], None, None
    for entity in entities:
        kind = entity.get("Kind", "")
        on_route = any(word in entity.get("Layer", "") for word in ("ROUT", "EXCAV"))
        if kind == "POLYLINE":
            vertices, header = ([] if on_route else None), entity
        elif kind == "VERTEX" and vertices is not None:
            vertices.append(entity)
        elif kind == "SEQEND" and vertices:
            closed = header.get("Flags", 0) & 1
            ends = vertices + vertices[:1] if closed else vertices
            points = []
            for one, two in zip(ends, ends[1:]):
                start, end = (one.get("X1", 0), one.get("Y1", 0)), (two.get("X1", 0), two.get("Y1", 0))
                bulge = one.get("Bulge", 0)
                points += bulge_points(start, end, bulge) if bulge else [start, end]
            curves.append((points, header.get("Radius", 0) != header.get("EndWidth", 0)))
            vertices = None
        elif on_route and kind == "LINE":
            curves.append(([(entity.get("X1", 0), entity.get("Y1", 0)),
                            (entity.get("X2", 0), entity.get("Y2", 0))], False))
        elif on_route and kind in ("ARC", "CIRCLE"):
            start, end = (0, 360) if kind == "CIRCLE" else (entity.get("StartAngle", 0), entity.get("EndAngle", 0))
            centre = (entity.get("X1", 0), entity.get("Y1", 0))
            curves.append((arc_points(centre, entity.get("Radius", 0), start, end, True), False))
    return curves


# ---------------------------------------------------------------------------------------------
# The SVG

class Canvas:
    """Drawing units in, pixels out; Y grows upward in drawings and downward in SVG."""

    def __init__(self, window, width, title):
        self.left, self.bottom, right, self.top = window
        self.scale = width / (right - self.left)
        self.width, self.height = width, round((self.top - self.bottom) * self.scale)
        self.rows = [
            f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {self.width} {self.height}" '
            f'width="{self.width}" height="{self.height}" font-family="Helvetica, Arial, sans-serif" '
            f'font-size="14">',
            f"<title>{escape(title)}</title>",
            f'<rect width="{self.width}" height="{self.height}" fill="#ffffff"/>']

    def at(self, point):
        return ((point[0] - self.left) * self.scale, (self.top - point[1]) * self.scale)

    def path(self, points, colour, width, extra=""):
        text = " ".join(f"{x:.1f},{y:.1f}" for x, y in map(self.at, points))
        self.rows.append(f'<polyline points="{text}" fill="none" stroke="{colour}" stroke-width="{width}" '
                         f'stroke-linejoin="round" stroke-linecap="round" {extra}/>')

    def rectangle(self, low, high):
        (x0, y1), (x1, y0) = self.at(low), self.at(high)
        self.rows.append(f'<rect x="{x0:.1f}" y="{y0:.1f}" width="{x1 - x0:.1f}" height="{y1 - y0:.1f}" '
                         f'fill="{PANEL}" stroke="#8a7a5c" stroke-width="1"/>')

    def dot(self, point, colour, radius=5.0):
        x, y = self.at(point)
        self.rows.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{radius}" fill="{colour}" stroke="#ffffff"/>')

    def tool(self, centre, radius):
        x, y = self.at(centre)
        self.rows.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{radius * self.scale:.1f}" fill="#888888" '
                         f'fill-opacity="0.35" stroke="#555555"/>')

    def arrow(self, points, colour, size=9):
        """A head in the middle of a move, as long as there is room for it."""
        if sum(math.dist(a, b) for a, b in zip(points, points[1:])) * self.scale < 2.2 * size:
            return
        (x, y), (dx, dy) = self.middle(points)
        tip, wing = (x + dx * size / 2, y + dy * size / 2), size * 0.42
        tail = (x - dx * size / 2, y - dy * size / 2)
        corners = [tip, (tail[0] - dy * wing, tail[1] + dx * wing), (tail[0] + dy * wing, tail[1] - dx * wing)]
        text = " ".join(f"{a:.1f},{b:.1f}" for a, b in corners)
        self.rows.append(f'<polygon points="{text}" fill="{colour}"/>')

    def wedge(self, start, end, colour):
        """A tapered polyline of one span, wide where it starts."""
        (x0, y0), (x1, y1) = self.at(start), self.at(end)
        length = math.dist((x0, y0), (x1, y1))
        dx, dy = (y1 - y0) / length * 6, -(x1 - x0) / length * 6
        self.rows.append(f'<polygon points="{x0 + dx:.1f},{y0 + dy:.1f} {x1:.1f},{y1:.1f} '
                         f'{x0 - dx:.1f},{y0 - dy:.1f}" fill="{colour}"/>')

    def middle(self, points):
        """The pixel half way along and the direction there."""
        pixels = [self.at(point) for point in points]
        left = sum(math.dist(a, b) for a, b in zip(pixels, pixels[1:])) / 2
        for a, b in zip(pixels, pixels[1:]):
            step = math.dist(a, b)
            if step and left <= step:
                share = left / step
                return ((a[0] + (b[0] - a[0]) * share, a[1] + (b[1] - a[1]) * share),
                        ((b[0] - a[0]) / step, (b[1] - a[1]) / step))
            left -= step
        return pixels[-1], (1.0, 0.0)

    def ticks(self, points, side, colour):
        """Short strokes on the side of the tool: +1 left of the way, -1 right of it."""
        pixels = [self.at(point) for point in points]
        due = 7.0
        for a, b in zip(pixels, pixels[1:]):
            step = math.dist(a, b)
            while step and due <= step:
                x, y = a[0] + (b[0] - a[0]) * due / step, a[1] + (b[1] - a[1]) * due / step
                # Left of the way on the page: Y runs downward there.
                nx, ny = (b[1] - a[1]) / step * side, -(b[0] - a[0]) / step * side
                self.rows.append(f'<line x1="{x:.1f}" y1="{y:.1f}" x2="{x + 6 * nx:.1f}" y2="{y + 6 * ny:.1f}" '
                                 f'stroke="{colour}" stroke-width="1" opacity="0.75"/>')
                due += 12
            due -= step

    def text(self, point, words, colour=INK, anchor="middle", size=14):
        x, y = self.at(point)
        for row, line in enumerate(words.split("\n")):
            self.rows.append(f'<text x="{x:.1f}" y="{y + row * (size + 3):.1f}" fill="{colour}" '
                             f'text-anchor="{anchor}" font-size="{size}">{escape(line)}</text>')

    def number(self, point, value, colour):
        x, y = self.at(point)
        self.rows.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="10" fill="#ffffff" stroke="{colour}" '
                         f'stroke-width="1.5"/><text x="{x:.1f}" y="{y + 4.5:.1f}" fill="{colour}" '
                         f'text-anchor="middle" font-size="13" font-weight="bold">{value}</text>')

    def save(self, path):
        path.write_text("\n".join(self.rows + ["</svg>", ""]), encoding="utf-8")


def draw_panel(canvas, run):
    for x0, y0, x1, y1 in zip(run["SideMinX"], run["SideMinY"], run["SideMaxX"], run["SideMaxY"]):
        if x0 <= x1:
            canvas.rectangle((x0, y0), (x1, y1))


def ramp_length(route):
    """How many moves go down at its beginning; 0 where the tool comes down straight."""
    deepest = max((move.depth for move in route.moves), default=0)
    if route.first.get("Z", 0.0) >= deepest:
        return 0
    return 1 + next(place for place, move in enumerate(route.moves) if move.depth >= deepest)


def draw_route(canvas, route, colour, picture, _number):
    side = {"G41": 1, "G42": -1}.get(route.first.get("Comp", "")[:3], 0)
    ramp = ramp_length(route) if picture.get("ramps") else 0
    for move in route.moves[:ramp]:
        canvas.path(move.points, LEAD, 6)
    for move in route.moves[ramp:]:
        shade = LEAD if move.is_lead else colour
        if side and picture.get("ticks", True) and not move.is_lead:
            canvas.ticks(move.points, side, colour)
        canvas.path(move.points, shade, picture.get("stroke", 2.2))
        canvas.arrow(move.points, shade)


def draw_tool(canvas, route):
    """The tool where the way begins and where it ends: beside it, on the side of the compensation."""
    comp = route.first.get("Comp", "")
    side, radius = {"G41": 1, "G42": -1}[comp[:3]], float(comp[5:])
    for here, points in ((route.start, route.moves[0].points), (None, route.moves[-1].points)):
        a, b = (points[0], points[1]) if here else (points[-2], points[-1])
        direction = math.degrees(math.atan2(b[1] - a[1], b[0] - a[0]))
        canvas.tool(polar(here or b, radius, direction + 90 * side), radius)


def mark_route(canvas, route, colour, picture, number):
    if picture.get("tool"):
        draw_tool(canvas, route)
    canvas.dot(route.start, LEAD if route.moves and route.moves[0].is_lead else colour)
    if picture.get("numbers"):
        x, y = canvas.middle(route.moves[0].points)[0] if route.moves else canvas.at(route.start)
        canvas.number((x / canvas.scale + canvas.left, canvas.top - y / canvas.scale), number, colour)


def draw_plan(canvas, stages, picture):
    stage = stages[picture["stage"]]
    run = stage["Run"]
    draw_panel(canvas, run)
    for points, is_mark in drawn_curves(stages["entities"]["Entities"]):
        if is_mark:
            canvas.wedge(points[0], points[-1], "#000000")
        else:
            canvas.path(points, DRAWN, picture.get("drawn", 1.2), 'stroke-dasharray="7 5"')
    routes = routes_of(stage["RouteSegments"])
    if picture["stage"] == "leads":
        shifted(routes, run.get("OriginX", 0), run.get("OriginY", 0))
        known = {move.key() for route in routes_of(stages["pockets"]["RouteSegments"]) for move in route.moves}
        for route in routes:
            # Free circles have their leads since they were chained.
            full = len(route.moves) == 3 and route.moves[1].is_full_circle()
            for move in route.moves[:1] + route.moves[-1:]:
                move.is_lead = full or move.key() not in known
    end = None
    for number, route in enumerate(routes, 1):
        if picture.get("travel") and end is not None:
            canvas.path([end, route.start], "#777777", 1.2, 'stroke-dasharray="2 4"')
        if route.moves:
            end = route.moves[-1].points[-1]
    for draw in (draw_route, mark_route):
        for number, route in enumerate(routes, 1):
            draw(canvas, route, COLOURS[(number - 1) % len(COLOURS)], picture, number)


def draw_depths(canvas, stages, picture):
    """The routes unrolled: the way to the right, the depth downward."""
    run = stages["leads"]["Run"]
    thickness, stretch = run["PartThickness"], picture["stretch"]
    routes = routes_of(stages["leads"]["RouteSegments"])
    # Only one lap of all three is as long as the panel in the picture.
    lap = max(sum(move.length() for move in route.moves) for route in routes)
    canvas.rectangle((0, -thickness * stretch), (lap, 0))
    for number, route in enumerate(routes, 1):
        colour = COLOURS[(number - 1) % len(COLOURS)]
        here = (0.0, -route.first.get("Z", 0.0) * stretch)
        canvas.dot(here, colour)
        for place, move in enumerate(route.moves):
            there = (here[0] + move.length(), -move.depth * stretch)
            is_end = place in (0, len(route.moves) - 1)
            canvas.path([here, there], LEAD if is_end else colour, 2.4)
            canvas.arrow([here, there], LEAD if is_end else colour)
            here = there


# ---------------------------------------------------------------------------------------------
# The pictures: window in drawing units, width in pixels, words at places of the drawing

PICTURES = [
    {"name": "chain", "title": "Loose pieces become chains", "stage": "chained",
     "window": (0, -4, 340, 190), "width": 820, "numbers": True,
     "words": [((75, 20), "three pieces in any order"), ((212, 20), "a fork: the straightest way goes on"),
               ((286, 102), "another layer"), ((114, 88), "a circle on ends of lines"),
               ((270, 137), "a circle"), ((270, 130), "of its own"),
               ((170, -1), "one colour: one route; dot: its start; number: its place in the order")]},
    {"name": "order", "title": "The order of routes", "stage": "chained",
     "window": (0, -4, 340, 190), "width": 820, "numbers": True, "travel": True,
     "words": [((80, 107), "ROUTE1", ), ((240, 107), "ROUTE1"), ((95, 143), "ROUTE2"), ((245, 143), "ROUTE2"),
               ((95, 23), "ROUTE_Z3_T71"), ((245, 23), "ROUTE_Z3_T5"),
               ((170, -1), "dotted: the way between the routes")]},
    {"name": "rectangle_pocket", "title": "Rectangular pockets", "stage": "pockets",
     "window": (0, -6, 340, 140), "width": 900, "stroke": 1.6, "ticks": False,
     "words": [((95, 20), "corners at right angles"), ((245, 20), "rounded corners"),
               ((170, -3), "black: the start mark as drawn; it ends where the first line begins")]},
    {"name": "circle_pocket", "title": "Circular pockets", "stage": "pockets",
     "window": (0, -6, 340, 140), "width": 900, "stroke": 1.8, "ticks": False,
     "words": [((95, 17), "drawn as one CIRCLE"), ((245, 17), "drawn as two half circles"),
               ((170, -3), "dot: where the tool goes down")]},
    {"name": "any_pocket", "title": "Pockets of any shape", "stage": "pockets",
     "settings": {"Pockets": "any"}, "ramps": True, "window": (0, -6, 340, 160), "width": 900, "stroke": 1.6,
     "ticks": False,
     "words": [((112, 17), "no start mark: down on a ramp"), ((142, 50.5), "island"),
               ((272, 17), "start mark: straight down"),
               ((170, -3), "red: ramps; dot: where the tool goes down")]},
    {"name": "leads_closed", "title": "Leads on closed contours", "stage": "leads",
     "window": (0, -6, 460, 320), "width": 920,
     "words": [((110, 236), "L, open corner:\nin and out on one line"),
               ((320, 236), "R, closed corner:\nquarter circles"),
               ((110, 100), "R, started in mid-line:\nsmooth, tangent arcs"),
               ((270, 92), "circle, R"), ((390, 97), "circle, L"),
               ((230, -2), "red: leads; short strokes: the side of the tool; dot: where it goes down")]},
    {"name": "leads_corner", "title": "Leads in a corner that is cut from inside", "stage": "leads",
     "window": (0, -6, 460, 182), "width": 920, "tool": True, "ticks": False,
     "words": [((90, 120), "no lead:\nhalf of the tool is\nin each wall"),
               ((230, 120), "lead of 1.3 radii:\nit cuts both walls"),
               ((370, 130), "3.3 radii:\nthe walls stay whole"),
               ((230, -2), "red: leads; grey: the tool where it goes down and where it goes up")]},
    {"name": "leads_border", "title": "Leads at the panel's border", "stage": "leads",
     "window": (0, 2, 420, 275), "width": 900,
     "words": [((140, 96), "straight on"), ((56, 168), "along the edge:\nquarter circles outward", INK, "start"),
               ((345, 118), "in a corner:\nstraight on"),
               ((210, 200), "an arc turns on"), ((242, 78), "ends inside have no lead"),
               ((210, 6), "red: leads; they lie outside of the panel, whatever the side of the tool")]},
    {"name": "depth_passes", "title": "Depth passes", "depths": True, "stretch": 6,
     "window": (-45, -150, 620, 40), "width": 900,
     "words": [((-4, -34), "Z6", COLOURS[0], "end"), ((-4, -70), "Z12", COLOURS[1], "end"),
               ((-4, -106), "Z18", COLOURS[2], "end"), ((300, 24), "3 above the panel: RI3 and RO3"),
               ((300, -18), "first pass"), ((300, -54), "second"), ((300, -90), "third, down to the whole depth"),
               ((290, -140), "the way of one lap around, unrolled; depth six times as tall")]},
    {"name": "outline", "title": "Corner compensation and routes along the border", "stage": "leads",
     "window": (0, -6, 340, 140), "width": 900, "drawn": 2.2,
     "words": [((90, 72), "CORNERCOMP ON:\nthe seam moves into\nmid-line"),
               ((210, 86), "REMBORDER ON:\nof the outline (dashed)\nonly the notch is cut"),
               ((170, -3), "red: leads; short strokes: the side of the tool")]},
    {"name": "side_views", "title": "Edge views", "drawing": "examples/drawings/edge_views.dxf",
     "stage": "chained", "window": (0, 14, 840, 630), "width": 840,
     "words": [((420, 425), "the face, 5"), ((420, 610), "view 1"), ((420, 22), "view 2"),
               ((49, 105), "view 3"), ((791, 105), "view 4")]},
]


def home_with(settings, folder):
    """The example installation with other values of these keys, which its KV90.INI must hold."""
    home = Path(folder) / "home"
    shutil.copytree(TREE / "examples" / "install", home)
    ini = home / "KV90.INI"
    text = ini.read_text(encoding="cp1252")
    for key, value in settings.items():
        text, found = re.subn(rf"^{key}=.*$", f"{key}={value}", text, flags=re.MULTILINE)
        if not found:
            sys.exit(f"no key {key} in examples/install/KV90.INI")
    ini.write_text(text, encoding="cp1252")
    return home


def trace(korvanti, drawing, settings):
    with tempfile.TemporaryDirectory() as folder:
        call = [str(korvanti), "--home", str(home_with(settings, folder)), "trace", str(drawing)]
        done = subprocess.run(call, stdout=subprocess.PIPE, check=True)
    return json.loads(done.stdout.decode("utf-8"))


def main():
    korvanti = Path(sys.argv[1]) if len(sys.argv) > 1 else TREE / "build" / "release" / "korvanti"
    folder = Path(sys.argv[2]) if len(sys.argv) > 2 else HERE
    for picture in PICTURES:
        drawing = TREE / picture.get("drawing", f"docs/pictures/{picture['name']}.dxf")
        stages = trace(korvanti.resolve(), drawing, picture.get("settings", {}))
        canvas = Canvas(picture["window"], picture["width"], picture["title"])
        (draw_depths if picture.get("depths") else draw_plan)(canvas, stages, picture)
        for words in picture["words"]:
            canvas.text(*words)
        canvas.save(folder / f"{picture['name']}.svg")


if __name__ == "__main__":
    main()
