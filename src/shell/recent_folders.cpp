#include "shell/recent_folders.h"

#include <algorithm>

#include "platform/paths.h"
#include "platform/stand_ins.h"
#include "platform/text.h"
#include "platform/user_store.h"
#include "shell/setup_rules.h"
#include "state/settings.h"
#include "state/settings_ini.h"
#include "state/shell_state.h"

namespace kv {

namespace {

constexpr std::string_view FoldersApplication = "ZLT", FoldersSection = "KVFrmFolders";

std::string KeyOfFolder(std::size_t place)
{
    return "Folder" + std::to_string(place + 1);
}

std::string KeptFolder(std::string_view folder)
{
    return WithBackslash(Trim(folder));
}

} // namespace

std::vector<std::string> RecentFolders()
{
    std::vector<std::string> folders;
    for (std::size_t place = 0; place < MostRecentFolders; ++place) {
        const std::string folder =
            PathFromUtf8(GetUserSetting(FoldersApplication, FoldersSection, KeyOfFolder(place), ""));
        if (!folder.empty())
            folders.push_back(folder);
    }
    return folders;
}

FileOutcome NoteRecentFolder(std::string_view folder)
{
    const std::string kept = KeptFolder(folder);
    std::vector<std::string> folders = RecentFolders();
    if (Trim(folder).empty() || (!folders.empty() && EqualIgnoringCase(folders.front(), kept)))
        return {};
    std::erase_if(folders, [&kept](const std::string& known) { return EqualIgnoringCase(known, kept); });
    folders.insert(folders.begin(), kept);
    folders.resize(std::min(folders.size(), MostRecentFolders));
    for (std::size_t place = 0; place < folders.size(); ++place)
        if (FileOutcome outcome = SaveUserSetting(FoldersApplication, FoldersSection, KeyOfFolder(place),
                                                  Utf8FromAnsi(folders[place]));
            !outcome.Ok())
            return outcome;
    return {};
}

void ChangeSourceFolder(std::string_view folder)
{
    if (Shell.RunActive || Trim(folder).empty())
        return;
    SourcePath(SelectedSystem()) = KeptFolder(folder);
    ExchangeSettings(true);
    TellIfNotWhole();
    ShellChanged();
}

} // namespace kv
