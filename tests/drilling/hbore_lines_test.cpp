// Bores in the edges from lines in plan, by hand: a panel of 600 by 400 whose lower left corner is the
// origin, so that the edges stand at 0, 600 and 400.
#include "drilling/hbore_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "state/run.h"
#include "support/dxf.h"
#include "support/scene.h"

namespace kv {
namespace {

struct Ends {
    Single X1, Y1, X2, Y2;
};

class HorizontalLines : public testing::Test {
  protected:
    void SetUp() override
    {
        test::ResetProcess();
        ResetRun();
        kv::Run.SideWidth[5] = 600;
        kv::Run.SideHeight[5] = 400;
        kv::Run.SideMinX[5] = kv::Run.SideMinY[5] = 0;
        kv::Run.SideMaxX[5] = 600;
        kv::Run.SideMaxY[5] = 400;
    }
    void TearDown() override { test::ResetProcess(); }

    static HBoreLineRecord& Add(Ends ends)
    {
        HBoreLineRecord line;
        line.X1 = ends.X1;
        line.Y1 = ends.Y1;
        line.X2 = ends.X2;
        line.Y2 = ends.Y2;
        line.Depth = 9;
        line.Group = 1;
        return HBoreLines.Append(line);
    }
    static void AddBore(Long side, Single x, Single y)
    {
        HBoreRecord bore;
        bore.Side = side;
        bore.PosX = x;
        bore.PosY = y;
        HBores.Append(bore);
    }
    static std::vector<HBoreRecord> Build(const std::vector<Ends>& lines = {})
    {
        for (const Ends& line : lines)
            Add(line);
        BuildHorizontalBores();
        return {HBores.begin() + 1, HBores.end()};
    }
    static Long EdgeOf(const std::vector<Ends>& lines)
    {
        HBores.Clear();
        const std::vector<HBoreRecord> bores = Build(lines);
        EXPECT_LE(bores.size(), 1U);
        return bores.empty() ? 0 : bores[0].Side;
    }
    using Place = std::pair<Single, Single>;
    static std::vector<Place> Places()
    {
        std::vector<Place> places;
        for (Long i = 1; i <= HBores.Last(); ++i)
            places.emplace_back(HBores[i].PosX, HBores[i].PosY);
        return places;
    }
};

TEST_F(HorizontalLines, ATAtEachEdgeMakesABoreInThatEdge)
{
    EXPECT_EQ(EdgeOf({{100, 400, 100, 370}, {96, 370, 104, 370}}), 1);
    EXPECT_EQ(EdgeOf({{100, 0, 100, 30}, {96, 30, 104, 30}}), 2);
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 96, 30, 104}}), 3);
    EXPECT_EQ(EdgeOf({{600, 100, 570, 100}, {570, 96, 570, 104}}), 4);
}

TEST_F(HorizontalLines, AnAxisDrawnOutwardsIsTurnedRound)
{
    EXPECT_EQ(EdgeOf({{100, 370, 100, 400}, {96, 370, 104, 370}}), 1);
    EXPECT_EQ(EdgeOf({{100, 30, 100, 0}, {96, 30, 104, 30}}), 2);
    EXPECT_EQ(EdgeOf({{30, 100, 0, 100}, {30, 96, 30, 104}}), 3);
    EXPECT_EQ(EdgeOf({{570, 100, 600, 100}, {570, 96, 570, 104}}), 4);
}

TEST_F(HorizontalLines, TurningASlantedAxisRoundLeavesItsOtherCoordinates)
{
    // From (570, 100) to (600, 120): turned in X alone, its inner end is (570, 120).
    EXPECT_EQ(EdgeOf({{570, 100, 600, 120}, {570, 116, 570, 124}}), 4);
    EXPECT_EQ(EdgeOf({{570, 100, 600, 120}, {570, 96, 570, 104}}), 0);
    EXPECT_EQ(EdgeOf({{100, 30, 120, 0}, {116, 30, 124, 30}}), 2);
}

TEST_F(HorizontalLines, AnLAndAUAreBoresToo)
{
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 100, 30, 108}}), 3);
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 92, 30, 100}}), 3);
    const std::vector<HBoreRecord> bores =
        (HBores.Clear(), Build({{0, 100, 30, 100}, {30, 100, 30, 108}, {30, 108, 0, 108}}));
    ASSERT_EQ(bores.size(), 1U); // one cross line is one bore
    EXPECT_EQ(bores[0].PosY, 104);
    EXPECT_EQ(bores[0].Diameter, 8);
}

