// Both vocabularies as data: the lines of english.inc and chinese.inc as
// constant tables, and the kinds of symbol that a line's entries name. The
// registration reads these tables at load; tests read them to measure what
// the load made of them.
#ifndef MENSURA_CATALOGUE_VOCABULARY_H
#define MENSURA_CATALOGUE_VOCABULARY_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string_view>

#include "base/ids.h"
#include "notations/angles.h"
#include "notations/feet_inches.h"
#include "notations/format_symbol.h"

namespace Mensura::Vocabulary {

// The notation that makes a symbol's object: the kind column of the data.
enum class Notation : std::uint8_t {
    Plain,             // a unit symbol behind one number: "5.50 m"
    Unitless,          // the unit of pure numbers: the bare number, with a name
    TemperatureScale,  // a scale with an offset, a size of degree beside other units
    Primes,            // a large and a small number: feet and inches, minutes and seconds
    Degrees,           // degrees, minutes and seconds; a surveyor's bearing
};

struct SymbolKind {
    Notation notation = Notation::Plain;
    std::uint32_t options = 0;  // the notation's own choices: which parts show
    int unit = 0;               // a second unit that the notation needs
};

// The kinds that the vocabulary lines name.
constexpr SymbolKind Plain{};
constexpr SymbolKind Unitless{Notation::Unitless};
// A temperature scale whose degree, beside other units, is `degree`.
constexpr SymbolKind TemperatureScale(int degree) {
    return {Notation::TemperatureScale, 0, degree};
}
constexpr SymbolKind Primes{Notation::Primes, PrimeDoublePrimeSymbol::ShowLarge};
constexpr SymbolKind PrimesDash{
    Notation::Primes, PrimeDoublePrimeSymbol::ShowLarge | PrimeDoublePrimeSymbol::ShowDash};
constexpr SymbolKind PrimesFraction{
    Notation::Primes, PrimeDoublePrimeSymbol::ShowLarge | PrimeDoublePrimeSymbol::ShowFraction};
constexpr SymbolKind PrimesDashFraction{Notation::Primes, PrimeDoublePrimeSymbol::ShowLarge |
                                                              PrimeDoublePrimeSymbol::ShowDash |
                                                              PrimeDoublePrimeSymbol::ShowFraction};
constexpr SymbolKind DoublePrimeFraction{Notation::Primes, PrimeDoublePrimeSymbol::ShowFraction};
constexpr SymbolKind Degrees{Notation::Degrees};
constexpr SymbolKind Bearing{Notation::Degrees, DegreePrimeDoublePrimeSymbol::ShowBearing};

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
    SymbolKind kind = Plain;
};

// A Chinese place keeps the kind and the marks of the English one.
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
#define TYPE(group, type, ...) \
    inline constexpr EnglishEntry kEnglish_##group##_##type[] = {__VA_ARGS__};
#include "catalogue/english.inc"
#undef TYPE
#define TYPE(group, type, ...) \
    inline constexpr ChineseEntry kChinese_##group##_##type[] = {__VA_ARGS__};
#include "catalogue/chinese.inc"
#undef TYPE
#undef GROUP

#define GROUP(group, name)
#define TYPE(group, type, ...) \
    {group, type, kEnglish_##group##_##type, std::size(kEnglish_##group##_##type)},
inline constexpr TypeLine<EnglishEntry> kEnglishTypes[] = {
#include "catalogue/english.inc"
};
#undef TYPE
#define TYPE(group, type, ...) \
    {group, type, kChinese_##group##_##type, std::size(kChinese_##group##_##type)},
inline constexpr TypeLine<ChineseEntry> kChineseTypes[] = {
#include "catalogue/chinese.inc"
};
#undef TYPE
#undef GROUP

#define TYPE(...)
#define GROUP(group, name) {group, name},
inline constexpr GroupLine kEnglishGroups[] = {
#include "catalogue/english.inc"
};
inline constexpr GroupLine kChineseGroups[] = {
#include "catalogue/chinese.inc"
};
#undef TYPE
#undef GROUP

// The order in which groups register, the same in both languages.
inline constexpr int kRegistrationOrder[] = {
    1,  2,  3,  4,  5,  6,  44, 13, 42, 7,  8,  9,  10, 11, 12, 49, 50, 14, 15, 40, 33, 16, 17,
    18, 19, 45, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 34, 35, 36, 37, 38, 39, 41,
    43, 46, 47, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64, 65, 48, 66, 67, 68};

}  // namespace Mensura::Vocabulary

#endif  // MENSURA_CATALOGUE_VOCABULARY_H
