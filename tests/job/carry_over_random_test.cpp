// The same drawing gives the same program, whatever ran before: random drawings alone, in a list, shuffled,
// with CarryOver=clean. Under kept a drawing that comes out otherwise than alone says so.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <set>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/leaving_drawings.h"
#include "support/random_drawings.h"
#include "support/random_rounds.h"
#include "support/scene.h"
#include "writers/program_writers.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

struct RandomJob {
    std::string Drawing, Name;
    Int System = 0;
};

// All that a job leaves but the time that it took.
struct MadeByJob {
    bool Converted = false;
    std::map<std::string, std::string> Files; // by their names in the scratch folder, without the index
    std::string Records;                      // of its programs in the index
    std::vector<std::string> Lines;
    std::string TakenOver;

    bool SameFiles(const MadeByJob& other) const { return Files == other.Files && Records == other.Records; }
};

std::vector<RandomJob> RandomJobs(int count)
{
    std::vector<RandomJob> jobs;
    const unsigned seed = Seed(4100);
    for (int i = 0; i < count; ++i) {
        const unsigned own = seed + static_cast<unsigned>(i);
        std::string name = "Q0000"; // all of one length, so that no portion has another drawing's name
        const std::string digits = std::to_string(i);
        name.replace(name.size() - digits.size(), digits.size(), digits);
        jobs.push_back({i % 4 == 0 ? RandomDrawing(own) : LeavingDrawing(own).Drawn(), name,
                        static_cast<Int>(i % 7 < 4 ? 0 : i % 7 - 4)});
    }
    return jobs;
}

// An installation, and a process as at its start.
class FreshInstall {
  public:
    explicit FreshInstall(const std::string& carryOver)
    {
        Clock.TodayMmDdYy = [] { return std::string("07/04/26"); };
        Clock.SecondsSinceMidnight = [] { return 1000.0; };
        for (const char* const name : {"DT.Par", "EvHeader.dat", "KVHBD.cfg"})
            fs::copy_file(fs::path(KORVANTI_SOURCE_DIR) / "examples" / "install" / name, Home.Folder / name);
        Config.LineLimit = "200";
        Config.PTSPath = FromHostPath((Home.Folder / "lists").string() + "/");
        fs::create_directories(Home.Folder / "lists");
        Config.HBDDestinationPath = FromHostPath((Home.Folder / "hbd").string() + "/");
        fs::create_directories(Home.Folder / "hbd");
        Config.HBDVBoreLimit = "50";
        Config.HbdAvailable = true;
        Config.PtsFields[1] = "NAME";
        Config.PtsFieldCount = 1;
        Config.ToolSubData.assign(ToolSubstitutionRows, {"0", "0", "0"});
        Config.ToolSubData[0] = {"1", "72", "75"};
        Config.CarryOver = carryOver;
        WrittenFiles = &Written;
    }
    ~FreshInstall() { WrittenFiles = nullptr; }
    FreshInstall(const FreshInstall&) = delete;
    FreshInstall& operator=(const FreshInstall&) = delete;

    MadeByJob Convert(const RandomJob& job)
    {
        Written.clear();
        kv::Run.ControlType = job.System;
        Config.MakeHBD = job.Name.back() == '3' ? 1 : 0;
        Config.PTSName = "L" + job.Name; // a list of its own, or the rows of others would stand in it
        MadeByJob made;
        made.Converted = Home.Convert(job.Drawing, job.Name + ".DXF");
        for (const std::string& path : std::set<std::string>(Written.begin(), Written.end()))
            if (fs::path(path).filename() != "INDICE.PRG" && !IsAgreement(path))
                made.Files[fs::relative(path, Home.Folder).generic_string()] = Home.Read(path);
        const std::string index = Home.Read(Home.Programs / "INDICE.PRG");
        constexpr std::size_t RecordSize = 82;
        for (std::size_t at = 0; at + RecordSize <= index.size(); at += RecordSize)
            if (BeginsWith(index.substr(at, RecordSize), job.Name))
                made.Records += index.substr(at, RecordSize);
        for (const std::string& row : Home.Lines) {
            if (BeginsWith(row, "Taken over from an earlier drawing: "))
                made.TakenOver += row;
            else if (!BeginsWith(row, "Processed in"))
                made.Lines.push_back(InAnyFolder(row));
        }
        return made;
    }

