// The shared state of a run: the record arrays and one block of run variables. One job at a time,
// one thread; passes work in place and hand the arrays on.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "state/records.h"

namespace kv {

extern RecordArray<DxfEntity> Entities;
extern std::vector<std::string> EntityTexts; // from 1; at most 32767
extern RecordArray<VBoreRecord> VBores;
extern RecordArray<RouteSegment> RouteSegments;
extern RecordArray<RouteCircle> RouteCircles;
extern RecordArray<GrooveRecord> Grooves;
extern RecordArray<GroovePass> GroovePasses;
extern RecordArray<HBoreLineRecord> HBoreLines;
extern RecordArray<HBoreRecord> HBores;
extern RecordArray<HeadPosition> HeadPositions;

constexpr Single EmptyMin = 9999999.0F; // extents that no point has widened
constexpr Single EmptyMax = -9999999.0F;
constexpr int HighestPtsField = 50;
constexpr Single RunDefault = 999.0F; // in a lead or ramp field: take the run's default

using SideSingles = std::array<Single, 6>; // 1 above, 2 below, 3 left, 4 right, 5 the face
using PtsTexts = std::array<std::string, HighestPtsField + 1>;

// What a run leaves to the next one, as it would be had this drawing been the first of the process.
struct LegacyOfOne {
    std::string InstructionLayer;
    Long Outfit = 0;
    Int OptimizeFlag = 0;
    Int OptimizeSide = 0;
    std::string SequenceName;
    Long MinSequence = 0;
};

// A value of an earlier drawing that went into this one.
struct TakenOverValue {
    std::string What, Value;
};

// A text of the drawing that was read, and as what: "LAYER", "part name".
struct TextRead {
    Long Drawn = 0;
    std::string As, Line;
};

struct RunBlock {
    // The job. Set by the driver before the run, so kept by the reset.
    Single RunStartTime = 0; // seconds since midnight
    std::string SourceFile, SourceName, PartName;
    std::string DrawingFile; // as SourceFile was before the reader found nothing and overwrote it
    // The shell's.
    Int RunState = 0;                        // 1 abort asked; 2 pause for messages; 0 and -1 normal
    Int RunFailed = 0;                       // boolean
    std::vector<std::string> FailedFiles;    // from 1; element 0 blank
    std::vector<std::string> FailedDrawings; // the same for people: each one's path
    // Kept from drawing to drawing.
    std::string InstructionLayer; // until a drawing has an instruction title of its own
    Int ControlType = 0;          // 0 CNC90/WINNER90, 1 Genesis, 2 Genesis Evolution
    Long Outfit = 0;
    Int OptimizeFlag = 0;
    Int OptimizeSide = 0;
    std::string SequenceName;
    Long MinSequence = 0;         // only falls
    LegacyOfOne Alone;            // written wherever one of those is
    bool FileNameChanged = false; // reported for this drawing
    Int CncOff = 0, HbdOff = 0;   // batch commands

    // Everything from here on is cleared by ResetRun.
    Single Pi = 3.1415930F; // a little above pi; degrees and arcs are computed with it
    Single DegToRad = Pi / 180.0F;
    Single RouteTolerance = 0.008F;
    Single DrawingScale = 1;
    Single UnitFactor = 1; // 25.4 for an inch drawing
    Int DrawingInInch = 0;
    std::string SourceFolder, PartDescription, ProgramFileName;
    SideSingles SideMinX{}, SideMinY{}, SideMaxX{}, SideMaxY{}, SideWidth{}, SideHeight{};
    std::array<Int, 6> SidePresent{};
    Int PanelFound = 0; // 1 when a PANEL solid gave the panel
    Single OriginX = 0, OriginY = 0, PartThickness = 0, SideMarginX = 0, SideMarginY = 0;
    Int OriginRight = 0, OriginTop = 0, NoCode = 0, DrAlt = 0, AnyLeadCode = 0, CornerComp = 0;
    Int ArcSubstitution = 1;
    std::vector<std::string> VarNames, VarValues; // from 1; slots may be empty
    Int HasVars = 0;
    Long FlagMask = 0;
    std::vector<std::string> OpStrings; // index = number
    Long OutfitDefault = 0;
    Single LeadLengthOverride = 0, RampHeightOverride = 0;
    Int LeadSwitch = 0, RampInSwitch = 0, RampOutSwitch = 0, RemBorderSwitch = 0;
    std::array<Single, 3> OffsetOverride{};
    Int OffsetOverrideSet = 0;
    PtsTexts PtsValues;               // element 0: a path, "OFF" or "ERROR"
    std::vector<Single> NoteX, NoteY; // from 1
    std::vector<std::string> NoteText;
    Int NoteCount = 0;
    Single LeadLength = 0, LeadRampHeight = 0;
    Int LeadsOn = 0, RampInOn = 0, RampOutOn = 0, RemoveBorder = 0;
    Single OffsetX = 0, OffsetY = 0, OffsetZ = 0;
    std::vector<std::string> CncNotes, GCode1, GCode2, GCode3; // from 1
    Long EntityCount = 0;
    Int SegmentCount = 0;
    Long MaxSequence = 0;
    std::vector<std::string> LayerTable; // row 0 BORDER, 1 VBORE DRILLING, 2 GROOVE, 3 HBORE, then routes
    Int RoutePass = 0;                   // row of the route pass that runs; 0 outside
    std::vector<TakenOverValue> TakenOver;
    std::vector<Long> BorderDrawn; // entities that gave the panel
    std::vector<TextRead> TextsRead;
};
extern RunBlock Run;

// Clears the run variables and the operation arrays, keeps what a drawing leaves to the next one.
void ResetRun();
// At the start of a job, before the drawing is read: nothing is taken over yet; `clean` forgets what
// earlier drawings left in the run variables.
void StartLegacy(bool clean);
// Empties all arrays of the run at its normal end.
void ReleaseRunArrays();

// Booleans are Int with True -1 and False 0.
constexpr Int True = -1;
constexpr Int False = 0;

inline bool UserAborted()
{
    return Run.RunState == 1;
}
void AddFailedFile(std::string_view path);

} // namespace kv
