// Builds the everyday vocabulary from everyday.inc and the catalogue.
#include "catalogue/everyday.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "base/unit_id.h"
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

bool IsLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// The plural of one English word; empty where the word takes none of its own
// ("hertz", "siemens", "lux") or is no plain word.
std::u16string PluralOfWord(std::u16string_view word) {
    if (word.size() < 2) return {};
    for (char16_t unit : word) {
        if (!IsLetter(unit)) return {};
    }
    if (word == u"foot") return u"feet";
    const char16_t last = word.back();
    const char16_t before = word[word.size() - 2];
    if (last == u's' || last == u'x' || last == u'z') return {};
    std::u16string plural(word);
    if ((before == u'c' || before == u's') && last == u'h') return plural + u"es";
    if (last == u'y' && std::u16string_view(u"aeiou").find(before) == std::u16string_view::npos) {
        plural.pop_back();
        return plural + u"ies";
    }
    return plural + u"s";
}

// The plural of a unit's spelled name: its head noun takes it, the word
// before "per" ("meters per second") or else the last word, unless that word
// qualifies the one before it ("degrees Celsius", "pounds force").
std::u16string PluralOfName(std::u16string_view name) {
    std::vector<std::u16string_view> words;
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
    std::u16string plural;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) plural += u' ';
        if (i != head) {
            for (char16_t unit : words[i]) {
                if (!IsLetter(unit)) return {};
            }
            plural += words[i];
            continue;
        }
        const std::u16string word = PluralOfWord(words[i]);
        if (word.empty()) return {};
        plural += word;
    }
    return plural;
}

}  // namespace

class EverydayBuilder {
public:
    EverydayBuilder(EverydayVocabulary& vocabulary, const UnitCatalog& catalog)
        : out(vocabulary), catalog(catalog) {}

    void Build() {
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
    // The symbol that owns exactly `key` in the catalogue, or null.
    const IParseSymbol* Known(std::u16string_view key) const {
        const std::u16string text(key);
        std::size_t matched = 0;
        const IParseSymbol* symbol = catalog.Dictionary().FindLongest(text.c_str(), &matched);
        return symbol != nullptr && matched == key.size() ? symbol : nullptr;
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
        out.scaled.push_back(std::make_unique<GenericOperand>(converter->GetDimensions(),
                                                              converter->GetFactor() * scale));
        return out.scaled.back().get();
    }

    EverydayMeaning* MeaningOfWord(const std::u16string& key) {
        std::size_t matched = 0;
        const EverydayMeaning* found = out.words.FindLongest(key.c_str(), &matched);
        if (found != nullptr && matched == key.size()) return const_cast<EverydayMeaning*>(found);
        return nullptr;
    }

    // Adds a key, unless the catalogue or the vocabulary has it already.
    void AddWord(std::u16string_view key, const IParseSymbol* everywhere,
                 const IParseSymbol* inUS) {
        const std::u16string text(key);
        if (Known(key) != nullptr) return;
        if (EverydayMeaning* meaning = MeaningOfWord(text)) {
            if (meaning->everywhere == nullptr) meaning->everywhere = everywhere;
            if (meaning->inUS == nullptr) meaning->inUS = inUS;
            return;
        }
        out.meanings.push_back({everywhere, inUS});
        out.words.Insert(text.c_str(), &out.meanings.back());
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
            out.meanings.push_back({});
            entry = &out.meanings.back();
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
            AddPlural(name.text);
            for (const char16_t* key : name.keys) AddPlural(key);
        }
    }

    void AddPlural(std::u16string_view name) {
        const std::u16string plural = PluralOfName(name);
        if (plural.empty()) return;
        if (const IParseSymbol* symbol = Known(name)) AddWord(plural, symbol, nullptr);
    }

    void AddPrefixes() {
        for (const Prefixed& base : kPrefixed) {
            const UnitConverter* converter = catalog.Units().FindConverter(base.unit);
            if (converter == nullptr) std::abort();
            for (const Prefix& prefix : kPrefixes) {
                std::u16string key(prefix.text);
                key += base.symbol;
                if (Known(key) != nullptr || MeaningOfWord(key) != nullptr) continue;
                out.scaled.push_back(std::make_unique<GenericOperand>(
                    converter->GetDimensions(),
                    converter->GetFactor() * base.scale * prefix.factor));
                AddWord(key, out.scaled.back().get(), nullptr);
            }
        }
    }

    // The catalogue writes micro with the micro sign; the Greek mu, which
    // looks the same, reads alike.
    void AddGreekMu() {
        for (auto [key, symbol] : catalog.Dictionary().Keys()) {
            if (key.find(kMicroSign) == std::u16string::npos) continue;
            for (char16_t& unit : key) {
                if (unit == kMicroSign) unit = kGreekMu;
            }
            AddWord(key, symbol, nullptr);
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
