// Number settings and symbol strings from the input, then Format of any value
// into a buffer of any size, and Parse of what it wrote.
//
// Input: a byte of flags (bit 0 Chinese, bit 1 a null buffer), the value
// (eight bytes), the unit (five bytes, see Input::Unit), a byte that asks for
// the default symbol when even, else five more for the symbol, two bytes for
// the buffer's size, and then up to 32 operations of a byte each with their
// arguments: every number setter, the two symbol string setters and the
// default symbol and unit setters, with good and bad values alike.
//
// Checked, for every input:
//  - each number setter accepts or refuses as mensura.hpp says, a refusal
//    changes nothing, and the getters give back what was set, cut to the
//    size of buffers allocated to the exact size they are given;
//  - a symbol string that is set reads back as it was given;
//  - Format into a buffer allocated to exactly the asked size, so that
//    AddressSanitizer sees a unit written past it: a null buffer is refused;
//    a success leaves the text and value that Format writes into a large
//    buffer, and needs a size above the text's length; a refusal is Failure
//    and comes only for a buffer short of the length plus a margin
//    (kPrintMargin). Each number of the text is printed with a sign, "+"
//    included, and a terminator before its digits are translated, and the
//    room for that print is checked, so the exact size may be refused: "1.00"
//    needs 6 units, not 5. A refusal of a buffer that holds the margin too
//    is a fault. When a digit is the zero unit (SetNativeDigits takes ten
//    units, terminator or not) the text ends early and its length is
//    unknown: the code is then only Success or Failure.
//
// Then the text reads back: Parse into the unit type of the symbol that
// rendered it gives the unrounded value within what the number style and
// the decimal digits allow. The four text setters keep the table of number
// tokens by their history alone: each erases its old text and inserts the
// new one, whatever the other settings hold, so after a decimal separator
// "," and then a group separator "." the "," reads as nothing, and a
// decimal separator set to "6" and back takes the digit 6 with it, as
// docs/conventions.md tells the user. So the read-back runs on a fresh
// formatter of the same language given the final settings without losing a
// token (FreshFormatter: every text first to a private-use unit of its own,
// the digits next, then each text to its final value, then the rest and
// the default symbols and units in their order), which must render the same
// text; and only where the reading is sure:
//  - the value in the symbol's unit is finite and, if not zero, between
//    1e-280 and 1e280 in magnitude, away from overflow and from subnormals;
//  - no symbol string was set (a string may read as anything);
//  - the style is one of the six, and for the compound notations, which
//    render each of their numbers in the style, Fixed or Number: in the
//    others 416 in renders as "3E01′8.00E00″", which is no reading;
//  - for the compound notations, the positive sign is empty: a negative
//    value whose first part is 0 writes the negative sign before the
//    positive one of that 0 ("-+0′+6.00″" for -6 in with "+"), and a number
//    takes one sign;
//  - the negative sign is not empty: an empty one writes a negative number,
//    or a negative exponent, as a positive one;
//  - each text is one of the sets below, which no symbol's text contains
//    and which read back in any combination, or else is made of units that
//    no symbol's text holds and that the grammar gives no meaning: no
//    ASCII or Latin-1, no Greek or combining marks, none of U+2000 to
//    U+2BFF (spaces, primes, super- and subscripts, letterlike forms,
//    operators), no CJK, full-width or other compatibility forms, no
//    surrogate, no private-use stand-in, no unit of the sets below; the
//    ten digits likewise, and none of them the zero unit;
//  - the texts that are not empty among the decimal separator, the group
//    separator, the two signs, the ten digits and the exponent letters "e"
//    and "E" are pairwise distinct and none begins another, so that the
//    longest token at each place of the number is the one that was written;
//  - the symbol reads back on its own: a symbol whose rendering of a few
//    plain values at the default settings and 6 decimals does not read back
//    is left out. These are found once at start, by language: the notations
//    that round in their own way (to fractions of an inch; seconds of arc to
//    two decimals), and the few symbols whose text reads as another unit
//    type or another group.
//
// The tolerance: a fixed rendering with d decimals is off by at most
// 0.5 * 10^-d, a scientific one by 0.5 * 10^-d of its mantissa, so at most
// 5 * 10^-d * |value|, and a general one with P = max(d, 1) significant
// digits by 5 * 10^(1-P) * |value|. A compound notation pushes its value
// away from zero by 0.5 * 10^-(d+5) before it splits it. Reading back adds
// one rounding for each digit read and for the power of ten (at most 410
// digits: below 1e-13 * |value|), and the way through the base unit a few
// roundings of the value and of the unit's offset, if it has one.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "fuzz_input.h"
#include "mensura/mensura.hpp"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::NumberFormat;
using MensuraFuzz::Input;
using MensuraFuzz::Length;
using MensuraFuzz::SameBits;

