// Routes as lines of a Genesis Evolution program. Arcs are worked out on the 3-4-5 triangle: a bulge of
// 1/2 over a chord of 100 has a radius of 62.5 and its centre 37.5 beside the chord.
#include <array>
#include <cmath>
#include <limits>

#include "platform/run_error.h"
#include "writers/evolution/evolution_scene.h"
#include "writers/writer_memory.h"

namespace kv {
namespace {

class EvolutionRoutes : public EvolutionScene {
  protected:
    const std::string Start = "W#89{ ::WTs WS=1 #1=10 #2=10 #3=-5 #8015=0 #8101=0 #8096=0 #36=5 #40=1 #201=1 "
                              "#203=1 #205=71 #2005=2000 #2002=18000 }W";

    static RouteSegment& OneStart()
    {
        RouteSegments.Clear();
        return AddStart(10, 10);
    }
    // A bulged span from P to C as the only one of a route.
    std::string BulgeLine(PlanePoint p, PlanePoint c, Single bulge, Int side = 5)
    {
        static constexpr int programSides[] = {5, 3, 6, 4, 1, 2};
        RouteSegments.Clear();
        RouteSegment& start = AddStart(ToSingle(p.X), ToSingle(p.Y), -5);
        start.Aux2 = bulge;
        start.Side = side;
        AddPoint(ToSingle(c.X), ToSingle(c.Y), 5).Side = side;
        const Texts lines = WrittenSide(programSides[side - 1]);
        return lines.size() == 2 ? lines[1] : std::to_string(lines.size()) + " lines";
    }
};

TEST_F(EvolutionRoutes, AStraightRouteIsItsStartAndOneLine)
{
    AddStart(10, 10);
    AddPoint(300, 10.126F);
    EXPECT_EQ(WrittenSide(1), (Texts{Start, "W#2201{ ::WTl #1=300 #2=10.13 #3=-5 #8015=0 #2008=5000 }W"}));
}

TEST_F(EvolutionRoutes, AStartWithoutItsOptionalWords)
{
    RouteSegment& start = OneStart();
    start.ToolNo = 0;
    start.Comp = "";
    start.FeedDown = 0;
    start.Speed = 0;
    EXPECT_EQ(WrittenSide(1), Texts{"W#89{ ::WTs WS=1  WB=1 #1=10 #2=10 #3=-5 #8015=0 #8101=0 #8096=0 #36=0 "
                                    "#40= #201=1 #203=1 }W"});
}

TEST_F(EvolutionRoutes, AStartWithAllItsWords)
{
    OneStart().FeedRapid = 9000.5F;
    Writers.EvolutionDiameter = 8;
    EXPECT_EQ(WrittenSide(1), Texts{"W#89{ ::WTs WS=1 #1=10 #2=10 #3=-5 #8015=0 #8101=0 #8096=0 #36=5 #40=1 "
                                    "#9504=9000.5 #201=1 #203=1 #205=71 #1002=8 #2005=2000 #2002=18000 }W"});
}

TEST_F(EvolutionRoutes, CompensationGivesRadiusAndSide)
{
    const std::pair<std::string, std::string> words[] = {
        {"G41 R5", "#36=5 #40=1 "},  {"G42", "#36=0 #40=2 "}, {"R2.5", "#36=2.5 #40= "},
        {"G42R.5", "#36=.5 #40=2 "}, {"G40", "#36=0 #40= "},  {"G41 RX", "#36=0 #40=1 "},
    };
    for (const auto& [compensation, text] : words) {
        OneStart().Comp = compensation;
        EXPECT_NE(WrittenSide(1).at(0).find(" #8096=0 " + text + "#201=1 "), std::string::npos)
            << compensation;
    }
}

TEST_F(EvolutionRoutes, ToolsAreSubstitutedAndKeepTheirGroup)
{
    Config.ToolSubData.push_back({"1", "5", "105"});
    RouteSegment& start = OneStart();
    start.ToolNo = 5;
    start.Group = 7;
    EXPECT_NE(WrittenSide(1).at(0).find("#203=7 #205=105 "), std::string::npos);
}

// A route carries no diameter.
TEST_F(EvolutionRoutes, AStartNamesTheDiameterOfTheLastBoreThatHasOne)
{
    AddBore();
    AddBore();
    VBores[2].Diameter = 0;
    RouteSegment& start = AddStart(10, 10);
    start.Diameter = 20;
    EXPECT_NE(WrittenSide(1).at(2).find("#1002=8 "), std::string::npos);
    AddHBore(1);
    HBores[1].Diameter = .5F;
    EXPECT_NE(WrittenSide(1).at(2).find("#1002=0.5 "), std::string::npos);
    HBores[1].Diameter = 10;
    HBores[1].Tool = "150";
    EXPECT_NE(WrittenSide(1).at(2).find("#1002=10 "), std::string::npos);
    NextDrawing("DOOR"); // of the whole run of the program
    AddStart(10, 10);
    EXPECT_NE(WrittenSide(1).at(0).find("#1002=10 "), std::string::npos);
}

TEST_F(EvolutionRoutes, ABoreThatIsMadeElsewhereLeavesNoDiameter)
{
    AddBore();
    VBores[1].Group = 0;
    AddStart(10, 10);
    EXPECT_EQ(WrittenSide(1), Texts{Start});
}

TEST_F(EvolutionRoutes, TheFeedOfALineIsThatOfTheRecordInFront)
{
    AddStart(10, 10).Feed = 0;
    AddPoint(20, 10).Feed = 700;
    AddPoint(30, 10).Z = 205;
    EXPECT_EQ(WrittenSide(1), (Texts{Start, "W#2201{ ::WTl #1=20 #2=10 #3=-5 #8015=0 }W",
                                     "W#2201{ ::WTl #1=30 #2=10 #3=R5 #8015=0 #2008=700 }W"}));
}

TEST_F(EvolutionRoutes, EachRouteStandsOnTheSideOfItsFirstRecord)
{
    for (Int side = 1; side <= 5; ++side) {
        AddStart(10, 10).Side = side;
        AddPoint(20, 10).Side = 2; // not looked at
    }
    const std::string program = Written();
    for (int side = 1; side <= 6; ++side)
        EXPECT_EQ(SideOf(program, side).size(), side == 2 ? 0U : 2U) << side;
    EXPECT_NE(program.find("\n\n\n\n\n::SIDE=1;3;4;5;6;\r"), std::string::npos);
}

TEST_F(EvolutionRoutes, SideSixIsTheProgramsSideTwo)
{
    AddStart(10, 10).Side = 6;
    EXPECT_EQ(WrittenSide(2).size(), 1U);
}

TEST_F(EvolutionRoutes, ARouteOfNoSideStaysOnTheSideInFront)
{
    AddHBore(2);
    AddStart(10, 10).Side = 0;
    EXPECT_EQ(WrittenSide(3).size(), 2U);
}

TEST_F(EvolutionRoutes, AStartInsideARouteWritesNothing)
{
    AddStart(10, 10);
    AddPoint(20, 10);
    AddPoint(20, 10, -1);
    AddPoint(30, 10);
    EXPECT_EQ(WrittenSide(1).size(), 3U);
}

TEST_F(EvolutionRoutes, DeadRecordsWriteNothing)
{
    AddPoint(10, 10, 0).Dir = -8;
    WriteEvolutionProgram();
    EXPECT_FALSE(Stands("PROG/DOOR.CNC"));
}

TEST_F(EvolutionRoutes, AStartMarkGivesTheStartToTheRecordBehindIt)
{
    AddStart(1, 1, -4);
    AddPoint(2, 2, 4);
    AddPoint(10, 10, -1);
    AddPoint(300, 10);
    EXPECT_EQ(WrittenSide(1), (Texts{Start, "W#2201{ ::WTl #1=300 #2=10 #3=-5 #8015=0 #2008=5000 }W"}));
}

TEST_F(EvolutionRoutes, ABulgeIsAnArcByRadiusAndCentreOffset)
{
    EXPECT_EQ(BulgeLine({0, 0}, {100, 0}, .5F),
              "W#2113{ ::WTa #8015=0 #3=-5 #31=50 #32=37.5 #34=1 #8017=62.5 "
              "#8044=323.13 #2008=5000 }W");
}

TEST_F(EvolutionRoutes, ABulgeBelowNothingIsClockwise)
{
    EXPECT_EQ(BulgeLine({0, 0}, {100, 0}, -.5F), "W#2113{ ::WTa #8015=0 #3=-5 #31=50 #32=-37.5 #34=0 "
                                                 "#8017=62.5 #8044=36.87 #2008=5000 }W");
}

TEST_F(EvolutionRoutes, ABulgeAboveOneGoesTheLongWayRound)
{
    EXPECT_EQ(BulgeLine({0, 0}, {100, 0}, 2), "W#2113{ ::WTa #8015=0 #3=-5 #31=50 #32=-37.5 #34=1 #8017=62.5 "
                                              "#8044=36.87 #2008=5000 }W");
    EXPECT_EQ(BulgeLine({0, 0}, {100, 0}, -2), "W#2113{ ::WTa #8015=0 #3=-5 #31=50 #32=37.5 #34=0 #8017=62.5 "
                                               "#8044=323.13 #2008=5000 }W");
}

TEST_F(EvolutionRoutes, ABulgeOfExactlyOneIsAHalfCircle)
{
    EXPECT_EQ(BulgeLine({100, 50}, {200, 50}, 1), "W#2113{ ::WTa #8015=0 #3=-5 #31=50 #32=0 #34=1 #8017=50. "
                                                  "#8044=0 #2008=5000 }W");
    EXPECT_EQ(BulgeLine({200, 50}, {100, 50}, -1), "W#2113{ ::WTa #8015=0 #3=-5 #31=-50 #32=0 #34=0 "
                                                   "#8017=50. #8044=180 #2008=5000 }W");
}

TEST_F(EvolutionRoutes, OnSidesOneAndThreeABulgeTurnsTheOtherWay)
{
    const std::string turned = "W#2113{ ::WTa #8015=0 #3=-5 #31=50 #32=-37.5 #34=0 #8017=62.5 #8044=36.87 "
                               "#2008=5000 }W";
    const std::string drawn = "W#2113{ ::WTa #8015=0 #3=-5 #31=50 #32=37.5 #34=1 #8017=62.5 #8044=323.13 "
                              "#2008=5000 }W";
    for (const Int side : std::array<Int, 2>{1, 3})
        EXPECT_EQ(BulgeLine({0, 0}, {100, 0}, .5F, side), turned) << side;
    for (const Int side : std::array<Int, 4>{2, 4, 5, 6})
        EXPECT_EQ(BulgeLine({0, 0}, {100, 0}, .5F, side), drawn) << side;
    EXPECT_EQ(BulgeLine({0, 0}, {100, 0}, -.5F, 3), drawn);
}

TEST_F(EvolutionRoutes, AnOffsetCountsFromTheSpansStart)
{
    EXPECT_EQ(BulgeLine({10, 20}, {10, 120}, .5F), "W#2113{ ::WTa #8015=0 #3=-5 #31=-37.5 #32=50 #34=1 "
                                                   "#8017=62.5 #8044=53.13 #2008=5000 }W");
}

TEST_F(EvolutionRoutes, ABulgeWithoutChordGivesNoLine)
{
    EXPECT_EQ(BulgeLine({10, 10}, {10, 10}, .5F), "1 lines");
    EXPECT_EQ(BulgeLine({0, 0}, {.000004F, 0}, .5F), "1 lines") << "a chord of 0 to five decimals";
}

// Behind an arc its end angle stands where a bulge would.
TEST_F(EvolutionRoutes, AfterAnArcItsEndAngleIsTakenForABulge)
{
    AddBore(); // lines on the face begin there
    AddArc({100, 50}, {150, 50}, {200, 50}, 180, .5F, 1);
    RouteSegments[1].Dir = -8;
    AddPoint(300, 50);
    EXPECT_EQ(WrittenSide(1).at(3),
              "W#2113{ ::WTa #8015=0 #3=-5 #31=50 #32=37.5 #34=1 #8017=62.5 #8044=323.13 "
              "#2008=5000 }W");
}

TEST_F(EvolutionRoutes, AnArcNamesItsCentreAndEndAngle)
{
    RouteSegments.Clear();
    AddStart(100, 50);
    RouteSegment& end = AddArc({100, 50}, {150, 50}, {150, 0}, 180, 99, 1);
    end.Z = 205;
    EXPECT_EQ(WrittenSide(1).at(1),
              "W#2113{ ::WTa #8015=0 #34=1 #31=a;150 #32=a;50 #3=R5 #8044=270. #2008=4000 }W");
}

TEST_F(EvolutionRoutes, TheEndAngleOfAnArcIsWorkedOutFromItsPoints)
{
    AddBore();
    const std::pair<PlanePoint, std::string> ends[] = {
        {{200, 50}, "0.00"}, {{180, 90}, "53.13"},  {{110, 90}, "135."},
        {{100, 50}, "180."}, {{180, 10}, "306.87"},
    };
    for (const auto& [end, angle] : ends) {
        RouteSegments.Clear();
        AddArc({100, 50}, {150, 50}, end, 180, 0, 1);
        RouteSegments[1].Dir = -8;
        EXPECT_NE(WrittenSide(1).at(2).find(" #8044=" + angle + " #2008=4000 }W"), std::string::npos)
            << angle;
    }
}

TEST_F(EvolutionRoutes, TheDirOfAnArcsEndIsItsDirection)
{
    AddBore();
    AddArc({100, 50}, {150, 50}, {200, 50}, 180, 0, 0);
    RouteSegments[1].Dir = -8;
    EXPECT_NE(WrittenSide(1).at(2).find("#8015=0 #34=0 #31=a;"), std::string::npos);
    RouteSegments[2].Dir = -1;
    EXPECT_NE(WrittenSide(1).at(2).find("#8015=0 #34=1 #31=a;"), std::string::npos);
}

TEST_F(EvolutionRoutes, AMoveInFrontOfAStartIsRefused)
{
    Run.LayerTable = {"BORDER", "VBORE DRILLING", "GROOVE", "HBORE", "ROUTEZ5"};
    AddBore(); // what stands in front opens no route
    AddPoint(300, 50);
    try {
        WriteEvolutionProgram();
        ADD_FAILURE() << "not refused";
    } catch (const RunError& error) {
        EXPECT_EQ(error.Cause, "Layer ROUTEZ5: a move stands in front of its route's start");
    }
    EXPECT_FALSE(Stands("PROG/DOOR.CNC"));
}

TEST_F(EvolutionRoutes, AnArcThatOpensARouteBringsItsStart)
{
    RouteSegment& end = AddArc({10, 10}, {60, 10}, {60, 60}, 180, 90, 1);
    end.Comp = "G42"; // the first record's words count
    end.Speed = 1;
    RouteSegments[1].Dir = -8;
    RouteSegments[1].Side = 2;
    end.Z = 7;
    EXPECT_EQ(WrittenSide(3),
              (Texts{Start, "W#2113{ ::WTa #8015=0 #34=1 #31=a;60 #32=a;10 #3=-7 #8044=90. #2008=4000 }W"}));
}

TEST_F(EvolutionRoutes, AnArcWithoutAFeedNamesNone)
{
    AddArc({10, 10}, {60, 10}, {60, 60}, 180, 90, 1).Feed = 123;
    RouteSegments[1].Dir = -8;
    RouteSegments[1].Feed = 0;
    EXPECT_EQ(WrittenSide(1).at(1), "W#2113{ ::WTa #8015=0 #34=1 #31=a;60 #32=a;10 #3=-5 #8044=90. }W");
}

TEST_F(EvolutionRoutes, HalfAnArcAtTheEndWritesNothing)
{
    AddStart(10, 10);
    AddPoint(20, 10, -3).Dir = -8;
    EXPECT_EQ(WrittenSide(1), Texts{Start});
}

TEST_F(EvolutionRoutes, ACoordinateThatIsNoNumberEndsTheJob)
{
    AddStart(std::numeric_limits<Single>::infinity(), 10);
    try {
        WriteEvolutionProgram();
        ADD_FAILURE() << "written";
    } catch (const RunError& error) {
        EXPECT_EQ(error.Number, ErrorOverflow);
    }
    EXPECT_FALSE(Stands("PROG/DOOR.CNC"));
}

TEST(ArcCentre, LiesLeftOfTheWayFromTheSecondPointForARadiusAboveNothing)
{
    const PlanePoint left = ArcCentre({100, 0}, {0, 0}, 62.5);
    EXPECT_DOUBLE_EQ(left.X, 50);
    EXPECT_DOUBLE_EQ(left.Y, 37.5);
    const PlanePoint right = ArcCentre({100, 0}, {0, 0}, -62.5);
    EXPECT_DOUBLE_EQ(right.X, 50);
    EXPECT_DOUBLE_EQ(right.Y, -37.5);
    const PlanePoint steep = ArcCentre({10, 120}, {10, 20}, 62.5);
    EXPECT_DOUBLE_EQ(steep.X, -27.5);
    EXPECT_DOUBLE_EQ(steep.Y, 70);
}

TEST(ArcCentre, ARadiusShorterThanHalfTheChordIsTakenByItsAbsoluteRoot)
{
    const PlanePoint centre = ArcCentre({100, 0}, {0, 0}, 30); // 50 and 30 leave 40
    EXPECT_DOUBLE_EQ(centre.Y, 40);
}

TEST(ArcCentre, TheDistanceOfThePointsIsTakenToFiveDecimals)
{
    // .000014 counts as .00001, so the way beside the chord is 1.4 times as long.
    const PlanePoint centre = ArcCentre({0, 0}, {.000014, 0}, 1);
    EXPECT_NEAR(centre.Y, -1.4, 1e-9);
}

TEST(ArcCentre, DecimalsAreRoundedHalfAwayFromZeroOnTheBinaryValue)
{
    EXPECT_EQ(RoundedToFiveDecimals(0.015625), .01563); // a tie
    EXPECT_EQ(RoundedToFiveDecimals(1.046875), 1.04688);
    EXPECT_EQ(RoundedToFiveDecimals(0.0078125), .00781);
    EXPECT_EQ(RoundedToFiveDecimals(std::nextafter(0.015625, 0)), .01562);
    EXPECT_EQ(RoundedToFiveDecimals(1.000005), 1.00001); // lies above the tie
    EXPECT_EQ(RoundedToFiveDecimals(2.000005), 2);       // lies below it
    EXPECT_EQ(RoundedToFiveDecimals(99.999996), 100);
    EXPECT_EQ(RoundedToFiveDecimals(123456.789), 123456.789);
    EXPECT_EQ(RoundedToFiveDecimals(.000004), 0);
    EXPECT_EQ(RoundedToFiveDecimals(0), 0);
    EXPECT_EQ(RoundedToFiveDecimals(3e38), 3e38);
}

} // namespace
} // namespace kv
