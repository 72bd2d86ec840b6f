#include "text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <system_error>

namespace MensuraCli {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Decodes the character at byte i: its length in bytes, or 0 when the bytes
// there are no UTF-8 (a stray or missing continuation byte, an overlong form,
// a surrogate, or a code point above U+10FFFF).
std::size_t DecodeOne(std::string_view in, std::size_t i, char32_t& c) {
    const auto lead = static_cast<unsigned char>(in[i]);
    if (lead < 0x80) {
        c = lead;
        return 1;
    }
    std::size_t length = 0;
    char32_t least = 0;  // the smallest code point of this length: anything less is overlong
    if ((lead & 0xE0) == 0xC0) {
        length = 2;
        c = lead & 0x1F;
        least = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        c = lead & 0x0F;
        least = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        c = lead & 0x07;
        least = 0x10000;
    } else {
        return 0;
    }
    if (in.size() - i < length) return 0;
    for (std::size_t k = 1; k < length; ++k) {
        const auto byte = static_cast<unsigned char>(in[i + k]);
        if ((byte & 0xC0) != 0x80) return 0;
        c = (c << 6) | (byte & 0x3F);
    }
    if (c < least || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return 0;
    return length;
}

// The wide ranges of East Asian scripts, fullwidth forms, CJK symbols and
// the pictographs that terminals show two columns wide.
bool IsWide(char32_t c) {
    return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0x303E) ||
           (c >= 0x3041 && c <= 0x33FF) || (c >= 0x3400 && c <= 0x4DBF) ||
           (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xA000 && c <= 0xA4CF) ||
           (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
           (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x1F300 && c <= 0x1F64F) ||
           (c >= 0x1F900 && c <= 0x1F9FF) || (c >= 0x20000 && c <= 0x3FFFD);
}

// Combining marks and the zero-width characters: they take no column of
// their own.
bool IsZeroWidth(char32_t c) {
    return (c >= 0x0300 && c <= 0x036F) || (c >= 0x1AB0 && c <= 0x1AFF) ||
           (c >= 0x1DC0 && c <= 0x1DFF) || (c >= 0x200B && c <= 0x200F) ||
           (c >= 0x20D0 && c <= 0x20FF) || (c >= 0xFE00 && c <= 0xFE0F) ||
           (c >= 0xFE20 && c <= 0xFE2F) || c == 0xFEFF;
}

}  // namespace

std::size_t DecodeUtf16(std::u16string_view in, std::size_t i, char32_t& c) {
    const char16_t unit = in[i];
    if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < in.size() && in[i + 1] >= 0xDC00 &&
        in[i + 1] <= 0xDFFF) {
        c = 0x10000 + ((static_cast<char32_t>(unit - 0xD800) << 10) |
                       static_cast<char32_t>(in[i + 1] - 0xDC00));
        return 2;
    }
    c = unit >= 0xD800 && unit <= 0xDFFF ? kReplacement : unit;
    return 1;
}

std::size_t FirstInvalidUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        char32_t c = 0;
        const std::size_t length = DecodeOne(text, i, c);
        if (length == 0) return i;
        i += length;
    }
    return text.size();
}

std::size_t CharWidth(char32_t c) {
    if (IsZeroWidth(c)) return 0;
    return IsWide(c) ? 2 : 1;
}

bool Utf8ToUtf16(std::string_view in, std::u16string& out) {
    // At most one unit a byte: written in place, then cut to what was written.
    out.resize(in.size());
    char16_t* next = out.data();
    for (std::size_t i = 0; i < in.size();) {
        const auto lead = static_cast<unsigned char>(in[i]);
        if (lead < 0x80) {
            *next++ = lead;
            ++i;
            continue;
        }
        char32_t c = 0;
        const std::size_t length = DecodeOne(in, i, c);
        if (length == 0) return false;
        if (c < 0x10000) {
            *next++ = static_cast<char16_t>(c);
        } else {
            c -= 0x10000;
            *next++ = static_cast<char16_t>(0xD800 | (c >> 10));
            *next++ = static_cast<char16_t>(0xDC00 | (c & 0x3FF));
        }
        i += length;
    }
    out.resize(static_cast<std::size_t>(next - out.data()));
    return true;
}

std::string ValidUtf8(std::string_view in) {
    std::string out;
    for (std::size_t i = 0; i < in.size();) {
        char32_t c = 0;
        const std::size_t length = DecodeOne(in, i, c);
        if (length == 0) {
            AppendUtf8(out, kReplacement);
            ++i;
        } else {
            out.append(in.substr(i, length));
            i += length;
        }
    }
    return out;
}

std::string Utf16ToUtf8(std::u16string_view in) {
    std::string out;
    out.reserve(in.size());
    for (std::size_t i = 0; i < in.size();) {
        char32_t c = 0;
        i += DecodeUtf16(in, i, c);
        AppendUtf8(out, c);
    }
    return out;
}

std::size_t DisplayWidth(std::string_view utf8) {
    std::size_t width = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        char32_t c = 0;
        const std::size_t length = DecodeOne(utf8, i, c);
        width += length != 0 ? CharWidth(c) : 1;
        i += length != 0 ? length : 1;
    }
    return width;
}

