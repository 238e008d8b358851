// `korvanti watch` is stopped at random moments of a batch by every signal there is, many of them at once,
// each in an installation of its own. Every line ends done or kept, none in both, and a second try with what
// was kept does the rest and nothing again. A kill may leave one line in both: that of the job that ran.
#include <csignal>
#include <map>
#include <set>

#include <sys/stat.h>

#include "console/watch_run.h"
#include "support/random_rounds.h"

using namespace console_test;

namespace {

constexpr int AtOnce = 30; // watchers; they sleep most of the time
constexpr int MostLines = 12;
constexpr double BatchStarts = 2.4, JobSeconds = 0.5; // from the start of the program, about

using Lines = std::multiset<std::string>;

std::string TextIn(const fs::path& path)
{
    return Contents(path);
}

// Job lines, without commands.
Lines JobsIn(const fs::path& path)
{
    Lines jobs;
    std::istringstream text(TextIn(path));
    for (std::string line; std::getline(text, line);) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
            line.pop_back();
        if (!line.empty() && line[0] != '!')
            jobs.insert(line);
    }
    return jobs;
}

// Tells a file that was written anew.
std::string StampIn(const fs::path& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return std::to_string(status.st_ino) + ' ' + std::to_string(status.st_mtim.tv_sec) + ' ' +
           std::to_string(status.st_mtim.tv_nsec);
}

// An installation with a batch and a watcher.
struct Shop {
    fs::path Folder;
    Lines Batch;
    std::map<std::string, std::string> FirstStamps; // of programs after the stop, by output name
    int Signal = 0;
    double Moment = 0; // seconds after the start
    bool Twice = false;
    int Child = 0;
    int Status = -1;

    fs::path Source(const std::string& name) const { return Folder / "src" / name; }
    fs::path Program(const std::string& line) const
    {
        const std::string name = line.substr(line.find(' ') + 1);
        return Folder / "programs/SRG" / name.substr(0, 1) / name.substr(1);
    }
    Lines Done() const
    {
        Lines done;
        for (const std::string& line : Batch)
            if (fs::exists(Program(line)))
                done.insert(line);
        return done;
    }
    std::string Output() const { return TextIn(Folder / "stdout"); }

