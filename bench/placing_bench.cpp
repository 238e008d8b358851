// Programs on their way to an installation: a long list against a short one, a full installation against an
// empty one, and one panel against a plain C program that reads, writes, flushes and moves the same files.
// The goals are ratios.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench_files.h"
#include "child_process.h"
#include "paired.h"

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

ChildUse ConvertPanels(benchmark::State& state, const fs::path& home, int count)
{
    const std::vector<std::string> call = ListCall(home, count); // makes the drawings
    SettleDisk();
    const ChildUse use = RunProgram(call, true);
    if (!use.Ended)
        state.SkipWithError("not every panel was converted");
    return use;
}

// Short lists before and after the long one, as many as take its time together: a machine that is busy now
// and then disturbs a long run more surely than a short one, and the shortest of some short ones never.
void ALongListAgainstAShortOne(benchmark::State& state)
{
    constexpr int few = 1000, many = 10000, shortLists = many / few;
    PairedSides wall, cpu;
    for (auto _ : state) {
        double shortSeconds = 0, shortCpu = 0;
        ChildUse longList;
        for (int i = 0; i < shortLists; ++i) {
            if (i == shortLists / 2)
                longList = ConvertPanels(state, EmptyInstallation("many"), many);
            const ChildUse use = ConvertPanels(state, EmptyInstallation("few"), few);
            shortSeconds += use.Seconds / shortLists;
            shortCpu += use.CpuSeconds / shortLists;
        }
        wall.Take(longList.Seconds, shortSeconds);
        cpu.Take(longList.CpuSeconds, shortCpu);
        state.SetIterationTime(longList.Seconds);
    }
    state.counters["10000/1000"] = wall.Ratio(); // goal: at most 10.5
    state.counters["cpu_10000/1000"] = cpu.Ratio();
}
BENCHMARK(ALongListAgainstAShortOne)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);

void AFullInstallationAgainstAnEmptyOne(benchmark::State& state)
{
    constexpr int count = 10000;
    PairedSides wall, cpu;
    bool emptyFirst = true;
    for (auto _ : state) {
        const auto empty = [&] { return ConvertPanels(state, EmptyInstallation("many"), count); };
        const auto full = [&] { return ConvertPanels(state, FullInstallation("full"), count); };
        const ChildUse first = emptyFirst ? empty() : full(), second = emptyFirst ? full() : empty();
        const ChildUse &intoEmpty = emptyFirst ? first : second, &intoFull = emptyFirst ? second : first;
        emptyFirst = !emptyFirst;
        wall.Take(intoFull.Seconds, intoEmpty.Seconds);
        cpu.Take(intoFull.CpuSeconds, intoEmpty.CpuSeconds);
        state.SetIterationTime(intoFull.Seconds);
    }
    state.counters["full/empty"] = wall.Ratio(); // goal: at most 1.1
    state.counters["cpu_full/empty"] = cpu.Ratio();
}
BENCHMARK(AFullInstallationAgainstAnEmptyOne)->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);

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
