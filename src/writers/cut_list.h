// The row of a part in the saw planning program's .PTS list.
#pragma once

#include <string>

#include "platform/files.h"

namespace kv {

// Hands over the entry of a drawing that gave cut list values; reports, clears PtsValues. A file that
// cannot be read or replaced is a RunError.
void WriteCutListEntry();
// Hands over one row of a list, when its turn has come.
FileOutcome HandOverRow(const std::string& path, std::string row, bool metric);

} // namespace kv
