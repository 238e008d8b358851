// Changes in folders by inotify. A file counts when it has got its name or its writer has closed it, not at
// each piece that is written.
#include "platform/folder_events.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "platform/paths.h"

namespace kv {

namespace {

constexpr std::uint32_t FileChanges = IN_CREATE | IN_MOVED_TO | IN_CLOSE_WRITE;
constexpr std::uint32_t Listened = FileChanges | IN_MOVE_SELF | IN_ONLYDIR;

int Announcements = -1; // file handle; -1: the system announces nothing

// Whoever only asks for a lock opens its file to write, and would wake all who wait for it.
bool IsOfThePrograms(std::string_view name)
{
    return name.starts_with(".kv-");
}

// Whether it is the change of a file that others may wait for.
bool TakeAnnouncement(const inotify_event& event, std::string_view name)
{
    if ((event.mask & IN_MOVE_SELF) != 0) // a folder that has another name now is no longer the one
        ::inotify_rm_watch(Announcements, event.wd);
    return (event.mask & (FileChanges | IN_Q_OVERFLOW)) != 0 && !IsOfThePrograms(name);
}

bool TakeAnnouncements()
{
    bool changed = false;
    alignas(inotify_event) char pieces[4096];
    for (;;) {
        const ssize_t length = ::read(Announcements, pieces, sizeof pieces);
        if (length <= 0)
            return changed;
        for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, pieces + at, sizeof event);
            at += sizeof event;
            changed = TakeAnnouncement(event, event.len > 0 ? pieces + at : "") || changed;
            at += event.len; // the name with at least one NUL
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
            ::inotify_add_watch(Announcements, host.c_str(), Listened); // one that is known stays one
    }
}

bool WaitForFolderChange(double seconds)
{
    pollfd announced{Announcements, POLLIN, 0}; // a handle below 0 is passed over
    const int milliseconds = static_cast<int>(std::clamp(seconds, 0.0, 86400.0) * 1000 + 0.999);
    if (::poll(&announced, 1, milliseconds) <= 0)
        return false;
    return TakeAnnouncements();
}

} // namespace kv
