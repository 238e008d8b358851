// Thousands of random drawings with routes: none crashes, each gives the same twice, all words are
// numbers; those that can be cut as drawn give programs that a machine can run.
#include <filesystem>
#include <map>

#include <gtest/gtest.h>

#include "routes/random_routes.h"
#include "support/program_checker.h"
#include "support/random_rounds.h"
#include "support/scene.h"
#include "support/source_files.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;

struct Made {
    bool Went = false;
    std::vector<std::string> Report;
    std::map<std::string, std::vector<std::string>> Programs; // by place below the program folder
    std::vector<RouteSegment> Final;
    std::vector<std::string> OffThePath; // of a program in one piece; they need the run's side limits

    bool operator==(const Made& other) const
    {
        return Went == other.Went && Report == other.Report && Programs == other.Programs;
    }
};

std::vector<std::string> LinesOf(const fs::path& place)
{
    const std::string text = FileBytes(place);
    std::vector<std::string> lines;
    std::size_t at = 0;
    for (std::size_t end = 0; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2)
        lines.push_back(text.substr(at, end - at));
    EXPECT_EQ(at, text.size()) << "a line without its end";
    return lines;
}

// Rows that name the scratch folder, and the time, differ from run to run.
std::vector<std::string> RowsOf(const Scene& place)
{
    std::vector<std::string> rows;
    for (std::string row : place.Lines) {
        const std::size_t at = row.find(place.Folder.string());
        if (at != std::string::npos)
            row.erase(at, place.Folder.string().size());
        rows.push_back(row.starts_with("Processed in ") ? "Processed" : row);
    }
    return rows;
}

Made Make(unsigned seed, bool tame)
{
    Scene place;
    RandomRouteDrawing random(Seed(seed), tame);
    const std::string drawing = random.Drawn();
    random.Settle();
    Made made;
    const AtStage final("final", [&] { made.Final = CurrentRoutes(); });
    made.Went = place.Convert(drawing);
    made.Report = RowsOf(place);
    for (const auto& entry : fs::recursive_directory_iterator(place.Programs))
        if (entry.is_regular_file() && entry.path().extension() != ".PRG" && !IsAgreement(entry.path()))
            made.Programs[fs::relative(entry.path(), place.Programs).string()] = LinesOf(entry.path());
    if (place.HasProgram())
        made.OffThePath = PathFaults(place.Program(), made.Final);
    return made;
}

// A block of seeds a test, so that they can run side by side; more drawings are more blocks.
constexpr unsigned BlockSize = 250;

class RandomRouteDrawings : public testing::TestWithParam<unsigned> {
  protected:
    const unsigned First = GetParam() * BlockSize + 1;
    const unsigned Last = First + BlockSize - 1;
};

TEST_P(RandomRouteDrawings, GiveTheSameTwiceAndWordsOfNumbers)
{
    int written = 0, failed = 0;
    for (unsigned seed = First; seed <= Last; ++seed) {
        const Made made = Make(seed, false);
        ASSERT_TRUE(made == Make(seed, false)) << RoundName(seed);
        ASSERT_FALSE(made.Report.empty()) << RoundName(seed);
        failed += made.Went ? 0 : 1;
        for (const auto& [name, lines] : made.Programs) {
            ++written;
            ASSERT_GE(lines.size(), 3U) << RoundName(seed) << " " << name;
            for (const std::string& line : lines)
                ASSERT_TRUE(line.find("nan") == std::string::npos && line.find("inf") == std::string::npos)
                    << RoundName(seed) << " " << line;
            for (const std::string& fault : ProgramFaults(lines))
                ASSERT_EQ(fault.find("is no number"), std::string::npos) << RoundName(seed) << " " << fault;
        }
    }
    EXPECT_GT(written, 100);
    EXPECT_LT(failed, 50);
}

TEST_P(RandomRouteDrawings, TameOnesCanBeRun)
{
    int routes = 0, arcs = 0;
    for (unsigned seed = First; seed <= Last; ++seed) {
        const Made made = Make(seed, true);
        ASSERT_TRUE(made.Went) << RoundName(seed);
        ASSERT_EQ(made.Programs.size(), 1U) << RoundName(seed);
        const std::vector<std::string>& lines = made.Programs.begin()->second;
        const std::vector<std::string> none;
        EXPECT_EQ(ProgramFaults(lines), none) << RoundName(seed);
        EXPECT_EQ(UnforcedFaults(made.Final), none) << RoundName(seed);
        EXPECT_EQ(made.OffThePath, none) << RoundName(seed);
        for (const RouteSegment& record : made.Final) {
            routes += record.Dir == -8 ? 1 : 0;
            arcs += record.Kind == 3 ? 1 : 0;
        }
    }
    EXPECT_GT(routes, 1000);
    EXPECT_GT(arcs, 1000);
}

INSTANTIATE_TEST_SUITE_P(Blocks, RandomRouteDrawings, testing::Range(0U, static_cast<unsigned>(Rounds(5))));

} // namespace
} // namespace kv::test
