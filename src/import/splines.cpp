// A spline by its control points is read by de Boor's rule, with weights in one more dimension; an affine map
// moves the control points alone. One by fit points alone has no control points in the file: a cubic through
// them is laid by their distances (the parameter), with the drawn tangents at its ends or free ones.
#include "import/drawn_curves.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "import/curve_fit.h"

namespace kv {

namespace {

constexpr int HighestDegree = 25;
constexpr int ClosedFlag = 1;

struct WeightedPoint {
    double X = 0, Y = 0, W = 1; // X and Y times W
};

WeightedPoint Between(const WeightedPoint& a, const WeightedPoint& b, double part)
{
    return {a.X + (b.X - a.X) * part, a.Y + (b.Y - a.Y) * part, a.W + (b.W - a.W) * part};
}

// A rational B-spline in the plane.
struct ControlledCurve {
    int Degree = 3;
    std::vector<double> Knots;
    std::vector<WeightedPoint> Points;

    std::size_t SpanOf(double t) const;
    std::array<WeightedPoint, 2> LastOfDeBoor(double t, std::size_t span, double& width) const;
    SpacePoint At(double t) const;
    SpacePoint Towards(double t) const;
};

// The index of the knot before t; its span has a length.
std::size_t ControlledCurve::SpanOf(double t) const
{
    const auto degree = static_cast<std::ptrdiff_t>(Degree);
    const auto first = Knots.begin() + degree;
    const auto last = Knots.begin() + static_cast<std::ptrdiff_t>(Points.size());
    auto after = std::upper_bound(first, last, t);
    if (after == last) // the end belongs to the last span that has a length
        after = std::lower_bound(first, last, *last);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(degree, after - Knots.begin() - 1));
}

// The two points between which the curve's own lies, and the length of their knots.
std::array<WeightedPoint, 2> ControlledCurve::LastOfDeBoor(double t, std::size_t span, double& width) const
{
    std::array<WeightedPoint, HighestDegree + 1> points;
    const auto degree = static_cast<std::size_t>(Degree);
    for (std::size_t j = 0; j <= degree; ++j)
        points[j] = Points[span - degree + j];
    for (std::size_t round = 1; round < degree; ++round) {
        for (std::size_t j = degree; j >= round; --j) {
            const double low = Knots[span - degree + j];
            const double high = Knots[span + 1 + j - round];
            points[j] = Between(points[j - 1], points[j], high > low ? (t - low) / (high - low) : 0);
        }
    }
    width = Knots[span + 1] - Knots[span];
    return {points[degree - 1], points[degree]};
}

SpacePoint ControlledCurve::At(double t) const
{
    const std::size_t span = SpanOf(t);
    double width = 0;
    const auto ends = LastOfDeBoor(t, span, width);
    const WeightedPoint p = Between(ends[0], ends[1], width > 0 ? (t - Knots[span]) / width : 0);
    return {p.X / p.W, p.Y / p.W, 0};
}

// By the quotient's rule; only its direction counts.
SpacePoint ControlledCurve::Towards(double t) const
{
    const std::size_t span = SpanOf(t);
    double width = 0;
    const auto ends = LastOfDeBoor(t, span, width);
    if (!(width > 0))
        return {};
    const WeightedPoint p = Between(ends[0], ends[1], (t - Knots[span]) / width);
    const double factor = Degree / width;
    const WeightedPoint d{(ends[1].X - ends[0].X) * factor, (ends[1].Y - ends[0].Y) * factor,
                          (ends[1].W - ends[0].W) * factor};
    const double square = p.W * p.W;
    return {(d.X * p.W - p.X * d.W) / square, (d.Y * p.W - p.Y * d.W) / square, 0};
}

// What the pairs of a SPLINE give, in their order.
struct SplinePairs {
    std::vector<double> Knots, Weights;
    std::vector<SpacePoint> Controls, Fits;
};

void TakeCoordinate(std::vector<SpacePoint>& points, int axis, double number)
{
    if (axis == 0)
        points.push_back({number, 0, 0});
    else if (!points.empty())
        (axis == 1 ? points.back().Y : points.back().Z) = number;
}

SplinePairs PairsOf(const SourceRecord& spline)
{
    SplinePairs pairs;
    for (const SourcePair& pair : spline.Pairs) {
        const double number = NumberOfValue(pair.Value);
        if (pair.Code == 40)
            pairs.Knots.push_back(number);
        else if (pair.Code == 41)
            pairs.Weights.push_back(number);
        else if (pair.Code == 10 || pair.Code == 20 || pair.Code == 30)
            TakeCoordinate(pairs.Controls, pair.Code / 10 - 1, number);
        else if (pair.Code == 11 || pair.Code == 21 || pair.Code == 31)
            TakeCoordinate(pairs.Fits, pair.Code / 10 - 1, number);
    }
    return pairs;
}

std::string FaultOf(const SplinePairs& pairs, int degree)
{
    if (degree < 1 || degree > HighestDegree)
        return "its degree is beyond 1 to 25";
    if (pairs.Controls.size() < static_cast<std::size_t>(degree) + 1 ||
        pairs.Knots.size() != pairs.Controls.size() + static_cast<std::size_t>(degree) + 1)
        return "its knots and control points do not go together";
    if (!pairs.Weights.empty() && pairs.Weights.size() != pairs.Controls.size())
        return "its weights and control points do not go together";
    if (!std::is_sorted(pairs.Knots.begin(), pairs.Knots.end()) ||
        !(pairs.Knots[pairs.Controls.size()] > pairs.Knots[static_cast<std::size_t>(degree)]) ||
        !std::all_of(pairs.Knots.begin(), pairs.Knots.end(), [](double k) { return std::isfinite(k); }))
        return "its knots do not rise";
    if (!std::all_of(pairs.Weights.begin(), pairs.Weights.end(),
                     [](double w) { return w > 1e-12 && std::isfinite(w); }))
        return "a weight is not above 0";
    return {};
}

// All points in one plane that is parallel to the drawing's; their height.
bool AreLevel(const std::vector<SpacePoint>& points, double& height)
{
    const auto [low, high] = std::minmax_element(
        points.begin(), points.end(), [](const SpacePoint& a, const SpacePoint& b) { return a.Z < b.Z; });
    height = low->Z;
    return high->Z - low->Z < 1e-6 && std::all_of(points.begin(), points.end(), IsFinite);
}

// Each knot once; within a span the curve is smooth.
std::vector<double> BreaksOf(const ControlledCurve& curve)
{
    std::vector<double> breaks(curve.Knots.begin() + curve.Degree,
                               curve.Knots.begin() + static_cast<std::ptrdiff_t>(curve.Points.size()) + 1);
    breaks.erase(std::unique(breaks.begin(), breaks.end()), breaks.end());
    return breaks;
}

std::vector<VertexPoint> FitControls(const SplinePairs& pairs, int degree, double tolerance)
{
    ControlledCurve curve;
    curve.Degree = degree;
    curve.Knots = pairs.Knots;
    for (std::size_t i = 0; i < pairs.Controls.size(); ++i) {
        const double weight = pairs.Weights.empty() ? 1 : pairs.Weights[i];
        curve.Points.push_back({pairs.Controls[i].X * weight, pairs.Controls[i].Y * weight, weight});
    }
    PlaneCurve plane;
    plane.At = [&](double t) { return curve.At(t); };
    plane.Towards = [&](double t) { return curve.Towards(t); };
    return FitByArcs(plane, BreaksOf(curve), tolerance);
}

// A cubic through points at `Times`, by its slopes there.
struct ThroughCurve {
    std::vector<double> Times;
    std::vector<SpacePoint> Points, Slopes;

