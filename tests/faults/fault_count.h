// Which disturbances a test tries, what came of them, and the table of both. The usual number keeps ./test
// short; KORVANTI_RANDOM asks for more, up to all. KORVANTI_FAULT_REPORT names a file for the whole tables,
// KORVANTI_FAULT the one disturbance to be tried, as it is printed.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace fault_test {

// Of a list of so many, evenly spread; all when as many are asked for.
std::vector<std::size_t> Picked(std::size_t all, int usual);

class FaultCount {
  public:
    explicit FaultCount(std::string title) : Title(std::move(title)) {}

    // Whether KORVANTI_FAULT asks for another one.
    static bool PassedOver(const std::string& disturbance);

    void Whole() { ++Wholes; }     // done, as if nothing had been
    void Reported() { ++Reports; } // not done, said, nothing lost
    void Missed() { ++Misses; }    // the call did not come
    // `kind` groups findings in the table: "silent", "lost", ...
    void Found(const std::string& kind, const std::string& disturbance, const std::string& what);

    int FindingCount() const;
    int MissCount() const { return Misses; }
    int Tried() const { return Wholes + Reports + FindingCount(); }
    std::string Summary() const; // one line
    std::string Details(std::size_t most) const;
    void Print() const; // to the streams and the report file

  private:
    std::string Title;
    int Wholes = 0, Reports = 0, Misses = 0;
    std::map<std::string, int> Kinds;                         // disturbances by the worst kind
    std::map<std::string, std::vector<std::string>> Findings; // by kind and what, the disturbances
    std::string Last;
};

} // namespace fault_test
