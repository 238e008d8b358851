// Files written aside on the POSIX host. A durable file is written under another name in its folder, flushed
// and renamed over its place; the rename reaches the disk with the next FlushFiles. A link stays a link, the
// file behind it is replaced.
#include "platform/files.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <set>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include "platform/aside_names.h"
#include "platform/paths.h"
#include "platform/posix/folder_names.h"
#include "platform/posix/host_files.h"
#include "platform/posix/host_place.h"
#include "platform/run_error.h"
#include "platform/stand_ins.h"
#include "platform/text.h"

namespace kv {

std::vector<std::string>* WrittenFiles = nullptr;
std::vector<std::string>* DiskSteps = nullptr;

namespace {

constexpr mode_t AccessBits = 07777;
constexpr mode_t NewFileMode = 0666; // less what the person's umask takes away

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
    outcome.Cause = PathFromUtf8(folder) + ": " + outcome.Cause;
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

bool IsLeft(DIR* folder, const char* name)
{
    const AsideOwner owner = OwnerOfAside(name);
    if (owner != AsideOwner::Elsewhere)
        return owner == AsideOwner::Ended;
    struct stat status {};
    return ::fstatat(::dirfd(folder), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           status.st_mtim.tv_sec + LongestAsideSeconds < ::time(nullptr);
}

} // namespace

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

void FlushLater(const std::string& folder)
{
    UnflushedFolders.insert(folder);
}

FileOutcome StageFile(std::string_view path, std::string_view contents, StagedFile& staged)
{
    staged = {};
    const HostPlace spelled = FindHostPlace(path);
    if (spelled.Path.empty())
        return LeadsNowhere(path, spelled);
    std::string place = spelled.Path;
    const int hidden = spelled.Plain || spelled.New ? 0 : GoBehindLinks(place);
    if (hidden != 0)
        return OutcomeOf(hidden, ErrorPathNotFound);
    struct stat old = spelled.Status;
    const bool replaces = spelled.Plain || (!spelled.New && StatusOf(place, old));
    if (!replaces && !spelled.New) {
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

FileOutcome MoveOrKeepStaged(StagedFile& staged)
{
    if (staged.Aside.empty())
        return {};
    FileOutcome flushed = FlushStaged(staged);
    if (!flushed.Ok())
        return flushed;
    const int error = MoveOver(staged.Aside, staged.Place);
    if (error != 0)
        return OutcomeOf(error, ErrorPathNotFound);
    if (WrittenFiles != nullptr)
        WrittenFiles->push_back(staged.Place);
    staged = {};
    return {};
}

FileOutcome FlushNameOfStaged(const StagedFile& staged)
{
    return staged.Aside.empty() ? FileOutcome{} : FlushFolderOf(staged.Aside);
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
        else if (errno != ENOENT)
            CopyStays = true;
    }
    staged = {};
}

FileOutcome ListLeftAsides(std::string_view folder, std::vector<std::string>& paths)
{
    paths.clear();
    const std::string above = WithBackslash(folder);
    const HostPlace place = FindHostPlace(above);
    if (place.Path.empty())
        return place.Error != 0 ? OutcomeOf(place.Error, ErrorPathNotFound) : FileOutcome{};
    DIR* const open = ::opendir(place.Path.c_str());
    if (open == nullptr) {
        const FileOutcome outcome = OutcomeOf(TrueError(place, errno), ErrorPathNotFound);
        return outcome.Missing ? FileOutcome{} : outcome;
    }
    errno = 0; // the end of a folder and a fault look the same but for this
    for (const dirent* found = ::readdir(open); found != nullptr; found = ::readdir(open)) {
        if (IsLeft(open, found->d_name))
            paths.push_back(above + found->d_name);
        errno = 0;
    }
    const int error = errno;
    ::closedir(open);
    return error == 0 ? FileOutcome{} : OutcomeOf(error, ErrorPathNotFound);
}

} // namespace kv
