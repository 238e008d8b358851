// Several processes convert into one installation at a time; nobody's record, program or row is missing.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "faults/fault_count.h"
#include "faults/own_readers.h"
#include "faults/shop_tree.h"
#include "support/dxf.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

using Words = std::vector<std::string>;

class ManyProcesses : public testing::Test {
  protected:
    void SetUp() override
    {
        Folder = fs::temp_directory_path() / ("kf" + std::to_string(std::random_device{}() % 1000000));
        PutBytes(Folder / "home/KV90.INI",
                 "[Configuration]\r\nWinner90=True\r\nDestinationPath90=" + (Folder / "prg").string() +
                     "/\r\n[PTSDATA]\r\nPath=" + (Folder / "cut").string() +
                     "/\r\nName=LIST\r\nUnit=M\r\nField1=~NAME\r\nField2=WIDTH\r\n");
        PutBytes(Folder / "prg/INDICE.PRG", "");
        PutBytes(Folder / "cut/LIST.PTS", "2.00, 1,M\r\n\"A ROW OF LONG AGO\",400\r\n");
    }
    void TearDown() override
    {
        std::error_code ignored;
        fs::remove_all(Folder, ignored);
    }

    static std::string NameOf(int process, int drawing)
    {
        return "P" + std::to_string(process) + "N" + std::to_string(1000 + drawing);
    }

    // A bore at a place of its own, so that no two programs are alike.
    std::string PutDrawing(int process, int drawing) const
    {
        using namespace kv::test;
        const std::string name = NameOf(process, drawing);
        const fs::path place = Folder / "in" / (name + ".dxf");
        PutBytes(place, Drawing(Instructions({"PTS NAME=" + name}) + Rectangle("BORDER_Z18", 0, 0, 600, 400) +
                                Circle("VBORE_Z12F3000", 100 + drawing, 50 + process, 4)));
        return place.string();
    }

    // The child's exit status is that of the last program that failed, 0 when none did.
    int Start(const std::vector<Words>& calls) const
    {
        const int child = ::fork();
        if (child != 0)
            return child;
        int worst = 0;
        for (const Words& words : calls)
            worst = std::max(worst, RunProgram(words));
        ::_exit(worst);
    }

    int RunProgram(const Words& words) const
    {
        const int child = ::fork();
        if (child == 0) {
            const int none = ::open("/dev/null", O_RDWR);
            ::dup2(none, 1);
            ::dup2(none, 2);
            ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
            std::vector<std::string> call = {KORVANTI_CONSOLE, "--home", (Folder / "home").string(),
                                             "convert"};
            call.insert(call.end(), words.begin(), words.end());
            std::vector<char*> arguments;
            for (std::string& word : call)
                arguments.push_back(word.data());
            arguments.push_back(nullptr);
            ::execv(arguments[0], arguments.data());
            ::_exit(127);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128;
    }

    void ConvertTogether(int processes, int drawings, bool asList)
    {
        std::vector<int> children;
        for (int process = 1; process <= processes; ++process) {
            std::vector<Words> calls(asList ? 1 : static_cast<std::size_t>(drawings));
            for (int drawing = 0; drawing < drawings; ++drawing)
                calls[asList ? 0 : static_cast<std::size_t>(drawing)].push_back(PutDrawing(process, drawing));
            children.push_back(Start(calls));
        }
        for (const int child : children) {
            int status = 0;
            ::waitpid(child, &status, 0);
            EXPECT_EQ(status, 0) << "a process reported a failure";
        }
        CountAll(processes, drawings, asList);
    }

    void CountAll(int processes, int drawings, bool asList)
    {
        const IndexFile index = ReadIndex(FileBytes(Folder / "prg/INDICE.PRG"));
        const CutList list = ReadCutList(FileBytes(Folder / "cut/LIST.PTS"));
        EXPECT_TRUE(index.Whole);
        EXPECT_TRUE(list.Whole);
        std::map<std::string, int> records, rows;
        for (const IndexRow& row : index.Rows)
            ++records[row.Name];
        for (const std::string& row : list.Rows)
            ++rows[row.substr(0, row.find(','))];
        int noRecord = 0, noProgram = 0, noRow = 0;
        for (int process = 1; process <= processes; ++process) {
            for (int drawing = 0; drawing < drawings; ++drawing) {
                const std::string name = NameOf(process, drawing);
                noRecord += records[name] != 1;
                noRow += rows["\"" + name + "\""] != 1;
                noProgram += FileBytes(Folder / "prg" / PlaceOfProgram(name))
                                 .find("X" + std::to_string(100 + drawing) + "Y" +
                                       std::to_string(50 + process) + "Z12") == std::string::npos;
            }
        }
        const int all = processes * drawings;
        FaultCount count(std::to_string(processes) + " processes, " + std::to_string(drawings) +
                         " drawings each, " + (asList ? "as a list" : "one call each"));
        for (const auto& [what, missing] : {std::pair{"records missing or twice", noRecord},
                                            {"programs missing", noProgram},
                                            {"cut list rows missing or twice", noRow}}) {
            if (missing == 0)
                count.Whole();
            else
                count.Found("lost", what,
                            std::to_string(missing) + " of " + std::to_string(all) + " " + what);
        }
        count.Print();
        EXPECT_EQ(count.FindingCount(), 0) << count.Details(10);
        EXPECT_EQ(rows["\"A ROW OF LONG AGO\""], 1);
        EXPECT_EQ(index.Rows.size(), static_cast<std::size_t>(all));
        EXPECT_EQ(Temporary(), Words{});
    }

    Words Temporary() const
    {
        Words found;
        for (const auto& [path, bytes] : TakeUp(Folder)) {
            if (path.ends_with(".tmp"))
                found.push_back(path);
        }
        return found;
    }

    fs::path Folder;
};

constexpr int MostDrawings = 100;

// Of 100; all with KORVANTI_RANDOM=10.
int DrawingsOf(int usual)
{
    return std::min(kv::test::Rounds(usual), MostDrawings);
}

TEST_F(ManyProcesses, TwoWithAListEachMissNothing)
{
    ConvertTogether(2, MostDrawings, true);
}

TEST_F(ManyProcesses, EightWithAListEachMissNothing)
{
    ConvertTogether(8, MostDrawings, true);
}

TEST_F(ManyProcesses, TwoWithACallForEachDrawingMissNothing)
{
    ConvertTogether(2, DrawingsOf(10), false);
}

TEST_F(ManyProcesses, EightWithACallForEachDrawingMissNothing)
{
    ConvertTogether(8, DrawingsOf(3), false);
}

} // namespace
} // namespace fault_test
