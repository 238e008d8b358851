// Entities of one layer that touch, put together to ways.
#pragma once

#include <vector>

#include "proof/demands.h"
#include "proof/drawn_pieces.h"

namespace kv {

// `joint`: ends that are nearer (mm) meet. A way begins with the piece that was drawn first, and goes on at
// both of its ends with the neighbour that turns least. Of the result only Pieces, Drawn, IsClosed, Side and
// IsSideOpen are filled; `side` is the one that the letters give along each entity as it was drawn.
std::vector<AskedWay> WaysOf(const std::vector<DrawnShapePieces>& shapes, int side, double joint);

} // namespace kv
