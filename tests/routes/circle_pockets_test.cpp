// Circular pockets: two half circles of a route, and circles of the circle list. Expected places are
// worked out by hand.
#include <gtest/gtest.h>

#include "routes/pocket_outlines.h"

namespace kv {
namespace {

using rows::CircleOutline;
using rows::Row;
using rows::RowsOf;
using rows::Step;
using rows::Together;
using Records = std::vector<RouteSegment>;
using Texts = std::vector<std::string>;

const Texts NotCleared = {rows::NotCleared("X100 Y110")}; // from the top
const std::string NoPitch = "Excavation Pitch not specified! (Circle)";

RouteCircle Circle(double x, double y, double radius, double oscZ, std::string_view comp)
{
    RouteCircle circle;
    circle.X = ToSingle(x);
    circle.Y = ToSingle(y);
    circle.Radius = ToSingle(radius);
    circle.OscZ = ToSingle(oscZ);
    circle.Comp = comp;
    circle.Pass = 1;
    return circle;
}

class CirclePockets : public rows::PocketTest {};

TEST_F(CirclePockets, PairFromTheTopIsASpiralFromInsideAndItsOutline)
{
    const Records made = Excavate(CircleOutline(100, 100, 10, -5, "G42 R2"));
    const Texts expected = {
        "-3 100 98 100 101 d-8", "3 100 102 270 90", "-3 100 104 100 99",  "3 100 96 90 270",
        "-3 100 94 100 101",     "3 100 106 270 90", "-3 100 108 100 99",  "3 100 92 90 270",
        "-3 100 90 100 100",     "3 100 110 270 90", "-3 100 110 100 100", "3 100 90 90 270",
        "-3 100 90 100 100",     "3 100 110 270 90",
    };
    EXPECT_EQ(RowsOf(made), expected);
    for (const RouteSegment& record : made) {
        EXPECT_EQ(record.OscZ, 0);
        EXPECT_EQ(record.Comp, "G42 R2");
    }
    EXPECT_TRUE(Lines.empty());
}

TEST_F(CirclePockets, PairFromTheBottomIsMirrored)
{
    const Texts expected = {
        "-3 100 102 100 99 d-8", "3 100 98 90 270", "-3 100 96 100 101", "3 100 104 270 90",
        "-3 100 106 100 99",     "3 100 94 90 270", "-3 100 92 100 101", "3 100 108 270 90",
        "-3 100 110 100 100",    "3 100 90 90 270", "-3 100 90 100 100", "3 100 110 270 90",
        "-3 100 110 100 100",    "3 100 90 90 270",
    };
    EXPECT_EQ(RowsOf(Excavate(CircleOutline(100, 100, -10, -5, "G42"))), expected);
}

TEST_F(CirclePockets, PairFromTheLeftIsTheSameTurned)
{
    Records outline = rows::HalfCircles({100, 100}, 10, 180, false);
    rows::MarkPocket(outline, -5, "G42");
    const Texts expected = {
        "-3 102 100 99 100 d-8", "3 98 100 0 180", "-3 96 100 101 100", "3 104 100 180 0",
        "-3 106 100 99 100",     "3 94 100 0 180", "-3 92 100 101 100", "3 108 100 180 0",
        "-3 110 100 100 100",    "3 90 100 0 180", "-3 90 100 100 100", "3 110 100 180 0",
        "-3 110 100 100 100",    "3 90 100 0 180",
    };
    EXPECT_EQ(RowsOf(Excavate(outline)), expected);
}

TEST_F(CirclePockets, PairOfUnequalArcsIsACircleToo)
{
    // From the top clockwise to the left (270 degrees), and on. Only the first point counts.
    Records outline = rows::HalfCircles({100, 100}, 10, 90, false);
    outline[1].X = outline[2].X = 90;
    outline[1].Y = outline[2].Y = 100;
    outline[1].Aux2 = outline[3].Aux1 = 180;
    rows::MarkPocket(outline, -5, "G42");
    const Records made = Excavate(outline);
    ASSERT_EQ(made.size(), 14U);
    EXPECT_EQ(Row(made[0]), "-3 100 98 100 101 d-8");
    EXPECT_EQ(Row(made[11]), "3 90 100 90 180");
}

TEST_F(CirclePockets, RadiusThatEqualsHalfThePitchGivesAHalfTurnMore)
{
    // Pitch 5: radius 10, 7.5, 5 and 2.5, which is not below half the pitch.
    const Texts rows = RowsOf(Excavate(CircleOutline(100, 100, 10, -6, "")));
    ASSERT_EQ(rows.size(), 12U);
    EXPECT_EQ(rows[0], "-3 100 102.5 100 98.75 d-8");
    EXPECT_EQ(rows[2], "-3 100 95 100 101.25");
    EXPECT_EQ(rows[6], "-3 100 90 100 100");
    // Pitch 7: 10 and 6.5; 3 is below 3.5.
    const Texts wide = RowsOf(Excavate(CircleOutline(100, 100, 10, -8, "")));
    ASSERT_EQ(wide.size(), 8U);
    EXPECT_EQ(wide[0], "-3 100 106.5 100 98.25 d-8");
}

TEST_F(CirclePockets, PairOfARadiusBelowThePitchIsOneHalfTurnAndItsOutline)
{
    const Texts expected = {"-3 100 98 100 100 d-8", "3 100 102 270 90",  "-3 100 102 100 100",
                            "3 100 98 90 270",       "-3 100 98 100 100", "3 100 102 270 90"};
    EXPECT_EQ(RowsOf(Excavate(CircleOutline(100, 100, 2, -5, "G42"))), expected);
}

TEST_F(CirclePockets, CounterClockwisePairIsCutOnTheLeftAndItsHalfTurnsToo)
{
    Records outline = rows::HalfCircles({100, 100}, 10, 90, true);
    rows::MarkPocket(outline, -8, "G42 R2");
    const Records made = Excavate(outline);
    const Texts expected = {"-3 100 106.5 100 98.25 d-8", "3 100 93.5 90 270 d-1", "-3 100 90 100 100",
                            "3 100 110 270 90 d-1",       "-3 100 110 100 100",    "3 100 90 90 270 d-1",
                            "-3 100 90 100 100",          "3 100 110 270 90 d-1"};
    EXPECT_EQ(RowsOf(made), expected);
    for (const RouteSegment& record : made)
        EXPECT_EQ(record.Comp, "G41 R2");
}

TEST_F(CirclePockets, ClockwisePairIsCutOnTheRightWhateverItsLayerSays)
{
    for (const RouteSegment& record : Excavate(CircleOutline(100, 100, 10, -8, "G41 R2"))) {
        EXPECT_EQ(record.Comp, "G42 R2");
        EXPECT_NE(record.Dir, -1);
    }
}

TEST_F(CirclePockets, TwoArcsThatAreNoCircleStayARouteAndAreTold)
{
    const Texts told = {rows::Told("X100 Y110", "is not cleared, its two arcs are no circle")};
    Records lens = CircleOutline(100, 100, 10, -5, "G42 R2"); // the second one flatter than the first
    lens[2].Aux1 = 95;
    EXPECT_EQ(rows::Difference(Excavate(lens), lens), "");
    EXPECT_EQ(Lines, told);
    // Two quarters: from the top to the right and on to the bottom.
    Records quarters = CircleOutline(100, 100, 10, -5, "G42 R2");
    quarters[1].X = quarters[2].X = 110;
    quarters[1].Y = quarters[2].Y = 100;
    quarters[3].Y = 90;
    EXPECT_EQ(rows::Difference(Excavate(quarters), quarters), "");
    EXPECT_EQ(Lines, Texts{rows::Open("X100 Y110", "X100 Y90", "20")});
    // There and back again on the same half.
    Records back = CircleOutline(100, 100, 10, -5, "G42 R2");
    back[3].Dir = -1;
    EXPECT_EQ(rows::Difference(Excavate(back), back), "");
    EXPECT_EQ(Lines, told);
    // Two radii.
    Records twoRadii = CircleOutline(100, 100, 10, -5, "G42 R2");
    twoRadii[2].Y = 89.98F;
    EXPECT_EQ(rows::Difference(Excavate(twoRadii), twoRadii), "");
    EXPECT_EQ(Lines, told);
}

TEST_F(CirclePockets, HalfTurnsNarrowerThanTheToolAreTold)
{
    // Pitch 4: the innermost half turn has radius 3.
    Excavate(CircleOutline(100, 100, 10, -5, "G42 R3"));
    EXPECT_TRUE(Lines.empty());
    Excavate(CircleOutline(100, 100, 10, -5, "G42 R3.1"));
    EXPECT_EQ(Lines, Texts{rows::NarrowWays("X100 Y110")});
    EXPECT_TRUE(Excavate(CircleOutline(100, 100, 10, -5, "G42 R10.1")).empty());
    EXPECT_EQ(Lines, Texts{rows::Told("X100 Y110", "is not cleared, it is narrower than its tool")});
    Excavate({}, {Circle(100, 100, 10, -5, "G42 R3")});
    EXPECT_TRUE(Lines.empty());
    Excavate({}, {Circle(100, 100, 10, -5, "G42 R3.1")});
    EXPECT_EQ(Lines, Texts{rows::NarrowWays("X100 Y100")});
    EXPECT_TRUE(Excavate({}, {Circle(100, 100, 10, -5, "G42 R10.1")}).empty());
    EXPECT_EQ(Lines, Texts{rows::Told("X100 Y100", "is not cleared, it is narrower than its tool")});
}

TEST_F(CirclePockets, PairTakesThePitchOfTheToolToo)
{
    // Radius 2.5: pitch 5.
    const Records made = Excavate(CircleOutline(100, 100, 10, -1, "G42 R2.5"));
    EXPECT_EQ(made.size(), 12U);
}

TEST_F(CirclePockets, PairWithoutPitchStaysAndIsTold)
{
    const Records outline = CircleOutline(100, 100, 10, -1, "G42");
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines, (Texts{NoPitch, NotCleared[0]}));
}

TEST_F(CirclePockets, FieldsOfThePairGoToItsHalfTurns)
{
    Records outline = CircleOutline(100, 100, 10, -8, "");
    for (std::size_t i = 0; i < 4; ++i) {
        outline[i].Z = ToSingle(static_cast<double>(i) + 1);
        outline[i].MCode = 2;
    }
    const Records made = Excavate(outline);
    ASSERT_EQ(made.size(), 8U);
    EXPECT_EQ(made[0].Z, 1);
    EXPECT_EQ(made[1].Z, 2);
    EXPECT_EQ(made[2].Z, 1);
    EXPECT_EQ(made[7].Z, 4);
    EXPECT_EQ(made[0].MCode, 2);
}

TEST_F(CirclePockets, MarkOnTheFirstRecordDecides)
{
    Records outline = CircleOutline(100, 100, 10, -5, "");
    outline[0].OscZ = 5;
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines, Texts{rows::WithoutMark("X100 Y110")}); // the others still call for a pocket
    outline = CircleOutline(100, 100, 10, 5, "");
    outline[0].OscZ = -5;
    EXPECT_EQ(Excavate(outline).size(), 14U);
}

