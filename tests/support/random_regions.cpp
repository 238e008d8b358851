#include "support/random_regions.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kv::test {

namespace {

constexpr double TwoPi = 2 * 3.14159265358979323846;

struct ArcOfBulge {
    PathPoint Centre;
    double Radius = 0, Begin = 0, Sweep = 0; // radians, with its sign
};

ArcOfBulge ArcBetween(const Vertex& from, const Vertex& to)
{
    const double sweep = 4 * std::atan(from.Bulge);
    const double chord = std::hypot(to.X - from.X, to.Y - from.Y);
    const double radius = chord / 2 / std::sin(std::fabs(sweep) / 2);
    const double toCentre =
        std::atan2(to.Y - from.Y, to.X - from.X) + (sweep > 0 ? 1 : -1) * (TwoPi / 4 - std::fabs(sweep) / 2);
    ArcOfBulge arc;
    arc.Centre = {from.X + radius * std::cos(toCentre), from.Y + radius * std::sin(toCentre)};
    arc.Radius = radius;
    arc.Begin = std::atan2(from.Y - arc.Centre.Y, from.X - arc.Centre.X);
    arc.Sweep = sweep;
    return arc;
}

double Turned(const PathPoint& a, const PathPoint& b, const PathPoint& c)
{
    return (b.X - a.X) * (c.Y - a.Y) - (b.Y - a.Y) * (c.X - a.X);
}

double DistanceFromLine(const PathPoint& a, const PathPoint& b, const PathPoint& point)
{
    const double dx = b.X - a.X, dy = b.Y - a.Y;
    const double square = dx * dx + dy * dy;
    const double along = square > 0 ? ((point.X - a.X) * dx + (point.Y - a.Y) * dy) / square : 0;
    const double t = std::clamp(along, 0.0, 1.0);
    return Between(point, {a.X + t * dx, a.Y + t * dy});
}

bool ChordsCross(const PathPoint& a, const PathPoint& b, const PathPoint& c, const PathPoint& d)
{
    return (Turned(a, b, c) > 0) != (Turned(a, b, d) > 0) && (Turned(c, d, a) > 0) != (Turned(c, d, b) > 0);
}

// Closer than that counts as meeting.
constexpr double Room = 0.5;

bool AreNear(const PathPoint& a, const PathPoint& b, const PathPoint& c, const PathPoint& d)
{
    return ChordsCross(a, b, c, d) || DistanceFromLine(a, b, c) < Room || DistanceFromLine(a, b, d) < Room ||
           DistanceFromLine(c, d, a) < Room || DistanceFromLine(c, d, b) < Room;
}

double DirectionAt(const Vertex& from, const Vertex& to, bool atEnd)
{
    const double half = 2 * std::atan(from.Bulge);
    return std::atan2(to.Y - from.Y, to.X - from.X) + (atEnd ? half : -half);
}

// Corners that run nearly back along themselves: walls could cross beside them unseen.
bool HasNeedle(const Contour& contour)
{
    constexpr double sharpest = 2.8; // radians of turn
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Vertex& at = contour[(i + 1) % contour.size()];
        const Vertex& next = contour[(i + 2) % contour.size()];
        const double turn = DirectionAt(at, next, false) - DirectionAt(contour[i], at, true);
        if (std::fabs(std::remainder(turn, TwoPi)) > sharpest)
            return true;
    }
    return false;
}

// Whether spans that do not follow each other come near, or neighbours do away from their joint.
bool MeetsItself(const Contour& contour)
{
    constexpr int perArc = 16;
    std::vector<PathPoint> points;
    std::vector<std::size_t> spans;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const std::vector<PathPoint> all = Chords({contour[i], contour[(i + 1) % contour.size()]}, perArc);
        // the way there; the way back of these two vertices is left out
        const std::size_t there = contour[i].Bulge == 0 ? 1 : perArc;
        for (std::size_t k = 0; k < there; ++k) {
            points.push_back(all[k]);
            spans.push_back(i);
        }
    }
    for (std::size_t i = 0; i < points.size(); ++i)
        for (std::size_t k = i + 1; k < points.size(); ++k) {
            const std::size_t apart = std::min(k - i, points.size() - (k - i));
            const PathPoint &a = points[i], &b = points[(i + 1) % points.size()];
            const PathPoint &c = points[k], &d = points[(k + 1) % points.size()];
            const bool areNeighbours = spans[i] == spans[k] || (spans[i] + 1) % contour.size() == spans[k] ||
                                       (spans[k] + 1) % contour.size() == spans[i];
            if (apart > 1 && (areNeighbours ? ChordsCross(a, b, c, d) : AreNear(a, b, c, d)))
                return true;
        }
    return false;
}

bool Meet(const Contour& one, const Contour& other)
{
    const std::vector<PathPoint> a = Chords(one, 16), b = Chords(other, 16);
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t k = 0; k < b.size(); ++k)
            if (AreNear(a[i], a[(i + 1) % a.size()], b[k], b[(k + 1) % b.size()]))
                return true;
    return false;
}

class RegionDrawer {
  public:
    explicit RegionDrawer(std::mt19937& numbers) : Numbers(numbers) {}

