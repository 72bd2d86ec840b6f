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
#ifndef MENSURA_BASE_ARENA_H
#define MENSURA_BASE_ARENA_H

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <new>
#include <utility>

namespace Mensura {

class Arena {
public:
    // The block is not cleared: every object made in it writes its own bytes.
    explicit Arena(std::size_t bytes)
        : block(new unsigned char[bytes]),
          memory(block.get(), bytes, std::pmr::new_delete_resource()) {}
    // An arena in memory of its owner's, `bytes` at `room`, which outlives
    // the arena: it takes nothing from the heap unless it outgrows the room.
    Arena(unsigned char* room, std::size_t bytes)
        : memory(room, bytes, std::pmr::new_delete_resource()) {}
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    template <typename Object, typename... Args>
    Object* New(Args&&... args) {
        return ::new (memory.allocate(sizeof(Object), alignof(Object)))
            Object(std::forward<Args>(args)...);
    }
    // For the containers that keep their elements here.
    std::pmr::memory_resource* Resource() { return &memory; }

    // Each allocation takes a whole number of the largest alignment: what a
    // builder foresees for `bytes`.
    static constexpr std::size_t Rounded(std::size_t bytes) {
        return (bytes + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);
    }

private:
    std::unique_ptr<unsigned char[]> block;
    std::pmr::monotonic_buffer_resource memory;
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
