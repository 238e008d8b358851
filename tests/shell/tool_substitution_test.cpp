// The Tool Substitution dialog without its toolkit, and what it leaves for the programs.
#include <gtest/gtest.h>

#include <string>

#include "shell/setup_rules.h"
#include "state/run.h"
#include "state/settings_folder.h"
#include "writers/tool_code.h"
#include "writers/writer_memory.h"

namespace kv {
namespace {

class ToolSubstitutionDialog : public SettingsFolder {
  protected:
    void SetUp() override
    {
        SettingsFolder::SetUp();
        Writers = {};
        kv::Run.ControlType = 2; // whose programs name tools by their plain numbers
        OpenToolSub();
    }
    void TearDown() override
    {
        Writers = {};
        kv::Run.ControlType = 0;
        SettingsFolder::TearDown();
    }
    static void SetRow(int row, const std::string& enabled, const std::string& tool, const std::string& by)
    {
        SetToolSubCell(row, 1, enabled);
        SetToolSubCell(row, 2, tool);
        SetToolSubCell(row, 3, by);
    }
};

TEST_F(ToolSubstitutionDialog, UnusedRowShowsZeroInAllCells)
{
    for (const int row : {1, 50, 100}) {
        for (int column = 1; column <= 3; ++column)
            EXPECT_EQ(ToolSubCell(row, column), "0") << row;
    }
}

TEST_F(ToolSubstitutionDialog, CellsOutsideTheGridAreEmptyAndTakeNothing)
{
    SetToolSubCell(0, 1, "7");
    SetToolSubCell(101, 1, "7");
    SetToolSubCell(1, 0, "7");
    SetToolSubCell(1, 4, "7");
    EXPECT_EQ(ToolSubCell(0, 1), "");
    EXPECT_EQ(ToolSubCell(101, 1), "");
    EXPECT_EQ(ToolSubCell(1, 0), "");
    EXPECT_EQ(ToolSubCell(1, 4), "");
    EXPECT_EQ(ToolSubCell(1, 1), "0");
}

TEST_F(ToolSubstitutionDialog, OkWritesRowOneUnderTheNumberZero)
{
    SetRow(1, "1", "12", "60");
    SetRow(100, "1", "13", "61");
    AcceptToolSub();
    EXPECT_EQ(GetIniValue("ToolSubData", "Enabled0"), "1");
    EXPECT_EQ(GetIniValue("ToolSubData", "Tool0"), "12");
    EXPECT_EQ(GetIniValue("ToolSubData", "ToolSub0"), "60");
    EXPECT_EQ(GetIniValue("ToolSubData", "Tool99"), "13");
    EXPECT_EQ(GetIniValue("ToolSubData", "Tool100"), "");
}

TEST_F(ToolSubstitutionDialog, NextOpeningReadsWhatOkWrote)
{
    SetRow(3, "1", "12", "60");
    AcceptToolSub();
    Config.ToolSubData.clear();
    OpenToolSub();
    EXPECT_EQ(ToolSubCell(3, 1), "1");
    EXPECT_EQ(ToolSubCell(3, 2), "12");
    EXPECT_EQ(ToolSubCell(3, 3), "60");
}

TEST_F(ToolSubstitutionDialog, CancelledEditsVanish)
{
    SetRow(1, "1", "12", "60");
    AcceptToolSub();
    SetRow(1, "1", "12", "99");
    SetRow(2, "1", "14", "99");
    CancelToolSub();
    EXPECT_EQ(ToolSubCell(1, 3), "60");
    EXPECT_EQ(ToolSubCell(2, 2), "0");
    OpenToolSub();
    EXPECT_EQ(ToolSubCell(1, 3), "60");
}

TEST_F(ToolSubstitutionDialog, CancelledEditReachesNoProgram)
{
    SetRow(1, "1", "12", "60");
    CancelToolSub();
    EXPECT_EQ(ToolCode(12), "12");
    EXPECT_FALSE(Writers.ToolSubstituted);
}

TEST_F(ToolSubstitutionDialog, FirstOfTwoEnabledRowsForAToolWins)
{
    SetRow(4, "1", "12", "60");
    SetRow(9, "1", "12", "61");
    EXPECT_EQ(ToolCode(12), "60");
    EXPECT_TRUE(Writers.ToolSubstituted);
}

TEST_F(ToolSubstitutionDialog, DisabledRowHasNoEffect)
{
    SetRow(1, "0", "12", "60");
    EXPECT_EQ(ToolCode(12), "12");
    EXPECT_FALSE(Writers.ToolSubstituted);
}

TEST_F(ToolSubstitutionDialog, ToolMappedToZeroGivesToolZero)
{
    SetRow(1, "1", "12", "0");
    EXPECT_EQ(ToolCode(12), "0");
    EXPECT_TRUE(Writers.ToolSubstituted);
}

TEST_F(ToolSubstitutionDialog, TableIsNotChained)
{
    SetRow(1, "1", "12", "13");
    SetRow(2, "1", "13", "14");
    EXPECT_EQ(ToolCode(12), "13");
}

} // namespace
} // namespace kv
