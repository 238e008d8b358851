// What the POSIX backends share about files of the host.
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace kv {

FileOutcome HostOutcome(int error); // of the system; a missing file is a missing path
// The host's path of the file, behind all links; it need not be there.
FileOutcome HostFileBehindLinks(std::string_view path, std::string& host);

} // namespace kv
