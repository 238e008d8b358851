// Setup without its toolkit: when settings are stored and loaded, what its controls switch, what OK and
// Cancel leave.
#include "shell/setup_rules.h"

#include <string>
#include <vector>

#include "platform/events.h"
#include "shell/control_tables.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings_folder.h"
#include "state/shell_state.h"

namespace kv {
namespace {

std::vector<std::string> Steps;
std::vector<std::string> ReportLines;

class SetupRules : public SettingsFolder {
  protected:
    void SetUp() override
    {
        SettingsFolder::SetUp();
        Shell = ShellState{};
        Shell.Timer1 = true;
        kv::Run.ControlType = 0;
        Steps.clear();
        ReportLines.clear();
        ShellWindow.Changed = [] { Steps.emplace_back(Shell.Timer1 ? "tick on" : "tick off"); };
        ShellWindow.Focus = [](FocusPlace place) {
            Steps.emplace_back(place == FocusPlace::List1 ? "focus List1" : "focus Start");
        };
        Events.Pump = [] { Steps.emplace_back("events"); };
        Tips.Install = [](bool on) { Steps.emplace_back(on ? "tips on" : "tips off"); };
        Report.ShowRow = [](const ReportRow& row) { ReportLines.push_back(row.Text); };
    }
    void TearDown() override
    {
        Shell = ShellState{};
        ShellWindow = {};
        Events = {};
        Tips = {};
        Report = {};
        kv::Run.ControlType = 0;
        SettingsFolder::TearDown();
    }
};

TEST_F(SetupRules, OpeningStopsTheTickAndStoresTheSettings)
{
    Config.SawKerf = "7";
    OpenSetup();
    EXPECT_FALSE(Shell.Timer1);
    EXPECT_EQ(Steps, std::vector<std::string>{"tick off"});
    EXPECT_EQ(GetConfigValue("SawKerf"), "7");
}

TEST_F(SetupRules, OpeningTakesTheControlSystemFromTheRadios)
{
    Config.Genesis = true;
    OpenSetup();
    EXPECT_EQ(kv::Run.ControlType, 1);
}

TEST_F(SetupRules, CancelUndoesEveryEditOfTheDialog)
{
    Config.SourcePath90 = "C:\\IN\\";
    Config.SawKerf = "7";
    Config.UnitMode = "2";
    Config.Genesis = true;
    OpenSetup();
    Config.SourcePath90 = "C:\\OTHER\\";
    Config.SawKerf = "9";
    Config.UnitMode = "1";
    ClickSystem(2);
    ClickAutoStart(1);
    CancelSetup();
    EXPECT_EQ(Config.SourcePath90, "C:\\IN\\");
    EXPECT_EQ(Config.SawKerf, "7");
    EXPECT_EQ(Config.UnitMode, "2");
    EXPECT_EQ(SelectedSystem(), 1);
    EXPECT_EQ(kv::Run.ControlType, 1);
    EXPECT_EQ(AutoStartRadio(), 0);
}

TEST_F(SetupRules, CancelBringsBackThePathOfAnEmptiedField)
{
    Config.SourcePath90 = "C:\\IN\\";
    OpenSetup();
    Config.SourcePath90 = "";
    AcceptSetup(nullptr); // a blank field does not erase the stored path
    OpenSetup();
    CancelSetup();
    EXPECT_EQ(Config.SourcePath90, "C:\\IN\\");
}

TEST_F(SetupRules, CancelLetsEventsRunAndGivesTheListTheFocus)
{
    OpenSetup();
    Steps.clear();
    CancelSetup();
    EXPECT_TRUE(Shell.Timer1);
    EXPECT_EQ(Steps, (std::vector<std::string>{"tips off", "tick on", "events", "focus List1"}));
}

TEST_F(SetupRules, CancelSetsTheTipsAsStored)
{
    Config.TipsEnable = 1;
    OpenSetup();
    Config.TipsEnable = 0;
    Steps.clear();
    CancelSetup();
    EXPECT_EQ(Steps.front(), "tips on");
}

TEST_F(SetupRules, CancelLeavesTheCutListFieldsAsEdited)
{
    Config.PTSPath = "C:\\PTS\\";
    Config.PTSName = "CUTS";
    OpenSetup();
    AcceptSetup(nullptr);
    OpenSetup();
    Config.PTSPath = "C:\\NEW\\";
    Config.PTSName = "OTHER";
    Config.PTSMetric = false;
    CancelSetup();
    EXPECT_EQ(Config.PTSPath, "C:\\NEW\\");
    EXPECT_EQ(Config.PTSName, "OTHER");
    EXPECT_FALSE(Config.PTSMetric);
    EXPECT_EQ(GetIniValue("PTSDATA", "Name"), "CUTS"); // not stored either
}

TEST_F(SetupRules, OkStoresTheSettingsAndTheCutListFields)
{
    OpenSetup();
    Config.SawKerf = "9";
    Config.UnitMode = "1";
    Config.PTSPath = "C:\\PTS\\";
    Config.PTSName = "CUTS";
    AcceptSetup(nullptr);
    EXPECT_EQ(GetConfigValue("SawKerf"), "9");
    EXPECT_EQ(GetConfigValue("UnitMode"), "1");
    EXPECT_EQ(GetIniValue("PTSDATA", "Path"), "C:\\PTS\\");
    EXPECT_EQ(GetIniValue("PTSDATA", "Name"), "CUTS");
    EXPECT_EQ(GetIniValue("PTSDATA", "Unit"), "M");
    Config.PTSMetric = false;
    AcceptSetup(nullptr);
    EXPECT_EQ(GetIniValue("PTSDATA", "Unit"), "I");
}

TEST_F(SetupRules, OkStartsTheTickLetsEventsRunAndGivesTheListTheFocus)
{
    OpenSetup();
    Steps.clear();
    AcceptSetup(nullptr);
    EXPECT_TRUE(Shell.Timer1);
    EXPECT_EQ(Steps, (std::vector<std::string>{"tick on", "events", "focus List1"}));
}

TEST_F(SetupRules, OkWithTheEvolutionClearsTheOptimizerBoxOfTheMainWindow)
{
    Config.OptimizerBox = true;
    Config.Optimizer = "1";
    OpenSetup();
    ClickSystem(2);
    AcceptSetup(nullptr);
    EXPECT_FALSE(Config.OptimizerBox);
    EXPECT_EQ(GetConfigValue("Optimizer"), "0");
}

TEST_F(SetupRules, TheToolTableIsStoredAsItStandsWithItsEmptyRows)
{
    const GridCells tools = {{"Horizontal", "8", "1", "1"},
                             {"", "", "0", "0"},
                             {"Vertical", "5", "0", "0"},
                             {"", "", "0", "0"},
                             {"", "", "", ""}};
    OpenSetup();
    AcceptSetup(&tools);
    EXPECT_EQ(FileText("KVHBD.cfg"),
              "Horizontal\t8\t1\t1\r\n\t\t0\t0\r\nVertical\t5\t0\t0\r\n\t\t0\t0\r\n\t\t\t\r\n");
    EXPECT_TRUE(ReportLines.empty());
}

TEST_F(SetupRules, ToolTableThatCannotBeSavedIsReported)
{
    std::filesystem::create_directory(Folder / "KVHBD.cfg");
    OpenSetup();
    const GridCells tools = {{"Vertical", "5", "0", "0"}};
    AcceptSetup(&tools);
    ASSERT_EQ(ReportLines.size(), 1U);
    EXPECT_EQ(ReportLines[0], "Unable to save " + (Folder / "KVHBD.cfg").string() + ": is a folder");
}

TEST_F(SetupRules, AToolTableThatCouldNotBeReadIsNotStored)
{
    PutFile("KVHBD.cfg", "Vertical\t5\t0\t0\r\n");
    OpenSetup();
    AcceptSetup(nullptr);
    EXPECT_EQ(FileText("KVHBD.cfg"), "Vertical\t5\t0\t0\r\n");
}

TEST_F(SetupRules, CancelKeepsTheStoredToolTable)
{
    PutFile("KVHBD.cfg", "Vertical\t5\t0\t0\r\n");
    OpenSetup();
    CancelSetup();
    EXPECT_EQ(FileText("KVHBD.cfg"), "Vertical\t5\t0\t0\r\n");
}

TEST_F(SetupRules, OnlyThePathsOfTheSelectedSystemShow)
{
    for (int system = 0; system < ControlSystems; ++system) {
        ClickSystem(system);
        std::array<bool, ControlSystems> expected{};
        expected[static_cast<std::size_t>(system)] = true;
        EXPECT_EQ(ViewOfSetup().PathShown, expected) << system;
        EXPECT_EQ(kv::Run.ControlType, system);
    }
}

TEST_F(SetupRules, ClickOnASystemLeavesOneWordOn)
{
    ClickSystem(1);
    EXPECT_FALSE(Config.Winner90);
    EXPECT_TRUE(Config.Genesis);
    EXPECT_FALSE(Config.GenesisEV);
    ClickSystem(0);
    EXPECT_TRUE(Config.Winner90);
    EXPECT_FALSE(Config.Genesis);
}

TEST_F(SetupRules, EvolutionClearsTheGraphicFlagsAndTheyComeBackUnchecked)
{
    ClickSystem(0);
    Config.GraphicAfterAuto = Config.GraphicAfterMan = 1;
    ASSERT_TRUE(ViewOfSetup().GraphicShown);
    ClickSystem(2);
    EXPECT_FALSE(ViewOfSetup().GraphicShown);
    EXPECT_EQ(Config.GraphicAfterAuto, 0);
    EXPECT_EQ(Config.GraphicAfterMan, 0);
    ClickSystem(1);
    EXPECT_TRUE(ViewOfSetup().GraphicShown);
    EXPECT_EQ(Config.GraphicAfterAuto, 0);
    EXPECT_EQ(Config.GraphicAfterMan, 0);
}

TEST_F(SetupRules, OtherSystemsKeepTheGraphicFlags)
{
    Config.GraphicAfterAuto = Config.GraphicAfterMan = 1;
    ClickSystem(1);
    EXPECT_EQ(Config.GraphicAfterAuto, 1);
    EXPECT_EQ(Config.GraphicAfterMan, 1);
}

TEST_F(SetupRules, NeitherAutoStartWordTurnsItOff)
{
    EXPECT_EQ(AutoStartRadio(), 0);
    const SetupView view = ViewOfSetup();
    EXPECT_FALSE(view.GaapEnabled);
    EXPECT_FALSE(view.PfmEnabled);
    EXPECT_FALSE(view.BLimEnabled);
}

TEST_F(SetupRules, AutoStartOnTempDisablesTheBatchLimitWhichIsStoredAllTheSame)
{
    ClickAutoStart(1);
    Config.BatchLimit = "12";
    const SetupView view = ViewOfSetup();
    EXPECT_TRUE(view.GaapEnabled);
    EXPECT_TRUE(view.PfmEnabled);
    EXPECT_FALSE(view.BLimEnabled);
    ExchangeSettings(true);
    EXPECT_EQ(GetConfigValue("BatchLimit"), "12");
    EXPECT_EQ(GetConfigValue("AutoStartTemp"), "True");
    EXPECT_EQ(GetConfigValue("AutoStartBatch"), "False");
}

TEST_F(SetupRules, AutoStartOnBatchEnablesTheBatchLimit)
{
    ClickAutoStart(1);
    ClickAutoStart(2);
    EXPECT_EQ(AutoStartRadio(), 2);
    EXPECT_FALSE(Config.AutoStartTemp);
    const SetupView view = ViewOfSetup();
    EXPECT_TRUE(view.GaapEnabled);
    EXPECT_TRUE(view.PfmEnabled);
    EXPECT_TRUE(view.BLimEnabled);
}

TEST_F(SetupRules, AutoStartOffClearsBothWords)
{
    ClickAutoStart(2);
    ClickAutoStart(0);
    EXPECT_FALSE(Config.AutoStartTemp);
    EXPECT_FALSE(Config.AutoStartBatch);
}

} // namespace
} // namespace kv
