// Start marks, as every writer takes them. Relies on chained records; leaves a mark's place to the
// record behind it.
#include "writers/route_starts.h"

#include "platform/run_error.h"
#include "routes/route_runs.h"

namespace kv {

void StartCheck::Take(const RouteSegment& record)
{
    const Int kind = KindOf(record);
    if (kind != 1 && kind != 2 && kind != 3 && kind != 5)
        return; // no move
    if (OpensRoute(record))
        Opened = record.Kind < 0;
    if (!Opened)
        throw RunError{ErrorInvalidCall, "Layer " + ShownLayerOfPass(record.Pass) +
                                             ": a move stands in front of its route's start"};
}

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
