// Private-profile files: sections in brackets, lines of key=value. Section and key are compared
// without case; leading blanks of a value are dropped; lines with ";" are comments. A write keeps
// every other line and comment as it stands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

// At most size - 1 characters of the value; `missing` (cut alike) when the key is not there.
std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view missing,
                              std::size_t size, std::string_view path);
// False when the file cannot be replaced.
bool WriteProfileString(std::string_view section, std::string_view key, std::string_view value,
                        std::string_view path);

// The same for many keys of a section, from one reading or by one writing of the file.
struct ProfileEntry {
    std::string Key, Value;
};
void ReadProfileStrings(std::string_view section, std::vector<ProfileEntry>& entries,
                        std::string_view missing, std::size_t size, std::string_view path);
bool WriteProfileStrings(std::string_view section, const std::vector<ProfileEntry>& entries,
                         std::string_view path);

} // namespace kv
