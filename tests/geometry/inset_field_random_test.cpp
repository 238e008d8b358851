// Inset loops against the plain rule: a point lies inside the loops of a distance when it is further than
// that from every wall, and each point of a loop is exactly that far.
#include <gtest/gtest.h>

#include <cmath>

#include "geometry/inset_field.h"
#include "support/random_regions.h"
#include "support/random_rounds.h"

namespace kv::test {
namespace {

constexpr double Chord = 0.001;

ClosedPath PathOfContour(const Contour& contour)
{
    ClosedPath path;
    for (const Vertex& vertex : contour)
        path.push_back({{vertex.X, vertex.Y}, vertex.Bulge});
    return path;
}

std::vector<ClosedPath> WallsOf(const RandomRegion& region)
{
    std::vector<ClosedPath> walls;
    const auto add = [&walls](const Contour& contour, bool counterClockwise) {
        const ClosedPath path = PathOfContour(contour);
        walls.push_back((SignedArea(path) > 0) == counterClockwise ? path : ReversedPath(path));
    };
    add(region.Outline, true);
    for (const Contour& island : region.Islands)
        add(island, false);
    return walls;
}

bool IsInRegion(const RandomRegion& region, const PathPoint& point)
{
    if (!HoldsPoint(region.Outline, point))
        return false;
    for (const Contour& island : region.Islands)
        if (HoldsPoint(island, point))
            return false;
    return true;
}

double DistanceFromWalls(const RandomRegion& region, const PathPoint& point)
{
    double nearest = DistanceFromContour(region.Outline, point);
    for (const Contour& island : region.Islands)
        nearest = std::min(nearest, DistanceFromContour(island, point));
    return nearest;
}

Contour ContourOfLoop(const InsetLoop& loop)
{
    Contour contour;
    for (const InsetPiece& piece : loop) {
        Vertex vertex;
        vertex.X = piece.From.X;
        vertex.Y = piece.From.Y;
        const double bulge = piece.IsArc ? std::tan(SweepOfArc(piece) / 4) : 0;
        vertex.Bulge = piece.CounterClockwise ? bulge : -bulge;
        contour.push_back(vertex);
    }
    return contour;
}

TEST(InsetFieldOnRandomRegions, LoopsPartWhatIsFurtherFromTheWallsFromWhatIsNot)
{
    std::mt19937 numbers(Seed(1301));
    std::uniform_real_distribution<double> share(0, 1);
    for (int round = 0; round < Rounds(40); ++round) {
        SCOPED_TRACE(RoundName(round));
        const RandomRegion region = DrawRegion(numbers, {{300, 200}, 100, 12, 4});
        const InsetField field(WallsOf(region), Chord);
        const double clearance = share(numbers) * field.Deepest();
        std::vector<Contour> loops;
        for (const InsetLoop& loop : field.LoopsAt(clearance))
            loops.push_back(ContourOfLoop(loop));
        for (int tries = 0; tries < 60; ++tries) {
            const PathPoint point{200 + 200 * share(numbers), 100 + 200 * share(numbers)};
            const double distance = DistanceFromWalls(region, point);
            if (std::fabs(distance - clearance) < 0.02)
                continue;
            int around = 0;
            for (const Contour& loop : loops)
                around += HoldsPoint(loop, point) ? 1 : 0;
            const bool isDeep = IsInRegion(region, point) && distance > clearance;
            ASSERT_EQ(around % 2 == 1, isDeep)
                << point.X << " " << point.Y << " at " << distance << " of " << clearance;
        }
    }
}

void ExpectLoopsAt(const RandomRegion& region, const InsetField& field, double clearance)
{
    const std::vector<InsetLoop> loops = field.LoopsAt(clearance);
    ASSERT_FALSE(loops.empty());
    for (const InsetLoop& loop : loops)
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const PlanePoint& end = loop[i].To;
            const PlanePoint& next = loop[(i + 1) % loop.size()].From;
            ASSERT_NEAR(end.X, next.X, 0.01);
            ASSERT_NEAR(end.Y, next.Y, 0.01);
        }
    for (const InsetLoop& loop : loops)
        for (const PathPoint& point : Chords(ContourOfLoop(loop), 6))
            ASSERT_NEAR(DistanceFromWalls(region, point), clearance, 0.01) << point.X << " " << point.Y;
}

TEST(InsetFieldOnRandomRegions, EachPointOfALoopLiesAtItsDistance)
{
    std::mt19937 numbers(Seed(1302));
    std::uniform_real_distribution<double> share(0.01, 0.99);
    for (int round = 0; round < Rounds(40); ++round) {
        SCOPED_TRACE(RoundName(round));
        const RandomRegion region = DrawRegion(numbers, {{300, 200}, 100, 12, 4});
        const InsetField field(WallsOf(region), Chord);
        ExpectLoopsAt(region, field, share(numbers) * field.Deepest());
    }
}

// Two islands whose walls pass each other at twice the distance: there a short arc around a corner remains
// of the one, and its two ends may not pass each other.
TEST(InsetFieldOnRandomRegions, ArcWhoseEndsMeetDoesNotRunAllTheWayRound)
{
    const RandomRegion region{
        {{250, 150, 0}, {350, 150, 0}, {350, 253, 0}, {289, 253, 0}, {265.425, 225.067, 0}, {250, 208, 0}},
        {{{273.238, 220.245, 0},
          {270.637, 222.727, 0.2102},
          {273.437, 225.783, 0},
          {276.526, 221.469, 0.5182}},
         {{286.007, 218.222, -0.3288}, {278.652, 225.952, 0}, {287.62, 231.892, 0}, {297.268, 224.696, 0}}}};
    const InsetField field(WallsOf(region), Chord);
    for (int i = 0; i <= 1000; ++i)
        ExpectLoopsAt(region, field, 7.5 + 0.0002 * i);
}

TEST(InsetFieldOnRandomRegions, DeepestIsTheFurthestThatAnyPointLies)
{
    std::mt19937 numbers(Seed(1303));
    for (int round = 0; round < Rounds(6); ++round) {
        SCOPED_TRACE(RoundName(round));
        const RandomRegion region = DrawRegion(numbers, {{300, 200}, 100, 12, 4});
        const InsetField field(WallsOf(region), Chord);
        double deepest = 0;
        for (double x = 200; x <= 400; x += 2)
            for (double y = 100; y <= 300; y += 2)
                if (IsInRegion(region, {x, y}))
                    deepest = std::max(deepest, DistanceFromWalls(region, {x, y}));
        EXPECT_LE(deepest, field.Deepest() + 0.01);
        EXPECT_GE(deepest, field.Deepest() - 1.5); // the raster's diagonal
    }
}

// What is told as far is far: no loop's point is within reach along any way, and nothing else is.
TEST(InsetFieldOnRandomRegions, WhatIsFarFromTheNextLoopsIsFound)
{
    std::mt19937 numbers(Seed(1304));
    std::uniform_real_distribution<double> share(0, 1);
    int far = 0;
    for (int round = 0; round < Rounds(24); ++round) {
        SCOPED_TRACE(RoundName(round));
        const RandomRegion region = DrawRegion(numbers, {{300, 200}, 100, 12, 4});
        const InsetField field(WallsOf(region), Chord);
        const double low = share(numbers) * field.Deepest();
        const double high = low + share(numbers) * 10;
        const double reach = high - low + share(numbers) * 10;
        std::vector<Contour> loops;
        for (const InsetLoop& loop : field.LoopsAt(high))
            loops.push_back(ContourOfLoop(loop));
        const bool isTold = !field.FarFromLoops(low, high, reach).empty();
        bool isFar = false;
        for (int tries = 0; tries < 400 && !isFar; ++tries) {
            const PathPoint point{200 + 200 * share(numbers), 100 + 200 * share(numbers)};
            const double distance = DistanceFromWalls(region, point);
            if (!IsInRegion(region, point) || distance < low + 0.02 || distance > high)
                continue;
            double nearest = 1e9;
            for (const Contour& loop : loops)
                nearest = std::min(nearest, DistanceFromContour(loop, point));
            isFar = nearest > reach + 0.02;
        }
        if (isFar) {
            ++far;
            EXPECT_TRUE(isTold) << low << " " << high << " " << reach;
        }
    }
    EXPECT_GT(far, Rounds(24) / 10); // so that the test shows something
}

// A neck between two corners, whose middle line is one edge of the diagram that dips and rises again: the
// line of the higher distance crosses it at one end alone.
TEST(InsetFieldOnRandomRegions, MiddleOfANeckIsFarFromTheTipsOnBothSides)
{
    const RandomRegion region{{{372.033, 211.522, 0},
                               {328.363, 224.402, 0},
                               {318.321, 275.415, 0},
                               {280.681, 236.943, 0},
                               {258.074, 240.252, 0},
                               {224.818, 208.566, 0.5057},
                               {262.18, 161.722, 0},
                               {295.137, 161.136, 0},
                               {311.404, 141.844, 0},
                               {354.209, 170.45, 0}},
                              {{{291.694, 176.491, 1}, {300.458, 176.491, 1}},
                               {{248.777, 189.997, 1}, {271.681, 189.997, 1}},
                               {{286.791, 193.958, 0},
                                {282.989, 194.508, 0.1125},
                                {283.389, 196.537, 0},
                                {285.93, 197.476, 0},
                                {288.452, 195.147, 0}}}};
    const InsetField field(WallsOf(region), Chord);
    const std::vector<PlanePoint> far = field.FarFromLoops(24.47, 25.23, 2.82);
    ASSERT_FALSE(far.empty());
    for (const PlanePoint& point : far)
        EXPECT_LT(Distance(point, {308.4, 209.8}), 5.2); // the neck's own middle
    EXPECT_TRUE(field.FarFromLoops(24.47, 25.23, 5.2).empty());
}

} // namespace
} // namespace kv::test
