// From the seven exponents of a dimension to the one group that has them.
// Parsing asks it for every feet-and-inch mark and every bare number, so it
// is a small open-addressed table: one hash and a compare or two.
#ifndef MENSURA_UNITS_DIMENSION_INDEX_H
#define MENSURA_UNITS_DIMENSION_INDEX_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/dimensions.h"

namespace Mensura {

class DimensionIndex {
public:
    // Registers a group's exponents: a key seen twice holds 0 for good.
    // Returns false, with nothing changed, when the table is full.
    bool Register(const Dimensions& exponents, int group);
    // The group id of exponents; 0 when no group or several have them.
    int Find(const Dimensions& exponents) const {
        const int* group = Lookup(exponents);
        return group != nullptr ? *group : 0;
    }
    // What exponents hold, 0 where shared; null when no group has them.
    const int* Lookup(const Dimensions& exponents) const;
    // The number of different exponents registered.
    std::size_t size() const { return count; }
    void Clear() { *this = DimensionIndex(); }

private:
    // A power of two, at most half full, so that a probe meets a free slot
    // soon.
    static constexpr std::size_t kSlots = 256;
    static constexpr std::size_t kMaxKeys = kSlots / 2;

    struct Slot {
        Dimensions exponents;
        int group;
        bool used;
    };
    static std::size_t Home(const Dimensions& exponents);

    std::array<Slot, kSlots> slots{};
    std::size_t count = 0;
};

}  // namespace Mensura

#endif  // MENSURA_UNITS_DIMENSION_INDEX_H
