// From a job line to the drawing's programs. The order of the steps is fixed: a later one relies on
// what the earlier ones left. The only place where a RunError ends: the job fails with one line, and
// the process is fit for the next job.
#include "job/job_driver.h"

#include <new>
#include <utility>

#include "drawing/border.h"
#include "drawing/border_faults.h"
#include "drawing/bore_doubts.h"
#include "drawing/instructions.h"
#include "drawing/layer_rules.h"
#include "drawing/operations.h"
#include "drawing/panel_doubts.h"
#include "drawing/route_entities.h"
#include "drawing/run_parameters.h"
#include "drawing/twice_drawn.h"
#include "drilling/drill_tour.h"
#include "drilling/groove_passes.h"
#include "drilling/hbore_lines.h"
#include "drilling/optimize_drilling.h"
#include "drilling/stop_doubts.h"
#include "import/import_reading.h"
#include "job/misread_settings.h"
#include "job/placing.h"
#include "job/program_check.h"
#include "ledger/ledger_report.h"
#include "ledger/stage_marks.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/stand_ins.h"
#include "platform/text.h"
#include "routes/depth_passes.h"
#include "routes/edge_arc_doubts.h"
#include "routes/leads.h"
#include "routes/pockets.h"
#include "routes/route_chains.h"
#include "routes/route_doubts.h"
#include "routes/route_sides.h"
#include "state/carry_over.h"
#include "state/given_names.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/strict_setting.h"
#include "writers/cut_list.h"
#include "writers/left_programs.h"
#include "writers/output_names.h"
#include "writers/program_lines.h"
#include "writers/program_writers.h"

