// Thousands of random drawings with routes: none crashes, each gives the same twice, all words are
// numbers; those that can be cut as drawn give programs that a machine can run.
#include <filesystem>
#include <map>

#include <gtest/gtest.h>

#include "routes/random_routes.h"
#include "support/program_checker.h"
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
    RandomRouteDrawing random(seed, tame);
    const std::string drawing = random.Drawn();
    random.Settle();
    Made made;
    const AtStage final("final", [&] { made.Final = CurrentRoutes(); });
    made.Went = place.Convert(drawing);
    made.Report = RowsOf(place);
    for (const auto& entry : fs::recursive_directory_iterator(place.Programs))
        if (entry.is_regular_file() && entry.path().extension() != ".PRG")
            made.Programs[fs::relative(entry.path(), place.Programs).string()] = LinesOf(entry.path());
    if (place.HasProgram())
        made.OffThePath = PathFaults(place.Program(), made.Final);
    return made;
}

// A block of seeds a test, so that they can run side by side.
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
        ASSERT_TRUE(made == Make(seed, false)) << "seed " << seed;
        ASSERT_FALSE(made.Report.empty()) << "seed " << seed;
        failed += made.Went ? 0 : 1;
        for (const auto& [name, lines] : made.Programs) {
            ++written;
            ASSERT_GE(lines.size(), 3U) << "seed " << seed << " " << name;
            for (const std::string& line : lines)
                ASSERT_TRUE(line.find("nan") == std::string::npos && line.find("inf") == std::string::npos)
                    << "seed " << seed << " " << line;
            for (const std::string& fault : ProgramFaults(lines))
                ASSERT_EQ(fault.find("is no number"), std::string::npos) << "seed " << seed << " " << fault;
        }
    }
    EXPECT_GT(written, 100);
    EXPECT_LT(failed, 50);
}

bool SameCentre(const RouteSegment& a, const RouteSegment& b)
{
    return a.Kind == -3 && b.Kind == -3 && a.Aux1 == b.Aux1 && a.Aux2 == b.Aux2;
}

// Left out: the arc that goes on round a joined circle to the next path, where that path begins at the
// very place at which the circle ends, save for the last bits of an arc's drawn end.
std::vector<std::string> UnforcedFaults(const std::vector<RouteSegment>& records)
{
    std::vector<std::string> faults;
    for (const std::string& fault : RouteFaults(records)) {
        const auto record = static_cast<std::size_t>(std::stoul(fault.substr(7)));
        const bool goesOn = record > 2 && SameCentre(records[record - 2], records[record]);
        if (!goesOn || !fault.ends_with("an arc of no length"))
            faults.push_back(fault);
    }
    return faults;
}

TEST_P(RandomRouteDrawings, TameOnesCanBeRun)
{
    int routes = 0, arcs = 0;
    for (unsigned seed = First; seed <= Last; ++seed) {
        const Made made = Make(seed, true);
        ASSERT_TRUE(made.Went) << "seed " << seed;
        ASSERT_EQ(made.Programs.size(), 1U) << "seed " << seed;
        const std::vector<std::string>& lines = made.Programs.begin()->second;
        const std::vector<std::string> none;
        EXPECT_EQ(ProgramFaults(lines), none) << "seed " << seed;
        EXPECT_EQ(UnforcedFaults(made.Final), none) << "seed " << seed;
        EXPECT_EQ(made.OffThePath, none) << "seed " << seed;
        for (const RouteSegment& record : made.Final) {
            routes += record.Dir == -8 ? 1 : 0;
            arcs += record.Kind == 3 ? 1 : 0;
        }
    }
    EXPECT_GT(routes, 1000);
    EXPECT_GT(arcs, 1000);
}

INSTANTIATE_TEST_SUITE_P(Blocks, RandomRouteDrawings, testing::Range(0U, 5U));

} // namespace
} // namespace kv::test
