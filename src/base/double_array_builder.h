// Lays out keys as a double array (double_array.h): what a build does for
// the parse dictionary, and a test for any keys.
#ifndef MENSURA_BASE_DOUBLE_ARRAY_BUILDER_H
#define MENSURA_BASE_DOUBLE_ARRAY_BUILDER_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/double_array.h"

namespace Mensura::DoubleArray {

// The pools of a layout, and the layout over them.
struct Built {
    std::vector<Slot> slots;
    std::vector<std::uint16_t> codes;
    std::u16string units;

    Layout View() const {
        return {slots.data(), slots.size(), codes.data(), units.data(), units.size() - 1};
    }
};

// Lays out keys, each with a value other than 0; of two equal keys the
// first stays. False, with `out` undefined, when a key holds the terminator
// or the keys need more slots than a parent's place can name.
inline bool Build(const std::vector<std::pair<std::u16string, std::uint16_t>>& keys, Built& out) {
    // The tree, one state for each key read so far.
    struct State {
        std::map<char16_t, std::uint32_t> children;
        std::uint16_t value = 0;
    };
    std::vector<State> tree(1);
    std::map<char16_t, std::size_t> uses;
    for (const auto& [key, value] : keys) {
        std::uint32_t state = 0;
        for (const char16_t unit : key) {
            ++uses[unit];
            const auto found = tree[state].children.find(unit);
            if (found != tree[state].children.end()) {
                state = found->second;
                continue;
            }
            tree.emplace_back();
            const auto child = static_cast<std::uint32_t>(tree.size() - 1);
            tree[state].children.emplace(unit, child);
            state = child;
        }
        if (tree[state].value == 0) tree[state].value = value;
    }

    // The commonest units take the smallest codes, so that the children of
    // the states that most keys pass stand close together.
    std::vector<std::pair<std::size_t, char16_t>> byUse;
    for (const auto& [unit, count] : uses) {
        if (unit == 0) return false;  // no key holds the terminator
        byUse.emplace_back(count, unit);
    }
    std::stable_sort(byUse.begin(), byUse.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    out = Built{};
    out.units.assign(1, u'\0');
    out.codes.assign(kUnitCount, 0);
    for (const auto& [count, unit] : byUse) {
        out.codes[unit] = static_cast<std::uint16_t>(out.units.size());
        out.units.push_back(unit);
    }
    const std::size_t codeCount = out.units.size() - 1;

    // States take their places breadth first; each one with children takes
    // the least base at which all of their places are free.
    std::vector<std::uint32_t> placeOf(tree.size(), 0);
    std::vector<bool> taken(1, true);  // the root's place
    out.slots.assign(1, Slot{0, kNoParent, tree[0].value});
    std::size_t firstFree = 1;
    std::vector<std::uint32_t> queue{0};
    for (std::size_t next = 0; next < queue.size(); ++next) {
        const std::uint32_t state = queue[next];
        const auto& children = tree[state].children;
        if (children.empty()) continue;
        std::uint16_t least = UINT16_MAX;
        for (const auto& [unit, child] : children) least = std::min(least, out.codes[unit]);
        std::size_t base = firstFree > least ? firstFree - least : 1;
        for (;; ++base) {
            bool free = true;
            for (const auto& [unit, child] : children) {
                const std::size_t at = base + out.codes[unit];
                if (at < taken.size() && taken[at]) {
                    free = false;
                    break;
                }
            }
            if (free) break;
        }
        const std::uint32_t place = placeOf[state];
        out.slots[place].base = static_cast<std::uint32_t>(base);
        for (const auto& [unit, child] : children) {
            const std::size_t at = base + out.codes[unit];
            if (at >= kNoParent) return false;
            if (at >= taken.size()) {
                taken.resize(at + 1, false);
                out.slots.resize(at + 1, Slot{0, kNoParent, 0});
            }
            taken[at] = true;
            out.slots[at] = Slot{0, static_cast<std::uint16_t>(place), tree[child].value};
            placeOf[child] = static_cast<std::uint32_t>(at);
            queue.push_back(child);
        }
        while (firstFree < taken.size() && taken[firstFree]) ++firstFree;
    }
    // Room behind the last base for every code, so that no walk leaves the array.
    std::size_t size = out.slots.size();
    for (const Slot& slot : out.slots)
        size = std::max<std::size_t>(size, slot.base + codeCount + 1);
    if (size >= kNoParent) return false;
    out.slots.resize(size, Slot{0, kNoParent, 0});
    return true;
}

}  // namespace Mensura::DoubleArray

#endif  // MENSURA_BASE_DOUBLE_ARRAY_BUILDER_H
