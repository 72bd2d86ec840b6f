#include "robustness/failing_allocator.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long> g_allowed{-1};
}  // namespace

namespace MensuraTest {
void FailAfter(long allowed) {
    g_allowed = allowed;
}
}  // namespace MensuraTest

void* operator new(std::size_t size) {
    if (g_allowed.load() >= 0 && g_allowed.fetch_sub(1) == 0) {
        g_allowed = -1;
        throw std::bad_alloc();
    }
    if (void* block = std::malloc(size == 0 ? 1 : size)) return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
