// The unattended mode: a tick every 500 ms looks for Temp.DXF and BATCH.LST in the source folders and
// runs what it finds; the command line's drawing goes the same way.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

void AutostartTick();
// For a front end that hears of changes in the folders: whether the warm-up is over and a trigger file would
// be run at once; the source folders, each one once; the ticks that look into each of them.
bool WaitsForTriggers();
std::vector<std::string> WatchedFolders();
void TickAllFolders();
// Whether the command line names a job that has not been run.
bool CommandLineWaits();
// A word of the command line that is a switch and no drawing: "/S", "/K", "/V", or several of them.
bool IsSwitchWord(std::string_view word);
// The inner steps of the tick: before the first job, and after each one.
void PrepareRun();
void FinishJob(std::string_view outputFolder, std::string_view outputName);

// As at program start: forgets what it saw of the trigger files.
void ResetAutostart();

} // namespace kv
