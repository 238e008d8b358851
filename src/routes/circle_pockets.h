// Circular pockets: spirals of half turns.
#pragma once

#include <span>
#include <vector>

#include "state/records.h"

namespace kv {

// A route of two half circles on an EXCAV layer and nothing else.
bool IsCirclePocket(std::span<const RouteSegment> chain);
// Adds the spiral and behind it the circle. False when there is no pitch or no radius: nothing is
// added then.
bool ClearCirclePair(std::span<const RouteSegment> chain, std::vector<RouteSegment>& records);
// Adds the spirals of RouteCircles and takes these circles off the list's later users.
void ClearListCircles(std::vector<RouteSegment>& records);

} // namespace kv
