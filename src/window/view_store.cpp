#include "window/view_store.h"

#include <cstdlib>

#include "platform/user_store.h"

namespace kv {

namespace {

constexpr std::string_view ViewApplication = "ZLT";

} // namespace

std::string StoredOfView(std::string_view section, std::string_view key)
{
    return GetUserSetting(ViewApplication, section, key, "");
}

int StoredPixelsOfView(std::string_view section, std::string_view key)
{
    return static_cast<int>(std::strtol(StoredOfView(section, key).c_str(), nullptr, 10));
}

FileOutcome StoreOfView(std::string_view section,
                        const std::vector<std::pair<std::string, std::string>>& values)
{
    for (const auto& [key, value] : values)
        if (FileOutcome outcome = SaveUserSetting(ViewApplication, section, key, value); !outcome.Ok())
            return outcome;
    return {};
}

} // namespace kv
