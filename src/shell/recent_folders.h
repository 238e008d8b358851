// The source folders that were used last, of each user, and the change to one of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace kv {

constexpr std::size_t MostRecentFolders = 10;

// Newest first; paths of the program.
std::vector<std::string> RecentFolders();
// The folder becomes the newest one.
FileOutcome NoteRecentFolder(std::string_view folder);
// The source path of the control system becomes that folder, as if Setup had been left with it. Not while
// jobs run.
void ChangeSourceFolder(std::string_view folder);

} // namespace kv
