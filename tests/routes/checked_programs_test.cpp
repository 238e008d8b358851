// The checker over the example drawings with routes and over random ones: what a machine gets can be
// run, leads are tangent and on the tool's side.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "state/settings.h"
#include "support/dxf.h"
#include "support/program_checker.h"
#include "support/random_rounds.h"
#include "support/scene.h"

namespace kv {
namespace {

using namespace test;
using Faults = std::vector<std::string>;
using Records = std::vector<RouteSegment>;

struct Conversion {
    Faults Program; // lines
    Records Chained, Led, Final;
};

Conversion Converted(Scene& place, const std::string& drawing)
{
    Conversion result;
    Config.PrecisionMetric = "4"; // rounding takes nothing of the tolerance
    const AtStage chained("optimized", [&] { result.Chained = CurrentRoutes(); });
    const AtStage led("leads", [&] { result.Led = CurrentRoutes(); });
    const AtStage final("final", [&] { result.Final = CurrentRoutes(); });
    EXPECT_TRUE(place.Convert(drawing)) << place.ReportText();
    if (place.HasProgram())
        result.Program = place.Program();
    return result;
}

void ExpectSound(const Conversion& made, const std::string& name, const RouteCheck& check = {})
{
    EXPECT_EQ(ProgramFaults(made.Program), Faults()) << name;
    EXPECT_EQ(UnforcedFaults(made.Final, check), Faults()) << name;
    EXPECT_EQ(PathFaults(made.Program, made.Final, check), Faults()) << name;
}

// --- the examples

class CheckedExamples : public testing::TestWithParam<const char*> {};

TEST_P(CheckedExamples, CanBeRun)
{
    const std::string name = GetParam();
    std::ifstream file(std::string(KORVANTI_SOURCE_DIR) + "/examples/drawings/" + name + ".dxf",
                       std::ios::binary);
    const std::string drawing{std::istreambuf_iterator<char>(file), {}};
    Scene place;
    Config.LineLimit = "9999"; // in one piece
    const Conversion made = Converted(place, drawing);
    ASSERT_GT(made.Final.size(), 1U);
    ASSERT_FALSE(made.Program.empty());
    const bool pockets = name == "routed_door" || name == "countertop";
    ExpectSound(made, name, {.EndsAtPoints = !pockets, .Joined = !pockets});
}

INSTANTIATE_TEST_SUITE_P(All, CheckedExamples,
                         testing::Values("routed_door", "edge_views", "nested_sheet", "countertop",
                                         "t_lines"));

// --- random drawings

class RandomDrawing {
  public:
    explicit RandomDrawing(unsigned seed) : Numbers(seed) {}

    int Upto(int last) { return static_cast<int>(Numbers() % static_cast<unsigned>(last + 1)); }
    double Between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(Numbers);
    }

    // Lines, arcs, circles and polylines on few places of a grid, so that ends and rims meet.
    std::string Crowd()
    {
        const std::vector<std::string> layers = {"ROUTE1Z5T71L5", "ROUTE2Z6T72R4", "ROUTE3Z3T73",
                                                 "ROUTE4Z97T22L5"};
        const bool oneLayer = Upto(1) == 0;
        const double room = Upto(1) == 0 ? 100 : 400;
        std::string entities;
        for (int left = 2 + Upto(20); left > 0; --left)
            entities += Entity(layers[oneLayer ? 0 : static_cast<std::size_t>(Upto(3))], room);
        return entities;
    }
    // A star-shaped contour of lines, or of a polyline with or without bulges; either way round.
    std::string Contour(const std::string& layer)
    {
        const int corners = 3 + Upto(5);
        const int form = Upto(2);
        std::vector<Vertex> outline;
        for (int i = 0; i < corners; ++i) {
            const double angle = (i + Between(0.1, 0.9)) * 6.2831853 / corners;
            const double radius = Between(60, 120);
            outline.push_back({300 + radius * std::cos(angle), 200 + radius * std::sin(angle)});
            outline.back().Bulge = form == 2 && Upto(1) == 0 ? Between(-0.4, 0.4) : 0;
        }
        if (Upto(1) == 0)
            std::reverse(outline.begin(), outline.end());
        if (form > 0)
            return Polyline(layer, outline, Pair(70, "1"));
        std::string lines;
        for (std::size_t i = 0; i < outline.size(); ++i) {
            const Vertex& to = outline[(i + 1) % outline.size()];
            lines += Line(layer, outline[i].X, outline[i].Y, to.X, to.Y);
        }
        return lines;
    }

    // Some entities of one layer in a view of an edge: 62 along it and 16 across it.
    std::string InView(const std::string& layer, const Vertex& corner, bool upright = false)
    {
        const auto place = [&](double along, double across) {
            return upright ? Vertex{corner.X + across, corner.Y + along}
                           : Vertex{corner.X + along, corner.Y + across};
        };
        std::string entities;
        for (int left = 1 + Upto(3); left > 0; --left) {
            Vertex start = place(Upto(60), Upto(16));
            const Vertex end = place(61, Upto(16));
            if (Upto(1) == 0) {
                entities += Line(layer, start.X, start.Y, end.X, end.Y);
                continue;
            }
            const Vertex centre = place(30, 8);
            entities += Arc(layer, centre.X, centre.Y, 2 + Upto(6), 45 * Upto(7), 45 * Upto(7));
            start.Bulge = Between(-1, 1);
            entities += Polyline(layer, {start, end, place(0, 8)});
        }
        return entities;
    }

