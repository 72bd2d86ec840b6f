// Makes the symbols of both languages, the group names and the operators at
// load, from the vocabulary lists, and hands the parse dictionary that the
// build laid out from the same lists the readers it names. The kind column
// of a list names the notation that makes each place's object; nothing here
// tests ids.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>

#include "catalogue/dictionary_keys.h"
#include "catalogue/unit_catalog.h"
#include "catalogue/vocabulary.h"
#include "grammar/operators.h"
#include "notations/angles.h"
#include "notations/feet_inches.h"
#include "notations/format_symbol.h"

// The pools of the dictionary, written by mensura_generate_dictionary.
#include "catalogue/dictionary_layout.inc"

namespace Mensura {

using namespace Vocabulary;
using namespace DictionaryKeys;

// The layout was written from the very keys, readers and order that these
// lists give now.
static_assert(DictionaryLayout::kDigest == Digest() && DictionaryLayout::kReaders == kReaders,
              "the laid-out dictionary is out of step with the vocabularies");

namespace {

// Both lists stand in the order of groups and, within a group, of types:
// a group's lines are one run.
template <typename Entry, std::size_t N>
constexpr bool InPlaceOrder(const TypeLine<Entry> (&lines)[N]) {
    for (std::size_t i = 1; i < N; ++i) {
        const auto& a = lines[i - 1];
        const auto& b = lines[i];
        if (a.group > b.group || (a.group == b.group && a.type >= b.type)) return false;
    }
    return true;
}
static_assert(InPlaceOrder(kEnglishTypes), "english.inc: groups and types out of order");
static_assert(InPlaceOrder(kChineseTypes), "chinese.inc: groups and types out of order");

// The most symbols that a type has.
constexpr std::size_t MostSymbols() {
    std::size_t most = 0;
    for (const auto& line : kEnglishTypes) most = std::max(most, line.count);
    return most;
}
constexpr std::size_t kMostSymbols = MostSymbols();

// Every Chinese line names a type of the English list, and every entry of it
// one of that type's places.
constexpr bool ChineseFitsEnglish() {
    std::size_t english = 0;
    for (const auto& line : kChineseTypes) {
        while (english < std::size(kEnglishTypes) && (kEnglishTypes[english].group < line.group ||
                                                      (kEnglishTypes[english].group == line.group &&
                                                       kEnglishTypes[english].type < line.type))) {
            ++english;
        }
        if (english == std::size(kEnglishTypes) || kEnglishTypes[english].group != line.group ||
            kEnglishTypes[english].type != line.type) {
            return false;
        }
        for (std::size_t i = 0; i < line.count; ++i) {
            const int symbol = line.entries[i].symbol;
            if (symbol < 1 || static_cast<std::size_t>(symbol) > kEnglishTypes[english].count)
                return false;
        }
    }
    return true;
}
static_assert(ChineseFitsEnglish(), "chinese.inc: a type or place that English does not have");

// The size of the object that a notation makes.
constexpr std::size_t SizeOf(Notation notation) {
    switch (notation) {
        case Notation::Plain:
            break;
        case Notation::Unitless:
            return sizeof(GenericSymbolEx);
        case Notation::TemperatureScale:
            return sizeof(LinearSymbol);
        case Notation::Primes:
            return sizeof(PrimeDoublePrimeSymbol);
        case Notation::Degrees:
            return sizeof(DegreePrimeDoublePrimeSymbol);
    }
    return sizeof(GenericSymbol);
}

// The name of the unit of pure numbers, which renders as the bare number.
constexpr const char16_t* kUnitlessNames[] = {u"unitless", u"无量纲"};

}  // namespace

// The operators, in the order of their keys in kOperatorKeys.
template <typename... Operators>
struct OperatorList {
    static constexpr std::size_t kCount = sizeof...(Operators);
    static constexpr std::size_t kBytes = (Arena::Rounded(sizeof(Operators)) + ...);
};
using OperatorClasses =
    OperatorList<DivisionSymbol, SpaceSymbol, MultiplicationSymbol, SquareSymbol, CubicSymbol,
                 LeftParenthesisSymbol, RightParenthesisSymbol, PrimeSymbol, DoublePrimeSymbol,
                 DashSymbol, CaretSymbol, DegreeSymbol, NorthSymbol, EastSymbol, SouthSymbol,
                 WestSymbol, DSymbol>;
static_assert(OperatorClasses::kCount == kOperators && kOperators == UnitCatalog::kOperators,
              "an operator without its keys, or keys without their operator");

class VocabularyBuilder {
public:
    explicit VocabularyBuilder(UnitCatalog& c) : catalog(c), units(c.table) {}

    // The most bytes that Run takes from the catalogue's memory.
    static constexpr std::size_t Bytes() {
        std::size_t objects = 0;
        for (const auto& line : kEnglishTypes) {
            for (std::size_t i = 0; i < line.count; ++i) {
                objects += Arena::Rounded(SizeOf(line.entries[i].kind.notation));
            }
        }
        constexpr std::size_t kLanguages = UnitCatalog::kLanguages;
        return kLanguages * (objects + Arena::Rounded(kPlaces * sizeof(UnitCatalog::SymbolSlot)) +
                             Arena::Rounded(kGroupCount * sizeof(const char16_t*))) +
               Arena::Rounded((std::size(kEnglishTypes) + 1) * sizeof(std::uint32_t)) +
               OperatorClasses::kBytes + Arena::Rounded(kReaders * sizeof(const IParseSymbol*));
    }

