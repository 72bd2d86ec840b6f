// The packed 32-bit unit id: type in bits 0-11, group in 12-19, symbol in 20-27.
#ifndef MENSURA_BASE_UNIT_ID_H
#define MENSURA_BASE_UNIT_ID_H

#include <cstdint>

namespace Mensura::UnitId {

constexpr std::uint32_t TypeMask = 0xFFF;
constexpr std::uint32_t GroupMask = 0xFF000;
constexpr std::uint32_t SymbolMask = 0xFF00000;
// Two ids name the same unit when these bits agree.
constexpr std::uint32_t UnitMask = GroupMask | TypeMask;

constexpr int Make(int group, int type, int symbol = 0) {
    return (symbol << 20) | (group << 12) | type;
}

// The fields as 0-based indices. A field of 0 ("not given") becomes a huge
// index, so that every range check also refuses it.
constexpr std::uint32_t TypeIndex(int id) {
    return (static_cast<std::uint32_t>(id) & TypeMask) - 1;
}
constexpr std::uint32_t GroupIndex(int id) {
    return ((static_cast<std::uint32_t>(id) & GroupMask) >> 12) - 1;
}
constexpr std::uint32_t SymbolIndex(int id) {
    return ((static_cast<std::uint32_t>(id) & SymbolMask) >> 20) - 1;
}

constexpr bool SameUnit(int a, int b) {
    return ((static_cast<std::uint32_t>(a) ^ static_cast<std::uint32_t>(b)) & UnitMask) == 0;
}

}  // namespace Mensura::UnitId

#endif  // MENSURA_BASE_UNIT_ID_H
