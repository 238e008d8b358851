// Every call about files below a shop fails once, with each error that the system could give it; or the
// process ends just before it. Shown with the real program and the real calls of the system.
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <set>

#include "faults/disturbed_shop.h"

namespace fault_test {
namespace {

constexpr int UsualFaults = 6, UsualKills = 3; // of each shop
constexpr int MostTries = 4;

const std::vector<int>& ErrorsOf(const CountedCall& call)
{
    static const std::vector<int> making = {ENOSPC, EACCES, EIO}, naming = {EACCES, EIO},
                                  writing = {ENOSPC, EIO}, plain = {EIO}, locking = {ENOLCK};
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

// The same for each shop: three controls, and two ways to be started without a hand.
class FailingCalls : public DisturbedShop, public testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override { Open(GetParam()); }

    std::string Place(const CountedCall& call) const
    {
        return fs::path(call.Path).lexically_relative(Table.Root()).generic_string();
    }

    // A file that could not be taken away may wait for the next start, which is looked at too.
    static Findings WithoutOwnFiles(Findings findings)
    {
        std::erase_if(findings,
                      [](const std::string& finding) { return finding.ends_with("(own file): left over"); });
        return findings;
    }

    // Calls of a program that watches differ a little from run to run: changes of folders are seen earlier or
    // later. False: the call did not come, or is one that the system would not let fail so.
    bool RunWithFault(const Disturbance& fault, Ran& ran) const
    {
        for (int tries = 0; tries < MostTries; ++tries) {
            PutDown(Known.Before, Table.Root());
            ran = Table.Run(Present, Present.Call, fault);
            if (ran.Hit.Number != 0 && std::ranges::count(ErrorsOf(ran.Hit), fault.Error) > 0)
                return true;
        }
        return false;
    }

    // One call that fails; `at` is the call as it was counted in the undisturbed run.
    void TryFault(FaultCount& count, const CountedCall& at, int error, bool lasting)
    {
        const std::string place = Place(at);
        const std::string name = std::to_string(at.Number) + " " + at.Name + " " + ErrorName(error) +
                                 (lasting ? " lasting " : " ") + Nameless(place);
        if (FaultCount::PassedOver(name))
            return;
        Ran ran;
        if (!RunWithFault({at.Number, error, false, lasting}, ran)) {
            count.Missed();
            return;
        }
        const Tree now = TakeUp(Table.Root());
        const int before = count.FindingCount();
        // On a full disk any of the calls that fail may be the one that is named.
        const std::string named = lasting ? Table.Root().string() : ran.Hit.Path;
        const bool told = TellsCause(Known, ran.Said, named, error, Table.Root());
        const Findings lost = JudgeKept(Known, now);
        const Findings undone = JudgeDone(Known, now);
        const bool succeeded = ran.Status == 0 && !(Present.Watches && told);
        if (ran.Status >= 128)
            count.Found("ended", name, "by signal " + std::to_string(ran.Status - 128));
        FindAll(count, succeeded ? "silent" : "lost", name, lost);
        if (Present.Watches)
            FindAll(count, "lost", name, JudgeLedger(Present, Known, now, told ? 1 : 0));
        if (lost.empty() && succeeded)
            FindAll(count, "silent", name, WithoutOwnFiles(undone));
        if (!succeeded && !told)
            count.Found("cause", name, ran.Hit.Name + " of " + Nameless(Place(ran.Hit)) + " is not named");
        const Ran again = RunAgain();
        if (again.Status != 0)
            count.Found("after", name, "status " + std::to_string(again.Status));
        FindAll(count, "after", name, WithoutKept(JudgeDone(Known, TakeUp(Table.Root()), 2, 2)));
        if (count.FindingCount() == before)
            succeeded ? count.Whole() : count.Reported();
        if (std::getenv("KORVANTI_FAULT") != nullptr)
            std::cout << name << "\nstatus " << ran.Status << "\n" << ran.Said << "\n";
    }

    void TryAllFaults()
    {
        FaultCount count("failing calls, " + Present.Name);
        std::vector<std::pair<const CountedCall*, int>> faults;
        for (const CountedCall& call : First.Calls) {
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
        for (const CountedCall& call : First.Calls) {
            if (call.Writing && call.Name != "close" && call.Name != "unlink")
                writing.push_back(&call);
        }
        for (const std::size_t i : Picked(writing.size(), UsualKills))
            TryFault(count, *writing[i], ENOSPC, true);
        Conclude(count);
    }

    void TryKill(FaultCount& count, long number, const CountedCall& at)
    {
        const std::string place = Place(at);
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

    void TryAllKills()
    {
        FaultCount count("kills, " + Present.Name);
        std::vector<const CountedCall*> writing;
        for (const CountedCall& call : First.Calls) {
            if (call.Writing)
                writing.push_back(&call);
        }
        for (const std::size_t i : Picked(writing.size(), UsualKills))
            TryKill(count, static_cast<long>(i) + 1, *writing[i]);
        Conclude(count);
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

// Files that stand before a run and that it reads, each with every way in which it is looked at first.
class ReadingFaults : public FailingCalls {};

TEST_P(ReadingFaults, NeverTakeAFileForEmpty)
{
    FaultCount count("reading faults, " + Present.Name);
    std::set<std::string> files, tried;
    std::vector<const CountedCall*> looks;
    for (const CountedCall& call : First.Calls) {
        const std::string place = Place(call);
        const bool reads = call.Name == "stat" || call.Name == "open" || call.Name == "read";
        if (call.Writing || !reads || !Known.Before.contains(place) ||
            !tried.insert(call.Name + place).second)
            continue;
        files.insert(place);
        looks.push_back(&call);
    }
    for (const std::size_t i : Picked(looks.size(), UsualFaults))
        TryFault(count, *looks[i], looks[i]->Name == "read" ? EIO : EACCES, false);
    for (const std::string& file :
         {SettingsPlace, std::string("HOME/KVHBD.cfg"),
          std::string(Present.Name == "evolution" ? "HOME/OptSettings.Dat" : "HOME/DT.Par"), CutListPlace})
        EXPECT_TRUE(files.contains(file)) << file;
    EXPECT_TRUE(Present.Name == "evolution" || files.contains(NotesPlace));
    EXPECT_EQ(count.MissCount(), 0);
    Conclude(count);
}

INSTANTIATE_TEST_SUITE_P(Shops, ReadingFaults, testing::Values("cnc90", "evolution"),
                         [](const auto& shop) { return std::string(shop.param); });

INSTANTIATE_TEST_SUITE_P(Shops, FailingCalls,
                         testing::Values("cnc90", "genesis", "evolution", "watch_temp", "watch_batch"),
                         [](const auto& shop) { return std::string(shop.param); });

} // namespace
} // namespace fault_test
