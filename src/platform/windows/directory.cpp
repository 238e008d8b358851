// Listings of a Windows folder. The system gives all names of the folder; which of them a pattern counts
// is decided here, so that a volume without short names counts the same files. A name that CP1252 does
// not hold cannot be reached by a path of the program and is neither counted nor listed.
#include "platform/directory.h"

#include <algorithm>
#include <limits>

#include <windows.h>

#include "platform/directory_names.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

struct FolderWalk {
    HANDLE Open = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW Found{}; // not looked at yet when Fresh
    bool Fresh = false;
    std::string Pattern; // of the names
    std::string Name;    // of the file found last, CP1252
};

FolderWalk BeginWalk(std::string_view pattern)
{
    FolderWalk walk;
    const std::wstring all = WidePath(FolderOf(pattern) + "*");
    walk.Open = FindFirstFileExW(all.c_str(), FindExInfoBasic, &walk.Found, FindExSearchNameMatch, nullptr,
                                 FIND_FIRST_EX_LARGE_FETCH);
    walk.Fresh = walk.Open != INVALID_HANDLE_VALUE;
    walk.Pattern = FileNameOf(pattern);
    return walk;
}

void EndWalk(FolderWalk& walk)
{
    if (walk.Open != INVALID_HANDLE_VALUE)
        FindClose(walk.Open);
    walk.Open = INVALID_HANDLE_VALUE;
}

// False when there is no further file.
bool NextFile(FolderWalk& walk)
{
    if (walk.Open == INVALID_HANDLE_VALUE)
        return false;
    while (walk.Fresh || FindNextFileW(walk.Open, &walk.Found) != 0) {
        walk.Fresh = false;
        if ((walk.Found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            continue;
        walk.Name = AnsiFromWide(walk.Found.cFileName);
        if (CanBeNamed(walk.Name) && MatchesPattern(walk.Name, walk.Pattern))
            return true;
    }
    return false;
}

DirectoryEntry EntryOf(const FolderWalk& walk)
{
    DirectoryEntry entry;
    SYSTEMTIME universal{}, local{};
    FileTimeToSystemTime(&walk.Found.ftLastWriteTime, &universal);
    SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
    entry.LongName = walk.Name;
    entry.Year = local.wYear;
    entry.Month = local.wMonth;
    entry.Day = local.wDay;
    entry.Hour = local.wHour;
    entry.Minute = local.wMinute;
    entry.Second = local.wSecond;
    constexpr DWORD LargestSize = std::numeric_limits<Long>::max();
    const bool tooLarge = walk.Found.nFileSizeHigh != 0 || walk.Found.nFileSizeLow > LargestSize;
    entry.Size = static_cast<Long>(tooLarge ? LargestSize : walk.Found.nFileSizeLow);
    return entry;
}

} // namespace

Long FCount(std::string_view pattern)
{
    FolderWalk walk = BeginWalk(pattern);
    Long count = 0;
    while (NextFile(walk)) {
        if (++count % FilesPerYield == 0)
            DoEvents();
    }
    EndWalk(walk);
    return count;
}

void ReadFileX(std::string_view pattern, Long count, std::vector<DirectoryEntry>& entries)
{
    entries.clear();
    FolderWalk walk = BeginWalk(pattern);
    while (NextFile(walk)) {
        entries.push_back(EntryOf(walk));
        if (entries.size() % FilesPerYield == 0)
            DoEvents();
    }
    EndWalk(walk);
    FinishListing(entries, count);
}

bool Exist(std::string_view pattern)
{
    if (!HasWildcard(FileNameOf(pattern)))
        return FileExists(pattern);
    FolderWalk walk = BeginWalk(pattern);
    const bool found = NextFile(walk);
    EndWalk(walk);
    return found;
}

bool GoodDrive(std::string_view path)
{
    if (path.size() < 2 || path[1] != ':')
        return true;
    const std::string root = std::string(path.substr(0, 2)) + '\\';
    return GetDriveTypeW(WideFromAnsi(root).c_str()) > DRIVE_NO_ROOT_DIR;
}

} // namespace kv
