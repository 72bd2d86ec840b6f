// The everyday vocabulary against the catalogue it is built on: its keys
// never shadow a catalogue key, its plurals follow the head noun, and every
// key of the catalogue reads alike in both readings unless the list replaces
// its symbol.
#include <gtest/gtest.h>

#include <string>

#include "base/ids.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "grammar/parse_symbol.h"
#include "mensura/mensura.hpp"
#include "notations/format_symbol.h"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace Mensura {
namespace {

using MensuraTest::Narrow;
using MensuraTest::SameBits;

const IParseSymbol* CatalogueKey(const std::u16string& key) {
    std::size_t matched = 0;
    const IParseSymbol* symbol =
        UnitCatalog::Instance().Dictionary().FindLongest(key.c_str(), &matched);
    return matched == key.size() ? symbol : nullptr;
}

TEST(EverydayVocabulary, AddsOnlyKeysThatTheCatalogueLacks) {
    const auto words = EverydayVocabulary::Instance().Words().Keys();
    ASSERT_GT(words.size(), 500u);
    for (const auto& [key, meaning] : words) {
        EXPECT_EQ(CatalogueKey(key), nullptr) << Narrow(key.c_str());
        EXPECT_NE(meaning->For(true), nullptr) << Narrow(key.c_str());
    }
}

TEST(EverydayVocabulary, PluralsReadAsTheirNames) {
    const EverydayVocabulary& everyday = EverydayVocabulary::Instance();
    const struct {
        const char16_t* plural;
        const char16_t* name;
    } rows[] = {{u"feet", u"foot"},
                {u"inches", u"inch"},
                {u"metres", u"metre"},
                {u"square feet", u"square foot"},
                {u"meters per second", u"meter per second"},
                {u"degrees Celsius", u"degree Celsius"},
                {u"pounds force", u"pound force"},
                {u"gallons", u"gallon"},
                {u"centuries", u"century"}};
    for (const auto& row : rows) {
        const std::u16string plural(row.plural);
        std::size_t matched = 0;
        const IParseSymbol* read = everyday.FindLongest(plural.c_str(), &matched, -1, true);
        ASSERT_NE(read, nullptr) << Narrow(row.plural);
        EXPECT_EQ(matched, plural.size()) << Narrow(row.plural);
        EXPECT_EQ(read, CatalogueKey(row.name)) << Narrow(row.plural);
    }
    // Names that end in s, x or z take no plural of their own.
    for (const char16_t* none : {u"hertzs", u"hertzes", u"siemenses", u"luxes"}) {
        std::size_t matched = 0;
        const std::u16string text(none);
        everyday.FindLongest(text.c_str(), &matched, -1, true);
        EXPECT_LT(matched, text.size()) << Narrow(none);
    }
}

TEST(EverydayVocabulary, PrefixesScaleTheirSymbol) {
    const EverydayVocabulary& everyday = EverydayVocabulary::Instance();
    const struct {
        const char16_t* key;
        double factor;
    } rows[] = {{u"kJ", 1e3},    {u"hPa", 1e2}, {u"GHz", 1e9}, {u"μs", 1e-6}, {u"ZJ", 1e21},
                {u"MWh", 3.6e9}, {u"hL", 0.1},  {u"kWb", 1e3}, {u"μΩ", 1e-6}, {u"fT", 1e-15}};
    for (const auto& row : rows) {
        const std::u16string key(row.key);
        std::size_t matched = 0;
        const IParseSymbol* read = everyday.FindLongest(key.c_str(), &matched, -1, true);
        ASSERT_NE(read, nullptr) << Narrow(row.key);
        ASSERT_NE(read->AsOperand(), nullptr) << Narrow(row.key);
        EXPECT_DOUBLE_EQ(read->AsOperand()->GetConverter().GetFactor(), row.factor)
            << Narrow(row.key);
    }
}

// The build finds the keys with the micro sign in the lists at compile time;
// a walk of the dictionary finds every one of them, and its twin with the
// Greek mu reads as it does (or, where a prefixed symbol took the twin
// first, at the same scale).
TEST(EverydayVocabulary, GreekMuTwinsEveryMicroSignKey) {
    const EverydayVocabulary& everyday = EverydayVocabulary::Instance();
    std::size_t twins = 0;
    for (const auto& [key, symbol] : UnitCatalog::Instance().Dictionary().Keys()) {
        if (key.find(u'\u00B5') == std::u16string::npos) continue;
        std::u16string twin = key;
        for (char16_t& unit : twin) {
            if (unit == u'\u00B5') unit = u'\u03BC';
        }
        if (CatalogueKey(twin) != nullptr) continue;
        ++twins;
        std::size_t matched = 0;
        const IParseSymbol* read = everyday.FindLongest(twin.c_str(), &matched, -1, false);
        ASSERT_NE(read, nullptr) << Narrow(twin.c_str());
        EXPECT_EQ(matched, twin.size()) << Narrow(twin.c_str());
        if (read == symbol) continue;
        ASSERT_NE(read->AsOperand(), nullptr) << Narrow(twin.c_str());
        ASSERT_NE(symbol->AsOperand(), nullptr) << Narrow(key.c_str());
        EXPECT_DOUBLE_EQ(read->AsOperand()->GetConverter().GetFactor(),
                         symbol->AsOperand()->GetConverter().GetFactor())
            << Narrow(twin.c_str());
    }
    EXPECT_GT(twins, 20u);
}

// The build reserves the tree's pools at once: they must hold the words.
TEST(EverydayVocabulary, WordsFitTheRoomReservedForThem) {
    const auto pools = EverydayVocabulary::Instance().Words().Layout();
    // A step of an insertion makes room for three nodes before it begins.
    EXPECT_LE(pools.nodeCount + 2, EverydayVocabulary::kWordNodes);
    EXPECT_LE(pools.unitCount, EverydayVocabulary::kWordUnits);
    EXPECT_LE(pools.edgeCount, EverydayVocabulary::kWordEdges);
}

// Only units have everyday meanings, and every meaning is a unit: the short
// ways of parsing look a meaning up for a unit's key alone, as any other key
// reads the same in both readings.
TEST(EverydayVocabulary, OnlyUnitsAreReplacedAndOnlyByUnits) {
    const EverydayVocabulary& everyday = EverydayVocabulary::Instance();
    std::size_t replaced = 0;
    for (const auto& [key, symbol] : UnitCatalog::Instance().Dictionary().Keys()) {
        for (const bool us : {false, true}) {
            const IParseSymbol* meaning = everyday.Substitute(symbol, us);
            if (meaning == symbol) continue;
            ++replaced;
            EXPECT_EQ(symbol->Kind(), ParseKind::Operand) << Narrow(key.c_str());
            EXPECT_EQ(meaning->Kind(), ParseKind::Operand) << Narrow(key.c_str());
        }
    }
    EXPECT_GE(replaced, everyday.ReplacedCount());
}

// "5 <key>" for every key of the catalogue that names a unit: the everyday
// reading gives the same code and the same bits, unless its symbol is one
// that the list replaces.
TEST(EverydayVocabulary, EveryCatalogueKeyReadsAsBefore) {
    const EverydayVocabulary& everyday = EverydayVocabulary::Instance();
    Formatter plain;
    Formatter daily;
    daily.SetEverydayReading(true);
    std::size_t compared = 0;
    std::size_t replaced = 0;
    for (const auto& [key, symbol] : UnitCatalog::Instance().Dictionary().Keys()) {
        const int unit = UnitOfKey(symbol);
        if (unit == 0) continue;
        if (everyday.Substitute(symbol, true) != symbol) {
            ++replaced;
            continue;
        }
        const std::u16string text = u"5 " + key;
        double before = -1.0;
        double after = -2.0;
        const ErrorCode code = plain.Parse(text.c_str(), before, unit);
        EXPECT_EQ(daily.Parse(text.c_str(), after, unit), code) << Narrow(text.c_str());
        if (code == ErrorCode::Success) {
            EXPECT_TRUE(SameBits(before, after)) << Narrow(text.c_str());
            ++compared;
        }
    }
    EXPECT_GT(compared, 3000u);
    EXPECT_GE(replaced, everyday.ReplacedCount());
}

}  // namespace
}  // namespace Mensura
