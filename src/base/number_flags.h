// What the number scanner saw in the part of a number that it consumed.
#ifndef MENSURA_BASE_NUMBER_FLAGS_H
#define MENSURA_BASE_NUMBER_FLAGS_H

#include <cstdint>

namespace Mensura::NumberFlags {

constexpr std::uint32_t PlusSign = 1;          // began with the positive sign
constexpr std::uint32_t MinusSign = 2;         // began with the negative sign
constexpr std::uint32_t ExponentPlus = 4;      // the exponent began with the positive sign
constexpr std::uint32_t ExponentMinus = 8;     // the exponent began with the negative sign
constexpr std::uint32_t GroupSeen = 16;        // a group separator stood in the integer digits
constexpr std::uint32_t PointSeen = 32;        // a decimal separator stood in the number
constexpr std::uint32_t ExponentDigits = 64;   // the exponent has digits
constexpr std::uint32_t IntegerDigits = 128;   // digits before the decimal separator
constexpr std::uint32_t FractionDigits = 256;  // digits behind the decimal separator

}  // namespace Mensura::NumberFlags

#endif  // MENSURA_BASE_NUMBER_FLAGS_H
