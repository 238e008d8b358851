// The unattended mode, a state machine that is driven by a timer: warm-up, idle, a running job.
// Relies on the settings and on trigger files that other programs drop into the source folders while
// this one looks; leaves programs, PROC.LST and the report. No job is run on half a file, run twice or
// lost: what that takes beyond the plain order of steps is said where it stands.
#include "shell/autostart.h"

#include <algorithm>
#include <limits>
#include <map>

#include "platform/clock.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/text.h"
#include "shell/batch_file.h"
#include "shell/batch_safety.h"
#include "shell/conversion_start.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "toolchain/binaries.h"
#include "toolchain/viewers.h"

namespace kv {

namespace {

constexpr std::string_view TempDrawing = "Temp.DXF";
constexpr std::string_view BatchList = "BATCH.LST";
constexpr std::string_view ProcessedList = "PROC.LST";

constexpr Int StaleTick = 1; // ticks of the warm-up
constexpr Int JobTick = 3;

constexpr double BatchSettleSeconds = 0.5;       // the program that writes the batch closes it meanwhile
constexpr double StillSeconds = 2;               // a file that does not change so long is written
constexpr double LookSeconds = 0.1;              // between two looks at a drawing that is being written
constexpr std::size_t TailLength = 512;          // bytes that hold the last lines of a drawing
constexpr std::uint64_t LargestBatch = 1U << 24; // bytes
constexpr double SecondsOfDay = 86400;

// Of a trigger file, by its path.
struct TriggerMemory {
    FileStamp Seen;    // the state that was looked at last
    double Since = 0;  // seconds since midnight when it was first seen
    FileStamp Refused; // the state that cannot be run, or was run and cannot be deleted
};
std::map<std::string, TriggerMemory> Triggers;
bool TickActive = false;

struct ActiveTick {
    ActiveTick() { TickActive = true; }
    ~ActiveTick() { TickActive = false; }
    ActiveTick(const ActiveTick&) = delete;
    ActiveTick& operator=(const ActiveTick&) = delete;
};

// Told once for each state of the file.
void Refuse(const std::string& path, const FileStamp& stamp, const std::string& cause)
{
    FileStamp& refused = Triggers[path].Refused;
    if (refused == stamp)
        return;
    refused = stamp;
    ReportMessage(1, MarkRed + (ShownPath(path) + " " + cause));
    ReportMessage(2, "");
}

void EndProgram()
{
    Shell.Ended = true;
    ShellChanged();
}

// --- The folder of the tick ---

bool SharesFolder(int system)
{
    const std::string_view path = Trim(SourcePath(system));
    int count = 0;
    for (int other = 0; other < ControlSystems; ++other)
        count += EqualIgnoringCase(Trim(SourcePath(other)), path) ? 1 : 0; // itself too
    return count >= 2;
}

// Separate folders in turn, one each tick; a shared one belongs to the system of the settings. Empty:
// nothing to watch.
std::string PickFolder()
{
    bool blank = true;
    for (int i = 0; i < ControlSystems && blank; ++i) {
        Run.ControlType = static_cast<Int>((Run.ControlType + 1) % ControlSystems);
        blank = Trim(SourcePath(Run.ControlType)).empty();
    }
    if (blank)
        return {};
    if (SharesFolder(Run.ControlType))
        Run.ControlType = SelectedSystem();
    return WithBackslash(Trim(SourcePath(Run.ControlType)));
}

void DeleteStaleTriggers(const std::string& folder)
{
    for (const std::string_view name : {TempDrawing, BatchList}) {
        const std::string path = folder + std::string(name);
        if (AskFile(path).Is == Presence::NotThere)
            continue;
        const FileOutcome outcome = DeleteFile(path);
        if (outcome.Ok())
            ReportMessage(1, "Left from an earlier start, deleted: " + ShownPath(path));
        else
            ReportMessage(1, MarkRed + (ShownPath(path) + " cannot be deleted: " + outcome.Cause));
    }
    ReportMessage(2, "");
}

// --- Drawings that are still being written ---

// All 0 when it is not there, and when that cannot be told: such a file is not run.
FileStamp StampOf(const std::string& path)
{
    FileStamp stamp;
    static_cast<void>(AskStamp(path, stamp));
    return stamp;
}

bool HoldsEndLine(const std::string& path)
{
    std::string tail;
    if (!ReadFileTail(path, tail, TailLength).Ok())
        return false;
    const std::vector<BatchLine> lines = BatchLines(tail); // any line end
    return std::any_of(lines.begin(), lines.end(),
                       [](const BatchLine& line) { return Trim(line.Text) == "EOF"; });
}

bool ReadyToRun(const std::string& path)
{
    const FileStamp stamp = StampOf(path);
    if (stamp.Size == 0 || AskFile(path).Is != Presence::There)
        return false;
    TriggerMemory& memory = Triggers[path];
    if (memory.Refused == stamp)
        return false;
    if (HoldsEndLine(path))
        return true;
    const double now = SecondsSinceMidnight();
    if (memory.Seen != stamp) {
        memory.Seen = stamp;
        memory.Since = now;
        return false;
    }
    const double still = now - memory.Since;
    return (still < 0 ? still + SecondsOfDay : still) >= StillSeconds;
}

void WaitUntilWritten(const std::string& path)
{
    double still = 0;
    FileStamp stamp = StampOf(path);
    while (AskFile(path).Is != Presence::NotThere && !HoldsEndLine(path) && still < StillSeconds &&
           !UserAborted()) {
        PauseSeconds(LookSeconds);
        const FileStamp now = StampOf(path);
        still = now == stamp ? still + LookSeconds : 0;
        stamp = now;
    }
}

// --- Temp.DXF ---

// One that was replaced while its job ran is another job.
void DeleteIfUnchanged(const std::string& path, const FileStamp& stamp)
{
    FileStamp now;
    const FileAnswer answer = AskStamp(path, now);
    if (answer.Is == Presence::CannotTell) {
        Refuse(path, stamp, "cannot be deleted and is not run again: " + answer.Why.Cause);
        return;
    }
    if (now != stamp)
        return;
    const FileOutcome outcome = DeleteFile(path);
    if (outcome.Ok())
        Triggers.erase(path);
    else
        Refuse(path, stamp, "cannot be deleted and is not run again: " + outcome.Cause);
}

void RunTempDrawing(const std::string& path, Int system)
{
    const ActiveRun active(StartedBy::Trigger);
    PrepareRun();
    DoEvents();
    const FileStamp stamp = StampOf(path);
    RunJobLine(path, system);
    FlushJobFiles();
    DeleteIfUnchanged(path, stamp);
    FinishJob(DestinationPath(Run.ControlType), FileNameOf(Run.PartName));
    Run.ControlType = system; // a drawing that names another control does so for itself alone
}

// --- BATCH.LST ---

struct Look {
    FileStamp Stamp;
    FileOutcome Outcome;
    std::string Contents;
};

Look LookAt(const std::string& path)
{
    Look look;
    look.Stamp = StampOf(path);
    look.Outcome = ReadWholeFile(path, look.Contents, LargestBatch);
    return look;
}

// Whatever stands under the name now becomes BATCH.RUN in one step: no moment in which the lines stand
// nowhere, and none in which a newer batch could be deleted in place of the one that was read.
bool MoveToRunFile(const std::string& folder, const Look& read, std::string& contents)
{
    const std::string path = folder + std::string(BatchList);
    const std::string place = folder + std::string(BatchRunFile);
    const std::string earlier = SetUnfinishedBatchAside(folder);
    if (!earlier.empty())
        ReportMessage(1, earlier);
    if (AskFile(place).Is != Presence::NotThere) {
        Refuse(path, read.Stamp,
               "is not run: " + ShownPath(place) + " of an earlier batch cannot be set aside");
        return false;
    }
    const FileOutcome outcome = RenameFile(path, place);
    if (!outcome.Ok()) {
        Refuse(path, read.Stamp, "cannot be taken and is not run: " + outcome.Cause);
        return false;
    }
    FlushJobFiles();
    contents = read.Contents;
    for (;;) {
        Look now = LookAt(place);
        if (!now.Outcome.Ok()) {
            Refuse(path, read.Stamp,
                   "is not run, its lines stand in " + ShownPath(place) + ": " + now.Outcome.Cause);
            return false;
        }
        if (now.Contents == contents)
            break;
        contents = std::move(now.Contents); // a newer batch after all; it may still be written
        PauseSeconds(BatchSettleSeconds);
    }
    Triggers.erase(path);
    return true;
}

// False: there is no batch to run now.
bool TakeBatch(const std::string& folder, std::string& contents)
{
    const std::string path = folder + std::string(BatchList);
    const Look first = LookAt(path);
    PauseSeconds(BatchSettleSeconds);
    const Look second = LookAt(path);
    if (Shell.Ended || second.Stamp == FileStamp{})
        return false;
    if (first.Stamp != second.Stamp || first.Contents != second.Contents)
        return false; // still being written
    if (!second.Outcome.Ok()) {
        Refuse(path, second.Stamp, "cannot be read and is not run: " + second.Outcome.Cause);
        return false;
    }
    if (!second.Contents.empty())
        return MoveToRunFile(folder, second, contents);
    const FileOutcome outcome = DeleteFile(path);
    if (!outcome.Ok())
        Refuse(path, second.Stamp, "is empty and cannot be deleted: " + outcome.Cause);
    return false;
}

// The lines that are not done, and whether it was told that they cannot be kept.
struct BatchRest {
    std::vector<std::string> Lines;
    bool RefusalTold = false;
};

// Programs first, then the line: a job whose line is gone is done.
void TakeLineOff(const std::string& folder, std::size_t place, BatchRest& rest)
{
    rest.Lines.erase(rest.Lines.begin() + static_cast<std::ptrdiff_t>(place));
    FlushJobFiles();
    if (KeepBatchLines(folder, rest.Lines) || rest.RefusalTold)
        return;
    rest.RefusalTold = true;
    ReportMessage(1, MarkRed + (ShownPath(folder + std::string(BatchRunFile)) + " cannot be written"));
}

// Gives the text for PROC.LST.
std::string RunBatchLines(const std::string& folder, const std::vector<BatchLine>& lines, Int system)
{
    BatchRest rest;
    for (const BatchLine& line : lines)
        if (line.Kind != BatchLineKind::Blank)
            rest.Lines.push_back(line.Written);
    std::string processed;
    std::size_t place = 0; // of the line in the rest; commands stay in it for the jobs behind them
    for (const BatchLine& line : lines) {
        if (line.Kind == BatchLineKind::Blank)
            continue;
        if (line.Kind == BatchLineKind::Command) {
            ObeyBatchCommand(line.Text);
            ++place;
            continue;
        }
        const BatchJob job = ReadBatchJob(line.Text, folder, DestinationPath(system));
        WaitUntilWritten(DrawingOf(job));
        RunJobLine(JobLine(job), system);
        processed += job.OutputName;
        processed += LineEnd;
        const bool failed = Run.RunFailed != False;
        if (!failed)
            TakeLineOff(folder, place, rest);
        FinishJob(job.OutputFolder, job.OutputName);
        if (failed)
            break;
    }
    return processed;
}

void WriteProcessedList(const std::string& folder, const std::string& text)
{
    const std::string path = folder + std::string(ProcessedList);
    const FileOutcome outcome = ReplaceFile(path, text);
    FlushJobFiles();
    if (outcome.Ok())
        DropBatchLines(folder);
    else
        ReportMessage(1, MarkRed + (ShownPath(path) + " cannot be written: " + outcome.Cause));
}

// False: the tick ends.
bool RunBatch(const std::string& folder, Int system)
{
    const ActiveRun active(StartedBy::Trigger);
    Run.RunFailed = False;
    std::string contents;
    if (!TakeBatch(folder, contents))
        return false;
    PrepareRun();
    DoEvents();
    const int count = CountBatchLines(contents);
    Shell.BatchCount = static_cast<Int>(std::min<int>(count, std::numeric_limits<Int>::max()));
    WriteProcessedList(folder, RunBatchLines(folder, BatchLines(contents), system));
    TellFailedFiles();
    ReportMessage(2, "");
    MakeBinaries();
    Shell.BtnAbortShown = false;
    Run.ControlType = system;
    Run.CncOff = False;
    Run.HbdOff = False;
    if (!HasSwitch("/K"))
        return true;
    EndProgram();
    return false;
}

// False: the rest of the tick is not run.
bool RunTriggers(const std::string& folder)
{
    const Int system = Run.ControlType;
    const std::string temp = folder + std::string(TempDrawing);
    bool goOn = true;
    if (Config.AutoStartTemp && ReadyToRun(temp))
        RunTempDrawing(temp, system);
    else if ((Config.AutoStartBatch || HasSwitch("/S")) &&
             AskFile(folder + std::string(BatchList)).Is == Presence::There)
        goOn = RunBatch(folder, system);
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

// Switches go the same way: they are tried as a drawing, and the program ends.
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
    RunJobLine(Shell.CommandLine, Run.ControlType);
    if (HoldsSwitchesAlone(Shell.CommandLine))
        Shell.FailedJobs = failedBefore; // no job
    FlushJobFiles();
    ReportMessage(2, "");
    Shell.CommandLine.clear();
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
    // The count is that of the last batch, also for a single drawing that comes later.
    const double limit = Val(Config.BatchLimit);
    const bool fewEnough = limit == 0 || limit > Shell.BatchCount;
    if (wanted && Run.NoCode == False && !UserAborted() && Run.RunFailed == False && fewEnough)
        ShowGraphic(outputFolder, outputName);
}

void AutostartTick()
{
    if (TickActive || Shell.RunActive || Shell.Ended)
        return;
    const ActiveTick active;
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
            DeleteStaleTriggers(folder);
        return;
    }
    if (Shell.WatchedProcess != 0)
        PollWatchedProcess();
    else if (!RunTriggers(folder))
        return;
    if (!Shell.Ended)
        RunCommandLine();
}

void ResetAutostart()
{
    Triggers.clear();
}

} // namespace kv
