// Where a closed, compensated contour begins and ends: the two elements that meet there and the side
// on which the tool runs. What leads a contour gets there, and what its tool cuts there, follow from it.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "routes/route_elements.h"

namespace kv {

struct ContourSeam {
    PlanePoint Start, End;
    RouteElement First, Last;
    int Side = 0;        // the tool's: 1 left of the way, -1 right
    bool Closed = false; // the way turns away from the tool's side, or does not turn
};

// Nothing for a route that is open or has no compensation. It has two records or more.
std::optional<ContourSeam> SeamOf(std::span<const RouteSegment> route);

} // namespace kv
