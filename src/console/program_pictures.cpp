// The tables of tools are looked for in the program's folder.
#include "console/program_pictures.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "console/report_output.h"
#include "job/installation_tools.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/settings.h"

namespace kv {

namespace {

constexpr std::size_t MostUnreadShown = 10; // lines of a program that are named

void TellUnread(PictureRun& run, const ProgramText& program, const MachineSteps& steps)
{
    for (std::size_t i = 0; i < std::min(steps.Unread.size(), MostUnreadShown); ++i) {
        std::string text = steps.Unread[i];
        for (char& c : text)
            if (static_cast<unsigned char>(c) < ' ' || c == '\x7F')
                c = '?';
        run.Fault(program.Name + ": line " + Utf8FromAnsi(text.substr(0, 120)) + ": not understood");
    }
    if (steps.UnreadCount > MostUnreadShown)
        run.Fault(program.Name + ": " + std::to_string(steps.UnreadCount - MostUnreadShown) +
                  " further lines are not understood");
}

} // namespace

void PictureRun::Fault(const std::string& text)
{
    EraseProgress();
    WriteAtOnce("korvanti: " + text + "\n", stderr);
    Status = ExitSomeFailed;
}

bool EndsInLetters(const std::string& text, std::string_view letters)
{
    return text.size() >= letters.size() &&
           EqualIgnoringCase(std::string_view(text).substr(text.size() - letters.size()), letters);
}

void LoadTools(PictureRun& run)
{
    InstallationTools known = ToolsOfInstallation();
    run.Tools = std::move(known.Tools);
    for (const std::string& fault : known.Faults)
        run.Fault(Utf8FromAnsi(fault));
}

ProgramFacts FactsOfCall(const CommandLine& line)
{
    ProgramFacts facts;
    facts.From.Right = line.Origin == "LR" || line.Origin == "UR";
    facts.From.Top = line.Origin == "UL" || line.Origin == "UR";
    facts.HbdEdge = static_cast<Plane>(line.HbdEdge);
    facts.UpperAndLowerExchanged = Val(Config.Origin) != 0;
    return facts;
}

void WritePictureFile(PictureRun& run, const std::string& file, const std::string& contents)
{
    const FileOutcome outcome = ReplaceFile(FromHostPath(file), contents);
    if (!outcome.Ok())
        run.Fault(file + ": " + Utf8FromAnsi(outcome.Cause));
    else if (!run.Line.ReportJson)
        WriteAtOnce(file + "\n", stdout);
}

bool IsPage(const std::string& file)
{
    return EndsInLetters(file, ".html") || EndsInLetters(file, ".htm");
}

MachineSteps StepsOf(PictureRun& run, const ProgramText& program)
{
    MachineSteps steps = ReadProgram(program.Text, program.Facts);
    FillTools(steps, run.Tools);
    TellUnread(run, program, steps);
    return steps;
}

PictureOfProgram PictureOf(const ProgramText& program, const MachineSteps& steps)
{
    PictureOfProgram picture;
    picture.Picture = SceneOf(steps);
    picture.Title = {program.Name, TitleLines(picture.Picture, steps.UnreadCount)};
    picture.Text = Utf8FromAnsi(program.Text);
    return picture;
}

} // namespace kv
