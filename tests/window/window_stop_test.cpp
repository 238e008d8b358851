// The window program is stopped at random moments of its life by every way there is: signals, the close box,
// a session that ends and waits for it or does not. Real processes, each in an installation of its own. Every
// line of a batch ends done or kept, the settings are stored whole, and a second try with what was kept does
// the rest and nothing again.
#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "console/stopped_shop.h"
#include "support/random_rounds.h"

namespace kv {
namespace {

using namespace console_test;
using Steady = std::chrono::steady_clock;

constexpr int AtOnce = 12; // windows, which sleep most of the time
constexpr int UsualRounds = 12;
constexpr int MostLines = 8;
constexpr double WarmUp = 2.2, JobSeconds = 0.4; // seconds, about
constexpr unsigned LongestLife = 60;             // seconds

enum class Way { Term, Interrupt, Hangup, CloseBox, Logoff, LogoffAndKill };
constexpr Way Ways[] = {Way::Term,     Way::Interrupt, Way::Hangup,
                        Way::CloseBox, Way::Logoff,    Way::LogoffAndKill};

struct WindowShop : StoppedShop {
    Way By = Way::Term;
    bool DuringStart = false; // else the moment counts from the batch's drop
    double KillAfter = 0;     // seconds from the session's question to the end by force

    fs::path LockFile() const { return Folder / "home/.kv-KORVANTI.lock"; }
    const char* Act() const
    {
        if (By == Way::CloseBox)
            return "close";
        return By == Way::Logoff ? "logoff" : "commit";
    }
    int FirstSignal() const
    {
        switch (By) {
        case Way::Term:
            return SIGTERM;
        case Way::Interrupt:
            return SIGINT;
        case Way::Hangup:
            return SIGHUP;
        default:
            return SIGUSR1;
        }
    }
    void Start(const Words& switches)
    {
        Words call = {KORVANTI_WINDOW_UNDER_TEST, "--home", (Folder / "home").string()};
        call.insert(call.end(), switches.begin(), switches.end());
        StartProgram(call,
                     {"QT_QPA_PLATFORM=offscreen", "XDG_CONFIG_HOME=" + (Folder / "config").string(),
                      "ASAN_OPTIONS=detect_leaks=0", std::string("KORVANTI_TEST_ACT=") + Act()},
                     LongestLife);
    }
};

class WindowStop : public StopTest {
  protected:
    WindowStop() : StopTest(67) {}

    WindowShop MakeShop(int number)
    {
        WindowShop shop;
        shop.Folder = Folder / std::to_string(number);
        shop.MakeFolders();
        const int lines = 1 + Below(MostLines);
        shop.PlanBatch(lines, Below(4) == 0 ? Below(lines) : -1, [this] { return Below(5) == 0; });
        shop.By = Ways[static_cast<std::size_t>(number) % std::size(Ways)];
        shop.DuringStart = Below(6) == 0;
        shop.Moment = shop.DuringStart ? Part() * 1.5 : Part() * (0.8 + lines * JobSeconds);
        shop.KillAfter = Part() * 0.4;
        return shop;
    }

    static void SleepUntil(Steady::time_point start, double seconds)
    {
        std::this_thread::sleep_until(start + std::chrono::duration<double>(seconds));
    }
    static void Stop(const WindowShop& shop)
    {
        ::kill(shop.Child, shop.FirstSignal());
        if (shop.By != Way::LogoffAndKill)
            return;
        SleepUntil(Steady::now(), shop.KillAfter);
        ::kill(shop.Child, SIGKILL);
    }
    // One shop's life: the window comes up, the batch comes, and the stop.
    static void LiveThrough(WindowShop& shop)
    {
        const auto start = Steady::now();
        while (!fs::exists(shop.LockFile()) && Steady::now() - start < std::chrono::seconds(10))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        const auto up = Steady::now();
        if (shop.DuringStart) {
            shop.DropBatch();
            SleepUntil(up, shop.Moment);
        } else {
            SleepUntil(up, WarmUp);
            shop.DropBatch();
            SleepUntil(up, WarmUp + shop.Moment);
        }
        Stop(shop);
        shop.Status = StatusOf(shop.Child);
    }
    static void RunUntilStopped(std::vector<WindowShop>& shops)
    {
        for (WindowShop& shop : shops)
            shop.Start({});
        std::vector<std::thread> threads;
        for (WindowShop& shop : shops)
            threads.emplace_back([&shop] { LiveThrough(shop); });
        for (std::thread& thread : threads)
            thread.join();
    }

