// A character tree laid out once, by a build, for lookups alone: the
// "double array". Every state of the tree (the key read so far) has a slot
// in one array; the child of a state by a unit stands at the state's base
// plus the unit's code, and holds its parent's place, which is how a lookup
// knows that the child is there. A step thus costs an addition and two
// loads, without a search among a node's edges and without a branch on the
// form of a node: parsing looks up keys on every token, and this is what
// those lookups come down to.
//
// Units are numbered into a small alphabet of codes, by one table of every
// 16-bit unit: a lookup pays one load for the code of a unit. Code 0 is no
// unit of any key, the terminator among them: its place from any base never
// holds a child of that state, so a walk ends there without a test of its
// own. Every base plus every code stays inside the array (Sound), so a walk
// tests no bound either.
//
// The layout is plain constant data (Layout); DoubleArray::Build makes it
// from keys, at build time or in a test.
#ifndef MENSURA_BASE_DOUBLE_ARRAY_H
#define MENSURA_BASE_DOUBLE_ARRAY_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace Mensura::DoubleArray {

// The slot of a state: the base of its children (0 for a state without
// any), the place of its parent, and the value of its key, 0 for none.
struct Slot {
    std::uint32_t base;
    std::uint16_t parent;
    std::uint16_t value;
};

// The parent of the root and of every free slot. A layout thus holds fewer
// slots than this.
inline constexpr std::uint16_t kNoParent = 0xFFFF;
// Every 16-bit unit has a code.
inline constexpr std::size_t kUnitCount = 0x10000;

struct Layout {
    const Slot* slots;  // slot 0 is the root, the state of the empty key
    std::size_t slotCount;
    const std::uint16_t* codes;  // kUnitCount: the code of each unit, 0 for none
    const char16_t* units;       // the unit of each code, units[0] being 0
    std::size_t codeCount;       // the codes of units run from 1 to codeCount
};

// The codes of the units of a layout, where units[c] is the unit of code c
// from 1 on.
template <std::size_t N>
constexpr std::array<std::uint16_t, kUnitCount> CodesOf(const char16_t (&units)[N]) {
    std::array<std::uint16_t, kUnitCount> codes{};
    for (std::size_t code = 1; code < N; ++code)
        codes[units[code]] = static_cast<std::uint16_t>(code);
    return codes;
}

// Whether a walk over the layout stays inside it and finds only what it
// holds: every code in range and the terminator's 0, each code's unit coded
// as that code, every base plus every code inside the array, the root and
// the free slots without a parent, and every other slot within the codes of
// its parent's children.
constexpr bool Sound(const Layout& layout) {
    if (layout.slotCount == 0 || layout.slotCount >= kNoParent) return false;
    if (layout.units[0] != 0 || layout.codes[0] != 0) return false;
    for (std::size_t unit = 0; unit < kUnitCount; ++unit) {
        if (layout.codes[unit] > layout.codeCount) return false;
    }
    for (std::size_t code = 1; code <= layout.codeCount; ++code) {
        if (layout.codes[layout.units[code]] != code) return false;
    }
    if (layout.slots[0].parent != kNoParent) return false;
    for (std::size_t at = 0; at < layout.slotCount; ++at) {
        const Slot& slot = layout.slots[at];
        if (slot.base + layout.codeCount >= layout.slotCount) return false;
        if (at == 0 || slot.parent == kNoParent) continue;
        if (slot.parent >= layout.slotCount) return false;
        const std::uint32_t base = layout.slots[slot.parent].base;
        if (base == 0 || at <= base || at - base > layout.codeCount) return false;
    }
    return true;
}

