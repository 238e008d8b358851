// Ways of tools against each other. Two programs that do the same mostly do it on the same lines and arcs:
// what lies on another way of the same tool is found so, without areas.
#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "machine/steps.h"

namespace kv {

// A move of a tool's middle.
struct CutPiece {
    Plane On = Plane::Surface;
    Move Way;
    double Radius = 0;                    // of the tool
    double DepthLeast = 0, DepthMost = 0; // mm
    std::size_t Owner = 0;                // the cut, or what asks for it
    bool IsRoll = false;                  // around an outer corner: no edge of what stays is cut there
};

struct PieceBox {
    PathPoint Low, High;
};
// Around all that the tool covers.
PieceBox BoxOfPiece(const Move& way, double radius);

// Finds pieces by place. The pieces must outlive it.
class PieceIndex {
  public:
    explicit PieceIndex(const std::vector<CutPiece>& pieces);
    // Those whose boxes may meet this one, each once, in their order.
    std::vector<std::size_t> Near(Plane on, const PieceBox& box) const;

  private:
    using Cell = std::pair<int, std::pair<int, int>>; // of a plane
    std::map<Cell, std::vector<std::size_t>> Cells;
};

// The parts of the move that are nowhere on one of the others: farther from them than a few hundredths of a
// mm.
std::vector<Move> PartsBeside(const Move& way, const std::vector<const Move*>& others);

} // namespace kv
