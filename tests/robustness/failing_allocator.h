// The global operator new of the out-of-memory tests: it fails on demand.
#ifndef MENSURA_TESTS_ROBUSTNESS_FAILING_ALLOCATOR_H
#define MENSURA_TESTS_ROBUSTNESS_FAILING_ALLOCATOR_H

namespace MensuraTest {

// The next `allowed` allocations succeed and the one after throws
// std::bad_alloc, once; below zero, allocations never fail.
void FailAfter(long allowed);

}  // namespace MensuraTest

#endif  // MENSURA_TESTS_ROBUSTNESS_FAILING_ALLOCATOR_H