TEST_F(CirclePockets, PairBesideOtherRecordsIsNone)
{
    Records outline = CircleOutline(100, 100, 10, -5, "");
    const Records fifth = Together(outline, {Step(1, 120, 100)});
    EXPECT_EQ(rows::Difference(Excavate(fifth), fifth), "");
    EXPECT_EQ(Lines, Texts{rows::Open("X100 Y110", "X120 Y100", "22.3607")});
    outline.pop_back();
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    outline = CircleOutline(100, 100, 10, -5, "");
    outline[0].Dir = 0; // no start of a chain
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    outline = CircleOutline(100, 100, 10, -5, "");
    outline[3].Kind = 1;
    EXPECT_EQ(rows::Difference(Excavate(outline), outline), "");
    EXPECT_EQ(Lines, Texts{rows::WithoutMark("X100 Y110")});
}

TEST_F(CirclePockets, PairsAmongRoutesAreAllCleared)
{
    const Records route = {Step(-1, 0, 0, -8), Step(1, 10, 0)};
    const Records circle = CircleOutline(100, 100, 10, -5, "G42");
    const Records cleared = Excavate(circle);
    const Records made = Excavate(Together(Together(circle, route), Together(circle, route)));
    EXPECT_EQ(rows::Difference(made, Together(Together(cleared, cleared), Together(route, route))), "");
}

