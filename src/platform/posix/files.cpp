// File access on the POSIX host. Numbers follow the host's error, the cause is the host's wording.
// A durable file is written under another name in its folder and renamed over its place, and reaches
// the disk with the next FlushFiles; a link stays a link, the file behind it is replaced. Only regular
// files are read or replaced: a pipe would block the run, and renaming over a device would take it out
// of the system.
#include "platform/files.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <set>
#include <utility>

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"

namespace kv {

std::vector<std::string>* WrittenFiles = nullptr;

namespace {

constexpr int LongestLinkChain = 40; // as the kernel follows
constexpr mode_t AccessBits = 07777;
constexpr mode_t NewFileMode = 0666; // less what the person's umask takes away
constexpr mode_t NewFolderMode = 0777;

FileOutcome OutcomeOf(int error, int numberIfMissing)
{
    FileOutcome outcome;
    outcome.Cause = AnsiFromUtf8(std::strerror(error));
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        outcome.Number = numberIfMissing;
        break;
    case EACCES:
    case EPERM:
    case EROFS:
        outcome.Number = ErrorPermission;
        break;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        outcome.Number = ErrorDiskFull;
        break;
    case EISDIR:
        outcome.Number = ErrorFileAccess;
        break;
    default:
        outcome.Number = ErrorDeviceIo;
    }
    return outcome;
}

FileOutcome LeadsNowhere(std::string_view path)
{
    const bool unspeakable = path.find_first_of(std::string_view("?\0", 2)) != std::string_view::npos;
    if (unspeakable)
        return {ErrorPathNotFound, "a name cannot hold \"?\" or a character outside of Windows-1252"};
    if (path.size() >= 2 && path[1] == ':')
        return {ErrorPathNotFound, "no drive " + std::string(path.substr(0, 2))};
    return {ErrorPathNotFound, "no path"};
}

bool StatusOf(const std::string& host, struct stat& status)
{
    return ::stat(host.c_str(), &status) == 0;
}

// Folder of a host path, with its slash; empty for the current folder.
std::string HostFolder(const std::string& host)
{
    return host.substr(0, host.rfind('/') + 1);
}

// For a file that was not found: is it the file or its folder that is missing?
int NumberForMissing(const std::string& host)
{
    const std::string folder = HostFolder(host);
    struct stat status {};
    const bool folderStands = StatusOf(folder.empty() ? "." : folder, status) && S_ISDIR(status.st_mode);
    return folderStands ? ErrorFileNotFound : ErrorPathNotFound;
}

FileOutcome RefuseUnlessRegular(mode_t mode)
{
    if (S_ISDIR(mode))
        return {ErrorFileAccess, "is a folder"};
    if (!S_ISREG(mode))
        return {ErrorFileAccess, "is no regular file"};
    return {};
}

// The place that the last link of a chain names, whether a file stands there or not.
std::string BehindLinks(std::string host)
{
    for (int i = 0; i < LongestLinkChain; ++i) {
        std::string target(4096, '\0');
        const ssize_t length = ::readlink(host.c_str(), target.data(), target.size());
        if (length < 0)
            break; // no link
        target.resize(static_cast<std::size_t>(length));
        host = target[0] == '/' ? target : HostFolder(host) + target;
    }
    return host;
}

// Beyond the size limit of a process the system sends SIGXFSZ, which would end the program; with
// the signal held back the write just fails. Taken off again before the old mask returns.
struct FileSizeSignalHeld {
    FileSizeSignalHeld()
    {
        sigemptyset(&Set);
        sigaddset(&Set, SIGXFSZ);
        pthread_sigmask(SIG_BLOCK, &Set, &Before);
    }
    ~FileSizeSignalHeld()
    {
        const timespec noWait{};
        while (sigtimedwait(&Set, nullptr, &noWait) > 0) {
        }
        pthread_sigmask(SIG_SETMASK, &Before, nullptr);
    }
    FileSizeSignalHeld(const FileSizeSignalHeld&) = delete;
    FileSizeSignalHeld& operator=(const FileSizeSignalHeld&) = delete;

