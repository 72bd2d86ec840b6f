#include "units/unit_catalog.h"

namespace Mensura {

void FillConversionTable(UnitCatalog& catalog);

UnitCatalog::UnitCatalog() {
    FillConversionTable(*this);
    IndexConverters();
}

void UnitCatalog::IndexConverters() {
    converterIndex.fill(GroupSlots{});
    for (std::size_t group = 0; group < converters.size(); ++group) {
        converterIndex[group + 1] = {converters[group].data(),
                                     static_cast<std::uint32_t>(converters[group].size())};
    }
}

UnitCatalog::~UnitCatalog() {
    // Converters go first, then the index, as the load built them.
    converterIndex.fill(GroupSlots{});
    converters.clear();
    dimensionIndex.clear();
}

void UnitCatalog::RegisterDimensions(const Dimensions& exponents, int group) {
    auto [entry, inserted] = dimensionIndex.emplace(exponents, group);
    // A second group with the same exponents makes the key ambiguous for good.
    if (!inserted) entry->second = 0;
}

int UnitCatalog::FindGroupByDimensions(const Dimensions& exponents) const {
    auto entry = dimensionIndex.find(exponents);
    return entry == dimensionIndex.end() ? 0 : entry->second;
}

int UnitCatalog::FindGroupByDimensions(const int (&exponents)[7]) const {
    Dimensions key;
    for (std::size_t i = 0; i < key.size(); ++i) key[i] = exponents[i];
    return FindGroupByDimensions(key);
}

std::size_t UnitCatalog::ListUnitTypes(int group, int* ids) const {
    const std::uint32_t index = UnitId::GroupIndex(group);
    if (index >= converters.size()) return 0;
    const std::size_t count = converters[index].size();
    if (ids != nullptr) {
        for (std::size_t i = 0; i < count; ++i) ids[i] = static_cast<int>(i + 1) | group;
    }
    return count;
}

}  // namespace Mensura
