// The seven exponents of a physical dimension.
#ifndef MENSURA_BASE_DIMENSIONS_H
#define MENSURA_BASE_DIMENSIONS_H

#include <array>
#include <cstdint>
#include <cstring>

namespace Mensura {

// Exponents of length, mass, time, electric current, temperature, amount of
// substance and luminous intensity, in that order. Angles and other ratios
// have all seven at zero.
using Dimensions = std::array<std::int32_t, 7>;

// Equality of all seven, as one compare of their bytes, which the compiler
// writes inline as a few wide loads: the check runs on every conversion.
inline bool SameDimensions(const Dimensions& a, const Dimensions& b) {
    return std::memcmp(a.data(), b.data(), sizeof(Dimensions)) == 0;
}

// The exponents of a product of two units, or with `quotient` of a
// quotient. False, and `out` untouched, when one of them leaves the range of
// its type: a text may write "kg^2000000000·kg^2000000000".
inline bool CombineDimensions(const Dimensions& a, const Dimensions& b, bool quotient,
                              Dimensions& out) {
    Dimensions combined{};
    for (std::size_t i = 0; i < combined.size(); ++i) {
        const std::int64_t exponent =
            quotient ? std::int64_t{a[i]} - b[i] : std::int64_t{a[i]} + b[i];
        if (exponent != static_cast<std::int32_t>(exponent)) return false;
        combined[i] = static_cast<std::int32_t>(exponent);
    }
    out = combined;
    return true;
}

}  // namespace Mensura

#endif  // MENSURA_BASE_DIMENSIONS_H
