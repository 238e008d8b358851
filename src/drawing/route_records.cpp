// Checked values and appends of the route passes: no number that a Single cannot hold gets into a
// record, and an overflow names the layer that it came from.
#include "drawing/route_records.h"

#include <cmath>
#include <limits>

namespace kv {

Single StoredCoordinate(double value)
{
    if (!(std::abs(value) <= static_cast<double>(std::numeric_limits<Single>::max())))
        throw RunError{ErrorOverflow, "Coordinate out of range on layer " + ShownLayer(CurrentEntity.Layer)};
    return static_cast<Single>(value);
}

void RefuseInfinities()
{
    for (const Single value : {CurrentEntity.X1, CurrentEntity.Y1, CurrentEntity.X2, CurrentEntity.Y2,
                               CurrentEntity.Thickness, CurrentEntity.Radius})
        StoredCoordinate(value);
}

void AddRouteRecord(const RouteSegment& record)
{
    const bool isFull = RouteSegments.Last() >= MaxIndex; // only then a name is wanted
    Grow(RouteSegments, isFull ? "route segments, layer " + ShownLayer(CurrentEntity.Layer) : "", record);
}

bool SamePlace(const RouteSegment& a, const RouteSegment& b)
{
    return a.X == b.X && a.Y == b.Y;
}

Single DiameterOr(Single fallback)
{
    const Single coded = ReadDiameter();
    return coded != 0 ? coded : fallback;
}

} // namespace kv
