// Fills the symbol trees, the group names and the parse dictionary at load,
// from the vocabulary lists of both languages.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>
#include <vector>

#include "notations/degrees_symbol.h"
#include "notations/feet_inches_symbol.h"
#include "notations/format_symbol.h"
#include "notations/angles.h"
#include "notations/feet_inches.h"
#include "grammar/operators.h"
#include "units/unit_catalog.h"

namespace Mensura {

namespace {

enum Mark : unsigned {
    NoSpace = SimpleFormatSymbol::NoSpace,  // no blank between number and symbol
    NoKey = 2,                              // renders only; no key in the dictionary
};

// A text is a view of its literal, so that its length is counted at compile
// time; the literal's terminator stays behind the view.
struct EnglishEntry {
    std::u16string_view text;
    std::initializer_list<const char16_t*> keys = {};
    unsigned marks = 0;
};

struct ChineseEntry {
    int symbol;
    std::u16string_view text;
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
#include "catalogue/english.inc"
#undef TYPE
#define TYPE(group, type, ...) constexpr ChineseEntry kChinese_##group##_##type[] = {__VA_ARGS__};
#include "catalogue/chinese.inc"
#undef TYPE
#undef GROUP

#define GROUP(group, name)
#define TYPE(group, type, ...) \
    {group, type, kEnglish_##group##_##type, std::size(kEnglish_##group##_##type)},
constexpr TypeLine<EnglishEntry> kEnglishTypes[] = {
#include "catalogue/english.inc"
};
#undef TYPE
#define TYPE(group, type, ...) \
    {group, type, kChinese_##group##_##type, std::size(kChinese_##group##_##type)},
constexpr TypeLine<ChineseEntry> kChineseTypes[] = {
#include "catalogue/chinese.inc"
};
#undef TYPE
#undef GROUP

#define TYPE(...)
#define GROUP(group, name) {group, name},
constexpr GroupLine kEnglishGroups[] = {
#include "catalogue/english.inc"
};
constexpr GroupLine kChineseGroups[] = {
#include "catalogue/chinese.inc"
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

// At least as many keys as a list asks the dictionary for: every key of every
// entry that is not marked NoKey.
template <typename Entry, std::size_t N>
constexpr std::size_t KeyBound(const TypeLine<Entry> (&lines)[N]) {
    std::size_t count = 0;
    for (const auto& line : lines) {
        for (std::size_t i = 0; i < line.count; ++i) {
            if (!(line.entries[i].marks & NoKey)) count += 1 + line.entries[i].keys.size();
        }
    }
    return count;
}
constexpr std::size_t kEnglishKeyBound = KeyBound(kEnglishTypes);

// The order in which groups register, the same in both languages.
constexpr int kRegistrationOrder[] = {
    1,  2,  3,  4,  5,  6,  44, 13, 42, 7,  8,  9,  10, 11, 12, 49, 50, 14, 15, 40, 33, 16, 17,
    18, 19, 45, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 34, 35, 36, 37, 38, 39, 41,
    43, 46, 47, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64, 65, 48, 66, 67, 68};

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

constexpr SymbolPlace PlaceOf(int group, int type, int symbol) {
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

    // The most bytes that Run takes from the catalogue's memory. Each
    // allocation is taken as a whole number of the largest alignment.
    static constexpr std::size_t Bytes() {
        constexpr auto Round = [](std::size_t bytes) {
            return (bytes + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);
        };
        std::size_t objects = 0;
        std::size_t places = 0;
        for (const auto& line : kEnglishTypes) {
            for (std::size_t i = 0; i < line.count; ++i) {
                const int symbol = static_cast<int>(i + 1);
                objects += Round(SizeOf(PlaceOf(line.group, line.type, symbol).symbolClass));
            }
            places += line.count;
        }
        constexpr std::size_t kLanguages = UnitCatalog::kLanguages;
        return kLanguages * (objects + Round(places * sizeof(UnitCatalog::SymbolSlot)) +
                             Round(kGroupCount * sizeof(const char16_t*))) +
               Round((std::size(kEnglishTypes) + 1) * sizeof(std::uint32_t)) +
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

    static constexpr std::size_t SizeOf(SymbolClass symbolClass) {
        switch (symbolClass) {
            case SymbolClass::UnitlessName:
                return sizeof(GenericSymbolEx);
            case SymbolClass::Linear:
                return sizeof(LinearSymbol);
            case SymbolClass::FeetInches:
                return sizeof(PrimeDoublePrimeSymbol);
            case SymbolClass::DegreesMinutesSeconds:
                return sizeof(DegreePrimeDoublePrimeSymbol);
            case SymbolClass::Generic:
                break;
        }
        return sizeof(GenericSymbol);
    }

    // What the dictionary answered to one key that English asked for: who
    // holds the key after the call, the asking symbol itself when it took it.
    struct Answer {
        const IParseSymbol* holder;
        int holderUnit;  // UnitOfKey(holder)
    };

    // Every type has as many places as its English line has symbols, in both
    // languages; the slots of all of them are made at once.
    void LayOutSymbols() {
        auto& first = catalog.firstSymbol;
        first.assign(catalog.converters.size() + 1, 0);
        for (const auto& line : kEnglishTypes) {
            std::size_t place = 0;
            // A vocabulary line for a type that the conversion table lacks
            // cannot be placed.
            if (!catalog.TypePlace(UnitId::Make(line.group, line.type), place)) std::abort();
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
        answers.clear();
        answers.reserve(kEnglishKeyBound);
        for (int group : kRegistrationOrder) {
            for (const auto& line : LinesOf(kEnglishTypes, kEnglishStarts, group))
                AddType(0, line, nullptr);
        }
    }

    // Chinese is English where its list says nothing.
    void RegisterChinese() {
        StartLanguage(1, kChineseGroups);
        answered = 0;
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

    void StartLanguage(int language, const GroupLine (&names)[kGroupCount]) {
        catalog.groupNames[language].assign(kGroupCount, nullptr);
        for (const GroupLine& name : names)
            catalog.groupNames[language][name.group - 1] = name.name;
    }

    // Makes the symbols of the type of an English line in a language and asks
    // the dictionary for their keys. A place that the Chinese line `own`
    // lists has its text and keys from there; it keeps its class and marks.
    void AddType(int language, const TypeLine<EnglishEntry>& line,
                 const TypeLine<ChineseEntry>* own) {
        const ChineseEntry* replaced[kMostSymbols] = {};
        if (own != nullptr) {
            for (std::size_t i = 0; i < own->count; ++i)
                replaced[own->entries[i].symbol - 1] = &own->entries[i];
        }
        const int group = line.group;
        const int type = line.type;
        const int unit = (group << 12) | type;
        std::size_t place = 0;
        catalog.TypePlace(unit, place);
        UnitCatalog::SymbolSlot* slots =
            catalog.symbols[language].data() + catalog.firstSymbol[place];
        DictionaryCounts& counts = catalog.languageCounts[language];
        for (std::size_t i = 0; i < line.count; ++i) {
            const EnglishEntry& english = line.entries[i];
            const std::u16string_view text =
                replaced[i] != nullptr ? replaced[i]->text : english.text;
            const auto& keys = replaced[i] != nullptr ? replaced[i]->keys : english.keys;
            const int symbol = static_cast<int>(i + 1);
            const std::uint32_t flags = english.marks & NoSpace;
            ISymbol* object = nullptr;
            const IParseSymbol* reader = nullptr;
            const SymbolPlace place = PlaceOf(group, type, symbol);
            switch (place.symbolClass) {
                case SymbolClass::UnitlessName:
                    object = catalog.New<GenericSymbolEx>(text, unit, 1u,
                                                          language == 0 ? u"unitless" : u"无量纲");
                    break;
                case SymbolClass::Linear: {
                    auto* linear =
                        catalog.New<LinearSymbol>(text, place.scaleUnit, place.sizeUnit, flags);
                    reader = linear;
                    object = linear;
                    break;
                }
                // The compound patterns render only: they get no key.
                case SymbolClass::FeetInches:
                    object = catalog.New<PrimeDoublePrimeSymbol>(text.data(), (symbol << 20) | unit,
                                                                 place.showFeet, place.showFraction,
                                                                 place.showDash);
                    break;
                case SymbolClass::DegreesMinutesSeconds:
                    object =
                        catalog.New<DegreePrimeDoublePrimeSymbol>(text.data(), place.isBearing);
                    break;
                case SymbolClass::Generic: {
                    auto* generic = catalog.New<GenericSymbol>(text, unit, flags);
                    reader = generic;
                    object = generic;
                    break;
                }
            }
            slots[i].reset(object);
            if (reader == nullptr || (english.marks & NoKey)) continue;
            // The text first, then the further keys in their order. A text
            // ends where its literal does.
            ++counts.ownTexts;
            counts.furtherKeys += static_cast<int>(keys.size());
            if (language == 1) {
                // A Chinese place that takes the English entry asks for the
                // very keys that English asked for. Every one of them has had
                // a holder since then, and during the load a key only ever
                // gains one, never changes it: the dictionary would answer as
                // it did to English.
                const Answer* known = answers.data() + answered;
                answered += 1 + english.keys.size();
                if (replaced[i] == nullptr) {
                    for (const Answer* answer = known; answer != answers.data() + answered;
                         ++answer) {
                        ++counts.calls;
                        NoteRefusal(*answer, language, unit);
                    }
                    continue;
                }
            }
            Insert(counts, text.data(), reader, language, unit);
            for (const char16_t* key : keys) Insert(counts, key, reader, language, unit);
        }
    }

    // The first holder of a key keeps it; the refusal is only counted.
    void Insert(DictionaryCounts& counts, const char16_t* key, const IParseSymbol* symbol) {
        ++counts.calls;
        if (catalog.dictionary.Insert(key, symbol) == 0) ++counts.accepted;
    }

    // A unit symbol's key; a refusal is sorted by the key's holder. English
    // keeps every answer, for the Chinese places that repeat its keys.
    void Insert(DictionaryCounts& counts, const char16_t* key, const IParseSymbol* symbol,
                int language, int unit) {
        ++counts.calls;
        Answer answer{symbol, unit};
        if (catalog.dictionary.Insert(key, symbol, answer.holder) == 0) {
            ++counts.accepted;
        } else {
            answer.holderUnit = UnitOfKey(answer.holder);
            NoteRefusal(answer, language, unit);
        }
        if (language == 0) answers.push_back(answer);
    }

    void NoteRefusal(const Answer& answer, int language, int unit) {
        RefusedKeys& refusals = catalog.refusals;
        if (answer.holderUnit == 0) {
            ++refusals.operatorHeld;
            return;
        }
        if (answer.holderUnit != unit) {
            ++refusals.otherType;
        } else if (language != 0 && IsEnglish(answer.holder, unit)) {
            ++refusals.sameTypeOtherLanguage;
        } else {
            ++refusals.sameTypeSameLanguage;
        }
    }

    bool IsEnglish(const IParseSymbol* holder, int unit) const {
        std::size_t place = 0;
        if (!catalog.TypePlace(unit, place)) return false;
        // The one ISymbol of an object names it, whichever face it is reached by.
        const ISymbol* object = holder;
        const auto& english = catalog.symbols[0];
        for (std::uint32_t i = catalog.firstSymbol[place]; i < catalog.firstSymbol[place + 1];
             ++i) {
            if (english[i].get() == object) return true;
        }
        return false;
    }

    UnitCatalog& catalog;
    std::vector<Answer> answers;  // to every English key, in the order of asking
    std::size_t answered = 0;     // how many of them Chinese places have passed
};

std::size_t VocabularyBytes() {
    constexpr std::size_t kBytes = VocabularyBuilder::Bytes();
    return kBytes;
}

void RegisterVocabulary(UnitCatalog& catalog) {
    VocabularyBuilder(catalog).Run();
}

}  // namespace Mensura