constexpr std::size_t kLargeBuffer = 1 << 20;
constexpr int kMostOperations = 32;
// The room beyond a text and its terminator that Format may ask for before
// it refuses a buffer: each number is printed with a sign and a terminator
// before its digits are translated, two units for each of up to three
// numbers.
constexpr std::size_t kPrintMargin = 2 * 3;

// Digits, signs and separators that every text reads back with.
const std::u16string kDigitSets[] = {
    u"0123456789", u"\u0660\u0661\u0662\u0663\u0664\u0665\u0666\u0667\u0668\u0669",
    u"\u0966\u0967\u0968\u0969\u096A\u096B\u096C\u096D\u096E\u096F",
    u"\uFF10\uFF11\uFF12\uFF13\uFF14\uFF15\uFF16\uFF17\uFF18\uFF19"};
const std::u16string kNegativeSigns[] = {u"-", u"\u2212"};
const std::u16string kPositiveSigns[] = {u"", u"+"};
// Decimal separator, then group separator; either text may stand for either.
const std::u16string kSeparators[][2] = {{u".", u","}, {u",", u"."}, {u"\u066B", u"\u066C"}};

// The private-use units that stand in for the four texts of a fresh
// formatter while its settings are made, and for the digits of the
// formatter that finds the units of the symbols' texts.
const char16_t kStandIns[4][2] = {u"\uE000", u"\uE001", u"\uE002", u"\uE003"};
const char16_t kStandInDigits[] = u"\uE010\uE011\uE012\uE013\uE014\uE015\uE016\uE017\uE018\uE019";

template <typename T, std::size_t N>
bool OneOf(const T& value, const T (&set)[N]) {
    return std::find(std::begin(set), std::end(set), value) != std::end(set);
}

bool OneOfTheSeparators(const std::u16string& text) {
    for (const auto& pair : kSeparators) {
        if (text == pair[0] || text == pair[1]) return true;
    }
    return false;
}

// What the number settings should be, by the rules of mensura.hpp.
struct Settings {
    std::u16string digits = u"0123456789";
    std::u16string negative = u"-";
    std::u16string positive;
    int decimals = 2;
    std::u16string decimal = u".";
    std::u16string group = u",";
    std::vector<int> groupSizes{3};
    NumberFormat style = NumberFormat::Number;
};

// What is known of the catalogue's symbols, found once at start.
struct SymbolFacts {
    // By language, the symbols whose renderings at the default settings read
    // back: each symbol of each unit type renders a few values with 6
    // decimals.
    std::array<std::set<int>, 2> readBack;
    // The symbols that render more than one number.
    std::set<int> compound;
    // Every unit of a symbol's text, in either language.
    std::set<char16_t> units;
};

const SymbolFacts& Facts();

// Whether a text that is none of the sets above may stand in a number that
// is read back: no unit of it has a meaning of its own to the grammar or
// stands in a symbol's text.
bool Plain(char16_t unit) {
    if (unit < 0x400) return false;                     // ASCII, Latin-1, Greek, combining marks
    if (unit >= 0x2000 && unit < 0x2C00) return false;  // spaces, primes, operators, forms
    if (unit >= 0x3000 && unit < 0xA000) return false;  // CJK and its punctuation
    if (unit >= 0xD800 && unit < 0xE100) return false;  // surrogates, the stand-ins
    if (unit >= 0xF900) return false;                   // compatibility and full-width forms
    for (const std::u16string& set : kDigitSets) {
        if (set.find(unit) != std::u16string::npos) return false;
    }
    if (unit == u'\u066B' || unit == u'\u066C') return false;
    return Facts().units.count(unit) == 0;
}

bool PlainText(const std::u16string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), Plain);
}

