// Faults planted in sound programs: each number of each line changed by a little and by much. Whether the
// wood changes is said by the areas of the tests, whether the fault is found by the check of the product.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "machine/program_reader.h"
#include "machine/tool_table.h"
#include "proof/proof.h"
#include "proof/shop.h"
#include "support/proof/region.h"
#include "support/random_rounds.h"

namespace kv {
namespace {

constexpr double LeastChange = 0.2; // mm

// A number in a line of a program, from its first figure.
struct NumberPlace {
    std::size_t Line = 0, At = 0, Length = 0;
    char Letter = ' '; // ahead of it
};

// Places, depths and angles; not the words that name tools, feeds and codes.
std::vector<NumberPlace> NumbersIn(const std::vector<std::string>& lines)
{
    std::vector<NumberPlace> places;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        for (std::size_t at = 0; at < line.size(); ++at) {
            if (std::string("XYZIJKUAQR").find(line[at]) == std::string::npos || line[0] != 'G')
                continue;
            std::size_t from = at + 1;
            if (line.compare(at, 4, "R54=") == 0)
                from = at + 4;
            const std::size_t end = std::min(line.find_first_not_of("-.0123456789", from), line.size());
            if (end > from)
                places.push_back({i, from, end - from, line[at]});
        }
    }
    return places;
}

std::string TextWith(std::vector<std::string> lines, const NumberPlace& place, double change)
{
    std::string& line = lines[place.Line];
    const double value = std::stod(line.substr(place.At, place.Length)) + change;
    char text[40];
    std::snprintf(text, sizeof text, "%.4f", value);
    line.replace(place.At, place.Length, text);
    std::string all;
    for (const std::string& one : lines)
        all += one + "\r\n";
    return all;
}

std::string AllOf(const std::vector<std::string>& lines)
{
    std::string all;
    for (const std::string& one : lines)
        all += one + "\r\n";
    return all;
}

// --- does the wood change?

bool BoresDiffer(const MachineSteps& a, const MachineSteps& b)
{
    if (a.Bores.size() != b.Bores.size())
        return true;
    for (std::size_t i = 0; i < a.Bores.size(); ++i)
        if (a.Bores[i].On != b.Bores[i].On || Between(a.Bores[i].At, b.Bores[i].At) > LeastChange ||
            std::fabs(a.Bores[i].Depth - b.Bores[i].Depth) > LeastChange ||
            std::fabs(a.Bores[i].Diameter - b.Bores[i].Diameter) > LeastChange)
            return true;
    return false;
}

test::Region WoodOfPanel(const MachineSteps& steps, Plane on)
{
    if (on == Plane::Surface)
        return test::BoxOf({0, 0}, {steps.Length, steps.Width});
    const bool alongX = on == Plane::Edge1 || on == Plane::Edge2;
    return test::BoxOf({0, 0}, {alongX ? steps.Length : steps.Width, steps.Thickness});
}

// As wide as the kerf of the settings.
test::Region SawnBy(const MachineSteps& steps, double depth)
{
    constexpr double kerf = 4; // mm
    std::vector<test::Region> bands;
    for (const SawCut& saw : steps.Saws)
        if (saw.Depth >= depth)
            bands.push_back(
                test::BoxOf({std::min(saw.From.X, saw.To.X) - (saw.From.X == saw.To.X ? kerf / 2 : 0),
                             std::min(saw.From.Y, saw.To.Y) - (saw.From.X == saw.To.X ? 0 : kerf / 2)},
                            {std::max(saw.From.X, saw.To.X) + (saw.From.X == saw.To.X ? kerf / 2 : 0),
                             std::max(saw.From.Y, saw.To.Y) + (saw.From.X == saw.To.X ? 0 : kerf / 2)}));
    return test::Intersection(test::Union(bands), WoodOfPanel(steps, Plane::Surface));
}

bool SawsDiffer(const MachineSteps& a, const MachineSteps& b)
{
    for (const auto& [one, other] : {std::pair{&a, &b}, std::pair{&b, &a}})
        for (const SawCut& saw : one->Saws)
            if (test::IsWiderThan(
                    test::Difference(SawnBy(*one, saw.Depth), SawnBy(*other, saw.Depth - LeastChange)),
                    LeastChange))
                return true;
    return false;
}

// By what is cut at least as deep as each depth of either program.
bool RoutesDiffer(const MachineSteps& a, const MachineSteps& b)
{
    std::set<double> depths;
    for (const MachineSteps* const steps : {&a, &b})
        for (const RouterCut& cut : steps->Cuts)
            for (const Move& move : cut.Moves)
                depths.insert(std::max(move.DepthFrom, move.DepthTo));
    for (const double depth : depths) {
        test::Sweep deep, lessDeep;
        deep.Depth = depth;
        lessDeep.Depth = depth - LeastChange;
        for (const auto& [one, other] : {std::pair{&a, &b}, std::pair{&b, &a}}) {
            const std::map<Plane, test::Region> cut = test::SweptAreas(*one, deep);
            std::map<Plane, test::Region> also = test::SweptAreas(*other, lessDeep);
            for (const auto& [on, region] : cut) {
                const test::Region changed =
                    test::Intersection(test::Difference(region, also[on]), WoodOfPanel(a, on));
                if (test::IsWiderThan(changed, LeastChange))
                    return true;
            }
        }
    }
    return false;
}

// --- the shop

// A little at every number and much at every fourth; all of it with KORVANTI_RANDOM.
std::vector<double> ChangesOf(std::size_t number)
{
    if (test::Rounds(1) > 1)
        return {0.3, -0.3, 7, -7};
    std::vector<double> changes = {number % 2 == 0 ? 0.3 : -0.3};
    if (number % 4 == 0)
        changes.push_back(number % 8 == 0 ? 7 : -7);
    return changes;
}

struct Planting : testing::Test {
    Demands Asked;
    int Changed = 0, Found = 0, Planted = 0;

