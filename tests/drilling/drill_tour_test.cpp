// The tour through the vertical bores: by hand where a rule can be seen, and bit for bit against the
// rule told plainly.
#include "drilling/drill_tour.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

#include "drilling/plain_bore_sort.h"
#include "drilling/plain_drill_tour.h"
#include "platform/events.h"
#include "state/report.h"
#include "state/run.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

using Place = std::pair<Single, Single>;
using Bores = std::vector<Place>;

int EventsRun = 0;

class DrillTour : public testing::Test {
  protected:
    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }

    static void Lay(Single width, Single height, const Bores& bores)
    {
        ResetRun();
        kv::Run.SideWidth[5] = width;
        kv::Run.SideHeight[5] = height;
        Int name = 0;
        for (const Place& place : bores) {
            VBoreRecord bore;
            bore.X = place.first;
            bore.Y = place.second;
            bore.Speed = ++name; // its place in the drawing
            VBores.Append(bore);
        }
    }

    static Bores Order()
    {
        Bores order;
        for (Long i = 1; i <= VBores.Last(); ++i)
            order.emplace_back(VBores[i].X, VBores[i].Y);
        return order;
    }

    static Bores Tour(Single width, Single height, const Bores& bores)
    {
        Lay(width, height, bores);
        OrderBores();
        return Order();
    }

    static std::vector<Int> Names()
    {
        std::vector<Int> names;
        for (Long i = 1; i <= VBores.Last(); ++i)
            names.push_back(VBores[i].Speed);
        return names;
    }

    static void ExpectAsTold(Single width, Single height, const Bores& bores)
    {
        Lay(width, height, bores);
        plain::OrderBores();
        const std::vector<Int> expected = Names();
        Lay(width, height, bores);
        OrderBores();
        ASSERT_EQ(Names(), expected);
    }
};

TEST_F(DrillTour, NoBore)
{
    EXPECT_TRUE(Tour(1000, 600, {}).empty());
}

TEST_F(DrillTour, OneBoreStays)
{
    EXPECT_EQ(Tour(1000, 600, {{300, 200}}), (Bores{{300, 200}}));
}

TEST_F(DrillTour, StartsAtTheFarCorner)
{
    // On a line towards the corner (1000, 600), drawn from the near end.
    EXPECT_EQ(Tour(1000, 600, {{100, 60}, {400, 240}, {900, 540}}),
              (Bores{{900, 540}, {400, 240}, {100, 60}}));
}

TEST_F(DrillTour, LowerHalfWeighsXHalfAsMuchAgain)
{
    // Start (1000, 4000), lower half below 2000. With weights up to 1.8 the bore (520, 1900) comes
    // first: 2154 + 520 + 1200 + 3500 = 7374 in all. With 2.0 it is (1000, 1700), 2300 against 2309
    // weighted; from there (520, 1900) would cost 981 at weight 2, but 1454 at weight 3, so (1000, 500)
    // at 1200 comes next, and the way is 2300 + 1200 + 1480 + 2154 = 7134.
    EXPECT_EQ(Tour(1000, 4000, {{1000, 500}, {1000, 1700}, {520, 1900}}),
              (Bores{{1000, 1700}, {1000, 500}, {520, 1900}}));
}

TEST_F(DrillTour, UpperHalfDrawsToItself)
{
    // Start (1000, 1000). At weight 1 the bore (300, 600) costs 806 x .6 = 484 against 539 of (800, 500),
    // which is not above the half; from there (300, 100) is nearer by ten. That way is 2485 long, the
    // one that begins at (800, 500) 2689.
    EXPECT_EQ(Tour(1000, 1000, {{300, 100}, {800, 500}, {300, 600}}),
              (Bores{{300, 600}, {300, 100}, {800, 500}}));
}

TEST_F(DrillTour, FirstOfEqualsInTheSortedListComesFirst)
{
    // Both lie 100 from the corner. The sort exchanges bores of equal Y, so the second one is first.
    Lay(1000, 600, {{900, 600}, {1100, 600}});
    OrderBores();
    EXPECT_EQ(Names(), (std::vector<Int>{2, 1}));
}

