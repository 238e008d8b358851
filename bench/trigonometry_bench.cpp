// Sine and arctangent that are the same on every machine, against the run time library's in the same run.
#include <benchmark/benchmark.h>

#include <cmath>

#include "platform/trigonometry.h"

namespace kv::bench {
namespace {

constexpr double Step = 0.0137; // radians; walks through all table rows

template <double (*Function)(double)> void Walk(benchmark::State& state)
{
    double at = -3, sum = 0;
    for (auto _ : state) {
        sum += Function(at);
        at = at > 3 ? -3 : at + Step;
    }
    benchmark::DoNotOptimize(sum);
}

double LibrarySine(double angle)
{
    return std::sin(angle);
}

double LibraryArcTangent(double slope)
{
    return std::atan(slope);
}

BENCHMARK(Walk<Sine>)->Name("Sine");
BENCHMARK(Walk<LibrarySine>)->Name("SineOfTheLibrary");
BENCHMARK(Walk<ArcTangent>)->Name("ArcTangent");
BENCHMARK(Walk<LibraryArcTangent>)->Name("ArcTangentOfTheLibrary");

} // namespace
} // namespace kv::bench
