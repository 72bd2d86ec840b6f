// Number rendering. A conversion that ignores the process locale makes the
// digits, always with a sign and with "." as the decimal point. That text is
// then walked from its last unit to its first: each unit is translated by the
// settings and group separators go in between, straight into the caller's
// buffer, which is reversed at the end. Working from the right is what lets
// group sizes count outward from the decimal point.
//
// The fixed styles have a shorter way for the numbers that people write: a
// value below 1e19 with at most 19 decimals is rounded exactly in integers,
// from the bits of the double, and its text is laid out from left to right,
// the places of the separators known beforehand. The text and the rules of
// capacity are those of the conversion above.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <system_error>

#include "numbers/number_settings.h"

namespace Mensura {

namespace {

// The longest text the conversion can make with at most 99 decimals: a sign,
// the 309 integer digits of the largest double, the point and the decimals.
constexpr std::size_t kScratchSize = 512;

struct Style {
    std::chars_format format;
    bool upper;    // exponent letter, "INF" and "NAN" in capitals
    bool grouped;  // digits grouped by groupSizes
};

bool StyleOf(NumberFormat numberFormat, Style& style) {
    switch (numberFormat) {
        case NumberFormat::ScientificUpper:
            style = {std::chars_format::scientific, true, false};
            return true;
        case NumberFormat::ScientificLower:
            style = {std::chars_format::scientific, false, false};
            return true;
        case NumberFormat::Fixed:
            style = {std::chars_format::fixed, false, false};
            return true;
        case NumberFormat::GeneralUpper:
            style = {std::chars_format::general, true, false};
            return true;
        case NumberFormat::GeneralLower:
            style = {std::chars_format::general, false, false};
            return true;
        case NumberFormat::Number:
            style = {std::chars_format::fixed, false, true};
            return true;
    }
    return false;
}

// Prints value into scratch with its sign always in front, as the C locale's
// "%+.*E" (e, f, G, g) would. Returns the length, or 0 when it does not fit.
std::size_t Print(double value, const Style& style, int precision, char* scratch,
                  std::size_t size) {
    char* first = scratch;
    if (!std::signbit(value)) *first++ = '+';
    // A whole number without decimals, as the parts of a compound rendering
    // are, prints as an integer: the same text, for a fraction of the work.
    if (style.format == std::chars_format::fixed && precision == 0 && std::fabs(value) < 1e15 &&
        value == std::trunc(value)) {
        const auto whole = static_cast<long long>(value);
        const std::to_chars_result printed = std::to_chars(first, scratch + size, whole);
        if (printed.ec != std::errc()) return 0;
        return static_cast<std::size_t>(printed.ptr - scratch);
    }
    const std::to_chars_result printed =
        std::to_chars(first, scratch + size, value, style.format, precision);
    if (printed.ec != std::errc()) return 0;
    if (style.upper) {
        std::transform(scratch, printed.ptr, scratch,
                       [](char u) { return u >= 'a' && u <= 'z' ? char(u - 'a' + 'A') : u; });
    }
    return static_cast<std::size_t>(printed.ptr - scratch);
}

// Writes text in reverse order to out. Fails when out is null, limit is 0 or
// text is longer than limit.
bool WriteReversed(char16_t* out, const std::u16string& text, std::size_t limit) {
    if (out == nullptr || limit == 0 || text.size() > limit) return false;
    std::reverse_copy(text.begin(), text.end(), out);
    return true;
}

// The fixed styles' shorter way takes at most this many decimals.
constexpr int kMaxFixedDecimals = 19;

struct PowersOfTen {
    std::uint64_t of[kMaxFixedDecimals + 1];
    constexpr PowersOfTen() : of{1} {
        for (int i = 1; i <= kMaxFixedDecimals; ++i) of[i] = of[i - 1] * 10;
    }
};
constexpr PowersOfTen kPowersOfTen;

// A finite value below 1e19, rounded to `precision` decimals as the
// conversion rounds it: to nearest, a tie to the even last digit, reckoned on
// the exact binary value. Its magnitude is whole + decimals / 10^precision.
struct FixedParts {
    std::uint64_t whole;
    std::uint64_t decimals;
};

FixedParts RoundFixed(double value, int precision) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    const int biased = static_cast<int>((bits >> 52) & 0x7FF);
    std::uint64_t mantissa = bits & ((std::uint64_t{1} << 52) - 1);
    int exponent = -1074;  // the magnitude is mantissa * 2^exponent
    if (biased != 0) {
        mantissa |= std::uint64_t{1} << 52;
        exponent = biased - 1075;
    }
    FixedParts parts{0, 0};
    if (exponent >= 0) {
        parts.whole = mantissa << exponent;  // below 1e19, so it fits
        return parts;
    }
    // The fraction is rest / 2^shift, rest below 2^53.
    const int shift = -exponent;
    std::uint64_t rest = mantissa;
    if (shift < 64) {
        parts.whole = mantissa >> shift;
        rest = mantissa & ((std::uint64_t{1} << shift) - 1);
    }
    // rest * 10^precision is below 2^117: at a shift of 118 or more it is
    // below half a unit of the last decimal, and rounds to 0.
    if (rest == 0 || shift >= 118) return parts;
    using Wide = unsigned __int128;
    const Wide scaled = static_cast<Wide>(rest) * kPowersOfTen.of[precision];
    std::uint64_t decimals = static_cast<std::uint64_t>(scaled >> shift);
    const Wide dropped = scaled - (static_cast<Wide>(decimals) << shift);
    const Wide half = static_cast<Wide>(1) << (shift - 1);
    const std::uint64_t last = precision > 0 ? decimals : parts.whole;
    if (dropped > half || (dropped == half && (last & 1) != 0)) ++decimals;
    if (decimals == kPowersOfTen.of[precision]) {
        decimals = 0;
        ++parts.whole;
    }
    parts.decimals = decimals;
    return parts;
}

int CountDigits(std::uint64_t n) {
    int count = 1;
    while (count <= kMaxFixedDecimals && n >= kPowersOfTen.of[count]) ++count;
    return count;
}

// How many separators go among `count` whole digits, as the walk from the
// right puts them: groups count outward from the point, the last size
// repeats, and a last size of 0 ends the grouping.
std::size_t CountSeparators(const std::vector<int>& sizes, int count) {
    std::size_t separators = 0;
    std::size_t g = 0;
    for (int at = sizes[0]; at < count;) {
        ++separators;
        if (g + 1 < sizes.size()) ++g;
        if (sizes[g] == 0) break;
        at += sizes[g];
    }
    return separators;
}

// Puts text in front of end; returns its start.
char16_t* Prepend(char16_t* end, const std::u16string& text) {
    char16_t* start = end - text.size();
    for (std::size_t i = 0; i < text.size(); ++i) start[i] = text[i];
    return start;
}
}  // namespace

