// The middle is the one that fits all points best by the squares of their distances (Kasa's rule, exact for
// points on a circle). A polygon counts when its chords are as near as its corners.
#include "import/drawn_circles.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "geometry/point_grid.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::size_t FewestCorners = 8; // of a polygon; a hexagon of a tenth of a millimetre is none

struct FlatPoint {
    double X = 0, Y = 0;
};

FlatPoint MiddleOfWay(const VertexPoint& from, const VertexPoint& to)
{
    return {(from.X + to.X) / 2 + (to.Y - from.Y) * from.Bulge / 2,
            (from.Y + to.Y) / 2 - (to.X - from.X) * from.Bulge / 2};
}

struct CircleFit {
    FlatPoint Middle;
    double Radius = 0;
    bool IsGood = false;
};

// Sums are taken around the first point, so that a circle far from 0 loses no digits.
CircleFit FitCircle(const std::vector<FlatPoint>& points)
{
    const FlatPoint base = points.front();
    double sx = 0, sy = 0, sxx = 0, syy = 0, sxy = 0, sxz = 0, syz = 0, sz = 0;
    for (const FlatPoint& point : points) {
        const double x = point.X - base.X, y = point.Y - base.Y, z = x * x + y * y;
        sx += x, sy += y, sxx += x * x, syy += y * y, sxy += x * y, sxz += x * z, syz += y * z, sz += z;
    }
    const auto n = static_cast<double>(points.size());
    const double a = sxx - sx * sx / n, b = sxy - sx * sy / n, d = syy - sy * sy / n;
    const double e = (sxz - sx * sz / n) / 2, f = (syz - sy * sz / n) / 2;
    const double determinant = a * d - b * b;
    if (!(std::abs(determinant) > 1e-12 * std::abs(a * d)) || !std::isfinite(determinant))
        return {};
    CircleFit fit;
    fit.Middle = {base.X + (e * d - f * b) / determinant, base.Y + (f * a - e * b) / determinant};
    for (const FlatPoint& point : points)
        fit.Radius += std::hypot(point.X - fit.Middle.X, point.Y - fit.Middle.Y) / n;
    fit.IsGood = std::isfinite(fit.Radius) && fit.Radius > 0;
    return fit;
}

// Corners, and the middles of arcs.
std::vector<FlatPoint> PointsOnCircle(const FlatEntity& polyline)
{
    std::vector<FlatPoint> points;
    const std::size_t count = polyline.Points.size();
    for (std::size_t i = 0; i < count; ++i) {
        const VertexPoint &from = polyline.Points[i], &to = polyline.Points[(i + 1) % count];
        points.push_back({from.X, from.Y});
        if (from.Bulge != 0)
            points.push_back(MiddleOfWay(from, to));
    }
    return points;
}

// From corner to corner around the middle; an arc knows which way.
double Turned(FlatPoint middle, const VertexPoint& from, const VertexPoint& to)
{
    constexpr double full = 2 * std::numbers::pi, nothing = 1e-9;
    const double ax = from.X - middle.X, ay = from.Y - middle.Y, bx = to.X - middle.X, by = to.Y - middle.Y;
    const double turn = std::atan2(ax * by - ay * bx, ax * bx + ay * by);
    if (from.Bulge > 0 && turn < -nothing)
        return turn + full;
    return from.Bulge < 0 && turn > nothing ? turn - full : turn;
}

// Once around, all on one way.
bool GoesRoundOnce(const FlatEntity& polyline, FlatPoint middle)
{
    double sum = 0, most = 0;
    const std::size_t count = polyline.Points.size();
    for (std::size_t i = 0; i < count; ++i) {
        const VertexPoint& from = polyline.Points[i];
        const double turn = Turned(middle, from, polyline.Points[(i + 1) % count]);
        sum += turn;
        most += std::abs(turn);
    }
    constexpr double once = 2 * std::numbers::pi;
    return std::abs(std::abs(sum) - once) < 1e-3 && most < once + 0.2;
}

double Roundness(const FlatEntity& polyline, const CircleFit& fit)
{
    double away = 0;
    const std::size_t count = polyline.Points.size();
    const auto off = [&](FlatPoint p) {
        return std::abs(std::hypot(p.X - fit.Middle.X, p.Y - fit.Middle.Y) - fit.Radius);
    };
    for (std::size_t i = 0; i < count; ++i) {
        const VertexPoint& from = polyline.Points[i];
        away =
            std::max({away, off({from.X, from.Y}), off(MiddleOfWay(from, polyline.Points[(i + 1) % count]))});
    }
    return away;
}

