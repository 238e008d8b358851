// `korvanti draw`: reads programs back and draws what they make the machine do. A drawing is converted in
// memory first and its programs are drawn; nothing is placed.
#include <algorithm>
#include <cstdio>

#include "console/abort.h"
#include "console/calls.h"
#include "console/report_output.h"
#include "job/job_driver.h"
#include "machine/program_reader.h"
#include "machine/tool_table.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "scene/picture_page.h"
#include "shell/drawing_overlay.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/job_output.h"

namespace kv {

namespace {

constexpr std::string_view HeadFile = "DT.Par", ToolFile = "Tools.cfg";
constexpr std::size_t MostUnreadShown = 10; // lines of a program that are named

// A program as it stands on the disk or in memory.
struct ProgramText {
    std::string Name; // UTF-8
    std::string Text; // CP1252
    ProgramFacts Facts;
};

struct DrawRun {
    const CommandLine& Line;
    ToolTable Tools;
    std::vector<PictureOfProgram> Pictures;
    int Status = ExitConverted;

    void Fault(const std::string& text)
    {
        EraseProgress();
        WriteAtOnce("korvanti: " + text + "\n", stderr);
        Status = ExitSomeFailed;
    }
};

bool EndsInLetters(const std::string& text, std::string_view letters)
{
    return text.size() >= letters.size() &&
           EqualIgnoringCase(std::string_view(text).substr(text.size() - letters.size()), letters);
}

// A table that is not there says nothing; one that cannot be read is a fault.
std::string TableText(DrawRun& run, std::string_view name)
{
    const std::string path = WithBackslash(ExeFolder) + std::string(name);
    std::string text;
    if (const FileAnswer answer = ReadIfThere(path, text); answer.Is == Presence::CannotTell)
        run.Fault(Utf8FromAnsi(ShownPath(path) + ": " + answer.Why.Cause));
    return text;
}

void LoadTools(DrawRun& run)
{
    run.Tools.Head = ReadHeadTools(TableText(run, HeadFile));
    std::vector<std::string> faults;
    run.Tools.Shop = ReadShopTools(TableText(run, ToolFile), faults);
    for (const std::string& fault : faults)
        run.Fault(std::string(ToolFile) + ", " + Utf8FromAnsi(fault));
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

std::string CornerText(const Corner& corner)
{
    return std::string(corner.Top ? "upper" : "lower") + (corner.Right ? " right" : " left");
}

std::vector<std::string> TitleLines(const Scene& scene, const MachineSteps& steps)
{
    std::vector<std::string> lines = {
        "Panel " + LengthForPeople(scene.Length) + " x " + LengthForPeople(scene.Width) + " x " +
        LengthForPeople(scene.Thickness) + " mm, counted from the " + CornerText(scene.Origin) + " corner"};
    if (steps.UnreadCount > 0)
        lines.push_back(std::to_string(steps.UnreadCount) +
                        (steps.UnreadCount == 1 ? " line is" : " lines are") +
                        " not understood and not drawn");
    return lines;
}

void TellUnread(DrawRun& run, const ProgramText& program, const MachineSteps& steps)
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

void AddPicture(DrawRun& run, const ProgramText& program)
{
    MachineSteps steps = ReadProgram(program.Text, program.Facts);
    FillTools(steps, run.Tools);
    TellUnread(run, program, steps);
    PictureOfProgram picture;
    picture.Picture = SceneOf(steps);
    picture.Title = {program.Name, TitleLines(picture.Picture, steps)};
    picture.Text = Utf8FromAnsi(program.Text);
    run.Pictures.push_back(std::move(picture));
}

void DrawProgram(DrawRun& run, const std::string& file)
{
    ProgramText program{file, {}, FactsOfCall(run.Line)};
    const FileOutcome outcome = ReadWholeFile(FromHostPath(file), program.Text);
    if (!outcome.Ok())
        run.Fault(file + ": " + Utf8FromAnsi(outcome.Cause));
    else
        AddPicture(run, program);
}

void DrawDrawing(DrawRun& run, const std::string& drawing)
{
    const StepsRecorded recorded; // the programs reach no disk
    Stages.Done = KeepDrawnShapes;
    const std::string outcome = RunJob(drawing, OutputInMemory(drawing, run.Line), run.Line.System);
    TakeRows();
    EraseProgress();
    if (outcome != "converted") {
        TellFailure(drawing, outcome);
        run.Status = ExitSomeFailed;
        return;
    }
    ProgramFacts facts = FactsOfCall(run.Line);
    facts.From = {Run.OriginRight != 0, Run.OriginTop != 0};
    const std::vector<DrawnShape> drawn = DrawnShapesOfRun();
    for (const OutputStep& step : Outputs.Steps)
        if (step.Kind == StepKind::Program) {
            AddPicture(run, {drawing + ": " + Utf8FromAnsi(FileNameOf(step.Path)), step.Text, facts});
            run.Pictures.back().Picture.Drawn = drawn;
        }
}

// "door.svg" for the first picture, then "door-2.svg".
std::string NumberedFile(const std::string& file, std::size_t number)
{
    if (number == 1)
        return file;
    const std::size_t dot = file.rfind('.');
    return file.substr(0, dot) + "-" + std::to_string(number) + file.substr(dot);
}

void WritePictureFile(DrawRun& run, const std::string& file, const std::string& contents)
{
    const FileOutcome outcome = ReplaceFile(FromHostPath(file), contents);
    if (!outcome.Ok())
        run.Fault(file + ": " + Utf8FromAnsi(outcome.Cause));
    else
        WriteAtOnce(file + "\n", stdout);
}

void WritePictures(DrawRun& run)
{
    if (run.Pictures.empty())
        return;
    if (EndsInLetters(run.Line.Output, ".html") || EndsInLetters(run.Line.Output, ".htm")) {
        WritePictureFile(run, run.Line.Output, PicturePage(run.Pictures));
        return;
    }
    for (std::size_t i = 0; i < run.Pictures.size(); ++i)
        WritePictureFile(run, NumberedFile(run.Line.Output, i + 1),
                         SvgPicture(run.Pictures[i].Picture, run.Pictures[i].Title));
}

} // namespace

int DrawPrograms(const CommandLine& line)
{
    OpenReport(false, IsTerminal(StandardStream::Error));
    DrawRun run{line, {}, {}, ExitConverted};
    LoadTools(run);
    for (const std::string& what : line.Drawings) {
        if (EndsInLetters(what, ".dxf"))
            DrawDrawing(run, what);
        else
            DrawProgram(run, what);
        if (AbortAsked()) {
            run.Status = ExitSomeFailed;
            break;
        }
    }
    WritePictures(run);
    return run.Status;
}

} // namespace kv
