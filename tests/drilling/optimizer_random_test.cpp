// The optimizer's fast passes against the rules told plainly, pass by pass and bit for bit.
#include <gtest/gtest.h>

#include "drilling/head_positions.h"
#include "drilling/hole_chaining.h"
#include "drilling/plain_head_positions.h"
#include "drilling/plain_hole_chaining.h"
#include "drilling/random_bores.h"
#include "drilling/same_bores.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

class OptimizerRandom : public testing::Test {
  protected:
    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }

    static void ExpectSame(const plain::BoreList& expected, const char* pass)
    {
        ASSERT_EQ(FirstDifference(plain::BoresNow(), expected), -1) << pass;
    }

    static void ExpectChainsAsTold()
    {
        plain::BoreList expected = plain::BoresNow();
        RemoveDuplicateBores();
        plain::RemoveDuplicateBores(expected);
        ASSERT_NO_FATAL_FAILURE(ExpectSame(expected, "duplicates"));
        ClearChains();
        plain::ClearChains(expected);
        ASSERT_NO_FATAL_FAILURE(ExpectSame(expected, "clear"));
        FindChains();
        plain::FindChains(expected);
        ASSERT_NO_FATAL_FAILURE(ExpectSame(expected, "chains"));
        CountChainSizes();
        plain::CountChainSizes(expected);
        ASSERT_NO_FATAL_FAILURE(ExpectSame(expected, "sizes"));
        GatherChains();
        plain::GatherFirst(expected);
        plain::GatherFinally(expected);
        ASSERT_NO_FATAL_FAILURE(ExpectSame(expected, "gathering"));
    }

    static void ExpectStopsAsTold(bool originFlip)
    {
        const plain::StopList expected = plain::PlanHeadPositions(plain::BoresNow(), originFlip);
        PlanHeadPositions(originFlip);
        const plain::StopList stops(HeadPositions.begin(), HeadPositions.end());
        ASSERT_EQ(FirstDifference(stops, expected), -1);
        ASSERT_EQ(VBores.Last(), 0);
    }
};

TEST_F(OptimizerRandom, ChainsAndStopsOfSmallDrawingsAsTold)
{
    test::RandomDrilling random(test::Seed(11));
    int chained = 0, stolen = 0, riding = 0, found = 0;
    for (int round = 0; round < test::Rounds(6000); ++round) {
        SCOPED_TRACE(test::RoundName(round));
        random.PutPanel();
        random.PutHead();
        random.PutBores(random.Pick(0, 60));
        ASSERT_NO_FATAL_FAILURE(ExpectChainsAsTold());
        for (Long i = 1; i <= VBores.Last(); ++i) {
            chained += VBores[i].Speed > 2 ? 1 : 0;
            stolen += VBores[i].Group != 0 && VBores[i].Speed == 1 && VBores[i].Tool == "" ? 1 : 0;
        }
        ASSERT_NO_FATAL_FAILURE(ExpectStopsAsTold(random.Chance(50)));
        for (Long i = 1; i <= HeadPositions.Last(); ++i) {
            riding += HeadPositions[i].Tool == "" ? 1 : 0;
            found += HeadPositions[i].ChainSize > 2 && HeadPositions[i].Tool.Trimmed().size() > 4 ? 1 : 0;
        }
    }
    // The drawings have what the rules speak of.
    EXPECT_GT(chained, 1000);
    EXPECT_GT(stolen, 100);
    EXPECT_GT(riding, 100);
    EXPECT_GT(found, 100);
}

TEST_F(OptimizerRandom, ChainsOfLargerDrawingsAsTold)
{
    test::RandomDrilling random(test::Seed(12));
    for (int round = 0; round < test::Rounds(60); ++round) {
        SCOPED_TRACE(test::RoundName(round));
        random.PutPanel();
        random.PutHead();
        random.PutBores(random.Pick(300, 700));
        ASSERT_NO_FATAL_FAILURE(ExpectChainsAsTold());
        ASSERT_NO_FATAL_FAILURE(ExpectStopsAsTold(random.Chance(50)));
    }
}

// Chains in any mixture, as no head and no panel would give them.
TEST_F(OptimizerRandom, GatheringOfAnyMixtureAsTold)
{
    test::RandomDrilling random(test::Seed(13));
    for (int round = 0; round < test::Rounds(20000); ++round) {
        SCOPED_TRACE(test::RoundName(round));
        ResetRun();
        random.PutMarks(random.Pick(1, 50));
        plain::BoreList expected = plain::BoresNow();
        CountChainSizes();
        plain::CountChainSizes(expected);
        GatherChains();
        plain::GatherFirst(expected);
        plain::GatherFinally(expected);
        ASSERT_NO_FATAL_FAILURE(ExpectSame(expected, "gathering"));
    }
}

} // namespace
} // namespace kv
