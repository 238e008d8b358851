// Programs of outside parties on the POSIX host. They get the words of a command as they stand, no shell
// sees them. Relies on no signal: a process is asked for when
// its exit code is, and one that was forgotten while it ran is reaped by whichever call comes later.
#include "platform/processes.h"

#include <csignal>
#include <map>
#include <string>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/paths.h"
#include "platform/text.h"

namespace kv {

namespace {

constexpr Long SignalBase = 128; // a process that a signal ended: this and its number

struct Child {
    pid_t Process = 0;
    Long ExitCode = StillActive;
};

std::map<Long, Child> Children; // by handle
std::vector<pid_t> Forgotten;   // still running
Long LastHandle = 0;

// A plain name is left for the system to look up in PATH. Empty when the path leads nowhere.
std::string ProgramOf(std::string_view word)
{
    const bool isPath = Holds(word, "\\") || (word.size() >= 2 && word[1] == ':');
    if (!isPath)
        return HostFromAnsi(word);
    const std::string host = ToHostPath(word);
    return host.empty() || Holds(host, "/") ? host : "./" + host;
}

// False while the process runs. `code` is 0 for a process that somebody else has reaped.
bool HasEnded(pid_t process, Long& code)
{
    int status = 0;
    const pid_t answer = ::waitpid(process, &status, WNOHANG);
    if (answer == 0)
        return false;
    code = 0;
    if (answer == process)
        code = WIFSIGNALED(status) ? SignalBase + WTERMSIG(status) : WEXITSTATUS(status);
    return true;
}

void ReapForgotten()
{
    Long code = 0;
    std::erase_if(Forgotten, [&code](pid_t process) { return HasEnded(process, code); });
}

Long Start(const ProgramCall& command)
{
    ReapForgotten();
    ProgramCall words = command;
    if (words.empty())
        return 0;
    const std::string program = ProgramOf(words[0]);
    if (program.empty())
        return 0;
    std::vector<char*> arguments;
    for (std::string& word : words) {
        word = HostFromAnsi(word);
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    Child child;
    if (::posix_spawnp(&child.Process, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0)
        return 0;
    Children[++LastHandle] = child;
    return LastHandle;
}

Long ExitCode(Long handle)
{
    ReapForgotten();
    const auto found = Children.find(handle);
    if (found == Children.end())
        return 0; // nobody is to wait for it
    Child& child = found->second;
    if (child.ExitCode == StillActive)
        HasEnded(child.Process, child.ExitCode);
    return child.ExitCode;
}

void Forget(Long handle)
{
    const auto found = Children.find(handle);
    if (found == Children.end())
        return;
    if (found->second.ExitCode == StillActive)
        Forgotten.push_back(found->second.Process);
    Children.erase(found);
    ReapForgotten();
}

void Kill(Long handle)
{
    const auto found = Children.find(handle);
    if (found != Children.end() && found->second.ExitCode == StillActive)
        ::kill(found->second.Process, SIGKILL); // not reaped, so the number is still its own
}

} // namespace

ProcessHooks SystemProcesses()
{
    return {Start, ExitCode, Forget, Kill};
}

} // namespace kv
