// Programs that no writer has made, read back: what is wrong with each whatever its drawing asks for.
#include "proof/program_rules.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "machine/program_reader.h"

namespace kv {
namespace {

const std::string Header = "G71X600Y400Z18T00N4L1\n";

Demands EmptyPanel()
{
    Demands panel;
    panel.Length = 600;
    panel.Width = 400;
    panel.Thickness = 18;
    return panel;
}

AskedWay LineAskedFor(const PathPoint& from, const PathPoint& to)
{
    AskedWay way;
    Move move;
    move.From = from;
    move.To = to;
    way.Pieces = {move};
    way.Drawn = {7};
    way.Radius = 5;
    way.DepthLeast = way.DepthMost = 8;
    return way;
}

std::vector<Finding> FindingsOf(FindingKind kind, const std::string& program, const Demands& asked,
                                const ToolTable& tools = {})
{
    MachineSteps steps = ReadProgram(Header + program);
    FillTools(steps, tools);
    std::vector<Finding> found;
    for (Finding& finding : Prove(asked, {steps}, UsualTolerance, tools).Findings)
        if (finding.Kind == kind)
            found.push_back(std::move(finding));
    return found;
}

ToolTable ShopTable(const std::string& text)
{
    ToolTable tools;
    std::vector<std::string> faults;
    tools.Shop = ReadShopTools(text, faults);
    EXPECT_TRUE(faults.empty());
    return tools;
}

// --- beside the panel

TEST(ProgramRules, ARouteBesideThePanelThatNobodyAsksForIsFoundOnce)
{
    const std::vector<Finding> found = FindingsOf(
        FindingKind::OffPanel,
        "G88G90G55P5R54=10T0171X100Y450Z8\nG1G90F3000X300Y450Z8\nG1G90F3000X300Y480Z8\n", EmptyPanel());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 3U);
    EXPECT_EQ(found[0].At.X, 300);
    EXPECT_EQ(found[0].At.Y, 450);
}

TEST(ProgramRules, ARouteThatOnlyTouchesThePanelIsOnIt)
{
    EXPECT_TRUE(FindingsOf(FindingKind::OffPanel, "G88G90G55P5R54=10T0171X100Y404Z8\nG1G90F3000X300Y404Z8\n",
                           EmptyPanel())
                    .empty());
}

TEST(ProgramRules, ARouteBesideThePanelThatIsDrawnThereIsAskedFor)
{
    Demands asked = EmptyPanel();
    asked.Ways = {LineAskedFor({100, 450}, {300, 450})};
    EXPECT_TRUE(
        FindingsOf(FindingKind::OffPanel, "G88G90G55P5R54=10T0171X100Y450Z8\nG1G90F3000X300Y450Z8\n", asked)
            .empty());
}

TEST(ProgramRules, ALeadBesideThePanelBelongsToItsWay)
{
    Demands asked = EmptyPanel();
    asked.Ways = {LineAskedFor({100, 395}, {300, 395})};
    asked.Ways[0].Lead = 20;
    const std::string lead = "G88G90G55P5R54=10T0171X80Y415Z8\nG1G90F3000X90Y415Z8\nG1G90F3000X100Y395Z8\n"
                             "G1G90F3000X300Y395Z8\n";
    EXPECT_TRUE(FindingsOf(FindingKind::OffPanel, lead, asked).empty());
    const std::string astray =
        "G88G90G55P5R54=10T0171X100Y395Z8\nG1G90F3000X300Y395Z8\nG1G90F3000X300Y480Z8\n"
        "G1G90F3000X500Y480Z8\n";
    const std::vector<Finding> found = FindingsOf(FindingKind::OffPanel, astray, asked);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 5U);
}

// --- tools

TEST(ProgramRules, WithoutATableNoToolIsJudged)
{
    EXPECT_TRUE(
        FindingsOf(FindingKind::UnknownTool,
                   "G81G90G55P5T0107X100Y50Z12\nG88G90G55P5R54=10T0171X100Y100Z8\nG1G90F3000X300Y100Z8\n",
                   EmptyPanel())
            .empty());
}

TEST(ProgramRules, APlaceOfTheHeadWithoutAToolIsUnknown)
{
    ToolTable tools;
    tools.Head = ReadHeadTools("VERTICAL DRILL\t0\t0\t0\t5\nNOT USED\t0\t0\t0\t0\nROUTER\t640\t0\t0\t20\n");
    const std::vector<Finding> found =
        FindingsOf(FindingKind::UnknownTool,
                   "G81G90G55P5T0101X100Y50Z12\nG81G90G55P5T0102X100Y80Z12\nG81G90G55P5T0102X100Y90Z12\n"
                   "G81G90G55P5T0100X100Y95Z12\nG88G90G55P5R54=20T0103X100Y100Z8\nG1G90F3000X300Y100Z8\n",
                   EmptyPanel(), tools);
    ASSERT_EQ(found.size(), 2U) << "each once; the head's router is a tool";
    EXPECT_EQ(found[0].Line, 3U);
    EXPECT_EQ(found[0].What, "0102");
    EXPECT_EQ(found[1].Line, 5U);
    EXPECT_EQ(found[1].What, "0100");
}

