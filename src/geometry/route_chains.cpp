// There are no segments to chain yet: the route passes leave RouteSegments and RouteCircles empty.
#include "geometry/route_chains.h"

namespace kv {

void DropDeadSegments() {}

void CloseLoneCircles() {}

void ChainRoutes() {}

void AssignRouteSides() {}

} // namespace kv