double RoundedRadius(const CircleFit& fit, const std::vector<FlatPoint>& points, double tolerance,
                     double grid)
{
    constexpr double asDrawn = 1e-6; // drawing units between the points and the circle
    double spread = 0;
    for (const FlatPoint& point : points)
        spread = std::max(spread,
                          std::abs(std::hypot(point.X - fit.Middle.X, point.Y - fit.Middle.Y) - fit.Radius));
    const double step = spread > asDrawn ? grid : asDrawn;
    const double rounded = std::round(2 * fit.Radius / step) * step / 2;
    return rounded > 0 && std::abs(rounded - fit.Radius) <= tolerance ? rounded : fit.Radius;
}

} // namespace

bool WantsCircles(std::string_view layer)
{
    const std::string upper = UpperCase(layer);
    return Holds(upper, "VBORE") || Holds(upper, "DRILL") || Holds(upper, "EXCAV");
}

bool WantsRoundWays(std::string_view layer)
{
    return Holds(UpperCase(layer), "ROUT");
}

std::optional<FlatEntity> RoundWay(const FlatEntity& polyline, const FlatEntity& circle)
{
    const bool hasSides = std::any_of(polyline.Points.begin(), polyline.Points.end(),
                                      [](const VertexPoint& p) { return p.Bulge == 0; });
    if (!hasSides)
        return std::nullopt;
    const VertexPoint middle = circle.Points.front();
    const VertexPoint &from = polyline.Points[0], &to = polyline.Points[1];
    FlatEntity way = polyline;
    way.Radius = circle.Radius;
    way.Flags |= 1;
    way.Points.resize(2);
    const double away = std::hypot(from.X - middle.X, from.Y - middle.Y);
    const double dx = (from.X - middle.X) * circle.Radius / away,
                 dy = (from.Y - middle.Y) * circle.Radius / away;
    way.Points[0].X = middle.X + dx;
    way.Points[0].Y = middle.Y + dy;
    way.Points[1].X = middle.X - dx;
    way.Points[1].Y = middle.Y - dy;
    const double turn = Turned({middle.X, middle.Y}, from, to);
    way.Points[0].Bulge = way.Points[1].Bulge = turn < 0 ? -1 : 1;
    return way;
}

namespace {

// By its flag, or by its last point.
bool EndsWhereItBegins(const FlatEntity& polyline, double tolerance)
{
    if (polyline.IsClosed() || polyline.Points.size() < 3)
        return polyline.IsClosed();
    const VertexPoint &first = polyline.Points.front(), &last = polyline.Points.back();
    return std::hypot(last.X - first.X, last.Y - first.Y) <= tolerance / 10;
}

} // namespace

std::optional<FlatEntity> CircleOf(const FlatEntity& polyline, double tolerance, double grid)
{
    if (polyline.Kind != FlatKind::Polyline || polyline.IsInSpace || !EndsWhereItBegins(polyline, tolerance))
        return std::nullopt;
    FlatEntity closed = polyline;
    const VertexPoint& front = polyline.Points.empty() ? VertexPoint{} : polyline.Points.front();
    while (closed.Points.size() > 1 &&
           std::hypot(closed.Points.back().X - front.X, closed.Points.back().Y - front.Y) <= tolerance / 10)
        closed.Points.pop_back(); // its first point once more
    const bool hasArc = std::any_of(closed.Points.begin(), closed.Points.end(),
                                    [](const VertexPoint& p) { return p.Bulge != 0; });
    if (closed.Points.size() < (hasArc ? 2 : FewestCorners))
        return std::nullopt;
    const std::vector<FlatPoint> points = PointsOnCircle(closed);
    const CircleFit fit = FitCircle(points);
    if (!fit.IsGood || Roundness(closed, fit) > tolerance || !GoesRoundOnce(closed, fit.Middle))
        return std::nullopt;
    FlatEntity circle;
    circle.Kind = FlatKind::Circle;
    circle.Style = polyline.Style;
    circle.Extrusion = polyline.Extrusion;
    circle.Thickness = polyline.Thickness;
    circle.Elevation = polyline.Elevation;
    VertexPoint middle;
    middle.X = fit.Middle.X;
    middle.Y = fit.Middle.Y;
    middle.Z = front.Z;
    circle.Points = {middle};
    circle.Radius = RoundedRadius(fit, points, tolerance, grid);
    return circle;
}

