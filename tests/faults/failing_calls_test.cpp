// Every call about files below a shop fails once, with each error that the system could give it; or the
// process ends just before it. Shown with the real program and the real calls of the system.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "faults/disturbed_run.h"
#include "faults/fault_count.h"
#include "faults/judge.h"
#include "faults/watch_ledger.h"

namespace fault_test {
namespace {

constexpr int UsualFaults = 12, UsualKills = 8; // of each shop

const std::vector<int>& ErrorsOf(const CountedCall& call)
{
    static const std::vector<int> making = {ENOSPC, EACCES, EIO}, naming = {EACCES, EIO}, writing = {ENOSPC, EIO},
                                  plain = {EIO}, locking = {ENOLCK};
    if (call.Name == "write" || call.Name == "pwrite" || call.Name == "fsync" || call.Name == "fdatasync" ||
        call.Name == "ftruncate")
        return writing;
    if (call.Name == "read" || call.Name == "pread" || call.Name == "readdir" || call.Name == "close" ||
        call.Name == "fstat" || call.Name == "readlink")
        return plain;
    if (call.Name == "flock" || call.Name == "fcntl")
        return locking;
    return call.Writing ? making : naming;
}

std::string ErrorName(int error)
{
    const char* const name = ::strerrorname_np(error);
    return name != nullptr ? name : std::to_string(error);
}

// A shop with the trees that it has when nothing is disturbed.
class DisturbedShop : public testing::Test {
  protected:
    void Open(Shop shop)
    {
        Present = std::move(shop);
        Known.OperatorLines = Present.OperatorLines;
        Known.Before = Present.Before;
        PutDown(Known.Before, Table.Root());
        Known.Before = TakeUp(Table.Root()); // with the folders
        const Ran first = Table.Run(Present, Present.Call, {}, true);
        ASSERT_EQ(first.Status, 0) << first.Said;
        Calls = first.Calls;
        ASSERT_GT(Calls.size(), 50U) << "the library did not see the program's calls";
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
        CheckReference();
    }

