// One process for each installation on Windows: a lock file in the installation's folder, which other
// machines see too, and a named mutex of the machine besides, for persons who may not write there. A later
// window sets a named event. The system takes all of them away when the process ends, however it ends.
#include "platform/instance.h"

#include <windows.h>

#include "platform/file_lock.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

FileLock HeldLock;
HANDLE HeldMutex = nullptr;
HANDLE HeldEvent = nullptr; // set by others to ask

void LetGo()
{
    HeldLock.Release();
    if (HeldMutex != nullptr)
        CloseHandle(HeldMutex);
    if (HeldEvent != nullptr)
        CloseHandle(HeldEvent);
    HeldMutex = HeldEvent = nullptr;
}

// However the folder is spelled.
std::wstring PlaceOf(std::string_view folder)
{
    std::wstring full = FullWidePath(WideFromUtf8(ToHostPath(folder)));
    CharUpperBuffW(full.data(), static_cast<DWORD>(full.size()));
    while (!full.empty() && full.back() == L'\\')
        full.pop_back();
    return WideFromAnsi(InstanceName(UpperCase(PathFromWide(full))));
}

HANDLE FrontEvent(std::string_view folder)
{
    return CreateEventW(nullptr, FALSE, FALSE, (L"Local\\" + PlaceOf(folder) + L"-front").c_str());
}

// False when another process has it, of this person or, where it may not even be opened, of another one.
bool TakeMutex(std::string_view folder)
{
    HeldMutex = CreateMutexW(nullptr, FALSE, (L"Global\\" + PlaceOf(folder)).c_str());
    const DWORD error = GetLastError();
    return HeldMutex == nullptr ? error != ERROR_ACCESS_DENIED : error != ERROR_ALREADY_EXISTS;
}

} // namespace

InstanceAnswer BecomeOnlyInstance(std::string_view folder)
{
    LetGo();
    const LockAnswer answer = HeldLock.TryLock(InstanceFile(folder));
    if (answer.Is == LockState::Held)
        return HeldBy(answer.Holder);
    if (!TakeMutex(folder)) {
        LetGo();
        return HeldBy(HolderOf({}));
    }
    HeldEvent = FrontEvent(folder);
    return {true, {}, false};
}

void AskToFront(std::string_view folder)
{
    AllowSetForegroundWindow(ASFW_ANY); // the right is this process's, which was started last
    const HANDLE event = FrontEvent(folder);
    if (event == nullptr)
        return;
    SetEvent(event);
    CloseHandle(event);
}

bool AskedToFront()
{
    return HeldEvent != nullptr && WaitForSingleObject(HeldEvent, 0) == WAIT_OBJECT_0;
}

} // namespace kv
