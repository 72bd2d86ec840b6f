// Builds the everyday vocabulary from everyday.inc and the catalogue.
#include "catalogue/everyday.h"

#include <array>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/unit_id.h"
#include "catalogue/dictionary_keys.h"
#include "catalogue/unit_catalog.h"
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

// The names that may take a plural: the first entry of every English line
// that has a key, its text and its further keys.
constexpr std::size_t CountPluralNames() {
    std::size_t count = 0;
    for (const auto& line : Vocabulary::kEnglishTypes) {
        const Vocabulary::EnglishEntry& name = line.entries[0];
        if (!(name.marks & Vocabulary::NoKey)) count += 1 + name.keys.size();
    }
    return count;
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

// Every line, plural, prefixed symbol, micro key and product adds one
// meaning at most, and the lines and prefixed symbols one scaled unit each.
constexpr std::size_t kMostMeanings = std::size(kLines) + CountPluralNames() +
                                      std::size(kPrefixed) * std::size(kPrefixes) +
                                      kMicroKeys.count + std::size(kProducts);
constexpr std::size_t kMostScaled = std::size(kLines) + std::size(kPrefixed) * std::size(kPrefixes);

bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool AllLetters(std::u16string_view word) {
    for (char16_t unit : word) {
        if (!IsLetter(unit)) return false;
    }
    return true;
}

// Appends the plural of one English word to out; false where the word takes
// none of its own ("hertz", "siemens", "lux") or is no plain word.
bool AppendPluralOfWord(std::u16string_view word, std::u16string& out) {
    if (word.size() < 2 || !AllLetters(word)) return false;
    if (word == u"foot") {
        out += u"feet";
        return true;
    }
    const char16_t last = word.back();
    const char16_t before = word[word.size() - 2];
    if (last == u's' || last == u'x' || last == u'z') return false;
    if ((before == u'c' || before == u's') && last == u'h') {
        out += word;
        out += u"es";
    } else if (last == u'y' &&
               std::u16string_view(u"aeiou").find(before) == std::u16string_view::npos) {
        out += word.substr(0, word.size() - 1);
        out += u"ies";
    } else {
        out += word;
        out += u's';
    }
    return true;
}

}  // namespace

class EverydayBuilder {
public:
    EverydayBuilder(EverydayVocabulary& vocabulary, const UnitCatalog& catalog)
        : out(vocabulary), catalog(catalog) {
        text.reserve(128);
        words.reserve(16);
    }

    void Build() {
        // Meanings and scaled units are pointed to: their room is made once.
        out.meanings.reserve(kMostMeanings);
        out.scaled.reserve(kMostScaled);
        out.replaced.reserve(CountReplacing());
        for (const Line& line : kLines) AddLine(line);
        AddPlurals();
        AddPrefixes();
        AddGreekMu();
        out.marks = {Known(u" "), Known(u"/"), Known(u"°"), Known(u"\u2032"), Known(u"\u2033")};
        const IParseSymbol* product = Known(u"·");
        for (const char16_t* key : kProducts) AddWord(key, product, nullptr);
        std::sort(out.replaced.begin(), out.replaced.end(), EverydayVocabulary::BySymbol{});
        out.words.IndexWideBranches();
    }

private:
    // The symbol that owns exactly `key`, a text with its terminator, in the
    // catalogue, or null.
    const IParseSymbol* Known(const char16_t* key) const {
        std::size_t matched = 0;
        const IParseSymbol* symbol = catalog.Dictionary().FindLongest(key, &matched);
        return symbol != nullptr && key[matched] == 0 ? symbol : nullptr;
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
        if (out.words.Insert(key, meaning, holder) == 0) return nullptr;
        out.meanings.pop_back();
        return const_cast<EverydayMeaning*>(holder);
    }

    // Adds a key, unless the catalogue has it already; where the vocabulary
    // has it, fills in the locales that its meaning lacks.
    void AddWord(const char16_t* key, const IParseSymbol* everywhere, const IParseSymbol* inUS) {
        if (Known(key) != nullptr) return;
        if (EverydayMeaning* meaning = Insert(key, everywhere, inUS)) {
            if (meaning->everywhere == nullptr) meaning->everywhere = everywhere;
            if (meaning->inUS == nullptr) meaning->inUS = inUS;
        }
    }

