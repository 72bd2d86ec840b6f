// The one process-wide table of unit groups, unit types and their
// converters, with the index from exponents to groups. Built once at library
// load and read-only after that, so every reader may use it from any thread
// without a lock. It knows no symbol and no text: the catalogue of symbols is
// built on it.
#ifndef MENSURA_UNITS_UNIT_TABLE_H
#define MENSURA_UNITS_UNIT_TABLE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <vector>

#include "base/arena.h"
#include "base/dimensions.h"
#include "base/unit_id.h"
#include "units/dimension_index.h"
#include "units/unit_converter.h"

namespace Mensura {

namespace ConversionTableSize {
// The numbers of groups and of unit types that conversion_table.inc lists.
struct Counts {
    std::size_t groups = 0;
    std::size_t types = 0;
};
constexpr Counts CountLines() {
    Counts counts;
#define GROUP(group, typeCount, ...) \
    ++counts.groups;                 \
    counts.types += (typeCount);
#define UNIT(...)
#define EQ(factor)
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
    return counts;
}
inline constexpr std::size_t kGroups = CountLines().groups;
inline constexpr std::size_t kTypes = CountLines().types;
}  // namespace ConversionTableSize

// What a conversion by id reads of every unit type, a place each: the
// arithmetic of its converter, and two keys, so that one compare of a key of
// each unit tells whether both are plain scales with the same exponents. The
// fields are in arrays of their own, so that a place reads each with a
// scaled index and no shift.
//
// The entries are constants that the compiler works out. Every group has a
// run of kRun places, a place for every value of the type field below kRun:
// its types' places, and places of no unit for type 0 and past its last
// type. Run 0 holds no unit at all, for every value of the group field that
// names no group. An id thus finds its place with no bound of its own group:
// a type field below kRun is a test of the id's bits, and `runs` gives the
// group's first place.
struct ConversionEntries {
    static constexpr std::size_t kRun = 128;
    static constexpr std::size_t kRuns = ConversionTableSize::kGroups + 1;
    static constexpr std::size_t kPlaces = kRuns * kRun;
    // The bits of a type field of kRun or more.
    static constexpr std::uint32_t kPastRun = 0xFFF & ~static_cast<std::uint32_t>(kRun - 1);

    // Both keys are the number of the unit's exponents times four, with a
    // mark in the low two bits for a scale with an offset: 1 in `into` and 2
    // in `outOf`. Every unit with the same exponents has the same number, and
    // no unit has 0 or kNoUnitOutOf >> 2: a place of no unit has the first in
    // `into` and the second in `outOf`, marked 3 and 2. So the `into` of one
    // place and the `outOf` of another differ in the two low bits at most
    // exactly when both are units of one dimension, and are equal exactly
    // when both are plain scales besides.
    static constexpr std::uint32_t kOffsetInto = 1;
    static constexpr std::uint32_t kOffsetOutOf = 2;
    static constexpr std::uint32_t kMarks = 3;
    static constexpr std::uint32_t kNoUnitInto = 3;
    static constexpr std::uint32_t kNoUnitOutOf = 0xFFFFFFFE;

    std::array<double, kPlaces> factor;
    std::array<std::uint32_t, kPlaces> into;
    std::array<std::uint32_t, kPlaces> outOf;
    std::array<double, kPlaces> offset;  // a temperature scale's; 0 for a plain scale
    // By the value of the group field: the first place of the group's run.
    std::array<std::uint32_t, 256> runs;

    bool IsUnit(std::size_t place) const { return into[place] != kNoUnitInto; }
    // The value in base units, as the converter computes it.
    double IntoBase(std::size_t place, double value) const {
        const double base = value * factor[place];
        return (into[place] & kOffsetInto) != 0 ? base + offset[place] : base;
    }
};

class UnitTable {
public:
    // Builds the conversion table.
    UnitTable();
    ~UnitTable();
    UnitTable(const UnitTable&) = delete;
    UnitTable& operator=(const UnitTable&) = delete;

    // The table of this process.
    static const UnitTable& Instance() { return s_instance; }

    // The converter of the unit type of `id` (any symbol bits are ignored), or
    // null when the group or type field is 0 or out of range.
    const UnitConverter* FindConverter(int id) const {
        const GroupSlots& group = converterIndex[(static_cast<std::uint32_t>(id) >> 12) & 0xFF];
        const std::uint32_t type = UnitId::TypeIndex(id);
        return type < group.count ? group.types[type].get() : nullptr;
    }

