// Walks a Windows folder. The system gives all names of the folder; which of them a pattern counts is
// decided here, so that a volume without short names counts the same files. A name that CP1252 does not
// hold cannot be reached by a path of the program and is neither counted nor listed.
#include "platform/directory.h"

#include <limits>

#include <windows.h>

#include "platform/directory_names.h"
#include "platform/folder_walk.h"
#include "platform/paths.h"
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

} // namespace

// Date and size come with each name at no cost, asked for or not.
void WalkFolder(std::string_view pattern, Listed, const std::function<bool(DirectoryEntry&)>& take)
{
    const std::wstring all = WidePath(FolderOf(pattern) + "*");
    const std::string names = FileNameOf(pattern);
    WIN32_FIND_DATAW found{};
    const HANDLE open = FindFirstFileExW(all.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr,
                                         FIND_FIRST_EX_LARGE_FETCH);
    if (open == INVALID_HANDLE_VALUE)
        return;
    do {
        DirectoryEntry entry;
        entry.LongName = AnsiFromWide(found.cFileName);
        const bool folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (folder || !CanBeNamed(entry.LongName) || !MatchesPattern(entry.LongName, names))
            continue;
        ReadDateAndSize(found, entry);
        if (!take(entry))
            break;
    } while (FindNextFileW(open, &found) != 0);
    FindClose(open);
}

bool GoodDrive(std::string_view path)
{
    if (path.size() < 2 || path[1] != ':')
        return true;
    const std::string root = std::string(path.substr(0, 2)) + '\\';
    return GetDriveTypeW(WideFromAnsi(root).c_str()) > DRIVE_NO_ROOT_DIR;
}

} // namespace kv
