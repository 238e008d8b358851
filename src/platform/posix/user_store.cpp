// Small settings of a person: an INI file in the person's configuration folder, one section per
// application and section. The folder is made with the first value that is saved.
#include "platform/user_store.h"

#include "platform/files.h"
#include "platform/ini_file.h"
#include "platform/paths.h"

namespace kv {

namespace {

constexpr std::size_t LongestValue = 4096;

// Of which a value could not be read, and why: what this process holds in its place is not the person's.
std::string UnreadStore;
FileOutcome WhyUnread;

std::string StorePath()
{
    return UserConfigFolder() + "user.ini";
}

std::string StoreSection(std::string_view application, std::string_view section)
{
    return std::string(application).append("\\").append(section);
}

} // namespace

std::string GetUserSetting(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view missing)
{
    std::string value(missing);
    const FileAnswer answer =
        ReadProfileString(StoreSection(application, section), key, missing, LongestValue, StorePath(), value);
    if (answer.Is == Presence::CannotTell) {
        UnreadStore = StorePath();
        WhyUnread = answer.Why;
    }
    return value;
}

FileOutcome SaveUserSetting(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view value)
{
    if (UnreadStore == StorePath())
        return {WhyUnread.Number, "could not be read: " + WhyUnread.Cause};
    const FileOutcome outcome = MakeFolders(UserConfigFolder());
    return outcome.Ok() ? WriteProfileString(StoreSection(application, section), key, value, StorePath())
                        : outcome;
}

std::string UserStoreName()
{
    return ShownPath(StorePath());
}

} // namespace kv
