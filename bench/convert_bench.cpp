// The program as people start it: one typical panel of 200 entities as a whole process, and a
// thousand of them in one call on one core.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "bench_files.h"
#include "child_process.h"

namespace kv::bench {
namespace {

namespace fs = std::filesystem;

// A fresh copy of the example installation with `count` panels P0000 and on.
fs::path Installation(const std::string& name, int count)
{
    const fs::path home = ScratchFolder() / name;
    fs::remove_all(home);
    fs::copy(fs::path(KORVANTI_SOURCE_DIR) / "examples" / "install", home);
    fs::create_directories(home / "drawings");
    WriteTypicalPanel(home / "drawings" / "P0000.dxf");
    for (int i = 1; i < count; ++i) {
        const std::string digits = std::to_string(10000 + i).substr(1);
        fs::copy_file(home / "drawings" / "P0000.dxf", home / "drawings" / ("P" + digits + ".dxf"));
    }
    return home;
}

std::vector<std::string> ConvertCall(const fs::path& home)
{
    std::vector<std::string> words = {KORVANTI_CONSOLE, "--home", home.string(), "convert"};
    for (const fs::directory_entry& drawing : fs::directory_iterator(home / "drawings"))
        words.push_back(drawing.path().string());
    std::sort(words.begin() + 4, words.end());
    words.push_back("-o");
    words.push_back(home.string() + "/");
    return words;
}

std::size_t ProgramsIn(const fs::path& home)
{
    std::size_t programs = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(home / "SRG"))
        programs += entry.is_regular_file() ? 1 : 0;
    return programs;
}

void ConvertOnePanel(benchmark::State& state)
{
    const fs::path home = Installation("one", 1);
    const std::vector<std::string> call = ConvertCall(home);
    std::vector<double> times;
    for (auto _ : state) {
        const ChildUse use = RunProgram(call, false);
        if (!use.Ended) {
            state.SkipWithError("the conversion failed");
            break;
        }
        state.SetIterationTime(use.Seconds);
        times.push_back(use.Seconds);
    }
    std::sort(times.begin(), times.end());
    if (!times.empty())
        state.counters["median_ms"] = times[times.size() / 2] * 1e3;
}
BENCHMARK(ConvertOnePanel)->UseManualTime()->Iterations(51)->Unit(benchmark::kMillisecond);

void ConvertThousandPanels(benchmark::State& state)
{
    constexpr int Panels = 1000;
    double best = 0, bestOfCore = 0;
    for (auto _ : state) {
        const fs::path home = Installation("thousand", Panels);
        const ChildUse use = RunProgram(ConvertCall(home), true);
        if (!use.Ended || ProgramsIn(home) != Panels) {
            state.SkipWithError("not every panel was converted");
            break;
        }
        state.SetIterationTime(use.Seconds);
        best = std::max(best, Panels / use.Seconds);
        bestOfCore = std::max(bestOfCore, Panels / use.CpuSeconds);
    }
    state.counters["panels/s"] = best; // at least 500 on a machine with nothing else to do
    state.counters["panels/core_s"] = bestOfCore;
}
BENCHMARK(ConvertThousandPanels)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
