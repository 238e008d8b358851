#include "routes/route_elements.h"

#include <cmath>

#include "platform/trigonometry.h"
#include "routes/route_runs.h"

namespace kv {

namespace {

bool IsArc(const RouteSegment& from, const RouteSegment& to)
{
    return from.Kind == -3 && to.Kind == 3;
}

// A bulge between two equal points has no chord to stand on.
bool IsBulge(const RouteSegment& from, const RouteSegment& to)
{
    return KindOf(from) == 5 && KindOf(to) == 5 && from.Aux2 != 0 && (from.X != to.X || from.Y != to.Y);
}

// Without its direction, which depends on the end that is asked for.
RouteElement ArcElement(const RouteSegment& from, const RouteSegment& to)
{
    RouteElement arc;
    arc.Shape = ElementShape::Arc;
    arc.Sense = to.Dir != 0 ? 1 : -1;
    arc.Centre = CentreOf(from);
    arc.StartAngle = to.Aux1;
    return arc;
}

// The bulge is the tangent of a quarter of the angle that the span turns by; the chord's bearing lies
// half of that angle from either tangent. `end` 0 asks for the first point's, 1 for the last one's.
RouteElement BulgeElement(const RouteSegment& from, const RouteSegment& to, int end)
{
    const double quarter = ArcTangent(static_cast<double>(from.Aux2));
    const double halfTurn = 2 * quarter * 180 / static_cast<double>(Run.Pi);
    const double chord = Bearing(PointOf(from), PointOf(to));
    RouteElement bulge;
    bulge.Shape = ElementShape::Bulge;
    bulge.Sense = from.Aux2 > 0 ? 1 : -1;
    bulge.Radius = std::fabs(Distance(PointOf(from), PointOf(to)) / 2 / Sine(2 * quarter));
    bulge.ArcLength = std::fabs(4 * quarter) * bulge.Radius;
    bulge.Direction = Turn360(end == 0 ? chord - halfTurn : chord + halfTurn);
    const double entering = Turn360(chord - halfTurn);
    bulge.Centre = Polar(PointOf(from), bulge.Radius, entering + 90 * bulge.Sense);
    bulge.StartAngle = Turn360(entering - 90 * bulge.Sense);
    return bulge;
}

RouteElement LineElement(const RouteSegment& from, const RouteSegment& to)
{
    RouteElement line;
    line.Direction = Bearing(PointOf(from), PointOf(to));
    line.Radius = Distance(PointOf(from), PointOf(to));
    return line;
}

} // namespace

RouteElement FirstElement(const RouteSegment& start, const RouteSegment& next)
{
    if (IsBulge(start, next))
        return BulgeElement(start, next, 0);
    if (!IsArc(start, next))
        return LineElement(start, next);
    RouteElement arc = ArcElement(start, next);
    arc.Direction = Turn360(next.Aux1 + 90.0 * arc.Sense);
    arc.Radius = Distance(arc.Centre, PointOf(start));
    return arc;
}

RouteElement LastElement(const RouteSegment& before, const RouteSegment& end)
{
    if (IsBulge(before, end))
        return BulgeElement(before, end, 1);
    if (!IsArc(before, end))
        return LineElement(before, end);
    RouteElement arc = ArcElement(before, end);
    arc.Direction = Turn360(end.Aux2 + 90.0 * arc.Sense);
    arc.Radius = Distance(arc.Centre, PointOf(end));
    return arc;
}

} // namespace kv
