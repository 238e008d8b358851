// Files of drawings on their way to their places: in lists, beside changes of others, and when something
// fails on the way.
#include "job/placing.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "job/installation.h"
#include "platform/clock.h"
#include "platform/file_lock.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "state/shell_state.h"
#include "support/dxf.h"
#include "support/scene.h"
#include "writers/program_writers.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

std::string ListedDoor(const std::string& row = {}, double x = 110)
{
    return Drawing((row.empty() ? "" : Instructions({"PTS NAME=" + row})) +
                   Rectangle("BORDER", 10, 20, 600, 400) + Circle("VBORE Z12", x, 70, 4));
}

std::vector<UnplacedJob>* Unplaced = nullptr;

class Placement : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own
    Scene Home;
    std::vector<UnplacedJob> Told;

    void SetUp() override
    {
        Unplaced = &Told;
        Placing.Unplaced = [](const UnplacedJob& job) { Unplaced->push_back(job); };
        Config.PTSPath = FromHostPath(Home.Folder.string() + "/");
        Config.PTSName = "LIST";
        Config.PtsFields[1] = "NAME";
        Config.PtsFieldCount = 1;
    }
    void TearDown() override
    {
        Placing = PlacingHooks{};
        SetJobIdentity({});
        Shell = ShellState{};
    }

    fs::path Index() const { return Home.Programs / "INDICE.PRG"; }
    fs::path List() const { return Home.Folder / "LIST.PTS"; }
    std::string Names() const
    {
        const std::string index = Home.Read(Index());
        EXPECT_EQ(index.size() % 82, 0U);
        std::string names;
        for (std::size_t at = 0; at < index.size(); at += 82)
            names += std::string(Trim(index.substr(at, 12))) + " ";
        return names;
    }
    static std::string Record(const std::string& name) { return Padded(name, 80) + "\r\n"; }
    // What is beside programs, index and list: nothing written aside, no journal.
    void ExpectNothingLeft() const
    {
        for (const auto& entry : fs::recursive_directory_iterator(Home.Folder)) {
            const std::string name = entry.path().filename().string();
            EXPECT_FALSE(name.starts_with(".kv-") && !name.ends_with(".lock")) << entry.path();
        }
    }
};

TEST_F(Placement, AJobByItselfIsInItsPlaceAtItsEnd)
{
    EXPECT_TRUE(Home.Convert(ListedDoor("A"), "A.DXF"));
    EXPECT_EQ(Names(), "A ");
    EXPECT_TRUE(Home.HasProgram("A"));
    EXPECT_EQ(Home.Read(List()), "2.00, 1,M\r\nA\r\n");
    EXPECT_EQ(JobFiles(), (Texts{(Home.Programs / "SRG/00/A").string(), Index().string(), List().string()}));
    ExpectNothingLeft();
}

TEST_F(Placement, DrawingsOfAListArePlacedTogether)
{
    {
        const JobsTogether together;
        EXPECT_TRUE(Home.Convert(ListedDoor("SIDE"), "SIDE.DXF"));
        EXPECT_TRUE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
        EXPECT_EQ(Home.Read(Index()), "");
        EXPECT_FALSE(Home.HasProgram("SIDE"));
        EXPECT_FALSE(fs::exists(List()));
        EXPECT_TRUE(ProgramList.empty());
    }
    EXPECT_EQ(Names(), "DOOR SIDE ");
    EXPECT_TRUE(Home.HasProgram("SIDE"));
    EXPECT_TRUE(Home.HasProgram("DOOR"));
    EXPECT_EQ(Home.Read(List()), "2.00, 2,M\r\nSIDE\r\nDOOR\r\n");
    EXPECT_EQ(ProgramList, (Texts{"SIDE", "DOOR"}));
    ExpectNothingLeft();
}

TEST_F(Placement, AListLeavesWhatItsDrawingsLeaveOneByOne)
{
    const auto convertAll = [](Scene& scene) {
        for (const std::string name : {"B", "A", "C", "A"})
            EXPECT_TRUE(scene.Convert(ListedDoor(name), name + ".DXF"));
    };
    convertAll(Home);
    const std::string index = Home.Read(Index()), list = Home.Read(List());
    fs::remove(List());
    fs::remove_all(Home.Programs / "SRG");
    std::ofstream(Index(), std::ios::binary).flush();
    {
        const JobsTogether together;
        convertAll(Home);
    }
    EXPECT_EQ(Home.Read(Index()), index);
    EXPECT_EQ(Home.Read(List()), list);
}

