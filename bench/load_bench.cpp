// What the library does once, at load: building the table of units and the
// catalogue on it. Linked with the library's static archive, where their
// classes can be reached.
#include <benchmark/benchmark.h>

#include "allocation_counter.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "units/unit_table.h"

namespace {

// The conversion table alone: 773 converters and the exponent index.
void BM_BuildConversionTable(benchmark::State& state) {
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        Mensura::UnitTable table;
        benchmark::DoNotOptimize(&table);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}
BENCHMARK(BM_BuildConversionTable)->Unit(benchmark::kMicrosecond);

// The whole load: the table, both vocabularies, the symbols and the dictionary.
void BM_BuildCatalog(benchmark::State& state) {
    const std::size_t before = MensuraBench::AllocationCount();
    const std::size_t bytesBefore = MensuraBench::AllocatedBytes();
    for (auto _ : state) {
        Mensura::UnitTable table;
        Mensura::UnitCatalog catalog(table);
        benchmark::DoNotOptimize(&catalog);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
    state.counters["KiB/op"] = benchmark::Counter(
        static_cast<double>(MensuraBench::AllocatedBytes() - bytesBefore) / 1024.0,
        benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_BuildCatalog)->Unit(benchmark::kMicrosecond);

// The everyday vocabulary, which the first everyday parse builds on the catalogue.
void BM_BuildEverydayVocabulary(benchmark::State& state) {
    const Mensura::UnitCatalog& catalog = Mensura::UnitCatalog::Instance();
    const std::size_t before = MensuraBench::AllocationCount();
    for (auto _ : state) {
        Mensura::EverydayVocabulary vocabulary(catalog);
        benchmark::DoNotOptimize(&vocabulary);
    }
    MENSURA_REPORT_ALLOCATIONS(state, before);
}
BENCHMARK(BM_BuildEverydayVocabulary)->Unit(benchmark::kMicrosecond);

}  // namespace
