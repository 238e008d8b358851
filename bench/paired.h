// Two sides that are measured in turn, round by round, so that whatever else the machine does falls on both.
// A round of which one side was disturbed counts for no more than any other.
#pragma once

#include <algorithm>
#include <vector>

namespace kv::bench {

inline double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

class PairedSides {
  public:
    void Take(double first, double second)
    {
        if (second > 0)
            Ratios.push_back(first / second);
    }
    // First by second, in the middle round of an odd number.
    double Ratio() const { return Median(Ratios); }

  private:
    std::vector<double> Ratios; // by round
};

} // namespace kv::bench
