// Typed texts of the compound marks ("5′-6 1/2″", "N 45°30′ E") read without
// the list: the scan's tokens go to the notations, which read them as the
// evaluation would, or decline.
#include <iterator>

#include "api/formatter_impl.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "notations/angles.h"
#include "notations/feet_inches.h"

namespace Mensura {

namespace {

// What the filter in front of the reading makes of a character: no part of
// a typed text of marks with the usual number settings, a part, or a mark,
// of which a text that reads holds at least one.
enum Class : std::uint8_t { kOther, kPart, kMark };

// The classes of the first 256 units: digits, signs, separators and the
// exponent letters, the blank, "/", "-" and the letters of a bearing are
// parts; the ASCII primes, "d" and the degree sign are marks.
struct Latin {
    Class of[256] = {};
    constexpr Latin() {
        for (const char c : "0123456789+-.,eE /NESW") of[static_cast<unsigned char>(c)] = kPart;
        for (const char c : "'\"d") of[static_cast<unsigned char>(c)] = kMark;
        of[0] = kOther;
        of[0xB0] = kMark;
    }
};
constexpr Latin kLatin;

// From U+2010 to U+2043: the dashes and the hyphen bullet are parts, the
// quotation marks that stand for primes and the primes themselves marks.
constexpr unsigned kPunctuation = 0x2010;
struct Punctuation {
    Class of[0x34] = {};
    constexpr Punctuation() {
        for (const unsigned dash : {0x2010u, 0x2012u, 0x2013u, 0x2014u, 0x2015u, 0x2043u}) {
            of[dash - kPunctuation] = kPart;
        }
        for (const unsigned prime : {0x2018u, 0x2019u, 0x201Cu, 0x201Du, 0x2032u, 0x2033u}) {
            of[prime - kPunctuation] = kMark;
        }
    }
};
constexpr Punctuation kPunctuationClasses;

Class ClassOf(unsigned unit) {
    if (unit < 256) return kLatin.of[unit];
    if (unit - kPunctuation < std::size(kPunctuationClasses.of)) {
        return kPunctuationClasses.of[unit - kPunctuation];
    }
    // The modifier primes, and the minus sign of the everyday reading.
    if (unit == u'\u02B9' || unit == u'\u02BA' || unit == u'\u02BC') return kMark;
    return unit == u'\u2212' ? kPart : kOther;
}

// A look at the text before any lookup, up to its first mark: a text with
// no mark, or with a character before it that no typed text of marks holds
// (most often a unit's letter), is left to the list at once. Only a filter:
// settings with other digits or signs lose the short way, and a text that
// passes is still read place by place.
bool MayBeMarks(const char16_t* text) {
    for (; *text != 0; ++text) {
        const Class found = ClassOf(*text);
        if (found != kPart) return found == kMark;
    }
    return false;
}

// The places of the text as the scan finds them, laid out for the marks: a
// number first, else the longest key. Every mark is a key of one unit, which
// no exponent behind it cuts; anything else is left to the list. Apart from
// the filter in front of it, so that a text that the filter turns away costs
// nothing of the setting up of this one.
[[gnu::noinline]] bool ReadPlaces(const NumberSettings& numbers, const char16_t* cursor,
                                  SymbolList& read, const Dimensions& dimensions,
                                  const EverydayVocabulary* everyday, double& value) {
    // What the scan has read already, then the places behind it.
    TypedMarks::Layout layout(dimensions);
    for (SymbolList::iterator it = read.begin(); it != read.end(); ++it) {
        const NumberSymbol* number = it.symbol()->AsNumber();
        if (number != nullptr ? !layout.AddNumber(number->value, number->flags)
                              : !layout.AddSymbol(it.symbol()->Kind())) {
            return false;
        }
    }
    const ParseDictionary& dictionary = UnitCatalog::Instance().Dictionary();
    const bool common = everyday != nullptr;
    while (*cursor != 0) {
        double number = 0.0;
        std::uint32_t flags = 0;
        const Result scanned = numbers.ScanNumber(cursor, &number, &flags, common);
        if (scanned.Ok()) {
            if (!layout.AddNumber(number, flags)) return false;
            cursor += scanned.length;
            continue;
        }
        std::size_t matched = 0;
        const IParseSymbol* symbol = dictionary.FindLongest(cursor, &matched);
        // Only the kind of the key counts here, and the everyday meanings
        // replace units by units alone: the meaning need not be looked up.
        if (symbol == nullptr || matched != 1) return false;
        if (!layout.AddSymbol(symbol->Kind())) return false;
        ++cursor;
    }
    return layout.Angle() ? TypedAngles::Read(layout, dimensions, value)
                          : TypedMarks::Read(layout, dimensions, value);
}

}  // namespace

bool FormatterImpl::ReadTypedMarks(const char16_t* cursor, SymbolList& read, double& value,
                                   const Dimensions& dimensions,
                                   const EverydayVocabulary* everyday) const {
    // The filter looks at the text behind numbers alone; a symbol that the
    // scan has read already, a mark or anything else, is for the reading to
    // judge, which turns anything else away at once.
    bool numbersAlone = true;
    for (SymbolList::iterator it = read.begin(); it != read.end(); ++it) {
        numbersAlone = numbersAlone && it.symbol()->AsNumber() != nullptr;
    }
    if (numbersAlone && !MayBeMarks(cursor)) return false;
    return ReadPlaces(numbers, cursor, read, dimensions, everyday, value);
}

}  // namespace Mensura
