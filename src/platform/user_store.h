// Small settings of the person at the machine (window positions), apart from the program's own INI.
#pragma once

#include <string>
#include <string_view>

namespace kv {

std::string GetUserSetting(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view missing);
// False when the store cannot be written, and once a value of it could not be read.
bool SaveUserSetting(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view value);

} // namespace kv
