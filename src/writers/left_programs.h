// What is on the disk beside the programs that a drawing makes: programs of earlier conversions that it
// leaves, and programs of other drawings that it replaces. Looked at when the drawing's turn in the
// installation has come.
#pragma once

#include <string>

#include "writers/job_output.h"

namespace kv {

// Of the writers: where the programs of this drawing are if it has any. A drawing without code asks for none,
// so that only an older program is worth a line.
void NoteWantedPrograms(bool withoutCode);

// Lines about what the drawing that runs replaces and leaves.
void TellReplacedPrograms(const JobOutput& job);
void TellLeftPrograms(const JobOutput& job);
// The programs are those of the drawing, for the drawings of the list after it.
void RememberWriter(const JobOutput& job, const std::string& drawing);
// A list begins.
void ForgetProgramsOfList();

// The first names of a list, for one line.
std::string FewOf(const std::vector<std::string>& names);

} // namespace kv
