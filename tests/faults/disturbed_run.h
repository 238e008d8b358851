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
