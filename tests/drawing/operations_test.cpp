// Bores, grooves and horizontal bores out of drawings, looked at when the first entity pass is done.
#include "drawing/operations.h"

#include <gtest/gtest.h>

#include "drawing/layer_rules.h"
#include "job/job_driver.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;

template <typename Record> std::vector<Record> CopyOf(RecordArray<Record>& array)
{
    return {array.begin() + 1, array.end()};
}

class Operations : public testing::Test {
  protected:
    // The arrays behind the pass; the panel is (100, 50) to (700, 450).
    void Read(const std::string& entities)
    {
        ReadDrawingOf(Rectangle("BORDERZ18", 100, 50, 600, 400) + entities);
    }

    void ReadDrawingOf(const std::string& entities)
    {
        Stages.StopBeforeWriters = true;
        Config.SawKerf = "8";
        Reached = false;
        const AtStage look("operations", [this] {
            Bores = CopyOf(VBores);
            Saws = CopyOf(Grooves);
            Edges = CopyOf(HBores);
            Lines = CopyOf(HBoreLines);
            Reached = true;
        });
        EXPECT_TRUE(Place.Convert(Drawing(entities))) << Place.ReportText();
        EXPECT_TRUE(Reached);
    }

    Scene Place;
    std::vector<VBoreRecord> Bores;
    std::vector<GrooveRecord> Saws;
    std::vector<HBoreRecord> Edges;
    std::vector<HBoreLineRecord> Lines;
    bool Reached = false;
};

std::string Normal(double x, double y, double z)
{
    return Pair(210, x) + Pair(220, y) + Pair(230, z);
}

// Vertical bores

TEST_F(Operations, CodedDiameterReplacesTheCircles)
{
    Read(Circle("VBORE D5Z12", 150, 90, 4));
    ASSERT_EQ(Bores.size(), 1U);
    EXPECT_EQ(Bores[0].X, 50);
    EXPECT_EQ(Bores[0].Y, 40);
    EXPECT_EQ(Bores[0].Diameter, 5);
    EXPECT_EQ(Bores[0].Depth, 12);
    EXPECT_EQ(Bores[0].Group, 1);
}

TEST_F(Operations, CircleWithoutCodesTakesItsRadiusAndThickness)
{
    Read(Circle("DRILLING", 150, 90, 4, Pair(39, -15)));
    ASSERT_EQ(Bores.size(), 1U);
    EXPECT_EQ(Bores[0].Diameter, 8);
    EXPECT_EQ(Bores[0].Depth, 15);
}

TEST_F(Operations, CodedDepthWinsOverTheThickness)
{
    Read(Circle("DRILLINGZ7", 150, 90, 4, Pair(39, 15)));
    ASSERT_EQ(Bores.size(), 1U);
    EXPECT_EQ(Bores[0].Depth, 7);
}

TEST_F(Operations, PointTakesNothingFromTheEntity)
{
    Read(Point("DRILL", 150, 90, Pair(39, 15)));
    ASSERT_EQ(Bores.size(), 1U);
    EXPECT_EQ(Bores[0].Depth, 0);
    EXPECT_EQ(Bores[0].Diameter, 0);
    EXPECT_EQ(Bores[0].Group, 1);
}

TEST_F(Operations, AllCodesOfABore)
{
    Read(Point("VBORE Z12.5D8T12S18F3000PD5ES3TBG2", 150, 90));
    ASSERT_EQ(Bores.size(), 1U);
    const VBoreRecord& bore = Bores[0];
    EXPECT_EQ(bore.Depth, 12.5F);
    EXPECT_EQ(bore.Diameter, 8);
    EXPECT_EQ(bore.Group, 2);
    EXPECT_EQ(bore.Speed, 18000);
    EXPECT_EQ(bore.Feed, 3000);
    EXPECT_EQ(bore.Tool, "12");
    EXPECT_EQ(bore.PeckDepth, 5);
    EXPECT_EQ(bore.ExtraSlot, 3);
    EXPECT_EQ(bore.Bottom, 1);
    EXPECT_EQ(bore.Pitch, 0);
}

