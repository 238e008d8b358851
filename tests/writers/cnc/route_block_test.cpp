// Lines of block R on the face: circles, points, bulges, arcs, tools, parameters, start marks.
#include <limits>

#include "platform/run_error.h"
#include "writers/cnc/cnc_writer.h"
#include "writers/cnc/route_records.h"
#include "writers/writer_memory.h"

namespace kv {
namespace {

class RouteBlock : public RouteRecords {};

TEST_F(RouteBlock, AStraightRouteIsItsStartAndOneMotion)
{
    AddStart(10, 10);
    AddPoint(300, 10);
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90F2000G55P5T0171S18000G41R5X10Y10Z5", "G1G90F5000X300Y10Z5"}));
    EXPECT_TRUE(Writers.RouteWritten);
    EXPECT_FALSE(Writers.TopDrillingWritten);
    EXPECT_EQ(Writers.SideMask, 0x10);
    EXPECT_EQ(Writers.LastSpeed, 18000);
}

TEST_F(RouteBlock, AllWordsOfAStartStandInTheirOrder)
{
    RouteSegment& start = AddStart(10, 10);
    start.ExtraSlot = 3;
    start.FeedRapid = 900.5F;
    start.ParamA = 1.5F;
    start.ParamB = 2.126F;
    EXPECT_EQ(LinesOfRoutes(), Texts{"G88G90E3F2000B900.5G55P5T0171S18000G41R5X10Y10Z5C1.5V2.13"});
}

TEST_F(RouteBlock, WordsOfNothingAreLeftOut)
{
    RouteSegment start;
    start.Kind = -1;
    start.Dir = -8;
    start.Side = 5;
    start.Diameter = 8;
    RouteSegments.Append(start);
    start.Kind = 1;
    start.Dir = 0;
    RouteSegments.Append(start);
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90G55P5R54=8X0Y0Z0", "G1G90X0Y0Z0"}));
    EXPECT_EQ(Writers.LastSpeed, 0);
}

TEST_F(RouteBlock, OneParameterBringsBothWords)
{
    AddStart(10, 10).ParamB = 4;
    AddStart(10, 10).ParamA = -1;
    const Texts lines = LinesOfRoutes();
    EXPECT_TRUE(lines[0].ends_with("Z5C0V4"));
    EXPECT_TRUE(lines[1].ends_with("Z5C-1V0"));
}

TEST_F(RouteBlock, ParametersStandInTheStartAlone)
{
    AddStart(10, 10);
    AddPoint(300, 10).ParamA = 7;
    EXPECT_EQ(LinesOfRoutes().back(), "G1G90F5000X300Y10Z5");
}

TEST_F(RouteBlock, TheFeedOfAMoveIsThatOfTheRecordInFront)
{
    AddStart(10, 10).Feed = 1111;
    AddPoint(300, 10).Feed = 2222;
    AddPoint(300, 200).Feed = 3333;
    const Texts lines = LinesOfRoutes();
    EXPECT_EQ(lines[1], "G1G90F1111X300Y10Z5");
    EXPECT_EQ(lines[2], "G1G90F2222X300Y200Z5");
}

TEST_F(RouteBlock, AMoveInFrontOfAStartIsRefusedWithItsLayer)
{
    Run.LayerTable = {"BORDER", "VBORE DRILLING", "GROOVE", "HBORE", "ROUTEZ5", "ROUTEZ6"};
    const auto causeOf = [] {
        try {
            LinesOfRoutes();
        } catch (const RunError& error) {
            return error.Cause;
        }
        return std::string("written");
    };
    for (const Int kind : std::initializer_list<Int>{1, 2, 5}) {
        RouteSegments.Clear();
        AddPoint(300, 10, kind).Pass = 2;
        AddStart(10, 10);
        EXPECT_EQ(causeOf(), "Layer ROUTEZ6: a move stands in front of its route's start") << kind;
    }
    RouteSegments.Clear();
    AddArc({100, 10}, {100, 60}, {150, 60}, 270, 0, 1);
    EXPECT_EQ(causeOf(), "Layer ROUTEZ5: a move stands in front of its route's start");
    // A mark hands its place on to a record that starts nothing: the route before does not go on there.
    RouteSegments.Clear();
    AddStart(10, 10);
    AddPoint(300, 10);
    AddStart(90, 100, -4);
    AddPoint(100, 100, 4);
    AddPoint(200, 100, 5);
    EXPECT_EQ(causeOf(), "Layer ROUTEZ5: a move stands in front of its route's start");
}

TEST_F(RouteBlock, AStartInsideARouteWritesNothing)
{
    AddStart(10, 10);
    AddPoint(300, 10);
    AddPoint(300, 10).Kind = -1;
    AddPoint(300, 200);
    AddPoint(300, 200).Kind = -5;
    AddPoint(10, 200).Kind = 5;
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90F2000G55P5T0171S18000G41R5X10Y10Z5", "G1G90F5000X300Y10Z5",
                                      "G1G90F5000X300Y200Z5", "G1G90F5000X10Y200Z5"}));
}