TEST_F(Placement, WhatAnotherProcessPutIntoIndexAndListMeanwhileStays)
{
    {
        const JobsTogether together;
        EXPECT_TRUE(Home.Convert(ListedDoor("SIDE"), "SIDE.DXF"));
        Home.Write("prg/INDICE.PRG", Record("BACK") + Record("TOP"));
        Home.Write("LIST.PTS", "2.00, 1,M\r\nTHEIRS\r\n");
    }
    EXPECT_EQ(Names(), "BACK SIDE TOP ");
    EXPECT_EQ(Home.Read(List()), "2.00, 2,M\r\nTHEIRS\r\nSIDE\r\n");
}

TEST_F(Placement, ADrawingThatFindsItsProgramWaitingTakesItsCommentsOver)
{
    const std::string noted =
        Drawing(Instructions({"GCODE1=*CLAMP LEFT"}) + Rectangle("BORDER", 10, 20, 600, 400) +
                Circle("VBORE Z12", 110, 70, 4));
    EXPECT_TRUE(Home.Convert(noted, "DOOR.DXF"));
    EXPECT_TRUE(Home.Convert(ListedDoor(), "DOOR.DXF"));
    const Texts oneByOne = Home.Program();
    fs::remove_all(Home.Programs / "SRG");
    {
        const JobsTogether together;
        EXPECT_TRUE(Home.Convert(noted, "DOOR.DXF"));
        EXPECT_TRUE(Home.Convert(ListedDoor(), "DOOR.DXF"));
    }
    EXPECT_EQ(Home.Program(), oneByOne);
}

TEST_F(Placement, AProgramThatCannotBeMovedFailsItsDrawingAlone)
{
    {
        const JobsTogether together;
        EXPECT_TRUE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
        EXPECT_TRUE(Home.Convert(ListedDoor("SIDE"), "SIDE.DXF"));
        fs::create_directories(Home.Programs / "SRG/D/OOR/in the way");
    }
    EXPECT_EQ(Names(), "SIDE ") << "no record of a program that is not there";
    EXPECT_TRUE(Home.HasProgram("SIDE"));
    EXPECT_EQ(ProgramList, Texts{"SIDE"});
    ASSERT_EQ(Told.size(), 1U);
    EXPECT_TRUE(Told[0].Drawing.ends_with("\\DOOR.DXF"));
    const std::string place = (Home.Programs / "SRG/D/OOR").string();
    EXPECT_EQ(TextOf(Told[0].Line).find((Home.Folder / "DOOR.DXF").string() + ": " + place + ": "), 0U)
        << TextOf(Told[0].Line);
    EXPECT_EQ(Told[0].Number + 1, JobNumber());
    EXPECT_EQ(Run.FailedFiles.size(), 2U);
    EXPECT_EQ(Shell.FailedJobs, 1);
    EXPECT_EQ(Home.Read(List()), "2.00, 2,M\r\nDOOR\r\nSIDE\r\n") << "the row also of a drawing that failed";
    ExpectNothingLeft();
}

TEST_F(Placement, AnIndexThatWentAwayFailsAllWhoseRecordItShouldHold)
{
    {
        const JobsTogether together;
        EXPECT_TRUE(Home.Convert(ListedDoor(), "DOOR.DXF"));
        EXPECT_TRUE(Home.Convert(ListedDoor(), "SIDE.DXF"));
        fs::remove(Index());
    }
    EXPECT_EQ(Told.size(), 2U);
    EXPECT_FALSE(Home.HasProgram("DOOR"));
    EXPECT_FALSE(Home.HasProgram("SIDE"));
    EXPECT_FALSE(fs::exists(Index()));
    ExpectNothingLeft();
}

