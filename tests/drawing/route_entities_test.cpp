// Lines, arcs and circles on route layers, and which entities a pass takes.
#include "drawing/route_entities.h"

#include <cmath>

#include "drawing/layer_rules.h"
#include "drawing/route_scene.h"
#include "platform/events.h"

namespace kv {
namespace {

using namespace test;
using Places = std::vector<KindAndPlace>;
using Rows = std::vector<std::string>;

struct RouteLines : RouteScene {};
struct RouteArcs : RouteScene {};
struct FreeCircles : RouteScene {};
struct RoutePasses : RouteScene {};

std::string Heights(double z1, double z2)
{
    return Pair(30, z1) + Pair(31, z2);
}

// Lines

TEST_F(RouteLines, LineIsTwoRecordsInDrawingCoordinates)
{
    Read(Line("ROUTEZ18D10", 150, 90, 300, 200));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 18}, {1, 300, 200, 18}}));
    EXPECT_EQ(Segments[0].Pass, 1);
    EXPECT_EQ(Segments[1].Pass, 1);
    EXPECT_EQ(Segments[0].Diameter, 10);
    EXPECT_EQ(Segments[1].Diameter, 10);
    EXPECT_EQ(Segments[1].Group, 1);
    EXPECT_EQ(Segments[0].Aux1, 0);
    EXPECT_EQ(Segments[0].Aux2, 0);
    EXPECT_EQ(Segments[0].Side, 0);
}

TEST_F(RouteLines, AllCodesStandInBothRecords)
{
    Read(Line("ROUTE Z18D10T3S18F6000A1B2G2M7L4FD2000FR9000LD5RO2RI3OZ1ES4FA3000", 150, 90, 300, 200));
    ASSERT_EQ(Segments.size(), 2U);
    for (const RouteSegment& record : Segments) {
        EXPECT_EQ(record.Z, 18);
        EXPECT_EQ(record.Diameter, 10);
        EXPECT_EQ(record.ToolNo, 3);
        EXPECT_EQ(record.Tool, "03");
        EXPECT_EQ(record.Speed, 18000);
        EXPECT_EQ(record.Feed, 6000);
        EXPECT_EQ(record.ParamA, 1);
        EXPECT_EQ(record.ParamB, 2);
        EXPECT_EQ(record.Group, 2);
        EXPECT_EQ(record.MCode, 7);
        EXPECT_EQ(record.Comp, "G41 R4");
        EXPECT_EQ(record.FeedDown, 2000);
        EXPECT_EQ(record.FeedRapid, 9000);
        EXPECT_EQ(record.LeadIn, 5);
        EXPECT_EQ(record.RampOut, 2);
        EXPECT_EQ(record.RampIn, 3);
        EXPECT_EQ(record.OscZ, 1);
        EXPECT_EQ(record.ExtraSlot, 4);
    }
}

TEST_F(RouteLines, CodedDepthWinsOverTheElevation)
{
    Read(Line("ROUTE1Z10", 150, 90, 300, 200, Pair(38, 5)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 10}, {1, 300, 200, 10}}));
}

TEST_F(RouteLines, ElevationWinsOverTheHeightsOfTheEnds)
{
    Read(Line("ROUTE", 150, 90, 300, 200, Pair(38, -5) + Heights(-3, -4)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 5}, {1, 300, 200, 5}}));
}

TEST_F(RouteLines, HeightsOfTheEndsAreTheirDepths)
{
    Read(Line("ROUTE", 150, 90, 300, 200, Heights(-3, -4)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 3}, {1, 300, 200, 4}}));
}

TEST_F(RouteLines, WrittenDepthOfZeroTakesTheElevationButNoHeight)
{
    Read(Line("ROUTEZ0", 150, 90, 300, 200, Heights(-3, -4)) +
         Line("ROUTEZ0", 150, 190, 300, 300, Pair(38, 5) + Heights(-3, -4)));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-1, 150, 90, 0}, {1, 300, 200, 0}, {-1, 150, 190, 5}, {1, 300, 300, 5}}));
}