TEST(ProgramRules, ARouterThatTheShopsTableLeavesOutIsUnknown)
{
    const ToolTable tools = ShopTable("71 router diameter=10\n");
    const std::string program = "G88G90G55P5T0171X100Y100Z8\nG1G90F3000X300Y100Z8\n"
                                "G88G90G55P5T01a3X100Y200Z8\nG1G90F3000X300Y200Z8\n"
                                "G85G55P5T0160X0Y300Z9Q500\n";
    const std::vector<Finding> found = FindingsOf(FindingKind::UnknownTool, program, EmptyPanel(), tools);
    ASSERT_EQ(found.size(), 1U) << "saws are in no table, so they are not judged";
    EXPECT_EQ(found[0].Line, 4U);
    EXPECT_EQ(found[0].What, "01a3");
    EXPECT_TRUE(FindingsOf(FindingKind::UnknownTool, program, EmptyPanel(),
                           ShopTable("71 router diameter=10\n103 router diameter=12\n60 saw kerf=4\n"))
                    .empty());
}

TEST(ProgramRules, AToolThatIsTooShortIsFoundAtEachOfItsWorks)
{
    const ToolTable tools = ShopTable("71 router diameter=10 depth=20\n");
    const std::vector<Finding> found = FindingsOf(FindingKind::ShortTool,
                                                  "G88G90G55P5T0171X100Y100Z8\nG1G90F3000X300Y100Z20\n"
                                                  "G88G90G55P5T0171X100Y200Z8\nG1G90F3000X300Y200Z21\n",
                                                  EmptyPanel(), tools);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 4U);
    EXPECT_EQ(found[0].Depth, 21);
    EXPECT_EQ(found[0].What, "0171, whose largest depth is 20");
}

// --- feeds

TEST(ProgramRules, RoutesWithoutAFeedAreToldOnceForAProgram)
{
    const std::vector<Finding> found = FindingsOf(FindingKind::NoFeed,
                                                  "G88G90G55P5R54=10T0171X100Y100Z8\nG1G90F3000X300Y100Z8\n"
                                                  "G88G90G55P5R54=10T0171X100Y200Z8\nG1G90X300Y200Z8\n"
                                                  "G88G90G55P5R54=10T0171X100Y300Z8\nG1G90X300Y300Z8\n",
                                                  EmptyPanel());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 4U);
    EXPECT_EQ(found[0].What, "this route names no feed, and 1 after it");
    EXPECT_TRUE(
        FindingsOf(FindingKind::NoFeed,
                   "G88G90G55P5R54=10T0171X100Y100Z8\nG1G90F3000X300Y100Z8\nG81G90G55P5R54=8X20Y20Z9\n",
                   EmptyPanel())
            .empty());
}

// --- rules that other looks hold

TEST(ProgramRules, AnArcWhoseEndsDisagreeWithItsCentreIsALineThatIsNotUnderstood)
{
    const std::vector<Finding> found = FindingsOf(
        FindingKind::NotUnderstood,
        "G88G90G55P5R54=10T0171X100Y100Z8\nG3G90G17F3000X200Y100I50J0\nG3G90G17F3000X250Y120I50J0\n",
        EmptyPanel());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 4U);
}

TEST(ProgramRules, ARapidIsALineThatIsNotUnderstood)
{
    const std::vector<Finding> found =
        FindingsOf(FindingKind::NotUnderstood,
                   "G88G90G55P5R54=10T0171X100Y100Z8\nG1G90F3000X200Y100Z8\nG0G90X300Y300Z8\n", EmptyPanel());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 4U);
}

TEST(ProgramRules, ALeadShorterThanItsCornerNeedsIsANarrowWay)
{
    const std::string toCorner = "G1G90F3000X300Y200Z8\nG1G90F3000X300Y300Z8\n";
    // Left of the way, and a turn to the left: the tool needs a lead of its radius.
    EXPECT_EQ(FindingsOf(FindingKind::NarrowWay, "G88G90G55P5T0171G41R8X297Y200Z8\n" + toCorner, EmptyPanel())
                  .size(),
              1U);
    EXPECT_TRUE(
        FindingsOf(FindingKind::NarrowWay, "G88G90G55P5T0171G41R8X280Y200Z8\n" + toCorner, EmptyPanel())
            .empty());
}

TEST(ProgramRules, AnArcNarrowerThanItsToolIsANarrowWay)
{
    const auto program = [](const std::string& radius) {
        return "G88G90G55P5T0171G41R" + radius +
               "X100Y100Z8\nG1G90F3000X200Y100Z8\nG3G90G17F3000X206Y106I0J6\nG1G90F3000X206Y200Z8\n";
    };
    EXPECT_EQ(FindingsOf(FindingKind::NarrowWay, program("8"), EmptyPanel()).size(), 1U);
    EXPECT_TRUE(FindingsOf(FindingKind::NarrowWay, program("5"), EmptyPanel()).empty());
}

TEST(ProgramRules, ACutDeeperThanAskedForBelowThePanelIsFound)
{
    Demands asked = EmptyPanel();
    asked.Ways = {LineAskedFor({100, 200}, {300, 200})};
    asked.Ways[0].DepthLeast = asked.Ways[0].DepthMost = 18.5;
    const auto program = [](const std::string& depth) {
        return "G88G90G55P5R54=10T0171X100Y200Z" + depth + "\nG1G90F3000X300Y200Z" + depth + "\n";
    };
    EXPECT_TRUE(FindingsOf(FindingKind::Cut, program("18.5"), asked).empty());
    const std::vector<Finding> found = FindingsOf(FindingKind::Cut, program("22"), asked);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].What, "asked for 18.5 deep there");
}

} // namespace
} // namespace kv
