// Lookups of the table of units by unit id: every field out of range is an
// ordinary not-found, the extreme values included.
#include "units/unit_table.h"

#include <gtest/gtest.h>

#include "base/ids.h"

#include <vector>

namespace Mensura {
namespace {

const UnitTable& Catalog() {
    return UnitTable::Instance();
}

TEST(FindConverter, NeedsBothGroupAndType) {
    const int missing[] = {0, 0x2000, 0x1000, 0x0001, -1, 0x45001, 0x2043, 0xFF001, 0x2FFF};
    for (int id : missing) EXPECT_EQ(Catalog().FindConverter(id), nullptr) << std::hex << id;
    EXPECT_NE(Catalog().FindConverter(kUnitless), nullptr);
    EXPECT_NE(Catalog().FindConverter(0x2042), nullptr);
    EXPECT_NE(Catalog().FindConverter(0x44002), nullptr);
}

TEST(FindConverter, IgnoresTheSymbolAndTheTopBits) {
    const UnitConverter* foot = Catalog().FindConverter(kFoot);
    ASSERT_NE(foot, nullptr);
    EXPECT_EQ(Catalog().FindConverter(0x202017), foot);
    EXPECT_EQ(Catalog().FindConverter(0x70002017), foot);
    EXPECT_EQ(foot->GetFactor(), 0.3048);
}

TEST(ListUnitTypes, MergesTheArgumentIntoEveryId) {
    EXPECT_EQ(Catalog().ListUnitTypes(0x2000, nullptr), 66u);
    EXPECT_EQ(Catalog().ListUnitTypes(0x45000, nullptr), 0u);
    EXPECT_EQ(Catalog().ListUnitTypes(0, nullptr), 0u);

    std::vector<int> ids(1, -5);
    EXPECT_EQ(Catalog().ListUnitTypes(0x1000, ids.data()), 1u);
    EXPECT_EQ(ids[0], kUnitless);

    ids.assign(66, 0);
    EXPECT_EQ(Catalog().ListUnitTypes(0x2000, ids.data()), 66u);
    EXPECT_EQ(ids.front(), kMeter);
    EXPECT_EQ(ids.back(), 0x2042);

    // Other bits of the argument stay in every element.
    ids.assign(2, 0);
    EXPECT_EQ(Catalog().ListUnitTypes(0x106000, ids.data()), 2u);
    EXPECT_EQ(ids[0], 0x106001);
    EXPECT_EQ(ids[1], 0x106002);
}

TEST(ListUnitTypes, UnknownGroupLeavesTheArrayAlone) {
    int ids[2] = {-5, -5};
    EXPECT_EQ(Catalog().ListUnitTypes(0x45000, ids), 0u);
    EXPECT_EQ(ids[0], -5);
}

}  // namespace
}  // namespace Mensura