    Contour Star(const PathPoint& centre, double radius, int vertices)
    {
        for (;;) {
            Contour contour = TryStar(centre, radius, vertices);
            if (!HasNeedle(contour) && !MeetsItself(contour))
                return contour;
        }
    }
    Contour Round(const PathPoint& centre, double radius)
    {
        return {{centre.X - radius, centre.Y, 1}, {centre.X + radius, centre.Y, 1}};
    }
    double Number(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(Numbers);
    }
    int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(Numbers); }

  private:
    Contour TryStar(const PathPoint& centre, double radius, int vertices)
    {
        Contour contour;
        for (int i = 0; i < vertices; ++i) {
            const double angle = TwoPi * (i + Number(-0.35, 0.35)) / vertices;
            const double reach = radius * Number(0.45, 1);
            Vertex vertex;
            vertex.X = std::round((centre.X + reach * std::cos(angle)) * 1000) / 1000;
            vertex.Y = std::round((centre.Y + reach * std::sin(angle)) * 1000) / 1000;
            if (Whole(0, 2) == 0) // an arc of a degree or less may be read as a line
                vertex.Bulge = std::round(Number(0.02, 0.6) * 10000) / 10000 * (Whole(0, 1) == 0 ? 1 : -1);
            contour.push_back(vertex);
        }
        if (Whole(0, 1) == 0) { // the other turning; a bulge belongs to the way on
            std::reverse(contour.begin(), contour.end());
            for (std::size_t i = 0; i + 1 < contour.size(); ++i)
                std::swap(contour[i].Bulge, contour[i + 1].Bulge);
            for (Vertex& vertex : contour)
                vertex.Bulge = 0 - vertex.Bulge;
        }
        return contour;
    }

    std::mt19937& Numbers;
};

} // namespace

RandomRegion DrawRegion(std::mt19937& numbers, const RegionSize& size)
{
    RegionDrawer drawer(numbers);
    RandomRegion region;
    region.Outline = drawer.Star(size.Centre, size.Radius, drawer.Whole(3, size.MostVertices));
    const int wanted = drawer.Whole(0, size.MostIslands);
    for (int tries = 0; tries < 20 && static_cast<int>(region.Islands.size()) < wanted; ++tries) {
        const PathPoint centre{size.Centre.X + drawer.Number(-0.6, 0.6) * size.Radius,
                               size.Centre.Y + drawer.Number(-0.6, 0.6) * size.Radius};
        const double radius = drawer.Number(0.04, 0.25) * size.Radius;
        const Contour island = drawer.Whole(0, 2) == 0 ? drawer.Round(centre, radius)
                                                       : drawer.Star(centre, radius, drawer.Whole(3, 7));
        const bool isFree =
            HoldsPoint(region.Outline, {island.front().X, island.front().Y}) &&
            !Meet(region.Outline, island) &&
            std::none_of(region.Islands.begin(), region.Islands.end(), [&](const Contour& other) {
                return Meet(other, island) || HoldsPoint(other, {island.front().X, island.front().Y}) ||
                       HoldsPoint(island, {other.front().X, other.front().Y});
            });
        if (isFree)
            region.Islands.push_back(island);
    }
    return region;
}

std::vector<PathPoint> Chords(const Contour& contour, int perArc)
{
    std::vector<PathPoint> points;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        points.push_back({contour[i].X, contour[i].Y});
        if (contour[i].Bulge == 0)
            continue;
        const ArcOfBulge arc = ArcBetween(contour[i], contour[(i + 1) % contour.size()]);
        for (int k = 1; k < perArc; ++k) {
            const double angle = arc.Begin + arc.Sweep * k / perArc;
            points.push_back(
                {arc.Centre.X + arc.Radius * std::cos(angle), arc.Centre.Y + arc.Radius * std::sin(angle)});
        }
    }
    return points;
}

bool HoldsPoint(const Contour& contour, const PathPoint& point)
{
    const std::vector<PathPoint> points = Chords(contour);
    bool inside = false;
    for (std::size_t i = 0, k = points.size() - 1; i < points.size(); k = i++) {
        const PathPoint &a = points[i], &b = points[k];
        if ((a.Y > point.Y) != (b.Y > point.Y) && point.X < (b.X - a.X) * (point.Y - a.Y) / (b.Y - a.Y) + a.X)
            inside = !inside;
    }
    return inside;
}

double DistanceFromContour(const Contour& contour, const PathPoint& point)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Vertex &from = contour[i], &to = contour[(i + 1) % contour.size()];
        nearest = std::min(nearest, Between({from.X, from.Y}, point));
        if (from.Bulge == 0) {
            nearest = std::min(nearest, DistanceFromLine({from.X, from.Y}, {to.X, to.Y}, point));
            continue;
        }
        const ArcOfBulge arc = ArcBetween(from, to);
        const double angle = std::atan2(point.Y - arc.Centre.Y, point.X - arc.Centre.X);
        double along = std::fmod(arc.Sweep > 0 ? angle - arc.Begin : arc.Begin - angle, TwoPi);
        along += along < 0 ? TwoPi : 0;
        if (along <= std::fabs(arc.Sweep))
            nearest = std::min(nearest, std::fabs(Between(arc.Centre, point) - arc.Radius));
    }
    return nearest;
}

} // namespace kv::test
