// The files that go to the disk with a program: all are written aside first, so that a full disk
// leaves every old file whole, then they are moved into place.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace kv {

// What is not moved when the set ends is dropped.
struct StagedSet {
    StagedFile Index, Navetta, Notes, Program;

    StagedSet() = default;
    ~StagedSet();
    StagedSet(const StagedSet&) = delete;
    StagedSet& operator=(const StagedSet&) = delete;
};

// False when the program cannot be written; that is reported and the run is aborted.
bool StageProgram(const std::string& path, std::string_view contents, StagedFile& staged);
bool MoveProgram(const std::string& path, StagedFile& staged);
// Any other file of the set; a failure is a RunError that names the file.
void StageOrThrow(const std::string& path, std::string_view contents, StagedFile& staged);
void MoveOrThrow(const std::string& path, StagedFile& staged); // nothing when nothing is staged
// Lines as a file's text. At most 21 buffers of 30000 characters: what lies behind is dropped.
std::string TextOfLines(const std::vector<std::string>& lines);
void MakeFoldersOrThrow(const std::string& folder);

} // namespace kv
