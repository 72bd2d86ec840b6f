// Builds the everyday vocabulary from everyday.inc and the catalogue.
#include "catalogue/everyday.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/unit_id.h"
#include "catalogue/dictionary_keys.h"
#include "catalogue/unit_catalog.h"

// The pools of the parse dictionary, written by mensura_generate_dictionary.
#include "catalogue/dictionary_layout.inc"
#include "catalogue/vocabulary.h"
#include "grammar/parse_symbol.h"

namespace Mensura {

namespace {

enum class Kind { Meaning, MeaningInUS, Word, WordInUS };

struct Line {
    Kind kind;
    const char16_t* key;
    int unit;
    double scale;
};

// Each table reads one kind of line of everyday.inc and passes over the others.
#define EVERYDAY(kind, key, unit, scale)
#define PREFIXED(symbol, unit, scale)
#define PREFIX(prefix, factor)
#define FRACTION(character, numerator, denominator)
#define PRODUCT(key)

#undef EVERYDAY
#define EVERYDAY(kind, key, unit, scale) {Kind::kind, key, unit, scale},
constexpr Line kLines[] = {
#include "catalogue/everyday.inc"
};
#undef EVERYDAY
#define EVERYDAY(kind, key, unit, scale)

struct Prefixed {
    std::u16string_view symbol;
    int unit;
    double scale;
};

#undef PREFIXED
#define PREFIXED(symbol, unit, scale) {symbol, unit, scale},
constexpr Prefixed kPrefixed[] = {
#include "catalogue/everyday.inc"
};
#undef PREFIXED
#define PREFIXED(symbol, unit, scale)

struct Prefix {
    std::u16string_view text;
    double factor;
};

#undef PREFIX
#define PREFIX(prefix, factor) {prefix, factor},
constexpr Prefix kPrefixes[] = {
#include "catalogue/everyday.inc"
};
#undef PREFIX
#define PREFIX(prefix, factor)

#undef FRACTION
#define FRACTION(character, numerator, denominator) {character, numerator, denominator},
constexpr EverydayVocabulary::Fraction kFractions[] = {
#include "catalogue/everyday.inc"
};
#undef FRACTION
#define FRACTION(character, numerator, denominator)

#undef PRODUCT
#define PRODUCT(key) key,
constexpr const char16_t* kProducts[] = {
#include "catalogue/everyday.inc"
};

#undef EVERYDAY
#undef PREFIXED
#undef PREFIX
#undef FRACTION
#undef PRODUCT

constexpr char16_t kMicroSign = u'\u00B5';
constexpr char16_t kGreekMu = u'\u03BC';

// How many symbols the lines replace.
constexpr std::size_t CountReplacing() {
    std::size_t count = 0;
    for (const Line& line : kLines) {
        if (line.kind == Kind::Meaning || line.kind == Kind::MeaningInUS) ++count;
    }
    return count;
}

// Which texts are keys of the catalogue, and which reader holds each, is
// known at compile time: the build lays its dictionary out from the
// vocabularies, and every catalogue is read through that layout. The keys
// that the builder spells out (plurals, prefixed symbols, the Greek mu) are
// spelled here, and those that the catalogue has already are left out, so
// that the load neither spells nor looks up a key in vain.
//
// The number of the reader that holds exactly `key` in the catalogue, or 0.
constexpr std::uint16_t CatalogueReader(std::u16string_view key) {
    return DoubleArray::Exact(DictionaryLayout::kLayout, key.data(), key.size());
}

constexpr bool InCatalogue(std::u16string_view key) {
    return CatalogueReader(key) != 0;
}

// Writes texts into an array; without one, counts their units.
struct Writer {
    char16_t* units = nullptr;
    std::size_t size = 0;
    constexpr void Put(char16_t unit) {
        if (units != nullptr) units[size] = unit;
        ++size;
    }
    constexpr void Put(std::u16string_view text) {
        for (char16_t unit : text) Put(unit);
    }
};

// The tables above as the build reads them at run time: numbers alone, the
// keys of the lines and of the product sign in one array of texts, each
// with its terminator, named by their place there. A table of pointers to
// the literals would be relocated, and its pages copied, at every start of
// a program that loads the library, whether it reads the everyday way or not.
struct LineData {
    Kind kind;
    std::uint32_t key;  // its first unit in the array of keys
    int unit;
    double scale;
};

constexpr std::size_t KeyUnits() {
    Writer counter;
    for (const Line& line : kLines) counter.Put(line.key), counter.Put(u'\0');
    for (const char16_t* key : kProducts) counter.Put(key), counter.Put(u'\0');
    return counter.size;
}

struct PackedLines {
    std::array<char16_t, KeyUnits()> keys{};
    std::array<LineData, std::size(kLines)> lines{};
    std::array<std::uint32_t, std::size(kProducts)> products{};
    constexpr const char16_t* Key(std::uint32_t at) const { return keys.data() + at; }
};

constexpr PackedLines PackLines() {
    PackedLines packed;
    Writer out{packed.keys.data()};
    const auto add = [&out](std::u16string_view key) {
        const auto at = static_cast<std::uint32_t>(out.size);
        out.Put(key);
        out.Put(u'\0');
        return at;
    };
    for (std::size_t i = 0; i < std::size(kLines); ++i)
        packed.lines[i] = {kLines[i].kind, add(kLines[i].key), kLines[i].unit, kLines[i].scale};
    for (std::size_t i = 0; i < std::size(kProducts); ++i) packed.products[i] = add(kProducts[i]);
    return packed;
}
constexpr PackedLines kPackedLines = PackLines();

// The units and scales of the prefixed symbols, and the prefixes' factors.
struct PrefixedUnit {
    int unit;
    double scale;
};
constexpr std::array<PrefixedUnit, std::size(kPrefixed)> PrefixedUnits() {
    std::array<PrefixedUnit, std::size(kPrefixed)> units{};
    for (std::size_t i = 0; i < units.size(); ++i)
        units[i] = {kPrefixed[i].unit, kPrefixed[i].scale};
    return units;
}
constexpr auto kPrefixedUnits = PrefixedUnits();

constexpr std::array<double, std::size(kPrefixes)> PrefixFactors() {
    std::array<double, std::size(kPrefixes)> factors{};
    for (std::size_t i = 0; i < factors.size(); ++i) factors[i] = kPrefixes[i].factor;
    return factors;
}
constexpr auto kPrefixFactors = PrefixFactors();

// Texts spelled at compile time, one after another with their terminators,
// each with a note of what it stands for.
template <typename Note, std::size_t Units, std::size_t Count>
struct Spelled {
    struct Entry {
        Note note;
        std::size_t at;  // the text's first unit in `units`
    };
    std::array<char16_t, Units> units{};
    std::array<Entry, Count> entries{};
    std::size_t unitCount = 0;
    std::size_t count = 0;
    constexpr const char16_t* Text(std::size_t i) const { return units.data() + entries[i].at; }
};

// How many texts, and units with their terminators, spelling gives at most:
// spell(emit) calls emit(note, write) for every text, where write(writer)
// writes the text, or returns false, with nothing written, where there is none.
struct Size {
    std::size_t units = 0;
    std::size_t count = 0;
};
template <typename Spell>
constexpr Size SizeOf(Spell spell) {
    Writer counter;
    Size size;
    spell([&](auto, auto write) {
        if (!write(counter)) return;
        counter.Put(u'\0');
        ++size.count;
    });
    size.units = counter.size;
    return size;
}

// The texts that spelling gives and the catalogue lacks.
template <typename Note, std::size_t Units, std::size_t Count, typename Spell>
constexpr Spelled<Note, Units, Count> SpellNew(Spell spell) {
    Spelled<Note, Units, Count> spelled;
    Writer out{spelled.units.data()};
    spell([&](Note note, auto write) {
        const std::size_t at = out.size;
        if (!write(out)) return;
        if (InCatalogue({spelled.units.data() + at, out.size - at})) {
            out.size = at;
            return;
        }
        out.Put(u'\0');
        spelled.entries[spelled.count++] = {note, at};
    });
    spelled.unitCount = out.size;
    return spelled;
}

// The same texts in arrays of their exact size.
template <std::size_t Units, std::size_t Count, typename Note, std::size_t U, std::size_t C>
constexpr Spelled<Note, Units, Count> Trim(const Spelled<Note, U, C>& draft) {
    Spelled<Note, Units, Count> trimmed;
    for (std::size_t i = 0; i < Units; ++i) trimmed.units[i] = draft.units[i];
    for (std::size_t i = 0; i < Count; ++i) {
        trimmed.entries[i] = {draft.entries[i].note, draft.entries[i].at};
    }
    trimmed.unitCount = Units;
    trimmed.count = Count;
    return trimmed;
}

// The catalogue keys that hold the micro sign, in the order of a walk of the
// dictionary (by their units, a key before the keys it begins), each once.
constexpr bool HoldsMicroSign(const char16_t* key) {
    for (; *key != 0; ++key) {
        if (*key == kMicroSign) return true;
    }
    return false;
}

constexpr bool Before(const char16_t* a, const char16_t* b) {
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return *a < *b;
}

constexpr std::size_t CountMicroKeys() {
    std::size_t count = 0;
    DictionaryKeys::ForEachKey([&count](const char16_t* key, std::size_t) {
        if (HoldsMicroSign(key)) ++count;
    });
    return count;
}

struct MicroKeys {
    std::array<const char16_t*, CountMicroKeys()> keys{};
    std::size_t count = 0;
};

constexpr MicroKeys SortMicroKeys() {
    MicroKeys sorted;
    DictionaryKeys::ForEachKey([&sorted](const char16_t* key, std::size_t) {
        if (!HoldsMicroSign(key)) return;
        std::size_t at = sorted.count;
        while (at > 0 && Before(key, sorted.keys[at - 1])) --at;
        if (at > 0 && !Before(sorted.keys[at - 1], key)) return;  // claimed twice
        for (std::size_t i = sorted.count; i > at; --i) sorted.keys[i] = sorted.keys[i - 1];
        sorted.keys[at] = key;
        ++sorted.count;
    });
    return sorted;
}
constexpr MicroKeys kMicroKeys = SortMicroKeys();

// The catalogue writes micro with the micro sign; the Greek mu, which looks
// the same, reads alike. Each key with the mu, noted with the number of the
// reader of the key it stands for.
struct SpellGreekMu {
    template <typename Emit>
    constexpr void operator()(Emit&& emit) const {
        for (std::size_t i = 0; i < kMicroKeys.count; ++i) {
            const char16_t* key = kMicroKeys.keys[i];
            emit(CatalogueReader(key), [key](Writer& out) {
                for (const char16_t* unit = key; *unit != 0; ++unit) {
                    out.Put(*unit == kMicroSign ? kGreekMu : *unit);
                }
                return true;
            });
        }
    }
};

// Every prefix before every symbol that takes them, noted with the places of both.
struct PrefixNote {
    std::size_t base;
    std::size_t prefix;
};
struct SpellPrefixed {
    template <typename Emit>
    constexpr void operator()(Emit&& emit) const {
        for (std::size_t base = 0; base < std::size(kPrefixed); ++base) {
            for (std::size_t prefix = 0; prefix < std::size(kPrefixes); ++prefix) {
                emit(PrefixNote{base, prefix}, [base, prefix](Writer& out) {
                    out.Put(kPrefixes[prefix].text);
                    out.Put(kPrefixed[base].symbol);
                    return true;
                });
            }
        }
    }
};

constexpr bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

constexpr bool AllLetters(std::u16string_view word) {
    for (char16_t unit : word) {
        if (!IsLetter(unit)) return false;
    }
    return true;
}

// Writes the plural of one English word; false where the word takes none of
// its own ("hertz", "siemens", "lux") or is no plain word.
constexpr bool PluralOfWord(std::u16string_view word, Writer& out) {
    if (word.size() < 2 || !AllLetters(word)) return false;
    if (word == u"foot") {
        out.Put(u"feet");
        return true;
    }
    const char16_t last = word.back();
    const char16_t before = word[word.size() - 2];
    if (last == u's' || last == u'x' || last == u'z') return false;
    if ((before == u'c' || before == u's') && last == u'h') {
        out.Put(word);
        out.Put(u"es");
    } else if (last == u'y' &&
               std::u16string_view(u"aeiou").find(before) == std::u16string_view::npos) {
        out.Put(word.substr(0, word.size() - 1));
        out.Put(u"ies");
    } else {
        out.Put(word);
        out.Put(u's');
    }
    return true;
}

// The words that qualify the one before them, which then takes the plural.
constexpr std::u16string_view kQualifiers[] = {u"Celsius", u"Fahrenheit", u"Rankine",
                                               u"Kelvin",  u"force",      u"mass"};
constexpr std::size_t kMostWords = 16;

// Writes the plural of a unit's spelled name: its head noun takes it, the
// word before "per" ("meters per second") or else the last word, unless
// that word qualifies the one before it ("degrees Celsius", "pounds force").
// False, with nothing written, where the name takes none.
constexpr bool PluralOfName(std::u16string_view name, Writer& out) {
    std::array<std::u16string_view, kMostWords> words{};
    std::size_t count = 0;
    for (std::size_t start = 0; start <= name.size();) {
        std::size_t end = name.find(u' ', start);
        if (end == std::u16string_view::npos) end = name.size();
        words[count++] = name.substr(start, end - start);
        start = end + 1;
    }
    std::size_t head = count - 1;
    for (std::size_t i = 1; i < count; ++i) {
        if (words[i] == u"per") {
            head = i - 1;
            break;
        }
    }
    for (std::u16string_view qualifier : kQualifiers) {
        if (head > 0 && words[head] == qualifier) --head;
    }
    const std::size_t start = out.size;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) out.Put(u' ');
        if (i == head ? !PluralOfWord(words[i], out) : !AllLetters(words[i])) {
            out.size = start;
            return false;
        }
        if (i != head) out.Put(words[i]);
    }
    return true;
}

