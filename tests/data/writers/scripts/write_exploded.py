"""nested.dxf: blocks in blocks, scaled, mirrored, turned, in rows and columns; exploded.dxf: what ezdxf makes of
them. curves.dxf: splines and ellipses; flattened.dxf: ezdxf's points along them, 0.002 mm near."""
import random
import ezdxf
from ezdxf.disassemble import recursive_decompose

random.seed(17)
doc = ezdxf.new("R2010")
msp = doc.modelspace()


def between(low, high):
    return round(random.uniform(low, high), 3)


def shapes(block, similar):
    layer = {"layer": "ROUTE1"}
    block.add_line((between(-50, 50), between(-50, 50)), (between(-50, 50), between(-50, 50)), dxfattribs=layer)
    block.add_point((between(-50, 50), between(-50, 50)), dxfattribs={"layer": "VBORE"})
    if similar:
        block.add_circle((between(-50, 50), between(-50, 50)), between(1, 20), dxfattribs={"layer": "VBORE"})
        block.add_arc((between(-50, 50), between(-50, 50)), between(5, 20), between(0, 360), between(0, 360), dxfattribs=layer)
        block.add_lwpolyline([(0, 0, between(-1, 1)), (between(5, 50), between(5, 50), 0), (between(-50, -5), 9, 0)],
                             format="xyb", dxfattribs=layer)


def reference(layout, name, similar):
    scale = between(0.3, 3)
    mirrored = random.choice([1, -1])
    ref = layout.add_blockref(name, (between(-200, 800), between(-200, 800)), dxfattribs={
        "xscale": scale * mirrored, "yscale": scale if similar else between(0.3, 3),
        "zscale": scale, "rotation": random.choice([0, 90, 180, 270, between(-360, 360)])})
    if random.random() < 0.5 and layout is msp:
        ref.grid((random.randint(1, 3), random.randint(1, 3)), (between(20, 60), between(20, 60)))


for number in range(12):
    similar = number % 3 != 0
    inner = doc.blocks.new(f"IN{number}", base_point=(between(-20, 20), between(-20, 20)))
    shapes(inner, similar)
    outer = doc.blocks.new(f"OUT{number}", base_point=(between(-20, 20), between(-20, 20)))
    shapes(outer, similar)
    # ezdxf 0.18.1 loses the direction of rows and columns of a block within a block, and exchanges the scales of a
    # turned block in a squeezed one: neither is drawn here.
    if similar:
        reference(outer, f"IN{number}", similar)
    reference(msp, f"OUT{number}", similar)
doc.saveas("nested.dxf")

plain = ezdxf.new("R2010")
for entity in recursive_decompose(msp):
    plain.modelspace().add_foreign_entity(entity, copy=True)
plain.saveas("exploded.dxf")

curves = ezdxf.new("R2010")
flat = ezdxf.new("R2010")
for number in range(12):
    name = f"ROUTE{number + 1}"
    points = [(between(0, 400), between(0, 400), 0) for _ in range(random.randint(4, 9))]
    if number < 6:
        curve = curves.modelspace().add_open_spline(points, degree=random.randint(2, 3), dxfattribs={"layer": name})
        if number % 2:
            curve = curves.modelspace().add_rational_spline(points, [between(0.3, 3) for _ in points], degree=3, dxfattribs={"layer": f"ROUTE{number + 101}"})
            name = f"ROUTE{number + 101}"
    elif number < 8:
        curve = curves.modelspace().add_spline(dxfattribs={"layer": name})
        curve.set_closed(points, degree=3)
    else:
        start = between(0, 6)
        curve = curves.modelspace().add_ellipse((between(0, 400), between(0, 400)), (between(10, 100), between(10, 100)), between(0.1, 1),
                                                start, start + between(0.3, 6), dxfattribs={"layer": name})
    flat.modelspace().add_lwpolyline([(p.x, p.y) for p in curve.flattening(0.002)], format="xy", dxfattribs={"layer": name})
curves.saveas("curves.dxf")
flat.saveas("flattened.dxf")
