// Ellipses and splines of a drawing, and what becomes of round entities that are squeezed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "import/flat_entity.h"

namespace kv {

// A curve as a polyline in its own plane, or why it is none.
struct FittedCurve {
    std::optional<FlatEntity> Path;
    std::string Cause; // of a curve that cannot be fitted; CP1252
};
// ELLIPSE and SPLINE, brought to their place before they are fitted; `tolerance` in units of the drawing.
FittedCurve FitEllipse(const SourceRecord& ellipse, const Placement& placement, double tolerance);
FittedCurve FitSpline(const SourceRecord& spline, const Placement& placement, double tolerance);

// Points of the way from `from` to `to` (radians; falling: clockwise) around the middle, along the ellipse
// that the axes span: x = middle + first * cos + second * sin. Empty where there is no such way.
std::vector<VertexPoint> FitEllipseWay(SpacePoint middle, SpacePoint first, SpacePoint second, double from,
                                       double to, double tolerance);

} // namespace kv