  private:
    // The scratch folder's name differs from one installation to the next.
    std::string InAnyFolder(std::string row) const
    {
        const std::string folder = ShownPath(FromHostPath(Home.Folder.string()));
        for (std::size_t at = row.find(folder); at != std::string::npos; at = row.find(folder))
            row.replace(at, folder.size(), "HOME");
        return row;
    }

    Scene Home;
    std::vector<std::string> Written;
};

class CarryOverRandom : public testing::Test {
  protected:
    CarryOverRandom() : Jobs(RandomJobs(Rounds(110)))
    {
        for (const RandomJob& job : Jobs)
            Alone.push_back(FreshInstall("kept").Convert(job));
    }
    void ExpectAsAlone(const std::vector<std::size_t>& order)
    {
        FreshInstall list("clean");
        for (const std::size_t i : order) {
            const MadeByJob made = list.Convert(Jobs[i]);
            EXPECT_EQ(made.Converted, Alone[i].Converted) << Jobs[i].Name;
            EXPECT_EQ(made.Files, Alone[i].Files) << Jobs[i].Name << " of " << RoundName(0);
            EXPECT_EQ(made.Records, Alone[i].Records) << Jobs[i].Name;
            EXPECT_EQ(made.Lines, Alone[i].Lines) << Jobs[i].Name;
            EXPECT_EQ(made.TakenOver, "") << Jobs[i].Name;
        }
    }
    std::vector<std::size_t> InOrder() const
    {
        std::vector<std::size_t> order(Jobs.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        return order;
    }

    static std::string Difference(const MadeByJob& made, const MadeByJob& alone)
    {
        std::string text;
        for (const auto& [name, contents] : made.Files)
            if (!alone.Files.contains(name) || alone.Files.at(name) != contents)
                text += name + " after others:\n" + contents;
        for (const auto& [name, contents] : alone.Files)
            if (!made.Files.contains(name) || made.Files.at(name) != contents)
                text += name + " alone:\n" + contents;
        for (const std::string& line : made.Lines)
            text += "after others: " + line + "\n";
        for (const std::string& line : alone.Lines)
            text += "alone: " + line + "\n";
        return text;
    }

    std::vector<RandomJob> Jobs;
    std::vector<MadeByJob> Alone;
};

TEST_F(CarryOverRandom, AListAndAShuffledListGiveWhatEachDrawingGivesAlone)
{
    std::vector<std::size_t> order = InOrder();
    ExpectAsAlone(order);
    std::shuffle(order.begin(), order.end(), std::mt19937(Seed(4101)));
    ExpectAsAlone(order);
}

TEST_F(CarryOverRandom, KeptSaysSoWhereSomethingCameOutOtherwise)
{
    std::vector<std::size_t> order = InOrder();
    std::shuffle(order.begin(), order.end(), std::mt19937(Seed(4102)));
    FreshInstall list("kept");
    int told = 0, untold = 0, without = 0;
    for (const std::size_t i : order) {
        const MadeByJob made = list.Convert(Jobs[i]);
        const bool same = made.SameFiles(Alone[i]) && made.Lines == Alone[i].Lines;
        if (!same) {
            EXPECT_NE(made.TakenOver, "") << Jobs[i].Name << " of " << RoundName(0) << "\n"
                                          << Difference(made, Alone[i]);
        }
        told += !same && !made.TakenOver.empty() ? 1 : 0;
        untold += !same && made.TakenOver.empty() ? 1 : 0;
        without += same && !made.TakenOver.empty() ? 1 : 0;
        EXPECT_EQ(Alone[i].TakenOver, "") << Jobs[i].Name;
    }
    EXPECT_GT(told, static_cast<int>(Jobs.size()) / 20) << "else the drawings leave nothing";
    EXPECT_LE(without, told / 5) << "a value that is used seldom makes no difference";
    EXPECT_EQ(untold, 0);
}

} // namespace
} // namespace kv::test