TEST_F(RouteBlock, EveryDirBelowNothingOpensARoute)
{
    AddStart(10, 10).Dir = -1;
    AddStart(20, 10, -5).Dir = -2;
    const Texts lines = LinesOfRoutes();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], "G88G90F2000G55P5T0171S18000G41R5X20Y10Z5");
}

TEST_F(RouteBlock, DepthsFromNinetyAreCodes)
{
    AddStart(10, 10).Z = 97;
    AddPoint(300, 10).Z = 89.99F;
    const Texts lines = LinesOfRoutes();
    EXPECT_TRUE(lines[0].ends_with("Y10Z=a"));
    EXPECT_TRUE(lines[1].ends_with("Y10Z89.99"));
}

TEST_F(RouteBlock, ControlCharactersOfTheCompensationAreLeftOut)
{
    AddStart(10, 10).Comp = std::string("G42\t R\x01 7\0", 10);
    EXPECT_EQ(LinesOfRoutes(), Texts{"G88G90F2000G55P5T0171S18000G42R7X10Y10Z5"});
}

// --- bulged spans

TEST_F(RouteBlock, ABulgeOfExactlyOneKeepsAPositiveRadius)
{
    AddStart(100, 100, -5).Aux2 = 1;
    AddPoint(200, 100, 5);
    EXPECT_EQ(LinesOfRoutes().back(), "G38G90F5000X200Y100U50Z5");
}

TEST_F(RouteBlock, ABulgeBelowNothingIsClockwise)
{
    // Half chord 40, rise 20: (1600 + 400) / 40.
    AddStart(100, 100, -5).Aux2 = -0.5F;
    AddPoint(180, 100, 5);
    EXPECT_EQ(LinesOfRoutes().back(), "G37G90F5000X180Y100U50Z5");
}

TEST_F(RouteBlock, ABulgeAboveOneGoesTheLongWayRound)
{
    // Half chord 40, rise 80: (1600 + 6400) / 160. The feed is that of the record in front.
    AddStart(100, 100, -5).Aux2 = 2;
    RouteSegment& second = AddPoint(180, 100, 5);
    second.Aux2 = -2;
    second.Feed = 4000;
    AddPoint(100, 100, 5);
    const Texts lines = LinesOfRoutes();
    EXPECT_EQ(lines[1], "G38G90F5000X180Y100U-50Z5");
    EXPECT_EQ(lines[2], "G37G90F4000X100Y100U-50Z5");
}

TEST_F(RouteBlock, ABulgeWithoutChordGivesNoLine)
{
    AddStart(100, 100, -5).Aux2 = 1;
    AddPoint(100, 100, 5);
    AddPoint(200, 100, 5);
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90F2000G55P5T0171S18000G41R5X100Y100Z5", "G1G90F5000X200Y100Z5"}));
}

TEST_F(RouteBlock, AfterAnArcItsEndAngleReadsAsABulge)
{
    AddStart(10, 10);
    AddArc({10, 10}, {20, 10}, {30, 10}, 180, 1, 0);
    AddPoint(50, 10); // half chord 10, bulge 1
    EXPECT_EQ(LinesOfRoutes().back(), "G38G90F5000X50Y10U10Z5");
}