// "meters", "feet", "square inches", "degrees Celsius": the plural of the
// first entry of every English line that has a key, of its text and of its
// further keys, noted with the number of the reader that holds the name (0
// where the name is no key).
template <typename Visit>
constexpr void ForEachName(Visit&& visit) {
    for (const auto& line : Vocabulary::kEnglishTypes) {
        const Vocabulary::EnglishEntry& name = line.entries[0];
        if (name.marks & Vocabulary::NoKey) continue;
        visit(name.text.data());
        for (const char16_t* key : name.keys) visit(key);
    }
}

constexpr std::size_t MostWordsInAName() {
    std::size_t most = 0;
    ForEachName([&most](const char16_t* name) {
        std::size_t words = 1;
        for (; *name != 0; ++name) words += *name == u' ';
        most = std::max(most, words);
    });
    return most;
}
static_assert(MostWordsInAName() <= kMostWords, "a name has more words than PluralOfName holds");

struct SpellPlurals {
    template <typename Emit>
    constexpr void operator()(Emit&& emit) const {
        ForEachName([&emit](const char16_t* name) {
            emit(CatalogueReader(name), [name](Writer& out) { return PluralOfName(name, out); });
        });
    }
};

// The keys that a spelling gives and the catalogue lacks, in arrays of their
// exact size.
template <typename Note, typename Spell>
constexpr auto SpellNewKeys() {
    constexpr Size most = SizeOf(Spell{});
    constexpr auto draft = SpellNew<Note, most.units, most.count>(Spell{});
    return Trim<draft.unitCount, draft.count>(draft);
}
constexpr auto kPlurals = SpellNewKeys<std::uint16_t, SpellPlurals>();
constexpr auto kPrefixedKeys = SpellNewKeys<PrefixNote, SpellPrefixed>();
constexpr auto kGreekMuKeys = SpellNewKeys<std::uint16_t, SpellGreekMu>();

