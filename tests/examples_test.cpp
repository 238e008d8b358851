// The drawings of examples/ through the whole conversion, against programs that were worked out from
// the rules before any converter ran on them. Each test has its own copy of the example installation
// in a folder named SORG, so that shop notes find their place beside it.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "job/job_driver.h"
#include "platform/clock.h"
#include "platform/paths.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/index_row.h"
#include "support/source_files.h"
#include "writers/program_writers.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using test::FileBytes;
using test::SourceFolder;

std::vector<std::string> Rows;

class Examples : public testing::Test {
  protected:
    void SetUp() override
    {
        const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
        Root = fs::temp_directory_path() / (std::string("kvexamples-") + test.name());
        fs::remove_all(Root);
        fs::create_directories(Root);
        fs::copy(SourceFolder / "examples" / "install", Root / "SORG");

        FolderBefore = ExeFolder;
        SetExeFolder(FromHostPath((Root / "SORG").string()));
        Config = Settings{};
        ExchangeSettings(false);
        LoadOtherKeys();
        LoadToolSubstitutions();
        LoadCutListSettings();
        Config.DestinationPath90 = WithBackslash(FromHostPath((Root / "SORG").string()));
        Config.PTSPath = WithBackslash(FromHostPath(Root.string()));

        ForgetEarlierDrawings();
        Clock.SecondsSinceMidnight = [] { return 3600.0; };
        Clock.TodayMmDdYy = [] { return std::string("03/09/24"); };
        Rows.clear();
        Report.ShowRow = [](const ReportRow& row) { Rows.push_back(row.Text); };
    }

    void TearDown() override
    {
        Report = {};
        Clock = {};
        ForgetEarlierDrawings();
        Config = Settings{};
        SetExeFolder(FolderBefore);
        fs::remove_all(Root);
    }

    static void ForgetEarlierDrawings()
    {
        ReleaseRunArrays();
        kv::Run = {};
        ResetWriters();
    }

    void Convert(const std::string& name)
    {
        std::string jobLine =
            FromHostPath((SourceFolder / "examples" / "drawings" / (name + ".dxf")).string());
        ProcessDrawingFile(jobLine);
        ReportMessage(2, "");
        EXPECT_EQ(kv::Run.RunFailed, False) << name;
    }

    void ExpectProgram(const std::string& name, const fs::path& place)
    {
        Convert(name);
        const std::string expected =
            FileBytes(SourceFolder / "tests" / "data" / "examples" / (name + ".expected"));
        ASSERT_FALSE(expected.empty());
        EXPECT_EQ(FileBytes(Root / "SORG" / place), expected);
    }

    fs::path Root;

  private:
    std::string FolderBefore;
};

const std::string ClosingRow =
    "---------------------------------------***------------------------------------";

TEST_F(Examples, DoorWithHingeCups)
{
    ExpectProgram("door", "SRG/D/OOR");
    const std::vector<std::string> rows = {
        "door",
        "Layer DRILLING_Z20: the bore at X606 Y340 goes 1 mm through the panel of 19 mm",
        "Layer DRILLING_Z20: the bore at X606 Y468 goes 1 mm through the panel of 19 mm",
        "Processed in 0 Sec.",
        "CNC90/WINNER90",
        "CONVERSION COMPLETED.  11 Lines",
        ClosingRow};
    EXPECT_EQ(Rows, rows);
}

TEST_F(Examples, SideWithTwoRowsAndGrooves)
{
    ExpectProgram("side", "SRG/S/IDE");
    const std::vector<std::string> rows = {"side",
                                           "Descr: SIDE LEFT OAK",
                                           "Processed in 0 Sec.",
                                           "CNC90/WINNER90",
                                           "CONVERSION COMPLETED.  52 Lines",
                                           ClosingRow};
    EXPECT_EQ(Rows, rows);
}

TEST_F(Examples, BottomWithBoresThatFaceItsEdges)
{
    ExpectProgram("bottom", "SRG/B/OTTOM");
}

TEST_F(Examples, BottomWithBoresInEdgeViews)
{
    ExpectProgram("bottom_views", "SRG/B/OTTOM_VI.EWS");
}

