// Fills the symbol trees, the group names and the parse dictionary at load,
// from the vocabulary lists of both languages. The kind column of a list
// names the notation that makes each place's object; nothing here tests ids.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>

#include "catalogue/unit_catalog.h"
#include "catalogue/vocabulary.h"
#include "grammar/operators.h"
#include "notations/angles.h"
#include "notations/feet_inches.h"
#include "notations/format_symbol.h"

namespace Mensura {

using namespace Vocabulary;

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

template <typename Entry>
struct LineRun {
    const TypeLine<Entry>* first;
    const TypeLine<Entry>* last;
    const TypeLine<Entry>* begin() const { return first; }
    const TypeLine<Entry>* end() const { return last; }
};

constexpr int kGroupCount = static_cast<int>(std::size(kRegistrationOrder));

// Where each group's lines begin in a list, by group number: the lines of a
// group g stand from starts[g] up to starts[g + 1].
using GroupStarts = std::array<std::size_t, kGroupCount + 2>;

template <typename Entry, std::size_t N>
constexpr GroupStarts StartsOf(const TypeLine<Entry> (&lines)[N]) {
    GroupStarts starts{};
    std::size_t at = 0;
    for (std::size_t group = 0; group < starts.size(); ++group) {
        while (at < N && lines[at].group < static_cast<int>(group)) ++at;
        starts[group] = at;
    }
    return starts;
}
constexpr GroupStarts kEnglishStarts = StartsOf(kEnglishTypes);
constexpr GroupStarts kChineseStarts = StartsOf(kChineseTypes);
static_assert(kEnglishStarts.back() == std::size(kEnglishTypes) && kEnglishStarts[1] == 0,
              "english.inc: a group number out of range");
static_assert(kChineseStarts.back() == std::size(kChineseTypes) && kChineseStarts[1] == 0,
              "chinese.inc: a group number out of range");

template <typename Entry, std::size_t N>
LineRun<Entry> LinesOf(const TypeLine<Entry> (&lines)[N], const GroupStarts& starts, int group) {
    return {lines + starts[group], lines + starts[group + 1]};
}

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

class VocabularyBuilder {
public:
    explicit VocabularyBuilder(UnitCatalog& c) : catalog(c), units(c.table) {}

    // The most bytes that Run takes from the catalogue's memory.
    static constexpr std::size_t Bytes() {
        std::size_t objects = 0;
        std::size_t places = 0;
        for (const auto& line : kEnglishTypes) {
            for (std::size_t i = 0; i < line.count; ++i) {
                objects += Arena::Rounded(SizeOf(line.entries[i].kind.notation));
            }
            places += line.count;
        }
        constexpr std::size_t kLanguages = UnitCatalog::kLanguages;
        return kLanguages * (objects + Arena::Rounded(places * sizeof(UnitCatalog::SymbolSlot)) +
                             Arena::Rounded(kGroupCount * sizeof(const char16_t*))) +
               Arena::Rounded((std::size(kEnglishTypes) + 1) * sizeof(std::uint32_t)) +
               // The dictionary makes four allocations, each aligned.
               RadixTree<const IParseSymbol*>::ReserveBytes(kNodes, kUnits, kEdges) +
               4 * alignof(std::max_align_t);
    }

    void Run() {
        for (auto& names : catalog.groupNames) names.clear();
        LayOutSymbols();
        catalog.dictionary.Reserve(kNodes, kUnits, kEdges);
        RegisterOperators();
        RegisterEnglish();
        RegisterChinese();
        catalog.dictionary.IndexWideBranches();
    }

private:
    // Both vocabularies and the operators make about 7,850 nodes, 11,750
    // units of run text and 8,450 edges: the dictionary makes room for them
    // at once.
    static constexpr std::size_t kNodes = 8000;
    static constexpr std::size_t kUnits = 12000;
    static constexpr std::size_t kEdges = 8600;

    // Every type has as many places as its English line has symbols, in both
    // languages; the slots of all of them are made at once.
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
        for (auto& language : catalog.symbols) {
            language.clear();
            language.resize(first.back());
        }
    }

    void RegisterEnglish() {
        StartLanguage(0, kEnglishGroups);
        for (int group : kRegistrationOrder) {
            for (const auto& line : LinesOf(kEnglishTypes, kEnglishStarts, group))
                AddType(0, line, nullptr);
        }
    }

    // Chinese is English where its list says nothing.
    void RegisterChinese() {
        StartLanguage(1, kChineseGroups);
        for (int group : kRegistrationOrder) {
            // Both lists hold a group's types in ascending order.
            const auto own = LinesOf(kChineseTypes, kChineseStarts, group);
            const TypeLine<ChineseEntry>* next = own.begin();
            for (const auto& line : LinesOf(kEnglishTypes, kEnglishStarts, group)) {
                while (next != own.end() && next->type < line.type) ++next;
                const bool listed = next != own.end() && next->type == line.type;
                AddType(1, line, listed ? next : nullptr);
            }
        }
    }

