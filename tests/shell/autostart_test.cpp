// The tick of the unattended mode: folders in turn, warm-up, triggers, command line, the watched
// program, and what happens when it ticks while jobs run.
#include "shell/autostart.h"

#include "platform/file_lock.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "shell/unattended.h"
#include "writers/program_writers.h"

namespace kv {
namespace {

class Autostart : public Unattended {
  protected:
    std::string DrawingPath(const std::string& name) const { return FromHostPath(Source(name).string()); }
};

class TempTrigger : public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
        Config.AutoStartTemp = true;
        WarmUp();
    }
};

class GraphicAfterJob : public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
        Config.GraphicAfterAuto = 1;
        LastProgram = {"DOOR", "\\prg\\door", ""};
    }
    bool Shown()
    {
        Started.clear();
        FinishJob("\\prg\\", "DOOR");
        return !Started.empty();
    }
};

// --- Without settings ---

TEST_F(Autostart, WithoutTheSettingsNoTriggerIsTakenNorDeleted)
{
    Config.AutoStartTemp = Config.AutoStartBatch = true;
    Put("Temp.DXF", BoredPanel());
    Put("BATCH.LST", "A.DXF\r\n");
    SettingsFault = {57, "Input/output error"};
    Tick(6);
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_TRUE(Stands("BATCH.LST"));
    SettingsFault = {};
}

// --- Warm-up ---

TEST_F(Autostart, JobsBeginOnTheFourthTick)
{
    Config.AutoStartTemp = true;
    Tick(2);
    Put("Temp.DXF", BoredPanel());
    Tick();
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_EQ(Shell.TickCount, 3);
    Tick();
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_TRUE(Here.HasProgram("TEMP")) << Here.ReportText();
    EXPECT_EQ(Shell.TickCount, 3);
}

TEST_F(Autostart, StaleTriggersAreSetAsideOnTheSecondTickAndTold)
{
    Put("Temp.DXF", BoredPanel());
    Put("BATCH.LST", "A\r\n!CNCOFF\r\nB\r\n");
    Tick();
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_TRUE(Stands("BATCH.LST"));
    Tick();
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_FALSE(Stands("BATCH.LST"));
    EXPECT_FALSE(Stands("BATCH.RUN"));
    EXPECT_EQ(TextOf("Temp.OLD"), BoredPanel());
    EXPECT_EQ(TextOf("BATCH.OLD"), "A\r\n!CNCOFF\r\nB\r\n");
    const std::string head = "Left from an earlier start and not run: ";
    EXPECT_EQ(Here.Lines, (Names{head + "Temp.DXF, kept as " + Source("Temp.OLD").string(),
                                 head + "BATCH.LST, 3 lines kept in " + Source("BATCH.OLD").string()}));
    Config.AutoStartTemp = Config.AutoStartBatch = true;
    Tick(6);
    EXPECT_FALSE(Here.HasProgram("TEMP"));
    EXPECT_FALSE(Here.HasProgram("A"));
}

TEST_F(Autostart, StaleTriggersNeverReplaceWhatWasSetAsideBefore)
{
    Put("Temp.OLD", "another drawing");
    Put("Temp2.OLD", "one more");
    Put("BATCH.OLD", "A\r\n");
    Put("Temp.DXF", BoredPanel());
    Put("BATCH.LST", "B\r\n");
    Tick(2);
    EXPECT_EQ(TextOf("Temp.OLD"), "another drawing");
    EXPECT_EQ(TextOf("Temp2.OLD"), "one more");
    EXPECT_EQ(TextOf("Temp3.OLD"), BoredPanel());
    EXPECT_EQ(TextOf("BATCH.OLD"), "A\r\nB\r\n");
}

TEST_F(Autostart, ADrawingThatIsSetAsideAgainStandsThereOnce)
{
    Put("Temp.OLD", BoredPanel());
    Put("Temp.DXF", BoredPanel());
    Tick(2);
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_FALSE(Stands("Temp2.OLD"));
    EXPECT_EQ(
        Told("Left from an earlier start and not run: Temp.DXF, kept as " + Source("Temp.OLD").string()), 1)
        << Here.ReportText();
}