    void MakeFolders() const
    {
        for (const char* const name : {"home", "programs", "src"})
            fs::create_directories(Folder / name);
        std::string keys = "[Configuration]\r\nWinner90=True\r\nAutoStartBatch=True\r\n";
        for (const char* const key : {"SourcePath90", "SourcePathGen", "SourcePathEV"})
            keys += std::string(key) + "=" + Source("").string() + "\r\n";
        keys += "DestinationPath90=" + (Folder / "programs").string() + "/\r\n";
        Put(Folder / "home/KV90.INI", keys);
        Put(Folder / "programs/INDICE.PRG", "");
        Put(Source("door.dxf"), BoredPanel());
    }
    void Start(const Words& switches)
    {
        Words call = {KORVANTI_CONSOLE, "--home", (Folder / "home").string(), "watch"};
        call.insert(call.end(), switches.begin(), switches.end());
        Child = ::fork();
        if (Child != 0)
            return;
        ::dup2(::open((Folder / "stdout").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open((Folder / "stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        Become(Folder, call, {});
    }
};

class WatchStop : public testing::Test {
  protected:
    void SetUp() override
    {
        Folder = fs::temp_directory_path() / ("korvanti-stop-" + std::to_string(::getpid()));
        fs::remove_all(Folder);
        fs::create_directories(Folder);
    }
    void TearDown() override { fs::remove_all(Folder); }

    int Below(int count) { return static_cast<int>(Random() % static_cast<unsigned>(count)); }

    Shop MakeShop(int number)
    {
        Shop shop;
        shop.Folder = Folder / std::to_string(number);
        shop.MakeFolders();
        const int lines = 1 + Below(MostLines);
        const int failing = Below(4) == 0 ? Below(lines) : -1;
        std::string batch;
        for (int i = 0; i < lines; ++i) {
            const std::string drawing = i == failing ? "gone.dxf" : "door.dxf";
            const std::string line = drawing + " J" + std::to_string(100 + i);
            shop.Batch.insert(line);
            batch += Below(5) == 0 ? "!HBDOFF\r\n" : "";
            batch += line + "\r\n";
        }
        Put(shop.Source("BATCH.LST"), batch);
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
    static void RunAll(std::vector<Shop>& shops, const Words& switches)
    {
        for (Shop& shop : shops)
            shop.Start(switches);
        for (Shop& shop : shops)
            shop.Status = StatusOf(shop.Child);
    }

    // Killed, or ended at once by a second signal: what it had no time for is done at the next start.
    static bool EndedAtOnce(const Shop& shop) { return shop.Status >= 128; }

    static void ExpectAllDoneOrKept(const Shop& shop, const std::string& name)
    {
        const Lines done = shop.Done();
        const fs::path files[] = {shop.Source("BATCH.LST"), shop.Source("BATCH.RUN"),
                                  shop.Source("BATCH.OLD")};
        Lines kept;
        int places = 0;
        for (const fs::path& file : files) {
            const Lines jobs = JobsIn(file);
            places += jobs.empty() ? 0 : 1;
            kept.insert(jobs.begin(), jobs.end());
        }
        EXPECT_LE(places, 1) << name;
        int both = 0;
        for (const std::string& line : shop.Batch) {
            const auto times = done.count(line) + kept.count(line);
            EXPECT_GE(times, 1U) << name << ": " << line << " is lost\n" << shop.Output();
            EXPECT_LE(kept.count(line), 1U) << name << ": " << line;
            both += times > 1 ? 1 : 0;
        }
        EXPECT_LE(both, EndedAtOnce(shop) ? 1 : 0) << name << "\n" << shop.Output();
        EXPECT_EQ(kept.size() + done.size(), shop.Batch.size() + static_cast<std::size_t>(both)) << name;
        if (EndedAtOnce(shop))
            return;
        EXPECT_EQ(shop.Status, kept.empty() || fs::exists(files[0]) ? 0 : 1) << name << "\n" << shop.Output();
        EXPECT_FALSE(fs::exists(files[1])) << name;
        const std::string line = " lines kept in " + files[2].string();
        EXPECT_EQ(shop.Output().find(line) != std::string::npos, fs::exists(files[2])) << name << "\n"
                                                                                       << shop.Output();
    }

    static void GiveBack(Shop& shop)
    {
        for (const std::string& line : shop.Done())
            shop.FirstStamps[line] = StampIn(shop.Program(line));
        fs::path kept;
        for (const char* const file : {"BATCH.RUN", "BATCH.OLD"})
            if (!JobsIn(shop.Source(file)).empty())
                kept = shop.Source(file);
        if (!kept.empty())
            fs::rename(kept, shop.Source("BATCH.LST"));
        Put(shop.Source("gone.dxf"), BoredPanel());
    }

    static void ExpectTheRestDone(const Shop& shop, const std::string& name)
    {
        EXPECT_EQ(shop.Status, 0) << name << "\n" << shop.Output();
        EXPECT_EQ(shop.Done(), shop.Batch) << name << "\n" << shop.Output();
        int again = 0;
        for (const auto& [line, stamp] : shop.FirstStamps)
            again += StampIn(shop.Program(line)) != stamp ? 1 : 0;
        EXPECT_LE(again, shop.Signal == SIGKILL || shop.Twice ? 1 : 0) << name << "\n" << shop.Output();
        for (const char* const file : {"BATCH.LST", "BATCH.RUN", "BATCH.OLD"})
            EXPECT_FALSE(fs::exists(shop.Source(file))) << name << ": " << file;
    }

    fs::path Folder;
    std::mt19937 Random{kv::test::Seed(63)};
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
        std::string keys = TextIn(shop.Folder / "home/KV90.INI");
        const std::string batch = "AutoStartBatch=True";
        keys.replace(keys.find(batch), batch.size(), "AutoStartTemp=True");
        Put(shop.Folder / "home/KV90.INI", keys);
        Put(shop.Source("Temp.DXF"), drawing);
        constexpr int signals[] = {SIGTERM, SIGINT, SIGHUP, SIGKILL};
        shop.Signal = signals[Below(4)];
        shop.Moment = BatchStarts - 0.3 + Below(1500) / 1000.0;
        shops.push_back(shop);
    }
    RunUntilStopped(shops);
    for (int round = 0; round < rounds; ++round) {
        const Shop& shop = shops[static_cast<std::size_t>(round)];
        const bool done = fs::exists(shop.Folder / "programs/SRG/T/EMP");
        int copies = 0;
        for (const char* const name : {"Temp.DXF", "Temp.DXF.RUN", "Temp.OLD"})
            copies += TextIn(shop.Source(name)) == drawing ? 1 : 0;
        EXPECT_LE(copies, 1) << kv::test::RoundName(round);
        EXPECT_GE(copies + (done ? 1 : 0), 1) << kv::test::RoundName(round) << "\n" << shop.Output();
        if (!EndedAtOnce(shop)) {
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
            ExpectAllDoneOrKept(shops[i], kv::test::RoundName(first + static_cast<int>(i)));
            all += static_cast<int>(shops[i].Batch.size());
            left += static_cast<int>(shops[i].Batch.size() - shops[i].Done().size());
            GiveBack(shops[i]);
        }
        RunAll(shops, {"/S", "/K"});
        for (std::size_t i = 0; i < shops.size(); ++i)
            ExpectTheRestDone(shops[i], kv::test::RoundName(first + static_cast<int>(i)));
        for (const Shop& shop : shops)
            fs::remove_all(shop.Folder);
    }
    std::printf("%d stops, %d lines, %d of them left by the stop\n", rounds, all, left);
    EXPECT_GT(left, 0); // else nothing was stopped in its middle
    EXPECT_LT(left, all);
}

} // namespace
