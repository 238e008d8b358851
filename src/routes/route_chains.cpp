// The chaining stage, step by step; between the steps the operator may abort. Relies on the records
// and circles of the route passes, in drawing coordinates; leaves chains in the order in which they
// are cut, circles as arcs in them. Pockets drawn as circles stay in RouteCircles.
#include "routes/route_chains.h"

#include "routes/chain_order.h"
#include "routes/circle_joins.h"
#include "routes/circle_leads.h"
#include "routes/depth_passes.h"
#include "routes/route_linking.h"
#include "routes/route_order.h"
#include "routes/route_paths.h"
#include "state/report.h"

namespace kv {

namespace {

constexpr int MeterStep = 5; // percent

// False when the operator asked to abort.
bool Checkpoint()
{
    const int moved = MeterValue(Meter::Processing) + MeterStep;
    if (moved < 100)
        SetMeter(Meter::Processing, moved);
    return !UserAborted();
}

void JoinLeftoverCircles(std::vector<ChainEntry>& linked)
{
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        RouteCircle& circle = RouteCircles[i];
        if (circle.Used != False || IsPocket(circle))
            continue;
        linked.push_back(CloseCircle(circle));
        linked.back().ChainHead = true;
    }
}

// An arc without a depth goes on at the depth before it.
void FillArcDepths()
{
    for (Long i = 2; i <= RouteSegments.Last(); ++i)
        if (KindOf(RouteSegments[i]) == 3 && RouteSegments[i].Z == 0)
            RouteSegments[i].Z = RouteSegments[i - 1].Z;
}

// Paths and circles to linked entries. False when the operator asked to abort.
bool LinkAll(std::vector<ChainEntry>& linked)
{
    std::vector<ChainEntry> paths = FindPaths();
    if (!Checkpoint() || !LinkPaths(paths, linked) || !Checkpoint())
        return false;
    BuildCircleLeads(linked);
    if (!Checkpoint())
        return false;
    JoinLeftoverCircles(linked);
    return Checkpoint();
}

// The orders of the chains, and back to RouteSegments. False when the operator asked to abort.
bool OrderAll(const std::vector<ChainEntry>& linked)
{
    ChainList list = GatherChains(linked);
    if (!Checkpoint())
        return false;
    for (const auto order : {OrderByNearness, OrderByTool, OrderBySequence}) {
        order(list);
        if (!Checkpoint())
            return false;
    }
    CopyOut(list);
    return Checkpoint();
}

} // namespace

void DropDeadSegments()
{
    std::vector<RouteSegment> live;
    for (Long i = 1; i <= RouteSegments.Last(); ++i)
        if (RouteSegments[i].Kind != 0)
            live.push_back(RouteSegments[i]);
    StoreSegments(live);
}

void CloseLoneCircles()
{
    if (RouteSegments.Last() > 0)
        return;
    for (Long i = 1; i <= RouteCircles.Last(); ++i) {
        RouteCircle& circle = RouteCircles[i];
        if (circle.Used != False || IsPocket(circle))
            continue;
        const ChainEntry arc = CloseCircle(circle);
        RouteSegments[arc.First].Dir = RouteStart;
    }
    Run.SegmentCount = ToInt(RouteSegments.Last());
}

bool ChainRoutes()
{
    if (RouteSegments.Last() > 0 && RouteSegments[RouteSegments.Last()].Kind == 0)
        RouteSegments.CutTo(RouteSegments.Last() - 1);
    Run.SegmentCount = ToInt(RouteSegments.Last());
    std::vector<ChainEntry> linked;
    if (Run.SegmentCount == 0) {
        BuildCircleLeads(linked);
        return true;
    }
    if (!Checkpoint())
        return false;
    OrderRouteChains();
    if (!Checkpoint() || !LinkAll(linked) || !OrderAll(linked))
        return false;
    FillArcDepths();
    if (!Checkpoint())
        return false;
    ReverseClosedPolylines();
    return Checkpoint();
}

} // namespace kv
