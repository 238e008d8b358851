// Reversal and seam of closed polylines, oscillation in Z, cuts in several depths. Expected values are
// worked out by hand.
#include "routes/depth_passes.h"

#include <gtest/gtest.h>

#include "routes/segment_rows.h"
#include "state/settings.h"
#include "support/scene.h"

namespace kv {
namespace {

using rows::RowsOf;
using rows::Step;
using Records = std::vector<RouteSegment>;
using Texts = std::vector<std::string>;

class DepthPasses : public testing::Test {
  protected:
    void SetUp() override
    {
        test::ResetProcess();
        ResetRun();
    }
    void TearDown() override { test::ResetProcess(); }

    Records After(void (*pass)(), const Records& records)
    {
        rows::Hand(records);
        pass();
        return rows::All();
    }
};

RouteSegment Bulged(int kind, double x, double y, double bulge)
{
    RouteSegment record = Step(kind, x, y);
    record.Aux2 = ToSingle(bulge);
    return record;
}

std::vector<Single> Bulges(const Records& records)
{
    std::vector<Single> bulges;
    for (const RouteSegment& record : records)
        bulges.push_back(record.Aux2);
    return bulges;
}

std::vector<Single> Depths(const Records& records)
{
    std::vector<Single> depths;
    for (const RouteSegment& record : records)
        depths.push_back(record.Z);
    return depths;
}

std::vector<int> Groups(const Records& records)
{
    std::vector<int> groups;
    for (const RouteSegment& record : records)
        groups.push_back(record.Group);
    return groups;
}

// --- ReverseClosedPolylines

// A mark at (0, 0), (0, -10) and a polyline that comes back to it: from (50, 0) round to (0, 0).
Records MarkedPolyline()
{
    Records records = {Step(-4, 0, 0, -8),      Step(5, 0, -10),       Bulged(-5, 50, 0, 0.25),
                       Bulged(5, 100, 0, -0.5), Bulged(5, 100, 50, 0), Bulged(5, 0, 50, 1),
                       Bulged(5, 0, 0, 0.125)};
    for (std::size_t i = 0; i < records.size(); ++i)
        records[i].Group = static_cast<Int>(i + 1);
    return records;
}

TEST_F(DepthPasses, PolylineThatComesBackToItsMarkIsTurnedRound)
{
    const Records turned = After(ReverseClosedPolylines, MarkedPolyline());
    const Texts expected = {"-4 0 0 d-8", "5 0 -10", "-5 0 0", "5 0 50", "5 100 50", "5 100 0", "5 50 0"};
    EXPECT_EQ(RowsOf(turned), expected);
    // Bulges change sign but stay with their record; the last one has the group of the route's first.
    EXPECT_EQ(Bulges(turned), (std::vector<Single>{0, 0, -0.125F, -1, 0, 0.5F, -0.25F}));
    EXPECT_EQ(Groups(turned), (std::vector<int>{1, 2, 7, 6, 5, 4, 1}));
}

TEST_F(DepthPasses, ATurnedPolylineAndItsMarkChangeHands)
{
    Records records = MarkedPolyline();
    for (RouteSegment& record : records)
        record.Comp = "G41 R5";
    for (const RouteSegment& record : After(ReverseClosedPolylines, records))
        EXPECT_EQ(record.Comp, "G42 R5");
    records[2].X = 0; // begins at the mark: not turned
    for (const RouteSegment& record : After(ReverseClosedPolylines, records))
        EXPECT_EQ(record.Comp, "G41 R5");
}

TEST_F(DepthPasses, TurnedPolylineAtTheListsEndStartsNoRouteOfItsOwn)
{
    EXPECT_EQ(After(ReverseClosedPolylines, MarkedPolyline()).back().Dir, 0);
}

TEST_F(DepthPasses, MarkMayEndInAPolylineStart)
{
    Records records = MarkedPolyline();
    records[1].Kind = -5;
    EXPECT_EQ(rows::Row(After(ReverseClosedPolylines, records)[2]), "-5 0 0");
}

TEST_F(DepthPasses, MarkOfTwoTaperedRecordsTurnsNothing)
{
    Records records = MarkedPolyline();
    records[1].Kind = 4;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, records), records), "");
    records[1].Kind = 1;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, records), records), "");
}