    std::size_t SpanOf(double t) const
    {
        const auto after = std::upper_bound(Times.begin() + 1, Times.end() - 1, t);
        return static_cast<std::size_t>(after - Times.begin()) - 1;
    }
    SpacePoint At(double t) const
    {
        const std::size_t i = SpanOf(t);
        const double h = Times[i + 1] - Times[i], u = (t - Times[i]) / h, v = 1 - u;
        return Points[i] * (v * v * (1 + 2 * u)) + Points[i + 1] * (u * u * (1 + 2 * v)) +
               Slopes[i] * (h * u * v * v) - Slopes[i + 1] * (h * u * u * v);
    }
    SpacePoint Towards(double t) const
    {
        const std::size_t i = SpanOf(t);
        const double h = Times[i + 1] - Times[i], u = (t - Times[i]) / h, v = 1 - u;
        return (Points[i + 1] - Points[i]) * (6 * u * v / h) + Slopes[i] * (v * (v - 2 * u)) +
               Slopes[i + 1] * (u * (u - 2 * v));
    }
};

// The slopes that leave no jump of the second derivative: Thomas' rule for three diagonals. A tangent that is
// drawn is the slope's direction; a free end does not bend.
void SettleSlopes(ThroughCurve& curve, const SpacePoint* start, const SpacePoint* end)
{
    const std::size_t count = curve.Points.size();
    std::vector<double> diagonal(count), upper(count);
    std::vector<SpacePoint> right(count);
    const auto step = [&](std::size_t i) { return curve.Times[i + 1] - curve.Times[i]; };
    const auto rise = [&](std::size_t i) { return (curve.Points[i + 1] - curve.Points[i]) * (1 / step(i)); };
    std::vector<double> lower(count);
    diagonal[0] = start != nullptr ? 1 : 2;
    upper[0] = start != nullptr ? 0 : 1;
    right[0] = start != nullptr ? *start : rise(0) * 3;
    for (std::size_t i = 1; i + 1 < count; ++i) {
        lower[i] = step(i);
        diagonal[i] = 2 * (step(i - 1) + step(i));
        upper[i] = step(i - 1);
        right[i] = (rise(i - 1) * step(i) + rise(i) * step(i - 1)) * 3;
    }
    lower[count - 1] = end != nullptr ? 0 : 1;
    diagonal[count - 1] = end != nullptr ? 1 : 2;
    right[count - 1] = end != nullptr ? *end : rise(count - 2) * 3;
    for (std::size_t i = 1; i < count; ++i) {
        const double factor = lower[i] / diagonal[i - 1];
        diagonal[i] -= factor * upper[i - 1];
        right[i] = right[i] - right[i - 1] * factor;
    }
    curve.Slopes.resize(count);
    curve.Slopes[count - 1] = right[count - 1] * (1 / diagonal[count - 1]);
    for (std::size_t i = count - 1; i > 0; --i)
        curve.Slopes[i - 1] = (right[i - 1] - curve.Slopes[i] * upper[i - 1]) * (1 / diagonal[i - 1]);
}

std::vector<VertexPoint> FitThrough(const std::vector<SpacePoint>& fits, const SpacePoint* start,
                                    const SpacePoint* end, double tolerance)
{
    ThroughCurve curve;
    for (const SpacePoint& point : fits) {
        const double away = curve.Points.empty() ? 0 : LengthOf(point - curve.Points.back());
        if (!curve.Points.empty() && !(away > 1e-9))
            continue;
        curve.Times.push_back(curve.Times.empty() ? 0 : curve.Times.back() + away);
        curve.Points.push_back(point);
    }
    if (curve.Points.size() < 2)
        return {};
    SettleSlopes(curve, start, end);
    PlaneCurve plane;
    plane.At = [&](double t) { return curve.At(t); };
    plane.Towards = [&](double t) { return curve.Towards(t); };
    return FitByArcs(plane, curve.Times, tolerance);
}

std::optional<SpacePoint> TangentOf(const SourceRecord& spline, int code, const Placement& placement)
{
    const SpacePoint tangent = placement.Turned(spline.Point(code));
    const double length = LengthOf(tangent);
    if (!(length > 0) || !std::isfinite(length))
        return std::nullopt;
    return tangent * (1 / length);
}

} // namespace

