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
        Mensura::UnitCatalog catalog;
        benchmark::DoNotOptimize(&catalog);
    }
    state.counters["allocs/op"] =
        benchmark::Counter(static_cast<double>(MensuraBench::AllocationCount() - before),
                           benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_BuildConversionTable)->Unit(benchmark::kMicrosecond);

}  // namespace
