// The border pass against the rule told plainly, on random faces with random views around them, faults
// among them.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "drawing/border.h"
#include "drawing/layer_rules.h"
#include "drawing/plain_border.h"
#include "state/run.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;

class RandomBorders {
  public:
    explicit RandomBorders(unsigned seed) : Engine(seed) {}

    // A face, views around it and at times a fault, lines shuffled.
    std::vector<plain::BorderLine> Next()
    {
        Lines.clear();
        const double x = Pick(-2, 20) * 50, y = Pick(-2, 20) * 50;
        const double width = Pick(1, 40) * 20.5, height = Pick(1, 40) * 10.25;
        Add(x, y, width, height);
        for (int view = Pick(0, 4); view > 0; --view)
            AddView(Pick(1, 4), x, y, width, height);
        if (Pick(0, 9) == 0)
            Lines.push_back({Coordinate(), Coordinate(), Coordinate(), Coordinate()});
        if (Pick(0, 9) == 0)
            Shift();
        if (Pick(0, 1) == 0)
            std::shuffle(Lines.begin(), Lines.end(), Engine);
        return Lines;
    }

  private:
    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(Engine); }
    Single Coordinate() { return static_cast<Single>(Pick(-100, 3000)) * 0.7F; }

    void Add(double x, double y, double width, double height)
    {
        const auto left = static_cast<Single>(x), right = static_cast<Single>(x + width);
        const auto lower = static_cast<Single>(y), upper = static_cast<Single>(y + height);
        Lines.push_back({left, lower, right, lower});
        Lines.push_back({right, lower, right, upper});
        Lines.push_back({right, upper, left, upper});
        Lines.push_back({left, upper, left, lower});
    }

    void AddView(int side, double x, double y, double width, double height)
    {
        const double gap = Pick(1, 60), thickness = Pick(10, 30), off = Pick(-5, 5);
        if (side == 1)
            Add(x + off, y + height + gap, width, thickness);
        else if (side == 2)
            Add(x + off, y - gap - thickness, width, thickness);
        else if (side == 3)
            Add(x - gap - thickness, y + off, thickness, height);
        else
            Add(x + width + gap, y + off, thickness, height);
    }

    // Moves one end by about the reach within which points are one.
    void Shift()
    {
        plain::BorderLine& line =
            Lines[static_cast<std::size_t>(Pick(0, static_cast<int>(Lines.size()) - 1))];
        line.X1 += static_cast<Single>(Pick(-12, 12)) * 0.001F;
        line.Y2 += static_cast<Single>(Pick(-12, 12)) * 0.001F;
    }

    std::mt19937 Engine;
    std::vector<plain::BorderLine> Lines;
};

void DrawInMemory(const std::vector<plain::BorderLine>& lines)
{
    Entities.Clear();
    for (const plain::BorderLine& line : lines) {
        DxfEntity entity;
        entity.Kind = "LINE";
        entity.Layer = "BORDER";
        entity.X1 = line.X1;
        entity.Y1 = line.Y1;
        entity.X2 = line.X2;
        entity.Y2 = line.Y2;
        Entities.Append(entity);
    }
    CurrentEntity = DecodedEntity{};
    ResetRun();
    kv::Run.RunFailed = False;
    kv::Run.FailedFiles.clear();
}

TEST(BorderAgainstThePlainRule, RandomRectanglesWithViews)
{
    ResetProcess();
    RandomBorders drawings(Seed(7));
    int outcomes[4] = {0, 0, 0, 0};
    for (int round = 0; round < Rounds(4000); ++round) {
        const std::vector<plain::BorderLine> lines = drawings.Next();
        const plain::Border expected = plain::AnalyseBorder(lines);
        ++outcomes[static_cast<int>(expected.Outcome)];
        DrawInMemory(lines);
        ASSERT_TRUE(FindPanel()) << RoundName(round);
        const bool found = AnalyseBorder();
        ASSERT_EQ(found, expected.Outcome == plain::BorderOutcome::Found) << RoundName(round);
        ASSERT_EQ(kv::Run.RunFailed != False, !found) << RoundName(round);
        if (!found)
            continue;
        ASSERT_EQ(kv::Run.SideMinX, expected.MinX) << RoundName(round);
        ASSERT_EQ(kv::Run.SideMinY, expected.MinY) << RoundName(round);
        ASSERT_EQ(kv::Run.SideMaxX, expected.MaxX) << RoundName(round);
        ASSERT_EQ(kv::Run.SideMaxY, expected.MaxY) << RoundName(round);
        ASSERT_EQ(kv::Run.SideWidth, expected.Width) << RoundName(round);
        ASSERT_EQ(kv::Run.SideHeight, expected.Height) << RoundName(round);
        for (std::size_t side = 1; side <= 5; ++side)
            ASSERT_EQ(kv::Run.SidePresent[side], expected.Present[side]) << RoundName(round);
        ASSERT_EQ(kv::Run.SideMarginX, expected.MarginX) << RoundName(round);
        ASSERT_EQ(kv::Run.SideMarginY, expected.MarginY) << RoundName(round);
        ASSERT_EQ(kv::Run.PartThickness, expected.FallbackThickness) << RoundName(round);
    }
    // The drawings are worth their while only if good and bad ones are among them.
    EXPECT_GT(outcomes[static_cast<int>(plain::BorderOutcome::Found)], 400);
    EXPECT_GT(outcomes[static_cast<int>(plain::BorderOutcome::NotInFours)], 100);
    EXPECT_GT(outcomes[static_cast<int>(plain::BorderOutcome::BadSide)], 100);
    ReleaseRunArrays();
    ResetProcess();
}

} // namespace
} // namespace kv
