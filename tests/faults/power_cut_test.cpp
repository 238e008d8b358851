// The power fails after any call. The disk then holds what was flushed, and of the rest what it likes; a
// start on it must lose nothing, and what was reported as done must be there.
#include "faults/disturbed_shop.h"
#include "faults/memory_disk.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

constexpr int UsualCuts = 3; // of each shop and way to forget

struct Way {
    Forgets What;
    const char* Name;
};

constexpr Way Ways[] = {{Forgets::AllUnflushed, "all unflushed forgotten"},
                        {Forgets::UnflushedBytes, "names kept, unflushed files empty"},
                        {Forgets::BytesToZeros, "names kept, unflushed files NUL bytes"},
                        {Forgets::HalfOfBytes, "names kept, unflushed files halved"},
                        {Forgets::Some, "by chance"}};

class PowerCuts : public DisturbedShop, public testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override
    {
        Open(GetParam());
        Events = EventsOf(First.Done, Table.Root());
        MemoryDisk disk(Known.Before);
        for (const DiskEvent& event : Events)
            disk.Do(event);
        // The model is no better than this: with nothing forgotten it is the real disk.
        ASSERT_EQ(disk.After(Forgets::Nothing, 0), Known.Once);
    }

    void TryCut(FaultCount& count, std::size_t cut, const Way& way, const Tree& left)
    {
        const std::string next = cut < Events.size()
                                     ? std::string(1, Events[cut].Kind) + " " + Nameless(Events[cut].Path)
                                     : "the end";
        const std::string name = std::to_string(cut) + " before " + next + ", " + way.Name;
        if (FaultCount::PassedOver(name))
            return;
        PutDown(left, Table.Root());
        const int before = count.FindingCount();
        JudgeNextStart(count, name);
        if (count.FindingCount() == before)
            count.Whole();
    }

    std::vector<DiskEvent> Events;
};

TEST_P(PowerCuts, LoseNothing)
{
    for (const Way& way : Ways) {
        FaultCount count("power cuts, " + Present.Name + ", " + way.Name);
        const std::vector<std::size_t> cuts = Picked(Events.size() + 1, UsualCuts);
        MemoryDisk disk(Known.Before);
        std::size_t done = 0;
        for (const std::size_t cut : cuts) {
            for (; done < cut; ++done)
                disk.Do(Events[done]);
            const auto seed = static_cast<std::uint32_t>(kv::test::Seed(static_cast<unsigned>(cut)));
            TryCut(count, cut, way, disk.After(way.What, seed));
        }
        Conclude(count);
    }
}

// The process has ended and said that all is converted: the disk needs no more to have it.
TEST_P(PowerCuts, LeaveWhatWasReportedAsDone)
{
    MemoryDisk disk(Known.Before);
    for (const DiskEvent& event : Events)
        disk.Do(event);
    FaultCount count("power cut after the end, " + Present.Name);
    for (const Way& way : Ways) {
        Findings findings = JudgeDone(Known, disk.After(way.What, 1));
        // What was taken away may be there again: a journal that is done, a copy that has been moved.
        std::erase_if(findings, [](const std::string& finding) { return finding.ends_with("left over"); });
        FindAll(count, "lost", way.Name, findings);
        if (findings.empty())
            count.Whole();
    }
    Conclude(count);
}

INSTANTIATE_TEST_SUITE_P(Shops, PowerCuts, testing::Values("cnc90", "genesis", "evolution"),
                         [](const auto& shop) { return std::string(shop.param); });

} // namespace
} // namespace fault_test
