// Looks at each chain and, within it, at each entity of the drawing. Needs chained records in drawing
// coordinates; circles of pockets are still in their own list. Changes nothing.
#include "routes/route_doubts.h"

#include <algorithm>

#include <cmath>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "drawing/doubt_lines.h"
#include "drawing/panel_places.h"
#include "routes/circle_joins.h"
#include "routes/pocket_values.h"
#include "routes/route_runs.h"
#include "routes/route_sides.h"
#include "state/drawn_entities.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr Int MarkOpens = -4; // its two records are no cut

bool IsMark(Long i)
{
    return RouteSegments[i].Kind == MarkOpens;
}

const char* WorkOf(Single oscZ, Long pass)
{
    return MarksPocket(oscZ, pass) ? "pocket" : "route";
}

DoubtedWork WorkAt(const RouteSegment& record)
{
    return {record.Drawn, WorkOf(record.OscZ, record.Pass), record.X, record.Y};
}

DoubtedWork WorkAt(const RouteCircle& circle)
{
    return {circle.Drawn, WorkOf(circle.OscZ, circle.Pass), circle.X, circle.Y};
}

// Indices of a chain's records without its marks.
std::vector<Long> CutsOf(Long first, Long last)
{
    std::vector<Long> cuts;
    for (Long i = first; i <= last; ++i) {
        if (IsMark(i))
            ++i;
        else if (RouteSegments[i].Kind != 0)
            cuts.push_back(i);
    }
    return cuts;
}

// What the panel measures where the tool goes down: its thickness, or on an edge the way across the face.
double SizeInView(std::size_t side)
{
    if (side == static_cast<std::size_t>(Face))
        return Run.PartThickness;
    return side <= 2 ? Run.SideHeight[Face] : Run.SideWidth[Face];
}

// How deep an entity goes at most. A line that falls from the surface is no line without a depth.
struct EntityDepth {
    double Depth = -std::numeric_limits<double>::infinity();
    DoubtedWork Work;
};

// Of the deepest entity, and of the first without a depth: a chain is one operation.
void TellDepthsOfChain(const std::vector<Long>& cuts, double size)
{
    std::vector<EntityDepth> depths; // in the order of the chain
    std::map<Long, std::size_t> places;
    for (const Long i : cuts) {
        const RouteSegment& record = RouteSegments[i];
        for (const Long drawn : EntitiesOf(record.Drawn)) {
            const Long whole = WholeOf(drawn);
            const auto [place, isNew] = places.try_emplace(whole, depths.size());
            if (isNew) {
                depths.emplace_back().Work = WorkAt(record);
                depths.back().Work.Drawn = whole;
            }
            EntityDepth& entity = depths[place->second];
            entity.Depth = std::max(entity.Depth, static_cast<double>(record.Z));
        }
    }
    if (depths.empty())
        return;
    const EntityDepth* const deepest =
        &*std::max_element(depths.begin(), depths.end(),
                           [](const EntityDepth& a, const EntityDepth& b) { return a.Depth < b.Depth; });
    TellDepthDoubts(deepest->Work, deepest->Depth, size);
    const auto flat = std::find_if(depths.begin(), depths.end(),
                                   [](const EntityDepth& entity) { return IsNoDepth(entity.Depth); });
    if (flat != depths.end() && !IsNoDepth(deepest->Depth))
        TellDepthDoubts(flat->Work, flat->Depth, size);
}

// A box round all that the way between two records can be; a line is itself.
struct Way {
    Stretch Line;
    PanelRectangle Box;
    bool IsStraight = true;
};

PanelRectangle BoxAround(const Stretch& line, double by)
{
    return Widened({std::min(line.X1, line.X2), std::min(line.Y1, line.Y2), std::max(line.X1, line.X2),
                    std::max(line.Y1, line.Y2)},
                   by);
}

// From a record to the next one. An arc is within its circle, a bulged span within its rise.
Way WayOf(const RouteSegment& from, const RouteSegment& to)
{
    Way way;
    way.Line = {from.X, from.Y, to.X, to.Y};
    const double length = Distance(PointOf(from), PointOf(to));
    double by = 0;
    if (from.Kind == ArcOpens && to.Kind == ArcEnds) {
        const double radius = Distance(PointOf(from), CentreOf(from));
        way.Box = Widened({from.Aux1, from.Aux2, from.Aux1, from.Aux2}, radius);
        way.IsStraight = false;
        return way;
    }
    if (KindOf(from) == 5 && from.Aux2 != 0 && to.Kind == 5) {
        const double bulge = std::fabs(static_cast<double>(from.Aux2));
        by = length * std::max(bulge, 1 / bulge) / 2; // a radius or more
        way.IsStraight = false;
    }
    if (KindOf(to) == 2) { // through points: within the length of its chords
        by = length;
        way.IsStraight = false;
    }
    way.Box = BoxAround(way.Line, by);
    return way;
}

