// The number settings of a formatter as one object: digits, signs,
// separators, grouping, decimals and style, with the table of number tokens
// that follows them. It renders a double as text (RenderNumber) and scans the
// number at the start of a text (ScanNumber), both by these settings and
// never by the process's locale.
#ifndef MENSURA_NUMBERS_NUMBER_SETTINGS_H
#define MENSURA_NUMBERS_NUMBER_SETTINGS_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/number_flags.h"
#include "base/radix_tree.h"
#include "base/result.h"
#include "mensura/mensura.hpp"

namespace Mensura {

// The mode bits of RenderNumber.
namespace RenderMode {
// Precision 0 in place of the decimal digits setting.
constexpr unsigned WholeNumber = 1u << 0;
// A value that is zero gets the negative sign in front. A caller that has
// split a negative value into parts uses it for a leading part of 0.
constexpr unsigned SignOnZero = 1u << 1;
}  // namespace RenderMode

// The codes of NumberTokens. A code's token class is (code - 4) / 4: the
// digit value 0 to 9, then 10 for the group separator, 11 the decimal
// separator, 12 the positive sign, 13 the negative sign and 14 the exponent
// letter. 0 is no token.
namespace NumberToken {
constexpr int None = 0;
constexpr int Digit(int digit) {
    return 4 * (digit + 1);
}
constexpr int GroupSeparator = 44;
constexpr int DecimalSeparator = 48;
constexpr int PositiveSign = 52;
constexpr int NegativeSign = 56;
constexpr int Exponent = 60;
}  // namespace NumberToken

// From the text of a number token to its code. A text holds one code: when
// two settings share a text the last one set wins, and erasing either erases
// it for both.
using NumberTokenTree = RadixTree<int>;

class NumberSettings {
public:
    // The same defaults in both languages: ASCII digits, "-" and no positive
    // sign, "," in groups of 3, "." and 2 decimals, style Number.
    NumberSettings();
    NumberSettings(const NumberSettings&) = delete;
    NumberSettings& operator=(const NumberSettings&) = delete;

    // Writes the ten digit units, no terminator.
    void GetNativeDigits(char16_t* digits) const;
    // Reads ten units, terminator or not. Failure, with nothing changed, when
    // two of them are equal.
    ErrorCode SetNativeDigits(const char16_t* digits);

    // The text getters copy into buffer of `size` units and always leave a
    // terminator in it: a text that does not fit is cut to size - 1 units.
    // A size of 0 writes nothing.
    void GetPositiveSign(char16_t* buffer, std::size_t size) const;
    void GetNegativeSign(char16_t* buffer, std::size_t size) const;
    void GetNumberGroupSeparator(char16_t* buffer, std::size_t size) const;
    void GetNumberDecimalSeparator(char16_t* buffer, std::size_t size) const;
    // An empty sign is accepted; a null one changes nothing.
    void SetPositiveSign(const char16_t* text);
    void SetNegativeSign(const char16_t* text);
    // Failure, with nothing changed, for a null or empty text.
    ErrorCode SetNumberGroupSeparator(const char16_t* text);
    ErrorCode SetNumberDecimalSeparator(const char16_t* text);

    int GetNumberDecimalDigits() const { return decimalDigits; }
    // Accepts 0 to 99.
    ErrorCode SetNumberDecimalDigits(int digits);
    // Returns the count; copies all sizes first when sizes is not null.
    std::size_t GetNumberGroupSizes(int* sizes) const;
    // count at least 1, every size but the last 1 to 9, the last 0 to 9.
    ErrorCode SetNumberGroupSizes(const int* sizes, int count);
    NumberFormat GetNumber() const { return numberFormat; }
    // Stored unchecked: a style outside 0 to 5 makes rendering fail.
    void SetNumber(NumberFormat format) {
        numberFormat = format;
        NoteDigitsAlone();
    }

    const NumberTokenTree& NumberTokens() const { return numberTokens; }

    // Renders value into buffer by the settings, with the RenderMode bits.
    // Writes no terminator; the length is the units written, where the caller
    // goes on writing. Failure when buffer is null, capacity is 0, the style
    // is unknown or the text does not fit (the digits need room for a sign
    // and a terminator besides: 1.00 needs a capacity of 6). `decimals`, when
    // not negative, takes the place of the decimal digits setting for this
    // one number; WholeNumber still wins over it. The settings never change.
    static constexpr int kSettingsDecimals = -1;
    Result RenderNumber(double value, char16_t* buffer, std::size_t capacity, unsigned mode,
                        int decimals = kSettingsDecimals) const {
        // The numbers of a compound rendering, small whole numbers, take the
        // shortest way, here where the caller needs no call for them.
        if ((mode & RenderMode::WholeNumber) != 0 && buffer != nullptr) {
            const double magnitude = std::fabs(value);
            if (magnitude < 1e9) {
                const auto whole = static_cast<std::uint32_t>(magnitude);
                // value < 0.0: a negative zero has no sign.
                if (whole == magnitude)
                    return RenderWhole(whole, value < 0.0, buffer, capacity, mode);
            }
        }
        return RenderAny(value, buffer, capacity, mode, decimals);
    }

