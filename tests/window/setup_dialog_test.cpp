// Setup as a person works it: real widgets, a real KV90.INI and KVHBD.cfg.
#include "dialog_driver.h"

#include <QScreen>

#include "shell/setup_rules.h"

namespace kv {
namespace {

using SetupDialogForm = DialogTest;

// Rows of the grid that nobody filled.
std::string EmptyTools(int rows)
{
    std::string text;
    for (int i = 0; i < rows; ++i)
        text += "\t\t0\t0\r\n";
    return text;
}

TEST_F(SetupDialogForm, EveryControlOfTheTableStandsAsDesigned)
{
    LoadDialogs(Main);
    EXPECT_EQ(ExpectControls(*Main.findChild<QDialog*>(QStringLiteral("SetUp")), "SetUp"), 63);
}

TEST_F(SetupDialogForm, OpensOnTheFirstTabInTheMiddleWithTheTickOff)
{
    Start();
    Shell.Timer1 = true;
    InDialog(ShowSetup, [](QDialog& dialog) {
        EXPECT_FALSE(Shell.Timer1);
        EXPECT_EQ(Get<QTabWidget>(dialog, "SSTab1").currentIndex(), 0);
        EXPECT_TRUE(IsOn(dialog, "AS0")); // neither of the other two is
        EXPECT_TRUE(Get<QWidget>(dialog, "FlgDDSFrame").isVisible());
        const QRect screen = dialog.screen()->availableGeometry();
        EXPECT_NEAR(dialog.x() - screen.x(), screen.right() - dialog.geometry().right(), 2);
        EXPECT_NEAR(dialog.y() - screen.y(), screen.bottom() - dialog.geometry().bottom(), 2);
        Get<QTabWidget>(dialog, "SSTab1").setCurrentIndex(3);
        Click(dialog, "PrefCan");
    });
    EXPECT_TRUE(Shell.Timer1);
    InDialog(ShowSetup,
             [](QDialog& dialog) { EXPECT_EQ(Get<QTabWidget>(dialog, "SSTab1").currentIndex(), 0); });
}

TEST_F(SetupDialogForm, OkWritesEveryTabToTheFiles)
{
    Start();
    std::filesystem::create_directories(Folder / "dxf");
    InDialog(ShowSetup, [this](QDialog& dialog) {
        auto& tabs = Get<QTabWidget>(dialog, "SSTab1");
        Click(dialog, "FlgDDS(1)");
        Type(dialog, "DXFPath(1)", (Folder / "dxf").string());
        tabs.setCurrentIndex(1);
        Click(dialog, "AS2");
        Click(dialog, "GAAP");
        Type(dialog, "BLim", "7");
        Click(dialog, "GAMP");
        tabs.setCurrentIndex(2);
        Type(dialog, "PrcM", "4");
        Type(dialog, "PrcI", "5");
        Click(dialog, "MMode");
        Type(dialog, "GRDly", "1.5");
        Type(dialog, "SawKerf", "4.2");
        Type(dialog, "RadLim", "9000");
        Type(dialog, "SLim", "900");
        Click(dialog, "Tips");
        tabs.setCurrentIndex(3);
        Click(dialog, "PTSInch");
        Type(dialog, "PTSPath", "C:\\CUT\\");
        Type(dialog, "PTSName", "JOB");
        tabs.setCurrentIndex(4);
        Type(dialog, "HBDPath", "C:\\HBD\\");
        Type(dialog, "HBDVboreLim", "50");
        auto& grid = Get<GridEditor>(dialog, "HBDSpd");
        TypeCell(grid, 1, 1, "8.5");
        grid.setCurrentCell(1, 2);
        QTest::keyClick(&grid, Qt::Key_Space);
        Click(dialog, "PrefOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(GetConfigValue("SourcePathGen"), Sub("dxf") + "\\");
    EXPECT_EQ(GetConfigValue("Genesis"), "True");
    EXPECT_EQ(GetConfigValue("Winner90"), "False");
    EXPECT_EQ(GetConfigValue("AutoStartBatch"), "True");
    EXPECT_EQ(GetConfigValue("AutoStartTemp"), "False");
    EXPECT_EQ(GetConfigValue("GraphicAfterAuto"), "1");
    EXPECT_EQ(GetConfigValue("GraphicAfterMan"), "1");
    EXPECT_EQ(GetConfigValue("BatchLimit"), "7");
    EXPECT_EQ(GetConfigValue("PrecisionMetric"), "4");
    EXPECT_EQ(GetConfigValue("PrecisionInch"), "5");
    EXPECT_EQ(GetConfigValue("UnitMode"), "2");
    EXPECT_EQ(GetConfigValue("GraphicDelay"), "1.5");
    EXPECT_EQ(GetConfigValue("SawKerf"), "4.2");
    EXPECT_EQ(GetConfigValue("RadiusLimit"), "9000");
    EXPECT_EQ(GetConfigValue("LineLimit"), "900");
    EXPECT_EQ(GetConfigValue("TipsEnable"), "1");
    EXPECT_EQ(GetConfigValue("HBDDestinationPath"), "C:\\HBD\\");
    EXPECT_EQ(GetConfigValue("HBDVBoreLimit"), "50");
    EXPECT_EQ(GetIniValue("PTSDATA", "Unit"), "I");
    EXPECT_EQ(GetIniValue("PTSDATA", "Path"), "C:\\CUT\\");
    EXPECT_EQ(GetIniValue("PTSDATA", "Name"), "JOB");
    EXPECT_EQ(FileText("KVHBD.cfg"), "\t\t0\t0\r\n\t8.5\t1\t0\r\n" + EmptyTools(18));
}

TEST_F(SetupDialogForm, CancelBringsEverythingBackButThePtsFields)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\nPrecisionMetric=3\r\nUnitMode=1\r\nSawKerf=5\r\n"
                        "[PTSDATA]\r\nPath=C:\\OLD\\\r\nUnit=M\r\n");
    PutFile("KVHBD.cfg", "Vertical\t8\t0\t0\r\n");
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        Click(dialog, "FlgDDS(2)");
        Type(dialog, "PrcM", "7");
        Type(dialog, "SawKerf", "9");
        Click(dialog, "AMode");
        Click(dialog, "PTSInch");
        Type(dialog, "PTSPath", "C:\\NEW\\");
        TypeCell(Get<GridEditor>(dialog, "HBDSpd"), 0, 1, "99");
        Click(dialog, "PrefCan");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Config.PrecisionMetric, "3");
    EXPECT_EQ(kv::Run.ControlType, 0);
    InDialog(ShowSetup, [](QDialog& dialog) {
        EXPECT_TRUE(IsOn(dialog, "FlgDDS(0)"));
        EXPECT_EQ(TextOf(dialog, "PrcM"), "3");
        EXPECT_EQ(TextOf(dialog, "SawKerf"), "5");
        EXPECT_TRUE(IsOn(dialog, "IMode"));
        EXPECT_EQ(Get<GridEditor>(dialog, "HBDSpd").CellText(0, 1), "8");
        EXPECT_TRUE(IsOn(dialog, "PTSInch"));
        EXPECT_EQ(TextOf(dialog, "PTSPath"), ShownAsPath("C:\\NEW\\").toStdString());
    });
    EXPECT_EQ(GetIniValue("PTSDATA", "Path"), "C:\\OLD\\"); // on the screen only
}

TEST_F(SetupDialogForm, EscapeAndTheCloseBoxAreCancel)
{
    PutFile("KV90.INI", "[Configuration]\r\nPrecisionMetric=3\r\n");
    Start();
    Shell.Timer1 = true;
    InDialog(ShowSetup, [](QDialog& dialog) {
        Type(dialog, "PrcM", "7");
        EXPECT_EQ(Config.PrecisionMetric, "7");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(TextOf(dialog, "PrcM"), "3");
    });
    EXPECT_EQ(Config.PrecisionMetric, "3");
    InDialog(ShowSetup, [](QDialog& dialog) {
        Type(dialog, "PrcM", "8");
        dialog.close();
    });
    EXPECT_EQ(Config.PrecisionMetric, "3");
    EXPECT_TRUE(Shell.Timer1);
}

TEST_F(SetupDialogForm, SystemRadiosChangeTheVisiblePair)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\n");
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        for (int system : {1, 2, 0}) {
            Click(dialog, Indexed("FlgDDS", system).c_str());
            EXPECT_EQ(kv::Run.ControlType, system);
            for (int i = 0; i < ControlSystems; ++i) {
                EXPECT_EQ(Get<QWidget>(dialog, Indexed("DXFPath", i).c_str()).isVisible(), i == system);
                EXPECT_EQ(Get<QWidget>(dialog, Indexed("GCodePath", i).c_str()).isVisible(), i == system);
            }
        }
    });
}