// Every line, plural, prefixed symbol, mu key and product adds one meaning
// at most, and the lines and prefixed symbols one scaled unit each.
constexpr std::size_t kMostMeanings = std::size(kLines) + kPlurals.count + kPrefixedKeys.count +
                                      kGreekMuKeys.count + std::size(kProducts);
constexpr std::size_t kMostScaled = std::size(kLines) + kPrefixedKeys.count;

}  // namespace

class EverydayBuilder {
public:
    EverydayBuilder(EverydayVocabulary& vocabulary, const UnitCatalog& catalog)
        : out(vocabulary), catalog(catalog) {}

    void Build() {
        // Meanings and scaled units are pointed to: their room is made once.
        out.meanings.reserve(kMostMeanings);
        out.scaled.reserve(kMostScaled);
        out.replaced.reserve(CountReplacing());
        out.words.Reserve(EverydayVocabulary::kWordNodes, EverydayVocabulary::kWordUnits,
                          EverydayVocabulary::kWordEdges);
        for (const LineData& line : kPackedLines.lines) AddLine(line);
        AddPlurals();
        AddPrefixes();
        AddGreekMu();
        out.marks = {Known(u" "), Known(u"/"), Known(u"°"), Known(u"\u2032"), Known(u"\u2033")};
        const IParseSymbol* product = Known(u"·");
        for (std::uint32_t key : kPackedLines.products)
            AddWord(kPackedLines.Key(key), product, nullptr);
        std::sort(out.replaced.begin(), out.replaced.end(), EverydayVocabulary::BySymbol{});
        std::size_t size = 16;
        while (size < 4 * out.replaced.size()) size *= 2;
        out.slots.assign(size, nullptr);
        out.slotMask = size - 1;
        for (const auto& entry : out.replaced) {
            std::size_t slot = out.SlotOf(entry.first);
            while (out.slots[slot] != nullptr) slot = (slot + 1) & out.slotMask;
            out.slots[slot] = &entry;
        }
        const ParseDictionary& dictionary = catalog.Dictionary();
        for (const bool us : {false, true}) {
            auto& readers = out.readers[us ? 1 : 0];
            readers.resize(DictionaryKeys::kReaders);
            for (std::size_t number = 0; number < readers.size(); ++number) {
                const IParseSymbol* reader = dictionary.Reader(number);
                readers[number] = reader != nullptr ? out.Substitute(reader, us) : nullptr;
            }
        }
        out.words.IndexWideBranches();
        const IParseSymbol* blank = Known(u" ");
        if (!DoubleArray::GoesOnBehind(DictionaryLayout::kLayout, u' ') &&
            !out.MayBeginWord(u' ') && out.Substitute(blank, false) == blank &&
            out.Substitute(blank, true) == blank) {
            out.blank = blank;
        }
    }

private:
    // The symbol that owns exactly `key`, a text with its terminator, in the
    // catalogue, or null.
    const IParseSymbol* Known(const char16_t* key) const {
        std::size_t matched = 0;
        const IParseSymbol* symbol = catalog.Dictionary().FindLongest(key, &matched);
        return symbol != nullptr && key[matched] == 0 ? symbol : nullptr;
    }

