// The symbol trees and the parse dictionary as the load leaves them, measured
// from the catalogue itself.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <map>
#include <set>
#include <string>
#include <vector>

#include "catalogue/unit_catalog.h"
#include "catalogue/vocabulary.h"
#include "notations/format_symbol.h"

namespace Mensura {
namespace {

const UnitCatalog& Catalog() {
    return UnitCatalog::Instance();
}

constexpr int Id(int group, int type, int symbol) {
    return (symbol << 20) | (group << 12) | type;
}

const ISymbol* SymbolAt(int group, int type, int symbol, int language = 0) {
    return Catalog().FindSymbol(Id(group, type, symbol), language);
}

// The dictionary's symbol for the longest key at the start of text.
const IParseSymbol* Lookup(const char16_t* text, std::size_t* matched = nullptr) {
    std::size_t ignored = 0;
    return Catalog().Dictionary().FindLongest(text, matched != nullptr ? matched : &ignored);
}

// The reading face of the symbol with a complete id.
const IParseSymbol* Reader(int id, int language = 0) {
    return dynamic_cast<const IParseSymbol*>(Catalog().FindSymbol(id, language));
}

// What the load made of every key that the vocabulary lists ask for, seen
// from the dictionary as the load left it. A key keeps its first holder, so
// the holder tells whether one asking took the key or was refused, and by
// whom. The asks are replayed in the order of registration: operators, then
// English, then Chinese, group by group in kRegistrationOrder.
struct Asks {
    int calls = 0;        // keys asked for
    int accepted = 0;     // those that the asking symbol holds, asked for the first time
    int ownTexts = 0;     // symbols that ask with their own text
    int furtherKeys = 0;  // further keys asked for
};

struct Refusals {
    int sameTypeOtherLanguage = 0;  // a Chinese key that English holds for the same type
    int sameTypeSameLanguage = 0;   // a symbol of the same type in the same language
    int operatorHeld = 0;           // a unit text that an operator holds
    int otherType = 0;              // a key that another unit type claimed first
};

class Replay {
public:
    Replay() {
        for (int language = 0; language < 2; ++language) {
            for (int group : Vocabulary::kRegistrationOrder) {
                for (const auto& line : Vocabulary::kEnglishTypes) {
                    if (line.group == group) AskFor(line, language);
                }
            }
        }
    }

    Asks languages[2];
    Refusals refused;

private:
    void AskFor(const Vocabulary::TypeLine<Vocabulary::EnglishEntry>& line, int language) {
        const Vocabulary::ChineseEntry* replaced[16] = {};
        if (language == 1) {
            for (const auto& own : Vocabulary::kChineseTypes) {
                if (own.group != line.group || own.type != line.type) continue;
                for (std::size_t i = 0; i < own.count; ++i)
                    replaced[own.entries[i].symbol - 1] = &own.entries[i];
            }
        }
        for (std::size_t i = 0; i < line.count; ++i) {
            const Vocabulary::EnglishEntry& entry = line.entries[i];
            if (entry.marks & Vocabulary::NoKey) continue;
            const int id = Id(line.group, line.type, static_cast<int>(i + 1));
            const IParseSymbol* asker = Reader(id, language);
            ASSERT_NE(asker, nullptr) << std::hex << id;
            std::vector<std::u16string> keys;
            if (replaced[i] != nullptr) {
                keys.emplace_back(replaced[i]->text);
                for (const char16_t* key : replaced[i]->keys) keys.emplace_back(key);
            } else {
                keys.emplace_back(entry.text);
                for (const char16_t* key : entry.keys) keys.emplace_back(key);
            }
            Asks& asks = languages[language];
            ++asks.ownTexts;
            asks.furtherKeys += static_cast<int>(keys.size()) - 1;
            for (const std::u16string& key : keys) Ask(key, asker, id, language, asks);
        }
    }

