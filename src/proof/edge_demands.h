// Bores in the panel's edges, in the three forms in which they are drawn.
#pragma once

#include <vector>

#include "proof/demands.h"
#include "proof/drawn_pieces.h"
#include "state/records.h"

namespace kv {

// A circle whose normal points along the face: the edge that it is drawn on.
void AddEdgeBoreByNormal(const DxfEntity& circle, Demands& demands);
// A circle in the view of an edge.
void AddEdgeBoreOfView(const DxfEntity& circle, Demands& demands);

// A line of a "T" in the face: its stem runs in from an edge, the bar across the stem's end is as long as the
// bore is wide.
struct EdgeLine {
    PathPoint From, To; // on the face, mm
    double Height = 0;  // of the bore's middle below the face
    bool IsDepthCode = false;
    Long Drawn = 0;
};
EdgeLine EdgeLineOf(const DxfEntity& entity, const DrawnPiece& piece);
void AddEdgeBoresOfLines(std::vector<EdgeLine> lines, Demands& demands);

} // namespace kv
