#include "routes/border_leads.h"

#include <cmath>
#include <optional>

#include "routes/route_elements.h"
#include "routes/route_runs.h"

namespace kv {

namespace {

constexpr double RightAngle = 0.01; // degrees, for an arc that meets the border squarely

// Where an end lies on the border.
struct BorderSpot {
    bool AtX = false, AtY = false; // at a limit of X, of Y; at both in a corner
    double Outward = 0;            // direction out of the part
};

// One end of a route. Extension is the way on beyond it, out of the route.
struct RouteEnd {
    PlanePoint Point, Neighbour;
    RouteElement Element;
    double Extension = 0;
    bool Finish = false;
};

bool IsNear(double a, double b)
{
    return std::fabs(a - b) < Run.RouteTolerance;
}

std::optional<BorderSpot> SpotOf(const PlanePoint& point, const SideLimits& limits)
{
    BorderSpot spot;
    const bool left = IsNear(point.X, limits.MinX), bottom = IsNear(point.Y, limits.MinY);
    spot.AtX = left || IsNear(point.X, limits.MaxX);
    spot.AtY = bottom || IsNear(point.Y, limits.MaxY);
    const bool insideX = limits.MinX <= point.X && point.X <= limits.MaxX;
    const bool insideY = limits.MinY <= point.Y && point.Y <= limits.MaxY;
    if (!(spot.AtX && insideY) && !(spot.AtY && insideX))
        return std::nullopt;
    if (spot.AtX)
        spot.Outward = left ? 180 : 0;
    else
        spot.Outward = bottom ? 270 : 90;
    return spot;
}

// A quarter arc from the end to the direction `onward`, its centre on the bearing `normal` from the end.
LeadPlan QuarterArc(const RouteEnd& end, double length, double normal, double onward)
{
    const PlanePoint centre = Polar(end.Point, length, normal);
    const PlanePoint far = Polar(centre, length, onward);
    const bool turnsLeft = Turn360(normal - onward) < 180;
    if (end.Finish)
        return ArcLead(far, centre, normal + 180, onward, turnsLeft);
    return ArcLead(far, centre, onward, normal + 180, !turnsLeft); // run toward the route
}

// The side of the extension on which a lead behind an arc bends away.
double ArcNormal(const RouteEnd& end, const BorderSpot& spot)
{
    const double left = Turn360(end.Extension + 90);
    const double fromOutward = AngleBetween(left, spot.Outward);
    if (std::fabs(fromOutward - 90) < RightAngle) // both sides lie along the border: turn on as the arc does
        return end.Extension + (end.Finish ? 90 : -90) * end.Element.Sense;
    return fromOutward < 90 ? left : Turn360(end.Extension - 90);
}

LeadPlan LeadAt(const RouteEnd& end, double length, const SideLimits& limits)
{
    const std::optional<BorderSpot> spot = SpotOf(end.Point, limits);
    if (!spot)
        return {};
    const LeadPlan straight = StraightLead(Polar(end.Point, length, end.Extension));
    if ((spot->AtX && spot->AtY) || end.Element.Shape == ElementShape::Bulge)
        return straight;
    if (end.Element.Shape == ElementShape::Arc)
        return QuarterArc(end, length, ArcNormal(end, *spot), end.Extension);
    const bool along =
        spot->AtX ? IsNear(end.Neighbour.X, end.Point.X) : IsNear(end.Neighbour.Y, end.Point.Y);
    if (!along)
        return straight;
    const double edge = spot->AtX ? 90 : 0;
    const double onward = AngleBetween(end.Extension, edge) < 90 ? edge : edge + 180;
    return QuarterArc(end, length, spot->Outward, onward);
}

} // namespace

SideLimits LimitsOf(Int side)
{
    const std::size_t index = static_cast<std::size_t>(side >= 1 && side <= Face ? side : Face);
    const bool face = index == static_cast<std::size_t>(Face);
    const double originX = face ? Run.OriginX : 0, originY = face ? Run.OriginY : 0;
    return {Run.SideMinX[index] - originX, Run.SideMaxX[index] - originX, Run.SideMinY[index] - originY,
            Run.SideMaxY[index] - originY};
}

bool NearsALimit(const PlanePoint& point, const SideLimits& limits)
{
    return IsNear(point.X, limits.MinX) || IsNear(point.X, limits.MaxX) || IsNear(point.Y, limits.MinY) ||
           IsNear(point.Y, limits.MaxY);
}

RouteLeads BorderLeads(std::span<const RouteSegment> route, double length)
{
    if (length == 0)
        return {};
    const RouteSegment& next = route[1];
    const RouteSegment& before = route[route.size() - 2];
    RouteEnd start{PointOf(route.front()), PointOf(next), FirstElement(route.front(), next), 0, false};
    start.Extension = Turn360(start.Element.Direction + 180);
    RouteEnd finish{PointOf(route.back()), PointOf(before), LastElement(before, route.back()), 0, true};
    finish.Extension = finish.Element.Direction;
    const SideLimits limits = LimitsOf(route.front().Side);
    return {LeadAt(start, length, limits), LeadAt(finish, length, limits)};
}

} // namespace kv
