// Rectangular pockets, with or without rounded corners.
#pragma once

#include <span>
#include <vector>

#include "routes/open_outlines.h"
#include "state/records.h"

namespace kv {

// Adds the clearing loops of a contour, outermost first. False when the contour is no rectangle or has
// no pitch: that is told, and nothing is added.
bool ClearRectangle(std::span<const RouteSegment> contour, std::vector<RouteSegment>& records,
                    const OpenOutlines& open);

} // namespace kv
