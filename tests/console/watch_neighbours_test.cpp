// Several `korvanti watch` at once, on one installation or on one source folder: what the second one says,
// that each drawing is run once, how soon it is run, and how little a watcher does while nothing comes.
#include <algorithm>
#include <csignal>

#include "console/watch_run.h"
#include "platform/file_lock.h"
#include "platform/paths.h"
#include "support/random_rounds.h"

using namespace console_test;

namespace {

class WatchNeighbours : public Watch {
  protected:
    void TearDown() override
    {
        StopOther();
        Watch::TearDown();
    }

    // A second installation that looks into the same source folder.
    void MakeOtherHome() const
    {
        fs::create_directories(Folder / "home2");
        fs::create_directories(Folder / "programs2");
        std::string keys = Contents(Folder / "home/KV90.INI");
        const std::string programs = (Folder / "programs").string() + "/";
        keys.replace(keys.find(programs), programs.size(), (Folder / "programs2").string() + "/");
        Put(Folder / "home2/KV90.INI", keys);
        Put(Folder / "programs2/INDICE.PRG", "");
    }
    void StartOther()
    {
        Other = ::fork();
        if (Other != 0)
            return;
        ::dup2(::open((Folder / "stdout2").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(1, 2);
        Become(Folder, {KORVANTI_CONSOLE, "--home", (Folder / "home2").string(), "watch"}, {});
    }
    void StopOther()
    {
        if (Other <= 0)
            return;
        ::kill(Other, SIGTERM);
        EndOf(Other);
    }
    // The settings of both say Temp.DXF in place of BATCH.LST.
    void WatchTempDrawing() const
    {
        std::string keys = Contents(Folder / "home/KV90.INI");
        const std::string batch = "AutoStartBatch=True";
        keys.replace(keys.find(batch), batch.size(), "AutoStartTemp=True");
        Put(Folder / "home/KV90.INI", keys);
    }
    static void PassWarmUpOfAll() { std::this_thread::sleep_for(std::chrono::milliseconds(3500)); }
    void PutTemp(const std::string& drawing = BoredPanel()) const
    {
        Put(Source("new"), drawing);
        fs::rename(Source("new"), Source("Temp.DXF"));
    }
    int Converted() const
    {
        int count = 0;
        for (const char* const output : {"stdout", "stdout2"}) {
            const std::string text = Contents(Folder / output);
            for (std::size_t at = text.find("CONVERSION COMPLETED."); at != std::string::npos;
                 at = text.find("CONVERSION COMPLETED.", at + 1))
                ++count;
        }
        return count;
    }
    long WakeUps() const
    {
        std::ifstream status("/proc/" + std::to_string(Child) + "/status");
        long count = -1;
        for (std::string word; status >> word;)
            if (word == "voluntary_ctxt_switches:")
                status >> count;
        return count;
    }

    int Other = 0;
};

TEST_F(WatchNeighbours, ASecondWatcherIsToldWhoIsThereAndTouchesNothing)
{
    StartWatch();
    PassWarmUp();
    Put(Source("slow.dxf"), BoredPanel().substr(0, 60)); // held up here for two seconds
    PutBatch("door.dxf\r\nslow.dxf\r\ndoor.dxf q\r\n");
    ASSERT_TRUE(WaitForText(Source("BATCH.RUN"), "slow.dxf\r\ndoor.dxf q\r\n"));
    const Words call = Call({"watch", "/S"});
    const int status = RunIn(Folder, call, {}, Folder / "out2", Folder / "err2");
    EXPECT_EQ(status, 1);
    EXPECT_EQ(Contents(Folder / "out2"), "");
    const std::string holder = "korvanti, process " + std::to_string(Child) + " on ";
    const std::string errors = Contents(Folder / "err2");
    EXPECT_EQ(errors.find("korvanti: nothing was run: this installation is in use by " + holder), 0U)
        << errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    EXPECT_EQ(Contents(Source("BATCH.RUN")), "slow.dxf\r\ndoor.dxf q\r\n");
    EXPECT_FALSE(fs::exists(Source("BATCH.OLD")));
    ::kill(Child, SIGKILL);
    EndOf(Child);
    EXPECT_EQ(Run({"watch", "/S", "/K"}).Status, 0); // the lock has gone with its holder
}

TEST_F(WatchNeighbours, TheBatchOfAnotherInstallationIsNoBrokenOne)
{
    MakeOtherHome();
    StartWatch();
    PassWarmUp();
    Put(Source("slow.dxf"), BoredPanel().substr(0, 60)); // held up here for two seconds
    PutBatch("door.dxf\r\nslow.dxf\r\ndoor.dxf q\r\n");
    ASSERT_TRUE(WaitForText(Source("BATCH.RUN"), "slow.dxf\r\ndoor.dxf q\r\n"));
    StartOther();
    Put(Source("slow.dxf"), BoredPanel());
    EXPECT_TRUE(WaitForText(Source("PROC.LST"), "DOOR\r\nSLOW\r\nQ\r\n")) << Contents(Output());
    EXPECT_FALSE(fs::exists(Source("BATCH.OLD")));
    EXPECT_FALSE(Holds(Contents(Folder / "stdout2"), "Unfinished")) << Contents(Folder / "stdout2");
}

TEST_F(WatchNeighbours, OfTwoInstallationsOneRunsEachTempDrawing)
{
    WatchTempDrawing();
    MakeOtherHome();
    StartWatch();
    StartOther();
    PassWarmUpOfAll();
    const int drawings = kv::test::Rounds(12);
    for (int i = 0; i < drawings; ++i) {
        PutTemp();
        ASSERT_TRUE(WaitUntil([&] { return Converted() == i + 1; })) << i << "\n" << Contents(Output());
        ASSERT_TRUE(WaitUntil([&] { return !fs::exists(Source("Temp.DXF.RUN")); }));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1000));
    EXPECT_EQ(Converted(), drawings);
    EXPECT_FALSE(fs::exists(Source("Temp.OLD")));
}

TEST_F(WatchNeighbours, BatchesOfTwoInstallationsOnOneFolderAreEachRunOnce)
{
    MakeOtherHome();
    StartWatch();
    StartOther();
    PassWarmUpOfAll();
    for (int i = 0; i < 4; ++i) {
        PutBatch("door.dxf A" + std::to_string(i) + "\r\ndoor.dxf B" + std::to_string(i) + "\r\n");
        ASSERT_TRUE(WaitUntil([&] { return Converted() == 2 * i + 2; })) << Contents(Output());
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    EXPECT_EQ(Converted(), 8);
    EXPECT_FALSE(fs::exists(Source("BATCH.OLD")));
    EXPECT_FALSE(fs::exists(Source("BATCH.RUN")));
}

TEST_F(WatchNeighbours, ATempDrawingIsRunAsSoonAsItHasItsName)
{
    WatchTempDrawing();
    StartWatch();
    PassWarmUpOfAll();
    const fs::path program = Folder / "programs/SRG/T/EMP";
    std::vector<double> milliseconds;
    for (int i = 0; i < 7; ++i) {
        fs::remove(program);
        Put(Source("new"), BoredPanel());
        std::this_thread::sleep_for(std::chrono::milliseconds(700 + 37 * i)); // anywhere between two ticks
        const auto start = std::chrono::steady_clock::now();
        fs::rename(Source("new"), Source("Temp.DXF"));
        while (!fs::exists(program) && std::chrono::steady_clock::now() - start < std::chrono::seconds(5))
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
        milliseconds.push_back(taken.count());
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("from the name to the program: %.0f to %.0f ms, median %.0f\n", milliseconds.front(),
                milliseconds.back(), milliseconds[milliseconds.size() / 2]);
    // The timer alone would take a quarter of a second and more; sanitizers and neighbours slow the job down.
    EXPECT_LT(milliseconds[milliseconds.size() / 2], 200);
}

TEST_F(WatchNeighbours, AnIdleOneSleeps)
{
    WatchTempDrawing();
    StartWatch();
    PassWarmUpOfAll();
    const long before = WakeUps();
    ASSERT_GE(before, 0);
    std::this_thread::sleep_for(std::chrono::seconds(3));
    const long after = WakeUps();
    std::printf("%.1f wake-ups a second\n", static_cast<double>(after - before) / 3);
    EXPECT_LE(after - before, 15);
}

TEST_F(WatchNeighbours, OneThatWaitsForAnotherSleepsToo)
{
    StartWatch();
    PassWarmUp();
    {
        kv::FileLock other;
        ASSERT_EQ(other.TryLock(kv::FromHostPath(Source("BATCH.RUN").string())).Is, kv::LockState::Taken);
        PutBatch("door.dxf\r\n");
        std::this_thread::sleep_for(std::chrono::seconds(1));
        const long before = WakeUps();
        std::this_thread::sleep_for(std::chrono::seconds(3));
        EXPECT_LE(WakeUps() - before, 15);
        EXPECT_TRUE(fs::exists(Source("BATCH.LST")));
    }
    EXPECT_TRUE(WaitForText(Source("PROC.LST"), "DOOR\r\n")) << Contents(Output());
}

TEST_F(WatchNeighbours, AFolderThatIsReplacedIsHeardOfAgain)
{
    WatchTempDrawing();
    StartWatch();
    PassWarmUpOfAll();
    fs::rename(Folder / "src", Folder / "away");
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    fs::create_directories(Folder / "src");
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    PutTemp();
    EXPECT_TRUE(WaitUntil([&] { return Converted() == 1; })) << Contents(Output());
}

} // namespace
