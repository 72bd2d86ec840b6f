// The whole catalogue walked through the public queries in both languages, and
// the Chinese vocabulary as a caller meets it.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>
#include <vector>

#include "mensura/mensura.hpp"
#include "support/narrow.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;

std::vector<int> List(std::size_t (*query)(int, int*), int id) {
    std::vector<int> ids(query(id, nullptr));
    if (!ids.empty()) query(id, ids.data());
    return ids;
}

// A name fits a buffer of its length plus one, not one unit less, and a
// refusal leaves the buffer as it was.
void ExpectNameFitsItsBuffer(const Formatter& formatter, int id) {
    char16_t buffer[256];
    ASSERT_EQ(formatter.GetDisplayName(id, buffer, 256), ErrorCode::Success) << std::hex << id;
    const std::u16string name(buffer);
    char16_t exact[256];
    EXPECT_EQ(formatter.GetDisplayName(id, exact, name.size() + 1), ErrorCode::Success);
    EXPECT_EQ(std::u16string(exact), name);
    if (name.empty()) return;
    char16_t shorter[256] = {u'#', 0};
    EXPECT_EQ(formatter.GetDisplayName(id, shorter, name.size()), ErrorCode::Failure)
        << std::hex << id;
    EXPECT_EQ(shorter[0], u'#');
}

TEST(CatalogueWalk, EveryIdHasADisplayNameInBothLanguages) {
    std::vector<int> groups(GetUnitGroups(nullptr));
    GetUnitGroups(groups.data());
    for (int locale : {1033, 2052}) {
        const Formatter formatter(locale);
        std::size_t symbols = 0;
        for (int group : groups) {
            ExpectNameFitsItsBuffer(formatter, group);
            for (int type : List(&GetUnitTypes, group)) {
                ExpectNameFitsItsBuffer(formatter, type);
                for (int symbol : List(&GetUnitSymbols, type)) {
                    ExpectNameFitsItsBuffer(formatter, symbol);
                    ++symbols;
                }
            }
        }
        EXPECT_EQ(symbols, 1842u);
    }
}

TEST(DisplayNames, NameGroupsTypesAndSymbolsInBothLanguages) {
    const Formatter english;
    const Formatter chinese(2052);
    const struct {
        int id;
        const char16_t* english;
        const char16_t* chinese;
    } rows[] = {{0x2000, u"Length", u"长度"},
                {kMeter, u"meter", u"米"},
                {0x202001, u"m", u"m"},
                {0x202017, u"ft", u"ft"},
                {kUnitless, u"unitless", u"无量纲"}};
    for (const auto& row : rows) {
        char16_t buffer[64];
        ASSERT_EQ(english.GetDisplayName(row.id, buffer, 64), ErrorCode::Success);
        EXPECT_EQ(std::u16string(buffer), row.english) << std::hex << row.id;
        ASSERT_EQ(chinese.GetDisplayName(row.id, buffer, 64), ErrorCode::Success);
        EXPECT_EQ(std::u16string(buffer), row.chinese) << std::hex << row.id;
    }
    // Groups whose names read the same in both languages.
    for (int group : {34, 35, 36, 37, 66}) {
        char16_t name[64], other[64];
        ASSERT_EQ(chinese.GetDisplayName(group << 12, name, 64), ErrorCode::Success);
        ASSERT_EQ(english.GetDisplayName(group << 12, other, 64), ErrorCode::Success);
        EXPECT_EQ(std::u16string(name), std::u16string(other)) << group;
    }
}

TEST(ChineseVocabulary, KeysReadInEveryFormatter) {
    for (int locale : {1033, 2052}) {
        const Formatter formatter(locale);
        double value = 0.0;
        ASSERT_EQ(formatter.Parse(u"5 米", value, kMeter), ErrorCode::Success);
        EXPECT_EQ(value, 5.0);
        ASSERT_EQ(formatter.Parse(u"5 meter", value, kMeter), ErrorCode::Success);
        EXPECT_EQ(value, 5.0);
        // Full-width brackets are part of the key; plain ones make another text.
        ASSERT_EQ(formatter.Parse(u"5 英尺（本）", value, 0x2018), ErrorCode::Success);
        EXPECT_EQ(value, 5.0);
        EXPECT_EQ(formatter.Parse(u"5 英尺(本)", value, 0x2018), ErrorCode::ParseFailure);
        ASSERT_EQ(formatter.Parse(u"5 ft (本)", value, 0x2018), ErrorCode::Success);
        // A text shared by two places reads as the first.
        ASSERT_EQ(formatter.Parse(u"1 平方英里", value, 0x3006), ErrorCode::Success);
        EXPECT_EQ(value, 1.0);
    }
}

}  // namespace
