// Bores and grooves whose depth or place no designer wants.
#pragma once

namespace kv {

// Vertical bores and grooves, when all of the drawing are read and none is chained or sawn in passes.
void TellFaceDoubts();
// Bores in the edges, when those drawn as lines are made.
void TellEdgeBoreDoubts();

} // namespace kv
