// The files that the programs of a CNC90 installation share, for those who bring programs to their places.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace kv {

// The place of INDICE.PRG; a program folder of another control has none there.
std::string IndexPathIn(const std::string& programFolder);
// The words for an index that cannot be replaced, and for one that is left as it is.
void WarnOfIndex(const std::string& path);
void ReportBrokenIndex(const std::string& path, std::uint64_t size);
// The place of a program by its name, under an index and in a GENESIS folder; `output` is the drawing's
// output name.
constexpr std::size_t LongestProgramName = 12;
std::string IndexedPlace(const std::string& programFolder, std::string_view name);
std::string GenesisPlace(const std::string& programFolder, std::string_view output, std::string_view name);
// Whether the index of the folder names the program; one that cannot be read names none.
bool IsInIndexOf(const std::string& programFolder, std::string_view path);
// Where the control keeps its notes, by the program folder; empty: nowhere.
std::string NotesRoot(std::string_view programFolder);
// Where the control looks for Navetta.cmd.
std::string NavettaFolder();

// What drawings ask and hand over when their turn in the installation has come.
// Comment lines at the head of a program that is about to be replaced; none where `index` is named and not
// there, or where there is no program. What cannot be told is a RunError.
std::vector<std::string> CommentsOfProgramAt(const std::string& index, const std::string& path);
// The record; an index of a broken length is a failure.
FileOutcome HandOverRecordOf(const std::string& folder, const std::string& path, std::string record);
// The last program's name for the control, where it has a hand-over file.
void HandOverProgramName(const std::string& folder, std::string_view programName);
FileOutcome HandOverNoteLines(const std::string& folder, const std::string& path,
                              std::vector<std::string> lines);

} // namespace kv
