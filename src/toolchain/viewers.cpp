// Shows a written program in the control's own viewer: chooses the viewer by the folder of the
// editors, tells it by its TPA.INI what to open, starts it and waits for its end. Relies on the last
// written program and the settings; leaves keys in the control's files. Where the system cannot start the
// control's program, the viewer of the settings takes its place.
#include "toolchain/viewers.h"

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/directory.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/ini_file.h"
#include "platform/keys.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/stand_ins.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "writers/output_names.h"
#include "writers/program_writers.h"

namespace kv {

namespace {

constexpr std::string_view ControlIni = "TPA.INI";
constexpr std::string_view ExecSection = "edigraf-exec";
constexpr std::string_view ConverterSection = "edigraf-conv";
constexpr std::string_view OpenOnFile = "2"; // values of key "Exec"
constexpr std::string_view OpenAsByHand = "0";
constexpr std::string_view WinnerWord = "WINNER90";
constexpr std::string_view CncWord = "CNC90";

constexpr double IniSettleSeconds = 0.1; // between the INI file and the viewer that reads it
constexpr double FirstStartFactor = 3;   // the first viewer of a program run loads slowly
constexpr double WatchSeconds = 0.05;    // between two looks at a running viewer

struct ViewerMemory {
    bool ViewerStarted = false;
};
ViewerMemory Viewers;

double StartDelay()
{
    return Val(Config.GraphicDelay);
}

// `fallback` where the settings name no folder.
std::string EditorFolder(std::string_view fallback)
{
    return Config.EditorPath.empty() ? std::string(fallback) : WithBackslash(Config.EditorPath);
}

// A box, when nothing started.
void WaitForStart(const ProgramCall& command, Long handle)
{
    PauseSeconds(StartDelay());
    if (handle == 0)
        TellInABox(Message::ProgramNotLoaded, {{"command", CommandText(command)}}, "Error", BoxIcon::Error);
}

// In the host's form, since a viewer of the settings is the host's program; CP1252 like any command line.
std::string HostFormOf(const std::string& path)
{
    const std::string host = ToHostPath(path);
    return host == path ? path : PathFromUtf8(host);
}

// Every "%1" gives way to the path, in the word where it stands: blanks and quotes in the path part
// nothing.
ProgramCall OwnViewer(const std::string& programPath)
{
    constexpr std::string_view mark = "%1";
    ProgramCall command = SplitCommand(Config.Viewer);
    for (std::string& word : command) {
        for (std::size_t at = word.find(mark); at != std::string::npos;
             at = word.find(mark, at + programPath.size()))
            word.replace(at, mark.size(), programPath);
    }
    return command;
}

struct Launched {
    Long Handle = 0;
    bool Own = false; // the viewer of the settings
};

// The control's own program is tried whether or not its file can be seen: the system may know a way that
// nobody else does. `path` names the program for a viewer of the settings before any was written.
Launched LaunchViewer(const ProgramCall& command, std::string_view path)
{
    Launched launched;
    launched.Handle = StartProcess(command);
    if (launched.Handle == 0 && !Trim(Config.Viewer).empty()) {
        const std::string program = LastProgram.Path.empty() ? std::string(path) : LastProgram.Path;
        launched.Handle = StartProcess(OwnViewer(HostFormOf(program)));
        launched.Own = launched.Handle != 0;
    }
    WaitForStart(command, launched.Handle);
    return launched;
}

Long ShowByBatchFile(const std::string& editors, std::string_view path)
{
    ProgramCall command = {"SETCNC.BAT", "S", "N"}; // by the control's search path
    if (AskFile(editors + "SETCNC.BAT").Is != Presence::NotThere) {
        command[0] = editors + "SETCNC.BAT";
        if (AskFile(editors + "SETCNC.PIF").Is == Presence::There)
            command = {editors + "SETCNC.PIF", "/e:1024", "/c", "setcnc.bat", "S", "N"};
    }
    return LaunchViewer(command, path).Handle;
}

Long StartEdigraf(const std::string& editors, std::string_view path)
{
    PauseSeconds(IniSettleSeconds);
    const Launched launched = LaunchViewer({editors + "Edigraf.exe"}, path);
    if (launched.Own)
        return launched.Handle;
    if (!Viewers.ViewerStarted) {
        PauseSeconds(FirstStartFactor * StartDelay());
        Viewers.ViewerStarted = true;
    }
    SendKeystrokes("\r", false);
    return launched.Handle;
}

// What the control's file does not take is not told: the viewer then opens as by hand.
void WriteControlIni(std::string_view section, const std::vector<ProfileEntry>& entries,
                     const std::string& ini)
{
    static_cast<void>(WriteProfileStrings(section, entries, ini));
}

void WriteFileNames(const std::string& ini)
{
    WriteControlIni(ExecSection, {{"FileIn", LastProgram.FileName}, {"FileOut", LastProgram.FileName}}, ini);
}

void WriteOpening(const std::string& ini)
{
    WriteControlIni(ExecSection,
                    {{"Exec", std::string(OpenOnFile)}, {"OutCom", '"' + LastProgram.Description + '"'}},
                    ini);
}

Long ShowByWinner(const std::string& editors, std::string_view path)
{
    const std::string ini = editors + std::string(ControlIni);
    WriteFileNames(ini);
    WriteOpening(ini);
    return StartEdigraf(editors, path);
}

Long ShowByGenesis(const std::string& editors, std::string_view path)
{
    std::string programs(Trim(DestinationPath(Run.ControlType)));
    if (programs.ends_with('\\'))
        programs.pop_back();
    std::string ini = editors + std::string(ControlIni);
    if (AskFile(ini).Is == Presence::NotThere)
        ini = GetWindowsFolder() + std::string(ControlIni);
    WriteFileNames(ini);
    if (!programs.empty())
        WriteControlIni("TPA", {{"DirProd", programs}}, ini);
    WriteOpening(ini);
    return StartEdigraf(editors, path);
}

std::string DefaultViewerFolder()
{
    if (Run.ControlType == 1)
        return "C:\\Genesis\\Bin\\";
    return AskPattern("C:\\CNC90\\CNC90*.*").Is != Presence::NotThere ? "C:\\CNC90\\" : "C:\\Winner90\\";
}

// The output name of the drawing; a job that names a folder alone takes the drawing's name.
std::string EvolutionProgramPath()
{
    std::string name = FileNameOf(Trim(Run.PartName));
    if (name.empty())
        name = SourceBaseName();
    return ProgramFolder(Run.ControlType) + name + ".CNC";
}

} // namespace

Long LaunchProgram(const ProgramCall& command)
{
    const Long handle = StartProcess(command);
    WaitForStart(command, handle);
    return handle;
}

Long ShowEvolutionProgram(std::string_view path)
{
    // The file by which an editor is found, and the spelling under which it is started.
    struct EditorRow {
        std::string_view File, Program;
    };
    constexpr EditorRow rows[] = {{"PanEdit.exe", "PanEdit"}, {"edibus32.exe", "EdiBus32"}};

    const std::string editors = EditorFolder("C:\\Evol\\Bin\\");
    std::string_view program = "Edipan32";
    for (const EditorRow& row : rows) {
        if (AskFile(editors + std::string(row.File)).Is == Presence::There) {
            program = row.Program;
            break;
        }
    }
    return LaunchViewer({editors + std::string(program), EvolutionProgramPath()}, path).Handle;
}

Long ShowProgramGraphic(std::string_view path)
{
    // The text of the folder decides, not the control.
    const std::string editors = EditorFolder(DefaultViewerFolder());
    const std::string upper = UpperCase(editors);
    if (Holds(upper, CncWord))
        return ShowByBatchFile(editors, path);
    if (Holds(upper, WinnerWord))
        return ShowByWinner(editors, path);
    if (Holds(upper, "GENESIS"))
        return ShowByGenesis(editors, path);
    return 0;
}

void WaitForExternalProgram(Long handle)
{
    if (handle == 0)
        return;
    Shell.Form1Shown = false;
    ShellChanged();
    const bool abortedBefore = UserAborted(); // then there is nothing left to abort but the program
    do {
        DoEvents();
        if (Shell.Ended || (UserAborted() && !abortedBefore))
            break;
        PauseSeconds(WatchSeconds);
    } while (ProcessExitCode(handle) == StillActive);
    ForgetProcess(handle);
    Shell.Form1Shown = true;
    ShellChanged();
}

std::string ControlFolderOf(std::string_view programPath)
{
    constexpr std::size_t withoutWord = 8; // what the arithmetic gives; often no folder at all
    const std::string upper = UpperCase(programPath);
    const Long at = Find(1, upper, WinnerWord);
    if (at == 0)
        return Holds(upper, CncWord) ? std::string(programPath.substr(0, withoutWord)) : std::string();
    return std::string(programPath.substr(0, static_cast<std::size_t>(at) + WinnerWord.size()));
}

// A TPA.INI in whatever folder is the current one would surprise, so without a folder nothing is written.
// Elsewhere a failure is not told.
void ResetViewerMode(std::string_view controlFolder)
{
    if (!controlFolder.empty())
        WriteControlIni(ExecSection, {{"Exec", std::string(OpenAsByHand)}},
                        std::string(controlFolder).append(ControlIni));
}

void RegisterWithEditor()
{
    const std::string folder = ControlFolderOf(Config.DestinationPath90);
    if (folder.empty()) // as in ResetViewerMode
        return;
    const std::string entry =
        "\"Select DXF File|*.dxf|" + folder + "KV90WIN.exe|/|" + Config.SourcePath90 + "|\"";
    WriteControlIni(ConverterSection, {{"conv01", entry}, {"conv02", ""}}, folder + std::string(ControlIni));
}

void ResetViewers()
{
    Viewers = ViewerMemory{};
}

} // namespace kv