FittedCurve FitSpline(const SourceRecord& spline, const Placement& placement, double tolerance)
{
    SplinePairs pairs = PairsOf(spline);
    const bool isControlled = !pairs.Controls.empty();
    const int degree = spline.Whole(71, 3);
    if (const std::string fault = isControlled ? FaultOf(pairs, degree) : std::string(); !fault.empty())
        return {std::nullopt, fault};
    std::vector<SpacePoint>& points = isControlled ? pairs.Controls : pairs.Fits;
    if (points.size() < 2)
        return {std::nullopt, "it has no points"};
    for (SpacePoint& point : points)
        point = placement.Placed(point);
    FlatEntity path;
    double height = 0;
    if (!AreLevel(points, height))
        return {std::nullopt, "it does not lie level"};
    path.Kind = FlatKind::Polyline;
    path.Style = StyleOf(spline);
    path.Thickness = spline.Number(39);
    if (isControlled) {
        path.Points = FitControls(pairs, degree, tolerance);
    } else {
        const auto start = TangentOf(spline, 12, placement), end = TangentOf(spline, 13, placement);
        path.Points = FitThrough(points, start ? &*start : nullptr, end ? &*end : nullptr, tolerance);
    }
    if (path.Points.size() < 2)
        return {std::nullopt, "it has no length, or too many bends"};
    for (VertexPoint& point : path.Points)
        point.Z = height;
    const VertexPoint &first = path.Points.front(), &last = path.Points.back();
    const bool meets = std::hypot(first.X - last.X, first.Y - last.Y) <= tolerance;
    if (meets && path.Points.size() > 2) {
        path.Flags = ClosedFlag;
        path.Points.pop_back();
    }
    return {path, {}};
}

} // namespace kv
