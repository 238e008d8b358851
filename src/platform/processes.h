// Programs of outside parties: start one, ask how it ended.
#pragma once

#include <string_view>

#include "platform/numbers.h"

namespace kv {

constexpr Long StillActive = 259; // exit code of a process that has not ended

struct ProcessHooks {
    Long (*Start)(std::string_view commandLine) = nullptr; // a handle above 0; 0 when it cannot start
    Long (*ExitCode)(Long handle) = nullptr;               // StillActive until it has ended
    void (*Forget)(Long handle) = nullptr;
};
extern ProcessHooks Processes;

Long StartProcess(std::string_view commandLine); // 0 without a front end
Long ProcessExitCode(Long handle);
void ForgetProcess(Long handle);

// The hooks that start real programs: a normal window, the environment of this process. On a host
// without backslash paths the program's own path, and only it, is brought to the host's form.
ProcessHooks SystemProcesses();

} // namespace kv
