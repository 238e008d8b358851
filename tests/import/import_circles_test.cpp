// What is drawn as something else than the circle that it is, and what only looks like one.
#include <cmath>
#include <numbers>

#include "import/import_scene.h"

namespace kv::test {
namespace {

struct ImportCircles : ImportScene {
    static std::vector<Vertex> Polygon(int corners, double x, double y, double radius)
    {
        std::vector<Vertex> vertices;
        for (int i = 0; i < corners; ++i) {
            const double turn = 2 * std::numbers::pi * i / corners;
            vertices.push_back({x + radius * std::cos(turn), y + radius * std::sin(turn)});
        }
        return vertices;
    }
    static void ExpectBore(const std::vector<DxfEntity>& records, double x, double y, double radius)
    {
        ASSERT_EQ(KindsOf(records), "CIRCLE");
        EXPECT_NEAR(records[0].X1, x, 1e-3);
        EXPECT_NEAR(records[0].Y1, y, 1e-3);
        EXPECT_FLOAT_EQ(records[0].Radius, static_cast<float>(radius));
    }
};

const std::string Closed = Pair(70, 1);

TEST_F(ImportCircles, APolygonWithinTheToleranceOnABoreLayerIsABore)
{
    ExpectBore(Read({.Entities = Lwpolyline("VBORE_Z12", Polygon(180, 300, 200, 17.5), Closed)}), 300, 200,
               17.5);
    ExpectBore(Read({.Entities = Polyline("DRILL_Z12", Polygon(90, 300, 200, 4), Closed)}), 300, 200, 4);
    EXPECT_TRUE(Place.Reported("Layer DRILL_Z12: POLYLINE became a circle of diameter 8"))
        << Place.ReportText();
}

TEST_F(ImportCircles, APolygonBeyondTheToleranceStays)
{
    const auto records = Read({.Entities = Lwpolyline("VBORE_Z12", Polygon(32, 300, 200, 17.5), Closed)});
    EXPECT_EQ(records.at(0).Kind.Trimmed(), "POLYLINE"); // its chords are 0.084 mm inside
    EXPECT_TRUE(Place.Lines.empty()) << Place.ReportText();
}

TEST_F(ImportCircles, TwoHalvesAsOnePolylineAreABore)
{
    ExpectBore(Read({.Entities = Lwpolyline("VBORE_Z12", {{96, 50, 1}, {104, 50, 1}}, Closed)}), 100, 50, 4);
}

TEST_F(ImportCircles, APolylineThatRepeatsItsFirstPointIsStillABore)
{
    std::vector<Vertex> ring = Polygon(180, 300, 200, 17.5);
    ring.push_back(ring.front());
    ExpectBore(Read({.Entities = Lwpolyline("VBORE_Z12", ring, Closed)}), 300, 200, 17.5);
}

TEST_F(ImportCircles, ArcsThatMeetInACircleAreOneBore)
{
    const std::string two = Arc("DRILL_Z10", 50, 300, 4, 30, 210) + Arc("DRILL_Z10", 50, 300, 4, 210, 30);
    ExpectBore(Read({.Entities = two}), 50, 300, 4);
    EXPECT_TRUE(Place.Reported("Layer DRILL_Z10: ring of ARC became a circle of diameter 8"))
        << Place.ReportText();
    const std::string four = Arc("DRILL_Z10", 50, 300, 4, 0, 90) + Arc("DRILL_Z10", 50, 300, 4, 180, 270) +
                             Arc("DRILL_Z10", 50, 300, 4, 270, 360) + Arc("DRILL_Z10", 50, 300, 4, 90, 180);
    ExpectBore(Read({.Entities = four}), 50, 300, 4);
}

TEST_F(ImportCircles, LinesThatMeetInACircleAreOneBore)
{
    const std::vector<Vertex> ring = Polygon(180, 300, 200, 17.5);
    std::string lines;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Vertex &a = ring[i], &b = ring[(i + 1) % ring.size()];
        lines += i % 2 == 0 ? Line("VBORE_Z12", a.X, a.Y, b.X, b.Y) : Line("VBORE_Z12", b.X, b.Y, a.X, a.Y);
    }
    ExpectBore(Read({.Entities = lines}), 300, 200, 17.5);
}

TEST_F(ImportCircles, ArcsOfDifferentLayersAreNoRing)
{
    const auto records =
        Read({.Entities = Arc("DRILL_Z10", 50, 300, 4, 0, 180) + Arc("DRILL_Z12", 50, 300, 4, 180, 360)});
    EXPECT_EQ(KindsOf(records), "ARC ARC");
}

TEST_F(ImportCircles, ALensAndAnOpenRingStay)
{
    EXPECT_EQ(
        KindsOf(Read({.Entities = Arc("DRILL_Z10", 0, 0, 5, 53, 127) + Arc("DRILL_Z10", 0, 8, 5, 233, 307)})),
        "ARC ARC");
    EXPECT_EQ(
        KindsOf(Read({.Entities = Arc("DRILL_Z10", 0, 0, 5, 0, 180) + Arc("DRILL_Z10", 0, 0, 5, 180, 350)})),
        "ARC ARC");
}

TEST_F(ImportCircles, TwoTimesAroundIsNoCircle)
{
    std::vector<Vertex> twice = Polygon(180, 300, 200, 17.5);
    const std::vector<Vertex> once = twice;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(Read({.Entities = Lwpolyline("VBORE_Z12", twice, Closed)}).at(0).Kind.Trimmed(), "POLYLINE");
}

TEST_F(ImportCircles, ARoundPocketIsACircle)
{
    ExpectBore(Read({.Entities = Lwpolyline("EXCAV1_Z5", Polygon(360, 300, 200, 40), Closed)}), 300, 200, 40);
}

TEST_F(ImportCircles, ARoundRouteBecomesTwoArcsInItsOwnSense)
{
    std::vector<Vertex> ring = Polygon(360, 300, 200, 40);
    auto records = Read({.Entities = Lwpolyline("ROUTE1", ring, Closed)});
    ASSERT_EQ(KindsOf(records), "POLYLINE VERTEX VERTEX SEQEND");
    EXPECT_NEAR(records[1].X1, 340, 1e-3) << "it begins where it was drawn to begin";
    EXPECT_EQ(records[1].Bulge, 1);
    std::reverse(ring.begin(), ring.end());
    records = Read({.Entities = Lwpolyline("ROUTE1", ring, Closed)});
    ASSERT_EQ(KindsOf(records), "POLYLINE VERTEX VERTEX SEQEND");
    EXPECT_EQ(records[1].Bulge, -1);
}

TEST_F(ImportCircles, ARouteOfArcsStaysAsItIs)
{
    const auto records = Read({.Entities = Lwpolyline("ROUTE1", {{96, 50, 1}, {104, 50, 1}}, Closed)});
    EXPECT_EQ(KindsOf(records), "POLYLINE VERTEX VERTEX SEQEND");
    EXPECT_TRUE(Place.Lines.empty()) << Place.ReportText();
}

TEST_F(ImportCircles, AMeasuredDiameterIsRoundedToAHundredth)
{
    std::vector<Vertex> rough = Polygon(180, 300, 200, 17.5);
    for (std::size_t i = 0; i < rough.size(); ++i)
        rough[i].X += i % 3 == 0 ? 0.002 : -0.001; // as a program that writes three decimals
    ExpectBore(Read({.Entities = Lwpolyline("VBORE_Z12", rough, Closed)}), 300, 200, 17.5);
}

} // namespace
} // namespace kv::test
