// The panel out of drawings: outline, edge views, PANEL solid, origin, thickness and unit. Drawings
// as text go through the reader; the state is looked at when the border is settled.
#include <gtest/gtest.h>

#include <algorithm>

#include "job/job_driver.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;

const std::string Aborted = "CONVERSION PROCESS ABORTED.";

class BorderPass : public testing::Test {
  protected:
    // The run block behind the border analysis; the run stops before the writers.
    const RunBlock& Settle(const std::string& entities)
    {
        Stages.StopBeforeWriters = true;
        Reached = false;
        const AtStage look("border", [this] {
            Seen = kv::Run;
            Reached = true;
        });
        Went = Place.Convert(Drawing(entities));
        EXPECT_EQ(Went, Reached) << Place.ReportText();
        return Seen;
    }

    // The report behind the job's name.
    std::vector<std::string> FailedWith(const std::string& entities)
    {
        Settle(entities);
        EXPECT_FALSE(Went);
        EXPECT_FALSE(Reached);
        EXPECT_EQ(kv::Run.FailedFiles, (std::vector<std::string>{"", kv::Run.SourceFile}));
        return {Place.Lines.begin() + (Place.Lines.empty() ? 0 : 1), Place.Lines.end()};
    }

    void ExpectSide(std::size_t side, Single minX, Single minY, Single maxX, Single maxY)
    {
        EXPECT_EQ(Seen.SideMinX[side], minX) << "side " << side;
        EXPECT_EQ(Seen.SideMinY[side], minY) << "side " << side;
        EXPECT_EQ(Seen.SideMaxX[side], maxX) << "side " << side;
        EXPECT_EQ(Seen.SideMaxY[side], maxY) << "side " << side;
    }

    void ExpectPresent(const std::vector<std::size_t>& sides)
    {
        for (std::size_t side = 1; side <= 5; ++side) {
            const bool expected = std::find(sides.begin(), sides.end(), side) != sides.end();
            EXPECT_EQ(Seen.SidePresent[side], expected ? True : False) << "side " << side;
        }
    }

    Scene Place;
    RunBlock Seen;
    bool Went = false, Reached = false;
};

std::string Outline(const std::vector<Vertex>& vertices, const std::string& header = "")
{
    return Polyline("BORDER", vertices, header);
}

// Face (200, 200) to (800, 600); views above, below, left and right of 16, 17, 18 and 19.
std::string Face()
{
    return Rectangle("BORDER", 200, 200, 600, 400);
}
std::string ViewAbove()
{
    return Rectangle("BORDER", 200, 700, 600, 16);
}
std::string ViewBelow()
{
    return Rectangle("BORDER", 200, 100, 600, 17);
}
std::string ViewLeft()
{
    return Rectangle("BORDER", 100, 200, 18, 400);
}
std::string ViewRight()
{
    return Rectangle("BORDER", 900, 200, 19, 400);
}

// The outline

TEST_F(BorderPass, RectangleOfFourLinesHasFourPoints)
{
    Settle(Rectangle("BORDERZ18", 100, 50, 600, 400));
    ExpectSide(5, 100, 50, 700, 450);
    ExpectPresent({5});
    EXPECT_EQ(Seen.SideWidth[5], 600);
    EXPECT_EQ(Seen.SideHeight[5], 400);
    EXPECT_EQ(Seen.OriginX, 100);
    EXPECT_EQ(Seen.OriginY, 50);
    EXPECT_EQ(Seen.SideMarginX, 0);
    EXPECT_EQ(Seen.SideMarginY, 0);
    EXPECT_EQ(Seen.PartThickness, 18);
    EXPECT_EQ(Seen.PanelFound, 0);
    EXPECT_EQ(Seen.DrawingInInch, False);
    EXPECT_EQ(Seen.UnitFactor, 1);
}

TEST_F(BorderPass, RectangleOfOneClosedPolyline)
{
    Settle(Outline({{100, 50}, {700, 50}, {700, 450}, {100, 450}}, Pair(70, "1") + Pair(39, 16)));
    ExpectSide(5, 100, 50, 700, 450);
    ExpectPresent({5});
    EXPECT_EQ(Seen.PartThickness, 16);
}

