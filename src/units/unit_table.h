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
// The number of unit types that conversion_table.inc lists.
inline constexpr std::size_t kTypes = 0
#define GROUP(group, types, ...) +(types)
#define UNIT(...)
#define EQ(factor)
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
    ;
}  // namespace ConversionTableSize

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
    // a call of their own.
    ErrorCode Convert(double value, int from, double& out, int to) const {
        if (UnitId::SameUnit(from, to)) {
            out = value;
            return ErrorCode::Success;
        }
        const UnitConverter* source = FindConverter(from);
        const UnitConverter* target = FindConverter(to);
        if (source == nullptr || target == nullptr) return ErrorCode::UnitMismatch;
        return source->DirectConvertTo(value, out, *target);
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
};

}  // namespace Mensura

#endif  // MENSURA_UNITS_UNIT_TABLE_H