TEST_F(RouteLines, ThicknessIsTheDiameterWithoutCode)
{
    Read(Line("ROUTEZ5", 150, 90, 300, 200, Pair(39, -6)));
    ASSERT_EQ(Segments.size(), 2U);
    EXPECT_EQ(Segments[0].Diameter, 6);
    EXPECT_EQ(Segments[1].Diameter, 6);
}

TEST_F(RouteLines, ExcavationLayerKeepsItsStepCountAsNegativeOscillation)
{
    Read(Line("EXCAVZ5K3OZ2", 150, 90, 300, 200) + Line("EXCAVZ6", 150, 190, 300, 200));
    ASSERT_EQ(Segments.size(), 4U);
    EXPECT_EQ(Segments[0].OscZ, -4);
    EXPECT_EQ(Segments[1].OscZ, -4);
    EXPECT_EQ(Segments[2].OscZ, -1);
}

TEST_F(RouteLines, RotarLayersAreRoutes)
{
    Read(Line("ROTARZ5", 150, 90, 300, 200));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 5}, {1, 300, 200, 5}}));
}

// Arcs

TEST_F(RouteArcs, ArcIsStoredClockwiseFromItsEndAngleToItsStartAngle)
{
    Read(Arc("ROUTEZ18FA3000F6000", 300, 200, 50, 0, 90));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-3, 300, 250, 18}, {3, 350, 200, 18}, {0, 0, 0, 0}}));
    EXPECT_EQ(Segments[0].Aux1, 300);
    EXPECT_EQ(Segments[0].Aux2, 200);
    EXPECT_EQ(Segments[1].Aux1, 90);
    EXPECT_EQ(Segments[1].Aux2, 0);
    EXPECT_EQ(Segments[1].Dir, 0);
    EXPECT_EQ(Segments[0].Feed, 3000);
    EXPECT_EQ(Segments[1].Feed, 3000);
    EXPECT_EQ(Segments[1].Pass, 1);
}

TEST_F(RouteArcs, BlankRecordStandsBehindEachArc)
{
    Read(Arc("ROUTEZ5", 300, 200, 50, 0, 90) + Line("ROUTEZ5", 350, 200, 350, 100));
    EXPECT_EQ(
        KindsAndPlaces(Segments),
        (Places{{-3, 300, 250, 5}, {3, 350, 200, 5}, {0, 0, 0, 0}, {-1, 350, 200, 5}, {1, 350, 100, 5}}));
    EXPECT_EQ(Segments[2].Pass, 0);
    EXPECT_EQ(Segments[2].Group, 0);
}

TEST_F(RouteArcs, BothPointsAreComputedWithTheRunsOwnDegree)
{
    Read(Arc("ROUTEZ5", 300, 200, 100, 30, 60));
    ASSERT_EQ(Segments.size(), 3U);
    // 3.1415930 as a Single is 3.14159297943115; by 180, as a Single, .01745329424738884.
    const double degree = .01745329424738884;
    EXPECT_EQ(Segments[0].X, static_cast<Single>(300 + 100 * std::cos(60 * degree)));
    EXPECT_EQ(Segments[0].Y, static_cast<Single>(200 + 100 * std::sin(60 * degree)));
    EXPECT_EQ(Segments[1].X, static_cast<Single>(300 + 100 * std::cos(30 * degree)));
    EXPECT_EQ(Segments[1].Y, static_cast<Single>(200 + 100 * std::sin(30 * degree)));
}

TEST_F(RouteArcs, HeightWinsOverTheElevation)
{
    Read(Arc("ROUTE", 300, 200, 50, 0, 90, Pair(30, -3) + Pair(38, 5)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-3, 300, 250, 3}, {3, 350, 200, 3}, {0, 0, 0, 0}}));
}

TEST_F(RouteArcs, EndOfAnArcHasNoUseForTheElevation)
{
    Read(Arc("ROUTE", 300, 200, 50, 0, 90, Pair(38, -5)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-3, 300, 250, 5}, {3, 350, 200, 0}, {0, 0, 0, 0}}));
}