TEST_F(BorderPass, RectangleOfOneLwpolyline)
{
    Settle(Lwpolyline("BORDERZ19", {{100, 50}, {700, 50}, {700, 450}, {100, 450}}, Pair(70, "1")));
    ExpectSide(5, 100, 50, 700, 450);
    EXPECT_EQ(Seen.PartThickness, 19);
}

TEST_F(BorderPass, FirstVertexRepeatedAtTheEndIsOnePoint)
{
    Settle(Outline({{100, 50}, {700, 50}, {700, 450}, {100, 450}, {100, 50}}));
    EXPECT_TRUE(Went);
    ExpectSide(5, 100, 50, 700, 450);
}

TEST_F(BorderPass, LayerNeedsOnlyHoldTheWord)
{
    Settle(Rectangle("MYBORDER", 100, 50, 600, 400));
    ExpectSide(5, 100, 50, 700, 450);
}

TEST_F(BorderPass, CornersWithinTheToleranceMeet)
{
    // The four corners are off by .0075 in X and Y; the first line's ends stay.
    Settle(Line("BORDER", 100, 50, 700, 50) + Line("BORDER", 700.0075, 50.0075, 700, 450) +
           Line("BORDER", 699.9925, 450.0075, 100, 450) + Line("BORDER", 100.0075, 449.9925, 100, 50));
    EXPECT_TRUE(Went) << Place.ReportText();
    EXPECT_EQ(Seen.SideMinX[5], 100);
    EXPECT_EQ(Seen.SideMaxX[5], 700);
}

TEST_F(BorderPass, OneCornerThatDoesNotMeetMakesFivePoints)
{
    const auto rows = FailedWith(Line("BORDER", 100, 50, 700, 50) + Line("BORDER", 700.01, 50, 700, 450) +
                                 Line("BORDER", 700, 450, 100, 450) + Line("BORDER", 100, 450, 100, 50));
    EXPECT_EQ(rows,
              (std::vector<std::string>{"PART BORDER NOT PROPERLY DEFINED IN DRAWING!!!",
                                        "Check for stray entities on Border Layer.   5", Aborted,
                                        "Layer BORDER: an end of the border at X700 Y50 meets no other",
                                        "Layer BORDER: an end of the border at X700.01 Y50 meets no other"}));
}

TEST_F(BorderPass, NoCornerMeetsAndTheRestCountAsSideViews)
{
    // Eight points. The face is (100, 100.02) to (699.98, 500): two points lie below it, three to its
    // right.
    const auto rows =
        FailedWith(Line("BORDER", 100, 100, 700, 100) + Line("BORDER", 700, 100.02, 700, 500) +
                   Line("BORDER", 699.98, 500, 100, 500) + Line("BORDER", 100, 499.98, 100, 100.02));
    EXPECT_EQ(rows, (std::vector<std::string>{
                        "ERROR in Border Sides for Horizontal operations", Aborted,
                        "Layer BORDER: 8 ends of the border meet no other, the first at X100 Y100"}));
}

TEST_F(BorderPass, StrayShortLineFailsWithTheCountSix)
{
    const auto rows = FailedWith(Rectangle("BORDER", 100, 50, 600, 400) + Line("BORDER", 300, 200, 305, 200));
    EXPECT_EQ(rows,
              (std::vector<std::string>{"PART BORDER NOT PROPERLY DEFINED IN DRAWING!!!",
                                        "Check for stray entities on Border Layer.   6", Aborted,
                                        "Layer BORDER: an end of the border at X300 Y200 meets no other",
                                        "Layer BORDER: an end of the border at X305 Y200 meets no other"}));
    EXPECT_FALSE(Place.HasProgram());
}

TEST_F(BorderPass, NoBorderAtAll)
{
    const auto rows = FailedWith(Line("ROUTE1Z5", 0, 0, 100, 0));
    EXPECT_EQ(rows, (std::vector<std::string>{"Part BORDER or BORDER Layer NOT Found!!!", Aborted}));
}

TEST_F(BorderPass, PolylineOfFlagsFourIsPassedOver)
{
    const auto rows = FailedWith(Outline({{100, 50}, {700, 50}, {700, 450}, {100, 450}}, Pair(70, "4")));
    EXPECT_EQ(rows, (std::vector<std::string>{"Part BORDER or BORDER Layer NOT Found!!!", Aborted}));
}

