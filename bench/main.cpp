// Runs the benchmarks; the scratch folder goes afterwards.
#include <benchmark/benchmark.h>

#include "bench_files.h"

int main(int count, char** words)
{
    benchmark::Initialize(&count, words);
    if (benchmark::ReportUnrecognizedArguments(count, words))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    kv::bench::RemoveScratchFolder();
    return 0;
}