TEST_F(Autostart, TriggersOfAFolderThatAnotherProcessWorksInAreNotStale)
{
    FileLock batch, drawing;
    ASSERT_EQ(batch.TryLock(DrawingPath("BATCH.RUN")).Is, LockState::Taken);
    ASSERT_EQ(drawing.TryLock(DrawingPath("Temp.DXF.RUN")).Is, LockState::Taken);
    Put("Temp.DXF", BoredPanel());
    Put("BATCH.LST", "A\r\n");
    Tick(2);
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_TRUE(Stands("BATCH.LST"));
    EXPECT_TRUE(Here.Lines.empty()) << Here.ReportText();
}

TEST_F(Autostart, AStaleBatchWithoutJobsIsToldAndGone)
{
    Put("BATCH.LST", "\r\n!CNCOFF\r\n");
    Tick(2);
    EXPECT_FALSE(Stands("BATCH.LST"));
    EXPECT_FALSE(Stands("BATCH.OLD"));
    EXPECT_EQ(Told("Left from an earlier start and not run: BATCH.LST, which names no job"), 1);
}

TEST_F(Autostart, WithSwitchSStaleTriggersAreKept)
{
    Shell.CommandLine = "/v /s";
    Put("Temp.DXF", BoredPanel());
    Put("BATCH.LST", "A\r\n");
    Tick(3);
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_TRUE(Stands("BATCH.LST"));
}

TEST_F(Autostart, ATriggerOfTheThirdTickIsNotStale)
{
    Tick(2);
    Put("BATCH.LST", "A\r\n");
    Tick();
    EXPECT_TRUE(Stands("BATCH.LST"));
}

// --- Folders ---

TEST_F(Autostart, SeparateFoldersAreWatchedInTurn)
{
    OwnFolder(1, "gen");
    OwnFolder(2, "evo");
    std::vector<Int> systems;
    for (int i = 0; i < 7; ++i) {
        Tick();
        systems.push_back(kv::Run.ControlType);
    }
    EXPECT_EQ(systems, (std::vector<Int>{1, 2, 0, 1, 2, 0, 1}));
}

TEST_F(Autostart, BlankFoldersArePassedOver)
{
    OwnFolder(2, "evo");
    SourcePath(1) = "  ";
    std::vector<Int> systems;
    for (int i = 0; i < 4; ++i) {
        Tick();
        systems.push_back(kv::Run.ControlType);
    }
    EXPECT_EQ(systems, (std::vector<Int>{2, 0, 2, 0}));
}

TEST_F(Autostart, ALoneFolderIsWatchedEachTick)
{
    SourcePath(0) = SourcePath(1) = "";
    Tick(3);
    EXPECT_EQ(kv::Run.ControlType, 2);
}

TEST_F(Autostart, WithoutAnyFolderTheTickEnds)
{
    SourcePath(0) = SourcePath(1) = SourcePath(2) = "";
    Tick(8);
    EXPECT_EQ(Shell.TickCount, 0);
    EXPECT_FALSE(Shell.Ended);
}

TEST_F(Autostart, WithoutAnyFolderTheCommandLineIsRunAllTheSame)
{
    Put("A.DXF", BoredPanel());
    SourcePath(0) = SourcePath(1) = SourcePath(2) = "";
    Shell.CommandLine = DrawingPath("A.DXF");
    Tick(3);
    EXPECT_FALSE(Shell.Ended);
    Tick();
    EXPECT_TRUE(Shell.Ended);
    EXPECT_TRUE(Here.HasProgram("A")) << Here.ReportText();
}

TEST_F(Autostart, NobodyIsAskedWhileATriggerRunsAndThenAgain)
{
    Put("A.DXF", BoredPanel());
    Shell.CommandLine = DrawingPath("A.DXF");
    bool unattended = false;
    const test::AtStage look("final", [&] { unattended = Shell.Unattended; });
    EXPECT_FALSE(Shell.Unattended);
    Tick(4);
    EXPECT_TRUE(unattended);
    EXPECT_FALSE(Shell.Unattended);
}

