"""The door that all writers draw: what is where, on which layer. Millimetres."""
import math

BORDER, GROOVE, CONTOUR, POCKET = "BORDER_Z18", "GROOVED4Z8", "ROUTE1_Z5_T71", "EXCAV_K8_Z6_D12_T30"
CUP, PIN, BORE = "VBORE_Z13", "VBORE_Z10", "VBORE_Z12"
WIDTH, HEIGHT = 600.0, 400.0
BORES = [(50, 50), (50, 350), (550, 50), (550, 350), (300, 50), (300, 350)]
BORE_RADIUS = 2.5
HINGE = [(CUP, 0, 0, 17.5), (PIN, 9.5, 22.5, 4.0), (PIN, 9.5, -22.5, 4.0)]
HINGES = [(25, 120, 0), (575, 280, 180)]  # place and turn
GROOVE_LINE = ((100, 380), (500, 380))
SLOT = (200, 180, 400, 260, 20)  # a rectangle and the radius of its corners
ROUND_POCKET = (450, 120, 30)


def hinge_circles():
    """Both hinges without blocks."""
    for x, y, turn in HINGES:
        c, s = round(math.cos(math.radians(turn))), round(math.sin(math.radians(turn)))
        for layer, dx, dy, r in HINGE:
            yield layer, x + c * dx - s * dy, y + s * dx + c * dy, r


def circles():
    for x, y in BORES:
        yield BORE, x, y, BORE_RADIUS
    yield from hinge_circles()
    yield (POCKET, *ROUND_POCKET)


def slot_vertices():
    """Corner points with bulges, counter-clockwise from the lower left straight."""
    x1, y1, x2, y2, r = SLOT
    b = math.tan(math.pi / 8)
    return [(x1 + r, y1, 0), (x2 - r, y1, b), (x2, y1 + r, 0), (x2, y2 - r, b),
            (x2 - r, y2, 0), (x1 + r, y2, b), (x1, y2 - r, 0), (x1, y1 + r, b)]


def border():
    return [(0, 0), (WIDTH, 0), (WIDTH, HEIGHT), (0, HEIGHT)]
