// Regions by Boost.Polygon: headers alone, so that it builds for every system, and whole-number arithmetic
// that gives the same areas on each.
#include "proof/wood_region.h"

#include <algorithm>
#include <cmath>

#include <boost/polygon/polygon.hpp>
#include <boost/polygon/voronoi.hpp>

#include "machine/tool_way.h"

namespace kv {

namespace {

namespace bp = boost::polygon;
using namespace boost::polygon::operators;
using PolygonSet = bp::polygon_set_data<int>;
using PolygonPoint = bp::point_data<int>;
using HoledPolygon = bp::polygon_with_holes_data<int>;

constexpr double GridStep = 0.0005; // mm
constexpr double Farthest = 1e9;    // in steps
constexpr double ChordError = 0.01; // mm

PolygonPoint OnGrid(const PathPoint& at)
{
    const auto step = [](double value) {
        return static_cast<int>(std::lround(std::clamp(value / GridStep, -Farthest, Farthest)));
    };
    return {step(at.X), step(at.Y)};
}

PathPoint OffGrid(const PolygonPoint& at)
{
    return {at.x() * GridStep, at.y() * GridStep};
}

double ChordTurn(double radius)
{
    return radius > ChordError ? 2 * std::acos(1 - ChordError / radius) / Degree : 90;
}

// Points of an arc from its start to its end, both among them.
void AddArcPoints(WoodShape& shape, const PathPoint& centre, double radius, double from, double sweep)
{
    const int chords = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / ChordTurn(radius))));
    for (int i = 0; i <= chords; ++i) {
        const double angle = (from + sweep * i / chords) * Degree;
        shape.push_back({centre.X + radius * std::cos(angle), centre.Y + radius * std::sin(angle)});
    }
}

void AddCapsule(std::vector<WoodShape>& shapes, const PathPoint& from, const PathPoint& to, double radius)
{
    const double along = DirectionTo(from, to);
    WoodShape shape;
    AddArcPoints(shape, to, radius, along - 90, 180);
    AddArcPoints(shape, from, radius, along + 90, 180);
    shapes.push_back(std::move(shape));
}

void AddSector(std::vector<WoodShape>& shapes, const Move& arc, double radius)
{
    constexpr double largestPart = 90; // degrees, so that no part closes on itself
    const double middle = Between(arc.Centre, arc.From), start = DirectionTo(arc.Centre, arc.From);
    const int parts = std::max(1, static_cast<int>(std::ceil(std::fabs(arc.Sweep) / largestPart)));
    const double turn = arc.Sweep / parts;
    for (int i = 0; i < parts; ++i) {
        WoodShape shape;
        AddArcPoints(shape, arc.Centre, middle + radius, start + turn * i, turn);
        if (middle > radius)
            AddArcPoints(shape, arc.Centre, middle - radius, start + turn * (i + 1), -turn);
        else
            shape.push_back(arc.Centre);
        shapes.push_back(std::move(shape));
    }
}

void Insert(PolygonSet& set, const WoodShape& shape)
{
    std::vector<PolygonPoint> points;
    points.reserve(shape.size());
    double area = 0; // rings must turn the same way, or overlaps of two would be taken for holes
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const PathPoint &a = shape[i], &b = shape[(i + 1) % shape.size()];
        area += a.X * b.Y - b.X * a.Y;
        points.push_back(OnGrid(a));
    }
    if (area < 0)
        std::reverse(points.begin(), points.end());
    bp::polygon_data<int> polygon;
    polygon.set(points.begin(), points.end());
    set.insert(polygon);
}

PolygonSet SetOf(const std::vector<WoodShape>& shapes)
{
    PolygonSet set;
    for (const WoodShape& shape : shapes)
        if (shape.size() > 2)
            Insert(set, shape);
    return set;
}

using WholeSegment = bp::segment_data<int>;

// The sides of a polygon and of its holes.
std::vector<WholeSegment> SidesOf(const HoledPolygon& polygon)
{
    std::vector<WholeSegment> sides;
    const auto addRing = [&sides](auto first, auto last) {
        const std::vector<PolygonPoint> ring(first, last);
        for (std::size_t i = 0; i < ring.size(); ++i)
            if (const PolygonPoint& next = ring[(i + 1) % ring.size()]; ring[i] != next)
                sides.emplace_back(ring[i], next);
    };
    addRing(polygon.begin(), polygon.end());
    for (auto hole = polygon.begin_holes(); hole != polygon.end_holes(); ++hole)
        addRing(hole->begin(), hole->end());
    return sides;
}

PathPoint InSteps(const PolygonPoint& point)
{
    return {static_cast<double>(point.x()), static_cast<double>(point.y())};
}

double AwayFrom(const WholeSegment& side, const PathPoint& at)
{
    Move way;
    way.From = InSteps(side.low());
    way.To = InSteps(side.high());
    return DistanceFrom(way, at);
}

// By the sides that a line to the right crosses.
bool IsBetween(const std::vector<WholeSegment>& sides, const PathPoint& at)
{
    bool isBetween = false;
    for (const WholeSegment& side : sides) {
        const PathPoint a = InSteps(side.low()), b = InSteps(side.high());
        if ((a.Y > at.Y) != (b.Y > at.Y) && at.X < a.X + (at.Y - a.Y) / (b.Y - a.Y) * (b.X - a.X))
            isBetween = !isBetween;
    }
    return isBetween;
}