TEST_F(Autostart, ASharedFolderBelongsToTheSystemOfTheSettings)
{
    OwnFolder(2, "evo");
    SourcePath(1) = " " + SourcePath(0) + " "; // compared trimmed
    Config.Winner90 = false;
    Config.Genesis = true;
    std::vector<Int> systems;
    for (int i = 0; i < 6; ++i) {
        Tick();
        systems.push_back(kv::Run.ControlType);
    }
    // After 1 comes 2, after 2 comes 0, which is shared and so 1.
    EXPECT_EQ(systems, (std::vector<Int>{1, 2, 1, 2, 1, 2}));
}

TEST_F(Autostart, AFolderSharedByOthersBelongsToTheLowestOfThem)
{
    OwnFolder(2, "evo");
    Config.Winner90 = false;
    Config.GenesisEV = true; // the selected one has a folder of its own
    std::vector<Int> systems;
    for (int i = 0; i < 6; ++i) {
        Tick();
        systems.push_back(kv::Run.ControlType);
    }
    EXPECT_EQ(systems, (std::vector<Int>{0, 2, 0, 2, 0, 2}));
}

TEST_F(Autostart, EveryFolderIsWatchedWhoeverSharesThem)
{
    const std::filesystem::path own = OwnFolder(1, "own");
    const std::string shared = SourcePath(0), single = SourcePath(1);
    for (int alone = 0; alone < ControlSystems; ++alone)
        for (int selected = 0; selected < ControlSystems; ++selected) {
            for (int system = 0; system < ControlSystems; ++system)
                SourcePath(system) = system == alone ? single : shared;
            Config.Winner90 = selected == 0;
            Config.Genesis = selected == 1;
            Config.GenesisEV = selected == 2;
            ResetShell();
            kv::Run.ControlType = 0;
            int ofTheLone = 0, ofTheShared = 0;
            for (int i = 0; i < 10; ++i) {
                Tick();
                ++(kv::Run.ControlType == alone ? ofTheLone : ofTheShared);
            }
            EXPECT_EQ(ofTheLone, 5) << alone << ' ' << selected;
            EXPECT_EQ(ofTheShared, 5) << alone << ' ' << selected;
        }
}

TEST_F(Autostart, ATriggerWaitsForTheTurnOfItsFolder)
{
    Config.AutoStartTemp = true;
    const std::filesystem::path evo = OwnFolder(2, "evo");
    OwnFolder(1, "gen");
    WarmUp();
    Here.Write("evo/Temp.DXF", BoredPanel());
    Tick();
    EXPECT_TRUE(std::filesystem::exists(evo / "Temp.DXF")); // Genesis
    Tick();
    EXPECT_FALSE(std::filesystem::exists(evo / "Temp.DXF"));
}

// --- Temp.DXF ---

TEST_F(TempTrigger, NothingHappensWithoutTheSetting)
{
    Config.AutoStartTemp = false;
    Put("Temp.DXF", BoredPanel());
    Tick(4);
    EXPECT_TRUE(Stands("Temp.DXF"));
}

TEST_F(TempTrigger, AnEmptyOneIsLeft)
{
    Put("Temp.DXF", "");
    Tick(8);
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_TRUE(Here.Lines.empty()) << Here.ReportText();
}

TEST_F(TempTrigger, AHalfWrittenOneIsLeftUntilItHasItsEnd)
{
    const std::string drawing = BoredPanel();
    for (std::size_t part = 1; part < 8; ++part) {
        Put("Temp.DXF", drawing.substr(0, drawing.size() * part / 8));
        Tick();
        ASSERT_TRUE(Stands("Temp.DXF"));
    }
    Put("Temp.DXF", drawing);
    Tick();
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_TRUE(Here.HasProgram("TEMP")) << Here.ReportText();
    EXPECT_EQ(Shell.FailedJobs, 0);
}