    // RenderNumber(value, buffer, capacity, mode) in WholeNumber mode for a
    // whole number below 1e9, its magnitude and its sign given apart (a
    // negative zero has none), for a caller that holds it as an integer. A
    // non-null buffer.
    Result RenderWhole(std::uint32_t whole, bool negative, char16_t* buffer, std::size_t capacity,
                       unsigned mode) const {
        // Most parts of a compound rendering have one digit.
        int digits = 1;
        if (__builtin_expect(whole >= 10, 0)) {
            for (std::uint32_t power = 10; digits < 9 && whole >= power; power *= 10) ++digits;
        }
        if (__builtin_expect(digits > digitsAlone, 0)) {
            return RenderAny(negative ? -double(whole) : double(whole), buffer, capacity, mode,
                             kSettingsDecimals);
        }
        // "+", the digits and a terminator fit, then the sign's text, then the
        // sign in front of a zero.
        const std::u16string& sign = negative ? negativeSign : positiveSign;
        const auto count = static_cast<std::size_t>(digits);
        const std::size_t total = count + sign.size();
        if (__builtin_expect(count + 2 > capacity || total > capacity, 0)) return Result::Fail();
        char16_t* out = buffer;
        if (__builtin_expect((mode & RenderMode::SignOnZero) != 0 && whole == 0, 0)) {
            if (total >= capacity || total + negativeSign.size() > capacity) return Result::Fail();
            out = AppendText(out, negativeSign);
        }
        out = AppendText(out, sign);
        char16_t* const end = out + count;
        if (__builtin_expect(whole < 10, 1)) {
            *out = nativeDigits[whole];
        } else {
            char16_t* at = end;
            do {
                *--at = nativeDigits[whole % 10];
                whole /= 10;
            } while (at != out);
        }
        return Result::Done(static_cast<std::size_t>(end - buffer));
    }

