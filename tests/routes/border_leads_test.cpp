// Leads at the border of a panel of 600 x 400: on beyond it, or out of it on a quarter arc. Leads of 20,
// worked out by hand.
#include "routes/border_leads.h"

#include "routes/lead_routes.h"
#include "support/scene.h"

namespace kv::lead_test {
namespace {

class LeadsAtTheBorder : public testing::Test {
  protected:
    void SetUp() override
    {
        test::ResetProcess();
        LayPanel();
    }
    void TearDown() override { test::ResetProcess(); }
};

Route LineRoute(const PlanePoint& from, const PlanePoint& to)
{
    return Join({Lines({from, to})});
}

TEST_F(LeadsAtTheBorder, LineAcrossThePanelRunsOnBeyondBothEdges)
{
    ExpectRecords(
        WithLeads(LineRoute({0, 100}, {600, 100})),
        {Record(-1, -20, 100, 0, 0, -8), Record(1, 0, 100), Record(1, 600, 100), Record(1, 620, 100)});
}

TEST_F(LeadsAtTheBorder, LineThatMeetsTheEdgeAtASlantRunsOnAsItGoes)
{
    ExpectRecords(WithLeads(LineRoute({0, 100}, {300, 400})),
                  {Record(-1, -14.142, 85.858, 0, 0, -8), Record(1, 0, 100), Record(1, 300, 400),
                   Record(1, 314.142, 414.142)});
}

TEST_F(LeadsAtTheBorder, OnlyTheEndOnTheBorderIsLed)
{
    ExpectRecords(WithLeads(LineRoute({0, 100}, {300, 100})),
                  {Record(-1, -20, 100, 0, 0, -8), Record(1, 0, 100), Record(1, 300, 100)});
    ExpectRecords(WithLeads(LineRoute({300, 100}, {300, 0})),
                  {Record(-1, 300, 100, 0, 0, -8), Record(1, 300, 0), Record(1, 300, -20)});
}

TEST_F(LeadsAtTheBorder, OpenRouteInsideThePartHasNoLead)
{
    Route way = LineRoute({100, 100}, {300, 100});
    for (RouteSegment& record : way) {
        record.LeadIn = 30;
        record.RampIn = record.RampOut = 5;
        record.Comp = "G41";
    }
    ExpectSame(WithLeads(way), way);
}

TEST_F(LeadsAtTheBorder, LineAlongTheLeftEdgeTurnsOutOfThePart)
{
    ExpectRecords(WithLeads(LineRoute({0, 100}, {0, 300})),
                  {Record(-3, -20, 80, -20, 100, -8), Record(3, 0, 100, 270, 0, -1), Record(-1, 0, 100),
                   Record(1, 0, 300), Record(-3, 0, 300, -20, 300), Record(3, -20, 320, 0, 90, -1)});
    ExpectRecords(WithLeads(LineRoute({0, 300}, {0, 100})),
                  {Record(-3, -20, 320, -20, 300, -8), Record(3, 0, 300, 90, 0), Record(-1, 0, 300),
                   Record(1, 0, 100), Record(-3, 0, 100, -20, 100), Record(3, -20, 80, 0, 270)});
}

TEST_F(LeadsAtTheBorder, LineAlongTheRightEdgeTurnsOutOfThePart)
{
    ExpectRecords(WithLeads(LineRoute({600, 100}, {600, 300})),
                  {Record(-3, 620, 80, 620, 100, -8), Record(3, 600, 100, 270, 180), Record(-1, 600, 100),
                   Record(1, 600, 300), Record(-3, 600, 300, 620, 300), Record(3, 620, 320, 180, 90)});
}

TEST_F(LeadsAtTheBorder, LineAlongTheLowerEdgeTurnsOutOfThePart)
{
    ExpectRecords(WithLeads(LineRoute({100, 0}, {300, 0})),
                  {Record(-3, 80, -20, 100, -20, -8), Record(3, 100, 0, 180, 90), Record(-1, 100, 0),
                   Record(1, 300, 0), Record(-3, 300, 0, 300, -20), Record(3, 320, -20, 90, 0)});
}

TEST_F(LeadsAtTheBorder, LineAlongTheUpperEdgeTurnsOutOfThePart)
{
    ExpectRecords(WithLeads(LineRoute({100, 400}, {300, 400})),
                  {Record(-3, 80, 420, 100, 420, -8), Record(3, 100, 400, 180, 270, -1), Record(-1, 100, 400),
                   Record(1, 300, 400), Record(-3, 300, 400, 300, 420), Record(3, 320, 420, 270, 0, -1)});
}

TEST_F(LeadsAtTheBorder, CornerKeepsTheStraightExtension)
{
    ExpectRecords(WithLeads(LineRoute({0, 0}, {0, 100})),
                  {Record(-1, 0, -20, 0, 0, -8), Record(1, 0, 0), Record(1, 0, 100),
                   Record(-3, 0, 100, -20, 100), Record(3, -20, 120, 0, 90, -1)});
    ExpectRecords(WithLeads(LineRoute({300, 300}, {600, 400})),
                  {Record(-1, 300, 300, 0, 0, -8), Record(1, 600, 400), Record(1, 618.974, 406.325)});
}

TEST_F(LeadsAtTheBorder, ArcInACornerKeepsTheStraightExtension)
{
    // A quarter from (0,0) to (50,50) around (50,0): it leaves the corner upward.
    const Route led = WithLeads(Join({Arc({50, 0}, 50, 180, 90, false)}));
    ExpectRecords(led, {Record(-1, 0, -20, 0, 0, -8), Record(1, 0, 0), Record(-3, 0, 0, 50, 0),
                        Record(3, 50, 50, 180, 90)});
}

// Along the edge means: the neighbour lies within the tolerance of the end, in the edge's coordinate.
TEST_F(LeadsAtTheBorder, LineNextToTheEdgeDirectionRunsStraightOn)
{
    kv::Run.RouteTolerance = 0.5F;
    const Route along = WithLeads(LineRoute({0, 100}, {0.375, 300}));
    ExpectRecords(Head(along, 2), {Record(-3, -20, 80, -20, 100, -8), Record(3, 0, 100, 270, 0, -1)});
    const Route beside = WithLeads(LineRoute({0, 100}, {0.5, 300}));
    ExpectRecords(Head(beside, 1), {Record(-1, -0.05, 80, 0, 0, -8)});
}

TEST_F(LeadsAtTheBorder, EndIsOnTheBorderWithinTheTolerance)
{
    kv::Run.RouteTolerance = 0.5F;
    EXPECT_EQ(WithLeads(LineRoute({0.375, 100}, {300, 100})).size(), 3U);
    EXPECT_EQ(WithLeads(LineRoute({-0.375, 100}, {300, 100})).size(), 3U);
    EXPECT_EQ(WithLeads(LineRoute({0.5, 100}, {300, 100})).size(), 2U);
    EXPECT_EQ(WithLeads(LineRoute({300, 399.625}, {300, 100})).size(), 3U);
    EXPECT_EQ(WithLeads(LineRoute({300, 399.5}, {300, 100})).size(), 2U);
}

TEST_F(LeadsAtTheBorder, EndBesideTheEdgeIsNotOnIt)
{
    EXPECT_EQ(WithLeads(LineRoute({0, 450}, {300, 300})).size(), 2U);
    EXPECT_EQ(WithLeads(LineRoute({300, 300}, {-30, 400})).size(), 2U);
    EXPECT_EQ(WithLeads(LineRoute({300, 300}, {630, 0})).size(), 2U);
    EXPECT_EQ(WithLeads(LineRoute({600, -1}, {300, 300})).size(), 2U);
}

// A half circle that leaves the left edge at a right angle and comes back to it.
TEST_F(LeadsAtTheBorder, ArcAtARightAngleToTheBorderGoesOnTurning)
{
    ExpectRecords(WithLeads(Join({Arc({0, 200}, 50, 270, 90, true)})),
                  {Record(-3, -20, 170, 0, 170, -8), Record(3, 0, 150, 180, 270, -1),
                   Record(-3, 0, 150, 0, 200), Record(3, 0, 250, 270, 90, -1), Record(-3, 0, 250, 0, 230),
                   Record(3, -20, 230, 90, 180, -1)});
    ExpectRecords(WithLeads(Join({Arc({0, 200}, 50, 90, 270, false)})),
                  {Record(-3, -20, 230, 0, 230, -8), Record(3, 0, 250, 180, 90), Record(-3, 0, 250, 0, 200),
                   Record(3, 0, 150, 90, 270), Record(-3, 0, 150, 0, 170), Record(3, -20, 170, 270, 180)});
}

// Within a hundredth of a degree of the right angle the arc's own sense still decides.
TEST_F(LeadsAtTheBorder, RightAngleOfAnArcHasATolerance)
{
    const auto centreBeyond = [](double degrees) { // the arc enters at this angle, turning left
        const PlanePoint centre = OnCircle({0, 150}, 50, degrees + 90);
        Route way = Join({Arc(centre, 50, degrees + 270, degrees + 350, true)});
        way.front().X = 0;
        way.front().Y = 150;
        const Route led = WithLeads(way);
        return led[1].Dir;
    };
    EXPECT_EQ(centreBeyond(0.008), -1);  // turns on to the left
    EXPECT_EQ(centreBeyond(-0.008), -1); // as well
    EXPECT_EQ(centreBeyond(-0.012), 0);  // bends away from the border
    EXPECT_EQ(centreBeyond(0.012), -1);
}

TEST_F(LeadsAtTheBorder, ArcAtASlantBendsAwayFromTheBorder)
{
    const double r = 50 / std::sqrt(2.0);
    // Enters (0,100) rising by 45 degrees, turning right, and ends inside.
    ExpectRecords(Head(WithLeads(Join({Arc({r, 100 - r}, 50, 135, 90, false)})), 2),
                  {Record(-3, -28.284, 100, -14.142, 114.142, -8), Record(3, 0, 100, 225, 315, -1)});
    // Enters falling by 45 degrees, turning left.
    ExpectRecords(Head(WithLeads(Join({Arc({r, 100 + r}, 50, 225, 270, true)})), 2),
                  {Record(-3, -28.284, 100, -14.142, 85.858, -8), Record(3, 0, 100, 135, 45)});
    // The same two run the other way, so the border is met at the end.
    ExpectRecords(Tail(WithLeads(Join({Arc({r, 100 - r}, 50, 90, 135, true)})), 2),
                  {Record(-3, 0, 100, -14.142, 114.142), Record(3, -28.284, 100, 315, 225)});
    ExpectRecords(Tail(WithLeads(Join({Arc({r, 100 + r}, 50, 270, 225, false)})), 2),
                  {Record(-3, 0, 100, -14.142, 85.858), Record(3, -28.284, 100, 45, 135, -1)});
}

// It touches the lower edge at (300,0): the lead runs along the edge's direction and out.
TEST_F(LeadsAtTheBorder, ArcThatTouchesTheBorderBendsOut)
{
    ExpectRecords(Head(WithLeads(Join({Arc({300, 50}, 50, 270, 0, true)})), 2),
                  {Record(-3, 280, -20, 300, -20, -8), Record(3, 300, 0, 180, 90)});
    ExpectRecords(Tail(WithLeads(Join({Arc({300, 50}, 50, 180, 270, true)})), 2),
                  {Record(-3, 300, 0, 300, -20), Record(3, 320, -20, 90, 0)});
}

TEST_F(LeadsAtTheBorder, BulgeRunsStraightOnAlongItsTangent)
{
    ExpectRecords(
        WithLeads(Join({Polyline({{0, 150, 1}, {0, 250}})})),
        {Record(-1, -20, 150, 0, 0, -8), Record(5, 0, 150, -1, 1), Record(5, 0, 250), Record(5, -20, 250)});
    // Right of the chord, less than a half circle: tangents of 45 degrees.
    const double quarter = std::tan(22.5 * 3.14159265358979 / 180);
    ExpectRecords(WithLeads(Join({Polyline({{100, 0, -quarter}, {200, 0}})})),
                  {Record(-1, 85.858, -14.142, 0, 0, -8), Record(5, 100, 0, -1, -quarter), Record(5, 200, 0),
                   Record(5, 214.142, -14.142)});
}

TEST_F(LeadsAtTheBorder, StraightEndOfAPolylineIsALine)
{
    ExpectRecords(WithLeads(Join({Polyline({{0, 150, 1}, {0, 250}, {100, 250}, {100, 400}})})),
                  {Record(-1, -20, 150, 0, 0, -8), Record(5, 0, 150, -1, 1), Record(5, 0, 250),
                   Record(5, 100, 250), Record(5, 100, 400), Record(1, 100, 420)});
}

TEST_F(LeadsAtTheBorder, RampsAreForContoursAlone)
{
    Route way = LineRoute({0, 100}, {0, 300});
    for (RouteSegment& record : way)
        record.RampIn = record.RampOut = 5;
    for (const RouteSegment& record : WithLeads(way))
        EXPECT_EQ(record.Z, 12);
}

TEST_F(LeadsAtTheBorder, CompensationPlaysNoPart)
{
    for (const char* comp : {"", "G41", "G42"}) {
        const Route led = WithLeads(Join({Lines({{0, 100}, {0, 300}})}, comp));
        ExpectRecords(Tail(led, 2), {Record(-3, 0, 300, -20, 300), Record(3, -20, 320, 0, 90, -1)});
    }
}

TEST_F(LeadsAtTheBorder, ClosedContourAtTheBorderIsLedAtItsEnds)
{
    const Route led = WithLeads(Join({Lines({{0, 100}, {100, 100}, {100, 200}, {0, 200}, {0, 100}})}, "G41"));
    ExpectRecords(Head(led, 2), {Record(-1, -20, 100, 0, 0, -8), Record(1, 0, 100)});
    ExpectRecords(Tail(led, 3),
                  {Record(1, 0, 100), Record(-3, 0, 100, -20, 100), Record(3, -20, 80, 0, 270)});
    EXPECT_EQ(led.size(), 11U);
}

TEST_F(LeadsAtTheBorder, ContourWithTheBorderAtASideOfItsSeamHasNoLead)
{
    // The seam's X is a limit's, but it lies beyond the panel's end: neither rule takes it.
    const Route way = Join({Lines({{600, 500}, {700, 500}, {700, 600}, {600, 500}})}, "G41");
    ExpectSame(WithLeads(way), way);
}

TEST_F(LeadsAtTheBorder, FaceIsMeasuredFromTheOriginAndEdgesAreNot)
{
    kv::Run.OriginX = 10;
    kv::Run.OriginY = 30;
    ExpectRecords(Head(WithLeads(LineRoute({-10, 100}, {300, 100})), 1), {Record(-1, -30, 100, 0, 0, -8)});
    EXPECT_EQ(WithLeads(LineRoute({0, 100}, {300, 100})).size(), 2U);
    ExpectRecords(Tail(WithLeads(LineRoute({300, 100}, {300, 370})), 1), {Record(1, 300, 390)});
    kv::Run.SideMinX[3] = -60;
    kv::Run.SideMaxX[3] = -40;
    kv::Run.SideMinY[3] = 0;
    kv::Run.SideMaxY[3] = 400;
    Route way = LineRoute({-50, 400}, {-50, 300});
    way.front().Side = 3;
    ExpectRecords(Head(WithLeads(way), 1), {Record(-1, -50, 420, 0, 0, -8)});
}

TEST_F(LeadsAtTheBorder, SideOfNoNumberCountsAsTheFace)
{
    Route way = LineRoute({0, 100}, {300, 100});
    for (Int side : std::vector<Int>{0, 6, -1, 32767}) {
        way.front().Side = side;
        EXPECT_EQ(WithLeads(way).size(), 3U);
    }
}

// A line without length has the direction 0; a right angle from the edge's 90 counts as against it.
TEST_F(LeadsAtTheBorder, LineWithoutLengthHasLeadsThatAreNumbers)
{
    ExpectRecords(WithLeads(LineRoute({300, 0}, {300, 0})),
                  {Record(-3, 280, -20, 300, -20, -8), Record(3, 300, 0, 180, 90), Record(-1, 300, 0),
                   Record(1, 300, 0), Record(-3, 300, 0, 300, -20), Record(3, 320, -20, 90, 0)});
    ExpectRecords(Head(WithLeads(Join({Polyline({{0, 100, 0.5}, {0, 100}, {50, 100}})})), 2),
                  {Record(-3, -20, 80, -20, 100, -8), Record(3, 0, 100, 270, 0, -1)});
}

} // namespace
} // namespace kv::lead_test