    // What a window stores that was left in peace, with the folder of this shop.
    std::string StoredSettings(const WindowShop& shop) const
    {
        const std::string name = "peace", own = shop.Folder.filename().string();
        std::string text = Undisturbed;
        for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at))
            text.replace(at, name.size(), own);
        return text;
    }
    void LearnUndisturbed()
    {
        WindowShop shop;
        shop.Folder = Folder / "peace";
        shop.MakeFolders();
        Before = shop.Settings();
        shop.DuringStart = true;
        shop.Moment = 1;
        shop.Start({});
        LiveThrough(shop);
        ASSERT_EQ(shop.Status, 0) << shop.Output();
        Undisturbed = shop.Settings();
        ASSERT_NE(Undisturbed.find("LineLimit=600\r\n"), std::string::npos) << Undisturbed;
        ASSERT_NE(Undisturbed.find("OffsetX=7.00\r\n"), std::string::npos) << Undisturbed;
    }
    void ExpectSettings(const WindowShop& shop, const std::string& first, const std::string& name) const
    {
        const bool old = shop.EndedAtOnce() && shop.Settings() == first;
        EXPECT_TRUE(old || shop.Settings() == StoredSettings(shop)) << name << "\n" << shop.Settings();
    }
    // Lines that the stop has left are told where the window's report cannot be seen any more.
    static void ExpectTold(const WindowShop& shop, const std::string& name)
    {
        const bool byItself = !shop.Failing.empty() || // the batch may have ended before the stop
                              shop.Output().find("Left from an earlier start") != std::string::npos;
        if (shop.EndedAtOnce() || byItself || !fs::exists(shop.Source("BATCH.OLD")))
            return;
        const std::string place = shop.By == Way::CloseBox ? "box: " : "KV90WIN: ";
        EXPECT_NE(shop.Output().find(place + "Unfinished batch: "), std::string::npos) << name << "\n"
                                                                                       << shop.Output();
    }

    std::string Before, Undisturbed;
};

TEST_F(WindowStop, AtAnyMomentInAnyWayNoLineIsLostOrDoneTwice)
{
    LearnUndisturbed();
    const int rounds = test::Rounds(UsualRounds);
    int left = 0, all = 0, forced = 0, waiting = 0;
    for (int first = 0; first < rounds && !HasFailure(); first += AtOnce) {
        std::vector<WindowShop> shops;
        std::vector<std::string> firstSettings;
        for (int round = first; round < std::min(rounds, first + AtOnce); ++round) {
            shops.push_back(MakeShop(round));
            firstSettings.push_back(shops.back().Settings());
        }
        RunUntilStopped(shops);
        for (std::size_t i = 0; i < shops.size(); ++i) {
            WindowShop& shop = shops[i];
            const std::string name = test::RoundName(first + static_cast<int>(i));
            EXPECT_EQ(shop.Status, shop.By == Way::LogoffAndKill && shop.EndedAtOnce() ? 128 + SIGKILL : 0)
                << name << "\n"
                << shop.Output();
            ExpectAllDoneOrKept(shop, name);
            ExpectSettings(shop, firstSettings[i], name);
            ExpectTold(shop, name);
            all += static_cast<int>(shop.Batch.size());
            left += static_cast<int>(shop.Batch.size() - shop.Done().size());
            forced += shop.EndedAtOnce() ? 1 : 0;
            waiting += fs::exists(shop.Source("BATCH.LST")) ? 1 : 0;
            GiveBack(shop);
        }
        RunAll(shops, {"/S", "/K"});
        for (std::size_t i = 0; i < shops.size(); ++i)
            ExpectTheRestDone(shops[i], shops[i].By == Way::LogoffAndKill,
                              test::RoundName(first + static_cast<int>(i)));
        for (const WindowShop& shop : shops)
            fs::remove_all(shop.Folder);
    }
    std::printf("%d stops (%d ended by force, %d before the batch), %d lines, %d of them left by the stop\n",
                rounds, forced, waiting, all, left);
    EXPECT_GT(left, 0); // else nothing was stopped in its middle
    EXPECT_LT(left, all);
}

} // namespace
} // namespace kv
