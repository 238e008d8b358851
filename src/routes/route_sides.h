// Routes may be drawn in the edge views around the face.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "geometry/angles.h"
#include "state/records.h"

namespace kv {

// Finds the view of each route and circle and moves the records into that view's coordinates, as the
// control system wants them.
void AssignRouteSides();

// The view of a chained route, 1 to 5, as long as its records are in drawing coordinates.
std::size_t ViewOfDrawnRoute(Long first, Long last);

// A route with the bulges and angles that it has in its view. Those of its records stay as drawn where the
// view is turned or mirrored, and the writer turns the bulges. Empty for a route on the face.
std::vector<RouteSegment> AsInItsView(std::span<const RouteSegment> route);
// Whether that turns the bulges round.
bool HasTurnedBulges(const RouteSegment& record);

// Where the drawing has the point of a record that has been moved.
PlanePoint DrawnPlace(const RouteSegment& record);

} // namespace kv
