// `korvanti watch` is stopped at random moments of a batch by every signal there is, many of them at once,
// each in an installation of its own. Every line ends done or kept, none in both, and a second try with what
// was kept does the rest and nothing again. A kill may leave one line in both: that of the job that ran.
#include <csignal>

#include "console/stopped_shop.h"
#include "console/watch_run.h"
#include "support/random_rounds.h"

using namespace console_test;

namespace {

constexpr int AtOnce = 30; // watchers; they sleep most of the time
constexpr int MostLines = 12;
constexpr double BatchStarts = 2.4, JobSeconds = 0.5; // from the start of the program, about

// The same with a watcher.
struct Shop : StoppedShop {
    void Start(const Words& switches)
    {
        Words call = {KORVANTI_CONSOLE, "--home", (Folder / "home").string(), "watch"};
        call.insert(call.end(), switches.begin(), switches.end());
        StartProgram(call, {}, 0);
    }
};

class WatchStop : public StopTest {
  protected:
    WatchStop() : StopTest(63) {}

    Shop MakeShop(int number)
    {
        Shop shop;
        shop.Folder = Folder / std::to_string(number);
        shop.MakeFolders();
        const int lines = 1 + Below(MostLines);
        const int failing = Below(4) == 0 ? Below(lines) : -1;
        shop.PlanBatch(lines, failing, [this] { return Below(5) == 0; });
        shop.DropBatch();
        constexpr int signals[] = {SIGTERM, SIGINT, SIGHUP, SIGTERM, SIGKILL};
        shop.Signal = signals[Below(5)];
        shop.Twice = Below(6) == 0;
        shop.Moment = BatchStarts + Below(1000) / 1000.0 * (0.8 + lines * JobSeconds);
        return shop;
    }

    static void RunUntilStopped(std::vector<Shop>& shops)
    {
        const auto start = std::chrono::steady_clock::now();
        for (Shop& shop : shops)
            shop.Start({"/S"});
        std::vector<Shop*> inTurn;
        for (Shop& shop : shops)
            inTurn.push_back(&shop);
        std::sort(inTurn.begin(), inTurn.end(),
                  [](const Shop* a, const Shop* b) { return a->Moment < b->Moment; });
        for (Shop* const shop : inTurn) {
            std::this_thread::sleep_until(start + std::chrono::duration<double>(shop->Moment));
            ::kill(shop->Child, shop->Signal); // one that has ended is still a child, and not asked for yet
            if (shop->Twice)
                ::kill(shop->Child, shop->Signal);
        }
        for (Shop& shop : shops)
            shop.Status = StatusOf(shop.Child);
    }

    static void ExpectKeptAndTold(const Shop& shop, const std::string& name)
    {
        ExpectAllDoneOrKept(shop, name);
        if (shop.EndedAtOnce())
            return;
        const bool all = shop.Done() == shop.Batch || fs::exists(shop.Source("BATCH.LST"));
        EXPECT_EQ(shop.Status, all ? 0 : 1) << name << "\n" << shop.Output();
    }
};

// A job that takes some time: a panel with as many bores as one program holds.
std::string LongDrawing()
{
    std::string bores;
    for (int i = 0; i < 480; ++i)
        bores += "0\nCIRCLE\n8\nVBORE_Z12F3000\n10\n" + std::to_string(20 + i % 80 * 7) + "\n20\n" +
                 std::to_string(20 + i / 80 * 7) + "\n40\n2.5\n";
    return BoredPanel(bores);
}

TEST_F(WatchStop, ATempDrawingIsDoneOrKeptAtAnyMoment)
{
    const int rounds = kv::test::Rounds(12);
    const std::string drawing = LongDrawing();
    int kept = 0;
    std::vector<Shop> shops;
    for (int round = 0; round < rounds; ++round) {
        Shop shop;
        shop.Folder = Folder / std::to_string(round);
        shop.MakeFolders();
        std::string keys = Contents(shop.Folder / "home/KV90.INI");
        const std::string batch = "AutoStartBatch=True";
        keys.replace(keys.find(batch), batch.size(), "AutoStartTemp=True");
        StoppedShop::PutFile(shop.Folder / "home/KV90.INI", keys);
        Put(shop.Source("Temp.DXF"), drawing);
        constexpr int signals[] = {SIGTERM, SIGINT, SIGHUP, SIGKILL};
        shop.Signal = signals[Below(4)];
        shop.Moment = BatchStarts - 0.3 + Below(1500) / 1000.0;
        shops.push_back(shop);
    }
    RunUntilStopped(shops);
    for (int round = 0; round < rounds; ++round) {
        const Shop& shop = shops[static_cast<std::size_t>(round)];
        const bool done = fs::exists(shop.Folder / "WINNER90/SRG/T/EMP");
        int copies = 0;
        for (const char* const name : {"Temp.DXF", "Temp.DXF.RUN", "Temp.OLD"})
            copies += Contents(shop.Source(name)) == drawing ? 1 : 0;
        EXPECT_LE(copies, 1) << kv::test::RoundName(round);
        EXPECT_GE(copies + (done ? 1 : 0), 1) << kv::test::RoundName(round) << "\n" << shop.Output();
        if (!shop.EndedAtOnce()) {
            EXPECT_EQ(copies + (done ? 1 : 0), 1) << kv::test::RoundName(round) << "\n" << shop.Output();
            EXPECT_FALSE(fs::exists(shop.Source("Temp.DXF.RUN"))) << kv::test::RoundName(round);
        }
        kept += copies;
    }
    std::printf("%d stops, %d drawings kept\n", rounds, kept);
    RunAll(shops, {"/S"}); // one look each
    for (const Shop& shop : shops)
        EXPECT_FALSE(fs::exists(shop.Source("Temp.DXF.RUN")));
}

TEST_F(WatchStop, AtAnyMomentByAnySignalNoLineIsLostOrDoneTwice)
{
    const int rounds = kv::test::Rounds(AtOnce);
    int left = 0, all = 0;
    for (int first = 0; first < rounds && !HasFailure(); first += AtOnce) {
        std::vector<Shop> shops;
        for (int round = first; round < std::min(rounds, first + AtOnce); ++round)
            shops.push_back(MakeShop(round));
        RunUntilStopped(shops);
        for (std::size_t i = 0; i < shops.size(); ++i) {
            ExpectKeptAndTold(shops[i], kv::test::RoundName(first + static_cast<int>(i)));
            all += static_cast<int>(shops[i].Batch.size());
            left += static_cast<int>(shops[i].Batch.size() - shops[i].Done().size());
            GiveBack(shops[i]);
        }
        RunAll(shops, {"/S", "/K"});
        for (std::size_t i = 0; i < shops.size(); ++i)
            ExpectTheRestDone(shops[i], shops[i].Signal == SIGKILL || shops[i].Twice,
                              kv::test::RoundName(first + static_cast<int>(i)));
        for (const Shop& shop : shops)
            fs::remove_all(shop.Folder);
    }
    std::printf("%d stops, %d lines, %d of them left by the stop\n", rounds, all, left);
    EXPECT_GT(left, 0); // else nothing was stopped in its middle
    EXPECT_LT(left, all);
}

} // namespace
