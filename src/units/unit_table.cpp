#include "units/unit_table.h"

namespace Mensura {

// The most bytes that the conversion table takes from the table's memory.
std::size_t ConversionTableBytes();
void FillConversionTable(UnitTable& table);

UnitTable::UnitTable() : arena(ConversionTableBytes()), converters(arena.Resource()) {
    FillConversionTable(*this);
}

UnitTable::~UnitTable() {
    // The converters go before the memory that holds them.
    converterIndex.fill(GroupSlots{});
    converters.clear();
    dimensionIndex.Clear();
}

std::size_t UnitTable::ListUnitTypes(int group, int* ids) const {
    const std::uint32_t index = UnitId::GroupIndex(group);
    if (index >= groupCount) return 0;
    const std::size_t count = converterIndex[index + 1].count;
    if (ids != nullptr) {
        for (std::size_t i = 0; i < count; ++i) ids[i] = static_cast<int>(i + 1) | group;
    }
    return count;
}

}  // namespace Mensura
