// Changes in folders by inotify. A file counts when it has got its name or its writer has closed it, not at
// each piece that is written.
#include "platform/folder_events.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "platform/paths.h"

namespace kv {

namespace {

constexpr std::uint32_t FolderChanges = IN_CREATE | IN_MOVED_TO | IN_CLOSE_WRITE | IN_MOVE_SELF | IN_ONLYDIR;

int Announcements = -1; // file handle; -1: the system announces nothing

// A folder that has another name now is no longer the one to listen to.
void TakeAnnouncement(const inotify_event& event)
{
    if ((event.mask & IN_MOVE_SELF) != 0)
        ::inotify_rm_watch(Announcements, event.wd);
}

void TakeAnnouncements()
{
    alignas(inotify_event) char pieces[4096];
    for (;;) {
        const ssize_t length = ::read(Announcements, pieces, sizeof pieces);
        if (length <= 0)
            return;
        for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, pieces + at, sizeof event);
            TakeAnnouncement(event);
            at += sizeof event + event.len;
        }
    }
}

} // namespace

void ListenToFolders(const std::vector<std::string>& folders)
{
    if (Announcements < 0)
        Announcements = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (Announcements < 0)
        return;
    for (const std::string& folder : folders) {
        const std::string host = ToHostPath(folder);
        if (!host.empty())
            ::inotify_add_watch(Announcements, host.c_str(), FolderChanges); // one that is known stays one
    }
}

bool WaitForFolderChange(double seconds)
{
    pollfd announced{Announcements, POLLIN, 0}; // a handle below 0 is passed over
    const int milliseconds = static_cast<int>(std::clamp(seconds, 0.0, 86400.0) * 1000 + 0.999);
    if (::poll(&announced, 1, milliseconds) <= 0)
        return false;
    TakeAnnouncements();
    return true;
}

} // namespace kv