TEST_F(HorizontalLines, TheInnerEndMayLieAnywhereOnTheCrossLine)
{
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 99, 30, 107}}), 3);
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 101, 30, 109}}), 0);
}

TEST_F(HorizontalLines, ALineThatTouchesNoEdgeAndNoOtherLineMakesNoBore)
{
    EXPECT_EQ(EdgeOf({{100, 100, 130, 100}}), 0);
    EXPECT_EQ(EdgeOf({{100, 100, 130, 100}, {130, 96, 130, 104}}), 0); // a T in the middle of the panel
}

TEST_F(HorizontalLines, AnEdgeLineWithoutACrossLineMakesNoBore)
{
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}}), 0);
}

TEST_F(HorizontalLines, ALineFromEdgeToEdgeIsNoCrossLine)
{
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 0, 30, 400}}), 0);
}

TEST_F(HorizontalLines, TheEdgeIsAHundredthOfAUnitWide)
{
    // Sixteenths and 128ths are exact in a Single.
    EXPECT_EQ(EdgeOf({{0.0078125F, 100, 30, 100}, {30, 96, 30, 104}}), 3);
    EXPECT_EQ(EdgeOf({{-0.0078125F, 100, 30, 100}, {30, 96, 30, 104}}), 3);
    EXPECT_EQ(EdgeOf({{0.015625F, 100, 30, 100}, {30, 96, 30, 104}}), 0);
}

TEST_F(HorizontalLines, TheEndMeetsTheCrossLineWithinAHundredth)
{
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30.0078125F, 96, 30.0078125F, 104}}), 3);
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30.015625F, 96, 30.015625F, 104}}), 0);
    // Both ends of the cross line must stand so.
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 96, 30.015625F, 104}}), 0);
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30.015625F, 96, 30, 104}}), 0);
    // And beyond its end by as much.
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 100.0078125F, 30, 108}}), 3);
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 100.015625F, 30, 108}}), 0);
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 92, 30, 99.9921875F}}), 3);
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 92, 30, 99.984375F}}), 0);
}

TEST_F(HorizontalLines, AnAxisAlongItsOwnCrossLineEndsOnItToo)
{
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 100, 38, 100}}), 3);
}

TEST_F(HorizontalLines, ALineFromACornerBelongsToTheEdgeTestedFirst)
{
    // Right goes before top: from (600, 400) nothing is exchanged.
    EXPECT_EQ(EdgeOf({{600, 400, 570, 370}, {566, 370, 574, 370}}), 4);
    // Left goes before top, which would exchange Y: (0, 400) to (30, 370).
    EXPECT_EQ(EdgeOf({{30, 400, 0, 370}, {30, 366, 30, 374}}), 3);
    // Right goes before left: from (0, 100) to (600, 120) the inner end is (0, 120), where the left edge
    // would have (600, 120).
    EXPECT_EQ(EdgeOf({{0.0078125F, 100, 600, 120}, {0.015625F, 116, 0.015625F, 124}}), 4);
    // Top goes before bottom in the same way.
    EXPECT_EQ(EdgeOf({{100, 0.0078125F, 120, 400}, {116, 0.015625F, 124, 0.015625F}}), 1);
}

TEST_F(HorizontalLines, OfALineWithBothEndsAtAnEdgeTheFirstOneIsTheOuter)
{
    EXPECT_EQ(EdgeOf({{600, 100, 600, 120}, {599.984375F, 120, 600.015625F, 120}}), 4);
    EXPECT_EQ(EdgeOf({{600, 120, 600, 100}, {599.984375F, 120, 600.015625F, 120}}), 0);
}

TEST_F(HorizontalLines, LimitsAreTakenLessTheOrigin)
{
    kv::Run.OriginX = kv::Run.SideMinX[5] = 1000;
    kv::Run.OriginY = kv::Run.SideMinY[5] = 2000;
    kv::Run.SideMaxX[5] = 1600;
    kv::Run.SideMaxY[5] = 2400;
    EXPECT_EQ(EdgeOf({{0, 100, 30, 100}, {30, 96, 30, 104}}), 3);
    EXPECT_EQ(EdgeOf({{600, 100, 570, 100}, {570, 96, 570, 104}}), 4);
    EXPECT_EQ(EdgeOf({{100, 0, 100, 30}, {96, 30, 104, 30}}), 2);
    EXPECT_EQ(EdgeOf({{100, 400, 100, 370}, {96, 370, 104, 370}}), 1);
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 30}})); // 2400 - 2000 - 370
    EdgeOf({{600, 100, 570, 100}, {570, 96, 570, 104}});
    EXPECT_EQ(Places(), (std::vector<Place>{{30, 100}})); // 1600 - 1000 - 570
    EdgeOf({{0, 100, 30, 100}, {30, 96, 30, 104}});
    EXPECT_EQ(Places(), (std::vector<Place>{{30, 100}}));
    EdgeOf({{100, 0, 100, 30}, {96, 30, 104, 30}});
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 30}}));
}

