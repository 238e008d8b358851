// Locks on the POSIX host: flock, which belongs to the open file and not to the process, so that it also
// parts two locks of one process, and no other handle that is closed gives it back.
#include "platform/file_lock.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/paths.h"
#include "platform/posix/host_files.h"
#include "platform/stand_ins.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr mode_t NewLockMode = 0666; // less what the person's umask takes away
constexpr std::size_t LongestHolder = 512;

// For those who wait; without it they are told of another process.
void WriteHolder(int file)
{
    const std::string text = Utf8FromAnsi(LockHolderText());
    // In one piece and cut behind it, so that no reader meets an empty file in between.
    if (::pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()))
        static_cast<void>(::ftruncate(file, static_cast<off_t>(text.size())) == 0);
}

std::string ReadHolder(int file)
{
    std::string text(LongestHolder, '\0');
    const ssize_t length = ::pread(file, text.data(), text.size(), 0);
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return HolderOf(AnsiFromUtf8(text));
}

} // namespace

LockAnswer FileLock::TryLock(std::string_view path)
{
    Release();
    std::string host;
    const FileOutcome outcome = HostFileBehindLinks(path, host);
    if (!outcome.Ok())
        return {LockState::CannotBe, {}, outcome};
    const std::size_t name = host.rfind('/') + 1;
    const std::string lock =
        host.substr(0, name) + HostFromAnsi(LockFileName(NameFromUtf8(host.substr(name))));
    const int file = ::open(lock.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, NewLockMode);
    if (file < 0)
        return {LockState::CannotBe, {}, HostOutcome(errno)};
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
        Handle = file;
        WriteHolder(file);
        return {LockState::Taken, {}, {}};
    }
    const int error = errno;
    LockAnswer answer;
    if (error == EWOULDBLOCK)
        answer = {LockState::Held, ReadHolder(file), {}};
    else
        answer = {LockState::CannotBe, {}, HostOutcome(error)};
    ::close(file);
    return answer;
}

void FileLock::Release()
{
    if (Handle != NoHandle)
        ::close(static_cast<int>(Handle));
    Handle = NoHandle;
}

} // namespace kv
