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
#include "platform/file_lock.h"
#include "platform/paths.h"
#include "platform/run_error.h"
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

// Of a process of a number that none has.
constexpr const char* CopyOfEnded = "prg/.kv-999999999-2.tmp";
constexpr const char* MarkOfEnded = ".kv-999999999-1.tmp";

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
    RecoverInstallations(); // the next start
    EXPECT_EQ(Leftovers(), 0);
    EXPECT_TRUE(Home.Convert(NumberedPanel(3), "SIDE.DXF"));
    EXPECT_EQ(NamesInIndex(), std::set<std::string>{"SIDE"});
}

// A list that is never placed: copies of programs, and a mark of them.
TEST_F(EndedProcess, FoldersThatNoSettingNamesAreClearedByTheMark)
{
    const fs::path order = Home.Folder / "order 7";
    fs::create_directories(order);
    std::ofstream(order / "INDICE.PRG", std::ios::binary).flush();
    WaitFor(Start([&] {
        new JobsTogether;
        Home.Convert(NumberedPanel(1), "PANEL.DXF", FromHostPath(order.string() + "/"));
    }));
    EXPECT_GE(Leftovers(), 2);
    RecoverInstallations();
    EXPECT_EQ(Leftovers(), 0);
}

TEST_F(EndedProcess, WithoutAMarkNoInstallationIsLookedThrough)
{
    Home.Write(CopyOfEnded, "a copy");
    RecoverInstallations();
    EXPECT_EQ(Leftovers(), 1);
    Home.Write(MarkOfEnded, "");
    RecoverInstallations();
    EXPECT_EQ(Leftovers(), 0);
}

TEST_F(EndedProcess, AMarkStaysUntilEverythingIsCleared)
{
    Home.Write(CopyOfEnded, "a copy");
    Home.Write(MarkOfEnded, "");
    FileLock other; // of a process that works there
    ASSERT_EQ(other.TryLock(FromHostPath((Home.Programs / "INDICE.PRG").string())).Is, LockState::Taken);
    RecoverInstallations();
    EXPECT_EQ(Leftovers(), 2);
    other.Release();
    SettingsFault = {ErrorDeviceIo, "Input/output error"}; // nobody knows the folders
    RecoverInstallations();
    EXPECT_EQ(Leftovers(), 2);
    SettingsFault = {};
    RecoverInstallations();
    EXPECT_EQ(Leftovers(), 0);
}

TEST_F(EndedProcess, AMarkLivesAsLongAsSomethingIsAside)
{
    const auto marks = [&] {
        int count = 0;
        for (const auto& entry : fs::directory_iterator(Home.Folder))
            count += entry.path().extension() == ".tmp" ? 1 : 0;
        return count;
    };
    {
        const JobsTogether together;
        EXPECT_EQ(marks(), 0);
        Home.Convert(NumberedPanel(1), "P1.DXF");
        EXPECT_GE(marks(), 1);
    }
    EXPECT_EQ(marks(), 0);
}

// The copy of the program went with a power cut, the one of the index did not.
TEST_F(EndedProcess, NoIndexIsMovedWhoseProgramIsLost)
{
    const std::string anchor = FromHostPath((Home.Programs / "INDICE.PRG").string());
    fs::create_directories(Home.Programs / "SRG/D");
    WaitFor(Start([&] {
        PlannedMove moves[2];
        (void)StageFile(FromHostPath((Home.Programs / "SRG/D/OOR").string()), "G71\r\n", moves[0].File);
        (void)StageFile(anchor, Padded("DOOR", 80) + "\r\n", moves[1].File);
        moves[0].Mark = MarkOf("G71\r\n");
        moves[1].Mark = MarkOf(Padded("DOOR", 80) + "\r\n");
        (void)WriteJournal(anchor, moves);
        DropStaged(moves[0].File);
    }));
    EXPECT_TRUE(FinishMoves(anchor).Ok());
    EXPECT_EQ(NamesInIndex(), std::set<std::string>{});
    EXPECT_EQ(Leftovers(), 0);
}

// Two drawings of a list had one name; the second program is moved, and the index is not.
TEST_F(EndedProcess, AProgramThatWasReplacedWithinItsListIsNotLost)
{
    const std::string anchor = FromHostPath((Home.Programs / "INDICE.PRG").string());
    const std::string place = FromHostPath((Home.Programs / "SRG/D/OOR").string());
    fs::create_directories(Home.Programs / "SRG/D");
    WaitFor(Start([&] {
        PlannedMove moves[3];
        const std::string texts[] = {"G70\r\n", "G71\r\n", Padded("DOOR", 80) + "\r\n"};
        for (int i = 0; i < 3; ++i) {
            (void)StageFile(i < 2 ? place : anchor, texts[i], moves[i].File);
            moves[i].Mark = MarkOf(texts[i]);
        }
        (void)WriteJournal(anchor, moves);
        (void)MoveStaged(moves[0].File);
        (void)MoveStaged(moves[1].File);
    }));
    EXPECT_TRUE(FinishMoves(anchor).Ok());
    EXPECT_EQ(NamesInIndex(), std::set<std::string>{"DOOR"});
    EXPECT_EQ(Home.Read(Home.Programs / "SRG/D/OOR"), "G71\r\n");
}

TEST_F(EndedProcess, AMoveThatFailsKeepsItsCopyForTheNextStart)
{
    const std::string anchor = FromHostPath((Home.Programs / "INDICE.PRG").string());
    fs::create_directories(Home.Programs / "SRG/D");
    const std::string program = "G71\r\n", record = Padded("DOOR", 80) + "\r\n";
    WaitFor(Start([&] {
        PlannedMove moves[2];
        (void)StageFile(FromHostPath((Home.Programs / "SRG/D/OOR").string()), program, moves[0].File);
        (void)StageFile(anchor, record, moves[1].File);
        moves[0].Mark = MarkOf(program);
        moves[1].Mark = MarkOf(record);
        (void)WriteJournal(anchor, moves);
    }));
    fs::create_directories(Home.Programs / "SRG/D/OOR/in the way");
    const FileOutcome outcome = FinishMoves(anchor);
    EXPECT_FALSE(outcome.Ok());
    EXPECT_EQ(outcome.Cause.find((Home.Programs / "SRG/D/OOR").string() + ": "), 0U) << outcome.Cause;
    EXPECT_EQ(NamesInIndex(), std::set<std::string>{});
    fs::remove_all(Home.Programs / "SRG/D/OOR");
    EXPECT_TRUE(FinishMoves(anchor).Ok());
    EXPECT_EQ(NamesInIndex(), std::set<std::string>{"DOOR"});
    EXPECT_EQ(Home.Read(Home.Programs / "SRG/D/OOR"), program);
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
        RecoverInstallations(); // the next start
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