TEST_F(CirclePockets, TinyPitchEndsAtTheLimitOfTheList)
{
    EXPECT_THROW(Excavate(CircleOutline(0, 0, 1000, -1, "G42 R1E-9")), RunError);
    EXPECT_THROW(Excavate(CircleOutline(0, 0, 1000, -1, "G42 R1E-99")), RunError);
    EXPECT_THROW(Excavate({}, {Circle(0, 0, 1000, -1, "G42 R1E-9")}), RunError);
    EXPECT_THROW(Excavate({}, {Circle(0, 0, 1000, -1, "G42 R1E-99")}), RunError);
}

TEST_F(CirclePockets, ListCircleIsASpiralFromTheCentreAFullCircleAndAnOverlap)
{
    const Records made = Excavate({}, {Circle(100, 100, 10, -5, "G41 R2")});
    const Texts expected = {
        "-3 100 98 100 101 d-8", "3 100 102 270 90",        "-3 100 104 100 99",  "3 100 96 90 270",
        "-3 100 94 100 101",     "3 100 106 270 90",        "-3 100 108 100 99",  "3 100 92 90 270",
        "-3 100 90 100 100",     "3 100 110 270 90",        "-3 100 110 100 100", "3 100 110 90 90",
        "-3 100 110 100 100",    "3 105.736 108.192 90 55",
    };
    EXPECT_EQ(RowsOf(made), expected);
    for (const RouteSegment& record : made) {
        EXPECT_EQ(record.Comp, "G42 R2"); // a list circle runs clockwise
        EXPECT_EQ(record.OscZ, 0);
        EXPECT_EQ(record.Pass, 1);
    }
    EXPECT_EQ(RouteCircles[1].Used, True);
    EXPECT_EQ(RouteCircles[1].Pass, 0);
    EXPECT_EQ(RouteCircles[1].OscZ, -5);
    EXPECT_TRUE(Lines.empty());
}

