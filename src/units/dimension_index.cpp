#include "units/dimension_index.h"

namespace Mensura {

std::size_t DimensionIndex::Home(const Dimensions& exponents) {
    std::uint32_t hash = 0;
    for (const std::int32_t exponent : exponents) {
        hash = (hash ^ static_cast<std::uint32_t>(exponent)) * 0x9E3779B1u;
    }
    return (hash ^ hash >> 16) & (kSlots - 1);
}

const int* DimensionIndex::Lookup(const Dimensions& exponents) const {
    for (std::size_t at = Home(exponents);; at = (at + 1) & (kSlots - 1)) {
        const Slot& slot = slots[at];
        if (!slot.used) return nullptr;
        if (SameDimensions(slot.exponents, exponents)) return &slot.group;
    }
}

bool DimensionIndex::Register(const Dimensions& exponents, int group) {
    std::size_t at = Home(exponents);
    for (; slots[at].used; at = (at + 1) & (kSlots - 1)) {
        if (SameDimensions(slots[at].exponents, exponents)) {
            // A second group with the same exponents makes the key ambiguous.
            slots[at].group = 0;
            return true;
        }
    }
    if (count == kMaxKeys) return false;
    slots[at] = Slot{exponents, group, true};
    ++count;
    return true;
}

}  // namespace Mensura
