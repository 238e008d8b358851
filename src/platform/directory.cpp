// Listings of a folder, the same on every host. Relies on the backend's walk; what it finds is counted or
// gathered here, and events run in between.
#include "platform/directory.h"

#include "platform/directory_names.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/folder_walk.h"
#include "platform/paths.h"

namespace kv {

FileAnswer FCount(std::string_view pattern, Long& count)
{
    count = 0;
    const FileAnswer answer = WalkFolder(pattern, Listed::Name, [&count](DirectoryEntry&) {
        if (++count % FilesPerYield == 0)
            DoEvents();
        return true;
    });
    if (answer.Is != Presence::There)
        count = 0;
    return answer;
}

FileAnswer ReadFileX(std::string_view pattern, Long count, std::vector<DirectoryEntry>& entries)
{
    entries.clear();
    const FileAnswer answer = WalkFolder(pattern, Listed::NameDateAndSize, [&entries](DirectoryEntry& entry) {
        entries.push_back(std::move(entry));
        if (entries.size() % FilesPerYield == 0)
            DoEvents();
        return true;
    });
    if (answer.Is != Presence::There)
        entries.clear();
    FinishListing(entries, count);
    return answer;
}

FileAnswer AskPattern(std::string_view pattern)
{
    if (!HasWildcard(FileNameOf(pattern)))
        return AskFile(pattern);
    bool found = false;
    const FileAnswer answer = WalkFolder(pattern, Listed::Name, [&found](DirectoryEntry&) {
        found = true;
        return false;
    });
    if (found)
        return {Presence::There, {}};
    return answer.Is == Presence::There ? FileAnswer{Presence::NotThere, {}} : answer;
}

} // namespace kv
