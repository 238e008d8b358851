// The tick that keeps the file list current, on a folder that has not changed: against a plain walk of the
// same folder by the standard library, which asks each file for the same two facts and compares nothing.
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench_files.h"
#include "platform/paths.h"
#include "shell/file_list.h"
#include "state/settings.h"

namespace kv::bench {
namespace {

namespace fs = std::filesystem;
using Steady = std::chrono::steady_clock;

double SecondsSince(Steady::time_point start)
{
    return std::chrono::duration<double>(Steady::now() - start).count();
}

fs::path FolderOfDrawings(std::int64_t count)
{
    fs::path folder = ScratchFolder() / ("list" + std::to_string(count));
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (std::int64_t i = 0; i < count; ++i)
        std::ofstream(folder / ("Panel " + std::to_string(i) + ".dxf")) << i;
    return folder;
}

double PlainWalk(const fs::path& folder)
{
    const Steady::time_point start = Steady::now();
    std::uintmax_t sum = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".dxf")
            sum += entry.file_size() +
                   static_cast<std::uintmax_t>(entry.last_write_time().time_since_epoch().count());
    }
    benchmark::DoNotOptimize(sum);
    return SecondsSince(start);
}

// "ratio": how often the plain walk's time the tick takes.
void RefreshOfAnUnchangedFolder(benchmark::State& state)
{
    const fs::path folder = FolderOfDrawings(state.range(0));
    Config = Settings{};
    Config.Winner90 = true;
    SourcePath(0) = FromHostPath(folder.string() + "/");
    FileList = FileListState{};
    RefreshFileList(); // builds the list
    double refresh = 0, plain = 0;
    for (auto _ : state) {
        plain += PlainWalk(folder);
        const Steady::time_point start = Steady::now();
        RefreshFileList();
        const double seconds = SecondsSince(start);
        refresh += seconds;
        state.SetIterationTime(seconds);
    }
    if (static_cast<std::int64_t>(FileList.Rows.size()) != state.range(0))
        state.SkipWithError("the list does not hold all files");
    state.counters["ratio"] = refresh / plain;
    fs::remove_all(folder);
    FileList = FileListState{};
}
BENCHMARK(RefreshOfAnUnchangedFolder)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(50000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// A click on a header, both orders in turn.
void SortByHeader(benchmark::State& state)
{
    const fs::path folder = FolderOfDrawings(state.range(0));
    Config = Settings{};
    Config.Winner90 = true;
    SourcePath(0) = FromHostPath(folder.string() + "/");
    FileList = FileListState{};
    RefreshFileList();
    constexpr int sizeColumn = 4;
    for (auto _ : state)
        SortFileList(sizeColumn);
    fs::remove_all(folder);
    FileList = FileListState{};
}
BENCHMARK(SortByHeader)->Arg(1000)->Arg(50000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
