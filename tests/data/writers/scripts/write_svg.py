"""door.svg for Inkscape: its layers have the names of ours, Y goes down, circles are circles of SVG."""
import sys
import door


def layer(name, body):
    return f'<g inkscape:groupmode="layer" inkscape:label="{name}" id="{name}">{body}</g>\n'


def circle(x, y, r):
    return f'<circle cx="{x}" cy="{door.HEIGHT - y}" r="{r}" style="fill:none;stroke:#000"/>'


by_layer = {}
for name, x, y, r in door.circles():
    by_layer.setdefault(name, []).append(circle(x, y, r))
(gx1, gy1), (gx2, gy2) = door.GROOVE_LINE
x1, y1, x2, y2, r = door.SLOT
h = door.HEIGHT
out = (f'<svg xmlns="http://www.w3.org/2000/svg" xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape" '
       f'width="{door.WIDTH}mm" height="{h}mm" viewBox="0 0 {door.WIDTH} {h}">\n')
out += layer(door.BORDER, f'<path style="fill:none;stroke:#000" d="M 0,0 L {door.WIDTH},0 L {door.WIDTH},{h} L 0,{h} Z"/>')
out += layer(door.GROOVE, f'<path style="fill:none;stroke:#000" d="M {gx1},{h - gy1} L {gx2},{h - gy2}"/>')
out += layer(door.CONTOUR, f'<rect style="fill:none;stroke:#000" x="{x1}" y="{h - y2}" width="{x2 - x1}" height="{y2 - y1}" rx="{r}" ry="{r}"/>')
for name, bodies in by_layer.items():
    out += layer(name, "".join(bodies))
open(sys.argv[1], "w").write(out + "</svg>\n")
