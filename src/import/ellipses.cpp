// An ellipse stays one when it is squeezed, turned or mirrored: its two half axes become half axes that need
// not be at right angles any more, and the sum of both, weighted by cosine and sine, is still the curve.
#include "import/drawn_curves.h"

#include <cmath>
#include <numbers>

#include "import/curve_fit.h"

namespace kv {

namespace {

constexpr double FullTurn = 2 * std::numbers::pi;

// Quarters, so that no biarc turns too far to be asked.
std::vector<double> QuarterBreaks(double from, double to)
{
    const int pieces =
        std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / (std::numbers::pi / 2) - 1e-9)));
    std::vector<double> breaks;
    for (int i = 0; i <= pieces; ++i)
        breaks.push_back(from + (to - from) * i / pieces);
    return breaks;
}

} // namespace

std::vector<VertexPoint> FitEllipseWay(SpacePoint middle, SpacePoint first, SpacePoint second, double from,
                                       double to, double tolerance)
{
    PlaneCurve curve;
    curve.At = [=](double t) { return middle + first * std::cos(t) + second * std::sin(t); };
    curve.Towards = [=](double t) { return second * std::cos(t) - first * std::sin(t); };
    return FitByArcs(curve, QuarterBreaks(from, to), tolerance);
}

FittedCurve FitEllipse(const SourceRecord& ellipse, const Placement& placement, double tolerance)
{
    const SpacePoint extrusion = ellipse.Extrusion();
    const SpacePoint major = ellipse.Point(11);
    const double ratio = ellipse.Number(40);
    const double from = ellipse.Number(41);
    double to = ellipse.Number(42, FullTurn);
    if (!(LengthOf(major) > 0) || !(std::abs(ratio) > 1e-9) || !std::isfinite(ratio) ||
        !std::isfinite(from) || !std::isfinite(to))
        return {std::nullopt, "its axes have no length"};
    const SpacePoint minor = Cross(extrusion * (1 / LengthOf(extrusion)), major) * ratio;
    const SpacePoint middle = placement.Placed(ellipse.Point(10));
    const SpacePoint first = placement.Turned(major), second = placement.Turned(minor);
    to = from + std::fmod(to - from, FullTurn);
    if (to - from <= 1e-9)
        to += FullTurn;
    const SpacePoint upward = Cross(first, second);
    if (!(LengthOf(upward) > 0))
        return {std::nullopt, "its axes lie in one line"};
    FlatEntity path;
    path.Kind = FlatKind::Polyline;
    path.Style = StyleOf(ellipse);
    path.Thickness = ellipse.Number(39);
    const SpacePoint unit = upward * (1 / LengthOf(upward));
    const bool isFlat = IsUpward(unit) || IsDownward(unit);
    path.Extrusion = isFlat ? SpacePoint{0, 0, 1} : unit;
    const Placement system = SystemOf(path.Extrusion);
    const auto inPlane = [&](SpacePoint p) {
        return SpacePoint{Dot(p, system.Ax), Dot(p, system.Ay), Dot(p, system.Az)};
    };
    path.Points = FitEllipseWay(inPlane(middle), inPlane(first), inPlane(second), from, to, tolerance);
    if (path.Points.size() < 2)
        return {std::nullopt, "its numbers are none that can be drawn"};
    for (VertexPoint& point : path.Points)
        point.Z = inPlane(middle).Z;
    if (to - from >= FullTurn - 1e-6) {
        path.Flags = 1;
        path.Points.pop_back();
    }
    return {path, {}};
}

} // namespace kv