Result NumberSettings::RenderFixed(double value, bool negative, int precision, bool grouped,
                                   char16_t* buffer, std::size_t capacity, unsigned mode) const {
    FixedParts parts = RoundFixed(value, precision);
    const int digits = CountDigits(parts.whole);
    const int firstGroup = grouped ? groupSizes[0] : 0;
    const std::size_t separators = firstGroup != 0 ? CountSeparators(groupSizes, digits) : 0;

    // The rules of the walk from the right: the printed text ("+", the
    // digits, "." and the decimals) and a terminator fit; every unit of it,
    // the sign last, finds a free place when its turn comes; the sign's text
    // fits; the sign in front of a zero finds a free place and fits.
    const std::u16string& sign = negative ? negativeSign : positiveSign;
    const auto digitCount = static_cast<std::size_t>(digits + precision);
    const std::size_t printed = 1 + digitCount + (precision > 0 ? 1 : 0);
    const std::size_t behindSign = digitCount + separators * groupSeparator.size() +
                                   (precision > 0 ? decimalSeparator.size() : 0);
    const std::size_t total = behindSign + sign.size();
    const bool signOnZero = (mode & RenderMode::SignOnZero) != 0 && value == 0.0;
    if (printed + 1 > capacity || behindSign >= capacity || total > capacity) return Result::Fail();
    if (signOnZero && (total >= capacity || total + negativeSign.size() > capacity)) {
        return Result::Fail();
    }

    char16_t* out = buffer;
    if (signOnZero) out = AppendText(out, negativeSign);
    out = AppendText(out, sign);
    char16_t* const end = out + behindSign;
    // From the right, as the walk goes: the decimals, the point, the whole
    // digits in their groups.
    char16_t* at = end;
    for (int i = 0; i < precision; ++i) {
        *--at = nativeDigits[parts.decimals % 10];
        parts.decimals /= 10;
    }
    if (precision > 0) at = Prepend(at, decimalSeparator);
    int size = firstGroup;  // of the current group; 0 when grouping has ended
    int inGroup = 0;
    std::size_t g = 0;
    for (int i = 0; i < digits; ++i) {
        if (inGroup == size && size != 0) {
            if (g + 1 < groupSizes.size()) ++g;
            size = groupSizes[g];
            inGroup = 0;
            at = Prepend(at, groupSeparator);
        }
        *--at = nativeDigits[parts.whole % 10];
        parts.whole /= 10;
        ++inGroup;
    }
    return Result::Done(static_cast<std::size_t>(end - buffer));
}

