// The frame of the lead pass: when it runs, which routes it takes, what is put in order before it, and
// the lengths and depths that hold. The leads themselves are tested with contours and at the border.
#include "routes/leads.h"

#include "platform/run_error.h"
#include "routes/lead_routes.h"
#include "state/report.h"
#include "support/scene.h"

namespace kv::lead_test {
namespace {

class LeadsOfRoutes : public testing::Test {
  protected:
    void SetUp() override
    {
        test::ResetProcess();
        LayPanel();
    }
    void TearDown() override { test::ResetProcess(); }
};

std::vector<int> Percents;
void KeepPercent(Meter meter, int percent)
{
    EXPECT_EQ(meter, Meter::SynLeads);
    Percents.push_back(percent);
}

// In from the left edge to the middle; its lead tells the length that held.
Route EdgeRoute(double leadIn = 0)
{
    Route route = Join({Lines({{0, 100}, {300, 100}})});
    route.front().LeadIn = static_cast<Single>(leadIn);
    return route;
}

double LeadOf(const Route& led)
{
    return led.size() == 3 ? -static_cast<double>(led.front().X) : 0;
}

TEST_F(LeadsOfRoutes, MeterMovesAtTheStartOfEachStep)
{
    Percents.clear();
    Report.MeterMoved = KeepPercent;
    WithLeads(EdgeRoute());
    EXPECT_EQ(Percents, (std::vector<int>{10, 60, 100}));
}

TEST_F(LeadsOfRoutes, NothingIsDoneWhereNoLeadIsAskedFor)
{
    Report.MeterMoved = KeepPercent;
    Percents.clear();
    Route way = EdgeRoute(30);
    way.push_back(RouteSegment{});
    kv::Run.LeadsOn = False;
    ExpectSame(WithLeads(way), way);
    kv::Run.LeadsOn = True;
    kv::Run.LeadLength = 0;
    ExpectSame(WithLeads(way), way);
    EXPECT_TRUE(Percents.empty());
}

TEST_F(LeadsOfRoutes, LayerCodeIsEnoughToRun)
{
    kv::Run.LeadsOn = False;
    kv::Run.LeadLength = 0;
    kv::Run.AnyLeadCode = True;
    EXPECT_EQ(LeadOf(WithLeads(EdgeRoute(30))), 30);
    EXPECT_EQ(LeadOf(WithLeads(EdgeRoute())), 0);
}

TEST_F(LeadsOfRoutes, LengthIsTheRoutesOwnBeforeTheDefault)
{
    EXPECT_EQ(LeadOf(WithLeads(EdgeRoute(30))), 30);
    EXPECT_EQ(LeadOf(WithLeads(EdgeRoute())), 20);
    kv::Run.LeadsOn = False;
    kv::Run.AnyLeadCode = True;
    EXPECT_EQ(LeadOf(WithLeads(EdgeRoute(30))), 30);
    EXPECT_EQ(LeadOf(WithLeads(EdgeRoute())), 0);
}

TEST_F(LeadsOfRoutes, LeadOf999IsTheDefaultEvenWithLeadsOff)
{
    kv::Run.LeadsOn = False;
    kv::Run.AnyLeadCode = True;
    EXPECT_EQ(LeadOf(WithLeads(EdgeRoute(999))), 20);
}

TEST_F(LeadsOfRoutes, ValuesAreThoseOfTheFirstRecord)
{
    Route way = EdgeRoute(30);
    way.back().LeadIn = 50;
    EXPECT_EQ(LeadOf(WithLeads(way)), 30);
}

// Depth of the lead-in's first record and of the lead-out's last one.
std::pair<double, double> RampsOf(double in, double out)
{
    Route way = Square("G42");
    way.front().RampIn = static_cast<Single>(in);
    way.front().RampOut = static_cast<Single>(out);
    const Route led = WithLeads(way);
    return {led.front().Z, led.back().Z};
}

TEST_F(LeadsOfRoutes, RampsAreTheRoutesOwnTheDefaultOrNone)
{
    using Depths = std::pair<double, double>;
    kv::Run.LeadRampHeight = 9;
    EXPECT_EQ(RampsOf(0, 0), Depths(12, 12));
    EXPECT_EQ(RampsOf(4, 6), Depths(-4, -6));
    EXPECT_EQ(RampsOf(999, 999), Depths(-9, -9));
    kv::Run.RampInOn = True;
    EXPECT_EQ(RampsOf(0, 0), Depths(-9, 12));
    EXPECT_EQ(RampsOf(4, 0), Depths(-4, 12));
    kv::Run.RampInOn = False;
    kv::Run.RampOutOn = True;
    EXPECT_EQ(RampsOf(0, 0), Depths(12, -9));
    EXPECT_EQ(RampsOf(0, 6), Depths(12, -6));
    kv::Run.LeadRampHeight = 0;
    EXPECT_EQ(RampsOf(999, 999), Depths(12, 12));
}

TEST_F(LeadsOfRoutes, EachRouteIsLedByItself)
{
    Route list = Square("G42");
    const Route edge = EdgeRoute(), inside = Join({Lines({{50, 50}, {60, 50}})});
    list.insert(list.end(), inside.begin(), inside.end());
    list.insert(list.end(), edge.begin(), edge.end());
    const Route led = WithLeads(list);
    ASSERT_EQ(led.size(), 17U);
    ExpectSame({led.begin() + 12, led.begin() + 14}, inside);
    ExpectRecords({led.begin() + 14, led.end()},
                  {Record(-1, -20, 100, 0, 0, -8), Record(1, 0, 100), Record(1, 300, 100)});
    EXPECT_EQ(kv::Run.SegmentCount, 17);
    EXPECT_EQ(RouteSegments.Last(), 17);
    EXPECT_TRUE(SameRecord(RouteSegments[0], RouteSegment{}));
}

TEST_F(LeadsOfRoutes, RecordsInFrontOfTheFirstRouteAreLeftAlone)
{
    Route front = EdgeRoute();
    front.front().Dir = 0;
    Route list = front;
    const Route edge = EdgeRoute();
    list.insert(list.end(), edge.begin(), edge.end());
    const Route led = WithLeads(list);
    ASSERT_EQ(led.size(), 5U);
    ExpectSame(Head(led, 2), front);
    ExpectSame(WithLeads(front), front);
}

TEST_F(LeadsOfRoutes, RouteOfOneRecordIsLeftAlone)
{
    const Route lone = {Record(-5, 0, 100, 0, 0, -8)};
    ExpectSame(WithLeads(lone), lone);
    Route list = lone;
    const Route edge = EdgeRoute();
    list.insert(list.end(), edge.begin(), edge.end());
    EXPECT_EQ(WithLeads(list).size(), 4U);
}

TEST_F(LeadsOfRoutes, EmptyListStaysEmpty)
{
    EXPECT_TRUE(WithLeads({}).empty());
    EXPECT_EQ(kv::Run.SegmentCount, 0);
}

Route Mark(double x, double y, int dir)
{
    return {Record(-4, x, y, 1, 2, dir), Record(4, x + 1, y)};
}

Route Behind(Route front, const Route& more)
{
    front.insert(front.end(), more.begin(), more.end());
    return front;
}

TEST_F(LeadsOfRoutes, StartMarkAtARoutesHeadGivesWayToItsContour)
{
    Route contour = Square("G42");
    contour.front().Dir = 0;
    ExpectSame(WithLeads(Behind(Mark(90, 90, -8), contour)), WithLeads(Square("G42")));
}

TEST_F(LeadsOfRoutes, SeveralStartMarksAllGiveWay)
{
    Route contour = Square("G42");
    contour.front().Dir = 0;
    ExpectSame(WithLeads(Behind(Behind(Mark(90, 90, -8), Mark(50, 50, 0)), contour)),
               WithLeads(Square("G42")));
}

TEST_F(LeadsOfRoutes, StartMarkThatIsARouteOfItsOwnGoes)
{
    ExpectSame(WithLeads(Behind(Mark(90, 90, -8), Square("G42"))), WithLeads(Square("G42")));
    ExpectSame(WithLeads(Behind(Square("G42"), Mark(90, 90, -8))), WithLeads(Square("G42")));
}

// A tapered polyline that is no mark: its second record is a vertex.
TEST_F(LeadsOfRoutes, TaperedStartBeforeAVertexStays)
{
    const Route way = Join({{Record(-4, 0, 100, 2, 3), Record(5, 300, 100), Record(5, 300, 400)}});
    ExpectRecords(WithLeads(way), {Record(-1, -20, 100, 0, 0, -8), Record(4, 0, 100, 2, 3),
                                   Record(5, 300, 100), Record(5, 300, 400), Record(1, 300, 420)});
}

TEST_F(LeadsOfRoutes, StartMarkWithinARouteStays)
{
    const Route way = Behind(EdgeRoute(), Behind(Mark(300, 100, 0), Lines({{300, 100}, {600, 100}})));
    const Route led = WithLeads(way);
    EXPECT_EQ(led.size(), way.size() + 2);
    EXPECT_EQ(led[3].Kind, -4);
    EXPECT_EQ(led[4].Kind, 4);
}

// A lone tapered vertex is no mark: the record behind it opens the next route.
TEST_F(LeadsOfRoutes, TaperedRouteOfOneRecordDoesNotTakeTheNextRoutesStart)
{
    const Route list =
        Behind({Record(-4, 50, 50, 2, 3, -8)}, Join({{Record(-4, 0, 100, 2, 3), Record(5, 300, 100)}}));
    const Route led = WithLeads(list);
    ASSERT_EQ(led.size(), 4U);
    EXPECT_TRUE(SameRecord(led[0], list[0]));
    ExpectRecords({led[1]}, {Record(-1, -20, 100, 0, 0, -8)});
}

TEST_F(LeadsOfRoutes, PocketTakesNoLeads)
{
    for (const char* comp : {"G41", "G42"}) {
        Route pocket = Behind(Join({Lines({{0, 100}, {300, 100}, {300, 200}, {0, 100}})}), Mark(0, 100, 0));
        for (RouteSegment& record : pocket) {
            record.Comp = comp;
            record.LeadIn = 999;
        }
        ExpectSame(WithLeads(pocket), pocket);
        pocket.back().Kind = -4; // whatever its sign
        ExpectSame(WithLeads(pocket), pocket);
    }
}

TEST_F(LeadsOfRoutes, DeadRecordsGo)
{
    Route way = EdgeRoute();
    way.insert(way.begin() + 1, RouteSegment{});
    way.insert(way.begin(), RouteSegment{});
    way.push_back(RouteSegment{});
    way.push_back(RouteSegment{});
    ExpectSame(WithLeads(way), WithLeads(EdgeRoute()));
}

TEST_F(LeadsOfRoutes, RecordBehindADeadStartTakesTheStartOver)
{
    Route way = EdgeRoute();
    way.front().Dir = 0;
    RouteSegment dead;
    dead.Dir = -8;
    Route list = Behind({dead, RouteSegment{}}, way);
    ExpectSame(WithLeads(list), WithLeads(EdgeRoute()));
    list = Behind({RouteSegment{}, dead}, way);
    ExpectSame(WithLeads(list), WithLeads(EdgeRoute()));
}

TEST_F(LeadsOfRoutes, DeadRecordInAListWithoutLeadsGoesToo)
{
    kv::Run.LeadsOn = False;
    kv::Run.AnyLeadCode = True;
    EXPECT_EQ(WithLeads({Record(-1, 0, 100, 0, 0, -8), RouteSegment{}, Record(1, 300, 100)}).size(), 2U);
    EXPECT_EQ(kv::Run.SegmentCount, 2);
}

TEST_F(LeadsOfRoutes, MoreRecordsThanTheListHoldsEndTheRun)
{
    Route list;
    for (int i = 0; i < 10922; ++i)
        list = Behind(std::move(list), EdgeRoute());
    EXPECT_EQ(WithLeads(list).size(), 32766U);
    list = Behind(std::move(list), EdgeRoute());
    EXPECT_THROW(WithLeads(list), RunError);
}

// Neither a lead longer than everything nor one of no sense may bring what is no number.
TEST_F(LeadsOfRoutes, WildLengthsAndDegenerateRoutesGiveNumbers)
{
    const std::vector<Route> ways = {
        Join({Lines({{100, 100}, {100, 100}})}, "G41"),
        Join({Arc({100, 100}, 0, 0, 0, true)}, "G42"),
        Join({Arc({100, 100}, 0, 0, 0, true), Lines({{100, 100}, {100, 100}})}, "G41"),
        Join({Arc({100, 100}, 1e-30, 0, 0, false)}, "G41"),
        Join({Polyline({{100, 100, 1}, {100, 100}})}, "G42"),
        Join({Polyline({{100, 100, 3e38}, {110, 100, -3e38}, {100, 100}})}, "G42"),
        Join({Polyline({{100, 100, 1e-45}, {110, 100, -1e-45}, {100, 100}})}, "G41"),
        Join({Polyline({{100, 100, 1e-12}, {110, 100}, {110, 110}, {100, 100}})}, "G42"),
        Join({Polyline({{0, 100, 1e-45}, {0, 100, 3e38}, {0, 110}})}, ""),
        Join({Arc({0, 100}, 0, 1e30, -1e30, true)}, ""),
        Square("G41")};
    for (const Route& way : ways)
        for (double length : {20.0, 1e-30, 1e6, -20.0})
            for (double ramp : {0.0, 5.0}) {
                Route led = way;
                led.front().LeadIn = static_cast<Single>(length);
                led.front().RampOut = static_cast<Single>(ramp);
                led = WithLeads(led);
                for (const RouteSegment& r : led)
                    EXPECT_TRUE(std::isfinite(r.X) && std::isfinite(r.Y) && std::isfinite(r.Z) &&
                                std::isfinite(r.Aux1) && std::isfinite(r.Aux2) && std::fabs(r.X) < 1e7 &&
                                std::fabs(r.Y) < 1e7)
                        << length << "\n"
                        << TextOf(led);
            }
}

// Its centre is so far away that the way back from it is lost in the digits of a double.
TEST_F(LeadsOfRoutes, RampAlongANearlyStraightBulgeIsAsLongAsTheLead)
{
    for (double bulge : {1e-3, 1e-5, 1e-7, 1e-12, 1e-30, -1e-4, -1e-9}) {
        Route way =
            Join({Polyline({{100, 100, bulge}, {200, 100}, {200, 200}, {100, 200}, {100, 100}})}, "G42");
        way.front().RampOut = 5;
        const Route led = WithLeads(way);
        // Its middle rises 1/2 bulge x chord below or above; 20 of 100 on, (1 - 0.6 x 0.6) of that.
        ExpectRecords(Tail(led, 1), {AtDepth(Record(5, 120, 100 - bulge * 50 * 0.64), -5)});
    }
}

} // namespace
} // namespace kv::lead_test