TEST_F(RouteArcs, WrittenDepthOfZeroTakesNoHeight)
{
    Read(Arc("ROUTEZ0", 300, 200, 50, 0, 90, Pair(30, -3)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-3, 300, 250, 0}, {3, 350, 200, 0}, {0, 0, 0, 0}}));
}

TEST_F(RouteArcs, NegativeZNormalIsToldOnceAndTheArcIsUsedAsItStands)
{
    // A normal along -Z makes X positive; two layers, so two passes.
    const std::string down = NormalOf(0, 0, -1);
    Read(Arc("ROUTEZ5", 300, 200, 50, 0, 90, down) + Arc("ROUTEZ6", 300, 200, 50, 0, 90, down) +
         Arc("ROUTEZ6", 300, 300, 50, 0, 90, down));
    EXPECT_EQ(Count("Incorrect Z Normal Extrusion on arc"), 1);
    ASSERT_EQ(Segments.size(), 9U);
    EXPECT_EQ(Segments[0].X, 300);
    EXPECT_EQ(Segments[0].Y, 250);
    EXPECT_EQ(Segments[1].Dir, 0);
}

TEST_F(RouteArcs, NegativeZNormalIsToldAgainForTheNextDrawing)
{
    const std::string arc = Arc("ROUTEZ5", 300, 200, 50, 0, 90, NormalOf(0, 0, -1));
    Read(arc);
    EXPECT_EQ(Count("Incorrect Z Normal Extrusion on arc"), 1);
    Read(arc);
    EXPECT_EQ(Count("Incorrect Z Normal Extrusion on arc"), 1);
}

TEST_F(RouteArcs, NormalTowardsTheViewerIsNotTold)
{
    Read(Arc("ROUTEZ5", 300, 200, 50, 0, 90, NormalOf(0, 0, 1)));
    EXPECT_EQ(Count("Incorrect Z Normal Extrusion on arc"), 0);
    EXPECT_EQ(Segments.size(), 3U);
}

// Chord 5 on radius 1000: 2 asin(.0025) = .2864793 degrees.
TEST_F(RouteArcs, ArcOfRadius1000WithAChordOf5BecomesALine)
{
    Read(Arc("ROUTEZ5FA3000", 300, 200, 1000, 0, .2864793));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[0].Kind, -1);
    EXPECT_EQ(Segments[1].Kind, 1);
    EXPECT_EQ(Segments[0].Aux1, 300); // stays
    EXPECT_EQ(Segments[0].Aux2, 0);
    EXPECT_EQ(Segments[1].Aux1, .2864793F);
    EXPECT_EQ(Segments[1].Aux2, 0);
    EXPECT_EQ(Segments[1].Feed, 3000);
    EXPECT_NEAR(Segments[0].Y - Segments[1].Y, 5, .001);
}

TEST_F(RouteArcs, SubstitutedArcLosesItsStartAngle)
{
    Read(Arc("ROUTEZ5", 300, 200, 1000, 10, 10.2864793));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[1].Kind, 1);
    EXPECT_EQ(Segments[1].Aux2, 0);
}

TEST_F(RouteArcs, NoarcsubKeepsTheArc)
{
    Read(Instructions({"NOARCSUB"}) + Arc("ROUTEZ5", 300, 200, 1000, 0, .2864793));
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[0].Kind, -3);
    EXPECT_EQ(Segments[0].Aux2, 200);
    EXPECT_EQ(Segments[1].Kind, 3);
}

// Chords 9.9 and 10.1 on radius 1000: .5672284 and .5786878 degrees.
TEST_F(RouteArcs, ArcIsKeptWhereTheRadiusIsAtMostAHundredChords)
{
    Read(Arc("ROUTEZ5", 300, 200, 1000, 0, .5672284) + Arc("ROUTEZ5", 300, 200, 1000, 0, .5786878));
    ASSERT_EQ(Segments.size(), 6U);
    EXPECT_EQ(Segments[0].Kind, -1);
    EXPECT_EQ(Segments[3].Kind, -3);
}

