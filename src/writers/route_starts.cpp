// Start marks, as every writer takes them. Relies on chained records; leaves a mark's place to the
// record behind it.
#include "writers/route_starts.h"

namespace kv {

void ClearStartMark(Long i)
{
    if (RouteSegments[i].Kind != -4 || i >= RouteSegments.Last()) // one at the very end stays
        return;
    for (const Long marked : {i, i + 1})
        RouteSegments[marked].Kind = RouteSegments[marked].Dir = 0;
    if (i + 2 <= RouteSegments.Last())
        RouteSegments[i + 2].Dir = -1;
}

} // namespace kv
