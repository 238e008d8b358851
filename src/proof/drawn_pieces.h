// Entities of the drawing as lines and arcs in the drawing's plane, in millimetres, with the sense in which a
// machine would follow them: lines and polylines as drawn, arcs and circles clockwise.
#pragma once

#include <vector>

#include "machine/steps.h"
#include "platform/numbers.h"

namespace kv {

struct DrawnPiece {
    Move Way; // depths are those of its ends where no letter says them
    Long Drawn = 0;
};

enum class PieceKind { Line, Arc, Circle, Polyline };

struct DrawnShapePieces {
    PieceKind Kind = PieceKind::Line;
    std::vector<DrawnPiece> Pieces;
    double Thickness = 0, StartWidth = 0, EndWidth = 0; // mm
    bool IsClosed = false;                              // a polyline that says so
    bool IsTapered = false;                             // two widths, at the head or the first vertex
    std::size_t Vertices = 0;
};

// Of the entity at `index` of Entities, which becomes the last record that belongs to it. Empty for kinds
// that are no way, and for those in the plane of an edge.
DrawnShapePieces ShapePiecesAt(Long& index);

} // namespace kv
