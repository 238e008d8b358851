// A pocket of any shape beside the same offsetting by Clipper alone: outline and islands on Clipper's grid,
// moved inward by each distance that the pocket's loops have, corners kept sharp, no ways made of it. Both
// are timed in one run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "routes/pockets.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv::bench {
namespace {

constexpr double TwoPi = 2 * 3.14159265358979323846;
constexpr double Width = 1000, Height = 600, ToolRadius = 6, Pitch = 6; // mm
constexpr double ClipperGrid = 1e4;                                     // steps in a millimetre

struct OutlinePoint {
    double X = 0, Y = 0;
};
using Outline = std::vector<OutlinePoint>;

double SecondsOfTheProcessor()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// 1,000 vertices around 1,000 x 600 mm, with waves; twelve islands of 24 vertices.
std::vector<Outline> WavyPocket()
{
    std::vector<Outline> outlines(1);
    for (int i = 0; i < 1000; ++i) {
        const double angle = TwoPi * i / 1000;
        const double wave = 1 - 0.04 * (1 + std::sin(40 * angle));
        outlines[0].push_back(
            {Width / 2 * (1 + wave * std::cos(angle)), Height / 2 * (1 + wave * std::sin(angle))});
    }
    for (int island = 0; island < 12; ++island) {
        const double x = 200 + 200 * (island % 4), y = 180 + 120 * (island / 4);
        outlines.emplace_back();
        for (int i = 0; i < 24; ++i)
            outlines.back().push_back({x + 25 * std::cos(TwoPi * i / 24), y + 18 * std::sin(TwoPi * i / 24)});
    }
    return outlines;
}

RouteSegment PocketRecord(const OutlinePoint& point)
{
    RouteSegment record;
    record.X = static_cast<Single>(point.X);
    record.Y = static_cast<Single>(point.Y);
    record.Z = 8;
    record.Pass = 1;
    record.ToolNo = 71;
    record.Comp = "G41 R6";
    record.OscZ = static_cast<Single>(-(Pitch + 1));
    return record;
}

void PutOutlines(const std::vector<Outline>& outlines)
{
    ResetRun();
    Config.Pockets = "any";
    Run.RouteTolerance = 0.1F;
    Run.LayerTable = {"BORDER", "VBORE DRILLING", "GROOVE", "HBORE", "EXCAV"};
    for (const Outline& outline : outlines)
        for (std::size_t i = 0; i <= outline.size(); ++i) {
            RouteSegment record = PocketRecord(outline[i % outline.size()]);
            record.Kind = static_cast<Int>(i == 0 ? -5 : 5);
            record.Dir = static_cast<Int>(i == 0 ? -8 : 0);
            RouteSegments.Append(record);
        }
}

double SecondsOfThePocket(const std::vector<Outline>& outlines)
{
    PutOutlines(outlines);
    const double start = SecondsOfTheProcessor();
    ExcavatePockets();
    return SecondsOfTheProcessor() - start;
}

ClipperLib::Paths OnClippersGrid(const std::vector<Outline>& outlines)
{
    ClipperLib::Paths paths;
    for (const Outline& outline : outlines) {
        paths.emplace_back();
        for (const OutlinePoint& point : outline)
            paths.back().emplace_back(std::llround(point.X * ClipperGrid),
                                      std::llround(point.Y * ClipperGrid));
        if (ClipperLib::Orientation(paths.back()) != (paths.size() == 1))
            ClipperLib::ReversePath(paths.back());
    }
    return paths;
}

// Counts the points of all loops, so that none is left out by the compiler.
double SecondsOfClipper(const std::vector<Outline>& outlines, std::size_t& points)
{
    const ClipperLib::Paths paths = OnClippersGrid(outlines);
    const double start = SecondsOfTheProcessor();
    points = 0;
    for (int loop = 0;; ++loop) {
        ClipperLib::ClipperOffset offset(2, 0.002 * ClipperGrid); // arcs within two thousandths
        offset.AddPaths(paths, ClipperLib::jtRound, ClipperLib::etClosedPolygon);
        ClipperLib::Paths loops;
        offset.Execute(loops, -(ToolRadius + loop * Pitch) * ClipperGrid);
        if (loops.empty())
            break;
        for (const ClipperLib::Path& path : loops)
            points += path.size();
    }
    return SecondsOfTheProcessor() - start;
}

void PocketsOfAnyShape(benchmark::State& state)
{
    const std::vector<Outline> outlines = WavyPocket();
    double pocket = 0, clipper = 0;
    std::size_t points = 0;
    for (auto _ : state) {
        const double own = SecondsOfThePocket(outlines);
        const double peer = SecondsOfClipper(outlines, points);
        state.SetIterationTime(own);
        pocket = pocket == 0 ? own : std::min(pocket, own);
        clipper = clipper == 0 ? peer : std::min(clipper, peer);
    }
    state.counters["records"] = RouteSegments.Last();
    state.counters["clipper_points"] = static_cast<double>(points);
    state.counters["clipper_ms"] = clipper * 1000;
    state.counters["times_clipper"] = pocket / clipper;
    Config.Pockets.clear();
    ReleaseRunArrays();
}

BENCHMARK(PocketsOfAnyShape)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