TEST_F(DepthPasses, PolylineWithoutAMarkIsNotTurned)
{
    Records records = MarkedPolyline();
    records[0].Kind = -5;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, records), records), "");
    records[0].Kind = 4;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, records), records), "");
}

TEST_F(DepthPasses, PolylineThatLeavesFromItsMarkIsNotTurned)
{
    // Its first point within .03 of either point of the mark; its last point is near the mark as well.
    Records atFirst = MarkedPolyline();
    atFirst[2].X = 0.029F;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, atFirst), atFirst), "");
    Records atSecond = MarkedPolyline();
    atSecond[2].X = 0;
    atSecond[2].Y = -10.02F;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, atSecond), atSecond), "");
    Records beside = MarkedPolyline();
    beside[2].X = 0.031F;
    EXPECT_EQ(rows::Row(After(ReverseClosedPolylines, beside)[2]), "-5 0 0");
    beside[2].X = 0;
    beside[2].Y = -10.031F;
    EXPECT_EQ(rows::Row(After(ReverseClosedPolylines, beside)[2]), "-5 0 0");
}

TEST_F(DepthPasses, PolylineThatEndsElsewhereIsNotTurned)
{
    Records records = MarkedPolyline();
    records[6].X = 0.031F;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, records), records), "");
    records[6].X = 0.029F;
    EXPECT_EQ(rows::Row(After(ReverseClosedPolylines, records)[2]), "-5 .029 0");
    records[6].X = 0; // at the mark's second point
    records[6].Y = -9.971F;
    EXPECT_EQ(rows::Row(After(ReverseClosedPolylines, records)[2]), "-5 0 -9.971");
    records[6].Y = -9.969F;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, records), records), "");
}

TEST_F(DepthPasses, EveryRecordBehindTheMarkTurnsWithThePolyline)
{
    // What is chained behind is reversed too and becomes a polyline.
    Records records = MarkedPolyline();
    records[6].X = 0;
    records[6].Y = 20;
    records.push_back(Step(-1, 0, 20));
    records.push_back(Step(1, 0, 0));
    const Texts expected = {"-4 0 0 d-8", "5 0 -10",  "-5 0 0",  "5 0 20", "5 0 20",
                            "5 0 50",     "5 100 50", "5 100 0", "5 50 0"};
    EXPECT_EQ(RowsOf(After(ReverseClosedPolylines, records)), expected);
}

TEST_F(DepthPasses, TurningStopsInFrontOfTheNextRoute)
{
    Records records = MarkedPolyline();
    records[5].Dir = -8; // the polyline is (50, 0), (100, 0), (100, 50)
    records[4].X = 0;
    records[4].Y = 0;
    const Texts expected = {"-4 0 0 d-8", "5 0 -10", "-5 0 0", "5 100 0", "5 50 0", "5 0 50 d-8", "5 0 0"};
    const Records turned = After(ReverseClosedPolylines, records);
    EXPECT_EQ(RowsOf(turned), expected);
    EXPECT_EQ(turned[5].Group, 6);
}

TEST_F(DepthPasses, EachRouteIsTurnedByItsOwnEnd)
{
    Records records = MarkedPolyline();
    Records second = MarkedPolyline();
    second[0].Group = 77;
    records.insert(records.end(), second.begin(), second.end());
    const Records turned = After(ReverseClosedPolylines, records);
    EXPECT_EQ(rows::Row(turned[2]), "-5 0 0");
    EXPECT_EQ(rows::Row(turned[9]), "-5 0 0");
    EXPECT_EQ(Groups(turned), (std::vector<int>{1, 2, 7, 6, 5, 4, 1, 77, 2, 7, 6, 5, 4, 77}));
}

TEST_F(DepthPasses, MarkInTheMiddleOfARouteGivesTheGroupOfTheRoutesFirst)
{
    Records records = MarkedPolyline();
    records[0].Dir = 0;
    Records route = {Step(-1, -50, 0, -8), Step(1, 0, 0)};
    route[0].Group = 55;
    route.insert(route.end(), records.begin(), records.end());
    const Records turned = After(ReverseClosedPolylines, route);
    EXPECT_EQ(rows::Row(turned[4]), "-5 0 0");
    EXPECT_EQ(turned.back().Group, 55);
}