// --- arcs

TEST_F(RouteBlock, AnArcNamesCentreAndEndAngle)
{
    AddStart(10, 10);
    AddPoint(100, 10);
    AddArc({100, 10}, {100, 60}, {150, 60}, 270, 0, -1);
    AddArc({150, 60}, {100, 60}, {135.355F, 95.355F}, 0, 45.12345F, 0).Feed = 1;
    const Texts lines = LinesOfRoutes();
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[2], "G38G90F4000X100Y60A0.00Z5");
    EXPECT_EQ(lines[3], "G37G90F4000X100Y60A45.123Z5");
}

TEST_F(RouteBlock, AnArcThatOpensARouteTakesCompensationAndSpeedFromItsEnd)
{
    RouteSegment& end = AddArc({100, 10}, {100, 60}, {150, 60}, 270, 0, 1);
    end.Comp = "G42 R7";
    end.Speed = 9000;
    end.Z = 6;
    end.ToolNo = 55;
    end.FeedDown = 77;
    end.ParamA = 5;
    RouteSegment& start = RouteSegments[1];
    start.Dir = -8;
    start.Z = -9;
    start.ExtraSlot = 2;
    start.FeedRapid = 800;
    start.ParamB = 3;
    EXPECT_EQ(LinesOfRoutes(),
              (Texts{"G88G90E2F2000B800G55P5T0171S9000G42R7X100Y10Z-9C0V3", "G38G90F4000X100Y60A0.00Z6"}));
}

TEST_F(RouteBlock, AnArcOpensItsRouteOnlyByTheSignOfItsFirstRecord)
{
    AddStart(100, 10);
    AddArc({100, 10}, {100, 60}, {150, 60}, 270, 0, -8); // the second record's says which way round
    const Texts lines = LinesOfRoutes();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], "G38G90F4000X100Y60A0.00Z5");
}

TEST_F(RouteBlock, HalfAnArcAtTheEndWritesNothing)
{
    AddStart(10, 10);
    AddArc({10, 10}, {100, 60}, {150, 60}, 270, 0, 1);
    RouteSegments.CutTo(2);
    EXPECT_EQ(LinesOfRoutes().size(), 1U);
}

TEST_F(RouteBlock, AnArcsDepthCodeAndAngleFormStand)
{
    AddStart(10, 10);
    AddArc({10, 10}, {60, 10}, {60, 60}, 180, 90, 0).Z = 98;
    EXPECT_EQ(LinesOfRoutes().back(), "G37G90F4000X60Y10A90.Z=b");
}

// --- tools

TEST_F(RouteBlock, ToolFiveGetsGroupTwo)
{
    AddStart(10, 10).ToolNo = 5;
    EXPECT_EQ(ToolWordOf(LinesOfRoutes().front()), "T025");
    EXPECT_EQ(RouteSegments[1].Group, 2);
}

TEST_F(RouteBlock, TheRoutersMagazineKeepsItsGroup)
{
    for (const auto& [tool, word] : std::map<Int, std::string>{
             {20, "T0220"}, {21, "T0121"}, {105, "T01a5"}, {200, "T01a0"}, {201, "T0201M66"}}) {
        RouteSegments.Clear();
        AddStart(10, 10).ToolNo = tool;
        EXPECT_EQ(ToolWordOf(LinesOfRoutes().front()), word);
    }
}

TEST_F(RouteBlock, ARecordWithoutToolIsOfGroupTwo)
{
    RouteSegment& start = AddStart(10, 10);
    start.ToolNo = 0;
    start.Diameter = 8.125F;
    EXPECT_EQ(ToolWordOf(LinesOfRoutes().front()), "R54=8.125"); // not rounded to the setting's decimals
    EXPECT_EQ(RouteSegments[1].Group, 2);
}

TEST_F(RouteBlock, AToolHidesTheDiameter)
{
    AddStart(10, 10).Diameter = 8;
    EXPECT_EQ(ToolWordOf(LinesOfRoutes().front()), "T0171");
}

