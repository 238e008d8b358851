// From a program's text to its picture, for the calls that draw.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "console/command_line.h"
#include "machine/program_reader.h"
#include "machine/tool_table.h"
#include "scene/picture_page.h"

namespace kv {

// A program as it stands on the disk or in memory.
struct ProgramText {
    std::string Name; // UTF-8
    std::string Text; // CP1252
    ProgramFacts Facts;
};

// Of a call.
struct PictureRun {
    const CommandLine& Line;
    ToolTable Tools;
    std::vector<PictureOfProgram> Pictures;
    std::vector<MachineSteps> Steps; // of the pictures, where programs are laid over each other
    int Status = ExitConverted;

    void Fault(const std::string& text); // on standard error
};

bool EndsInLetters(const std::string& text, std::string_view letters); // of any case
bool IsPage(const std::string& file);                                  // by its name
void LoadTools(PictureRun& run);                                       // of the installation
ProgramFacts FactsOfCall(const CommandLine& line);
// What the program does, with the tools of the tables; lines that are not understood are faults.
MachineSteps StepsOf(PictureRun& run, const ProgramText& program);
PictureOfProgram PictureOf(const ProgramText& program, const MachineSteps& steps);
// Replaces the file and names it on standard output, unless a JSON document goes there.
void WritePictureFile(PictureRun& run, const std::string& file, const std::string& contents);

} // namespace kv