TEST_F(DepthPasses, MarkWithNothingBehindItIsLeft)
{
    Records two = {Step(-4, 0, 0, -8), Step(5, 0, 0)};
    two[0].Group = 3;
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, two), two), "");
    Records one = {Step(-4, 0, 0, -8)};
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, one), one), "");
    Records three = {two[0], two[1], Step(-5, 50, 0, -8)}; // another route's start
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, three), three), "");
    EXPECT_TRUE(After(ReverseClosedPolylines, {}).empty());
}

TEST_F(DepthPasses, PolylineOfOnePointBesideItsMarkIsLeft)
{
    const Records records = {Step(-4, 0, 0, -8), Step(5, 0, -10), Step(-5, 0.02, 0)};
    EXPECT_EQ(rows::Difference(After(ReverseClosedPolylines, records), records), "");
}

// --- ReseamClosedPolylines

Records ClosedPolyline()
{
    return {Step(-5, 0, 0, -8), Step(5, 100, 0), Step(5, 100, 50), Step(5, 0, 50), Step(5, 0, 0)};
}

const Texts Reseamed = {"-5 50 0 d-8", "5 100 0", "5 100 50", "5 0 50", "5 0 0", "5 50 0"};

TEST_F(DepthPasses, ClosedPolylineStartsInTheMiddleOfItsFirstStraight)
{
    kv::Run.CornerComp = 1;
    Records polyline = ClosedPolyline();
    polyline[4].Feed = 3000;
    const Records made = After(ReseamClosedPolylines, polyline);
    EXPECT_EQ(RowsOf(made), Reseamed);
    EXPECT_EQ(made[5].Feed, 3000); // a copy of the last record
    EXPECT_EQ(kv::Run.SegmentCount, 6);
}

TEST_F(DepthPasses, CornerCompOfTheDrawingGoesBeforeTheCheckBox)
{
    const Records polyline = ClosedPolyline();
    const auto made = [&](Int drawing, Int box) {
        kv::Run.CornerComp = drawing;
        Config.CornerComp = box;
        return After(ReseamClosedPolylines, polyline).size();
    };
    EXPECT_EQ(made(1, 0), 6U);
    EXPECT_EQ(made(1, 1), 6U);
    EXPECT_EQ(made(0, 1), 6U);
    EXPECT_EQ(made(0, 0), 5U);
    EXPECT_EQ(made(-1, 1), 5U);
    EXPECT_EQ(made(-1, 0), 5U);
}

TEST_F(DepthPasses, PolylineThatIsNotClosedWithinAThousandthKeepsItsStart)
{
    kv::Run.CornerComp = 1;
    Records polyline = ClosedPolyline();
    polyline[4].X = 0.0011F;
    EXPECT_EQ(rows::Difference(After(ReseamClosedPolylines, polyline), polyline), "");
    polyline[4].X = 0.0009F;
    EXPECT_EQ(After(ReseamClosedPolylines, polyline).size(), 6U);
    polyline[4].X = 0.001F; // the Single is a little above .001
    EXPECT_EQ(After(ReseamClosedPolylines, polyline).size(), 5U);
}

TEST_F(DepthPasses, PolylineThatBeginsWithABulgeKeepsItsStart)
{
    kv::Run.CornerComp = 1;
    Records polyline = ClosedPolyline();
    polyline[0].Aux2 = 0.5F;
    EXPECT_EQ(rows::Difference(After(ReseamClosedPolylines, polyline), polyline), "");
    polyline[0].Aux2 = 0;
    polyline[0].Aux1 = -1; // only the bulge itself counts
    EXPECT_EQ(After(ReseamClosedPolylines, polyline).size(), 6U);
}

TEST_F(DepthPasses, OnlyPolylinesAreReseamed)
{
    kv::Run.CornerComp = 1;
    for (const int kind : {-4, -3, -1, 5}) {
        Records route = ClosedPolyline();
        route[0].Kind = static_cast<Int>(kind);
        EXPECT_EQ(rows::Difference(After(ReseamClosedPolylines, route), route), "") << kind;
    }
}