TEST_F(Operations, FeedDownOfABoreWinsOverItsFeed)
{
    Read(Point("VBORE Z12F3000FD1500", 150, 90));
    ASSERT_EQ(Bores.size(), 1U);
    EXPECT_EQ(Bores[0].Feed, 1500);
}

TEST_F(Operations, GroupZeroIsStoredAsOne)
{
    Read(Point("VBORE Z12G0", 150, 90) + Point("VBORE Z12G5", 150, 90));
    ASSERT_EQ(Bores.size(), 2U);
    EXPECT_EQ(Bores[0].Group, 1);
    EXPECT_EQ(Bores[1].Group, 5);
}

TEST_F(Operations, AnyFiveCharactersOfTheDrillingWordsWillDo)
{
    for (const char* layer : {"RILLI", "VBORE", "DRILL", "DRILLING", "E DRILLZ5", "LLINGXYZ", "RE DRINK"}) {
        Read(Point(layer, 150, 90));
        EXPECT_EQ(Bores.size(), 1U) << layer;
    }
}

TEST_F(Operations, BoreAloneIsADrillingLayerSinceABlankFollowsTheWord)
{
    Read(Point("BORE", 150, 90));
    EXPECT_EQ(Bores.size(), 1U);
    Read(Point("BOREZ5", 150, 90));
    EXPECT_EQ(Bores.size(), 0U);
}

TEST_F(Operations, ShortNamesDoNotMatch)
{
    for (const char* layer : {"DRI", "VBOR", "RILL", "D", "0", "ING"}) {
        Read(Point(layer, 150, 90) + Circle(layer, 150, 90, 4));
        EXPECT_EQ(Bores.size(), 0U) << layer;
        EXPECT_EQ(Edges.size(), 0U) << layer;
    }
}

TEST_F(Operations, LinesOnDrillingLayersMakeNothing)
{
    Read(Line("VBORE Z12", 150, 90, 200, 90) + Polyline("VBORE Z12", {{150, 90}, {160, 90}}));
    EXPECT_EQ(Bores.size(), 0U);
    EXPECT_EQ(Saws.size(), 0U);
    EXPECT_EQ(Lines.size(), 0U);
}

TEST_F(Operations, NoCodeTakesNothing)
{
    Read(Line("BORDERZ18NO", 100, 50, 700, 50) + Point("VBORE Z12", 150, 90));
    EXPECT_EQ(Bores.size(), 0U);
    EXPECT_TRUE(Place.Reported("Code Generation Turned Off in Drawing"));
}

TEST_F(Operations, EofEntityEndsThePass)
{
    Read(Point("VBORE Z12", 150, 90) + Pair(0, "EOF") + Point("VBORE Z12", 160, 90));
    EXPECT_EQ(Bores.size(), 1U);
}

TEST_F(Operations, SpeedBeyondAnIntFailsTheJobAndTellsTheLayer)
{
    const std::string drawing =
        Drawing(Rectangle("BORDERZ18", 100, 50, 600, 400) + Point("VBORE Z12S40000", 150, 90));
    EXPECT_FALSE(Place.Convert(drawing));
    ASSERT_FALSE(Place.Lines.empty());
    EXPECT_NE(Place.Lines.back().find("VBORE Z12S40000"), std::string::npos) << Place.ReportText();
    EXPECT_EQ(VBores.Last(), 0);
}

TEST_F(Operations, MoreBoresThanAnIntCountsFailTheJob)
{
    std::string entities = Rectangle("BORDERZ18", 100, 50, 600, 400);
    for (int bore = 0; bore < 32768; ++bore)
        entities += "0\nPOINT\n8\nDRILL\n";
    EXPECT_FALSE(Place.Convert(Drawing(entities)));
    ASSERT_FALSE(Place.Lines.empty());
    EXPECT_NE(Place.Lines.back().find("More than 32767 vertical bores"), std::string::npos);
}

