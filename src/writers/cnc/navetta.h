// Navetta.cmd, by which a CNC90 control learns of a new program.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// Hands over the program's name (12 characters); nothing where the control is no CNC90 or keeps no such
// file. A file that cannot be read or replaced is a RunError. `folder` is the program folder.
void HandOverNavetta(const std::string& folder, std::string_view programName);

} // namespace kv