    // The catalogue's reader of a number that its dictionary holds; null for 0.
    const IParseSymbol* Reader(std::uint16_t number) const {
        return catalog.Dictionary().Reader(number);
    }

    EverydayMeaning* NewMeaning(const IParseSymbol* everywhere, const IParseSymbol* inUS) {
        if (out.meanings.size() == out.meanings.capacity()) std::abort();  // kMostMeanings is short
        out.meanings.push_back({everywhere, inUS});
        return &out.meanings.back();
    }

    const IParseSymbol* NewScaled(const UnitConverter& converter, double scale) {
        if (out.scaled.size() == out.scaled.capacity()) std::abort();  // kMostScaled is short
        out.scaled.emplace_back(converter.GetDimensions(), converter.GetFactor() * scale);
        return &out.scaled.back();
    }

    // `scale` times the unit: the unit's own first symbol at scale 1, so
    // that a temperature scale keeps its offset, else a new pure scale.
    const IParseSymbol* Meaning(int unit, double scale) {
        if (scale == 1.0) {
            const ISymbol* symbol = catalog.FindSymbol(UnitId::Make(0, 0, 1) | unit, 0);
            const IParseSymbol* parse = symbol != nullptr ? symbol->AsParse() : nullptr;
            if (parse == nullptr) std::abort();  // a line names a unit that the catalogue lacks
            return parse;
        }
        const UnitConverter* converter = catalog.Units().FindConverter(unit);
        if (converter == nullptr) std::abort();
        return NewScaled(*converter, scale);
    }

