// Reading text into a value through the public boundary. An ordinary parse
// must not allocate: each benchmark reports the allocations it saw.
#include <benchmark/benchmark.h>

#include "allocation_counter.h"
#include "mensura/mensura.hpp"

namespace {

// Each text is read twice: with the catalogue's reading, and with the
// everyday reading on, which must cost little more for a text that the
// catalogue's reading takes.
void ParseLoop(benchmark::State& state, const char16_t* text, int unit, bool everyday) {
    Mensura::Formatter formatter;
    formatter.SetEverydayReading(everyday);
    double value = 0.0;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(formatter.Parse(text, value, unit));
        benchmark::DoNotOptimize(value);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}

#define MENSURA_PARSE_BENCH(name, text, unit)                        \
    BENCHMARK_CAPTURE(ParseLoop, name##_Default, text, unit, false); \
    BENCHMARK_CAPTURE(ParseLoop, name##_Everyday, text, unit, true)

MENSURA_PARSE_BENCH(Feet, u"5.5 ft", 0x2001);
MENSURA_PARSE_BENCH(GroupedMillimeters, u"1,000.5 mm", 0x2001);
MENSURA_PARSE_BENCH(ProductOfUnits, u"5 kg·m/s²", 0x17001);
MENSURA_PARSE_BENCH(FeetAndInches, u"5′-6 1/2″", 0x2016);
MENSURA_PARSE_BENCH(Bearing, u"N 45°30′ E", 0x8002);
// An exponent behind a quotient key: the key is cut before it.
MENSURA_PARSE_BENCH(ExponentAfterQuotient, u"9.81 m/s^2", 0x30001);

// Texts that only the everyday reading takes: the catalogue's reading fails
// first, then the everyday forms read them.
BENCHMARK_CAPTURE(ParseLoop, PrefixedSymbol_Everyday, u"5 kJ", 0x13001, true);
BENCHMARK_CAPTURE(ParseLoop, SumOfLengths_Everyday, u"5 ft 6 in", 0x2016, true);
BENCHMARK_CAPTURE(ParseLoop, VulgarFraction_Everyday, u"5′6½″", 0x2016, true);
BENCHMARK_CAPTURE(ParseLoop, CompactBearing_Everyday, u"N45-30E", 0x8002, true);

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
