// What the files of this room share: the system's errors as outcomes, and where a path leads.
#include "platform/posix/host_files.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr int LongestLinkChain = 40; // as the kernel follows

// Of a path that the system cannot even be asked for; then no file has it.
FileOutcome NoSuchPath(std::string_view path)
{
    const bool unspeakable = path.find_first_of(std::string_view("?\0", 2)) != std::string_view::npos;
    if (unspeakable)
        return {ErrorPathNotFound, "a name cannot hold \"?\"", true};
    if (path.size() >= 2 && path[1] == ':')
        return {ErrorPathNotFound, "no drive " + std::string(path.substr(0, 2)), true};
    return {ErrorPathNotFound, "no path", true};
}

} // namespace

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

FileOutcome LeadsNowhere(std::string_view path, const HostPlace& place)
{
    return place.Error != 0 ? OutcomeOf(place.Error, ErrorPathNotFound) : NoSuchPath(path);
}

int TrueError(const HostPlace& place, int error)
{
    return place.Error != 0 && (error == ENOENT || error == ENOTDIR) ? place.Error : error;
}

bool StatusOf(const std::string& host, struct stat& status)
{
    return ::stat(host.c_str(), &status) == 0;
}

bool StatusOf(const HostPlace& place, struct stat& status)
{
    if (!place.Plain)
        return StatusOf(place.Path, status);
    status = place.Status;
    return true;
}

std::string HostFolder(const std::string& host)
{
    return host.substr(0, host.rfind('/') + 1);
}

FileOutcome RefuseUnlessRegular(mode_t mode)
{
    if (S_ISDIR(mode))
        return {ErrorFileAccess, "is a folder"};
    if (!S_ISREG(mode))
        return {ErrorFileAccess, "is no regular file"};
    return {};
}

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

} // namespace kv
