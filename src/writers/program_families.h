// One writer for each family of machine programs.
#pragma once

#include <string>

namespace kv {

// Programs of the horizontal drilling machine; takes the bores it makes away from the others.
void WriteHbdProgram();
std::string HbdProgramPath(const std::string& name); // by the drawing's output name
// CNC90, WINNER90 and GENESIS.
void WriteCncProgram();
void WriteEvolutionProgram();

// The letters of the blocks of a CNC90, WINNER90 or GENESIS program of this drawing, in their order.
std::string SequenceInForce();

// Lets events run before a record is taken; false when the operator asked to abort.
bool MayTakeRecord();
void ReportProcessingTime();
// The drawing failed and is listed so.
void FailDrawing();

} // namespace kv
