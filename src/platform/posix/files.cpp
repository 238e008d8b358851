// File access on the POSIX host. Numbers follow the host's error, the cause is the host's wording.
// A durable file is written under another name in its folder, flushed and renamed over its place; the
// rename reaches the disk with the next FlushFiles. A link stays a link, the file behind it is replaced.
// Only regular files are read or replaced: a pipe would block the run, and renaming over a device would
// take it out of the system.
#include "platform/files.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <set>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/aside_names.h"
#include "platform/numbers.h"
#include "platform/paths.h"
#include "platform/posix/folder_names.h"
#include "platform/posix/host_files.h"
#include "platform/posix/host_place.h"
#include "platform/run_error.h"
#include "platform/text.h"

namespace kv {

std::vector<std::string>* WrittenFiles = nullptr;
std::vector<std::string>* DiskSteps = nullptr;

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
        outcome.Missing = true;
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

// Of a path that the system cannot even be asked for; then no file has it.
FileOutcome NoSuchPath(std::string_view path)
{
    const bool unspeakable = path.find_first_of(std::string_view("?\0", 2)) != std::string_view::npos;
    if (unspeakable)
        return {ErrorPathNotFound, "a name cannot hold \"?\" or a character outside of Windows-1252", true};
    if (path.size() >= 2 && path[1] == ':')
        return {ErrorPathNotFound, "no drive " + std::string(path.substr(0, 2)), true};
    return {ErrorPathNotFound, "no path", true};
}

FileOutcome LeadsNowhere(std::string_view path, const HostPlace& place)
{
    return place.Error != 0 ? OutcomeOf(place.Error, ErrorPathNotFound) : NoSuchPath(path);
}

// Nothing is there as it is spelled: that it is nowhere is known only where all folders could be read.
int TrueError(const HostPlace& place, int error)
{
    return place.Error != 0 && (error == ENOENT || error == ENOTDIR) ? place.Error : error;
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

// Goes to the place that the last link of a chain names, whether a file stands there or not. 0 or the
// system's error, when it could not be seen whether there is a link.
int GoBehindLinks(std::string& host)
{
    for (int i = 0; i < LongestLinkChain; ++i) {
        std::string target(4096, '\0');
        const ssize_t length = ::readlink(host.c_str(), target.data(), target.size());
        if (length < 0)
            return errno == EINVAL || errno == ENOENT ? 0 : errno; // no link, or nothing there
        target.resize(static_cast<std::size_t>(length));
        host = target[0] == '/' ? target : HostFolder(host) + target;
    }
    return ELOOP;
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

bool RefusesRights(int error)
{
    return error == EPERM || error == EACCES || error == EINVAL || error == ENOTSUP || error == EOPNOTSUPP ||
           error == ENOSYS;
}

// Rights, group and owner of the old file, as far as the person may give them; a file system that
// refuses them all has none to keep. 0 or the system's error.
int TakeRights(int file, const struct stat& old)
{
    constexpr uid_t SameOwner = static_cast<uid_t>(-1);
    constexpr gid_t SameGroup = static_cast<gid_t>(-1);
    const bool grouped = ::fchown(file, SameOwner, old.st_gid) == 0;
    if (!grouped && !RefusesRights(errno))
        return errno;
    const bool owned = ::fchown(file, old.st_uid, SameGroup) == 0;
    if (!owned && !RefusesRights(errno))
        return errno;
    const mode_t kept = grouped && owned ? AccessBits : AccessBits & ~static_cast<mode_t>(S_ISUID | S_ISGID);
    return ::fchmod(file, old.st_mode & kept) == 0 || RefusesRights(errno) ? 0 : errno;
}

// Writes, takes over the rights of the old file and closes. 0 or the system's error.
int FinishCopy(int file, std::string_view contents, const struct stat* old)
{
    const FileSizeSignalHeld held;
    int error = WriteAll(file, contents);
    if (error == 0 && old != nullptr)
        error = TakeRights(file, *old);
    if (::close(file) != 0 && error == 0)
        error = errno;
    return error;
}

// Makes a new file in the folder, under a name that no other process and no earlier run uses.
int MakeAside(const std::string& folder, std::string& name)
{
    static unsigned counter = 0;
    for (;;) {
        name = folder + AsideName(++counter);
        OwnFolderChange change(folder);
        const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NewFileMode);
        if (file >= 0)
            change.Made({});
        if (file >= 0 || errno != EEXIST)
            return file;
    }
}

// Host folders of moves and new folders that the disk may not hold yet; the folder of an index that a list of
// drawings replaces a thousand times stands here once.
std::set<std::string> UnflushedFolders;

void NoteStep(std::string_view step, const std::string& host)
{
    if (DiskSteps != nullptr)
        DiskSteps->push_back(std::string(step) + ' ' + host);
}

// Some file systems know no flush, of folders above all: there is none to wait for. 0 or the error.
int FlushHandle(int file)
{
    while (::fsync(file) != 0) {
        if (errno == EINVAL || errno == ENOTSUP || errno == EOPNOTSUPP || errno == ENOSYS)
            return 0;
        if (errno != EINTR)
            return errno;
    }
    return 0;
}

int FlushFile(const std::string& host)
{
    const int file = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return errno;
    const int error = FlushHandle(file);
    ::close(file);
    if (error == 0)
        NoteStep("flush", host);
    return error;
}

// A move is durable when its folder is.
int FlushFolder(const std::string& folder)
{
    const int handle = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return errno == ENOENT ? 0 : errno; // taken away since
    const int error = FlushHandle(handle);
    ::close(handle);
    if (error == 0)
        NoteStep("flush folder", folder);
    return error;
}

FileOutcome FlushFolderOf(const std::string& place)
{
    const std::string folder = HostFolder(place);
    UnflushedFolders.erase(folder);
    const int error = FlushFolder(folder);
    if (error == 0)
        return {};
    FileOutcome outcome = OutcomeOf(error, ErrorPathNotFound);
    outcome.Cause = AnsiFromUtf8(folder) + ": " + outcome.Cause;
    return outcome;
}

// The system begins to write what is to be flushed soon, so that many files wait together.
void BeginFlush(const std::string& host)
{
#ifdef SYNC_FILE_RANGE_WRITE
    const int file = ::open(host.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return; // the flush itself says why
    ::sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE);
    ::close(file);
#else
    static_cast<void>(host);
#endif
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
    OwnFolderChange change(HostFolder(to));
    if (::rename(from.c_str(), to.c_str()) != 0)
        return errno;
    change.Made(std::string_view(to).substr(to.rfind('/') + 1)); // none: npos + 1 is 0
    UnflushedFolders.insert(HostFolder(to));
    NoteStep("move", to);
    return 0;
}

bool IsLeft(DIR* folder, const char* name)
{
    const AsideOwner owner = OwnerOfAside(name);
    if (owner != AsideOwner::Elsewhere)
        return owner == AsideOwner::Ended;
    struct stat status {};
    return ::fstatat(::dirfd(folder), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           status.st_mtim.tv_sec + LongestAsideSeconds < ::time(nullptr);
}

// A new folder is on the disk with its entry in the one above it. 0 or the system's error.
int MakeOne(const std::string& folder)
{
    if (::mkdir(folder.c_str(), NewFolderMode) != 0)
        return errno;
    UnflushedFolders.insert(HostFolder(folder));
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
    if (StatusOf(place.Path, status))
        return {Presence::There, {}};
    return AnswerOf(OutcomeOf(TrueError(place, errno), ErrorFileNotFound));
}

} // namespace

FileOutcome HostOutcome(int error)
{
    return OutcomeOf(error, ErrorPathNotFound);
}

FileOutcome HostFileBehindLinks(std::string_view path, std::string& host)
{
    const HostPlace place = FindHostPlace(path);
    host = place.Path;
    if (host.empty())
        return LeadsNowhere(path, place);
    const int error = place.Error != 0 ? place.Error : GoBehindLinks(host);
    return error == 0 ? FileOutcome{} : HostOutcome(error);
}

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

FileOutcome StageFile(std::string_view path, std::string_view contents, StagedFile& staged)
{
    staged = {};
    const HostPlace spelled = FindHostPlace(path);
    if (spelled.Path.empty())
        return LeadsNowhere(path, spelled);
    std::string place = spelled.Path;
    const int hidden = GoBehindLinks(place);
    if (hidden != 0)
        return OutcomeOf(hidden, ErrorPathNotFound);
    struct stat old {};
    const bool replaces = StatusOf(place, old);
    if (!replaces) {
        const int error = TrueError(spelled, errno);
        if (error != ENOENT)
            return OutcomeOf(error, ErrorPathNotFound);
    }
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
    staged = {place, aside, false};
    return {};
}

FileOutcome FlushStaged(StagedFile& staged)
{
    if (staged.Aside.empty() || staged.Flushed)
        return {};
    const int error = FlushFile(staged.Aside);
    staged.Flushed = error == 0;
    return staged.Flushed ? FileOutcome{} : OutcomeOf(error, ErrorPathNotFound);
}

std::vector<FileOutcome> FlushStaged(std::span<StagedFile* const> files)
{
    for (const StagedFile* const staged : files) {
        if (!staged->Aside.empty() && !staged->Flushed && files.size() > 1)
            BeginFlush(staged->Aside);
    }
    std::vector<FileOutcome> outcomes;
    for (StagedFile* const staged : files)
        outcomes.push_back(FlushStaged(*staged));
    return outcomes;
}

FileOutcome MoveStaged(StagedFile& staged)
{
    if (staged.Aside.empty())
        return {};
    const FileOutcome flushed = FlushStaged(staged);
    if (!flushed.Ok()) {
        DropStaged(staged);
        return flushed;
    }
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
    const std::set<std::string> folders = std::exchange(UnflushedFolders, {});
    for (const std::string& folder : folders) {
        const FileOutcome flushed = FlushFolderOf(folder);
        if (outcome.Ok())
            outcome = flushed;
    }
    return outcome;
}

FileOutcome ReplaceFile(std::string_view path, std::string_view contents)
{
    StagedFile staged;
    FileOutcome outcome = StageFile(path, contents, staged);
    const std::string place = staged.Place;
    if (outcome.Ok())
        outcome = MoveStaged(staged);
    return outcome.Ok() ? FlushFolderOf(place) : outcome;
}

void DropStaged(StagedFile& staged)
{
    if (!staged.Aside.empty()) {
        OwnFolderChange change(HostFolder(staged.Aside));
        if (::unlink(staged.Aside.c_str()) == 0)
            change.Made({});
    }
    staged = {};
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
    if (StatusOf(host, status) && S_ISDIR(status.st_mode))
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

FileOutcome SweepAsides(std::string_view folder, int& swept)
{
    swept = 0;
    const HostPlace place = FindHostPlace(WithBackslash(folder));
    if (place.Path.empty())
        return place.Error != 0 ? OutcomeOf(place.Error, ErrorPathNotFound) : FileOutcome{};
    DIR* const open = ::opendir(place.Path.c_str());
    if (open == nullptr) {
        const FileOutcome outcome = OutcomeOf(TrueError(place, errno), ErrorPathNotFound);
        return outcome.Missing ? FileOutcome{} : outcome;
    }
    int error = 0;
    for (;;) {
        errno = 0;
        const dirent* const found = ::readdir(open);
        if (found == nullptr) {
            error = error == 0 ? errno : error;
            break;
        }
        if (!IsLeft(open, found->d_name))
            continue;
        if (::unlinkat(::dirfd(open), found->d_name, 0) == 0)
            ++swept;
        else if (errno != ENOENT) // another process sweeps too
            error = errno;
    }
    ::closedir(open);
    return error == 0 ? FileOutcome{} : OutcomeOf(error, ErrorPathNotFound);
}

} // namespace kv
