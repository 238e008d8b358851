// The unattended mode, a state machine that is driven by a timer: warm-up, idle, a running job.
// Relies on the settings and on trigger files that other programs drop into the source folders while
// this one looks; leaves programs, PROC.LST and the report. No job is run on half a file, run twice or
// lost: what that takes beyond the plain order of steps is said where it stands.
#include "shell/autostart.h"

#include <algorithm>

#include "platform/clock.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/text.h"
#include "shell/batch_run.h"
#include "shell/conversion_start.h"
#include "shell/drawing_states.h"
#include "shell/trigger_files.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "toolchain/viewers.h"

namespace kv {

namespace {

constexpr Int StaleTick = 1; // ticks of the warm-up
constexpr Int JobTick = 3;

bool TickActive = false;

struct ActiveTick {
    ActiveTick() { TickActive = true; }
    ~ActiveTick() { TickActive = false; }
    ActiveTick(const ActiveTick&) = delete;
    ActiveTick& operator=(const ActiveTick&) = delete;
};

void EndProgram()
{
    Shell.Ended = true;
    ShellChanged();
}

// --- The folder of the tick ---

std::string LastFolder; // of the last tick

std::string FolderOfSystem(int system)
{
    const std::string_view path = Trim(SourcePath(system));
    return path.empty() ? std::string() : WithBackslash(path);
}

// The system that a folder belongs to: of those that share it the one of the settings, or else the lowest.
Int OwnerOf(Int picked)
{
    const std::string folder = FolderOfSystem(picked);
    Int lowest = -1;
    for (Int system = 0; system < ControlSystems; ++system) {
        if (!EqualIgnoringCase(FolderOfSystem(system), folder))
            continue;
        if (system == SelectedSystem())
            return system;
        lowest = lowest < 0 ? system : lowest;
    }
    return lowest;
}

// Separate folders in turn, one each tick. Owners of shared folders lie anywhere in the turn, so a folder
// that was looked at last is passed over while there is another one. Empty: nothing to watch.
std::string PickFolder()
{
    Int owner = -1;
    for (Int step = 1; step <= ControlSystems; ++step) {
        const Int picked = static_cast<Int>((Run.ControlType + step) % ControlSystems);
        if (FolderOfSystem(picked).empty())
            continue;
        owner = OwnerOf(picked);
        if (!EqualIgnoringCase(FolderOfSystem(owner), LastFolder))
            break;
    }
    if (owner < 0)
        return {};
    Run.ControlType = owner;
    LastFolder = FolderOfSystem(owner);
    return LastFolder;
}

// --- Temp.DXF ---

void RunTempDrawing(const std::string& folder, const std::string& path, Int system)
{
    const ActiveRun active(StartedBy::Trigger);
    PrepareRun();
    DoEvents();
    const FileStamp stamp = StampOrTell(path);
    RunJobLine(path, system);
    EndTempDrawing(folder, stamp, BringJobToDisk());
    KeepStatesOfRun();
    FinishJob(DestinationPath(Run.ControlType), FileNameOf(Run.PartName));
    Run.ControlType = system; // a drawing that names another control does so for itself alone
}

// False: the rest of the tick is not run.
bool RunTriggers(const std::string& folder)
{
    const Int system = Run.ControlType;
    FileLock lock;
    const std::string temp = Config.AutoStartTemp ? TakeTempDrawing(folder, lock) : std::string();
    bool goOn = true;
    if (!temp.empty())
        RunTempDrawing(folder, temp, system);
    else if ((Config.AutoStartBatch || HasSwitch("/S")) && TriggerIsThere(folder + std::string(BatchList)))
        goOn = RunBatch(folder);
    if (goOn && !Shell.Frame2Enabled) {
        Shell.Frame2Enabled = true;
        ShellChanged();
    }
    return goOn;
}

// --- The rest of the tick ---

void PollWatchedProcess()
{
    Shell.ExitCode = ProcessExitCode(Shell.WatchedProcess);
    if (Shell.ExitCode == StillActive)
        return;
    ForgetProcess(Shell.WatchedProcess);
    Shell.WatchedProcess = 0;
    if (!Shell.WatchedControlFolder.empty())
        ResetViewerMode(Shell.WatchedControlFolder);
    Shell.WatchedControlFolder.clear();
}

bool HoldsSwitchesAlone(std::string_view commandLine)
{
    std::string rest = UpperCase(commandLine);
    for (const std::string_view name : {"/S", "/K", "/V"})
        for (std::size_t at = rest.find(name); at != std::string::npos; at = rest.find(name))
            rest.replace(at, name.size(), name.size(), ' ');
    return Trim(rest).empty();
}

// What the command line asks for. A path may hold blanks, so only the switches are taken out of it.
struct CommandLineJob {
    std::string Drawing;  // empty with switches alone
    std::string Switches; // upper-cased
};

CommandLineJob JobOfCommandLine()
{
    CommandLineJob job;
    job.Drawing = Shell.CommandLine;
    std::string& line = job.Drawing;
    for (std::size_t at = line.find_first_not_of(' '); at != std::string::npos;
         at = line.find_first_not_of(' ', at)) {
        const std::size_t end = std::min(line.find(' ', at), line.size());
        const std::string word = line.substr(at, end - at);
        if (IsSwitchWord(word)) {
            job.Switches += UpperCase(word);
            line.replace(at, word.size(), word.size(), ' ');
        }
        at = end;
    }
    line = std::string(Trim(line));
    return job;
}

// By a setting or a switch it is wanted; this is what may keep it away.
bool MayShowGraphic()
{
    // The count is that of the last batch, also for a single drawing that comes later.
    const double limit = Val(Config.BatchLimit);
    const bool fewEnough = limit == 0 || limit > Shell.BatchCount;
    return Run.NoCode == False && !UserAborted() && Run.RunFailed == False && fewEnough;
}

// Whether somebody reads the lines of the command line's drawing, which begin with that row.
bool IsFailureRead(int firstRow)
{
    return ShellWindow.Failed != nullptr && !UserAborted() && !Shell.Stopped && ShellWindow.Failed(firstRow);
}

// Switches alone go the same way: they are tried as a drawing, and the program ends.
void RunCommandLine()
{
    if (Shell.CommandLine.empty())
        return;
    const ActiveRun active(StartedBy::Trigger);
    Shell.BtnAbortShown = true;
    ShellChanged();
    Run.RunState = 0;
    DoEvents();
    const Long failedBefore = Shell.FailedJobs;
    const int rowsBefore = ReportRowCount();
    const CommandLineJob job = JobOfCommandLine();
    RunJobLine(job.Drawing.empty() ? Shell.CommandLine : job.Drawing, SelectedSystem());
    BringJobToDisk();
    KeepStatesOfRun();
    if (job.Drawing.empty())
        Shell.FailedJobs = failedBefore; // no job
    ReportMessage(2, "");
    if (!job.Drawing.empty() && Holds(job.Switches, "/V") && MayShowGraphic())
        ShowGraphic(DestinationPath(Run.ControlType), FileNameOf(Run.PartName));
    Shell.CommandLine.clear();
    if (Shell.FailedJobs == failedBefore || !IsFailureRead(rowsBefore))
        EndProgram();
}

// There is nothing to watch. A drawing of the command line is run all the same, or the program that was
// started for it would never end.
void RunWithoutFolder()
{
    if (Shell.CommandLine.empty())
        return;
    if (Shell.TickCount < JobTick) {
        ++Shell.TickCount;
        return;
    }
    Run.ControlType = SelectedSystem();
    RunCommandLine();
}

} // namespace

void PrepareRun()
{
    Shell.Frame2Enabled = false;
    PrepareList();
    Run.RunState = 0;
    Run.RunFailed = False;
}

void FinishJob(std::string_view outputFolder, std::string_view outputName)
{
    Shell.LoadDr = true;
    ShellChanged();
    ReportMessage(2, "");
    PauseSeconds(SettleSeconds);
    if (Config.PauseForMessages != 0 || Run.RunFailed != False) {
        DoEvents();
        GiveFocus(FocusPlace::Start);
    }
    RestMeters();
    GiveFocus(FocusPlace::List1);
    DoEvents();
    const bool wanted = Config.GraphicAfterAuto != 0 || HasSwitch("/V");
    if (wanted && MayShowGraphic())
        ShowGraphic(outputFolder, outputName);
}

void AutostartTick()
{
    if (TickActive || Shell.RunActive || Shell.Ended)
        return;
    const ActiveTick active;
    KeepDrawingStates(false);
    // Without the settings nobody knows which folders to watch, and no trigger file may be lost to a job
    // that cannot run.
    const std::string folder = SettingsFault.Ok() ? PickFolder() : std::string();
    if (folder.empty()) {
        RunWithoutFolder();
        return;
    }
    if (Shell.TickCount < JobTick) {
        const bool stale = Shell.TickCount == StaleTick && !HasSwitch("/S");
        ++Shell.TickCount;
        if (stale)
            SetStaleTriggersAside(folder);
        return;
    }
    if (Shell.WatchedProcess != 0)
        PollWatchedProcess();
    else if (!RunTriggers(folder))
        return;
    if (!Shell.Ended)
        RunCommandLine();
}

bool CommandLineWaits()
{
    return !Shell.CommandLine.empty() && !HoldsSwitchesAlone(Shell.CommandLine);
}

bool IsSwitchWord(std::string_view word)
{
    return BeginsWith(word, "/") && HoldsSwitchesAlone(word);
}

bool WaitsForTriggers()
{
    return Shell.TickCount >= JobTick && Shell.CommandLine.empty() && !Shell.Ended;
}

std::vector<std::string> WatchedFolders()
{
    std::vector<std::string> folders;
    for (int system = 0; system < ControlSystems; ++system) {
        const std::string folder = FolderOfSystem(system);
        const bool known = std::any_of(folders.begin(), folders.end(), [&](const std::string& other) {
            return EqualIgnoringCase(other, folder);
        });
        if (!folder.empty() && !known)
            folders.push_back(folder);
    }
    return folders;
}

void TickAllFolders()
{
    const std::size_t count = WatchedFolders().size();
    for (std::size_t i = 0; i < count; ++i)
        AutostartTick();
}

void ResetAutostart()
{
    ForgetTriggers();
    LastFolder.clear();
}

} // namespace kv