    void Run() {
        for (auto& names : catalog.groupNames) names.clear();
        readers = static_cast<const IParseSymbol**>(catalog.arena.Resource()->allocate(
            kReaders * sizeof(const IParseSymbol*), alignof(const IParseSymbol*)));
        std::fill_n(readers, kReaders, nullptr);
        LayOutSymbols();
        MakeOperators(OperatorClasses{});
        StartLanguage(0, kEnglishGroups);
        StartLanguage(1, kChineseGroups);
        MakeSymbols();
        catalog.dictionary = ParseDictionary(DictionaryLayout::kPools, readers);
    }

private:
    // Every type has as many places as its English line has symbols, in both
    // languages; the slots of all of them are made at once. The places stand
    // in the order of the English lines, which is the order of the table's
    // types.
    void LayOutSymbols() {
        auto& first = catalog.firstSymbol;
        first.assign(units.TypeCount() + 1, 0);
        for (const auto& line : kEnglishTypes) {
            std::size_t place = 0;
            // A vocabulary line for a type that the conversion table lacks
            // cannot be placed.
            if (!units.TypePlace(UnitId::Make(line.group, line.type), place)) std::abort();
            first[place + 1] = static_cast<std::uint32_t>(line.count);
        }
        for (std::size_t place = 1; place < first.size(); ++place) first[place] += first[place - 1];
        if (first.back() != kPlaces) std::abort();
        for (auto& language : catalog.symbols) {
            language.clear();
            language.resize(first.back());
        }
    }

    template <typename... Operators>
    void MakeOperators(OperatorList<Operators...>) {
        std::size_t at = 0;
        ((catalog.operators[at] = UnitCatalog::OperatorSlot(catalog.arena.New<Operators>()),
          readers[1 + at] = catalog.operators[at].get(), ++at),
         ...);
    }

    void StartLanguage(int language, const GroupLine (&names)[kGroupCount]) {
        catalog.groupNames[language].assign(kGroupCount, nullptr);
        for (const GroupLine& name : names)
            catalog.groupNames[language][name.group - 1] = name.name;
    }

    // Both languages, line by line. Chinese is English where its list says
    // nothing; both lists hold their types in ascending order.
    void MakeSymbols() {
        const TypeLine<ChineseEntry>* own = std::begin(kChineseTypes);
        for (std::size_t at = 0; at < kEnglishLines; ++at) {
            const TypeLine<EnglishEntry>& line = kEnglishTypes[at];
            AddType(0, at, nullptr);
            while (own != std::end(kChineseTypes) &&
                   (own->group < line.group || (own->group == line.group && own->type < line.type)))
                ++own;
            const bool listed = own != std::end(kChineseTypes) && own->group == line.group &&
                                own->type == line.type;
            AddType(1, at, listed ? own : nullptr);
        }
    }

    // The object of one place, made by the notation that its kind names; its
    // reading face, when it has one, goes to *reader.
    ISymbol* Make(const SymbolKind& kind, std::u16string_view text, int id, std::uint32_t flags,
                  int language, const IParseSymbol*& reader) {
        const int unit = id & static_cast<int>(UnitId::UnitMask);
        const UnitConverter& converter = *units.FindConverter(unit);
        Arena& arena = catalog.arena;
        switch (kind.notation) {
            case Notation::Plain: {
                auto* generic = arena.New<GenericSymbol>(text, unit, converter, flags);
                reader = generic;
                return generic;
            }
            case Notation::Unitless:
                return arena.New<GenericSymbolEx>(
                    text, unit, converter, SimpleFormatSymbol::NoSpace, kUnitlessNames[language]);
            case Notation::TemperatureScale: {
                auto* linear = arena.New<LinearSymbol>(text, unit, converter,
                                                       *units.FindConverter(kind.unit), flags);
                reader = linear;
                return linear;
            }
            // The compound patterns render only: they get no key.
            case Notation::Primes:
                return arena.New<PrimeDoublePrimeSymbol>(text.data(), id, converter, kind.options);
            case Notation::Degrees:
                return arena.New<DegreePrimeDoublePrimeSymbol>(text.data(), converter,
                                                               kind.options);
        }
        std::abort();
    }

    // Makes the symbols of the type of the English line at `at` in a
    // language, and notes their readers by number. A place that the Chinese
    // line `own` lists has its text from there; it keeps its kind and marks.
    void AddType(int language, std::size_t at, const TypeLine<ChineseEntry>* own) {
        const TypeLine<EnglishEntry>& line = kEnglishTypes[at];
        std::u16string_view texts[kMostSymbols];
        for (std::size_t i = 0; i < line.count; ++i) texts[i] = line.entries[i].text;
        if (own != nullptr) {
            for (std::size_t i = 0; i < own->count; ++i)
                texts[own->entries[i].symbol - 1] = own->entries[i].text;
        }
        const std::size_t first = kFirstPlace[at];
        UnitCatalog::SymbolSlot* slots = catalog.symbols[language].data() + first;
        for (std::size_t i = 0; i < line.count; ++i) {
            const EnglishEntry& english = line.entries[i];
            const int id = UnitId::Make(line.group, line.type, static_cast<int>(i + 1));
            const IParseSymbol* reader = nullptr;
            slots[i].reset(
                Make(english.kind, texts[i], id, english.marks & NoSpace, language, reader));
            readers[ReaderOf(language, first + i)] = reader;
        }
    }

    UnitCatalog& catalog;
    const UnitTable& units;
    const IParseSymbol** readers = nullptr;  // by number, in the catalogue's arena
};

std::size_t VocabularyBytes() {
    constexpr std::size_t kBytes = VocabularyBuilder::Bytes();
    return kBytes;
}

void RegisterVocabulary(UnitCatalog& catalog) {
    VocabularyBuilder(catalog).Run();
}

}  // namespace Mensura
