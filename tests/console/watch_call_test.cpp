// `korvanti watch`: the real program with its real delays, its switches, its signals, and what a kill in
// the middle of a batch leaves behind.
#include <csignal>

#include "console/watch_run.h"

using namespace console_test;

namespace {

class WatchCall : public Watch {};

TEST_F(WatchCall, SwitchSRunsTheBatchThatStoodBeforeAndEnds)
{
    PutBatch("door.dxf\r\ndoor.dxf^FRONT\r\n");
    const Ended ended = Run({"watch", "/s"});
    EXPECT_EQ(ended.Status, 0) << ended.Output << ended.Errors;
    EXPECT_EQ(ended.Errors, "");
    EXPECT_EQ(Contents(Source("PROC.LST")), "DOOR\r\nFRONT\r\n");
    EXPECT_EQ(Contents(Folder / "programs/SRG/D/OOR"), BoredProgram);
    EXPECT_EQ(Contents(Folder / "programs/SRG/F/RONT"), BoredProgram);
    EXPECT_FALSE(fs::exists(Source("BATCH.LST")));
    EXPECT_FALSE(fs::exists(Source("BATCH.RUN")));
    EXPECT_TRUE(Holds(ended.Output, "NOT FOUND")); // the switches, tried as a drawing, count as no job
}

TEST_F(WatchCall, AFailedJobIsStatusOne)
{
    PutBatch("gone.dxf\r\n");
    const Ended ended = Run({"watch", "/S", "/K"});
    EXPECT_EQ(ended.Status, 1) << ended.Output;
    EXPECT_TRUE(Holds(ended.Output, "*** The Following files failed to process: ***")) << ended.Output;
    EXPECT_EQ(Contents(Source("PROC.LST")), "GONE\r\n");
}

TEST_F(WatchCall, SwitchKEndsBehindTheBatchWithoutTryingTheSwitches)
{
    PutBatch("door.dxf\r\n");
    const Ended ended = Run({"watch", "/k", "/s"});
    EXPECT_EQ(ended.Status, 0) << ended.Output;
    EXPECT_FALSE(Holds(ended.Output, "NOT FOUND")) << ended.Output;
}

TEST_F(WatchCall, SwitchVStartsTheViewerOfTheSettings)
{
    const fs::path shown = Folder / "shown";
    SetUpViewer("/bin/cp %1 " + shown.string());
    PutBatch("door.dxf\r\n");
    const Ended ended = Run({"watch", "/S", "/K", "/V"});
    EXPECT_EQ(ended.Status, 0) << ended.Output;
    EXPECT_EQ(Contents(shown), BoredProgram);
}

TEST_F(WatchCall, WithoutSwitchVNoViewerStarts)
{
    const fs::path shown = Folder / "shown";
    SetUpViewer("/bin/cp %1 " + shown.string());
    PutBatch("door.dxf\r\n");
    EXPECT_EQ(Run({"watch", "/S", "/K"}).Status, 0);
    EXPECT_FALSE(fs::exists(shown));
}

TEST_F(WatchCall, AnotherWordIsWrongUsage)
{
    for (const char* const word : {"/X", "door.dxf", "S", "/SS", "-x"}) {
        const Ended ended = Run({"watch", word});
        EXPECT_EQ(ended.Status, 2) << word;
        EXPECT_TRUE(Holds(ended.Errors, "korvanti watch --help")) << ended.Errors;
        EXPECT_EQ(ended.Output, "");
    }
}

TEST_F(WatchCall, HelpNamesTheSwitches)
{
    const Ended ended = Run({"watch", "--help"});
    EXPECT_EQ(ended.Status, 0);
    for (const char* const word : {"/S", "/K", "/V", "BATCH.LST", "Temp.DXF"})
        EXPECT_TRUE(Holds(ended.Output, word)) << word;
}

TEST_F(WatchCall, SettingsStayAsTheyAre)
{
    const std::string before = Contents(Folder / "home/KV90.INI");
    EXPECT_EQ(Run({"watch", "/S"}).Status, 0);
    EXPECT_EQ(Contents(Folder / "home/KV90.INI"), before);
}

TEST_F(WatchCall, CtrlCInAnIdleOneIsStatusZero)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        StartWatch();
        WaitForOutput("WINNER90");
        ::kill(Child, signal);
        EXPECT_EQ(EndOf(Child), 0);
    }
}

