// The lines of programs and what of the drawing each comes from.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

struct ProgramLine {
    std::string Text;
    Long Drawn = 0; // the entities that it comes from; 0: none
};

// A program that was handed over: for each line of the file, from 1, what it comes from.
struct ProgramTrace {
    std::string Path;
    std::vector<Long> Drawn; // element 0 is line 1
    Long BackEdge = 0;       // that the horizontal machine drills, which its program does not name; else 0
};
extern std::vector<ProgramTrace> ProgramTraces; // of the drawing that runs

void ForgetProgramTraces();
// Of a path that comes again the last one counts. What of the lines is not in `contents` was dropped.
void NoteLines(std::string_view path, const std::vector<ProgramLine>& lines, std::string_view contents);
void NoteLines(std::string_view path, std::vector<Long> drawn);

} // namespace kv
