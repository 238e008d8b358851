// Optimizer Settings: the sort mode and its second tab, the grid and its file.
#include "dialog_driver.h"

#include <QScreen>

#include "shell/setup_rules.h"

namespace kv {
namespace {

using OptSetDialogForm = DialogTest;

GridEditor& SortGrid(QDialog& dialog)
{
    return Get<GridEditor>(dialog, "GSortOpt");
}

TEST_F(OptSetDialogForm, EveryControlOfTheTableStandsAsDesigned)
{
    LoadDialogs(Main);
    auto& dialog = *Main.findChild<QDialog*>(QStringLiteral("OptSet"));
    EXPECT_EQ(ExpectControls(dialog, "OptSet"), 11);
    EXPECT_EQ(Get<QTabWidget>(dialog, "SSOptTab").currentIndex(), 0);
}

TEST_F(OptSetDialogForm, AnyRadioButGenericSortingTakesTheSecondTabAway)
{
    PutFile("KV90.INI", "[Configuration]\r\nEvOptSS=True\r\n");
    Start();
    InDialog(ShowOptSet, [](QDialog& dialog) {
        const auto& tabs = Get<QTabWidget>(dialog, "SSOptTab");
        EXPECT_TRUE(IsOn(dialog, "EVOpt(4)"));
        EXPECT_FALSE(tabs.isTabVisible(1));
        for (const int mode : {3, 0, 3, 1, 3, 2, 3, 4}) {
            Click(dialog, Indexed("EVOpt", mode).c_str());
            EXPECT_EQ(tabs.isTabVisible(1), mode == 3);
            EXPECT_EQ(EvolutionSort(), mode);
        }
        Click(dialog, "EVOpt(3)");
        Click(dialog, "btnCan");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(Config.EvOptGS); // the choice needs no OK
    EXPECT_FALSE(Config.EvOptSS);
    InDialog(ShowOptSet, [](QDialog& dialog) { EXPECT_TRUE(IsOn(dialog, "EVOpt(3)")); });
}

TEST_F(OptSetDialogForm, FreshInstallationHasNoModeOn)
{
    Start();
    InDialog(ShowOptSet, [](QDialog& dialog) {
        for (int mode = 0; mode < 5; ++mode)
            EXPECT_FALSE(IsOn(dialog, Indexed("EVOpt", mode).c_str()));
        EXPECT_FALSE(Get<QTabWidget>(dialog, "SSOptTab").isTabVisible(1));
    });
}

TEST_F(OptSetDialogForm, MissingFileShowsTheDefaults)
{
    Config.EvOptGS = true;
    LoadDialogs(Main);
    InDialog(ShowOptSet, [](QDialog& dialog) {
        const GridEditor& grid = SortGrid(dialog);
        EXPECT_EQ(grid.rowCount(), 6);
        EXPECT_EQ(grid.columnCount(), 13);
        EXPECT_EQ(grid.CellText(5, 0), "0");
        EXPECT_EQ(grid.CellText(5, 6), "-");
        EXPECT_EQ(grid.item(5, 11)->checkState(), Qt::Unchecked);
        EXPECT_EQ(grid.CellText(5, 12), "X -->");
    });
    EXPECT_FALSE(FileStands("OptSettings.Dat")); // looking at it writes nothing
}

TEST_F(OptSetDialogForm, OkSavesTheGridAndTheNextStartShowsIt)
{
    Config.EvOptGS = true;
    LoadDialogs(Main);
    InDialog(ShowOptSet, [](QDialog& dialog) {
        Get<QTabWidget>(dialog, "SSOptTab").setCurrentIndex(1);
        TypeCell(SortGrid(dialog), 0, 0, "3");
        SortGrid(dialog).setCurrentCell(0, 11);
        QTest::keyClick(&SortGrid(dialog), Qt::Key_Space);
        Click(dialog, "BtnOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(FileText("OptSettings.Dat").substr(0, FileText("OptSettings.Dat").find('\r')),
              "3\t0\t0\t0\t0\t0\t-\t-\t-\t-\t-\t1\tX -->");
    LoadDialogs(Main);
    InDialog(ShowOptSet, [](QDialog& dialog) {
        EXPECT_EQ(SortGrid(dialog).CellText(0, 0), "3");
        EXPECT_EQ(SortGrid(dialog).CellText(0, 11), "1");
    });
}

TEST_F(OptSetDialogForm, CancelledGridStaysOnTheScreenUntilTheNextStart)
{
    Config.EvOptGS = true;
    LoadDialogs(Main);
    InDialog(ShowOptSet, [](QDialog& dialog) {
        Get<QTabWidget>(dialog, "SSOptTab").setCurrentIndex(1);
        TypeCell(SortGrid(dialog), 1, 1, "4");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
    InDialog(ShowOptSet, [](QDialog& dialog) { EXPECT_EQ(SortGrid(dialog).CellText(1, 1), "4"); });
    EXPECT_FALSE(FileStands("OptSettings.Dat"));
    LoadDialogs(Main);
    InDialog(ShowOptSet, [](QDialog& dialog) { EXPECT_EQ(SortGrid(dialog).CellText(1, 1), "0"); });
}

TEST_F(OptSetDialogForm, IsAsWideAsToldButNeverWiderThanTheScreen)
{
    Start();
    InDialog(ShowOptSet, [](QDialog& dialog) {
        EXPECT_EQ(dialog.width(), std::min(833, dialog.screen()->availableGeometry().width()));
    });
}

TEST_F(OptSetDialogForm, NothingIsCutAndTheTabKeyReachesEveryControl)
{
    for (const double factor : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(factor);
        ScaleFont(factor);
        Config.EvOptGS = true;
        LoadDialogs(Main);
        InDialog(ShowOptSet, [](QDialog& dialog) {
            auto& tabs = Get<QTabWidget>(dialog, "SSOptTab");
            EXPECT_EQ(ExpectUncut(dialog), 7);
            EXPECT_EQ(ExpectTabReachesAll(dialog), 4);
            tabs.setCurrentIndex(1);
            EXPECT_EQ(ExpectUncut(dialog), 2);
            EXPECT_EQ(ExpectTabReachesAll(dialog), 4);
        });
    }
}

} // namespace
} // namespace kv