TEST_F(CirclePockets, LastHalfTurnStepsNoFurtherThanTheCircle)
{
    // Radius 9, steps of 2: the half turn of radius 8 would step to 10, but goes to 9 only.
    const Texts rows = RowsOf(Excavate({}, {Circle(100, 100, 9, -5, "")}));
    ASSERT_EQ(rows.size(), 12U);
    EXPECT_EQ(rows[4], "-3 100 94 100 101");
    EXPECT_EQ(rows[6], "-3 100 108 100 99.5");
    EXPECT_EQ(rows[7], "3 100 92 90 270");
    EXPECT_EQ(rows[8], "-3 100 91 100 100");
    EXPECT_EQ(rows[9], "3 100 91 270 270");
    // 270 less 35: 9 times the cosine and sine of 235 degrees.
    EXPECT_EQ(rows[11], "3 94.838 92.628 270 235");
}

TEST_F(CirclePockets, HalfAPitchAboveTheRadiusIsTheLastPhaseAlone)
{
    // Half a pitch is 6, the radius 5: no half turn, the full circle begins below the centre.
    const Texts expected = {"-3 100 95 100 100 d-8", "3 100 95 270 270", "-3 100 95 100 100",
                            "3 97.132 95.904 270 235"};
    EXPECT_EQ(RowsOf(Excavate({}, {Circle(100, 100, 5, -13, "G42")})), expected);
}

TEST_F(CirclePockets, HalfAPitchAsLargeAsTheRadiusIsOneHalfTurn)
{
    const Texts rows = RowsOf(Excavate({}, {Circle(100, 100, 5, -11, "G42")}));
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_EQ(rows[0], "-3 100 95 100 100 d-8");
    EXPECT_EQ(rows[1], "3 100 105 270 90");
}

