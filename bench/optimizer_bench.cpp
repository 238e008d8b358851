// Duplicates, chain search and gathering against the plain rules that the tests keep, on the same bores
// in the same run. The list must be the same, bore by bore and bit by bit.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <vector>

#include "drilling/drill_head.h"
#include "drilling/hole_chaining.h"
#include "drilling/plain_hole_chaining.h"
#include "drilling/same_bores.h"
#include "state/run.h"

namespace kv::bench {
namespace {

double Seconds(const std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Eleven drills along X and six along Y, all of 5 mm.
void PutHead()
{
    DrillParameters.assign(1, {});
    for (int n = 1; n <= 17; ++n) {
        DrillParameter drill;
        drill.X = static_cast<Single>(n <= 11 ? 32 * n : 32 * 11);
        drill.Y = static_cast<Single>(n <= 11 ? 0 : 32 * (n - 11));
        drill.Diameter = 5;
        drill.Kind = VerticalDrill;
        DrillParameters.push_back(drill);
    }
    FillDrillHead();
    ClassifyHeadRows();
}

void AddBore(Single x, Single y)
{
    VBoreRecord bore;
    bore.X = x;
    bore.Y = y;
    bore.Depth = static_cast<Single>(VBores.Last() % 97); // tells equal places apart
    bore.Diameter = 5;
    VBores.Append(bore);
}

std::uint32_t NextRandom(std::uint32_t& state)
{
    state = state * 1664525U + 1013904223U;
    return state >> 8;
}

void PutUniformBores(int count)
{
    std::uint32_t state = 12345;
    const auto next = [&state](Single below) {
        return static_cast<Single>(NextRandom(state)) / 16777216.0F * below;
    };
    for (int i = 0; i < count; ++i) {
        const Single x = next(2800);
        AddBore(x, next(2070));
    }
}

// System rows of nested cabinet sides: 32 mm along X, rows in pairs 224 mm apart.
void PutSystemRows(int count)
{
    const int holes = static_cast<int>(std::sqrt(static_cast<double>(count) * 2.5));
    for (int i = 0; i < count; ++i) {
        const int row = i / holes;
        const int y = row / 2 * 400 + (row % 2 == 0 ? 37 : 261);
        AddBore(static_cast<Single>(72 + 32 * (i % holes)), static_cast<Single>(y));
    }
}

// The same, drawn in no order at all: chains stand among each other.
void PutShuffledRows(int count)
{
    PutSystemRows(count);
    std::uint32_t state = 777;
    for (Long i = VBores.Last(); i > 1; --i)
        std::swap(VBores[i],
                  VBores[1 + static_cast<Long>(NextRandom(state) % static_cast<std::uint32_t>(i))]);
}

void ChainBores()
{
    RemoveDuplicateBores();
    ClearChains();
    FindChains();
    CountChainSizes();
    GatherChains();
}

void ChainsAgainstPlainRules(benchmark::State& state, void (*put)(int))
{
    const int count = static_cast<int>(state.range(0));
    ResetRun();
    PutHead();
    double taken = 0;
    for (auto _ : state) {
        VBores.Clear();
        put(count);
        const auto start = std::chrono::steady_clock::now();
        ChainBores();
        taken = Seconds(start);
        state.SetIterationTime(taken);
    }
    const plain::BoreList chained = plain::BoresNow();
    VBores.Clear();
    put(count);
    plain::BoreList expected = plain::BoresNow();
    const auto start = std::chrono::steady_clock::now();
    plain::ChainBores(expected);
    const double plainSeconds = Seconds(start);
    if (FirstDifference(chained, expected) != -1)
        state.SkipWithError("the list differs from the plain rules'");
    int members = 0;
    for (const VBoreRecord& bore : chained)
        members += bore.Group != 0 ? 1 : 0;
    state.counters["in_chains"] = members;
    state.counters["plain_ms"] = plainSeconds * 1e3;
    state.counters["times_plain"] = plainSeconds / taken; // at 32,000 at least 50 random, 10 in rows
    ReleaseRunArrays();
}

void ChainsOfUniformBores(benchmark::State& state)
{
    ChainsAgainstPlainRules(state, PutUniformBores);
}

void ChainsOfSystemRows(benchmark::State& state)
{
    ChainsAgainstPlainRules(state, PutSystemRows);
}

void ChainsOfShuffledRows(benchmark::State& state)
{
    ChainsAgainstPlainRules(state, PutShuffledRows);
}

BENCHMARK(ChainsOfUniformBores)
    ->UseManualTime()
    ->Iterations(3)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ChainsOfSystemRows)
    ->UseManualTime()
    ->Iterations(3)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ChainsOfShuffledRows) // more take the plain rules hours
    ->UseManualTime()
    ->Iterations(3)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
