// One block of memory that the catalogue's objects are built in, made at once
// for the size that their builders foresee, and freed at once, last.
//
// A load that makes its objects here takes a handful of allocations rather
// than thousands, and the heap keeps a block that large for the next one of
// its size, where the same memory in many pieces, freed together at the top
// of the heap, goes back to the system and must be faulted in again. Nothing
// is freed before the arena goes: an owner destroys its objects in place
// (DestroyInPlace), and the block goes last. Should the load outgrow the
// block, the arena takes more from the heap.
//
// Each object is a step of a pointer through the block, inline: a load makes
// thousands of them, and a call through the memory resource's interface for
// each would cost more than the object's own constructor.
#ifndef MENSURA_BASE_ARENA_H
#define MENSURA_BASE_ARENA_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <new>
#include <utility>

namespace Mensura {

class Arena final : private std::pmr::memory_resource {
public:
    // The block is not cleared: every object made in it writes its own bytes.
    explicit Arena(std::size_t bytes)
        : block(new unsigned char[bytes]),
          next(reinterpret_cast<std::uintptr_t>(block.get())),
          end(next + bytes) {}
    // An arena in memory of its owner's, `bytes` at `room`, which outlives
    // the arena: it takes nothing from the heap unless it outgrows the room.
    Arena(unsigned char* room, std::size_t bytes)
        : next(reinterpret_cast<std::uintptr_t>(room)), end(next + bytes) {}
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena() override = default;

    template <typename Object, typename... Args>
    Object* New(Args&&... args) {
        return ::new (Allocate(sizeof(Object), alignof(Object)))
            Object(std::forward<Args>(args)...);
    }
    // For the containers that keep their elements here.
    std::pmr::memory_resource* Resource() { return this; }

    // Each allocation takes a whole number of the largest alignment: what a
    // builder foresees for `bytes`.
    static constexpr std::size_t Rounded(std::size_t bytes) {
        return (bytes + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);
    }

private:
    void* Allocate(std::size_t bytes, std::size_t alignment) {
        const std::uintptr_t at = (next + alignment - 1) & ~std::uintptr_t{alignment - 1};
        if (at <= end && bytes <= end - at) {
            next = at + bytes;
            return reinterpret_cast<void*>(at);
        }
        return overflow.allocate(bytes, alignment);
    }

    void* do_allocate(std::size_t bytes, std::size_t alignment) override {
        return Allocate(bytes, alignment);
    }
    // Memory goes only with the arena.
    void do_deallocate(void*, std::size_t, std::size_t) override {}
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }

    std::unique_ptr<unsigned char[]> block;
    std::uintptr_t next;  // the first free byte of the block
    std::uintptr_t end;
    // What the block has no room for, freed with the arena.
    std::pmr::monotonic_buffer_resource overflow{std::pmr::new_delete_resource()};
};

// The deleter of an object made in an arena: its destructor runs, its memory
// stays with the arena.
struct DestroyInPlace {
    template <typename Object>
    void operator()(Object* object) const {
        object->~Object();
    }
};

}  // namespace Mensura

#endif  // MENSURA_BASE_ARENA_H
