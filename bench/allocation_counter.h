// Counts heap allocations made through operator new, so that a benchmark can
// report how many a call makes.
#ifndef MENSURA_BENCH_ALLOCATION_COUNTER_H
#define MENSURA_BENCH_ALLOCATION_COUNTER_H

#include <cstddef>

namespace MensuraBench {

// Allocations made so far by this process through operator new.
std::size_t AllocationCount();
// Bytes asked for by those allocations.
std::size_t AllocatedBytes();

// Adds the allocations made since `before` to a benchmark's counters, per
// iteration.
#define MENSURA_REPORT_ALLOCATIONS(state, before)                                           \
    (state).counters["allocs/op"] =                                                         \
        benchmark::Counter(static_cast<double>(MensuraBench::AllocationCount() - (before)), \
                           benchmark::Counter::kAvgIterations)

}  // namespace MensuraBench

#endif  // MENSURA_BENCH_ALLOCATION_COUNTER_H
