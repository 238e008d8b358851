// Routes may be drawn in the edge views around the face.
#pragma once

#include "geometry/angles.h"
#include "state/records.h"

namespace kv {

// Finds the view of each route and circle and moves the records into that view's coordinates, as the
// control system wants them.
void AssignRouteSides();

// Where the drawing has the point of a record that has been moved.
PlanePoint DrawnPlace(const RouteSegment& record);

} // namespace kv