TEST_F(BorderPass, PolylineOfFlagsFiveIsTaken)
{
    Settle(Outline({{100, 50}, {700, 50}, {700, 450}, {100, 450}}, Pair(70, "5")));
    ExpectSide(5, 100, 50, 700, 450);
}

TEST_F(BorderPass, EofEntityEndsTheWalk)
{
    Settle(Rectangle("BORDER", 100, 50, 600, 400) + Pair(0, "EOF") + Line("BORDER", 0, 0, 5, 5));
    EXPECT_TRUE(Went) << Place.ReportText();
    ExpectSide(5, 100, 50, 700, 450);
}

TEST_F(BorderPass, PolylineWithoutSeqendFailsAndNamesItsLayer)
{
    Settle(Pair(0, "POLYLINE") + Pair(8, "BORDERX") + Pair(0, "VERTEX") + Pair(10, 5) + Pair(20, 5) +
           Point("DRILL", 3, 3));
    EXPECT_FALSE(Went);
    ASSERT_FALSE(Place.Lines.empty());
    EXPECT_NE(Place.Lines.back().find("Polyline without SEQEND on layer BORDERX"), std::string::npos)
        << Place.ReportText();
}

TEST_F(BorderPass, PointOnTheMidLinePassesNoQuadrantTest)
{
    // A vertex in the middle of each side: eight points, the corners alone make the face.
    Settle(Outline(
        {{200, 100}, {300, 150}, {200, 200}, {100, 150}, {100, 100}, {300, 100}, {300, 200}, {100, 200}}));
    EXPECT_TRUE(Went) << Place.ReportText();
    ExpectSide(5, 100, 100, 300, 200);
    ExpectPresent({5});
}

TEST_F(BorderPass, PointsOnMidLinesAloneReadAsAPanelOfNothing)
{
    Settle(Outline({{200, 100}, {300, 150}, {200, 200}, {100, 150}}));
    ExpectSide(5, 0, 0, 0, 0);
    EXPECT_EQ(Seen.SideWidth[5], 0);
}

TEST_F(BorderPass, NegativeLowerLeftCornerReadsAsZero)
{
    // Left and lower start at 0: of the four corners only the upper right one is found.
    Settle(Rectangle("BORDER", -700, -500, 600, 400));
    ExpectSide(5, 0, 0, -100, -100);
    EXPECT_EQ(Seen.OriginX, 0);
    EXPECT_EQ(Seen.OriginY, 0);
    EXPECT_EQ(Seen.SideWidth[5], -100);
    EXPECT_EQ(Seen.DrawingInInch, True);
}

TEST_F(BorderPass, NegativeInYAloneLosesTheWholeCorner)
{
    Settle(Rectangle("BORDER", 100, -50, 600, 400));
    ExpectSide(5, 0, 0, 700, 350);
}

TEST_F(BorderPass, ShiftOfALayerRenameBringsThePanelIntoThePositiveQuadrant)
{
    Settle(Instructions({"LAYER A=B"}) + Rectangle("BORDER", -700, -500, 600, 400));
    ExpectSide(5, 0, 0, 600, 400);
}

// The four corner tests share their limits: each of these outlines loses a corner to a point of
// another quadrant that stands before it. With limits of its own for each test the face would be
// found.

TEST_F(BorderPass, UpperLeftPointFurtherInHidesTheLowerLeftCorner)
{
    Settle(Outline({{150, 500}, {100, 100}, {700, 100}, {700, 500}}));
    ExpectSide(5, 0, 0, 700, 500);
}

TEST_F(BorderPass, TheSameOutlineFromItsLowerLeftCornerOnIsFound)
{
    Settle(Outline({{100, 100}, {700, 100}, {700, 500}, {150, 500}}));
    ExpectSide(5, 100, 100, 700, 500);
}

TEST_F(BorderPass, LowerRightPointFurtherInHidesTheUpperRightCorner)
{
    Settle(Outline({{100, 100}, {600, 100}, {700, 500}, {100, 500}}));
    ExpectSide(5, 100, 100, 0, 0);
    EXPECT_EQ(Seen.SideWidth[5], -100);
}

