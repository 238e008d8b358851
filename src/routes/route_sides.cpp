// Routes drawn in a view of an edge, around the face. A route belongs to the view that holds most of
// its points. Needs the extents of the views and routes whose first records are marked; leaves sides
// and coordinates as the control system reads them.
#include "routes/route_sides.h"

#include <algorithm>
#include <array>

#include "routes/route_runs.h"
#include "state/run.h"

namespace kv {

namespace {

constexpr Int Evolution = 2; // control system; the two others share one form

// Where a point of a view goes.
struct ViewMap {
    std::size_t Side;
    bool Mirrors; // arcs turn the other way, the tool is on the other hand
    PlanePoint (*Place)(const PlanePoint& point);
    PlanePoint (*Drawn)(const PlanePoint& place); // the way back
};

double FromOriginX(double x)
{
    return x - Run.OriginX;
}

double FromOriginY(double y)
{
    return y - Run.OriginY;
}

PlanePoint FromOrigin(const PlanePoint& p)
{
    return {FromOriginX(p.X), FromOriginY(p.Y)};
}

PlanePoint Above(const PlanePoint& p)
{
    return {FromOriginX(p.X), Run.SideMaxY[1] - p.Y};
}

PlanePoint Below(const PlanePoint& p)
{
    return {FromOriginX(p.X), p.Y - Run.SideMinY[2]};
}

PlanePoint AlongX(const PlanePoint& p)
{
    return {FromOriginX(p.X), p.Y};
}

PlanePoint AlongY(const PlanePoint& p)
{
    return {p.X, FromOriginY(p.Y)};
}

PlanePoint Left(const PlanePoint& p)
{
    return {FromOriginY(p.Y), p.X - Run.SideMinX[3]};
}

PlanePoint Right(const PlanePoint& p)
{
    const double end = static_cast<double>(Run.SideMinX[4]) + Run.SideWidth[4];
    return {FromOriginY(p.Y), end - p.X};
}

PlanePoint DrawnOnFace(const PlanePoint& p)
{
    return {p.X + Run.OriginX, p.Y + Run.OriginY};
}

PlanePoint DrawnAbove(const PlanePoint& p)
{
    return {p.X + Run.OriginX, Run.SideMaxY[1] - p.Y};
}

PlanePoint DrawnBelow(const PlanePoint& p)
{
    return {p.X + Run.OriginX, p.Y + Run.SideMinY[2]};
}

PlanePoint DrawnAlongX(const PlanePoint& p)
{
    return {p.X + Run.OriginX, p.Y};
}

PlanePoint DrawnAlongY(const PlanePoint& p)
{
    return {p.X, p.Y + Run.OriginY};
}

PlanePoint DrawnLeft(const PlanePoint& p)
{
    return {p.Y + Run.SideMinX[3], p.X + Run.OriginY};
}

PlanePoint DrawnRight(const PlanePoint& p)
{
    const double end = static_cast<double>(Run.SideMinX[4]) + Run.SideWidth[4];
    return {end - p.Y, p.X + Run.OriginY};
}

constexpr ViewMap EvolutionViews[] = {
    {1, true, Above, DrawnAbove},  {2, false, Below, DrawnBelow},       {3, true, Left, DrawnLeft},
    {4, false, Right, DrawnRight}, {5, false, FromOrigin, DrawnOnFace},
};
constexpr ViewMap OtherViews[] = {
    {1, false, AlongX, DrawnAlongX}, {2, false, AlongX, DrawnAlongX},     {3, false, AlongY, DrawnAlongY},
    {4, false, AlongY, DrawnAlongY}, {5, false, FromOrigin, DrawnOnFace},
};

const ViewMap& MapOf(std::size_t side)
{
    return Run.ControlType == Evolution ? EvolutionViews[side - 1] : OtherViews[side - 1];
}

// The first view whose extents hold the point, else the face. A view that the drawing does not show
// has empty extents.
std::size_t ViewOf(const PlanePoint& p)
{
    const double marginX = Run.SideMarginX;
    const double marginY = Run.SideMarginY;
    for (std::size_t side = 1; side < Face; ++side)
        if (p.X > Run.SideMinX[side] - marginX && p.X < Run.SideMaxX[side] + marginX &&
            p.Y > Run.SideMinY[side] - marginY && p.Y < Run.SideMaxY[side] + marginY)
            return side;
    return Face;
}

// The view with most of the points; of equal ones the lowest.
std::size_t ViewOfRoute(Long first, Long last)
{
    std::array<Long, Face + 1> counts{};
    for (Long i = first; i <= last; ++i)
        ++counts[ViewOf(PointOf(RouteSegments[i]))];
    std::size_t view = 1;
    for (std::size_t side = 2; side <= Face; ++side)
        if (counts[side] > counts[view])
            view = side;
    return view;
}

bool IsInEdgeView(const RouteSegment& record)
{
    return record.Side >= 1 && record.Side < static_cast<Int>(Face);
}

void MoveInto(const ViewMap& view, RouteSegment& record)
{
    record.Side = static_cast<Int>(view.Side);
    PlaceAt(record, view.Place(PointOf(record)));
    if (record.Kind == -3) {
        const PlanePoint centre = view.Place(CentreOf(record));
        record.Aux1 = ToSingle(centre.X);
        record.Aux2 = ToSingle(centre.Y);
    }
    if (!view.Mirrors)
        return;
    if (record.Kind == 3)
        record.Dir = static_cast<Int>(~record.Dir); // its angles stay; bulges are turned by the writer
    record.Comp = OtherSideOf(record.Comp);
}

} // namespace

void AssignRouteSides()
{
    for (Long first = 1; first <= RouteSegments.Last();) {
        const Long last = LastOfRoute(first);
        const ViewMap& view = MapOf(ViewOfRoute(first, last)); // by all points as drawn
        for (Long i = first; i <= last; ++i)
            MoveInto(view, RouteSegments[i]);
        first = last + 1;
    }
    for (RouteCircle* circle = RouteCircles.begin() + 1; circle < RouteCircles.end(); ++circle) {
        const PlanePoint centre{circle->X, circle->Y};
        circle->Side = static_cast<Int>(ViewOf(centre));
        if (circle->Side != Face)
            continue;
        circle->X = ToSingle(FromOriginX(centre.X));
        circle->Y = ToSingle(FromOriginY(centre.Y));
    }
}

std::size_t ViewOfDrawnRoute(Long first, Long last)
{
    return ViewOfRoute(first, last);
}

std::vector<RouteSegment> AsInItsView(std::span<const RouteSegment> route)
{
    if (Run.ControlType != Evolution || std::none_of(route.begin(), route.end(), IsInEdgeView))
        return {};
    std::vector<RouteSegment> lying(route.begin(), route.end());
    for (std::size_t i = 0; i < lying.size(); ++i) {
        RouteSegment& record = lying[i];
        if (KindOf(record) == 5 && HasTurnedBulges(record))
            record.Aux2 = 0 - record.Aux2;
        if (!IsInEdgeView(record) || record.Kind != 3 || i == 0 || lying[i - 1].Kind != -3)
            continue;
        const PlanePoint centre = CentreOf(lying[i - 1]);
        record.Aux1 = ToSingle(Bearing(centre, PointOf(lying[i - 1])));
        record.Aux2 = ToSingle(Bearing(centre, PointOf(record)));
    }
    return lying;
}

bool HasTurnedBulges(const RouteSegment& record)
{
    return IsInEdgeView(record) && MapOf(static_cast<std::size_t>(record.Side)).Mirrors;
}

PlanePoint DrawnPlace(const RouteSegment& record)
{
    return MapOf(IsInEdgeView(record) ? static_cast<std::size_t>(record.Side) : Face).Drawn(PointOf(record));
}

} // namespace kv
