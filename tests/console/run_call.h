// One call of a program as a script would make it, in the way of the host: in a folder, with its streams in
// files.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#if defined(_WIN32)
#include <windows.h>
#else
#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace console_test {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

struct Ended {
    int Status = -1; // exit status; 128 and the number when a signal ended it
    std::string Output, Errors;
};

inline std::string Contents(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Variables that would lead the program to another installation or change what it shows.
inline const char* const VariablesTakenAway[] = {"KORVANTI_HOME", "KORVANTI_DRIVES", "NO_COLOR", "COLORTERM"};

#if defined(_WIN32)

constexpr const char* ConfigVariable = "APPDATA"; // names the folder above a person's settings

inline std::wstring Wide(const std::string& utf8)
{
    return fs::path(std::u8string(utf8.begin(), utf8.end())).wstring();
}

// A variable of this process, which its children take over, for as long as this lives.
struct Variable {
    Variable(const std::string& name, const wchar_t* value) : Name(Wide(name))
    {
        Before.resize(GetEnvironmentVariableW(Name.c_str(), nullptr, 0));
        WasThere = !Before.empty();
        GetEnvironmentVariableW(Name.c_str(), Before.data(), static_cast<DWORD>(Before.size()));
        SetEnvironmentVariableW(Name.c_str(), value);
    }
    ~Variable() { SetEnvironmentVariableW(Name.c_str(), WasThere ? Before.c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

    std::wstring Name, Before;
    bool WasThere = false;
};

// No word of a test holds a quotation mark or ends in a backslash where it holds a blank.
inline std::wstring CommandLineOf(const Words& call)
{
    std::wstring line;
    for (const std::string& word : call) {
        const bool quoted = word.empty() || word.find(' ') != std::string::npos;
        line += (line.empty() ? L"" : L" ") + (quoted ? L'"' + Wide(word) + L'"' : Wide(word));
    }
    return line;
}

inline HANDLE StreamInto(const fs::path& file)
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
}

inline int RunIn(const fs::path& folder, const Words& call, const Words& environment, const fs::path& output,
                 const fs::path& errors)
{
    std::vector<std::unique_ptr<Variable>> variables;
    for (const char* const name : VariablesTakenAway)
        variables.push_back(std::make_unique<Variable>(name, nullptr));
    for (const std::string& pair : environment) {
        const std::size_t end = pair.find('=');
        variables.push_back(
            std::make_unique<Variable>(pair.substr(0, end), Wide(pair.substr(end + 1)).c_str()));
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = StreamInto(output);
    start.hStdError = StreamInto(errors);
    std::wstring line = CommandLineOf(call);
    PROCESS_INFORMATION made{};
    DWORD status = 127;
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &start,
                       &made) != 0) {
        WaitForSingleObject(made.hProcess, INFINITE);
        GetExitCodeProcess(made.hProcess, &status);
        CloseHandle(made.hProcess);
        CloseHandle(made.hThread);
    }
    CloseHandle(start.hStdOutput);
    CloseHandle(start.hStdError);
    while (!variables.empty()) // the one that was set last is put back first
        variables.pop_back();
    return static_cast<int>(status);
}

#else

constexpr const char* ConfigVariable = "XDG_CONFIG_HOME"; // names the folder above a person's settings

// In a child: leaves for the program and does not come back.
[[noreturn]] inline void Become(const fs::path& folder, const Words& call, const Words& environment)
{
    if (::chdir(folder.c_str()) != 0)
        ::_exit(126);
    for (const char* const name : VariablesTakenAway)
        ::unsetenv(name);
    for (const std::string& pair : environment)
        ::setenv(pair.substr(0, pair.find('=')).c_str(), pair.c_str() + pair.find('=') + 1, 1);
    std::vector<char*> arguments;
    for (const std::string& word : call)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
}

inline int StatusOf(int child)
{
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

inline int RunIn(const fs::path& folder, const Words& call, const Words& environment, const fs::path& output,
                 const fs::path& errors)
{
    const int child = ::fork();
    if (child == 0) {
        ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        Become(folder, call, environment);
    }
    return StatusOf(child);
}

#endif

} // namespace console_test
