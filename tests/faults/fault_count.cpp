// Groups findings that say the same, so that a table of thousands of runs is read in a minute.
#include "faults/fault_count.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

#include "support/random_rounds.h"

namespace fault_test {

std::vector<std::size_t> Picked(std::size_t all, int usual)
{
    const std::size_t wanted = static_cast<std::size_t>(kv::test::Rounds(usual));
    std::vector<std::size_t> picked;
    const std::size_t offset = all == 0 ? 0 : kv::test::Seed(7) % all;
    for (std::size_t i = 0; i < all && i < wanted; ++i)
        picked.push_back(wanted >= all ? i : (i * all + offset) / wanted % all);
    return picked;
}

bool FaultCount::PassedOver(const std::string& disturbance)
{
    const char* const wanted = std::getenv("KORVANTI_FAULT");
    return wanted != nullptr && disturbance.find(wanted) == std::string::npos;
}

void FaultCount::Found(const std::string& kind, const std::string& disturbance, const std::string& what)
{
    if (disturbance != Last)
        ++Kinds[kind];
    Last = disturbance;
    Findings[kind + ": " + what].push_back(disturbance);
}

int FaultCount::FindingCount() const
{
    int count = 0;
    for (const auto& [kind, disturbances] : Kinds)
        count += disturbances;
    return count;
}

std::string FaultCount::Summary() const
{
    std::ostringstream text;
    text << Title << ": " << Tried() << " tried, " << Wholes << " whole, " << Reports << " reported, "
         << FindingCount() << " findings";
    for (const auto& [kind, count] : Kinds)
        text << ", " << count << ' ' << kind;
    if (Misses > 0)
        text << "; " << Misses << " missed";
    return text.str();
}

std::string FaultCount::Details(std::size_t most) const
{
    constexpr std::size_t Shown = 4;
    std::ostringstream text;
    std::size_t lines = 0;
    for (const auto& [what, disturbances] : Findings) {
        if (++lines > most) {
            text << "  ... and " << Findings.size() - most << " more kinds\n";
            break;
        }
        text << "  " << disturbances.size() << "x " << what << " [";
        for (std::size_t i = 0; i < disturbances.size() && i < Shown; ++i)
            text << (i > 0 ? "; " : "") << disturbances[i];
        text << (disturbances.size() > Shown ? "; ...]\n" : "]\n");
    }
    return text.str();
}

void FaultCount::Print() const
{
    std::cout << "[ FAULTS   ] " << Summary() << '\n';
    if (const char* const file = std::getenv("KORVANTI_FAULT_REPORT"))
        std::ofstream(file, std::ios::app) << Summary() << '\n' << Details(10000);
}

} // namespace fault_test
