// Many keys of KV90.INI by one reading of the file, for the loads and saves of whole sections.
#pragma once

#include <string_view>
#include <vector>

#include "platform/ini_file.h"

namespace kv {

// GetIniValue for all entries' keys. False, and the entries as they were, when the file cannot be read.
bool GetIniValues(std::string_view section, std::vector<ProfileEntry>& entries);
// Stores the entries, unless the settings are not whole. Nobody is told of a failure.
void PutIniValues(std::string_view section, const std::vector<ProfileEntry>& entries);

} // namespace kv
