// The way of the tool's centre beside hand-made ways: corners, arcs, what is narrower than the tool.
#include "machine/tool_way.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "proof/hand_ways.h"

namespace kv::test {
namespace {

using ways::ArcTo;
using ways::CutOf;
using ways::LineTo;

void ExpectPlace(const PathPoint& place, double x, double y)
{
    EXPECT_NEAR(place.X, x, 1e-9);
    EXPECT_NEAR(place.Y, y, 1e-9);
}

TEST(ToolWay, WithoutASideTheCentreFollowsTheWay)
{
    const ToolWay way = WayOf(CutOf(0, 3, {0, 0}, {LineTo(10, 0), ArcTo(10, 10, {10, 5}, 180)}));
    ASSERT_EQ(way.Pieces.size(), 2U);
    EXPECT_EQ(way.Radius, 3);
    ExpectPlace(way.Start, 0, 0);
    ExpectPlace(way.Pieces[0].To, 10, 0);
    ExpectPlace(way.Pieces[1].To, 10, 10);
    EXPECT_TRUE(way.Faults.empty());
}

TEST(ToolWay, LiesLeftAndRightOfALineFromItsFirstToItsLastPoint)
{
    for (const int side : {1, -1}) {
        const ToolWay way = WayOf(CutOf(side, 3, {0, 0}, {LineTo(10, 0)}));
        ASSERT_EQ(way.Pieces.size(), 1U);
        ExpectPlace(way.Start, 0, side * 3);
        ExpectPlace(way.Pieces[0].From, 0, side * 3);
        ExpectPlace(way.Pieces[0].To, 10, side * 3);
    }
}

TEST(ToolWay, TurnsWhereBothWaysCrossAtAnInnerCorner)
{
    const ToolWay way = WayOf(CutOf(1, 3, {0, 0}, {LineTo(20, 0), LineTo(20, 20)}));
    ASSERT_EQ(way.Pieces.size(), 2U);
    ExpectPlace(way.Pieces[0].To, 17, 3);
    ExpectPlace(way.Pieces[1].From, 17, 3);
    ExpectPlace(way.Pieces[1].To, 17, 20);
    EXPECT_TRUE(way.Faults.empty());
}

TEST(ToolWay, RollsAroundAnOuterCorner)
{
    const ToolWay way = WayOf(CutOf(-1, 3, {0, 0}, {LineTo(20, 0), LineTo(20, 20)}));
    ASSERT_EQ(way.Pieces.size(), 3U);
    const Move& roll = way.Pieces[1];
    EXPECT_TRUE(roll.IsArc);
    EXPECT_NEAR(roll.Sweep, 90, 1e-9);
    ExpectPlace(roll.From, 20, -3);
    ExpectPlace(roll.Centre, 20, 0);
    ExpectPlace(roll.To, 23, 0);
}

TEST(ToolWay, RollsHalfATurnWhereTheWayComesBack)
{
    for (const int side : {1, -1}) {
        const ToolWay way = WayOf(CutOf(side, 3, {0, 0}, {LineTo(20, 0), LineTo(5, 0)}));
        ASSERT_EQ(way.Pieces.size(), 3U);
        EXPECT_NEAR(way.Pieces[1].Sweep, side * -180, 1e-9);
        ExpectPlace(way.Pieces[1].To, 20, side * -3);
    }
}

TEST(ToolWay, MeetsAnArcWhereTheLineBesideCrossesTheCircleBeside)
{
    // Up to the left end of a half circle that hangs down from (0, 20) to (40, 20): the corner lies inside.
    const ToolWay way = WayOf(CutOf(-1, 5, {0, 60}, {LineTo(0, 20), ArcTo(40, 20, {20, 20}, 180)}));
    const ToolWay other = WayOf(CutOf(1, 5, {0, 60}, {LineTo(0, 20), ArcTo(40, 20, {20, 20}, 180)}));
    EXPECT_EQ(way.Pieces.size(), 2U); // tangent: nothing between
    ExpectPlace(other.Pieces[0].To, 5, 20);
    // A corner of 90 degrees: along Y 20 to the right, to the top of a circle around (40, 0) with radius 20.
    const ToolWay corner = WayOf(CutOf(1, 5, {0, 20}, {LineTo(20, 20), ArcTo(40, 0, {40, 20}, 90)}));
    ASSERT_EQ(corner.Pieces.size(), 3U); // the way turns right there: outer for a tool on the left
    const ToolWay inner = WayOf(CutOf(-1, 5, {0, 20}, {LineTo(20, 20), ArcTo(40, 0, {40, 20}, 90)}));
    ASSERT_EQ(inner.Pieces.size(), 2U);
    // 5 below Y 20, and 25 from (40, 20).
    ExpectPlace(inner.Pieces[0].To, 40 - std::sqrt(25.0 * 25 - 5 * 5), 15);
    ExpectPlace(inner.Pieces[1].From, inner.Pieces[0].To.X, inner.Pieces[0].To.Y);
}

TEST(ToolWay, MeetsWhereTwoCirclesBesideCross)
{
    // Two half circles of radius 20 side by side; the tool outside comes down between them.
    const ToolWay way =
        WayOf(CutOf(1, 5, {0, 0}, {ArcTo(40, 0, {20, 0}, -180), ArcTo(80, 0, {60, 0}, -180)}));
    ASSERT_EQ(way.Pieces.size(), 2U);
    ExpectPlace(way.Pieces[0].To, 40, std::sqrt(25.0 * 25 - 20 * 20));
    EXPECT_TRUE(way.Faults.empty());
    // On the other side the same point is a tip, around which the tool rolls.
    const ToolWay below =
        WayOf(CutOf(-1, 5, {0, 0}, {ArcTo(40, 0, {20, 0}, -180), ArcTo(80, 0, {60, 0}, -180)}));
    ASSERT_EQ(below.Pieces.size(), 3U);
    EXPECT_NEAR(below.Pieces[1].Sweep, 180, 1e-9);
}

TEST(ToolWay, ArcsKeepTheirCentreAndTurnAndLoseOrGainTheToolsRadius)
{
    for (const int side : {1, -1}) {
        const ToolWay way = WayOf(CutOf(side, 3, {10, 0}, {ArcTo(0, 10, {0, 0}, 90)}));
        ASSERT_EQ(way.Pieces.size(), 1U);
        ExpectPlace(way.Pieces[0].From, 10 - side * 3, 0);
        ExpectPlace(way.Pieces[0].To, 0, 10 - side * 3);
        EXPECT_EQ(way.Pieces[0].Sweep, 90);
    }
}

TEST(ToolWay, AnArcThatTheRadiusUsesUpIsAFault)
{
    const std::vector<Move> moves = {LineTo(10, 0), ArcTo(13, 3, {10, 3}, 90), LineTo(13, 20)};
    EXPECT_TRUE(WayOf(CutOf(1, 2.9, {0, 0}, moves)).Faults.empty());
    EXPECT_TRUE(WayOf(CutOf(-1, 5, {0, 0}, moves)).Faults.empty());
    for (const double radius : {3.0, 3.1, 6.0}) {
        const ToolWay way = WayOf(CutOf(1, radius, {0, 0}, moves));
        ASSERT_EQ(way.Faults.size(), 1U) << radius;
        EXPECT_EQ(way.Faults[0].Text, "narrower than the tool: an arc of radius 3.000000");
        ExpectPlace(way.Faults[0].At, 10, 0);
    }
}

TEST(ToolWay, AMoveThatItsCornersUseUpIsAFault)
{
    // A slot of 10 with square ends, walked inside.
    const std::vector<Move> moves = {LineTo(50, 0), LineTo(50, 10), LineTo(0, 10)};
    EXPECT_TRUE(WayOf(CutOf(1, 4.9, {0, 0}, moves)).Faults.empty());
    const ToolWay way = WayOf(CutOf(1, 5.1, {0, 0}, moves));
    ASSERT_EQ(way.Faults.size(), 1U);
    EXPECT_EQ(way.Faults[0].Text, "narrower than the tool: a move that its corners use up");
    ExpectPlace(way.Faults[0].At, 50, 0);
    EXPECT_EQ(way.Faults[0].Line, 2U);
}

TEST(ToolWay, AnArcThatItsCornersUseUpIsAFault)
{
    // The bottom of a narrow hopper: a short flat arc between two steep walls.
    const std::vector<Move> moves = {LineTo(0, 0), ArcTo(10, 0, {5, 20}, 28.0724869), LineTo(13, 40)};
    EXPECT_TRUE(WayOf(CutOf(1, 4, {-3, 40}, moves)).Faults.empty());
    const ToolWay way = WayOf(CutOf(1, 7, {-3, 40}, moves));
    ASSERT_EQ(way.Faults.size(), 1U);
    EXPECT_EQ(way.Faults[0].Text, "narrower than the tool: a move that its corners use up");
    EXPECT_EQ(way.Faults[0].Line, 2U);
}

TEST(ToolWay, ABluntInnerCornerIsStillACorner)
{
    // 2 degrees to the left: beside it the ways end .2 apart.
    const double rise = 100 * std::tan(std::atan(1) * 2 / 45);
    const ToolWay way = WayOf(CutOf(1, 6, {0, 0}, {LineTo(100, 0), LineTo(200, rise)}));
    ASSERT_EQ(way.Pieces.size(), 2U);
    EXPECT_NEAR(way.Pieces[0].To.X, 100 - 6 * std::tan(std::atan(1) / 45), 1e-9);
    EXPECT_NEAR(way.Pieces[0].To.Y, 6, 1e-9);
}

TEST(ToolWay, TwoWaysThatDoNotMeetAreAFault)
{
    // Straight into the side of a bow of radius 6: beside them lie a line at Y 5 and a circle of 1 around
    // (14, 0).
    const std::vector<Move> moves = {LineTo(20, 0), ArcTo(14, 6, {14, 0}, 90)};
    const ToolWay way = WayOf(CutOf(1, 5, {0, 0}, moves));
    ASSERT_EQ(way.Faults.size(), 1U);
    EXPECT_EQ(way.Faults[0].Text, "narrower than the tool: two ways that do not meet");
    ExpectPlace(way.Faults[0].At, 20, 0);
    EXPECT_TRUE(WayOf(CutOf(1, 2, {0, 0}, moves)).Faults.empty());
}

TEST(ToolWay, SmoothJoinsOfRoundedNumbersStayWithoutACorner)
{
    // The arc begins 0.0004 beside the line's end's tangent, as four decimals leave it.
    const ToolWay way =
        WayOf(CutOf(1, 6, {0, 0}, {LineTo(100, 0.0004), ArcTo(120, 20, {99.9996, 20.0004}, 90)}));
    ASSERT_LE(way.Pieces.size(), 3U);
    EXPECT_TRUE(way.Faults.empty());
    for (const Move& piece : way.Pieces)
        EXPECT_LT(piece.IsArc ? std::fabs(piece.Sweep) : 0, 91);
}

TEST(ToolWay, TheRadiusIsTheProgramsElseTheCallers)
{
    EXPECT_EQ(WayOf(CutOf(0, 3, {0, 0}, {}), 8).Radius, 3);
    EXPECT_EQ(WayOf(CutOf(0, 0, {0, 0}, {}), 8).Radius, 8);
    ExpectPlace(WayOf(CutOf(1, 0, {0, 0}, {LineTo(10, 0)}), 8).Start, 0, 8);
}

TEST(ToolWay, APlungeStaysAtItsPlace)
{
    RouterCut plunge = CutOf(0, 4, {7, 8}, {});
    plunge.StartDepth = 12;
    const ToolWay way = WayOf(plunge);
    EXPECT_TRUE(way.Pieces.empty());
    ExpectPlace(way.Start, 7, 8);
    EXPECT_EQ(way.StartDepth, 12);
}

TEST(ToolWay, DistancesFromLinesAndArcs)
{
    const RouterCut cut = CutOf(0, 1, {0, 0}, {LineTo(10, 0), ArcTo(20, 10, {10, 10}, 90)});
    EXPECT_NEAR(DistanceFrom(cut.Moves[0], {5, 4}), 4, 1e-9);
    EXPECT_NEAR(DistanceFrom(cut.Moves[0], {-3, 4}), 5, 1e-9);
    const double diagonal = std::sqrt(0.5);
    EXPECT_NEAR(DistanceFrom(cut.Moves[1], {10 + 12 * diagonal, 10 - 12 * diagonal}), 2, 1e-9);
    EXPECT_NEAR(DistanceFrom(cut.Moves[1], {20, 13}), 3, 1e-9);
}

} // namespace
} // namespace kv::test
