// The programs of the example drawings are read to the last line, and those of one drawing for different
// controls make the machines do the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "support/machine/cnc_reader.h"
#include "support/machine/evolution_reader.h"
#include "support/machine/hbd_reader.h"
#include "support/machine/program_lines.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

const std::filesystem::path Programs = SourceFolder / "tests" / "data" / "examples";

std::vector<std::filesystem::path> ProgramsNamed(const std::string& extension)
{
    std::vector<std::filesystem::path> all;
    for (const auto& entry : std::filesystem::directory_iterator(Programs))
        if (entry.path().extension() == extension)
            all.push_back(entry.path());
    std::sort(all.begin(), all.end());
    return all;
}

std::vector<std::string> LinesIn(const std::filesystem::path& path)
{
    return LinesOf(FileBytes(path));
}

std::string JoinedLines(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

// The one example whose border names a corner: the upper right one.
bool CountsFromUpperRight(const std::filesystem::path& path)
{
    return path.stem() == "drawer_front";
}

bool SamePlaces(const PathPoint& a, const PathPoint& b)
{
    return Between(a, b) < 0.01;
}

bool SameMoves(const Move& a, const Move& b)
{
    // Where the sense of half a turn is the same, so is its centre's side.
    return a.IsArc == b.IsArc && SamePlaces(a.From, b.From) && SamePlaces(a.To, b.To) &&
           std::fabs(a.Sweep - b.Sweep) < 0.2 && (!a.IsArc || SamePlaces(a.Centre, b.Centre)) &&
           std::fabs(a.DepthFrom - b.DepthFrom) < 0.001 && std::fabs(a.DepthTo - b.DepthTo) < 0.001;
}

bool SameCuts(const RouterCut& a, const RouterCut& b)
{
    return a.On == b.On && a.Side == b.Side && std::fabs(a.Radius - b.Radius) < 0.001 &&
           SamePlaces(a.Start, b.Start) && a.StartDepth == b.StartDepth &&
           std::equal(a.Moves.begin(), a.Moves.end(), b.Moves.begin(), b.Moves.end(), SameMoves);
}

bool SameBores(const Bore& a, const Bore& b)
{
    return a.On == b.On && SamePlaces(a.At, b.At) && std::fabs(a.Depth - b.Depth) < 0.001 &&
           (a.Diameter == 0 || std::fabs(a.Diameter - b.Diameter) < 0.001);
}

TEST(ReadExamples, EachLineOfACncProgramIsUnderstoodButTheDrawingsOwnCode)
{
    int programs = 0;
    for (const char* const extension : {".expected", ".remaining"})
        for (const std::filesystem::path& path : ProgramsNamed(extension)) {
            SCOPED_TRACE(path.filename());
            const MachineSteps steps = ReadCnc(LinesIn(path));
            const bool ownCode = path.filename() == "drawer_front.expected";
            EXPECT_EQ(JoinedLines(steps.Unread),
                      ownCode ? "4: M77 DUST ON\n11: G4F2\n12: M78 DUST OFF\n" : "");
            EXPECT_GT(steps.Length * steps.Width * steps.Thickness, 0);
            ++programs;
        }
    EXPECT_GT(programs, 15);
}

TEST(ReadExamples, EachLineOfAnEvolutionProgramIsUnderstood)
{
    int programs = 0;
    for (const std::filesystem::path& path : ProgramsNamed(".evolution")) {
        const MachineSteps steps = ReadEvolution(LinesIn(path));
        EXPECT_EQ(JoinedLines(steps.Unread), "") << path.filename();
        EXPECT_GT(steps.Length * steps.Width * steps.Thickness, 0);
        EXPECT_FALSE(steps.Cuts.empty() && steps.Bores.empty()) << path.filename();
        ++programs;
    }
    EXPECT_GT(programs, 10);
}

TEST(ReadExamples, BothControlsCutTheSameWays)
{
    int cuts = 0;
    for (const std::filesystem::path& path : ProgramsNamed(".evolution")) {
        const MachineSteps evolution =
            ReadEvolution(LinesIn(path), {{CountsFromUpperRight(path), CountsFromUpperRight(path)}, true});
        std::filesystem::path other = path;
        const MachineSteps cnc = ReadCnc(LinesIn(other.replace_extension(".expected")));
        EXPECT_EQ(evolution.Length, cnc.Length);
        EXPECT_EQ(evolution.Width, cnc.Width);
        EXPECT_EQ(evolution.Thickness, cnc.Thickness);
        for (const RouterCut& cut : cnc.Cuts) {
            const auto same = [&](const RouterCut& c) { return SameCuts(cut, c); };
            const auto bored = [&](const Bore& bore) { // a plunge is one of its bores
                return cut.Moves.empty() && SamePlaces(bore.At, cut.Start) && bore.Depth == cut.StartDepth;
            };
            EXPECT_TRUE(std::any_of(evolution.Cuts.begin(), evolution.Cuts.end(), same) ||
                        std::any_of(evolution.Bores.begin(), evolution.Bores.end(), bored))
                << path.filename() << ", line " << cut.Line;
            ++cuts;
        }
    }
    EXPECT_GT(cuts, 50);
}

TEST(ReadExamples, BothControlsDrillTheSameBores)
{
    int bores = 0;
    for (const std::filesystem::path& path : ProgramsNamed(".evolution")) {
        const MachineSteps evolution =
            ReadEvolution(LinesIn(path), {{CountsFromUpperRight(path), CountsFromUpperRight(path)}, true});
        std::filesystem::path other = path;
        const MachineSteps cnc = ReadCnc(LinesIn(other.replace_extension(".expected")));
        for (const Bore& bore : cnc.Bores) {
            EXPECT_TRUE(std::any_of(evolution.Bores.begin(), evolution.Bores.end(),
                                    [&](const Bore& b) { return SameBores(bore, b); }))
                << path.filename() << ", line " << bore.Line;
            ++bores;
        }
    }
    EXPECT_GT(bores, 150);
}

// What the horizontal machine bores is what its control's program lacks; of face bores that are images of
// others across the panel it makes one.
TEST(ReadExamples, TheHorizontalMachineMakesTheBoresThatAreLeftOut)
{
    int programs = 0, bores = 0;
    for (const std::filesystem::path& path : ProgramsNamed(".hbd")) {
        SCOPED_TRACE(path.filename());
        std::filesystem::path other = path;
        const MachineSteps all = ReadCnc(LinesIn(other.replace_extension(".expected")));
        const MachineSteps left = ReadCnc(LinesIn(other.replace_extension(".remaining")));
        HbdReading how;
        how.Edge = path.stem() == "countertop" ? Plane::Edge2 : Plane::Edge4; // no program tells
        const MachineSteps hbd = ReadHbd(LinesIn(path), how);
        EXPECT_EQ(JoinedLines(hbd.Unread), "");
        EXPECT_EQ(hbd.Length, all.Length);
        EXPECT_EQ(hbd.Width, all.Width);
        EXPECT_EQ(hbd.Thickness, all.Thickness);
        for (const Bore& bore : hbd.Bores) {
            const auto same = [&](const Bore& b) { // the tool says the diameter of face bores
                return bore.On == b.On && SamePlaces(bore.At, b.At) && bore.Depth == b.Depth;
            };
            EXPECT_TRUE(std::any_of(all.Bores.begin(), all.Bores.end(), same)) << bore.Line;
            EXPECT_FALSE(std::any_of(left.Bores.begin(), left.Bores.end(), same)) << bore.Line;
            ++bores;
        }
        ++programs;
    }
    EXPECT_EQ(programs, 7);
    EXPECT_EQ(bores, 3 + 3 + 1 + 2 + 2 + 3 + 8);
}

} // namespace
} // namespace kv::test
