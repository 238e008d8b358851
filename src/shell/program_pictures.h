// Programs of the disk as pictures, and which programs the drawings of this process have become.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "machine/program_reader.h"
#include "scene/origins.h"
#include "scene/picture_page.h"

namespace kv {

struct ProgramPicture {
    std::string Path; // the program's, as it was asked for
    PictureOfProgram Content;
    double Unit = 1;             // mm of the unit that the program names its places in
    std::size_t LinesUnread = 0; // lines that are not understood and not drawn
    std::string Fault;           // CP1252: why there is no picture; empty: there is one
    std::string ToolFault; // CP1252: of the tables of tools, the first one; the picture is drawn without
};

// With the tools of the installation, where its tables can be read.
ProgramPicture ReadProgramPicture(const std::string& path, const ProgramFacts& facts = {});
// Likewise of a text that the disk need not have; its path names it.
ProgramPicture PictureOfText(const std::string& path, const std::string& text, const ProgramFacts& facts);

struct ProgramsOfDrawing {
    std::string Drawing;
    std::vector<std::string> Files; // that the job has written: programs and what lies beside them
    ProgramFacts Facts;
    std::vector<DrawnShape> Drawn; // the drawing over its program, of the last ones that were looked at
    DrawingOrigins Origins;        // of these too
    std::size_t Number = 0;        // counts the conversions; 0: none of this process
};
// After a job; one that has given no program is not noted.
void NoteProgramsOfJob(std::string_view drawing);
// Null: none of this process. Drawings are told apart as the disk does on Windows, without case.
const ProgramsOfDrawing* FindProgramsOf(std::string_view drawing);
// The last one that was noted; null: none.
const ProgramsOfDrawing* LastProgramsNoted();
void ForgetNotedPrograms();
// What is known of one of the drawing's programs beside its text; the drawing over its picture.
ProgramFacts FactsOfProgram(const ProgramsOfDrawing& programs, const std::string& path);
void LayDrawingOver(ProgramPicture& picture, const ProgramsOfDrawing& programs);
// "door.svg" for the first picture of a call, then "door-2.svg"; the name has an extension.
std::string NumberedFile(const std::string& file, std::size_t number);
// All of the files that are programs, in their order; where none is, the first with its fault.
std::vector<ProgramPicture> PicturesOfFiles(const ProgramsOfDrawing& programs);

} // namespace kv
