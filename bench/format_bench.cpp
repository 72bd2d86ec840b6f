// Rendering a value with its unit through the public boundary. An ordinary
// rendering must not allocate.
#include <benchmark/benchmark.h>

#include "allocation_counter.h"
#include "mensura/mensura.hpp"

namespace {

void FormatLoop(benchmark::State& state, double value, int unit, int symbol) {
    const Mensura::Formatter formatter;
    char16_t buffer[64];
    double converted = 0.0;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(formatter.Format(value, unit, buffer, 64, symbol, &converted));
        benchmark::ClobberMemory();
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}

// 1,234,567.89 m
void BM_FormatMeters(benchmark::State& state) {
    FormatLoop(state, 1234567.891, 0x2001, 0x202001);
}
BENCHMARK(BM_FormatMeters);

// 1 m as 3.28 ft
void BM_FormatMetersAsFeet(benchmark::State& state) {
    FormatLoop(state, 1.0, 0x2001, 0x202017);
}
BENCHMARK(BM_FormatMetersAsFeet);

// 20 °C, through the offset of the scale.
void BM_FormatCelsius(benchmark::State& state) {
    FormatLoop(state, 20.0, 0x2A002, 0x22A002);
}
BENCHMARK(BM_FormatCelsius);

// 66.25 in as 5′6 1/4″: four whole numbers, a fraction chosen by the decimal
// digits and reduced.
void BM_FormatFeetInchesFraction(benchmark::State& state) {
    FormatLoop(state, 66.25, 0x2016, 0x702016);
}
BENCHMARK(BM_FormatFeetInchesFraction);

// 30.25° as the bearing N 59°45′ E.
void BM_FormatBearing(benchmark::State& state) {
    FormatLoop(state, 30.25, 0x8002, 0x508002);
}
BENCHMARK(BM_FormatBearing);

}  // namespace
