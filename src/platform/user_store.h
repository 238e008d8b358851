// Small settings of the person at the machine (window positions), apart from the program's own INI.
#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

namespace kv {

std::string GetUserSetting(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view missing);
// Fails when the store cannot be written, and once a value of it could not be read.
FileOutcome SaveUserSetting(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view value);
std::string UserStoreName(); // for people

} // namespace kv
