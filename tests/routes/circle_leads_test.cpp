// Leads of circles that no path has met: a quarter circle in, the full circle, a quarter circle or a
// ramp out.
#include <cmath>

#include "routes/route_chain_scene.h"

namespace kv {
namespace {

using chain_test::ChainLengthsNow;
using chain_test::Circle;
using chain_test::Circles;
using chain_test::KindsNow;
using chain_test::LayRoutes;
using chain_test::Line;
using chain_test::Point;
using chain_test::Points;
using chain_test::Segments;
using chain_test::SegmentsNow;

struct LeadRecord {
    int Kind;
    double X, Y, Aux1, Aux2;
    int Dir;
    double Z;
};

class CircleLeads : public chain_test::RouteChainTest {
  protected:
    // A run with leads of 20 and ramps of 3.
    static void Lay(const Circles& circles, const Segments& segments = {})
    {
        LayRoutes(segments, circles);
        Run.LeadLength = 20;
        Run.LeadsOn = True;
        Run.LeadRampHeight = 3;
    }

    static void Expect(const std::vector<LeadRecord>& expected, Long from = 1)
    {
        ASSERT_GE(RouteSegments.Last(), from - 1 + static_cast<Long>(expected.size()));
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const RouteSegment& record = RouteSegments[from + static_cast<Long>(i)];
            const LeadRecord& told = expected[i];
            EXPECT_EQ(record.Kind, told.Kind) << i;
            EXPECT_NEAR(record.X, told.X, 0.001) << i;
            EXPECT_NEAR(record.Y, told.Y, 0.001) << i;
            EXPECT_NEAR(record.Aux1, told.Aux1, 0.001) << i;
            EXPECT_NEAR(record.Aux2, told.Aux2, 0.001) << i;
            EXPECT_EQ(record.Dir, told.Dir) << i;
            EXPECT_EQ(record.Z, static_cast<Single>(told.Z)) << i;
        }
    }

