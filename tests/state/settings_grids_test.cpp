// The grids' plain files: cells come back as they were, damaged files give whole rows.
#include "state/settings_grids.h"

#include <string>
#include <vector>

#include "state/settings_folder.h"

namespace kv {
namespace {

using GridFile = SettingsFolder;

GridCells Loaded(std::string_view fileName)
{
    GridCells cells;
    EXPECT_TRUE(LoadGrid(fileName, cells).Is != Presence::CannotTell);
    return cells;
}

GridCells LoadedTools()
{
    GridCells cells;
    EXPECT_TRUE(LoadHbdTools(cells).Is != Presence::CannotTell);
    return cells;
}

GridCells LoadedSorting()
{
    GridCells cells;
    EXPECT_TRUE(LoadSortOptions(cells).Is != Presence::CannotTell);
    return cells;
}

TEST_F(GridFile, IsOneLineARowWithTabsBetweenCells)
{
    EXPECT_TRUE(SaveGrid("KVHBD.cfg", {{"Horizontal", "8", "1", "0"}, {"Vertical", "5", "", "0"}}).Ok());
    EXPECT_EQ(FileText("KVHBD.cfg"), "Horizontal\t8\t1\t0\r\nVertical\t5\t\t0\r\n");
}

TEST_F(GridFile, CellsComeBackAsTheyWere)
{
    const GridCells cells = {{"Horizontal", " 8.50 ", "\xC4"}, {""}, {"", ""}, {"last"}};
    ASSERT_TRUE(SaveGrid("Grid.Dat", cells).Ok());
    EXPECT_EQ(Loaded("Grid.Dat"), cells);
}

TEST_F(GridFile, WithoutAFileThereAreNoRows)
{
    EXPECT_TRUE(Loaded("Grid.Dat").empty());
    PutFile("Grid.Dat", "");
    EXPECT_TRUE(Loaded("Grid.Dat").empty());
}

TEST_F(GridFile, LineEndsMayBeLfAloneAndTheLastOneMayBeMissing)
{
    PutFile("Grid.Dat", "a\tb\nc\td");
    const GridCells expected = {{"a", "b"}, {"c", "d"}};
    EXPECT_EQ(Loaded("Grid.Dat"), expected);
}

TEST_F(GridFile, TabsAndLineEndsInsideACellBecomeBlanks)
{
    ASSERT_TRUE(SaveGrid("Grid.Dat", {{"a\tb", "c\r\nd"}}).Ok());
    const GridCells expected = {{"a b", "c  d"}};
    EXPECT_EQ(Loaded("Grid.Dat"), expected);
}

TEST_F(GridFile, SaveTellsWhenItFailed)
{
    std::filesystem::create_directories(Folder / "Grid.Dat");
    EXPECT_FALSE(SaveGrid("Grid.Dat", {{"a"}}).Ok());
}

TEST_F(GridFile, OneThatCannotBeReadIsNoEmptyGrid)
{
    std::filesystem::create_directories(Folder / "Grid.Dat");
    GridCells cells = {{"old"}};
    const FileAnswer answer = LoadGrid("Grid.Dat", cells);
    EXPECT_TRUE(answer.Is == Presence::CannotTell);
    EXPECT_EQ(answer.Why.Cause, "is a folder");
    EXPECT_TRUE(cells.empty());
}

using HbdTools = SettingsFolder;

TEST_F(HbdTools, RowsAreTheFilesAndAsWideAsTheColumns)
{
    PutFile("KVHBD.cfg", "Horizontal\t8\t1\t1\r\nVertical\t5\r\n\r\nGroove\t4\t0\t0\tmore\r\n");
    const GridCells expected = {
        {"Horizontal", "8", "1", "1"},
        {"Vertical", "5", "0", "0"},
        {"", "", "0", "0"}, // an empty row is no tool, and keeps its row number
        {"Groove", "4", "0", "0"},
    };
    EXPECT_EQ(LoadedTools(), expected);
}

TEST_F(HbdTools, UnknownToolTypeIsNoTool)
{
    PutFile("KVHBD.cfg", "Diagonal\t8\t1\t1\r\n");
    EXPECT_EQ(LoadedTools().at(0).at(0), "");
}

TEST_F(HbdTools, WithoutAFileThereAreNone)
{
    EXPECT_TRUE(LoadedTools().empty());
}

using SortOptions = SettingsFolder;

const std::vector<std::string> DefaultFace = {"0", "0", "0", "0", "0", "0",    "-",
                                              "-", "-", "-", "-", "0", "X -->"};

TEST_F(SortOptions, WithoutAFileShowTheirDefaults)
{
    const GridCells cells = LoadedSorting();
    ASSERT_EQ(cells.size(), 6u);
    for (const std::vector<std::string>& face : cells)
        EXPECT_EQ(face, DefaultFace);
}

TEST_F(SortOptions, FacesOfTheFileStandInFrontOfDefaultOnes)
{
    PutFile("OptSettings.Dat", "1\t2\t3\t4\t5\t6\tHoles\tAngle Milllings\t-\tBlades\tInsertions\t1\tX <--\r\n"
                               "7\r\n");
    const GridCells cells = LoadedSorting();
    ASSERT_EQ(cells.size(), 6u);
    const std::vector<std::string> first = {
        "1", "2", "3", "4", "5", "6", "Holes", "Angle Milllings", "-", "Blades", "Insertions", "1", "X <--"};
    EXPECT_EQ(cells[0], first);
    std::vector<std::string> second = DefaultFace;
    second[0] = "7";
    EXPECT_EQ(cells[1], second);
    EXPECT_EQ(cells[5], DefaultFace);
}

TEST_F(SortOptions, RowsBehindTheSixthAreDropped)
{
    PutFile("OptSettings.Dat", "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n");
    const GridCells cells = LoadedSorting();
    ASSERT_EQ(cells.size(), 6u);
    EXPECT_EQ(cells[5][0], "6");
}

TEST_F(SortOptions, TextThatTheListDoesNotHaveTakesTheDefault)
{
    PutFile("OptSettings.Dat", "1\t2\t3\t4\t5\t6\tAngle Millings\t-\t-\t-\t-\t0\tup\r\n");
    const GridCells cells = LoadedSorting();
    EXPECT_EQ(cells[0][6], "-"); // only the spelling with three l is known
    EXPECT_EQ(cells[0][12], "X -->");
}

TEST_F(SortOptions, ThatAreSavedAreLoadedAgain)
{
    GridCells cells = LoadedSorting();
    cells[3][6] = "Millings";
    cells[3][12] = "X <--";
    ASSERT_TRUE(SaveGrid(SortOptionFile, cells).Ok());
    EXPECT_EQ(LoadedSorting(), cells);
}

TEST(GridColumns, AreTheScreensInTheirOrder)
{
    const auto headers = [](std::span<const GridColumn> columns) {
        std::vector<std::string_view> texts;
        for (const GridColumn& column : columns)
            texts.push_back(column.Header);
        return texts;
    };
    using Headers = std::vector<std::string_view>;
    EXPECT_EQ(headers(HbdToolColumns()), (Headers{"Tool Type", "Diameter", "Inserter", "Glue"}));
    EXPECT_EQ(headers(ToolSubstitutionColumns()), (Headers{"Enable", "Tool", "Substitute"}));
    EXPECT_EQ(headers(SortOptionColumns()),
              (Headers{"Face", "Face", "Face", "Face", "Face", "Face", "Workings", "Workings", "Workings",
                       "Workings", "Workings", "Unify Tool Changes", "Sorting"}));
}

TEST(GridColumns, ListItemsCountFromZero)
{
    const GridColumn workings = SortOptionColumns()[6];
    EXPECT_EQ(ListItem(workings, "-"), 0);
    EXPECT_EQ(ListItem(workings, "Holes"), 1);
    EXPECT_EQ(ListItem(workings, "Angle Milllings"), 3);
    EXPECT_EQ(ListItem(workings, "Insertions"), 5);
    EXPECT_EQ(ListItem(workings, "Sawing"), 0);
    EXPECT_EQ(ListItem(SortOptionColumns()[12], "X <--"), 1);
}

TEST(GridCellText, CountsFromOneAndIsEmptyOutside)
{
    const GridCells cells = {{"a", "b"}, {"c"}};
    EXPECT_EQ(GridCell(cells, 1, 2), "b");
    EXPECT_EQ(GridCell(cells, 2, 1), "c");
    EXPECT_EQ(GridCell(cells, 2, 2), "");
    EXPECT_EQ(GridCell(cells, 0, 1), "");
    EXPECT_EQ(GridCell(cells, 1, 0), "");
    EXPECT_EQ(GridCell(cells, 3, 1), "");
}

} // namespace
} // namespace kv
