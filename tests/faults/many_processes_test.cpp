// Several processes convert into one installation at a time; nobody's record, program or row is missing.
#include <csignal>

#include "faults/neighbours.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

class ManyProcesses : public Neighbours {
  protected:
    void ConvertTogether(int processes, int drawings, bool asList)
    {
        std::vector<pid_t> children;
        for (int process = 1; process <= processes; ++process) {
            Words panels;
            for (int drawing = 0; drawing < drawings; ++drawing)
                panels.push_back(PutDrawing(process, drawing));
            std::vector<Words> calls;
            if (asList)
                calls.push_back(ConvertCall(panels));
            else
                for (const std::string& panel : panels)
                    calls.push_back(ConvertCall({panel}));
            children.push_back(StartCalls(calls));
        }
        for (const pid_t child : children)
            EXPECT_EQ(EndedWith(child), 0) << "a process reported a failure:\n" << Failures();
        CountAll(std::to_string(processes) + " processes, " + std::to_string(drawings) + " drawings each, " +
                     (asList ? "as a list" : "one call each"),
                 1, processes, drawings);
    }
};

// One of four is killed at any moment; the others miss nothing, and what it has left is no half.
class KilledNeighbours : public ManyProcesses {
  protected:
    // Starts the program itself, not a child that starts it.
    pid_t StartAlone(int process, int drawings) const
    {
        Words words;
        for (int drawing = 0; drawing < drawings; ++drawing)
            words.push_back(PutDrawing(process, drawing));
        const pid_t child = ::fork();
        if (child == 0)
            TurnInto(ConvertCall(words));
        return child;
    }

    void TryKill(FaultCount& count, int round, unsigned milliseconds)
    {
        constexpr int Drawings = 20;
        const std::string name =
            "round " + std::to_string(round) + ", " + std::to_string(milliseconds) + " ms";
        std::vector<pid_t> children;
        for (int process = 1; process <= 4; ++process)
            children.push_back(StartAlone(process, Drawings));
        ::usleep(milliseconds * 1000);
        ::kill(children.front(), SIGKILL);
        EndedWith(children.front());
        const int before = count.FindingCount();
        for (std::size_t i = 1; i < children.size(); ++i) {
            if (EndedWith(children[i]) != 0)
                count.Found("lost", name, "a neighbour failed: " + Failures());
        }
        if (RunCall(ConvertCall({PutDrawing(5, 0)})) != 0) // the next start
            count.Found("after", name, "the next start failed");
        JudgeAll(count, name, Drawings);
        if (count.FindingCount() == before)
            count.Whole();
    }

    void JudgeAll(FaultCount& count, const std::string& name, int drawings) const
    {
        const Counted counted = CountNames();
        if (!counted.Whole)
            count.Found("lost", name, "index or cut list is not whole");
        for (const IndexRow& row : counted.Records) {
            if (!fs::exists(Folder / "prg" / PlaceOfProgram(row.Name)))
                count.Found("lost", name, "a record without its program");
        }
        for (int process = 2; process <= 4; ++process) {
            for (int drawing = 0; drawing < drawings; ++drawing) {
                if (counted.RecordsOf(NameOf(process, drawing)) != 1)
                    count.Found("lost", name, "a record of a neighbour");
                if (counted.RowsOf(NameOf(process, drawing)) != 1)
                    count.Found("lost", name, "a row of a neighbour");
            }
        }
        if (!Temporary().empty())
            count.Found("left", name, "temporary files");
    }
};

TEST_F(KilledNeighbours, TakeNothingWithThem)
{
    FaultCount count("4 processes, 20 drawings each, one is killed");
    std::mt19937 random(kv::test::Seed(5));
    const int rounds = std::min(kv::test::Rounds(2), 100);
    for (int round = 0; round < rounds; ++round) {
        TearDown();
        SetUp();
        TryKill(count, round, static_cast<unsigned>(random() % 60));
    }
    count.Print();
    EXPECT_EQ(count.FindingCount(), 0) << count.Details(10);
}

TEST_F(ManyProcesses, TwoWithAListEachMissNothing)
{
    ConvertTogether(2, MostDrawings, true);
}

TEST_F(ManyProcesses, EightWithAListEachMissNothing)
{
    ConvertTogether(8, MostDrawings, true);
}

TEST_F(ManyProcesses, TwoWithACallForEachDrawingMissNothing)
{
    ConvertTogether(2, std::min(kv::test::Rounds(10), MostDrawings), false);
}

TEST_F(ManyProcesses, EightWithACallForEachDrawingMissNothing)
{
    ConvertTogether(8, std::min(kv::test::Rounds(3), MostDrawings), false);
}

} // namespace
} // namespace fault_test