    // Adds `key`, a text with its terminator, to the vocabulary with a new
    // meaning. Else, where the vocabulary has it already, returns the meaning
    // that it has.
    EverydayMeaning* Insert(const char16_t* key, const IParseSymbol* everywhere,
                            const IParseSymbol* inUS) {
        const EverydayMeaning* meaning = NewMeaning(everywhere, inUS);
        const EverydayMeaning* holder = nullptr;
        out.wordStarts[(key[0] >> 6) & 3] |= std::uint64_t{1} << (key[0] & 63);
        if (out.words.Insert(key, meaning, holder) == 0) return nullptr;
        out.meanings.pop_back();
        return const_cast<EverydayMeaning*>(holder);
    }

    // Adds a key, unless the catalogue has it already; where the vocabulary
    // has it, fills in the locales that its meaning lacks.
    void AddWord(const char16_t* key, const IParseSymbol* everywhere, const IParseSymbol* inUS) {
        if (Known(key) == nullptr) AddNewWord(key, everywhere, inUS);
    }

    // The same for a key that the catalogue lacks.
    void AddNewWord(const char16_t* key, const IParseSymbol* everywhere, const IParseSymbol* inUS) {
        if (EverydayMeaning* meaning = Insert(key, everywhere, inUS)) {
            if (meaning->everywhere == nullptr) meaning->everywhere = everywhere;
            if (meaning->inUS == nullptr) meaning->inUS = inUS;
        }
    }