namespace {

struct WayEnd {
    std::size_t Way = 0;
    int Which = 0; // 0: its first point
};

// The ends of all pieces by their places.
class EndIndex {
  public:
    EndIndex(const std::vector<FlatEntity>& ways, double tolerance)
        : Ways(ways), Tolerance(tolerance), Ends(PlacesOf(ways))
    {
    }
    // The one other end at this place; none where there is none, or more than one.
    std::optional<WayEnd> Partner(WayEnd end) const;
    // The first that ends at the place.
    std::optional<std::size_t> WayAt(const VertexPoint& place, std::string_view layer) const;

  private:
    static const VertexPoint& PointOf(const FlatEntity& way, int which)
    {
        return which == 0 ? way.Points.front() : way.Points.back();
    }
    static std::vector<GridPoint> PlacesOf(const std::vector<FlatEntity>& ways);
    // Calls `visit` with each end at the place on the layer, until it answers true.
    template <typename Visit>
    void Walk(const VertexPoint& place, std::string_view layer, const Visit& visit) const;

    const std::vector<FlatEntity>& Ways;
    double Tolerance;
    PointGrid Ends; // two of each way
};

std::vector<GridPoint> EndIndex::PlacesOf(const std::vector<FlatEntity>& ways)
{
    const auto known = [](double x) { return std::isfinite(x) ? x : 0; }; // such an end is at no place
    std::vector<GridPoint> places;
    places.reserve(2 * ways.size());
    for (const FlatEntity& way : ways) {
        for (int which = 0; which < 2; ++which)
            places.push_back({known(PointOf(way, which).X), known(PointOf(way, which).Y)});
    }
    return places;
}

template <typename Visit>
void EndIndex::Walk(const VertexPoint& place, std::string_view layer, const Visit& visit) const
{
    const auto reaches = [&](const GridBox& box) {
        const GridPoint nearest = box.Nearest(place.X, place.Y);
        return std::abs(nearest.X - place.X) <= Tolerance && std::abs(nearest.Y - place.Y) <= Tolerance;
    };
    Ends.Walk(reaches, [&](Long point) {
        const WayEnd end{static_cast<std::size_t>(point) / 2, static_cast<int>(point % 2)};
        const VertexPoint& there = PointOf(Ways[end.Way], end.Which);
        const bool isHere = std::hypot(there.X - place.X, there.Y - place.Y) <= Tolerance &&
                            Ways[end.Way].Style.Layer == layer;
        return isHere && visit(end);
    });
}

std::optional<WayEnd> EndIndex::Partner(WayEnd end) const
{
    std::optional<WayEnd> partner;
    bool isOne = true;
    Walk(PointOf(Ways[end.Way], end.Which), Ways[end.Way].Style.Layer, [&](WayEnd other) {
        if (other.Way == end.Way && other.Which == end.Which)
            return false;
        isOne = !partner;
        partner = other;
        return !isOne;
    });
    return isOne ? partner : std::nullopt;
}

std::optional<std::size_t> EndIndex::WayAt(const VertexPoint& place, std::string_view layer) const
{
    std::optional<std::size_t> first;
    Walk(place, layer, [&](WayEnd end) {
        first = std::min(first.value_or(end.Way), end.Way);
        return false;
    });
    return first;
}

VertexPoint OnCircleAt(const FlatEntity& arc, double degrees)
{
    VertexPoint point = arc.Points.front();
    const double turn = degrees * std::numbers::pi / 180;
    point.X += arc.Radius * std::cos(turn);
    point.Y += arc.Radius * std::sin(turn);
    return point;
}

// A line, an arc or an open polyline as an open polyline.
FlatEntity WayOf(const FlatEntity& flat)
{
    FlatEntity way = flat;
    way.Kind = FlatKind::Polyline;
    if (flat.Kind != FlatKind::Arc)
        return way;
    double swept = std::fmod(flat.EndAngle - flat.StartAngle, 360);
    if (swept <= 0)
        swept += 360;
    way.Points = {OnCircleAt(flat, flat.StartAngle), OnCircleAt(flat, flat.StartAngle + swept / 2),
                  OnCircleAt(flat, flat.StartAngle + swept)};
    way.Points[0].Bulge = way.Points[1].Bulge = std::tan(swept * std::numbers::pi / 180 / 8);
    return way;
}

void AppendWay(FlatEntity& ring, const FlatEntity& way, bool isReversed)
{
    std::vector<VertexPoint> points = way.Points;
    if (isReversed) {
        std::reverse(points.begin(), points.end());
        for (std::size_t i = 0; i + 1 < points.size(); ++i)
            points[i].Bulge = -points[i + 1].Bulge;
    }
    points.pop_back();
    ring.Points.insert(ring.Points.end(), points.begin(), points.end());
}

struct Chain {
    std::vector<WayEnd> Ends; // by which each piece is entered
    bool IsRing = false;
};

// From the piece on, end to end, until the way closes, stops, or meets a piece that is used.
Chain ChainFrom(const EndIndex& ends, std::size_t first, std::vector<bool>& isUsed)
{
    Chain chain{{{first, 0}}, false};
    isUsed[first] = true;
    for (;;) {
        const WayEnd& last = chain.Ends.back();
        const std::optional<WayEnd> next = ends.Partner({last.Way, 1 - last.Which});
        chain.IsRing = next && next->Way == first && next->Which == 0;
        if (!next || isUsed[next->Way])
            return chain;
        isUsed[next->Way] = true;
        chain.Ends.push_back(*next);
    }
}

} // namespace

