// Rectangular pockets, with or without rounded corners.
#pragma once

#include <span>
#include <vector>

#include "state/records.h"

namespace kv {

// Adds the clearing loops of a contour, outermost first. False when the contour has no area or no
// pitch: nothing is added then.
bool ClearRectangle(std::span<const RouteSegment> contour, std::vector<RouteSegment>& records);

} // namespace kv
