#include "geometry/route_chains.h"

namespace kv {

void DropDeadSegments() {}

void CloseLoneCircles() {}

bool ChainRoutes()
{
    return true;
}

} // namespace kv
