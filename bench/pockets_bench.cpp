// Pockets and leads: the time must grow as the records do that are written, so the time per record
// stays as it is from a thousand records to the most that a drawing can have.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>

#include "routes/leads.h"
#include "routes/pockets.h"
#include "state/run.h"

namespace kv::bench {
namespace {

constexpr Single SheetWidth = 2800, SheetHeight = 2070; // mm

// Of the processor, in seconds: other work on the machine must not count as growth.
double ProcessorTime()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

RouteSegment& Add(Int kind, Single x, Single y)
{
    RouteSegment record;
    record.Kind = kind;
    record.X = x;
    record.Y = y;
    record.Z = 8;
    record.Pass = 1;
    record.Group = 1;
    record.ToolNo = 71;
    record.Comp = "G42 R4";
    return RouteSegments.Append(record);
}

void SetSheet()
{
    ResetRun();
    Run.RouteTolerance = 0.1F;
    Run.SideWidth[5] = Run.SideMaxX[5] = SheetWidth;
    Run.SideHeight[5] = Run.SideMaxY[5] = SheetHeight;
    Run.LayerTable = {"BORDER", "VBORE DRILLING", "GROOVE", "HBORE", "EXCAV"};
    Run.LeadLength = 20;
    Run.LeadsOn = True;
}

void AddLine(Single x1, Single y1, Single x2, Single y2, Single oscZ)
{
    Add(-1, x1, y1).OscZ = oscZ;
    Add(1, x2, y2).OscZ = oscZ;
}

// Start mark and four lines; the pitch is that which gives about so many records, eight for a loop.
void PutRectanglePocket(int records)
{
    SetSheet();
    const Single width = 2000, height = 1000;
    const Single pitch = height / 2 / (static_cast<Single>(records) / 8);
    const Single oscZ = -(pitch + 1);
    RouteSegment& mark = Add(-4, 100, 100);
    mark.Dir = -8;
    mark.OscZ = oscZ;
    Add(4, 101, 100).OscZ = oscZ;
    AddLine(100, 100, 100 + width, 100, oscZ);
    AddLine(100 + width, 100, 100 + width, 100 + height, oscZ);
    AddLine(100 + width, 100 + height, 100, 100 + height, oscZ);
    AddLine(100, 100 + height, 100, 100, oscZ);
}

void AddCorner(Single x1, Single y1, Single x2, Single y2, Single centreX, Single centreY, Single from,
               Single oscZ)
{
    RouteSegment& start = Add(-3, x1, y1);
    start.OscZ = oscZ;
    start.Aux1 = centreX;
    start.Aux2 = centreY;
    RouteSegment& end = Add(3, x2, y2);
    end.OscZ = oscZ;
    end.Dir = True;
    end.Aux1 = from;
    end.Aux2 = from + 90;
}

// A small pocket as kitchens have it, its corners the tool's or wider. Sixteen records for a loop.
void PutRoundedPocket(int records)
{
    SetSheet();
    const Single left = 100, bottom = 100, right = 500, top = 300, r = 20;
    const Single oscZ = -(100 / (static_cast<Single>(records) / 16) + 1);
    RouteSegment& mark = Add(-4, left + r, bottom);
    mark.Dir = -8;
    mark.OscZ = oscZ;
    Add(4, left + r + 1, bottom).OscZ = oscZ;
    AddLine(left + r, bottom, right - r, bottom, oscZ);
    AddCorner(right - r, bottom, right, bottom + r, right - r, bottom + r, 270, oscZ);
    AddLine(right, bottom + r, right, top - r, oscZ);
    AddCorner(right, top - r, right - r, top, right - r, top - r, 0, oscZ);
    AddLine(right - r, top, left + r, top, oscZ);
    AddCorner(left + r, top, left, top - r, left + r, top - r, 90, oscZ);
    AddLine(left, top - r, left, bottom + r, oscZ);
    AddCorner(left, bottom + r, left + r, bottom, left + r, bottom + r, 180, oscZ);
}

void PutCirclePocket(int records)
{
    SetSheet();
    RouteCircle circle;
    circle.X = circle.Y = 1000;
    circle.Radius = 900;
    circle.Pass = 1;
    circle.Comp = "G42 R4";
    circle.OscZ =
        -(900 / (static_cast<Single>(records) / 4) + 1); // a half turn, two records, for half a pitch
    RouteCircles.Append(circle);
}

// Closed squares, compensated, four lines each.
void PutContours(int records)
{
    SetSheet();
    for (int n = 0; n < records / 12; ++n) {
        const Single x = static_cast<Single>(n % 50) * 50 + 50;
        const Single y = static_cast<Single>(n / 50) * 30 + 50;
        AddLine(x, y, x + 20, y, 0);
        RouteSegments[RouteSegments.Last() - 1].Dir = -8;
        AddLine(x + 20, y, x + 20, y + 20, 0);
        AddLine(x + 20, y + 20, x, y + 20, 0);
        AddLine(x, y + 20, x, y, 0);
    }
}

void TimePerRecord(benchmark::State& state, void (*put)(int), void (*pass)())
{
    const int records = static_cast<int>(state.range(0));
    double shortest = 0;
    for (auto _ : state) {
        put(records);
        const double start = ProcessorTime();
        pass();
        const double seconds = ProcessorTime() - start;
        state.SetIterationTime(seconds);
        shortest = shortest == 0 ? seconds : std::min(shortest, seconds);
    }
    state.counters["records"] = RouteSegments.Last();
    state.counters["ns_per_record"] = shortest * 1e9 / RouteSegments.Last();
    ReleaseRunArrays();
}

void PocketsOfARectangle(benchmark::State& state)
{
    TimePerRecord(state, PutRectanglePocket, ExcavatePockets);
}

void PocketsOfARoundedRectangle(benchmark::State& state)
{
    TimePerRecord(state, PutRoundedPocket, ExcavatePockets);
}

void PocketsOfACircle(benchmark::State& state)
{
    TimePerRecord(state, PutCirclePocket, ExcavatePockets);
}

void LeadsOfContours(benchmark::State& state)
{
    TimePerRecord(state, PutContours, SynthesizeLeads);
}

void Sizes(benchmark::internal::Benchmark* bench)
{
    bench->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);
    for (const int records : {1000, 8000, 16000, 32000})
        bench->Arg(records);
}

BENCHMARK(PocketsOfARectangle)->Apply(Sizes);
// Of a pitch of 5 and of 1 mm.
BENCHMARK(PocketsOfARoundedRectangle)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond)
    ->Arg(320)
    ->Arg(1600);
BENCHMARK(PocketsOfACircle)->Apply(Sizes);
BENCHMARK(LeadsOfContours)->Apply(Sizes);

} // namespace
} // namespace kv::bench
