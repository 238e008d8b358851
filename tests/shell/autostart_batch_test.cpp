// BATCH.LST in the tick: its lines, commands and lists, the graphic's limit, failures, what is kept of
// it while it runs, and files that others write at the same time.
#include <algorithm>
#include <set>

#include "job/job_rows.h"
#include "platform/file_lock.h"
#include "platform/files.h"
#include "shell/unattended.h"

namespace kv {
namespace {

class AutostartBatch : public Unattended {
  protected:
    void SetUp() override
    {
        Unattended::SetUp();
        Config.AutoStartBatch = true;
        for (const char* const name : {"A.DXF", "B.DXF", "C.DXF", "D.DXF", "E.DXF"})
            Put(name, BoredPanel());
        WarmUp();
    }
    void Batch(const std::string& lines) { Put("BATCH.LST", lines); }
    void RunBatch(const std::string& lines)
    {
        Batch(lines);
        Tick();
    }
    std::string Shown(const std::string& name) const { return Source(name).string(); }
};

TEST_F(AutostartBatch, EachLineIsAJobAndProcListTellsThem)
{
    RunBatch("a.dxf\r\n\r\n\"B\"\r\nC.DXF^FRONT\r\n");
    EXPECT_TRUE(Here.HasProgram("A")) << Here.ReportText();
    EXPECT_TRUE(Here.HasProgram("B"));
    EXPECT_TRUE(Here.HasProgram("FRONT"));
    EXPECT_FALSE(Here.HasProgram("C"));
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\nFRONT\r\n");
    EXPECT_FALSE(Stands("BATCH.LST"));
    EXPECT_FALSE(Stands("BATCH.RUN"));
    EXPECT_EQ(Pauses, (std::vector<double>{0.5, 0.3, 0.3, 0.3}));
    EXPECT_EQ(Shell.BatchCount, 4);
}

TEST_F(AutostartBatch, WithoutSettingAndSwitchItIsLeft)
{
    Config.AutoStartBatch = false;
    RunBatch("A\r\n");
    EXPECT_TRUE(Stands("BATCH.LST"));
    Shell.CommandLine = "/S";
    Tick();
    EXPECT_FALSE(Stands("BATCH.LST"));
    EXPECT_TRUE(Here.HasProgram("A"));
}

TEST_F(AutostartBatch, SwitchSGetsOneLookAndTheProgramEnds)
{
    Config.AutoStartBatch = false;
    Shell.CommandLine = "/S";
    RunBatch("A\r\nB\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\n");
    EXPECT_TRUE(Shell.Ended);
    EXPECT_EQ(Shell.FailedJobs, 0);
}

TEST_F(AutostartBatch, AnEmptyOneIsDeletedAndNothingElseHappens)
{
    Put("BATCH.RUN", "B\r\n"); // of an earlier batch
    RunBatch("");
    EXPECT_FALSE(Stands("BATCH.LST"));
    EXPECT_FALSE(Stands("PROC.LST"));
    EXPECT_EQ(TextOf("BATCH.RUN"), "B\r\n");
    EXPECT_TRUE(Here.Lines.empty()) << Here.ReportText();
    EXPECT_FALSE(Shell.RunActive);
}

TEST_F(AutostartBatch, AnEmptyOneThatFillsWhileItIsLookedAtIsABatch)
{
    InThePause = [&](double) {
        Batch("A\r\n");
        InThePause = nullptr;
    };
    RunBatch("");
    EXPECT_TRUE(Stands("BATCH.LST"));
    Tick();
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
}

TEST_F(AutostartBatch, OneThatIsStillBeingWrittenIsLeftForTheNextTick)
{
    int parts = 0;
    InThePause = [&](double) {
        if (++parts <= 2)
            Batch(std::string("A\r\nB\r\nC\r\n").substr(0, parts == 1 ? 4 : std::string::npos));
    };
    RunBatch("A\r");
    EXPECT_FALSE(Stands("PROC.LST"));
    Tick();
    EXPECT_FALSE(Stands("PROC.LST"));
    Tick();
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\nC\r\n");
    EXPECT_FALSE(Stands("BATCH.LST"));
}

TEST_F(AutostartBatch, WithSwitchSTheProgramWaitsForOneThatIsStillBeingWritten)
{
    Shell.CommandLine = "/S";
    InThePause = [&](double) {
        Batch("A\r\nB\r\n");
        InThePause = nullptr;
    };
    RunBatch("A\r\n");
    EXPECT_FALSE(Shell.Ended);
    Tick();
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\n");
    EXPECT_TRUE(Shell.Ended);
}

TEST_F(AutostartBatch, OneThatAppearsWhileOneRunsIsTheNext)
{
    bool put = false;
    const test::AtStage look("final", [&] {
        if (!put)
            Batch("C\r\n");
        put = true;
    });
    RunBatch("A\r\nB\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\n");
    EXPECT_TRUE(Stands("BATCH.LST"));
    EXPECT_FALSE(Here.HasProgram("C"));
    Tick();
    EXPECT_EQ(TextOf("PROC.LST"), "C\r\n");
    EXPECT_FALSE(Stands("BATCH.LST"));
}

TEST_F(AutostartBatch, LinesNotYetDoneStandInBatchRunWhileAJobRuns)
{
    std::vector<std::string> kept;
    const test::AtStage look("final", [&] {
        kept.push_back(TextOf("BATCH.RUN"));
        EXPECT_FALSE(Stands("BATCH.LST"));
        EXPECT_FALSE(Stands("PROC.LST"));
    });
    RunBatch("\"a.dxf\"\r\n\r\n!cncon\r\nB q\r\nC\r\n");
    // Commands stay for the jobs behind them; the spelling is that of the batch.
    EXPECT_EQ(kept, (Names{"\"a.dxf\"\r\n\r\n!cncon\r\nB q\r\nC\r\n", "!cncon\r\nB q\r\nC\r\n",
                           "!cncon\r\nC\r\n"}));
    EXPECT_FALSE(Stands("BATCH.RUN"));
}

TEST_F(AutostartBatch, AFinishedJobsLineIsOffBeforeItsGraphicShows)
{
    std::vector<std::string> kept;
    InThePause = [&](double seconds) {
        if (seconds == 0.3)
            kept.push_back(TextOf("BATCH.RUN"));
    };
    RunBatch("A\r\nB\r\n");
    EXPECT_EQ(kept, (Names{"B\r\n", ""}));
}

TEST_F(AutostartBatch, TheFirstFailedJobStopsIt)
{
    Put("B.DXF", FailingDrawing());
    RunBatch("A\r\nB^FRONT\r\nC\r\n");
    EXPECT_TRUE(Here.HasProgram("A"));
    EXPECT_FALSE(Here.HasProgram("C"));
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nFRONT\r\n");
    EXPECT_FALSE(Stands("BATCH.RUN"));
    EXPECT_EQ(TextOf("BATCH.OLD"), "B^FRONT\r\nC\r\n");
    EXPECT_EQ(Told("Unfinished batch: 2 lines kept in " + Shown("BATCH.OLD")), 1) << Here.ReportText();
    EXPECT_EQ(Shell.FailedJobs, 1);
    EXPECT_EQ(Shell.JobsLeft, 2);
    EXPECT_EQ(Told("Not done: B.DXF, C.DXF"), 1) << Here.ReportText();
    EXPECT_EQ(Told("*** The Following files failed to process: ***"), 1);
    ASSERT_GT(Here.Lines.size(), 1U);
    EXPECT_EQ(*std::prev(Here.Lines.end(), 2), Shown("B.DXF"));
    EXPECT_EQ(Here.Lines.back(), "1 written, 1 failed, 1 not begun");
}

TEST_F(AutostartBatch, OneThatIsTriedAgainRunsWhatWasNotDoneAlone)
{
    std::vector<std::string> done;
    const test::AtStage look("final",
                             [&] { done.push_back(kv::Run.PartName.substr(kv::Run.PartName.size() - 1)); });
    Put("C.DXF", FailingDrawing());
    RunBatch("A\r\n!CNCOFF\r\nB\r\nC\r\n!CNCON\r\nD\r\n");
    EXPECT_EQ(TextOf("BATCH.OLD"), "!CNCOFF\r\nC\r\n!CNCON\r\nD\r\n");
    Put("C.DXF", BoredPanel());
    std::filesystem::rename(Source("BATCH.OLD"), Source("BATCH.LST"));
    Tick();
    EXPECT_EQ(done, (Names{"A", "B", "C", "D"})) << Here.ReportText();
    EXPECT_EQ(TextOf("PROC.LST"), "C\r\nD\r\n");
    EXPECT_FALSE(Here.HasProgram("C")); // the command before it holds again
    EXPECT_TRUE(Here.HasProgram("D"));
    EXPECT_FALSE(Stands("BATCH.OLD"));
    EXPECT_FALSE(Stands("BATCH.RUN"));
}

TEST_F(AutostartBatch, OneThatFailsEachTimeItIsSentLeavesItsLinesOnce)
{
    for (int i = 0; i < 3; ++i)
        RunBatch("A\r\nGONE\r\nB\r\nB\r\n");
    EXPECT_EQ(TextOf("BATCH.OLD"), "GONE\r\nB\r\nB\r\n");
}

TEST_F(AutostartBatch, ALineHasTheSameIdentityWhenItIsTriedAgain)
{
    std::vector<std::string> identities;
    const test::AtStage look("entities", [&] { identities.push_back(JobIdentity()); });
    Put("B.DXF", FailingDrawing());
    RunBatch("A q\r\n!CNCOFF\r\nB\r\n\r\n!CNCON\r\na Q\r\nA q\r\n");
    Put("B.DXF", BoredPanel());
    std::filesystem::rename(Source("BATCH.OLD"), Source("BATCH.LST"));
    Tick();
    ASSERT_EQ(identities.size(), 5U); // A, B | B, A, A
    EXPECT_EQ(identities[1], identities[2]);
    EXPECT_EQ(std::set<std::string>(identities.begin(), identities.end()).size(), 4U);
    EXPECT_FALSE(identities[0].empty());
    EXPECT_EQ(JobIdentity(), "");
}

TEST_F(AutostartBatch, AMissingDrawingIsAFailedJob)
{
    RunBatch("GONE\r\nA\r\n");
    EXPECT_EQ(Told(Shown("GONE.DXF") + "  NOT FOUND"), 1) << Here.ReportText();
    EXPECT_EQ(TextOf("PROC.LST"), "GONE\r\n");
    EXPECT_FALSE(Here.HasProgram("A"));
}

TEST_F(AutostartBatch, TheNextOneRunsAfterAFailedOne)
{
    RunBatch("GONE\r\n");
    RunBatch("A\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
    EXPECT_TRUE(Here.HasProgram("A")) << Here.ReportText();
}

TEST_F(AutostartBatch, AbortEndsItAsAFailedJobDoes)
{
    const test::AtStage look("routes", [] {
        if (kv::Run.PartName.ends_with("B"))
            kv::Run.RunState = 1;
    });
    RunBatch("A\r\nB\r\nC\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\n");
    EXPECT_FALSE(Here.HasProgram("B"));
    EXPECT_FALSE(Here.HasProgram("C"));
    EXPECT_EQ(Told("USER ABORTED"), 1) << Here.ReportText();
    EXPECT_FALSE(Shell.BtnAbortShown);
    EXPECT_EQ(TextOf("BATCH.OLD"), "B\r\nC\r\n");
}

TEST_F(AutostartBatch, AnAbortBetweenTwoJobsLeavesTheNextOneWaiting)
{
    int pauses = 0;
    InThePause = [&](double seconds) {
        if (seconds == 0.3 && ++pauses == 2)
            kv::Run.RunState = 1;
    };
    RunBatch("A\r\nB\r\nC\r\nD\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\n");
    EXPECT_EQ(TextOf("BATCH.OLD"), "C\r\nD\r\n");
    EXPECT_EQ(Shell.FailedJobs, 0);
    EXPECT_EQ(Shell.JobsLeft, 2);
}

TEST_F(AutostartBatch, AnAbortWhileItIsTakenLeavesAllOfIt)
{
    InThePause = [&](double seconds) {
        if (seconds == 0.5)
            kv::Run.RunState = 1;
    };
    RunBatch("A\r\nB\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "");
    EXPECT_EQ(TextOf("BATCH.OLD"), "A\r\nB\r\n");
    EXPECT_FALSE(Here.HasProgram("A"));
    InThePause = nullptr;
    RunBatch("C\r\n"); // the abort is over
    EXPECT_EQ(TextOf("PROC.LST"), "C\r\n");
}

TEST_F(AutostartBatch, ALineThatCannotBeTakenOffEndsIt)
{
    const test::AtStage look("final", [&] {
        std::filesystem::remove(Source("BATCH.RUN"));
        std::filesystem::create_directories(Source("BATCH.RUN/in the way"));
    });
    RunBatch("A\r\nB\r\nC\r\n");
    EXPECT_TRUE(Here.HasProgram("A"));
    EXPECT_FALSE(Here.HasProgram("B"));
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
    EXPECT_EQ(Told(Shown("BATCH.RUN") + " cannot be written"), 1) << Here.ReportText();
    EXPECT_EQ(Told("Unfinished batch: the last 2 jobs of " + Shown("BATCH.RUN") + " are not done"), 1);
    EXPECT_EQ(Shell.JobsLeft, 2);
}

TEST_F(AutostartBatch, NothingIsTakenOnceTheEndIsAskedFor)
{
    InThePause = [](double) { Shell.Ended = true; };
    RunBatch("A\r\n");
    EXPECT_TRUE(Stands("BATCH.LST"));
    EXPECT_FALSE(Stands("BATCH.RUN"));
    EXPECT_FALSE(Here.HasProgram("A"));
}

TEST_F(AutostartBatch, ALineWithoutFolderComesFromTheFolderOfTheTick)
{
    const std::filesystem::path evo = OwnFolder(2, "evo");
    OwnFolder(1, "gen");
    DestinationPath(2) = FromHostPath((Here.Folder / "evoprg").string() + "/");
    std::filesystem::create_directories(Here.Folder / "evoprg");
    Here.Write("evo/E.DXF", BoredPanel());
    Here.Write("evo/BATCH.LST", "E\r\n");
    std::string drawing;
    Int system = -1;
    const test::AtStage look("entities", [&] {
        drawing = kv::Run.SourceFile;
        system = kv::Run.ControlType;
    });
    Tick(3);
    EXPECT_EQ(ShownPath(drawing), (evo / "E.DXF").string());
    EXPECT_EQ(system, 2);
    EXPECT_EQ(Here.Read(evo / "PROC.LST"), "E\r\n");
}

TEST_F(AutostartBatch, ADrawingThatNamesAnotherControlDoesSoForItselfAlone)
{
    Put("A.DXF", BoredPanel("", "BORDERGE_Z18"));
    std::vector<Int> systems;
    const test::AtStage look("final", [&] { systems.push_back(kv::Run.ControlType); });
    RunBatch("A\r\nB\r\nA\r\n");
    EXPECT_EQ(systems, (std::vector<Int>{1, 0, 1}));
    EXPECT_EQ(kv::Run.ControlType, 0); // so the folders go on in turn
}

TEST_F(AutostartBatch, OutputsGoWhereTheLinesSay)
{
    std::filesystem::create_directories(Here.Folder / "OUT");
    Here.Write("OUT/INDICE.PRG", "");
    RunBatch("A^" + (Here.Folder / "OUT").string() + "/FRONT\r\nB^" + (Here.Folder / "OUT").string() +
             "/\r\n");
    EXPECT_TRUE(std::filesystem::exists(Here.Folder / "OUT/SRG/F/RONT")) << Here.ReportText();
    EXPECT_TRUE(std::filesystem::exists(Here.Folder / "OUT/SRG/00/B"));
    EXPECT_EQ(TextOf("PROC.LST"), "FRONT\r\nB\r\n");
}

TEST_F(AutostartBatch, EachLineHasItsOwnFolderAndOneWithoutHasThatOfTheSettings)
{
    for (const std::string folder : {"OUT", "BACK"}) {
        std::filesystem::create_directories(Here.Folder / folder);
        Here.Write(folder + "/INDICE.PRG", "");
    }
    RunBatch("A^" + (Here.Folder / "OUT").string() + "/\r\nB^" + (Here.Folder / "BACK").string() +
             "/\r\nC\r\n");
    EXPECT_TRUE(std::filesystem::exists(Here.Folder / "OUT/SRG/00/A")) << Here.ReportText();
    EXPECT_TRUE(std::filesystem::exists(Here.Folder / "BACK/SRG/00/B"));
    EXPECT_TRUE(Here.HasProgram("C"));
    for (const std::string index : {"OUT/INDICE.PRG", "BACK/INDICE.PRG", "prg/INDICE.PRG"})
        EXPECT_EQ(std::filesystem::file_size(Here.Folder / index), 82U) << index;
}

// --- Commands ---

TEST_F(AutostartBatch, CncOffHoldsForTheFollowingLinesAndIsResetForTheNextBatch)
{
    Here.Write("KVHBD.cfg", "Horizontal\t8\t1\t0\r\nVertical\t5\t0\t0\r\nGroove\t4\t0\t0\r\n");
    RunBatch("A\r\n!cncoff\r\nB\r\n!CNCON\r\nC\r\n!CNCOFF\r\nD\r\n");
    EXPECT_TRUE(Here.HasProgram("A"));
    EXPECT_FALSE(Here.HasProgram("B"));
    EXPECT_TRUE(Here.HasProgram("C"));
    EXPECT_FALSE(Here.HasProgram("D"));
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\nC\r\nD\r\n");
    EXPECT_EQ(kv::Run.CncOff, False);
    RunBatch("B\r\n");
    EXPECT_TRUE(Here.HasProgram("B"));
}

TEST_F(AutostartBatch, HbdOffIsResetForTheNextBatch)
{
    std::vector<Int> off;
    const test::AtStage look("final", [&] { off.push_back(kv::Run.HbdOff); });
    RunBatch("!HBDOFF\r\nA\r\n!HBDON\r\nB\r\n!HBDOFF\r\n");
    RunBatch("C\r\n");
    EXPECT_EQ(off, (std::vector<Int>{True, False, False}));
}

TEST_F(AutostartBatch, CommandsAreResetAfterAFailedBatchToo)
{
    RunBatch("!CNCOFF\r\n!HBDOFF\r\nGONE\r\n");
    EXPECT_EQ(kv::Run.CncOff, False);
    EXPECT_EQ(kv::Run.HbdOff, False);
}

TEST_F(AutostartBatch, AnUnknownCommandIsNoJob)
{
    RunBatch("!PRINT\r\nA\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
    EXPECT_EQ(Shell.FailedJobs, 0);
}

// --- Switches and graphic ---

TEST_F(AutostartBatch, SwitchKEndsTheProgramBehindIt)
{
    Shell.CommandLine = "/k";
    RunBatch("A\r\n");
    EXPECT_TRUE(Shell.Ended);
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
    EXPECT_EQ(Told("\\k"), 0);
    for (const std::string& line : Here.Lines)
        EXPECT_FALSE(line.ends_with("NOT FOUND")) << line; // the rest of the tick is not run
    EXPECT_FALSE(Shell.RunActive);
    EXPECT_FALSE(Shell.BtnAbortShown);
}

TEST_F(AutostartBatch, WithoutSwitchTheProgramStays)
{
    RunBatch("A\r\n");
    EXPECT_FALSE(Shell.Ended);
    EXPECT_TRUE(Shell.Frame2Enabled);
}

TEST_F(AutostartBatch, WithLimitFiveFourJobsShowTheirGraphic)
{
    Config.GraphicAfterAuto = 1;
    Config.BatchLimit = "5";
    RunBatch("A\r\nB\r\nC\r\nD\r\n");
    EXPECT_EQ(Started.size(), 4U);
}

TEST_F(AutostartBatch, WithLimitFiveFiveJobsShowNone)
{
    Config.GraphicAfterAuto = 1;
    Config.BatchLimit = "5";
    RunBatch("A\r\nB\r\nC\r\nD\r\nE\r\n");
    EXPECT_TRUE(Started.empty());
}

TEST_F(AutostartBatch, WithLimitZeroEachJobShowsItsGraphic)
{
    Config.GraphicAfterAuto = 1;
    RunBatch("A\r\nB\r\nC\r\nD\r\nE\r\n");
    ASSERT_EQ(Started.size(), 5U);
    EXPECT_EQ(Started[0], "view " + (Here.Programs / "SRG/00/A").make_preferred().string());
    EXPECT_EQ(Started[4], "view " + (Here.Programs / "SRG/00/E").make_preferred().string());
}

TEST_F(AutostartBatch, ItsCountStaysForATempDrawing)
{
    Config.BatchLimit = "3";
    Config.GraphicAfterAuto = 1;
    RunBatch("A\r\nB\r\nC\r\n");
    Config.AutoStartBatch = false;
    Config.AutoStartTemp = true;
    Put("Temp.DXF", BoredPanel());
    Tick();
    EXPECT_TRUE(Here.HasProgram("TEMP"));
    EXPECT_TRUE(Started.empty());
}

TEST_F(AutostartBatch, ADrawingWithoutCodeShowsNoGraphic)
{
    Config.GraphicAfterAuto = 1;
    Put("A.DXF", BoredPanel(test::Instructions({"NOCODE"})));
    RunBatch("A\r\n");
    EXPECT_TRUE(Started.empty());
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
}

// --- Files that others write, and folders that refuse ---

TEST_F(AutostartBatch, ADrawingThatIsStillBeingWrittenIsWaitedFor)
{
    const std::string drawing = BoredPanel();
    std::size_t parts = 1;
    Put("A.DXF", drawing.substr(0, drawing.size() / 4));
    InThePause = [&](double seconds) {
        if (seconds == 0.1)
            Put("A.DXF", drawing.substr(0, drawing.size() * ++parts / 4));
    };
    RunBatch("A\r\n");
    EXPECT_TRUE(Here.HasProgram("A")) << Here.ReportText();
    EXPECT_EQ(Shell.FailedJobs, 0);
    EXPECT_EQ(Pauses, (std::vector<double>{0.5, 0.1, 0.1, 0.1, 0.3}));
}

TEST_F(AutostartBatch, ADrawingWithoutEndIsRunAsItIsAfterTwoSeconds)
{
    Put("A.DXF", BoredPanel().substr(0, 100));
    RunBatch("A\r\n");
    EXPECT_EQ(std::count(Pauses.begin(), Pauses.end(), 0.1), 20);
    EXPECT_EQ(Shell.FailedJobs, 1);
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
}

#if !defined(_WIN32) // rights of a folder by the bits of its mode, links that lead in a circle
TEST_F(AutostartBatch, ALineWhoseFilesTheDiskRefusesIsNotDone)
{
    int jobs = 0;
    const test::AtStage look("final", [&] {
        if (++jobs != 2)
            return;
        // A file that moves with the job's, in a folder that nobody can open when it is to be flushed.
        std::filesystem::create_directories(Here.Folder / "lost");
        Here.Write("lost/a", "");
        ASSERT_TRUE(RenameFile(FromHostPath((Here.Folder / "lost/a").string()),
                               FromHostPath((Here.Folder / "lost/b").string()))
                        .Ok());
        std::filesystem::remove_all(Here.Folder / "lost");
        std::filesystem::create_directory_symlink("lost", Here.Folder / "lost");
    });
    RunBatch("A\r\nB\r\nC\r\n");
    EXPECT_EQ(jobs, 2);
    EXPECT_NE(Here.ReportText().find("B.DXF: Not on the disk: "), std::string::npos) << Here.ReportText();
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\n");
    EXPECT_EQ(TextOf("BATCH.OLD"), "B\r\nC\r\n");
    EXPECT_EQ(Shell.FailedJobs, 1);
    ASSERT_GT(Here.Lines.size(), 1U);
    EXPECT_EQ(*std::prev(Here.Lines.end(), 2), Shown("B.DXF"));
    EXPECT_EQ(Here.Lines.back(), "1 written, 1 failed, 1 not begun");
    std::filesystem::rename(Source("BATCH.OLD"), Source("BATCH.LST"));
    Tick();
    EXPECT_EQ(TextOf("PROC.LST"), "B\r\nC\r\n");
    EXPECT_EQ(jobs, 4);
}

TEST_F(AutostartBatch, AFolderThatCannotBeLookedIntoIsToldOnce)
{
    std::filesystem::rename(Source(), Here.Folder / "away");
    std::filesystem::create_directory_symlink("src", Here.Folder / "src"); // leads in a circle
    Tick(3);
    EXPECT_EQ(Told(Shown("BATCH.LST") + " cannot be looked for: "), 1) << Here.ReportText();
    std::filesystem::remove(Here.Folder / "src");
    std::filesystem::rename(Here.Folder / "away", Source());
    RunBatch("A\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
}

TEST_F(AutostartBatch, InAReadOnlyFolderItIsToldOnceAndNotRun)
{
    Batch("A\r\n");
    {
        const ReadOnlyFolder held(*this);
        Tick(3);
        EXPECT_FALSE(Here.HasProgram("A"));
        EXPECT_EQ(Told(Shown("BATCH.LST") + " cannot be taken and is not run"), 1) << Here.ReportText();
    }
    EXPECT_EQ(TextOf("BATCH.LST"), "A\r\n");
    EXPECT_FALSE(Stands("BATCH.RUN"));
    Tick(); // the folder takes files again
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
}

TEST_F(AutostartBatch, AChangedOneInAReadOnlyFolderIsToldAgain)
{
    Batch("A\r\n");
    const ReadOnlyFolder held(*this);
    Tick(2);
    Batch("A\r\nB\r\n"); // the file itself may be written
    Tick(2);
    EXPECT_EQ(Told(Shown("BATCH.LST") + " cannot be taken"), 2) << Here.ReportText();
}
#endif

TEST_F(AutostartBatch, AnUnfinishedOneIsSetAsideBeforeTheNextAndToldBehindIt)
{
    Put("BATCH.RUN", "D\r\nE\r\n");
    RunBatch("A\r\n");
    EXPECT_EQ(TextOf("BATCH.OLD"), "D\r\nE\r\n");
    EXPECT_FALSE(Stands("BATCH.RUN"));
    EXPECT_EQ(Told("Unfinished batch: 2 lines kept in " + Shown("BATCH.OLD")), 1) << Here.ReportText();
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
}

TEST_F(AutostartBatch, OneThatRunsInAnotherProcessIsNoUnfinishedOne)
{
    FileLock other;
    ASSERT_EQ(other.TryLock(FromHostPath(Shown("BATCH.RUN"))).Is, LockState::Taken);
    Put("BATCH.RUN", "D\r\nE\r\n");
    Batch("A\r\n");
    Tick(3);
    EXPECT_EQ(TextOf("BATCH.RUN"), "D\r\nE\r\n");
    EXPECT_EQ(TextOf("BATCH.LST"), "A\r\n");
    EXPECT_FALSE(Stands("BATCH.OLD"));
    EXPECT_TRUE(Here.Lines.empty()) << Here.ReportText();
    std::filesystem::remove(Source("BATCH.RUN"));
    other.Release();
    Tick();
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\n");
}

TEST_F(AutostartBatch, OthersSeeItsLockWhileItRuns)
{
    bool held = false;
    const test::AtStage look("final", [&] {
        FileLock other;
        const LockAnswer answer = other.TryLock(FromHostPath(Shown("BATCH.RUN")));
        held = answer.Is == LockState::Held && answer.Holder.find("process") != std::string::npos;
    });
    RunBatch("A\r\n");
    EXPECT_TRUE(held);
    FileLock other;
    EXPECT_EQ(other.TryLock(FromHostPath(Shown("BATCH.RUN"))).Is, LockState::Taken);
}

TEST_F(AutostartBatch, ItIsNotRunWhileAnUnfinishedOneCannotBeSetAside)
{
    std::filesystem::create_directories(Source("BATCH.OLD"));
    Put("BATCH.OLD/keep", "");
    Put("BATCH.RUN", "D\r\n");
    Batch("A\r\n");
    Tick();
    EXPECT_EQ(TextOf("BATCH.RUN"), "D\r\n");
    EXPECT_EQ(TextOf("BATCH.LST"), "A\r\n");
    EXPECT_FALSE(Here.HasProgram("A"));
}

TEST_F(AutostartBatch, WithoutProcListItsRestStays)
{
    std::filesystem::create_directories(Source("PROC.LST"));
    RunBatch("!CNCON\r\nA\r\n");
    EXPECT_EQ(TextOf("BATCH.RUN"), "!CNCON\r\n");
    EXPECT_EQ(Told(Shown("PROC.LST") + " cannot be written"), 1) << Here.ReportText();
}

TEST_F(AutostartBatch, AFolderThatVanishesInTheMiddleKeepsWhatIsNotDone)
{
    bool gone = false;
    InThePause = [&](double seconds) {
        if (seconds != 0.3 || gone)
            return;
        gone = true;
        std::filesystem::rename(Source(), Here.Folder / "away");
    };
    RunBatch("A\r\nB\r\nC\r\n");
    EXPECT_FALSE(std::filesystem::exists(Source()));
    std::filesystem::rename(Here.Folder / "away", Source());
    EXPECT_TRUE(Here.HasProgram("A"));
    EXPECT_FALSE(Here.HasProgram("B"));
    EXPECT_EQ(TextOf("BATCH.RUN"), "B\r\nC\r\n");
    EXPECT_EQ(Told(Shown("PROC.LST") + " cannot be written"), 1) << Here.ReportText();
    EXPECT_EQ(Told("Unfinished batch: the last 2 jobs of " + Shown("BATCH.RUN") + " are not done"), 1);
    RunBatch("D\r\n");
    EXPECT_EQ(TextOf("BATCH.OLD"), "B\r\nC\r\n");
    EXPECT_EQ(TextOf("PROC.LST"), "D\r\n");
}

TEST_F(AutostartBatch, ATickInsideItsYieldsDoesNothing)
{
    int jobs = 0;
    const test::AtStage look("entities", [&] { ++jobs; });
    InTheEvents = [] { AutostartTick(); };
    RunBatch("A\r\nB\r\n");
    EXPECT_EQ(jobs, 2);
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\n");
}

TEST_F(AutostartBatch, StartInsideItsYieldsDoesNothing)
{
    ListFiles({"C.DXF"});
    bool pressed = false;
    InTheEvents = [&] {
        if (!Shell.RunActive)
            return;
        pressed = true;
        PressStart();
        StartConversion();
    };
    RunBatch("A\r\nB\r\n");
    EXPECT_TRUE(pressed);
    EXPECT_FALSE(Here.HasProgram("C"));
    EXPECT_EQ(TextOf("PROC.LST"), "A\r\nB\r\n");
    EXPECT_TRUE(AnyRowSelected());
}

TEST_F(AutostartBatch, SwitchesStandAsToldWhileItRuns)
{
    const test::AtStage look("final", [] {
        EXPECT_TRUE(Shell.RunActive);
        EXPECT_TRUE(Shell.BtnAbortShown);
        EXPECT_FALSE(Shell.Frame2Enabled);
    });
    RunBatch("A\r\nB\r\n");
    EXPECT_FALSE(Shell.RunActive);
    EXPECT_FALSE(Shell.BtnAbortShown);
    EXPECT_TRUE(Shell.Frame2Enabled);
    EXPECT_TRUE(Shell.LoadDr);
}

TEST_F(AutostartBatch, WithTheSettingStrictADoubtfulLineIsAFailedOne)
{
    Config.Strict = "yes";
    Put("B.DXF", BoredPanel(test::Line("ROUTE Z5T71", 50, 50, 50, 50)));
    RunBatch("A\r\nB\r\nC\r\n");
    EXPECT_TRUE(Here.HasProgram("A")) << Here.ReportText();
    EXPECT_FALSE(Here.HasProgram("B"));
    EXPECT_EQ(Told(Shown("B.DXF") + ": 1 doubt; nothing was written"), 1) << Here.ReportText();
    EXPECT_EQ(Shell.FailedJobs, 1);
    EXPECT_EQ(TextOf("BATCH.OLD"), "B\r\nC\r\n") << "as after any failed line";
}

} // namespace
} // namespace kv
