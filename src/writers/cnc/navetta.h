// Navetta.cmd, by which a CNC90 control learns of a new program.
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace kv {

// Stages the hand-over file with the program's name (12 characters) and gives its path; stages nothing
// where the control is no CNC90 or keeps no such file. A file that cannot be read is a RunError.
std::string StageNavetta(std::string_view programName, StagedFile& staged);

} // namespace kv
