// Asking for files on the POSIX host, reading them, and what is done with names alone; staged_files.cpp
// writes. Numbers follow the host's error, the cause is the host's wording. Only regular files are read or
// replaced: a pipe would block the run, and renaming over a device would take it out of the system.
#include "platform/files.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/paths.h"
#include "platform/posix/host_files.h"
#include "platform/posix/host_place.h"
#include "platform/run_error.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr mode_t NewFolderMode = 0777; // less what the person's umask takes away

// For a file that was not found: is it the file or its folder that is missing?
int NumberForMissing(const std::string& host)
{
    const std::string folder = HostFolder(host);
    struct stat status {};
    const bool folderStands = StatusOf(folder.empty() ? "." : folder, status) && S_ISDIR(status.st_mode);
    return folderStands ? ErrorFileNotFound : ErrorPathNotFound;
}

std::string WithoutSlash(std::string host)
{
    while (host.size() > 1 && host.back() == '/')
        host.pop_back();
    return host;
}

// A new folder is on the disk with its entry in the one above it. 0 or the system's error.
int MakeOne(const std::string& folder)
{
    if (::mkdir(folder.c_str(), NewFolderMode) != 0)
        return errno;
    FlushLater(HostFolder(folder));
    return 0;
}

// What another program wrote is brought to the disk before it gets a new name, where it can be opened.
// 0 or the system's error.
int FlushForeign(const std::string& host)
{
    const int file = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return 0; // the move itself says what is wrong, if anything is
    const int error = FlushHandle(file);
    ::close(file);
    return error;
}

bool HeldByAnother(int file)
{
    struct flock wanted {};
    wanted.l_type = F_WRLCK;
    wanted.l_whence = SEEK_SET;
    if (::fcntl(file, F_GETLK, &wanted) == 0 && wanted.l_type != F_UNLCK)
        return true;
    return ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK; // closing gives it back
}

FileAnswer AskStatus(std::string_view path, struct stat& status)
{
    const HostPlace place = FindHostPlace(path);
    if (place.Path.empty())
        return AnswerOf(LeadsNowhere(path, place));
    if (place.New)
        return {Presence::NotThere, {}};
    if (StatusOf(place, status))
        return {Presence::There, {}};
    return AnswerOf(OutcomeOf(TrueError(place, errno), ErrorFileNotFound));
}

} // namespace

FileAnswer AskFile(std::string_view path)
{
    struct stat status {};
    const FileAnswer answer = AskStatus(path, status);
    return answer.Is == Presence::There && S_ISDIR(status.st_mode) ? FileAnswer{Presence::NotThere, {}}
                                                                   : answer;
}

FileAnswer AskFolder(std::string_view path)
{
    struct stat status {};
    const FileAnswer answer = AskStatus(path, status);
    return answer.Is == Presence::There && !S_ISDIR(status.st_mode) ? FileAnswer{Presence::NotThere, {}}
                                                                    : answer;
}

FileAnswer AskStamp(std::string_view path, FileStamp& stamp)
{
    stamp = {};
    struct stat status {};
    const FileAnswer answer = AskStatus(path, status);
    if (answer.Is != Presence::There)
        return answer;
    constexpr std::int64_t second = 1000000000; // ns
    stamp = {static_cast<std::uint64_t>(status.st_size),
             status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec,
             static_cast<std::uint64_t>(status.st_ino)};
    return answer;
}

FileOutcome OpenForReading(std::string_view path, int& handle, std::uint64_t& size)
{
    handle = -1;
    size = 0;
    const HostPlace place = FindHostPlace(path);
    if (place.Path.empty())
        return LeadsNowhere(path, place);
    const int file = ::open(place.Path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) {
        const int error = TrueError(place, errno);
        return OutcomeOf(error, NumberForMissing(place.Path));
    }
    struct stat status {};
    FileOutcome outcome;
    if (::fstat(file, &status) != 0)
        outcome = OutcomeOf(errno, ErrorFileNotFound);
    else
        outcome = RefuseUnlessRegular(status.st_mode);
    if (!outcome.Ok()) {
        ::close(file);
        return outcome;
    }
    handle = file;
    size = static_cast<std::uint64_t>(status.st_size);
    return {};
}