    // Converts value from the unit type of `from` into that of `to`: the
    // value itself for the same unit, UnitMismatch for an unknown id or other
    // dimensions. Inline, so that both faces of the library convert without
    // a call of their own. It reads the entries, not the converters, and
    // gives what the converters' DirectConvertTo gives, bit for bit: two
    // plain scales of one dimension take one compare of keys.
    ErrorCode Convert(double value, int from, double& out, int to) const {
        if (UnitId::SameUnit(from, to)) {
            out = value;
            return ErrorCode::Success;
        }
        // A type field past every run names no unit; below, the run of the
        // group, or run 0, tells.
        if (__builtin_expect(((static_cast<std::uint32_t>(from) | static_cast<std::uint32_t>(to)) &
                              ConversionEntries::kPastRun) != 0,
                             0)) {
            return ErrorCode::UnitMismatch;
        }
        const ConversionEntries& entries = s_entries;
        const std::size_t source = entries.runs[GroupField(from)] + TypeField(from);
        const std::size_t target = entries.runs[GroupField(to)] + TypeField(to);
        const std::uint32_t keys = entries.into[source] ^ entries.outOf[target];
        if (__builtin_expect(keys == 0, 1)) {
            out = value * entries.factor[source] / entries.factor[target];
            return ErrorCode::Success;
        }
        if (__builtin_expect(keys <= ConversionEntries::kMarks, 1)) {
            // A temperature scale on one side or both, without a branch:
            // the 0 of a plain side changes nothing, in any rounding mode.
            // It could only turn the sign of a zero. A plain source's zero
            // base value then meets the target's offset, which is not 0,
            // and the difference is the same. Subtracting 0 changes only
            // +0, and only when rounding down, which makes a temperature
            // source's sum with its offset +0 only when both are.
            out =
                (value * entries.factor[source] + entries.offset[source] - entries.offset[target]) /
                entries.factor[target];
            return ErrorCode::Success;
        }
        // Other exponents, or no unit. As with the converters, out holds
        // the base value when only the exponents differ.
        if (entries.IsUnit(source) && entries.IsUnit(target)) out = entries.IntoBase(source, value);
        return ErrorCode::UnitMismatch;
    }

    // The place of the unit type of id among all types, group by group; false
    // when the group or type field is 0 or out of range.
    bool TypePlace(int id, std::size_t& place) const {
        const GroupSlots& group = converterIndex[(static_cast<std::uint32_t>(id) >> 12) & 0xFF];
        const std::uint32_t type = UnitId::TypeIndex(id);
        if (type >= group.count) return false;
        place = static_cast<std::size_t>(group.types - converters.data()) + type;
        return true;
    }

    // The group id of the one group with these exponents; 0 when none or
    // several groups have them.
    int FindGroupByDimensions(const Dimensions& exponents) const {
        return dimensionIndex.Find(exponents);
    }

    // Writes the unit type ids of the group of `group` (its other bits merged
    // into every element) when ids is not null, and returns their count; 0
    // for an unknown group.
    std::size_t ListUnitTypes(int group, int* ids) const;
    // The unit type ids of the group field of `group`, its other bits
    // dropped: writes the first min(count, capacity) of them when ids is not
    // null and returns the count; 0 for an unknown group.
    std::size_t CopyUnitTypes(int group, int* ids, std::size_t capacity) const;

    std::size_t GroupCount() const { return groupCount; }
    std::size_t TypeCount() const { return converters.size(); }
    // Every key of the exponent index with its group id, or 0 where shared.
    const DimensionIndex& GroupsByDimensions() const { return dimensionIndex; }

private:
    friend class ConversionTableBuilder;

    // The group field of an id as it is, 0 included; and its type field
    // below kRun, where Convert has seen that it is.
    static std::size_t GroupField(int id) { return (static_cast<std::uint32_t>(id) >> 12) & 0xFF; }
    static std::size_t TypeField(int id) {
        return static_cast<std::uint32_t>(id) & (ConversionEntries::kRun - 1);
    }

    static UnitTable s_instance;

    using ConverterSlot = std::unique_ptr<UnitConverter, DestroyInPlace>;
    // The table keeps its converters and their slots in its own room, so
    // that building it takes nothing from the heap: each converter, of
    // either class, and the slots take a whole number of the largest
    // alignment (Arena::Rounded).
    static constexpr std::size_t kRoomBytes =
        Arena::Rounded(ConversionTableSize::kTypes * sizeof(ConverterSlot)) +
        ConversionTableSize::kTypes *
            Arena::Rounded(std::max(sizeof(GenericConverter), sizeof(LinearConverter)));
    alignas(std::max_align_t) unsigned char room[kRoomBytes];
    Arena arena;

    // Every value of the group field, 0 and those past the last group included,
    // finds an entry here, so that a conversion looks a unit up with one
    // compare: an unknown group has no slots.
    struct GroupSlots {
        const ConverterSlot* types = nullptr;
        std::uint32_t count = 0;
    };

    // Every unit type's converter in one array, group after group in the
    // order of their numbers; converterIndex finds a group's run of it.
    std::pmr::vector<ConverterSlot> converters;
    std::size_t groupCount = 0;
    DimensionIndex dimensionIndex;
    std::array<GroupSlots, 256> converterIndex{};

    // What a conversion by id reads, constants of the library's image
    // (conversion_table.cpp): conversions by id stay right for as long as
    // the image is loaded, the table's own life aside.
    static const ConversionEntries s_entries;
};

}  // namespace Mensura

#endif  // MENSURA_UNITS_UNIT_TABLE_H
