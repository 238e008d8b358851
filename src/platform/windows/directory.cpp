// Walks a Windows folder. The system gives all names of the folder; which of them a pattern counts is
// decided here, so that a volume without short names counts the same files. A name that CP1252 does not
// hold goes under its stand-in; one whose stand-in another name has, or that is no text, cannot be reached by
// a path of the program and is neither counted nor listed.
#include "platform/directory.h"

#include <limits>

#include <windows.h>

#include "platform/directory_names.h"
#include "platform/files.h"
#include "platform/folder_walk.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "platform/windows/host_files.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

void ReadDateAndSize(const WIN32_FIND_DATAW& found, DirectoryEntry& entry)
{
    SYSTEMTIME universal{}, local{};
    FileTimeToSystemTime(&found.ftLastWriteTime, &universal);
    SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
    entry.Year = local.wYear;
    entry.Month = local.wMonth;
    entry.Day = local.wDay;
    entry.Hour = local.wHour;
    entry.Minute = local.wMinute;
    entry.Second = local.wSecond;
    constexpr DWORD LargestSize = std::numeric_limits<Long>::max();
    const bool tooLarge = found.nFileSizeHigh != 0 || found.nFileSizeLow > LargestSize;
    entry.Size = static_cast<Long>(tooLarge ? LargestSize : found.nFileSizeLow);
}

// False at the end of the folder, and when it cannot be read on, which goes to `fault`.
bool NextFile(HANDLE folder, WIN32_FIND_DATAW& found, DWORD& fault)
{
    if (FindNextFileW(folder, &found) != 0)
        return true;
    const DWORD error = GetLastError();
    if (error != ERROR_NO_MORE_FILES)
        fault = error;
    return false;
}

// All entries of a folder. INVALID_HANDLE_VALUE, and why not; an empty drive has ERROR_FILE_NOT_FOUND.
HANDLE OpenFolder(const std::wstring& all, WIN32_FIND_DATAW& found)
{
    return FindFirstFileExW(all.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr,
                            FIND_FIRST_EX_LARGE_FETCH);
}

// The root of an empty drive holds nothing, not even itself.
FileAnswer AnswerOfUnopened(DWORD error)
{
    const bool empty = error == ERROR_FILE_NOT_FOUND || error == ERROR_NO_MORE_FILES;
    return empty ? FileAnswer{Presence::There, {}} : AnswerOf(HostOutcome(error));
}

// Hands each entry to `take` until it answers false. The folder's path ends in a backslash.
template <typename Take> FileAnswer TakeEntries(const std::string& folder, const Take& take)
{
    const std::wstring all = WidePath(folder + "*");
    if (all.empty())
        return {Presence::NotThere, {}};
    WIN32_FIND_DATAW found{};
    const HANDLE open = OpenFolder(all, found);
    if (open == INVALID_HANDLE_VALUE)
        return AnswerOfUnopened(GetLastError());
    DWORD error = ERROR_SUCCESS;
    while (take(found) && NextFile(open, found, error)) {
    }
    FindClose(open);
    return error == ERROR_SUCCESS ? FileAnswer{Presence::There, {}} : AnswerOf(HostOutcome(error));
}

bool NamesFolder(const WIN32_FIND_DATAW& found)
{
    return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

FileAnswer ReadFolders(std::string_view folder, std::vector<std::string>& names)
{
    names.clear();
    FileAnswer answer = TakeEntries(WithBackslash(folder), [&](const WIN32_FIND_DATAW& found) {
        std::string name = NameFromWide(found.cFileName);
        if (NamesFolder(found) && name != "." && name != ".." && CanBeNamed(name))
            names.push_back(std::move(name));
        return true;
    });
    if (answer.Is != Presence::There)
        names.clear();
    return answer;
}

// Date and size come with each name at no cost, asked for or not.
FileAnswer WalkFolder(std::string_view pattern, Listed, const std::function<bool(DirectoryEntry&)>& take)
{
    const std::string names = FileNameOf(pattern);
    return TakeEntries(FolderOf(pattern), [&](const WIN32_FIND_DATAW& found) {
        DirectoryEntry entry;
        entry.LongName = NameFromWide(found.cFileName);
        if (NamesFolder(found) || !CanBeNamed(entry.LongName) || !MatchesPattern(entry.LongName, names))
            return true;
        ReadDateAndSize(found, entry);
        return take(entry);
    });
}

FileAnswer ReadEntryOf(std::string_view path, DirectoryEntry& entry)
{
    WIN32_FIND_DATAW found{};
    const std::wstring wide = WidePath(path);
    const HANDLE open = wide.empty() ? INVALID_HANDLE_VALUE : FindFirstFileW(wide.c_str(), &found);
    if (open == INVALID_HANDLE_VALUE)
        return wide.empty() ? FileAnswer{Presence::NotThere, {}} : AnswerOf(HostOutcome(GetLastError()));
    FindClose(open);
    if (NamesFolder(found))
        return {Presence::NotThere, {}};
    entry.LongName = FileNameOf(path);
    ReadDateAndSize(found, entry);
    return {Presence::There, {}};
}

FileAnswer ReadUnlisted(std::string_view pattern, std::vector<UnlistedFile>& files)
{
    files.clear();
    const std::string names = FileNameOf(pattern);
    FileAnswer answer = TakeEntries(FolderOf(pattern), [&](const WIN32_FIND_DATAW& found) {
        std::string name = NameFromWide(found.cFileName);
        if (!NamesFolder(found) && !CanBeNamed(name) && MatchesPattern(name, names))
            files.push_back({std::move(name), std::string(CauseOfUnnamed(Utf8FromWide(found.cFileName)))});
        return true;
    });
    if (answer.Is != Presence::There)
        files.clear();
    return answer;
}

FileAnswer AskDrive(std::string_view path)
{
    if (path.size() < 2 || path[1] != ':')
        return {Presence::There, {}};
    const std::string root = std::string(path.substr(0, 2)) + '\\';
    switch (GetDriveTypeW(WideFromAnsi(root).c_str())) {
    case DRIVE_UNKNOWN:
        return {Presence::CannotTell, {ErrorDeviceIo, "the system does not know the drive"}};
    case DRIVE_NO_ROOT_DIR:
        return {Presence::NotThere, {}};
    default:
        return {Presence::There, {}};
    }
}

} // namespace kv
