// The signal handler does no more than raise a flag; the pump carries it into the run's state.
#include "console/abort.h"

#include <csignal>

#include "console/report_output.h"
#include "platform/events.h"
#include "state/run.h"
#include "state/shell_state.h"

namespace kv {

namespace {

volatile std::sig_atomic_t Interrupted = 0;

void OnInterrupt(int)
{
    Interrupted = 1;
    std::signal(SIGINT, SIG_DFL); // the second one ends the program
}

void OnWatchInterrupt(int)
{
    Interrupted = 1;
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

void Pump()
{
    if (Interrupted != 0)
        Run.RunState = 1;
    ShowProgress();
}

// Nothing new begins once the end is asked for.
void WatchPump()
{
    if (Interrupted == 0)
        return;
    Run.RunState = 1;
    Shell.Ended = true;
}

} // namespace

void InstallAbort()
{
    std::signal(SIGINT, OnInterrupt);
    Events.Pump = Pump;
}

void InstallWatchAbort()
{
    std::signal(SIGINT, OnWatchInterrupt);
    std::signal(SIGTERM, OnWatchInterrupt);
    Events.Pump = WatchPump;
}

bool AbortAsked()
{
    return Interrupted != 0;
}

} // namespace kv
