// Which ways and loops of a pocket a control can compensate. The tool's radius is 4, on the left.
#include "routes/pocket_way_check.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace kv::test {
namespace {

constexpr double Radius = 4;

PocketWay WayThrough(std::initializer_list<WayPoint> points)
{
    PocketWay way;
    way.Points = points;
    return way;
}

bool IsTaken(std::initializer_list<WayPoint> points)
{
    return CanBeCompensated(WayThrough(points), Radius);
}

TEST(PocketWayCheck, InnerCornersLeaveARestOfEachSide)
{
    EXPECT_TRUE(IsTaken({{{0, 0}}, {{20, 0}}, {{20, 8.1}}, {{0, 8.1}}}));
    EXPECT_FALSE(IsTaken({{{0, 0}}, {{20, 0}}, {{20, 7.9}}, {{0, 7.9}}})); // corners take 4 from both ends
}

TEST(PocketWayCheck, ToolRollsAroundOuterCornersOfLessThanHalfATurn)
{
    EXPECT_TRUE(IsTaken({{{0, 0}}, {{20, 0}}, {{20, -1}}, {{0, -1}}}));
    EXPECT_TRUE(IsTaken({{{0, 0}}, {{20, 0}}, {{0, -4}}}));   // 169 degrees
    EXPECT_FALSE(IsTaken({{{0, 0}}, {{20, 0}}, {{0, -1}}}));  // 177
    EXPECT_FALSE(IsTaken({{{0, 0}}, {{20, 0}}, {{0, 0.1}}})); // back on the tool's own side
}

TEST(PocketWayCheck, ArcAroundTheToolsSideIsWiderThanTheTool)
{
    EXPECT_TRUE(IsTaken({{{0, 0}, 1}, {{0, 8.1}}}));
    EXPECT_FALSE(IsTaken({{{0, 0}, 1}, {{0, 7.9}}}));
    EXPECT_TRUE(IsTaken({{{0, 0}, -1}, {{0, -0.5}}})); // on the other side any will do
}

TEST(PocketWayCheck, SpansThatDoNotMeetBesideAnInnerCorner)
{
    EXPECT_TRUE(IsTaken({{{0, 0}}, {{20, 0}, -0.2}, {{25, 15}}}));
    EXPECT_FALSE(IsTaken({{{0, 0}}, {{20, 0}, 0.4142}, {{18.5, 5.6}}})); // the arc's centre lies too near
}

TEST(PocketWayCheck, PieceThatComesBackFromACornerIsUsedUp)
{
    EXPECT_FALSE(IsTaken({{{0, 0}}, {{20, 0}}, {{19.9, 0.01}}, {{25, 0.2}}}));
}

RingLevel LevelOf(const ClosedPath& path)
{
    InsetLoop loop;
    for (std::size_t i = 0; i < path.size(); ++i)
        loop.push_back(SpanBetween(path[i], path[(i + 1) % path.size()].At));
    return {5, {loop}};
}

TEST(PocketWayCheck, LoopTurnsRoundOnceEitherWay)
{
    EXPECT_TRUE(TurnOnce({LevelOf({{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}})}));
    EXPECT_TRUE(TurnOnce({LevelOf({{{0, 0}}, {{0, 10}}, {{10, 10}}, {{10, 0}}})}));
    EXPECT_TRUE(TurnOnce({LevelOf({{{0, 0}, 1}, {{10, 0}, 1}})}));
    EXPECT_TRUE(TurnOnce({LevelOf({{{0, 0}}, {{10, 0}, -0.5}, {{10, 10}, 0.3}, {{0, 10}}})}));
    EXPECT_TRUE(TurnOnce({LevelOf({{{0, 0}}, {{10, 0}}})})); // two tips
}

TEST(PocketWayCheck, LoopThatCrossesItselfOrRunsRoundAnArcOfItsOwnIsNone)
{
    EXPECT_FALSE(TurnOnce({LevelOf({{{0, 0}}, {{10, 10}}, {{10, 0}}, {{0, 10}}})}));
    RingLevel level = LevelOf({{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}});
    InsetLoop& loop = level.Rings.front();
    // Nearly a whole circle around a point beside the corner, clockwise, from where it ends.
    PathSpan arc{{10, 0}, {10, -0.001}, true, false, {12, 0}, 2};
    loop[0].To = arc.From;
    loop[1].From = arc.To;
    loop.insert(loop.begin() + 1, arc);
    EXPECT_FALSE(TurnOnce({level}));
}

} // namespace
} // namespace kv::test
