// The row of a part in the saw planning program's .PTS list.
#pragma once

namespace kv {

// Hands over the entry of a drawing that gave cut list values; reports, clears PtsValues. A file that
// cannot be read or replaced is a RunError.
void WriteCutListEntry();

} // namespace kv
