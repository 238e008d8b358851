// The Setup dialog without its toolkit: opening, OK and Cancel, and the controls that switch others.
// Relies on the settings, which are the dialog's controls; leaves them stored by OK, loaded again by
// Cancel, and the autostart tick off while the dialog is open.
#include "shell/setup_rules.h"

#include "platform/events.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/control_tables.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings_grids.h"
#include "state/settings_ini.h"
#include "state/shell_state.h"

namespace kv {

namespace {

enum AutoStartChoice { AutoStartOff, AutoStartOnTemp, AutoStartOnBatch };

void SwitchTimer1(bool on)
{
    Shell.Timer1 = on;
    ShellChanged();
}

// As they stand, the empty rows behind the last tool too: a tool on the last row of a table is found
// only where the table is full.
void SaveHbdTools(const GridCells& tools)
{
    const FileOutcome outcome = SaveGrid(HbdToolFile, tools);
    if (outcome.Ok())
        return;
    const std::string file = ShownPath(ExeFolder + std::string(HbdToolFile));
    TellAtOnce(Message::TableNotSaved, {{"file", file}, {"cause", outcome.Cause}});
}

void SaveCutListFields()
{
    PutIniValues(
        "PTSDATA",
        {{"Path", Config.PTSPath}, {"Name", Config.PTSName}, {"Unit", Config.PTSMetric ? "M" : "I"}});
}

} // namespace

// A file that could not be read again leaves what was edited in the settings, which are not stored then.
void TellIfNotWhole()
{
    if (!SettingsFault.Ok())
        TellAtOnce(Message::SettingsNotKept, UnkeptLine(SettingsFault).Values);
}

SetupView ViewOfSetup()
{
    SetupView view;
    const int automatic = AutoStartRadio();
    view.PathShown[static_cast<std::size_t>(SelectedSystem())] = true;
    view.GaapEnabled = automatic != AutoStartOff;
    view.PfmEnabled = automatic != AutoStartOff;
    view.BLimEnabled = automatic == AutoStartOnBatch;
    view.GraphicShown = SelectedSystem() != 2;
    return view;
}

void OpenSetup()
{
    SwitchTimer1(false);
    ExchangeSettings(true);
    Run.ControlType = SelectedSystem();
}

void AcceptSetup(const GridCells* hbdTools)
{
    ExchangeSettings(true);
    ApplySystemMode();
    SwitchTimer1(true);
    DoEvents();
    GiveFocus(FocusPlace::List1);
    SaveCutListFields();
    PutConfigValue("UnitMode", Config.UnitMode);
    if (hbdTools != nullptr)
        SaveHbdTools(*hbdTools);
    TellIfNotWhole();
}

void CancelSetup()
{
    ExchangeSettings(false);
    TellIfNotWhole();
    InstallCursorTips(Config.TipsEnable != 0);
    Run.ControlType = SelectedSystem();
    SwitchTimer1(true);
    DoEvents();
    GiveFocus(FocusPlace::List1);
}

void ClickAutoStart(int radio)
{
    Config.AutoStartTemp = radio == AutoStartOnTemp;
    Config.AutoStartBatch = radio == AutoStartOnBatch;
}

// Neither of the two stored words: off. A file can hold both; the one that is loaded last wins.
int AutoStartRadio()
{
    if (Config.AutoStartBatch)
        return AutoStartOnBatch;
    return Config.AutoStartTemp ? AutoStartOnTemp : AutoStartOff;
}

void ClickSystem(int system)
{
    Config.Winner90 = system == 0;
    Config.Genesis = system == 1;
    Config.GenesisEV = system == 2;
    ClearGraphicForEvolution();
    Run.ControlType = SelectedSystem();
}

void ClearGraphicForEvolution()
{
    if (SelectedSystem() != 2)
        return;
    Config.GraphicAfterAuto = 0;
    Config.GraphicAfterMan = 0;
}

} // namespace kv
