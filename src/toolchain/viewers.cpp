// Shows a written program in the control's own viewer: chooses the viewer by the folder of the
// editors, tells it by its TPA.INI what to open, starts it and waits for its end. Relies on the last
// written program and the settings; leaves keys in the control's files. Where the control's program
// does not stand, the viewer of the settings takes its place.
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

constexpr double IniSettleSeconds = 0.1; // between the INI file and the viewer that reads it
constexpr double FirstStartFactor = 3;   // the first viewer of a program run loads slowly
constexpr double WatchSeconds = 0.05;    // between two looks at a running viewer

struct ViewerMemory {
    bool ViewerStarted = false;
    bool MissingTold = false;
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

// In the host's form, since a viewer of the settings is the host's program; CP1252 like any command line.
std::string HostFormOf(const std::string& path)
{
    const std::string host = ToHostPath(path);
    return host == path ? path : AnsiFromUtf8(host);
}

// Every "%1" gives way to the path, quoted where blanks would tear it apart and the line has not
// thought of that.
std::string OwnViewerLine(const std::string& programPath)
{
    constexpr std::string_view mark = "%1";
    const bool blanks = Holds(programPath, " ");
    const std::string_view line = Config.Viewer;
    std::string filled;
    bool quoted = false;
    for (std::size_t at = 0; at < line.size();) {
        if (line.substr(at, mark.size()) == mark) {
            filled += blanks && !quoted ? '"' + programPath + '"' : programPath;
            at += mark.size();
            continue;
        }
        quoted = quoted != (line[at] == '"');
        filled += line[at++];
    }
    return filled;
}

void TellMissingViewer(std::string_view program)
{
    if (Viewers.MissingTold)
        return;
    Viewers.MissingTold = true;
    ReportMessage(1, "No viewer: " + ShownPath(program) +
                         " is not there, and key \"Viewer\" in section \"System\" of KV90.INI is not set");
    ReportMessage(2, "");
}

// In the place of the control's program `missing`, which does not stand.
Long LaunchOwnViewer(std::string_view missing, std::string_view path)
{
    if (Trim(Config.Viewer).empty()) {
        TellMissingViewer(missing);
        return 0;
    }
    const std::string program = LastProgram.Path.empty() ? std::string(path) : LastProgram.Path;
    return LaunchProgram(OwnViewerLine(HostFormOf(program)));
}

Long ShowByBatchFile(const std::string& editors, std::string_view path)
{
    if (AskFile(editors + "SETCNC.BAT").Is != Presence::There) {
        // The control's search path may find it; nobody can say so before it is tried.
        constexpr std::string_view anywhere = "SETCNC.BAT S N";
        return Trim(Config.Viewer).empty() ? LaunchProgram(anywhere) : LaunchOwnViewer(anywhere, path);
    }
    if (AskFile(editors + "SETCNC.PIF").Is == Presence::There)
        return LaunchProgram(editors + "SETCNC.PIF /e:1024 /c setcnc.bat S N");
    return LaunchProgram(editors + "SETCNC.BAT S N");
}

Long StartEdigraf(const std::string& editors, std::string_view path)
{
    const std::string program = editors + "Edigraf.exe";
    PauseSeconds(IniSettleSeconds);
    if (AskFile(program).Is != Presence::There)
        return LaunchOwnViewer(program, path);
    const Long handle = LaunchProgram(program);
    if (!Viewers.ViewerStarted) {
        PauseSeconds(FirstStartFactor * StartDelay());
        Viewers.ViewerStarted = true;
    }
    SendKeystrokes("\r", false);
    return handle;
}

void WriteFileNames(const std::string& ini)
{
    WriteProfileStrings(ExecSection, {{"FileIn", LastProgram.FileName}, {"FileOut", LastProgram.FileName}},
                        ini);
}

void WriteOpening(const std::string& ini)
{
    WriteProfileStrings(ExecSection,
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
        WriteProfileString("TPA", "DirProd", programs, ini);
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

Long LaunchProgram(std::string_view commandLine)
{
    const Long handle = StartProcess(commandLine);
    PauseSeconds(StartDelay());
    if (handle == 0)
        ShowBox(std::string(commandLine) + " Not Loaded", "Error", BoxIcon::Error);
    return handle;
}

Long ShowEvolutionProgram(std::string_view path)
{
    // The file by which an editor is found, and the spelling under which it is started.
    struct EditorRow {
        std::string_view File, Command;
    };
    constexpr EditorRow rows[] = {
        {"PanEdit.exe", "PanEdit "}, {"edibus32.exe", "EdiBus32 "}, {"Edipan32.exe", "Edipan32 "}};

    const std::string editors = EditorFolder("C:\\Evol\\Bin\\");
    for (const EditorRow& row : rows) {
        if (AskFile(editors + std::string(row.File)).Is == Presence::There)
            return LaunchProgram(editors + std::string(row.Command) + EvolutionProgramPath());
    }
    return LaunchOwnViewer(editors + "Edipan32.exe", path);
}

Long ShowProgramGraphic(std::string_view path)
{
    // The text of the folder decides, not the control.
    const std::string editors = EditorFolder(DefaultViewerFolder());
    const std::string upper = UpperCase(editors);
    if (Holds(upper, "CNC90"))
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
    const Long at = Find(1, UpperCase(programPath), WinnerWord);
    if (at == 0)
        return std::string(programPath.substr(0, withoutWord));
    return std::string(programPath.substr(0, static_cast<std::size_t>(at) + WinnerWord.size()));
}

// Without a program folder there is no control folder either, and a TPA.INI in whatever folder is the
// current one would surprise; so nothing is written then. Elsewhere a failure is not told.
void ResetViewerMode(std::string_view controlFolder)
{
    if (!controlFolder.empty())
        WriteProfileString(ExecSection, "Exec", OpenAsByHand, std::string(controlFolder).append(ControlIni));
}

void RegisterWithEditor()
{
    const std::string folder = ControlFolderOf(Config.DestinationPath90);
    if (folder.empty()) // as in ResetViewerMode
        return;
    const std::string entry =
        "\"Select DXF File|*.dxf|" + folder + "KV90WIN.exe|/|" + Config.SourcePath90 + "|\"";
    WriteProfileStrings(ConverterSection, {{"conv01", entry}, {"conv02", ""}},
                        folder + std::string(ControlIni));
}

void ResetViewers()
{
    Viewers = ViewerMemory{};
}

} // namespace kv
