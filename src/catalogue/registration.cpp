// Makes the symbols of both languages, the group names and the operators at
// load, from the vocabulary lists in the form that the compiler packed them
// into (packed_vocabulary.h), and hands the parse dictionary that the build
// laid out from the same lists the readers it names. The kind column of a
// list names the notation that makes each place's object; nothing here tests
// ids.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>

#include "catalogue/dictionary_keys.h"
#include "catalogue/packed_vocabulary.h"
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
// Its lookups test no bound: the layout is checked once, here.
static_assert(DoubleArray::Sound(DictionaryLayout::kLayout),
              "the laid-out dictionary would let a lookup leave it");

namespace {

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
        // Every number gets its reader below: 0 none, then the operators and
        // the places of both languages, null where a place reads nothing.
        static_assert(kReaders == 1 + kOperators + 2 * kPlaces, "a reader number without a place");
        readers = static_cast<const IParseSymbol**>(catalog.arena.Resource()->allocate(
            kReaders * sizeof(const IParseSymbol*), alignof(const IParseSymbol*)));
        readers[0] = nullptr;
        LayOutSymbols();
        MakeOperators(OperatorClasses{});
        StartLanguage(0);
        StartLanguage(1);
        MakeSymbols();
        catalog.dictionary = ParseDictionary(DictionaryLayout::kLayout, readers);
    }

private:
    // Every type has as many places as its English line has symbols, in both
    // languages; the room for the slots of all of them is made at once. The
    // places stand in the order of the English lines, which is the order of
    // the table's types, so that each language's slots are made in order.
    void LayOutSymbols() {
        catalog.typeRuns.fill(UnitCatalog::TypeRun{});
        for (std::size_t group = 1; group <= units.GroupCount(); ++group) {
            const int id = static_cast<int>(group << 12);
            const std::size_t count = units.ListUnitTypes(id, nullptr);
            std::size_t place = 0;
            if (count == 0 || !units.TypePlace(id | 1, place)) continue;
            catalog.typeRuns[group] = {static_cast<std::uint32_t>(place),
                                       static_cast<std::uint32_t>(count)};
        }
        auto& first = catalog.firstSymbol;
        first.assign(units.TypeCount() + 1, 0);
        for (const Line& line : kPacked.lines) {
            std::size_t place = 0;
            // A vocabulary line for a type that the conversion table lacks
            // cannot be placed.
            if (!units.TypePlace(UnitId::Make(line.group, line.type), place)) std::abort();
            first[place + 1] = line.count;
        }
        for (std::size_t place = 1; place < first.size(); ++place) first[place] += first[place - 1];
        if (first.back() != kPlaces) std::abort();
        for (auto& language : catalog.symbols) {
            language.clear();
            language.reserve(first.back());
        }
    }

    template <typename... Operators>
    void MakeOperators(OperatorList<Operators...>) {
        std::size_t at = 0;
        ((catalog.operators[at] = UnitCatalog::OperatorSlot(catalog.arena.New<Operators>()),
          readers[1 + at] = catalog.operators[at].get(), ++at),
         ...);
    }

    void StartLanguage(int language) {
        catalog.groupNames[language].resize(kGroupCount);
        for (int group = 0; group < kGroupCount; ++group)
            catalog.groupNames[language][group] = kPacked.At(kPacked.groupNames[language][group]);
    }

    // Both languages, line by line; the symbols of a type share its converter.
    void MakeSymbols() {
        for (const Line& line : kPacked.lines) {
            const int unit = UnitId::Make(line.group, line.type);
            const UnitConverter& converter = *units.FindConverter(unit);
            AddType(0, line, unit, converter);
            AddType(1, line, unit, converter);
        }
    }

    // The object of one place of the unit type `unit`, made by the notation
    // that its kind names; its reading face, when it has one, goes to *reader.
    IFormatSymbol* Make(const SymbolKind& kind, std::u16string_view text, int id, int unit,
                        const UnitConverter& converter, std::uint32_t flags, int language,
                        const IParseSymbol*& reader) {
        Arena& arena = catalog.arena;
        switch (kind.notation) {
            case Notation::Plain: {
                auto* generic = arena.New<GenericSymbol>(text, unit, converter, flags);
                reader = generic;
                return generic;
            }
            case Notation::Unitless:
                return arena.New<GenericSymbolEx>(text, unit, converter,
                                                  SimpleFormatSymbol::NoSpace,
                                                  kPacked.At(kPacked.unitlessNames[language]));
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

    // Makes the symbols of the type of an English line in a language, and
    // notes their readers by number.
    void AddType(int language, const Line& line, int unit, const UnitConverter& converter) {
        auto& slots = catalog.symbols[language];
        if (slots.size() != line.first) std::abort();  // the lines come in the order of places
        const Place* places = kPacked.places.data() + line.first;
        const IParseSymbol** const lineReaders = readers + ReaderOf(language, line.first);
        for (std::size_t i = 0; i < line.count; ++i) {
            const Place& place = places[i];
            const int id = UnitId::Make(0, 0, static_cast<int>(i + 1)) | unit;
            const IParseSymbol* reader = nullptr;
            slots.emplace_back(Make(place.kind, kPacked.View(place.text[language]), id, unit,
                                    converter, place.marks & NoSpace, language, reader));
            lineReaders[i] = reader;
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
