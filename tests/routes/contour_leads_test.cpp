// Leads of closed contours: each case of the seam, on both sides, worked out by hand on a panel of
// 600 x 400 with leads of 20.
#include "routes/contour_leads.h"

#include "routes/lead_routes.h"
#include "support/scene.h"

namespace kv::lead_test {
namespace {

class LeadsOfContours : public testing::Test {
  protected:
    void SetUp() override
    {
        test::ResetProcess();
        LayPanel();
    }
    void TearDown() override { test::ResetProcess(); }
};

Route Ramped(Route route, double in, double out)
{
    for (RouteSegment& record : route) {
        record.RampIn = static_cast<Single>(in);
        record.RampOut = static_cast<Single>(out);
    }
    return route;
}

// Lead-in and lead-out at the corner (100,100) that is entered at 0 degrees and reached at 270, G42.
const Route CornerArcIn = {Record(-3, 80, 80, 100, 80, -8), Record(3, 100, 100, 180, 90)};
const Route CornerArcOut = {Record(-3, 100, 100, 80, 100), Record(3, 80, 80, 0, 270)};

TEST_F(LeadsOfContours, SquareOnTheInsideOfItsCornerTakesTheBisector)
{
    const Route led = WithLeads(Square("G41"));
    ExpectRecords(led, {Record(-1, 114.142, 114.142, 0, 0, -8), Record(1, 100, 100), Record(1, 200, 100),
                        Record(-1, 200, 100), Record(1, 200, 200), Record(-1, 200, 200), Record(1, 100, 200),
                        Record(-1, 100, 200), Record(1, 100, 100), Record(1, 114.142, 114.142)});
}

TEST_F(LeadsOfContours, SquareOnTheOutsideOfItsCornerTakesQuarterArcs)
{
    const Route led = WithLeads(Square("G42"));
    ExpectRecords(led, {CornerArcIn[0], CornerArcIn[1], Record(-1, 100, 100), Record(1, 200, 100),
                        Record(-1, 200, 100), Record(1, 200, 200), Record(-1, 200, 200), Record(1, 100, 200),
                        Record(-1, 100, 200), Record(1, 100, 100), CornerArcOut[0], CornerArcOut[1]});
}

TEST_F(LeadsOfContours, ClockwiseSquareWithLeftCompensationIsTheMirrorImage)
{
    const Route led = WithLeads(Square("G41", true));
    ExpectRecords(Head(led, 2), {Record(-3, 80, 80, 80, 100, -8), Record(3, 100, 100, 270, 0, -1)});
    ExpectRecords(Tail(led, 2), {Record(-3, 100, 100, 100, 80), Record(3, 80, 80, 90, 180, -1)});
    EXPECT_EQ(led.size(), 12U);
}

TEST_F(LeadsOfContours, RampsChangeTheLeadOutAndTheDepthOfTheLeadIn)
{
    kv::Run.LeadRampHeight = 9;
    const Route led = WithLeads(Ramped(Square("G42"), 999, 6));
    ExpectRecords(Head(led, 2), {AtDepth(CornerArcIn[0], -9), CornerArcIn[1]});
    ExpectRecords(Tail(led, 2), {Record(1, 100, 100), AtDepth(Record(1, 120, 100), -6)});
    EXPECT_EQ(led.size(), 11U);
}

TEST_F(LeadsOfContours, CircleLeftOfItsWayIsLedFromOutside)
{
    const Route led = WithLeads(Join({Arc({300, 200}, 50, 90, 90, false)}, "G41"));
    ExpectRecords(led, {Record(-3, 280, 270, 300, 270, -8), Record(3, 300, 250, 180, 270, -1),
                        Record(-3, 300, 250, 300, 200), Record(3, 300, 250, 90, 90),
                        Record(-3, 300, 250, 300, 270), Record(3, 320, 270, 270, 0, -1)});
}

TEST_F(LeadsOfContours, CircleRightOfItsWayIsLedFromInside)
{
    const Route led = WithLeads(Join({Arc({300, 200}, 50, 90, 90, false)}, "G42"));
    ExpectRecords(led, {Record(-3, 280, 230, 300, 230, -8), Record(3, 300, 250, 180, 90),
                        Record(-3, 300, 250, 300, 200), Record(3, 300, 250, 90, 90),
                        Record(-3, 300, 250, 300, 230), Record(3, 320, 230, 90, 0)});
}

// The way enters (200,200) falling by 10 degrees and leaves it rising by 10.
TEST_F(LeadsOfContours, LeftTurnAcrossZeroDegreesIsALeftTurn)
{
    const PlanePoint from = OnCircle({200, 200}, 100, 170), to = OnCircle({200, 200}, 100, 10);
    const Route way = Lines({{200, 200}, to, {200, 350}, from, {200, 200}});
    const Route open = WithLeads(Join({way}, "G41"));
    EXPECT_EQ(open.size(), 10U);
    ExpectRecords(Head(open, 1), {Record(-1, 200, 220, 0, 0, -8)});
    ExpectRecords(Tail(open, 1), {Record(1, 200, 220)});
    const Route closed = WithLeads(Join({way}, "G42"));
    EXPECT_EQ(closed.size(), 12U);
    // Right of 10 degrees is 280, right of 350 is 260.
    const PlanePoint in = OnCircle({200, 200}, 20, 280), out = OnCircle({200, 200}, 20, 260);
    const PlanePoint start = OnCircle(in, 20, 190), end = OnCircle(out, 20, 350);
    ExpectRecords(Head(closed, 2),
                  {Record(-3, start.X, start.Y, in.X, in.Y, -8), Record(3, 200, 200, 190, 100)});
    ExpectRecords(Tail(closed, 2), {Record(-3, 200, 200, out.X, out.Y), Record(3, end.X, end.Y, 80, 350)});
}

TEST_F(LeadsOfContours, RightTurnAcrossZeroDegreesIsARightTurn)
{
    const PlanePoint from = OnCircle({200, 200}, 100, 190), to = OnCircle({200, 200}, 100, 350);
    const Route way = Lines({{200, 200}, to, {200, 50}, from, {200, 200}});
    EXPECT_EQ(WithLeads(Join({way}, "G41")).size(), 12U);
    const Route open = WithLeads(Join({way}, "G42"));
    EXPECT_EQ(open.size(), 10U);
    ExpectRecords(Head(open, 1), {Record(-1, 200, 180, 0, 0, -8)});
}

// On a smooth seam neither side has a corner to lie in.
TEST_F(LeadsOfContours, SmoothSeamOfLinesTakesQuarterArcsOnEitherSide)
{
    const Route way = Lines({{200, 100}, {300, 100}, {200, 300}, {100, 100}, {200, 100}});
    const Route left = WithLeads(Join({way}, "G41"));
    ExpectRecords(Head(left, 2), {Record(-3, 180, 120, 200, 120, -8), Record(3, 200, 100, 180, 270, -1)});
    ExpectRecords(Tail(left, 2), {Record(-3, 200, 100, 200, 120), Record(3, 220, 120, 270, 0, -1)});
    const Route right = WithLeads(Join({way}, "G42"));
    ExpectRecords(Head(right, 2), {Record(-3, 180, 80, 200, 80, -8), Record(3, 200, 100, 180, 90)});
    ExpectRecords(Tail(right, 2), {Record(-3, 200, 100, 200, 80), Record(3, 220, 80, 90, 0)});
}

TEST_F(LeadsOfContours, SeamThatTurnsByLessThanAHundredthOfADegreeIsSmooth)
{
    const auto leftTurn = [](double degrees) {
        const PlanePoint to = OnCircle({200, 100}, 100, degrees);
        return Join({Lines({{200, 100}, to, {200, 300}, {100, 100}, {200, 100}})}, "G41");
    };
    EXPECT_EQ(WithLeads(leftTurn(0.008)).size(), 12U); // arcs
    EXPECT_EQ(WithLeads(leftTurn(0.012)).size(), 10U); // the bisector, though nearly upright
}

TEST_F(LeadsOfContours, ShortLastLineGivesAStraightLeadOutAcrossIt)
{
    const Route way =
        Lines({{100, 100}, {200, 100}, {200, 200}, {50, 200}, {50, 110}, {100, 110}, {100, 100}});
    const Route led = WithLeads(Join({way}, "G42"));
    ExpectRecords(Head(led, 2), CornerArcIn);
    ExpectRecords(Tail(led, 2), {Record(1, 100, 100), Record(1, 80, 100)});
    EXPECT_EQ(led.size(), way.size() + 3);
}

// Its length is capped by the first segment, and its bearing is the lead-out's.
TEST_F(LeadsOfContours, ShortFirstLineGivesAStraightLeadInOfItsOwnLength)
{
    const Route way =
        Lines({{100, 100}, {112, 100}, {112, 50}, {300, 50}, {300, 200}, {100, 200}, {100, 100}});
    const Route led = WithLeads(Join({way}, "G42"));
    ExpectRecords(Head(led, 2), {Record(-1, 88, 100, 0, 0, -8), Record(1, 100, 100)});
    ExpectRecords(Tail(led, 2), CornerArcOut);
}

TEST_F(LeadsOfContours, LineAsLongAsTheLeadIsNotShort)
{
    const Route way =
        Lines({{100, 100}, {120, 100}, {120, 50}, {300, 50}, {300, 120}, {100, 120}, {100, 100}});
    const Route led = WithLeads(Join({way}, "G42"));
    ExpectRecords(Head(led, 2), CornerArcIn);
    ExpectRecords(Tail(led, 2), CornerArcOut);
}

TEST_F(LeadsOfContours, LeadOutBehindAShortLastLineIsCappedByTheFirstSegment)
{
    const Route way =
        Lines({{100, 100}, {115, 100}, {115, 300}, {100, 300}, {100, 110}, {90, 110}, {100, 100}});
    const Route led = WithLeads(Join({way}, "G42")); // Out is 315, right of it 225
    const PlanePoint far = OnCircle({100, 100}, 15, 225);
    ExpectRecords(Tail(led, 1), {Record(1, far.X, far.Y)});
    ExpectRecords(Head(led, 1), {Record(-1, far.X, far.Y, 0, 0, -8)});
}

// G42: the tool is on the right, so an arc to the left turns away from it.
TEST_F(LeadsOfContours, SmallLastArcTurnedTheOtherWayIsNotShort)
{
    const Route led = WithLeads(
        Join({Lines({{100, 100}, {200, 100}, {200, 200}, {110, 110}}), Arc({110, 100}, 10, 90, 180, true)},
             "G42"));
    ExpectRecords(Tail(led, 2), CornerArcOut);
}

TEST_F(LeadsOfContours, SmallLastArcTurnedToTheToolIsShort)
{
    const Route led = WithLeads(Join(
        {Lines({{100, 100}, {200, 100}, {200, 200}, {90, 110}}), Arc({90, 100}, 10, 90, 0, false)}, "G42"));
    ExpectRecords(Tail(led, 3), {Record(3, 100, 100, 90, 0), Record(-1, 100, 100), Record(1, 80, 100)});
}

TEST_F(LeadsOfContours, SmallFirstArcTurnedTheOtherWayIsNotShort)
{
    const Route led = WithLeads(Join(
        {Arc({100, 110}, 10, 270, 0, true), Lines({{110, 110}, {200, 300}, {100, 200}, {100, 100}})}, "G42"));
    ExpectRecords(Head(led, 3), {CornerArcIn[0], CornerArcIn[1], Record(-3, 100, 100, 100, 110)});
    ExpectRecords(Tail(led, 2), CornerArcOut);
}

TEST_F(LeadsOfContours, SmallFirstArcTurnedToTheToolIsShortAndKeepsARecordToStartFrom)
{
    const Route led = WithLeads(Join(
        {Arc({100, 90}, 10, 90, 0, false), Lines({{110, 90}, {200, 300}, {100, 200}, {100, 100}})}, "G42"));
    const double chord = 10 * std::sqrt(2.0); // caps the lead
    ExpectRecords(Head(led, 4), {Record(-1, 100 - chord, 100, 0, 0, -8), Record(1, 100, 100),
                                 Record(-3, 100, 100, 100, 90), Record(3, 110, 90, 90, 0)});
}

TEST_F(LeadsOfContours, SmallBulgesCountLikeSmallArcs)
{
    const double quarter = std::tan(22.5 * 3.14159265358979 / 180);
    const auto tail = [&](double x, double bulge) {
        return Polyline({{100, 100}, {200, 100}, {200, 200}, {x, 110, bulge}, {100, 100}});
    };
    ExpectRecords(Tail(WithLeads(Join({tail(110, quarter)}, "G42")), 2), CornerArcOut);
    const Route led = WithLeads(Join({tail(90, -quarter)}, "G42"));
    ExpectRecords(Tail(led, 2), {Record(5, 100, 100), Record(5, 80, 100)}); // of kind 5 behind a bulge
    const auto head = [&](double y, double bulge) {
        return Polyline({{100, 100, bulge}, {110, y}, {200, 300}, {100, 200}, {100, 100}});
    };
    ExpectRecords(Head(WithLeads(Join({head(110, quarter)}, "G42")), 3),
                  {CornerArcIn[0], CornerArcIn[1], Record(-5, 100, 100, -1, quarter)});
    ExpectRecords(Head(WithLeads(Join({head(90, -quarter)}, "G42")), 2),
                  {Record(-1, 100 - 10 * std::sqrt(2.0), 100, 0, 0, -8), Record(5, 100, 100, -1, -quarter)});
}

// Full circle of radius 10 to the right, G42: its first chord is 0, so the radius caps the lead.
TEST_F(LeadsOfContours, SmallCircleIsEnteredFromItsCentre)
{
    const Route led = WithLeads(Join({Arc({300, 200}, 10, 90, 90, false)}, "G42"));
    ExpectRecords(led, {Record(-1, 300, 200, 0, 0, -8), Record(1, 300, 210), Record(-3, 300, 210, 300, 200),
                        Record(3, 300, 210, 90, 90), Record(-1, 300, 210), Record(1, 300, 200)});
}

// G41 at a left turn of the way: In 0, Out 270.
TEST_F(LeadsOfContours, OpenCornerBeforeAnArcTakesAQuarterArcIn)
{
    const Route led = WithLeads(
        Join({Arc({100, 150}, 50, 270, 0, true), Lines({{150, 150}, {100, 300}, {100, 100}})}, "G41"));
    ExpectRecords(Head(led, 3), {Record(-3, 80, 120, 100, 120, -8), Record(3, 100, 100, 180, 270, -1),
                                 Record(-3, 100, 100, 100, 150)});
    ExpectRecords(Tail(led, 2), {Record(1, 100, 100), Record(1, 114.142, 114.142)});
}

TEST_F(LeadsOfContours, OpenCornerBeforeASmallArcToTheToolTakesTheBisector)
{
    const Route led = WithLeads(
        Join({Arc({100, 110}, 10, 270, 0, true), Lines({{110, 110}, {100, 300}, {100, 100}})}, "G41"));
    ExpectRecords(Head(led, 3), {Record(-1, 114.142, 114.142, 0, 0, -8), Record(1, 100, 100),
                                 Record(-3, 100, 100, 100, 110)});
}

TEST_F(LeadsOfContours, OpenCornerBeforeASmallArcTurnedTheOtherWayTakesAQuarterArcIn)
{
    const Route led = WithLeads(Join(
        {Arc({100, 90}, 10, 90, 0, false), Lines({{110, 90}, {300, 300}, {100, 300}, {100, 100}})}, "G41"));
    ExpectRecords(Head(led, 2), {Record(-3, 80, 120, 100, 120, -8), Record(3, 100, 100, 180, 270, -1)});
}

TEST_F(LeadsOfContours, OpenCornerBeforeABulgeTakesTheBisector)
{
    const double quarter = std::tan(22.5 * 3.14159265358979 / 180);
    const Route led =
        WithLeads(Join({Polyline({{100, 100, quarter}, {150, 150}, {100, 300}, {100, 100}})}, "G41"));
    ExpectRecords(Head(led, 2), {Record(-1, 114.142, 114.142, 0, 0, -8), Record(5, 100, 100, -1, quarter)});
    ExpectRecords(Tail(led, 2), {Record(5, 100, 100), Record(1, 114.142, 114.142)});
}

// The bisecting line is as long as the lead, however short the first segment is.
TEST_F(LeadsOfContours, OpenCornerDoesNotCapTheLead)
{
    const Route led =
        WithLeads(Join({Lines({{100, 100}, {105, 100}, {300, 50}, {100, 200}, {100, 100}})}, "G41"));
    ExpectRecords(Head(led, 1), {Record(-1, 114.142, 114.142, 0, 0, -8)});
    ExpectRecords(Tail(led, 1), {Record(1, 114.142, 114.142)});
}

TEST_F(LeadsOfContours, RampOutOnAnOpenCornerOverrunsTheStartToo)
{
    const Route led = WithLeads(Ramped(Square("G41"), 4, 6));
    ExpectRecords(Head(led, 1), {AtDepth(Record(-1, 114.142, 114.142, 0, 0, -8), -4)});
    ExpectRecords(Tail(led, 1), {AtDepth(Record(1, 120, 100), -6)});
}

TEST_F(LeadsOfContours, RampAlongALineIsCappedByIt)
{
    const Route way =
        Lines({{100, 100}, {112, 100}, {112, 50}, {300, 50}, {300, 200}, {100, 200}, {100, 100}});
    const Route led = WithLeads(Ramped(Join({way}, "G42"), 0, 6));
    ExpectRecords(Tail(led, 1), {AtDepth(Record(1, 112, 100), -6)});
}

// 20 of a rim of radius 50 are 0.4 radians, 22.918 degrees.
TEST_F(LeadsOfContours, RampAlongTheFirstArcIsAsLongAsTheLead)
{
    const Route led = WithLeads(Ramped(Join({Arc({300, 200}, 50, 90, 90, false)}, "G41"), 0, 6));
    ExpectRecords(Tail(led, 2),
                  {Record(-3, 300, 250, 300, 200), AtDepth(Record(3, 319.471, 246.053, 90, 67.082), -6)});
    const Route left = WithLeads(Ramped(Join({Arc({300, 200}, 50, 90, 90, true)}, "G41"), 0, 6));
    ExpectRecords(Tail(left, 2), {Record(-3, 300, 250, 300, 200),
                                  AtDepth(Record(3, 280.529, 246.053, 90, 112.918, -1), -6)});
}

TEST_F(LeadsOfContours, RampAlongARimShorterThanTheLeadTurnsBy20Degrees)
{
    const Route led = WithLeads(Ramped(Join({Arc({300, 200}, 3, 90, 90, false)}, "G41"), 0, 6));
    ExpectRecords(Tail(led, 2),
                  {Record(-3, 300, 203, 300, 200), AtDepth(Record(3, 301.026, 202.819, 90, 70), -6)});
}

// tan(0.1) is 0.100335.
TEST_F(LeadsOfContours, RampAlongTheFirstBulgeIsAsLongAsTheLead)
{
    const Route led =
        WithLeads(Ramped(Join({Polyline({{300, 150, 1}, {300, 250, 1}, {300, 150}})}, "G42"), 0, 6));
    ExpectRecords(Tail(led, 2),
                  {Record(5, 300, 150, -1, 0.100335), AtDepth(Record(5, 319.471, 153.947), -6)});
    const Route right =
        WithLeads(Ramped(Join({Polyline({{300, 150, -1}, {300, 250, -1}, {300, 150}})}, "G42"), 0, 6));
    ExpectRecords(Tail(right, 2),
                  {Record(5, 300, 150, -1, -0.100335), AtDepth(Record(5, 280.529, 153.947), -6)});
}

// Three quarters of a circle: from (350,200) over (300,250) and (250,200) to (300,150).
TEST_F(LeadsOfContours, RampAlongABulgeOfMoreThanAHalfCircle)
{
    const double bulge = std::tan(67.5 * 3.14159265358979 / 180);
    const Route led =
        WithLeads(Ramped(Join({Polyline({{350, 200, bulge}, {300, 150}, {350, 200}})}, "G42"), 0, 6));
    ExpectRecords(Tail(led, 2),
                  {Record(5, 350, 200, -1, 0.100335), AtDepth(Record(5, 346.053, 219.471), -6)});
}

TEST_F(LeadsOfContours, RampAlongAShortBulgeEndsWithIt)
{
    const Route led = WithLeads(Ramped(
        Join({Polyline({{100, 100, 1}, {106, 100}, {300, 200}, {100, 300}, {100, 100}})}, "G42"), 0, 6));
    ExpectRecords(Tail(led, 2), {Record(5, 100, 100, -1, 1), AtDepth(Record(5, 106, 100), -6)});
}

// The centre lies 100 km away: the ramp of 20 still ends 20 along the span.
TEST_F(LeadsOfContours, RampAlongANearlyStraightBulgeStaysOnIt)
{
    const Route led = WithLeads(
        Ramped(Join({Polyline({{100, 100, 5e-7F}, {300, 100}, {300, 200}, {100, 100}})}, "G42"), 0, 6));
    ExpectRecords(Tail(led, 1), {AtDepth(Record(5, 120, 100), -6)});
}

TEST_F(LeadsOfContours, RampAlongABulgeBehindAnArcStartsARunOfItsOwn)
{
    const Route led = WithLeads(Ramped(
        Join({Polyline({{300, 150, 1}, {300, 250}}), Arc({300, 200}, 50, 90, 270, true)}, "G42"), 0, 6));
    ExpectRecords(Tail(led, 3), {Record(3, 300, 150, 90, 270, -1), Record(-5, 300, 150, -1, 0.100335),
                                 AtDepth(Record(5, 319.471, 153.947), -6)});
}

TEST_F(LeadsOfContours, LineRampBehindAnArcStartsARunOfItsOwn)
{
    const Route led = WithLeads(Ramped(
        Join({Lines({{100, 100}, {200, 100}, {200, 200}, {110, 110}}), Arc({110, 100}, 10, 90, 180, true)},
             "G42"),
        0, 6));
    ExpectRecords(Tail(led, 3),
                  {Record(3, 100, 100, 90, 180, -1), Record(-1, 100, 100), AtDepth(Record(1, 120, 100), -6)});
}

// The closing record of a polyline repeats the first vertex with its bulge; a straight lead behind it is
// no bulge. An arc lead leaves it alone, since nothing reads it there.
TEST_F(LeadsOfContours, ClosingRecordLosesItsBulgeBeforeAStraightLead)
{
    Route way = Polyline({{100, 100, 0.2}, {200, 100}, {200, 200}, {100, 200}, {100, 100, 0.2}});
    const Route straight = WithLeads(Join({way}, "G41"));
    EXPECT_EQ(straight[straight.size() - 2].Aux1, 0);
    EXPECT_EQ(straight[straight.size() - 2].Aux2, 0);
    EXPECT_EQ(straight.back().Kind, 1);
    const Route arc = WithLeads(Join({way}, "G42"));
    EXPECT_EQ(arc[arc.size() - 3].Aux1, -1);
    EXPECT_EQ(arc[arc.size() - 3].Aux2, 0.2F);
}

TEST_F(LeadsOfContours, LeadsAreCopiesOfTheirEnds)
{
    Route way = Square("G42 R5");
    way.front().Feed = 3000;
    way.front().FeedDown = 700;
    way.front().Sequence = 4;
    way.back().Feed = 2500;
    way.back().Z = 8;
    const Route led = WithLeads(way);
    for (std::size_t i : {0U, 1U}) {
        RouteSegment copy = way.front();
        copy.Kind = led[i].Kind;
        copy.Dir = led[i].Dir;
        copy.X = led[i].X;
        copy.Y = led[i].Y;
        copy.Aux1 = led[i].Aux1;
        copy.Aux2 = led[i].Aux2;
        EXPECT_TRUE(SameRecord(led[i], copy));
    }
    for (std::size_t i : {10U, 11U}) {
        EXPECT_EQ(led[i].Feed, 2500);
        EXPECT_EQ(led[i].Z, 8);
        EXPECT_EQ(led[i].Sequence, 0);
        EXPECT_TRUE(led[i].Comp == "G42 R5");
    }
}

TEST_F(LeadsOfContours, ContourWithoutCompensationKeepsItsEnds)
{
    ExpectSame(WithLeads(Square("")), Square(""));
    ExpectSame(WithLeads(Square("G40")), Square("G40"));
}

TEST_F(LeadsOfContours, ContourIsClosedWhenItsEndsDifferByLessThanTheTolerance)
{
    kv::Run.RouteTolerance = 0.5F;
    const auto gap = [](double x, double y) {
        return Join({Lines({{100, 100}, {200, 100}, {200, 200}, {100, 200}, {100 + x, 100 + y}})}, "G42");
    };
    EXPECT_EQ(WithLeads(gap(0.375, -0.375)).size(), 12U);
    ExpectSame(WithLeads(gap(0.5, 0)), gap(0.5, 0));
    ExpectSame(WithLeads(gap(0, 0.5)), gap(0, 0.5));
}

TEST_F(LeadsOfContours, SeamAtALimitIsLeftToTheBorderRule)
{
    const auto arcs = [](const PlanePoint& seam) {
        int count = 0;
        for (const char* comp : {"G41", "G42"}) // one of the two goes round the corner
            for (const RouteSegment& record :
                 WithLeads(Join({Lines({seam, {300, 210}, {310, 190}, seam})}, comp)))
                count += record.Kind == -3 ? 1 : 0;
        return count;
    };
    for (const PlanePoint& seam : {PlanePoint{0.005, 200}, {599.995, 200}, {200, 0.005}, {200, 399.995}})
        EXPECT_EQ(arcs(seam), 0) << seam.X << " " << seam.Y;
    for (const PlanePoint& seam : {PlanePoint{0.02, 200}, {599.98, 200}, {200, 0.02}, {200, 399.98}})
        EXPECT_EQ(arcs(seam), 2) << seam.X << " " << seam.Y;
}

TEST_F(LeadsOfContours, EitherEndOfTheSeamAtALimitIsEnough)
{
    const auto kindOfLead = [](double startX, double endX) {
        return WithLeads(Join({Lines({{startX, 200}, {300, 210}, {310, 190}, {endX, 200}})}, "G41"))[0].Kind;
    };
    EXPECT_EQ(kindOfLead(0.011, 0.012), -3);
    EXPECT_EQ(kindOfLead(0.011, 0.006), -1); // its end is at the border, so its start has no lead
    EXPECT_EQ(WithLeads(Join({Lines({{0.011, 200}, {300, 210}, {310, 190}, {0.006, 200}})}, "G41")).size(),
              7U);
    EXPECT_EQ(kindOfLead(0.006, 0.011), -1);
}

TEST_F(LeadsOfContours, StoredAnglesLieWithinOneTurn)
{
    for (const char* comp : {"G41", "G42"})
        for (double entry : {0.0, 45.0, 90.0, 170.0, 270.0, 315.0})
            for (bool counterClockwise : {false, true})
                for (const RouteSegment& r :
                     WithLeads(Join({Arc({300, 200}, 50, entry, entry, counterClockwise)}, comp)))
                    EXPECT_TRUE(r.Kind != 3 || (r.Aux1 >= 0 && r.Aux1 < 360 && r.Aux2 >= 0 && r.Aux2 < 360))
                        << TextOf(r);
}

// Only the seam is asked for: the rest of the contour may run along the border.
TEST_F(LeadsOfContours, ContourThatTouchesTheBorderElsewhereIsLedAtItsSeam)
{
    const Route led =
        WithLeads(Join({Lines({{100, 100}, {200, 100}, {0, 300}, {0, 200}, {100, 200}, {100, 100}})}, "G42"));
    ExpectRecords(Head(led, 2), CornerArcIn);
    ExpectRecords(Tail(led, 2), CornerArcOut);
}

TEST_F(LeadsOfContours, LimitsOfTheFaceAreMeasuredFromTheOrigin)
{
    kv::Run.OriginX = 100;
    kv::Run.OriginY = 30;
    EXPECT_EQ(WithLeads(Join({Lines({{500, 200}, {300, 210}, {310, 190}, {500, 200}})}, "")).size(),
              8U); // a border
    EXPECT_EQ(WithLeads(Square("G42")).size(), 12U);
    const Route at = Join({Lines({{0, 100}, {100, 100}, {100, 200}, {0, 100}})}, "G42");
    ExpectRecords(Head(WithLeads(at), 2), {Record(-3, -20, 80, 0, 80, -8), Record(3, 0, 100, 180, 90)});
}

TEST_F(LeadsOfContours, LimitsOfAnEdgeAreThoseOfItsView)
{
    kv::Run.OriginX = 100;
    kv::Run.SideMinX[2] = 100;
    kv::Run.SideMaxX[2] = 300;
    kv::Run.SideMinY[2] = -50;
    kv::Run.SideMaxY[2] = 150;
    Route way = Square("G42");
    way.front().Side = 2;
    ExpectRecords(Head(WithLeads(way), 1), {Record(-1, 80, 100, 0, 0, -8)}); // on the view's left edge
    way.front().Side = 0;                                                    // the face
    EXPECT_EQ(Head(WithLeads(way), 1).front().Kind, -3);
}

} // namespace
} // namespace kv::lead_test
