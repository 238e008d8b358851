// The files that the programs of a CNC90 installation share, for those who bring programs to their places.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kv {

// The place of INDICE.PRG; a program folder of another control has none there.
std::string IndexPathIn(const std::string& programFolder);
// The words for an index that cannot be replaced, and for one that is left as it is.
void WarnOfIndex(const std::string& path);
void ReportBrokenIndex(const std::string& path, std::uint64_t size);
// Where the control keeps its notes, by the program folder; empty: nowhere.
std::string NotesRoot(std::string_view programFolder);
// Where the control looks for Navetta.cmd.
std::string NavettaFolder();

} // namespace kv
