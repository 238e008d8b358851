// DT.Par as people write it, and the rows of the head.
#include "drilling/drill_head.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/run_error.h"
#include "support/scene.h"

namespace kv {
namespace {

class DrillHeadFile : public testing::Test {
  protected:
    void TearDown() override
    {
        DrillParameters.assign(1, {});
        FillDrillHead();
    }

    void Load(const std::string& text)
    {
        Home.Write("DT.Par", text);
        LoadDrillHead();
        FillDrillHead();
        ClassifyHeadRows();
    }
    static std::string DrillLine(const std::string& x, const std::string& kind = "VERTICAL DRILL")
    {
        return kind + "\t" + x + "\t0\t0\t8\r\n";
    }
    static std::size_t Drills() { return DrillParameters.size() - 1; }
    std::vector<Int> RowsOf(const std::vector<std::string>& places)
    {
        std::string text;
        for (const std::string& x : places)
            text += DrillLine(x);
        Load(text);
        std::vector<Int> rows;
        for (std::size_t n = 1; n <= places.size(); ++n)
            rows.push_back(DrillHead[n].Row);
        return rows;
    }

    test::Scene Home;
};

using HeadRows = std::vector<Int>;

TEST_F(DrillHeadFile, ALineHoldsKindPlaceAndDiameter)
{
    Load("NOT USED\t1\t2\t3\t4\r\nTHROUGH DRILL\t32\t-64.5\t10.25\t8\r\n");
    EXPECT_EQ(Drills(), 2U);
    EXPECT_EQ(DrillHead[2].Kind, 2);
    EXPECT_EQ(DrillHead[2].X, 32);
    EXPECT_EQ(DrillHead[2].Y, -64.5F);
    EXPECT_EQ(DrillHead[2].Z, 10.25F);
    EXPECT_EQ(DrillHead[2].Diameter, 8);
}

TEST_F(DrillHeadFile, SlotsCountFromOneAndStayBlankBehindTheLastLine)
{
    Load(DrillLine("5"));
    EXPECT_EQ(DrillHead[0].X, 0);
    EXPECT_EQ(DrillHead[0].Kind, 0);
    EXPECT_EQ(DrillHead[1].X, 5);
    EXPECT_EQ(DrillHead[2].Kind, 0);
    EXPECT_EQ(DrillHead[2].Diameter, 0);
}

TEST_F(DrillHeadFile, KindsAreFoundByTheirUpperCasedNameAlone)
{
    const struct {
        const char* Name;
        Int Kind;
    } rows[] = {{"VERTICAL DRILL", 1},   {"Vertical Drill", 1},  {"through drill", 2},
                {"Horizontal DRILL", 3}, {"groove", 4},          {"Router", 5},
                {"NOT USED", 0},         {"not used", 0},        {"VERTICALDRILL", 0},
                {"VERTICAL  DRILL", 0},  {" VERTICAL DRILL", 0}, {"SAW", 0}};
    for (const auto& row : rows) {
        Load(DrillLine("1", row.Name));
        EXPECT_EQ(DrillHead[1].Kind, row.Kind) << row.Name;
        EXPECT_EQ(DrillHead[1].X, 1) << row.Name;
    }
}

TEST_F(DrillHeadFile, AnEmptyLineEndsTheHead)
{
    Load(DrillLine("32") + "\r\n" + DrillLine("64"));
    EXPECT_EQ(Drills(), 1U);
    EXPECT_EQ(DrillHead[2].X, 0);
    Load(DrillLine("32") + "   \r\n" + DrillLine("64"));
    EXPECT_EQ(Drills(), 1U);
    Load("\r\n" + DrillLine("64"));
    EXPECT_EQ(Drills(), 0U);
}

TEST_F(DrillHeadFile, ALineOfTabsIsADrillOfNoKind)
{
    Load("\t\t\t\t\r\n" + DrillLine("64"));
    EXPECT_EQ(Drills(), 2U);
    EXPECT_EQ(DrillHead[1].Kind, 0);
    EXPECT_EQ(DrillHead[2].X, 64);
}

TEST_F(DrillHeadFile, LinesEndAtCrLfAtLfAndAtCr)
{
    Load("ROUTER\t1\rROUTER\t2\nROUTER\t3\r\nROUTER\t4");
    ASSERT_EQ(Drills(), 4U);
    for (std::size_t n = 1; n <= 4; ++n) {
        EXPECT_EQ(DrillHead[n].Kind, 5);
        EXPECT_EQ(DrillHead[n].X, static_cast<Single>(n));
    }
}

TEST_F(DrillHeadFile, ACommaEndsTheTextOfALine)
{
    Load("VERTICAL DRILL\t32\t1,5\t0\t8\r\n" + DrillLine("64"));
    ASSERT_EQ(Drills(), 2U);
    EXPECT_EQ(DrillHead[1].Y, 1); // of "1,5"
    EXPECT_EQ(DrillHead[1].Diameter, 0);
    EXPECT_EQ(DrillHead[2].X, 64);
    Load(DrillLine("32") + ",VERTICAL DRILL\r\n" + DrillLine("64"));
    EXPECT_EQ(Drills(), 1U); // a line that is empty up to its comma
}

TEST_F(DrillHeadFile, QuotesAroundALineAreDropped)
{
    Load("\"VERTICAL DRILL\t32\t0\t0\t8\"\r\n\"ROUTER\t1\t2\t3\t4\r\n");
    ASSERT_EQ(Drills(), 2U);
    EXPECT_EQ(DrillHead[1].Kind, 1);
    EXPECT_EQ(DrillHead[1].Diameter, 8);
    EXPECT_EQ(DrillHead[2].Kind, 0); // no pair: the quote is part of the name
    EXPECT_EQ(DrillHead[2].Diameter, 4);
}

TEST_F(DrillHeadFile, AFieldThatIsNoNumberAsAWholeStaysZero)
{
    const struct {
        const char* Text;
        Single Value;
    } rows[] = {{"12.5", 12.5F}, {" 8 ", 8},  {"-.5", -.5F}, {"+5.", 5},   {"1e1", 10},
                {"25E-1", 2.5F}, {"ten", 0},  {"8mm", 0},    {"1.2.3", 0}, {".", 0},
                {"-", 0},        {"", 0},     {"0x10", 0},   {"1e", 0},    {"1e+", 0},
                {"1 2", 0},      {"1e99", 0}, {"nan", 0},    {"inf", 0},   {"1e999", 0}};
    for (const auto& row : rows) {
        Load("ROUTER\t" + std::string(row.Text) + "\t7\t7\t7\r\n");
        EXPECT_EQ(DrillHead[1].X, row.Value) << row.Text;
        EXPECT_EQ(DrillHead[1].Y, 7) << row.Text;
    }
}

TEST_F(DrillHeadFile, MissingAndSurplusFields)
{
    Load("ROUTER\t1\r\nROUTER\t1\t2\t3\t4\t5\t6\r\nROUTER\r\n");
    ASSERT_EQ(Drills(), 3U);
    EXPECT_EQ(DrillHead[1].Diameter, 0);
    EXPECT_EQ(DrillHead[2].Diameter, 4);
    EXPECT_EQ(DrillHead[3].Kind, 5);
}

TEST_F(DrillHeadFile, Of150DrillsTheFirst99AreCopied)
{
    std::string text;
    for (int n = 1; n <= 150; ++n)
        text += DrillLine(std::to_string(n));
    Load(text);
    EXPECT_EQ(Drills(), 150U);
    EXPECT_EQ(DrillHead[98].X, 98);
    EXPECT_EQ(DrillHead[99].X, 99);
    EXPECT_EQ(DrillHead[0].X, 0);
}

TEST_F(DrillHeadFile, EachLoadBeginsWithAnEmptyHead)
{
    Load(DrillLine("32") + DrillLine("64"));
    Load(DrillLine("96"));
    EXPECT_EQ(DrillHead[1].X, 96);
    EXPECT_EQ(DrillHead[2].X, 0);
    EXPECT_EQ(DrillHead[2].Diameter, 0);
    std::filesystem::remove(Home.Folder / "DT.Par");
    LoadDrillHead();
    FillDrillHead();
    EXPECT_EQ(Drills(), 0U);
    EXPECT_EQ(DrillHead[1].Diameter, 0);
    EXPECT_TRUE(Home.Lines.empty());
}

TEST_F(DrillHeadFile, OneThatCannotBeReadIsNoEmptyHead)
{
    std::filesystem::create_directory(Home.Folder / "DT.Par");
    try {
        LoadDrillHead();
        ADD_FAILURE() << "taken for an empty head";
    } catch (const RunError& error) {
        EXPECT_TRUE(error.Cause.ends_with("DT.Par: is a folder")) << error.Cause;
    }
}

TEST_F(DrillHeadFile, AnyBytesGiveSomeHead)
{
    std::string bytes;
    for (int i = 0; i < 40000; ++i)
        bytes += static_cast<char>((i * 7919 + i / 251) % 256);
    Load(bytes);
    Load(std::string(70000, '\0'));
    EXPECT_EQ(Drills(), 1U);
    EXPECT_EQ(DrillHead[1].Kind, 0);
    Load("");
    EXPECT_EQ(Drills(), 0U);
}

TEST_F(DrillHeadFile, AFileOf50MegabytesIsReadByItsHead)
{
    const std::string line = DrillLine("32");
    std::string text;
    while (text.size() < 50'000'000)
        text += line;
    Load(text);
    EXPECT_EQ(DrillHead[99].X, 32);
    EXPECT_LE(Drills(), (std::size_t{1} << 20) / line.size() + 1);
    Load(std::string(50'000'000, 'x'));
    EXPECT_EQ(Drills(), 1U);
}

// Rows

TEST_F(DrillHeadFile, Drills29ApartInXStandInARowAlongY)
{
    EXPECT_EQ(RowsOf({"100", "102.9", "200", "300"}), (HeadRows{-1, -1, 1, 1}));
}

TEST_F(DrillHeadFile, Drills3ApartInXStandInARowAlongX)
{
    EXPECT_EQ(RowsOf({"100", "103", "200"}), (HeadRows{1, 1, 1}));
}

TEST_F(DrillHeadFile, AYPairBeforeAnXRow)
{
    EXPECT_EQ(RowsOf({"32", "32", "64", "96"}), (HeadRows{-1, -1, 1, 1}));
    // A row's first drill joins the pair when it is within 3 mm of the pair's second drill.
    EXPECT_EQ(RowsOf({"32", "32", "34.9", "96"}), (HeadRows{-1, -1, -1, 1}));
}

TEST_F(DrillHeadFile, TheLastDrillIsComparedWithTheEmptySlotBehindIt)
{
    EXPECT_EQ(RowsOf({"64", "2.5"}), (HeadRows{1, -1}));
    EXPECT_EQ(RowsOf({"64", "3"}), (HeadRows{1, 1}));
    EXPECT_EQ(DrillHead[3].Row, 0);
}

TEST_F(DrillHeadFile, ThroughDrillsDrillRowsAndOtherToolsDoNot)
{
    for (const char* const kind : {"HORIZONTAL DRILL", "GROOVE", "ROUTER", "NOT USED"}) {
        Load(DrillLine("32", "THROUGH DRILL") + DrillLine("64", kind) + DrillLine("96"));
        EXPECT_EQ(DrillHead[1].Row, 1) << kind;
        EXPECT_EQ(DrillHead[2].Row, 0) << kind;
        EXPECT_EQ(DrillHead[3].Row, 1) << kind;
    }
}

TEST_F(DrillHeadFile, ARouterBesideADrillLosesThePairsRowAtItsOwnTurn)
{
    Load(DrillLine("32") + DrillLine("33", "ROUTER") + DrillLine("96"));
    EXPECT_EQ(DrillHead[1].Row, -1); // the pair's left drill keeps it
    EXPECT_EQ(DrillHead[2].Row, 0);
    EXPECT_EQ(DrillHead[3].Row, 1);
}

TEST_F(DrillHeadFile, Slot27IsNeverExamined)
{
    std::string text;
    for (int n = 1; n <= 26; ++n)
        text += DrillLine(std::to_string(32 * n));
    Load(text + DrillLine("2000", "ROUTER") + DrillLine("3000"));
    EXPECT_EQ(DrillHead[27].Row, 1); // a router that stands in a row
    EXPECT_EQ(DrillHead[28].Row, 0); // a drill behind the classified slots
    Load(text + DrillLine("833", "ROUTER"));
    EXPECT_EQ(DrillHead[26].Row, -1); // 832
    EXPECT_EQ(DrillHead[27].Row, -1); // from its pair with slot 26
    Load(DrillLine("32"));
    EXPECT_EQ(DrillHead[26].Row, 0);
    EXPECT_EQ(DrillHead[27].Row, 1); // empty
}

TEST_F(DrillHeadFile, DiametersMatchWithin02)
{
    HeadDrill drill;
    drill.Diameter = 8;
    EXPECT_TRUE(HasDiameter(drill, 8.19));
    EXPECT_FALSE(HasDiameter(drill, 8.21));
    EXPECT_TRUE(HasDiameter(drill, 7.81));
    EXPECT_FALSE(HasDiameter(drill, 7.79));
    drill.Diameter = 0;
    EXPECT_FALSE(HasDiameter(drill, 0.2)); // strictly less
}

} // namespace
} // namespace kv
