// Questions about the files that a job needs, for code that runs inside a job: what cannot be told or read
// ends the job with a RunError that names file and cause.
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace kv {

[[noreturn]] void ThrowFault(std::string_view path, const FileOutcome& outcome);
void ThrowUnlessOk(std::string_view path, const FileOutcome& outcome);

bool IsThere(std::string_view path, const FileAnswer& answer);
bool FileIsThere(std::string_view path);   // AskFile
bool FolderIsThere(std::string_view path); // AskFolder
// False when the file is not there; then `contents` is empty.
bool ReadFileOfJob(std::string_view path, std::string& contents, std::uint64_t limit = LongestWholeFile);

} // namespace kv
