#include "proof/wood_region.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace kv {
namespace {

constexpr double Pi = 3.14159265358979;

WoodShape Box(double x, double y, double width, double height)
{
    return {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
}

Move Straight(const PathPoint& from, const PathPoint& to)
{
    Move move;
    move.From = from;
    move.To = to;
    return move;
}

Move ArcAround(const PathPoint& centre, double radius, double from, double sweep)
{
    const auto at = [&](double angle) {
        return PathPoint{centre.X + radius * std::cos(angle * Degree),
                         centre.Y + radius * std::sin(angle * Degree)};
    };
    Move move = Straight(at(from), at(from + sweep));
    move.IsArc = true;
    move.Centre = centre;
    move.Sweep = sweep;
    return move;
}

double AreaOfShapes(const std::vector<WoodShape>& shapes)
{
    double area = 0;
    for (const WoodRest& rest : RestsOf({shapes, {}, {}}, 0.01))
        area += rest.Area;
    return area;
}

TEST(WoodRegion, ARestHasItsAreaItsWidthAndThePlaceWhereItIsWidest)
{
    const std::vector<WoodRest> rests = RestsOf({{Box(0, 0, 100, 10)}, {}, {Box(0, 0, 100, 7)}}, 0.1);
    ASSERT_EQ(rests.size(), 1u);
    EXPECT_NEAR(rests[0].Area, 300, 1e-6);
    EXPECT_NEAR(rests[0].Width, 3, 1e-6);
    EXPECT_NEAR(rests[0].At.Y, 8.5, 1e-6);
    EXPECT_NEAR(rests[0].High.X, 100, 1e-6);
}

TEST(WoodRegion, WhatIsNarrowerThanTheToleranceIsNoRest)
{
    EXPECT_TRUE(RestsOf({{Box(0, 0, 100, 10)}, {}, {Box(0, 0, 100, 9.91)}}, 0.1).empty());
    EXPECT_EQ(RestsOf({{Box(0, 0, 100, 10)}, {}, {Box(0, 0, 100, 9.89)}}, 0.1).size(), 1u);
}

TEST(WoodRegion, ARestCountsAsFarAsItLiesWithin)
{
    EXPECT_TRUE(RestsOf({{Box(200, 0, 10, 10)}, {Box(0, 0, 100, 100)}, {}}, 0.1).empty());
    const std::vector<WoodRest> rests = RestsOf({{Box(95, 0, 10, 10)}, {Box(0, 0, 100, 100)}, {}}, 0.1);
    ASSERT_EQ(rests.size(), 1u);
    EXPECT_NEAR(rests[0].Area, 50, 1e-6);
}

TEST(WoodRegion, ARestAroundAHoleIsAsWideAsTheRim)
{
    const std::vector<WoodRest> rests = RestsOf({{Box(0, 0, 40, 40)}, {}, {Box(4, 4, 32, 32)}}, 0.1);
    ASSERT_EQ(rests.size(), 1u);
    EXPECT_NEAR(rests[0].Area, 1600 - 1024, 1e-6);
    EXPECT_NEAR(rests[0].Width, 4.686, 0.01); // in a corner: 2 (1 + sqrt 2) / (1 + 1 / sqrt 2) and so on
}

TEST(WoodRegion, ShapesThatOverlapAreOneWhateverTheirTurning)
{
    WoodShape turned = Box(5, 0, 10, 10);
    std::reverse(turned.begin(), turned.end());
    EXPECT_NEAR(AreaOfShapes({Box(0, 0, 10, 10), turned}), 150, 1e-6);
}

TEST(WoodRegion, ALineSweepsABandWithRoundEnds)
{
    std::vector<WoodShape> shapes;
    AddSwept(shapes, Straight({0, 0}, {30, 40}), 5);
    EXPECT_NEAR(AreaOfShapes(shapes), 500 + 25 * Pi, 0.5);
}

TEST(WoodRegion, AnArcSweepsARing)
{
    std::vector<WoodShape> shapes;
    AddSwept(shapes, ArcAround({10, 20}, 50, 30, -360), 4);
    EXPECT_NEAR(AreaOfShapes(shapes), Pi * (54 * 54 - 46 * 46), 3);
    shapes.clear();
    AddSwept(shapes, ArcAround({0, 0}, 50, 0, 90), 4);
    EXPECT_NEAR(AreaOfShapes(shapes), Pi * (54 * 54 - 46 * 46) / 4 + 16 * Pi, 1.5);
}

TEST(WoodRegion, AnArcNarrowerThanTheToolSweepsItsMiddleToo)
{
    std::vector<WoodShape> shapes;
    AddSwept(shapes, ArcAround({0, 0}, 2, 0, 360), 5);
    EXPECT_NEAR(AreaOfShapes(shapes), 49 * Pi, 0.6);
}

TEST(WoodRegion, ADiscReachesAllOfAPocketButItsCorners)
{
    const std::vector<Move> outline = {Straight({0, 0}, {40, 0}), Straight({40, 0}, {40, 20}),
                                       Straight({40, 20}, {0, 20}), Straight({0, 20}, {0, 0})};
    const std::vector<WoodShape> middles = MiddlesInside(outline, 5);
    ASSERT_EQ(middles.size(), 1u);
    EXPECT_NEAR(AreaOfShapes(middles), 30 * 10, 0.5);
    EXPECT_NEAR(AreaOfShapes(ReachedFrom(middles, 5, {0, 0}, {40, 20})), 800 - (100 - 25 * Pi), 0.5);
    EXPECT_TRUE(MiddlesInside(outline, 11).empty());
}

} // namespace
} // namespace kv