    // The operators come first, so that they win every collision of keys.
    // The marks of the compound notations are operators too.
    void RegisterOperators() {
        catalog.operators.clear();
        AddOperator<DivisionSymbol>({u"/"});
        AddOperator<SpaceSymbol>({u" "});
        AddOperator<MultiplicationSymbol>({u"·"});
        AddOperator<SquareSymbol>({u"²"});
        AddOperator<CubicSymbol>({u"³"});
        AddOperator<LeftParenthesisSymbol>({u"(", u"（"});
        AddOperator<RightParenthesisSymbol>({u")", u"）"});
        AddOperator<PrimeSymbol>(
            {u"\u2032", u"\u0027", u"\u02B9", u"\u2019", u"\u02BC", u"\u2018"});
        AddOperator<DoublePrimeSymbol>({u"\u2033", u"\u0022", u"\u02BA", u"\u201D", u"\u201C"});
        AddOperator<DashSymbol>(
            {u"\u2010", u"\u2012", u"\u2013", u"\u2014", u"\u2015", u"\u002D", u"\u2043"});
        AddOperator<CaretSymbol>({u"^"});
        AddOperator<DegreeSymbol>({u"°"});
        AddOperator<NorthSymbol>({u"N"});
        AddOperator<EastSymbol>({u"E"});
        AddOperator<SouthSymbol>({u"S"});
        AddOperator<WestSymbol>({u"W"});
        AddOperator<DSymbol>({u"d"});
    }

    template <typename Operator>
    void AddOperator(std::initializer_list<const char16_t*> keys) {
        catalog.operators.push_back(std::make_unique<Operator>());
        for (const char16_t* key : keys) {
            catalog.dictionary.Insert(key, catalog.operators.back().get());
        }
    }

    void StartLanguage(int language, const GroupLine (&names)[kGroupCount]) {
        catalog.groupNames[language].assign(kGroupCount, nullptr);
        for (const GroupLine& name : names)
            catalog.groupNames[language][name.group - 1] = name.name;
    }

    // The object of one place, made by the notation that its kind names; its
    // reading face, when it has keys of its own, goes to *reader.
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

    // Makes the symbols of the type of an English line in a language and asks
    // the dictionary for their keys. A place that the Chinese line `own`
    // lists has its text and keys from there; it keeps its kind and marks.
    void AddType(int language, const TypeLine<EnglishEntry>& line,
                 const TypeLine<ChineseEntry>* own) {
        const ChineseEntry* replaced[kMostSymbols] = {};
        if (own != nullptr) {
            for (std::size_t i = 0; i < own->count; ++i)
                replaced[own->entries[i].symbol - 1] = &own->entries[i];
        }
        const int unit = UnitId::Make(line.group, line.type);
        std::size_t place = 0;
        units.TypePlace(unit, place);
        UnitCatalog::SymbolSlot* slots =
            catalog.symbols[language].data() + catalog.firstSymbol[place];
        for (std::size_t i = 0; i < line.count; ++i) {
            const EnglishEntry& english = line.entries[i];
            const std::u16string_view text =
                replaced[i] != nullptr ? replaced[i]->text : english.text;
            const auto& keys = replaced[i] != nullptr ? replaced[i]->keys : english.keys;
            const int id = UnitId::Make(line.group, line.type, static_cast<int>(i + 1));
            const IParseSymbol* reader = nullptr;
            slots[i].reset(Make(english.kind, text, id, english.marks & NoSpace, language, reader));
            if (reader == nullptr || (english.marks & NoKey)) continue;
            if (language == 1 && replaced[i] == nullptr) {
                // A Chinese place that takes the English entry asks for the
                // very keys that English asked for. Every one of them has had
                // a holder since then, and during the load a key only ever
                // gains one, never changes it: the dictionary would answer as
                // it did to English, so it is not asked again.
                continue;
            }
            // The text first, then the further keys in their order. A text
            // ends where its literal does. The first holder of a key keeps it.
            catalog.dictionary.Insert(text.data(), reader);
            for (const char16_t* key : keys) catalog.dictionary.Insert(key, reader);
        }
    }

    UnitCatalog& catalog;
    const UnitTable& units;
};

std::size_t VocabularyBytes() {
    constexpr std::size_t kBytes = VocabularyBuilder::Bytes();
    return kBytes;
}

void RegisterVocabulary(UnitCatalog& catalog) {
    VocabularyBuilder(catalog).Run();
}

}  // namespace Mensura