TEST_F(DrillTour, OrderByYStaysWhenNoAttemptBeatsTheFirstLengthPlusTen)
{
    // On this scale ten units more are no more, and all attempts go the same way.
    const Single w = 1e20F;
    EXPECT_EQ(Tour(w, w, {{w, 3e19F}, {w, 1e19F}, {w, 2e19F}}), (Bores{{w, 1e19F}, {w, 2e19F}, {w, 3e19F}}));
    // On a panel's scale the same bores are taken from the top.
    EXPECT_EQ(Tour(1000, 1000, {{1000, 300}, {1000, 100}, {1000, 200}}),
              (Bores{{1000, 300}, {1000, 200}, {1000, 100}}));
}

TEST_F(DrillTour, RecordsMoveWhole)
{
    Lay(1000, 600, {{100, 60}, {900, 540}});
    VBores[1].Tool = "0102";
    VBores[1].Depth = 12;
    VBores[2].Tool = "03";
    OrderBores();
    EXPECT_EQ(VBores[1].Tool, "03");
    EXPECT_EQ(VBores[2].Tool, "0102");
    EXPECT_EQ(VBores[2].Depth, 12);
    EXPECT_EQ(VBores[0].Tool, "");
}

TEST_F(DrillTour, EachStepMovesTheMeterAndLetsEventsRun)
{
    static std::vector<int> percents;
    percents.clear();
    EventsRun = 0;
    Events.Pump = [] { ++EventsRun; };
    Report.MeterMoved = [](Meter meter, int percent) {
        if (meter == Meter::Sequencing)
            percents.push_back(percent);
    };
    Tour(1000, 600, {{100, 60}, {400, 240}, {900, 540}});
    EXPECT_EQ(EventsRun, 30); // three bores, ten attempts
    ASSERT_GE(percents.size(), 3U);
    EXPECT_EQ(percents[0], 33);
    EXPECT_EQ(percents[1], 66);
    EXPECT_EQ(percents[2], 100);
    EXPECT_EQ(MeterValue(Meter::Sequencing), 100);
}

TEST_F(DrillTour, PanelOfNegativeHeightIsGoneAroundAsTold)
{
    // A face without an upper right corner ends at (0, 0). Its start lies below half of its height, so
    // the bore looked at last in the attempt before counts from the first step on.
    std::mt19937 engine(test::Seed(5));
    std::uniform_int_distribution<int> place(-40, 40);
    for (int round = 0; round < test::Rounds(200); ++round) {
        Bores bores;
        for (int i = 0; i < 9; ++i)
            bores.emplace_back(static_cast<Single>(place(engine)), static_cast<Single>(place(engine)));
        SCOPED_TRACE(test::RoundName(round));
        ASSERT_NO_FATAL_FAILURE(ExpectAsTold(-30, -20, bores));
    }
}

// Bit for bit against the rule told plainly

class RandomBores {
  public:
    explicit RandomBores(unsigned seed) : Engine(seed) {}

    static constexpr Single Width = 1200, Height = 700;

    Bores Next(int kind, int count)
    {
        Bores bores;
        for (int i = 0; i < count; ++i)
            bores.push_back(NextOf(kind, bores));
        return bores;
    }
    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(Engine); }
    static constexpr int Kinds = 8;

  private:
    Single Between(Single low, Single high)
    {
        return std::uniform_real_distribution<Single>(low, high)(Engine);
    }

    Place NextOf(int kind, const Bores& before)
    {
        switch (kind) {
        case 0: // anywhere
            return {Between(0, Width), Between(0, Height)};
        case 1: // on the 32 mm grid, many ties
            return {static_cast<Single>(Pick(0, 37)) * 32, static_cast<Single>(Pick(0, 21)) * 32};
        case 2: // half of them doubled
            if (!before.empty() && Pick(0, 1) == 0)
                return before[static_cast<std::size_t>(Pick(0, static_cast<int>(before.size()) - 1))];
            return {Between(0, Width), Between(0, Height)};
        case 3: // one row
            return {static_cast<Single>(Pick(0, 37)) * 32, 64};
        case 4: // one column
            return {64, static_cast<Single>(Pick(0, 21)) * 32};
        case 5: // hinge cups: clusters
            return {static_cast<Single>(Pick(0, 3)) * 350 + Between(0, 45), Between(0, 52)};
        case 6: // on and beside the half line
            return {Between(0, Width), Height / 2 + static_cast<Single>(Pick(-1, 1)) * 0.5F};
        default: // two 32 mm rows near the edges, with a few in between
            return {static_cast<Single>(Pick(1, 36)) * 32, Pick(0, 9) == 0   ? Between(0, Height)
                                                           : Pick(0, 1) == 0 ? 37
                                                                             : Height - 37};
        }
    }

    std::mt19937 Engine;
};