TEST_F(HorizontalLines, TheEdgesStandAtTheExtentsNotAtTheSize)
{
    kv::Run.SideWidth[5] = 599;
    kv::Run.SideHeight[5] = 399;
    EXPECT_EQ(EdgeOf({{600, 100, 570, 100}, {570, 96, 570, 104}}), 4);
    EXPECT_EQ(EdgeOf({{100, 400, 100, 370}, {96, 370, 104, 370}}), 1);
    EXPECT_EQ(EdgeOf({{599, 100, 570, 100}, {570, 96, 570, 104}}), 0);
    EXPECT_EQ(EdgeOf({{100, 399, 100, 370}, {96, 370, 104, 370}}), 0);
}

TEST_F(HorizontalLines, TheLineAcrossGivesWidthMiddleAndValues)
{
    Add({0, 100, 30, 100});
    HBoreLineRecord& cross = Add({30, 104.5F, 30, 96});
    cross.Depth = 8.5F;
    cross.Tool = "61";
    cross.Group = 3;
    cross.Speed = 6000;
    cross.Feed = 1500;
    cross.ExtraSlot = 2;
    cross.Bottom = 4;
    const std::vector<HBoreRecord> bores = Build();
    ASSERT_EQ(bores.size(), 1U);
    EXPECT_EQ(bores[0].Side, 3);
    EXPECT_EQ(bores[0].PosY, 100.25F);
    EXPECT_EQ(bores[0].Diameter, 8.5F);
    EXPECT_EQ(bores[0].Z, 8.5F);
    EXPECT_EQ(bores[0].Tool.Trimmed(), "61");
    EXPECT_EQ(bores[0].Group, 3);
    EXPECT_EQ(bores[0].Speed, 6000);
    EXPECT_EQ(bores[0].Feed, 1500);
    EXPECT_EQ(bores[0].ExtraSlot, 2);
    EXPECT_EQ(bores[0].Bottom, 4);
}

TEST_F(HorizontalLines, TheDepthPositionCountsFromTheEdgeThatTheAxisTouches)
{
    EdgeOf({{100, 400, 100, 370}, {104, 370, 96, 370}});
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 30}}));
    EdgeOf({{100, 0, 100, 30}, {96, 30, 104, 30}});
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 30}}));
    EdgeOf({{0, 100, 30, 100}, {30, 96, 30, 104}});
    EXPECT_EQ(Places(), (std::vector<Place>{{30, 100}}));
    EdgeOf({{600, 100, 570, 100}, {570, 96, 570, 104}});
    EXPECT_EQ(Places(), (std::vector<Place>{{30, 100}}));
}

TEST_F(HorizontalLines, ABoreBeyondTheMiddleOrOnItIsAsDeepAsItIsDrawn)
{
    EdgeOf({{100, 0, 100, 250}, {96, 250, 104, 250}});
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 250}}));
    EdgeOf({{100, 400, 100, 150}, {96, 150, 104, 150}});
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 250}}));
    EdgeOf({{0, 100, 300, 100}, {300, 96, 300, 104}});
    EXPECT_EQ(Places(), (std::vector<Place>{{300, 100}}));
    EdgeOf({{600, 100, 250, 100}, {250, 96, 250, 104}});
    EXPECT_EQ(Places(), (std::vector<Place>{{350, 100}}));
}

