// Lines and arcs of the plane: the spans of a way.
#pragma once

#include <vector>

#include "geometry/angles.h"

namespace kv {

// A vertex and the span to the next one: the tangent of a quarter of its angle, above 0
// counter-clockwise, 0 for a line.
struct PathVertex {
    PlanePoint At;
    double Bulge = 0;
};
// A line, or an arc by its centre.
struct PathSpan {
    PlanePoint From, To;
    bool IsArc = false;
    bool CounterClockwise = false;
    PlanePoint Centre;
    double Radius = 0;
};
PathSpan SpanBetween(const PathVertex& from, const PlanePoint& to);
// Radians, -pi to pi, counter-clockwise from +X; 0 for no vector. The same on every machine.
double AngleOfVector(double y, double x);
// Radians, 0 to below a full turn, in the arc's own sense.
double SweepOfArc(const PathSpan& arc);
// Whether the ray from the centre to the point meets the arc, and this one is no more than a half turn.
bool FacesShortArc(const PathSpan& arc, const PlanePoint& point);
PlanePoint NearestOnSpan(const PathSpan& span, const PlanePoint& point);
// Where the whole lines, or the circles of arcs, cross: none, one or two points.
std::vector<PlanePoint> CrossingsOfWholes(const PathSpan& a, const PathSpan& b);
// The least distance of any two of their points, 0 where they cross.
double DistanceBetween(const PathSpan& a, const PathSpan& b);

} // namespace kv