bool StartsWith(const std::u16string& text, const std::u16string& start) {
    return text.compare(0, start.size(), start) == 0;
}

// Whether a text written by `settings` reads back without doubt in the
// number `style` for the kind of symbol; see the comment on top.
bool ReadsWithoutDoubt(const Settings& settings, bool compound) {
    const int style = static_cast<int>(settings.style);
    if (style < 0 || style > 5) return false;
    if (compound && settings.style != NumberFormat::Fixed &&
        settings.style != NumberFormat::Number) {
        return false;
    }
    if (compound && !settings.positive.empty()) return false;
    if (settings.negative.empty()) return false;
    if (!OneOfTheSeparators(settings.decimal) && !PlainText(settings.decimal)) return false;
    if (!OneOfTheSeparators(settings.group) && !PlainText(settings.group)) return false;
    if (!OneOf(settings.negative, kNegativeSigns) && !PlainText(settings.negative)) return false;
    if (!OneOf(settings.positive, kPositiveSigns) && !PlainText(settings.positive)) return false;
    if (!OneOf(settings.digits, kDigitSets) && !PlainText(settings.digits)) return false;
    std::vector<std::u16string> tokens = {settings.decimal, settings.group, settings.negative, u"e",
                                          u"E"};
    if (!settings.positive.empty()) tokens.push_back(settings.positive);
    for (const char16_t digit : settings.digits) tokens.emplace_back(1, digit);
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        for (std::size_t j = 0; j < tokens.size(); ++j) {
            if (i != j && StartsWith(tokens[i], tokens[j])) return false;
        }
    }
    return true;
}

// A text getter into a buffer of exactly `size` units: at most size - 1
// units of the text, then a terminator.
template <typename Getter>
void CheckTextGetter(Getter get, const std::u16string& expected, std::size_t size) {
    std::unique_ptr<char16_t[]> buffer(new char16_t[size]);
    get(buffer.get(), size);
    if (size == 0) return;
    const std::size_t kept = std::min(expected.size(), size - 1);
    FUZZ_CHECK(std::u16string(buffer.get(), kept) == expected.substr(0, kept));
    FUZZ_CHECK(buffer[kept] == 0);
}

void CheckSettings(const Formatter& formatter, const Settings& settings, Input& input) {
    char16_t digits[10];
    formatter.GetNativeDigits(digits);
    FUZZ_CHECK(std::u16string(digits, 10) == settings.digits);
    FUZZ_CHECK(formatter.GetNumberDecimalDigits() == settings.decimals);
    FUZZ_CHECK(formatter.GetNumber() == settings.style);
    const std::size_t count = formatter.GetNumberGroupSizes(nullptr);
    FUZZ_CHECK(count == settings.groupSizes.size());
    std::unique_ptr<int[]> sizes(new int[count]);
    FUZZ_CHECK(formatter.GetNumberGroupSizes(sizes.get()) == count);
    FUZZ_CHECK(std::equal(sizes.get(), sizes.get() + count, settings.groupSizes.begin()));
    // One buffer size for the four texts, from the input.
    const std::size_t size = input.Byte();
    CheckTextGetter([&](char16_t* b, std::size_t n) { formatter.GetNegativeSign(b, n); },
                    settings.negative, size);
    CheckTextGetter([&](char16_t* b, std::size_t n) { formatter.GetPositiveSign(b, n); },
                    settings.positive, size);
    CheckTextGetter([&](char16_t* b, std::size_t n) { formatter.GetNumberDecimalSeparator(b, n); },
                    settings.decimal, size);
    CheckTextGetter([&](char16_t* b, std::size_t n) { formatter.GetNumberGroupSeparator(b, n); },
                    settings.group, size);
}

// A sign: null, one of the sane ones, or a text of the input.
const char16_t* ChooseSign(Input& input, const std::u16string (&sane)[2], std::u16string& text) {
    const std::uint8_t choice = input.Byte();
    if (choice % 4 == 0) return nullptr;
    text = choice % 4 == 1 ? sane[(choice >> 2) % 2] : input.ShortText();
    return text.c_str();
}

void SetSign(Formatter& formatter, Input& input, Settings& settings, bool negative) {
    std::u16string text;
    const char16_t* sign = ChooseSign(input, negative ? kNegativeSigns : kPositiveSigns, text);
    if (negative) {
        formatter.SetNegativeSign(sign);
    } else {
        formatter.SetPositiveSign(sign);
    }
    if (sign != nullptr) (negative ? settings.negative : settings.positive) = sign;
}

