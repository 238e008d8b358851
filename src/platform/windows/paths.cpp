// Backslash paths on Windows, where they are the host's own form: the system looks names up without
// regard to case and knows the drives. Host text is UTF-8, as the front ends give it.
#include "platform/paths.h"

#include <algorithm>

#include <windows.h>

#include "platform/stand_ins.h"
#include "platform/text.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

// Some programs hand on a long path in the form that the system's calls take it, with this in front.
std::wstring WithoutLongMark(const std::wstring& path)
{
    if (path.starts_with(L"\\\\?\\UNC\\"))
        return L"\\" + path.substr(7);
    return path.starts_with(L"\\\\?\\") ? path.substr(4) : path;
}

// The folder with its backslash.
void MeetNamesIn(const std::wstring& folder)
{
    WIN32_FIND_DATAW found{};
    const HANDLE open = FindFirstFileExW((folder + L"*").c_str(), FindExInfoBasic, &found,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (open == INVALID_HANDLE_VALUE)
        return;
    do {
        static_cast<void>(NameFromWide(found.cFileName));
    } while (FindNextFileW(open, &found) != 0);
    FindClose(open);
}

// Another process may have made a stand-in in the path, a list or a setting: the folder in which it must be
// tells whose it is, unless a file is called so itself.
void MeetStandIns(std::string_view path)
{
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find_first_of("\\/", at), path.size());
        if (IsUnknownStandIn(path.substr(at, end - at))) {
            const std::wstring spelled = WideCallPath(HostFromAnsi(path.substr(0, end)));
            if (GetFileAttributesW(spelled.c_str()) == INVALID_FILE_ATTRIBUTES)
                MeetNamesIn(WideCallPath(HostFromAnsi(path.substr(0, at))));
        }
        at = end + 1;
    }
}

} // namespace

std::string FromHostPath(std::string_view host)
{
    if (host.empty())
        return {};
    return PathFromWide(FullWidePath(WithoutLongMark(WideFromUtf8(host))));
}

std::string ToHostPath(std::string_view path)
{
    if (path.find('?') != std::string_view::npos || path.find('\0') != std::string_view::npos)
        return {};
    if (MayHoldStandIn(path))
        MeetStandIns(path);
    return HostFromAnsi(path);
}

std::string ShownPath(std::string_view path)
{
    return std::string(path);
}

std::string ExeName()
{
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (length < name.size())
            return PathFromWide(std::wstring_view(name).substr(0, length));
        name.resize(name.size() * 2); // filled to the brim: it was cut
    }
}

std::string UserConfigFolder()
{
    return WithBackslash(Environment("APPDATA")) + "Korvanti\\";
}

std::string GetWindowsFolder()
{
    std::wstring folder(GetWindowsDirectoryW(nullptr, 0), L'\0');
    folder.resize(GetWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size())));
    return WithBackslash(PathFromWide(folder));
}

std::string Environment(const char* name)
{
    const std::wstring wideName = WideFromAnsi(name);
    std::wstring value(GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
    value.resize(GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return PathFromWide(value);
}

} // namespace kv
