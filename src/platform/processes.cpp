// Outside programs, by the front end's hooks.
// Without hooks no program starts: the handle is 0, and a handle that nobody knows reads as ended
// with 0, so that nobody waits for ever.
#include "platform/processes.h"

namespace kv {

ProcessHooks Processes;

Long StartProcess(std::string_view commandLine)
{
    return Processes.Start != nullptr ? Processes.Start(commandLine) : 0;
}

Long ProcessExitCode(Long handle)
{
    return Processes.ExitCode != nullptr ? Processes.ExitCode(handle) : 0;
}

void ForgetProcess(Long handle)
{
    if (Processes.Forget != nullptr)
        Processes.Forget(handle);
}

} // namespace kv
