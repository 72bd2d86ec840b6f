// Walking the catalogue from groups to unit types, through the shared library.
#include <gtest/gtest.h>

#include <vector>

#include "mensura/mensura.hpp"

namespace {

using Mensura::Converter;

TEST(GetUnitGroups, ListsTheSixtyEightGroupsInOrder) {
    EXPECT_EQ(Converter::GetUnitGroups(nullptr), 68u);
    EXPECT_EQ(GetUnitGroups(nullptr), 68u);
    std::vector<int> ids(68, 0);
    ASSERT_EQ(GetUnitGroups(ids.data()), 68u);
    for (int i = 0; i < 68; ++i) EXPECT_EQ(ids[i], (i + 1) << 12);
}

TEST(GetUnitTypes, CountsAndListsEachGroup) {
    struct Row {
        int group;
        std::size_t count;
    } rows[] = {{0x1000, 1}, {0x2000, 66}, {0x4000, 94}, {0x2A000, 4}, {0x44000, 2},
                {0, 0},      {0x45000, 0}, {0xFF000, 0}, {-1, 0}};
    for (const Row& row : rows) {
        EXPECT_EQ(Converter::GetUnitTypes(row.group, nullptr), row.count) << std::hex << row.group;
        EXPECT_EQ(GetUnitTypes(row.group, nullptr), row.count) << std::hex << row.group;
    }
}

// Every listed id converts: the whole catalogue can be walked through the queries.
TEST(GetUnitTypes, EveryListedTypeConvertsToItsGroupsFirstType) {
    std::vector<int> groups(GetUnitGroups(nullptr));
    GetUnitGroups(groups.data());
    std::size_t total = 0;
    for (int group : groups) {
        std::vector<int> types(GetUnitTypes(group, nullptr));
        ASSERT_EQ(GetUnitTypes(group, types.data()), types.size());
        for (std::size_t i = 0; i < types.size(); ++i) {
            EXPECT_EQ(types[i], group | static_cast<int>(i + 1));
            double out = 0.0;
            EXPECT_EQ(Convert(1.0, types[i], &out, group | 1), 0) << std::hex << types[i];
            EXPECT_NE(ConversionFactor(types[i], types[i]), 0.0);
        }
        total += types.size();
    }
    EXPECT_EQ(total, 773u);
}

TEST(GetUnitTypes, UnknownGroupLeavesTheArrayAlone) {
    int ids[1] = {-3};
    EXPECT_EQ(GetUnitTypes(0x45000, ids), 0u);
    EXPECT_EQ(ids[0], -3);
}

}  // namespace
