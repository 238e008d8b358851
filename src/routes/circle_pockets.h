// Circular pockets: spirals of half turns.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "routes/open_outlines.h"
#include "state/records.h"

namespace kv {

// A route of two arcs on an EXCAV layer and nothing else.
bool IsCirclePocket(std::span<const RouteSegment> chain);
// Adds the spiral and behind it the circle. False when the arcs are not one circle or there is no
// pitch: that is told, and nothing is added.
bool ClearCirclePair(std::span<const RouteSegment> chain, std::vector<RouteSegment>& records,
                     const OpenOutlines& open);
// Adds the spirals of RouteCircles, each a chain of its own, and their numbers of records; takes these
// circles off the list's later users.
void ClearListCircles(std::vector<RouteSegment>& records, std::vector<std::size_t>& counts);

} // namespace kv