TEST_F(BorderPass, HigherLowerRightPointHidesTheLowerLeftCorner)
{
    Settle(Outline({{700, 120}, {700, 500}, {100, 500}, {100, 100}}));
    ExpectSide(5, 0, 0, 700, 500);
}

TEST_F(BorderPass, LowerUpperLeftPointHidesTheUpperRightCorner)
{
    Settle(Outline({{100, 480}, {100, 100}, {700, 100}, {700, 500}}));
    ExpectSide(5, 100, 100, 0, 0);
}

// Edge views

TEST_F(BorderPass, ViewsOnAllFourSides)
{
    Settle(Face() + ViewAbove() + ViewBelow() + ViewLeft() + ViewRight());
    ASSERT_TRUE(Went) << Place.ReportText();
    ExpectPresent({1, 2, 3, 4, 5});
    ExpectSide(1, 200, 700, 800, 716);
    ExpectSide(2, 200, 100, 800, 117);
    ExpectSide(3, 100, 200, 118, 600);
    ExpectSide(4, 900, 200, 919, 600);
    ExpectSide(5, 200, 200, 800, 600);
    EXPECT_EQ(Seen.SideMarginX, 25); // (200 - 100) / 4
    EXPECT_EQ(Seen.SideMarginY, 25);
    EXPECT_EQ(Seen.SideWidth[1], 600);
    EXPECT_EQ(Seen.SideHeight[1], 16);
    EXPECT_EQ(Seen.SideHeight[2], 17);
    EXPECT_EQ(Seen.SideWidth[3], 18);
    EXPECT_EQ(Seen.SideWidth[4], 19);
    EXPECT_EQ(Seen.SideHeight[4], 400);
    EXPECT_EQ(Seen.OriginX, 200);
    EXPECT_EQ(Seen.PartThickness, 19); // the last present view's
}

TEST_F(BorderPass, ViewsDrawnBeforeTheFace)
{
    Settle(ViewRight() + ViewAbove() + ViewBelow() + ViewLeft() + Face());
    ASSERT_TRUE(Went) << Place.ReportText();
    ExpectPresent({1, 2, 3, 4, 5});
    ExpectSide(5, 200, 200, 800, 600);
}

TEST_F(BorderPass, ThicknessOfViewsAboveAndBelowIsTheirHeight)
{
    Settle(Face() + ViewBelow() + ViewAbove());
    ExpectPresent({1, 2, 5});
    EXPECT_EQ(Seen.PartThickness, 17); // side 2 comes behind side 1, whatever the drawing's order
}

TEST_F(BorderPass, ThicknessOfTheViewAboveAlone)
{
    Settle(Face() + ViewAbove());
    ExpectPresent({1, 5});
    EXPECT_EQ(Seen.PartThickness, 16);
    EXPECT_EQ(Seen.SideMarginX, 0);
    EXPECT_EQ(Seen.SideMarginY, 0); // nothing lies below or left of the face
}

TEST_F(BorderPass, SideWithSixPointsFails)
{
    // The view above has two points more; two inside the face bring the count to twelve.
    const auto rows = FailedWith(Face() + ViewAbove() + Line("BORDER", 300, 708, 400, 708) +
                                 Line("BORDER", 500, 300, 500, 350));
    EXPECT_EQ(rows, (std::vector<std::string>{
                        "ERROR in Border Sides for Horizontal operations", Aborted,
                        "Layer BORDER: 4 ends of the border meet no other, the first at X300 Y708"}));
}

TEST_F(BorderPass, SideWithEightPointsFailsSinceItsCountStopsAtSix)
{
    const auto rows = FailedWith(Face() + ViewAbove() + Rectangle("BORDER", 200, 720, 600, 16));
    EXPECT_EQ(rows, (std::vector<std::string>{
                        "ERROR in Border Sides for Horizontal operations", Aborted,
                        "Layer BORDER: outside the face on side 1 are 8 corners, the first at X200 Y700; a "
                        "view of an edge has 4"}));
}

TEST_F(BorderPass, PointsThatHitTwoSidesMarkTheLastOneAlone)
{
    // A view off the upper right corner lies above the face and to its right.
    Settle(Face() + Rectangle("BORDER", 900, 700, 30, 18));
    ASSERT_TRUE(Went) << Place.ReportText();
    ExpectPresent({4, 5});
    ExpectSide(1, 900, 700, 930, 718); // widened, yet not present
    ExpectSide(4, 900, 700, 930, 718);
    EXPECT_EQ(Seen.SideWidth[1], 0);
    EXPECT_EQ(Seen.PartThickness, 30);
}

