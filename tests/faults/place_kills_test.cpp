// `place` is killed before each writing call, and called again: the installation is as if nothing had been.
#include <csignal>

#include "faults/disturbed_shop.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

constexpr int UsualKills = 12;

class PlacedStages : public DisturbedShop {
  protected:
    void SetUp() override
    {
        Open("cnc90");
        Words stage = Present.Call;
        stage.insert(std::ranges::find(stage, "convert") + 1, {"--stage", StagePath()});
        PutDown(Known.Before, Table.Root());
        const Ran made = Table.Run(Present, stage);
        ASSERT_EQ(made.Status, 0) << made.Said;
        Done.Before = TakeUp(Table.Root());
        Undisturbed = Table.Run(Present, PlaceCall(), {}, true);
        ASSERT_EQ(Undisturbed.Status, 0) << Undisturbed.Said;
        Done.Once = TakeUp(Table.Root());
        fs::remove(Table.Root() / "STAGE/placed");
        EXPECT_EQ(Table.Run(Present, PlaceCall()).Status, 0);
        Done.Others.push_back(TakeUp(Table.Root())); // the notes of drawings that come twice
        Done.OperatorLines = Known.OperatorLines;
        Done.Volatile = Known.Volatile;
        Done.Volatile.insert("STAGE/placed");
    }

    std::string StagePath() const { return (Table.Root() / "STAGE").string(); }
    Words PlaceCall() const
    {
        Words call(Present.Call.begin(), std::ranges::find(Present.Call, "convert"));
        call.insert(call.end(), {"place", StagePath()});
        return call;
    }

    void TryKill(FaultCount& count, long number, const std::string& name)
    {
        PutDown(Done.Before, Table.Root());
        EXPECT_EQ(Table.Run(Present, PlaceCall(), {number, 0, true, false}).Status, 128 + SIGKILL) << name;
        const int before = count.FindingCount();
        const Ran again = Table.Run(Present, PlaceCall());
        const bool wasDone = again.Said.find("was placed already") != std::string::npos;
        if (again.Status != (wasDone ? 1 : 0))
            count.Found("after", name, "status " + std::to_string(again.Status) + ": " + again.Said);
        const Tree now = TakeUp(Table.Root());
        FindAll(count, "after", name, JudgeDone(Done, now, 2, 1));
        FindAll(count, "left", name, StraysIn(Done, now));
        if (count.FindingCount() == before)
            count.Whole();
    }

    Reference Done; // undisturbed
    Ran Undisturbed;
};

TEST_F(PlacedStages, AreCompletedByTheNextCallAfterAKill)
{
    FaultCount count("kills, place");
    std::vector<const CountedCall*> writing;
    for (const CountedCall& call : Undisturbed.Calls) {
        if (call.Writing)
            writing.push_back(&call);
    }
    ASSERT_GT(writing.size(), 20U);
    const std::size_t tries =
        std::min(writing.size(), static_cast<std::size_t>(kv::test::Rounds(UsualKills)));
    for (std::size_t i = 0; i < tries; ++i) {
        const std::size_t at = writing.size() - 1 - i * writing.size() / tries; // the last ones are the notes
        TryKill(count, static_cast<long>(at) + 1,
                std::to_string(at + 1) + " before " + writing[at]->Name + " " + Nameless(writing[at]->Path));
    }
    Conclude(count);
}

} // namespace
} // namespace fault_test
