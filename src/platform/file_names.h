// Names that every file system takes: Windows forbids some characters and some words, and a name that
// is made here may be read there.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// The name with "_" for each control character and each of " < > | ? * : / and \, and with "_" behind its
// first word where that is a device of Windows (CON, NUL, COM1 and so on, with any ending).
std::string NameForFile(std::string_view name);
// The part up to and including the last backslash, slash or colon; empty if there is none.
std::string_view FolderPartOf(std::string_view text);

} // namespace kv