TEST_F(SetupDialogForm, ArrowKeysChangeTheSystemToo)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\n");
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        auto& radio = Get<QRadioButton>(dialog, "FlgDDS(0)");
        radio.setFocus();
        QTest::keyClick(&radio, Qt::Key_Down);
        EXPECT_TRUE(IsOn(dialog, "FlgDDS(1)"));
        EXPECT_TRUE(Config.Genesis);
        EXPECT_TRUE(Get<QWidget>(dialog, "DXFPath(1)").isVisible());
    });
}

TEST_F(SetupDialogForm, EvolutionClearsTheGraphicBoxesAndTheyComeBackUnchecked)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\nAutoStartBatch=True\r\nGraphicAfterAuto="
                        "1\r\nGraphicAfterMan=1\r\n");
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        auto& tabs = Get<QTabWidget>(dialog, "SSTab1");
        tabs.setCurrentIndex(1);
        EXPECT_TRUE(IsOn(dialog, "GAAP"));
        EXPECT_TRUE(IsOn(dialog, "GAMP"));
        tabs.setCurrentIndex(0);
        Click(dialog, "FlgDDS(2)");
        tabs.setCurrentIndex(1);
        EXPECT_FALSE(Get<QWidget>(dialog, "GAAP").isVisible());
        EXPECT_FALSE(Get<QWidget>(dialog, "GAMP").isVisible());
        tabs.setCurrentIndex(0);
        Click(dialog, "FlgDDS(1)");
        tabs.setCurrentIndex(1);
        EXPECT_TRUE(Get<QWidget>(dialog, "GAAP").isVisible());
        EXPECT_FALSE(IsOn(dialog, "GAAP"));
        EXPECT_FALSE(IsOn(dialog, "GAMP"));
        EXPECT_EQ(Config.GraphicAfterAuto, 0);
    });
}