TEST_F(HorizontalLines, InANarrowRailTheDepthIsTheDrawnOneAtAllEdges)
{
    kv::Run.SideWidth[5] = kv::Run.SideMaxX[5] = 60;
    kv::Run.SideHeight[5] = kv::Run.SideMaxY[5] = 60;
    EdgeOf({{30, 60, 30, 25}, {26, 25, 34, 25}});
    EXPECT_EQ(Places(), (std::vector<Place>{{30, 35}}));
    EdgeOf({{30, 0, 30, 35}, {26, 35, 34, 35}});
    EXPECT_EQ(Places(), (std::vector<Place>{{30, 35}}));
    EdgeOf({{0, 30, 35, 30}, {35, 26, 35, 34}});
    EXPECT_EQ(Places(), (std::vector<Place>{{35, 30}}));
    EdgeOf({{60, 30, 25, 30}, {25, 26, 25, 34}});
    EXPECT_EQ(Places(), (std::vector<Place>{{35, 30}}));
}

TEST_F(HorizontalLines, TheLowerEndOfTheCrossLineGivesTheDepthPosition)
{
    EdgeOf({{100, 0, 100, 30}, {104, 30.0078125F, 96, 30}});
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 30}}));
    EdgeOf({{100, 0, 100, 30}, {96, 30.0078125F, 104, 30}});
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 30.0078125F}}));
}

TEST_F(HorizontalLines, OneAxisServesTheFirstCrossLineOnly)
{
    Add({0, 100, 30, 100});
    Add({30, 96, 30, 104}).Speed = 1;
    Add({30, 95, 30, 105}).Speed = 2;
    const std::vector<HBoreRecord> bores = Build();
    ASSERT_EQ(bores.size(), 1U);
    EXPECT_EQ(bores[0].Speed, 1);
}

TEST_F(HorizontalLines, TheFirstAxisInTheDrawingGivesTheEdge)
{
    // The cross line ends two axes: one from the left, one from below.
    EXPECT_EQ(EdgeOf({{0, 30, 30, 30}, {34, 0, 34, 30}, {30, 30, 38, 30}}), 3);
    EXPECT_EQ(EdgeOf({{34, 0, 34, 30}, {0, 30, 30, 30}, {30, 30, 38, 30}}), 2);
    // Both are used up: a second cross line finds none.
    EXPECT_EQ(EdgeOf({{34, 0, 34, 30}, {0, 30, 30, 30}, {30, 30, 38, 30}, {30, 26, 30, 34}}), 2);
}

TEST_F(HorizontalLines, TheOrderOfDrawingCrossLineAndAxisIsFree)
{
    EXPECT_EQ(EdgeOf({{30, 96, 30, 104}, {0, 100, 30, 100}}), 3);
}

TEST_F(HorizontalLines, LinesAreGoneBehindThePass)
{
    Build({{0, 100, 30, 100}, {30, 96, 30, 104}, {200, 200, 230, 200}});
    EXPECT_EQ(HBoreLines.Last(), 0);
}

TEST_F(HorizontalLines, EdgesFollowRoundThePanelFromTheRight)
{
    AddBore(1, 100, 30);
    AddBore(2, 100, 30);
    AddBore(3, 30, 100);
    AddBore(4, 30, 100);
    std::vector<Long> sides;
    for (const HBoreRecord& bore : Build())
        sides.push_back(bore.Side);
    EXPECT_EQ(sides, (std::vector<Long>{4, 2, 3, 1}));
}

TEST_F(HorizontalLines, AnEdgeBeginsAtItsCornerWhereTheEdgeBeforeHasNoBores)
{
    // (W, H) for the right edge.
    AddBore(4, 570, 100);
    AddBore(4, 570, 300);
    Build();
    EXPECT_EQ(Places(), (std::vector<Place>{{570, 300}, {570, 100}}));
    // (W, 0) for the bottom.
    HBores.Clear();
    AddBore(2, 100, 370);
    AddBore(2, 500, 370);
    Build();
    EXPECT_EQ(Places(), (std::vector<Place>{{500, 370}, {100, 370}}));
    // (0, 0) for the left edge; bores two edges before do not count.
    HBores.Clear();
    AddBore(4, 570, 300);
    AddBore(3, 570, 300);
    AddBore(3, 570, 100);
    Build();
    EXPECT_EQ(Places(), (std::vector<Place>{{570, 300}, {570, 100}, {570, 300}}));
    // (0, H) for the top.
    HBores.Clear();
    AddBore(1, 500, 370);
    AddBore(1, 100, 370);
    Build();
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 370}, {500, 370}}));
    // In Y too: nearer to (0, 400) than to (0, 0).
    HBores.Clear();
    AddBore(1, 100, 30);
    AddBore(1, 110, 370);
    Build();
    EXPECT_EQ(Places(), (std::vector<Place>{{110, 370}, {100, 30}}));
    // And the bottom's start is down: (600, 0).
    HBores.Clear();
    AddBore(2, 500, 370);
    AddBore(2, 500, 30);
    Build();
    EXPECT_EQ(Places(), (std::vector<Place>{{500, 30}, {500, 370}}));
}

