// The checker itself: each fault is told at its place, sound programs have none.
#include <limits>

#include "support/program_checker.h"
#include "writers/cnc/route_records.h"

namespace kv {
namespace {

using test::CurrentRoutes;
using test::LeadCheck;
using test::LeadFaults;
using test::PathFaults;
using test::ProgramFaults;
using test::RouteCheck;
using test::RouteFaults;
using test::ToolPath;
using test::ToolPoint;

const std::string Open = "G88G90F2000G55P5T01a5S18000G41R5X100Y50Z5"; // at (100, 50)

// Faults of lines behind header, name and a start.
Texts FaultsOf(const Texts& moves, const std::string& start = Open)
{
    Texts lines{"G71X600Y400Z18T00N6L3", "G150(NAN=X INF)", start};
    lines.insert(lines.end(), moves.begin(), moves.end());
    lines.emplace_back("M2");
    return ProgramFaults(lines);
}

TEST(ProgramChecker, SoundMovesHaveNoFault)
{
    EXPECT_EQ(FaultsOf({"G1G90F5000X100Y0Z5", "G38G90X100Y50A0.00Z5", "G37G90X100Y50A270.Z-.5",
                        "G38G90X200Y0U50Z=a", "G37G90X100Y0U-60Z=Z", "G37G90X50Y0A.5Z5",
                        "G113G90G17X200Y0I150J50", "G2G90G17X200Y0I0J30", "G1G90X1Y2Z3C1V2"}),
              Texts());
    EXPECT_EQ(FaultsOf({}), Texts());
}

TEST(ProgramChecker, WordsThatAreNoNumbersAreTold)
{
    for (const std::string word : {"nan", "inf", "1E+05", "", "-", ".", "1.2.3", "--1", "=", "0x1", "1,5"})
        EXPECT_FALSE(FaultsOf({"G1G90X" + word + "Y0Z5"}).empty()) << word;
    EXPECT_EQ(FaultsOf({"G37G90X50Y0A.Z5"}).front(), "line 3: \"A.\" is no number");
    EXPECT_EQ(FaultsOf({"G1G90FnanX1Y0Z5"}), Texts{"line 3: \"Fnan\" is no number"});
    EXPECT_EQ(FaultsOf({"G1G90X1Y0ZNANC1"}).front().substr(0, 7), "line 3:");
    EXPECT_EQ(ProgramFaults({"G71XinfY400"}), Texts{"line 0: \"Xinf\" is no number"});
    EXPECT_EQ(ProgramFaults({"H", "N", "G81G90G55P5R54=8X1YnanZ2"}).size(), 2U); // and so it has no Y
}

TEST(ProgramChecker, AStartHasAPlaceAndASide)
{
    EXPECT_EQ(FaultsOf({}, "G88G90G55P5T0171Y1Z5"), Texts{"line 2: G88 has no X"});
    EXPECT_EQ(FaultsOf({}, "G88G90G55P5T0171X1Y1"), Texts{"line 2: G88 has no Z"});
    EXPECT_EQ(FaultsOf({}, "G88G90G55P0T0171X1Y1Z5"), Texts{"line 2: a route on no side of the panel"});
    EXPECT_EQ(FaultsOf({}, "G88G90G55T0171X1Y1Z5"), Texts{"line 2: a route on no side of the panel"});
}

TEST(ProgramChecker, MovesBelongToARoute)
{
    EXPECT_EQ(ProgramFaults({"H", "N", "G1G90X1Y1Z1"}), Texts{"line 2: a move outside of any route"});
    EXPECT_EQ(FaultsOf({"G81G90G55P5R54=8X1Y1Z1", "G1G90X1Y1Z1"}),
              Texts{"line 4: a move outside of any route"});
    EXPECT_EQ(FaultsOf({"G1G90X1Y1"}), Texts{"line 3: G1 has no Z"});
    EXPECT_EQ(FaultsOf({"G1 X1"}), Texts()); // a text of the drawing
}

TEST(ProgramChecker, AnAngleArcHasARadius)
{
    EXPECT_EQ(FaultsOf({"G37G90X100Y50A90.Z5"}),
              Texts{"line 3: an arc around the place where the tool stands"});
    // The end of the first arc, (150, 0), is the place of the second.
    EXPECT_EQ(FaultsOf({"G37G90X100Y0A0.00Z5", "G37G90X150Y0A90.Z5"}),
              Texts{"line 4: an arc around the place where the tool stands"});
}

TEST(ProgramChecker, AnAngleArcLeadsToItsComputedEnd)
{
    const std::vector<ToolPoint> path = ToolPath({"H", "N", Open, "G38G90X100Y0A180.Z5", "G1G90X1Y2Z5"});
    ASSERT_EQ(path.size(), 3U);
    EXPECT_TRUE(path[0].Opens);
    EXPECT_NEAR(path[1].X, 50, 1e-9);
    EXPECT_NEAR(path[1].Y, 0, 1e-9);
    EXPECT_NEAR(path[1].Slack, 50 * 8.73e-6, 1e-6);
    EXPECT_EQ(path[2].X, 1);
    EXPECT_EQ(path[2].Slack, 0);
    EXPECT_EQ(path[2].Line, 4U);
}

TEST(ProgramChecker, ABulgesChordIsNoLongerThanItsDiameter)
{
    EXPECT_EQ(FaultsOf({"G38G90X200Y50U50Z5"}), Texts());
    EXPECT_EQ(FaultsOf({"G38G90X200Y50U-49.996Z5"}), Texts());
    EXPECT_EQ(FaultsOf({"G38G90X200Y50U49.9Z5"}),
              Texts{"line 3: a bulge whose chord is longer than its diameter"});
    EXPECT_EQ(FaultsOf({"G38G90X100Y50U49.9Z5"}), Texts{"line 3: a bulge without length"});
}

TEST(ProgramChecker, AnArcByItsCentreEndsOnItsCircle)
{
    const std::string face = "G88G90G55P5T0171X100Y50Z5";
    EXPECT_EQ(FaultsOf({"G2G90G17X200Y50I50J0"}, face), Texts());
    EXPECT_EQ(FaultsOf({"G2G90G17X200.1Y50I50J0"}, face),
              Texts{"line 3: an arc that ends beside its circle"});
    EXPECT_EQ(FaultsOf({"G2G90G17X100Y50I0J0"}, face),
              Texts{"line 3: an arc around the place where the tool stands"});
    EXPECT_EQ(FaultsOf({"G2G90G18X200Y50I50J0"}, face), Texts{"line 3: an arc that is not in plane G17"});
    EXPECT_EQ(FaultsOf({"G2G90G17Y50I50J0"}, face).front(), "line 3: G2 has no X");
}

TEST(ProgramChecker, ArcsOfEdgesLieInTheirPlane)
{
    const std::string above = "G88G90G55P1T0171X300Y12Z15";
    EXPECT_EQ(FaultsOf({"G2G90G18X310Z25I0K10"}, above), Texts());
    EXPECT_EQ(FaultsOf({"G2G90G18X310Z26I0K10"}, above), Texts{"line 3: an arc that ends beside its circle"});
    EXPECT_EQ(FaultsOf({"G38G90X300Y12U5Z25"}, above), Texts()); // a chord of 10 in the plane
    EXPECT_EQ(FaultsOf({"G38G90X300Y99U5Z26"}, above),
              Texts{"line 3: a bulge whose chord is longer than its diameter"});
    const std::string left = "G88G90G55P3T0171X12Y300Z15";
    EXPECT_EQ(FaultsOf({"G2G90G19Y315Z25J3K15"}, left), Texts{"line 3: an arc that ends beside its circle"});
    EXPECT_EQ(FaultsOf({"G2G90G19Y310Z25J0K10"}, left), Texts());
    EXPECT_EQ(FaultsOf({"G2G90G18Y310Z25J0K10"}, left), Texts{"line 3: an arc that is not in plane G19"});
}

TEST(ProgramChecker, AFitArcHasACircle)
{
    EXPECT_EQ(FaultsOf({"G112G90G17X120Y50I110J50"}), Texts{"line 3: no circle through three points"});
    EXPECT_EQ(FaultsOf({"G112G90G17X120Y50J60"}).front(), "line 3: G112 has no I");
}

class RouteChecker : public RouteRecords {
  protected:
    // A quarter arc from (100, 10) to (150, 60) between two lines.
    void AddSound()
    {
        AddStart(10, 10);
        AddPoint(100, 10);
        AddArc({100, 10}, {100, 60}, {150, 60}, 270, 0, -1);
        AddPoint(150, 60).Kind = -1;
        AddPoint(150, 200);
    }
    static Texts Faults(const RouteCheck& check = {}) { return RouteFaults(CurrentRoutes(), check); }
    Texts PathFaultsOf() const
    {
        const std::vector<RouteSegment> records = CurrentRoutes();
        Texts lines{"H", "N"};
        for (const std::string& line : LinesOfRoutes())
            lines.push_back(line);
        EXPECT_EQ(ProgramFaults(lines, {0.02}), Texts());
        return PathFaults(lines, records);
    }
};

TEST_F(RouteChecker, SoundRecordsHaveNoFault)
{
    AddSound();
    AddStart(50, 50, -4); // a start mark
    AddPoint(51, 50, 4);
    AddPoint(100, 100, -5).Aux2 = 1;
    AddPoint(200, 100, 5).Aux2 = -0.3F;
    AddPoint(300, 100, 5);
    AddStart(300, 250, -3);
    RouteSegments[RouteSegments.Last()].Aux1 = 300;
    RouteSegments[RouteSegments.Last()].Aux2 = 200;
    AddPoint(300, 250, 3).Aux1 = 90; // the full circle
    RouteSegments[RouteSegments.Last()].Aux2 = 90;
    EXPECT_EQ(Faults(), Texts());
    EXPECT_EQ(PathFaultsOf(), Texts());
}

TEST_F(RouteChecker, NumbersAreFinite)
{
    AddSound();
    RouteSegments[4].Feed = std::numeric_limits<Single>::infinity();
    RouteSegments[2].Z = std::numeric_limits<Single>::quiet_NaN();
    EXPECT_EQ(Faults(),
              (Texts{"record 2: a value that is no number", "record 4: a value that is no number"}));
}

TEST_F(RouteChecker, ArcsStartWhereTheToolStands)
{
    AddSound();
    RouteSegments[2].X = 100.02F;
    EXPECT_EQ(Faults(), Texts{"record 3: an arc that does not start where the tool stands"});
}

TEST_F(RouteChecker, AnArcBehindAnArcStartsAtItsEndAngle)
{
    AddSound();
    AddArc({150, 200}, {150, 250}, {200, 250}, 270, 0, -1);
    AddArc({200, 250}, {200, 240}, {210, 240}, 90, 0, 0);
    EXPECT_EQ(Faults(), Texts());
    RouteSegments[8].Aux2 = 1; // 0.87 away
    EXPECT_EQ(Faults(), (Texts{"record 8: an arc whose end angle points elsewhere",
                               "record 9: an arc that does not start where the tool stands"}));
}

TEST_F(RouteChecker, ACircleMayGoOnAroundBehindItself)
{
    AddStart(10, 10);
    AddPoint(100, 10);
    AddArc({100, 10}, {100, 60}, {100, 10}, 270, 270, -1);
    AddArc({150, 60}, {100, 60}, {150, 60}, 270, 0, -1); // both records at the new entry
    EXPECT_EQ(Faults(), Texts());
    RouteSegments[5].Aux1 = 101;
    EXPECT_FALSE(Faults().empty());
}

TEST_F(RouteChecker, RecordsJoinUnlessTheCallerSaysOtherwise)
{
    AddSound();
    RouteSegments[5].X = 150.02F;
    EXPECT_EQ(Faults(), Texts{"record 5: a line that does not start where the tool stands"});
    EXPECT_EQ(Faults({.Joined = false}), Texts());
    RouteSegments[5].X = 150;
    RouteSegments[3].Y = 8;
    RouteSegments[4].X = 152;
    RouteSegments[5].X = 152;
    EXPECT_EQ(Faults(), (Texts{"record 3: an arc that does not start where the tool stands",
                               "record 5: a line that does not start where the tool stands"}));
    EXPECT_EQ(Faults({.Joined = false}), Texts());
    Texts lines{"H", "N"};
    const std::vector<RouteSegment> records = CurrentRoutes();
    for (const std::string& line : LinesOfRoutes())
        lines.push_back(line);
    EXPECT_EQ(PathFaults(lines, records), Texts()); // it follows the tool, which is 2 nearer
}

TEST_F(RouteChecker, ArcsEndOnTheirCircle)
{
    AddSound();
    RouteSegments[4].X = 150.02F;
    EXPECT_EQ(Faults(), Texts{"record 4: an arc that ends beside its circle"});
    EXPECT_EQ(Faults({.EndsAtPoints = false}), Texts());
    RouteSegments[4].X = 150;
    RouteSegments[4].Aux2 = 0.05F;
    RouteSegments[4].Side = RouteSegments[3].Side = 1; // an edge names the end point
    EXPECT_EQ(Faults(), Texts());
    RouteSegments[4].Side = RouteSegments[3].Side = 5;
    EXPECT_EQ(Faults().front(), "record 4: an arc whose end angle points elsewhere");
    EXPECT_EQ(Faults({.AnglesHold = false}), Texts());
}

TEST_F(RouteChecker, ArcsHaveARadiusAndALength)
{
    AddStart(10, 10);
    AddArc({10, 10}, {10, 10}, {10, 10}, 0, 90, 0);
    EXPECT_EQ(Faults(), Texts{"record 2: an arc of no radius"});
    for (const Int dir : std::initializer_list<Int>{0, -1}) {
        RouteSegments.Clear();
        AddStart(10, 10);
        AddArc({10, 10}, {60, 10}, {10, 10}, 180, dir == 0 ? 179.9995F : 180.0005F, dir);
        EXPECT_EQ(Faults().front(), "record 2: an arc of no length");
    }
    RouteSegments[3].Aux2 = 180;
    EXPECT_EQ(Faults(), Texts()); // a full circle
}

TEST_F(RouteChecker, ArcsHaveBothOfTheirRecords)
{
    AddSound();
    RouteSegments[4].Kind = 1;
    EXPECT_EQ(Faults().front(), "record 3: half an arc");
    RouteSegments.CutTo(3);
    EXPECT_EQ(Faults(), Texts{"record 3: half an arc"});
}

TEST_F(RouteChecker, NoLineTakesAnEndAngleAsItsBulge)
{
    AddStart(10, 10);
    AddArc({10, 10}, {60, 10}, {60, 60}, 180, 90, 0);
    AddPoint(60, 100);
    EXPECT_EQ(Faults(), Texts{"record 4: a line that takes an arc's end angle as its bulge"});
}

TEST_F(RouteChecker, RecordsBelongToARouteAndAreOfKnownKinds)
{
    AddPoint(10, 10);
    AddStart(10, 10).Kind = -2;
    EXPECT_EQ(Faults(), (Texts{"record 1: a record outside of any route",
                               "record 2: a record of a kind that is not walked"}));
}

TEST_F(RouteChecker, ThePathIsThatOfTheRecords)
{
    AddSound();
    std::vector<RouteSegment> records = CurrentRoutes();
    Texts lines{"H", "N", "G88G90G55P5T0170X9Y9Z9"}; // a bore of a router tool
    for (const std::string& line : LinesOfRoutes())
        lines.push_back(line);
    EXPECT_EQ(PathFaults(lines, records), Texts());
    records[4].Y = 60.02F;
    EXPECT_EQ(PathFaults(lines, records, {.EndsAtPoints = false, .AnglesHold = false}),
              Texts{"line 5, record 4: the tool goes elsewhere"});
    records[4].Y = 60;
    records[6].X = 151;
    EXPECT_EQ(PathFaults(lines, records), Texts{"line 6, record 6: the tool goes elsewhere"});
    records[6].X = 150;
    lines.insert(lines.begin() + 6, lines[6]);
    EXPECT_EQ(PathFaults(lines, records).back(), "5 places for 4 records"); // the start and three moves
}

TEST_F(RouteChecker, ThePathOfEdgesIsThatOfTheDrawing)
{
    Run.SideMinY[1] = 450;
    Run.SideMaxX[3] = -50;
    for (const Int side : std::initializer_list<Int>{1, 3}) {
        AddStart(-60, 460, -5);
        AddPoint(-80, 480, 5).Aux2 = 0.5F;
        AddPoint(-90, 490, 5);
        AddArc({-90, 490}, {-100, 490}, {-100, 500}, 0, 90, -1);
        for (Long i = 1; i <= RouteSegments.Last(); ++i)
            RouteSegments[i].Side = side;
        EXPECT_EQ(PathFaultsOf(), Texts()) << side;
        RouteSegments.Clear();
    }
}

class LeadChecker : public RouteChecker {
  protected:
    static Texts Leads(const LeadCheck& check = {}) { return LeadFaults(CurrentRoutes(), check); }
    // Quarter arcs of 20 on the left of a line from (100, 100) to (200, 100), G41.
    static void AddLed()
    {
        AddArc({80, 120}, {100, 120}, {100, 100}, 180, 270, -1);
        RouteSegments[1].Dir = -8;
        AddPoint(100, 100, -1);
        AddPoint(200, 100);
        AddArc({200, 100}, {200, 120}, {220, 120}, 270, 0, -1);
    }
};

TEST_F(LeadChecker, LeadsAreTangentAndOnTheToolsSide)
{
    AddLed();
    EXPECT_EQ(Faults(), Texts());
    EXPECT_EQ(Leads(), Texts());
    for (Long i = 1; i <= RouteSegments.Last(); ++i)
        RouteSegments[i].Comp = "G42";
    EXPECT_EQ(Leads(),
              (Texts{"record 2: a lead on the finished side", "record 6: a lead on the finished side"}));
    EXPECT_EQ(Leads({.In = false}), Texts{"record 6: a lead on the finished side"});
    EXPECT_EQ(Leads({.Out = false}), Texts{"record 2: a lead on the finished side"});
    EXPECT_EQ(Leads({.OnToolSide = false}), Texts());
}

TEST_F(LeadChecker, ACornerIsTold)
{
    AddLed();
    RouteSegments[4].Y = 101; // 0.57 degrees
    EXPECT_EQ(Leads(), (Texts{"record 2: a lead that meets its route in a corner",
                              "record 6: a lead that meets its route in a corner"}));
    RouteSegments[4].Y = 100.8F; // 0.46 degrees
    EXPECT_EQ(Leads(), Texts());
}

TEST_F(LeadChecker, TheWayRoundAndBulgesCount)
{
    AddLed();
    RouteSegments[2].Dir = 0; // it arrives the other way
    EXPECT_EQ(Leads().size(), 1U);
    RouteSegments.Clear();
    // A quarter circle, bulge tan(22.5), from (80, 120) to (100, 100), then along X.
    AddStart(80, 120, -5).Aux2 = 0.41421356F;
    AddPoint(100, 100, 5);
    AddPoint(200, 100, 5);
    EXPECT_EQ(Leads(), Texts());
    RouteSegments[1].Aux2 = -0.41421356F; // it would arrive downward
    EXPECT_EQ(Leads(), Texts{"record 2: a lead that meets its route in a corner"});
}

TEST_F(LeadChecker, ARouteOfOneArcHasNoLead)
{
    AddArc({80, 120}, {100, 120}, {100, 100}, 180, 270, -1);
    RouteSegments[1].Dir = -8;
    EXPECT_EQ(Leads(), Texts());
}

} // namespace
} // namespace kv