bool OpenAsSpelled(std::string_view path, int& handle)
{
    const std::string host = HostFromAnsi(ShownPath(path));
    handle = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    return handle >= 0;
}

FileOutcome ReadSome(int handle, char* into, std::size_t length, std::size_t& got)
{
    got = 0;
    for (;;) {
        const ssize_t count = ::read(handle, into, length);
        if (count >= 0) {
            got = static_cast<std::size_t>(count);
            return {};
        }
        if (errno != EINTR)
            return OutcomeOf(errno, ErrorFileNotFound);
    }
}

FileOutcome SkipTo(int handle, std::uint64_t at)
{
    if (::lseek(handle, static_cast<off_t>(at), SEEK_SET) < 0)
        return OutcomeOf(errno, ErrorFileNotFound);
    return {};
}

void CloseReading(int handle)
{
    if (handle >= 0)
        ::close(handle);
}

FileOutcome CheckWritable(std::string_view path)
{
    const HostPlace place = FindHostPlace(path);
    const std::string& host = place.Path;
    if (host.empty())
        return LeadsNowhere(path, place);
    struct stat status {};
    if (!StatusOf(host, status)) {
        const int error = TrueError(place, errno);
        return OutcomeOf(error, NumberForMissing(host));
    }
    const FileOutcome refused = RefuseUnlessRegular(status.st_mode);
    if (!refused.Ok())
        return refused;
    const int file = ::open(host.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return OutcomeOf(errno, ErrorFileNotFound);
    const bool held = HeldByAnother(file);
    ::close(file);
    return held ? FileOutcome{ErrorPermission, "in use by another program"} : FileOutcome{};
}

FileOutcome MakeFolder(std::string_view path)
{
    const HostPlace place = FindHostPlace(path);
    const std::string host = WithoutSlash(place.Path);
    if (host.empty())
        return LeadsNowhere(path, place);
    // One that may be there in another spelling is not made twice.
    const int error = place.Error != 0 ? place.Error : MakeOne(host);
    if (error == 0)
        return {};
    struct stat status {};
    if (StatusOf(host, status)) // what stands there already wins over the reason of the refusal
        return S_ISDIR(status.st_mode) ? FileOutcome{} : FileOutcome{ErrorFileAccess, "is no folder"};
    return OutcomeOf(error, ErrorPathNotFound);
}

FileOutcome MakeFolders(std::string_view path)
{
    const HostPlace place = FindHostPlace(path);
    const std::string host = WithoutSlash(place.Path);
    if (host.empty())
        return LeadsNowhere(path, place);
    struct stat status {};
    if (StatusOf(place, status) && S_ISDIR(status.st_mode))
        return {};
    if (place.Error != 0)
        return OutcomeOf(place.Error, ErrorPathNotFound);
    for (std::size_t end = host.find('/', 1); end != std::string::npos; end = host.find('/', end + 1)) {
        const std::string above = host.substr(0, end);
        const int error = StatusOf(above, status) ? 0 : MakeOne(above);
        if (error != 0 && error != EEXIST)
            return OutcomeOf(error, ErrorPathNotFound);
    }
    return MakeFolder(path);
}

FileOutcome DeleteFile(std::string_view path)
{
    const HostPlace place = FindHostPlace(path);
    if (place.Path.empty())
        return place.Error != 0 ? OutcomeOf(place.Error, ErrorPathNotFound) : FileOutcome{};
    if (::unlink(place.Path.c_str()) == 0)
        return {};
    const FileOutcome outcome = OutcomeOf(TrueError(place, errno), ErrorFileNotFound);
    return outcome.Missing ? FileOutcome{} : outcome;
}

FileOutcome RenameFile(std::string_view path, std::string_view newPath)
{
    const HostPlace from = FindHostPlace(path);
    const HostPlace to = FindHostPlace(newPath);
    if (from.Path.empty() || to.Path.empty())
        return from.Path.empty() ? LeadsNowhere(path, from) : LeadsNowhere(newPath, to);
    if (to.Error != 0)
        return OutcomeOf(to.Error, ErrorPathNotFound);
    int error = FlushForeign(from.Path);
    if (error == 0)
        error = MoveOver(from.Path, to.Path);
    if (error == 0)
        return {};
    error = TrueError(from, error);
    return OutcomeOf(error, NumberForMissing(from.Path));
}

} // namespace kv
