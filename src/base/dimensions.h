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

inline Dimensions operator+(const Dimensions& a, const Dimensions& b) {
    Dimensions sum{};
    for (std::size_t i = 0; i < sum.size(); ++i) sum[i] = a[i] + b[i];
    return sum;
}

inline Dimensions operator-(const Dimensions& a, const Dimensions& b) {
    Dimensions difference{};
    for (std::size_t i = 0; i < difference.size(); ++i) difference[i] = a[i] - b[i];
    return difference;
}

}  // namespace Mensura

#endif  // MENSURA_BASE_DIMENSIONS_H