void SetSeparators(Formatter& formatter, Input& input, Settings& settings) {
    const std::uint8_t choice = input.Byte();
    if (choice % 4 == 0) {
        const auto& pair = kSeparators[(choice >> 2) % std::size(kSeparators)];
        // The group separator first, so that the two never stand equal.
        FUZZ_CHECK(formatter.SetNumberGroupSeparator(u"\uE000") == ErrorCode::Success);
        FUZZ_CHECK(formatter.SetNumberDecimalSeparator(pair[0].c_str()) == ErrorCode::Success);
        FUZZ_CHECK(formatter.SetNumberGroupSeparator(pair[1].c_str()) == ErrorCode::Success);
        settings.decimal = pair[0];
        settings.group = pair[1];
        return;
    }
    const bool decimal = choice % 4 != 2;
    std::u16string text = input.ShortText();
    const char16_t* given = choice % 4 == 3 ? nullptr : text.c_str();
    const ErrorCode code = decimal ? formatter.SetNumberDecimalSeparator(given)
                                   : formatter.SetNumberGroupSeparator(given);
    const bool good = given != nullptr && given[0] != 0;
    FUZZ_CHECK(code == (good ? ErrorCode::Success : ErrorCode::Failure));
    if (good) (decimal ? settings.decimal : settings.group) = given;
}

void SetGroupSizes(Formatter& formatter, Input& input, Settings& settings) {
    const std::uint8_t choice = input.Byte();
    const int count = choice % 16 - 1;
    const std::size_t allocated = count > 0 ? static_cast<std::size_t>(count) : 0;
    std::unique_ptr<int[]> sizes(new int[allocated]);
    for (std::size_t i = 0; i < allocated; ++i) sizes[i] = input.Byte() % 12 - 1;
    const bool null = (choice & 0x80) != 0;
    const ErrorCode code = formatter.SetNumberGroupSizes(null ? nullptr : sizes.get(), count);
    bool good = !null && count >= 1;
    for (int i = 0; good && i < count; ++i) {
        const int least = i + 1 < count ? 1 : 0;
        good = sizes[i] >= least && sizes[i] <= 9;
    }
    FUZZ_CHECK(code == (good ? ErrorCode::Success : ErrorCode::Failure));
    if (good) settings.groupSizes.assign(sizes.get(), sizes.get() + count);
}

// Sets a formatting or parsing string; one that is accepted reads back.
bool SetSymbolString(Formatter& formatter, Input& input, bool formatting) {
    const int symbol = input.Unit();
    const std::uint8_t choice = input.Byte();
    const std::u16string text = input.ShortText();
    const char16_t* given = (choice & 1) != 0 ? nullptr : text.c_str();
    const ErrorCode code = formatting ? formatter.SetSymbolFormattingString(symbol, given)
                                      : formatter.SetSymbolParsingString(symbol, given);
    FUZZ_CHECK(code == ErrorCode::Success || code == ErrorCode::Failure);
    const bool stored = code == ErrorCode::Success && given != nullptr && given[0] != 0;
    if (stored) {
        const std::size_t length = Length(given);
        std::unique_ptr<char16_t[]> buffer(new char16_t[length + 1]);
        const ErrorCode read =
            formatting ? formatter.GetSymbolFormattingString(symbol, buffer.get(), length + 1)
                       : formatter.GetSymbolParsingString(symbol, buffer.get(), length + 1);
        FUZZ_CHECK(read == ErrorCode::Success);
        FUZZ_CHECK(std::u16string(buffer.get()) == std::u16string(given, length));
        // One unit short is refused, with the buffer left as it was.
        buffer[0] = u'#';
        const ErrorCode shorter =
            formatting ? formatter.GetSymbolFormattingString(symbol, buffer.get(), length)
                       : formatter.GetSymbolParsingString(symbol, buffer.get(), length);
        FUZZ_CHECK(shorter == ErrorCode::Failure);
        FUZZ_CHECK(buffer[0] == u'#');
    }
    return stored;
}

