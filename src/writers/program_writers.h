// Chooses the writers of a drawing and holds what outlives it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

// Beside the settings: what programs of the Genesis Evolution are filled into.
constexpr std::string_view EvolutionTemplateName = "EvHeader.dat";

// Names of the programs written under an index, in order, from element 0. The shell empties it when a
// list of drawings starts.
extern std::vector<std::string> ProgramList;

// The last program that was written, for viewers; outlives its drawing.
struct WrittenProgram {
    std::string FileName; // as the control lists it
    std::string Path;
    std::string Description;
};
extern WrittenProgram LastProgram;
void NoteWrittenProgram(std::string_view fileName, std::string_view path);

// Mirrors the records to the corner of the machine's origin.
void ApplyMachineOrigin();
// HBD first, since it takes bores away from the others, then the writer of the control.
void RunProgramWriters();
// What was taken over, and the line that ends a drawing's programs in the report.
void EndProgramsReport();
// The writers' working variables as at program start.
void ResetWriters();
// At the start of a job: nothing is taken over yet; `clean` forgets what earlier drawings left.
void StartWriterMemory(bool clean);

} // namespace kv
