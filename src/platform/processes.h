// Programs of outside parties: start one, ask how it ended. A command is a list of words, each of which
// arrives as it stands: what a drawing puts into one adds no other.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/numbers.h"

namespace kv {

constexpr Long StillActive = 259; // exit code of a process that has not ended

using ProgramCall = std::vector<std::string>; // the program and its arguments, CP1252

// A line that a person typed: blanks part the words, double quotes group, nothing else has a meaning.
ProgramCall SplitCommand(std::string_view line);
// For people: the words with blanks between, those with blanks in quotes.
std::string CommandText(const ProgramCall& command);
// As Windows takes it, by the rules by which its programs take it apart again. Empty for a batch file with
// an argument that no quoting keeps from its interpreter.
std::string WindowsCommandLine(const ProgramCall& command);

struct ProcessHooks {
    Long (*Start)(const ProgramCall& command) = nullptr; // a handle above 0; 0 when it cannot start
    Long (*ExitCode)(Long handle) = nullptr;             // StillActive until it has ended
    void (*Forget)(Long handle) = nullptr;
    void (*Kill)(Long handle) = nullptr; // ends it at once; its exit code is still to be asked for
};
extern ProcessHooks Processes;

Long StartProcess(const ProgramCall& command); // 0 without a front end
Long StartLine(std::string_view line);         // the same for what a person typed
Long ProcessExitCode(Long handle);
void ForgetProcess(Long handle);

// The hooks that start real programs: a normal window, the environment of this process. On a host
// without backslash paths the program's own path, and only it, is brought to the host's form.
ProcessHooks SystemProcesses();

} // namespace kv