// The symbol that renders a request (the symbol argument, or the unit when
// it is 0), as mensura.hpp describes; 0 where that is not plain.
int ResolveSymbol(const Formatter& formatter, int request) {
    const auto bits = static_cast<std::uint32_t>(request);
    if ((bits & 0xFF00000u) != 0) return request;
    if ((bits & 0xFFFu) == 0) return formatter.GetDefaultSymbol(formatter.GetDefaultUnit(request));
    return formatter.GetDefaultSymbol(request);
}

// How far a rendering of value may lie from it.
double Tolerance(double value, int decimals, NumberFormat style, bool compound, double zero) {
    const double magnitude = std::fabs(value);
    double rendering = 0.0;
    switch (style) {
        case NumberFormat::Fixed:
        case NumberFormat::Number:
            rendering = 0.5 * std::pow(10.0, -decimals);
            break;
        case NumberFormat::ScientificUpper:
        case NumberFormat::ScientificLower:
            rendering = 5.0 * std::pow(10.0, -decimals) * magnitude;
            break;
        case NumberFormat::GeneralUpper:
        case NumberFormat::GeneralLower:
            rendering = 5.0 * std::pow(10.0, 1 - std::max(decimals, 1)) * magnitude;
            break;
    }
    // The push away from zero before a compound notation splits its value.
    if (compound) rendering += 0.5 * std::pow(10.0, -decimals - 5);
    const double epsilon = std::numeric_limits<double>::epsilon();
    return rendering + 1e-13 * magnitude + 16 * epsilon * std::fabs(zero) +
           16 * std::numeric_limits<double>::denorm_min();
}

// Where the zero of the group's first unit lies in `type`: the scale of the
// offset of a unit with one, 0 for the others.
double ZeroOf(int type) {
    double zero = 0.0;
    Converter::Convert(0.0, (type & 0xFF000) | 1, zero, type);
    return zero;
}

// Whether text, rendered by `symbol` from `converted`, reads back into the
// symbol's unit type; when `report`, says on standard error why not.
bool ReadsBack(const Formatter& formatter, const char16_t* text, int symbol, double converted,
               int decimals, NumberFormat style, bool compound, bool report = false) {
    const int type = symbol & 0xFFFFF;
    double read = 0.0;
    const ErrorCode code = formatter.Parse(text, read, type);
    const double tolerance = Tolerance(converted, decimals, style, compound, ZeroOf(type));
    if (code == ErrorCode::Success && std::fabs(read - converted) <= tolerance) return true;
    if (report) {
        std::fprintf(stderr,
                     "'%s' (symbol 0x%X, style %d, %d decimals) for %.17g reads as %.17g, "
                     "code %d, tolerance %.3g\n",
                     MensuraFuzz::Narrow(text).c_str(), static_cast<unsigned>(symbol),
                     static_cast<int>(style), decimals, converted, read, static_cast<int>(code),
                     tolerance);
    }
    return false;
}

// Gives the four texts of a new formatter stand-ins of their own, so that
// no later setter finds its old text taken by another.
void SetStandIns(Formatter& formatter) {
    FUZZ_CHECK(formatter.SetNumberDecimalSeparator(kStandIns[0]) == ErrorCode::Success);
    FUZZ_CHECK(formatter.SetNumberGroupSeparator(kStandIns[1]) == ErrorCode::Success);
    formatter.SetPositiveSign(kStandIns[2]);
    formatter.SetNegativeSign(kStandIns[3]);
}

