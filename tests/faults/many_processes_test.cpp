// Several processes convert into one installation at a time; nobody's record, program or row is missing.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <random>

#include "faults/disturbed_run.h"
#include "faults/fault_count.h"
#include "faults/own_readers.h"
#include "faults/shop.h"
#include "support/dxf.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

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

    [[noreturn]] void Become(const Words& words) const
    {
        const fs::path said = Folder / ("said" + std::to_string(::getpid()));
        const int output = ::open(said.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        ::dup2(::open("/dev/null", O_RDONLY), 0);
        ::dup2(output, 1);
        ::dup2(output, 2);
        ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
        Words call = {ProgramUnderTest(), "--home", (Folder / "home").string(), "convert"};
        call.insert(call.end(), words.begin(), words.end());
        std::vector<char*> arguments;
        for (std::string& word : call)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }

    int RunProgram(const Words& words) const
    {
        const int child = ::fork();
        if (child == 0)
            Become(words);
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
            EXPECT_EQ(status, 0) << "a process reported a failure:\n" << Failures();
        }
        CountAll(processes, drawings, asList);
    }

    // What processes said of drawings that failed, the first of it.
    std::string Failures() const
    {
        constexpr std::size_t MostSaid = 2000;
        std::string lines;
        for (const auto& [path, bytes] : TakeUp(Folder)) {
            if (!path.starts_with("said"))
                continue;
            for (const std::string& line : LinesOf(bytes, "\n")) {
                const bool plain = line.find(": ") == std::string::npos || line.starts_with("Entry to PTS");
                if (!plain && lines.size() < MostSaid)
                    lines += line + "\n";
            }
        }
        return lines;
    }

    bool HasProgram(int process, int drawing) const
    {
        const std::string program = FileBytes(Folder / "prg" / PlaceOfProgram(NameOf(process, drawing)));
        const std::string bore =
            "X" + std::to_string(100 + drawing) + "Y" + std::to_string(50 + process) + "Z12";
        return program.find(bore) != std::string::npos;
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
        FaultCount count(std::to_string(processes) + " processes, " + std::to_string(drawings) +
                         " drawings each, " + (asList ? "as a list" : "one call each"));
        for (int process = 1; process <= processes; ++process) {
            for (int drawing = 0; drawing < drawings; ++drawing) {
                const std::string name = NameOf(process, drawing);
                const int before = count.FindingCount();
                if (records[name] != 1)
                    count.Found("record", name, "missing or twice");
                if (rows["\"" + name + "\""] != 1)
                    count.Found("row", name, "missing or twice");
                if (!HasProgram(process, drawing))
                    count.Found("program", name, "missing");
                if (count.FindingCount() == before)
                    count.Whole();
            }
        }
        count.Print();
        EXPECT_EQ(count.FindingCount(), 0) << count.Details(10);
        EXPECT_EQ(rows["\"A ROW OF LONG AGO\""], 1);
        EXPECT_EQ(index.Rows.size(), static_cast<std::size_t>(processes * drawings));
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

// One of four is killed at any moment; the others miss nothing, and what it has left is no half.
class KilledNeighbours : public ManyProcesses {
  protected:
    // Starts the program itself, not a child that starts it.
    int StartAlone(int process, int drawings) const
    {
        Words words;
        for (int drawing = 0; drawing < drawings; ++drawing)
            words.push_back(PutDrawing(process, drawing));
        const int child = ::fork();
        if (child == 0)
            Become(words);
        return child;
    }

    void TryKill(FaultCount& count, int round, unsigned milliseconds)
    {
        constexpr int Drawings = 20;
        const std::string name =
            "round " + std::to_string(round) + ", " + std::to_string(milliseconds) + " ms";
        std::vector<int> children;
        for (int process = 1; process <= 4; ++process)
            children.push_back(StartAlone(process, Drawings));
        ::usleep(milliseconds * 1000);
        ::kill(children.front(), SIGKILL);
        int status = 0;
        ::waitpid(children.front(), &status, 0);
        const int before = count.FindingCount();
        for (std::size_t i = 1; i < children.size(); ++i) {
            ::waitpid(children[i], &status, 0);
            if (status != 0)
                count.Found("lost", name, "a neighbour failed: " + Failures());
        }
        if (RunProgram({PutDrawing(5, 0)}) != 0) // the next start
            count.Found("after", name, "the next start failed");
        JudgeAll(count, name, Drawings);
        if (count.FindingCount() == before)
            count.Whole();
    }

    void JudgeAll(FaultCount& count, const std::string& name, int drawings) const
    {
        const IndexFile index = ReadIndex(FileBytes(Folder / "prg/INDICE.PRG"));
        const CutList list = ReadCutList(FileBytes(Folder / "cut/LIST.PTS"));
        if (!index.Whole || !list.Whole)
            count.Found("lost", name, "index or cut list is not whole");
        std::map<std::string, int> records, rows;
        for (const IndexRow& row : index.Rows) {
            ++records[row.Name];
            if (!fs::exists(Folder / "prg" / PlaceOfProgram(row.Name)))
                count.Found("lost", name, "a record without its program");
        }
        for (const std::string& row : list.Rows)
            ++rows[row.substr(0, row.find(','))];
        for (int process = 2; process <= 4; ++process) {
            for (int drawing = 0; drawing < drawings; ++drawing) {
                if (records[NameOf(process, drawing)] != 1)
                    count.Found("lost", name, "a record of a neighbour");
                if (rows["\"" + NameOf(process, drawing) + "\""] != 1)
                    count.Found("lost", name, "a row of a neighbour");
            }
        }
        if (!Temporary().empty())
            count.Found("left", name, "temporary files");
    }
};

TEST_F(KilledNeighbours, TakeNothingWithThem)
{
    FaultCount count("4 processes, 20 drawings each, one is killed");
    std::mt19937 random(kv::test::Seed(5));
    const int rounds = std::min(kv::test::Rounds(2), 100);
    for (int round = 0; round < rounds; ++round) {
        TearDown();
        SetUp();
        TryKill(count, round, static_cast<unsigned>(random() % 60));
    }
    count.Print();
    EXPECT_EQ(count.FindingCount(), 0) << count.Details(10);
}

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