TEST_F(SetupDialogForm, AutoStartRadiosSwitchTheGraphicControls)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\nBatchLimit=6\r\n");
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        Get<QTabWidget>(dialog, "SSTab1").setCurrentIndex(1);
        const auto enabled = [&](const char* name) { return Get<QWidget>(dialog, name).isEnabled(); };
        EXPECT_FALSE(enabled("GAAP") || enabled("PFM") || enabled("BLim") || enabled("LblBlim"));
        Click(dialog, "AS1"); // the limit is stored all the same
        EXPECT_TRUE(enabled("GAAP") && enabled("PFM"));
        EXPECT_FALSE(enabled("BLim") || enabled("LblBlim"));
        Click(dialog, "AS2");
        EXPECT_TRUE(enabled("GAAP") && enabled("PFM") && enabled("BLim") && enabled("LblBlim"));
        Click(dialog, "AS1");
        Click(dialog, "PrefOK");
    });
    EXPECT_EQ(GetConfigValue("BatchLimit"), "6");
    EXPECT_EQ(GetConfigValue("AutoStartTemp"), "True");
}

TEST_F(SetupDialogForm, MissingFolderIsMadeOnYes)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\n");
    Start();
    Answers.Yes = true;
    InDialog(ShowSetup, [this](QDialog& dialog) {
        Type(dialog, "DXFPath(0)", (Folder / "new").string());
        QTest::keyClick(&dialog, Qt::Key_Tab);
        QTest::qWait(60);
        EXPECT_EQ(TextOf(dialog, "DXFPath(0)"), (Folder / "new").string() + "/");
    });
    ASSERT_EQ(Answers.Questions.size(), 1u);
    EXPECT_NE(Answers.Questions[0].find("\nPath Does Not Exist.\nDo You Wish to Create Path?"),
              std::string::npos);
    EXPECT_TRUE(std::filesystem::is_directory(Folder / "new"));
}

TEST_F(SetupDialogForm, RefusedFolderStaysInTheField)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\n");
    Start();
    InDialog(ShowSetup, [this](QDialog& dialog) {
        Type(dialog, "GCodePath(0)", (Folder / "new").string());
        Get<QWidget>(dialog, "SPB2").setFocus(Qt::TabFocusReason);
        QTest::qWait(60);
        EXPECT_EQ(TextOf(dialog, "GCodePath(0)"), (Folder / "new").string() + "/");
        EXPECT_EQ(Answers.Questions.size(), 1u);
        Click(dialog, "PrefOK");
    });
    EXPECT_FALSE(std::filesystem::exists(Folder / "new"));
    EXPECT_EQ(GetConfigValue("DestinationPath90"), Sub("new") + "\\");
}

