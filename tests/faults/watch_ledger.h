// The account of what a program that watches was given: every line of a batch and every dropped drawing is
// done, or still waiting in a file, or was reported as failed.
#pragma once

#include <algorithm>

#include "faults/judge.h"
#include "faults/own_readers.h"

namespace fault_test {

// Files that keep what was not done; a list is also kept under a name of the program's own while it is taken.
inline bool KeepsJobs(const std::string& path)
{
    return path.starts_with("IN/") && !path.ends_with("/") && path != "IN/PROC.LST" &&
           path.find(".dxf") == std::string::npos;
}

inline bool IsDone(const Shop& shop, const Reference& reference, const Tree& now, std::size_t job)
{
    const auto found = now.find(shop.Programs[job]);
    return found != now.end() && found->second == reference.Once.at(shop.Programs[job]);
}

// What is still to be done, in lower case.
inline std::string WaitingText(const Tree& now)
{
    std::string waiting;
    for (const auto& [path, bytes] : now) {
        if (KeepsJobs(path))
            waiting += Lowered(bytes);
    }
    return waiting;
}

// A dropped drawing is one job.
inline Words LinesOfJobs(const Shop& shop)
{
    return shop.Jobs.empty() ? Words{"entities"} : shop.Jobs;
}

inline bool AnyJobWaits(const Shop& shop, const Tree& now)
{
    const std::string waiting = WaitingText(now);
    const Words jobs = LinesOfJobs(shop);
    return std::any_of(jobs.begin(), jobs.end(), [&](const std::string& job) {
        return waiting.find(Lowered(job)) != std::string::npos;
    });
}

// `failed`: how many jobs were reported as failed.
inline Findings JudgeLedger(const Shop& shop, const Reference& reference, const Tree& now, int failed)
{
    const std::string waiting = WaitingText(now);
    Findings findings;
    const Words jobs = LinesOfJobs(shop);
    for (std::size_t job = 0; job < jobs.size(); ++job) {
        if (!IsDone(shop, reference, now, job) && waiting.find(Lowered(jobs[job])) == std::string::npos)
            findings.push_back("job " + std::to_string(job + 1) + " is neither done nor kept nor reported");
    }
    if (findings.size() <= static_cast<std::size_t>(failed))
        findings.clear();
    return findings;
}

// What an operator does with jobs that were set aside: gives them the names that are watched for.
inline void PutBackWaiting(const fs::path& root)
{
    for (const auto& [kept, watched] :
         {std::pair{"IN/Temp.OLD", "IN/Temp.DXF"}, {"IN/BATCH.OLD", "IN/BATCH.LST"}}) {
        if (fs::exists(root / kept) && !fs::exists(root / watched))
            fs::rename(root / kept, root / watched);
    }
}

} // namespace fault_test
