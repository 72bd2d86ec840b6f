// Text for the mensura tool: UTF-8 on the outside, UTF-16 for the library,
// numbers through <charconv>, JSON strings. Nothing here reads the process
// locale.
#ifndef MENSURA_CLI_TEXT_H
#define MENSURA_CLI_TEXT_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace MensuraCli {

// Decodes UTF-8 into UTF-16. False, with out unspecified, for bytes that are
// not UTF-8: a stray or missing continuation byte, an overlong form, a
// surrogate, or a code point above U+10FFFF.
bool Utf8ToUtf16(std::string_view in, std::u16string& out);
// text with every byte that is not part of a UTF-8 character replaced by
// U+FFFD, for showing a text that failed to decode.
std::string ValidUtf8(std::string_view text);
// Encodes UTF-16 as UTF-8; a lone surrogate becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view in);

// Seven exponents as a product of powers, in the given order of the names:
// "kg·m·s⁻²"; "1" when all are 0.
std::string PowersText(const std::array<int, 7>& exponents, const char* const (&names)[7],
                       const int (&order)[7]);

// Decodes the code point that starts at in[i]: its length in units (1 or 2;
// a lone surrogate is one unit and reads as U+FFFD).
std::size_t DecodeUtf16(std::u16string_view in, std::size_t i, char32_t& c);
// The byte offset of the first byte of text that is not part of a UTF-8
// character, or text.size() when all of it is UTF-8.
std::size_t FirstInvalidUtf8(std::string_view text);

// The columns a character takes on a terminal: 2 for a wide (East Asian)
// character, 0 for a combining mark or a zero-width character, else 1.
std::size_t CharWidth(char32_t c);
// The columns a text takes on a terminal, character by character as
// CharWidth counts them; a byte that is no UTF-8 takes 1.
std::size_t DisplayWidth(std::string_view utf8);
// text followed by blanks up to `width` columns.
std::string PadRight(std::string_view utf8, std::size_t width);

// A value as the tool prints it: 12 significant digits and no trailing zeros
// ("1.6764"), or with exact set the shortest text that reads back as the same
// double ("1.6764000000000001").
std::string NumberText(double value, bool exact);
// The longest NumberText: a sign, 17 digits, a point and an exponent "e-308".
constexpr std::size_t kLongestNumberText = 32;
// NumberText written to out, which holds kLongestNumberText chars: its end.
char* WriteNumberText(double value, bool exact, char* out);
// What ReadNumber made of a text.
enum class NumberRead {
    Number,     // a finite double, in value
    NoNumber,   // not a number at all
    NotFinite,  // "inf" or "nan"
    TooLarge,   // a number beyond the range of a double: 1e400
};
// Reads the whole of text as a double: decimal or scientific, an optional
// sign ("+" too). No blanks. A number too near 0 for a double reads as 0 of
// its sign, as the library reads it in a text.
NumberRead ReadNumber(std::string_view text, double& value);
// Reads the whole of text as an int: decimal, or hexadecimal after "0x".
bool ReadInteger(std::string_view text, int& value);
// True when text has the form of an id: decimal digits, or "0x" and hex digits.
bool LooksLikeId(std::string_view text);
// "0x2017"
std::string HexId(int id);

// text without blanks, tabs and line ends at either side.
std::string_view Trim(std::string_view text);
// ASCII letters lowered; every other byte as it is.
std::string AsciiLower(std::string_view text);
// Pieces of text between blanks and tabs, empty pieces dropped.
std::vector<std::string_view> SplitWords(std::string_view text);

// A JSON string with quotes; text is UTF-8 and passes through, control
// characters, quotes and backslashes escaped.
std::string JsonString(std::string_view utf8);
// JsonString appended to out.
void AppendJsonString(std::string& out, std::string_view utf8);
// A JSON number that reads back as the same double, or null when not finite.
std::string JsonNumber(double value);

}  // namespace MensuraCli

#endif  // MENSURA_CLI_TEXT_H