TEST_F(Placement, AnIndexOfABrokenLengthIsLeftAndTheProgramsStand)
{
    {
        const JobsTogether together;
        EXPECT_TRUE(Home.Convert(ListedDoor(), "DOOR.DXF"));
        Home.Write("prg/INDICE.PRG", std::string(83, 'x'));
    }
    ReportMessage(2, "");
    ASSERT_EQ(Told.size(), 1U);
    EXPECT_EQ(TextOf(Told[0].Line),
              (Home.Folder / "DOOR.DXF").string() + ": the program is not in the index");
    EXPECT_EQ(Run.FailedFiles.size(), 2U);
    EXPECT_TRUE(Home.HasProgram("DOOR"));
    EXPECT_EQ(Home.Read(Index()), std::string(83, 'x'));
    EXPECT_TRUE(Home.Reported(Index().string() +
                              ": left as it is, 83 bytes are no whole records; the program is not in it"));
}

TEST_F(Placement, ACutListThatCannotBeReadFailsTheWholeDrawing)
{
    fs::create_directories(List());
    EXPECT_FALSE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
    EXPECT_FALSE(Home.HasProgram("DOOR"));
    EXPECT_EQ(Names(), "");
    EXPECT_EQ(Home.Lines.back().find((Home.Folder / "DOOR.DXF").string() + ": " + List().string() + ": "), 0U)
        << Home.ReportText();
    EXPECT_EQ(Run.FailedFiles.size(), 2U);
    ExpectNothingLeft();
}

TEST_F(Placement, InAListACutListThatCannotBeReadFailsTheDrawingsThatNeedIt)
{
    {
        const JobsTogether together;
        EXPECT_TRUE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
        EXPECT_TRUE(Home.Convert(ListedDoor(), "SIDE.DXF"));
        fs::create_directories(List());
    }
    ASSERT_EQ(Told.size(), 1U);
    EXPECT_TRUE(Told[0].Drawing.ends_with("\\DOOR.DXF"));
    EXPECT_FALSE(Home.HasProgram("DOOR"));
    EXPECT_EQ(Names(), "SIDE ");
    ExpectNothingLeft();
}

TEST_F(Placement, ProgramsOfOneNameInAnySpellingAreOneFile)
{
    SetExeFolder(FromHostPath(Home.Folder.string() + "/"));
    Home.Write("EvHeader.dat", "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n");
    const auto convert = [&](const std::string& name) {
        Run.ControlType = 2;
        EXPECT_TRUE(Home.Convert(ListedDoor(), name)) << Home.ReportText();
    };
    {
        const JobsTogether together;
        convert("Door.DXF");
        convert("DOOR.DXF");
    }
    int programs = 0;
    for (const auto& entry : fs::directory_iterator(Home.Programs))
        programs += entry.path().extension() == ".CNC" ? 1 : 0;
    EXPECT_EQ(programs, 1);
    EXPECT_TRUE(fs::exists(Home.Programs / "Door.CNC"));
}

TEST_F(Placement, MuchThatIsWrittenAsideIsPlacedEarlier)
{
    std::string many = Rectangle("BORDER", 10, 20, 600, 400);
    for (int i = 0; i < 20000; ++i)
        many += Circle("VBORE Z12", 20 + i % 500, 30 + i / 500, 4);
    const std::string drawing = Drawing(many);
    Config.LineLimit = "32000";
    const JobsTogether together;
    int converted = 0;
    while (!fs::exists(Home.Programs / "SRG/P/0") && ++converted < 200)
        EXPECT_TRUE(Home.Convert(drawing, "P" + std::to_string(converted - 1) + ".DXF")) << Home.ReportText();
    EXPECT_LT(converted, 200);
}

// As `convert --jobs` does while other processes convert.
TEST_F(Placement, WhileOthersWorkWhatWaitsIsPlacedNowAndThen)
{
    const JobsTogether together;
    for (const std::string name : {"SIDE", "DOOR"}) {
        EXPECT_TRUE(Home.Convert(ListedDoor(name), name + ".DXF"));
        PlaceWhileIdle();
        EXPECT_FALSE(Home.HasProgram(name)) << "too early";
        constexpr int mostLooks = 1000;
        for (int i = 0; i < mostLooks && !Home.HasProgram(name); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            PlaceWhileIdle();
        }
        EXPECT_TRUE(Home.HasProgram(name));
    }
    EXPECT_EQ(Names(), "DOOR SIDE ");
    EXPECT_EQ(Home.Read(List()), "2.00, 2,M\r\nSIDE\r\nDOOR\r\n");
    ExpectNothingLeft();
}

// --- Waiting for others ---

FileLock* HeldLock = nullptr;
int Pauses = 0;