    // The number at the start of text by these digits, signs and separators:
    // its length; ParseFailure when none stands there, Failure when value is
    // null. Writes value and *flags (the NumberFlags seen) only for a number.
    // Most places of a text hold a unit or an operator, which the first look
    // turns away without a call. `everyday` lets the minus sign U+2212 stand
    // for the negative sign and "+" for the positive sign, where they are no
    // token of the settings.
    Result ScanNumber(const char16_t* text, double* value, std::uint32_t* flags,
                      bool everyday = false) const {
        if (value == nullptr) return Result::Fail();
        // Only an empty sign could stand here, and a sign alone is no number;
        // no token begins with the terminator.
        if (text == nullptr) return Result::Fail(ErrorCode::ParseFailure);
        const char16_t unit = *text;
        const int code = unit < 128         ? asciiStarts[unit]
                         : otherTokenStarts ? kLongerToken
                                            : kNoToken;
        if (code == kNoToken) {
            if (!(everyday && IsCommonSign(unit))) return Result::Fail(ErrorCode::ParseFailure);
        } else {
            // Digits, or a sign of one unit and digits.
            const std::size_t start =
                IsDigitCode(code) ? 0
                : (code == NumberToken::NegativeSign || code == NumberToken::PositiveSign) &&
                        IsDigitCode(PlainCode(text[1]))
                    ? 1
                    : 2;
            if (start < 2) {
                const std::size_t length = ReadPlainNumber(text, start, value, flags);
                if (length != 0) return Result::Done(length);
            }
        }
        return ReadNumber(text, value, flags, everyday);
    }

private:
    // RenderNumber for the fixed styles, a finite value below 1e19 and at most
    // 19 decimals: the same text and the same failures, without a conversion.
    Result RenderFixed(double value, bool negative, int precision, bool grouped, char16_t* buffer,
                       std::size_t capacity, unsigned mode) const;
    // RenderNumber behind its shortcut.
    Result RenderAny(double value, char16_t* buffer, std::size_t capacity, unsigned mode,
                     int decimals) const;
    // Follows the style and the group sizes into digitsAlone.
    void NoteDigitsAlone() {
        digitsAlone = numberFormat == NumberFormat::Fixed    ? 9
                      : numberFormat != NumberFormat::Number ? 0
                      : groupSizes[0] == 0                   ? 9
                                                             : std::min(groupSizes[0], 9);
    }
    // Writes text at out and returns its end. The texts hold no terminator:
    // the loop stops at theirs, and copies the usual one unit or none
    // without more ado.
    static char16_t* AppendText(char16_t* out, const std::u16string& text) {
        for (const char16_t* unit = text.c_str(); __builtin_expect(*unit != 0, 0); ++unit)
            *out++ = *unit;
        return out;
    }
    // RenderNumber for everything else, through the printed text; its large
    // scratch stays out of the common calls.
    Result RenderPrinted(double value, int precision, char16_t* buffer, std::size_t capacity,
                         unsigned mode) const;
    static constexpr char16_t kMinusSign = u'\u2212';
    static bool IsCommonSign(char16_t unit) { return unit == u'+' || unit == kMinusSign; }
    // The scanner behind ScanNumber's first look.
    Result ReadNumber(const char16_t* text, double* value, std::uint32_t* flags,
                      bool everyday) const;
    // Stores text in setting, and makes NumberTokens hold it with code in
    // place of the old text. All or nothing: on an allocation failure the
    // settings and the table stay as they were.
    void ReplaceToken(std::u16string& setting, const char16_t* text, int code);
    // A new table with the keys of NumberTokens but the count texts given.
    NumberTokenTree TokensWithout(const char16_t* const* texts, std::size_t count) const;
    // Fills the scanner's table from NumberTokens and the settings.
    void IndexTokens();
    // Whether a code of asciiTokens is a digit's, and that digit's value.
    static bool IsDigitCode(int code) {
        return static_cast<unsigned>(code - NumberToken::Digit(0)) <=
               static_cast<unsigned>(NumberToken::Digit(9) - NumberToken::Digit(0));
    }
    static double DigitOf(int code) { return static_cast<double>((code >> 2) - 1); }
    // The code of a unit by asciiTokens, and for a unit of 128 or more
    // kLongerToken where a token may begin with one, else kNoToken. Where
    // no token begins, the scanner finds at most an empty sign, and no number.
    int PlainCode(char16_t unit) const {
        if (unit < 128) return asciiTokens[unit];
        return otherTokenStarts ? kLongerToken : kNoToken;
    }
    // The commonest numbers, read at once: perhaps a sign, digits, perhaps
    // group separators among them, perhaps a decimal separator and digits,
    // each a token of one unit below 128, and behind them no exponent and no
    // unit that a token of several units may begin with. The digits begin at
    // `start`, behind the sign when it is 1. Its length, with value and
    // *flags written as ReadNumber writes them; 0, with nothing written, for
    // any other number, which ReadNumber then reads.
    std::size_t ReadPlainNumber(const char16_t* text, std::size_t start, double* value,
                                std::uint32_t* flagsOut) const {
        std::uint32_t flags = NumberFlags::IntegerDigits;
        double sign = 1.0;
        if (start != 0) {
            const bool negative = asciiTokens[text[0]] == NumberToken::NegativeSign;
            flags |= negative ? NumberFlags::MinusSign : NumberFlags::PlusSign;
            if (negative) sign = -1.0;
        }
        double whole = 0.0;
        std::size_t position = start;
        int code = asciiTokens[text[position]];
        for (;;) {
            if (IsDigitCode(code)) {
                whole = whole * 10 + DigitOf(code);
            } else if (code == NumberToken::GroupSeparator) {
                flags |= NumberFlags::GroupSeen;
            } else {
                break;
            }
            code = PlainCode(text[++position]);
        }
        double fraction = 0.0;
        double divisor = 1.0;
        if (code == NumberToken::DecimalSeparator) {
            flags |= NumberFlags::PointSeen;
            code = PlainCode(text[++position]);
            while (IsDigitCode(code)) {
                flags |= NumberFlags::FractionDigits;
                fraction = fraction * 10 + DigitOf(code);
                divisor *= 10.0;
                code = PlainCode(text[++position]);
            }
        }
        if (code == NumberToken::Exponent || code == kLongerToken) return 0;
        *value = (fraction / divisor + whole) * sign;
        if (flagsOut != nullptr) *flagsOut = flags;
        return position;
    }
    // What NumberTokens finds at the start of text, which is not empty.
    int TokenAt(const char16_t* text) const {
        const char16_t unit = *text;
        if (unit < 128) {
            const std::int8_t code = asciiTokens[unit];
            if (code >= 0) return code;
            if (code == kNoToken) return emptyToken;
        } else if (!otherTokenStarts) {
            return emptyToken;
        }
        return numberTokens.FindLongest(text, nullptr);
    }

    std::array<char16_t, 10> nativeDigits;
    std::u16string positiveSign;
    std::u16string negativeSign;
    std::u16string groupSeparator;
    std::u16string decimalSeparator;
    NumberFormat numberFormat = NumberFormat::Number;
    int decimalDigits = 2;
    std::vector<int> groupSizes;  // nearest the decimal point first; the last repeats
    // The most digits that a whole number may have to render as its digits
    // alone, with no separator among them; 0 when the style is not fixed.
    int digitsAlone = 3;
    NumberTokenTree numberTokens;
    // The scanner asks for a token at every place of a text, and nearly
    // always at a unit that is a whole token or none: for the units below
    // 128 this table holds the token's code, kNoToken where no token begins,
    // and kLongerToken where a token of several units does, which NumberTokens
    // then reads. It follows every setter.
    static constexpr std::int8_t kNoToken = -1;
    static constexpr std::int8_t kLongerToken = -2;
    std::array<std::int8_t, 128> asciiTokens{};
    // asciiTokens as the first unit of a number sees it: neither the exponent
    // letter nor a group separator begins one, so these hold kNoToken too.
    std::array<std::int8_t, 128> asciiStarts{};
    bool otherTokenStarts = false;       // some token begins with a unit of 128 or more
    int emptyToken = NumberToken::None;  // the code of the empty text: an empty sign
};

}  // namespace Mensura

#endif  // MENSURA_NUMBERS_NUMBER_SETTINGS_H
