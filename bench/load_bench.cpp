// What the library does once, at load: building the catalogue. Linked with the
// library's static archive, where the catalogue's class can be reached.
#include <benchmark/benchmark.h>

#include "allocation_counter.h"
#include "units/unit_catalog.h"

namespace {

// The conversion table alone: 773 converters and the exponent index.
void BM_BuildConversionTable(benchmark::State& state) {
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        Mensura::UnitCatalog catalog(Mensura::UnitCatalog::ConversionsOnly);
        benchmark::DoNotOptimize(&catalog);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}
BENCHMARK(BM_BuildConversionTable)->Unit(benchmark::kMicrosecond);

// The whole load: the table, both vocabularies, the symbols and the dictionary.
void BM_BuildCatalog(benchmark::State& state) {
    const std::size_t before = MensuraBench::AllocationCount();
    const std::size_t bytesBefore = MensuraBench::AllocatedBytes();
    for (auto _ : state) {
        Mensura::UnitCatalog catalog;
        benchmark::DoNotOptimize(&catalog);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
    state.counters["KiB/op"] = benchmark::Counter(
        static_cast<double>(MensuraBench::AllocatedBytes() - bytesBefore) / 1024.0,
        benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_BuildCatalog)->Unit(benchmark::kMicrosecond);

}  // namespace
