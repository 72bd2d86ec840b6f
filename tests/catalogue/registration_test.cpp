// The symbol trees and the parse dictionary as the load leaves them, measured
// from the catalogue itself.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <map>
#include <set>
#include <string>

#include "base/radix_tree.h"
#include "catalogue/dictionary_keys.h"
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

// Every key of the dictionary by who holds it: the operators, which come
// first and hold all their keys, then English, then of the Chinese keys
// those that English does not already hold. A key keeps its first holder.
TEST(Dictionary, EachLanguageHoldsItsPublishedNumberOfKeys) {
    std::map<const IParseSymbol*, int> languages;
    for (int group = 1; group <= 68; ++group) {
        const int types = static_cast<int>(Catalog().Units().ListUnitTypes(group << 12, nullptr));
        for (int type = 1; type <= types; ++type) {
            const int count =
                static_cast<int>(Catalog().ListUnitSymbols(Id(group, type, 0), nullptr));
            for (int symbol = 1; symbol <= count; ++symbol) {
                for (int language = 0; language < 2; ++language) {
                    languages[Reader(Id(group, type, symbol), language)] = language;
                }
            }
        }
    }
    int held[3] = {0, 0, 0};  // operators, English, Chinese
    const auto keys = Catalog().Dictionary().Keys();
    for (const auto& [key, holder] : keys) {
        const auto language = languages.find(holder);
        if (UnitOfKey(holder) == 0) {
            ++held[0];
        } else if (language != languages.end()) {
            ++held[1 + language->second];
        } else {
            ADD_FAILURE() << "a key held by no symbol of the catalogue";
        }
    }
    EXPECT_EQ(keys.size(), 3833u);
    EXPECT_EQ(held[0], 34);
    EXPECT_EQ(held[1], 2708);
    EXPECT_EQ(held[2], 1091);
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

// The number of symbols on a unit type, against the number of types that have it.
TEST(Vocabulary, TheSymbolsHaveTheShapeOfTheConversionTable) {
    std::map<std::size_t, int> histogram;
    std::size_t symbols = 0;
    for (int group = 1; group <= 68; ++group) {
        const std::size_t types = Catalog().Units().ListUnitTypes(group << 12, nullptr);
        for (int type = 1; type <= static_cast<int>(types); ++type) {
            const std::size_t count = Catalog().ListUnitSymbols(Id(group, type, 0), nullptr);
            ++histogram[count];
            symbols += count;
        }
    }
    EXPECT_EQ(symbols, 1842u);
    EXPECT_EQ(histogram,
              (std::map<std::size_t, int>{
                  {1, 129}, {2, 378}, {3, 182}, {4, 41}, {5, 34}, {6, 1}, {8, 1}, {9, 7}}));
}

// A rendering finds its symbol's rendering face from a list of its own,
// beside the symbols: for every symbol id of both languages, with the ids
// around them that find nothing, it is what the symbol's AsFormat gives.
TEST(Vocabulary, EverySymbolRendersThroughItsOwnFace) {
    std::size_t faces = 0;
    for (int language = -1; language <= 2; ++language) {
        for (int group = 0; group <= 70; ++group) {
            const int types =
                static_cast<int>(Catalog().Units().ListUnitTypes(group << 12, nullptr));
            for (int type = 0; type <= types + 1; ++type) {
                for (int symbol = 0; symbol <= 10; ++symbol) {
                    const int id = Id(group, type, symbol);
                    const ISymbol* found = Catalog().FindSymbol(id, language);
                    const IFormatSymbol* face = Catalog().FindFormatSymbol(id, language);
                    ASSERT_EQ(face, found != nullptr ? found->AsFormat() : nullptr)
                        << std::hex << id << " in language " << language;
                    faces += face != nullptr ? 1 : 0;
                }
            }
        }
    }
    EXPECT_EQ(faces, 2 * 1842u);
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
    // "m" is the same in both languages and stays with English, while each
    // language has a symbol object of its own.
    EXPECT_EQ(Lookup(u"m"), Reader(Id(2, 1, 2)));
    EXPECT_NE(Reader(Id(2, 1, 2), 1), Reader(Id(2, 1, 2)));
    EXPECT_EQ(std::u16string(dynamic_cast<const IFormatSymbol*>(SymbolAt(2, 1, 2, 1))->GetText()),
              u"m");
    char16_t name[16];  // and there is no third language
    EXPECT_EQ(Catalog().CopyDisplayName(kMeter, name, 16, 2), ErrorCode::Failure);
}

TEST(Dictionary, TheFirstHolderKeepsAContestedKey) {
    const struct {
        const char16_t* key;
        int holder;
        int language;
    } rows[] = {
        {u"daN/m²", Id(33, 24, 2), 0},
        {u"kilogram force per square centimetre", Id(33, 30, 1), 0},
        {u"pound‐force per foot", Id(24, 5, 1), 0},
        {u"mil", Id(2, 53, 1), 0},
        {u"bar", Id(33, 1, 1), 0},
        {u"微米", Id(2, 15, 1), 1},
        {u"测量英尺", Id(2, 28, 1), 1},
        {u"英寻", Id(2, 45, 1), 1},
        {u"千磅", Id(23, 22, 1), 1},
        {u"磅力", Id(23, 24, 1), 1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Lookup(row.key), Reader(row.holder, row.language)) << std::hex << row.holder;
    }
}

// The build lays the dictionary out; here it is built anew the way the load
// once built it, key by key from the vocabularies in their order of
// registration, with the symbols that the load made. Both must hold the same
// keys, each at the same symbol, and a lookup of each must find it whole.
TEST(Dictionary, TheLaidOutTreeHoldsWhatInsertingTheVocabulariesGives) {
    using namespace Vocabulary;
    RadixTree<const IParseSymbol*> tree;
    // The operators come first. Their objects have no id: each is the one
    // that the catalogue's dictionary finds for its first key, one a class.
    std::set<const IParseSymbol*> operators;
    for (const auto& keys : DictionaryKeys::kOperatorKeys) {
        const IParseSymbol* holder = Lookup(*keys.begin());
        ASSERT_NE(holder, nullptr);
        EXPECT_EQ(UnitOfKey(holder), 0);
        operators.insert(holder);
        for (const char16_t* key : keys) tree.Insert(key, holder);
    }
    EXPECT_EQ(operators.size(), std::size(DictionaryKeys::kOperatorKeys));
    const auto reads = [](const SymbolKind& kind, unsigned marks) {
        return (kind.notation == Notation::Plain || kind.notation == Notation::TemperatureScale) &&
               (marks & NoKey) == 0;
    };
    for (const int group : kRegistrationOrder) {
        for (const auto& line : kEnglishTypes) {
            if (line.group != group) continue;
            for (std::size_t i = 0; i < line.count; ++i) {
                const EnglishEntry& entry = line.entries[i];
                if (!reads(entry.kind, entry.marks)) continue;
                const IParseSymbol* reader =
                    Reader(Id(line.group, line.type, static_cast<int>(i + 1)));
                tree.Insert(entry.text.data(), reader);
                for (const char16_t* key : entry.keys) tree.Insert(key, reader);
            }
        }
    }
    // Chinese asks only for the places that its list gives texts of their own.
    for (const int group : kRegistrationOrder) {
        for (const auto& line : kChineseTypes) {
            if (line.group != group) continue;
            const TypeLine<EnglishEntry>* english = nullptr;
            for (const auto& candidate : kEnglishTypes) {
                if (candidate.group == line.group && candidate.type == line.type)
                    english = &candidate;
            }
            ASSERT_NE(english, nullptr);
            for (std::size_t i = 0; i < line.count; ++i) {
                const ChineseEntry& entry = line.entries[i];
                const EnglishEntry& kind = english->entries[entry.symbol - 1];
                if (!reads(kind.kind, kind.marks)) continue;
                const IParseSymbol* reader = Reader(Id(line.group, line.type, entry.symbol), 1);
                tree.Insert(entry.text.data(), reader);
                for (const char16_t* key : entry.keys) tree.Insert(key, reader);
            }
        }
    }
    const auto expected = tree.Keys();
    const auto laidOut = Catalog().Dictionary().Keys();
    ASSERT_EQ(laidOut.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const auto& [key, holder] = expected[i];
        EXPECT_EQ(laidOut[i].first, key);
        EXPECT_EQ(laidOut[i].second, holder) << std::string(key.begin(), key.end());
        std::size_t matched = 0;
        EXPECT_EQ(Lookup(key.c_str(), &matched), holder);
        EXPECT_EQ(matched, key.size());
    }
}

}  // namespace
}  // namespace Mensura