TEST_F(BorderPass, PointsUpToTheMarginBelongToNoView)
{
    // The margin is 25 with a view below: a rectangle that ends at 625 is no view above.
    Settle(Face() + ViewBelow() + Rectangle("BORDER", 200, 610, 600, 15));
    ASSERT_TRUE(Went) << Place.ReportText();
    ExpectPresent({2, 5});
    EXPECT_EQ(Seen.SideMarginY, 25);
}

TEST_F(BorderPass, PointsBeyondTheMarginHit)
{
    // Two of its four points lie above 625.
    const auto rows = FailedWith(Face() + ViewBelow() + Rectangle("BORDER", 200, 610, 600, 15.5));
    EXPECT_EQ(rows, (std::vector<std::string>{
                        "ERROR in Border Sides for Horizontal operations", Aborted,
                        "Layer BORDER: outside the face on side 1 are 2 corners, the first at X800 Y625.5; a "
                        "view of an edge has 4"}));
}

TEST_F(BorderPass, APolylineThatIsNoRectangleIsNamed)
{
    const auto rows =
        FailedWith(Face() + Polyline("BORDER", {{300, 200}, {400, 200}, {400, 300}, {350, 350}, {300, 300}}));
    EXPECT_EQ(rows, (std::vector<std::string>{
                        "PART BORDER NOT PROPERLY DEFINED IN DRAWING!!!",
                        "Check for stray entities on Border Layer.   9", Aborted,
                        "Layer BORDER: the polyline at X300 Y200 has 5 corners, no rectangle"}));
}

TEST_F(BorderPass, APolylineOnCornersOfTheFaceKeepsItsOwnCount)
{
    // Three corners, two of them the face's: six points.
    const auto rows = FailedWith(Polyline("BORDER", {{100, 100}, {700, 100}, {700, 500}, {100, 500}}) +
                                 Polyline("BORDER", {{100, 100}, {700, 100}, {300, 300}, {350, 350}}));
    EXPECT_EQ(rows, (std::vector<std::string>{"PART BORDER NOT PROPERLY DEFINED IN DRAWING!!!",
                                              "Check for stray entities on Border Layer.   6", Aborted}));
}

// Thickness

TEST_F(BorderPass, ThicknessOfTheLayerWinsOverTheLines)
{
    Settle(Polyline("BORDERZ22", {{100, 50}, {700, 50}, {700, 450}, {100, 450}}, Pair(39, 16)));
    EXPECT_EQ(Seen.PartThickness, 22);
}

TEST_F(BorderPass, ThicknessOfTheLinesWinsOverTheirZ)
{
    const std::string more = Pair(39, -16) + Pair(30, -25);
    Settle(Line("BORDER", 100, 50, 700, 50, more) + Line("BORDER", 700, 450, 100, 450, more));
    EXPECT_EQ(Seen.PartThickness, 16); // without its sign
}

TEST_F(BorderPass, ZOfTheLinesIsTheThicknessWhenNothingElseTellsIt)
{
    const std::string more = Pair(30, -25);
    Settle(Line("BORDER", 100, 50, 700, 50, more) + Line("BORDER", 700, 450, 100, 450, more));
    EXPECT_EQ(Seen.PartThickness, 25);
}

TEST_F(BorderPass, ThicknessOfTheLastBorderEntityWins)
{
    Settle(Line("BORDERZ18", 100, 50, 700, 50) + Line("BORDERZ19", 700, 450, 100, 450));
    EXPECT_EQ(Seen.PartThickness, 19);
}

TEST_F(BorderPass, ThicknessOfTheLinesWinsOverTheViews)
{
    Settle(Rectangle("BORDERZ22", 200, 200, 600, 400) + Rectangle("BORDERZ22", 200, 700, 600, 16));
    EXPECT_EQ(Seen.PartThickness, 22);
}

TEST_F(BorderPass, ThicknessOfADrawingIsNotLeftToTheNext)
{
    Settle(Outline({{100, 50}, {700, 50}, {700, 450}, {100, 450}}, Pair(39, 16)));
    EXPECT_EQ(Seen.PartThickness, 16);
    Settle(Rectangle("BORDER", 100, 50, 600, 400));
    EXPECT_EQ(Seen.PartThickness, 0);
}

