// What the units of the CNC90, WINNER90 and GENESIS writer share: the program in the making, and the
// steps that work on it.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "writers/program_lines.h"
#include "writers/writer_memory.h"

namespace kv {

// The program in the making. Lines[0] is the header, written last; an empty line stays one.
struct CncProgram {
    std::vector<ProgramLine> Lines;
    Long Drawn = 0;         // of the record in hand; 0 between records
    std::string OffsetWord; // "G54" to "G57"
    bool HorizontalWritten = false;

    void Add(std::string text) { Lines.push_back({std::move(text), Drawn}); }
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

// Moves drillings between the tool changes of the router.
void AlternateDrillingsAndRoutes(std::vector<ProgramLine>& lines);

// Comment lines at the head of the program that is about to be replaced.
std::vector<std::string> CommentsOfOldProgram();

// Hands the program over, in portions where it is too long, and reports it. False when one of them cannot
// be written; that is reported too.
bool WriteOutput(const CncProgram& program);

// One program, or one portion, on its way to the disk.
struct ProgramPart {
    std::string Output; // the drawing's output name
    std::string Name;   // the same, or the portion's
    std::string Contents;
    const std::vector<ProgramLine>& Lines; // that the contents were made from
    bool HorizontalWritten = false;
};
// Hands over program file, index record, hand-over and notes. False when it failed; that is reported.
bool PlaceIndexedProgram(const ProgramPart& part);
bool PlaceGenesisProgram(const ProgramPart& part);

} // namespace kv