TEST_F(RouteBlock, NeitherToolNorDiameterKeepTheEarlierWord)
{
    AddStart(10, 10);
    AddPoint(20, 10).ToolNo = 72;
    RouteSegment& start = AddStart(30, 10);
    start.ToolNo = 0;
    EXPECT_EQ(ToolWordOf(LinesOfRoutes().back()), "T0172"); // of the point, though its line has none
    AddStart(10, 10).ToolNo = 73;
    LinesOfRoutes();
    RouteSegments.Clear();
    AddStart(30, 10).ToolNo = 0;
    EXPECT_EQ(ToolWordOf(LinesOfRoutes().back()), "T0173"); // outlives the drawing
}

TEST_F(RouteBlock, TheSecondRecordOfAnArcNamesNoTool)
{
    AddStart(10, 10);
    RouteSegment& end = AddArc({10, 10}, {60, 10}, {60, 60}, 180, 90, 0);
    end.ToolNo = 5;
    AddStart(30, 10).ToolNo = 0;
    EXPECT_EQ(ToolWordOf(LinesOfRoutes().back()), "T0171");
    EXPECT_EQ(RouteSegments[3].Group, 1);
}

TEST_F(RouteBlock, ARouterToolIsSubstituted)
{
    Config.ToolSubData = {{"1", "71", "105"}};
    AddStart(10, 10);
    EXPECT_EQ(ToolWordOf(LinesOfRoutes().front()), "T01a5"); // the group is that of tool 71
    EXPECT_TRUE(Writers.ToolSubstituted);
}

// --- start marks

TEST_F(RouteBlock, AStartMarkGivesTheStartToTheRecordBehindIt)
{
    AddStart(50, 50, -4);
    AddPoint(51, 50, 4);
    AddPoint(10, 10, -5);
    AddPoint(300, 10, 5);
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90F2000G55P5T0171S18000G41R5X10Y10Z5", "G1G90F5000X300Y10Z5"}));
    EXPECT_EQ(RouteSegments[1].Kind, 0);
    EXPECT_EQ(RouteSegments[1].Dir, 0);
    EXPECT_EQ(RouteSegments[2].Kind, 0);
    EXPECT_EQ(RouteSegments[3].Dir, -1);
}

TEST_F(RouteBlock, AMarkBehindAPocketIsPassedByAndTheNextRouteOpens)
{
    AddStart(10, 10);
    AddPoint(20, 10);
    AddPoint(50, 50, -4);
    AddPoint(51, 50, 4);
    AddStart(100, 100);
    AddPoint(200, 100);
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90F2000G55P5T0171S18000G41R5X10Y10Z5", "G1G90F5000X20Y10Z5",
                                      "G88G90F2000G55P5T0171S18000G41R5X100Y100Z5", "G1G90F5000X200Y100Z5"}));
}

TEST_F(RouteBlock, AMarkOfTheLastTwoRecordsWritesNothing)
{
    AddStart(10, 10);
    AddPoint(50, 50, -4);
    AddPoint(51, 50, 4);
    EXPECT_EQ(LinesOfRoutes().size(), 1U);
    EXPECT_EQ(RouteSegments[2].Kind, 0);
    EXPECT_EQ(RouteSegments[3].Kind, 0);
}

TEST_F(RouteBlock, AMarkAtTheVeryEndIsNotRewritten)
{
    AddStart(10, 10);
    AddStart(50, 50, -4);
    EXPECT_EQ(LinesOfRoutes().size(), 1U);
    EXPECT_EQ(RouteSegments[2].Kind, -4);
    EXPECT_EQ(RouteSegments[2].Dir, -8);
}

TEST_F(RouteBlock, RecordsOfOtherKindsWriteNothing)
{
    for (const Int kind : std::initializer_list<Int>{0, 4, 6, -7})
        AddStart(10, 10, kind);
    EXPECT_TRUE(LinesOfRoutes().empty());
    EXPECT_FALSE(Writers.RouteWritten);
}

// --- circles

TEST_F(RouteBlock, ACircleOnTheFaceIsOneFullTurnFromItsLowestPoint)
{
    AddCircle(100, 80, 30);
    EXPECT_EQ(LinesOfRoutes(), (Texts{"G88G90F2000G55P5T0171S18000G41X100Y50Z5", "G2G90G17X100Y50I0J30"}));
    EXPECT_TRUE(Writers.RouteWritten);
    EXPECT_EQ(Writers.SideMask, 0x10);
    EXPECT_EQ(MeterValue(Meter::PgmCode), 75);
}

