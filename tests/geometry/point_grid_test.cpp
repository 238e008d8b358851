// The spatial index: every search finds what a walk over all points finds.
#include "geometry/point_grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "support/random_rounds.h"

namespace kv {
namespace {

double Squared(double x, double y, const GridPoint& point)
{
    const double dx = point.X - x;
    const double dy = point.Y - y;
    return dx * dx + dy * dy;
}

Long NearestIn(const PointGrid& grid, double x, double y)
{
    return grid.Lowest([&](const GridBox& box) { return Squared(x, y, box.Nearest(x, y)); },
                       [&](Long point) { return Squared(x, y, grid.At(point)); });
}

// The first of the nearest points that are not taken.
Long NearestByWalk(const std::vector<GridPoint>& points, const std::vector<bool>& taken, double x, double y)
{
    Long best = PointGrid::None;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (taken[i])
            continue;
        if (best == PointGrid::None ||
            Squared(x, y, points[i]) < Squared(x, y, points[static_cast<std::size_t>(best)]))
            best = static_cast<Long>(i);
    }
    return best;
}

TEST(PointGrid, WithoutPointsFindsNone)
{
    const PointGrid grid({});
    EXPECT_EQ(NearestIn(grid, 0, 0), PointGrid::None);
}

TEST(PointGrid, FindsNoneWhenAllAreTakenOut)
{
    PointGrid grid({{1, 1}, {2, 2}});
    grid.Remove(0);
    EXPECT_EQ(NearestIn(grid, 0, 0), 1);
    grid.Remove(1);
    EXPECT_EQ(NearestIn(grid, 0, 0), PointGrid::None);
    grid.Restore();
    EXPECT_EQ(NearestIn(grid, 0, 0), 0);
}

TEST(PointGrid, PointPutBackIsFoundAgain)
{
    PointGrid grid({{1, 1}, {2, 2}});
    grid.Remove(0);
    grid.Remove(1);
    grid.Return(0);
    grid.Return(0); // counts once
    EXPECT_EQ(NearestIn(grid, 9, 9), 0);
    grid.Remove(0);
    EXPECT_EQ(NearestIn(grid, 9, 9), PointGrid::None);
}

TEST(PointGrid, PointTakenOutTwiceCountsOnce)
{
    PointGrid grid({{1, 1}, {2, 2}});
    grid.Remove(0);
    grid.Remove(0);
    EXPECT_EQ(NearestIn(grid, 0, 0), 1);
}

TEST(PointGrid, LowestIndexAmongEquals)
{
    std::vector<GridPoint> points;
    for (int i = 0; i < 100; ++i)
        points.push_back({i % 2 == 0 ? 5.0 : -5.0, 0});
    PointGrid grid(points);
    for (Long i = 0; i < 100; ++i) {
        EXPECT_EQ(NearestIn(grid, 0, 0), i);
        grid.Remove(i);
    }
}

TEST(PointGrid, ScoresBeyondAllNumbersStillFindAPoint)
{
    const double endless = std::numeric_limits<double>::infinity();
    PointGrid grid(std::vector<GridPoint>(20, GridPoint{1, 1}));
    const auto search = [&] {
        return grid.Lowest([&](const GridBox&) { return endless; }, [&](Long) { return endless; });
    };
    EXPECT_EQ(search(), 0);
    grid.Remove(0);
    EXPECT_EQ(search(), 1);
}

TEST(PointGrid, NearestPointOfABox)
{
    GridBox box;
    box.Widen({1, 2});
    box.Widen({5, 4});
    EXPECT_EQ(box.Nearest(0, 3).X, 1);
    EXPECT_EQ(box.Nearest(0, 3).Y, 3);
    EXPECT_EQ(box.Nearest(9, 9).X, 5);
    EXPECT_EQ(box.Nearest(9, 9).Y, 4);
    EXPECT_EQ(box.Nearest(2, 3).X, 2);
}

TEST(PointGrid, RandomPointsTakenOutOneByOneAsByAWalk)
{
    std::mt19937 engine(test::Seed(2));
    for (int round = 0; round < test::Rounds(150); ++round) {
        const bool onGrid = round % 2 == 0;
        const auto coordinate = [&] {
            return onGrid ? std::uniform_int_distribution<int>(0, 12)(engine) * 32.0
                          : std::uniform_real_distribution<double>(-500, 500)(engine);
        };
        std::vector<GridPoint> points(std::uniform_int_distribution<std::size_t>(1, 120)(engine));
        for (GridPoint& point : points)
            point = {coordinate(), coordinate()};
        PointGrid grid(points);
        std::vector<bool> taken(points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            const double x = coordinate(), y = coordinate();
            const Long expected = NearestByWalk(points, taken, x, y);
            ASSERT_EQ(NearestIn(grid, x, y), expected) << test::RoundName(round) << " step " << i;
            grid.Remove(expected);
            taken[static_cast<std::size_t>(expected)] = true;
        }
    }
}

std::vector<Long> Within(const PointGrid& grid, double x, double y, double squaredReach)
{
    std::vector<Long> found;
    grid.Walk([&](const GridBox& box) { return Squared(x, y, box.Nearest(x, y)) < squaredReach; },
              [&](Long point) {
                  if (Squared(x, y, grid.At(point)) < squaredReach)
                      found.push_back(point);
                  return false;
              });
    std::sort(found.begin(), found.end());
    return found;
}

TEST(PointGrid, WalkMeetsEachPointInReachOnceAndNoneThatIsTakenOut)
{
    std::mt19937 random(test::Seed(7));
    for (int round = 0; round < test::Rounds(300); ++round) {
        std::uniform_int_distribution<int> place(0, 12);
        std::vector<GridPoint> points(random() % 120);
        for (GridPoint& point : points)
            point = {place(random) * 0.5, place(random) * 0.5};
        PointGrid grid(points);
        std::vector<bool> taken(points.size());
        for (std::size_t i = 0; i < points.size(); i += 1 + random() % 4) {
            grid.Remove(static_cast<Long>(i));
            taken[i] = true;
        }
        const double x = place(random) * 0.5;
        const double y = place(random) * 0.5;
        const double reach = place(random) * 0.25;
        std::vector<Long> plain;
        for (std::size_t i = 0; i < points.size(); ++i)
            if (!taken[i] && Squared(x, y, points[i]) < reach)
                plain.push_back(static_cast<Long>(i));
        ASSERT_EQ(Within(grid, x, y, reach), plain) << test::RoundName(round);
    }
}

TEST(PointGrid, WalkEndsWhereTheVisitorHasSeenEnough)
{
    const PointGrid grid({{1, 1}, {2, 2}, {3, 3}});
    int visited = 0;
    const auto everywhere = [](const GridBox&) { return true; };
    EXPECT_TRUE(grid.Walk(everywhere, [&](Long) { return ++visited == 2; }));
    EXPECT_EQ(visited, 2);
    EXPECT_FALSE(grid.Walk(everywhere, [](Long) { return false; }));
    EXPECT_FALSE(PointGrid({}).Walk(everywhere, [](Long) { return true; }));
}

} // namespace
} // namespace kv
