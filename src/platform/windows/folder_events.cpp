// Changes in folders by the change notifications of Windows.
#include "platform/folder_events.h"

#include <algorithm>
#include <map>

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace kv {

namespace {

constexpr std::size_t MostFolders = 16; // far from the number of handles that one call waits for
constexpr DWORD FolderChanges = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_LAST_WRITE;

std::map<std::wstring, HANDLE> Listened; // by path

// A folder that has gone is let go, or it could not be made anew.
void ListenAgain(HANDLE handle)
{
    if (FindNextChangeNotification(handle) != 0)
        return;
    FindCloseChangeNotification(handle);
    std::erase_if(Listened, [handle](const auto& entry) { return entry.second == handle; });
}

} // namespace

void ListenToFolders(const std::vector<std::string>& folders)
{
    for (const std::string& folder : folders) {
        const std::wstring path = WidePath(folder);
        if (path.empty() || Listened.contains(path) || Listened.size() == MostFolders)
            continue;
        const HANDLE handle = FindFirstChangeNotificationW(path.c_str(), FALSE, FolderChanges);
        if (handle != INVALID_HANDLE_VALUE)
            Listened[path] = handle;
    }
}

bool WaitForFolderChange(double seconds)
{
    const DWORD milliseconds = static_cast<DWORD>(std::clamp(seconds, 0.0, 86400.0) * 1000 + 0.999);
    std::vector<HANDLE> handles;
    for (const auto& entry : Listened)
        handles.push_back(entry.second);
    if (handles.empty()) {
        Sleep(milliseconds);
        return false;
    }
    const DWORD count = static_cast<DWORD>(handles.size());
    const DWORD answer = WaitForMultipleObjects(count, handles.data(), FALSE, milliseconds);
    if (answer == WAIT_FAILED) {
        Sleep(milliseconds);
        return false;
    }
    if (answer >= WAIT_OBJECT_0 + count)
        return false;
    ListenAgain(handles[answer - WAIT_OBJECT_0]);
    return true;
}

} // namespace kv