    void AddLine(const LineData& line) {
        const char16_t* const key = kPackedLines.Key(line.key);
        const IParseSymbol* meaning = Meaning(line.unit, line.scale);
        switch (line.kind) {
            case Kind::Word:
                AddWord(key, meaning, nullptr);
                return;
            case Kind::WordInUS:
                AddWord(key, nullptr, meaning);
                return;
            case Kind::Meaning:
            case Kind::MeaningInUS:
                break;
        }
        const IParseSymbol* owner = Known(key);
        if (owner == nullptr) std::abort();  // a line replaces a key that the catalogue lacks
        EverydayMeaning* entry = nullptr;
        for (auto& [symbol, existing] : out.replaced) {
            if (symbol == owner) entry = const_cast<EverydayMeaning*>(existing);
        }
        if (entry == nullptr) {
            entry = NewMeaning(nullptr, nullptr);
            out.replaced.emplace_back(owner, entry);
        }
        (line.kind == Kind::Meaning ? entry->everywhere : entry->inUS) = meaning;
    }

    // The plural of every plain English name reads as the name does.
    void AddPlurals() {
        for (std::size_t i = 0; i < kPlurals.count; ++i) {
            if (const IParseSymbol* symbol = Reader(kPlurals.entries[i].note)) {
                AddNewWord(kPlurals.Text(i), symbol, nullptr);
            }
        }
    }

    // Every prefix before every symbol that takes them, as a scale of it.
    void AddPrefixes() {
        const UnitConverter* converter = nullptr;
        std::size_t base = std::size(kPrefixed);
        for (std::size_t i = 0; i < kPrefixedKeys.count; ++i) {
            const PrefixNote& note = kPrefixedKeys.entries[i].note;
            if (note.base != base) {
                base = note.base;
                converter = catalog.Units().FindConverter(kPrefixedUnits[base].unit);
                if (converter == nullptr) std::abort();
            }
            // A key that the vocabulary has already keeps its meaning.
            const IParseSymbol* scaled =
                NewScaled(*converter, kPrefixedUnits[base].scale * kPrefixFactors[note.prefix]);
            if (Insert(kPrefixedKeys.Text(i), scaled, nullptr) != nullptr) out.scaled.pop_back();
        }
    }

    // The Greek mu reads as the micro sign does.
    void AddGreekMu() {
        for (std::size_t i = 0; i < kGreekMuKeys.count; ++i) {
            const IParseSymbol* symbol = Reader(kGreekMuKeys.entries[i].note);
            if (symbol == nullptr) std::abort();  // the catalogue lost a key of its lists
            AddNewWord(kGreekMuKeys.Text(i), symbol, nullptr);
        }
    }

    EverydayVocabulary& out;
    const UnitCatalog& catalog;
};

EverydayVocabulary::EverydayVocabulary(const UnitCatalog& catalog) {
    EverydayBuilder(*this, catalog).Build();
}

EverydayVocabulary::~EverydayVocabulary() = default;

const EverydayVocabulary& EverydayVocabulary::Instance() {
    static const EverydayVocabulary vocabulary(UnitCatalog::Instance());
    return vocabulary;
}

const EverydayVocabulary::Fraction* EverydayVocabulary::FindFraction(char16_t unit) {
    // The vulgar fractions stand in two small blocks of code points.
    if (unit != u'½' && unit != u'¼' && unit != u'¾' && (unit < u'\u2150' || unit > u'\u215E')) {
        return nullptr;
    }
    for (const Fraction& fraction : kFractions) {
        if (fraction.character == unit) return &fraction;
    }
    return nullptr;
}

}  // namespace Mensura