Result NumberSettings::RenderAny(double value, char16_t* buffer, std::size_t capacity,
                                 unsigned mode, int decimals) const {
    if (buffer == nullptr || capacity == 0) return Result::Fail();
    if (value == 0.0) value = 0.0;  // no sign for -0.0; a NaN stays as it is
    const int precision = (mode & RenderMode::WholeNumber) != 0 ? 0
                          : decimals < 0                        ? decimalDigits
                                                                : decimals;
    const bool grouped = numberFormat == NumberFormat::Number;
    if (!grouped && numberFormat != NumberFormat::Fixed) {
        return RenderPrinted(value, precision, buffer, capacity, mode);
    }
    const double magnitude = std::fabs(value);
    if (precision <= kMaxFixedDecimals && magnitude < 1e19) {
        return RenderFixed(value, std::signbit(value), precision, grouped, buffer, capacity, mode);
    }
    return RenderPrinted(value, precision, buffer, capacity, mode);
}

Result NumberSettings::RenderPrinted(double value, int precision, char16_t* buffer,
                                     std::size_t capacity, unsigned mode) const {
    Style style;
    if (!StyleOf(numberFormat, style)) return Result::Fail();

    // The printed text with its sign and a terminator must fit into capacity,
    // though the plus sign may vanish in translation.
    char scratch[kScratchSize];
    const std::size_t length = Print(value, style, precision, scratch, sizeof scratch);
    if (length == 0 || length + 1 > capacity) return Result::Fail();

    // With decimals, grouping starts at the decimal point.
    const bool groupsFromPoint = style.grouped && groupSizes[0] != 0;
    bool grouping = groupsFromPoint && precision == 0;
    std::size_t n = 0;  // units written
    int c = 0;          // digits in the current group
    std::size_t g = 0;  // the current group's index in groupSizes
    const auto write = [&](const std::u16string& text) {
        if (!WriteReversed(buffer + n, text, capacity - n)) return false;
        n += text.size();
        return true;
    };
    for (std::size_t i = length; i-- > 0;) {
        const char u = scratch[i];
        if (n >= capacity) return Result::Fail();
        if (u >= '0' && u <= '9') {
            // A separator goes only in front of a digit: never before the
            // sign and never at the start of the number.
            if (grouping && c == groupSizes[g]) {
                if (++g == groupSizes.size()) g = groupSizes.size() - 1;
                c = 0;
                grouping = groupSizes[g] != 0;
                if (!write(groupSeparator) || n >= capacity) return Result::Fail();
            }
            buffer[n++] = nativeDigits[u - '0'];
            ++c;
        } else if (u == '+') {
            if (!write(positiveSign)) return Result::Fail();
        } else if (u == '-') {
            if (!write(negativeSign)) return Result::Fail();
        } else if (u == '.') {
            if (!write(decimalSeparator)) return Result::Fail();
            if (groupsFromPoint) {
                grouping = true;
                c = 0;
                g = 0;
            }
        } else {
            buffer[n++] =
                static_cast<char16_t>(u);  // the exponent letter, the letters of inf and nan
        }
    }
    // The plus sign is already translated, so this sign stands in front of it.
    if ((mode & RenderMode::SignOnZero) != 0 && value == 0.0 && !write(negativeSign))
        return Result::Fail();
    std::reverse(buffer, buffer + n);
    return Result::Done(n);
}

}  // namespace Mensura
