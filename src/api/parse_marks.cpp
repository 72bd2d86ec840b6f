// Typed texts of the compound marks ("5′-6 1/2″", "N 45°30′ E") read without
// the list: the scan's tokens go to the notations, which read them as the
// evaluation would, or decline.
#include "api/formatter_impl.h"
#include "catalogue/everyday.h"
#include "catalogue/unit_catalog.h"
#include "notations/angles.h"
#include "notations/feet_inches.h"

namespace Mensura {

namespace {

// The characters of the ASCII block that a typed text of marks holds with
// the usual number settings: digits, signs, separators and the exponent
// letters, the blank, "/", "-", the ASCII primes, "d" and the letters of a
// bearing. One bit each.
constexpr std::uint64_t AsciiMask(int half) {
    constexpr char kMarks[] = "0123456789+-.,eE /'\"dNESW";
    std::uint64_t mask = 0;
    for (const char c : kMarks) {
        if (c != 0 && c / 64 == half) mask |= std::uint64_t{1} << (c % 64);
    }
    return mask;
}
constexpr std::uint64_t kAsciiMarks[2] = {AsciiMask(0), AsciiMask(1)};

// Whether unit may stand in a typed text of marks with the usual number
// settings.
bool MayBeMarks(char16_t unit) {
    if (unit < 128) return (kAsciiMarks[unit >> 6] >> (unit & 63) & 1) != 0;
    switch (unit) {
        case u'°':
        case u'\u2032':  // primes
        case u'\u02B9':
        case u'\u2019':
        case u'\u02BC':
        case u'\u2018':
        case u'\u2033':  // double primes
        case u'\u02BA':
        case u'\u201D':
        case u'\u201C':
        case u'\u2010':  // dashes
        case u'\u2012':
        case u'\u2013':
        case u'\u2014':
        case u'\u2015':
        case u'\u2043':
        case u'\u2212':  // the minus sign of the everyday reading
            return true;
        default:
            return false;
    }
}

// The places of the text as the scan finds them, laid out for the marks: a
// number first, else the longest key. Every mark is a key of one unit, which
// no exponent behind it cuts; anything else is left to the list. Apart from
// the filter in front of it, so that a text of units is turned away without
// the setting up of this one.
[[gnu::noinline]] bool ReadPlaces(const NumberSettings& numbers, bool us, const char16_t* cursor,
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
        if (symbol == nullptr || matched != 1) return false;
        if (common) symbol = everyday->Substitute(symbol, us);
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
    // A look before any lookup: a text whose first place behind what was
    // read and blanks holds something else, most often a unit, is left to
    // the list at once. Only a filter: a text that passes is
    // still read place by place.
    const char16_t* first = cursor;
    while (*first == u' ') ++first;
    if (*first != 0 && !MayBeMarks(*first)) return false;
    return ReadPlaces(numbers, localeId == kEnglish, cursor, read, dimensions, everyday, value);
}

}  // namespace Mensura
