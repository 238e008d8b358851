// Files that no program and no cut list may replace, whatever a drawing calls them.
#pragma once

#include <string>

#include "platform/files.h"

namespace kv {

// Ok where a program or a cut list may be written at the place.
FileOutcome MayBeWritten(const std::string& path);

} // namespace kv
