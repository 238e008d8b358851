// On an edge the line of an arc has its end in the edge's plane, and no word is left for the depth: the tool
// stays where the line before has put it. A rising or falling arc (oscillation, a ramp on a lead) is level
// then, and the next line goes straight to its own depth.
#include "routes/edge_arc_doubts.h"

#include <cmath>
#include <set>
#include <string>

#include "platform/text.h"
#include "routes/pocket_values.h"
#include "routes/route_runs.h"
#include "routes/route_sides.h"
#include "state/drawn_entities.h"
#include "state/report.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr Int EvolutionControl = 2; // names the depth of every arc
constexpr double DepthOpen = 0.001; // mm

bool IsEdgeArc(Long end)
{
    const Int side = RouteSegments[end].Side;
    return end > 1 && side >= 1 && side < static_cast<Int>(Face) && RouteSegments[end].Kind == ArcEnds &&
           RouteSegments[end - 1].Kind == ArcOpens;
}

MessageLine LevelArcLine(const RouteSegment& start)
{
    const PlanePoint at = DrawnPlace(start);
    const auto text = [](double drawn) { return PlainText(ToSingle(std::round(drawn * 10000) / 10000)); };
    return {Message::EdgeArcLevel, WithPlace({{"layer", ShownLayerOfPass(start.Pass)},
                                              {"place", "X" + text(at.X) + " Y" + text(at.Y)}},
                                             start.Drawn)};
}

} // namespace

void TellEdgeArcDoubts()
{
    // Of a panel solid there are no views, and arcs are written as those of the face.
    if (Run.ControlType == EvolutionControl || Run.PanelFound != 0)
        return;
    const double open = DepthOpen / static_cast<double>(Run.UnitFactor);
    std::set<std::string> told; // depth passes repeat an arc at its place
    double depth = 0;           // of the tool
    for (Long i = 1; i <= RouteSegments.Last(); ++i) {
        const RouteSegment& record = RouteSegments[i];
        if (!IsEdgeArc(i)) {
            if (record.Kind > 0 || StartsRoute(record)) // else nothing moves
                depth = record.Z;
            continue;
        }
        if (std::fabs(static_cast<double>(record.Z) - depth) <= open)
            continue;
        const MessageLine line = LevelArcLine(RouteSegments[i - 1]);
        if (told.insert(TextOf(line)).second)
            Tell(line);
    }
}

} // namespace kv
