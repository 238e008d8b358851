"""By ezdxf: blocks that are inserted, a contour as a spline of arcs, the pocket as an ellipse of ratio 1; the same
as a binary file; and release 12, whose SEQEND has no layer."""
import ezdxf
import door


def draw(version, name, **how):
    doc = ezdxf.new(version)
    doc.header["$INSUNITS"] = 4
    msp = doc.modelspace()
    hinge = doc.blocks.new("HINGE")
    for layer, x, y, r in door.HINGE:
        hinge.add_circle((x, y), r, dxfattribs={"layer": layer})
    for x, y, turn in door.HINGES:
        msp.add_blockref("HINGE", (x, y), dxfattribs={"rotation": turn})
    for x, y in door.BORES:
        msp.add_circle((x, y), door.BORE_RADIUS, dxfattribs={"layer": door.BORE})
    msp.add_line(*door.GROOVE_LINE, dxfattribs={"layer": door.GROOVE})
    add = msp.add_polyline2d if version == "R12" else msp.add_lwpolyline
    add(door.border(), close=True, dxfattribs={"layer": door.BORDER})
    add(door.slot_vertices(), format="xyb", close=True, dxfattribs={"layer": door.CONTOUR})
    x, y, r = door.ROUND_POCKET
    if version == "R12":
        msp.add_circle((x, y), r, dxfattribs={"layer": door.POCKET})
    else:
        msp.add_ellipse((x, y), major_axis=(r, 0), ratio=1, dxfattribs={"layer": door.POCKET})
        doc.layout("Layout1").add_circle((5, 5), 4, dxfattribs={"layer": door.BORE})
        frozen = doc.layers.add("VBORE_OLD")
        frozen.freeze()
        msp.add_circle((320, 320), 4, dxfattribs={"layer": "VBORE_OLD"})
        msp.add_mtext("Door\\P{\\fArial|b0;oak}", dxfattribs={"layer": "NOTES", "insert": (10, 10)})
    doc.saveas(name, **how)


draw("R2010", "ezdxf_r2010.dxf")
draw("R2000", "ezdxf_binary.dxf", fmt="bin")
draw("R12", "ezdxf_r12.dxf")
