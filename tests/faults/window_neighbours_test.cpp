// The open window runs a batch while other processes convert in the same installation: no program, index
// record or cut list row of any of them is missing or there twice.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "faults/disturbed_run.h"
#include "faults/fault_count.h"
#include "faults/own_readers.h"
#include "support/dxf.h"
#include "support/random_rounds.h"

namespace fault_test {
namespace {

constexpr int MostDrawings = 100, UsualDrawings = 5; // of each process
constexpr unsigned LongestLife = 300;                // seconds
constexpr int Window = 0;                            // among the processes

class WindowNeighbours : public testing::Test {
  protected:
    void SetUp() override
    {
        Folder = fs::temp_directory_path() / ("kn" + std::to_string(std::random_device{}() % 1000000));
        const auto folder = [this](const char* name) { return (Folder / name).string() + "/"; };
        PutBytes(
            Folder / "home/KV90.INI",
            "[Configuration]\r\nWinner90=True\r\nAutoStartBatch=True\r\nDestinationPath90=" + folder("prg") +
                "\r\nSourcePath90=" + folder("in") + "\r\nSourcePathGen=" + folder("in") +
                "\r\nSourcePathEV=" + folder("in") + "\r\n[PTSDATA]\r\nPath=" + folder("cut") +
                "\r\nName=LIST\r\nUnit=M\r\nField1=~NAME\r\nField2=WIDTH\r\n");
        PutBytes(Folder / "prg/INDICE.PRG", "");
        PutBytes(Folder / "cut/LIST.PTS", "2.00, 1,M\r\n\"A ROW OF LONG AGO\",400\r\n");
        fs::create_directories(Folder / "config");
    }
    void TearDown() override
    {
        std::error_code ignored;
        fs::remove_all(Folder, ignored);
    }

    static std::string NameIn(int process, int drawing)
    {
        return "P" + std::to_string(process) + "N" + std::to_string(1000 + drawing);
    }
    // A bore at a place of its own, so that no two programs are alike.
    std::string PutPanel(int process, int drawing) const
    {
        using namespace kv::test;
        const std::string name = NameIn(process, drawing);
        const fs::path place = Folder / "in" / (name + ".dxf");
        PutBytes(place, Drawing(Instructions({"PTS NAME=" + name}) + Rectangle("BORDER_Z18", 0, 0, 600, 400) +
                                Circle("VBORE_Z12F3000", 100 + drawing, 50 + process, 4)));
        return place.string();
    }

    [[noreturn]] void TurnInto(const Words& call) const
    {
        const fs::path said = Folder / ("said" + std::to_string(::getpid()));
        const int output = ::open(said.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        ::dup2(::open("/dev/null", O_RDONLY), 0);
        ::dup2(output, 1);
        ::dup2(output, 2);
        ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        ::setenv("XDG_CONFIG_HOME", (Folder / "config").c_str(), 1);
        ::unsetenv("KORVANTI_HOME");
        std::vector<char*> arguments;
        for (const std::string& word : call)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        ::alarm(LongestLife);
        ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
    static int EndedWith(pid_t child)
    {
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    Words CallOf(const std::string& program, const Words& words) const
    {
        Words call = {program, "--home", (Folder / "home").string()};
        call.insert(call.end(), words.begin(), words.end());
        return call;
    }
    pid_t StartWindow() const
    {
        const pid_t child = ::fork();
        if (child == 0)
            TurnInto(CallOf(KORVANTI_WINDOW_PROGRAM, {"/S", "/K"}));
        return child;
    }
    // One call after the other; the status is the worst of them.
    pid_t StartConsole(const Words& drawings) const
    {
        const pid_t child = ::fork();
        if (child != 0)
            return child;
        int worst = 0;
        for (const std::string& drawing : drawings) {
            const pid_t one = ::fork();
            if (one == 0)
                TurnInto(CallOf(ProgramUnderTest(), {"convert", drawing}));
            worst = std::max(worst, EndedWith(one));
        }
        ::_exit(worst);
    }

    void ConvertBeside(int consoles)
    {
        const int drawings = std::min(kv::test::Rounds(UsualDrawings), MostDrawings);
        std::string batch;
        for (int drawing = 0; drawing < drawings; ++drawing) {
            PutPanel(Window, drawing);
            batch += NameIn(Window, drawing) + ".dxf " + NameIn(Window, drawing) + "\r\n";
        }
        PutBytes(Folder / "in/BATCH.LST", batch);
        std::vector<pid_t> children = {StartWindow()};
        for (int process = 1; process <= consoles; ++process) {
            Words panels;
            for (int drawing = 0; drawing < drawings; ++drawing)
                panels.push_back(PutPanel(process, drawing));
            children.push_back(StartConsole(panels));
        }
        for (const pid_t child : children)
            EXPECT_EQ(EndedWith(child), 0);
        CountAll(consoles, drawings);
    }

    void CountAll(int consoles, int drawings) const
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
        FaultCount count("the window beside " + std::to_string(consoles) + " processes, " +
                         std::to_string(drawings) + " drawings each");
        for (int process = Window; process <= consoles; ++process) {
            for (int drawing = 0; drawing < drawings; ++drawing) {
                const std::string name = NameIn(process, drawing);
                const int before = count.FindingCount();
                if (records[name] != 1)
                    count.Found("record", name, "missing or twice");
                if (rows["\"" + name + "\""] != 1)
                    count.Found("row", name, "missing or twice");
                if (!HasPanel(process, drawing))
                    count.Found("program", name, "missing");
                if (count.FindingCount() == before)
                    count.Whole();
            }
        }
        count.Print();
        EXPECT_EQ(count.FindingCount(), 0) << count.Details(10);
        EXPECT_EQ(rows["\"A ROW OF LONG AGO\""], 1);
        EXPECT_EQ(index.Rows.size(), static_cast<std::size_t>((consoles + 1) * drawings));
        for (const auto& [path, bytes] : TakeUp(Folder)) {
            EXPECT_FALSE(path.ends_with(".tmp")) << path;
            EXPECT_FALSE(path.starts_with("in/BATCH.")) << path;
        }
    }
    bool HasPanel(int process, int drawing) const
    {
        const std::string program = FileBytes(Folder / "prg" / PlaceOfProgram(NameIn(process, drawing)));
        const std::string bore =
            "X" + std::to_string(100 + drawing) + "Y" + std::to_string(50 + process) + "Z12";
        return program.find(bore) != std::string::npos;
    }

    fs::path Folder;
};

TEST_F(WindowNeighbours, TheWindowAndTwoMissNothing)
{
    ConvertBeside(2);
}

TEST_F(WindowNeighbours, TheWindowAndEightMissNothing)
{
    ConvertBeside(8);
}

} // namespace
} // namespace fault_test
