// Listings of a folder, by backslash path and pattern, and the questions asked of drives.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/numbers.h"

namespace kv {

// One file of a listing; local time. Two listings are equal when all fields of all entries are.
struct DirectoryEntry {
    std::string ShortName; // at most 8 characters
    std::string Extension; // at most 3 characters; empty when the name's own is longer
    std::string LongName;  // with extension, as spelled; CP1252, a stand-in for a name that it does not hold
    Long Year = 0, Month = 0, Day = 0, Hour = 0, Minute = 0, Second = 0;
    Long Size = 0; // bytes; what is larger than a Long stands as the largest Long
    bool operator==(const DirectoryEntry&) const = default;
};

// A pattern is a folder and a name with "*" or "?", compared without case. "*.DXF" also counts a longer
// extension that begins with DXF, as file systems with short names do. Folders are no files. The answer
// is the folder's: one that is not there has no files, and of one that cannot be listed to its end no
// number and no entry is given. Events run while a large folder is read.
FileAnswer FCount(std::string_view pattern, Long& count);
// At most `count` entries, in the order of their names.
FileAnswer ReadFileX(std::string_view pattern, Long count, std::vector<DirectoryEntry>& entries);
// The folders in a folder, by their names; of one that cannot be read to its end, none.
FileAnswer ReadFolders(std::string_view folder, std::vector<std::string>& names);
// One file by its path, as a listing has it but for its short name and extension.
FileAnswer ReadEntryOf(std::string_view path, DirectoryEntry& entry);
// Files that the pattern would count and that no path of the program reaches: the name with "?" for what
// CP1252 lacks, and why. In the folder's own order; none of a folder that cannot be read to its end.
struct UnlistedFile {
    std::string Name, Cause;
};
FileAnswer ReadUnlisted(std::string_view pattern, std::vector<UnlistedFile>& files);
// Whether any file has a name of that pattern, or that very name where it has no "*" and no "?".
FileAnswer AskPattern(std::string_view pattern);

// Whether the drive is there; a path without drive letter stands on the host's own root.
FileAnswer AskDrive(std::string_view path);

} // namespace kv
