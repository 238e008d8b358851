// Walks a POSIX folder. Names on disk are UTF-8; one that CP1252 does not hold goes under its stand-in. A
// name that holds a question mark or a backslash, or whose stand-in another one has, cannot be reached by a
// path of the program and is neither counted nor listed. A link is what it leads to, and one whose end is
// missing is no file. The folder is read by its own handle, so that 50,000 files cost one small call each.
#include "platform/directory.h"

#include <cerrno>
#include <ctime>
#include <limits>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/directory_names.h"
#include "platform/files.h"
#include "platform/folder_walk.h"
#include "platform/paths.h"
#include "platform/posix/host_files.h"
#include "platform/posix/host_place.h"
#include "platform/stand_ins.h"
#include "platform/text.h"

namespace kv {

namespace {

// What the entry leads to. One of which this cannot be told (a link into a folder that is closed to the
// person) counts as a file without date and size, so that whoever opens it learns why.
Presence StatusOfEntry(DIR* folder, const dirent& found, struct stat& status)
{
    status = {};
    if (::fstatat(::dirfd(folder), found.d_name, &status, 0) == 0)
        return Presence::There;
    const bool leadsNowhere = errno == ENOENT || errno == ENOTDIR || errno == ELOOP;
    return leadsNowhere ? Presence::NotThere : Presence::CannotTell;
}

bool IsFile(DIR* folder, const dirent& found)
{
    if (found.d_type == DT_REG)
        return true;
    if (found.d_type != DT_LNK && found.d_type != DT_UNKNOWN)
        return false;
    struct stat status {};
    const Presence is = StatusOfEntry(folder, found, status);
    return is == Presence::CannotTell || (is == Presence::There && S_ISREG(status.st_mode));
}

void TakeDateAndSize(const struct stat& status, DirectoryEntry& entry)
{
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
}

// False when the file has gone since it was found.
bool ReadDateAndSize(DIR* folder, const dirent& found, DirectoryEntry& entry)
{
    struct stat status {};
    const Presence is = StatusOfEntry(folder, found, status);
    if (is == Presence::There)
        TakeDateAndSize(status, entry);
    return is != Presence::NotThere;
}

DIR* OpenFolder(const HostPlace& host, int& error)
{
    DIR* const open = host.Path.empty() ? nullptr : ::opendir(host.Path.c_str());
    if (open != nullptr)
        return open;
    error = host.Path.empty() ? ENOENT : errno;
    const bool missing = error == ENOENT || error == ENOTDIR;
    if (missing && host.Error != 0)
        error = host.Error;
    return nullptr;
}

bool IsFolder(DIR* folder, const dirent& found)
{
    const std::string_view name = found.d_name;
    if (name == "." || name == "..")
        return false;
    if (found.d_type == DT_DIR)
        return true;
    struct stat status {};
    const bool mayBe = found.d_type == DT_LNK || found.d_type == DT_UNKNOWN;
    return mayBe && StatusOfEntry(folder, found, status) == Presence::There && S_ISDIR(status.st_mode);
}

} // namespace

FileAnswer ReadFolders(std::string_view folder, std::vector<std::string>& names)
{
    names.clear();
    int error = 0;
    DIR* const open = OpenFolder(FindHostPlace(WithBackslash(folder)), error);
    if (open == nullptr)
        return AnswerOf(HostOutcome(error));
    errno = 0; // the end of a folder and a fault look the same but for this
    for (const dirent* found = ::readdir(open); found != nullptr; found = ::readdir(open)) {
        std::string name = NameFromUtf8(found->d_name);
        if (IsFolder(open, *found) && CanBeNamed(name))
            names.push_back(std::move(name));
        errno = 0;
    }
    error = errno;
    ::closedir(open);
    if (error != 0)
        names.clear();
    return error == 0 ? FileAnswer{Presence::There, {}} : AnswerOf(HostOutcome(error));
}

FileAnswer WalkFolder(std::string_view pattern, Listed listed,
                      const std::function<bool(DirectoryEntry&)>& take)
{
    const std::string folder = FolderOf(pattern), names = FileNameOf(pattern);
    const HostPlace host = folder.empty() ? HostPlace{".", 0} : FindHostPlace(folder);
    int fault = 0;
    DIR* const open = OpenFolder(host, fault);
    if (open == nullptr)
        return AnswerOf(HostOutcome(fault));
    for (;;) {
        errno = 0; // the end of a folder and a fault look the same but for this
        const dirent* const found = ::readdir(open);
        if (found == nullptr) {
            fault = errno;
            break;
        }
        DirectoryEntry entry;
        entry.LongName = NameFromUtf8(found->d_name);
        if (!CanBeNamed(entry.LongName) || !MatchesPattern(entry.LongName, names) || !IsFile(open, *found))
            continue;
        if (listed == Listed::NameDateAndSize && !ReadDateAndSize(open, *found, entry))
            continue;
        if (!take(entry))
            break;
    }
    ::closedir(open);
    return fault == 0 ? FileAnswer{Presence::There, {}} : AnswerOf(HostOutcome(fault));
}

FileAnswer ReadEntryOf(std::string_view path, DirectoryEntry& entry)
{
    struct stat status {};
    const HostPlace host = FindHostPlace(path);
    if (host.Path.empty() || ::stat(host.Path.c_str(), &status) != 0)
        return AnswerOf(HostOutcome(host.Path.empty() ? ENOENT : errno));
    if (!S_ISREG(status.st_mode))
        return {Presence::NotThere, {}};
    entry.LongName = FileNameOf(path);
    TakeDateAndSize(status, entry);
    return {Presence::There, {}};
}

// Only what may be one of them is looked at closely: the rest of a large folder costs its names alone.
FileAnswer ReadUnlisted(std::string_view pattern, std::vector<UnlistedFile>& files)
{
    files.clear();
    const std::string folder = FolderOf(pattern), names = FileNameOf(pattern);
    int fault = 0;
    DIR* const open = OpenFolder(FindHostPlace(folder), fault);
    if (open == nullptr)
        return AnswerOf(HostOutcome(fault));
    errno = 0; // the end of a folder and a fault look the same but for this
    for (const dirent* found = ::readdir(open); found != nullptr; found = ::readdir(open)) {
        std::string name = NameFromUtf8(found->d_name);
        struct stat status {};
        if (!MatchesPattern(name, names))
            continue;
        if (!CanBeNamed(name) && IsFile(open, *found))
            files.push_back({std::move(name), std::string(CauseOfUnnamed(found->d_name))});
        else if (found->d_type == DT_LNK && StatusOfEntry(open, *found, status) == Presence::NotThere)
            files.push_back({std::move(name), "the link leads nowhere"});
        errno = 0;
    }
    fault = errno;
    ::closedir(open);
    if (fault != 0)
        files.clear();
    return fault == 0 ? FileAnswer{Presence::There, {}} : AnswerOf(HostOutcome(fault));
}

FileAnswer AskDrive(std::string_view path)
{
    if (path.size() < 2 || path[1] != ':')
        return {Presence::There, {}};
    return AskFolder(std::string(path.substr(0, 2)) + '\\');
}

} // namespace kv