// PANEL solid

TEST_F(BorderPass, PanelSolidGivesThePanel)
{
    Settle(PanelSolid("PANEL", 100, 50, 600, 400, -18));
    ExpectSide(5, 100, 50, 700, 450);
    ExpectPresent({});
    EXPECT_EQ(Seen.PanelFound, 1);
    EXPECT_EQ(Seen.SideWidth[5], 600);
    EXPECT_EQ(Seen.SideHeight[5], 400);
    EXPECT_EQ(Seen.PartThickness, 18);
    EXPECT_EQ(Seen.OriginX, 100);
    EXPECT_EQ(Seen.OriginY, 50);
}

TEST_F(BorderPass, PanelSolidOfSwappedCornersIsPutRight)
{
    Settle(PanelSolid("MYPANEL", 700, 450, -600, -400, 18));
    ExpectSide(5, 100, 50, 700, 450);
    EXPECT_EQ(Seen.SideWidth[5], 600);
    EXPECT_EQ(Seen.SideHeight[5], 400);
}

TEST_F(BorderPass, PanelSolidOfNoArea)
{
    const auto rows =
        FailedWith(PanelSolid("PANEL", 100, 50, 600, 0, 18) + Rectangle("BORDER", 100, 50, 600, 400));
    EXPECT_EQ(rows, (std::vector<std::string>{"Part BORDER or PANEL Layer NOT Found!!!", Aborted}));
}

TEST_F(BorderPass, PanelSolidInTheNegativeQuadrant)
{
    Settle(PanelSolid("PANEL", -600, -400, 600, 400, 18));
    ExpectSide(5, -600, -400, 0, 0);
    EXPECT_EQ(Seen.OriginX, -600);
    EXPECT_EQ(Seen.OriginY, -400);
    EXPECT_EQ(Seen.SideWidth[5], 600);
}

TEST_F(BorderPass, LinesOnBorderBesideASolidWidenExtentsAndSetTheThickness)
{
    Settle(PanelSolid("PANEL", 100, 50, 600, 400, 18) + Line("BORDERZ25", 60, 40, 900, 45));
    ASSERT_TRUE(Went) << Place.ReportText(); // two points are no fault here
    ExpectSide(5, 60, 40, 900, 450);
    EXPECT_EQ(Seen.OriginX, 60);
    EXPECT_EQ(Seen.OriginY, 40);
    EXPECT_EQ(Seen.SideWidth[5], 600); // the solid's
    EXPECT_EQ(Seen.SideHeight[5], 400);
    EXPECT_EQ(Seen.PartThickness, 25);
}

TEST_F(BorderPass, SolidBehindTheBorderOverridesIt)
{
    Settle(Rectangle("BORDERZ25", 60, 40, 900, 500) + PanelSolid("PANEL", 100, 50, 600, 400, 18));
    ExpectSide(5, 100, 50, 700, 450);
    EXPECT_EQ(Seen.PartThickness, 18);
    ExpectPresent({});
}

TEST_F(BorderPass, LaterSolidOverrides)
{
    Settle(PanelSolid("PANEL", 100, 50, 600, 400, 18) + PanelSolid("PANEL", 10, 20, 300, 250, 16));
    ExpectSide(5, 10, 20, 310, 270);
    EXPECT_EQ(Seen.SideWidth[5], 300);
    EXPECT_EQ(Seen.PartThickness, 16);
}

TEST_F(BorderPass, SolidOnAnotherLayerIsNoPanel)
{
    const auto rows = FailedWith(PanelSolid("HATCH", 100, 50, 600, 400, 18));
    EXPECT_EQ(rows, (std::vector<std::string>{"Part BORDER or BORDER Layer NOT Found!!!", Aborted}));
}

TEST_F(BorderPass, ThirdCornerOfASolidIsNotScaled)
{
    // X 100 to 400 and the upper Y 250 are doubled, the lower Y 50 of group 22 is not.
    Settle(Instructions({"SCALE=2"}) + PanelSolid("PANEL", 100, 50, 300, 200, 9));
    ExpectSide(5, 200, 50, 800, 500);
    EXPECT_EQ(Seen.PartThickness, 18);
}

