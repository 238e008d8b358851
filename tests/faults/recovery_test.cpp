// Two mishaps one after the other: a run is killed, and the start that should clear up after it is killed
// too, or one of its calls fails. The start after that finds all whole.
#include <cerrno>
#include <csignal>
#include <random>

#include "faults/disturbed_shop.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

constexpr int UsualRounds = 3, MostRounds = 400; // of each shop

class Recoveries : public DisturbedShop, public testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override
    {
        Open(GetParam());
        for (const CountedCall& call : First.Calls)
            WritingCalls += call.Writing;
        PutDown(Known.Before, Table.Root());
        ProbeCalls = Table.Run(Present, Present.ProbeCall, {}, true).Calls.size();
    }

    void TryTwo(FaultCount& count, long kill, const Disturbance& second)
    {
        const std::string name =
            "kill " + std::to_string(kill) + ", then " + (second.Kill ? "kill " : "error ") +
            (second.Kill ? "" : std::to_string(second.Error) + " at ") + std::to_string(second.At);
        if (FaultCount::PassedOver(name))
            return;
        PutDown(Known.Before, Table.Root());
        EXPECT_EQ(Table.Run(Present, Present.Call, {kill, 0, true, false}).Status, 128 + SIGKILL) << name;
        Table.Run(Present, Present.ProbeCall, second);
        const int before = count.FindingCount();
        FindAll(count, "lost", name, JudgeKept(Known, TakeUp(Table.Root())));
        JudgeNextStart(count, name);
        if (count.FindingCount() == before)
            count.Whole();
    }

    long WritingCalls = 0;
    std::size_t ProbeCalls = 0;
};

TEST_P(Recoveries, MayBeDisturbedThemselves)
{
    FaultCount count("disturbed recoveries, " + Present.Name);
    std::mt19937 random(kv::test::Seed(3));
    const int rounds = std::min(kv::test::Rounds(UsualRounds), MostRounds);
    for (int round = 0; round < rounds; ++round) {
        const long kill = 1 + static_cast<long>(random() % static_cast<unsigned>(WritingCalls));
        Disturbance second;
        second.Kill = random() % 2 == 0;
        // A start that clears up makes more calls than one that does not.
        second.At = 1 + static_cast<long>(random() % (second.Kill ? 40 : ProbeCalls + 40));
        second.Error = second.Kill ? 0 : (random() % 2 == 0 ? EIO : EACCES);
        TryTwo(count, kill, second);
    }
    Conclude(count);
}

INSTANTIATE_TEST_SUITE_P(Shops, Recoveries, testing::Values("cnc90", "genesis", "evolution"),
                         [](const auto& shop) { return std::string(shop.param); });

} // namespace
} // namespace fault_test
