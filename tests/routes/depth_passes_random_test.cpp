// The depth passes held against the rules worked in place, on random routes.
#include "routes/depth_passes.h"

#include <gtest/gtest.h>

#include <random>

#include "routes/plain_depth_passes.h"
#include "routes/segment_rows.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

using Records = std::vector<RouteSegment>;

class RandomDepthPasses : public testing::Test {
  protected:
    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }

    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(Engine); }
    bool OneOf(int count) { return Pick(1, count) == 1; }

    // Few places, now and then a little beside, so that ends meet or just miss.
    RouteSegment AnyRecord()
    {
        const int kinds[] = {-5, 5, 5, 5, -1, 1, -3, 3, 4, -4, 0};
        const double near[] = {0, 0, 0, 0.0005, 0.0015, 0.02, 0.03, 0.04};
        RouteSegment record = rows::Step(kinds[Pick(0, 10)], Pick(0, 3) * 2.7 + near[Pick(0, 7)],
                                         Pick(0, 2) * 1.9 + near[Pick(0, 7)]);
        if (OneOf(3))
            record.Aux2 = ToSingle(Pick(-4, 4) * 0.25);
        record.Z = ToSingle(OneOf(12) ? Pick(88, 92) : Pick(160, 220) * 0.1);
        record.Dir = static_cast<Int>(OneOf(5) ? -1 : 0);
        record.Group = static_cast<Int>(++Count % 30000);
        record.OscZ = ToSingle(OneOf(4) ? Pick(-3, 0) : Pick(1, 40) * 0.1);
        record.MCode = static_cast<Int>(OneOf(3) ? Pick(1, 5) : Pick(-1, 0));
        record.Feed = ToSingle(Count);
        return record;
    }

    Records AnyRoute()
    {
        Records route;
        if (OneOf(3)) { // a mark, and often a polyline behind it
            route.push_back(AnyRecord());
            route.push_back(AnyRecord());
            route[0].Kind = -4;
            route[1].Kind = static_cast<Int>(OneOf(2) ? 5 : -5);
        }
        for (int i = Pick(1, 8); i > 0; --i)
            route.push_back(AnyRecord());
        if (OneOf(2)) { // back to where it began
            route.back().X = route.front().X;
            route.back().Y = route.front().Y;
            if (OneOf(2)) {
                route.front().Kind = -5;
                route.front().Aux2 = 0;
            }
        }
        if (!OneOf(15))
            route.front().Dir = -8;
        return route;
    }

    Records AnyList()
    {
        Records list;
        for (int routes = Pick(1, 5); routes > 0; --routes) {
            const Records route = AnyRoute();
            list.insert(list.end(), route.begin(), route.end());
        }
        return list;
    }

    // Counts the lists that the pass changed.
    template <typename Plain> void Compare(void (*pass)(), const Plain& plain)
    {
        for (int round = 0; round < test::Rounds(8000); ++round) {
            Records list = AnyList();
            kv::Run.PartThickness = ToSingle(Pick(160, 200) * 0.1);
            rows::Hand(list);
            pass();
            Records expected = list;
            expected.insert(expected.begin(), RouteSegment{});
            plain(expected);
            expected.erase(expected.begin());
            ASSERT_EQ(rows::Difference(rows::All(), expected), "") << test::RoundName(round);
            Changed += static_cast<int>(!rows::Difference(expected, list).empty());
        }
    }

    std::mt19937 Engine{test::Seed(77)};
    int Count = 0, Changed = 0;
};

TEST_F(RandomDepthPasses, ReversalAsTheRuleIsTold)
{
    Compare(ReverseClosedPolylines, plain_depths::ReverseClosedPolylines);
    EXPECT_GT(Changed, 1500);
}

TEST_F(RandomDepthPasses, SeamAsTheRuleIsTold)
{
    kv::Run.CornerComp = 1;
    Compare(ReseamClosedPolylines, plain_depths::ReseamClosedPolylines);
    EXPECT_GT(Changed, 1500);
}

TEST_F(RandomDepthPasses, OscillationAsTheRuleIsTold)
{
    int warnings = 0;
    Compare(
        [] {
            const rows::ReportLines report;
            OscillateZ();
            rows::ReportLines::Shown();
        },
        [&](Records& list) {
            const bool warned = plain_depths::OscillateZ(list, kv::Run.PartThickness);
            warnings += static_cast<int>(warned);
            EXPECT_EQ(rows::ReportLines::Lines().size(), warned ? 1U : 0U);
        });
    EXPECT_GT(Changed, 4000);
    EXPECT_GT(warnings, 2000);
}

TEST_F(RandomDepthPasses, DepthsAsTheRuleIsTold)
{
    Compare(SplitDepthPasses, plain_depths::SplitDepthPasses);
    EXPECT_GT(Changed, 2500);
}

} // namespace
} // namespace kv
