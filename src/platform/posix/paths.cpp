// Backslash paths on the POSIX host. Names on disk are UTF-8, paths of the program CP1252.
// A path leads nowhere (empty host path, which no call finds) when its drive is not there or when a
// name in it holds "?", the stand-in for characters that CP1252 does not have.
// The disk is asked for the path as spelled first; only a miss costs a walk through the folders.
#include "platform/paths.h"

#include <cerrno>
#include <cstdlib>
#include <vector>

#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/text.h"

namespace kv {

namespace {

constexpr std::string_view DrivesVariable = "KORVANTI_DRIVES";

bool HasDrive(std::string_view path)
{
    return path.size() >= 2 && path[1] == ':' && UpperChar(path[0]) >= 'A' && UpperChar(path[0]) <= 'Z';
}

bool Exists(const std::string& host)
{
    struct stat entry {};
    return ::lstat(host.c_str(), &entry) == 0; // a link whose end is missing is an entry too
}

std::string HostVariable(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string WithSlashes(std::string_view path)
{
    std::string host = Utf8FromAnsi(path);
    ReplaceChar(host, '\\', '/');
    return host;
}

// The entry of the folder that equals `name` (CP1252) without case, in the host's spelling. Of
// several the first in byte order, so that every run takes the same one. Empty when there is none.
std::string EntryIgnoringCase(const std::string& folder, std::string_view name)
{
    DIR* const open = ::opendir(folder.c_str());
    if (open == nullptr)
        return {};
    constexpr std::size_t LongestUtf8 = 3; // bytes of one CP1252 character
    std::string found;
    while (const dirent* const entry = ::readdir(open)) {
        const std::string_view spelled(entry->d_name);
        if (spelled.size() < name.size() || spelled.size() > name.size() * LongestUtf8)
            continue;
        if (EqualIgnoringCase(AnsiFromUtf8(spelled), name) && (found.empty() || spelled < found))
            found = spelled;
    }
    ::closedir(open);
    return found;
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
std::string LookUpInFolder(const std::string& exact, std::string_view name)
{
    if (exact.back() == '/' || exact.find("//") != std::string::npos)
        return {};
    const std::string folder = exact.substr(0, exact.rfind('/') + 1);
    if (folder.empty() || !Exists(folder))
        return {};
    const std::string entry = EntryIgnoringCase(folder, name);
    return entry.empty() ? exact : folder + entry;
}

// Follows `path` (CP1252) from `root`, which ends in a slash or is empty for the current folder.
std::string LookUp(const std::string& root, std::string_view path)
{
    std::string exact = root + WithSlashes(path);
    if (Exists(exact))
        return exact;
    std::string host = LookUpInFolder(exact, path.substr(path.find_last_of("/\\") + 1));
    if (!host.empty())
        return host;
    host = root;
    bool missing = false; // below a missing entry everything is new
    for (const std::string_view part : Components(path)) {
        const std::string spelled = Utf8FromAnsi(part);
        std::string entry;
        if (!missing && !Exists(host + spelled)) {
            entry = EntryIgnoringCase(host.empty() ? "." : host, part);
            missing = entry.empty();
        }
        host += entry.empty() ? spelled : entry;
        host += '/';
    }
    const bool folderForm = !path.empty() && (path.back() == '\\' || path.back() == '/');
    if (!folderForm && host.size() > root.size())
        host.pop_back();
    return host;
}

// Host folder of a drive letter with a slash at the end; empty when there is no such drive.
std::string DriveFolder(char letter)
{
    std::string drives = HostVariable(DrivesVariable.data());
    if (drives.empty())
        return {};
    drives += '/';
    if (Exists(drives + letter))
        return drives + letter + '/';
    const std::string entry = EntryIgnoringCase(drives, std::string_view(&letter, 1));
    return entry.empty() ? std::string() : drives + entry + '/';
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
    std::string path = AnsiFromUtf8(host);
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

std::string ToHostPath(std::string_view path)
{
    if (path.empty() || path.find('?') != std::string_view::npos || path.find('\0') != std::string_view::npos)
        return {};
    if (HasDrive(path)) {
        const std::string drive = DriveFolder(path[0]);
        path.remove_prefix(2);
        while (!path.empty() && (path[0] == '\\' || path[0] == '/'))
            path.remove_prefix(1);
        return drive.empty() ? std::string() : LookUp(drive, path);
    }
    if (path[0] == '\\' || path[0] == '/')
        return LookUp("/", path.substr(1));
    return LookUp("", path);
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
    return AnsiFromUtf8(HostVariable(name));
}

std::string GetWindowsFolder()
{
    return "C:\\Windows\\";
}

} // namespace kv
