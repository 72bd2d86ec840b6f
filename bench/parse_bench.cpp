// Reading text into a value through the public boundary. An ordinary parse
// must not allocate: each benchmark reports the allocations it saw.
#include <benchmark/benchmark.h>

#include "allocation_counter.h"
#include "mensura/mensura.hpp"

namespace {

void ParseLoop(benchmark::State& state, const char16_t* text, int unit) {
    const Mensura::Formatter formatter;
    double value = 0.0;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(formatter.Parse(text, value, unit));
        benchmark::DoNotOptimize(value);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}

void BM_ParseFeet(benchmark::State& state) {
    ParseLoop(state, u"5.5 ft", 0x2001);
}
BENCHMARK(BM_ParseFeet);

void BM_ParseGroupedMillimeters(benchmark::State& state) {
    ParseLoop(state, u"1,000.5 mm", 0x2001);
}
BENCHMARK(BM_ParseGroupedMillimeters);

void BM_ParseProductOfUnits(benchmark::State& state) {
    ParseLoop(state, u"5 kg·m/s²", 0x17001);
}
BENCHMARK(BM_ParseProductOfUnits);

void BM_ParseFeetAndInches(benchmark::State& state) {
    ParseLoop(state, u"5′-6 1/2″", 0x2016);
}
BENCHMARK(BM_ParseFeetAndInches);

}  // namespace

namespace {

void BM_ParseBearing(benchmark::State& state) {
    ParseLoop(state, u"N 45°30′ E", 0x8002);
}
BENCHMARK(BM_ParseBearing);

}  // namespace

namespace {

// "5 ft 6 1/4 in" through the caller's string "{0} ft {1} in" on the symbol
// x′x x/2″: the custom pass reads it, in its form with a whole number and a
// fraction, before the general scan.
void BM_ParseThroughSymbolString(benchmark::State& state) {
    Mensura::Formatter formatter;
    formatter.SetSymbolFormattingString(0x702016, u"{0} ft {1} in");
    double value = 0.0;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(formatter.Parse(u"5 ft 6 1/4 in", value, 0x2016));
        benchmark::DoNotOptimize(value);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}
BENCHMARK(BM_ParseThroughSymbolString);

}  // namespace
