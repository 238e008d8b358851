// Where a program's work lies on the sheet, how it is grouped and what is said of it.
#include "scene/scene.h"

#include <cmath>
#include <stdexcept>

#include <gtest/gtest.h>

#include "machine/program_reader.h"

namespace kv::test {
namespace {

Scene SceneOfLines(const std::string& lines)
{
    return SceneOf(ReadProgram("G71X600Y400Z20T00N4L1\n" + lines));
}

const SceneView& ViewOn(const Scene& scene, Plane plane)
{
    for (const SceneView& view : scene.Views)
        if (view.On == plane)
            return view;
    throw std::out_of_range("no such view");
}

bool IsIn(const SheetBox& box, const PathPoint& point)
{
    return point.X >= box.X && point.X <= box.X + box.Width && point.Y >= box.Y &&
           point.Y <= box.Y + box.Height;
}

TEST(Scenes, AnEmptyPanelHasItsFaceAndFourEdges)
{
    const Scene scene = SceneOfLines("M2\n");
    ASSERT_EQ(scene.Views.size(), 5U);
    const SheetBox& face = scene.Views[0].Box;
    EXPECT_EQ(scene.Views[0].On, Plane::Surface);
    EXPECT_EQ(face.Width, 600);
    EXPECT_EQ(face.Height, 400);
    EXPECT_EQ(ViewOn(scene, Plane::Edge1).Box.Y, 425);
    EXPECT_EQ(ViewOn(scene, Plane::Edge2).Box.Y, -45);
    EXPECT_EQ(ViewOn(scene, Plane::Edge3).Box.X, -45);
    EXPECT_EQ(ViewOn(scene, Plane::Edge4).Box.X, 625);
    EXPECT_EQ(ViewOn(scene, Plane::Edge4).Box.Width, 20);
    EXPECT_TRUE(scene.Items.empty());
}

// Each edge is folded along its line with the face: 4 mm below the face is 4 mm from the near side of its
// box.
TEST(Scenes, BoresOfEdgesLieInTheirFoldedEdges)
{
    const Scene scene = SceneOfLines("G81G90G55P1R54=8X100Y30Z4\nG81G90G55P2R54=8X100Y30Z4\n"
                                     "G81G90G55P3R54=8X30Y150Z4\nG81G90G55P4R54=8X30Y150Z4\n");
    ASSERT_EQ(scene.Items.size(), 4U);
    for (const SceneItem& item : scene.Items) {
        const SceneView& view = ViewOn(scene, item.On);
        EXPECT_EQ(view.Items, 1U);
        EXPECT_TRUE(IsIn(view.Box, item.At)) << static_cast<int>(item.On);
        EXPECT_EQ(item.Depth, 30);
        EXPECT_FALSE(item.IsThrough);
    }
    EXPECT_EQ(scene.Items[0].At.X, 100);
    EXPECT_EQ(scene.Items[0].At.Y, 425 + 4);
    EXPECT_EQ(scene.Items[1].At.Y, -25 - 4);
    EXPECT_EQ(scene.Items[2].At.X, -25 - 4);
    EXPECT_EQ(scene.Items[2].At.Y, 150);
    EXPECT_EQ(scene.Items[3].At.X, 625 + 4);
}

TEST(Scenes, ABoreAsDeepAsThePanelIsThrough)
{
    const Scene scene = SceneOfLines("G81G90G55P5R54=8X100Y50Z20\nG81G90G55P5R54=8X100Y80Z19.9\n");
    EXPECT_TRUE(scene.Items[0].IsThrough);
    EXPECT_FALSE(scene.Items[1].IsThrough);
    EXPECT_EQ(GroupText(scene.Groups[0]), "bore, diameter 8, 20 deep (through)");
    EXPECT_EQ(GroupText(scene.Groups[1]), "bore, diameter 8, 19.9 deep");
}

TEST(Scenes, EqualWorkIsOneGroup)
{
    const Scene scene = SceneOfLines("G81G90G55P5R54=8X100Y50Z12\nG81G90G55P5R54=5X100Y60Z12\n"
                                     "G81G90G55P5R54=8X100Y70Z12\n");
    ASSERT_EQ(scene.Groups.size(), 2U);
    EXPECT_EQ(scene.Groups[0].Count, 2U);
    EXPECT_EQ(scene.Items[2].Group, 0U);
    EXPECT_EQ(scene.Groups[1].Width, 5);
}

TEST(Scenes, ARouteHasItsLeadsItsSweptWayAndItsLines)
{
    // Clockwise around 100..200, the tool outside on the left, with straight leads at the lower left corner.
    const Scene scene = SceneOfLines(
        "G88G90G55P5T0171G41R5X80Y80Z8\nG1G90F5000X100Y100Z8\nG1G90F5000X100Y200Z8\n"
        "G1G90F5000X200Y200Z8\nG1G90F5000X200Y100Z8\nG1G90F5000X100Y100Z8\nG1G90F5000X80Y80Z8\n");
    ASSERT_EQ(scene.Items.size(), 1U);
    const SceneItem& route = scene.Items[0];
    EXPECT_EQ(route.Shape, WorkShape::Route);
    EXPECT_EQ(route.Line, 2U);
    EXPECT_EQ(route.LastLine, 8U);
    EXPECT_EQ(route.LeadIn, 1U);
    EXPECT_EQ(route.LeadOut, 1U);
    EXPECT_EQ(route.Width, 10);
    ASSERT_FALSE(route.Swept.empty());
    double left = 600;
    for (const Move& move : route.Swept)
        left = std::min(left, move.To.X);
    EXPECT_LE(left, 95.001) << "beside the wall at X100";
    EXPECT_EQ(ItemSentence(route),
              "Lines 2 to 8: route, tool 0171, diameter 10, left of the line, 8 deep, feed 5000");
}

TEST(Scenes, ARouteWithoutLeadsHasNone)
{
    const Scene scene = SceneOfLines("G88G90G55P5T0171G41R5X100Y100Z8\nG1G90X300Y100Z8\nG1G90X300Y200Z8\n"
                                     "G1G90X250Y220Z8\n");
    EXPECT_EQ(scene.Items[0].LeadIn + scene.Items[0].LeadOut, 0U);
}

TEST(Scenes, ArcsOfFoldedEdgesBendTheOtherWayWhereTheEdgeIsTurnedOver)
{
    // The same arc seen from outside in edges 1 and 2.
    for (const int side : {1, 2}) {
        const Scene scene =
            SceneOfLines("G88G90G55P" + std::to_string(side) + "T0171X100Y5Z10\nG37G90X120Y5Z10U10\n");
        ASSERT_EQ(scene.Items.size(), 1U);
        ASSERT_EQ(scene.Items[0].Way.size(), 1U);
        const Move& arc = scene.Items[0].Way[0];
        ASSERT_TRUE(arc.IsArc);
        EXPECT_NEAR(Between(arc.Centre, arc.From), 10, 1e-9);
        EXPECT_NEAR(Between(arc.Centre, arc.To), 10, 1e-9);
        const double end = (DirectionTo(arc.Centre, arc.From) + arc.Sweep) * Degree;
        EXPECT_NEAR(arc.Centre.X + 10 * std::cos(end), arc.To.X, 1e-6) << side;
        EXPECT_NEAR(arc.Centre.Y + 10 * std::sin(end), arc.To.Y, 1e-6) << side;
    }
}

TEST(Scenes, SawCutsLieBesideTheirLine)
{
    MachineSteps steps = ReadProgram("G71X600Y400Z20T00N4L1\nG85G41G55P5T0161X10Y50Z8Q500\n");
    ASSERT_EQ(steps.Saws.size(), 1U);
    steps.Saws[0].Width = 4;
    const Scene scene = SceneOf(steps);
    EXPECT_EQ(scene.Items[0].Way[0].From.Y, 50);
    EXPECT_EQ(scene.Items[0].Swept[0].From.Y, 52);
    EXPECT_EQ(scene.Items[0].Swept[0].To.X, 500);
}

TEST(Scenes, RapidWaysLeadFromWorkToWorkOfOnePlane)
{
    const Scene scene = SceneOfLines("G81G90G55P5R54=8X100Y50Z12\nG88G90G55P5T0171X10Y20Z5\nG1G90X110Y20Z5\n"
                                     "G81G90G55P1R54=8X100Y30Z4\nG81G90G55P5R54=8X300Y50Z12\n");
    ASSERT_EQ(scene.Rapids.size(), 1U);
    EXPECT_EQ(scene.Rapids[0].From.X, 100);
    EXPECT_EQ(scene.Rapids[0].To.X, 10);
    EXPECT_EQ(scene.Rapids[0].Line, 3U);
}

TEST(Scenes, EdgesAreFoldedClearOfWhatReachesBeyondTheFace)
{
    const Scene scene = SceneOfLines("G88G90G55P5T0171X300Y-60Z5\nG1G90X300Y100Z5\n");
    EXPECT_EQ(scene.EdgeGap, 70);
    EXPECT_EQ(ViewOn(scene, Plane::Edge2).Box.Y, -90);
    EXPECT_LE(scene.Sheet.Y, -90);
    const Scene far = SceneOfLines("G88G90G55P5T0171X300Y-60000Z5\nG1G90X300Y100Z5\n");
    EXPECT_EQ(far.EdgeGap, 300);
    EXPECT_LE(far.Sheet.Y, -60000);
}

TEST(Scenes, OfNothingIsASheet)
{
    const Scene scene = SceneOf(ReadProgram(""));
    EXPECT_TRUE(scene.Items.empty());
    EXPECT_GT(scene.Sheet.Width, 0);
    EXPECT_GT(scene.Sheet.Height, 0);
}

TEST(LengthsForPeople, HaveNoZerosBehind)
{
    EXPECT_EQ(LengthForPeople(12), "12");
    EXPECT_EQ(LengthForPeople(12.5), "12.5");
    EXPECT_EQ(LengthForPeople(0.0004), "0");
    EXPECT_EQ(LengthForPeople(-0.0001), "0");
    EXPECT_EQ(LengthForPeople(1.23456), "1.235");
}

} // namespace
} // namespace kv::test
