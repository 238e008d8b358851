// Lines of CNC90, WINNER90 and GENESIS programs, written by hand, as machine steps.
#include "machine/cnc_reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace kv::test {
namespace {

using Program = std::vector<std::string>;

const std::string Header = "G71X600Y400Z18T00N9L6", Name = "G150(X1 G88)A600";

MachineSteps StepsOf(const Program& operations, const CncReading& how = {})
{
    Program lines = {Header, Name};
    lines.insert(lines.end(), operations.begin(), operations.end());
    lines.push_back("M2");
    return ReadCnc(lines, how);
}

void ExpectAt(const PathPoint& place, double x, double y)
{
    EXPECT_NEAR(place.X, x, 1e-9);
    EXPECT_NEAR(place.Y, y, 1e-9);
}

// The one move behind a start at X100 Y50.
Move MoveBehind(const std::string& line, const std::string& corner = "G55")
{
    const MachineSteps steps = StepsOf({"G88G90" + corner + "P5T0171X100Y50Z5", line});
    EXPECT_EQ(steps.Unread, Program());
    EXPECT_EQ(steps.Cuts.size(), 1U);
    return steps.Cuts.at(0).Moves.at(0);
}

TEST(CncReader, HeaderInMillimetresAndInches)
{
    const MachineSteps metric = ReadCnc({Header, Name, "M2"});
    EXPECT_EQ(metric.Length, 600);
    EXPECT_EQ(metric.Width, 400);
    EXPECT_EQ(metric.Thickness, 18);
    const MachineSteps inches = ReadCnc({"G70X30Y20Z.75T00N9L6", Name, "G88G90G55P5T0171G41R.25X1Y2Z.5",
                                         "G1G90X2Y2Z.5", "G81G90G55P5R54=.5X1Y1Z.25", "M2"});
    EXPECT_EQ(inches.Length, 762);
    EXPECT_NEAR(inches.Thickness, 19.05, 1e-9);
    EXPECT_EQ(inches.Cuts.at(0).Radius, 6.35);
    ExpectAt(inches.Cuts.at(0).Moves.at(0).To, 50.8, 50.8);
    EXPECT_EQ(inches.Cuts.at(0).StartDepth, 12.7);
    EXPECT_EQ(inches.Bores.at(0).Diameter, 12.7);
    EXPECT_EQ(inches.Unread, Program());
}

TEST(CncReader, CommentsDescriptionOffsetAndEmptyLinesArePassedOver)
{
    const MachineSteps steps =
        ReadCnc({Header, Name, "* BY HAND", "- G88", "G92G54P5Z1Y2X12.5", "", "M2", "M2"});
    EXPECT_EQ(steps.Unread, Program());
    EXPECT_TRUE(steps.Cuts.empty() && steps.Bores.empty());
}

TEST(CncReader, StartOfARouteHasToolRadiusAndSide)
{
    const MachineSteps steps =
        StepsOf({"G88G90E2F2000B900G55P5T0171S18000G41R5X10Y20Z5C1V2", "G88G90G55P5R54=12T02a5G42R6X1Y2Z3",
                 "G88G90G55P5R54=12T01c3X1Y2Z3", "G88G90F1200G55P5T0205M66X600Y200Z16"});
    EXPECT_EQ(steps.Unread, Program());
    ASSERT_EQ(steps.Cuts.size(), 4U);
    EXPECT_EQ(steps.Cuts[0].Radius, 5);
    EXPECT_EQ(steps.Cuts[0].Side, 1);
    EXPECT_EQ(steps.Cuts[0].Tool, "0171");
    EXPECT_EQ(steps.Cuts[0].StartDepth, 5);
    EXPECT_EQ(steps.Cuts[0].Line, 3U);
    ExpectAt(steps.Cuts[0].Start, 10, 20);
    EXPECT_EQ(steps.Cuts[1].Radius, 6);
    EXPECT_EQ(steps.Cuts[1].Side, -1);
    EXPECT_EQ(steps.Cuts[1].Tool, "02a5");
    EXPECT_EQ(steps.Cuts[2].Radius, 6); // of the diameter
    EXPECT_EQ(steps.Cuts[2].Side, 0);
    EXPECT_EQ(steps.Cuts[3].Radius, 0);
    EXPECT_TRUE(steps.Cuts[3].Moves.empty());
}

TEST(CncReader, LinesGoFromPlaceToPlaceAndDeeper)
{
    const MachineSteps steps =
        StepsOf({"G88G90G55P5T0171X10Y20Z5", "G1G90F5000X300Y20Z5", "G1G90X300Y-1.5Z7.5"});
    const std::vector<Move>& moves = steps.Cuts.at(0).Moves;
    ASSERT_EQ(moves.size(), 2U);
    ExpectAt(moves[0].From, 10, 20);
    ExpectAt(moves[1].From, 300, 20);
    ExpectAt(moves[1].To, 300, -1.5);
    EXPECT_EQ(moves[1].DepthFrom, 5);
    EXPECT_EQ(moves[1].DepthTo, 7.5);
    EXPECT_EQ(moves[1].Line, 5U);
    EXPECT_FALSE(moves[1].IsArc);
}

TEST(CncReader, ArcsByCentreAndEndAngle)
{
    const Move left = MoveBehind("G38G90X100Y70A0.00Z5"), right = MoveBehind("G37G90X100Y70A0.00Z5");
    ExpectAt(left.Centre, 100, 70);
    ExpectAt(left.To, 120, 70);
    EXPECT_NEAR(left.Sweep, 90, 1e-9);
    ExpectAt(right.To, 120, 70);
    EXPECT_NEAR(right.Sweep, -270, 1e-9);
    const Move full = MoveBehind("G37G90X100Y70A270.Z5");
    EXPECT_NEAR(full.Sweep, -360, 1e-9);
    ExpectAt(full.To, 100, 50);
}

TEST(CncReader, WhatFollowsAnArcBeginsAtItsEnd)
{
    const MachineSteps steps =
        StepsOf({"G88G90G56P5T0171X100Y50Z5", "G38G90X100Y70A0.00Z5", "G2G90G17X80Y50I0J-10"});
    EXPECT_EQ(steps.Unread, Program());
    const std::vector<Move>& moves = steps.Cuts.at(0).Moves;
    ExpectAt(moves.at(1).From, 520, 330);
    ExpectAt(moves.at(1).Centre, 520, 340);
    ExpectAt(moves.at(1).To, 520, 350);
    EXPECT_NEAR(moves.at(1).Sweep, -180, 1e-9);
}

TEST(CncReader, ArcsByRadiusTheLongWayRoundBelowZero)
{
    const Move small = MoveBehind("G38G90X120Y70U20Z5");
    ExpectAt(small.Centre, 100, 70);
    EXPECT_NEAR(small.Sweep, 90, 1e-9);
    const Move large = MoveBehind("G38G90X120Y70U-20Z5");
    ExpectAt(large.Centre, 120, 50);
    EXPECT_NEAR(large.Sweep, 270, 1e-9);
    const Move right = MoveBehind("G37G90X120Y70U20Z5");
    ExpectAt(right.Centre, 120, 50);
    EXPECT_NEAR(right.Sweep, -90, 1e-9);
    const Move longRight = MoveBehind("G37G90X120Y70U-20Z5");
    ExpectAt(longRight.Centre, 100, 70);
    EXPECT_NEAR(longRight.Sweep, -270, 1e-9);
    const Move half = MoveBehind("G37G90X140Y50U20Z5");
    ExpectAt(half.Centre, 120, 50);
    EXPECT_NEAR(half.Sweep, -180, 1e-9);
}

TEST(CncReader, CirclesAroundACentre)
{
    const Move circle = MoveBehind("G2G90G17X100Y50I0J20");
    ExpectAt(circle.Centre, 100, 70);
    EXPECT_NEAR(circle.Sweep, -360, 1e-9);
    EXPECT_EQ(circle.DepthTo, 5);
    const Move quarter = MoveBehind("G3G90G17X120Y70I0J20");
    EXPECT_NEAR(quarter.Sweep, 90, 1e-9);
}

TEST(CncReader, ArcsThroughThreePoints)
{
    const Move left = MoveBehind("G113G90G17X100Y90I120J70Z5");
    ExpectAt(left.Centre, 100, 70);
    EXPECT_NEAR(left.Sweep, 180, 1e-9);
    const Move right = MoveBehind("G112G90G17X120Y70I80J70Z5");
    ExpectAt(right.Centre, 100, 70);
    EXPECT_NEAR(right.Sweep, -270, 1e-9);
    // Counted from the right, the word turns as the counted places do.
    const Move mirrored = MoveBehind("G113G90G17X100Y90I120J70Z5", "G57");
    ExpectAt(mirrored.Centre, 500, 70);
    EXPECT_NEAR(mirrored.Sweep, -180, 1e-9);
}

TEST(CncReader, AnArcThroughThreePointsThatTurnsAgainstThemIsUnread)
{
    const MachineSteps steps = StepsOf({"G88G90G55P5T0171X100Y50Z5", "G112G90G17X100Y90I120J70Z5"});
    EXPECT_EQ(steps.Unread, Program{"4: G112G90G17X100Y90I120J70Z5"});
}

TEST(CncReader, EachCornerIsUndoneAndSensesAreThoseSeenFromAbove)
{
    const struct {
        const char* Word;
        double X, Y;
    } corners[] = {{"G54", 100, 350}, {"G55", 100, 50}, {"G56", 500, 350}, {"G57", 500, 50}};
    for (const auto& corner : corners) {
        SCOPED_TRACE(corner.Word);
        const MachineSteps steps =
            StepsOf({std::string("G88G90") + corner.Word + "P5T0171G41R5X100Y50Z5", "G38G90X100Y70A0.00Z5",
                     "G1G90X0Y0Z5", std::string("G81G90") + corner.Word + "P5R54=8X0Y10Z12"});
        const bool right = corner.X == 500, top = corner.Y == 350;
        const RouterCut& cut = steps.Cuts.at(0);
        ExpectAt(cut.Start, corner.X, corner.Y);
        EXPECT_EQ(cut.Side, 1);
        const double y = top ? 330 : 70;
        ExpectAt(cut.Moves.at(0).Centre, corner.X, y);
        ExpectAt(cut.Moves.at(0).To, corner.X + 20, y);
        EXPECT_NEAR(cut.Moves.at(0).Sweep, top ? 270 : 90, 1e-9);
        ExpectAt(cut.Moves.at(1).To, right ? 600 : 0, top ? 400 : 0);
        ExpectAt(steps.Bores.at(0).At, right ? 600 : 0, top ? 390 : 10);
    }
}

TEST(CncReader, WithUpperAndLowerExchangedG54IsTheLowerLeftCorner)
{
    CncReading exchanged;
    exchanged.UpperAndLowerExchanged = true;
    ExpectAt(StepsOf({"G81G90G54P5R54=8X1Y10Z12"}, exchanged).Bores.at(0).At, 1, 10);
    ExpectAt(StepsOf({"G81G90G57P5R54=8X1Y10Z12"}, exchanged).Bores.at(0).At, 599, 390);
}

TEST(CncReader, RoutesOnEdgesHaveTheirDepthAcrossTheEdge)
{
    const MachineSteps steps =
        StepsOf({"G88G90G55P1T0171G41R2X100Y12Z6", "G1G90X240Y12Z6", "G3G90G18X240Z16I0K5",   // above
                 "G88G90G55P2T0171G41R2X200Y12Z16", "G1G90X400Y12Z16", "G38G90X400Y12U5Z6",   // below
                 "G88G90G55P3T0171G41R2X20Y80Z11", "G1G90X20Y320Z11",                         // left
                 "G88G90G55P4T0171G41R2X6Y60Z11", "G1G90X6Y280Z11", "G2G90G19Y290Z21J0K10"}); // right
    EXPECT_EQ(steps.Unread, Program());
    ASSERT_EQ(steps.Cuts.size(), 4U);
    const RouterCut& above = steps.Cuts[0];
    EXPECT_EQ(above.On, Plane::Edge1);
    EXPECT_EQ(above.StartDepth, 12);
    ExpectAt(above.Start, 100, 12);
    // From outside X runs to the left, so what is left there is right in X and up.
    EXPECT_EQ(above.Side, -1);
    ExpectAt(above.Moves.at(1).To, 240, 2);
    ExpectAt(above.Moves.at(1).Centre, 240, 7);
    EXPECT_NEAR(above.Moves.at(1).Sweep, -180, 1e-9);
    const RouterCut& below = steps.Cuts[1];
    EXPECT_EQ(below.On, Plane::Edge2);
    ExpectAt(below.Start, 200, 2);
    EXPECT_EQ(below.Side, 1);
    EXPECT_NEAR(below.Moves.at(1).Sweep, 180, 1e-9);
    ExpectAt(below.Moves.at(1).Centre, 400, 7);
    const RouterCut& left = steps.Cuts[2];
    EXPECT_EQ(left.On, Plane::Edge3);
    EXPECT_EQ(left.StartDepth, 20);
    ExpectAt(left.Start, 80, 7);
    ExpectAt(left.Moves.at(0).To, 320, 7);
    EXPECT_EQ(left.Side, -1);
    const RouterCut& right = steps.Cuts[3];
    EXPECT_EQ(right.On, Plane::Edge4);
    EXPECT_EQ(right.Moves.at(0).DepthTo, 6);
    ExpectAt(right.Moves.at(1).Centre, 280, -3);
    ExpectAt(right.Moves.at(1).To, 290, -3);
    EXPECT_NEAR(right.Moves.at(1).Sweep, -90, 1e-9);
    EXPECT_EQ(right.Side, 1);
}

TEST(CncReader, EdgesAreMirroredAlongAndNotInTheirDepth)
{
    const MachineSteps steps =
        StepsOf({"G81G90G56P1R54=8X100Y30Z9", "G81G90G56P4R54=8X30Y64Z5", "G81G90G55P3T0103X30Y64Z9"});
    ASSERT_EQ(steps.Bores.size(), 3U);
    EXPECT_EQ(steps.Bores[0].On, Plane::Edge1);
    ExpectAt(steps.Bores[0].At, 500, 9);
    EXPECT_EQ(steps.Bores[0].Depth, 30);
    EXPECT_EQ(steps.Bores[0].Diameter, 8);
    ExpectAt(steps.Bores[1].At, 336, 13);
    EXPECT_EQ(steps.Bores[1].Depth, 30);
    EXPECT_EQ(steps.Bores[2].On, Plane::Edge3);
    ExpectAt(steps.Bores[2].At, 64, 9);
    EXPECT_EQ(steps.Bores[2].Diameter, 0);
    EXPECT_EQ(steps.Bores[2].Tool, "0103");
}

TEST(CncReader, GroovesAndRowsOfTheBoringHead)
{
    const MachineSteps steps = StepsOf({"G85F4000G55P5T0160X0Y385Z8Q568", "G86G56P5T0163G41X10Y0Z=aQ400",
                                        "G86G55P5T0163G42X10Y0Z=a Q400", "G183G90G55P5T0101|08X144Y37Z13I368",
                                        "", "G184G90G57P5T01161711X90Y310Z13J342"},
                                       {false, {{'a', 7}}});
    EXPECT_EQ(steps.Unread, Program());
    ASSERT_EQ(steps.Saws.size(), 3U);
    ExpectAt(steps.Saws[0].From, 0, 385);
    ExpectAt(steps.Saws[0].To, 568, 385);
    EXPECT_EQ(steps.Saws[0].Depth, 8);
    EXPECT_EQ(steps.Saws[0].Side, 0);
    ExpectAt(steps.Saws[1].From, 590, 400);
    ExpectAt(steps.Saws[1].To, 590, 0);
    EXPECT_EQ(steps.Saws[1].Side, 1);
    EXPECT_EQ(steps.Saws[1].Depth, 7);
    EXPECT_EQ(steps.Saws[2].Side, -1);
    ASSERT_EQ(steps.Rows.size(), 2U);
    ExpectAt(steps.Rows[0].From, 144, 37);
    ExpectAt(steps.Rows[0].To, 368, 37);
    EXPECT_EQ(steps.Rows[0].Depth, 13);
    ExpectAt(steps.Rows[1].From, 510, 310);
    ExpectAt(steps.Rows[1].To, 510, 342);
}

TEST(CncReader, DepthsByLetterAreTheCallers)
{
    const Program lines = {"G88G90G55P5T0171X1Y2Z=c", "G1G90X3Y2Z=c"};
    const MachineSteps known = StepsOf(lines, {false, {{'c', 4.5}}});
    EXPECT_EQ(known.Unread, Program());
    EXPECT_EQ(known.Cuts.at(0).StartDepth, 4.5);
    EXPECT_EQ(known.Cuts.at(0).Moves.at(0).DepthTo, 4.5);
    const MachineSteps unknown = StepsOf(lines);
    EXPECT_EQ(unknown.Unread, (Program{"3: " + lines[0], "4: " + lines[1]}));
    EXPECT_EQ(unknown.Cuts.at(0).Moves.size(), 1U); // the way is read all the same
}

TEST(CncReader, LinesThatItDoesNotKnowAreUnreadAndTheRestGoesOn)
{
    const Program wrong = {
        "G4F2",                         // another code
        "M77 DUST ON",                  //
        "G1G90X1Y2Z3",                  // a move that no start precedes
        "G81G90G55P5R54=8X1..5Y2Z3",    // no number
        "G81G90G55P5R54=8X1X5Y2Z3",     // a word twice
        "G81G90G55P5R54=8X1Y2",         // without a depth
        "G81G90P5R54=8X1Y2Z3",          // without a corner
        "G81G90G55P7R54=8X1Y2Z3",       // on no side
        "G88G90G55P5T0171G41X1Y2Z3",    // a side without a radius
        "G38G90X10Y2Z3",                // neither angle nor radius
        "G38G90X100Y2U5Z3",             // a chord that is longer than the diameter
        "G2G90G17X107Y2I5J0",           // an end beside the circle
        "G3G90G18X10Y2I5J0",            // in another plane
        "G38G90X100Y2A45.Z3 WITH TEXT", //
    };
    Program expected;
    for (std::size_t i = 0; i < wrong.size(); ++i)
        expected.push_back(std::to_string(i + 3) + ": " + wrong[i]);
    Program lines = wrong;
    lines.push_back("G81G90G55P5R54=8X100Y50Z12");
    const MachineSteps steps = StepsOf(lines);
    EXPECT_EQ(steps.Unread, expected);
    EXPECT_EQ(steps.Bores.size(), 1U);
}

TEST(CncReader, NothingIsReadBehindTheEndAndABoreEndsARoute)
{
    EXPECT_EQ(ReadCnc({Header, Name, "M2", "G81G90G55P5R54=8X1Y2Z3"}).Unread.size(), 1U);
    EXPECT_EQ(StepsOf({"G88G90G55P5T0171X1Y2Z3", "G81G90G55P5R54=8X1Y2Z3", "G1G90X3Y4Z5"}).Unread,
              Program{"5: G1G90X3Y4Z5"});
    EXPECT_EQ(ReadCnc({"X600Y400", Name, "M2"}).Unread, Program{"1: X600Y400"});
}

} // namespace
} // namespace kv::test