TEST_F(SetupDialogForm, FieldIsLookedAfterWithoutAnEditToo)
{
    Config = Settings{};
    Start();
    Config.Winner90 = true;
    Config.SourcePath90 = Sub("gone");
    InDialog(ShowSetup, [this](QDialog& dialog) {
        Get<QWidget>(dialog, "DXFPath(0)").setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::qWait(60);
        EXPECT_EQ(Answers.Questions.size(), 1u);
        EXPECT_EQ(Config.SourcePath90, Sub("gone") + "\\");
    });
}

TEST_F(SetupDialogForm, EnterCompletesAPathField)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\n");
    Start();
    std::filesystem::create_directories(Folder / "dxf");
    InDialog(ShowSetup, [this](QDialog& dialog) {
        Type(dialog, "DXFPath(0)", "  " + (Folder / "dxf").string() + "  ");
        QTest::keyClick(&Get<QLineEdit>(dialog, "DXFPath(0)"), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(Answers.Questions.empty());
    EXPECT_EQ(GetConfigValue("SourcePath90"), Sub("dxf") + "\\");
}

TEST_F(SetupDialogForm, ButtonClickedFromAPathFieldIsNotLost)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\n");
    Start();
    InDialog(ShowSetup, [this](QDialog& dialog) {
        Type(dialog, "DXFPath(0)", (Folder / "no").string());
        Click(dialog, "PrefOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Answers.Questions.size(), 1u); // once, though the field was left and the dialog closed
}

TEST_F(SetupDialogForm, BrowseButtonsOpenTheirBrowser)
{
    PutFile("KV90.INI", "[Configuration]\r\nGenesis=True\r\n");
    Start();
    std::filesystem::create_directories(Folder / "old");
    Config.SourcePathGen = Sub("old") + "\\";
    Config.DestinationPathGen = Config.SourcePathGen;
    struct Row {
        const char *Button, *Field, *Prompt;
        std::string* Setting;
    };
    const Row rows[] = {
        {"SPB1", "DXFPath(1)", "Select source path for DXF files.", &Config.SourcePathGen},
        {"SPB2", "GCodePath(1)", "Select destination path for program files.", &Config.DestinationPathGen},
        {"SPBhbd", "HBDPath", "Select destination path for HBD program files.", &Config.HBDDestinationPath}};
    InDialog(ShowSetup, [&](QDialog& dialog) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.Button);
            if (std::string_view(row.Button) == "SPBhbd")
                Get<QTabWidget>(dialog, "SSTab1").setCurrentIndex(4);
            const std::string before = TextOf(dialog, row.Field);
            Answers.Folder.clear();
            Click(dialog, row.Button);
            EXPECT_EQ(Answers.BrowserTitle.toStdString(), "Path Browser");
            EXPECT_EQ(Answers.BrowserPrompt.toStdString(), row.Prompt);
            EXPECT_EQ(Answers.BrowserStart.toStdString(), before);
            EXPECT_EQ(TextOf(dialog, row.Field), before); // cancelled
            Answers.Folder = QString::fromStdString((Folder / "chosen").string());
            Click(dialog, row.Button);
            EXPECT_EQ(TextOf(dialog, row.Field), (Folder / "chosen").string() + "/");
            EXPECT_EQ(*row.Setting, Sub("chosen") + "\\");
        }
    });
}

TEST_F(SetupDialogForm, TipsComeAndGoAtOnce)
{
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        Get<QTabWidget>(dialog, "SSTab1").setCurrentIndex(2);
        EXPECT_TRUE(Get<QWidget>(dialog, "AS0").toolTip().isEmpty());
        Click(dialog, "Tips");
        EXPECT_EQ(Get<QWidget>(dialog, "AS0").toolTip().toStdString(),
                  "If this button is selected Korvanti will not autostart.");
        EXPECT_EQ(Get<QWidget>(dialog, "DXFPath(2)").toolTip().toStdString(),
                  "Path to DXF files for Evolution. Also, location of KV.PNX\nList File.");
        Click(dialog, "Tips");
        EXPECT_TRUE(Get<QWidget>(dialog, "AS0").toolTip().isEmpty());
        Click(dialog, "Tips");
    });
    // Cancelled: the setting is off again, and so are the tips.
    InDialog(ShowSetup, [](QDialog& dialog) {
        EXPECT_FALSE(IsOn(dialog, "Tips"));
        EXPECT_TRUE(Get<QWidget>(dialog, "AS0").toolTip().isEmpty());
    });
}

TEST_F(SetupDialogForm, UnknownUnitModeLeavesAutomatic)
{
    PutFile("KV90.INI", "[Configuration]\r\nUnitMode=9\r\n");
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) { EXPECT_TRUE(IsOn(dialog, "AMode")); });
}

