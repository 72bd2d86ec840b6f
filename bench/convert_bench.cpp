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

void ReportAllocations(benchmark::State& state, std::size_t before) {
    state.counters["allocs/op"] =
        benchmark::Counter(static_cast<double>(MensuraBench::AllocationCount() - before),
                           benchmark::Counter::kAvgIterations);
}

void BM_ConverterConvertGeneric(benchmark::State& state) {
    double value = 5.5;
    double out = 0.0;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        Mensura::Converter::Convert(value, kFoot, out, kMeter);
        benchmark::DoNotOptimize(out);
    }
    ReportAllocations(state, before);
}
BENCHMARK(BM_ConverterConvertGeneric);

void BM_ConverterConvertLinear(benchmark::State& state) {
    double value = 100.0;
    double out = 0.0;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        Mensura::Converter::Convert(value, kCelsius, out, kFahrenheit);
        benchmark::DoNotOptimize(out);
    }
    ReportAllocations(state, before);
}
BENCHMARK(BM_ConverterConvertLinear);

void BM_FlatConvert(benchmark::State& state) {
    double value = 5.5;
    double out = 0.0;
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        Convert(value, kFoot, &out, kMeter);
        benchmark::DoNotOptimize(out);
    }
    ReportAllocations(state, before);
}
BENCHMARK(BM_FlatConvert);

// The floor of both: a call of the same signature into a shared library of
// its own, which only multiplies.
void BM_ConvertFloor(benchmark::State& state) {
    double value = 5.5;
    double out = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        MensuraBenchFloorConvert(value, kFoot, &out, kMeter);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(BM_ConvertFloor);

// What no conversion can go below: a multiply and a divide in one call.
void BM_ConvertRuleFloor(benchmark::State& state) {
    double value = 5.5;
    double out = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        MensuraBenchRuleFloorConvert(value, kFoot, &out, kMeter);
        benchmark::DoNotOptimize(out);
    }
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
    ReportAllocations(state, before);
}
BENCHMARK(BM_PreparedConverter);

void BM_ConversionFactor(benchmark::State& state) {
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(ConversionFactor(kFoot, kMeter));
    ReportAllocations(state, before);
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
