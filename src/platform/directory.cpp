// Listings of a folder, the same on every host. Relies on the backend's walk; what it finds is counted or
// gathered here, and events run in between.
#include "platform/directory.h"

#include "platform/directory_names.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/folder_walk.h"
#include "platform/paths.h"

namespace kv {

Long FCount(std::string_view pattern)
{
    Long count = 0;
    WalkFolder(pattern, Listed::Name, [&count](DirectoryEntry&) {
        if (++count % FilesPerYield == 0)
            DoEvents();
        return true;
    });
    return count;
}

void ReadFileX(std::string_view pattern, Long count, std::vector<DirectoryEntry>& entries)
{
    entries.clear();
    WalkFolder(pattern, Listed::NameDateAndSize, [&entries](DirectoryEntry& entry) {
        entries.push_back(std::move(entry));
        if (entries.size() % FilesPerYield == 0)
            DoEvents();
        return true;
    });
    FinishListing(entries, count);
}

bool Exist(std::string_view pattern)
{
    if (!HasWildcard(FileNameOf(pattern)))
        return FileExists(pattern);
    bool found = false;
    WalkFolder(pattern, Listed::Name, [&found](DirectoryEntry&) {
        found = true;
        return false;
    });
    return found;
}

} // namespace kv
