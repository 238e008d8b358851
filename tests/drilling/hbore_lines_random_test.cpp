// Drilling lines laid at random, against the rule told plainly, record by record; and as many lines as
// a drawing can hold.
#include "drilling/hbore_lines.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <random>
#include <tuple>

#include "drilling/plain_hbore_lines.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

auto BoreFields(const HBoreRecord& r)
{
    const auto bits = [](Single value) { return std::bit_cast<std::uint32_t>(value); };
    return std::tuple(r.Side, bits(r.Feed), bits(r.PosX), bits(r.PosY), bits(r.Z), bits(r.Diameter), r.Group,
                      r.Speed, r.Tool.Padded(), r.ExtraSlot, r.Bottom);
}

class RandomHorizontalLines : public testing::Test {
  protected:
    void SetUp() override { test::ResetProcess(); }
    void TearDown() override { test::ResetProcess(); }

    int Whole(int from, int to) { return std::uniform_int_distribution<int>(from, to)(Engine); }
    Single Shaken(Single value)
    {
        constexpr Single shakes[] = {0, 0, 0, 0.0078125F, -0.0078125F, 0.0099F, 0.01F, -0.01F, 0.015F};
        return value + shakes[Whole(0, 8)];
    }
    void SetPanel()
    {
        ResetRun();
        const Single x = static_cast<Single>(Whole(0, 2) * 1000), y = static_cast<Single>(Whole(0, 2) * 77);
        kv::Run.OriginX = kv::Run.SideMinX[5] = x;
        kv::Run.OriginY = kv::Run.SideMinY[5] = y;
        kv::Run.SideWidth[5] = 60;
        kv::Run.SideHeight[5] = 40;
        kv::Run.SideMaxX[5] = x + 60;
        kv::Run.SideMaxY[5] = y + 40;
    }
    void AddLine(Single x1, Single y1, Single x2, Single y2)
    {
        HBoreLineRecord line;
        const bool turned = Whole(0, 1) == 0;
        line.X1 = Shaken(turned ? x2 : x1);
        line.Y1 = Shaken(turned ? y2 : y1);
        line.X2 = Shaken(turned ? x1 : x2);
        line.Y2 = Shaken(turned ? y1 : y2);
        line.Depth = static_cast<Single>(Whole(1, 18));
        line.Speed = static_cast<Int>(HBoreLines.Last() + 1); // tells the records apart
        line.Tool = WholeText(Whole(0, 99));
        line.Group = static_cast<Int>(Whole(0, 3));
        line.Feed = static_cast<Single>(Whole(0, 3) * 500);
        line.ExtraSlot = static_cast<Int>(Whole(0, 3));
        line.Bottom = static_cast<Int>(Whole(0, 5));
        HBoreLines.Append(line);
    }
    void AddAxis(bool slanted)
    {
        const Single along = static_cast<Single>(Whole(0, 12) * 4), in = static_cast<Single>(Whole(1, 5) * 5);
        const Single other = slanted ? along + 4 : along;
        switch (Whole(1, 4)) {
        case 1:
            return AddLine(along, 40, other, 40 - in);
        case 2:
            return AddLine(along, 0, other, in);
        case 3:
            return AddLine(0, along, in, other);
        default:
            return AddLine(60, along, 60 - in, other);
        }
    }
    void AddCross()
    {
        const Single along = static_cast<Single>(Whole(0, 12) * 4),
                     in = static_cast<Single>(Whole(1, 11) * 5);
        const Single half = static_cast<Single>(Whole(0, 4) * 2);
        if (Whole(0, 1) == 0)
            AddLine(along - half, in, along + half, in);
        else
            AddLine(in, along - half, in, along + half);
    }
    void AddTee()
    {
        const Single along = static_cast<Single>(Whole(1, 9) * 4), in = static_cast<Single>(Whole(1, 5) * 5);
        if (Whole(0, 1) == 0) {
            AddLine(along, 0, along, in);
            AddLine(along - 4, in, along + 4, in);
        } else {
            AddLine(60 - in, along - 4, 60 - in, along);
            AddLine(60, along, 60 - in, along);
        }
    }
    void AddAnything()
    {
        AddLine(static_cast<Single>(Whole(0, 60)), static_cast<Single>(Whole(0, 40)),
                static_cast<Single>(Whole(0, 60)), static_cast<Single>(Whole(0, 40)));
    }
    void AddBoreOfAView()
    {
        HBoreRecord bore;
        bore.Side = Whole(0, 4);
        bore.PosX = static_cast<Single>(Whole(0, 12) * 5);
        bore.PosY = static_cast<Single>(Whole(0, 8) * 5);
        bore.Speed = static_cast<Int>(-HBores.Last() - 1);
        HBores.Append(bore);
    }
    void LayDrawing()
    {
        SetPanel();
        const int lines = Whole(0, 60);
        for (int i = 0; i < lines; ++i) {
            const int kind = Whole(0, 9);
            if (kind == 0)
                AddAnything();
            else if (kind == 1)
                AddTee();
            else if (kind < 6)
                AddAxis(kind == 2);
            else
                AddCross();
        }
        for (int bores = Whole(0, 8); bores > 0; --bores)
            AddBoreOfAView();
    }

    std::mt19937 Engine{test::Seed(27)};
};

TEST_F(RandomHorizontalLines, MakeTheBoresOfThePlainRule)
{
    int fromLines = 0;
    for (int round = 0; round < test::Rounds(4000); ++round) {
        LayDrawing();
        const std::vector<HBoreRecord> expected = plain::BuildHorizontalBores(
            {HBoreLines.begin() + 1, HBoreLines.end()}, {HBores.begin() + 1, HBores.end()});
        BuildHorizontalBores();
        ASSERT_EQ(static_cast<std::size_t>(HBores.Last()), expected.size()) << test::RoundName(round);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(BoreFields(HBores[static_cast<Long>(i) + 1]), BoreFields(expected[i]))
                << test::RoundName(round) << " bore " << i + 1;
            fromLines += expected[i].Speed > 0 ? 1 : 0;
        }
    }
    EXPECT_GT(fromLines, 4000); // the drawings do hold bores
}

TEST_F(RandomHorizontalLines, AFullDrawingOfBoresIsMade)
{
    SetPanel();
    kv::Run.SideWidth[5] = 200000;
    kv::Run.SideMaxX[5] = kv::Run.OriginX + 200000;
    for (int i = 0; i < 16000; ++i) {
        HBoreLineRecord line;
        const Single x = static_cast<Single>((i * 7919 % 16000) * 12 + 6); // no order at all
        line.X1 = line.X2 = x;
        line.Y1 = 0;
        line.Y2 = 5;
        HBoreLines.Append(line);
        line.X1 = x - 4;
        line.X2 = x + 4;
        line.Y1 = 5;
        HBoreLines.Append(line);
    }
    BuildHorizontalBores();
    ASSERT_EQ(HBores.Last(), 16000);
    for (Long i = 1; i <= HBores.Last(); ++i) // from the lower right corner
        ASSERT_EQ(HBores[i].PosX, static_cast<Single>((16000 - i) * 12 + 6));
}

} // namespace
} // namespace kv
