// Renaming without replacing on Windows, where that is what a move does by itself.
#include "platform/free_name.h"

#include <windows.h>

#include "platform/run_error.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

int NumberOfRefusal(DWORD error)
{
    switch (error) {
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
        return ErrorFileExists;
    case ERROR_FILE_NOT_FOUND:
        return ErrorFileNotFound;
    case ERROR_PATH_NOT_FOUND:
        return ErrorPathNotFound;
    case ERROR_DISK_FULL:
        return ErrorDiskFull;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
        return ErrorPermission;
    default:
        return ErrorDeviceIo;
    }
}

} // namespace

FileOutcome RenameToFree(std::string_view path, std::string_view newPath)
{
    const std::wstring from = WidePath(path);
    const std::wstring to = WidePath(newPath);
    if (from.empty() || to.empty())
        return {ErrorPathNotFound, "the path leads nowhere"};
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0)
        return {};
    const DWORD error = GetLastError();
    return {NumberOfRefusal(error), SystemWords(error),
            error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND};
}

} // namespace kv
