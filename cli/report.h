// What the tool says of a text that it reads into a unit, all of it from the
// library's parse report: why a text did not read, the text with a caret line
// under the part to blame, and a notice when a symbol was read with a
// catalogue meaning that the everyday reading does not give it.
#ifndef MENSURA_CLI_REPORT_H
#define MENSURA_CLI_REPORT_H

#include <cstddef>
#include <string>
#include <string_view>

#include "mensura/mensura.hpp"
#include "text.h"

namespace MensuraCli {

// The most columns of a text that CaretLines shows.
constexpr std::size_t kExcerptColumns = 60;

// utf8 whole when it has at most `most` characters, else its first `most`
// characters and "…"; a byte that is no UTF-8 shows as U+FFFD. However long
// utf8 is, only its start is looked at.
std::string Shortened(std::string_view utf8, std::size_t most);
// utf8 as a message quotes it: Shortened, and a tab shows as \t and another
// control character as \x1B.
std::string Clipped(std::string_view utf8, std::size_t most = 30);
// Why text, a plain number as an argument or a line gives it, is no value:
// "cannot read 'five' as a number", "'inf' is not a finite number", "'1e400'
// is too large for a double". "" when it is one.
std::string NumberProblem(NumberRead read, std::string_view text);
// Why a result that is no finite number is no value: "too large for a
// double", or for a NaN "not a number".
std::string NotFiniteText(double value);

// The two lines that show where a problem lies in text, as compilers show
// them: the text indented by two blanks and, beneath it, a caret under the
// first column of the span and tildes under the rest of it:
//
//   1e-9 km3
//        ^~~
//
// start and length count UTF-16 units of text; a length of 0 marks the whole
// text. Columns are the terminal's: a character is one column, a wide (East
// Asian) one two, a combining mark none; a control character shows as a
// blank. A text of more than kExcerptColumns columns is cut around the span,
// with "…" where it was cut, so that a long line is never copied whole. No
// line end after the second line; "" for an empty text.
std::string CaretLines(std::u16string_view text, std::size_t start, std::size_t length);

// What became of one text read into a unit.
struct TextReading {
    Mensura::ParseReport report;  // the library's report; code is the result
    std::string message;          // on failure: why, in words
    std::string excerpt;          // on failure: CaretLines, or "" when no text is to blame
    std::string noteKey;          // on success: the symbol read with a catalogue meaning, if any
    std::string note;             // and what was read, as a one-line notice
};

// Reads input, UTF-8, as a value of `unit` by the formatter's settings and
// reading, and says why it did not read; a text that the library cannot be
// given as it is (a NUL byte would end it early) and a value that is no
// finite number fail too:
//   'feets' is not a known unit or mark
//   it reads as a mass (Mass), not a length
//   its numbers, units and marks do not make one value
//   the text is empty
//   it is not valid UTF-8
//   it holds a NUL byte
//   its value in meter (0x2001) is too large for a double
TextReading ReadText(const Mensura::Formatter& formatter, std::string_view input, int unit);

// The quick way of ReadText for a text that reads: true, with its value as
// ReadText gives it, when input reads as a finite value and calls for no
// notice, which is all a stream of good lines needs; false when ReadText
// must say what became of it. text is a buffer that the caller keeps from
// line to line, so that a stream allocates nothing.
bool ReadValue(const Mensura::Formatter& formatter, std::string_view input, int unit,
               std::u16string& text, double& value);

}  // namespace MensuraCli

#endif  // MENSURA_CLI_REPORT_H