namespace kv {

StageHooks Stages;

namespace {

// Settles SourceFile, SourceName, SourceFolder and PartName.
void ReadJobLine(std::string& jobLine)
{
    jobLine = std::string(Trim(jobLine));
    std::size_t length = jobLine.find(PartSeparator);
    if (length == std::string::npos || length == 0)
        length = jobLine.size(); // a "^" alone does not split the name
    ReplaceChar(jobLine, PartSeparator, '^');
    Run.SourceFile = jobLine.substr(0, length);
    std::string_view part = TrimLeft(std::string_view(jobLine).substr(length));
    if (BeginsWith(part, "^"))
        part.remove_prefix(1);
    Run.PartName = part;
    Run.SourceName = FileNameOf(Run.SourceFile);
    if (Run.PartName.empty())
        Run.PartName = Run.SourceName;
    const std::size_t extension = UpperCase(Run.PartName).find(".DXF");
    if (extension != std::string::npos)
        Run.PartName.resize(extension);
    if (!Holds(UpperCase(Run.SourceFile), ".DXF"))
        Run.SourceFile += ".DXF";
    Run.SourceFolder = FolderOf(Run.SourceFile);
    Run.DrawingFile = Run.SourceFile;
}

// Programs have the letters of CP1252 alone. `named`: what would name them.
void TakeNamesForMachines(const std::string& named)
{
    Run.SourceName = NameForMachines(Run.SourceName);
    const std::string made = NameForMachines(named);
    if (Utf8FromAnsi(made) != Utf8FromAnsi(named))
        Tell(Message::NamedByNearestLetters, {{"name", named}, {"made", made}});
}

void FailJob(MessageLine line)
{
    Tell(std::move(line));
    AddFailedFile(Run.SourceFile);
    Run.RunFailed = True;
}

// What no pass handles: one line, arrays emptied, no cut list entry.
void EndByError(const std::string& cause)
{
    ReportTakenOver(); // perhaps the reason
    FailJob({Message::DrawingRefused, {{"drawing", ShownPath(Run.SourceFile)}, {"cause", cause}}});
    ReleaseRunArrays();
    Run.ProgramFileName.clear();
}

// Why there is no drawing to read; empty when there is one.
MessageLine WhyNoDrawing()
{
    const MessageValue drawing("drawing", ShownPath(Run.SourceFile));
    const FileAnswer file = AskFile(Run.SourceFile);
    if (file.Is == Presence::There)
        return {};
    if (file.Is == Presence::CannotTell)
        return {Message::DrawingOutOfReach, {drawing, {"cause", file.Why.Cause}}};
    const FileAnswer folder = AskFolder(Run.SourceFile);
    switch (folder.Is) {
    case Presence::There:
        return {Message::DrawingIsFolder, {drawing}};
    case Presence::CannotTell:
        return {Message::DrawingOutOfReach, {drawing, {"cause", folder.Why.Cause}}};
    case Presence::NotThere:
        break;
    }
    return {Message::DrawingNotFound, {drawing}};
}

// Before the drawing is read, since its reading may already set what it leaves to the next one.
void StartDrawing()
{
    const bool clean = StartsClean();
    TellUnknownStrictness();
    StartCheck();
    StartLegacy(clean);
    StartWriterMemory(clean);
    if (!clean)
        return;
    ForgetFieldsNamedByDrawings();
    CurrentEntity = DecodedEntity{};
    DepthFromEntity = False;
}

void ReadAndConvert()
{
    if (!SettingsFault.Ok()) { // what the settings would say of this drawing is not known
        FailJob({Message::SettingsUnknown, {{"file", ShownPath(IniPath)}, {"cause", SettingsFault.Cause}}});
        return;
    }
    StartDrawing();
    MessageLine why = WhyNoDrawing();
    if (!why.Empty()) {
        FailJob(std::move(why));
        return;
    }
    const std::string part = FileNameOf(Run.PartName);
    Tell(Message::PartOfJob, {{"part", Trim(part).empty() ? Run.SourceName : part}});
    Run.PartName = FolderOf(Run.PartName) + GivenFileName(NameForMachines(part));
    TakeNamesForMachines(Trim(part).empty() ? SourceBaseName() : part);
    ReadAnyDrawing(Run.SourceFile);
    if (Run.RunFailed == False)
        ConvertDrawing();
}

void StageDone(std::string_view stage)
{
    MarkStage(stage);
    if (Stages.Done != nullptr)
        Stages.Done(stage);
}

// A Genesis Evolution program has no words for stops, and bores that became stops would be lost in it.
void PlanStops()
{
    constexpr Int evolution = 2; // control system
    const bool optimize = Val(Config.Optimizer) != 0 || Run.OptimizeFlag != False;
    if (!optimize || VBores.Last() < 1)
        return;
    if (Val(Config.Optimizer) == 0 && Run.Alone.OptimizeFlag == False)
        NoteTakenOver("optimizer", "on");
    if (Run.ControlType == evolution) {
        Tell(Message::OptimizerNotUsed);
        return;
    }
    OptimizeDrilling();
    TellStopDoubts();
}

// What became of the entities, when the programs are there.
void CloseLedger()
{
    MarkStage("programs");
    if (Run.RunFailed == False)
        ReportLeftOut(AnswersOfRun());
}

void EndRun()
{
    ReleaseRunArrays();
    Run.ProgramFileName.clear();
}

} // namespace

void ConvertDrawing()
{
    // 1. Reset.
    ResetRun();
    ForgetProgramTraces();
    ForgetMarks();
    CurrentEntity.SearchNotes = False;
    StageDone("entities");
    // 2. Instructions of the drawing.
    if (!Run.InstructionLayer.empty()) {
        SetMeter(Meter::ReadingInfo, 100);
        ReadInstructions();
    }
    // 3. and 4. Layer names.
    SetMeter(Meter::Processing, 1);
    RewriteLayerCodes();
    ExpandLayerPasses();
    StageDone("layers");
    // 5. to 7. The panel, its unit, the run's parameters.
    if (!FindPanel() || !AnalyseBorder()) {
        TellBorderFaults();
        ReportNearWords(AnswersOfRun());
        return;
    }
    SettleOriginAndUnits();
    SettleRunParameters();
    TellPanelDoubts();
    WorkOutDemands();
    StageDone("border");
    // 8. and 9. Bores, grooves and texts.
    ReadOperations();
    ReportPartNameLine();
    if (!Run.PartDescription.empty())
        Tell(Message::PartDescription, {{"description", Run.PartDescription}});
    StageDone("operations");
    // 10. A drawing without code.
    if (Run.NoCode != False) {
        if (!Stages.StopBeforeWriters) {
            ReportTakenOver();
            WriteCutListEntry();
            NoteWantedPrograms(true);
        }
        EndRun();
        Tell(Message::CodeTurnedOff);
        return;
    }
    TellFaceDoubts();
    // 11. Routes.
    ReadRoutePasses();
    TellDrawnTwice();
    StageDone("routes");
    // 12. to 14. Saw passes, bores in the edges, chains of routes.
    Entities.Clear();
    ExpandGrooves();
    BuildHorizontalBores();
    TellEdgeBoreDoubts();
    DropDeadSegments();
    CloseLoneCircles();
    if (!ChainRoutes()) {
        Tell(Message::UserAborted);
        Run.RunFailed = True;
        return;
    }
    TellRouteDoubts();
    StageDone("chained");
    // 15. Pockets and the drill tour.
    SetMeter(Meter::Processing, 100);
    ExcavatePockets();
    StageDone("pockets");
    OrderBores();
    HeadPositions.Clear();
    StageDone("tour");
    // 16. Stops of the drill head.
    PlanStops();
    StageDone("optimized");
    // 17. to 19. Depths, sides and leads of routes.
    ReseamClosedPolylines();
    OscillateZ();
    SplitDepthPasses();
    AssignRouteSides();
    SynthesizeLeads();
    TellEdgeArcDoubts();
    TellMisreadSettings();
    StageDone("leads");
    // 20. The machine's corner.
    ApplyMachineOrigin();
    StageDone("final");
    // 21. and 22. Programs and cut list; the list also when a program failed.
    if (!Stages.StopBeforeWriters) {
        RunProgramWriters();
        CloseLedger();
        CheckPrograms();
        EndProgramsReport();
        StageDone("programs");
        WriteCutListEntry();
    }
    // 23. Release.
    EndRun();
}

void ProcessDrawingFile(std::string& jobLine)
{
    Run.RunStartTime = static_cast<Single>(SecondsSinceMidnight());
    ForgetTold();
    ReadJobLine(jobLine);
    BeginJobOutput();
    bool ended = false; // by an error: nothing of the drawing is placed
    try {
        ReadAndConvert();
    } catch (const RunError& error) {
        EndByError(error.Cause);
        ended = true;
    } catch (const std::bad_alloc&) {
        EndByError("Out of memory");
        ended = true;
    }
    FinishJobOutput(!ended);
}

} // namespace kv