    Tree AfterRuns(const std::vector<Words>& calls)
    {
        PutDown(Known.Before, Table.Root());
        for (const Words& call : calls) {
            if (Present.Watches && &call != &calls.front())
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
        for (const std::string& program : Present.Programs) {
            ASSERT_TRUE(Known.Once.contains(program)) << program;
            EXPECT_TRUE(!Known.Before.contains(program) || Known.Once.at(program) != Known.Before.at(program));
        }
        EXPECT_NE(Known.Once.at(CutListPlace), Known.Before.at(CutListPlace));
        EXPECT_EQ(Known.Once.at(SettingsPlace), Known.Before.at(SettingsPlace));
        for (const std::string& path : Known.Volatile)
            EXPECT_FALSE(Known.Before.contains(path)) << path << " differs from run to run";
        EXPECT_EQ(JudgeKept(Known, Known.Once), Findings{});
        EXPECT_EQ(JudgeKept(Known, Known.Before), Findings{});
        EXPECT_EQ(StraysIn(Known, Known.Once), Findings{});
    }

    void FindAll(FaultCount& count, const std::string& kind, const std::string& disturbance,
                 const Findings& findings) const
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

    // One call that fails; `at` is the call as it was counted in the undisturbed run.
    void TryFault(FaultCount& count, const CountedCall& at, int error, bool lasting)
    {
        const std::string place = fs::path(at.Path).lexically_relative(Table.Root()).generic_string();
        const std::string name = std::to_string(at.Number) + " " + at.Name + " " + ErrorName(error) +
                                 (lasting ? " lasting " : " ") + Nameless(place);
        if (FaultCount::PassedOver(name))
            return;
        PutDown(Known.Before, Table.Root());
        const Ran ran = Table.Run(Present, Present.Call, {at.Number, error, false, lasting});
        const Tree now = TakeUp(Table.Root());
        ASSERT_EQ(ran.Hit.Name + ran.Hit.Path.substr(0, ran.Hit.Path.rfind('/')),
                  at.Name + at.Path.substr(0, at.Path.rfind('/')))
            << name << ": calls differ from run to run";
        const int before = count.FindingCount();
        const bool told = TellsCause(Known, ran.Said, at.Path, error, Table.Root());
        const Findings lost = JudgeKept(Known, now);
        const Findings undone = JudgeDone(Known, now);
        const bool succeeded = ran.Status == 0 && !(Present.Watches && told);
        if (ran.Status >= 128)
            count.Found("ended", name, "by signal " + std::to_string(ran.Status - 128));
        FindAll(count, succeeded ? "silent" : "lost", name, lost);
        if (Present.Watches)
            FindAll(count, "lost", name, JudgeLedger(Present, Known, now, told ? 1 : 0));
        if (lost.empty() && succeeded)
            FindAll(count, "silent", name, undone);
        if (!succeeded && !told)
            count.Found("cause", name, at.Name + " of " + Nameless(place) + " is not named with its cause");
        const Ran again = RunAgain();
        if (again.Status != 0)
            count.Found("after", name, "status " + std::to_string(again.Status));
        FindAll(count, "after", name, WithoutKept(JudgeDone(Known, TakeUp(Table.Root()), 2, 2)));
        if (count.FindingCount() == before)
            succeeded ? count.Whole() : count.Reported();
        if (std::getenv("KORVANTI_FAULT") != nullptr)
            std::cout << name << "\nstatus " << ran.Status << "\n" << ran.Said << "\n";
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
        return Known.Before.contains(place) || Known.Once.contains(place) || Known.Before.contains(place + "/")
                   ? place
                   : fs::path(place).parent_path().generic_string() + "/(own file)";
    }

    void TryAllFaults()
    {
        FaultCount count("failing calls, " + Present.Name);
        std::vector<std::pair<const CountedCall*, int>> faults;
        for (const CountedCall& call : Calls) {
            for (const int error : ErrorsOf(call))
                faults.emplace_back(&call, error);
        }
        for (const std::size_t i : Picked(faults.size(), UsualFaults))
            TryFault(count, *faults[i].first, faults[i].second, false);
        Conclude(count);
    }

    // From a writing call on, every other one finds the disk full.
    void TryFullDisk()
    {
        FaultCount count("disk full from a call on, " + Present.Name);
        std::vector<const CountedCall*> writing;
        for (const CountedCall& call : Calls) {
            if (call.Writing && call.Name != "close" && call.Name != "unlink")
                writing.push_back(&call);
        }
        for (const std::size_t i : Picked(writing.size(), UsualKills))
            TryFault(count, *writing[i], ENOSPC, true);
        Conclude(count);
    }

    void TryKill(FaultCount& count, long number, const CountedCall& at)
    {
        const std::string place = fs::path(at.Path).lexically_relative(Table.Root()).generic_string();
        const std::string name = std::to_string(number) + " before " + at.Name + " " + Nameless(place);
        if (FaultCount::PassedOver(name))
            return;
        PutDown(Known.Before, Table.Root());
        const Ran ran = Table.Run(Present, Present.Call, {number, 0, true, false});
        EXPECT_EQ(ran.Status, 128 + SIGKILL) << name << ran.Said;
        const int before = count.FindingCount();
        const Tree now = TakeUp(Table.Root());
        FindAll(count, "lost", name, JudgeKept(Known, now));
        JudgeNextStart(count, name);
        if (count.FindingCount() == before)
            count.Whole();
    }

    // The next start, with another drawing, leaves nothing over; the call repeated leaves what it should.
    void JudgeNextStart(FaultCount& count, const std::string& name)
    {
        const Ran probe = Table.Run(Present, Present.ProbeCall);
        if (probe.Status != 0)
            count.Found("after", name, "the next start: status " + std::to_string(probe.Status));
        const Tree next = TakeUp(Table.Root());
        FindAll(count, "lost", name, JudgeKept(Known, next));
        FindAll(count, "left", name, StraysIn(Known, next));
        Reference both = Known;
        both.Final = &Known.Others.back();
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
        std::erase_if(findings, [](const std::string& finding) { return finding.starts_with("IN/PROC.LST"); });
        FindAll(count, "after", name, findings);
    }

    void TryAllKills()
    {
        FaultCount count("kills, " + Present.Name);
        std::vector<const CountedCall*> writing;
        for (const CountedCall& call : Calls) {
            if (call.Writing)
                writing.push_back(&call);
        }
        for (const std::size_t i : Picked(writing.size(), UsualKills))
            TryKill(count, static_cast<long>(i) + 1, *writing[i]);
        Conclude(count);
    }

    static void Conclude(const FaultCount& count)
    {
        count.Print();
        EXPECT_EQ(count.FindingCount(), 0) << count.Summary() << "\n" << count.Details(40);
    }

    Bench Table;
    Shop Present;
    Reference Known;
    std::vector<CountedCall> Calls;
};

// The same for each shop: three controls, and two ways to be started without a hand.
class FailingCalls : public DisturbedShop, public testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override
    {
        const std::string name = GetParam();
        Open(name == "watch_temp"    ? WatchedDrawing(Table.Root())
             : name == "watch_batch" ? WatchedBatch(Table.Root())
                                     : ListOfDrawings(name, Table.Root()));
    }
};

TEST_P(FailingCalls, LoseNothingAndAreReported)
{
    TryAllFaults();
}

TEST_P(FailingCalls, AFullDiskLosesNothing)
{
    TryFullDisk();
}

TEST_P(FailingCalls, AKillLeavesEveryFileWhole)
{
    TryAllKills();
}

INSTANTIATE_TEST_SUITE_P(Shops, FailingCalls,
                         testing::Values("cnc90", "genesis", "evolution", "watch_temp", "watch_batch"),
                         [](const auto& shop) { return std::string(shop.param); });

} // namespace
} // namespace fault_test