TEST_F(CirclePockets, ListCircleGivesItsFields)
{
    RouteCircle circle = Circle(100, 100, 5, -13, "G41 R7");
    circle.Z = 12;
    circle.Diameter = 14;
    circle.Group = 2;
    circle.ToolNo = 7;
    circle.Tool = "070809";
    circle.Speed = 18;
    circle.Feed = 3000;
    circle.FeedDown = 1000;
    circle.FeedRapid = 9000;
    circle.LeadIn = 11;
    circle.RampOut = 3;
    circle.RampIn = 4;
    circle.Sequence = 6;
    circle.MCode = 2;
    circle.Side = 5;
    circle.ExtraSlot = 9;
    for (const RouteSegment& record : Excavate({}, {circle})) {
        EXPECT_EQ(record.Z, 12);
        EXPECT_EQ(record.Diameter, 14);
        EXPECT_EQ(record.Group, 2);
        EXPECT_EQ(record.ToolNo, 7);
        EXPECT_EQ(record.Tool, "070809");
        EXPECT_EQ(record.Speed, 18);
        EXPECT_EQ(record.Feed, 3000);
        EXPECT_EQ(record.FeedDown, 1000);
        EXPECT_EQ(record.FeedRapid, 9000);
        EXPECT_EQ(record.LeadIn, 11);
        EXPECT_EQ(record.RampOut, 3);
        EXPECT_EQ(record.RampIn, 4);
        EXPECT_EQ(record.Sequence, 6);
        EXPECT_EQ(record.MCode, 2);
        EXPECT_EQ(record.Side, 5);
        EXPECT_EQ(record.ExtraSlot, 9);
        EXPECT_EQ(record.Comp, "G42 R7");
    }
}

TEST_F(CirclePockets, CircleThatIsUsedOrOfNoPassIsPassedOver)
{
    RouteCircle used = Circle(100, 100, 5, -13, "");
    used.Used = True;
    RouteCircle leadIn = Circle(100, 100, 5, -13, "");
    leadIn.Pass = 0;
    EXPECT_TRUE(Excavate({}, {used, leadIn}).empty());
    EXPECT_TRUE(Lines.empty());
}

TEST_F(CirclePockets, ListCircleWithoutPitchStaysAndIsTold)
{
    EXPECT_TRUE(Excavate({}, {Circle(100, 100, 10, -1, "G42")}).empty());
    EXPECT_EQ(Lines, (Texts{NoPitch, rows::NotCleared("X100 Y100")}));
    EXPECT_EQ(RouteCircles[1].Used, False);
    EXPECT_EQ(RouteCircles[1].Pass, 1);
    EXPECT_EQ(RouteCircles[1].OscZ, -1);
}

TEST_F(CirclePockets, ListCircleTakesThePitchOfTheTool)
{
    // Radius 2: pitch 4, five half turns and the last phase.
    EXPECT_EQ(Excavate({}, {Circle(100, 100, 10, -1, "G42 R2")}).size(), 14U);
}

TEST_F(CirclePockets, ListCircleWithoutRadiusIsToldAndNotCut)
{
    EXPECT_TRUE(Excavate({}, {Circle(100, 100, 0, -5, "G42")}).empty());
    EXPECT_EQ(Lines, Texts{rows::NotCleared("X100 Y100")});
    EXPECT_EQ(RouteCircles[1].Pass, 0);
    EXPECT_EQ(RouteCircles[1].Used, True);
}

TEST_F(CirclePockets, RectanglesAreToldBeforeCircles)
{
    const rows::Corners box{0, 0, 20, 10};
    Excavate(Together(CircleOutline(100, 100, 10, -1, ""), rows::SquareOutline(box, -1, "")),
             {Circle(50, 50, 4, -1, "")});
    const Texts expected = {"Excavation Pitch not specified! (Rectangle)",
                            rows::NotCleared("X0 Y0"),
                            NoPitch,
                            NotCleared[0],
                            NoPitch,
                            rows::NotCleared("X50 Y50")};
    EXPECT_EQ(Lines, expected);
}

TEST_F(CirclePockets, CircleOfARouteLayerIsNoPocket)
{
    kv::Run.LayerTable[4] = "ROUTE";
    const Records outline = CircleOutline(100, 100, 10, -5, "G42 R2");
    EXPECT_EQ(rows::Difference(Excavate(outline, {Circle(100, 100, 10, -5, "G42 R2")}), outline), "");
    EXPECT_TRUE(Lines.empty());
    EXPECT_EQ(RouteCircles[1].Used, False);
    EXPECT_EQ(RouteCircles[1].Pass, 1);
}

} // namespace
} // namespace kv
