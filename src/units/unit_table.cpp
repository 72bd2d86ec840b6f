#include "units/unit_table.h"

#include <algorithm>

namespace Mensura {

void FillConversionTable(UnitTable& table);

UnitTable::UnitTable() : arena(room, kRoomBytes), converters(arena.Resource()) {
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

std::size_t UnitTable::CopyUnitTypes(int group, int* ids, std::size_t capacity) const {
    const int pure = static_cast<int>(static_cast<std::uint32_t>(group) & UnitId::GroupMask);
    const std::size_t count = ListUnitTypes(pure, nullptr);
    const std::size_t written = ids != nullptr ? std::min(count, capacity) : 0;
    for (std::size_t i = 0; i < written; ++i) ids[i] = pure | static_cast<int>(i + 1);
    return count;
}

}  // namespace Mensura
