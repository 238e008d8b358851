// What the loops of a rectangular pocket cut beside it or leave inside it: the program stays as it is, and
// the report says so.
#pragma once

#include <vector>

#include "routes/loop_rests.h"
#include "routes/pocket_values.h"
#include "routes/rectangle_outlines.h"

namespace kv {

struct RectangleLoops {
    OutlineBox Bounds;
    double Pitch = 0;
    double ToolRadius = 0; // 0: not known
    PocketSide Side = PocketSide::Right;
    std::vector<double> Corners; // radii; 0 is sharp, and so is what the tool cannot cut
    double LastInset = 0;        // of the innermost loop
    LoopsOfPocket Way;
};

// `first` and `next` begin the loop on the wall. Lines name the pocket by its pass and the point `at`.
void TellRectangleDoubts(const PocketSpot& spot, const RectangleLoops& loops, const RouteSegment& first,
                         const RouteSegment& next);

} // namespace kv
