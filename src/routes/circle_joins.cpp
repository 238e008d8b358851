#include "routes/circle_joins.h"

namespace kv {

namespace {

constexpr double QuarterTurn = 90;
constexpr double Upward = 90; // arriving direction at a circle that nothing arrives at

Single RimDirection(Single angle, Int dir)
{
    return ToSingle(Turn360(dir != False ? angle + QuarterTurn : angle - QuarterTurn));
}

// The last two records as a linked entry.
ChainEntry EntryOfArc()
{
    ChainEntry arc;
    arc.First = RouteSegments.Last() - 1;
    arc.Last = RouteSegments.Last();
    arc.PathKind = 3;
    arc.Used = true;
    const RouteSegment& end = RouteSegments[arc.Last];
    arc.StartAngle = RimDirection(end.Aux1, end.Dir);
    arc.EndAngle = RimDirection(end.Aux2, end.Dir);
    return arc;
}

} // namespace

ChainEntry JoinCircle(RouteCircle& circle, const PlanePoint& entry, double arriving)
{
    RouteSegment record = SegmentOfCircle(circle);
    record.Kind = -3;
    record.Aux1 = circle.X;
    record.Aux2 = circle.Y;
    PlaceAt(record, entry);
    AddSegment(record);

    const Single bearing = ToSingle(Bearing(CentreOf(circle), PointOf(record)));
    const double counterClockwise = AngleBetween(Turn360(bearing + QuarterTurn), Turn360(arriving));
    const double clockwise = AngleBetween(Turn360(bearing - QuarterTurn), Turn360(arriving));
    record.Kind = 3;
    record.Aux1 = record.Aux2 = bearing;
    record.Dir = counterClockwise < clockwise ? True : False;
    AddSegment(record);
    circle.Used = True;
    circle.Pass = 0;
    return EntryOfArc();
}

ChainEntry ContinueCircle(const ChainEntry& before, const PlanePoint& entry)
{
    RouteSegment start = RouteSegments[before.First];
    RouteSegment end = RouteSegments[before.Last];
    PlaceAt(start, entry);
    PlaceAt(end, entry);
    end.Aux2 = ToSingle(Bearing(CentreOf(start), entry));
    AddSegment(start);
    AddSegment(end);
    return EntryOfArc();
}

ChainEntry CloseCircle(RouteCircle& circle)
{
    const PlanePoint top = {circle.X, static_cast<double>(circle.Y) + circle.Radius};
    return JoinCircle(circle, top, Upward);
}

} // namespace kv
