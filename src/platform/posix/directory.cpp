// Walks a POSIX folder. Names on disk are UTF-8; a name that CP1252 does not hold, or that holds a
// backslash, cannot be reached by a path of the program and is neither counted nor listed. A link is what
// it leads to. The folder is read by its own handle, so that 50,000 files cost one small call each.
#include "platform/directory.h"

#include <ctime>
#include <limits>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/directory_names.h"
#include "platform/files.h"
#include "platform/folder_walk.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace {

bool IsFile(DIR* folder, const dirent& found)
{
    if (found.d_type == DT_REG)
        return true;
    if (found.d_type != DT_LNK && found.d_type != DT_UNKNOWN)
        return false;
    struct stat status {};
    return ::fstatat(::dirfd(folder), found.d_name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

// False when the file has gone since it was found.
bool ReadDateAndSize(DIR* folder, const dirent& found, DirectoryEntry& entry)
{
    struct stat status {};
    if (::fstatat(::dirfd(folder), found.d_name, &status, 0) != 0)
        return false;
    std::tm written{};
    ::localtime_r(&status.st_mtime, &written);
    entry.Year = written.tm_year + 1900;
    entry.Month = written.tm_mon + 1;
    entry.Day = written.tm_mday;
    entry.Hour = written.tm_hour;
    entry.Minute = written.tm_min;
    entry.Second = written.tm_sec;
    constexpr auto LargestSize = std::numeric_limits<Long>::max();
    entry.Size = status.st_size < LargestSize ? static_cast<Long>(status.st_size) : LargestSize;
    return true;
}

} // namespace

void WalkFolder(std::string_view pattern, Listed listed, const std::function<bool(DirectoryEntry&)>& take)
{
    const std::string folder = FolderOf(pattern), names = FileNameOf(pattern);
    const std::string host = folder.empty() ? "." : ToHostPath(folder);
    DIR* const open = host.empty() ? nullptr : ::opendir(host.c_str());
    if (open == nullptr)
        return;
    while (const dirent* const found = ::readdir(open)) {
        DirectoryEntry entry;
        entry.LongName = AnsiFromUtf8(found->d_name);
        if (!CanBeNamed(entry.LongName) || !MatchesPattern(entry.LongName, names) || !IsFile(open, *found))
            continue;
        if (listed == Listed::NameDateAndSize && !ReadDateAndSize(open, *found, entry))
            continue;
        if (!take(entry))
            break;
    }
    ::closedir(open);
}

bool GoodDrive(std::string_view path)
{
    if (path.size() < 2 || path[1] != ':')
        return true;
    return FolderExists(std::string(path.substr(0, 2)) + '\\');
}

} // namespace kv