TEST_F(TempTrigger, OneWithoutEndIsRunWhenItHasNotChangedForTwoSeconds)
{
    std::string drawing = BoredPanel();
    drawing.resize(drawing.rfind("0\nEOF"));
    Put("Temp.DXF", drawing);
    Tick(4); // seen first, then 0.5, 1 and 1.5 seconds later
    EXPECT_TRUE(Stands("Temp.DXF"));
    Tick();
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_TRUE(Here.HasProgram("TEMP")) << Here.ReportText();
}

TEST_F(TempTrigger, TwoSecondsCountAcrossMidnight)
{
    Seconds = 86399;
    std::string drawing = BoredPanel();
    drawing.resize(drawing.rfind("0\nEOF"));
    Put("Temp.DXF", drawing);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(Stands("Temp.DXF"));
        Tick();
        if (Seconds >= 86400)
            Seconds -= 86400;
    }
    EXPECT_FALSE(Stands("Temp.DXF"));
}

TEST_F(TempTrigger, AFailedOneIsSetAsideAndCounted)
{
    Put("Temp.DXF", FailingDrawing());
    Tick(3);
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_FALSE(Stands("Temp.DXF.RUN"));
    EXPECT_EQ(TextOf("Temp.OLD"), FailingDrawing());
    EXPECT_EQ(Told("Not done: Temp.DXF, kept as " + Source("Temp.OLD").string()), 1) << Here.ReportText();
    EXPECT_EQ(Shell.FailedJobs, 1);
    EXPECT_EQ(Told("CONVERSION PROCESS ABORTED."), 1) << Here.ReportText();
}

TEST_F(TempTrigger, OneThatWasReplacedWhileItsJobRanIsTheNextJob)
{
    int jobs = 0;
    const test::AtStage look("final", [&] {
        if (++jobs == 1)
            Put("Temp.DXF", BoredPanel(test::Circle("VBORE_Z12F3000", 200, 50, 4)));
    });
    Put("Temp.DXF", BoredPanel());
    Tick();
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_EQ(Here.Program("TEMP")[0], "G71X600Y400Z18T00N4L1");
    Tick();
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_EQ(jobs, 2);
    EXPECT_EQ(Here.Program("TEMP")[0], "G71X600Y400Z18T00N5L2");
    Tick(3);
    EXPECT_EQ(jobs, 2);
}

TEST_F(TempTrigger, SwitchesStandAsToldWhileItRuns)
{
    Put("Temp.DXF", BoredPanel());
    bool looked = false;
    const test::AtStage look("final", [&] {
        looked = true;
        EXPECT_TRUE(Shell.RunActive);
        EXPECT_TRUE(Shell.BtnAbortShown);
        EXPECT_FALSE(Shell.Frame2Enabled);
        EXPECT_FALSE(Shell.LoadDr);
        EXPECT_FALSE(Stands("Temp.DXF")); // no other process can run it too
        EXPECT_TRUE(Stands("Temp.DXF.RUN"));
    });
    Shell.LoadDr = true;
    Tick();
    EXPECT_TRUE(looked);
    EXPECT_FALSE(Shell.RunActive);
    EXPECT_FALSE(Shell.BtnAbortShown);
    EXPECT_TRUE(Shell.Frame2Enabled);
    EXPECT_TRUE(Shell.LoadDr);
    EXPECT_EQ(MeterInterval(), 0);
    EXPECT_EQ(MeterValue(Meter::PgmCode), 0);
}

TEST_F(TempTrigger, ATickInsideItsYieldsDoesNothing)
{
    Put("Temp.DXF", BoredPanel());
    int jobs = 0;
    const test::AtStage look("entities", [&] { ++jobs; });
    InTheEvents = [] { AutostartTick(); };
    Tick(3);
    EXPECT_EQ(jobs, 1);
    EXPECT_TRUE(Here.HasProgram("TEMP")) << Here.ReportText();
}

