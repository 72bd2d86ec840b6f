// Walking the catalogue from groups to unit types and symbols, and the display
// names, through the shared library.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "mensura/mensura.hpp"

namespace {

using Mensura::Converter;
using Mensura::Formatter;

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

// The Get queries merge their argument into every id, as documented; the Copy
// ones take only the fields they name and give pure ids.
TEST(CopyUnitTypes, GivesPureIdsWhereGetUnitTypesMergesTheArgument) {
    std::vector<int> merged(66), pure(66), twin(66);
    ASSERT_EQ(GetUnitTypes(0x202017, merged.data()), 66u);
    ASSERT_EQ(CopyUnitTypes(0x202017, pure.data(), pure.size()), 66u);
    ASSERT_EQ(Converter::CopyUnitTypes(static_cast<int>(0x80202017u), twin.data(), twin.size()),
              66u);
    for (int i = 0; i < 66; ++i) {
        EXPECT_EQ(merged[i], 0x202017 | (i + 1)) << i;
        EXPECT_EQ(pure[i], 0x2000 + i + 1) << i;
    }
    EXPECT_EQ(twin, pure);
}

TEST(CopyUnitSymbols, ReplacesTheSymbolFieldWhereGetUnitSymbolsMergesIt) {
    int merged[3] = {}, pure[3] = {}, twin[3] = {};
    ASSERT_EQ(GetUnitSymbols(0x202017, merged), 3u);
    ASSERT_EQ(CopyUnitSymbols(0x202017, pure, 3), 3u);
    ASSERT_EQ(Formatter::CopyUnitSymbols(static_cast<int>(0x80302017u), twin, 3), 3u);
    EXPECT_EQ(std::vector<int>(merged, merged + 3),
              (std::vector<int>{0x302017, 0x202017, 0x302017}));
    EXPECT_EQ(std::vector<int>(pure, pure + 3), (std::vector<int>{0x102017, 0x202017, 0x302017}));
    EXPECT_EQ(std::vector<int>(twin, twin + 3), std::vector<int>(pure, pure + 3));
}

// Over the whole catalogue, the Copy queries give what the Get ones give for
// pure ids, and a short capacity gives the first ids and leaves the rest. The
// types of a group are numbered from 1; that each converts into the group's
// first is held with the dimensions of every type.
TEST(CopyQueries, AgreeWithTheGetQueriesOverTheCatalogue) {
    std::vector<int> groups(68), copied(69, -5);
    ASSERT_EQ(GetUnitGroups(groups.data()), 68u);
    ASSERT_EQ(CopyUnitGroups(copied.data(), 67), 68u);
    EXPECT_EQ(std::vector<int>(copied.begin(), copied.begin() + 67),
              std::vector<int>(groups.begin(), groups.begin() + 67));
    EXPECT_EQ(copied[67], -5);
    EXPECT_EQ(Converter::CopyUnitGroups(copied.data(), 68), 68u);
    EXPECT_EQ(std::vector<int>(copied.begin(), copied.begin() + 68), groups);
    for (int group : groups) {
        std::vector<int> types(GetUnitTypes(group, nullptr));
        GetUnitTypes(group, types.data());
        std::vector<int> copiedTypes(types.size() + 1, -5);
        ASSERT_EQ(CopyUnitTypes(group, copiedTypes.data(), types.size() - 1), types.size());
        EXPECT_EQ(copiedTypes[types.size() - 1], -5) << std::hex << group;
        ASSERT_EQ(CopyUnitTypes(group, copiedTypes.data(), types.size()), types.size());
        copiedTypes.pop_back();
        EXPECT_EQ(copiedTypes, types) << std::hex << group;
        for (std::size_t i = 0; i < types.size(); ++i) {
            EXPECT_EQ(types[i], group | static_cast<int>(i + 1)) << std::hex << group;
        }
        for (int type : types) {
            std::vector<int> symbols(GetUnitSymbols(type, nullptr));
            GetUnitSymbols(type, symbols.data());
            std::vector<int> copiedSymbols(symbols.size());
            ASSERT_EQ(CopyUnitSymbols(type, copiedSymbols.data(), copiedSymbols.size()),
                      symbols.size());
            EXPECT_EQ(copiedSymbols, symbols) << std::hex << type;
        }
    }
}

// Only 2052 is Chinese: every locale id answers as a formatter made for it.
TEST(GetDisplayName, AnswersEachLocaleAsAFormatterOfIt) {
    const int locales[] = {2052, 1033, 0, -1, 12345, INT_MIN, INT_MAX};
    const int ids[] = {0x2000, 0x2017, 0x202017};
    for (int locale : locales) {
        const Formatter formatter(locale);
        for (int id : ids) {
            char16_t flat[32] = {}, member[32] = {};
            ASSERT_EQ(GetDisplayName(locale, id, flat, 32), 0) << locale;
            ASSERT_EQ(formatter.GetDisplayName(id, member, 32), Mensura::ErrorCode::Success);
            EXPECT_EQ(std::u16string(flat), std::u16string(member)) << locale << " " << id;
        }
        char16_t name[32] = {};
        GetDisplayName(locale, 0x2017, name, 32);
        EXPECT_EQ(std::u16string(name), locale == 2052 ? u"英尺" : u"foot") << locale;
    }
}

}  // namespace
