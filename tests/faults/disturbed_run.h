// Runs the real program with one call disturbed, in a folder of its own.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "faults/shop.h"

namespace fault_test {

struct Disturbance {
    long At = 0; // number of the counted call, or with Kill of the writing call
    int Error = 0;
    bool Kill = false;
    bool Lasting = false;
};

struct CountedCall {
    long Number = 0;
    std::string Name, Path;
    bool Writing = false;
};

struct Ran {
    int Status = -1;  // 128 and the number when a signal ended it
    std::string Said; // both streams
    CountedCall Hit;  // the call that was disturbed; its number is 0 when none was
    std::vector<CountedCall> Calls;
    std::string Done; // what the writing calls did, as recorded
};

// What a program that is to be disturbed finds in its environment.
Words VariablesOf(const Shop& shop, const fs::path& root, const Disturbance& disturbance);
// The process becomes the program, which `call` begins with; both its streams go to `said`.
[[noreturn]] void BecomeDisturbed(const Words& call, const Words& variables, const fs::path& said);
// Of a list that the library between the program and the system has written.
std::vector<CountedCall> CallsOf(const std::string& log);

class Bench {
  public:
    Bench(); // makes the folder
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    fs::path Root() const { return Folder / "r"; } // the shop's
    // Clocks pass what the call sleeps. Calls are listed, and what they did recorded, where asked for.
    Ran Run(const Shop& shop, const Words& call, const Disturbance& disturbance = {},
            bool lists = false) const;

  private:
    fs::path Folder;
};

// The program of this build, or another one that KORVANTI_FAULT_PROGRAM names.
inline std::string ProgramUnderTest()
{
    const char* const named = std::getenv("KORVANTI_FAULT_PROGRAM");
    return named != nullptr ? named : KORVANTI_CONSOLE;
}

} // namespace fault_test
