// `korvanti watch`: the tick of the unattended mode, driven by a loop in place of a window's timer.
// Rows of the report are printed as they come. Relies on the program's folder being set; leaves the
// settings on the disk as they were.
#include "console/calls.h"

#include "console/abort.h"
#include "console/report_output.h"
#include "platform/clock.h"
#include "platform/keys.h"
#include "platform/processes.h"
#include "platform/terminal.h"
#include "shell/autostart.h"
#include "shell/start_up.h"
#include "state/settings.h"
#include "state/shell_state.h"

namespace kv {

namespace {

constexpr double TickSeconds = Timer1Interval / 1000.0;

std::string Joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

} // namespace

int WatchFolders(const CommandLine& line)
{
    OpenReport(IsTerminal(StandardStream::Output), false);
    WriteRowsAtOnce(stdout);
    Processes = SystemProcesses();
    Keys = SystemKeys();
    InstallWatchAbort();
    Shell.CommandLine = Joined(line.Switches);
    StartShell();
    if (!SettingsFault.Ok())
        return ExitSomeFailed; // which is told
    while (!Shell.Ended) {
        PauseSeconds(TickSeconds);
        AutostartTick();
    }
    ReportMessage(2, "");
    return Shell.FailedJobs > 0 ? ExitSomeFailed : ExitConverted;
}

} // namespace kv