TEST_F(SetupDialogForm, FreshInstallationShowsNoSystemAndThePlainValues)
{
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        EXPECT_FALSE(IsOn(dialog, "FlgDDS(0)") || IsOn(dialog, "FlgDDS(1)") || IsOn(dialog, "FlgDDS(2)"));
        EXPECT_EQ(TextOf(dialog, "DXFPath(0)"), "");
        EXPECT_EQ(TextOf(dialog, "SawKerf"), "3");
        EXPECT_EQ(TextOf(dialog, "PrcM"), "2");
        EXPECT_EQ(TextOf(dialog, "PrcI"), "3");
        EXPECT_EQ(TextOf(dialog, "SLim"), "600");
        EXPECT_EQ(TextOf(dialog, "GRDly"), ".5");
        EXPECT_EQ(TextOf(dialog, "HBDPath"), ShownAsPath("C:\\Albatros\\Product\\").toStdString());
    });
}

TEST_F(SetupDialogForm, GridShowsDesignedEmptyRowsNumberedAsTools)
{
    PutFile("KVHBD.cfg", "Horizontal\t8\t1\t0\r\nGroove\t120\t0\t1\r\n");
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        auto& grid = Get<GridEditor>(dialog, "HBDSpd");
        EXPECT_EQ(grid.rowCount(), 20);
        EXPECT_EQ(grid.model()->headerData(1, Qt::Vertical).toInt(), 2);
        EXPECT_EQ(grid.CellText(1, 0), "Groove");
        EXPECT_EQ(grid.CellText(1, 3), "1");
        EXPECT_EQ(grid.CellText(2, 0), "");
        Click(dialog, "PrefOK");
    });
    EXPECT_EQ(FileText("KVHBD.cfg"), "Horizontal\t8\t1\t0\r\nGroove\t120\t0\t1\r\n" + EmptyTools(18));
}

TEST_F(SetupDialogForm, NothingIsCutOnAnyTabAtAnyFont)
{
    for (const double factor : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(factor);
        ScaleFont(factor);
        PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\n");
        Start();
        InDialog(ShowSetup, [&](QDialog& dialog) {
            if (factor == 1.0) {
                EXPECT_LE(dialog.sizeHint().width(), 1000);
                EXPECT_LE(dialog.sizeHint().height(), 700); // the task bar and the title take the rest
            }
            auto& tabs = Get<QTabWidget>(dialog, "SSTab1");
            for (int tab = 0; tab < tabs.count(); ++tab) {
                SCOPED_TRACE(tab);
                tabs.setCurrentIndex(tab);
                EXPECT_GT(ExpectUncut(dialog), 5);
            }
        });
    }
}

TEST_F(SetupDialogForm, TabKeyReachesEveryControl)
{
    PutFile("KV90.INI", "[Configuration]\r\nWinner90=True\r\nAutoStartBatch=True\r\n");
    Start();
    InDialog(ShowSetup, [](QDialog& dialog) {
        auto& tabs = Get<QTabWidget>(dialog, "SSTab1");
        for (int tab = 0; tab < tabs.count(); ++tab) {
            SCOPED_TRACE(tab);
            tabs.setCurrentIndex(tab);
            tabs.setFocus();
            EXPECT_GE(ExpectTabReachesAll(dialog), 5);
        }
    });
}

// OK lets events run before it is through.
TEST_F(SetupDialogForm, APressOfSetupWhileItClosesOpensNothing)
{
    Start();
    Shell.Timer1 = true;
    static int presses;
    presses = 0;
    InDialog(ShowSetup, [](QDialog& dialog) {
        Events.Pump = [] {
            if (++presses == 1)
                ShowSetup();
        };
        Click(dialog, "PrefOK");
        Events.Pump = nullptr;
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_GE(presses, 1);
    EXPECT_TRUE(Shell.Timer1);
}

TEST_F(SetupDialogForm, OpensEachTimeAsWideAsItsPathsNeed)
{
    Start();
    int first = 0;
    for (int time = 0; time < 3; ++time) {
        InDialog(ShowSetup, [&first, time](QDialog& dialog) {
            const auto& path = Get<QLineEdit>(dialog, "DXFPath(0)");
            EXPECT_GE(path.width(), 52 * path.fontMetrics().averageCharWidth());
            EXPECT_LT(dialog.width(), 2 * path.width()); // and no field that is not in sight counts
            if (time == 0)
                first = dialog.width();
            EXPECT_EQ(dialog.width(), first) << time;
            Click(dialog, "PrefCan");
        });
    }
}

} // namespace
} // namespace kv