TEST_F(RouteArcs, AlmostFullCircleWithAShortChordBecomesALineToo)
{
    Read(Arc("ROUTEZ5", 300, 200, 100, 0, 359.5)); // chord .87
    ASSERT_EQ(Segments.size(), 3U);
    EXPECT_EQ(Segments[0].Kind, -1);
    EXPECT_EQ(Segments[1].Kind, 1);
}

TEST_F(RouteArcs, FullCircleArcHasChordZeroAndStaysAnArc)
{
    Read(Arc("ROUTEZ5", 300, 200, 50, 0, 0));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-3, 350, 200, 5}, {3, 350, 200, 5}, {0, 0, 0, 0}}));
    EXPECT_TRUE(Uncut().empty());
}

TEST_F(RouteArcs, ArcFrom0To360IsAFullCircle)
{
    Read(Arc("ROUTEZ5", 300, 200, 50, 0, 360));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-3, 350, 200, 5}, {3, 350, 200, 5}, {0, 0, 0, 0}}));
    EXPECT_EQ(Segments[1].Aux1, 360);
    EXPECT_EQ(Segments[1].Aux2, 0);
    EXPECT_TRUE(Uncut().empty());
}

// Circles

TEST_F(FreeCircles, CircleKeepsItsCentreAndParameters)
{
    Read(Circle("ROUTE Z18D10T3S18F6000FA3000G2M7R4FD2000FR9000LD5RO2RI3OZ1ES4", 300, 200, 40));
    EXPECT_TRUE(Segments.empty());
    ASSERT_EQ(Circles.size(), 1U);
    const RouteCircle& circle = Circles[0];
    EXPECT_EQ(circle.X, 300);
    EXPECT_EQ(circle.Y, 200);
    EXPECT_EQ(circle.Z, 18);
    EXPECT_EQ(circle.Diameter, 10);
    EXPECT_EQ(circle.Group, 2);
    EXPECT_EQ(circle.ToolNo, 3);
    EXPECT_EQ(circle.Tool, "03");
    EXPECT_EQ(circle.Radius, 40);
    EXPECT_EQ(circle.Pass, 1);
    EXPECT_EQ(circle.Used, 0);
    EXPECT_EQ(circle.Speed, 18000);
    EXPECT_EQ(circle.Feed, 3000);
    EXPECT_EQ(circle.FeedDown, 2000);
    EXPECT_EQ(circle.FeedRapid, 9000);
    EXPECT_EQ(circle.LeadIn, 5);
    EXPECT_EQ(circle.RampOut, 2);
    EXPECT_EQ(circle.RampIn, 3);
    EXPECT_EQ(circle.Comp, "G42 R4");
    EXPECT_EQ(circle.MCode, 7);
    EXPECT_EQ(circle.OscZ, 1);
    EXPECT_EQ(circle.Side, 0);
    EXPECT_EQ(circle.ExtraSlot, 4);
}

TEST_F(FreeCircles, HeightWinsOverTheElevation)
{
    Read(Circle("ROUTE", 300, 200, 40, Pair(30, -3) + Pair(38, 5)) +
         Circle("ROUTE", 300, 300, 40, Pair(38, -5)));
    ASSERT_EQ(Circles.size(), 2U);
    EXPECT_EQ(Circles[0].Z, 3);
    EXPECT_EQ(Circles[1].Z, 5);
    EXPECT_EQ(Circles[0].Group, 1);
}

TEST_F(FreeCircles, ThicknessIsTheDiameterWithoutCode)
{
    Read(Circle("ROUTEZ5", 300, 200, 40, Pair(39, -6)));
    ASSERT_EQ(Circles.size(), 1U);
    EXPECT_EQ(Circles[0].Diameter, 6);
}

TEST_F(FreeCircles, ExcavationCircleHasANegativeOscillation)
{
    Read(Circle("EXCAVZ5K2", 300, 200, 40));
    ASSERT_EQ(Circles.size(), 1U);
    EXPECT_EQ(Circles[0].OscZ, -3);
}