std::string PadRight(std::string_view utf8, std::size_t width) {
    std::string out(utf8);
    const std::size_t used = DisplayWidth(utf8);
    if (used < width) out.append(width - used, ' ');
    return out;
}

namespace {

#ifdef __SIZEOF_INT128__
__extension__ typedef unsigned __int128 Wide;

// 10^0 to 10^22: 10^22 times the 53 bits of a double's significand fits in
// 128 bits.
constexpr int kMostPower = 22;
constexpr std::array<Wide, kMostPower + 1> kPowers = [] {
    std::array<Wide, kMostPower + 1> powers{};
    powers[0] = 1;
    for (int i = 1; i <= kMostPower; ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();
#endif

// The significant digits of a value as printf's %.12g gives them, in exact
// integer arithmetic: the value, m·2^-s with m its significand, times the
// power of ten that brings it to twelve digits before the point, 1e11 <= y <
// 1e12, rounded to the nearest integer. false, for std::to_chars to decide,
// for a value that lies halfway, for one below 1e-11 or from 1e12 on (whose
// product would not fit in 128 bits or needs a division), and without 128-bit
// integers. digits gets at most 12 digits without trailing zeros; exponent is
// that of the first.
bool TwelveDigits(double value, char (&digits)[kLongestNumberText], int& count, int& exponent) {
#ifdef __SIZEOF_INT128__
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    const int biased = static_cast<int>((bits >> 52) & 0x7FF);
    if (biased == 0) return false;  // 0 or a subnormal
    constexpr std::uint64_t kHidden = std::uint64_t{1} << 52;
    const std::uint64_t significand = (bits & (kHidden - 1)) | kHidden;
    const int shift = 1075 - biased;  // value is significand · 2^-shift
    // value lies from 2^(52 - shift) to below 2^(53 - shift), less than a
    // power of ten: its exponent is the floor of (52 - shift) · log10(2), or
    // one more. 78913 / 2^18 is log10(2) to within 1e-7, and the shift floors
    // a negative product too.
    const int least = ((52 - shift) * 78913) >> 18;
    constexpr std::uint64_t kLeast = 100000000000;  // 1e11
    for (exponent = least + 1; exponent >= least; --exponent) {
        const int power = 11 - exponent;
        if (power < 0 || power > kMostPower || shift <= 0 || shift >= 128) return false;
        const Wide product = significand * kPowers[power];
        auto number = static_cast<std::uint64_t>(product >> shift);
        if (number < kLeast) continue;
        if (number >= 10 * kLeast) return false;
        const Wide rest = product & ((Wide{1} << shift) - 1);
        const Wide half = Wide{1} << (shift - 1);
        if (rest == half) return false;
        if (rest > half) ++number;
        if (number == 10 * kLeast) {
            number = kLeast;
            ++exponent;
        }
        // Two halves of six digits, two digits at a time: the divisions of
        // the one half do not wait for the other's.
        static constexpr char kPairs[] =
            "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
            "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
            "8081828384858687888990919293949596979899";
        auto high = static_cast<std::uint32_t>(number / 1000000);
        auto low = static_cast<std::uint32_t>(number % 1000000);
        for (int i = 4; i >= 0; i -= 2) {
            std::memcpy(digits + i, kPairs + 2 * (high % 100), 2);
            std::memcpy(digits + 6 + i, kPairs + 2 * (low % 100), 2);
            high /= 100;
            low /= 100;
        }
        count = 12;
        while (count > 1 && digits[count - 1] == '0') --count;
        return true;
    }
#endif
    (void)value, (void)digits, (void)count, (void)exponent;
    return false;
}

// The value of TwelveDigits laid out as %g does: in positional notation when
// its exponent is from -4 to 11, else in scientific notation with at least
// two digits of the exponent; trailing zeros dropped, and a point with no
// digits after it.
char* WriteTwelve(bool negative, const char* digits, int count, int exponent, char* out) {
    if (negative) *out++ = '-';
    if (exponent < -4 || exponent >= 12) {
        *out++ = digits[0];
        if (count > 1) {
            *out++ = '.';
            out = std::copy(digits + 1, digits + count, out);
        }
        *out++ = 'e';
        *out++ = exponent < 0 ? '-' : '+';
        const int magnitude = std::abs(exponent);
        if (magnitude < 10) *out++ = '0';
        return std::to_chars(out, out + 4, magnitude).ptr;
    }
    if (exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        out = std::fill_n(out, -exponent - 1, '0');
        return std::copy(digits, digits + count, out);
    }
    // The digits before the point, padded with zeros; the rest after it.
    const int whole = exponent + 1;
    const int shown = std::min(count, whole);
    out = std::copy(digits, digits + shown, out);
    out = std::fill_n(out, whole - shown, '0');
    if (count > whole) {
        *out++ = '.';
        out = std::copy(digits + whole, digits + count, out);
    }
    return out;
}

}  // namespace

char* WriteNumberText(double value, bool exact, char* out) {
    char* const end = out + kLongestNumberText;
    if (exact) return std::to_chars(out, end, value).ptr;
    // std::to_chars with a precision gives the same text, at several times
    // the cost.
    char digits[kLongestNumberText];
    int count = 0;
    int exponent = 0;
    if (std::isfinite(value) && TwelveDigits(value, digits, count, exponent)) {
        return WriteTwelve(std::signbit(value), digits, count, exponent, out);
    }
    return std::to_chars(out, end, value, std::chars_format::general, 12).ptr;
}

std::string NumberText(double value, bool exact) {
    char buffer[kLongestNumberText];
    return std::string(buffer, WriteNumberText(value, exact, buffer));
}

namespace {

// Whether a number that from_chars found beyond the range of a double is
// above it; else it is nearer 0 than the least denormal. The first
// significant digit says, with the exponent: d.ddd × 10^place.
bool AboveRange(std::string_view text) {
    std::size_t i = 0;
    if (i < text.size() && text[i] == '-') ++i;
    long place = -1;
    bool significant = false;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        significant = significant || text[i] != '0';
        if (significant) ++place;
    }
    if (i < text.size() && text[i] == '.') {
        for (++i; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
            if (significant) continue;
            if (text[i] == '0') {
                --place;
            } else {
                significant = true;
            }
        }
    }
    if (!significant) return false;
    long exponent = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
        for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
            // Far beyond either end of the range; no overflow of a long.
            if (exponent < 100000000) exponent = exponent * 10 + (text[i] - '0');
        }
    }
    return place + (negative ? -exponent : exponent) > 0;
}

}  // namespace

