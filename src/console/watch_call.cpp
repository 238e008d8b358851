// `korvanti watch`: the tick of the unattended mode, driven by a loop in place of a window's timer.
// Rows of the report are printed as they come. Between two ticks it sleeps, until a file comes. Relies on the
// program's folder being set; leaves the settings on the disk as they were.
#include "console/calls.h"

#include <algorithm>
#include <chrono>

#include "console/abort.h"
#include "console/report_output.h"
#include "platform/clock.h"
#include "platform/events.h"
#include "platform/folder_events.h"
#include "platform/instance.h"
#include "platform/keys.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "shell/autostart.h"
#include "shell/drawing_states.h"
#include "shell/start_up.h"
#include "state/settings.h"
#include "state/shell_state.h"

namespace kv {

namespace {

using Steady = std::chrono::steady_clock;
constexpr Steady::duration TickTime = std::chrono::milliseconds(Timer1Interval);
// A folder into which a design program writes its drawings changes some thousand times a second.
constexpr Steady::duration ShortestLook = std::chrono::milliseconds(20);

std::string Joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

double SecondsUntil(Steady::time_point then)
{
    return std::max(0.0, std::chrono::duration<double>(then - Steady::now()).count());
}

// The ticks of the timer, and those that a change brings in between, when a tick would run what it finds.
void TickUntilEnd()
{
    Steady::time_point next = Steady::now() + TickTime, looked;
    while (!Shell.Ended) {
        ListenToFolders(WatchedFolders());
        const bool changed = WaitForFolderChange(SecondsUntil(next));
        DoEvents();
        if (!changed && Steady::now() < next)
            continue; // woken by a stop request
        if (changed) {
            PauseSeconds(SecondsUntil(looked + ShortestLook));
            if (WaitsForTriggers())
                TickAllFolders();
            looked = Steady::now();
        }
        if (Steady::now() >= next) {
            AutostartTick();
            next = Steady::now() + TickTime;
        }
    }
}

} // namespace

int WatchFolders(const CommandLine& line)
{
    OpenReport(IsTerminal(StandardStream::Output), false);
    WriteRowsAtOnce(stdout);
    Processes = SystemProcesses();
    Keys = SystemKeys();
    InstallWatchAbort();
    const InstanceAnswer instance = BecomeOnlyInstance(ExeFolder);
    if (!instance.Only) {
        const std::string holder = Utf8FromAnsi(instance.Holder);
        WriteAtOnce("korvanti: nothing was run: this installation is in use by " + holder + "\n", stderr);
        return ExitSomeFailed;
    }
    Shell.CommandLine = Joined(line.Switches);
    StartShell();
    if (!SettingsFault.Ok())
        return ExitSomeFailed; // which is told
    TickUntilEnd();
    KeepDrawingStates(true);
    ReportMessage(2, "");
    return Shell.FailedJobs > 0 || Shell.JobsLeft > 0 ? ExitSomeFailed : ExitConverted;
}

} // namespace kv
