// The grid's cells by keyboard, mouse and clipboard.
#include "dialog_driver.h"

#include <QClipboard>

namespace kv {
namespace {

class GridEditorForm : public testing::Test {
  protected:
    void SetUp() override
    {
        Grid.resize(700, 400);
        Grid.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Grid));
        Grid.setFocus();
    }
    GridEditor Grid{"SetUp", "HBDSpd", HbdToolColumns(), 20};
};

TEST_F(GridEditorForm, ArrowsWalkAndF2Edits)
{
    Grid.setCurrentCell(0, 0);
    QTest::keyClick(&Grid, Qt::Key_Right);
    QTest::keyClick(&Grid, Qt::Key_Down);
    EXPECT_EQ(Grid.currentRow(), 1);
    EXPECT_EQ(Grid.currentColumn(), 1);
    TypeCell(Grid, 1, 1, "12.5");
    EXPECT_EQ(Grid.CellText(1, 1), "12.5");
}

TEST_F(GridEditorForm, EnterOpensANumberAndTypingReplacesIt)
{
    Grid.SetCellText(0, 1, "5");
    Grid.setCurrentCell(0, 1);
    QTest::keyClick(&Grid, Qt::Key_Return);
    ASSERT_NE(qobject_cast<QLineEdit*>(QApplication::focusWidget()), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(Grid.CellText(0, 1), "5");
    QTest::keyClick(&Grid, Qt::Key_9);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(Grid.CellText(0, 1), "9");
}

TEST_F(GridEditorForm, TabGoesOnToTheNextCellWhileEditing)
{
    Grid.setCurrentCell(0, 1);
    QTest::keyClick(&Grid, Qt::Key_F2);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("3"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Grid.CellText(0, 1), "3");
    EXPECT_EQ(Grid.currentColumn(), 2);
}

TEST_F(GridEditorForm, NumberTakesNoLetters)
{
    TypeCell(Grid, 0, 1, "1x2,-3.4");
    EXPECT_EQ(Grid.CellText(0, 1), "123.4");
}

TEST_F(GridEditorForm, SpaceAndAClickTickAFlag)
{
    Grid.setCurrentCell(0, 2);
    QTest::keyClick(&Grid, Qt::Key_Space);
    EXPECT_EQ(Grid.CellText(0, 2), "1");
    QTest::mouseClick(Grid.viewport(), Qt::LeftButton, {},
                      Grid.visualRect(Grid.model()->index(0, 2)).center());
    EXPECT_EQ(Grid.CellText(0, 2), "0");
    EXPECT_EQ(Grid.item(0, 2)->checkState(), Qt::Unchecked);
}

TEST_F(GridEditorForm, ListIsPickedWithKeys)
{
    Grid.setCurrentCell(0, 0);
    QTest::keyClick(&Grid, Qt::Key_F2);
    QApplication::processEvents();
    auto* list = Grid.findChild<QComboBox*>();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count(), 4); // the three and no entry
    ASSERT_TRUE(list->view()->isVisible());
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(Grid.CellText(0, 0), "Vertical");
}

TEST_F(GridEditorForm, DeleteBringsTheDefaultBack)
{
    Grid.ShowCells({{"Groove", "120", "1", "1"}});
    Grid.setRangeSelected(QTableWidgetSelectionRange(0, 0, 0, 3), true);
    QTest::keyClick(&Grid, Qt::Key_Delete);
    EXPECT_EQ(Grid.Cells()[0], (std::vector<std::string>{"", "", "0", "0"}));
}

TEST_F(GridEditorForm, CellsAreCopiedAndPasted)
{
    Grid.ShowCells({{"Groove", "120", "1", "0"}});
    Grid.setCurrentCell(0, 0);
    Grid.setRangeSelected(QTableWidgetSelectionRange(0, 0, 0, 3), true);
    QTest::keyClick(&Grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "Groove\t120\t1\t0");
    Grid.clearSelection();
    Grid.setCurrentCell(3, 0);
    QTest::keyClick(&Grid, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Grid.Cells()[3], (std::vector<std::string>{"Groove", "120", "1", "0"}));
    EXPECT_EQ(Grid.item(3, 2)->checkState(), Qt::Checked);
}

TEST_F(GridEditorForm, PastePassesOverWhatACellCannotHold)
{
    QApplication::clipboard()->setText(QStringLiteral("Saw\tten\t1\r\nVertical\t10\t0\r\n"));
    Grid.ShowCells({{"Groove", "120", "0", "0"}});
    Grid.setCurrentCell(0, 0);
    QTest::keyClick(&Grid, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Grid.Cells()[0], (std::vector<std::string>{"Groove", "120", "1", "0"}));
    EXPECT_EQ(Grid.Cells()[1], (std::vector<std::string>{"Vertical", "10", "0", "0"}));
}

TEST_F(GridEditorForm, FlagKeepsItsNumberUntilItIsTicked)
{
    Grid.ShowCells({{"Vertical", "8", "-1", "0"}});
    EXPECT_EQ(Grid.item(0, 2)->checkState(), Qt::Checked);
    EXPECT_EQ(Grid.Cells()[0][2], "-1");
    Grid.setCurrentCell(0, 2);
    QTest::keyClick(&Grid, Qt::Key_Space);
    QTest::keyClick(&Grid, Qt::Key_Space);
    EXPECT_EQ(Grid.Cells()[0][2], "1");
}

TEST_F(GridEditorForm, MoreRowsThanDesignedAreShown)
{
    Grid.ShowCells(GridCells(25, {"Vertical", "8", "0", "0"}));
    EXPECT_EQ(Grid.rowCount(), 25);
    Grid.ShowCells({});
    EXPECT_EQ(Grid.rowCount(), 20);
    EXPECT_EQ(Grid.CellText(0, 0), "");
}

} // namespace
} // namespace kv
