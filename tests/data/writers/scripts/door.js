// The door that all writers draw, for those in JavaScript; the same numbers as door.py.
const circles = () => {
    const list = [[50, 50], [50, 350], [550, 50], [550, 350], [300, 50], [300, 350]].map(([x, y]) => ['VBORE_Z12', x, y, 2.5]);
    for (const [x, y, sign] of [[25, 120, 1], [575, 280, -1]])
        list.push(['VBORE_Z13', x, y, 17.5], ['VBORE_Z10', x + sign * 9.5, y + 22.5, 4], ['VBORE_Z10', x + sign * 9.5, y - 22.5, 4]);
    return list;
};
module.exports = {
    circles,
    border: [[0, 0], [600, 0], [600, 400], [0, 400]],
    groove: [[100, 380], [500, 380]],
    slot: { x1: 200, y1: 180, x2: 400, y2: 260, r: 20 },
    pocket: [450, 120, 30],
    layers: { border: 'BORDER_Z18', groove: 'GROOVED4Z8', contour: 'ROUTE1_Z5_T71', pocket: 'EXCAV_K8_Z6_D12_T30' },
};