TEST_F(Examples, DrawerFrontWithTextsAndInstructions)
{
    ExpectProgram("drawer_front", "SRG/D/F597");
    EXPECT_EQ(FileBytes(Root / "NOTE/NOC/D/F597"),
              "\r\nCHECK THE GRAIN DIRECTION\r\nHANDLE BORES FROM THE FRONT\r\n");
    EXPECT_EQ(FileBytes(Root / "CUTLIST.PTS"),
              "2.00, 1,M\r\n"
              "\"DF597\",176,597,2,\"OAK 19\",\"DRAWER FRONT WALNUT 597X176\",12\r\n");
    ASSERT_EQ(Rows.size(), 10U);
    EXPECT_EQ(Rows[0], "drawer_front");
    EXPECT_EQ(Rows[1], "USING \"DF597\" FOR THE PART NAME");
    EXPECT_EQ(Rows[2], "Descr: DRAWER FRONT WALNUT 597X176");
    EXPECT_EQ(Rows[3], "Layer HOLES5: the bore at X434.5 Y188 goes 3 mm through the panel of 19 mm");
    EXPECT_EQ(Rows[4], "Layer HOLES5: the bore at X562.5 Y188 goes 3 mm through the panel of 19 mm");
    EXPECT_EQ(Rows[5], "Processed in 0 Sec.");
    EXPECT_EQ(Rows[6], "CNC90/WINNER90");
    EXPECT_EQ(Rows[7], "CONVERSION COMPLETED.  13 Lines");
    EXPECT_EQ(Rows[8], ClosingRow);
    EXPECT_EQ(Rows[9].substr(0, 14), "Entry to PTS: ");
}

TEST_F(Examples, DrawerFrontTwiceMakesTwoRowsInTheCutList)
{
    Convert("drawer_front");
    Convert("drawer_front");
    const std::string row = "\"DF597\",176,597,2,\"OAK 19\",\"DRAWER FRONT WALNUT 597X176\",12\r\n";
    EXPECT_EQ(FileBytes(Root / "CUTLIST.PTS"), "2.00, 2,M\r\n" + row + row);
}

TEST_F(Examples, ShelfGivenByAPanelSolid)
{
    ExpectProgram("panel_solid", "SRG/P/ANEL_SOL.ID");
}

TEST_F(Examples, InchPanel)
{
    ExpectProgram("inch", "SRG/I/NCH");
}

// The start mark of the rectangular pocket is a polyline on a pocket's layer; it is told of, and taken.
// Its last turns, in the middle, are narrower than the tool of 12.
TEST_F(Examples, RoutedDoorWithProfileAndPockets)
{
    ExpectProgram("routed_door", "SRG/R/OUTED_DO.OR");
    const std::vector<std::string> rows = {
        "routed_door",
        "Layer DRILLING_Z20: the bore at X606 Y340 goes 1 mm through the panel of 19 mm",
        "Layer DRILLING_Z20: the bore at X606 Y468 goes 1 mm through the panel of 19 mm",
        "Explode Polylines for Excavation.",
        "Layer ROUTE9_Z20_T71_R8_S18_F6000_FA3000_FD3000: the route at X348 Y40 goes 1 mm through the panel "
        "of 19 mm",
        "Layer EXCAV_K8_Z8_T103_R6_S18_F5000_FD1500: the pocket at X276 Y200 has ways that are narrower "
        "than its tool",
        "Processed in 0 Sec.",
        "CNC90/WINNER90",
        "CONVERSION COMPLETED.  102 Lines",
        ClosingRow};
    EXPECT_EQ(Rows, rows);
}

TEST_F(Examples, CountertopWithCutOutsInDepthPasses)
{
    ExpectProgram("countertop", "SRG/C/OUNTERTO.P");
}

TEST_F(Examples, NestedSheet)
{
    ExpectProgram("nested_sheet", "SRG/N/ESTED_SH.EET");
}