    void AddLine(const Line& line) {
        const IParseSymbol* meaning = Meaning(line.unit, line.scale);
        switch (line.kind) {
            case Kind::Word:
                AddWord(line.key, meaning, nullptr);
                return;
            case Kind::WordInUS:
                AddWord(line.key, nullptr, meaning);
                return;
            case Kind::Meaning:
            case Kind::MeaningInUS:
                break;
        }
        const IParseSymbol* owner = Known(line.key);
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

    // "meters", "feet", "square inches", "degrees Celsius": the plural of
    // every plain English name reads as the name does.
    void AddPlurals() {
        for (const auto& line : Vocabulary::kEnglishTypes) {
            const Vocabulary::EnglishEntry& name = line.entries[0];
            if (name.marks & Vocabulary::NoKey) continue;
            AddPlural(name.text.data());
            for (const char16_t* key : name.keys) AddPlural(key);
        }
    }

    void AddPlural(const char16_t* name) {
        if (!PluralOfName(name)) return;
        if (const IParseSymbol* symbol = Known(name)) AddWord(text.c_str(), symbol, nullptr);
    }

    // The plural of a unit's spelled name into `text`: its head noun takes
    // it, the word before "per" ("meters per second") or else the last word,
    // unless that word qualifies the one before it ("degrees Celsius",
    // "pounds force"). False where the name takes none.
    bool PluralOfName(std::u16string_view name) {
        words.clear();
        for (std::size_t start = 0; start <= name.size();) {
            std::size_t end = name.find(u' ', start);
            if (end == std::u16string_view::npos) end = name.size();
            words.push_back(name.substr(start, end - start));
            start = end + 1;
        }
        std::size_t head = words.size() - 1;
        for (std::size_t i = 1; i < words.size(); ++i) {
            if (words[i] == u"per") {
                head = i - 1;
                break;
            }
        }
        for (std::u16string_view qualifier :
             {u"Celsius", u"Fahrenheit", u"Rankine", u"Kelvin", u"force", u"mass"}) {
            if (head > 0 && words[head] == qualifier) --head;
        }
        text.clear();
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (i > 0) text += u' ';
            if (i == head) {
                if (!AppendPluralOfWord(words[i], text)) return false;
            } else {
                if (!AllLetters(words[i])) return false;
                text += words[i];
            }
        }
        return true;
    }

    void AddPrefixes() {
        for (const Prefixed& base : kPrefixed) {
            const UnitConverter* converter = catalog.Units().FindConverter(base.unit);
            if (converter == nullptr) std::abort();
            for (const Prefix& prefix : kPrefixes) {
                text.assign(prefix.text);
                text += base.symbol;
                if (Known(text.c_str()) != nullptr) continue;
                // A key that the vocabulary has already keeps its meaning.
                const IParseSymbol* scaled = NewScaled(*converter, base.scale * prefix.factor);
                if (Insert(text.c_str(), scaled, nullptr) != nullptr) out.scaled.pop_back();
            }
        }
    }

    // The catalogue writes micro with the micro sign; the Greek mu, which
    // looks the same, reads alike.
    void AddGreekMu() {
        for (std::size_t i = 0; i < kMicroKeys.count; ++i) {
            const char16_t* key = kMicroKeys.keys[i];
            const IParseSymbol* symbol = Known(key);
            if (symbol == nullptr) std::abort();  // the catalogue lost a key of its lists
            text.assign(key);
            for (char16_t& unit : text) {
                if (unit == kMicroSign) unit = kGreekMu;
            }
            AddWord(text.c_str(), symbol, nullptr);
        }
    }

    EverydayVocabulary& out;
    const UnitCatalog& catalog;
    // Scratch for the keys that the builder spells out, and the words of a name.
    std::u16string text;
    std::vector<std::u16string_view> words;
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