TEST_F(DepthPasses, SlantedFirstStraightIsHalvedAlongItself)
{
    kv::Run.CornerComp = 1;
    Records polyline = ClosedPolyline();
    polyline[1].X = 30;
    polyline[1].Y = 40;
    const Records made = After(ReseamClosedPolylines, polyline);
    EXPECT_EQ(rows::Row(made[0]), "-5 15 20 d-8");
    EXPECT_EQ(rows::Row(made[5]), "5 15 20");
}

TEST_F(DepthPasses, EachRouteIsReseamedAndTheOthersStay)
{
    kv::Run.CornerComp = 1;
    Records records = ClosedPolyline();
    const Records line = {Step(-1, 0, 0, -8), Step(1, 0, 0)};
    records.insert(records.end(), line.begin(), line.end());
    const Records second = ClosedPolyline();
    records.insert(records.end(), second.begin(), second.end());
    Texts expected = Reseamed;
    expected.insert(expected.end(), {"-1 0 0 d-8", "1 0 0"});
    expected.insert(expected.end(), Reseamed.begin(), Reseamed.end());
    EXPECT_EQ(RowsOf(After(ReseamClosedPolylines, records)), expected);
}

TEST_F(DepthPasses, PolylineInAChainIsJudgedAgainstTheChainsLast)
{
    kv::Run.CornerComp = 1;
    // The polyline is closed, but a line leads on from it: its start stays.
    Records leadsOn = ClosedPolyline();
    leadsOn.push_back(Step(-1, 0, 0));
    leadsOn.push_back(Step(1, 0, -30));
    EXPECT_EQ(rows::Difference(After(ReseamClosedPolylines, leadsOn), leadsOn), "");
    // The polyline is open, but the chain comes back to its start: it is moved.
    Records comesBack = {Step(-1, -30, 0, -8), Step(1, 0, 0),     Step(-5, 0, 0), Step(5, 100, 0),
                         Step(5, 100, 50),     Step(-1, 100, 50), Step(1, 0, 0)};
    const Texts expected = {"-1 -30 0 d-8", "1 0 0",     "-5 50 0", "5 100 0",
                            "5 100 50",     "-1 100 50", "1 0 0",   "1 50 0"};
    EXPECT_EQ(RowsOf(After(ReseamClosedPolylines, comesBack)), expected);
}

TEST_F(DepthPasses, SecondPolylineOfAChainIsJudgedAgainstTheNewLast)
{
    kv::Run.CornerComp = 1;
    // The first one moves the chain's end to (50, 0), where the second one begins.
    Records records = {Step(-5, 0, 0, -8), Step(5, 100, 0), Step(-5, 50, 0), Step(5, 50, 20), Step(5, 0, 0)};
    const Texts expected = {"-5 50 0 d-8", "5 100 0", "-5 50 10", "5 50 20", "5 0 0", "5 50 0", "5 50 10"};
    EXPECT_EQ(RowsOf(After(ReseamClosedPolylines, records)), expected);
    // One that begins at the old end is no longer closed.
    records[2].X = 0;
    const Texts once = {"-5 50 0 d-8", "5 100 0", "-5 0 0", "5 50 20", "5 0 0", "5 50 0"};
    EXPECT_EQ(RowsOf(After(ReseamClosedPolylines, records)), once);
}

TEST_F(DepthPasses, PolylineOfOnePointIsNotReseamed)
{
    kv::Run.CornerComp = 1;
    const Records records = {Step(-5, 0, 0, -8), Step(-5, 10, 0, -8)};
    EXPECT_EQ(rows::Difference(After(ReseamClosedPolylines, records), records), "");
    EXPECT_TRUE(After(ReseamClosedPolylines, {}).empty());
}

TEST_F(DepthPasses, ReseamedListHoldsNoMoreThanItsLimit)
{
    kv::Run.CornerComp = 1;
    Records records(32762, Step(1, 1, 1));
    const Records polyline = ClosedPolyline();
    records.insert(records.end(), polyline.begin(), polyline.end());
    ASSERT_EQ(records.size(), 32767U);
    EXPECT_THROW(After(ReseamClosedPolylines, records), RunError);
}

// --- SplitDepthPasses

Records Route(double z, int passes)
{
    Records records = {Step(-1, 0, 0, -8), Step(1, 10, 0), Step(-1, 10, 0), Step(1, 20, 0)};
    for (RouteSegment& record : records) {
        record.Z = ToSingle(z);
        record.MCode = static_cast<Int>(passes);
    }
    return records;
}

