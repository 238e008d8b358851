// Drillings between the tool changes of the router.
#include "writers/cnc/cnc_writer.h"
#include "writers/program_scene.h"

namespace kv {
namespace {

// Each line has its place as the entity that it comes from.
Texts Alternated(const Texts& texts)
{
    std::vector<ProgramLine> lines;
    for (const std::string& text : texts)
        lines.push_back({text, static_cast<Long>(lines.size())});
    AlternateDrillingsAndRoutes(lines);
    Texts alternated;
    for (const ProgramLine& line : lines) {
        EXPECT_EQ(line.Text, texts[static_cast<std::size_t>(line.Drawn)]);
        alternated.push_back(line.Text);
    }
    return alternated;
}

std::string Route(const std::string& tool)
{
    return "G88G90G55P5T" + tool + "S18000X0Y0Z5";
}

TEST(DrillRouteAlternation, TenDrillingsAndThreeChangesLoseOneDrillingAndEndTwice)
{
    Texts lines{"HEAD", "NAME"};
    for (const char n : std::string("0123456789"))
        lines.push_back(std::string("G81 ") + n);
    for (const std::string tool : {"0171", "0172", "0173", "0174"}) {
        lines.push_back(Route(tool));
        lines.emplace_back("G1");
    }
    lines.emplace_back("M2");
    EXPECT_EQ(Alternated(lines),
              (Texts{"HEAD",        "NAME",  Route("0171"), "G1",          "G81 0", "G81 1",       "G81 2",
                     Route("0172"), "G1",    "G81 3",       "G81 4",       "G81 5", Route("0173"), "G1",
                     "G81 6",       "G81 7", "G81 8",       Route("0174"), "G1",    "M2",          "M2"}));
}

TEST(DrillRouteAlternation, WithoutChangeOrDrillingTheProgramStays)
{
    const Texts oneTool{"HEAD", "NAME", "G81 0", Route("0171"), Route("0171"), "M2"};
    EXPECT_EQ(Alternated(oneTool), oneTool);
    const Texts noDrilling{"HEAD", "NAME", Route("0171"), Route("0172"), "M2"};
    EXPECT_EQ(Alternated(noDrilling), noDrilling); // no "+" is left behind
}

TEST(DrillRouteAlternation, HalvesOfABatchGoToEven)
{
    // 5 drillings, 2 changes: 2.5 is 2, one is lost.
    EXPECT_EQ(Alternated({"H", "N", "G81 0", "G81 1", "G81 2", "G81 3", "G81 4", Route("0171"), Route("0172"),
                          Route("0173"), "M2"}),
              (Texts{"H", "N", Route("0171"), "G81 0", "G81 1", Route("0172"), "G81 2", "G81 3",
                     Route("0173"), "M2", "M2"}));
}

TEST(DrillRouteAlternation, ABatchTakesNoMoreThanIsLeft)
{
    // 5 drillings, 3 changes: 1.67 is 2, so 2, 2 and 1.
    EXPECT_EQ(Alternated({"H", "N", Route("0171"), Route("0172"), Route("0173"), Route("0174"), "G81 0",
                          "G81 1", "G81 2", "G81 3", "G81 4", "M2"}),
              (Texts{"H", "N", Route("0171"), "G81 0", "G81 1", Route("0172"), "G81 2", "G81 3",
                     Route("0173"), "G81 4", Route("0174"), "M2"}));
}

TEST(DrillRouteAlternation, RowsOfTheHeadAreDrillingsAndTheirEmptyLineStays)
{
    EXPECT_EQ(Alternated({"H", "N", "", "G184 A", "G183 B", Route("0171"), Route("0172"), "M2"}),
              (Texts{"H", "N", "", Route("0171"), "G184 A", "G183 B", Route("0172"), "M2"}));
}

TEST(DrillRouteAlternation, ToolsInLetterFormAreTheirNumbers)
{
    // "01a5" is 01105, "01b5" 01115: a change. "01a5" twice is none.
    EXPECT_EQ(Alternated({"H", "N", "G81 0", Route("01a5"), Route("01a5"), Route("01b5"), "M2"}),
              (Texts{"H", "N", Route("01a5"), Route("01a5"), "G81 0", Route("01b5"), "M2"}));
}

TEST(DrillRouteAlternation, ARouteWithoutToolIsNoChangeNorTheOneBehindIt)
{
    const Texts lines{"H", "N", "G81 0", "G88G90G55P5R54=8X1", Route("0171"), "M2"};
    EXPECT_EQ(Alternated(lines), lines);
}

TEST(DrillRouteAlternation, ReturningToNoToolIsAChange)
{
    EXPECT_EQ(Alternated({"H", "N", "G81 0", Route("0171"), "G88G90G55P5R54=8X1", "M2"}),
              (Texts{"H", "N", Route("0171"), "G81 0", "G88G90G55P5R54=8X1", "M2"}));
}

TEST(DrillRouteAlternation, CommentsWithADashStay)
{
    EXPECT_EQ(Alternated({"H", "N", "- CLAMP", "G81 0", Route("0171"), Route("0172"), "M2"}),
              (Texts{"H", "N", "- CLAMP", Route("0171"), "G81 0", Route("0172"), "M2"}));
}

TEST(DrillRouteAlternation, LeftoverLinesAtTheEndCarryNoMarks)
{
    // 7 drillings, 3 changes: batch 2, one lost; the last line is a drilling here.
    EXPECT_EQ(Alternated({"H", "N", "G81 0", "G81 1", "G81 2", "G81 3", "G81 4", Route("0171"), Route("0172"),
                          Route("0173"), Route("0174"), "G81 5", "G81 6"}),
              (Texts{"H", "N", Route("0171"), "G81 0", "G81 1", Route("0172"), "G81 2", "G81 3",
                     Route("0173"), "G81 4", "G81 5", Route("0174"), "G81 6"}));
}

} // namespace
} // namespace kv