    void Ask(const std::u16string& key, const IParseSymbol* asker, int id, int language,
             Asks& asks) {
        ++asks.calls;
        std::size_t matched = 0;
        const IParseSymbol* holder = Catalog().Dictionary().FindLongest(key.c_str(), &matched);
        ASSERT_NE(holder, nullptr);
        ASSERT_EQ(matched, key.size());
        if (holder == asker && taken.insert(key).second) {
            ++asks.accepted;
            return;
        }
        const int unit = id & 0xFFFFF;
        const int holderUnit = UnitOfKey(holder);
        if (holderUnit == 0) {
            ++refused.operatorHeld;
        } else if (holderUnit != unit) {
            ++refused.otherType;
        } else if (language != 0 && IsEnglish(holder, id)) {
            ++refused.sameTypeOtherLanguage;
        } else {
            ++refused.sameTypeSameLanguage;
        }
    }

    static bool IsEnglish(const IParseSymbol* holder, int id) {
        const int unit = id & 0xFFFFF;
        const std::size_t count = Catalog().ListUnitSymbols(unit, nullptr);
        for (std::size_t s = 1; s <= count; ++s) {
            if (Reader((static_cast<int>(s) << 20) | unit, 0) == holder) return true;
        }
        return false;
    }

    std::set<std::u16string> taken;
};

const Replay& Replayed() {
    static const Replay replay;
    return replay;
}

TEST(Vocabulary, EnglishRegistrationMakesItsPublishedInsertCalls) {
    const Asks& english = Replayed().languages[0];
    EXPECT_EQ(english.calls, 2733);
    EXPECT_EQ(english.ownTexts, 1833);
    EXPECT_EQ(english.furtherKeys, 900);
    EXPECT_EQ(english.accepted, 2708);
}

TEST(Vocabulary, ChineseRegistrationMakesItsPublishedInsertCalls) {
    const Asks& chinese = Replayed().languages[1];
    EXPECT_EQ(chinese.calls, 2649);
    EXPECT_EQ(chinese.ownTexts, 1833);
    EXPECT_EQ(chinese.furtherKeys, 816);
    // Every Chinese key that English does not already hold.
    EXPECT_EQ(chinese.accepted, 1091);
}

TEST(Vocabulary, OperatorsComeFirstAndHoldAllTheirKeys) {
    const auto keys = Catalog().Dictionary().Keys();
    int operatorKeys = 0;
    for (const auto& [key, holder] : keys) {
        if (UnitOfKey(holder) == 0) ++operatorKeys;
    }
    EXPECT_EQ(operatorKeys, 34);
    const Asks* languages = Replayed().languages;
    const int calls = operatorKeys + languages[0].calls + languages[1].calls;
    EXPECT_EQ(keys.size(), 3833u);
    EXPECT_EQ(
        static_cast<std::size_t>(operatorKeys + languages[0].accepted + languages[1].accepted),
        keys.size());
    EXPECT_EQ(calls, 5416);
    // Who held each refused key.
    const Refusals& refused = Replayed().refused;
    EXPECT_EQ(refused.sameTypeOtherLanguage, 1530);
    EXPECT_EQ(refused.sameTypeSameLanguage, 11);
    EXPECT_EQ(refused.operatorHeld, 22);
    EXPECT_EQ(refused.otherType, 20);
}

TEST(Dictionary, UnitTextsThatOperatorsHoldReadAsTheOperators) {
    // These symbols render with the text, but reading it finds the operator.
    const int places[] = {Id(2, 22, 4),  Id(44, 1, 4), Id(8, 9, 3),   Id(2, 23, 3),
                          Id(44, 22, 3), Id(8, 8, 5),  Id(44, 24, 2), Id(8, 2, 2),
                          Id(23, 1, 2),  Id(29, 1, 2), Id(39, 1, 2)};
    for (int language = 0; language < 2; ++language) {
        for (int place : places) {
            const auto* symbol =
                dynamic_cast<const IFormatSymbol*>(Catalog().FindSymbol(place, language));
            ASSERT_NE(symbol, nullptr) << std::hex << place;
            std::size_t matched = 0;
            const IParseSymbol* found = Lookup(symbol->GetText(), &matched);
            ASSERT_NE(found, nullptr);
            EXPECT_EQ(found->AsOperand(), nullptr) << std::hex << place;
            EXPECT_NE(found, Reader(place, language));
        }
    }
}

TEST(Vocabulary, BothTreesHaveTheShapeOfTheConversionTable) {
    for (int language = 0; language < 2; ++language) {
        std::map<std::size_t, int> histogram;  // symbols on a type -> types
        std::size_t symbols = 0;
        for (int group = 1; group <= 68; ++group) {
            const std::size_t types = Catalog().Units().ListUnitTypes(group << 12, nullptr);
            for (int type = 1; type <= static_cast<int>(types); ++type) {
                const std::size_t count = Catalog().ListUnitSymbols(Id(group, type, 0), nullptr);
                ++histogram[count];
                symbols += count;
                for (int symbol = 1; symbol <= static_cast<int>(count); ++symbol) {
                    EXPECT_NE(SymbolAt(group, type, symbol, language), nullptr)
                        << group << "." << type << "." << symbol << " in language " << language;
                }
            }
        }
        EXPECT_EQ(symbols, 1842u);
        EXPECT_EQ(histogram,
                  (std::map<std::size_t, int>{
                      {1, 129}, {2, 378}, {3, 182}, {4, 41}, {5, 34}, {6, 1}, {8, 1}, {9, 7}}));
    }
}

TEST(Vocabulary, NoSymbolObjectIsSharedBetweenLanguages) {
    EXPECT_NE(SymbolAt(2, 1, 2, 0), SymbolAt(2, 1, 2, 1));  // "m" in both
    const auto* english = dynamic_cast<const IFormatSymbol*>(SymbolAt(2, 1, 2, 0));
    const auto* chinese = dynamic_cast<const IFormatSymbol*>(SymbolAt(2, 1, 2, 1));
    ASSERT_NE(english, nullptr);
    ASSERT_NE(chinese, nullptr);
    EXPECT_EQ(std::u16string(english->GetText()), std::u16string(chinese->GetText()));
}

TEST(Vocabulary, SpecialPlacesHaveTheirClasses) {
    for (int language = 0; language < 2; ++language) {
        const auto* unitless = dynamic_cast<const GenericSymbolEx*>(SymbolAt(1, 1, 1, language));
        ASSERT_NE(unitless, nullptr);
        EXPECT_EQ(unitless->Flags(), SimpleFormatSymbol::NoSpace);
        EXPECT_EQ(std::u16string(unitless->GetText()), language == 0 ? u"unitless" : u"无量纲");
        for (int type : {2, 3}) {
            for (int symbol = 1; symbol <= 4; ++symbol) {
                EXPECT_NE(dynamic_cast<const LinearSymbol*>(SymbolAt(42, type, symbol, language)),
                          nullptr)
                    << "42." << type << "." << symbol;
            }
        }
        EXPECT_EQ(dynamic_cast<const LinearSymbol*>(SymbolAt(42, 4, 1, language)), nullptr);
    }
    const auto* celsius = dynamic_cast<const LinearSymbol*>(SymbolAt(42, 2, 2));
    EXPECT_EQ(celsius->Flags(), SimpleFormatSymbol::NoSpace);
    EXPECT_EQ(dynamic_cast<const LinearSymbol*>(SymbolAt(42, 2, 3))->Flags(), 0u);
}

TEST(Dictionary, FindsTheLongestKeyAtTheStart) {
    struct Row {
        const char16_t* text;
        int id;  // the symbol that must be found, by its place
        std::size_t matched;
    } rows[] = {
        {u"m² and more", Id(3, 1, 2), 2}, {u"m", Id(2, 1, 2), 1},
        {u"m^2", Id(3, 1, 2), 3},         {u"kN", Id(23, 9, 2), 2},
        {u"ft ", Id(2, 23, 2), 2},        {u"ft/s", Id(40, 6, 2), 4},
        {u"meter", Id(2, 1, 1), 5},       {u"metre", Id(2, 1, 1), 5},
        {u"°C", Id(42, 2, 2), 2},         {u"′ (Ben)", Id(2, 24, 3), 7},
        {u"daN/m²", Id(33, 24, 2), 6},    {u"gallon (us fluid", Id(4, 15, 1), 0},
    };
    for (const Row& row : rows) {
        std::size_t matched = 99;
        const IParseSymbol* found = Lookup(row.text, &matched);
        if (row.matched == 0) {
            EXPECT_NE(found, nullptr) << std::string(row.text, row.text + 3);
            continue;
        }
        EXPECT_EQ(found, Reader(row.id)) << "key of " << std::hex << row.id;
        EXPECT_EQ(matched, row.matched) << "key of " << std::hex << row.id;
    }
}

TEST(Dictionary, ChineseKeysFindChineseObjectsOfTheSameUnit) {
    const auto* meter = dynamic_cast<const GenericSymbol*>(Lookup(u"米"));
    ASSERT_NE(meter, nullptr);
    EXPECT_EQ(meter->Unit(), kMeter);
    EXPECT_EQ(meter, Reader(Id(2, 1, 1), 1));
    // "m" is the same in both languages and stays with English.
    EXPECT_EQ(Lookup(u"m"), Reader(Id(2, 1, 2)));
}

TEST(Dictionary, TheFirstHolderKeepsAContestedKey) {
    struct Row {
        const char16_t* key;
        int holder;
    } rows[] = {
        {u"daN/m²", Id(33, 24, 2)},
        {u"kilogram force per square centimetre", Id(33, 30, 1)},
        {u"pound‐force per foot", Id(24, 5, 1)},
        {u"mil", Id(2, 53, 1)},
        {u"bar", Id(33, 1, 1)},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Lookup(row.key), Reader(row.holder));
    }
    struct ChineseRow {
        const char16_t* key;
        int holder;
    } chineseRows[] = {
        {u"微米", Id(2, 15, 1)},  {u"测量英尺", Id(2, 28, 1)}, {u"英寻", Id(2, 45, 1)},
        {u"千磅", Id(23, 22, 1)}, {u"磅力", Id(23, 24, 1)},
    };
    for (const ChineseRow& row : chineseRows) {
        EXPECT_EQ(Lookup(row.key), Reader(row.holder, 1));
    }
}

TEST(Dictionary, UnknownTextsAndRenderOnlyPatternsFindNothing) {
    for (const char16_t* text : {u"M", u"x", u"x′x″", u""}) {
        std::size_t matched = 77;
        EXPECT_EQ(Lookup(text, &matched), nullptr);
        EXPECT_EQ(matched, 77u);
    }
}

TEST(CatalogQueries, ListsAndNamesSymbols) {
    EXPECT_EQ(Catalog().ListUnitSymbols(kMeter, nullptr), 2u);
    int ids[2] = {0, 0};
    EXPECT_EQ(Catalog().ListUnitSymbols(kMeter, ids), 2u);
    EXPECT_EQ(ids[0], 0x102001);
    EXPECT_EQ(ids[1], 0x202001);
    EXPECT_EQ(Catalog().ListUnitSymbols(0x2000, nullptr), 0u);

    char16_t buffer[32];
    EXPECT_EQ(Catalog().CopyDisplayName(0x2000, buffer, 7, 0), ErrorCode::Success);
    EXPECT_EQ(std::u16string(buffer), u"Length");
    buffer[0] = u'?';
    EXPECT_EQ(Catalog().CopyDisplayName(0x2000, buffer, 6, 0), ErrorCode::Failure);
    EXPECT_EQ(buffer[0], u'?');
    EXPECT_EQ(Catalog().CopyDisplayName(kMeter, buffer, 32, 0), ErrorCode::Success);
    EXPECT_EQ(std::u16string(buffer), u"meter");
    EXPECT_EQ(Catalog().CopyDisplayName(0x202001, buffer, 32, 0), ErrorCode::Success);
    EXPECT_EQ(std::u16string(buffer), u"m");
    EXPECT_EQ(Catalog().CopyDisplayName(kUnitless, buffer, 32, 0), ErrorCode::Success);
    EXPECT_EQ(std::u16string(buffer), u"unitless");
    EXPECT_EQ(Catalog().CopyDisplayName(0x2000, buffer, 32, 1), ErrorCode::Success);
    EXPECT_EQ(std::u16string(buffer), u"长度");
    EXPECT_EQ(Catalog().CopyDisplayName(0, buffer, 32, 0), ErrorCode::Failure);
    EXPECT_EQ(Catalog().CopyDisplayName(0x2000, nullptr, 32, 0), ErrorCode::Failure);
    EXPECT_EQ(Catalog().CopyDisplayName(0x2000, buffer, 32, 2), ErrorCode::Failure);
}

}  // namespace
}  // namespace Mensura
