// A shop in which several processes convert at a time: an index, a cut list with a row of long ago, and
// panels whose programs can be told from each other. Counts what is missing of them or there twice.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "faults/disturbed_run.h"
#include "faults/fault_count.h"
#include "faults/own_readers.h"
#include "support/dxf.h"

namespace fault_test {

class Neighbours : public testing::Test {
  protected:
    static constexpr int MostDrawings = 100;     // of each process
    static constexpr unsigned LongestLife = 300; // seconds

    void SetUp() override
    {
        Folder = fs::temp_directory_path() / ("kn" + std::to_string(std::random_device{}() % 1000000));
        PutBytes(Folder / "home/KV90.INI",
                 "[Configuration]\r\nWinner90=True\r\nDestinationPath90=" + FolderIn("prg") + "\r\n" +
                     Keys() + "[PTSDATA]\r\nPath=" + FolderIn("cut") +
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
    // More lines of the section "Configuration".
    virtual std::string Keys() const { return {}; }

    std::string FolderIn(const std::string& name) const { return (Folder / name).string() + "/"; }

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

    // The console, or another program of the shop.
    Words CallOf(const std::string& program, const Words& words) const
    {
        Words call = {program, "--home", (Folder / "home").string()};
        call.insert(call.end(), words.begin(), words.end());
        return call;
    }
    Words ConvertCall(const Words& words) const
    {
        Words call = {"convert"};
        call.insert(call.end(), words.begin(), words.end());
        return CallOf(ProgramUnderTest(), call);
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
    int RunCall(const Words& call) const
    {
        const pid_t child = ::fork();
        if (child == 0)
            TurnInto(call);
        return EndedWith(child);
    }
    // One call after the other in the background; the status is the worst of them.
    pid_t StartCalls(const std::vector<Words>& calls) const
    {
        const pid_t child = ::fork();
        if (child != 0)
            return child;
        int worst = 0;
        for (const Words& call : calls)
            worst = std::max(worst, RunCall(call));
        ::_exit(worst);
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
    Words Temporary() const
    {
        Words found;
        for (const auto& [path, bytes] : TakeUp(Folder)) {
            if (path.ends_with(".tmp"))
                found.push_back(path);
        }
        return found;
    }

    // How often each name stands in the index and in the cut list.
    struct Counted {
        bool Whole = false; // both files are
        std::vector<IndexRow> Records;
        std::map<std::string, int> ByRecord, ByRow;
        int RecordsOf(const std::string& name) const { return Of(ByRecord, name); }
        int RowsOf(const std::string& name) const { return Of(ByRow, "\"" + name + "\""); }

      private:
        static int Of(const std::map<std::string, int>& counts, const std::string& name)
        {
            const auto found = counts.find(name);
            return found == counts.end() ? 0 : found->second;
        }
    };
    Counted CountNames() const
    {
        const IndexFile index = ReadIndex(FileBytes(Folder / "prg/INDICE.PRG"));
        const CutList list = ReadCutList(FileBytes(Folder / "cut/LIST.PTS"));
        Counted counted;
        counted.Whole = index.Whole && list.Whole;
        counted.Records = index.Rows;
        for (const IndexRow& row : index.Rows)
            ++counted.ByRecord[row.Name];
        for (const std::string& row : list.Rows)
            ++counted.ByRow[row.substr(0, row.find(','))];
        return counted;
    }
    bool HasProgram(int process, int drawing) const
    {
        const std::string program = FileBytes(Folder / "prg" / PlaceOfProgram(NameOf(process, drawing)));
        const std::string bore =
            "X" + std::to_string(100 + drawing) + "Y" + std::to_string(50 + process) + "Z12";
        return program.find(bore) != std::string::npos;
    }
    // All drawings of the processes from `first` to `last`, and nothing else.
    void CountAll(const std::string& about, int first, int last, int drawings) const
    {
        const Counted counted = CountNames();
        EXPECT_TRUE(counted.Whole);
        FaultCount count(about);
        for (int process = first; process <= last; ++process) {
            for (int drawing = 0; drawing < drawings; ++drawing) {
                const std::string name = NameOf(process, drawing);
                const int before = count.FindingCount();
                if (counted.RecordsOf(name) != 1)
                    count.Found("record", name, "missing or twice");
                if (counted.RowsOf(name) != 1)
                    count.Found("row", name, "missing or twice");
                if (!HasProgram(process, drawing))
                    count.Found("program", name, "missing");
                if (count.FindingCount() == before)
                    count.Whole();
            }
        }
        count.Print();
        EXPECT_EQ(count.FindingCount(), 0) << count.Details(10);
        EXPECT_EQ(counted.RowsOf("A ROW OF LONG AGO"), 1);
        EXPECT_EQ(counted.Records.size(), static_cast<std::size_t>((last - first + 1) * drawings));
        EXPECT_EQ(Temporary(), Words{});
    }

    fs::path Folder;
};

} // namespace fault_test