// Panel in the negative quadrant

TEST_F(Operations, SolidInTheNegativeQuadrantBringsBackTheSignOfCircles)
{
    // Decoding takes the sign of X away where a normal is given, and leaves that of Y.
    ReadDrawingOf(PanelSolid("PANEL", -600, -400, 600, 400, 18) +
                  Circle("VBORE Z5", -550, -350, 4, Normal(0, 0, 1)) + Circle("VBORE Z5", -540, -340, 4) +
                  Circle("VBORE Z5", 530, 330, 4) + Point("VBORE Z5", 520, 320));
    ASSERT_EQ(Bores.size(), 4U);
    EXPECT_EQ(Bores[0].X, 50);
    EXPECT_EQ(Bores[0].Y, 50);
    EXPECT_EQ(Bores[1].X, 60);
    EXPECT_EQ(Bores[1].Y, 60);
    EXPECT_EQ(Bores[2].X, 70);
    EXPECT_EQ(Bores[2].Y, 70);
    EXPECT_EQ(Bores[3].X, 1120); // a point stays where it is
    EXPECT_EQ(Bores[3].Y, 720);
}

TEST_F(Operations, SolidThatIsNegativeInXAloneLeavesY)
{
    ReadDrawingOf(PanelSolid("PANEL", -600, 0, 600, 400, 18) + Circle("VBORE Z5", 550, 30, 4));
    ASSERT_EQ(Bores.size(), 1U);
    EXPECT_EQ(Bores[0].X, 50);
    EXPECT_EQ(Bores[0].Y, 30);
}

TEST_F(Operations, BorderOfLinesNeverTurnsASign)
{
    Read(Circle("VBORE Z5", -550, 90, 4));
    ASSERT_EQ(Bores.size(), 1U);
    EXPECT_EQ(Bores[0].X, -650);
}

// Circles with a side normal: drawn in their object system, where Z runs along the normal

TEST_F(Operations, CirclesWithASideNormalAreHorizontalBores)
{
    // X along the edge, Y up (the bore's Z), thickness the depth.
    const std::string more = Pair(39, -30);
    Read(Circle("VBORE D5T7F2000S6G3ES2CB", 300, 9, 4, more + Pair(30, 450) + Normal(0, 1, 0)) +
         Circle("DRILL", -320, 8, 4, more + Pair(30, -50) + Normal(0, -1, 0)) +
         Circle("DRILL", 250, 7, 4, more + Pair(30, 100) + Normal(1, 0, 0)) +
         Circle("DRILL", 260, 6, 4, more + Pair(30, 700) + Normal(-1, 0, 0)));
    EXPECT_EQ(Bores.size(), 0U);
    ASSERT_EQ(Edges.size(), 4U);
    EXPECT_EQ(Edges[0].Side, 1);
    EXPECT_EQ(Edges[0].PosX, 200);
    EXPECT_EQ(Edges[0].PosY, 30);
    EXPECT_EQ(Edges[0].Z, 9);
    EXPECT_EQ(Edges[0].Diameter, 8); // the circle's, whatever D says
    EXPECT_EQ(Edges[0].Tool, "07");
    EXPECT_EQ(Edges[0].Feed, 2000);
    EXPECT_EQ(Edges[0].Speed, 6000);
    EXPECT_EQ(Edges[0].Group, 3);
    EXPECT_EQ(Edges[0].ExtraSlot, 2);
    EXPECT_EQ(Edges[0].Bottom, 2);
    EXPECT_EQ(Edges[1].Side, 2);
    EXPECT_EQ(Edges[1].PosX, 220);
    EXPECT_EQ(Edges[1].PosY, 30);
    EXPECT_EQ(Edges[1].Z, 8);
    EXPECT_EQ(Edges[1].Group, 1);
    EXPECT_EQ(Edges[2].Side, 3);
    EXPECT_EQ(Edges[2].PosX, 30);
    EXPECT_EQ(Edges[2].PosY, 200);
    EXPECT_EQ(Edges[2].Z, 7);
    EXPECT_EQ(Edges[3].Side, 4);
    EXPECT_EQ(Edges[3].PosX, 30);
    EXPECT_EQ(Edges[3].PosY, 210);
    EXPECT_EQ(Edges[3].Z, 6);
}

