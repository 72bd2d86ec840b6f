// Reading text into a value through the public boundary. An ordinary parse
// must not allocate: each benchmark reports the allocations it saw.
#include <benchmark/benchmark.h>

#include <cmath>

#include "allocation_counter.h"
#include "mensura/mensura.hpp"
#include "parse_floor.h"

namespace {

// Units of the texts, and their sizes in base units for the floors.
constexpr int kMeter = 0x2001;
constexpr int kInch = 0x2016;
constexpr int kNewton = 0x17001;
constexpr int kDegree = 0x8002;
constexpr int kMeterPerSecondSquared = 0x30001;
constexpr int kJoule = 0x13001;
constexpr double kInchSize = 0.0254;
constexpr double kDegreeSize = 3.14159265358979323846 / 180.0;

// The formatter that reads a case: the catalogue's reading, the everyday one,
// or the catalogue's with the string "{0} ft {1} in" on the symbol x′x x/2″.
enum class Reading { Catalogue, Everyday, SymbolString };

Mensura::Formatter MakeFormatter(Reading reading) {
    Mensura::Formatter formatter;
    formatter.SetEverydayReading(reading == Reading::Everyday);
    if (reading == Reading::SymbolString) {
        formatter.SetSymbolFormattingString(0x702016, u"{0} ft {1} in");
    }
    return formatter;
}

// The floor of a text: FloorParse again and again. It must read the text to
// the value that the library reads, or the benchmark reports an error.
void ParseFloor(benchmark::State& state, const char16_t* text, int unit, double unitSize,
                Reading reading) {
    double expected = 0.0;
    double value = 0.0;
    if (MakeFormatter(reading).Parse(text, expected, unit) != Mensura::ErrorCode::Success ||
        !MensuraBench::FloorParse(text, unitSize, value) ||
        std::fabs(value - expected) > 1e-12 * std::fabs(expected)) {
        state.SkipWithError("the floor does not read the text as the library does");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(MensuraBench::FloorParse(text, unitSize, value));
        benchmark::DoNotOptimize(value);
    }
}

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

#define MENSURA_PARSE_BENCH(name, text, unit, size)                  \
    BENCHMARK_CAPTURE(ParseLoop, name##_Default, text, unit, false); \
    BENCHMARK_CAPTURE(ParseLoop, name##_Everyday, text, unit, true); \
    BENCHMARK_CAPTURE(ParseFloor, name, text, unit, size, Reading::Catalogue)

MENSURA_PARSE_BENCH(Feet, u"5.5 ft", kMeter, 1.0);
MENSURA_PARSE_BENCH(GroupedMillimeters, u"1,000.5 mm", kMeter, 1.0);
MENSURA_PARSE_BENCH(ProductOfUnits, u"5 kg·m/s²", kNewton, 1.0);
MENSURA_PARSE_BENCH(FeetAndInches, u"5′-6 1/2″", kInch, kInchSize);
MENSURA_PARSE_BENCH(Bearing, u"N 45°30′ E", kDegree, kDegreeSize);
// An exponent behind a quotient key: the key is cut before it.
MENSURA_PARSE_BENCH(ExponentAfterQuotient, u"9.81 m/s^2", kMeterPerSecondSquared, 1.0);

// Texts that only the everyday reading takes: the catalogue's reading fails
// first, then the everyday forms read them.
#define MENSURA_EVERYDAY_BENCH(name, text, unit, size)               \
    BENCHMARK_CAPTURE(ParseLoop, name##_Everyday, text, unit, true); \
    BENCHMARK_CAPTURE(ParseFloor, name, text, unit, size, Reading::Everyday)

MENSURA_EVERYDAY_BENCH(PrefixedSymbol, u"5 kJ", kJoule, 1.0);
MENSURA_EVERYDAY_BENCH(SumOfLengths, u"5 ft 6 in", kInch, kInchSize);
MENSURA_EVERYDAY_BENCH(VulgarFraction, u"5′6½″", kInch, kInchSize);
MENSURA_EVERYDAY_BENCH(CompactBearing, u"N45-30E", kDegree, kDegreeSize);

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
BENCHMARK_CAPTURE(ParseFloor, SymbolString, u"5 ft 6 1/4 in", kInch, kInchSize,
                  Reading::SymbolString);

}  // namespace
