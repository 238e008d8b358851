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

std::vector<Finding> AllFindingsOf(FindingKind kind, const std::string& program)
{
    return FindingsOf(kind, program, EmptyPanel());
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

TEST(ProgramRules, ASawCutBesideThePanelIsFound)
{
    const auto program = [](const std::string& y) { return "G85G55P5T0160X0Y" + y + "Z9Q500\n"; };
    EXPECT_TRUE(AllFindingsOf(FindingKind::OffPanel, program("405")).empty()) << "its width is not known";
    const std::vector<Finding> found = AllFindingsOf(FindingKind::OffPanel, program("430"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 2U);
    EXPECT_EQ(found[0].At.X, 500);
    EXPECT_EQ(found[0].At.Y, 430);
    Demands asked = EmptyPanel();
    asked.Grooves.resize(1);
    asked.Grooves[0].From = {0, 430};
    asked.Grooves[0].To = {500, 430};
    asked.Grooves[0].Kerf = 4;
    EXPECT_TRUE(FindingsOf(FindingKind::OffPanel, program("430"), asked).empty()) << "it is drawn there";
}

TEST(ProgramRules, ARowOfBoresBesideThePanelIsFound)
{
    const auto program = [](const std::string& y) { return "G183G90G55P5T0101|08X50Y" + y + "Z9I274\n"; };
    EXPECT_TRUE(AllFindingsOf(FindingKind::OffPanel, program("350")).empty());
    const std::vector<Finding> found = AllFindingsOf(FindingKind::OffPanel, program("450"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 2U);
    EXPECT_EQ(found[0].At.X, 274);
    Demands asked = EmptyPanel();
    asked.Bores.resize(1);
    asked.Bores[0].At = {82, 450};
    EXPECT_TRUE(FindingsOf(FindingKind::OffPanel, program("450"), asked).empty()) << "it is drawn there";
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

TEST(ProgramRules, ARouteWithADrillOfTheHeadIsFoundOnce)
{
    ToolTable tools;
    tools.Head = ReadHeadTools("VERTICAL DRILL\t0\t0\t0\t5\nROUTER\t640\t0\t0\t20\n");
    const auto program = [](const std::string& tool) {
        return "G88G90G55P5R54=10T" + tool + "X100Y100Z8\nG1G90F3000X300Y100Z8\nG88G90G55P5R54=10T" + tool +
               "X100Y200Z8\nG1G90F3000X300Y200Z8\n";
    };
    const std::vector<Finding> found =
        FindingsOf(FindingKind::OtherTool, program("0101"), EmptyPanel(), tools);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 2U);
    EXPECT_EQ(found[0].What, "a route with the tool 0101, which is a drill");
    EXPECT_TRUE(FindingsOf(FindingKind::OtherTool, program("0102"), EmptyPanel(), tools).empty());
    EXPECT_TRUE(FindingsOf(FindingKind::OtherTool, program("021"), EmptyPanel(), tools).empty())
        << "number 1 of the second group is a router";
    EXPECT_TRUE(
        FindingsOf(FindingKind::OtherTool, "G88G90G55P5R54=5T0101X100Y100Z8\n", EmptyPanel(), tools).empty())
        << "down and up in one place is a bore";
}

TEST(ProgramRules, OperationsWithToolsOfOtherKindsAreFound)
{
    const ToolTable tools = ShopTable("71 router diameter=10\n60 saw kerf=4\n30 drill diameter=8\n");
    const auto program = [](const std::string& bore, const std::string& route, const std::string& groove) {
        return "G81G90G55P5T01" + bore + "X100Y50Z12\nG88G90G55P5T01" + route +
               "X100Y100Z8\nG1G90F3000X300Y100Z8\nG85G55P5T01" + groove + "X0Y300Z9Q500\n";
    };
    EXPECT_TRUE(FindingsOf(FindingKind::OtherTool, program("30", "71", "60"), EmptyPanel(), tools).empty());
    EXPECT_TRUE(FindingsOf(FindingKind::OtherTool, program("71", "71", "60"), EmptyPanel(), tools).empty())
        << "a router may bore";
    std::vector<Finding> found =
        FindingsOf(FindingKind::OtherTool, program("60", "30", "71"), EmptyPanel(), tools);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].What, "a bore with the tool 0160, which is a saw");
    EXPECT_EQ(found[1].What, "a route with the tool 0130, which is a drill");
    EXPECT_EQ(found[1].Line, 3U);
    EXPECT_EQ(found[2].What, "a groove with the tool 0171, which is a router");
    EXPECT_EQ(found[2].Line, 5U);
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

TEST(ProgramRules, AFirstMoveWithoutTheFeedOfItsRouteIsFound)
{
    const auto program = [](const std::string& feed) {
        return "G88G90G55P5R54=10T0171X100Y100Z8\nG1G90" + feed +
               "X300Y100Z8\nG1G90F3000X300Y200Z8\nG1G90F3000X100Y200Z8\n";
    };
    EXPECT_TRUE(FindingsOf(FindingKind::NoFeed, program("F3000"), EmptyPanel()).empty());
    for (const char* const none : {"", "F0"}) {
        const std::vector<Finding> found = FindingsOf(FindingKind::NoFeed, program(none), EmptyPanel());
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].Line, 3U);
        EXPECT_EQ(found[0].At.X, 100);
        EXPECT_EQ(found[0].What, "this move names no feed, others of its route do");
    }
}

