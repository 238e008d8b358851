// Stop requests on Windows: the events of a console. They come on a thread of their own. The system ends the
// process as soon as the handler of a closed window, a logoff or a shutdown returns, and after some five
// seconds in any case; so that handler waits, and the process ends by itself meanwhile.
#include "platform/stop_requests.h"

#include <atomic>

#include <windows.h>

namespace kv {

namespace {

constexpr DWORD LongestEnd = 10000; // ms; the system's own limit is shorter

std::atomic<bool> Requested{false};

BOOL WINAPI OnConsoleEvent(DWORD event)
{
    const bool first = !Requested.exchange(true);
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)
        return first ? TRUE : FALSE; // FALSE: the system's own handler ends the process
    Sleep(LongestEnd);
    return TRUE;
}

} // namespace

void ListenForStopRequests()
{
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

bool StopRequested()
{
    return Requested;
}

} // namespace kv
