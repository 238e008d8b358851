// The drill tour against the plain rule that the tests keep, on the same bores in the same run. The
// order must be the same, bore by bore and bit by bit.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <vector>

#include "drilling/drill_tour.h"
#include "drilling/plain_drill_tour.h"
#include "state/run.h"

namespace kv::bench {
namespace {

constexpr Single PanelWidth = 2800, PanelHeight = 2070; // mm

double Seconds(const std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void SetPanel(Single width, Single height)
{
    ResetRun();
    Run.SideWidth[5] = width;
    Run.SideHeight[5] = height;
    Run.SideMaxX[5] = width;
    Run.SideMaxY[5] = height;
}

void AddBore(Single x, Single y)
{
    VBoreRecord bore;
    bore.X = x;
    bore.Y = y;
    bore.Depth = 13;
    bore.Diameter = static_cast<Single>(VBores.Last() % 97); // tells equal places apart
    bore.Group = 1;
    VBores.Append(bore);
}

void PutUniformBores(int count)
{
    SetPanel(PanelWidth, PanelHeight);
    std::uint32_t state = 12345;
    const auto next = [&state](Single below) {
        state = state * 1664525U + 1013904223U;
        return static_cast<Single>(state >> 8) / 16777216.0F * below;
    };
    for (int i = 0; i < count; ++i) {
        const Single x = next(PanelWidth);
        AddBore(x, next(PanelHeight));
    }
}

// System rows of nested cabinet sides: 32 mm along X, rows in pairs that stand 224 mm apart, as many
// sides above each other as it takes. Equal distances are everywhere.
void PutSystemRows(int count)
{
    const int holes = static_cast<int>(std::sqrt(static_cast<double>(count) * 2.5));
    const int rows = (count + holes - 1) / holes;
    SetPanel(static_cast<Single>(32 * holes + 112), static_cast<Single>(rows / 2 * 300 + 300));
    for (int i = 0; i < count; ++i) {
        const int row = i / holes;
        const int y = row / 2 * 300 + (row % 2 == 0 ? 37 : 261);
        AddBore(static_cast<Single>(72 + 32 * (i % holes)), static_cast<Single>(y));
    }
}

void PutBores(bool rows, int count)
{
    if (rows)
        PutSystemRows(count);
    else
        PutUniformBores(count);
}

std::vector<VBoreRecord> OrderNow()
{
    return {VBores.begin() + 1, VBores.end()};
}

bool SameOrder(const std::vector<VBoreRecord>& a, const std::vector<VBoreRecord>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const VBoreRecord& one, const VBoreRecord& other) {
                          return one.X == other.X && one.Y == other.Y && one.Diameter == other.Diameter;
                      });
}

void TourAgainstPlainRule(benchmark::State& state, bool rows)
{
    const int count = static_cast<int>(state.range(0));
    double ordered = 0;
    for (auto _ : state) {
        PutBores(rows, count);
        const auto start = std::chrono::steady_clock::now();
        OrderBores();
        ordered = Seconds(start);
        state.SetIterationTime(ordered);
    }
    const std::vector<VBoreRecord> order = OrderNow();
    PutBores(rows, count);
    const auto start = std::chrono::steady_clock::now();
    plain::OrderBores();
    const double plainSeconds = Seconds(start);
    if (!SameOrder(order, OrderNow()))
        state.SkipWithError("the order differs from the plain rule's");
    state.counters["plain_ms"] = plainSeconds * 1e3;
    state.counters["times_plain"] = plainSeconds / ordered; // at least 20 at 32,000
    ReleaseRunArrays();
}

void UniformBores(benchmark::State& state)
{
    TourAgainstPlainRule(state, false);
}

void SystemRowBores(benchmark::State& state)
{
    TourAgainstPlainRule(state, true);
}

BENCHMARK(UniformBores)
    ->UseManualTime()
    ->Iterations(3)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(SystemRowBores)
    ->UseManualTime()
    ->Iterations(3)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32000)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