TEST_F(Operations, NormalThatPointsInwardsIsPutOnTheEdgeWhereTheCircleLies)
{
    Read(Circle("DRILL", 300, 9, 4, Pair(30, 50.25) + Normal(0, 1, 0)) +
         Circle("DRILL", 300, 9, 4, Pair(30, -449.75) + Normal(0, -1, 0)) +
         Circle("DRILL", 250, 9, 4, Pair(39, 30) + Pair(30, 700.25) + Normal(1, 0, 0)) +
         Circle("DRILL", 250, 9, 4, Pair(39, 30) + Pair(30, -99.75) + Normal(-1, 0, 0)));
    ASSERT_EQ(Edges.size(), 4U);
    EXPECT_EQ(Edges[0].Side, 2); // 1 on the lower edge
    EXPECT_EQ(Edges[1].Side, 1); // 2 on the upper edge
    EXPECT_EQ(Edges[2].Side, 4); // 3 on the right edge
    EXPECT_EQ(Edges[3].Side, 3); // 4 on the left edge
    EXPECT_EQ(Edges[2].PosX, 30);
    EXPECT_EQ(Edges[2].PosY, 200);
}

TEST_F(Operations, HalfAUnitFromAnEdgeCorrectsNothing)
{
    Read(Circle("DRILL", 300, 9, 4, Pair(30, 50.5) + Normal(0, 1, 0)) +
         Circle("DRILL", 300, 9, 4, Pair(30, 449.5) + Normal(0, -1, 0)) +
         Circle("DRILL", 250, 9, 4, Pair(30, 699.5) + Normal(1, 0, 0)) +
         Circle("DRILL", 250, 9, 4, Pair(30, 100.5) + Normal(-1, 0, 0)));
    ASSERT_EQ(Edges.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(Edges[i].Side, static_cast<Long>(i) + 1);
}

TEST_F(Operations, NormalAlongZIsAVerticalBore)
{
    Read(Circle("VBORE Z5", 150, 90, 4, Normal(0, 0, -1)));
    EXPECT_EQ(Edges.size(), 0U);
    ASSERT_EQ(Bores.size(), 1U);
    EXPECT_EQ(Bores[0].X, 50);
}

// Circles in edge views. Face (200, 200) to (800, 600), margins 25; the views stand off the face's
// corners, so a position from the view and one from the face differ.

std::string Views()
{
    return Rectangle("BORDERZ18", 200, 200, 600, 400) + Rectangle("BORDERZ18", 210, 700, 580, 18) +
           Rectangle("BORDERZ18", 205, 100, 590, 18) + Rectangle("BORDERZ18", 100, 215, 18, 370) +
           Rectangle("BORDERZ18", 900, 220, 18, 360);
}

TEST_F(Operations, CirclesInEdgeViewsByTheTableOfSides)
{
    ReadDrawingOf(Views() + Circle("HBORE Z30T4F1500S6ES1DI", 310, 709, 4) +
                  Circle("HBORE Z30", 305, 106, 4) + Circle("HBORE Z30", 110, 315, 4) +
                  Circle("HBORE Z30D5", 912, 320, 4));
    ASSERT_EQ(Edges.size(), 4U);
    EXPECT_EQ(Edges[0].Side, 1);
    EXPECT_EQ(Edges[0].PosX, 100);
    EXPECT_EQ(Edges[0].PosY, 30);
    EXPECT_EQ(Edges[0].Z, 9);
    EXPECT_EQ(Edges[0].Diameter, 8);
    EXPECT_EQ(Edges[0].Tool, "04");
    EXPECT_EQ(Edges[0].Feed, 1500);
    EXPECT_EQ(Edges[0].Speed, 6000);
    EXPECT_EQ(Edges[0].Group, 1);
    EXPECT_EQ(Edges[0].ExtraSlot, 1);
    EXPECT_EQ(Edges[0].Bottom, 4);
    EXPECT_EQ(Edges[1].Side, 2);
    EXPECT_EQ(Edges[1].PosX, 100);
    EXPECT_EQ(Edges[1].PosY, 30);
    EXPECT_EQ(Edges[1].Z, 12); // from the view's upper line, which touches the face
    EXPECT_EQ(Edges[2].Side, 3);
    EXPECT_EQ(Edges[2].PosX, 30);
    EXPECT_EQ(Edges[2].PosY, 100);
    EXPECT_EQ(Edges[2].Z, 8);
    EXPECT_EQ(Edges[3].Side, 4);
    EXPECT_EQ(Edges[3].PosX, 30);
    EXPECT_EQ(Edges[3].PosY, 100);
    EXPECT_EQ(Edges[3].Z, 12);
    EXPECT_EQ(Edges[3].Diameter, 8); // the circle's, whatever D says
}

TEST_F(Operations, CircleInNoViewLeavesABlankRecord)
{
    ReadDrawingOf(Views() + Circle("HBORE Z30G4", 400, 400, 4) + Circle("HBORE Z30", 305, 106, 4));
    ASSERT_EQ(Edges.size(), 2U);
    EXPECT_EQ(Edges[0].Side, 0);
    EXPECT_EQ(Edges[0].Group, 0);
    EXPECT_EQ(Edges[0].Diameter, 0);
    EXPECT_EQ(Edges[0].PosY, 0);
    EXPECT_EQ(Edges[1].Side, 2);
}

TEST_F(Operations, ViewReachesUpToItsMarginStrictly)
{
    ReadDrawingOf(Views() + Circle("HBORE Z30", 310, 742.5, 4) + Circle("HBORE Z30", 310, 743, 4) +
                  Circle("HBORE Z30", 185, 709, 4) + Circle("HBORE Z30", 185.5, 709, 4));
    ASSERT_EQ(Edges.size(), 4U);
    EXPECT_EQ(Edges[0].Side, 1);
    EXPECT_EQ(Edges[1].Side, 0);
    EXPECT_EQ(Edges[2].Side, 0);
    EXPECT_EQ(Edges[3].Side, 1);
    EXPECT_EQ(Edges[3].PosX, -24.5F);
}

TEST_F(Operations, PanelWithoutViewsHasNoPlaceForAnHboreCircle)
{
    Read(Circle("HBORE Z30", 400, 400, 4));
    ASSERT_EQ(Edges.size(), 1U);
    EXPECT_EQ(Edges[0].Side, 0);
}

TEST_F(Operations, FirstOfTwoViewsThatHoldACircleTakesIt)
{
    ResetProcess();
    Entities.Clear();
    DxfEntity circle;
    circle.Kind = "CIRCLE";
    circle.Layer = "HBORE Z30";
    circle.X1 = 55;
    circle.Y1 = 55;
    circle.Radius = 4;
    Entities.Append(circle);
    ResetRun();
    for (const std::size_t side : {2U, 4U}) {
        kv::Run.SideMinX[side] = kv::Run.SideMinY[side] = 50;
        kv::Run.SideMaxX[side] = kv::Run.SideMaxY[side] = 60;
    }
    ReadOperations();
    ASSERT_EQ(HBores.Last(), 1);
    EXPECT_EQ(HBores[1].Side, 2);
}

// Grooves

TEST_F(Operations, GrooveLine)
{
    Read(Line("GROOVEZ5D8.5K3.2T305LF3000FD1000", 150, 90, 550, 95));
    ASSERT_EQ(Saws.size(), 1U);
    const GrooveRecord& groove = Saws[0];
    EXPECT_EQ(groove.X1, 50);
    EXPECT_EQ(groove.Y1, 40);
    EXPECT_EQ(groove.X2, 450);
    EXPECT_EQ(groove.Y2, 45);
    EXPECT_EQ(groove.Width, 8.5F);
    EXPECT_EQ(groove.Depth, 5);
    EXPECT_EQ(groove.Kerf, 3.2F);
    EXPECT_EQ(groove.GrooveSide, -1);
    EXPECT_EQ(groove.ToolNumber, 3005); // digit pairs: 30, 05
    EXPECT_EQ(groove.Feed, 0);          // a line takes no feeds
    EXPECT_EQ(groove.FeedDown, 0);
}

TEST_F(Operations, GrooveLineWithoutCodesTakesTheEntitysValues)
{
    Read(Line("MYGROOVE", 150, 90, 550, 90, Pair(40, 6) + Pair(38, -4)));
    ASSERT_EQ(Saws.size(), 1U);
    EXPECT_EQ(Saws[0].Width, 6);
    EXPECT_EQ(Saws[0].Depth, 4);
    EXPECT_EQ(Saws[0].Kerf, 8); // the setting's
    EXPECT_EQ(Saws[0].GrooveSide, 0);
    EXPECT_EQ(Saws[0].ToolNumber, 0);
}

TEST_F(Operations, GrooveRightOfItsLine)
{
    Read(Line("GROOVERZ5", 150, 90, 550, 90) + Line("GROOVERLZ5", 150, 90, 550, 90));
    ASSERT_EQ(Saws.size(), 2U);
    EXPECT_EQ(Saws[0].GrooveSide, 1);
    EXPECT_EQ(Saws[1].GrooveSide, -1); // left wins over right
}

TEST_F(Operations, KerfOfTheSettingIsInMillimetresAlsoForAnInchDrawing)
{
    ReadDrawingOf(Rectangle("BORDERZ1", 5, 5, 30, 20) + Line("GROOVEZ.25D.5", 6, 6, 20, 6) +
                  Polyline("GROOVEZ.25", {{6, 7}, {20, 7}}) + Line("GROOVEZ.25D.5K.125", 6, 6, 20, 6));
    ASSERT_EQ(Saws.size(), 3U);
    EXPECT_EQ(Saws[0].Kerf, static_cast<Single>(8 / static_cast<double>(25.4F)));
    EXPECT_EQ(Saws[1].Kerf, Saws[0].Kerf);
    EXPECT_EQ(Saws[2].Kerf, 0.125F); // coded kerfs are in drawing units
}

TEST_F(Operations, GroovePolylineOfEvenWidth)
{
    Read(Polyline("GROOVEZ5F3000FD1000T12", {{150, 90}, {550, 90}}, Pair(40, 9) + Pair(41, 9)));
    ASSERT_EQ(Saws.size(), 1U);
    const GrooveRecord& groove = Saws[0];
    EXPECT_EQ(groove.X1, 50);
    EXPECT_EQ(groove.Y1, 40);
    EXPECT_EQ(groove.X2, 450);
    EXPECT_EQ(groove.Y2, 40);
    EXPECT_EQ(groove.Width, 9);
    EXPECT_EQ(groove.Depth, 5);
    EXPECT_EQ(groove.Feed, 3000);
    EXPECT_EQ(groove.FeedDown, 1000);
    EXPECT_EQ(groove.ToolNumber, 12);
    EXPECT_EQ(groove.Kerf, 8);
}

TEST_F(Operations, CodedDiameterIsNoWidthOfAGroovePolyline)
{
    Read(Polyline("GROOVEZ5D12", {{150, 90}, {550, 90}}));
    ASSERT_EQ(Saws.size(), 1U);
    EXPECT_EQ(Saws[0].Width, 0);
}

TEST_F(Operations, TaperedGroovePolylineIsTheLineOfAPair)
{
    Read(Polyline("GROOVEZ5", {{150, 90}, {550, 90}}, Pair(40, 8) + Pair(41, 4)));
    ASSERT_EQ(Saws.size(), 1U);
    EXPECT_EQ(Saws[0].Width, -1);
    EXPECT_EQ(Saws[0].X2, 450);
}

TEST_F(Operations, TaperFromZeroEndsWhereItStarts)
{
    Read(Polyline("GROOVEZ5", {{150, 90}, {550, 95}}, Pair(40, 0.0) + Pair(41, 4)));
    ASSERT_EQ(Saws.size(), 1U);
    EXPECT_EQ(Saws[0].Width, -1);
    EXPECT_EQ(Saws[0].X2, 50);
    EXPECT_EQ(Saws[0].Y2, 40);
}

TEST_F(Operations, GroovePolylineWithoutDepthTakesTheHeadersThickness)
{
    Read(Polyline("GROOVE", {{150, 90}, {550, 90}}, Pair(39, -7) + Pair(38, 3)));
    ASSERT_EQ(Saws.size(), 1U);
    EXPECT_EQ(Saws[0].Depth, 7);
}

TEST_F(Operations, FurtherVerticesOfAGroovePolylineAreSkipped)
{
    Read(Polyline("GROOVEZ5", {{150, 90}, {550, 90}, {550, 200}, {150, 200}}) + Point("DRILL", 150, 90));
    ASSERT_EQ(Saws.size(), 1U);
    EXPECT_EQ(Saws[0].X2, 450);
    EXPECT_EQ(Bores.size(), 1U);
}

TEST_F(Operations, GroovePolylineOfOneVertexEndsAtTheDrawingsOrigin)
{
    Read(Polyline("GROOVEZ5", {{150, 90}}));
    ASSERT_EQ(Saws.size(), 1U);
    EXPECT_EQ(Saws[0].X1, 50);
    EXPECT_EQ(Saws[0].X2, -100); // its blank second point less the panel's origin
    EXPECT_EQ(Saws[0].Y2, -50);
}

TEST_F(Operations, GroovePolylineWithoutVerticesMakesNothing)
{
    Read(Pair(0, "POLYLINE") + Pair(8, "GROOVEZ5") + Pair(0, "SEQEND") + Pair(8, "GROOVEZ5"));
    EXPECT_EQ(Saws.size(), 0U);
}

// A polyline whose vertices name layers of their own, as no reader leaves it.
void AppendPolyline(const std::vector<std::string>& layers)
{
    DxfEntity entity;
    entity.Kind = "POLYLINE";
    entity.Layer = layers.front();
    Entities.Append(entity);
    entity.Kind = "VERTEX";
    for (const std::string& layer : layers) {
        entity.Layer = layer;
        entity.X1 += 10;
        Entities.Append(entity);
    }
    entity.Kind = "SEQEND";
    Entities.Append(entity);
}

TEST_F(Operations, SecondVertexOfAGrooveWinsSaveForTheTool)
{
    ResetProcess();
    Entities.Clear();
    AppendPolyline({"GROOVELZ5T33K2F100", "GROOVERZ6T44K4F200"});
    ResetRun();
    ReadOperations();
    ASSERT_EQ(Grooves.Last(), 1);
    EXPECT_EQ(Grooves[1].Depth, 6);
    EXPECT_EQ(Grooves[1].Kerf, 4);
    EXPECT_EQ(Grooves[1].Feed, 200);
    EXPECT_EQ(Grooves[1].GrooveSide, 1);
    EXPECT_EQ(Grooves[1].ToolNumber, 33);
}

// Horizontal drilling lines

TEST_F(Operations, HboreLine)
{
    Read(Line("HBOREZ30T7F2000S6ES2CB", 100, 90, 130, 90) +
         Line("MYHBORE", 100, 120, 130, 120, Pair(38, -9)));
    ASSERT_EQ(Lines.size(), 2U);
    EXPECT_EQ(Lines[0].X1, 0);
    EXPECT_EQ(Lines[0].Y1, 40);
    EXPECT_EQ(Lines[0].X2, 30);
    EXPECT_EQ(Lines[0].Y2, 40);
    EXPECT_EQ(Lines[0].Depth, 30);
    EXPECT_EQ(Lines[0].Tool, "07");
    EXPECT_EQ(Lines[0].Feed, 2000);
    EXPECT_EQ(Lines[0].Speed, 6000);
    EXPECT_EQ(Lines[0].Group, 1);
    EXPECT_EQ(Lines[0].ExtraSlot, 2);
    EXPECT_EQ(Lines[0].Bottom, 2);
    EXPECT_EQ(Lines[1].Depth, 9);
}

TEST_F(Operations, HborePolylineOfThreeVerticesGivesTwoLines)
{
    Read(Polyline("HBOREZ30", {{100, 90}, {130, 90}, {130, 150}}));
    ASSERT_EQ(Lines.size(), 2U);
    EXPECT_EQ(Lines[0].X1, 0);
    EXPECT_EQ(Lines[0].X2, 30);
    EXPECT_EQ(Lines[0].Y2, 40);
    EXPECT_EQ(Lines[1].X1, 30); // the second vertex opens the next pair
    EXPECT_EQ(Lines[1].Y1, 40);
    EXPECT_EQ(Lines[1].X2, 30);
    EXPECT_EQ(Lines[1].Y2, 100);
    EXPECT_EQ(Lines[1].Depth, 30);
}

TEST_F(Operations, HborePolylineOfSixVerticesGivesFourLines)
{
    Read(Polyline("HBOREZ30", {{100, 90}, {110, 90}, {120, 90}, {130, 90}, {140, 90}, {150, 90}}) +
         Point("DRILL", 150, 90));
    ASSERT_EQ(Lines.size(), 4U);
    EXPECT_EQ(Lines[3].X1, 30);
    EXPECT_EQ(Lines[3].X2, 40);
    EXPECT_EQ(Bores.size(), 1U); // the walk goes on behind it
}

TEST_F(Operations, HborePolylineOfOneVertexGivesNone)
{
    Read(Polyline("HBOREZ30", {{100, 90}}));
    EXPECT_EQ(Lines.size(), 0U);
}

TEST_F(Operations, SecondVertexOfAPairOfHboreVerticesWins)
{
    ResetProcess();
    Entities.Clear();
    AppendPolyline({"HBOREZ10G2", "HBOREZ20G3", "HBOREZ30"});
    ResetRun();
    ReadOperations();
    ASSERT_EQ(HBoreLines.Last(), 2);
    EXPECT_EQ(HBoreLines[1].Depth, 20);
    EXPECT_EQ(HBoreLines[1].Group, 3);
    EXPECT_EQ(HBoreLines[2].Depth, 30);
    EXPECT_EQ(HBoreLines[2].Group, 1);
}

TEST_F(Operations, PolylineWithoutSeqendOnAGrooveLayerFailsTheJob)
{
    const std::string open = Pair(0, "POLYLINE") + Pair(8, "GROOVEZ5") + Pair(0, "VERTEX") + Pair(10, 150) +
                             Pair(20, 90) + Point("DRILL", 3, 3);
    EXPECT_FALSE(Place.Convert(Drawing(Rectangle("BORDERZ18", 100, 50, 600, 400) + open)));
    ASSERT_FALSE(Place.Lines.empty());
    EXPECT_NE(Place.Lines.back().find("Polyline without SEQEND on layer GROOVEZ5"), std::string::npos)
        << Place.ReportText();
}

} // namespace
} // namespace kv