const SymbolFacts& Facts() {
    static const SymbolFacts facts = [] {
        SymbolFacts found;
        std::vector<char16_t> buffer(4096);
        for (int l = 0; l < 2; ++l) {
            Formatter formatter(l == 0 ? 1033 : 2052);
            formatter.SetNumberDecimalDigits(6);
            // Every unit of a number that this one writes is a stand-in.
            Formatter marked(l == 0 ? 1033 : 2052);
            marked.SetNumberDecimalDigits(6);
            SetStandIns(marked);
            FUZZ_CHECK(marked.SetNativeDigits(kStandInDigits) == ErrorCode::Success);
            const auto standIn = [](char16_t unit) { return unit >= 0xE000 && unit <= 0xE019; };
            for (const int type : MensuraFuzz::AllUnitTypes()) {
                std::vector<int> ids(Formatter::GetUnitSymbols(type, nullptr));
                Formatter::GetUnitSymbols(type, ids.data());
                for (const int symbol : ids) {
                    for (const double value : {12345.678901, -12345.678901}) {
                        if (marked.Format(value, type, buffer.data(), buffer.size(), symbol) !=
                            ErrorCode::Success) {
                            continue;
                        }
                        int numbers = 0;
                        for (std::size_t i = 0; buffer[i] != 0; ++i) {
                            if (!standIn(buffer[i])) {
                                found.units.insert(buffer[i]);
                            } else if (i == 0 || !standIn(buffer[i - 1])) {
                                ++numbers;
                            }
                        }
                        if (numbers > 1) found.compound.insert(symbol);
                    }
                    const bool compound = found.compound.count(symbol) != 0;
                    bool good = true;
                    for (const double value : {0.123456789, -987.654321, 12345.678901}) {
                        double converted = 0.0;
                        good = good &&
                               formatter.Format(value, type, buffer.data(), buffer.size(), symbol,
                                                &converted) == ErrorCode::Success &&
                               ReadsBack(formatter, buffer.data(), symbol, converted, 6,
                                         NumberFormat::Number, compound);
                    }
                    if (good) found.readBack[l].insert(symbol);
                }
            }
        }
        return found;
    }();
    return facts;
}

// A default symbol or unit, as the input set it.
struct DefaultChoice {
    int id;
    bool symbol;
};

