// An installation with a batch, each line a drawing of its own, and the account of it after the program was
// stopped: every line is done (its program, its record of the index and its row of the cut list are there),
// or waits in one file. Written for `korvanti watch` and for the window alike.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "console/run_call.h"
#include "faults/own_readers.h"
#include "support/dxf.h"
#include "support/random_rounds.h"

namespace console_test {

using Lines = std::multiset<std::string>;

// Job lines of a batch file, without commands.
inline Lines JobsIn(const fs::path& path)
{
    Lines jobs;
    std::istringstream text(Contents(path));
    for (std::string line; std::getline(text, line);) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
            line.pop_back();
        if (!line.empty() && line[0] != '!')
            jobs.insert(line);
    }
    return jobs;
}

// Tells a file that was written anew.
inline std::string StampIn(const fs::path& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return std::to_string(status.st_ino) + ' ' + std::to_string(status.st_mtim.tv_sec) + ' ' +
           std::to_string(status.st_mtim.tv_nsec);
}

struct StoppedShop {
    fs::path Folder;
    Lines Batch;
    std::string BatchText;
    std::string Failing;                            // the line whose drawing is not there at first
    std::map<std::string, std::string> FirstStamps; // of programs after the stop, by line
    int Signal = 0;
    double Moment = 0; // seconds
    bool Twice = false;
    int Child = 0;
    int Status = -1;

    fs::path Source(const std::string& name) const { return Folder / "src" / name; }
    fs::path Programs() const { return Folder / "WINNER90"; }
    static std::string NameOf(const std::string& line) { return line.substr(line.find(' ') + 1); }
    fs::path Program(const std::string& line) const
    {
        return Programs() / fault_test::PlaceOfProgram(NameOf(line));
    }
    Lines Done() const
    {
        Lines done;
        for (const std::string& line : Batch)
            if (fs::exists(Program(line)))
                done.insert(line);
        return done;
    }
    std::string Output() const { return Contents(Folder / "stdout") + Contents(Folder / "stderr"); }
    std::string Settings() const { return Contents(Folder / "home/KV90.INI"); }
    // Killed, or ended at once by a second signal: what it had no time for is done at the next start.
    bool EndedAtOnce() const { return Status >= 128; }

    static void PutFile(const fs::path& path, const std::string& text)
    {
        std::ofstream(path, std::ios::binary) << text;
    }

    void MakeFolders() const
    {
        for (const char* const name : {"home", "WINNER90", "src", "cut", "config"})
            fs::create_directories(Folder / name);
        std::string keys = "[Configuration]\r\nWinner90=True\r\nAutoStartBatch=True\r\nLineLimit=150\r\n"
                           "OffsetX=7.00\r\nMetric=Metric\r\nLeadLength=31\r\n";
        for (const char* const key : {"SourcePath90", "SourcePathGen", "SourcePathEV"})
            keys += std::string(key) + "=" + Source("").string() + "\r\n";
        keys += "DestinationPath90=" + Programs().string() +
                "/\r\n[PTSDATA]\r\nPath=" + (Folder / "cut").string() +
                "/\r\nName=LIST\r\nUnit=M\r\nField1=~NAME\r\nField2=WIDTH\r\n";
        PutFile(Folder / "home/KV90.INI", keys);
        PutFile(Programs() / "INDICE.PRG", "");
    }
    void PutDrawingOf(const std::string& line) const
    {
        using namespace kv::test;
        PutFile(Source(line.substr(0, line.find(' '))),
                Drawing(Instructions({"PTS NAME=" + NameOf(line)}) + Rectangle("BORDER_Z18", 0, 0, 600, 400) +
                        Circle("VBORE_Z12F3000", 100, 50, 4)));
    }
    // `commandBefore`: whether a command stands in front of the line. `failing`: a line without its drawing,
    // or -1.
    void PlanBatch(int lines, int failing, const std::function<bool()>& commandBefore)
    {
        for (int i = 0; i < lines; ++i) {
            const std::string name = "J" + std::to_string(100 + i), line = name + ".dxf " + name;
            Batch.insert(line);
            BatchText += (commandBefore() ? "!HBDOFF\r\n" : "") + line + "\r\n";
            if (i == failing)
                Failing = line;
            else
                PutDrawingOf(line);
        }
    }
    // In one step, as a careful program would.
    void DropBatch() const
    {
        PutFile(Source("BATCH.NEW"), BatchText);
        fs::rename(Source("BATCH.NEW"), Source("BATCH.LST"));
    }

