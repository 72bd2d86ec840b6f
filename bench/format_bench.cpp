// Rendering a value with its unit through the public boundary. An ordinary
// rendering must not allocate.
//
// Three cases have a floor beside them, X_Floor: the least work that makes
// the same text by hand, with the same arithmetic, std::to_chars for the
// numbers, grouping by thousands, widening to UTF-16 and the unit's text.
// Each floor checks once, before it is timed, that its text is the one that
// Format renders. The ratio X / X_Floor is what rendering costs beyond that.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

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

namespace {

// Widens the number text [first, last) into out, a "," between groups of
// three whole digits; returns the end of what it wrote.
char16_t* WidenGrouped(const char* first, const char* last, char16_t* out) {
    const char* point = first;
    while (point != last && *point != '.') ++point;
    for (const char* at = first; at != point; ++at) {
        if (at != first && (point - at) % 3 == 0) *out++ = u',';
        *out++ = static_cast<char16_t>(*at);
    }
    for (const char* at = point; at != last; ++at) *out++ = static_cast<char16_t>(*at);
    return out;
}

// A number as the floors write it: std::to_chars, then grouped and widened.
char16_t* WriteFixed(double value, int decimals, char16_t* out) {
    char digits[32];
    const auto printed =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
    return WidenGrouped(digits, printed.ptr, out);
}

char16_t* WriteWhole(long long value, char16_t* out) {
    char digits[24];
    const auto printed = std::to_chars(digits, digits + sizeof digits, value);
    return WidenGrouped(digits, printed.ptr, out);
}

char16_t* WriteText(const char16_t* text, char16_t* out) {
    while (*text != 0) *out++ = *text++;
    return out;
}

// 1,234,567.89 m
std::size_t MetersFloor(double meters, char16_t* out) {
    char16_t* end = WriteFixed(meters, 2, out);
    end = WriteText(u" m", end);
    return static_cast<std::size_t>(end - out);
}

// 3.28 ft: the foot is 0.3048 m.
std::size_t MetersAsFeetFloor(double meters, char16_t* out) {
    char16_t* end = WriteFixed(meters / 0.3048, 2, out);
    end = WriteText(u" ft", end);
    return static_cast<std::size_t>(end - out);
}

// 5′6 1/4″: whole feet, whole inches, and the inches' fraction in quarters
// (two decimal digits ask for 1/4), reduced.
std::size_t FeetInchesFloor(double inches, char16_t* out) {
    const double feet = std::trunc(inches / 12.0);
    const double rest = inches - feet * 12.0;
    const double whole = std::trunc(rest);
    auto numerator = static_cast<long long>(std::floor((rest - whole) * 4.0 + 0.5));
    long long denominator = 4;
    while (numerator != 0 && numerator % 2 == 0) {
        numerator /= 2;
        denominator /= 2;
    }
    char16_t* end = WriteWhole(static_cast<long long>(feet), out);
    *end++ = u'\u2032';
    end = WriteWhole(static_cast<long long>(whole), end);
    *end++ = u' ';
    end = WriteWhole(numerator, end);
    *end++ = u'/';
    end = WriteWhole(denominator, end);
    *end++ = u'\u2033';
    return static_cast<std::size_t>(end - out);
}

// Times `floor` on value, after checking once that it writes what Format
// renders for value in `unit` with `symbol`.
template <typename Floor>
void FloorLoop(benchmark::State& state, double value, int unit, int symbol, Floor floor) {
    const Mensura::Formatter formatter;
    char16_t rendered[64] = {};
    char16_t buffer[64];
    if (formatter.Format(value, unit, rendered, 64, symbol, nullptr) !=
            Mensura::ErrorCode::Success ||
        std::u16string(buffer, floor(value, buffer)) != rendered) {
        state.SkipWithError("the floor's text is not the one Format renders");
        return;
    }
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(floor(value, buffer));
        benchmark::ClobberMemory();
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}

void BM_FormatMeters_Floor(benchmark::State& state) {
    FloorLoop(state, 1234567.891, 0x2001, 0x202001, MetersFloor);
}
BENCHMARK(BM_FormatMeters_Floor);

void BM_FormatMetersAsFeet_Floor(benchmark::State& state) {
    FloorLoop(state, 1.0, 0x2001, 0x202017, MetersAsFeetFloor);
}
BENCHMARK(BM_FormatMetersAsFeet_Floor);

void BM_FormatFeetInchesFraction_Floor(benchmark::State& state) {
    FloorLoop(state, 66.25, 0x2016, 0x702016, FeetInchesFloor);
}
BENCHMARK(BM_FormatFeetInchesFraction_Floor);

}  // namespace