TEST_F(WatchCall, RowsComeAsTheyAreShown)
{
    StartWatch();
    PassWarmUp();
    PutBatch("door.dxf\r\ndoor.dxf q\r\n");
    EXPECT_TRUE(WaitForOutput("CONVERSION COMPLETED.")); // while it runs on
    EXPECT_TRUE(WaitForFile(Source("PROC.LST")));
    ::kill(Child, SIGTERM);
    EXPECT_EQ(EndOf(Child), 0);
}

TEST_F(WatchCall, CtrlCAbortsTheJobAndLeavesTheRestUndone)
{
    StartWatch();
    PassWarmUp();
    Put(Source("slow.dxf"), BoredPanel().substr(0, 60)); // held up here for two seconds
    PutBatch("door.dxf\r\nslow.dxf\r\ndoor.dxf q\r\n");
    ASSERT_TRUE(WaitForText(Source("BATCH.RUN"), "slow.dxf\r\ndoor.dxf q\r\n"));
    std::this_thread::sleep_for(std::chrono::milliseconds(1000)); // it is slow.dxf's turn
    ::kill(Child, SIGINT);
    EXPECT_EQ(EndOf(Child), 1);
    EXPECT_EQ(Contents(Source("PROC.LST")), "DOOR\r\nSLOW\r\n");
    EXPECT_EQ(Contents(Source("BATCH.OLD")), "slow.dxf\r\ndoor.dxf q\r\n");
    EXPECT_FALSE(fs::exists(Source("BATCH.RUN")));
    EXPECT_TRUE(
        Holds(Contents(Output()), "Unfinished batch: 2 lines kept in " + Source("BATCH.OLD").string()));
    EXPECT_TRUE(Holds(Contents(Output()), "USER ABORTED")) << Contents(Output());
    EXPECT_FALSE(fs::exists(Folder / "programs/SRG/00/Q"));
}

TEST_F(WatchCall, AKilledOneLeavesItsLinesForTheNextStart)
{
    StartWatch();
    PassWarmUp();
    Put(Source("slow.dxf"), BoredPanel().substr(0, 60)); // held up here for two seconds
    PutBatch("door.dxf\r\n!cncon\r\n\"slow.dxf\" x\r\ndoor.dxf q\r\n");
    ASSERT_TRUE(WaitForOutput("CONVERSION COMPLETED."));
    ASSERT_TRUE(WaitForText(Source("BATCH.RUN"), "!cncon\r\n\"slow.dxf\" x\r\ndoor.dxf q\r\n"));
    ::kill(Child, SIGKILL);
    EXPECT_EQ(EndOf(Child), 128 + SIGKILL);
    EXPECT_FALSE(fs::exists(Source("BATCH.LST")));
    EXPECT_FALSE(fs::exists(Source("PROC.LST")));
    EXPECT_EQ(Contents(Source("BATCH.RUN")), "!cncon\r\n\"slow.dxf\" x\r\ndoor.dxf q\r\n");

    StartWatch();
    EXPECT_TRUE(WaitForOutput("Unfinished batch: 3 lines kept in " + Source("BATCH.OLD").string()));
    ::kill(Child, SIGTERM);
    EXPECT_EQ(EndOf(Child), 0);
    EXPECT_FALSE(fs::exists(Source("BATCH.RUN")));
    EXPECT_EQ(Contents(Source("BATCH.OLD")), "!cncon\r\n\"slow.dxf\" x\r\ndoor.dxf q\r\n");
}

} // namespace
