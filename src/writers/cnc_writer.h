// What the units of the CNC90, WINNER90 and GENESIS writer share: the working variables that outlive
// a drawing, the program in the making, and the steps that work on it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "conversion/run.h"

namespace kv {

// Words of the plane in which a route is cut, as the last record set them.
struct PlaneWords {
    std::string Side = "P5";
    std::string Code = "G17";
    std::string X, Y, Z, I, J, K; // letter and value; empty on the face
};

// Size of the panel as the horizontal drilling machine sees it: along the edge, thick, away from it.
struct HbdSizes {
    std::string Length, Thickness, Depth;
};

constexpr Int FaceSide = 5;
constexpr Int TopBit = 0x10; // of the side mask

// Working variables that outlive a drawing on purpose; ResetWriters() alone brings them back.
struct WriterMemory {
    // Raised by the blocks and never lowered: a drawing without operations behind one with
    // operations writes its short program.
    bool TopDrillingWritten = false, GrooveWritten = false, RouteWritten = false;
    Int SideMask = 0;             // TopBit work on top, 0x01 to 0x08 bores in sides 1 to 4
    bool ToolSubstituted = false; // told again with every later drawing
    Int LastSpeed = 0;            // head positions have no speed of their own and print this one
    std::string ToolWord;         // one for all blocks; a route that names no tool keeps the last
    Int RouteSide = FaceSide;     // of the last record that opened a route
    PlaneWords Plane;             // a panel from a solid leaves them as they stand
    Single FitX = 0, FitY = 0;    // where the last arc through fit points began
    std::string PortionName;      // output name of the first drawing that was cut into portions
    std::string IndexFolder;      // program folder of the first drawing that needed one
    HbdSizes Hbd;                 // as the last edge with a bore of its own left them
    // Of the Genesis Evolution alone.
    bool EvolutionWritten = false; // as the flags above
    Single EvolutionDiameter = 0;  // last bore's that has one; a route names it too
    Single EvolutionFeed = 0;      // last vertical bore's; bores in the edges by router name it
};
extern WriterMemory Writers;

// The program in the making. Lines[0] is the header, written last; an empty line stays one.
struct CncProgram {
    std::vector<std::string> Lines;
    std::string OffsetWord; // "G54" to "G57"
    bool HorizontalWritten = false;

    Long LastLine() const { return static_cast<Long>(Lines.size()) - 1; }
};

constexpr std::string_view IndexFileName = "INDICE.PRG";
constexpr std::size_t ProgramNameWidth = 12;

// Blocks; each adds its lines. False when the operator asked to abort.
bool WriteVerticalBlock(CncProgram& program);
bool WriteGrooveBlock(CncProgram& program);
bool WriteHorizontalBlock(CncProgram& program);
bool WriteRouteBlock(CncProgram& program);
bool WriteRoutePaths(CncProgram& program); // of block R
// Lets events run before a record is taken; false when the operator asked to abort.
bool MayTakeRecord();
void ReportProcessingTime();

// Moves drillings between the tool changes of the router.
void AlternateDrillingsAndRoutes(std::vector<std::string>& lines);

// Comment lines at the head of the program that is about to be replaced.
std::vector<std::string> CommentsOfOldProgram();

// The drawing's output name; one that ends in a backslash is completed by the source's base name.
std::string OutputName();
std::string SourceBaseName();
// Program folder of a control system by the settings, with its backslash; empty when none is set.
std::string ProgramFolder(Int controlType);
// Writes the program, in portions where it is too long, and reports it. A failure is reported too.
void WriteOutput(const CncProgram& program);

// One program, or one portion, on its way to the disk.
struct ProgramPart {
    std::string Output; // the drawing's output name
    std::string Name;   // the same, or the portion's
    std::string Contents;
    bool HorizontalWritten = false;
};
// Index, hand-over, notes and program file. False when it failed; that is reported.
bool PlaceIndexedProgram(const ProgramPart& part);
bool PlaceGenesisProgram(const ProgramPart& part);

// Lines as a file's text. At most 21 buffers of 30000 characters: what lies behind is dropped.
std::string TextOfLines(const std::vector<std::string>& lines);

} // namespace kv
