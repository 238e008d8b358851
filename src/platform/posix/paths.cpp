// Backslash paths on the POSIX host. Names on disk are UTF-8, paths of the program CP1252, with stand-ins for
// the names that it does not hold. A path leads nowhere (empty host path, which no call finds) when its drive
// is not there or when a name in it holds "?".
// The disk is asked for the path as spelled first; only a miss costs a walk through the folders.
// What cannot be looked into ends the lookup: the rest of the path stays as it is spelled, and the
// system's error goes with it, since another spelling may be there.
#include "platform/paths.h"

#include <cerrno>
#include <cstdlib>
#include <vector>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/aside_names.h"
#include "platform/posix/folder_names.h"
#include "platform/posix/host_place.h"
#include "platform/stand_ins.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr std::string_view DrivesVariable = "KORVANTI_DRIVES";

bool HasDrive(std::string_view path)
{
    return path.size() >= 2 && path[1] == ':' && UpperChar(path[0]) >= 'A' && UpperChar(path[0]) <= 'Z';
}

bool SaysNotThere(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

// Whether an entry of that name stands there; an error of the system that tells neither goes to `fault`.
bool HasEntry(const std::string& host, struct stat& entry, int& fault)
{
    if (::lstat(host.c_str(), &entry) == 0) // a link whose end is missing is an entry too
        return true;
    if (!SaysNotThere(errno))
        fault = errno;
    return false;
}

bool Exists(const std::string& host, int& fault)
{
    struct stat entry {};
    return HasEntry(host, entry, fault);
}

std::string HostVariable(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string WithSlashes(std::string_view path)
{
    std::string host = HostFromAnsi(path);
    ReplaceChar(host, '\\', '/');
    return host;
}

// Splits at slashes; empty parts are left out.
std::vector<std::string_view> Components(std::string_view path)
{
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t end = path.find_first_of("/\\");
        if (end != 0)
            parts.push_back(path.substr(0, end));
        path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    }
    return parts;
}

// A new file in a folder that stands as it is spelled, which most new files are: only its name is
// looked for. Empty when the folder does not stand so.
std::string LookUpInFolder(const std::string& exact, std::string_view name, int& fault)
{
    if (exact.back() == '/' || exact.find("//") != std::string::npos)
        return {};
    const std::string folder = exact.substr(0, exact.rfind('/') + 1);
    if (folder.empty() || !Exists(folder, fault))
        return {};
    if (name.starts_with(OwnNameHead))
        return exact;
    const std::string entry = EntryIgnoringCase(folder, name, fault);
    // Looking for it may have shown whose stand-in the name is.
    return folder + (entry.empty() ? HostFromAnsi(name) : entry);
}

// Part by part, where a folder on the way is spelled in another way.
std::string WalkDown(const std::string& root, std::string_view path, int& fault)
{
    std::string host = root;
    bool missing = false; // below a missing entry everything is new
    for (const std::string_view part : Components(path)) {
        std::string entry;
        if (!missing && !Exists(host + HostFromAnsi(part), fault)) {
            if (fault == 0)
                entry = EntryIgnoringCase(host.empty() ? "." : host, part, fault);
            missing = entry.empty();
        }
        host += entry.empty() ? HostFromAnsi(part) : entry; // looking may have shown whose stand-in it is
        host += '/';
    }
    const bool folderForm = !path.empty() && (path.back() == '\\' || path.back() == '/');
    if (!folderForm && host.size() > root.size())
        host.pop_back();
    return host;
}

// Follows `path` (CP1252) from `root`, which ends in a slash or is empty for the current folder.
HostPlace LookUp(const std::string& root, std::string_view path)
{
    HostPlace place;
    place.Path = root + WithSlashes(path);
    if (HasEntry(place.Path, place.Status, place.Error)) {
        place.Plain = !S_ISLNK(place.Status.st_mode);
        return place;
    }
    if (place.Error != 0)
        return place;
    std::string host = LookUpInFolder(place.Path, path.substr(path.find_last_of("/\\") + 1), place.Error);
    place.New = place.Error == 0 && host == place.Path;
    if (host.empty() && place.Error == 0)
        host = WalkDown(root, path, place.Error);
    if (!host.empty())
        place.Path = host;
    return place;
}

// Host folder of a drive letter with a slash at the end; empty when there is no such drive.
HostPlace DriveFolder(char letter)
{
    std::string drives = HostVariable(DrivesVariable.data());
    if (drives.empty())
        return {};
    drives += '/';
    HostPlace drive;
    drive.Path = drives + letter + '/';
    if (Exists(drives + letter, drive.Error) || drive.Error != 0)
        return drive;
    const std::string entry = EntryIgnoringCase(drives, std::string_view(&letter, 1), drive.Error);
    if (drive.Error == 0)
        drive.Path = entry.empty() ? std::string() : drives + entry + '/';
    return drive;
}

std::string CurrentFolder()
{
    std::string folder(256, '\0');
    while (::getcwd(folder.data(), folder.size()) == nullptr) {
        if (errno != ERANGE)
            return "/";
        folder.resize(folder.size() * 2);
    }
    return folder.c_str();
}

std::string HomeFolder()
{
    const std::string home = HostVariable("HOME");
    if (!home.empty())
        return home;
    const passwd* const person = ::getpwuid(::getuid());
    return person != nullptr && person->pw_dir != nullptr ? person->pw_dir : "/";
}

} // namespace

