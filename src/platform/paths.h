// Inside the program a path is a backslash path in CP1252, with or without a drive letter; a name that CP1252
// does not hold goes under its stand-in (stand_ins.h). This header turns it into the host's form and back. On
// the POSIX host \srv\dxf\ is /srv/dxf/, a drive letter is the folder of that letter under KORVANTI_DRIVES,
// and each component is looked up without regard to case: an existing entry wins, a new one is made as
// spelled.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// The part behind the last backslash; the whole text if there is none.
std::string FileNameOf(std::string_view path);
// The part up to and including the last backslash; empty if there is none.
std::string FolderOf(std::string_view path);
// With a backslash at the end, unless empty.
std::string WithBackslash(std::string_view folder);

// A path as people type it (either form, host text encoding) as a full backslash path.
std::string FromHostPath(std::string_view host);
// The host's path for file access; components are looked up without regard to case.
std::string ToHostPath(std::string_view path);
// The host's path for people: no lookup, nothing asked of the disk. CP1252 text.
std::string ShownPath(std::string_view path);

// Full backslash path of the running executable.
std::string ExeName();
// Backslash path of the folder for a person's own configuration, with its trailing backslash.
std::string UserConfigFolder();
// The folder of the Windows system with its trailing backslash; on other hosts where such a program
// would look for it, below the drive C.
std::string GetWindowsFolder();
// An environment variable, empty when unset; CP1252 text, with stand-ins where it is a path.
std::string Environment(const char* name);

} // namespace kv
