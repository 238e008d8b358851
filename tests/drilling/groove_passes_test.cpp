// Saw passes out of grooves.
#include "drilling/groove_passes.h"

#include <gtest/gtest.h>

#include <random>

#include "drilling/plain_groove_passes.h"
#include "state/run.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

GrooveRecord Groove(Single x1, Single y1, Single x2, Single y2, Single width, Single kerf)
{
    GrooveRecord groove;
    groove.X1 = x1;
    groove.Y1 = y1;
    groove.X2 = x2;
    groove.Y2 = y2;
    groove.Width = width;
    groove.Kerf = kerf;
    groove.Depth = 5;
    groove.FeedDown = 1000;
    groove.Feed = 3000;
    groove.ToolNumber = 12;
    groove.GrooveSide = -1;
    return groove;
}

class GroovesToPasses : public testing::Test {
  protected:
    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }

    static std::vector<GroovePass> Expand(const std::vector<GrooveRecord>& grooves)
    {
        ResetRun();
        for (const GrooveRecord& groove : grooves)
            Grooves.Append(groove);
        ExpandGrooves();
        return {GroovePasses.begin() + 1, GroovePasses.end()};
    }

    // The places of the passes of one groove of this width along Y, at X 100.
    static std::vector<Single> PlacesOf(Single width, Single kerf)
    {
        std::vector<Single> places;
        for (const GroovePass& pass : Expand({Groove(100, 10, 100, 500, width, kerf)})) {
            EXPECT_EQ(pass.X1, pass.X2);
            EXPECT_EQ(pass.Y1, 10);
            EXPECT_EQ(pass.Y2, 500);
            places.push_back(pass.X1);
        }
        return places;
    }
};

using Places = std::vector<Single>;

TEST_F(GroovesToPasses, GrooveAsWideAsTheKerfIsOnePassInTheMiddle)
{
    EXPECT_EQ(PlacesOf(4, 4), (Places{100}));
}

TEST_F(GroovesToPasses, GrooveNarrowerThanTheKerfIsOnePassInTheMiddle)
{
    EXPECT_EQ(PlacesOf(2, 4), (Places{100}));
}

TEST_F(GroovesToPasses, WholeNumberOfKerfs)
{
    // 96 to 104, two gaps of 4: three passes, step 4 - (12 - 12) / 3.
    EXPECT_EQ(PlacesOf(12, 4), (Places{96, 100, 104}));
}

TEST_F(GroovesToPasses, FractionOfAKerfTakesAPassMore)
{
    // 97.5 to 102.5, 1.25 gaps: three passes, step 4 - (12 - 9) / 3 = 3, the last one on the far side.
    EXPECT_EQ(PlacesOf(9, 4), (Places{97.5F, 100.5F, 102.5F}));
}

TEST_F(GroovesToPasses, LittleMoreThanTheKerfIsTwoPassesOnTheSides)
{
    EXPECT_EQ(PlacesOf(4.5F, 4), (Places{99.75F, 100.25F}));
}

TEST_F(GroovesToPasses, StepIsDividedByTheCountSoTheLastGapDiffers)
{
    // 92 to 108, four gaps: five passes, step 4 - (20 - 20) / 5.
    EXPECT_EQ(PlacesOf(20, 4), (Places{92, 96, 100, 104, 108}));
    // 92.5 to 107.5, 3.75 gaps: five passes, step 4 - (20 - 19) / 5 = 3.8; the last gap is 3.6.
    const Places places = PlacesOf(19, 4);
    ASSERT_EQ(places.size(), 5U);
    EXPECT_FLOAT_EQ(places[3], 103.9F);
    EXPECT_EQ(places[4], 107.5F);
}

TEST_F(GroovesToPasses, GapsAreASingleWhenTheyAreTestedToBeWhole)
{
    // The Singles .3 and .1 leave 2.00000007 gaps, which a Single holds as 2.
    const std::vector<GroovePass> passes = Expand({Groove(0, 10, 0, 500, 0.3F, 0.1F)});
    EXPECT_EQ(passes.size(), 3U);
}