TEST_F(HorizontalLines, AnEdgeBeginsWhereTheEdgeBeforeEnded)
{
    AddBore(4, 100, 300);
    AddBore(2, 500, 370);
    AddBore(2, 120, 370);
    Build();
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 300}, {120, 370}, {500, 370}}));
}

TEST_F(HorizontalLines, NearestByStraightDistanceAndTheFirstOfEquals)
{
    AddBore(1, 3, 400); // 3 away
    AddBore(1, 0, 397); // as far
    AddBore(1, 2, 398); // 2.83 away, though the sum of its coordinates is larger
    AddBore(1, 90, 400);
    Build();
    EXPECT_EQ(Places(), (std::vector<Place>{{2, 398}, {3, 400}, {0, 397}, {90, 400}}));
}

TEST_F(HorizontalLines, BoresFromEdgeViewsAreOrderedWithThoseFromLines)
{
    AddBore(3, 570, 300);
    Build({{0, 100, 30, 100}, {30, 96, 30, 104}});
    EXPECT_EQ(Places(), (std::vector<Place>{{30, 100}, {570, 300}})); // from (0, 0): 104 and 644 away
}

TEST_F(HorizontalLines, BlankRecordsAreDroppedEvenWithoutLines)
{
    AddBore(0, 0, 0);
    AddBore(2, 100, 370);
    AddBore(0, 5, 5);
    EXPECT_EQ(Build().size(), 1U);
    EXPECT_EQ(Places(), (std::vector<Place>{{100, 370}}));
}

TEST(HorizontalLinesInADrawing, LinesThatMakeNoBoreAreCounted)
{
    test::Scene scene;
    const std::string panel = test::Rectangle("BORDER Z18", 0, 0, 600, 400);
    const std::string bore = test::Line("HBORE", 0, 300, 30, 300) + test::Line("HBORE Z9", 30, 296, 30, 304);
    EXPECT_TRUE(scene.Convert(test::Drawing(panel + bore)));
    EXPECT_EQ(scene.ReportText().find("Horizontal drilling lines"), std::string::npos) << scene.ReportText();
    EXPECT_TRUE(scene.Convert(test::Drawing(panel + bore + test::Line("HBORE", 100, 0, 100, 30) +
                                            test::Line("HBORE", 200, 96, 200, 104))));
    EXPECT_TRUE(scene.Reported("Horizontal drilling lines that make no bore: 2")) << scene.ReportText();
}

TEST(HorizontalLinesInADrawing, TheProgramNamesTheDepthFromTheTouchedEdge)
{
    test::Scene scene;
    const auto program = [&scene](double width, double height, const std::string& lines) {
        EXPECT_TRUE(scene.Convert(test::Drawing(test::Rectangle("BORDER Z18", 0, 0, width, height) + lines)));
        std::string text;
        for (const std::string& line : scene.Program())
            text += line + "\n";
        return text;
    };
    const std::string wide =
        program(600, 400,
                test::Line("HBORE", 0, 300, 30, 300) + test::Line("HBORE Z9", 30, 296, 30, 304) +
                    test::Line("HBORE", 600, 100, 570, 100) + test::Line("HBORE Z9", 570, 96, 570, 104));
    EXPECT_NE(wide.find("P3R54=8X30Y300Z9"), std::string::npos) << wide;
    EXPECT_NE(wide.find("P4R54=8X30Y100Z9"), std::string::npos) << wide;
    const std::string rail =
        program(600, 60,
                test::Line("HBORE", 100, 0, 100, 35) + test::Line("HBORE Z9", 96, 35, 104, 35) +
                    test::Line("HBORE", 500, 60, 500, 25) + test::Line("HBORE Z9", 496, 25, 504, 25));
    EXPECT_NE(rail.find("P2R54=8X100Y35Z9"), std::string::npos) << rail;
    EXPECT_NE(rail.find("P1R54=8X500Y35Z9"), std::string::npos) << rail;
}

TEST_F(HorizontalLines, NothingAtAllStaysNothing)
{
    EXPECT_TRUE(Build().empty());
    EXPECT_EQ(HBores.Last(), 0);
}

} // namespace
} // namespace kv
