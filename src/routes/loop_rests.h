// What the loops of a rectangular pocket leave where one goes over into the next.
#pragma once

#include <array>
#include <span>

#include "routes/rectangle_outlines.h"

namespace kv {

struct LoopsOfPocket {
    std::span<const RouteSegment> Records; // loop after loop, from the wall inward
    std::size_t LoopLength = 0;            // records of one
    OutlineBox Bounds;
    std::array<double, 4> Corners{}; // radii: lower left, lower right, upper right, upper left; 0: sharp
    double ToolRadius = 0, Pitch = 0;
    int Side = 0; // the tool's: 1 left of the way, -1 right
};

// Whether wood stays that the tool could reach. Corners that are too sharp for it do not count.
bool LeavesRestBetweenLoops(const LoopsOfPocket& loops);

} // namespace kv