TEST_F(TempTrigger, StartInsideItDoesNothing)
{
    Put("A.DXF", BoredPanel());
    Put("Temp.DXF", BoredPanel());
    ListFiles({"A.DXF"});
    InTheEvents = [] {
        if (!Shell.RunActive)
            return;
        PressStart();
        StartConversion();
    };
    Tick();
    EXPECT_FALSE(Here.HasProgram("A"));
    EXPECT_TRUE(Here.HasProgram("TEMP"));
    EXPECT_EQ(kv::Run.RunState, 0);
}

TEST_F(TempTrigger, AbortEndsItsJob)
{
    Put("Temp.DXF", BoredPanel());
    int reads = 0;
    InTheEvents = [&] {
        if (Shell.BtnAbortShown && ++reads == 5)
            kv::Run.RunState = 1;
    };
    Tick();
    EXPECT_FALSE(Here.HasProgram("TEMP"));
    EXPECT_EQ(Told("USER ABORTED"), 1) << Here.ReportText();
    EXPECT_FALSE(Shell.BtnAbortShown);
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_EQ(TextOf("Temp.OLD"), BoredPanel());
}

TEST_F(TempTrigger, OneThatIsWrittenOnWhileItsJobRunsIsTheNextJob)
{
    int jobs = 0;
    const std::string more = BoredPanel(test::Circle("VBORE_Z12F3000", 200, 50, 4));
    const test::AtStage look("final", [&] {
        if (++jobs == 1)
            Put("Temp.DXF.RUN", more); // by a writer that had opened it before
    });
    Put("Temp.DXF", BoredPanel());
    Tick();
    EXPECT_EQ(TextOf("Temp.DXF"), more);
    Tick();
    EXPECT_EQ(jobs, 2);
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_EQ(Here.Program("TEMP")[0], "G71X600Y400Z18T00N5L2");
}

TEST_F(TempTrigger, OneThatWasCutOffIsSetAsideBeforeTheNextAndTold)
{
    Put("Temp.DXF.RUN", "half a job");
    Put("Temp.DXF", BoredPanel());
    Tick();
    EXPECT_EQ(TextOf("Temp.OLD"), "half a job");
    EXPECT_TRUE(Here.HasProgram("TEMP")) << Here.ReportText();
    EXPECT_EQ(Told("Unfinished: Temp.DXF, kept as " + Source("Temp.OLD").string()), 1) << Here.ReportText();
}

TEST_F(TempTrigger, ItWaitsWhileAnotherProcessRunsOne)
{
    FileLock other;
    ASSERT_EQ(other.TryLock(FromHostPath(Source("Temp.DXF.RUN").string())).Is, LockState::Taken);
    Put("Temp.DXF.RUN", "of another process");
    Put("Temp.DXF", BoredPanel());
    Tick(4);
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_EQ(TextOf("Temp.DXF.RUN"), "of another process");
    EXPECT_TRUE(Here.Lines.empty()) << Here.ReportText();
    std::filesystem::remove(Source("Temp.DXF.RUN"));
    other.Release();
    Tick();
    EXPECT_TRUE(Here.HasProgram("TEMP")) << Here.ReportText();
}

#if !defined(_WIN32) // rights of a folder by the bits of its mode
TEST_F(TempTrigger, OneThatCannotBeTakenIsToldOnceAndNotRun)
{
    Put("Temp.DXF", BoredPanel());
    int jobs = 0;
    const test::AtStage look("entities", [&] { ++jobs; });
    {
        const ReadOnlyFolder held(*this);
        Tick(5);
    }
    EXPECT_EQ(jobs, 0); // whoever else looks into this folder would run it too
    EXPECT_EQ(Told(Source("Temp.DXF").string() + " cannot be taken and is not run: Permission denied"), 1)
        << Here.ReportText();
    Tick(3); // the folder takes files again
    EXPECT_EQ(jobs, 1);
    EXPECT_FALSE(Stands("Temp.DXF"));
}
#endif

TEST_F(TempTrigger, ItGoesBeforeABatchInTheSameFolder)
{
    Put("A.DXF", BoredPanel());
    Put("Temp.DXF", BoredPanel());
    Put("BATCH.LST", "A\r\n");
    Shell.CommandLine = "/S";
    const test::AtStage look("entities", [&] { Shell.CommandLine = ""; }); // else the program ends here
    Tick();
    EXPECT_FALSE(Stands("Temp.DXF"));
    EXPECT_TRUE(Stands("BATCH.LST"));
}