// Units

TEST_F(BorderPass, PanelOf199By99ReadsAsInch)
{
    Settle(Rectangle("BORDERZ18", 100, 50, 199, 99));
    EXPECT_EQ(Seen.DrawingInInch, True);
    EXPECT_EQ(Seen.UnitFactor, 25.4F);
}

TEST_F(BorderPass, WidthOfExactly200IsMetric)
{
    Settle(Rectangle("BORDERZ18", 100, 50, 200, 99));
    EXPECT_EQ(Seen.DrawingInInch, False);
    EXPECT_EQ(Seen.UnitFactor, 1);
}

TEST_F(BorderPass, HeightOfExactly100IsMetric)
{
    Settle(Rectangle("BORDERZ18", 100, 50, 199, 100));
    EXPECT_EQ(Seen.DrawingInInch, False);
}

TEST_F(BorderPass, UnitModeForcesInchOnABigPanel)
{
    Config.UnitMode = "1";
    Settle(Rectangle("BORDERZ18", 100, 50, 600, 400));
    EXPECT_EQ(Seen.DrawingInInch, True);
    EXPECT_EQ(Seen.UnitFactor, 25.4F);
}

TEST_F(BorderPass, UnitModeForcesMetricOnASmallPanel)
{
    Config.UnitMode = "2";
    Settle(Rectangle("BORDERZ18", 100, 50, 30, 20));
    EXPECT_EQ(Seen.DrawingInInch, False);
}

TEST_F(BorderPass, ToleranceIsTheSettingOrATenth)
{
    for (const char* blank : {"", "0", "none"}) {
        Config.RouteTolerance = blank;
        Settle(Rectangle("BORDERZ18", 100, 50, 600, 400));
        EXPECT_EQ(Seen.RouteTolerance, 0.1F) << blank;
    }
    Config.RouteTolerance = "0.5";
    Settle(Rectangle("BORDERZ18", 100, 50, 600, 400));
    EXPECT_EQ(Seen.RouteTolerance, 0.5F);
}

TEST_F(BorderPass, ToleranceOfAnInchDrawingIsDividedBy25Point4)
{
    Config.RouteTolerance = "0.5";
    Settle(Rectangle("BORDERZ1", 5, 5, 30, 20));
    EXPECT_EQ(Seen.RouteTolerance, 0.5F / 25.4F);
    Config.RouteTolerance = "";
    Settle(Rectangle("BORDERZ1", 5, 5, 30, 20));
    EXPECT_EQ(Seen.RouteTolerance, 0.1F / 25.4F);
}

TEST_F(BorderPass, SettingOfTheToleranceDoesNotJoinBorderPoints)
{
    // The points are compared before the setting counts.
    Config.RouteTolerance = "5";
    const auto rows = FailedWith(Line("BORDER", 100, 50, 700, 50) + Line("BORDER", 700.01, 50, 700, 450) +
                                 Line("BORDER", 700, 450, 100, 450) + Line("BORDER", 100, 450, 100, 50));
    ASSERT_GE(rows.size(), 2U);
    EXPECT_EQ(rows[1], "Check for stray entities on Border Layer.   5");
}

// Route layers

TEST_F(BorderPass, RouteLayersStandInTheOrderOfTheirFirstAppearance)
{
    Settle(Line("ROUTEZ5", 1, 1, 2, 2) + Line("VBOREZ5", 1, 1, 2, 2) + Circle("EXCAVZ3", 5, 5, 2) +
           Line("ROUTEZ5", 1, 1, 2, 2) + Rectangle("BORDER", 100, 50, 600, 400) +
           Line("MYROTARX", 1, 1, 2, 2) + Line("ROUTEZ5D4", 1, 1, 2, 2) + TextAt("XROUT", 1, 1, "A") +
           Line("EXCAVZ3", 1, 1, 2, 2));
    EXPECT_EQ(Seen.LayerTable,
              (std::vector<std::string>{"BORDER", "VBORE DRILLING", "GROOVE", "HBORE", "ROUTEZ5", "EXCAVZ3",
                                        "MYROTARX", "ROUTEZ5D4", "XROUT"}));
}

} // namespace
} // namespace kv
