// Work in a process of its own: to measure its memory, or a whole program from start to end. The
// benchmarks' only place that talks to the system.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kv::bench {

long OwnProcessNumber();

struct ChildUse {
    bool Ended = false; // with exit status 0
    double Seconds = 0; // from start to end, on the wall
    double CpuSeconds = 0;
    double PeakBytes = 0; // of resident memory
    double Answer = 0;    // what the work gave back
};
// Runs `work` in a copy of this process.
ChildUse RunInChild(const std::function<double()>& work);
// What earlier runs have written is on the disk and not written during the next one.
void SettleDisk();
// Runs a program with its output thrown away; on one core where told.
ChildUse RunProgram(const std::vector<std::string>& words, bool onOneCore);

} // namespace kv::bench
