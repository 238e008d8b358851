// Private-profile files: sections in brackets, lines of key=value. Section and key are compared
// without case; leading blanks of a value are dropped; lines with ";" are comments. A write keeps
// every other line and comment as it stands. A file that is not there holds no key; of one that cannot be
// read no value is given, not even a missing one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace kv {

// At most size - 1 characters of the value; `missing` (cut alike) when the key is not there. When it cannot
// be told, `value` is left as it is.
FileAnswer ReadProfileString(std::string_view section, std::string_view key, std::string_view missing,
                             std::size_t size, std::string_view path, std::string& value);
// A file that is there and cannot be read is not replaced: what else it holds would be lost.
FileOutcome WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                               std::string_view path);

// The same for many keys of a section, from one reading or by one writing of the file.
struct ProfileEntry {
    std::string Key, Value;
};
FileAnswer ReadProfileStrings(std::string_view section, std::vector<ProfileEntry>& entries,
                              std::string_view missing, std::size_t size, std::string_view path);
FileOutcome WriteProfileStrings(std::string_view section, const std::vector<ProfileEntry>& entries,
                                std::string_view path);

// The same for many sections from one reading of the file, so that all of them are of one state.
FileAnswer ReadProfileText(std::string_view path, std::string& text);
void TakeProfileStrings(std::string_view text, std::string_view section, std::vector<ProfileEntry>& entries,
                        std::string_view missing, std::size_t size);

} // namespace kv