// --- The command line ---

TEST_F(Autostart, ADrawingOnTheCommandLineIsRunOnTheFourthTickAndTheProgramEnds)
{
    Put("A.DXF", BoredPanel());
    Shell.CommandLine = DrawingPath("A.DXF");
    Tick(3);
    EXPECT_FALSE(Shell.Ended);
    EXPECT_FALSE(Here.HasProgram("A"));
    bool abortShown = false;
    const test::AtStage look("final", [&] { abortShown = Shell.BtnAbortShown; });
    Tick();
    EXPECT_TRUE(Shell.Ended);
    EXPECT_TRUE(Here.HasProgram("A")) << Here.ReportText();
    EXPECT_EQ(Shell.CommandLine, "");
    EXPECT_EQ(Shell.FailedJobs, 0);
    EXPECT_TRUE(abortShown);
    EXPECT_FALSE(Shell.BtnAbortShown);
    EXPECT_FALSE(Shell.RunActive);
    EXPECT_EQ(MeterInterval(), 0);
}

TEST_F(Autostart, ADrawingOnTheCommandLineIsConvertedForTheSystemOfTheSettings)
{
    OwnFolder(1, "gen");
    OwnFolder(2, "evo");
    for (const int ticks : {0, 1, 2}) { // whichever folder the tick looks at
        ResetShell();
        kv::Run.ControlType = static_cast<Int>(ticks);
        Put("A.DXF", BoredPanel());
        Shell.CommandLine = DrawingPath("A.DXF");
        Int system = -1;
        const test::AtStage look("final", [&] { system = kv::Run.ControlType; });
        Tick(4);
        EXPECT_EQ(system, 0) << ticks;
    }
}

TEST_F(Autostart, AFailedDrawingOnTheCommandLineCounts)
{
    Shell.CommandLine = DrawingPath("GONE.DXF");
    Tick(4);
    EXPECT_TRUE(Shell.Ended);
    EXPECT_EQ(Shell.FailedJobs, 1);
}

TEST_F(Autostart, ADrawingWithSwitchesIsRunWithoutThem)
{
    Put("A B.DXF", BoredPanel());
    const std::string path = DrawingPath("A B.DXF");
    for (const std::string& line : {path + " /V", "/v " + path, "/k " + path + "  /s/V ", path + " /K"}) {
        ResetShell();
        std::filesystem::remove_all(Here.Programs / "SRG");
        Started.clear();
        Shell.CommandLine = line;
        Tick(4);
        EXPECT_TRUE(Shell.Ended) << line;
        EXPECT_EQ(Shell.FailedJobs, 0) << line;
        EXPECT_TRUE(Here.HasProgram("A B") || Here.HasProgram("AB")) << line << Here.ReportText();
        const bool shows = UpperCase(line).find("/V") != std::string::npos;
        EXPECT_EQ(Started.size(), shows ? 1U : 0U) << line;
    }
}

TEST_F(Autostart, AFailedDrawingWithTheSwitchHasNoGraphic)
{
    Shell.CommandLine = DrawingPath("GONE.DXF") + " /V";
    Tick(4);
    EXPECT_TRUE(Shell.Ended);
    EXPECT_EQ(Shell.FailedJobs, 1);
    EXPECT_TRUE(Started.empty());
    EXPECT_EQ(Told(ShownPath(DrawingPath("GONE.DXF")) + "  NOT FOUND"), 1) << Here.ReportText();
}

int FirstRowOfFailure = -1;