TEST(ProgramRules, MovesWithoutTheFeedOfTheirRoutesAreCounted)
{
    const std::string route = "G88G90G55P5R54=10T0171X100Y100Z8\nG1G90F3000X300Y100Z8\n"
                              "G1G90X300Y200Z8\nG1G90F3000X100Y200Z8\nG1G90X100Y150Z8\n";
    const std::vector<Finding> found = FindingsOf(FindingKind::NoFeed, route + route, EmptyPanel());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 4U);
    EXPECT_EQ(found[0].What, "this move names no feed, others of its route do; 3 more moves name none");
}

// --- moves

TEST(ProgramRules, AnArcWhoseEndsDisagreeWithItsCentreIsFound)
{
    const auto program = [](const std::string& end) {
        return "G88G90G55P5R54=10T0171X100Y100Z8\nG3G90G17F3000X200Y100I50J0\nG3G90G17F3000" + end +
               "I50J0\n";
    };
    EXPECT_TRUE(AllFindingsOf(FindingKind::ArcAstray, program("X250Y150")).empty())
        << "a quarter around 250, 100";
    EXPECT_TRUE(AllFindingsOf(FindingKind::ArcAstray, program("X250.01Y149.99")).empty()) << "rounding";
    const std::vector<Finding> found = AllFindingsOf(FindingKind::ArcAstray, program("X250Y151"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 4U);
    EXPECT_EQ(found[0].At.X, 250);
    EXPECT_EQ(found[0].At.Y, 151);
    EXPECT_NEAR(found[0].Millimetres, 1, 1e-9);
    EXPECT_TRUE(AllFindingsOf(FindingKind::NotUnderstood, program("X250Y151")).empty()) << "told once";
}

TEST(ProgramRules, AnArcWhoseRadiusDoesNotReachItsEndIsFound)
{
    const auto program = [](const std::string& radius) {
        return "G88G90G55P5R54=10T0171X100Y100Z8\nG37G90F3000X200Y100Z8U" + radius + "\n";
    };
    EXPECT_TRUE(AllFindingsOf(FindingKind::ArcAstray, program("50")).empty());
    const std::vector<Finding> found = AllFindingsOf(FindingKind::ArcAstray, program("40"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 3U);
    EXPECT_NEAR(found[0].Millimetres, 20, 1e-9);
}

TEST(ProgramRules, ARapidThroughTheWoodIsFound)
{
    const auto program = [](const std::string& depth, const std::string& rapid) {
        return "G88G90G55P5R54=10T0171X100Y100Z" + depth + "\nG1G90F3000X200Y100Z" + depth + "\n" + rapid +
               "\n";
    };
    for (const char* const rapid : {"G0G90X300Y300Z8", "G00G90X300Y300Z-5", "G0X300Y300"}) {
        const std::vector<Finding> found = AllFindingsOf(FindingKind::Rapid, program("8", rapid));
        ASSERT_EQ(found.size(), 1U) << rapid;
        EXPECT_EQ(found[0].Line, 4U);
        EXPECT_EQ(found[0].At.X, 300);
        EXPECT_EQ(found[0].At.Y, 300);
        EXPECT_EQ(found[0].Depth, 8);
        EXPECT_TRUE(AllFindingsOf(FindingKind::NotUnderstood, program("8", rapid)).empty()) << "told once";
    }
    // Above the surface, and where no route is open, it harms nothing; it is no line of a program all the
    // same.
    EXPECT_TRUE(AllFindingsOf(FindingKind::Rapid, program("-5", "G0G90X300Y300Z-5")).empty());
    EXPECT_EQ(AllFindingsOf(FindingKind::NotUnderstood, program("-5", "G0G90X300Y300Z-5")).size(), 1U);
    EXPECT_TRUE(AllFindingsOf(FindingKind::Rapid, "G81G90G55P5T0101X50Y50Z9\nG0G90X300Y300Z8\n").empty());
}

TEST(ProgramRules, ARapidBesideThePanelIsOnlyALineThatIsNotUnderstood)
{
    const std::string program = "G88G90G55P5R54=10T0171X100Y450Z8\nG1G90F3000X200Y450Z8\nG0G90X300Y450Z8\n";
    EXPECT_TRUE(AllFindingsOf(FindingKind::Rapid, program).empty());
    EXPECT_EQ(AllFindingsOf(FindingKind::NotUnderstood, program).size(), 1U);
}

// --- depths

TEST(ProgramRules, ALeadThatGoesBelowThePanelIsFoundThoughItsWoodFallsOff)
{
    Demands asked = EmptyPanel();
    asked.Ways = {LineAskedFor({0, 0}, {600, 0})};
    asked.Ways[0].Side = -1;
    asked.Ways[0].Lead = 20;
    asked.Ways[0].DepthLeast = asked.Ways[0].DepthMost = 19;
    const auto program = [](const std::string& depth) {
        return "G88G90G55P5T0171G42R5X-20Y0Z" + depth + "\nG1G90F3000X0Y0Z19\nG1G90F3000X600Y0Z19\n";
    };
    EXPECT_TRUE(FindingsOf(FindingKind::TooDeep, program("19"), asked).empty());
    EXPECT_TRUE(FindingsOf(FindingKind::Cut, program("40"), asked).empty()) << "areas do not say it";
    const std::vector<Finding> found = FindingsOf(FindingKind::TooDeep, program("40"), asked);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 3U);
    EXPECT_EQ(found[0].At.X, -20);
    EXPECT_EQ(found[0].Depth, 40);
    EXPECT_EQ(found[0].Millimetres, 21);
}

TEST(ProgramRules, ASawBelowThePanelBesideItIsFound)
{
    const auto program = [](const std::string& depth) { return "G85G55P5T0160X0Y430Z" + depth + "Q500\n"; };
    EXPECT_TRUE(AllFindingsOf(FindingKind::TooDeep, program("18")).empty());
    const std::vector<Finding> found = AllFindingsOf(FindingKind::TooDeep, program("25"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 2U);
    EXPECT_EQ(found[0].Millimetres, 7);
}

TEST(ProgramRules, ARouteAboveTheWoodIsFound)
{
    const auto program = [](const std::string& depth) {
        return "G88G90G55P5R54=10T0171X100Y100Z-8\nG1G90F3000X300Y100Z" + depth + "\n";
    };
    EXPECT_TRUE(AllFindingsOf(FindingKind::InTheAir, program("8")).empty());
    const std::vector<Finding> found = AllFindingsOf(FindingKind::InTheAir, program("-8"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 2U);
    EXPECT_EQ(found[0].At.X, 100);
    EXPECT_EQ(found[0].Depth, -8);
    EXPECT_TRUE(AllFindingsOf(FindingKind::InTheAir, program("=q")).empty())
        << "a code of the machine's table";
    Demands asked = EmptyPanel();
    asked.Ways = {LineAskedFor({100, 100}, {300, 100})};
    asked.Ways[0].DepthLeast = asked.Ways[0].DepthMost = 0;
    EXPECT_TRUE(FindingsOf(FindingKind::InTheAir, program("-8"), asked).empty()) << "its layer asks for none";
}

// --- rules that other looks hold

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

TEST(ProgramRules, AWayOutShorterThanItsCornerNeedsIsANarrowWay)
{
    const auto program = [](const std::string& out) {
        return "G88G90G55P5T0171G41R8X100Y200Z8\nG1G90F3000X300Y200Z8\nG1G90F3000X300Y" + out + "Z8\n";
    };
    const std::vector<Finding> found = AllFindingsOf(FindingKind::NarrowWay, program("203"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 4U);
    EXPECT_TRUE(AllFindingsOf(FindingKind::NarrowWay, program("220")).empty());
}

TEST(ProgramRules, ALeadArcNarrowerThanItsToolIsANarrowWay)
{
    // A quarter to the left, with the tool on its left, into a way along X.
    const std::string narrow = "G88G90G55P5T0171G41R8X195Y105Z8\nG3G90G17F3000X200Y100I5J0\n"
                               "G1G90F3000X400Y100Z8\n";
    const std::string wide = "G88G90G55P5T0171G41R8X180Y120Z8\nG3G90G17F3000X200Y100I20J0\n"
                             "G1G90F3000X400Y100Z8\n";
    const std::vector<Finding> found = AllFindingsOf(FindingKind::NarrowWay, narrow);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Line, 3U);
    EXPECT_TRUE(AllFindingsOf(FindingKind::NarrowWay, wide).empty());
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
