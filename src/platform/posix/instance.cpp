// One window for each installation and person on the POSIX host. The first process holds a lock on a file
// in the person's runtime folder, or in the configuration folder where there is none; the system frees it
// when that process ends, however it ends. A later one leaves a request file beside it, which the first
// takes away when it looks. The installation's own folder is not touched.
#include "platform/instance.h"

#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/files.h"
#include "platform/paths.h"

namespace kv {

namespace {

constexpr mode_t OwnersAlone = 0600;

int HeldLock = -1;       // file handle
std::string HeldRequest; // host path of the file by which others ask

// Host path with a slash at the end.
std::string RuntimeFolder()
{
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && runtime[0] == '/' && ::access(runtime, W_OK | X_OK) == 0)
        return std::string(runtime) + '/';
    static_cast<void>(MakeFolders(UserConfigFolder())); // if it cannot be made, the lock cannot either
    return ToHostPath(UserConfigFolder());
}

// However the folder is spelled, and by whatever links it is reached.
std::string RealFolder(std::string_view folder)
{
    const std::string host = ToHostPath(folder);
    char* const real = ::realpath(host.c_str(), nullptr);
    if (real == nullptr)
        return host;
    std::string path = real;
    std::free(real);
    return path;
}

void LetGo()
{
    if (HeldLock >= 0)
        ::close(HeldLock);
    HeldLock = -1;
    HeldRequest.clear();
}

void LeaveRequest(const std::string& request)
{
    const int file = ::open(request.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, OwnersAlone);
    if (file >= 0)
        ::close(file);
}

} // namespace

bool BecomeOnlyInstance(std::string_view folder)
{
    LetGo();
    const std::string place = RuntimeFolder() + InstanceName(RealFolder(folder));
    const std::string request = place + ".front";
    // Not for programs that are started: they would hold the lock beyond this process's end.
    const int file = ::open((place + ".lock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, OwnersAlone);
    if (file < 0)
        return true; // without a place for the lock the work goes on, twice if need be
    if (::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        ::close(file);
        LeaveRequest(request);
        return false;
    }
    HeldLock = file;
    HeldRequest = request;
    ::unlink(request.c_str()); // meant for one that has ended
    return true;
}

bool AskedToFront()
{
    return !HeldRequest.empty() && ::unlink(HeldRequest.c_str()) == 0;
}

} // namespace kv
