// The trash of the system.
#pragma once

#include <string>

#include "platform/files.h"

namespace kv {

// Where the file lies then goes to `place`, in the host's form; empty where the system does not say.
FileOutcome PutFileIntoTrash(const std::string& path, std::string& place);
// Back to its path; a file that has come there meanwhile stays, and so does the one in the trash.
FileOutcome BringFileFromTrash(const std::string& place, const std::string& path);

} // namespace kv
