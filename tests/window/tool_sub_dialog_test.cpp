// Tool Substitution with keys, over a real KV90.INI.
#include "dialog_driver.h"

#include "shell/setup_rules.h"

namespace kv {
namespace {

using ToolSubDialogForm = DialogTest;

TEST_F(ToolSubDialogForm, EveryControlOfTheTableStands)
{
    Start();
    InDialog(ShowToolSub, [](QDialog& dialog) {
        EXPECT_EQ(ExpectControls(dialog, "ToolSub"), 4);
        EXPECT_EQ(Get<GridEditor>(dialog, "ToolSubTbl").rowCount(), 100);
        EXPECT_EQ(Get<GridEditor>(dialog, "ToolSubTbl").columnCount(), 3);
    });
}

TEST_F(ToolSubDialogForm, UnusedRowsShowZero)
{
    Start();
    InDialog(ShowToolSub, [](QDialog& dialog) {
        auto& grid = Get<GridEditor>(dialog, "ToolSubTbl");
        for (int column = 0; column < 3; ++column)
            EXPECT_EQ(grid.CellText(99, column), "0");
    });
}

TEST_F(ToolSubDialogForm, OkWritesTheCellsToTheFile)
{
    Start();
    InDialog(ShowToolSub, [](QDialog& dialog) {
        auto& grid = Get<GridEditor>(dialog, "ToolSubTbl");
        grid.setCurrentCell(2, 0);
        QTest::keyClick(&grid, Qt::Key_Space);
        TypeCell(grid, 2, 1, "12");
        TypeCell(grid, 2, 2, "34");
        Click(dialog, "BtnOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(GetIniValue("ToolSubData", "Enabled2"), "1"); // row 1 has the number 0
    EXPECT_EQ(GetIniValue("ToolSubData", "Tool2"), "12");
    EXPECT_EQ(GetIniValue("ToolSubData", "ToolSub2"), "34");
    EXPECT_EQ(GetIniValue("ToolSubData", "Tool99"), "0");
    EXPECT_EQ(ToolSubCell(3, 3), "34");
}

TEST_F(ToolSubDialogForm, CellThatIsBeingEditedCountsAtOk)
{
    Start();
    InDialog(ShowToolSub, [](QDialog& dialog) {
        auto& grid = Get<GridEditor>(dialog, "ToolSubTbl");
        grid.setFocus();
        grid.setCurrentCell(0, 1);
        QTest::keyClick(&grid, Qt::Key_F2);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("77"));
        dialog.accept(); // as by Alt+O, which leaves the focus in the cell
    });
    EXPECT_EQ(GetIniValue("ToolSubData", "Tool0"), "77");
}

TEST_F(ToolSubDialogForm, CancelledEditsVanishAtTheNextOpening)
{
    PutFile("KV90.INI", "[ToolSubData]\r\nTool0=5\r\n");
    Start();
    InDialog(ShowToolSub, [](QDialog& dialog) {
        TypeCell(Get<GridEditor>(dialog, "ToolSubTbl"), 0, 1, "6");
        Click(dialog, "btnCan");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(ToolSubCell(1, 2), "5");
    InDialog(ShowToolSub,
             [](QDialog& dialog) { EXPECT_EQ(Get<GridEditor>(dialog, "ToolSubTbl").CellText(0, 1), "5"); });
}

TEST_F(ToolSubDialogForm, EveryOpeningReadsTheFileAgain)
{
    Start();
    PutFile("KV90.INI", "[ToolSubData]\r\nEnabled1=-1\r\nTool1=5.50\r\n");
    InDialog(ShowToolSub, [](QDialog& dialog) {
        auto& grid = Get<GridEditor>(dialog, "ToolSubTbl");
        EXPECT_EQ(grid.CellText(1, 1), "5.5");
        EXPECT_EQ(grid.item(1, 0)->checkState(), Qt::Checked); // any number but 0 is on
        EXPECT_EQ(grid.CellText(1, 0), "-1");
    });
}

TEST_F(ToolSubDialogForm, NothingIsCutAndTheTabKeyReachesEveryControl)
{
    for (const double factor : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(factor);
        ScaleFont(factor);
        Start();
        InDialog(ShowToolSub, [](QDialog& dialog) {
            EXPECT_EQ(ExpectUncut(dialog), 2);
            EXPECT_EQ(ExpectTabReachesAll(dialog), 3);
            const auto& grid = Get<GridEditor>(dialog, "ToolSubTbl");
            for (int column = 0; column < 3; ++column) {
                EXPECT_GE(grid.columnWidth(column),
                          grid.fontMetrics().horizontalAdvance(
                              grid.model()->headerData(column, Qt::Horizontal).toString()));
            }
        });
    }
}

} // namespace
} // namespace kv
