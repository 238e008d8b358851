// Start and end of the program behind its window: the installation's folder, every load in its order,
// the entry in the control's editor, and what is stored when a box or a position changes. Relies on
// the folder given to SetExeFolder and on Shell.CommandLine; leaves the timers of Shell running.
#include "shell/start_up.h"

#include <limits>
#include <utility>

#include "job/placing.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/run_error.h"
#include "platform/text.h"
#include "platform/user_store.h"
#include "shell/autostart.h"
#include "shell/banner.h"
#include "shell/control_tables.h"
#include "shell/drawing_states.h"
#include "shell/file_list.h"
#include "shell/setup_rules.h"
#include "shell/trigger_files.h"
#include "state/report.h"
#include "state/settings.h"
#include "state/settings_ini.h"
#include "state/shell_state.h"
#include "toolchain/viewers.h"

namespace kv {

namespace {

MessageLine UnkeptPosition(const FileOutcome& outcome)
{
    return {Message::PositionNotKept, {{"file", UserStoreName()}, {"cause", outcome.Cause}}};
}

constexpr std::string_view SequenceLetters = " VHGR"; // in the order of the boxes' lists
constexpr std::string_view PositionApplication = "ZLT";
constexpr std::string_view MissingPosition = "500"; // twips

// What stands designed in the settings is no shop's.
void TellSettingsFault()
{
    TellAtOnce(Message::SettingsNotRead, {{"file", ShownPath(IniPath)}, {"cause", SettingsFault.Cause}});
}

// All of one state of the file. The columns' widths, the boxes "D R Alternate" and "On" and the sequence
// are keys beside the exchange.
void LoadShellSettings()
{
    const SettingsReading reading;
    ExchangeSettings(false);
    LoadCutListSettings();
    LoadOtherKeys();
    LoadFileColumnWidths();
    LoadToolSubstitutions();
}

// Folders in which a file is replaced now and then, outside of any drawing. The installations are another
// matter: some hold many thousand files.
void SweepSmallFolders()
{
    std::vector<std::string> folders = WatchedFolders();
    folders.push_back(ExeFolder);
    folders.push_back(UserConfigFolder());
    folders.push_back(ControlFolderOf(Config.DestinationPath90));
    int swept = 0;
    for (const std::string& folder : folders) {
        if (!folder.empty())
            static_cast<void>(SweepAsides(folder, swept)); // what stays does no harm
    }
}

// The folders that the settings name must be the shop's own.
void TellWhatIsLeft()
{
    RecoverInstallations();
    SweepSmallFolders();
    for (const std::string& folder : WatchedFolders())
        TellUnfinishedTriggers(folder);
}

// A file that is there must take words, and its folder the copy that replaces it.
FileOutcome CheckSettingsFile()
{
    FileOutcome outcome = CheckWritable(IniPath);
    if (!outcome.Ok() && outcome.Number != ErrorFileNotFound)
        return outcome;
    StagedFile staged;
    outcome = StageFile(IniPath, {}, staged);
    DropStaged(staged);
    return outcome;
}

// Said before anybody sets anything, and not only when it is to be stored.
void TellUnkeptSettings()
{
    const FileOutcome outcome = CheckSettingsFile();
    if (!outcome.Ok())
        TellUnkept(outcome);
}

// What no window can have as its place is no place.
Long TwipsOf(const std::string& text)
{
    const double twips = Val(text);
    if (twips < std::numeric_limits<Long>::min() || twips > std::numeric_limits<Long>::max())
        return ToLong(Val(MissingPosition));
    return ToLong(twips);
}

Long LoadTwips(std::string_view section, std::string_view key, bool clamp)
{
    const Long twips = TwipsOf(GetUserSetting(PositionApplication, section, key, MissingPosition));
    return clamp && twips < 0 ? ToLong(Val(MissingPosition)) : twips;
}

} // namespace

std::string InstallationFolder(std::string_view home)
{
    const std::string named = home.empty() ? Utf8FromAnsi(Environment("KORVANTI_HOME")) : std::string(home);
    if (!named.empty()) {
        const std::string folder = WithBackslash(FromHostPath(named));
        // One of which it cannot be told is asked for its settings, and they say why.
        return AskFolder(folder).Is == Presence::NotThere ? std::string() : folder;
    }
    const std::string beside = FolderOf(ExeName());
    return AskFile(beside + "KV90.INI").Is == Presence::NotThere ? UserConfigFolder() : beside;
}

bool BinHidden()
{
    const std::string folder = UpperCase(ExeFolder);
    return Holds(folder, "GENESIS") || Holds(folder, "EVOL");
}

// This order matters: the load of the exchange clears the optimizer's box for the Evolution, and the
// keys beside it set it again; the editor learns of this program by the paths that were just loaded.
void StartShell()
{
    LoadShellSettings();
    InstallCursorTips(Config.TipsEnable != 0);
    const bool whole = SettingsFault.Ok();
    Shell.LoadDr = true;
    if (Shell.CommandLine.empty() && whole)
        RegisterWithEditor();
    ShowBanner();
    LoadDrawingStates();
    if (whole)
        TellWhatIsLeft();
    else
        TellSettingsFault();
    if (Shell.CommandLine.empty() && whole) // else they are not stored
        TellUnkeptSettings();
    Shell.Timer1 = true;
    ClearGraphicForEvolution(); // asks for the system itself
    SetHbdAvailable(true);      // the grid of KVHBD.cfg is read by those who use it
    ShellChanged();
}

void StopShell()
{
    ResetViewerMode(ControlFolderOf(Config.DestinationPath90));
    KeepDrawingStates(true);
    ExchangeSettings(true);
    if (!StoringFault.Ok())
        NoteLeft(TextOf(UnkeptLine(StoringFault)));
    DoEvents();
}

std::string SequenceLetter(int place)
{
    const bool inList = place >= 0 && place < static_cast<int>(SequenceLetters.size());
    return std::string(SequenceLetters.substr(inList ? static_cast<std::size_t>(place) : 0, 1));
}

int SequencePlace(char letter)
{
    const std::size_t place = SequenceLetters.find(letter);
    return place == 0 || place == std::string_view::npos ? -1 : static_cast<int>(place);
}

// Blanks in front are lost when the key is read again, so the letters behind them move up then.
void StoreSequence(const int (&places)[4])
{
    std::string letters;
    for (const int place : places)
        letters += SequenceLetter(place);
    Config.Sequence = letters;
    PutConfigValue("Sequence", letters);
}

void StoreOptimizerBox(bool on)
{
    Config.OptimizerBox = on;
    Config.Optimizer = on ? "1" : "0";
    PutConfigValue("Optimizer", Config.Optimizer);
}

void StoreAlternation(bool on)
{
    Config.DRAlternate = on ? "1" : "0";
    PutConfigValue("DRAlternate", Config.DRAlternate);
}

WindowPosition LoadWindowPosition(std::string_view section, bool clamp)
{
    return {LoadTwips(section, "Top", clamp), LoadTwips(section, "Left", clamp)};
}

bool HasWindowPosition(std::string_view section)
{
    return !GetUserSetting(PositionApplication, section, "Left", "").empty();
}

FileOutcome SaveWindowPosition(std::string_view section, const WindowPosition& position)
{
    FileOutcome top = SaveUserSetting(PositionApplication, section, "Top", WholeText(position.Top));
    FileOutcome left = SaveUserSetting(PositionApplication, section, "Left", WholeText(position.Left));
    const FileOutcome outcome = top.Ok() ? std::move(left) : std::move(top);
    if (!outcome.Ok())
        TellAtOnce(Message::PositionNotKept, UnkeptPosition(outcome).Values);
    return outcome;
}

std::string UnkeptPositionLine(const FileOutcome& outcome)
{
    return TextOf(UnkeptPosition(outcome));
}

// In the folder of the program, where a package of the system puts it, and in the tree that it was built in.
std::string ShippedGuide()
{
    constexpr std::string_view places[] = {
        "Guide\\operators-guide.html", "..\\share\\doc\\korvanti\\operators-guide.html",
        "..\\share\\doc\\korvanti\\operators-guide.md", "..\\..\\docs\\operators-guide.md",
        "..\\..\\..\\docs\\operators-guide.md"};
    for (const std::string_view place : places)
        if (const std::string path = FolderOf(ExeName()) + std::string(place);
            AskFile(path).Is == Presence::There)
            return path;
    return {};
}

// The settings' own command line; where they name none, the guide that came with the program.
void StartHelp(std::string_view key)
{
    const std::string& line = key == "Help" ? Config.Help : Config.OLHelp;
    if (Trim(line).empty() && ShellWindow.OpenGuide != nullptr) {
        const std::string guide = ShippedGuide();
        if (!guide.empty() && ShellWindow.OpenGuide(guide))
            return;
    }
    const Long handle = StartLine(line);
    if (handle != 0) {
        ForgetProcess(handle); // nobody waits for it
        return;
    }
    TellInABox(Message::HelpNotLoaded, {{"file", ShownPath(IniPath)}, {"key", key}}, "File Problem",
               BoxIcon::Warning);
}

} // namespace kv