// 32 parts with one cut-out each are 64 routes. Feeds tell them apart: cut-outs run at 5000 and
// 2500, outlines at 6000 and 3000. A part that was cut out would not stay in its place.
TEST_F(Examples, NestedSheetFreesNoPartBeforeItsCutOuts)
{
    Convert("nested_sheet");
    std::istringstream program(FileBytes(Root / "SORG/SRG/N/ESTED_SH.EET"));
    std::vector<char> order; // a letter for each route, by its first feed
    bool opened = false;
    for (std::string line; std::getline(program, line);) {
        if (line.rfind("G88", 0) == 0) {
            EXPECT_FALSE(opened) << "a route without a move";
            opened = true;
        } else if (opened) {
            const bool inner =
                line.find("F5000") != std::string::npos || line.find("F2500") != std::string::npos;
            const bool outline =
                line.find("F6000") != std::string::npos || line.find("F3000") != std::string::npos;
            EXPECT_NE(inner, outline) << line;
            order.push_back(inner ? 'i' : 'o');
            opened = false;
        }
    }
    EXPECT_EQ(std::string(order.begin(), order.end()), std::string(32, 'i') + std::string(32, 'o'));
}

TEST_F(Examples, EdgesRoutedInTheirViews)
{
    ExpectProgram("edge_views", "SRG/E/DGE_VIEW.S");
}

// Bores in plan that no cross line ends are none.
TEST_F(Examples, PanelWithEdgeBoresDrawnAsLines)
{
    ExpectProgram("t_lines", "SRG/T/_LINES");
}

// Rows along X are G183, rows along Y an empty line and G184; a bore above a row and one below another
// ride along and have no line of their own.
TEST_F(Examples, SystemRowsForTheBoringHead)
{
    ExpectProgram("system_rows", "SRG/S/YSTEM_RO.WS");
}

// In the order of names, whatever the order of work. Sides and kind of a record also tell of the
// drawings before it: the sides of bottom stay for all that follow, its kind of work does not.
TEST_F(Examples, IndexOfAllInOneProcess)
{
    for (const char* const name :
         {"door", "side", "bottom", "bottom_views", "drawer_front", "panel_solid", "inch", "routed_door",
          "countertop", "nested_sheet", "edge_views", "t_lines", "system_rows"})
        Convert(name);
    const std::vector<index_row::Row> rows = {
        {"BOTTOM", "KORVANTI DXF IMPORT", 0, 'M', 568, 500, 19, 0x1F, 'N'},
        {"BOTTOM_VIEWS", "KORVANTI DXF IMPORT", 0, 'M', 568, 500, 19, 0x1F, 'N'},
        {"COUNTERTOP", "KORVANTI DXF IMPORT", 0, 'M', 2400, 600, 38, 0x1F, 's'},
        {"DF597", "DRAWER FRONT WALNUT 597X1", 8, 'M', 597, 176, 19, 0x1F, 's'},
        {"DOOR", "KORVANTI DXF IMPORT", 0, 'M', 596, 716, 19, 0x10, 'S'},
        {"EDGE_VIEWS", "KORVANTI DXF IMPORT", 0, 'M', 600, 400, 22, 0x1F, 's'},
        {"INCH", "KORVANTI DXF IMPORT", 0, 'I', 30, 20, 0.75F, 0x1F, 's'},
        {"NESTED_SHEET", "KORVANTI DXF IMPORT", 0, 'M', 2500, 1250, 18, 0x1F, 's'},
        {"PANEL_SOLID", "KORVANTI DXF IMPORT", 0, 'M', 800, 400, 16, 0x1F, 's'},
        {"ROUTED_DOOR", "KORVANTI DXF IMPORT", 0, 'M', 596, 716, 19, 0x1F, 's'},
        {"SIDE", "SIDE LEFT OAK", 0, 'M', 720, 560, 19, 0x10, 's'},
        {"SYSTEM_ROWS", "KORVANTI DXF IMPORT", 0, 'M', 1184, 560, 19, 0x1F, 's'},
        {"T_LINES", "KORVANTI DXF IMPORT", 0, 'M', 600, 400, 18, 0x1F, 'N'},
    };
    std::string expected;
    for (const index_row::Row& row : rows)
        expected += index_row::Bytes(row, "03/09/24");
    EXPECT_EQ(FileBytes(Root / "SORG" / "INDICE.PRG"), expected);
}

} // namespace
} // namespace kv
