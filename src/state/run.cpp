// Storage of the shared state, and the one place that says what survives from drawing to drawing.
#include "state/run.h"

#include "state/drawn_entities.h"
#include "state/drawn_names.h"

namespace kv {

RecordArray<DxfEntity> Entities;
std::vector<std::string> EntityTexts(1);
RecordArray<VBoreRecord> VBores;
RecordArray<RouteSegment> RouteSegments;
RecordArray<RouteCircle> RouteCircles;
RecordArray<GrooveRecord> Grooves;
RecordArray<GroovePass> GroovePasses;
RecordArray<HBoreLineRecord> HBoreLines;
RecordArray<HBoreRecord> HBores;
RecordArray<HeadPosition> HeadPositions;
RunBlock Run;

namespace {

void ClearOperationArrays()
{
    VBores.Clear();
    RouteSegments.Clear();
    RouteCircles.Clear();
    Grooves.Clear();
    GroovePasses.Clear();
    HBoreLines.Clear();
    HBores.Clear();
    HeadPositions.Clear();
}

} // namespace

void ResetRun()
{
    RunBlock fresh;
    // What survives.
    fresh.RunStartTime = Run.RunStartTime;
    fresh.SourceFile = Run.SourceFile;
    fresh.SourceName = Run.SourceName;
    fresh.PartName = Run.PartName;
    fresh.DrawingFile = Run.DrawingFile;
    fresh.RunState = Run.RunState;
    fresh.RunFailed = Run.RunFailed;
    fresh.FailedFiles = Run.FailedFiles;
    fresh.FailedDrawings = Run.FailedDrawings;
    fresh.InstructionLayer = Run.InstructionLayer;
    fresh.ControlType = Run.ControlType;
    fresh.Outfit = Run.Outfit;
    fresh.OptimizeFlag = Run.OptimizeFlag;
    fresh.OptimizeSide = Run.OptimizeSide;
    fresh.SequenceName = Run.SequenceName;
    fresh.MinSequence = Run.MinSequence;
    fresh.Alone = Run.Alone;
    fresh.FileNameChanged = Run.FileNameChanged;
    fresh.CncOff = Run.CncOff;
    fresh.HbdOff = Run.HbdOff;

    fresh.SideMinX.fill(EmptyMin);
    fresh.SideMinY.fill(EmptyMin);
    fresh.SideMaxX.fill(EmptyMax);
    fresh.SideMaxY.fill(EmptyMax);
    fresh.LayerTable = {"BORDER", "VBORE DRILLING", "GROOVE", "HBORE"};
    fresh.EntityCount = Entities.Last();
    Run = std::move(fresh);
    ClearOperationArrays();
}

void StartLegacy(bool clean)
{
    Run.Alone = {};
    Run.FileNameChanged = false;
    Run.TakenOver.clear();
    if (!clean)
        return;
    Run.InstructionLayer.clear();
    Run.Outfit = 0;
    Run.OptimizeFlag = False;
    Run.OptimizeSide = 0;
    Run.SequenceName.clear();
    Run.MinSequence = 0;
}

void ReleaseRunArrays()
{
    Entities.Clear();
    EntityTexts.assign(1, {});
    ForgetDrawnNames();
    ClearOperationArrays();
    ForgetDrawnEntities();
}

void AddFailedFile(std::string_view path)
{
    constexpr std::string_view withoutEntities = "~"; // what such a drawing's path becomes
    for (std::vector<std::string>* const list : {&Run.FailedFiles, &Run.FailedDrawings})
        if (list->empty())
            list->emplace_back(); // the first entry stands at index 1
    Run.FailedFiles.emplace_back(path);
    Run.FailedDrawings.emplace_back(path == withoutEntities ? std::string_view(Run.DrawingFile) : path);
}

} // namespace kv