  private:
    double OnGrid(double room, double middle)
    {
        return std::round(Between(middle - room / 2, middle + room / 2) / 20) * 20;
    }
    std::string Entity(const std::string& layer, double room)
    {
        const double x = OnGrid(room, 300);
        const double y = OnGrid(room * 0.6, 200);
        const double radius = 10 * (1 + Upto(5));
        switch (Upto(3)) {
        case 0:
            return Line(layer, x, y, OnGrid(room, 300), OnGrid(room * 0.6, 200));
        case 1:
            return Arc(layer, x, y, radius, 45 * Upto(7), 45 * Upto(7));
        case 2:
            return Circle(layer, x, y, radius);
        default:
            break;
        }
        std::vector<Vertex> vertices = {{x, y}};
        for (int left = 1 + Upto(4); left > 0; --left) {
            vertices.push_back({OnGrid(room, 300), OnGrid(room * 0.6, 200)});
            vertices.back().Bulge = Upto(2) == 0 ? Between(-1.5, 1.5) : 0;
        }
        return Polyline(layer, vertices, Upto(1) == 0 ? Pair(70, "1") : "");
    }

    std::mt19937 Numbers;
};

const std::string RandomPanel = Rectangle("BORDERZ18", 0, 0, 600, 400);

TEST(RandomPrograms, CanBeRun)
{
    int moves = 0;
    for (int round = 1; round <= Rounds(200); ++round) {
        Scene place;
        Config.LeadS = static_cast<Int>(round % 2);
        RandomDrawing random(Seed(static_cast<unsigned>(round)));
        const Conversion made = Converted(place, Drawing(RandomPanel + random.Crowd()));
        ExpectSound(made, RoundName(round));
        moves += static_cast<int>(made.Program.size());
        if (testing::Test::HasFailure())
            break;
    }
    EXPECT_GT(moves, 5000);
}

TEST(RandomPrograms, RoutesOfEdgesCanBeRun)
{
    const std::string panel = Rectangle("BORDER", 200, 200, 600, 400) +
                              Rectangle("BORDER", 210, 700, 580, 18) +
                              Rectangle("BORDER", 205, 100, 590, 18) +
                              Rectangle("BORDER", 100, 215, 18, 370) + Rectangle("BORDER", 900, 220, 18, 360);
    std::array<int, 6> routes{};
    for (int round = 1; round <= Rounds(100); ++round) {
        Scene place;
        Config.RouteTolerance = "0.04"; // no arc's end is so near to a point of the grid
        RandomDrawing random(Seed(static_cast<unsigned>(round)));
        const Conversion made = Converted(place, Drawing(panel + random.InView("ROUTE1Z5T71", {220, 701}) +
                                                         random.InView("ROUTE2Z6T72", {600, 101}) +
                                                         random.InView("ROUTE3Z6T73", {101, 300}, true) +
                                                         random.InView("ROUTE4Z6T74", {901, 260}, true) +
                                                         random.InView("ROUTE5Z7T75", {500, 400})));
        ExpectSound(made, RoundName(round));
        for (const RouteSegment& record : made.Final)
            routes[static_cast<std::size_t>(record.Side)] += record.Dir == -8;
        if (testing::Test::HasFailure())
            break;
    }
    for (std::size_t side = 1; side <= 5; ++side)
        EXPECT_GT(routes[side], 50) << side;
}

std::vector<Records> RoutesOf(const Records& records)
{
    std::vector<Records> routes;
    for (std::size_t i = 1; i < records.size(); ++i) {
        if (records[i].Dir == -8 && records[i].Kind < 0)
            routes.push_back({RouteSegment{}});
        routes.back().push_back(records[i]);
    }
    return routes;
}

bool Apart(const RouteSegment& a, const RouteSegment& b)
{
    return std::hypot(a.X - b.X, a.Y - b.Y) > 0.01F;
}

TEST(RandomPrograms, LeadsAreTangentAndOutsideTheFinishedSide)
{
    int arcs = 0, straight = 0;
    for (int round = 1; round <= Rounds(300); ++round) {
        Scene place;
        Config.LeadS = 1;
        Config.LeadLength = "20";
        RandomDrawing random(Seed(static_cast<unsigned>(round)));
        const std::string layer = random.Upto(1) == 0 ? "ROUTE1Z5T71L5" : "ROUTE1Z5T71R5";
        const Conversion made = Converted(place, Drawing(RandomPanel + random.Contour(layer)));
        const std::string name = RoundName(round);
        ExpectSound(made, name);
        const std::vector<Records> before = RoutesOf(made.Chained);
        const std::vector<Records> after = RoutesOf(made.Led);
        ASSERT_EQ(before.size(), 1U) << name;
        ASSERT_EQ(after.size(), 1U) << name;
        EXPECT_TRUE(Apart(before[0][1], after[0][1])) << name;
        EXPECT_TRUE(Apart(before[0].back(), after[0].back())) << name;
        EXPECT_EQ(LeadFaults(after[0]), Faults()) << name;
        (after[0][1].Kind == -3 ? arcs : straight) += 1;
        if (testing::Test::HasFailure())
            break;
    }
    EXPECT_GT(arcs, 50);
    EXPECT_GT(straight, 50);
}

} // namespace
} // namespace kv
