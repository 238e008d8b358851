// Regions: sums, differences, growing and shrinking, what tools sweep, with areas that are known.
#include "support/proof/region.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "proof/hand_ways.h"

namespace kv::test {
namespace {

using ways::ArcTo;
using ways::CutOf;
using ways::LineTo;

constexpr double Circle = 3.14159265358979323846;
// Of an area with arcs: 0.002 mm beside 60 mm of arc.
constexpr double ChordArea = 0.12;

TEST(Region, BoxesAddUpAndTakeAway)
{
    const Region a = BoxOf({0, 0}, {10, 10}), b = BoxOf({5, 5}, {15, 15});
    EXPECT_NEAR(AreaOf(a), 100, 1e-6);
    EXPECT_NEAR(AreaOf(Union(a, b)), 175, 1e-6);
    EXPECT_NEAR(AreaOf(Difference(a, b)), 75, 1e-6);
    EXPECT_NEAR(AreaOf(Intersection(a, b)), 25, 1e-6);
    EXPECT_NEAR(AreaOf(Union(std::vector<Region>{a, b, BoxOf({20, 0}, {21, 1})})), 176, 1e-6);
    EXPECT_TRUE(Intersection(a, BoxOf({10, 0}, {20, 10})).IsEmpty());
    EXPECT_TRUE(Difference(a, a).IsEmpty());
}

TEST(Region, HolesStayHolesWhereRegionsAreAdded)
{
    const Region ring = Difference(BoxOf({0, 0}, {30, 30}), BoxOf({10, 10}, {20, 20}));
    EXPECT_NEAR(AreaOf(ring), 800, 1e-6);
    EXPECT_FALSE(Holds(ring, {15, 15}));
    EXPECT_TRUE(Holds(ring, {5, 15}));
    EXPECT_NEAR(AreaOf(Union(std::vector<Region>{ring, BoxOf({0, 0}, {12, 30})})), 820, 1e-6);
    EXPECT_NEAR(AreaOf(Difference(BoxOf({0, 0}, {30, 30}), ring)), 100, 1e-6);
}

TEST(Region, PolygonsOfBothTurningsAndCrossingOnes)
{
    EXPECT_NEAR(AreaOf(Polygon({{0, 0}, {10, 0}, {10, 10}})), 50, 1e-6);
    EXPECT_NEAR(AreaOf(Polygon({{10, 10}, {10, 0}, {0, 0}})), 50, 1e-6);
    EXPECT_NEAR(AreaOf(Polygon({{0, 0}, {10, 10}, {10, 0}, {0, 10}})), 50, 1e-6);
}

TEST(Region, ContoursOfArcsWithAHole)
{
    const std::vector<Move> outside = ways::Joined(
        {0, 0}, {LineTo(20, 0), ArcTo(20, 10, {20, 5}, 180), LineTo(0, 10), ArcTo(0, 0, {0, 5}, 180)});
    const std::vector<Move> hole = ways::Joined({12, 5}, {ArcTo(12, 5, {10, 5}, -360)});
    EXPECT_NEAR(AreaOf(Inside({outside})), 200 + Circle * 25, ChordArea);
    EXPECT_NEAR(AreaOf(Inside({outside, hole})), 200 + Circle * 21, ChordArea);
    EXPECT_FALSE(Holds(Inside({outside, hole}), {10, 5}));
}

TEST(Region, GrowsAndShrinksWithRoundCorners)
{
    const Region box = BoxOf({0, 0}, {20, 10});
    EXPECT_NEAR(AreaOf(Grown(box, 2)), 200 + 60 * 2 + Circle * 4, ChordArea);
    EXPECT_NEAR(AreaOf(Shrunk(box, 2)), 16 * 6, 1e-6);
    EXPECT_NEAR(AreaOf(ReachedBy(box, 4)), 200 - (4 - Circle) * 4, ChordArea);
    EXPECT_TRUE(Shrunk(box, 5).IsEmpty());
    const Region ring = Difference(BoxOf({-10, -10}, {30, 20}), box);
    EXPECT_NEAR(AreaOf(Shrunk(ring, 1)), 38 * 28 - (200 + 60 + Circle), ChordArea);
}

TEST(Region, WidthIsThatOfTheWidestPlace)
{
    const Region wedge = Union(BoxOf({0, 0}, {10, 0.2}), BoxOf({4, 0}, {4.5, 3}));
    EXPECT_TRUE(IsWiderThan(wedge, 0.45));
    EXPECT_FALSE(IsWiderThan(wedge, 0.55));
    EXPECT_FALSE(IsWiderThan({}, 0.001));
}

TEST(Region, PiecesComeBySizeEachWithAPlaceInIt)
{
    const Region ring = Difference(BoxOf({0, 0}, {30, 30}), BoxOf({1, 1}, {29, 29}));
    const Region all = Union(std::vector<Region>{ring, BoxOf({10, 10}, {20, 20}), BoxOf({40, 0}, {50, 1.5})});
    const std::vector<RegionPiece> pieces = PiecesOf(all);
    ASSERT_EQ(pieces.size(), 3U);
    EXPECT_NEAR(pieces[0].Area, 900 - 784, 1e-6);
    EXPECT_NEAR(pieces[1].Area, 100, 1e-6);
    EXPECT_NEAR(pieces[2].Area, 15, 1e-6);
    for (const RegionPiece& piece : pieces)
        EXPECT_TRUE(Holds(piece.Itself, piece.Inside)) << piece.Inside.X << " " << piece.Inside.Y;
    EXPECT_FALSE(Holds(pieces[0].Itself, pieces[1].Inside));
    EXPECT_EQ(Described(all, 2).substr(0, 11), "116 mm2 at ");
    EXPECT_NE(Described(all, 2).find(", 100 mm2 at X15 Y"), std::string::npos) << Described(all, 2);
    EXPECT_NE(Described(all, 2).find(" and 1 more"), std::string::npos);
    EXPECT_EQ(Described({}), "");
}

TEST(Region, LinesSweepCapsulesAndArcsBands)
{
    const RouterCut line = CutOf(0, 3, {0, 0}, {LineTo(20, 0)});
    EXPECT_NEAR(AreaOf(SweptBy(WayOf(line))), 120 + Circle * 9, ChordArea);
    const RouterCut quarter = CutOf(0, 3, {20, 0}, {ArcTo(0, 20, {0, 0}, 90)});
    EXPECT_NEAR(AreaOf(SweptBy(WayOf(quarter))), Circle / 4 * (23 * 23 - 17 * 17) + Circle * 9, ChordArea);
    const RouterCut circle = CutOf(0, 3, {20, 0}, {ArcTo(20, 0, {0, 0}, -360)});
    EXPECT_NEAR(AreaOf(SweptBy(WayOf(circle))), Circle * (23 * 23 - 17 * 17), 2 * ChordArea);
    const RouterCut core = CutOf(0, 3, {2, 0}, {ArcTo(2, 0, {0, 0}, 360)}); // nothing is left in the middle
    EXPECT_NEAR(AreaOf(SweptBy(WayOf(core))), Circle * 25, ChordArea);
    EXPECT_NEAR(AreaOf(SweptBy(WayOf(CutOf(0, 3, {5, 5}, {})))), Circle * 9, ChordArea);
}

TEST(Region, SweptAreasAreTakenPlaneByPlaneAndByTheCallersFilters)
{
    MachineSteps steps;
    steps.Cuts = {CutOf(0, 2, {0, 0}, {LineTo(10, 0)}), CutOf(0, 0, {50, 0}, {})};
    steps.Cuts[0].StartDepth = 4;
    steps.Cuts[0].Moves[0].DepthFrom = 4;
    steps.Cuts[0].Moves[0].DepthTo = 6;
    steps.Cuts[1].StartDepth = 10;
    steps.Cuts[1].On = Plane::Edge3;
    const double capsule = 40 + Circle * 4;
    std::map<Plane, Region> areas = SweptAreas(steps, {1, {}});
    EXPECT_EQ(areas.size(), 2U);
    EXPECT_NEAR(AreaOf(areas[Plane::Surface]), capsule, ChordArea);
    EXPECT_NEAR(AreaOf(areas[Plane::Edge3]), Circle, ChordArea);
    EXPECT_NEAR(AreaOf(SweptFace(steps)), capsule, ChordArea);
    EXPECT_NEAR(AreaOf(SweptFace(steps, {0, {}, 5.9})), capsule, ChordArea);
    EXPECT_TRUE(SweptFace(steps, {0, {}, 6.1}).IsEmpty());
    EXPECT_EQ(SweptAreas(steps, {1, {}, 6.1}).size(), 1U);
    const Sweep onEdges{1, [](const RouterCut& cut) { return cut.On != Plane::Surface; }};
    EXPECT_EQ(SweptAreas(steps, onEdges).size(), 1U);
}

} // namespace
} // namespace kv::test
