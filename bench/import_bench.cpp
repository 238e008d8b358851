// What the import costs: an ordinary drawing through its front, against the reader alone; and a drawing of
// blocks, opened, against the reader on the same entities without blocks. Both read the same memory files in
// turns; times are processor time and the smallest of each.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <string>

#include "bench_files.h"
#include "drawing/dxf_reader.h"
#include "import/import_reading.h"
#include "platform/paths.h"
#include "state/run.h"
#include "state/settings.h"

namespace kv::bench {
namespace {

constexpr std::size_t DrawingBytes = 100'000'000;

template <typename Read> double SecondsOf(const std::string& file, Read read)
{
    std::string path = FromHostPath(file);
    const std::clock_t start = std::clock();
    read(path);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void OrdinaryDrawing(benchmark::State& state)
{
    const std::string file = LargeDrawing(DrawingBytes, 3).string();
    Config.Import = state.range(0) == 0 ? "told" : "full";
    double reader = 1e9, front = 1e9;
    for (auto _ : state) {
        reader = std::min(reader, SecondsOf(file, ReadDrawing));
        front = std::min(front, SecondsOf(file, ReadAnyDrawing));
    }
    state.counters["reader_ms"] = reader * 1000;
    state.counters["front_ms"] = front * 1000;
    state.counters["times_reader"] = front / reader; // 1, within what a run differs
    Config.Import = "";
    ReleaseRunArrays();
}
BENCHMARK(OrdinaryDrawing)->Iterations(5)->ArgName("full")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

std::string CircleText(const std::string& layer, int x, int y)
{
    return "0\nCIRCLE\n8\n" + layer + "\n10\n" + std::to_string(x) + "\n20\n" + std::to_string(y) +
           "\n40\n4\n";
}

// As many bores, once in blocks of ten and once drawn plainly.
std::string BoresText(int count, bool inBlocks)
{
    std::string block = "0\nBLOCK\n8\n0\n2\nTEN\n10\n0\n20\n0\n", entities;
    for (int i = 0; i < 10; ++i)
        block += CircleText("IDLE", 32 * i, 0);
    for (int i = 0; i < count / 10; ++i) {
        if (inBlocks)
            entities += "0\nINSERT\n8\n0\n2\nTEN\n10\n" + std::to_string(i) + "\n20\n7\n";
        for (int k = 0; k < 10 && !inBlocks; ++k)
            entities += CircleText("IDLE", i + 32 * k, 7);
    }
    return "0\nSECTION\n2\nBLOCKS\n" + block + "0\nENDBLK\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" + entities +
           "0\nENDSEC\n0\nEOF\n";
}

void BlocksOpened(benchmark::State& state)
{
    const int bores = static_cast<int>(state.range(0));
    const std::filesystem::path folder = ScratchFolder();
    const std::string plain = (folder / "PLAIN.DXF").string(), blocks = (folder / "BLOCKS.DXF").string();
    std::ofstream(plain, std::ios::binary) << BoresText(bores, false);
    std::ofstream(blocks, std::ios::binary) << BoresText(bores, true);
    Config.Import = "full";
    double reader = 1e9, front = 1e9;
    Long entities = 0;
    for (auto _ : state) {
        reader = std::min(reader, SecondsOf(plain, ReadDrawing));
        entities = Entities.Last();
        front = std::min(front, SecondsOf(blocks, ReadAnyDrawing));
        if (Entities.Last() != entities)
            state.SkipWithError("not all blocks were opened");
    }
    state.counters["reader_ms"] = reader * 1000;
    state.counters["front_ms"] = front * 1000;
    state.counters["times_reader"] = front / reader;
    Config.Import = "";
    ReleaseRunArrays();
}
BENCHMARK(BlocksOpened)
    ->Iterations(5)
    ->ArgName("bores")
    ->Arg(30'000)
    ->Arg(300'000)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
