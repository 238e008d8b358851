// A drawing whose records are filled in by hand, in front of the real writers and a real scratch
// folder: a program folder with an empty index, a fixed clock, the report and the boxes kept.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "job/placing.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/run_error.h"
#include "state/report.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/host.h"
#include "writers/cut_list.h"
#include "writers/program_families.h"
#include "writers/program_lines.h"
#include "writers/program_writers.h"

namespace kv {

using Texts = std::vector<std::string>;

// Without what they come from.
inline Texts TextsOf(const std::vector<ProgramLine>& lines)
{
    Texts texts;
    for (const ProgramLine& line : lines)
        texts.push_back(line.Text);
    return texts;
}

inline Texts* ReportedLines = nullptr;
inline Texts* ShownBoxes = nullptr;

class ProgramScene : public testing::Test {
  protected:
    RunBlock& Run = kv::Run; // the test class has a Run of its own

    void SetUp() override
    {
        // No test's name in it: some words of a path have a meaning for the writers.
        Folder = std::filesystem::temp_directory_path() / ("kvwri-" + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(Folder / "PROG");
        Put("PROG/INDICE.PRG", "");
        Clock.SecondsSinceMidnight = [] { return 1002.5; };
        Clock.TodayMmDdYy = [] { return std::string("07/04/26"); };
        ReportedLines = &Lines;
        ShownBoxes = &Boxes;
        // A row's text is trimmed; the blank in front shows as centring.
        Report.ShowRow = [](const ReportRow& row) {
            ReportedLines->push_back((row.Centred ? " " : "") + row.Text);
        };
        Dialogs.Box = [](std::string_view text, std::string_view, BoxIcon) {
            ShownBoxes->emplace_back(text);
        };

        Config = Settings{};
        Config.PrecisionMetric = "2";
        Config.PrecisionInch = "3";
        Config.LineLimit = "600";
        Config.DestinationPath90 = PathOf("PROG\\");
        Config.DestinationPathGen = PathOf("PROG\\");
        ExeFolder = "C:\\KV90\\";
        ResetWriters();
        Run = RunBlock{};
        NewDrawing("DOOR");
    }
    void TearDown() override
    {
        ReportMessage(2, {});
        Clock = ClockHooks{};
        Report = ReportHooks{};
        Dialogs = DialogHooks{};
        Events = EventHooks{};
        for (const auto& [name, value] : VariablesBefore)
            test::SetHostVariable(name, value);
        ResetWriters();
        ReleaseRunArrays();
        Run = RunBlock{};
        Config = Settings{};
        ExeFolder.clear();
        std::filesystem::remove_all(Folder);
    }

    // The next drawing of the same process: a metric panel of 600 by 400 by 18, origin lower left.
    void NewDrawing(const std::string& name)
    {
        ResetRun();
        Run.RunFailed = False;
        Run.RunStartTime = 1000;
        Run.SourceName = name + ".DXF";
        Run.SourceFile = PathOf(name + ".DXF");
        Run.PartName = name;
        Run.PartDescription = name;
        Run.SideWidth[5] = 600;
        Run.SideHeight[5] = 400;
        Run.PartThickness = 18;
    }

    // As the driver does: what a drawing gives is placed when its writers are done.
    static void WriteCncProgram()
    {
        kv::WriteCncProgram();
        FinishJobOutput(true);
    }
    static void WriteEvolutionProgram()
    {
        kv::WriteEvolutionProgram();
        FinishJobOutput(true);
    }
    static void WriteHbdProgram()
    {
        kv::WriteHbdProgram();
        FinishJobOutput(true);
    }
    static void RunProgramWriters()
    {
        kv::RunProgramWriters();
        EndProgramsReport();
        FinishJobOutput(true);
    }
    static void WriteCutListEntry()
    {
        try {
            kv::WriteCutListEntry();
        } catch (const RunError&) {
            FinishJobOutput(false);
            throw;
        }
        FinishJobOutput(true);
    }

    // Backslash path of something in the scratch folder.
    std::string PathOf(const std::string& name) const { return FromHostPath(Folder.string()) + "\\" + name; }
    void Put(const std::string& name, const std::string& contents) const
    {
        std::filesystem::create_directories((Folder / name).parent_path());
        std::ofstream(Folder / name, std::ios::binary) << contents;
    }
    bool Stands(const std::string& name) const { return std::filesystem::exists(Folder / name); }
    std::string Get(const std::string& name) const
    {
        EXPECT_TRUE(Stands(name)) << name;
        std::ifstream file(Folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    void SetVariable(const std::string& name, const std::string& value)
    {
        if (!VariablesBefore.contains(name)) {
            const char* const before = std::getenv(name.c_str());
            VariablesBefore[name] = before != nullptr ? std::optional<std::string>(before) : std::nullopt;
        }
        test::SetHostVariable(name, value);
    }

    // Files in the scratch folder and below, by their names in it. Locks stay where they are.
    Texts AllFiles() const
    {
        Texts names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder)) {
            if (entry.is_regular_file() && entry.path().extension() != ".lock")
                names.push_back(std::filesystem::relative(entry.path(), Folder).generic_string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    const Texts& Reported()
    {
        ReportMessage(2, {});
        return Lines;
    }
    bool WasReported(const std::string& line)
    {
        const Texts& all = Reported();
        return std::find(all.begin(), all.end(), line) != all.end();
    }
    void ForgetReport()
    {
        ReportMessage(2, {});
        Lines.clear();
        Boxes.clear();
    }

    static VBoreRecord Bore(Single x, Single y, Single depth, Single diameter)
    {
        VBoreRecord bore;
        bore.X = x;
        bore.Y = y;
        bore.Depth = depth;
        bore.Diameter = diameter;
        bore.Group = 1;
        return bore;
    }
    static void AddBore() { VBores.Append(Bore(100, 50, 12, 8)); }
    static void AddHBore(Long side)
    {
        HBoreRecord bore;
        bore.Side = side;
        bore.PosX = 50;
        bore.PosY = 9;
        bore.Z = 30;
        bore.Diameter = 8;
        bore.Group = 1;
        HBores.Append(bore);
    }
    static void AddGroove()
    {
        GroovePass groove;
        groove.X1 = 10;
        groove.Y1 = 20;
        groove.X2 = 590;
        groove.Y2 = 20;
        groove.Depth = 8;
        GroovePasses.Append(groove);
    }

    std::filesystem::path Folder;
    Texts Lines, Boxes;

  private:
    std::map<std::string, std::optional<std::string>> VariablesBefore;
};

// Lines as a program file holds them.
inline std::string FileOf(std::initializer_list<std::string> lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

} // namespace kv
