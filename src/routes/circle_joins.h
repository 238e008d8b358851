// A circle of a route layer becomes an arc that begins and ends where a path meets its rim.
#pragma once

#include "routes/route_paths.h"

namespace kv {

// Pockets are cleared later; until then every pass over circles leaves them alone.
inline bool IsPocket(const RouteCircle& circle)
{
    return circle.OscZ < 0;
}
inline PlanePoint CentreOf(const RouteCircle& circle)
{
    return {circle.X, circle.Y};
}

// Appends the whole circle as an arc from `entry` round to it, in the sense that goes on from the
// arriving direction (degrees); the circle is used and its Pass cleared.
ChainEntry JoinCircle(RouteCircle& circle, const PlanePoint& entry, double arriving);
// Appends an arc that goes on from the arc before, of the same circle, to `entry`.
ChainEntry ContinueCircle(const ChainEntry& before, const PlanePoint& entry);
// Appends a circle that no path meets: an arc from its top, clockwise.
ChainEntry CloseCircle(RouteCircle& circle);

} // namespace kv