TEST_F(Placement, AWaitIsReportedOnceAfterTenSecondsAndEndsWithTheLock)
{
    FileLock other;
    ASSERT_EQ(other.TryLock(FromHostPath(Index().string())).Is, LockState::Taken);
    HeldLock = &other;
    Pauses = 0;
    Clock.Pause = [](double) {
        if (++Pauses == 1000) // of a fiftieth of a second
            HeldLock->Release();
    };
    EXPECT_TRUE(Home.Convert(ListedDoor(), "DOOR.DXF"));
    EXPECT_EQ(Pauses, 1000);
    int told = 0;
    for (const std::string& line : Home.Lines)
        told +=
            line == Index().string() + " is in use by " + HolderOf(LockHolderText()) + "; waiting" ? 1 : 0;
    EXPECT_EQ(told, 1) << Home.ReportText();
    EXPECT_EQ(Names(), "DOOR ");
}

TEST_F(Placement, AShortWaitIsNotReported)
{
    FileLock other;
    ASSERT_EQ(other.TryLock(FromHostPath(Index().string())).Is, LockState::Taken);
    HeldLock = &other;
    Pauses = 0;
    Clock.Pause = [](double) {
        if (++Pauses == 400)
            HeldLock->Release();
    };
    EXPECT_TRUE(Home.Convert(ListedDoor(), "DOOR.DXF"));
    for (const std::string& line : Home.Lines)
        EXPECT_FALSE(Holds(line, "waiting")) << line;
}

TEST_F(Placement, AWaitCanBeAborted)
{
    FileLock other;
    ASSERT_EQ(other.TryLock(FromHostPath(Index().string())).Is, LockState::Taken);
    Pauses = 0;
    Clock.Pause = [](double) {
        if (++Pauses == 10)
            kv::Run.RunState = 1;
    };
    EXPECT_FALSE(Home.Convert(ListedDoor(), "DOOR.DXF"));
    EXPECT_LE(Pauses, 200);
    EXPECT_FALSE(Home.HasProgram("DOOR"));
    EXPECT_EQ(Names(), "");
    EXPECT_TRUE(Home.Reported((Home.Folder / "DOOR.DXF").string() + ": " + Index().string() +
                              ": aborted while it was in use by " + HolderOf(LockHolderText())))
        << Home.ReportText();
    Run.RunState = 0;
    ExpectNothingLeft();
}

// --- A job that is repeated ---

TEST_F(Placement, ARepeatedJobOfABatchReplacesItsOwnRow)
{
    SetJobIdentity("BATCH.LST line 1 DOOR.DXF");
    EXPECT_TRUE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
    SetJobIdentity("BATCH.LST line 2 SIDE.DXF");
    EXPECT_TRUE(Home.Convert(ListedDoor("SIDE"), "SIDE.DXF"));
    SetJobIdentity("BATCH.LST line 1 DOOR.DXF");
    EXPECT_TRUE(Home.Convert(ListedDoor("OAK DOOR"), "DOOR.DXF"));
    EXPECT_EQ(Home.Read(List()), "2.00, 2,M\r\nOAK DOOR\r\nSIDE\r\n");
}

TEST_F(Placement, AJobThatIsDoneForGoodAddsItsRowTheNextTime)
{
    const std::string identity = "BATCH.LST line 1 DOOR.DXF";
    SetJobIdentity(identity);
    EXPECT_TRUE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
    ForgetJobIdentities({&identity, 1});
    ExpectNothingLeft();
    EXPECT_TRUE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
    EXPECT_EQ(Home.Read(List()), "2.00, 2,M\r\nDOOR\r\nDOOR\r\n");
}

TEST_F(Placement, AJobThatWasDoneBeforeAnInterruptionGivesItsRowToNobody)
{
    const std::string done = "C:\\DXF\\|+DOOR|0", open = "C:\\DXF\\|+SIDE|0", other = "D:\\|+TOP|0";
    const auto convert = [&](const std::string& identity, const std::string& row) {
        SetJobIdentity(identity);
        EXPECT_TRUE(Home.Convert(ListedDoor(row), row + ".DXF"));
    };
    convert(done, "DOOR");
    convert(open, "SIDE");
    convert(other, "TOP");
    KeepOpenIdentities("C:\\DXF\\|", {open});
    convert(done, "DOOR");
    convert(open, "OAK SIDE");
    convert(other, "OAK TOP");
    EXPECT_EQ(Home.Read(List()), "2.00, 4,M\r\nDOOR\r\nOAK SIDE\r\nOAK TOP\r\nDOOR\r\n")
        << "rows of open jobs are replaced in their places, the other one is another day's";
}