TEST_F(DrillTour, SmallRandomSetsAsTold)
{
    RandomBores random(test::Seed(3));
    for (int round = 0; round < test::Rounds(2400); ++round) {
        const int kind = round % RandomBores::Kinds;
        const Bores bores = random.Next(kind, random.Pick(1, 60));
        SCOPED_TRACE("kind " + std::to_string(kind) + " " + test::RoundName(round));
        ASSERT_NO_FATAL_FAILURE(ExpectAsTold(RandomBores::Width, RandomBores::Height, bores));
    }
}

TEST_F(DrillTour, SetsOf500AsTold)
{
    RandomBores random(test::Seed(4));
    for (int round = 0; round < test::Rounds(RandomBores::Kinds); ++round) {
        const int kind = round % RandomBores::Kinds;
        SCOPED_TRACE("kind " + std::to_string(kind) + " " + test::RoundName(round));
        ASSERT_NO_FATAL_FAILURE(
            ExpectAsTold(RandomBores::Width, RandomBores::Height, random.Next(kind, 500)));
    }
}

TEST_F(DrillTour, SetsOf2000AsTold)
{
    RandomBores random(test::Seed(6));
    for (int round = 0; round < test::Rounds(2); ++round) {
        const int kind = round % 2;
        SCOPED_TRACE("kind " + std::to_string(kind) + " " + test::RoundName(round));
        ASSERT_NO_FATAL_FAILURE(
            ExpectAsTold(RandomBores::Width, RandomBores::Height, random.Next(kind, 2000)));
    }
}

// Sort by Y

TEST_F(DrillTour, SortIsHoaresPartitionEqualsIncluded)
{
    RandomBores random(test::Seed(8));
    for (int round = 0; round < test::Rounds(3000); ++round) {
        const int count = random.Pick(1, 80);
        const int values = random.Pick(1, 40); // few values: many equals
        std::vector<plain::NamedY> expected(1);
        Bores bores;
        for (int i = 1; i <= count; ++i) {
            const auto y = static_cast<Single>(random.Pick(1, values));
            expected.push_back({y, i});
            bores.emplace_back(Single{0}, y);
        }
        plain::SortByY(expected, 1, count);
        Lay(1000, 600, bores);
        SortBoresByY(VBores, 1, count);
        for (int i = 1; i <= count; ++i)
            ASSERT_EQ(VBores[i].Speed, expected[static_cast<std::size_t>(i)].Name) << test::RoundName(round);
    }
}

TEST_F(DrillTour, SortOfThreeEqualsExchangesTheOuterTwo)
{
    // i and j start at the ends, both stop there and change places; they meet on the middle one.
    Lay(1000, 600, {{1, 5}, {2, 5}, {3, 5}});
    SortBoresByY(VBores, 1, 3);
    EXPECT_EQ(Names(), (std::vector<Int>{3, 2, 1}));
}

TEST_F(DrillTour, SortTouchesNothingOutsideItsTwoIndices)
{
    Lay(1000, 600, {{1, 9}, {2, 8}, {3, 7}, {4, 6}});
    SortBoresByY(VBores, 2, 3);
    EXPECT_EQ(Names(), (std::vector<Int>{1, 3, 2, 4}));
}

} // namespace
} // namespace kv
