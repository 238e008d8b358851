"""plain.dxf: release 12 by hand, only what the converter reads itself."""
import door


def pairs(*items):
    return "".join(f"{items[i]}\n{items[i + 1]}\n" for i in range(0, len(items), 2))


out = pairs(0, "SECTION", 2, "ENTITIES")
corners = door.border()
for a, b in zip(corners, corners[1:] + corners[:1]):
    out += pairs(0, "LINE", 8, door.BORDER, 10, a[0], 20, a[1], 11, b[0], 21, b[1])
for layer, x, y, r in door.circles():
    out += pairs(0, "CIRCLE", 8, layer, 10, x, 20, y, 40, r)
(x1, y1), (x2, y2) = door.GROOVE_LINE
out += pairs(0, "LINE", 8, door.GROOVE, 10, x1, 20, y1, 11, x2, 21, y2)
out += pairs(0, "POLYLINE", 8, door.CONTOUR, 66, 1, 70, 1)
for x, y, b in door.slot_vertices():
    out += pairs(0, "VERTEX", 8, door.CONTOUR, 10, x, 20, y, 42, b)
out += pairs(0, "SEQEND", 8, door.CONTOUR, 0, "ENDSEC", 0, "EOF")
open("plain.dxf", "w").write(out)
