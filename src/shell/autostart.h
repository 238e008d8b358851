// The unattended mode: a tick every 500 ms looks for Temp.DXF and BATCH.LST in the source folders and
// runs what it finds; the command line's drawing goes the same way.
#pragma once

#include <string_view>

namespace kv {

void AutostartTick();
// The inner steps of the tick: before the first job, and after each one.
void PrepareRun();
void FinishJob(std::string_view outputFolder, std::string_view outputName);

// As at program start: forgets what it saw of the trigger files.
void ResetAutostart();

} // namespace kv
