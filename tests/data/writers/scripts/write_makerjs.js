// By makerjs: lines, arcs and circles on layers, in the order that its models have.
const maker = require('makerjs');
const fs = require('fs');
const door = require('./door.js');
const model = { models: {}, paths: {}, units: maker.unitType.Millimeter };
const put = (name, layer, part) => { part.layer = layer; (part.type ? model.paths : model.models)[name] = part; };
put('border', door.layers.border, new maker.models.ConnectTheDots(true, door.border));
door.circles().forEach(([layer, x, y, r], i) => put('bore' + i, layer, new maker.paths.Circle([x, y], r)));
put('groove', door.layers.groove, new maker.paths.Line(...door.groove));
const { x1, y1, x2, y2, r } = door.slot;
put('slot', door.layers.contour, maker.model.move(new maker.models.RoundRectangle(x2 - x1, y2 - y1, r), [x1, y1]));
put('pocket', door.layers.pocket, new maker.paths.Circle(door.pocket.slice(0, 2), door.pocket[2]));
fs.writeFileSync(process.argv[2], maker.exporter.toDXF(model, { units: maker.unitType.Millimeter }));
