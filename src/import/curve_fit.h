// Curves as lines and tangent arcs.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "import/flat_entity.h"

namespace kv {

// A curve in a plane over a parameter; Z is passed over.
struct PlaneCurve {
    std::function<SpacePoint(double)> At;
    std::function<SpacePoint(double)> Towards; // the derivative; no length where the curve stands still
};
constexpr std::size_t MostFittedPoints = 33'000; // of one curve; no program has so many

// The way along the curve through `breaks` (rising or falling, at least two), at each of which it may have a
// corner. No point of the curve is farther than `tolerance` from the way: biarcs, each as long as it fits, so
// that neighbours within a piece share their tangent. The last point has no bulge. Empty where the curve is
// no curve: a value that is no number or beyond 10,000,000, or more than MostFittedPoints.
std::vector<VertexPoint> FitByArcs(const PlaneCurve& curve, std::span<const double> breaks, double tolerance);

// Neighbouring arcs of one circle become one, up to half a circle, and lines in one direction become one.
void JoinPieces(std::vector<VertexPoint>& path, double tolerance);

} // namespace kv
