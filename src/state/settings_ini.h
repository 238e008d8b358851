// Many keys of KV90.INI by one reading of the file, for the loads and saves of whole sections.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ini_file.h"
#include "state/messages.h"

namespace kv {

// GetIniValue for all entries' keys. False, and the entries as they were, when the file cannot be read.
bool GetIniValues(std::string_view section, std::vector<ProfileEntry>& entries);
// Stores the entries, unless the settings are not whole. From reading to moving under the file's lock, so
// that two processes do not take each other's keys away. A failure is StoringFault, and told.
void PutIniValues(std::string_view section, const std::vector<ProfileEntry>& entries);
// The line about settings that are not kept, told once for each cause.
MessageLine UnkeptLine(const FileOutcome& outcome);
void TellUnkept(const FileOutcome& outcome);

} // namespace kv
