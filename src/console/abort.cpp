// The signal handler does no more than raise a flag; the pump carries it into the run's state.
#include "console/abort.h"

#include <csignal>

#include "console/report_output.h"
#include "conversion/run.h"
#include "platform/events.h"

namespace kv {

namespace {

volatile std::sig_atomic_t Interrupted = 0;

void OnInterrupt(int)
{
    Interrupted = 1;
    std::signal(SIGINT, SIG_DFL); // the second one ends the program
}

void Pump()
{
    if (Interrupted != 0)
        Run.RunState = 1;
    ShowProgress();
}

} // namespace

void InstallAbort()
{
    std::signal(SIGINT, OnInterrupt);
    Events.Pump = Pump;
}

bool AbortAsked()
{
    return Interrupted != 0;
}

} // namespace kv