TEST_F(Autostart, AFailedDrawingOnTheCommandLineIsReadBeforeTheProgramEnds)
{
    ShellWindow.Failed = [](int firstRow) {
        FirstRowOfFailure = firstRow;
        return true;
    };
    ReportMessage(0, "");
    ReportMessage(3, "a row before");
    Shell.CommandLine = DrawingPath("GONE.DXF");
    Tick(4);
    EXPECT_FALSE(Shell.Ended);
    EXPECT_EQ(Shell.CommandLine, "");
    EXPECT_EQ(Shell.FailedJobs, 1);
    EXPECT_FALSE(Shell.RunActive);
    ASSERT_EQ(FirstRowOfFailure, 1);
    EXPECT_TRUE(Here.Lines[1].ends_with("NOT FOUND")) << Here.ReportText();
    // Nobody reads what an abort left, and switches alone are no drawing.
    for (const bool aborted : {true, false}) {
        Shell = ShellState{};
        FirstRowOfFailure = -1;
        Shell.CommandLine = aborted ? DrawingPath("GONE.DXF") : "/S";
        Report.ShowRow = [](const ReportRow&) {};
        InTheEvents = [&] { kv::Run.RunState = static_cast<Int>(aborted ? 1 : kv::Run.RunState); };
        Tick(4);
        InTheEvents = nullptr;
        EXPECT_TRUE(Shell.Ended) << aborted;
        EXPECT_EQ(FirstRowOfFailure, -1) << aborted;
    }
}

TEST_F(Autostart, SwitchesAreTriedAsADrawingAndTheProgramEnds)
{
    for (const char* const line : {"/S", "/k /v", "/s/K"}) {
        ResetShell();
        Here.Lines.clear();
        Shell.CommandLine = line;
        Tick(4);
        EXPECT_TRUE(Shell.Ended) << line;
        EXPECT_EQ(Shell.FailedJobs, 0) << line;
        ASSERT_FALSE(Here.Lines.empty()) << line;
        EXPECT_TRUE(Here.Lines.back().ends_with("NOT FOUND")) << Here.ReportText();
    }
}

TEST_F(Autostart, AnEndedProgramTicksNoMore)
{
    Config.AutoStartTemp = true;
    WarmUp();
    Put("Temp.DXF", BoredPanel());
    Shell.Ended = true;
    Tick(3);
    EXPECT_TRUE(Stands("Temp.DXF"));
}

// --- The watched program ---

TEST_F(Autostart, WhileAWatchedProgramRunsNoTriggerIsTaken)
{
    Config.AutoStartTemp = true;
    WarmUp();
    Put("Temp.DXF", BoredPanel());
    Shell.WatchedProcess = 7;
    ExitCode = StillActive;
    Tick(3);
    EXPECT_TRUE(Stands("Temp.DXF"));
    EXPECT_EQ(Shell.ExitCode, 259);
    EXPECT_EQ(Shell.WatchedProcess, 7);
    EXPECT_TRUE(Forgotten.empty());
}

TEST_F(Autostart, AWatchedProgramThatEndedIsForgottenAndItsControlReset)
{
    std::filesystem::create_directories(Here.Folder / "control");
    Here.Write("control/TPA.INI", "[edigraf-exec]\r\nExec=2\r\n");
    WarmUp();
    Shell.WatchedProcess = 7;
    Shell.WatchedControlFolder = FromHostPath((Here.Folder / "control").string() + "/");
    ExitCode = 3;
    Tick();
    EXPECT_EQ(Shell.ExitCode, 3);
    EXPECT_EQ(Shell.WatchedProcess, 0);
    EXPECT_EQ(Shell.WatchedControlFolder, "");
    EXPECT_EQ(Forgotten, (std::vector<Long>{7}));
    EXPECT_EQ(Here.Read(Here.Folder / "control/TPA.INI"), "[edigraf-exec]\r\nExec=0\r\n");
}

TEST_F(Autostart, TheTickThatForgetsAWatchedProgramGoesOnWithTheCommandLine)
{
    Put("A.DXF", BoredPanel());
    WarmUp();
    Shell.WatchedProcess = 7;
    Shell.CommandLine = DrawingPath("A.DXF");
    Tick();
    EXPECT_TRUE(Here.HasProgram("A"));
    EXPECT_TRUE(Shell.Ended);
}

// --- PrepareRun and FinishJob ---

