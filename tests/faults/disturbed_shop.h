// A shop with the trees that it has when nothing is disturbed, and what is asked of it after a disturbance.
#pragma once

#include <gtest/gtest.h>

#include "faults/disturbed_run.h"
#include "faults/fault_count.h"
#include "faults/judge.h"
#include "faults/watch_ledger.h"

namespace fault_test {

// One folder for all tests of a process, since the settings of a shop name it.
inline const Bench& SharedBench()
{
    static const Bench bench;
    return bench;
}

class DisturbedShop : public testing::Test {
  protected:
    // Undisturbed runs are made once in a process.
    void Open(const std::string& name)
    {
        static std::map<std::string, Reference> references;
        static std::map<std::string, Ran> runs;
        Present = name == "watch_temp"    ? WatchedDrawing(Table.Root())
                  : name == "watch_batch" ? WatchedBatch(Table.Root())
                                          : ListOfDrawings(name, Table.Root());
        if (!runs.contains(name)) {
            Learn();
            references[name] = Known;
            runs[name] = First;
        }
        Known = references[name];
        First = runs[name];
        CheckReference();
    }

    void Learn()
    {
        Known.OperatorLines = Present.OperatorLines;
        Known.Before = Present.Before;
        PutDown(Known.Before, Table.Root());
        Known.Before = TakeUp(Table.Root()); // with the folders
        First = Table.Run(Present, Present.Call, {}, true);
        Known.Once = TakeUp(Table.Root());
        Known.Others.push_back(AfterRuns({Present.Call, Present.Call}));
        Known.Others.push_back(AfterRuns({Present.Call}));
        for (const auto& [path, bytes] : Known.Others.back()) {
            if (Known.Once.contains(path) && Known.Once.at(path) != bytes)
                Known.Volatile.insert(path);
        }
        // What the hand-over file holds in between, and what a drawing gives when one before it has failed.
        for (unsigned jobs = 1; jobs + 1 < 1U << Present.Jobs.size(); ++jobs) {
            const Shop some = WithJobs(Present, jobs);
            PutDown(Present.Watches ? some.Before : Known.Before, Table.Root());
            Table.Run(some, some.Call);
            Known.Others.push_back(TakeUp(Table.Root()));
        }
        Known.Others.push_back(AfterRuns({Present.ProbeCall}));
        Known.Others.push_back(AfterRuns({Present.Call, Present.ProbeCall}));
        Known.Others.push_back(AfterRuns({Present.ProbeCall, Present.Call}));
    }

    Tree AfterRuns(const std::vector<Words>& calls)
    {
        PutDown(Known.Before, Table.Root());
        for (const Words& call : calls) {
            if (Present.Watches && &call != &calls.front() && call == Present.Call)
                PutTriggers();
            Table.Run(Present, call);
        }
        return TakeUp(Table.Root());
    }

    void PutTriggers() const
    {
        for (const char* const trigger : {"IN/Temp.DXF", "IN/BATCH.LST"}) {
            if (Known.Before.contains(trigger))
                PutBytes(Table.Root() / trigger, Known.Before.at(trigger));
        }
    }

    // What the comparisons rest on: the undisturbed run makes what it should and nothing else moves.
    void CheckReference()
    {
        ASSERT_EQ(First.Status, 0) << First.Said;
        ASSERT_GT(First.Calls.size(), 50U) << "the library did not see the program's calls";
        for (const std::string& program : Present.Programs) {
            ASSERT_TRUE(Known.Once.contains(program)) << program << ": " << First.Said;
            EXPECT_TRUE(!Known.Before.contains(program) ||
                        Known.Once.at(program) != Known.Before.at(program));
        }
        EXPECT_NE(Known.Once.at(CutListPlace), Known.Before.at(CutListPlace));
        EXPECT_EQ(Known.Once.at(SettingsPlace), Known.Before.at(SettingsPlace));
        for (const std::string& path : Known.Volatile)
            EXPECT_FALSE(Known.Before.contains(path)) << path << " differs from run to run";
        EXPECT_EQ(JudgeKept(Known, Known.Once), Findings{});
        EXPECT_EQ(JudgeKept(Known, Known.Before), Findings{});
        EXPECT_EQ(StraysIn(Known, Known.Once), Findings{});
    }