TEST_F(DepthPasses, OnePassLeavesARoutesDepthWhole)
{
    const Records route = Route(13.7, 1);
    EXPECT_EQ(rows::Difference(After(SplitDepthPasses, route), route), "");
    EXPECT_EQ(kv::Run.SegmentCount, 4);
}

TEST_F(DepthPasses, NoCodeLeavesARouteAlone)
{
    for (const int code : {0, -3}) {
        const Records route = Route(13.7, code);
        EXPECT_EQ(rows::Difference(After(SplitDepthPasses, route), route), "");
    }
}

TEST_F(DepthPasses, TwoPassesHalveTheDepth)
{
    const Records made = After(SplitDepthPasses, Route(15, 2));
    EXPECT_EQ(Depths(made), (std::vector<Single>{7.5F, 7.5F, 7.5F, 7.5F, 15, 15, 15, 15}));
    const Texts expected = {"-1 0 0 d-8", "1 10 0", "-1 10 0", "1 20 0",
                            "-1 0 0 d-8", "1 10 0", "-1 10 0", "1 20 0"};
    EXPECT_EQ(RowsOf(made), expected);
    EXPECT_EQ(kv::Run.SegmentCount, 8);
}

TEST_F(DepthPasses, PassesOfARouteFollowEachOtherAndTheLastReachesTheDepth)
{
    Records route = Route(12, 3);
    route[3].Z = 6; // each record by its own depth
    const Records made = After(SplitDepthPasses, route);
    EXPECT_EQ(Depths(made), (std::vector<Single>{4, 4, 4, 2, 8, 8, 8, 4, 12, 12, 12, 6}));
}

TEST_F(DepthPasses, DepthOfAPassIsRoundedOnce)
{
    // Five sevenths of 10: the Single 10 / 7 times 5 would be 7.1428576.
    const Records made = After(SplitDepthPasses, Route(10, 7));
    ASSERT_EQ(made.size(), 28U);
    EXPECT_EQ(made[16].Z, 7.1428571F);
    EXPECT_EQ(made[24].Z, 10);
}

TEST_F(DepthPasses, DepthCodesAreCopiedUnchanged)
{
    Records route = Route(12, 2);
    route[1].Z = 90;
    route[2].Z = 97;
    route[3].Z = 89;
    EXPECT_EQ(Depths(After(SplitDepthPasses, route)),
              (std::vector<Single>{6, 90, 97, 44.5F, 12, 90, 97, 89}));
}

TEST_F(DepthPasses, RoutesAreSplitEachByItsOwnCode)
{
    Records records = Route(12, 2);
    const Records whole = Route(5, 0);
    const Records three = Route(9, 3);
    records.insert(records.end(), whole.begin(), whole.end());
    records.insert(records.end(), three.begin(), three.end());
    const std::vector<Single> expected = {6, 6, 6, 6, 12, 12, 12, 12, 5, 5, 5, 5,
                                          3, 3, 3, 3, 6,  6,  6,  6,  9, 9, 9, 9};
    EXPECT_EQ(Depths(After(SplitDepthPasses, records)), expected);
}

TEST_F(DepthPasses, CodeOfARoutesFirstRecordAloneCounts)
{
    Records route = Route(12, 0);
    route[1].MCode = 4;
    EXPECT_EQ(After(SplitDepthPasses, route).size(), 4U);
    route[0].MCode = 2;
    EXPECT_EQ(After(SplitDepthPasses, route).size(), 8U);
}

TEST_F(DepthPasses, RecordsInFrontOfTheFirstRouteAreNotSplit)
{
    Records records = Route(12, 2);
    records[0].Dir = 0;
    EXPECT_EQ(rows::Difference(After(SplitDepthPasses, records), records), "");
}

TEST_F(DepthPasses, SplitListHoldsNoMoreThanItsLimit)
{
    EXPECT_EQ(After(SplitDepthPasses, Route(12, 8191)).size(), 32764U);
    EXPECT_THROW(After(SplitDepthPasses, Route(12, 8192)), RunError);
    EXPECT_THROW(After(SplitDepthPasses, Route(12, 32767)), RunError);
    EXPECT_TRUE(After(SplitDepthPasses, {}).empty());
}

} // namespace
} // namespace kv