// The value of the longest key that begins text, 0 for none or a null
// text; *matched, when matched is not null, receives its length in units,
// and is written only when a value is found. A bounded lookup looks at no
// more than `limit` units, as if the text ended there.
template <bool Bounded>
constexpr std::uint16_t Find(const Layout& layout, const char16_t* text, std::size_t* matched,
                             std::size_t limit) {
    if (text == nullptr) return 0;
    // The pools in locals: the compiler need not load them anew at each step.
    const Slot* const slots = layout.slots;
    const std::uint16_t* const codes = layout.codes;
    std::uint16_t best = slots[0].value;
    std::size_t bestCount = 0;
    // The first step: where no key begins with the unit, the empty key is
    // all; a key of one unit that no longer key continues (the blank and the
    // operators between units, every mark) ends the lookup at once.
    std::uint32_t state = slots[0].base + codes[text[0]];
    Slot slot = slots[state];
    if ((Bounded && limit == 0) || slot.parent != 0) {
        if (best != 0 && matched != nullptr) *matched = 0;
        return best;
    }
    if (slot.value != 0) {
        if (slot.base == 0) {
            if (matched != nullptr) *matched = 1;
            return slot.value;
        }
        best = slot.value;
        bestCount = 1;
    }
    for (std::size_t count = 1; !(Bounded && count == limit);) {
        const std::uint32_t next = slot.base + codes[text[count]];
        const Slot child = slots[next];
        if (child.parent != state) break;
        state = next;
        slot = child;
        ++count;
        if (slot.value != 0) {
            best = slot.value;
            bestCount = count;
        }
    }
    if (best != 0 && matched != nullptr) *matched = bestCount;
    return best;
}

// Whether a key of more than one unit begins with `unit`.
constexpr bool GoesOnBehind(const Layout& layout, char16_t unit) {
    const std::uint16_t code = layout.codes[unit];
    if (code == 0) return false;
    const Slot& child = layout.slots[layout.slots[0].base + code];
    return child.parent == 0 && child.base != 0;
}

// The value of exactly the key `text` of `length` units, or 0.
constexpr std::uint16_t Exact(const Layout& layout, const char16_t* text, std::size_t length) {
    std::uint32_t state = 0;
    for (std::size_t i = 0; i < length; ++i) {
        const std::uint16_t code = layout.codes[text[i]];
        if (code == 0) return 0;
        const std::uint32_t next = layout.slots[state].base + code;
        if (layout.slots[next].parent != state) return 0;
        state = next;
    }
    return layout.slots[state].value;
}

// Every key with its value, depth first, the children of a state in the
// order of their units: a key before the keys it begins.
inline std::vector<std::pair<std::u16string, std::uint16_t>> Keys(const Layout& layout) {
    // The children of every state, found by one pass over the slots and
    // grouped by parent.
    std::vector<std::uint32_t> first(layout.slotCount + 1, 0);
    for (std::size_t at = 1; at < layout.slotCount; ++at) {
        if (layout.slots[at].parent != kNoParent) ++first[layout.slots[at].parent + 1];
    }
    for (std::size_t at = 0; at < layout.slotCount; ++at) first[at + 1] += first[at];
    std::vector<std::uint32_t> children(first.back());
    std::vector<std::uint32_t> filled(first.begin(), first.end() - 1);
    const auto unitOf = [&layout](std::uint32_t at) {
        return layout.units[at - layout.slots[layout.slots[at].parent].base];
    };
    for (std::size_t at = 1; at < layout.slotCount; ++at) {
        const std::uint16_t parent = layout.slots[at].parent;
        if (parent != kNoParent) children[filled[parent]++] = static_cast<std::uint32_t>(at);
    }
    std::vector<std::pair<std::u16string, std::uint16_t>> keys;
    std::u16string key;
    const auto visit = [&](std::uint32_t state, const auto& self) -> void {
        if (layout.slots[state].value != 0) keys.emplace_back(key, layout.slots[state].value);
        std::vector<std::uint32_t> kids(children.begin() + first[state],
                                        children.begin() + first[state + 1]);
        std::sort(kids.begin(), kids.end(),
                  [&](std::uint32_t a, std::uint32_t b) { return unitOf(a) < unitOf(b); });
        for (const std::uint32_t child : kids) {
            key.push_back(unitOf(child));
            self(child, self);
            key.pop_back();
        }
    };
    visit(0, visit);
    return keys;
}

}  // namespace Mensura::DoubleArray

#endif  // MENSURA_BASE_DOUBLE_ARRAY_H