    static void FindAll(FaultCount& count, const std::string& kind, const std::string& disturbance,
                        const Findings& findings)
    {
        for (const std::string& finding : findings)
            count.Found(kind, disturbance, finding);
    }

    // The operator repeats what was asked for; for a program that watches, by dropping it again.
    Ran RunAgain() const
    {
        if (Present.Watches) {
            for (const char* const kept : {"IN/Temp.OLD", "IN/BATCH.OLD"})
                fs::remove(Table.Root() / kept);
            PutTriggers();
        }
        return Table.Run(Present, Present.Call);
    }

    // Jobs that were set aside stay until an operator looks at them.
    static Findings WithoutKept(Findings findings)
    {
        std::erase_if(findings, [](const std::string& finding) {
            return finding.starts_with("IN/BATCH.OLD") || finding.starts_with("IN/Temp.OLD");
        });
        return findings;
    }

    // Names of temporary files differ from run to run.
    std::string Nameless(const std::string& place) const
    {
        return Known.Before.contains(place) || Known.Once.contains(place) ||
                       Known.Before.contains(place + "/")
                   ? place
                   : fs::path(place).parent_path().generic_string() + "/(own file)";
    }

    // The next start, with another drawing, leaves nothing over; the call repeated leaves what it should.
    void JudgeNextStart(FaultCount& count, const std::string& name)
    {
        const Ran probe = Table.Run(Present, Present.ProbeCall);
        if (probe.Status != 0)
            count.Found("after", name, "the next start: status " + std::to_string(probe.Status));
        const Tree next = TakeUp(Table.Root());
        FindAll(count, "lost", name, JudgeKept(Known, next));
        if (!Present.Watches) // what a watch leaves is for the next watch
            FindAll(count, "left", name, StraysIn(Known, next));
        Reference both = Known;
        // A job that was done before the disturbance is not run again: the last one is then the probe's,
        // which the hand-over file names.
        const bool probeIsLast = Present.Watches && !AnyJobWaits(Present, next);
        both.Final = probeIsLast ? &*std::prev(Known.Others.end(), 2) : &Known.Others.back();
        if (!Present.Watches) {
            Table.Run(Present, Present.Call);
            FindAll(count, "after", name, JudgeDone(both, TakeUp(Table.Root()), 2, 2));
            return;
        }
        FindAll(count, "lost", name, JudgeLedger(Present, Known, next, 0));
        Table.Run(Present, Present.Call); // the next watch, which finds what the killed one left
        FindAll(count, "lost", name, JudgeLedger(Present, Known, TakeUp(Table.Root()), 0));
        PutBackWaiting(Table.Root());
        Table.Run(Present, Present.Call);
        // Lines of a batch are run again with the rows that they have made; a dropped drawing is run anew.
        Findings findings = JudgeDone(both, TakeUp(Table.Root()), 2, Present.Jobs.empty() ? 2 : 1);
        std::erase_if(findings,
                      [](const std::string& finding) { return finding.starts_with("IN/PROC.LST"); });
        FindAll(count, "after", name, findings);
    }

    static void Conclude(const FaultCount& count)
    {
        count.Print();
        // A program that watches may meet a tick less: three calls, and one of twenty.
        EXPECT_LE(count.MissCount() * 20, count.Tried() + 60) << "the calls differ too much from run to run";
        EXPECT_EQ(count.FindingCount(), 0) << count.Summary() << "\n" << count.Details(40);
    }

    const Bench& Table = SharedBench();
    Shop Present;
    Reference Known;
    Ran First; // undisturbed
};

} // namespace fault_test
