// What of the View menu is on, kept with the window's place and apart from the settings. Nothing is stored
// for who has never asked for it.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/files.h"

namespace kv {

// Empty when nothing is stored.
std::string StoredOfView(std::string_view section, std::string_view key);
int StoredPixelsOfView(std::string_view section, std::string_view key); // 0 likewise
FileOutcome StoreOfView(std::string_view section,
                        const std::vector<std::pair<std::string, std::string>>& values);

} // namespace kv
