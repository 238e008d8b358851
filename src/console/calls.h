// The calls of the console. Each takes what was typed and gives the exit status.
#pragma once

#include <string>
#include <string_view>

#include "console/command_line.h"
#include "platform/numbers.h"

namespace kv {

int ConvertDrawings(const CommandLine& line);
int TraceDrawings(const CommandLine& line);
// Brings stages to their places in the installation.
int PlaceStages(const CommandLine& line);
// One of the processes of `convert --jobs`; people do not call it.
int WorkForPool(const CommandLine& line);
// The page of a message, or all pages.
int ExplainMessage(const CommandLine& line);
// What became of each entity of the drawings; nothing is written.
int ExplainDrawings(const CommandLine& line);
// Pictures of programs, and of those of drawings; nothing but the pictures is written.
int DrawPrograms(const CommandLine& line);
// What each control would make of a drawing, side by side; nothing but a page is written.
int CompareControls(const CommandLine& line);
// Programs of drawings, or another program, held against the drawing; nothing is written.
int CheckDrawings(const CommandLine& line);
// What the import makes of a drawing, as a drawing.
int PrepareDrawing(const CommandLine& line);
// The unattended mode, until its switches or a signal end it. Loads the settings itself.
int WatchFolders(const CommandLine& line);

// The output name for a job whose programs stay in memory. An installation without a program folder has no
// programs, but its drawings can be looked at all the same: as if they went to the drawing's own folder.
std::string OutputInMemory(const std::string& drawing, const CommandLine& line);
// One drawing through the conversion, by its path as typed and the output name of its job line
// (empty: none). Gives what became of it: "converted", "nothing" (it ended well without a program), "failed"
// or "aborted".
std::string RunJob(const std::string& drawing, std::string_view outputName, int system);
// The same by its full backslash path, and for one system.
std::string RunJobLine(std::string jobLine, std::string_view outputName, Int system);
Int SystemOfJob(int system); // SystemOfSettings gives what those select
std::string OutcomeOfJob();  // of the job that ran last
bool HasFailed(std::string_view outcome);
void TellFailure(const std::string& drawing, std::string_view outcome); // on standard error
// Tells how many drawings an abort left undone; the exit status that this asks for.
int TellUnconverted(std::size_t count);

// The settings of the call; false when one is unknown, which is told.
bool TakeOverrides(const CommandLine& line);

// The output name of a job line for OUTPUT as typed: a bare name stays, a path becomes a full one,
// a folder gets its backslash.
std::string OutputName(const std::string& typed);

} // namespace kv
