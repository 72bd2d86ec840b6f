// The seven exponents of a physical dimension.
#ifndef MENSURA_UNITS_DIMENSIONS_H
#define MENSURA_UNITS_DIMENSIONS_H

#include <array>
#include <cstdint>

namespace Mensura {

// Exponents of length, mass, time, electric current, temperature, amount of
// substance and luminous intensity, in that order. Angles and other ratios
// have all seven at zero.
using Dimensions = std::array<std::int32_t, 7>;

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

#endif  // MENSURA_UNITS_DIMENSIONS_H
