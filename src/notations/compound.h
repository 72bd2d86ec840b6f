// What the compound renderers share: the marks they write between numbers,
// their failure result, and the split of a number into its parts.
#ifndef MENSURA_FORMATTING_COMPOUND_MARKS_H
#define MENSURA_FORMATTING_COMPOUND_MARKS_H

#include <cmath>
#include <cstdint>

#include "mensura/mensura.hpp"

namespace Mensura::CompoundMarks {

constexpr std::int64_t kFailure = -static_cast<std::int64_t>(ErrorCode::Failure);
constexpr char16_t kPrime = u'\u2032';
constexpr char16_t kDoublePrime = u'\u2033';

// The integer part of x, cut toward zero.
inline double WholePart(double x) {
    double whole = 0.0;
    std::modf(x, &whole);
    return whole;
}

// What is left of x behind its integer part, with the sign of x.
inline double Fraction(double x) {
    double whole = 0.0;
    return std::modf(x, &whole);
}

}  // namespace Mensura::CompoundMarks

#endif  // MENSURA_FORMATTING_COMPOUND_MARKS_H
