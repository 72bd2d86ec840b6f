// The one process-wide tree of unit groups, unit types and their converters.
// Built once at library load and read-only after that, so every reader may
// use it from any thread without a lock.
#ifndef MENSURA_UNITS_UNIT_CATALOG_H
#define MENSURA_UNITS_UNIT_CATALOG_H

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include "units/dimensions.h"
#include "units/unit_converter.h"
#include "units/unit_id.h"

namespace Mensura {

class UnitCatalog {
public:
    // Builds the conversion table.
    UnitCatalog();
    ~UnitCatalog();
    UnitCatalog(const UnitCatalog&) = delete;
    UnitCatalog& operator=(const UnitCatalog&) = delete;

    // The catalogue of this process.
    static const UnitCatalog& Instance() { return s_instance; }

    // The converter of the unit type of `id` (any symbol bits are ignored), or
    // null when the group or type field is 0 or out of range.
    const UnitConverter* FindConverter(int id) const {
        const GroupSlots& group = converterIndex[(static_cast<std::uint32_t>(id) >> 12) & 0xFF];
        const std::uint32_t type = UnitId::TypeIndex(id);
        return type < group.count ? group.types[type].get() : nullptr;
    }

    // The group id of the one group with these exponents; 0 when none or
    // several groups have them.
    int FindGroupByDimensions(const int (&exponents)[7]) const;
    int FindGroupByDimensions(const Dimensions& exponents) const;

    // Writes the unit type ids of the group of `group` (its other bits merged
    // into every element) when ids is not null, and returns their count; 0
    // for an unknown group.
    std::size_t ListUnitTypes(int group, int* ids) const;

    std::size_t GroupCount() const { return converters.size(); }
    // Every key of the exponent index with its group id, or 0 where shared.
    const std::map<Dimensions, int>& DimensionIndex() const { return dimensionIndex; }

private:
    friend class ConversionTableBuilder;

    // Registers a group's exponents: a key seen twice holds 0 for good.
    void RegisterDimensions(const Dimensions& exponents, int group);

    // Every value of the group field, 0 and those past the last group included,
    // finds an entry here, so that a conversion looks a unit up with one
    // compare: an unknown group has no slots.
    struct GroupSlots {
        const std::unique_ptr<UnitConverter>* types = nullptr;
        std::uint32_t count = 0;
    };
    void IndexConverters();

    static UnitCatalog s_instance;

    std::vector<std::vector<std::unique_ptr<UnitConverter>>> converters;
    std::map<Dimensions, int> dimensionIndex;
    std::array<GroupSlots, 256> converterIndex{};
};

}  // namespace Mensura

#endif  // MENSURA_UNITS_UNIT_CATALOG_H
