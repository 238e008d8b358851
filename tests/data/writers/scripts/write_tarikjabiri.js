// By @tarikjabiri/dxf: a block that is inserted, one of them mirrored, the contour as four arcs and four lines,
// the cup as a spline of nine points.
const { DxfWriter, point3d, Units, LWPolylineFlags, SplineFlags } = require('@tarikjabiri/dxf');
const fs = require('fs');
const door = require('./door.js');
const dxf = new DxfWriter();
dxf.setUnits(Units.Millimeters);
const on = layerName => ({ layerName });
for (const layer of [...Object.values(door.layers), 'VBORE_Z12', 'VBORE_Z13', 'VBORE_Z10']) dxf.addLayer(layer, 7, 'Continuous');
const model = dxf.modelSpace;
model.addLWPolyline(door.border.map(([x, y]) => ({ point: { x, y } })), { flags: LWPolylineFlags.Closed, ...on(door.layers.border) });
const hinge = dxf.addBlock('HINGE');
hinge.addCircle(point3d(0, 0), 17.5, on('VBORE_Z13'));
hinge.addCircle(point3d(9.5, 22.5), 4, on('VBORE_Z10'));
hinge.addCircle(point3d(9.5, -22.5), 4, on('VBORE_Z10'));
model.addInsert('HINGE', point3d(25, 120));
model.addInsert('HINGE', point3d(575, 280), { scaleFactor: { x: -1, y: 1, z: 1 } });
for (const [layer, x, y, r] of door.circles().slice(0, 6)) {
    const w = Math.SQRT1_2;
    const around = [[1, 0], [1, 1], [0, 1], [-1, 1], [-1, 0], [-1, -1], [0, -1], [1, -1], [1, 0]];
    model.addSpline({
        controlPoints: around.map(([dx, dy]) => point3d(x + r * dx, y + r * dy)),
        degreeCurve: 2,
        knots: [0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4],
        weights: [1, w, 1, w, 1, w, 1, w, 1],
        flags: SplineFlags.Closed | SplineFlags.Rational | SplineFlags.Planar,
    }, on(layer));
}
const [a, b] = door.groove;
model.addLine(point3d(...a), point3d(...b), on(door.layers.groove));
const { x1, y1, x2, y2, r } = door.slot;
const c = on(door.layers.contour);
model.addLine(point3d(x1 + r, y1), point3d(x2 - r, y1), c);
model.addArc(point3d(x2 - r, y1 + r), r, 270, 360, c);
model.addLine(point3d(x2, y1 + r), point3d(x2, y2 - r), c);
model.addArc(point3d(x2 - r, y2 - r), r, 0, 90, c);
model.addLine(point3d(x2 - r, y2), point3d(x1 + r, y2), c);
model.addArc(point3d(x1 + r, y2 - r), r, 90, 180, c);
model.addLine(point3d(x1, y2 - r), point3d(x1, y1 + r), c);
model.addArc(point3d(x1 + r, y1 + r), r, 180, 270, c);
model.addCircle(point3d(door.pocket[0], door.pocket[1]), door.pocket[2], on(door.layers.pocket));
fs.writeFileSync(process.argv[2], dxf.stringify());
