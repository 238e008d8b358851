// `korvanti draw`: reads programs back and draws what they make the machine do. A drawing is converted in
// memory first and its programs are drawn; nothing is placed.
#include <cstdio>
#include <utility>

#include "console/abort.h"
#include "console/calls.h"
#include "console/program_pictures.h"
#include "console/report_output.h"
#include "job/job_driver.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "scene/overlay.h"
#include "shell/drawing_overlay.h"
#include "shell/finding_marks.h"
#include "shell/program_origins.h"
#include "shell/program_pictures.h"
#include "state/run.h"
#include "writers/job_output.h"

namespace kv {

namespace {

void AddPicture(PictureRun& run, const ProgramText& program)
{
    MachineSteps steps = StepsOf(run, program);
    run.Pictures.push_back(PictureOf(program, steps));
    if (run.Line.Over)
        run.Steps.push_back(std::move(steps));
}

void DrawProgram(PictureRun& run, const std::string& file)
{
    ProgramText program{file, {}, FactsOfCall(run.Line)};
    const FileOutcome outcome = ReadWholeFile(FromHostPath(file), program.Text);
    if (!outcome.Ok())
        run.Fault(file + ": " + Utf8FromAnsi(outcome.Cause));
    else
        AddPicture(run, program);
}

void DrawDrawing(PictureRun& run, const std::string& drawing)
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
    std::vector<DrawnShape> drawn = DrawnShapesOfRun();
    AddFindingMarks(drawn);
    const DrawingOrigins origins = OriginsOfRun();
    for (const OutputStep& step : Outputs.Steps)
        if (step.Kind == StepKind::Program) {
            const ProgramOrigins* const program = OriginsOfProgram(origins, step.Path);
            if (program != nullptr)
                facts.HbdEdge = program->BackEdge;
            AddPicture(run, {drawing + ": " + Utf8FromAnsi(FileNameOf(step.Path)), step.Text, facts});
            Scene& picture = run.Pictures.back().Picture;
            picture.Drawn = drawn;
            if (program != nullptr)
                NameOrigins(picture, origins, *program);
        }
}

void WritePictures(PictureRun& run)
{
    if (run.Pictures.empty())
        return;
    if (IsPage(run.Line.Output)) {
        WritePictureFile(run, run.Line.Output, PicturePage(run.Pictures));
        return;
    }
    for (std::size_t i = 0; i < run.Pictures.size(); ++i)
        WritePictureFile(run, NumberedFile(run.Line.Output, i + 1),
                         SvgPicture(run.Pictures[i].Picture, run.Pictures[i].Title));
}

std::string PanelText(const MachineSteps& steps)
{
    return LengthForPeople(steps.Length) + " x " + LengthForPeople(steps.Width) + " x " +
           LengthForPeople(steps.Thickness) + " mm";
}

// Why the programs cannot be laid over each other; empty when they can.
std::string WhyNotOver(const PictureRun& run)
{
    if (run.Pictures.size() != 2)
        return "--over lays two programs over each other, here are " + std::to_string(run.Pictures.size());
    if (!AreOfOnePanel(run.Steps[0], run.Steps[1]))
        return "the programs are of different panels: " + run.Pictures[0].Title.Name + ": " +
               PanelText(run.Steps[0]) + ", " + run.Pictures[1].Title.Name + ": " + PanelText(run.Steps[1]);
    return {};
}

std::string OnlyLine(const Scene& overlay, HeldIn held, const std::string& name)
{
    return "only in " + name + ": " + WorksOnlyIn(overlay, held);
}

void WriteOverlay(PictureRun& run)
{
    if (run.Status != ExitConverted && run.Pictures.size() < 2)
        return; // it was told why one is missing
    if (const std::string why = WhyNotOver(run); !why.empty()) {
        run.Fault(why);
        return;
    }
    PictureOfProgram& picture = run.Pictures[0];
    const std::string first = picture.Title.Name, second = run.Pictures[1].Title.Name;
    picture.Picture = OverlayOf({first, run.Steps[0]}, {second, run.Steps[1]});
    const std::string inFirst = OnlyLine(picture.Picture, HeldIn::First, first),
                      inSecond = OnlyLine(picture.Picture, HeldIn::Second, second);
    picture.Title.Name = first + " and " + second;
    picture.Title.Lines.push_back("red, solid: " + inFirst);
    picture.Title.Lines.push_back("red, dashed: " + inSecond);
    run.Pictures.pop_back();
    WriteAtOnce(inFirst + "\n" + inSecond + "\n", stdout);
    WritePictures(run);
}

} // namespace

int DrawPrograms(const CommandLine& line)
{
    OpenReport(false, IsTerminal(StandardStream::Error));
    PictureRun run{line, {}, {}, {}, ExitConverted};
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
    if (line.Over)
        WriteOverlay(run);
    else
        WritePictures(run);
    return run.Status;
}

} // namespace kv
