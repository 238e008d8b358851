// The manual way into the conversion, and what every way into it shares. Relies on the rows of the
// file list and the settings; leaves programs, the report and the list of failed files. Each job
// yields to the events, so all that is needed later is settled before the first one.
#include "shell/conversion_start.h"

#include "job/job_driver.h"
#include "job/job_rows.h"
#include "job/placing.h"
#include "platform/clock.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/drawing_states.h"
#include "shell/file_list.h"
#include "shell/list_count.h"
#include "shell/program_pictures.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "toolchain/binaries.h"
#include "toolchain/viewers.h"
#include "writers/left_programs.h"
#include "writers/program_writers.h"

namespace kv {

namespace {

constexpr std::size_t LongNameCell = 1; // column 2
constexpr Int Pressed = -1;             // values of RunState
constexpr Int PausedForMessages = 2;

void SetNormalRun()
{
    Run.RunState = Pressed;
    Run.RunFailed = False;
}

void ShowGraphicOfList()
{
    if (Config.GraphicAfterMan == 0)
        return;
    // An abort that came during the job is not written over: it ends the list.
    if (Config.PauseForMessages != 0 && !UserAborted())
        Run.RunState = PausedForMessages;
    DoEvents();
    // The viewer reads the program, so the program is in its place.
    if (Run.RunState < 1 && Run.RunFailed == False && FlushJobFiles())
        ShowGraphic(DestinationPath(Run.ControlType), FileNameOf(Run.PartName));
    DoEvents();
}

void RunJobOfList(const std::string& path)
{
    RunJobLine(path, SelectedSystem());
    ReportMessage(2, "");
    PauseSeconds(SettleSeconds);
    ShowGraphicOfList();
    RestMeters();
    CountFinishedJob();
    RefreshStateOf(Run.SourceFile);
}

void RunJobs(const std::vector<std::string>& paths)
{
    const JobsTogether together;
    std::size_t left = paths.size();
    for (const std::string& path : paths) {
        --left;
        RunJobOfList(path);
        if (UserAborted() || Shell.Ended)
            break;
    }
    FlushJobFiles();
    KeepStatesOfRun();
    if (left == 0)
        return;
    const MessageLine told = {Message::ListStopped, {{"count", static_cast<long long>(left)}}};
    Tell(told);
    NoteLeft(TextOf(told));
}

void RunList(const std::vector<std::string>& paths)
{
    if (!paths.empty()) {
        const ActiveRun active(StartedBy::Operator);
        const CountedList counted(static_cast<long long>(paths.size()));
        Shell.Timer1 = false;
        Shell.Frame2Enabled = false;
        Shell.StartEnabled = false;
        PrepareList();
        // A double click comes without the press of `Start` that clears what the last run left.
        SetNormalRun();
        RunJobs(paths);
        ClearSelection();
        TellFailedFiles();
        TellListCount();
        ReportMessage(2, "");
        if (!Shell.Ended)
            MakeBinaries();
        Shell.BtnAbortShown = false;
        Shell.StartEnabled = true;
        Shell.LoadDr = true;
        ShellChanged();
        GiveFocus(FocusPlace::List1);
    }
    Shell.Timer1 = true;
    Shell.Frame2Enabled = true;
    ShellChanged();
}

// Of the drawing that the line names, whose extension may be missing.
std::string StampOfJobLine(const std::string& jobLine)
{
    const std::string path = jobLine.substr(0, jobLine.find(PartSeparator));
    const std::string stamp = StampOnDisk(path);
    return stamp.empty() ? StampOnDisk(path + ".DXF") : stamp;
}

} // namespace

ActiveRun::ActiveRun(StartedBy starter)
{
    Shell.RunActive = true;
    Shell.Unattended = starter == StartedBy::Trigger;
    ShellChanged();
}

ActiveRun::~ActiveRun()
{
    Shell.RunActive = false;
    Shell.Unattended = false;
    Shell.BtnAbortShown = false;
    RestMeters();
    ShellChanged();
}

void KeepStatesOfRun()
{
    NoteLateFailures();
    KeepDrawingStates(false);
    RefreshStates();
}

void RestMeters()
{
    ZeroMeters();
    SetMeterInterval(0);
}

void PrepareList()
{
    ReportMessage(0, "");
    ProgramList.clear();
    ForgetProgramsOfList();
    Run.FailedFiles.clear();
    Run.FailedDrawings.clear();
    Shell.LeftUndone.clear();
    Shell.BtnAbortShown = true;
    Shell.LoadDr = false;
    ShellChanged();
}

void RunJobLine(std::string jobLine, Int system, std::string_view identity)
{
    SetJobIdentity(std::string(identity));
    const std::string before = StampOfJobLine(jobLine);
    Run.ControlType = system;
    Run.RunFailed = False; // the driver does not convert while the last failure stands
    ProcessDrawingFile(jobLine);
    if (Run.RunFailed != False)
        ++Shell.FailedJobs;
    NoteProgramsOfJob(Run.SourceFile);
    NoteStateOfJob(Run.SourceFile, before);
    SetJobIdentity({});
}

void TellFailedFiles()
{
    std::vector<std::string> shown;
    for (const std::string& path : Run.FailedDrawings)
        shown.push_back(ShownPath(path));
    ReportFailedFiles(shown);
}

bool FlushJobFiles()
{
    const bool placed = PlaceJobs();
    const FileOutcome outcome = FlushFiles();
    if (!outcome.Ok())
        Tell(Message::NotOnDisk, {{"cause", outcome.Cause}});
    return placed && outcome.Ok();
}

bool BringJobToDisk()
{
    const bool converted = Run.RunFailed == False;
    if (FlushJobFiles())
        return converted;
    if (converted) {
        Run.RunFailed = True;
        AddFailedFile(Run.SourceFile);
        ++Shell.FailedJobs;
    }
    return false;
}

void ShowGraphic(std::string_view programFolder, std::string_view programName)
{
    std::string program = std::string(programFolder) + std::string(programName);
    if (Run.ControlType == 2)
        WaitForExternalProgram(ShowEvolutionProgram(program + ".CNC"));
    else
        WaitForExternalProgram(ShowProgramGraphic(program));
}

void PressStart()
{
    if (!Shell.RunActive)
        SetNormalRun();
}

void StartConversion()
{
    if (Shell.RunActive)
        return;
    const std::string folder = WithBackslash(Trim(SourcePath(SelectedSystem())));
    std::vector<std::string> paths;
    for (const FileRow& row : FileList.Rows) {
        const std::string_view name = Trim(row.Cells[LongNameCell]);
        if (row.Selected && !name.empty())
            paths.push_back(folder + std::string(name));
    }
    RunList(paths);
}

void ConvertDroppedDrawings(const std::vector<std::string>& paths)
{
    if (!Shell.RunActive)
        RunList(paths);
}

} // namespace kv
