// Areas of wood in one plane: what tools sweep, and what of it something else does not cover. Arcs are
// chords, at most 0.01 mm beside them.
#pragma once

#include <vector>

#include "machine/steps.h"

namespace kv {

// The inside of a closed polygon, of either turning. Where it crosses itself: all that it goes around.
using WoodShape = std::vector<PathPoint>;

// What a disc of the radius covers on a move.
void AddSwept(std::vector<WoodShape>& shapes, const Move& move, double radius);
void AddDisc(std::vector<WoodShape>& shapes, const PathPoint& centre, double radius);
// A straight band: a saw's cut, square at its ends.
void AddBand(std::vector<WoodShape>& shapes, const PathPoint& from, const PathPoint& to, double left,
             double right);
// The inside of a closed way.
WoodShape InsideOf(const std::vector<Move>& outline);
// Where the middle of a disc may be that stays inside a closed way.
std::vector<WoodShape> MiddlesInside(const std::vector<Move>& outline, double radius);
// What that disc reaches near the box.
std::vector<WoodShape> ReachedFrom(const std::vector<WoodShape>& middles, double radius, const PathPoint& low,
                                   const PathPoint& high);

// A connected area.
struct WoodRest {
    PathPoint At;               // the middle of the widest disc in it
    PathPoint Low, High;        // a box around it
    double Area = 0, Width = 0; // mm2; mm, of that disc
};

struct WoodQuestion {
    std::vector<WoodShape> Of;      // all that any of these covers,
    std::vector<WoodShape> Within;  // as far as it lies in one of these (empty: wherever),
    std::vector<WoodShape> Without; // and in none of these.
};
// The areas that are somewhere wider than `width`, the largest first.
std::vector<WoodRest> RestsOf(const WoodQuestion& question, double width);

} // namespace kv