TEST_F(Autostart, PrepareRunClearsWhatTheLastRunLeft)
{
    kv::Run.RunState = 2;
    kv::Run.RunFailed = True;
    kv::Run.FailedFiles = {"", "X"};
    ProgramList = {"X"};
    ReportMessage(3, "old");
    Shell.LoadDr = true;
    PrepareRun();
    EXPECT_EQ(kv::Run.RunState, 0);
    EXPECT_EQ(kv::Run.RunFailed, False);
    EXPECT_TRUE(kv::Run.FailedFiles.empty());
    EXPECT_TRUE(ProgramList.empty());
    EXPECT_EQ(ReportRowCount(), 0);
    EXPECT_FALSE(Shell.Frame2Enabled);
    EXPECT_FALSE(Shell.LoadDr);
    EXPECT_TRUE(Shell.BtnAbortShown);
}

TEST_F(Autostart, AJobIsFinishedByReportPauseFocusAndMeters)
{
    ReportMessage(1, "row");
    SetMeter(Meter::PgmCode, 50);
    SetMeterInterval(1000);
    FinishJob("\\prg\\", "DOOR");
    EXPECT_TRUE(Shell.LoadDr);
    EXPECT_EQ(Here.Lines, (Names{"row"}));
    EXPECT_EQ(Pauses, (std::vector<double>{0.3}));
    EXPECT_EQ(MeterValue(Meter::PgmCode), 0);
    EXPECT_EQ(MeterInterval(), 0);
    EXPECT_EQ(Focused, (std::vector<FocusPlace>{FocusPlace::List1}));
}

TEST_F(Autostart, AfterAFailureOrAPauseForMessagesStartHasTheFocusFirst)
{
    const std::vector<FocusPlace> both = {FocusPlace::Start, FocusPlace::List1};
    kv::Run.RunFailed = True;
    FinishJob("\\prg\\", "DOOR");
    EXPECT_EQ(Focused, both);
    Focused.clear();
    kv::Run.RunFailed = False;
    Config.PauseForMessages = 1;
    FinishJob("\\prg\\", "DOOR");
    EXPECT_EQ(Focused, both);
}

TEST_F(GraphicAfterJob, TheSettingOrTheSwitchShowIt)
{
    EXPECT_TRUE(Shown());
    Config.GraphicAfterAuto = 0;
    EXPECT_FALSE(Shown());
    Shell.CommandLine = "/s /v";
    EXPECT_TRUE(Shown());
}

TEST_F(GraphicAfterJob, ADrawingWithoutCodeHasNone)
{
    kv::Run.NoCode = True;
    EXPECT_FALSE(Shown());
}

TEST_F(GraphicAfterJob, AnAbortedJobHasNone)
{
    kv::Run.RunState = 1;
    EXPECT_FALSE(Shown());
    kv::Run.RunState = 2; // no abort
    EXPECT_TRUE(Shown());
}

TEST_F(GraphicAfterJob, AFailedJobHasNone)
{
    kv::Run.RunFailed = True;
    EXPECT_FALSE(Shown());
}

TEST_F(GraphicAfterJob, TheBatchLimitMustBeAboveTheCount)
{
    struct Row {
        const char* Limit;
        Int Count;
        bool Shows;
    };
    for (const Row& row : {Row{"5", 4, true},
                           {"5", 5, false},
                           {"5", 6, false},
                           {"0", 500, true},
                           {"", 500, true},
                           {" 5 parts", 4, true},
                           {"1", 0, true}}) {
        Config.BatchLimit = row.Limit;
        Shell.BatchCount = row.Count;
        EXPECT_EQ(Shown(), row.Shows) << row.Limit << " " << row.Count;
    }
}

TEST_F(GraphicAfterJob, TheEvolutionIsShownItsProgramFile)
{
    LastProgram = {};
    kv::Run.ControlType = 2;
    EXPECT_TRUE(Shown());
    EXPECT_EQ(Started, (Names{"view " + ShownPath("\\prg\\DOOR.CNC")}));
}

} // namespace
} // namespace kv