TEST_F(GroovesToPasses, GrooveAlongXKeepsItsXAndSpreadsInY)
{
    const std::vector<GroovePass> passes = Expand({Groove(50, 40, 450, 40, 9, 4)});
    ASSERT_EQ(passes.size(), 3U);
    const Single places[] = {37.5F, 40.5F, 42.5F};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(passes[i].X1, 50);
        EXPECT_EQ(passes[i].X2, 450);
        EXPECT_EQ(passes[i].Y1, places[i]);
        EXPECT_EQ(passes[i].Y2, places[i]);
    }
}

TEST_F(GroovesToPasses, PassCopiesAllButTheKerf)
{
    const std::vector<GroovePass> passes = Expand({Groove(50, 40, 450, 40, 9, 4)});
    ASSERT_EQ(passes.size(), 3U);
    for (const GroovePass& pass : passes) {
        EXPECT_EQ(pass.Width, 9);
        EXPECT_EQ(pass.Depth, 5);
        EXPECT_EQ(pass.FeedDown, 1000);
        EXPECT_EQ(pass.Feed, 3000);
        EXPECT_EQ(pass.ToolNumber, 12);
        EXPECT_EQ(pass.GrooveSide, -1);
        EXPECT_EQ(pass.Kerf, 0);
    }
}

TEST_F(GroovesToPasses, GrooveOfNoLengthRunsAlongY)
{
    const std::vector<GroovePass> passes = Expand({Groove(50, 40, 50, 40, 9, 4)});
    ASSERT_EQ(passes.size(), 3U);
    EXPECT_EQ(passes[0].X1, 47.5F);
    EXPECT_EQ(passes[0].Y1, 40);
}

TEST_F(GroovesToPasses, SlantedGrooveGivesNoPass)
{
    EXPECT_TRUE(Expand({Groove(50, 40, 450, 41, 9, 4)}).empty());
    EXPECT_TRUE(Expand({Groove(50, 40, 450, 40.0001F, 3, 4)}).empty());
}

TEST_F(GroovesToPasses, WidthBelowZeroGivesNoPassOfItsOwn)
{
    EXPECT_TRUE(Expand({Groove(50, 40, 450, 40, -1, 4)}).empty());
}

TEST_F(GroovesToPasses, WidthOfZeroIsOnePassCopiedWhole)
{
    const GrooveRecord slanted = Groove(50, 40, 450, 41, 0, 4);
    const std::vector<GroovePass> passes = Expand({slanted});
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_EQ(passes[0].X2, 450);
    EXPECT_EQ(passes[0].Y2, 41);
    EXPECT_EQ(passes[0].Kerf, 4); // its kerf too
    EXPECT_EQ(passes[0].Feed, 3000);
}

TEST_F(GroovesToPasses, WidthOfZeroKeepsItsPlaceAmongTheOthers)
{
    const std::vector<GroovePass> passes =
        Expand({Groove(10, 0, 10, 500, 4, 4), Groove(20, 0, 20, 500, 0, 4), Groove(30, 0, 30, 500, 4, 4)});
    ASSERT_EQ(passes.size(), 3U);
    EXPECT_EQ(passes[0].X1, 10);
    EXPECT_EQ(passes[1].X1, 20);
    EXPECT_EQ(passes[2].X1, 30);
}

TEST_F(GroovesToPasses, LinesOfAPairExchangeTheirEnds)
{
    // The groove's end lies within .01 of the pair line's: its start becomes that end.
    const std::vector<GroovePass> passes =
        Expand({Groove(10, 0, 450.005F, 40, 3, 4), Groove(70, 80, 450, 40, -1, 4)});
    ASSERT_EQ(passes.size(), 1U); // from (450, 40) to (450.005, 40): along X
    EXPECT_EQ(passes[0].X1, 450);
    EXPECT_EQ(passes[0].Y1, 40);
    EXPECT_EQ(passes[0].X2, 450.005F);
    EXPECT_EQ(Grooves[2].X2, 10);
    EXPECT_EQ(Grooves[2].Y2, 0);
    EXPECT_EQ(Grooves[2].X1, 70);
}

TEST_F(GroovesToPasses, PairFurtherApartThanItsReachStaysApart)
{
    const std::vector<GroovePass> passes =
        Expand({Groove(10, 40, 450, 40, 3, 4), Groove(70, 80, 450.02F, 40, -1, 4)});
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_EQ(passes[0].X1, 10);
    EXPECT_EQ(Grooves[2].X2, 450.02F);
}

