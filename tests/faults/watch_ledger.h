// The account of what a program that watches was given: every line of a batch and every dropped drawing is
// done, or still waiting in a file.
#pragma once

#include "faults/judge.h"
#include "faults/own_readers.h"

namespace fault_test {

// Files that keep what was not done. A list is also kept under a name of the program's own while it is taken.
inline bool KeepsJobs(const std::string& path)
{
    return path.starts_with("IN/") && !path.ends_with("/") && path != "IN/PROC.LST" &&
           path.find(".dxf") == std::string::npos;
}

// A list that a disturbed run ended with is not done, but waits. A failed job is no finding: it is reported.
inline Findings JudgeLedger(const Shop& shop, const Reference& reference, const Tree& now)
{
    std::string waiting;
    for (const auto& [path, bytes] : now) {
        if (KeepsJobs(path))
            waiting += Lowered(bytes);
    }
    Findings findings;
    const auto done = [&](std::size_t job) {
        const std::string& program = shop.Programs[job];
        const auto found = now.find(program);
        return found != now.end() && found->second == reference.Once.at(program);
    };
    if (shop.Before.contains("IN/Temp.DXF")) {
        if (!done(0) && waiting.find("entities") == std::string::npos)
            findings.push_back("IN/Temp.DXF: neither done nor kept");
        return findings;
    }
    const std::string proc = now.contains("IN/PROC.LST") ? Lowered(now.at("IN/PROC.LST")) : "";
    std::size_t job = 0;
    for (const std::string& line : LinesOf(shop.Before.at("IN/BATCH.LST"))) {
        if (!done(job) && waiting.find(Lowered(line)) == std::string::npos && proc.empty())
            findings.push_back("IN/BATCH.LST: line " + std::to_string(job + 1) + " neither done nor kept");
        ++job;
    }
    return findings;
}

// What an operator does with jobs that were set aside: gives them the names that are watched for.
inline void PutBackWaiting(const fs::path& root)
{
    for (const auto& [kept, watched] : {std::pair{"IN/Temp.OLD", "IN/Temp.DXF"}, {"IN/BATCH.OLD", "IN/BATCH.LST"}}) {
        if (fs::exists(root / kept) && !fs::exists(root / watched))
            fs::rename(root / kept, root / watched);
    }
}

} // namespace fault_test
