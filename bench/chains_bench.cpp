// The chaining of routes against the plain rules that the tests keep, on the same records in the same
// run: order, linking, circles on rims, nearest neighbour. The records must be the same, field by
// field and bit by bit.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <vector>

#include "routes/plain_route_chains.h"
#include "routes/route_chains.h"
#include "state/run.h"
#include "state/settings.h"
#include "support/same_records.h"

namespace kv::bench {
namespace {

constexpr Single SheetWidth = 2800, SheetHeight = 2070; // mm

double Seconds(const std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Dice {
    std::uint32_t State = 12345;
    Single Below(Single limit)
    {
        State = State * 1664525U + 1013904223U;
        return static_cast<Single>(State >> 8) / 16777216.0F * limit;
    }
};

RouteSegment Record(Int kind, Single x, Single y)
{
    RouteSegment record;
    record.Kind = kind;
    record.X = x;
    record.Y = y;
    record.Z = 18;
    record.Pass = 1;
    record.Group = 1;
    record.ToolNo = 71;
    return record;
}

void AddLine(Single x1, Single y1, Single x2, Single y2)
{
    RouteSegments.Append(Record(-1, x1, y1));
    RouteSegments.Append(Record(1, x2, y2));
}

void AddCircle(Single x, Single y, Single radius)
{
    RouteCircle circle;
    circle.X = x;
    circle.Y = y;
    circle.Radius = radius;
    circle.Z = 18;
    circle.Pass = 1;
    circle.Group = 1;
    circle.ToolNo = 71;
    RouteCircles.Append(circle);
}

// Parts in rows, each an outline of four lines out of order and a line that ends on a circle's rim:
// ten records and a circle that becomes two.
void PutNestedSheet(int records)
{
    const int parts = records / 12;
    const int columns = std::max(1, static_cast<int>(std::sqrt(static_cast<double>(parts) * 1.35)));
    const Single pitch = 100;
    for (int part = 0; part < parts; ++part) {
        const Single x = static_cast<Single>(part % columns) * pitch + 5;
        const Single y = static_cast<Single>(part / columns) * pitch + 5;
        AddLine(x + 90, y, x + 90, y + 90);
        AddLine(x, y, x + 90, y);
        AddLine(x, y + 90, x, y);
        AddLine(x + 90, y + 90, x, y + 90);
        AddLine(x + 20, y + 45, x + 35, y + 45);
        AddCircle(x + 50, y + 45, 15);
    }
}

// Parallel lines, each drawn in ten pieces, every second one the other way round.
void PutHatch(int records)
{
    const int lines = records / 20;
    for (int line = 0; line < lines; ++line) {
        const Single y = static_cast<Single>(line) * 0.5F + 1;
        for (int piece = 0; piece < 10; ++piece) {
            const Single x = static_cast<Single>(piece * 200);
            if (line % 2 == 0)
                AddLine(x, y, x + 200, y);
            else
                AddLine(x + 200, y, x, y);
        }
    }
}

// Lines anywhere, a circle for every tenth.
void PutRandom(int records)
{
    Dice dice;
    for (int n = 0; n < records / 2; ++n) {
        if (n % 10 == 9) {
            const Single x = dice.Below(SheetWidth);
            AddCircle(x, dice.Below(SheetHeight), 2 + dice.Below(100));
            continue;
        }
        const Single x = dice.Below(SheetWidth);
        const Single y = dice.Below(SheetHeight);
        const Single dx = dice.Below(60) - 30;
        AddLine(x, y, x + dx, y + dice.Below(60) - 30);
    }
}

void PutRoutes(void (*put)(int), int records)
{
    ResetRun();
    Run.RouteTolerance = 0.1F;
    Run.SideWidth[5] = SheetWidth;
    Run.SideHeight[5] = SheetHeight;
    put(records);
}

// Chains whatever stands in the arrays by the plain rules; true when the real pass gave the same.
bool PlainGivesTheSame(const std::vector<RouteSegment>& chained, double& seconds)
{
    plain::Routes routes;
    routes.Segments.assign(RouteSegments.begin(), RouteSegments.end());
    routes.Circles.assign(RouteCircles.begin(), RouteCircles.end());
    const auto start = std::chrono::steady_clock::now();
    plain::ChainRoutes(routes);
    seconds = Seconds(start);
    return SameRecords(routes.Segments, chained);
}

void ChainsAgainstPlainRules(benchmark::State& state, void (*put)(int))
{
    const int records = static_cast<int>(state.range(0));
    double chaining = 0;
    for (auto _ : state) {
        PutRoutes(put, records);
        const auto start = std::chrono::steady_clock::now();
        if (!ChainRoutes())
            state.SkipWithError("aborted");
        chaining = Seconds(start);
        state.SetIterationTime(chaining);
    }
    const std::vector<RouteSegment> chained(RouteSegments.begin(), RouteSegments.end());
    PutRoutes(put, records);
    double plainSeconds = 0;
    if (!PlainGivesTheSame(chained, plainSeconds))
        state.SkipWithError("the records differ from the plain rules'");
    state.counters["plain_ms"] = plainSeconds * 1e3;
    state.counters["times_plain"] = plainSeconds / chaining; // at least 50 at 32,000
    ReleaseRunArrays();
}

void ChainsOfNestedSheet(benchmark::State& state)
{
    ChainsAgainstPlainRules(state, PutNestedSheet);
}

void ChainsOfHatch(benchmark::State& state)
{
    ChainsAgainstPlainRules(state, PutHatch);
}

void ChainsOfRandomLines(benchmark::State& state)
{
    ChainsAgainstPlainRules(state, PutRandom);
}

void Sizes(benchmark::internal::Benchmark* bench)
{
    bench->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
    for (const int records : {1000, 8000, 10000, 32000})
        bench->Arg(records);
}

BENCHMARK(ChainsOfNestedSheet)->Apply(Sizes);
BENCHMARK(ChainsOfHatch)->Apply(Sizes);
BENCHMARK(ChainsOfRandomLines)->Apply(Sizes);

} // namespace
} // namespace kv::bench
