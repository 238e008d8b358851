// The process and its machine on the POSIX host.
#include "platform/this_process.h"

#include <cerrno>
#include <csignal>
#include <fstream>

#include <unistd.h>

#include "platform/text.h"

namespace kv {

namespace {

// Machines may share a name ("localhost"), but not this; absent on some systems.
std::string MachineNumber()
{
    std::ifstream file("/etc/machine-id");
    std::string number;
    std::getline(file, number);
    return number;
}

// Containers of one machine count their processes apart.
std::string CountOfProcesses()
{
    std::string name(64, '\0');
    const ssize_t length = ::readlink("/proc/self/ns/pid", name.data(), name.size());
    name.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return name;
}

} // namespace

long long ProcessNumber()
{
    return ::getpid();
}

bool ProcessRuns(long long number)
{
    const pid_t process = static_cast<pid_t>(number);
    if (process <= 0 || process != number)
        return false; // no process has it
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

std::string MachineName()
{
    char name[256] = {};
    return ::gethostname(name, sizeof name - 1) == 0 ? AnsiFromUtf8(name) : std::string("this machine");
}

std::string MachineIdentity()
{
    return MachineName() + ' ' + MachineNumber() + ' ' + CountOfProcesses();
}

} // namespace kv
