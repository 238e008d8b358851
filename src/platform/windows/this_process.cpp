// The process and its machine on Windows, where every machine of a network has a name of its own.
#include "platform/this_process.h"

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace kv {

long long ProcessNumber()
{
    return GetCurrentProcessId();
}

bool ProcessRuns(long long number)
{
    const DWORD wanted = static_cast<DWORD>(number);
    if (wanted == 0 || static_cast<long long>(wanted) != number)
        return false; // no process has it
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, wanted);
    if (process == nullptr)
        return GetLastError() != ERROR_INVALID_PARAMETER;
    const bool runs = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return runs;
}

std::string MachineName()
{
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
    DWORD length = MAX_COMPUTERNAME_LENGTH + 1;
    return GetComputerNameW(name, &length) != 0 ? AnsiFromWide(name) : std::string("this machine");
}

std::string MachineIdentity()
{
    return MachineName();
}

} // namespace kv
