// Conversion through the public boundary. Conversions must not allocate: each
// benchmark reports the allocations it saw per iteration.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "allocation_counter.h"
#include "floor_library.h"
#include "mensura/mensura.hpp"

namespace {

constexpr int kFoot = 0x2017;
constexpr int kMeter = 0x2001;
constexpr int kCelsius = 0x2A002;
constexpr int kFahrenheit = 0x2A003;

// Converts value from one unit into another again and again with `convert`,
// a call of Convert's signature, and reports the allocations it saw.
template <typename Call>
void ConvertLoop(benchmark::State& state, Call convert, double value, int from, int to) {
    double out = 0.0;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        convert(value, from, &out, to);
        benchmark::DoNotOptimize(out);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}

// Each call is a lambda of its own, so that the loop calls it directly.
constexpr auto kByClass = [](double value, int from, double* out, int to) {
    return Mensura::Converter::Convert(value, from, *out, to);
};
constexpr auto kFlat = [](double value, int from, double* out, int to) {
    return Convert(value, from, out, to);
};
constexpr auto kFloor = [](double value, int from, double* out, int to) {
    return MensuraBenchFloorConvert(value, from, out, to);
};
constexpr auto kRuleFloor = [](double value, int from, double* out, int to) {
    return MensuraBenchRuleFloorConvert(value, from, out, to);
};

void BM_ConverterConvertGeneric(benchmark::State& state) {
    ConvertLoop(state, kByClass, 5.5, kFoot, kMeter);
}
BENCHMARK(BM_ConverterConvertGeneric);

void BM_ConverterConvertLinear(benchmark::State& state) {
    ConvertLoop(state, kByClass, 100.0, kCelsius, kFahrenheit);
}
BENCHMARK(BM_ConverterConvertLinear);

void BM_FlatConvert(benchmark::State& state) {
    ConvertLoop(state, kFlat, 5.5, kFoot, kMeter);
}
BENCHMARK(BM_FlatConvert);

// The floor of both: a call of the same signature into a shared library of
// its own, which only multiplies.
void BM_ConvertFloor(benchmark::State& state) {
    ConvertLoop(state, kFloor, 5.5, kFoot, kMeter);
}
BENCHMARK(BM_ConvertFloor);

// What no conversion can go below: a multiply and a divide in one call.
void BM_ConvertRuleFloor(benchmark::State& state) {
    ConvertLoop(state, kRuleFloor, 5.5, kFoot, kMeter);
}
BENCHMARK(BM_ConvertRuleFloor);

void BM_PreparedConverter(benchmark::State& state) {
    const Mensura::Converter converter(kFoot, kMeter);
    double value = 5.5;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(converter.Convert(value));
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}
BENCHMARK(BM_PreparedConverter);

void BM_ConversionFactor(benchmark::State& state) {
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(ConversionFactor(kFoot, kMeter));
    MENSURA_REPORT_ALLOCATIONS(state, before);
}
BENCHMARK(BM_ConversionFactor);

}  // namespace

namespace {

// A column of 10^7 values, about 80 MB each way: ConvertArray against the
// floor of a hand-written loop that multiplies by one factor, the least any
// conversion of a column can do. Both report bytes per second.
constexpr std::size_t kColumn = 10'000'000;

void BM_ConvertArrayColumn(benchmark::State& state) {
    std::vector<double> values(kColumn, 5.5);
    std::vector<double> out(kColumn);
    for (auto _ : state) {
        Mensura::Converter::ConvertArray(values.data(), out.data(), kColumn, kFoot, kMeter);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kColumn * 16));
}
BENCHMARK(BM_ConvertArrayColumn)->Unit(benchmark::kMillisecond);

void BM_ConvertArrayColumnFloor(benchmark::State& state) {
    std::vector<double> values(kColumn, 5.5);
    std::vector<double> out(kColumn);
    double factor = 0.3048;
    for (auto _ : state) {
        benchmark::DoNotOptimize(factor);
        for (std::size_t i = 0; i < kColumn; ++i) out[i] = values[i] * factor;
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kColumn * 16));
}
BENCHMARK(BM_ConvertArrayColumnFloor)->Unit(benchmark::kMillisecond);

}  // namespace
