// Giving a file a name that nobody has yet, in one step: of two processes that want one file, or one name,
// exactly one gets it.
#pragma once

#include <string_view>

#include "platform/files.h"

namespace kv {

constexpr int ErrorFileExists = 58; // the new name is taken

// ErrorFileNotFound or ErrorPathNotFound: the file is not there, perhaps since another process was faster.
FileOutcome RenameToFree(std::string_view path, std::string_view newPath);

} // namespace kv
