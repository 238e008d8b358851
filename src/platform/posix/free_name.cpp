// Renaming without replacing on the POSIX host. A file system that does not know it takes a second link and
// loses the first one; one without links is asked before, which is the best it can do.
#include "platform/free_name.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"

namespace kv {

namespace {

bool IsUnknownThere(int error)
{
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

// 0 or the system's error.
int LinkAndUnlink(const char* from, const char* to)
{
    if (::link(from, to) != 0)
        return errno;
    return ::unlink(from) == 0 ? 0 : errno;
}

int RenameWithoutReplacing(const char* from, const char* to)
{
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return 0;
    if (!IsUnknownThere(errno))
        return errno;
    const int error = LinkAndUnlink(from, to);
    if (!IsUnknownThere(error) && error != EPERM)
        return error;
    if (::access(to, F_OK) == 0)
        return EEXIST;
    return ::rename(from, to) == 0 ? 0 : errno;
}

int NumberOfRefusal(int error)
{
    switch (error) {
    case EEXIST:
        return ErrorFileExists;
    case ENOENT:
    case ENOTDIR:
        return ErrorFileNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
        return ErrorPermission;
    case ENOSPC:
    case EDQUOT:
        return ErrorDiskFull;
    default:
        return ErrorDeviceIo;
    }
}

} // namespace

FileOutcome RenameToFree(std::string_view path, std::string_view newPath)
{
    const std::string host = ToHostPath(path);
    const std::string newHost = ToHostPath(newPath);
    if (host.empty() || newHost.empty())
        return {ErrorPathNotFound, "the path leads nowhere"};
    const int error = RenameWithoutReplacing(host.c_str(), newHost.c_str());
    if (error == 0)
        return {};
    return {NumberOfRefusal(error), AnsiFromUtf8(std::strerror(error)), error == ENOENT || error == ENOTDIR};
}

} // namespace kv