    static std::size_t Leads()
    {
        EXPECT_TRUE(ChainRoutes());
        return SegmentsNow().size() / 6;
    }
};

const RouteCircle Left = Circle({300, 200}, 50, "G41");
const RouteCircle Right = Circle({300, 200}, 50, "G42 R2");

TEST_F(CircleLeads, LeftOfTheWayLeadsFromOutside)
{
    Lay({Left});
    EXPECT_TRUE(ChainRoutes());
    ASSERT_EQ(SegmentsNow().size(), 6U);
    Expect({{-3, 280, 270, 300, 270, -8, 7},
            {3, 300, 250, 180, 270, -1, 7},
            {-3, 300, 250, 300, 200, 0, 7},
            {3, 300, 250, 90, 90, 0, 7},
            {-3, 300, 250, 300, 270, 0, 7},
            {3, 320, 270, 90, 0, -1, 7}}); // begins at 90 for both hands
}

TEST_F(CircleLeads, RightOfTheWayLeadsFromInside)
{
    Lay({Right});
    EXPECT_TRUE(ChainRoutes());
    ASSERT_EQ(SegmentsNow().size(), 6U);
    Expect({{-3, 280, 230, 300, 230, -8, 7},
            {3, 300, 250, 180, 90, 0, 7},
            {-3, 300, 250, 300, 200, 0, 7},
            {3, 300, 250, 90, 90, 0, 7},
            {-3, 300, 250, 300, 230, 0, 7},
            {3, 320, 230, 90, 0, 0, 7}});
}

TEST_F(CircleLeads, RampInLiesOnTheFirstRecordAlone)
{
    Lay({Left});
    Run.RampInOn = True;
    EXPECT_TRUE(ChainRoutes());
    Expect(
        {{-3, 280, 270, 300, 270, -8, -3}, {3, 300, 250, 180, 270, -1, 7}, {-3, 300, 250, 300, 200, 0, 7}});
    EXPECT_EQ(RouteSegments[6].Z, 7);
}

TEST_F(CircleLeads, RampOutGoesOnAlongTheRim)
{
    // 20 of a rim of radius 50 are .4 of a radian, 22.918 degrees: out at 67.082.
    Lay({Left});
    Run.RampOutOn = True;
    EXPECT_TRUE(ChainRoutes());
    ASSERT_EQ(SegmentsNow().size(), 6U);
    Expect({{-3, 280, 270, 300, 270, -8, 7},
            {3, 300, 250, 180, 270, -1, 7},
            {-3, 300, 250, 300, 200, 0, 7},
            {3, 300, 250, 90, 90, 0, 7},
            {-3, 300, 250, 300, 200, 0, -3},
            {3, 300 + 50 * std::sin(0.4), 200 + 50 * std::cos(0.4), 90, 67.0817, 0, -3}});
}

TEST_F(CircleLeads, RampOutIsHalfTheCircleAtMost)
{
    Lay({Right});
    Run.RampOutOn = True;
    Run.LeadLength = 1000;
    EXPECT_TRUE(ChainRoutes());
    Expect({{3, 300, 150, 90, -90, 0, -3}}, 6); // the angle stays below 0
}

TEST_F(CircleLeads, OwnRampIsAHeight)
{
    RouteCircle circle = Right;
    circle.RampIn = 4;
    circle.RampOut = 5;
    Lay({circle});
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(RouteSegments[1].Z, -4);
    EXPECT_EQ(RouteSegments[5].Z, -5);
    EXPECT_EQ(RouteSegments[6].Z, -5);
}

TEST_F(CircleLeads, RampOnceSeenStaysInForce)
{
    RouteCircle first = Right, third = Right;
    first.RampIn = 4;
    first.RampOut = 5;
    third.RampIn = 6;
    Lay({first, Right, third, Left});
    EXPECT_TRUE(ChainRoutes());
    ASSERT_EQ(SegmentsNow().size(), 24U);
    const Single rampsIn[] = {-4, -4, -6, -6};
    for (Long i = 0; i < 4; ++i) {
        EXPECT_EQ(RouteSegments[6 * i + 1].Z, rampsIn[i]) << i;
        EXPECT_EQ(RouteSegments[6 * i + 5].Z, -5) << i;
    }
}

TEST_F(CircleLeads, RampOfACircleWithoutLeadIsNotSeen)
{
    RouteCircle skipped = Right;
    skipped.LeadIn = -1;
    skipped.RampIn = 4;
    Lay({skipped, Right});
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(RouteSegments[1].Z, 7);
}

TEST_F(CircleLeads, RampOfOneRunIsNotSeenByTheNext)
{
    RouteCircle first = Right;
    first.RampIn = 4;
    Lay({first});
    EXPECT_TRUE(ChainRoutes());
    Lay({Right});
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(RouteSegments[1].Z, 7);
}

TEST_F(CircleLeads, OwnLeadComesBeforeTheRuns)
{
    RouteCircle own = Right;
    own.LeadIn = 5;
    Lay({own});
    EXPECT_TRUE(ChainRoutes());
    Expect({{-3, 295, 245, 300, 245, -8, 7}});
}

TEST_F(CircleLeads, DefaultIsTheRunsLead)
{
    RouteCircle asked = Right;
    asked.LeadIn = RunDefault;
    Lay({asked});
    Run.LeadsOn = False;
    Run.AnyLeadCode = True;
    EXPECT_TRUE(ChainRoutes());
    Expect({{-3, 280, 230, 300, 230, -8, 7}});
}

TEST_F(CircleLeads, CircleWithoutCompensationHasNoLead)
{
    Lay({Circle({300, 200}, 50)});
    EXPECT_EQ(Leads(), 0U);
    EXPECT_EQ(RouteCircles[1].Used, False);
}

TEST_F(CircleLeads, LeadNotAboveZeroIsNone)
{
    Lay({Right});
    Run.LeadsOn = False;
    Run.AnyLeadCode = True; // the circle's own lead is 0
    EXPECT_EQ(Leads(), 0U);
    RouteCircle below = Right;
    below.LeadIn = -5;
    Lay({below});
    EXPECT_EQ(Leads(), 0U);
}

TEST_F(CircleLeads, RunWithoutLeadsMakesNone)
{
    RouteCircle own = Right;
    own.LeadIn = 5;
    Lay({own});
    Run.LeadsOn = False;
    EXPECT_EQ(Leads(), 0U);
    Lay({own});
    Run.LeadLength = 0;
    EXPECT_EQ(Leads(), 0U);
    Lay({own});
    Run.LeadLength = 0;
    Run.AnyLeadCode = True; // a layer has a lead code
    EXPECT_EQ(Leads(), 1U);
}

TEST_F(CircleLeads, PocketAndUsedCircleHaveNone)
{
    RouteCircle pocket = Right, used = Right;
    pocket.OscZ = -5;
    used.Used = True;
    Lay({pocket, used});
    EXPECT_EQ(Leads(), 0U);
    EXPECT_EQ(RouteCircles[1].Used, False);
    EXPECT_EQ(RouteCircles[1].Pass, 1);
}

TEST_F(CircleLeads, CircleIsUsedUpAndItsRecordsKeepItsPass)
{
    RouteCircle circle = Right;
    circle.Pass = 3;
    circle.ToolNo = 4;
    circle.Feed = 1500;
    circle.Sequence = 0;
    circle.Speed = 18000;
    Lay({circle});
    EXPECT_TRUE(ChainRoutes());
    ASSERT_EQ(SegmentsNow().size(), 6U);
    for (const RouteSegment& record : SegmentsNow()) {
        EXPECT_EQ(record.Pass, 3);
        EXPECT_EQ(record.ToolNo, 4);
        EXPECT_EQ(record.Feed, 1500);
        EXPECT_EQ(record.Speed, 18000);
        EXPECT_TRUE(record.Comp == "G42 R2");
    }
    EXPECT_EQ(RouteCircles[1].Used, True);
    EXPECT_EQ(RouteCircles[1].Pass, 0);
}

TEST_F(CircleLeads, SixRecordsAreOneChain)
{
    Lay({Right}, Line({0, 0}, {10, 0}));
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(ChainLengthsNow(), (std::vector<std::size_t>{6, 2}));
    EXPECT_EQ(KindsNow(), (std::vector<int>{-3, 3, -3, 3, -3, 3, -1, 1}));
}

TEST_F(CircleLeads, CircleWithoutLeadBecomesArcs)
{
    RouteCircle none = Right;
    none.LeadIn = -1;
    Lay({none, Circle({800, 400}, 20)}, Line({0, 0}, {10, 0}));
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(ChainLengthsNow(), (std::vector<std::size_t>{2, 2, 2}));
}

TEST_F(CircleLeads, CircleOnAPathHasNone)
{
    Lay({Right}, Line({0, 200}, {250, 200}));
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(ChainLengthsNow(), (std::vector<std::size_t>{4}));
}

TEST_F(CircleLeads, CirclesClosedAtOnceHaveNone)
{
    Lay({Right});
    CloseLoneCircles();
    EXPECT_TRUE(ChainRoutes());
    EXPECT_EQ(ChainLengthsNow(), (std::vector<std::size_t>{2}));
}

} // namespace
} // namespace kv
