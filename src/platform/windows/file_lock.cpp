// Locks on Windows: a byte far behind the text of the lock file is locked, so that others can still read
// who holds it.
#include "platform/file_lock.h"

#include <windows.h>

#include "platform/paths.h"
#include "platform/text.h"
#include "platform/windows/host_files.h"
#include "platform/windows/wide_text.h"

namespace kv {

namespace {

constexpr DWORD LockedByte = 0x40000000;
constexpr DWORD LongestHolder = 512;

HANDLE LockHandle(long long handle)
{
    return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(handle));
}

void WriteHolder(HANDLE file)
{
    const std::string text = Utf8FromAnsi(LockHolderText());
    DWORD written = 0;
    if (WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0)
        SetEndOfFile(file);
}

std::string ReadHolder(HANDLE file)
{
    std::string text(LongestHolder, '\0');
    DWORD length = 0;
    if (ReadFile(file, text.data(), LongestHolder, &length, nullptr) == 0)
        length = 0;
    text.resize(length);
    return HolderOf(AnsiFromUtf8(text));
}

} // namespace

LockAnswer FileLock::TryLock(std::string_view path)
{
    Release();
    const std::wstring lock = WidePath(FolderOf(path) + LockFileName(FileNameOf(path)));
    if (lock.empty())
        return {LockState::CannotBe, {}, HostOutcome(ERROR_INVALID_NAME)};
    // Without security attributes no program that is started inherits it.
    const HANDLE file =
        CreateFileW(lock.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {LockState::CannotBe, {}, HostOutcome(GetLastError())};
    OVERLAPPED at{};
    at.Offset = LockedByte;
    if (LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &at) != 0) {
        Handle = static_cast<long long>(reinterpret_cast<std::intptr_t>(file));
        WriteHolder(file);
        return {LockState::Taken, {}, {}};
    }
    const DWORD error = GetLastError();
    LockAnswer answer;
    if (error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING)
        answer = {LockState::Held, ReadHolder(file), {}};
    else
        answer = {LockState::CannotBe, {}, HostOutcome(error)};
    CloseHandle(file);
    return answer;
}

void FileLock::Release()
{
    if (Handle != NoHandle)
        CloseHandle(LockHandle(Handle)); // the lock goes with it
    Handle = NoHandle;
}

} // namespace kv
