// Counts heap allocations made through operator new, so that a benchmark can
// report how many a call makes.
#ifndef MENSURA_BENCH_ALLOCATION_COUNTER_H
#define MENSURA_BENCH_ALLOCATION_COUNTER_H

#include <cstddef>

namespace MensuraBench {

// Allocations made so far by this process through operator new.
std::size_t AllocationCount();

}  // namespace MensuraBench

#endif  // MENSURA_BENCH_ALLOCATION_COUNTER_H