// Which entities a pass takes

TEST_F(RoutePasses, PassesRunInTheOrderOfTheLayersFirstAppearance)
{
    Read(Line("ROUTEZ18", 150, 90, 300, 200) + Circle("EXCAVZ6", 300, 200, 40) +
         Line("ROUTEZ5", 150, 190, 300, 300) + Line("ROUTEZ18", 150, 290, 300, 400));
    ASSERT_EQ(Segments.size(), 6U);
    EXPECT_EQ(Segments[0].Y, 90);
    EXPECT_EQ(Segments[2].Y, 290);
    EXPECT_EQ(Segments[2].Pass, 1);
    EXPECT_EQ(Segments[4].Y, 190);
    EXPECT_EQ(Segments[4].Pass, 3);
    ASSERT_EQ(Circles.size(), 1U);
    EXPECT_EQ(Circles[0].Pass, 2);
    EXPECT_EQ(Seen.RoutePass, 0);
}

TEST_F(RoutePasses, LayerThatOnlyBeginsWithTheRowIsNotTaken)
{
    Read(Line("ROUTEZ1", 150, 90, 300, 200) + Line("ROUTEZ18", 150, 190, 300, 300));
    EXPECT_EQ(KindsAndPlaces(Segments),
              (Places{{-1, 150, 90, 1}, {1, 300, 200, 1}, {-1, 150, 190, 18}, {1, 300, 300, 18}}));
    EXPECT_EQ(Segments[1].Pass, 1);
    EXPECT_EQ(Segments[2].Pass, 2);
}

TEST_F(RoutePasses, SideViewsByNormalAreNoRoutes)
{
    Read(Line("ROUTEZ5", 150, 90, 300, 200, NormalOf(0, 1, 0)) +
         Circle("ROUTEZ5", 150, 90, 40, NormalOf(-1, 0, 0)) +
         Arc("ROUTEZ5", 150, 90, 40, 0, 90, NormalOf(0, -1, 0)));
    EXPECT_TRUE(Segments.empty());
    EXPECT_TRUE(Circles.empty());
}

TEST_F(RoutePasses, NormalOfTheFaceTakesTheHeightAsElevationAndPositiveX)
{
    Read(Line("ROUTE", -150, 90, -300, -200, Heights(-7, 0) + NormalOf(0, 0, -1)));
    EXPECT_EQ(KindsAndPlaces(Segments), (Places{{-1, 150, 90, 7}, {1, 300, 200, 7}}));
}

TEST_F(RoutePasses, PointsAndTextsOnARouteLayerAreNotCut)
{
    Read(Point("ROUTEZ5", 150, 90) + TextAt("ROUTEZ5", 150, 90, "FRONT"));
    EXPECT_TRUE(Segments.empty());
    EXPECT_TRUE(Circles.empty());
}

TEST_F(RoutePasses, RecordOfKindEofEndsTheWalk)
{
    Read(Line("ROUTEZ5", 150, 90, 300, 200) + Pair(0, "EOF") + Line("ROUTEZ5", 150, 190, 300, 300));
    EXPECT_EQ(Segments.size(), 2U);
}

int PumpedEvents = 0;

TEST_F(RoutePasses, EventsArePumpedForEachRecordOfEachPass)
{
    ResetRun();
    Entities.Clear();
    for (const char* layer : {"ROUTEZ5", "ROUTEZ6", "OTHER"}) {
        DxfEntity& line = Entities.Append({});
        line.Kind = "LINE";
        line.Layer = layer;
        line.X2 = 10;
    }
    Run.LayerTable.insert(Run.LayerTable.end(), {"ROUTEZ5", "ROUTEZ6"});
    PumpedEvents = 0;
    Events.Pump = [] { ++PumpedEvents; };
    ReadRoutePasses();
    EXPECT_EQ(PumpedEvents, 6);
    EXPECT_EQ(RouteSegments.Last(), 4);
}

} // namespace
} // namespace kv
