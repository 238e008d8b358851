#include "shell/drawing_look.h"

#include <string_view>
#include <utility>

#include "job/job_driver.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/drawing_overlay.h"
#include "shell/explanation_views.h"
#include "shell/program_origins.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "writers/job_output.h"

namespace kv {

namespace {

DrawingLook Looked; // filled while the job runs
ExplainedDrawing Explained;

void TakePanel()
{
    Looked.Length = Run.SideWidth[Face] * Run.UnitFactor;
    Looked.Width = Run.SideHeight[Face] * Run.UnitFactor;
    Looked.Thickness = Run.PartThickness * Run.UnitFactor;
}

void TakeStage(std::string_view stage)
{
    KeepDrawnShapes(stage);
    if (stage == "layers" || stage == "operations" || stage == "programs")
        Explained.What = ExplanationOfRun();
    if (stage == "border")
        TakePanel();
    if (stage == "programs")
        Looked.From = {Run.OriginRight != 0, Run.OriginTop != 0};
}

void TakePrograms()
{
    Looked.Drawn = DrawnShapesOfRun();
    Looked.Origins = OriginsOfRun();
    for (const OutputStep& step : Outputs.Steps)
        if (step.Kind == StepKind::Program)
            Looked.Programs.push_back({step.Path, step.Text});
}

// Without files.
ProgramsOfDrawing ProgramsOfLook(const DrawingLook& look)
{
    ProgramsOfDrawing programs;
    programs.Facts.From = look.From;
    programs.Facts.UpperAndLowerExchanged = Val(Config.Origin) != 0;
    programs.Drawn = look.Drawn;
    programs.Origins = look.Origins;
    return programs;
}

} // namespace

DrawingLook LookAtDrawing(const std::string& jobLine, Int system)
{
    const StepsRecorded recorded;
    Looked = {};
    Explained = {};
    Report = {};
    Report.ShowRow = [](const ReportRow& row) { Explained.Rows.push_back(row); };
    Stages.Done = TakeStage;
    Run.ControlType = system;
    Run.RunFailed = False;
    std::string line = jobLine;
    ProcessDrawingFile(line);
    ReportMessage(2, "");
    Explained.Drawing = Utf8FromAnsi(ShownPath(Run.SourceFile));
    Looked.Explanation = ExplanationText(Explained);
    if (Run.RunFailed == False)
        TakePrograms();
    if (Run.RunFailed != False || !(Looked.Length > 0 && Looked.Width > 0))
        Looked.Fault = FirstFaultTold().empty() ? "it gives no panel" : FirstFaultTold();
    return std::move(Looked);
}

ProgramsFound FindPrograms(const std::string& drawing, const DrawingLook& look)
{
    ProgramsFound found;
    found.Programs = ProgramsOfLook(look);
    found.Programs.Drawing = drawing;
    for (const ProgramNow& program : look.Programs) {
        std::string text;
        if (ReadIfThere(program.Path, text).Is != Presence::There) {
            found.AreAsNow = false;
            continue;
        }
        found.AreAsNow &= text == program.Text;
        found.Programs.Files.push_back(program.Path);
    }
    if (!found.AreAsNow) // the lines are others
        for (ProgramOrigins& program : found.Programs.Origins.Programs)
            program.Lines.clear();
    return found;
}

std::vector<ProgramPicture> PicturesOfLook(const DrawingLook& look)
{
    const ProgramsOfDrawing programs = ProgramsOfLook(look);
    std::vector<ProgramPicture> pictures;
    for (const ProgramNow& program : look.Programs) {
        ProgramPicture picture =
            PictureOfText(program.Path, program.Text, FactsOfProgram(programs, program.Path));
        LayDrawingOver(picture, programs);
        pictures.push_back(std::move(picture));
    }
    return pictures;
}

Scene SceneOfDrawing(const DrawingLook& look)
{
    MachineSteps panel;
    panel.Length = look.Length;
    panel.Width = look.Width;
    panel.Thickness = look.Thickness;
    panel.From = look.From;
    Scene scene = SceneOf(panel);
    scene.Drawn = look.Drawn;
    return scene;
}

} // namespace kv