bool Overlap(const PanelRectangle& a, const PanelRectangle& b)
{
    return a.MinX <= b.MaxX && b.MinX <= a.MaxX && a.MinY <= b.MaxY && b.MinY <= a.MaxY;
}

bool Holds(const PanelRectangle& outer, const PanelRectangle& inner)
{
    return outer.MinX <= inner.MinX && outer.MinY <= inner.MinY && outer.MaxX >= inner.MaxX &&
           outer.MaxY >= inner.MaxY;
}

bool TouchesPanel(const Way& way, double halfTool)
{
    for (std::size_t side = 1; side <= static_cast<std::size_t>(Face); ++side) {
        if (Run.SideMinX[side] > Run.SideMaxX[side])
            continue;
        const PanelRectangle reached = Widened(RectangleOfSide(side), halfTool + PlaceReach());
        if (way.IsStraight ? Meets(reached, way.Line) : Overlap(reached, way.Box))
            return true;
    }
    return false;
}

double HalfToolOf(Single diameter, const Text<10>& comp)
{
    return std::max(static_cast<double>(diameter) / 2, ToolRadiusOf(comp));
}

// The outline of a panel may be cut at the tool's radius round it.
bool IsOffPanel(const std::vector<Long>& cuts)
{
    const RouteSegment& head = RouteSegments[cuts.front()];
    const double halfTool = HalfToolOf(head.Diameter, head.Comp);
    PanelRectangle all = BoxAround({head.X, head.Y, head.X, head.Y}, 0);
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        const RouteSegment& from = RouteSegments[cuts[i]];
        const RouteSegment& to = i + 1 < cuts.size() ? RouteSegments[cuts[i + 1]] : from;
        const Way way = WayOf(from, to);
        if (TouchesPanel(way, halfTool))
            return false;
        all = {std::min(all.MinX, way.Box.MinX), std::min(all.MinY, way.Box.MinY),
               std::max(all.MaxX, way.Box.MaxX), std::max(all.MaxY, way.Box.MaxY)};
    }
    return !Holds(all, RectangleOfFace());
}

double LengthOfChords(const std::vector<Long>& cuts)
{
    double length = 0;
    for (std::size_t i = 1; i < cuts.size(); ++i)
        length += Distance(PointOf(RouteSegments[cuts[i - 1]]), PointOf(RouteSegments[cuts[i]]));
    return length;
}

// A contour with its tool beside it whose ends are nearer to each other than the tool is thick: nothing stays
// between them, so the gap is none that was meant.
void TellOfGap(const std::vector<Long>& cuts, const DoubtedWork& work, const RouteSegment& head)
{
    constexpr double leastWay = 10; // times the gap; a short line has near ends too
    const RouteSegment& end = RouteSegments[cuts.back()];
    const double gap = Distance(PointOf(RouteSegments[cuts.front()]), PointOf(end));
    if (gap <= static_cast<double>(Run.RouteTolerance) || gap > 2 * ToolRadiusOf(head.Comp) ||
        MarksPocket(head.OscZ, head.Pass) || LengthOfChords(cuts) < leastWay * gap)
        return;
    TellDoubt(Message::ContourGap, work,
              {{"gap", LengthText(Millimetres(gap))}, {"end", PlaceText(end.X, end.Y)}});
}

void TellOfChain(Long first, Long last)
{
    const std::vector<Long> cuts = CutsOf(first, last);
    if (cuts.empty())
        return;
    const RouteSegment& head = RouteSegments[first]; // its tool is that of the chain
    const DoubtedWork work = WorkAt(RouteSegments[cuts.front()]);
    if (head.ToolNo == 0 && head.Diameter == 0)
        TellDoubt(Message::RouteWithoutTool, work);
    TellOfGap(cuts, work, head);
    TellDepthsOfChain(cuts, SizeInView(ViewOfDrawnRoute(first, last)));
    if (IsOffPanel(cuts))
        TellDoubt(Message::WorkOffPanel, work);
}

void TellOfCircle(const RouteCircle& circle)
{
    const DoubtedWork work = WorkAt(circle);
    if (circle.ToolNo == 0 && circle.Diameter == 0)
        TellDoubt(Message::RouteWithoutTool, work);
    TellDepthDoubts(work, circle.Z, Run.PartThickness);
    Way way;
    way.Box = Widened({circle.X, circle.Y, circle.X, circle.Y}, circle.Radius);
    way.IsStraight = false;
    if (!TouchesPanel(way, HalfToolOf(circle.Diameter, circle.Comp)))
        TellDoubt(Message::WorkOffPanel, work);
}

} // namespace

void TellRouteDoubts()
{
    for (Long first = 1; first <= RouteSegments.Last();) {
        const Long last = LastOfRoute(first);
        TellOfChain(first, last);
        first = last + 1;
    }
    for (Long i = 1; i <= RouteCircles.Last(); ++i)
        if (RouteCircles[i].Used == False && IsPocket(RouteCircles[i]))
            TellOfCircle(RouteCircles[i]);
}

} // namespace kv