std::string FromHostPath(std::string_view host)
{
    if (host.empty())
        return {};
    std::string path = PathFromUtf8(host);
    ReplaceChar(path, '/', '\\');
    std::string full;
    if (HasDrive(path)) {
        full = path.substr(0, 2);
        path.erase(0, 2);
    } else if (path[0] != '\\') {
        full = FromHostPath(CurrentFolder());
        if (full == "\\")
            full.clear();
    } else if (BeginsWith(path, "\\\\")) {
        full = "\\"; // the second backslash of a share's name comes with its first part
    }
    const bool folderForm = path.empty() || path.back() == '\\';
    for (const std::string_view part : Components(path)) {
        if (part != ".")
            full.append("\\").append(part);
    }
    if (folderForm || full.empty())
        full += '\\';
    return full;
}

HostPlace FindHostPlace(std::string_view path)
{
    if (path.empty() || path.find('?') != std::string_view::npos || path.find('\0') != std::string_view::npos)
        return {};
    if (HasDrive(path)) {
        const HostPlace drive = DriveFolder(path[0]);
        path.remove_prefix(2);
        while (!path.empty() && (path[0] == '\\' || path[0] == '/'))
            path.remove_prefix(1);
        if (drive.Path.empty())
            return drive;
        HostPlace place = LookUp(drive.Path, path);
        if (place.Error == 0)
            place.Error = drive.Error;
        place.New = place.New && place.Error == 0;
        return place;
    }
    if (path[0] == '\\' || path[0] == '/')
        return LookUp("/", path.substr(1));
    return LookUp("", path);
}

std::string ToHostPath(std::string_view path)
{
    return FindHostPlace(path).Path;
}

std::string ShownPath(std::string_view path)
{
    std::string shown(path);
    if (HasDrive(path)) {
        const std::string drives = Environment(DrivesVariable.data());
        if (drives.empty())
            return shown; // no folder to name: the drive's name says most
        shown.replace(1, 1, path.substr(2).starts_with('\\') ? "" : "\\"); // the colon goes
        shown.insert(0, drives + "/");
    }
    ReplaceChar(shown, '\\', '/');
    return shown;
}

std::string ExeName()
{
    std::string link(256, '\0');
    for (;;) {
        const ssize_t length = ::readlink("/proc/self/exe", link.data(), link.size());
        if (length < 0)
            return {};
        if (static_cast<std::size_t>(length) < link.size())
            return FromHostPath(std::string_view(link).substr(0, static_cast<std::size_t>(length)));
        link.resize(link.size() * 2); // filled to the brim: it may have been cut
    }
}

std::string UserConfigFolder()
{
    std::string base = HostVariable("XDG_CONFIG_HOME");
    if (base.empty() || base[0] != '/') // a relative one is to be ignored
        base = HomeFolder() + "/.config";
    return WithBackslash(FromHostPath(base)) + "korvanti\\";
}

std::string Environment(const char* name)
{
    return PathFromUtf8(HostVariable(name));
}

std::string GetWindowsFolder()
{
    return "C:\\Windows\\";
}

} // namespace kv