    // The program, with its streams in the folder and no longer than `longestLife` seconds; 0: as long as it
    // likes.
    void StartProgram(const Words& call, const Words& environment, unsigned longestLife)
    {
        Child = ::fork();
        if (Child != 0)
            return;
        ::dup2(::open((Folder / "stdout").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 1);
        ::dup2(::open((Folder / "stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        ::alarm(longestLife);
        Become(Folder, call, environment);
    }

    // How often the index and the cut list name each line.
    void CountEntries(std::map<std::string, int>& records, std::map<std::string, int>& rows) const
    {
        const fault_test::IndexFile index = fault_test::ReadIndex(Contents(Programs() / "INDICE.PRG"));
        EXPECT_TRUE(index.Whole) << Folder;
        for (const fault_test::IndexRow& row : index.Rows)
            ++records[row.Name];
        if (!fs::exists(Folder / "cut/LIST.PTS"))
            return;
        const fault_test::CutList list = fault_test::ReadCutList(Contents(Folder / "cut/LIST.PTS"));
        EXPECT_TRUE(list.Whole) << Folder;
        for (const std::string& row : list.Rows)
            ++rows[row.substr(1, row.find('"', 1) - 1)];
    }
};

// Of a program that ended as it should: a line that is done has all three once. Of the others the one that
// was stopped in its middle, or failed, may have its row, which the retry replaces.
inline void ExpectEntriesOf(const StoppedShop& shop, const Lines& done, const std::string& name)
{
    std::map<std::string, int> records, rows;
    shop.CountEntries(records, rows);
    int early = 0;
    for (const std::string& line : shop.Batch) {
        const int wanted = done.count(line) > 0 ? 1 : 0;
        EXPECT_EQ(records[StoppedShop::NameOf(line)], wanted) << name << ": record of " << line << "\n"
                                                              << shop.Output();
        const int found = rows[StoppedShop::NameOf(line)];
        EXPECT_TRUE(found == wanted || (wanted == 0 && found == 1 && ++early == 1))
            << name << ": " << found << " rows of " << line << "\n"
            << shop.Output();
    }
}

// A kill may leave one line in both: that of the job that ran.
inline void ExpectAllDoneOrKept(const StoppedShop& shop, const std::string& name)
{
    const Lines done = shop.Done();
    const fs::path files[] = {shop.Source("BATCH.LST"), shop.Source("BATCH.RUN"), shop.Source("BATCH.OLD")};
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
    EXPECT_LE(both, shop.EndedAtOnce() ? 1 : 0) << name << "\n" << shop.Output();
    EXPECT_EQ(kept.size() + done.size(), shop.Batch.size() + static_cast<std::size_t>(both)) << name;
    if (shop.EndedAtOnce())
        return;
    ExpectEntriesOf(shop, done, name);
    EXPECT_FALSE(fs::exists(files[1])) << name;
    const std::string line = " lines kept in " + files[2].string(), left = "Left from an earlier start";
    if (shop.Output().find(left) == std::string::npos) {
        EXPECT_EQ(shop.Output().find(line) != std::string::npos, fs::exists(files[2])) << name << "\n"
                                                                                       << shop.Output();
    }
}

// What an operator does: gives the lines that were kept the name that is watched for.
inline void GiveBack(StoppedShop& shop)
{
    for (const std::string& line : shop.Done())
        shop.FirstStamps[line] = StampIn(shop.Program(line));
    fs::path kept;
    for (const char* const file : {"BATCH.RUN", "BATCH.OLD"})
        if (!JobsIn(shop.Source(file)).empty())
            kept = shop.Source(file);
    if (!kept.empty())
        fs::rename(kept, shop.Source("BATCH.LST"));
    if (!shop.Failing.empty())
        shop.PutDrawingOf(shop.Failing);
}

// After the retry. `killed`: the job that ran may be run again, once.
inline void ExpectTheRestDone(const StoppedShop& shop, bool killed, const std::string& name)
{
    EXPECT_EQ(shop.Status, 0) << name << "\n" << shop.Output();
    EXPECT_EQ(shop.Done(), shop.Batch) << name << "\n" << shop.Output();
    ExpectEntriesOf(shop, shop.Batch, name);
    int again = 0;
    for (const auto& [line, stamp] : shop.FirstStamps)
        again += StampIn(shop.Program(line)) != stamp ? 1 : 0;
    EXPECT_LE(again, killed ? 1 : 0) << name << "\n" << shop.Output();
    for (const char* const file : {"BATCH.LST", "BATCH.RUN", "BATCH.OLD"})
        EXPECT_FALSE(fs::exists(shop.Source(file))) << name << ": " << file;
}

// Programs that are stopped, each in a shop of its own with its own Start().
class StopTest : public testing::Test {
  protected:
    explicit StopTest(unsigned seed) : Random(kv::test::Seed(seed)) {}
    void SetUp() override
    {
        Folder = fs::temp_directory_path() / ("kstop-" + std::to_string(::getpid()));
        fs::remove_all(Folder);
        fs::create_directories(Folder);
    }
    void TearDown() override { fs::remove_all(Folder); }

    int Below(int count) { return static_cast<int>(Random() % static_cast<unsigned>(count)); }
    double Part() { return Below(1000) / 1000.0; }

    template <typename AnyShop> static void RunAll(std::vector<AnyShop>& shops, const Words& switches)
    {
        for (AnyShop& shop : shops)
            shop.Start(switches);
        for (AnyShop& shop : shops)
            shop.Status = StatusOf(shop.Child);
    }

    fs::path Folder;
    std::mt19937 Random;
};

} // namespace console_test
