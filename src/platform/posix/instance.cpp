// One process for each installation on the POSIX host, whoever started it: a lock file in the installation's
// folder, which other machines see too. A person who may not write there locks the folder itself, which needs
// no more than looking into it; so everybody does that besides. A later window leaves a request file, which
// the first takes away when it looks.
#include "platform/instance.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/file_lock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr mode_t AnybodysFile = 0666; // less what the person's umask takes away

FileLock HeldLock;
int HeldFolder = -1;     // file handle
std::string HeldRequest; // host path of the file by which others ask

void LetGo()
{
    HeldLock.Release();
    if (HeldFolder >= 0)
        ::close(HeldFolder);
    HeldFolder = -1;
    HeldRequest.clear();
}

std::string RequestFile(std::string_view folder)
{
    return ToHostPath(WithBackslash(folder) + ".kv-KORVANTI.front");
}

// What stands in the lock file; one who may not write it may mostly read it.
std::string HolderInFile(std::string_view folder)
{
    std::string text;
    const std::string file = WithBackslash(folder) + LockFileName(FileNameOf(InstanceFile(folder)));
    static_cast<void>(ReadWholeFile(file, text)); // else it is nobody known
    return HolderOf(AnsiFromUtf8(text));
}

// False when another process has locked the folder; true also where folders cannot be locked.
bool LockFolder(std::string_view folder)
{
    // Not for programs that are started: they would hold the lock beyond this process's end.
    const int handle = ::open(ToHostPath(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return true;
    if (::flock(handle, LOCK_EX | LOCK_NB) == 0) {
        HeldFolder = handle;
        return true;
    }
    const bool held = errno == EWOULDBLOCK;
    ::close(handle);
    return !held;
}

} // namespace

InstanceAnswer BecomeOnlyInstance(std::string_view folder)
{
    LetGo();
    const LockAnswer answer = HeldLock.TryLock(InstanceFile(folder));
    if (answer.Is == LockState::Held)
        return HeldBy(answer.Holder);
    if (!LockFolder(folder)) {
        LetGo();
        return HeldBy(HolderInFile(folder));
    }
    HeldRequest = RequestFile(folder);
    ::unlink(HeldRequest.c_str()); // meant for one that has ended
    return {true, {}, false};
}

void AskToFront(std::string_view folder)
{
    const int file = ::open(RequestFile(folder).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, AnybodysFile);
    if (file >= 0)
        ::close(file);
}

bool AskedToFront()
{
    return !HeldRequest.empty() && ::unlink(HeldRequest.c_str()) == 0;
}

} // namespace kv