  private:
    sigset_t Set{};
    sigset_t Before{};
};

int WriteAll(int file, std::string_view contents)
{
    while (!contents.empty()) {
        const ssize_t written = ::write(file, contents.data(), contents.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return errno;
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

// Rights, group and owner of the old file, as far as the person may give them; a file system that
// refuses them all has none to keep.
void TakeRights(int file, const struct stat& old)
{
    constexpr uid_t SameOwner = static_cast<uid_t>(-1);
    constexpr gid_t SameGroup = static_cast<gid_t>(-1);
    const bool grouped = ::fchown(file, SameOwner, old.st_gid) == 0;
    const bool owned = ::fchown(file, old.st_uid, SameGroup) == 0;
    const mode_t kept = grouped && owned ? AccessBits : AccessBits & ~static_cast<mode_t>(S_ISUID | S_ISGID);
    ::fchmod(file, old.st_mode & kept);
}

// Writes, takes over the rights of the old file and closes. 0 or the system's error.
int FinishCopy(int file, std::string_view contents, const struct stat* old)
{
    const FileSizeSignalHeld held;
    int error = WriteAll(file, contents);
    if (error == 0 && old != nullptr)
        TakeRights(file, *old);
    if (::close(file) != 0 && error == 0)
        error = errno;
    return error;
}

// Makes a new file in the folder, under a name that no other process and no earlier run uses.
int MakeAside(const std::string& folder, std::string& name)
{
    static unsigned counter = 0;
    for (;;) {
        name = folder + ".kv-" + WholeText(::getpid()) + '-' + WholeText(++counter) + ".tmp";
        const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NewFileMode);
        if (file >= 0 || errno != EEXIST)
            return file;
    }
}

// Host paths of moved files that the disk may not hold yet; an index that a list of drawings replaces
// a thousand times stands here once.
std::set<std::string> Unflushed;

int FlushFile(const std::string& host)
{
    const int file = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return errno == ENOENT ? 0 : errno; // taken away since
    const int error = ::fsync(file) != 0 ? errno : 0;
    ::close(file);
    return error;
}

// A rename is durable when its folder is. Some file systems know no flush of a folder; the new
// file stands all the same, so this cannot fail any more.
void FlushFolder(const std::string& folder)
{
    const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}

std::string WithoutSlash(std::string host)
{
    while (host.size() > 1 && host.back() == '/')
        host.pop_back();
    return host;
}

// 0 or the system's error.
int MoveOver(const std::string& from, const std::string& to)
{
    if (::rename(from.c_str(), to.c_str()) != 0)
        return errno;
    Unflushed.insert(to);
    return 0;
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

} // namespace

bool FileExists(std::string_view path)
{
    struct stat status {};
    return StatusOf(ToHostPath(path), status) && !S_ISDIR(status.st_mode);
}

bool FolderExists(std::string_view path)
{
    struct stat status {};
    return StatusOf(ToHostPath(path), status) && S_ISDIR(status.st_mode);
}

std::uint64_t FileSize(std::string_view path)
{
    struct stat status {};
    if (!StatusOf(ToHostPath(path), status) || !S_ISREG(status.st_mode))
        return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

FileStamp StampOf(std::string_view path)
{
    struct stat status {};
    if (!StatusOf(ToHostPath(path), status))
        return {};
    constexpr std::int64_t second = 1000000000; // ns
    return {static_cast<std::uint64_t>(status.st_size),
            status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec,
            static_cast<std::uint64_t>(status.st_ino)};
}

FileOutcome OpenForReading(std::string_view path, int& handle, std::uint64_t& size)
{
    handle = -1;
    size = 0;
    const std::string host = ToHostPath(path);
    if (host.empty())
        return LeadsNowhere(path);
    const int file = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0)
        return OutcomeOf(errno, NumberForMissing(host));
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

void SkipTo(int handle, std::uint64_t at)
{
    ::lseek(handle, static_cast<off_t>(at), SEEK_SET);
}

void CloseReading(int handle)
{
    if (handle >= 0)
        ::close(handle);
}

FileOutcome StageFile(std::string_view path, std::string_view contents, StagedFile& staged)
{
    staged = {};
    const std::string spelled = ToHostPath(path);
    if (spelled.empty())
        return LeadsNowhere(path);
    const std::string place = BehindLinks(spelled);
    struct stat old {};
    const bool replaces = StatusOf(place, old);
    if (!replaces && errno != ENOENT)
        return OutcomeOf(errno, ErrorPathNotFound);
    if (replaces) {
        const FileOutcome refused = RefuseUnlessRegular(old.st_mode);
        if (!refused.Ok())
            return refused;
        // A rename asks for the folder's rights only; a file set read-only is meant to stay.
        if (::faccessat(AT_FDCWD, place.c_str(), W_OK, AT_EACCESS) != 0)
            return OutcomeOf(errno, ErrorPathNotFound);
    }
    std::string aside;
    const int file = MakeAside(HostFolder(place), aside);
    if (file < 0)
        return OutcomeOf(errno, ErrorPathNotFound);
    const int error = FinishCopy(file, contents, replaces ? &old : nullptr);
    if (error != 0) {
        ::unlink(aside.c_str());
        return OutcomeOf(error, ErrorPathNotFound);
    }
    staged = {place, aside};
    return {};
}

FileOutcome MoveStaged(StagedFile& staged)
{
    if (staged.Aside.empty())
        return {};
    const int error = MoveOver(staged.Aside, staged.Place);
    if (error != 0) {
        DropStaged(staged);
        return OutcomeOf(error, ErrorPathNotFound);
    }
    if (WrittenFiles != nullptr)
        WrittenFiles->push_back(staged.Place);
    staged = {};
    return {};
}

FileOutcome FlushFiles()
{
    FileOutcome outcome;
    std::set<std::string> folders;
    for (const std::string& host : std::exchange(Unflushed, {})) {
        const int error = FlushFile(host);
        if (error != 0 && outcome.Ok()) {
            outcome = OutcomeOf(error, ErrorFileNotFound);
            outcome.Cause = AnsiFromUtf8(host) + ": " + outcome.Cause;
        }
        folders.insert(HostFolder(host));
    }
    for (const std::string& folder : folders)
        FlushFolder(folder);
    return outcome;
}

void DropStaged(StagedFile& staged)
{
    if (!staged.Aside.empty())
        ::unlink(staged.Aside.c_str());
    staged = {};
}

FileOutcome CheckWritable(std::string_view path)
{
    const std::string host = ToHostPath(path);
    if (host.empty())
        return LeadsNowhere(path);
    struct stat status {};
    if (!StatusOf(host, status))
        return OutcomeOf(errno, NumberForMissing(host));
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
    const std::string host = WithoutSlash(ToHostPath(path));
    if (host.empty())
        return LeadsNowhere(path);
    if (::mkdir(host.c_str(), NewFolderMode) == 0)
        return {};
    const int error = errno;
    struct stat status {};
    if (StatusOf(host, status)) // what stands there already wins over the reason of the refusal
        return S_ISDIR(status.st_mode) ? FileOutcome{} : FileOutcome{ErrorFileAccess, "is no folder"};
    return OutcomeOf(error, ErrorPathNotFound);
}

FileOutcome MakeFolders(std::string_view path)
{
    const std::string host = WithoutSlash(ToHostPath(path));
    if (host.empty())
        return LeadsNowhere(path);
    struct stat status {};
    if (StatusOf(host, status) && S_ISDIR(status.st_mode))
        return {};
    for (std::size_t end = host.find('/', 1); end != std::string::npos; end = host.find('/', end + 1)) {
        const std::string above = host.substr(0, end);
        if (!StatusOf(above, status) && ::mkdir(above.c_str(), NewFolderMode) != 0 && errno != EEXIST)
            return OutcomeOf(errno, ErrorPathNotFound);
    }
    return MakeFolder(path);
}

FileOutcome DeleteFile(std::string_view path)
{
    const std::string host = ToHostPath(path);
    if (host.empty() || ::unlink(host.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR)
        return {};
    return OutcomeOf(errno, ErrorFileNotFound);
}

FileOutcome RenameFile(std::string_view path, std::string_view newPath)
{
    const std::string host = ToHostPath(path);
    const std::string newHost = ToHostPath(newPath);
    if (host.empty() || newHost.empty())
        return LeadsNowhere(host.empty() ? path : newPath);
    const int error = MoveOver(host, newHost);
    return error == 0 ? FileOutcome{} : OutcomeOf(error, NumberForMissing(host));
}

} // namespace kv
