// A drawing that comes into the source folder is taken by the open window when the system says so, and not
// only at the timer's next tick. The real program, and the time that a design program would see.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

#include "console/stopped_shop.h"

namespace kv {
namespace {

using namespace console_test;
using Steady = std::chrono::steady_clock;

constexpr int Drops = 11;
constexpr std::chrono::milliseconds MostTaken{50}, UntilWarm{2300};
constexpr std::chrono::seconds LongestWait{10};
constexpr std::chrono::microseconds BetweenLooks{500};

class WindowTrigger : public testing::Test {
  protected:
    void SetUp() override
    {
        Shop.Folder = fs::temp_directory_path() / ("kwtrig-" + std::to_string(::getpid()));
        fs::remove_all(Shop.Folder);
        Shop.MakeFolders();
        std::string keys = Shop.Settings();
        const std::string batch = "AutoStartBatch=True";
        keys.replace(keys.find(batch), batch.size(), "AutoStartTemp=True");
        StoppedShop::PutFile(Shop.Folder / "home/KV90.INI", keys);
        Shop.PutDrawingOf("J100.dxf J100");
        Child = ::fork();
        if (Child != 0)
            return;
        ::dup2(::open((Shop.Folder / "stdout").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open((Shop.Folder / "stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        Become(Shop.Folder, {KORVANTI_WINDOW_PROGRAM, "--home", (Shop.Folder / "home").string()},
               {"QT_QPA_PLATFORM=offscreen", "XDG_CONFIG_HOME=" + (Shop.Folder / "config").string(),
                "ASAN_OPTIONS=detect_leaks=0"});
    }
    void TearDown() override
    {
        ::kill(Child, SIGTERM);
        EXPECT_EQ(StatusOf(Child), 0) << Shop.Output();
        fs::remove_all(Shop.Folder);
    }

    static bool WaitFor(const std::function<bool()>& holds)
    {
        const auto end = Steady::now() + LongestWait;
        while (!holds()) {
            if (Steady::now() > end)
                return false;
            std::this_thread::sleep_for(BetweenLooks);
        }
        return true;
    }
    // From the moment at which the drawing has its name to the one at which the program has taken it.
    Steady::duration DropAndTake() const
    {
        const fs::path temp = Shop.Source("Temp.DXF");
        fs::copy_file(Shop.Source("J100.dxf"), Shop.Source("TEMP.NEW"));
        const auto dropped = Steady::now();
        fs::rename(Shop.Source("TEMP.NEW"), temp);
        EXPECT_TRUE(WaitFor([&] { return !fs::exists(temp); }));
        const auto taken = Steady::now() - dropped;
        EXPECT_TRUE(WaitFor([&] { return !fs::exists(Shop.Source("Temp.DXF.RUN")); }));
        return taken;
    }

    StoppedShop Shop;
    int Child = 0;
};

TEST_F(WindowTrigger, ADrawingIsTakenAtOnce)
{
    EXPECT_TRUE(WaitFor([&] { return fs::exists(Shop.Folder / "home/.kv-KORVANTI.lock"); }));
    std::this_thread::sleep_for(UntilWarm);
    std::vector<Steady::duration> times;
    for (int i = 0; i < Drops; ++i) {
        times.push_back(DropAndTake());
        std::this_thread::sleep_for(std::chrono::milliseconds(700 + 37 * i)); // the job's own pause is over
    }
    std::sort(times.begin(), times.end());
    const auto inMilliseconds = [&](std::size_t i) {
        return static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(times[i]).count());
    };
    std::printf("taken after %d ms (median), %d ms at most\n", inMilliseconds(Drops / 2),
                inMilliseconds(Drops - 1));
    EXPECT_LE(times[Drops / 2], MostTaken);
    EXPECT_TRUE(fs::exists(Shop.Programs() / "SRG/T/EMP"));
}

} // namespace
} // namespace kv
