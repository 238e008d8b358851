// Routes for the tests of their order and chaining: records by hand into the run's lists, and what
// became of them by place, kind and chain.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "routes/plain_route_chains.h"
#include "routes/route_chains.h"
#include "routes/route_order.h"
#include "routes/route_runs.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/scene.h"

namespace kv::chain_test {

struct Point {
    Single X, Y;
    friend bool operator==(const Point&, const Point&) = default;
};
using Points = std::vector<Point>;
using Segments = std::vector<RouteSegment>;
using Circles = std::vector<RouteCircle>;

inline RouteSegment Segment(Int kind, Single x, Single y, Single aux1 = 0, Single aux2 = 0)
{
    RouteSegment record;
    record.Kind = kind;
    record.X = x;
    record.Y = y;
    record.Aux1 = aux1;
    record.Aux2 = aux2;
    record.Pass = 1;
    record.Z = 10;
    record.Group = 1;
    return record;
}

inline Segments Line(Point from, Point to)
{
    return {Segment(-1, from.X, from.Y), Segment(1, to.X, to.Y)};
}

// An arc as it is stored: from one point to the other, clockwise, with the drawing's two angles.
inline Segments Arc(Point centre, Point from, Point to, Single fromAngle, Single toAngle)
{
    return {Segment(-3, from.X, from.Y, centre.X, centre.Y), Segment(3, to.X, to.Y, fromAngle, toAngle)};
}

inline Segments Polyline(const Points& points, Int firstKind = -5)
{
    Segments records;
    for (const Point& point : points)
        records.push_back(Segment(records.empty() ? firstKind : Int(5), point.X, point.Y));
    return records;
}

inline void Add(Segments& drawing, const Segments& path)
{
    drawing.insert(drawing.end(), path.begin(), path.end());
}

template <typename... Paths> Segments Drawing(const Paths&... paths)
{
    Segments drawing;
    (Add(drawing, paths), ...);
    return drawing;
}

inline Segments OnPass(Long pass, Segments records)
{
    for (RouteSegment& record : records)
        record.Pass = pass;
    return records;
}

inline RouteCircle Circle(Point centre, Single radius, const char* comp = "")
{
    RouteCircle circle;
    circle.X = centre.X;
    circle.Y = centre.Y;
    circle.Radius = radius;
    circle.Z = 7;
    circle.Pass = 1;
    circle.Group = 1;
    circle.Comp = comp;
    return circle;
}

// The lists of a run; a panel of 1000 by 500, tolerance .1.
inline void LayRoutes(const Segments& segments, const Circles& circles = {})
{
    ResetRun();
    Run.MinSequence = 0;
    Run.RunState = 0;
    Run.SideWidth[5] = 1000;
    Run.SideHeight[5] = 500;
    Run.RouteTolerance = 0.1F;
    for (const RouteSegment& record : segments)
        RouteSegments.Append(record);
    for (const RouteCircle& circle : circles)
        RouteCircles.Append(circle);
}

inline Segments SegmentsNow()
{
    return {RouteSegments.begin() + 1, RouteSegments.end()};
}

inline Points PlacesNow()
{
    Points places;
    for (const RouteSegment& record : SegmentsNow())
        places.push_back({record.X, record.Y});
    return places;
}

inline std::vector<int> KindsNow()
{
    std::vector<int> kinds;
    for (const RouteSegment& record : SegmentsNow())
        kinds.push_back(record.Kind);
    return kinds;
}

// First places of the chains, in their order.
inline Points ChainStartsNow()
{
    Points places;
    for (const RouteSegment& record : SegmentsNow())
        if (record.Dir == RouteStart)
            places.push_back({record.X, record.Y});
    return places;
}

inline std::vector<std::size_t> ChainLengthsNow()
{
    std::vector<std::size_t> lengths;
    for (const RouteSegment& record : SegmentsNow()) {
        if (record.Dir == RouteStart)
            lengths.push_back(0);
        if (!lengths.empty())
            ++lengths.back();
    }
    return lengths;
}

inline void PrintTo(const Point& point, std::ostream* out)
{
    *out << '(' << point.X << ' ' << point.Y << ')';
}

class RouteChainTest : public testing::Test {
  protected:
    static constexpr RunBlock& Run = kv::Run; // the base has a member of that name

    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }

    static void Chain(const Segments& segments, const Circles& circles = {})
    {
        LayRoutes(segments, circles);
        EXPECT_TRUE(ChainRoutes());
    }
    static Points Order(const Segments& segments)
    {
        LayRoutes(segments);
        OrderRouteChains();
        return PlacesNow();
    }
};

} // namespace kv::chain_test
