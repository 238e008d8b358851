// Runs the real program in a scratch folder with an installation and drawings, as a script would:
// with pipes, with a terminal, with signals. A test looks at the exit status and the three streams.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <pty.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

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

inline void Put(const fs::path& path, const std::string& contents)
{
    std::ofstream(path, std::ios::binary) << contents;
}

// A panel 600 by 400 by 18 with a bore of 8 mm at X100 Y50, 12 deep.
inline std::string BoredPanel(const std::string& extra = {})
{
    std::string text = "0\nSECTION\n2\nENTITIES\n0\nPOLYLINE\n8\nBORDER_Z18\n66\n1\n70\n1\n";
    for (const char* const corner :
         {"10\n0\n20\n0\n", "10\n600\n20\n0\n", "10\n600\n20\n400\n", "10\n0\n20\n400\n"})
        text += std::string("0\nVERTEX\n8\nBORDER_Z18\n") + corner;
    text += "0\nSEQEND\n8\nBORDER_Z18\n0\nCIRCLE\n8\nVBORE_Z12F3000\n10\n100\n20\n50\n40\n4\n";
    return text + extra + "0\nENDSEC\n0\nEOF\n";
}

// N counts all lines, L those behind the name line without the end.
inline const char* const BoredProgram = "G71X600Y400Z18T00N4L1\r\n"
                                        "G150(KORVANTI DXF IMPORT)\r\n"
                                        "G81G90F3000G55P5R54=8X100Y50Z12\r\n"
                                        "M2\r\n";

class Console : public testing::Test {
  protected:
    void SetUp() override
    {
        Folder = fs::temp_directory_path() / ("korvanti-console-" + std::to_string(::getpid()));
        fs::remove_all(Folder);
        fs::create_directories(Folder / "home");
        fs::create_directories(Folder / "programs");
        Put(Folder / "home/KV90.INI", "[Configuration]\r\nWinner90=True\r\nDestinationPath90=" +
                                          (Folder / "programs").string() + "/\r\n");
        Put(Folder / "programs/INDICE.PRG", "");
        Put(Folder / "door.dxf", BoredPanel());
    }
    void TearDown() override { fs::remove_all(Folder); }

    Words Call(const Words& words) const
    {
        Words call = {KORVANTI_CONSOLE, "--home", (Folder / "home").string()};
        call.insert(call.end(), words.begin(), words.end());
        return call;
    }

    // In a child: leaves for the program and does not come back.
    [[noreturn]] void Become(const Words& call, const Words& environment) const
    {
        if (::chdir(Folder.c_str()) != 0)
            ::_exit(126);
        for (const char* const name : {"KORVANTI_HOME", "KORVANTI_DRIVES", "NO_COLOR", "COLORTERM"})
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

    static int StatusOf(int child)
    {
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    // The whole call as typed, the program's name included.
    Ended RunCall(const Words& call, const Words& environment = {}) const
    {
        const fs::path output = Folder / "stdout", errors = Folder / "stderr";
        const int child = ::fork();
        if (child == 0) {
            ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
            ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
            Become(call, environment);
        }
        Ended ended;
        ended.Status = StatusOf(child);
        ended.Output = Contents(output);
        ended.Errors = Contents(errors);
        return ended;
    }

    Ended Run(const Words& words, const Words& environment = {}) const
    {
        return RunCall(Call(words), environment);
    }

    // A bare root without /dev/pts has no terminals to give.
    static bool HasTerminals()
    {
        const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
        const bool usable = terminal >= 0 && ::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0;
        if (terminal >= 0)
            ::close(terminal);
        return usable;
    }

    // With a terminal for all streams; what was shown is in Output.
    Ended RunOnTerminal(const Words& words, const Words& environment) const
    {
        int terminal = -1;
        const int child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0)
            Become(Call(words), environment);
        Ended ended;
        char piece[4096];
        ssize_t got = 0;
        while ((got = ::read(terminal, piece, sizeof piece)) > 0)
            ended.Output.append(piece, static_cast<std::size_t>(got));
        ended.Status = StatusOf(child);
        ::close(terminal);
        return ended;
    }

    static bool Holds(const std::string& text, const std::string& part)
    {
        return text.find(part) != std::string::npos;
    }

    fs::path Folder;
};

} // namespace console_test
