// By dxf-writer: each bore as an ellipse, the pocket as a polygon of many sides, the corners of the contour as
// bulged rectangle.
const Drawing = require('dxf-writer');
const fs = require('fs');
const door = require('./door.js');
const d = new Drawing();
d.setUnits('Millimeters');
const on = layer => { if (!d.layers[layer]) d.addLayer(layer, Drawing.ACI.WHITE, 'CONTINUOUS'); d.setActiveLayer(layer); };
on(door.layers.border);
d.drawPolyline(door.border, true);
for (const [layer, x, y, r] of door.circles()) {
    on(layer);
    d.drawEllipse(x, y, r, 0, 1, 0, 2 * Math.PI);
}
on(door.layers.groove);
d.drawLine(...door.groove[0], ...door.groove[1]);
on(door.layers.contour);
const { x1, y1, x2, y2, r } = door.slot;
d.drawRect(x1, y1, x2, y2, r, Math.tan(Math.PI / 8));
on(door.layers.pocket);
const [px, py, pr] = door.pocket;
d.drawPolygon(px, py, 240, pr);
fs.writeFileSync(process.argv[2], d.toDxfString());
