// The example drawings from each corner of the panel that a program can count from: undone, each program
// makes the machine do what that of the lower left corner does.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "machine/cnc_reader.h"
#include "machine/evolution_reader.h"
#include "machine/text_lines.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/same_steps.h"
#include "support/scene.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

constexpr Int CncControl = 0, EvolutionControl = 2;

std::vector<fs::path> ExampleDrawings()
{
    std::vector<fs::path> all;
    for (const auto& entry : fs::directory_iterator(SourceFolder / "examples" / "drawings"))
        if (entry.path().extension() == ".dxf")
            all.push_back(entry.path());
    std::sort(all.begin(), all.end());
    return all;
}

// The drawing whose border names its own corner names this one.
std::string DrawingWithCorner(const fs::path& path, const std::string& corner)
{
    const std::string own = "_UR_";
    std::string text = FileBytes(path);
    for (std::size_t at = text.find(own); at != std::string::npos; at = text.find(own, at + 1))
        text.replace(at, own.size(), "_" + corner + "_");
    return text;
}

// The file below the folder that is a program by its first line.
std::vector<std::string> ProgramBelow(const fs::path& folder)
{
    std::vector<std::string> program;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string text = entry.is_regular_file() ? FileBytes(entry.path()) : "";
        if (!text.starts_with("G7") && !text.starts_with("HEAD"))
            continue;
        EXPECT_TRUE(program.empty()) << entry.path();
        program = LinesOf(text);
    }
    EXPECT_FALSE(program.empty());
    return program;
}

MachineSteps StepsFrom(const fs::path& drawing, const std::string& corner, Int control,
                       bool* grooveSidesTold = nullptr)
{
    Scene home;
    home.Write("EvHeader.dat", "HEAD\r\n\r\n::SIDE=\r\n\r\nEND\r\n");
    Config.PrecisionMetric = "5";
    Config.PrecisionInch = "6";
    Config.LineLimit = "5000"; // no portions
    Config.LineOrigin = corner;
    Config.PTSPath = DestinationPath(0);
    Run.ControlType = control;
    EXPECT_TRUE(home.Convert(DrawingWithCorner(drawing, corner))) << home.ReportText();
    if (grooveSidesTold != nullptr)
        *grooveSidesTold = std::any_of(home.Lines.begin(), home.Lines.end(), [](const std::string& line) {
            return line.find("is sawn on the other side of its line") != std::string::npos;
        });
    const std::vector<std::string> lines = ProgramBelow(home.Programs);
    return control == CncControl ? ReadCnc(lines)
                                 : ReadEvolution(lines, {{corner[1] == 'R', corner[0] == 'U'}, true});
}

MachineSteps WithoutSawSides(MachineSteps steps)
{
    for (SawCut& saw : steps.Saws)
        saw.Side = 0;
    return steps;
}

std::string StepsThatDiffer(const MachineSteps& a, const MachineSteps& b)
{
    return StepsMissing(a, b) + StepsMissing(b, a);
}

// From each other corner than the lower left one; only sides of grooves may differ, where the report says so.
// Returns in how many drawings they do.
int ExpectSameFromEachCorner(Int control)
{
    std::size_t steps = 0;
    int turned = 0;
    for (const fs::path& drawing : ExampleDrawings()) {
        bool told = false;
        const MachineSteps lowerLeft = StepsFrom(drawing, "LL", control, &told);
        EXPECT_FALSE(told) << drawing;
        steps += lowerLeft.Cuts.size() + lowerLeft.Bores.size() + lowerLeft.Saws.size();
        for (const std::string corner : {"LR", "UL", "UR"}) {
            SCOPED_TRACE(drawing.filename().string() + " " + corner);
            const MachineSteps other = StepsFrom(drawing, corner, control, &told);
            EXPECT_EQ(other.Unread, lowerLeft.Unread);
            turned += told ? 1 : 0;
            if (!lowerLeft.Rows.empty()) // where the boring head stops depends on the corner
                continue;
            EXPECT_EQ(StepsThatDiffer(lowerLeft, other).empty(), !told) << StepsThatDiffer(lowerLeft, other);
            EXPECT_EQ(StepsThatDiffer(WithoutSawSides(lowerLeft), WithoutSawSides(other)), "");
        }
    }
    EXPECT_GT(steps, 300U);
    return turned;
}

TEST(Corners, ACncProgramDoesTheSameFromEachCorner)
{
    EXPECT_EQ(ExpectSameFromEachCorner(CncControl), 0);
}

TEST(Corners, AnEvolutionProgramDoesTheSameFromEachCornerOrTellsOfTheSidesOfGrooves)
{
    EXPECT_EQ(ExpectSameFromEachCorner(EvolutionControl), 2); // panel_solid.dxf from LR and UL
}

} // namespace
} // namespace kv::test
