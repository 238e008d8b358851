// What asks from outside is only noted where it comes; the pump carries it into the run's state.
#include "console/abort.h"

#include "console/report_output.h"
#include "platform/events.h"
#include "platform/stop_requests.h"
#include "state/run.h"
#include "state/shell_state.h"

namespace kv {

namespace {

void Pump()
{
    if (StopRequested())
        Run.RunState = 1;
    ShowProgress();
}

// Nothing new begins once the end is asked for.
void WatchPump()
{
    if (!StopRequested())
        return;
    Run.RunState = 1;
    Shell.Ended = true;
}

} // namespace

void InstallAbort()
{
    ListenForStopRequests();
    Events.Pump = Pump;
}

void InstallWatchAbort()
{
    ListenForStopRequests();
    Events.Pump = WatchPump;
}

bool AbortAsked()
{
    return StopRequested();
}

} // namespace kv
