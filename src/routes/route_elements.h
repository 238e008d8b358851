// The first and the last element of a route as a lead sees them: a line, an arc by centre or the
// bulged span of a polyline, with the direction in which the way enters or leaves it. Relies on the two
// records alone; all figures are numbers, whatever the records hold.
#pragma once

#include "geometry/angles.h"
#include "state/records.h"

namespace kv {

enum class ElementShape { Line, Arc, Bulge };

struct RouteElement {
    ElementShape Shape = ElementShape::Line;
    double Direction = 0;  // of the way, at the first point of a first element, the last of a last one
    int Sense = 0;         // 1 counter-clockwise, -1 clockwise, 0 straight
    double Radius = 0;     // of a line its length
    PlanePoint Centre;     // of an arc and of a first bulge
    double StartAngle = 0; // the same, of its first point seen from there
    double ArcLength = 0;  // of a bulge alone
};

RouteElement FirstElement(const RouteSegment& start, const RouteSegment& next);
RouteElement LastElement(const RouteSegment& before, const RouteSegment& end);

} // namespace kv
