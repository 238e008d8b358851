// What processes leave that are ended in the middle of a list, and what the next one makes of it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <set>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "job/installation.h"
#include "job/placing.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/dxf.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

std::string NumberedPanel(int number)
{
    return Drawing(Instructions({"PTS NAME=P" + std::to_string(number)}) +
                   Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE Z12", 110 + number, 70, 4));
}

class EndedProcess : public testing::Test {
  protected:
    Scene Home;

    void SetUp() override
    {
        Config.PTSPath = FromHostPath(Home.Folder.string() + "/");
        Config.PTSName = "LIST";
        Config.PtsFields[1] = "NAME";
        Config.PtsFieldCount = 1;
    }
    template <typename Work> static pid_t Start(const Work& work)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            work();
            ::_exit(0);
        }
        return child;
    }
    static void WaitFor(pid_t child)
    {
        int status = 0;
        ::waitpid(child, &status, 0);
    }
    std::set<std::string> NamesInIndex() const
    {
        const std::string index = Home.Read(Home.Programs / "INDICE.PRG");
        EXPECT_EQ(index.size() % 82, 0U);
        std::set<std::string> names;
        for (std::size_t at = 0; at < index.size(); at += 82)
            EXPECT_TRUE(names.insert(std::string(Trim(index.substr(at, 12)))).second);
        return names;
    }
    int Leftovers() const
    {
        int count = 0;
        for (const auto& entry : fs::recursive_directory_iterator(Home.Folder)) {
            const std::string name = entry.path().filename().string();
            count += name.starts_with(".kv-") && !name.ends_with(".lock") ? 1 : 0;
        }
        return count;
    }
};

TEST_F(EndedProcess, TheNextOneFinishesMovesThatAreInTheJournal)
{
    const std::string anchor = FromHostPath((Home.Programs / "INDICE.PRG").string());
    const std::string record = Padded("DOOR", 80) + "\r\n", program = "G71\r\nM2\r\n";
    fs::create_directories(Home.Programs / "SRG/D");
    WaitFor(Start([&] { // ends between the moves of program and index
        PlannedMove moves[2];
        const std::string place = FromHostPath((Home.Programs / "SRG/D/OOR").string());
        (void)StageFile(place, program, moves[0].File);
        (void)StageFile(anchor, record, moves[1].File);
        moves[0].Mark = MarkOf(program);
        moves[1].Mark = MarkOf(record);
        (void)WriteJournal(anchor, moves);
        (void)MoveStaged(moves[0].File);
    }));
    EXPECT_EQ(Leftovers(), 2);
    EXPECT_TRUE(Home.Convert(NumberedPanel(1), "P1.DXF")) << Home.ReportText();
    EXPECT_EQ(NamesInIndex(), (std::set<std::string>{"DOOR", "P1"}));
    EXPECT_EQ(Home.Read(Home.Programs / "SRG/D/OOR"), program);
    EXPECT_EQ(Leftovers(), 0);
}

TEST_F(EndedProcess, ACopyThatIsNotTheJournalsAnyMoreIsNotMoved)
{
    const std::string anchor = FromHostPath((Home.Programs / "INDICE.PRG").string());
    WaitFor(Start([&] {
        PlannedMove moves[2];
        (void)StageFile(anchor, "other", moves[0].File);
        moves[0].Mark = MarkOf("what it was");
        moves[1] = moves[0];
        (void)WriteJournal(anchor, moves);
    }));
    EXPECT_TRUE(Home.Convert(NumberedPanel(1), "P1.DXF")) << Home.ReportText();
    EXPECT_EQ(NamesInIndex(), std::set<std::string>{"P1"});
    EXPECT_EQ(Leftovers(), 0);
}

TEST_F(EndedProcess, CopiesInTheFoldersOfOtherLettersGoToo)
{
    WaitFor(Start([&] {
        new JobsTogether; // never placed
        Home.Convert(NumberedPanel(1), "PANEL.DXF");
        Home.Convert(NumberedPanel(2), "DOOR.DXF");
    }));
    EXPECT_GE(Leftovers(), 2);
    EXPECT_TRUE(Home.Convert(NumberedPanel(3), "SIDE.DXF"));
    EXPECT_EQ(Leftovers(), 0);
    EXPECT_EQ(NamesInIndex(), std::set<std::string>{"SIDE"});
}

TEST_F(EndedProcess, KilledAtAnyMomentNoRecordIsWithoutItsProgramAndNothingIsLeft)
{
    constexpr int Panels = 12;
    for (int round = 0; round < Rounds(25); ++round) {
        std::mt19937 engine(Seed(static_cast<unsigned>(round)));
        fs::remove_all(Home.Programs / "SRG");
        fs::remove(Home.Folder / "LIST.PTS");
        std::ofstream(Home.Programs / "INDICE.PRG", std::ios::binary).flush();
        const pid_t child = Start([&] {
            for (int i = 0; i < Panels; i += 4) {
                const JobsTogether together;
                for (int j = i; j < i + 4; ++j)
                    Home.Convert(NumberedPanel(j), "P" + std::to_string(j) + ".DXF");
            }
        });
        ::usleep(std::uniform_int_distribution<useconds_t>(0, 60000)(engine));
        ::kill(child, SIGKILL);
        WaitFor(child);
        for (const std::string& name : NamesInIndex())
            EXPECT_TRUE(Home.HasProgram(name)) << name << ", " << RoundName(round);
        ASSERT_TRUE(Home.Convert(NumberedPanel(99), "P99.DXF")) << Home.ReportText();
        EXPECT_EQ(Leftovers(), 0) << RoundName(round);
        const std::set<std::string> names = NamesInIndex();
        EXPECT_TRUE(names.contains("P99"));
        for (const std::string& name : names)
            EXPECT_TRUE(Home.HasProgram(name)) << name << ", " << RoundName(round);
        const std::string list = Home.Read(Home.Folder / "LIST.PTS");
        EXPECT_EQ(InCount(list, '\n'), static_cast<Long>(names.size()) + 1) << list;
    }
}

} // namespace
} // namespace kv::test
