// Number rendering. A conversion that ignores the process locale makes the
// digits, always with a sign and with "." as the decimal point. That text is
// then walked from its last unit to its first: each unit is translated by the
// settings and group separators go in between, straight into the caller's
// buffer, which is reversed at the end. Working from the right is what lets
// group sizes count outward from the decimal point.
#include <algorithm>
#include <charconv>
#include <cmath>
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

}  // namespace

Result NumberSettings::RenderNumber(double value, char16_t* buffer, std::size_t capacity,
                                    unsigned mode, int decimals) const {
    if (buffer == nullptr || capacity == 0) return Result::Fail();
    if (value == 0.0) value = 0.0;  // no sign for -0.0; a NaN stays as it is
    const int precision = (mode & RenderMode::WholeNumber) != 0 ? 0
                          : decimals < 0                        ? decimalDigits
                                                                : decimals;
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