// A new formatter of `language` with the final settings, made so that the
// table of number tokens holds every text: the four texts to stand-ins
// first, then the digits, then each text to its final value, each setter
// thus erasing only a stand-in of its own.
Formatter FreshFormatter(int language, const Settings& settings,
                         const std::vector<DefaultChoice>& defaults) {
    Formatter fresh(language == 0 ? 1033 : 2052);
    SetStandIns(fresh);
    FUZZ_CHECK(fresh.SetNativeDigits(settings.digits.c_str()) == ErrorCode::Success);
    FUZZ_CHECK(fresh.SetNumberDecimalSeparator(settings.decimal.c_str()) == ErrorCode::Success);
    FUZZ_CHECK(fresh.SetNumberGroupSeparator(settings.group.c_str()) == ErrorCode::Success);
    fresh.SetPositiveSign(settings.positive.c_str());
    fresh.SetNegativeSign(settings.negative.c_str());
    FUZZ_CHECK(fresh.SetNumberDecimalDigits(settings.decimals) == ErrorCode::Success);
    FUZZ_CHECK(fresh.SetNumberGroupSizes(settings.groupSizes.data(),
                                         static_cast<int>(settings.groupSizes.size())) ==
               ErrorCode::Success);
    fresh.SetNumber(settings.style);
    for (const DefaultChoice& choice : defaults) {
        if (choice.symbol) {
            fresh.SetDefaultSymbol(choice.id);
        } else {
            fresh.SetDefaultUnit(choice.id);
        }
    }
    return fresh;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<char16_t[]> large(new char16_t[kLargeBuffer]);

    Input input(data, size);
    const std::uint8_t flags = input.Byte();
    const int language = flags & 1;
    const bool nullBuffer = (flags & 2) != 0;
    const double value = input.Double();
    const int unit = input.Unit();
    const int symbol = input.Byte() % 2 == 0 ? 0 : input.Unit();
    const std::size_t bufferSize = input.Word16();

    Formatter formatter(language == 0 ? 1033 : 2052);
    FUZZ_CHECK(formatter.GetLocaleId() == (language == 0 ? 1033 : 2052));
    Settings settings;
    std::vector<DefaultChoice> defaults;
    bool symbolStrings = false;
    for (int operation = 0; operation < kMostOperations && !input.Empty(); ++operation) {
        const int op = input.Byte() % 10;
        switch (op) {
            case 0: {
                const std::uint8_t choice = input.Byte();
                std::u16string digits =
                    choice < 0x80 ? kDigitSets[choice % std::size(kDigitSets)] : input.Text(40);
                digits.resize(10);
                std::u16string distinct = digits;
                std::sort(distinct.begin(), distinct.end());
                const bool good =
                    std::adjacent_find(distinct.begin(), distinct.end()) == distinct.end();
                FUZZ_CHECK(formatter.SetNativeDigits(digits.c_str()) ==
                           (good ? ErrorCode::Success : ErrorCode::Failure));
                if (good) settings.digits = digits;
                break;
            }
            case 1:
            case 2:
                SetSign(formatter, input, settings, op == 1);
                break;
            case 3: {
                const std::uint8_t choice = input.Byte();
                const int digits = choice < 0xF0 ? choice - 16 : static_cast<int>(input.Word32());
                const bool good = digits >= 0 && digits <= 99;
                FUZZ_CHECK(formatter.SetNumberDecimalDigits(digits) ==
                           (good ? ErrorCode::Success : ErrorCode::Failure));
                if (good) settings.decimals = digits;
                break;
            }
            case 4:
                SetSeparators(formatter, input, settings);
                break;
            case 5:
                SetGroupSizes(formatter, input, settings);
                break;
            case 6: {
                const std::uint8_t choice = input.Byte();
                const int style = choice < 0xF8 ? choice % 8 - 1 : static_cast<int>(input.Word32());
                formatter.SetNumber(static_cast<NumberFormat>(style));
                settings.style = static_cast<NumberFormat>(style);
                break;
            }
            case 7:
            case 8:
                symbolStrings |= SetSymbolString(formatter, input, op == 7);
                break;
            case 9: {
                const int id = input.Unit();
                const bool symbol = input.Byte() % 2 == 0;
                if (symbol) {
                    formatter.SetDefaultSymbol(id);
                } else {
                    formatter.SetDefaultUnit(id);
                }
                defaults.push_back({id, symbol});
                break;
            }
        }
        CheckSettings(formatter, settings, input);
    }

    // The whole text, then the asked size, allocated to the unit.
    double wholeValue = 0.0;
    const ErrorCode whole =
        formatter.Format(value, unit, large.get(), kLargeBuffer, symbol, &wholeValue);
    std::unique_ptr<char16_t[]> buffer(nullBuffer ? nullptr : new char16_t[bufferSize]);
    double converted = 0.0;
    const ErrorCode code =
        formatter.Format(value, unit, buffer.get(), bufferSize, symbol, &converted);
    if (whole != ErrorCode::Success) {
        FUZZ_CHECK(code != ErrorCode::Success);
        return 0;
    }
    // A zero unit among the digits (SetNativeDigits takes ten units,
    // terminator or not) ends the text early: its length is then unknown.
    if (settings.digits.find(u'\0') != std::u16string::npos) {
        FUZZ_CHECK(code == ErrorCode::Success || code == ErrorCode::Failure);
        return 0;
    }
    const std::size_t length = Length(large.get());
    FUZZ_CHECK(length < kLargeBuffer);
    if (code == ErrorCode::Success) {
        FUZZ_CHECK(!nullBuffer && bufferSize > length);
        FUZZ_CHECK(std::u16string(buffer.get()) == std::u16string(large.get()));
        FUZZ_CHECK(SameBits(converted, wholeValue));
    } else {
        FUZZ_CHECK(code == ErrorCode::Failure);
        FUZZ_CHECK(nullBuffer || bufferSize < length + 1 + kPrintMargin);
    }
    if (symbolStrings) return 0;  // a string may read as anything

    // Reading back, by a formatter whose tokens are whole; it writes the
    // same text.
    const Formatter fresh = FreshFormatter(language, settings, defaults);
    std::u16string text(large.get());
    const ErrorCode again =
        fresh.Format(value, unit, large.get(), kLargeBuffer, symbol, &converted);
    FUZZ_CHECK(again == ErrorCode::Success);
    FUZZ_CHECK(std::u16string(large.get()) == text);
    FUZZ_CHECK(SameBits(converted, wholeValue));

    const int rendered = ResolveSymbol(fresh, symbol != 0 ? symbol : unit);
    const bool compound = Facts().compound.count(rendered) != 0;
    const double magnitude = std::fabs(wholeValue);
    if (rendered == 0 || !std::isfinite(wholeValue) ||
        (magnitude != 0.0 && (magnitude < 1e-280 || magnitude > 1e280)) ||
        Facts().readBack[language].count(rendered) == 0 || !ReadsWithoutDoubt(settings, compound)) {
        return 0;
    }
    FUZZ_CHECK(ReadsBack(fresh, text.c_str(), rendered, wholeValue, settings.decimals,
                         settings.style, compound, true));
    return 0;
}
