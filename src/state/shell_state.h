// What the shell knows beside the settings: which timers run, what of the window is on, and the state
// of the unattended mode. A window shows it; the console and the tests read it. One thread: whoever
// yields to the event pump must expect the state to have changed behind it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

constexpr int LoadDrInterval = 1000;  // ms; refresh of the file list
constexpr int Timer1Interval = 500;   // ms; autostart tick
constexpr double SettleSeconds = 0.3; // after each job, so that other programs can close the files

enum class FocusPlace { List1, Start };

struct ShellState {
    // The timers of the window.
    bool LoadDr = false, Timer1 = false;
    // Controls of the main window.
    bool StartEnabled = true, Frame2Enabled = true, BtnAbortShown = false;
    bool Form1Shown = true; // hidden while a viewer runs
    bool RunActive = false; // jobs run: no second list may begin inside their yields
    // By a trigger file or the command line: perhaps nobody is there to answer.
    bool Unattended = false;
    bool Ended = false;   // the program ends by itself when it is back in its loop
    bool Stopped = false; // a signal or the session's end ends it: nobody answers a box

    std::string CommandLine;          // as typed, in the program's form; cleared when it has been run
    Int TickCount = 0;                // of the warm-up: 0 to 3
    Int BatchCount = 0;               // lines of the last batch file
    Long WatchedProcess = 0;          // nothing feeds it; a hook for programs that run beside
    std::string WatchedControlFolder; // its TPA.INI is reset when the watched process has ended
    Long ExitCode = 0;                // last polled
    Long FailedJobs = 0;              // since program start, for the exit status
    Long JobsLeft = 0;                // of batches that were stopped, likewise
    // What the present run has left undone, and what its end could not keep: lines of the report that are
    // told again when nobody may see the report any more.
    std::vector<std::string> LeftUndone;
};
extern ShellState Shell;

struct ShellHooks {
    void (*Changed)() = nullptr; // the state above; the window shows it
    void (*Focus)(FocusPlace place) = nullptr;
    // The drawing of the command line failed; its lines begin with that row of the report. True: somebody
    // reads them before the program ends.
    bool (*Failed)(int firstRow) = nullptr;
    // Opens a page or a text with the program of the system; false: it could not.
    bool (*OpenGuide)(const std::string& path) = nullptr;
};
extern ShellHooks ShellWindow;

void ShellChanged();
void NoteLeft(std::string_view line); // with or without its mark
void GiveFocus(FocusPlace place);
// Whether the command line holds the switch ("/S", "/K", "/V"), anywhere and in any case.
bool HasSwitch(std::string_view name);

} // namespace kv
