// The child: variables for the library between it and the system, its streams in a file.
#include "faults/disturbed_run.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <random>
#include <sstream>

namespace fault_test {

namespace {

constexpr unsigned LongestSeconds = 60;

} // namespace

Words VariablesOf(const Shop& shop, const fs::path& root, const Disturbance& disturbance)
{
    Words variables = shop.Environment;
    variables.push_back(std::string("LD_PRELOAD=") + KORVANTI_FAILING_CALLS);
    variables.push_back("FAULT_ROOT=" + root.string());
    variables.push_back("FAULT_FAST=1");
    // A sanitized program wants to be loaded before all else, and its leaks are not asked for here.
    variables.push_back("ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0");
    if (disturbance.At > 0)
        variables.push_back("FAULT_AT=" + std::to_string(disturbance.At));
    if (disturbance.Error != 0)
        variables.push_back("FAULT_ERROR=" + std::to_string(disturbance.Error));
    if (disturbance.Kill)
        variables.push_back("FAULT_KILL=1");
    if (disturbance.Lasting)
        variables.push_back("FAULT_LASTING=1");
    return variables;
}

void BecomeDisturbed(const Words& call, const Words& variables, const fs::path& said)
{
    const int output = ::open(said.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
    ::dup2(::open("/dev/null", O_RDONLY), 0);
    ::dup2(output, 1);
    ::dup2(output, 2);
    for (const char* const name : {"KORVANTI_HOME", "KORVANTI_DRIVES", "NO_COLOR", "COLORTERM"})
        ::unsetenv(name);
    for (const std::string& pair : variables)
        ::setenv(pair.substr(0, pair.find('=')).c_str(), pair.c_str() + pair.find('=') + 1, 1);
    std::vector<char*> arguments;
    for (const std::string& word : call)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ::alarm(LongestSeconds);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
}

std::vector<CountedCall> CallsOf(const std::string& log)
{
    std::vector<CountedCall> calls;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        CountedCall call;
        words >> call.Number >> call.Name >> call.Writing;
        words.get(); // the blank
        std::getline(words, call.Path);
        while (call.Path.size() > 1 && call.Path.back() == '/')
            call.Path.pop_back();
        calls.push_back(call);
    }
    return calls;
}

Bench::Bench() : Folder(fs::temp_directory_path() / ("kf" + std::to_string(std::random_device{}() % 1000000)))
{
    fs::create_directories(Root());
}

Bench::~Bench()
{
    std::error_code ignored;
    fs::remove_all(Folder, ignored);
}

Ran Bench::Run(const Shop& shop, const Words& call, const Disturbance& disturbance, bool lists) const
{
    Words variables = VariablesOf(shop, Root(), disturbance);
    const fs::path log = Folder / "log", record = Folder / "record", said = Folder / "said",
                   hit = Folder / "hit";
    fs::remove(log);
    fs::remove(hit);
    fs::remove(record);
    variables.push_back("FAULT_HIT=" + hit.string());
    if (lists) {
        variables.push_back("FAULT_LOG=" + log.string());
        variables.push_back("FAULT_RECORD=" + record.string());
    }
    const pid_t child = ::fork();
    if (child == 0) {
        Words words = {ProgramUnderTest()};
        words.insert(words.end(), call.begin(), call.end());
        BecomeDisturbed(words, variables, said);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    Ran ran;
    ran.Status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    ran.Said = FileBytes(said);
    const std::vector<CountedCall> disturbed = CallsOf(FileBytes(hit));
    if (!disturbed.empty())
        ran.Hit = disturbed.front();
    if (lists) {
        ran.Calls = CallsOf(FileBytes(log));
        ran.Done = FileBytes(record);
    }
    return ran;
}

} // namespace fault_test