TEST_F(RouteBlock, CirclesThatPathsTookAreLeftOut)
{
    AddCircle(100, 80, 30).Pass = 0;
    AddCircle(100, 80, 30).Pass = -1;
    EXPECT_TRUE(LinesOfRoutes().empty());
    EXPECT_FALSE(Writers.RouteWritten);
}

TEST_F(RouteBlock, ACircleHasNoRapidFeed)
{
    RouteCircle& circle = AddCircle(100, 80, 30);
    circle.FeedRapid = 900;
    circle.ExtraSlot = 4;
    EXPECT_EQ(LinesOfRoutes().front(), "G88G90E4F2000G55P5T0171S18000G41X100Y50Z5");
}

TEST_F(RouteBlock, ACirclesNumbersAreRounded)
{
    AddCircle(100, 80, 30.126F);
    EXPECT_EQ(LinesOfRoutes().back(), "G2G90G17X100Y49.87I0J30.13");
}

TEST_F(RouteBlock, ACirclesToolFollowsTheRulesOfRoutes)
{
    AddCircle(100, 80, 30).ToolNo = 7;
    RouteCircle& plain = AddCircle(100, 80, 30);
    plain.ToolNo = 0;
    plain.Diameter = 6.125F;
    const Texts lines = LinesOfRoutes();
    EXPECT_EQ(ToolWordOf(lines[0]), "T027");
    EXPECT_EQ(RouteCircles[1].Group, 2);
    EXPECT_EQ(ToolWordOf(lines[2]), "R54=6.125");
    EXPECT_EQ(RouteCircles[2].Group, 2);
}

TEST_F(RouteBlock, ACircleOfNoToolAtAllStillHasItsOwnWord)
{
    AddCircle(100, 80, 30);
    AddCircle(100, 80, 30).ToolNo = 0;
    EXPECT_EQ(ToolWordOf(LinesOfRoutes()[2]), "R54=0");
}

// --- the block as a whole

TEST_F(RouteBlock, TextsStandBetweenCirclesAndPathsAndAtTheEnd)
{
    Run.GCode2 = {"", "M30 X1"};
    Run.GCode3 = {"", "M40 "};
    AddCircle(100, 80, 30);
    AddStart(10, 10);
    const Texts lines = LinesOfRoutes();
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[2], "M30 X1");
    EXPECT_EQ(lines[3].substr(0, 3), "G88");
    EXPECT_EQ(lines[4], "M40 ");
}

TEST_F(RouteBlock, AnAbortIsSeenAtTheNextCircleAndTheNextRecord)
{
    AddCircle(100, 80, 30);
    AddStart(10, 10);
    AddPoint(20, 10);
    AddPoint(30, 10);
    static int left;
    Events.Pump = [] {
        if (--left == 0)
            kv::Run.RunState = 1;
    };
    for (const int polls : {1, 2, 4}) {
        left = polls;
        Run.RunState = 0;
        CncProgram program;
        EXPECT_FALSE(WriteRouteBlock(program)) << polls;
        EXPECT_EQ(program.Lines.size(), polls == 1 ? 0U : static_cast<std::size_t>(polls)) << polls;
    }
}

TEST_F(RouteBlock, APlaceThatIsNoNumberEndsTheRun)
{
    AddStart(10, 10);
    AddPoint(std::numeric_limits<Single>::quiet_NaN(), 10);
    CncProgram program;
    EXPECT_THROW(WriteRouteBlock(program), RunError);
}

TEST_F(RouteBlock, ALetterThatStandsTwiceWritesTheRoutesTwice)
{
    AddStart(50, 50, -4);
    AddPoint(51, 50, 4);
    AddPoint(10, 10, -5);
    AddPoint(300, 10, 5);
    const Texts once = LinesOfRoutes();
    EXPECT_EQ(LinesOfRoutes(), once);
}

} // namespace
} // namespace kv