    static bool IsInLead(const MachineSteps& steps, std::size_t line)
    {
        // Of a cut with compensation the first and last move may be leads, in wood that falls off.
        for (const RouterCut& cut : steps.Cuts) {
            if (cut.Side == 0 || cut.Moves.empty())
                continue;
            const std::set<std::size_t> ends = {cut.Line, cut.Moves.front().Line, cut.Moves.back().Line,
                                                cut.Moves.back().Line - 1};
            if (ends.count(line) > 0)
                return true;
        }
        return false;
    }

    void ExpectFound(int leastChanged)
    {
        RecordProperty("planted", Planted);
        RecordProperty("changed", Changed);
        RecordProperty("found", Found);
        std::cout << Planted << " planted, " << Changed << " change the wood, " << Found << " found\n";
        EXPECT_GT(Changed, leastChanged);
        EXPECT_GE(Found, Changed * 99 / 100);
    }

    void Try(const std::string& drawing, bool withLeads)
    {
        test::Shop shop(test::Control::Cnc90);
        Config.SawKerf = "4";
        const test::AtStage border("border", [this] { Asked = DemandsOfRun(); });
        ASSERT_TRUE(shop.Home.Convert(drawing)) << shop.Home.ReportText();
        const std::vector<std::string> lines = shop.Home.Program();
        const MachineSteps sound = ReadProgram(AllOf(lines));
        for (const Finding& finding : Prove(Asked, {sound}, UsualTolerance).Findings)
            ADD_FAILURE() << FindingName(finding.Kind) << " " << finding.What << " at X" << finding.At.X
                          << " Y" << finding.At.Y << " line " << finding.Line;
        std::size_t number = 0;
        for (const NumberPlace& place : NumbersIn(lines))
            for (const double change : ChangesOf(++number)) {
                if (withLeads && IsInLead(sound, place.Line + 1))
                    continue;
                ++Planted;
                const std::string text = TextWith(lines, place, change);
                const MachineSteps steps = ReadProgram(text);
                const bool isUnread = steps.UnreadCount > sound.UnreadCount;
                if (!isUnread && !BoresDiffer(sound, steps) && !SawsDiffer(sound, steps) &&
                    !RoutesDiffer(sound, steps))
                    continue;
                ++Changed;
                if (!Prove(Asked, {steps}, UsualTolerance).Findings.empty())
                    ++Found;
                else
                    std::cout << "not found: " << lines[place.Line] << ", " << place.Letter << " by "
                              << change << "\n";
            }
    }
};

std::string LineWithoutWord(std::string line, const std::string& word)
{
    const std::size_t at = line.find(word);
    const std::size_t end = std::min(line.find_first_not_of("0123456789.", at + word.size()), line.size());
    return at == std::string::npos ? line : line.erase(at, end - at);
}

std::string Example(const std::string& name)
{
    std::ifstream file(std::string(KORVANTI_SOURCE_DIR) + "/examples/drawings/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST_F(Planting, NearlyAllFaultsOfBoredPanelsAreFound)
{
    for (const char* const name : {"side.dxf", "bottom.dxf", "door.dxf"})
        Try(Example(name), false);
    ExpectFound(200);
}

TEST_F(Planting, NearlyAllFaultsOfRoutedEdgesAreFound)
{
    Try(Example("edge_views.dxf"), false);
    ExpectFound(15);
}

TEST_F(Planting, NearlyAllFaultsOfContoursAreFound)
{
    Try(Example("countertop.dxf"), true);
    ExpectFound(80);
}

// The wood is the same; what the machine would do is not.
TEST_F(Planting, FaultsThatTheWoodDoesNotShowAreAllFound)
{
    test::Shop shop(test::Control::Cnc90);
    const test::AtStage border("border", [this] { Asked = DemandsOfRun(); });
    ASSERT_TRUE(shop.Home.Convert(Example("countertop.dxf"))) << shop.Home.ReportText();
    const std::vector<std::string> lines = shop.Home.Program();
    ToolTable tools; // every tool of the program is known
    for (const RouterCut& cut : ReadProgram(AllOf(lines)).Cuts)
        tools.Shop[ToolNumberOf(cut.Tool)];
    const auto findings = [&](const std::vector<std::string>& text) {
        return Prove(Asked, {ReadProgram(AllOf(text))}, UsualTolerance, tools).Findings;
    };
    ASSERT_TRUE(findings(lines).empty());
    int feeds = 0, numbers = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::vector<std::string> planted = lines;
        if (lines[i].starts_with("G88") && lines[i].find("T01") != std::string::npos) {
            planted[i] = LineWithoutWord(lines[i], "T01");
            planted[i].insert(lines[i].find("T01"), "T0198");
            const std::vector<Finding> found = findings(planted);
            ++numbers;
            EXPECT_TRUE(std::any_of(found.begin(), found.end(), [i](const Finding& finding) {
                return finding.Kind == FindingKind::UnknownTool && finding.Line == i + 1;
            })) << planted[i];
        } else if (lines[i].find("F") != std::string::npos && !lines[i].starts_with("G8") && i > 1) {
            if (++feeds % 3 != 0 && test::Rounds(1) == 1)
                continue;
            planted[i] = LineWithoutWord(lines[i], "F");
            const std::vector<Finding> found = findings(planted);
            ASSERT_EQ(found.size(), 1U) << planted[i];
            EXPECT_EQ(found[0].Kind, FindingKind::NoFeed);
        }
    }
    EXPECT_GT(feeds, 60);
    EXPECT_GT(numbers, 2);
}

} // namespace
} // namespace kv
