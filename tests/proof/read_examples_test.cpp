// The programs of the example drawings are read to the last line.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/machine/cnc_reader.h"
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

std::string JoinedLines(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

TEST(ReadExamples, EachLineOfACncProgramIsUnderstoodButTheDrawingsOwnCode)
{
    int programs = 0;
    for (const char* const extension : {".expected", ".remaining"})
        for (const std::filesystem::path& path : ProgramsNamed(extension)) {
            SCOPED_TRACE(path.filename());
            const MachineSteps steps = ReadCnc(LinesOf(FileBytes(path)));
            const bool ownCode = path.filename() == "drawer_front.expected";
            EXPECT_EQ(JoinedLines(steps.Unread),
                      ownCode ? "4: M77 DUST ON\n11: G4F2\n12: M78 DUST OFF\n" : "");
            EXPECT_GT(steps.Length * steps.Width * steps.Thickness, 0);
            ++programs;
        }
    EXPECT_GT(programs, 15);
}

} // namespace
} // namespace kv::test