NumberRead ReadNumber(std::string_view text, double& value) {
    // from_chars takes a minus sign but no plus sign.
    if (!text.empty() && text[0] == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text[0] == '-') return NumberRead::NoNumber;
    }
    if (text.empty()) return NumberRead::NoNumber;
    const char* end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value);
    if (next != end) return NumberRead::NoNumber;
    if (error == std::errc::result_out_of_range) {
        if (AboveRange(text)) return NumberRead::TooLarge;
        value = text[0] == '-' ? -0.0 : 0.0;
        return NumberRead::Number;
    }
    if (error != std::errc()) return NumberRead::NoNumber;
    return std::isfinite(value) ? NumberRead::Number : NumberRead::NotFinite;
}

bool ReadInteger(std::string_view text, int& value) {
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        text.remove_prefix(2);
        base = 16;
    }
    if (text.empty()) return false;
    const char* end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && next == end;
}

bool LooksLikeId(std::string_view text) {
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        for (char c : text.substr(2)) {
            const bool hex =
                (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
            if (!hex) return false;
        }
        return true;
    }
    if (text.empty()) return false;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
    }
    return true;
}

std::string HexId(int id) {
    char buffer[16] = {'0', 'x'};
    const std::to_chars_result result =
        std::to_chars(buffer + 2, buffer + sizeof buffer, static_cast<unsigned>(id), 16);
    for (char* c = buffer + 2; c != result.ptr; ++c) {
        if (*c >= 'a' && *c <= 'f') *c = static_cast<char>(*c - 'a' + 'A');
    }
    return std::string(buffer, result.ptr);
}

std::string_view Trim(std::string_view text) {
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && blank(text.back())) text.remove_suffix(1);
    return text;
}

std::string AsciiLower(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return out;
}

std::vector<std::string_view> SplitWords(std::string_view text) {
    std::vector<std::string_view> words;
    std::size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
        const std::size_t start = i;
        while (i < text.size() && text[i] != ' ' && text[i] != '\t') ++i;
        if (i > start) words.push_back(text.substr(start, i - start));
    }
    return words;
}

std::string JsonString(std::string_view utf8) {
    std::string out;
    AppendJsonString(out, utf8);
    return out;
}

void AppendJsonString(std::string& out, std::string_view utf8) {
    out += '"';
    for (char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\t') {
            out += "\\t";
        } else if (byte < 0x20) {
            static const char kHex[] = "0123456789abcdef";
            out += "\\u00";
            out += kHex[byte >> 4];
            out += kHex[byte & 0xF];
        } else {
            out += c;
        }
    }
    out += '"';
}

namespace {

std::string Superscript(int exponent) {
    static const char* const kDigits[10] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string out = exponent < 0 ? "⁻" : "";
    const std::string digits = std::to_string(std::abs(exponent));
    for (char digit : digits) out += kDigits[digit - '0'];
    return out;
}

}  // namespace

std::string PowersText(const std::array<int, 7>& exponents, const char* const (&names)[7],
                       const int (&order)[7]) {
    std::string out;
    for (int i : order) {
        if (exponents[i] == 0) continue;
        if (!out.empty()) out += "·";
        out += names[i];
        if (exponents[i] != 1) out += Superscript(exponents[i]);
    }
    return out.empty() ? "1" : out;
}

std::string JsonNumber(double value) {
    if (!std::isfinite(value)) return "null";
    return NumberText(value, true);
}

}  // namespace MensuraCli
