// Listings of a POSIX folder. Names on disk are UTF-8; a name that CP1252 does not hold, or that holds a
// backslash, cannot be reached by a path of the program and is neither counted nor listed. A link is what
// it leads to. The folder is read by its own handle, so that 50,000 files cost one small call each.
#include "platform/directory.h"

#include <ctime>
#include <limits>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/directory_names.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace {

struct FolderWalk {
    DIR* Open = nullptr;
    std::string Pattern;           // of the names
    std::string Name;              // of the file found last, CP1252
    const char* Spelled = nullptr; // the same, as on disk
};

FolderWalk BeginWalk(std::string_view pattern)
{
    FolderWalk walk;
    const std::string folder = FolderOf(pattern);
    const std::string host = folder.empty() ? "." : ToHostPath(folder);
    if (!host.empty())
        walk.Open = ::opendir(host.c_str());
    walk.Pattern = FileNameOf(pattern);
    return walk;
}

void EndWalk(FolderWalk& walk)
{
    if (walk.Open != nullptr)
        ::closedir(walk.Open);
    walk.Open = nullptr;
}

bool IsFile(const FolderWalk& walk, const dirent& entry)
{
    if (entry.d_type == DT_REG)
        return true;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return false;
    struct stat status {};
    return ::fstatat(::dirfd(walk.Open), entry.d_name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

// False when there is no further file.
bool NextFile(FolderWalk& walk)
{
    if (walk.Open == nullptr)
        return false;
    while (const dirent* const entry = ::readdir(walk.Open)) {
        walk.Name = AnsiFromUtf8(entry->d_name);
        walk.Spelled = entry->d_name;
        if (CanBeNamed(walk.Name) && MatchesPattern(walk.Name, walk.Pattern) && IsFile(walk, *entry))
            return true;
    }
    return false;
}

// False when the file has gone since it was found.
bool ReadEntry(const FolderWalk& walk, DirectoryEntry& entry)
{
    struct stat status {};
    if (::fstatat(::dirfd(walk.Open), walk.Spelled, &status, 0) != 0)
        return false;
    std::tm written{};
    ::localtime_r(&status.st_mtime, &written);
    entry.LongName = walk.Name;
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

Long FCount(std::string_view pattern)
{
    FolderWalk walk = BeginWalk(pattern);
    Long count = 0;
    while (NextFile(walk)) {
        if (++count % FilesPerYield == 0)
            DoEvents();
    }
    EndWalk(walk);
    return count;
}

void ReadFileX(std::string_view pattern, Long count, std::vector<DirectoryEntry>& entries)
{
    entries.clear();
    FolderWalk walk = BeginWalk(pattern);
    while (NextFile(walk)) {
        DirectoryEntry entry;
        if (ReadEntry(walk, entry))
            entries.push_back(std::move(entry));
        if (entries.size() % FilesPerYield == 0)
            DoEvents();
    }
    EndWalk(walk);
    FinishListing(entries, count);
}

bool Exist(std::string_view pattern)
{
    if (!HasWildcard(FileNameOf(pattern)))
        return FileExists(pattern);
    FolderWalk walk = BeginWalk(pattern);
    const bool found = NextFile(walk);
    EndWalk(walk);
    return found;
}

bool GoodDrive(std::string_view path)
{
    if (path.size() < 2 || path[1] != ':')
        return true;
    return FolderExists(std::string(path.substr(0, 2)) + '\\');
}

} // namespace kv
