// The drawing reader on 100 MB, against dxflib and against the least that any reader must do: a scan
// of the same file for its line ends. All three read the same file from the memory file system, in
// turns. Times are processor time and the smallest of each, so that a busy machine tells the same.
#include <benchmark/benchmark.h>

#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

#include "bench_files.h"
#include "child_process.h"
#include "drawing/dxf_reader.h"
#include "platform/paths.h"
#include "state/run.h"

namespace kv::bench {
namespace {

constexpr std::size_t DrawingBytes = 100'000'000;
constexpr std::size_t ScanBlock = 1 << 20;

double ProcessorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Counts what dxflib hands over and keeps nothing.
struct Counter : DL_CreationAdapter {
    long Lines = 0, Circles = 0, Vertices = 0;
    void addLine(const DL_LineData&) override { ++Lines; }
    void addCircle(const DL_CircleData&) override { ++Circles; }
    void addVertex(const DL_VertexData&) override { ++Vertices; }
};

double ReadByKorvanti(const std::string& file)
{
    std::string path = FromHostPath(file);
    const double start = ProcessorSeconds();
    ReadDrawing(path);
    return ProcessorSeconds() - start;
}

double ReadByDxflib(const std::string& file, Counter& counter)
{
    const double start = ProcessorSeconds();
    DL_Dxf reader;
    if (!reader.in(file, &counter))
        return 0;
    return ProcessorSeconds() - start;
}

double ScanLineEnds(const std::string& file, long& lines)
{
    std::vector<char> block(ScanBlock);
    const double start = ProcessorSeconds();
    std::ifstream input(file, std::ios::binary);
    input.rdbuf()->pubsetbuf(nullptr, 0); // straight into the block
    while (input.read(block.data(), static_cast<std::streamsize>(block.size())) || input.gcount() > 0) {
        const char* at = block.data();
        const char* const end = at + input.gcount();
        while (const void* feed = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
            ++lines;
            at = static_cast<const char*>(feed) + 1;
        }
    }
    return ProcessorSeconds() - start;
}

bool SameCounts(const Counter& counter)
{
    long lines = 0, circles = 0, vertices = 0;
    for (const DxfEntity& entity : Entities) {
        lines += entity.Kind == "LINE";
        circles += entity.Kind == "CIRCLE";
        vertices += entity.Kind == "VERTEX";
    }
    return lines > 0 && lines == counter.Lines && circles == counter.Circles && vertices == counter.Vertices;
}

void ReaderAgainstPeers(benchmark::State& state)
{
    const std::string file = LargeDrawing(DrawingBytes, static_cast<int>(state.range(0))).string();
    const double megabytes = static_cast<double>(std::filesystem::file_size(file)) / 1e6;
    double reader = 1e9, scan = 1e9, dxflib = 1e9; // seconds
    long lines = 0;
    for (auto _ : state) {
        Counter counter;
        const double seconds = ReadByKorvanti(file);
        state.SetIterationTime(seconds);
        reader = std::min({reader, seconds, ReadByKorvanti(file), ReadByKorvanti(file)});
        scan =
            std::min({scan, ScanLineEnds(file, lines), ScanLineEnds(file, lines), ScanLineEnds(file, lines)});
        dxflib = std::min(dxflib, ReadByDxflib(file, counter));
        if (!SameCounts(counter))
            state.SkipWithError("dxflib and the reader do not see the same entities");
    }
    if (lines <= 0)
        state.SkipWithError("the scan found no line");
    state.counters["MB"] = megabytes;
    state.counters["reader_MB/s"] = megabytes / reader;
    state.counters["scan_MB/s"] = megabytes / scan;
    state.counters["dxflib_MB/s"] = megabytes / dxflib;
    state.counters["times_dxflib"] = dxflib / reader; // at least 10
    state.counters["times_scan"] = reader / scan;     // at most 6
    ReleaseRunArrays();
}
BENCHMARK(ReaderAgainstPeers)
    ->UseManualTime()
    ->Iterations(3)
    ->ArgName("decimals")
    ->Arg(3)
    ->Arg(12)
    ->Unit(benchmark::kMillisecond);

void ReaderPeakMemory(benchmark::State& state)
{
    const std::string file = LargeDrawing(DrawingBytes, static_cast<int>(state.range(0))).string();
    ChildUse idle, reading;
    for (auto _ : state) {
        idle = RunInChild([] { return 0.0; });
        reading = RunInChild([&file] {
            ReadByKorvanti(file);
            return static_cast<double>(Entities.Last()) * sizeof(DxfEntity);
        });
    }
    if (!idle.Ended || !reading.Ended || reading.Answer <= 0)
        state.SkipWithError("a child did not end well");
    const double used = reading.PeakBytes - idle.PeakBytes;
    state.counters["array_MB"] = reading.Answer / 1e6;
    state.counters["peak_MB"] = used / 1e6;
    state.counters["times_array"] = used / reading.Answer; // at most 1.5
}
BENCHMARK(ReaderPeakMemory)->Iterations(1)->ArgName("decimals")->Arg(3)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
