// The programs of the example drawings are read to the last line, and those of one drawing for different
// controls make the machines do the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "machine/cnc_reader.h"
#include "machine/evolution_reader.h"
#include "machine/hbd_reader.h"
#include "machine/text_lines.h"
#include "support/same_steps.h"
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

TEST(ReadExamples, BothControlsCutBoreAndSawTheSame)
{
    std::size_t cuts = 0, bores = 0, saws = 0;
    for (const std::filesystem::path& path : ProgramsNamed(".evolution")) {
        SCOPED_TRACE(path.filename());
        const Corner corner{CountsFromUpperRight(path), CountsFromUpperRight(path)};
        const MachineSteps evolution = ReadEvolution(LinesIn(path), {corner, true});
        std::filesystem::path other = path;
        const MachineSteps cnc = ReadCnc(LinesIn(other.replace_extension(".expected")));
        EXPECT_EQ(evolution.Length, cnc.Length);
        EXPECT_EQ(evolution.Width, cnc.Width);
        EXPECT_EQ(evolution.Thickness, cnc.Thickness);
        EXPECT_EQ(StepsMissing(cnc, evolution), "");
        if (cnc.Rows.empty()) { // the boring head's are bores of the other control
            EXPECT_EQ(StepsMissing(evolution, cnc), "");
        }
        cuts += cnc.Cuts.size();
        bores += cnc.Bores.size();
        saws += cnc.Saws.size();
    }
    EXPECT_GT(cuts, 50U);
    EXPECT_GT(bores, 150U);
    EXPECT_GT(saws, 5U);
}

// What the horizontal machine bores is what its control's program lacks; of face bores that are images of
// others across the panel it makes one.
TEST(ReadExamples, TheHorizontalMachineMakesTheBoresThatAreLeftOut)
{
    int programs = 0;
    std::size_t bores = 0;
    for (const std::filesystem::path& path : ProgramsNamed(".hbd")) {
        SCOPED_TRACE(path.filename());
        std::filesystem::path base = path;
        const MachineSteps all = ReadCnc(LinesIn(base.replace_extension(".expected")));
        const MachineSteps left = ReadCnc(LinesIn(base.replace_extension(".remaining")));
        HbdReading how;
        how.Edge = path.stem() == "countertop" ? Plane::Edge2 : Plane::Edge4; // no program tells
        const MachineSteps hbd = ReadHbd(LinesIn(path), how);
        EXPECT_EQ(JoinedLines(hbd.Unread), "");
        EXPECT_EQ(hbd.Length, all.Length);
        EXPECT_EQ(hbd.Width, all.Width);
        EXPECT_EQ(hbd.Thickness, all.Thickness);
        EXPECT_EQ(StepsMissing(hbd, all), "");
        for (const Bore& bore : hbd.Bores)
            EXPECT_FALSE(std::any_of(left.Bores.begin(), left.Bores.end(), [&](const Bore& other) {
                return SameBore(bore, other);
            })) << bore.Line;
        bores += hbd.Bores.size();
        ++programs;
    }
    EXPECT_EQ(programs, 7);
    EXPECT_EQ(bores, 3U + 3 + 1 + 2 + 2 + 3 + 8);
}

} // namespace
} // namespace kv::test
