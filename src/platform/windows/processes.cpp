// Programs of outside parties on Windows: inherited handles, normal priority, a normal window. The system
// finds the program in the command line by its own rules.
#include "platform/processes.h"

#include <map>
#include <string>

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace kv {

namespace {

std::map<Long, HANDLE> Children; // by handle
Long LastHandle = 0;

Long Start(const ProgramCall& command)
{
    std::wstring line = WideFromAnsi(WindowsCommandLine(command)); // the call may write into it
    if (line.empty())
        return 0;
    STARTUPINFOW look{};
    look.cb = sizeof look;
    look.dwFlags = STARTF_USESHOWWINDOW;
    look.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION made{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                       &look, &made) == 0)
        return 0;
    CloseHandle(made.hThread);
    Children[++LastHandle] = made.hProcess;
    return LastHandle;
}

Long ExitCode(Long handle)
{
    const auto found = Children.find(handle);
    DWORD code = 0; // nobody is to wait for a process that is not known
    if (found != Children.end() && GetExitCodeProcess(found->second, &code) == 0)
        code = 0;
    return static_cast<Long>(code);
}

void Forget(Long handle)
{
    const auto found = Children.find(handle);
    if (found == Children.end())
        return;
    CloseHandle(found->second);
    Children.erase(found);
}

void Kill(Long handle)
{
    constexpr UINT killed = 137; // as of a process that is killed on other hosts
    const auto found = Children.find(handle);
    if (found != Children.end())
        TerminateProcess(found->second, killed);
}

} // namespace

ProcessHooks SystemProcesses()
{
    return {Start, ExitCode, Forget, Kill};
}

} // namespace kv