bool CanBeLoose(const FlatEntity& flat)
{
    if (!WantsCircles(flat.Style.Layer))
        return false;
    const bool isPocket = Holds(UpperCase(flat.Style.Layer), "EXCAV"); // arcs that meet are one already
    const bool isOpen = flat.Kind == FlatKind::Polyline && !flat.IsClosed() && !flat.IsInSpace;
    const bool isEnded = flat.Points.size() > 1 && (flat.Kind == FlatKind::Line || isOpen);
    return (isEnded || (flat.Kind == FlatKind::Arc && !isPocket && flat.Radius > 0)) &&
           IsUpward(flat.Extrusion);
}

namespace {

// What a curve closes with where it has already come back: a line from its end to its beginning.
bool IsSpeck(const FlatEntity& way, double tolerance)
{
    return std::all_of(way.Points.begin(), way.Points.end(), [&](const VertexPoint& p) {
        return std::hypot(p.X - way.Points.front().X, p.Y - way.Points.front().Y) <= tolerance / 2;
    });
}

constexpr std::size_t NoRing = static_cast<std::size_t>(-1);

// A ring takes the specks at its joints along.
void TakeSpecks(std::vector<RingFound>& rings, const std::vector<LooseEntity>& specks, const EndIndex& ends,
                const std::vector<std::size_t>& ringOfWay)
{
    for (const LooseEntity& speck : specks) {
        const std::optional<std::size_t> way =
            ends.WayAt(speck.Entity.Points.front(), speck.Entity.Style.Layer);
        if (way && ringOfWay[*way] != NoRing)
            rings[ringOfWay[*way]].Numbers.push_back(speck.Number);
    }
}

} // namespace

std::vector<RingFound> FindRings(const std::vector<LooseEntity>& pieces, double tolerance, double grid)
{
    std::vector<FlatEntity> ways;
    std::vector<LooseEntity> specks;
    std::vector<std::size_t> numbers;
    for (const LooseEntity& piece : pieces) {
        FlatEntity way = WayOf(piece.Entity);
        if (IsSpeck(way, tolerance)) {
            specks.push_back(piece);
            continue;
        }
        ways.push_back(std::move(way));
        numbers.push_back(piece.Number);
    }
    const EndIndex ends(ways, tolerance);
    std::vector<bool> isUsed(ways.size());
    std::vector<std::size_t> ringOfWay(ways.size(), NoRing);
    std::vector<RingFound> rings;
    for (std::size_t i = 0; i < ways.size(); ++i) {
        if (isUsed[i])
            continue;
        const Chain ring = ChainFrom(ends, i, isUsed);
        if (!ring.IsRing)
            continue;
        FlatEntity closed = ways[i];
        closed.Points.clear();
        closed.Flags = 1;
        RingFound found;
        for (const WayEnd& end : ring.Ends) {
            AppendWay(closed, ways[end.Way], end.Which == 1);
            found.Numbers.push_back(numbers[end.Way]);
        }
        const auto circle = CircleOf(closed, tolerance, grid);
        if (!circle)
            continue;
        for (const WayEnd& end : ring.Ends)
            ringOfWay[end.Way] = rings.size();
        found.Circle = *circle;
        rings.push_back(std::move(found));
    }
    TakeSpecks(rings, specks, ends, ringOfWay);
    return rings;
}

} // namespace kv
