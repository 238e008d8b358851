// Many keys of KV90.INI by one reading of the file, for the loads of whole sections.
#pragma once

#include <string_view>
#include <vector>

#include "platform/ini_file.h"

namespace kv {

// GetIniValue for all entries' keys.
void GetIniValues(std::string_view section, std::vector<ProfileEntry>& entries);

} // namespace kv
