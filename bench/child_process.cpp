// Children of the benchmarks by fork, exec and wait4, whose record tells peak memory and time spent.
#include "child_process.h"

#include <chrono>

#include <fcntl.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kv::bench {

namespace {

double SecondsOf(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Waits for the child and fills what the system knows of it.
ChildUse UseOf(pid_t child, std::chrono::steady_clock::time_point start)
{
    int status = 0;
    rusage spent{};
    const pid_t ended = ::wait4(child, &status, 0, &spent);
    const std::chrono::duration<double> lasted = std::chrono::steady_clock::now() - start;
    ChildUse use;
    use.Ended = ended == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    use.Seconds = lasted.count();
    use.CpuSeconds = SecondsOf(spent.ru_utime) + SecondsOf(spent.ru_stime);
    use.PeakBytes = static_cast<double>(spent.ru_maxrss) * 1024.0;
    return use;
}

[[noreturn]] void BecomeProgram(const std::vector<std::string>& words, bool onOneCore)
{
    if (onOneCore) {
        cpu_set_t cores;
        CPU_ZERO(&cores);
        CPU_SET(static_cast<std::size_t>(::sched_getcpu()), &cores);
        ::sched_setaffinity(0, sizeof cores, &cores);
    }
    const int nowhere = ::open("/dev/null", O_WRONLY);
    ::dup2(nowhere, STDOUT_FILENO);
    ::dup2(nowhere, STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
}

} // namespace

long OwnProcessNumber()
{
    return ::getpid();
}

ChildUse RunInChild(const std::function<double()>& work)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return {};
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        const double answer = work();
        const bool told = ::write(ends[1], &answer, sizeof answer) == sizeof answer;
        ::_exit(told ? 0 : 1);
    }
    ::close(ends[1]);
    double answer = 0;
    const bool heard = child > 0 && ::read(ends[0], &answer, sizeof answer) == sizeof answer;
    ::close(ends[0]);
    if (child < 0)
        return {};
    ChildUse use = UseOf(child, start);
    use.Ended = use.Ended && heard;
    use.Answer = answer;
    return use;
}

void SettleDisk()
{
    ::sync();
}

ChildUse RunProgram(const std::vector<std::string>& words, bool onOneCore)
{
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0)
        BecomeProgram(words, onOneCore);
    return child < 0 ? ChildUse{} : UseOf(child, start);
}

} // namespace kv::bench
