// What the POSIX files of this room share about host paths and the system's errors.
#pragma once

#include <string>
#include <string_view>

#include <sys/stat.h>

#include "platform/files.h"
#include "platform/posix/host_place.h"

namespace kv {

// Of the system's error.
FileOutcome HostOutcome(int error); // a missing file is a missing path
FileOutcome OutcomeOf(int error, int numberIfMissing);
FileOutcome LeadsNowhere(std::string_view path, const HostPlace& place);
// Nothing is there as it is spelled: that it is nowhere is known only where all folders could be read.
int TrueError(const HostPlace& place, int error);
FileOutcome RefuseUnlessRegular(mode_t mode);

bool StatusOf(const std::string& host, struct stat& status);
// The same without a call of the system where the lookup has the answer; `errno` is only set by a call.
bool StatusOf(const HostPlace& place, struct stat& status);
// Folder of a host path, with its slash; empty for the current folder.
std::string HostFolder(const std::string& host);

// Goes to the place that the last link of a chain names, whether a file stands there or not. 0 or the
// system's error, when it could not be seen whether there is a link.
int GoBehindLinks(std::string& host);
// The host's path of the file, behind all links; it need not be there.
FileOutcome HostFileBehindLinks(std::string_view path, std::string& host);

// 0 or the system's error.
int FlushHandle(int file);
int MoveOver(const std::string& from, const std::string& to);
// The folder is on the disk when FlushFiles comes to it.
void FlushLater(const std::string& folder);

} // namespace kv
