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
    // In unsigned arithmetic, which wraps; a sum overflowed where its sign
    // differs from the signs of both terms, a difference where the terms'
    // signs differ and its own differs from the first's. The seven lanes go
    // without a branch, one test at the end.
    Dimensions combined{};
    std::uint32_t overflow = 0;
    for (std::size_t i = 0; i < combined.size(); ++i) {
        const auto x = static_cast<std::uint32_t>(a[i]);
        const auto y = static_cast<std::uint32_t>(b[i]);
        const std::uint32_t r = quotient ? x - y : x + y;
        overflow |= quotient ? (x ^ y) & (x ^ r) : (x ^ r) & (y ^ r);
        combined[i] = static_cast<std::int32_t>(r);
    }
    if (overflow >> 31 != 0) return false;
    out = combined;
    return true;
}

}  // namespace Mensura

#endif  // MENSURA_BASE_DIMENSIONS_H
