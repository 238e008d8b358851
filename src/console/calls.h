// The calls of the console. Each takes what was typed and gives the exit status.
#pragma once

#include <string>
#include <string_view>

#include "console/command_line.h"

namespace kv {

int ConvertDrawings(const CommandLine& line);
int TraceDrawings(const CommandLine& line);
// The unattended mode, until its switches or a signal end it. Loads the settings itself.
int WatchFolders(const CommandLine& line);

// One drawing through the conversion, by its path as typed and the output name of its job line
// (empty: none). Gives what became of it: "converted", "failed" or "aborted".
std::string RunJob(const std::string& drawing, std::string_view outputName, int system);
void TellFailure(const std::string& drawing, std::string_view outcome); // on standard error
// Tells how many drawings an abort left undone; the exit status that this asks for.
int TellUnconverted(std::size_t count);

// The output name of a job line for OUTPUT as typed: a bare name stays, a path becomes a full one,
// a folder gets its backslash.
std::string OutputName(const std::string& typed);

} // namespace kv