TEST_F(Placement, AConversionByAPersonAddsItsRowEachTime)
{
    EXPECT_TRUE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
    EXPECT_TRUE(Home.Convert(ListedDoor("DOOR"), "DOOR.DXF"));
    EXPECT_EQ(Home.Read(List()), "2.00, 2,M\r\nDOOR\r\nDOOR\r\n");
}

TEST(JobRows, AnyBytesComeBack)
{
    using namespace std::string_literals;
    const RowsByJob rows = {{"a 1\n2"s, "x,\"y\""s}, {""s, ""s}, {"\0\xFF"s, "12 \r\n"s}};
    EXPECT_EQ(RowsOf(JobRowsText(rows)), rows);
    const std::string text = JobRowsText(rows);
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_LT(RowsOf(text.substr(0, length)).size(), 3U) << length;
}

// --- The journal ---

std::vector<PlannedMove> SomeMoves()
{
    return {{{"/shop/prg/SRG/D/OOR", "/shop/prg/SRG/D/.kv-1-2.tmp", false}, {120, 17}},
            {{"/shop/list/A B\nC.PTS", "/shop/list/.kv-1-3.tmp", false}, {0, 18446744073709551615U}},
            {{"/shop/prg/INDICE.PRG", "/shop/prg/.kv-1-4.tmp", false}, {82, 5}}};
}

void ExpectSameMoves(const std::vector<PlannedMove>& moves, const std::vector<PlannedMove>& expected)
{
    ASSERT_EQ(moves.size(), expected.size());
    for (std::size_t i = 0; i < moves.size(); ++i) {
        EXPECT_EQ(moves[i].File.Aside, expected[i].File.Aside);
        EXPECT_EQ(moves[i].File.Place, expected[i].File.Place);
        EXPECT_EQ(moves[i].Mark, expected[i].Mark);
    }
}

TEST(Journal, MovesComeBackInTheirOrder)
{
    const std::string text = JournalText(SomeMoves(), "/shop/prg/");
    const auto moves = MovesOfJournal(text, "/shop/prg/");
    ASSERT_TRUE(moves.has_value());
    ExpectSameMoves(*moves, SomeMoves());
}

TEST(Journal, PlacesInItsFolderFollowTheFolderToAnotherName)
{
    const std::string text = JournalText(SomeMoves(), "/shop/prg/");
    const auto moves = MovesOfJournal(text, "/mnt/");
    ASSERT_TRUE(moves.has_value());
    EXPECT_EQ((*moves)[0].File.Place, "/mnt/SRG/D/OOR");
    EXPECT_EQ((*moves)[1].File.Place, "/shop/list/A B\nC.PTS");
    EXPECT_EQ((*moves)[2].File.Aside, "/mnt/.kv-1-4.tmp");
}

TEST(Journal, OneThatIsCutOrChangedAnywhereIsNone)
{
    const std::string text = JournalText(SomeMoves(), "/shop/prg/");
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_FALSE(MovesOfJournal(text.substr(0, length), "/shop/prg/")) << length;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        std::string changed = text;
        changed[i] = static_cast<char>(changed[i] ^ 1);
        EXPECT_FALSE(MovesOfJournal(changed, "/shop/prg/")) << i;
    }
}

TEST(Journal, OnlyFilesWrittenAsideAreMovedAndOnlyWithinTheirFolder)
{
    const auto accepted = [](const std::string& aside, const std::string& place) {
        const std::vector<PlannedMove> moves = {{{place, aside, false}, {1, 1}}};
        return MovesOfJournal(JournalText(moves, "/shop/"), "/shop/").has_value();
    };
    EXPECT_TRUE(accepted("/shop/.kv-1-2.tmp", "/shop/A"));
    EXPECT_FALSE(accepted("/shop/PROGRAM", "/shop/A"));
    EXPECT_FALSE(accepted("/shop/.kv-1-2.tmp", "/other/A"));
    EXPECT_FALSE(accepted("/shop/.kv-1-2.tmp", "/shop/"));
}

} // namespace
} // namespace kv::test
