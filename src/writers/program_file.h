// What the programs of the text controls share on their way to the disk, with the words that an operator
// knows for a program that cannot be written.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "writers/program_lines.h"

namespace kv {

// False when the program cannot be written; that is reported and the run is aborted. `folder` is the
// program folder.
bool HandOverReported(const std::string& folder, const std::string& path, std::string_view contents);
// Lines as a file's text. At most 21 buffers of 30000 characters: what lies behind is dropped.
std::string TextOfLines(const std::vector<std::string>& lines);
std::string TextOfProgramLines(const std::vector<ProgramLine>& lines);
void MakeFoldersOrThrow(const std::string& folder);

} // namespace kv
