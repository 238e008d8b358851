// One window for each installation and person on Windows. The first process holds a named mutex, which the
// system takes away when that process ends, however it ends; a later one sets the named event beside it.
// The installation's own folder is not touched.
#include "platform/instance.h"

#include <windows.h>

#include "platform/text.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

HANDLE HeldMutex = nullptr;
HANDLE HeldEvent = nullptr; // set by others to ask

void LetGo()
{
    if (HeldMutex != nullptr)
        CloseHandle(HeldMutex);
    if (HeldEvent != nullptr)
        CloseHandle(HeldEvent);
    HeldMutex = HeldEvent = nullptr;
}

// However the folder is spelled.
std::wstring PlaceOf(std::string_view folder)
{
    std::wstring full = FullWidePath(WideFromAnsi(folder));
    while (!full.empty() && full.back() == L'\\')
        full.pop_back();
    return L"Local\\" + WideFromAnsi(InstanceName(UpperCase(AnsiFromWide(full))));
}

} // namespace

bool BecomeOnlyInstance(std::string_view folder)
{
    LetGo();
    const std::wstring place = PlaceOf(folder);
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, (place + L"-front").c_str());
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, place.c_str());
    const bool first = mutex == nullptr || GetLastError() != ERROR_ALREADY_EXISTS;
    HeldEvent = event;
    HeldMutex = mutex;
    if (first)
        return true;
    AllowSetForegroundWindow(ASFW_ANY); // the right is this process's, which was started last
    if (event != nullptr)
        SetEvent(event);
    LetGo();
    return false;
}

bool AskedToFront()
{
    return HeldEvent != nullptr && WaitForSingleObject(HeldEvent, 0) == WAIT_OBJECT_0;
}

} // namespace kv
