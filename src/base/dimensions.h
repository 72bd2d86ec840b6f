// The seven exponents of a physical dimension.
#ifndef MENSURA_BASE_DIMENSIONS_H
#define MENSURA_BASE_DIMENSIONS_H

#include <array>
#include <cstdint>

namespace Mensura {

// Exponents of length, mass, time, electric current, temperature, amount of
// substance and luminous intensity, in that order. Angles and other ratios
// have all seven at zero.
using Dimensions = std::array<std::int32_t, 7>;

// Equality of all seven, written out so that the check on every conversion
// stays a few inline compares rather than a call.
inline bool SameDimensions(const Dimensions& a, const Dimensions& b) {
    return ((a[0] ^ b[0]) | (a[1] ^ b[1]) | (a[2] ^ b[2]) | (a[3] ^ b[3]) | (a[4] ^ b[4]) |
            (a[5] ^ b[5]) | (a[6] ^ b[6])) == 0;
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