// The widest disc in a polygon has its middle where three sides or corners are equally near: at a vertex of
// their Voronoi diagram.
struct WidestDisc {
    PathPoint At;      // in steps
    double Radius = 0; // in steps
};

WidestDisc WidestDiscIn(const HoledPolygon& polygon, double leastRadius)
{
    const std::vector<WholeSegment> sides = SidesOf(polygon);
    bp::voronoi_diagram<double> diagram;
    bp::construct_voronoi(sides.begin(), sides.end(), &diagram);
    WidestDisc widest;
    widest.Radius = leastRadius;
    for (const auto& vertex : diagram.vertices()) {
        const PathPoint at{vertex.x(), vertex.y()};
        const double radius = AwayFrom(sides[vertex.incident_edge()->cell()->source_index()], at);
        if (radius > widest.Radius && IsBetween(sides, at))
            widest = {at, radius};
    }
    return widest;
}

WoodRest RestOf(const HoledPolygon& polygon, const WidestDisc& disc)
{
    WoodRest rest;
    rest.Area = static_cast<double>(bp::area(polygon)) * GridStep * GridStep;
    bp::rectangle_data<int> box;
    bp::extents(box, polygon);
    rest.Low = OffGrid({bp::xl(box), bp::yl(box)});
    rest.High = OffGrid({bp::xh(box), bp::yh(box)});
    rest.At = {disc.At.X * GridStep, disc.At.Y * GridStep};
    rest.Width = 2 * disc.Radius * GridStep;
    return rest;
}

} // namespace

void AddDisc(std::vector<WoodShape>& shapes, const PathPoint& centre, double radius)
{
    WoodShape shape;
    AddArcPoints(shape, centre, radius, 0, 360);
    shapes.push_back(std::move(shape));
}

void AddSwept(std::vector<WoodShape>& shapes, const Move& move, double radius)
{
    if (!move.IsArc) {
        AddCapsule(shapes, move.From, move.To, radius);
        return;
    }
    AddSector(shapes, move, radius);
    AddDisc(shapes, move.From, radius);
    AddDisc(shapes, move.To, radius);
}

void AddBand(std::vector<WoodShape>& shapes, const PathPoint& from, const PathPoint& to, double left,
             double right)
{
    const double along = DirectionTo(from, to) * Degree;
    const double nx = -std::sin(along), ny = std::cos(along);
    shapes.push_back({{from.X - nx * right, from.Y - ny * right},
                      {to.X - nx * right, to.Y - ny * right},
                      {to.X + nx * left, to.Y + ny * left},
                      {from.X + nx * left, from.Y + ny * left}});
}

WoodShape InsideOf(const std::vector<Move>& outline)
{
    WoodShape shape;
    for (const Move& move : outline) {
        if (move.IsArc)
            AddArcPoints(shape, move.Centre, Between(move.Centre, move.From),
                         DirectionTo(move.Centre, move.From), move.Sweep);
        else
            shape.push_back(move.From);
    }
    return shape;
}

std::vector<WoodShape> MiddlesInside(const std::vector<Move>& outline, double radius)
{
    std::vector<WoodShape> rim;
    for (const Move& move : outline)
        AddSwept(rim, move, radius);
    PolygonSet inside = SetOf({InsideOf(outline)});
    inside -= SetOf(rim);
    std::vector<HoledPolygon> cores;
    inside.get(cores);
    std::vector<WoodShape> middles;
    for (const HoledPolygon& core : cores) {
        WoodShape ring;
        for (const PolygonPoint& point : core)
            ring.push_back(OffGrid(point));
        middles.push_back(std::move(ring));
    }
    return middles;
}

std::vector<WoodShape> ReachedFrom(const std::vector<WoodShape>& middles, double radius, const PathPoint& low,
                                   const PathPoint& high)
{
    std::vector<WoodShape> reached = middles;
    const auto isNear = [&](const PathPoint& a, const PathPoint& b) {
        return std::min(a.X, b.X) - radius <= high.X && std::max(a.X, b.X) + radius >= low.X &&
               std::min(a.Y, b.Y) - radius <= high.Y && std::max(a.Y, b.Y) + radius >= low.Y;
    };
    for (const WoodShape& ring : middles)
        for (std::size_t i = 0; i < ring.size(); ++i)
            if (const PathPoint& next = ring[(i + 1) % ring.size()]; isNear(ring[i], next))
                AddCapsule(reached, ring[i], next, radius);
    return reached;
}

std::vector<WoodRest> RestsOf(const WoodQuestion& question, double width)
{
    PolygonSet set = SetOf(question.Of);
    if (!question.Within.empty())
        set &= SetOf(question.Within);
    if (!question.Without.empty())
        set -= SetOf(question.Without);
    std::vector<HoledPolygon> polygons;
    set.get(polygons);
    std::vector<WoodRest> rests;
    for (const HoledPolygon& polygon : polygons) {
        const double least = width / 2 / GridStep;
        const WidestDisc disc = WidestDiscIn(polygon, least);
        if (disc.Radius > least)
            rests.push_back(RestOf(polygon, disc));
    }
    std::sort(rests.begin(), rests.end(),
              [](const WoodRest& a, const WoodRest& b) { return a.Area > b.Area; });
    return rests;
}

} // namespace kv
