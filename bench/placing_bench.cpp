// Programs on their way to an installation: a long list against a short one, a full installation against an
// empty one, and one panel against a plain C program that reads, writes, flushes and moves the same files.
// The goals are ratios.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench_files.h"
#include "child_process.h"

namespace kv::bench {
namespace {

namespace fs = std::filesystem;

constexpr int OldRecords = 100000, OldPrograms = 50000;

std::string Digits(int number, int width)
{
    std::string digits = std::to_string(number);
    return std::string(static_cast<std::size_t>(width) - digits.size(), '0') + digits;
}

// Border and four bores, no two panels alike.
void WriteSmallPanel(const fs::path& path, int number)
{
    const std::string width = std::to_string(400 + number % 900), height = std::to_string(300 + number % 700);
    std::string text = "0\nSECTION\n2\nENTITIES\n0\nPOLYLINE\n8\nBORDER_Z18\n66\n1\n70\n1\n";
    const std::string corners[] = {"10\n0\n20\n0\n", "10\n" + width + "\n20\n0\n",
                                   "10\n" + width + "\n20\n" + height + "\n", "10\n0\n20\n" + height + "\n"};
    for (const std::string& corner : corners)
        text += "0\nVERTEX\n8\nBORDER_Z18\n" + corner;
    text += "0\nSEQEND\n8\nBORDER_Z18\n";
    for (int i = 0; i < 4; ++i)
        text += "0\nCIRCLE\n8\nVBORE_Z12\n10\n" + std::to_string(37 + 32 * i) + "\n20\n" +
                std::to_string(40 + number % 200) + "\n40\n4\n";
    std::ofstream(path, std::ios::binary) << text << "0\nENDSEC\n0\nEOF\n";
}

const fs::path& Drawings(int count)
{
    static const fs::path folder = ScratchFolder() / "small";
    fs::create_directories(folder);
    static int made = 0;
    for (; made < count; ++made)
        WriteSmallPanel(folder / ("P" + Digits(made, 5) + ".dxf"), made);
    return folder;
}

fs::path EmptyInstallation(const std::string& name)
{
    const fs::path home = ScratchFolder() / name;
    fs::remove_all(home);
    fs::copy(fs::path(KORVANTI_SOURCE_DIR) / "examples" / "install", home);
    return home;
}

// Names on both sides of the new ones; the programs stand in the new ones' own folder.
fs::path FullInstallation(const std::string& name)
{
    const fs::path home = EmptyInstallation(name);
    std::string index;
    for (int i = 0; i < OldRecords; ++i) {
        std::string record = (i < OldRecords / 2 ? "N" : "P9") + Digits(i, 6);
        record.resize(80, ' ');
        index += record + "\r\n";
    }
    std::ofstream(home / "INDICE.PRG", std::ios::binary) << index;
    fs::create_directories(home / "SRG" / "P");
    for (int i = 0; i < OldPrograms; ++i)
        std::ofstream(home / "SRG" / "P" / ("9" + Digits(OldRecords / 2 + i, 6)), std::ios::binary)
            << "G71\r\nM2\r\n";
    return home;
}

std::vector<std::string> ListCall(const fs::path& home, int count)
{
    std::vector<std::string> words = {KORVANTI_CONSOLE, "--home", home.string(), "convert"};
    for (int i = 0; i < count; ++i)
        words.push_back((Drawings(count) / ("P" + Digits(i, 5) + ".dxf")).string());
    words.push_back("-o");
    words.push_back(home.string() + "/");
    return words;
}

double SecondsOfList(benchmark::State& state, const fs::path& home, int count)
{
    const ChildUse use = RunProgram(ListCall(home, count), true);
    if (!use.Ended)
        state.SkipWithError("not every panel was converted");
    return use.Seconds;
}

// Least times, since whatever else the machine does can only add to them.
struct LeastSeconds {
    double Seconds = 0;
    void Take(double seconds) { Seconds = Seconds == 0 ? seconds : std::min(Seconds, seconds); }
};

void ALongListAgainstAShortOne(benchmark::State& state)
{
    LeastSeconds few, many;
    for (auto _ : state) {
        few.Take(SecondsOfList(state, EmptyInstallation("few"), 1000));
        const double seconds = SecondsOfList(state, EmptyInstallation("many"), 10000);
        many.Take(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["10000/1000"] = many.Seconds / few.Seconds; // goal: at most 10.5
}
BENCHMARK(ALongListAgainstAShortOne)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void AFullInstallationAgainstAnEmptyOne(benchmark::State& state)
{
    LeastSeconds empty, full;
    for (auto _ : state) {
        empty.Take(SecondsOfList(state, EmptyInstallation("many"), 10000));
        const double seconds = SecondsOfList(state, FullInstallation("full"), 10000);
        full.Take(seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["full/empty"] = full.Seconds / empty.Seconds; // goal: at most 1.1
}
BENCHMARK(AFullInstallationAgainstAnEmptyOne)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

void OnePanelAgainstPlainFiles(benchmark::State& state)
{
    const fs::path home = EmptyInstallation("one");
    const std::vector<std::string> call = ListCall(home, 1);
    const fs::path program = home / "SRG" / "P" / "00000", index = home / "INDICE.PRG";
    if (!RunProgram(call, true).Ended || !fs::exists(program)) {
        state.SkipWithError("the conversion failed");
        return;
    }
    fs::copy_file(program, home / "program.copy");
    fs::copy_file(index, home / "index.copy");
    const std::vector<std::string> plain = {KORVANTI_PLAIN_PLACING,
                                            call[4],
                                            (home / "KV90.INI").string(),
                                            index.string(),
                                            "--",
                                            (home / "program.copy").string(),
                                            program.string(),
                                            (home / "index.copy").string(),
                                            index.string()};
    std::vector<double> ours, theirs;
    for (auto _ : state) {
        const ChildUse use = RunProgram(call, true), peer = RunProgram(plain, true);
        if (!use.Ended || !peer.Ended) {
            state.SkipWithError("a program failed");
            break;
        }
        state.SetIterationTime(use.Seconds);
        ours.push_back(use.CpuSeconds);
        theirs.push_back(peer.CpuSeconds);
    }
    state.counters["cpu_ms"] = Median(ours) * 1e3;
    state.counters["plain_cpu_ms"] = Median(theirs) * 1e3;
    state.counters["cpu/plain"] = Median(ours) / Median(theirs); // goal: at most 3
}
BENCHMARK(OnePanelAgainstPlainFiles)->UseManualTime()->Iterations(51)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace kv::bench