TEST_F(GroovesToPasses, PairTakesAZeroWidthToo)
{
    const std::vector<GroovePass> passes =
        Expand({Groove(70, 80, 450, 40, -1, 4), Groove(10, 0, 450, 40, 0, 4)});
    ASSERT_EQ(passes.size(), 1U);
    EXPECT_EQ(passes[0].X1, 450);
    EXPECT_EQ(passes[0].Y1, 40);
}

TEST_F(GroovesToPasses, LineOfAPairThatHasJoinedLooksOnFromItsNewEnd)
{
    // The pair line's end moves to (10, 0) with the first groove, and so meets the third record.
    Expand({Groove(10, 0, 450, 40, 0, 4), Groove(70, 80, 450, 40, -1, 4), Groove(33, 44, 10, 0, 0, 4)});
    EXPECT_EQ(GroovePasses[1].X1, 450);
    EXPECT_EQ(GroovePasses[2].X1, 10);
    EXPECT_EQ(GroovePasses[2].Y1, 0);
    EXPECT_EQ(Grooves[2].X2, 33);
}

TEST_F(GroovesToPasses, KerfOfZeroEndsTheRun)
{
    EXPECT_THROW(Expand({Groove(10, 0, 10, 500, 3, 0)}), RunError);
}

TEST_F(GroovesToPasses, MorePassesThanAnIntCountsEndTheRun)
{
    EXPECT_THROW(Expand({Groove(10, 0, 10, 500, 400, 0.01F)}), RunError);
}

TEST_F(GroovesToPasses, RandomGroovesAsTheRuleIsTold)
{
    std::mt19937 engine(test::Seed(11));
    const auto pick = [&engine](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(engine);
    };
    std::size_t passesSeen = 0;
    for (int round = 0; round < test::Rounds(3000); ++round) {
        std::vector<GrooveRecord> grooves;
        for (int i = pick(1, 12); i > 0; --i) {
            // Few places, so that pairs meet and many run along an axis.
            const auto place = [&] { return static_cast<Single>(pick(0, 5)) * 100.3F; };
            const Single width = pick(0, 4) == 0 ? static_cast<Single>(pick(-1, 0))
                                                 : static_cast<Single>(pick(1, 4000)) * 0.01F;
            GrooveRecord groove =
                Groove(place(), place(), place(), place(), width, static_cast<Single>(pick(20, 900)) * 0.01F);
            if (pick(0, 2) > 0)
                (pick(0, 1) == 0 ? groove.X2 : groove.Y2) = pick(0, 1) == 0 ? groove.X1 : groove.Y1;
            groove.ToolNumber = i;
            groove.X2 += static_cast<Single>(pick(0, 9) == 0) * 0.005F;
            grooves.push_back(groove);
        }
        const std::vector<GroovePass> expected = plain::ExpandGrooves(grooves);
        const std::vector<GroovePass> passes = Expand(grooves);
        ASSERT_EQ(passes.size(), expected.size()) << test::RoundName(round);
        for (std::size_t i = 0; i < passes.size(); ++i) {
            ASSERT_EQ(passes[i].X1, expected[i].X1) << test::RoundName(round) << " pass " << i;
            ASSERT_EQ(passes[i].Y1, expected[i].Y1) << test::RoundName(round) << " pass " << i;
            ASSERT_EQ(passes[i].X2, expected[i].X2) << test::RoundName(round) << " pass " << i;
            ASSERT_EQ(passes[i].Y2, expected[i].Y2) << test::RoundName(round) << " pass " << i;
            ASSERT_EQ(passes[i].Kerf, expected[i].Kerf) << test::RoundName(round) << " pass " << i;
            ASSERT_EQ(passes[i].Width, expected[i].Width) << test::RoundName(round) << " pass " << i;
            ASSERT_EQ(passes[i].ToolNumber, expected[i].ToolNumber)
                << test::RoundName(round) << " pass " << i;
        }
        passesSeen += passes.size();
    }
    EXPECT_GT(passesSeen, 10000U);
}

} // namespace
} // namespace kv
