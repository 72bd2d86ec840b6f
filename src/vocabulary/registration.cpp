// Fills the symbol trees, the group names and the parse dictionary at load,
// from the vocabulary lists of both languages.
#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

#include "formatting/degrees_symbol.h"
#include "formatting/feet_inches_symbol.h"
#include "formatting/format_symbol.h"
#include "parsing/angles.h"
#include "parsing/feet_inches.h"
#include "parsing/operators.h"
#include "units/unit_catalog.h"

namespace Mensura {

namespace {

enum Mark : unsigned {
    NoSpace = SimpleFormatSymbol::NoSpace,  // no blank between number and symbol
    NoKey = 2,                              // renders only; no key in the dictionary
};

struct EnglishEntry {
    const char16_t* text;
    std::initializer_list<const char16_t*> keys = {};
    unsigned marks = 0;
};

struct ChineseEntry {
    int symbol;
    const char16_t* text;
    std::initializer_list<const char16_t*> keys = {};
    unsigned marks = 0;
};

template <typename Entry>
struct TypeLine {
    int group;
    int type;
    const Entry* entries;
    std::size_t count;
};

struct GroupLine {
    int group;
    const char16_t* name;
};

// Each list is constant data: it stands before any static constructor runs.
#define GROUP(group, name)
#define TYPE(group, type, ...) constexpr EnglishEntry kEnglish_##group##_##type[] = {__VA_ARGS__};
#include "vocabulary/english.inc"
#undef TYPE
#define TYPE(group, type, ...) constexpr ChineseEntry kChinese_##group##_##type[] = {__VA_ARGS__};
#include "vocabulary/chinese.inc"
#undef TYPE
#undef GROUP

#define GROUP(group, name)
#define TYPE(group, type, ...) \
    {group, type, kEnglish_##group##_##type, std::size(kEnglish_##group##_##type)},
constexpr TypeLine<EnglishEntry> kEnglishTypes[] = {
#include "vocabulary/english.inc"
};
#undef TYPE
#define TYPE(group, type, ...) \
    {group, type, kChinese_##group##_##type, std::size(kChinese_##group##_##type)},
constexpr TypeLine<ChineseEntry> kChineseTypes[] = {
#include "vocabulary/chinese.inc"
};
#undef TYPE
#undef GROUP

#define TYPE(...)
#define GROUP(group, name) {group, name},
constexpr GroupLine kEnglishGroups[] = {
#include "vocabulary/english.inc"
};
constexpr GroupLine kChineseGroups[] = {
#include "vocabulary/chinese.inc"
};
#undef TYPE
#undef GROUP

// Both lists stand in the order of groups and, within a group, of types:
// a group's lines are one run, found by a binary search.
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

template <typename Entry, std::size_t N>
LineRun<Entry> LinesOf(const TypeLine<Entry> (&lines)[N], int group) {
    const auto* first = std::lower_bound(
        lines, lines + N, group, [](const TypeLine<Entry>& line, int g) { return line.group < g; });
    const auto* last = std::upper_bound(
        first, lines + N, group, [](int g, const TypeLine<Entry>& line) { return g < line.group; });
    return {first, last};
}

// The line of one type, or null when the list has none.
template <typename Entry, std::size_t N>
const TypeLine<Entry>* LineOf(const TypeLine<Entry> (&lines)[N], int group, int type) {
    for (const auto& line : LinesOf(lines, group)) {
        if (line.type == type) return &line;
    }
    return nullptr;
}

// The order in which groups register, the same in both languages.
constexpr int kRegistrationOrder[] = {
    1,  2,  3,  4,  5,  6,  44, 13, 42, 7,  8,  9,  10, 11, 12, 49, 50, 14, 15, 40, 33, 16, 17,
    18, 19, 45, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 34, 35, 36, 37, 38, 39, 41,
    43, 46, 47, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64, 65, 48, 66, 67, 68};

constexpr int kGroupCount = static_cast<int>(std::size(kRegistrationOrder));

// The places whose class is not GenericSymbol, with their constructor arguments.
enum class SymbolClass { Generic, UnitlessName, Linear, FeetInches, DegreesMinutesSeconds };

struct SymbolPlace {
    SymbolClass symbolClass;
    int scaleUnit = 0;  // LinearSymbol
    int sizeUnit = 0;
    bool showFeet = false;  // PrimeDoublePrimeSymbol
    bool showFraction = false;
    bool showDash = false;
    bool isBearing = false;  // DegreePrimeDoublePrimeSymbol
};

SymbolPlace PlaceOf(int group, int type, int symbol) {
    if (group == 1 && type == 1 && symbol == 1) return {SymbolClass::UnitlessName};
    if (group == 42 && (type == 2 || type == 3) && symbol <= 4) {
        // Celsius on kelvin, Fahrenheit on the Rankine degree.
        return type == 2 ? SymbolPlace{SymbolClass::Linear, 0x2A002, 0x2A001}
                         : SymbolPlace{SymbolClass::Linear, 0x2A003, 0x2A004};
    }
    if (group == 2 && type == 22 && symbol >= 5) {
        // "x′x″", "x′–x″", "x′x x/2″", "x′–x x/2″", "x x/2″"
        SymbolPlace place{SymbolClass::FeetInches};
        place.showFeet = symbol != 9;
        place.showFraction = symbol >= 7;
        place.showDash = symbol == 6 || symbol == 8;
        return place;
    }
    if (group == 44 && type == 1 && symbol == 5) {
        SymbolPlace place{SymbolClass::FeetInches};
        place.showFeet = true;
        return place;
    }
    if (group == 8 && type == 2 && symbol >= 4) {
        SymbolPlace place{SymbolClass::DegreesMinutesSeconds};
        place.isBearing = symbol == 5;
        return place;
    }
    return {SymbolClass::Generic};
}

}  // namespace

class VocabularyBuilder {
public:
    explicit VocabularyBuilder(UnitCatalog& c) : catalog(c) {}

    void Run() {
        for (auto& language : catalog.symbols) language.clear();
        for (auto& names : catalog.groupNames) names.clear();
        // Both vocabularies and the operators make about 7,850 nodes, 11,750
        // units of run text and 8,450 edges: one allocation each.
        catalog.dictionary.Reserve(8000, 12000, 8600);
        RegisterOperators();
        RegisterEnglish();
        RegisterChinese();
    }

private:
    struct Symbol {
        const char16_t* text;
        std::initializer_list<const char16_t*> keys;
        unsigned marks;
    };

    void RegisterEnglish() {
        StartLanguage(0, kEnglishGroups);
        for (int group : kRegistrationOrder) {
            StartGroup(0, group);
            for (const auto& line : LinesOf(kEnglishTypes, group)) {
                TakeEnglish(line);
                AddType(0, group, line.type, symbols);
            }
        }
    }

    // Chinese is English where its list says nothing.
    void RegisterChinese() {
        StartLanguage(1, kChineseGroups);
        for (int group : kRegistrationOrder) {
            StartGroup(1, group);
            for (const auto& line : LinesOf(kEnglishTypes, group)) {
                TakeEnglish(line);
                if (const auto* own = LineOf(kChineseTypes, group, line.type)) {
                    for (std::size_t i = 0; i < own->count; ++i) {
                        const ChineseEntry& entry = own->entries[i];
                        // The place keeps its class and marks; text and keys are its own.
                        Symbol& place = symbols[entry.symbol - 1];
                        place.text = entry.text;
                        place.keys = entry.keys;
                    }
                }
                AddType(1, group, line.type, symbols);
            }
        }
    }

    // The operators come first, so that they win every collision of keys.
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
        for (const char16_t* key : keys)
            Insert(catalog.operatorCounts, key, catalog.operators.back().get());
    }

    // The symbols of an English line become the type at hand.
    void TakeEnglish(const TypeLine<EnglishEntry>& line) {
        symbols.clear();
        for (std::size_t i = 0; i < line.count; ++i) {
            const EnglishEntry& entry = line.entries[i];
            symbols.push_back({entry.text, entry.keys, entry.marks});
        }
    }

    void StartLanguage(int language, const GroupLine (&names)[kGroupCount]) {
        catalog.groupNames[language].assign(kGroupCount, nullptr);
        for (const GroupLine& name : names)
            catalog.groupNames[language][name.group - 1] = name.name;
        catalog.symbols[language].resize(kGroupCount);
    }

    void StartGroup(int language, int group) {
        catalog.symbols[language][group - 1].resize(catalog.converters[group - 1].size());
    }

    void AddType(int language, int group, int type, const std::vector<Symbol>& symbols) {
        auto& slots = catalog.symbols[language][group - 1][type - 1];
        slots.resize(symbols.size());
        for (std::size_t i = 0; i < symbols.size(); ++i) {
            const Symbol& entry = symbols[i];
            const int symbol = static_cast<int>(i + 1);
            const int unit = (group << 12) | type;
            const std::uint32_t flags = entry.marks & NoSpace;
            ISymbol* object = nullptr;
            const IParseSymbol* reader = nullptr;
            const SymbolPlace place = PlaceOf(group, type, symbol);
            switch (place.symbolClass) {
                case SymbolClass::UnitlessName:
                    object = catalog.NewSymbol<GenericSymbolEx>(
                        entry.text, unit, 1u, language == 0 ? u"unitless" : u"无量纲");
                    break;
                case SymbolClass::Linear: {
                    auto* linear = catalog.NewSymbol<LinearSymbol>(entry.text, place.scaleUnit,
                                                                   place.sizeUnit, flags);
                    reader = linear;
                    object = linear;
                    break;
                }
                // The compound patterns render only: they get no key.
                case SymbolClass::FeetInches:
                    object = catalog.NewSymbol<PrimeDoublePrimeSymbol>(
                        entry.text, (symbol << 20) | unit, place.showFeet, place.showFraction,
                        place.showDash);
                    break;
                case SymbolClass::DegreesMinutesSeconds:
                    object = catalog.NewSymbol<DegreePrimeDoublePrimeSymbol>(entry.text,
                                                                             place.isBearing);
                    break;
                case SymbolClass::Generic: {
                    auto* generic = catalog.NewSymbol<GenericSymbol>(entry.text, unit, flags);
                    reader = generic;
                    object = generic;
                    break;
                }
            }
            const bool keyed = reader != nullptr && !(entry.marks & NoKey);
            DictionaryCounts& counts = catalog.languageCounts[language];
            if (keyed) {
                ++counts.ownTexts;
                Insert(counts, entry.text, reader, language, unit);
            }
            slots[i].reset(object);
            if (keyed) {
                for (const char16_t* key : entry.keys) {
                    ++counts.furtherKeys;
                    Insert(counts, key, reader, language, unit);
                }
            }
        }
    }

    // The first holder of a key keeps it; the refusal is only counted.
    void Insert(DictionaryCounts& counts, const char16_t* key, const IParseSymbol* symbol) {
        ++counts.calls;
        if (catalog.dictionary.Insert(key, symbol) == 0) ++counts.accepted;
    }

    // A unit symbol's key; a refusal is sorted by the key's holder.
    void Insert(DictionaryCounts& counts, const char16_t* key, const IParseSymbol* symbol,
                int language, int unit) {
        ++counts.calls;
        const IParseSymbol* holder = nullptr;
        if (catalog.dictionary.Insert(key, symbol, holder) == 0) {
            ++counts.accepted;
        } else {
            NoteRefusal(holder, language, unit);
        }
    }

    void NoteRefusal(const IParseSymbol* holder, int language, int unit) {
        RefusedKeys& refusals = catalog.refusals;
        const int holderUnit = UnitOfKey(holder);
        if (holderUnit == 0) {
            ++refusals.operatorHeld;
            return;
        }
        if (holderUnit != unit) {
            ++refusals.otherType;
        } else if (language != 0 && IsEnglish(holder, unit)) {
            ++refusals.sameTypeOtherLanguage;
        } else {
            ++refusals.sameTypeSameLanguage;
        }
    }

    bool IsEnglish(const IParseSymbol* holder, int unit) const {
        const auto& slots = catalog.symbols[0][UnitId::GroupIndex(unit)][UnitId::TypeIndex(unit)];
        for (const auto& slot : slots) {
            if (slot && slot->AsParse() == holder) return true;
        }
        return false;
    }

    UnitCatalog& catalog;
    std::vector<Symbol> symbols;  // the type at hand, reused from type to type
};

void RegisterVocabulary(UnitCatalog& catalog) {
    VocabularyBuilder(catalog).Run();
}

}  // namespace Mensura
