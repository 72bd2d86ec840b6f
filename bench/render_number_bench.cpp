// One number rendered by a formatter's settings. Rendering must not allocate:
// each benchmark reports the allocations it saw per iteration. The number
// settings are internal: this program links the library's static archive.
#include <benchmark/benchmark.h>

#include "allocation_counter.h"
#include "numbers/number_settings.h"

namespace {

using Mensura::NumberFormat;
using Mensura::NumberSettings;

// Renders value again and again in `style`, the other settings left at their
// defaults, into a buffer of 64 units.
void RenderLoop(benchmark::State& state, double value, NumberFormat style, unsigned mode) {
    NumberSettings impl;
    impl.SetNumber(style);
    char16_t buffer[64];
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(
            impl.RenderNumber(value, buffer, sizeof buffer / sizeof *buffer, mode));
        benchmark::ClobberMemory();
    }
    state.counters["allocs/op"] =
        benchmark::Counter(static_cast<double>(MensuraBench::AllocationCount() - before),
                           benchmark::Counter::kAvgIterations);
}

// The headline: 1,234,567.89.
void BM_RenderNumberGrouped(benchmark::State& state) {
    RenderLoop(state, 1234567.891, NumberFormat::Number, 0);
}
BENCHMARK(BM_RenderNumberGrouped);

void BM_RenderNumberGroupedWhole(benchmark::State& state) {
    RenderLoop(state, 1234567.891, NumberFormat::Number, Mensura::RenderMode::WholeNumber);
}
BENCHMARK(BM_RenderNumberGroupedWhole);

void BM_RenderNumberFixedSmall(benchmark::State& state) {
    RenderLoop(state, 5.5, NumberFormat::Fixed, 0);
}
BENCHMARK(BM_RenderNumberFixedSmall);

void BM_RenderNumberScientific(benchmark::State& state) {
    RenderLoop(state, -0.000123456, NumberFormat::ScientificUpper, 0);
}
BENCHMARK(BM_RenderNumberScientific);

void BM_RenderNumberGeneral(benchmark::State& state) {
    RenderLoop(state, 1234567.891, NumberFormat::GeneralLower, 0);
}
BENCHMARK(BM_RenderNumberGeneral);

}  // namespace
