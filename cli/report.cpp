#include "report.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "catalog.h"
#include "text.h"

namespace MensuraCli {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::ParseReport;

namespace {

// One character of an excerpt: where it starts in the text, the columns it
// takes, and how it shows.
struct Cell {
    std::size_t start = 0;
    std::size_t end = 0;
    std::size_t width = 0;
    std::string shown;
};

Cell CellAt(std::u16string_view text, std::size_t i, std::size_t& length) {
    char32_t c = 0;
    length = DecodeUtf16(text, i, c);
    Cell cell;
    cell.start = i;
    cell.end = i + length;
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
        cell.width = 1;
        cell.shown = " ";
    } else {
        cell.width = CharWidth(c);
        cell.shown = Utf16ToUtf8(text.substr(i, length));
    }
    return cell;
}

// The start of the character before the one at i.
std::size_t PreviousStart(std::u16string_view text, std::size_t i) {
    if (i >= 2 && text[i - 1] >= 0xDC00 && text[i - 1] <= 0xDFFF && text[i - 2] >= 0xD800 &&
        text[i - 2] <= 0xDBFF) {
        return i - 2;
    }
    return i - 1;
}

// The characters from `from` on, up to `columns` columns or the end of text.
std::vector<Cell> CellsAfter(std::u16string_view text, std::size_t from, std::size_t columns) {
    std::vector<Cell> cells;
    std::size_t used = 0;
    for (std::size_t i = from; i < text.size();) {
        std::size_t length = 0;
        Cell cell = CellAt(text, i, length);
        if (used + cell.width > columns) break;
        used += cell.width;
        cells.push_back(std::move(cell));
        i += length;
    }
    return cells;
}

// The characters before `to`, nearest first, up to `columns` columns or the
// start of text.
std::vector<Cell> CellsBefore(std::u16string_view text, std::size_t to, std::size_t columns) {
    std::vector<Cell> cells;
    std::size_t used = 0;
    for (std::size_t i = to; i > 0;) {
        const std::size_t start = PreviousStart(text, i);
        std::size_t length = 0;
        Cell cell = CellAt(text, start, length);
        if (used + cell.width > columns) break;
        used += cell.width;
        cells.push_back(std::move(cell));
        i = start;
    }
    return cells;
}

std::size_t Width(const std::vector<Cell>& cells, std::size_t count) {
    std::size_t width = 0;
    for (std::size_t i = 0; i < count && i < cells.size(); ++i) width += cells[i].width;
    return width;
}

// The most characters of cells, from the first, that fit in `columns`.
std::size_t CountWithin(const std::vector<Cell>& cells, std::size_t columns) {
    std::size_t count = 0;
    std::size_t used = 0;
    while (count < cells.size() && used + cells[count].width <= columns) {
        used += cells[count].width;
        ++count;
    }
    return count;
}

std::u16string_view Span(std::u16string_view text, const ParseReport& report) {
    if (report.start >= text.size()) return {};
    return text.substr(report.start, report.length);
}

std::string OtherQuantityText(const ParseReport& report, int unit) {
    std::string what;
    if (report.group != 0) {
        what = Quantity(report.group) + " (" + Name(kEnglish, report.group) + ")";
    } else {
        Exponents exponents{};
        std::copy(std::begin(report.dimensions), std::end(report.dimensions), exponents.begin());
        what = "a quantity of the dimensions " + DimensionsText(exponents);
    }
    return "it reads as " + what + ", not " + Quantity(GroupOf(unit));
}

std::string Reason(const ParseReport& report, std::u16string_view text, int unit) {
    switch (report.reason) {
        case ParseReport::UnknownText:
            // Enough of the span to quote it, also when it is a long run.
            return "'" + Clipped(Utf16ToUtf8(Span(text, report).substr(0, 64))) +
                   "' is not a known unit or mark";
        case ParseReport::OtherQuantity:
            return OtherQuantityText(report, unit);
        case ParseReport::EmptyText:
            return "the text is empty";
        case ParseReport::UnknownUnit:
            return HexId(unit) + " names no unit type";
        case ParseReport::Read:
        case ParseReport::NoSingleValue:
            break;
    }
    return "its numbers, units and marks do not make one value";
}

// The unit type of `group` of which 1 is `value` of `reference`, or 0.
int UnitOfSize(int group, int reference, double value) {
    for (int unit : UnitTypes(group)) {
        const double factor = Converter::Factor(unit, reference);
        if (factor != 0.0 && std::fabs(factor - value) <= 1e-12 * std::fabs(value)) return unit;
    }
    return 0;
}

// "pound (meter), 0.5 kilogram": a unit type and what 1 of it is in the
// coherent unit of its group; the name alone for a scale with an offset.
std::string NameAndSize(int unit) {
    const int reference = ReferenceUnit(GroupOf(unit));
    const double factor = Converter::Factor(unit, reference);
    std::string out = Name(kEnglish, unit);
    if (unit != reference && factor != 0.0) {
        out += ", " + NumberText(factor, false) + " " + Name(kEnglish, reference);
    }
    return out;
}

// What a formatter with the everyday reading makes of 1 of the noted text:
// "pound, 0.45359237 kilogram", or "" when it reads none.
std::string EverydayMeaning(int locale, const std::u16string& key) {
    Formatter everyday(locale);
    everyday.SetEverydayReading(true);
    const std::u16string one = u"1 " + key;
    int unit = 0;
    if (Formatter::FindUnit(key.c_str(), unit) != ErrorCode::Success) return "";
    // In the group of the catalogue's meaning, or else in the one the report names.
    int reference = ReferenceUnit(GroupOf(unit));
    ParseReport report = everyday.ExplainParse(one.c_str(), reference);
    if (report.reason == ParseReport::OtherQuantity && report.group != 0) {
        reference = ReferenceUnit(report.group);
        report = everyday.ExplainParse(one.c_str(), reference);
    }
    if (report.code != ErrorCode::Success) return "";
    const int same = UnitOfSize(GroupOf(reference), reference, report.value);
    if (same != 0) return NameAndSize(same);
    return NumberText(report.value, false) + " " + Name(kEnglish, reference);
}

std::string Note(const Formatter& formatter, std::u16string_view text, const ParseReport& report,
                 std::string& key) {
    const std::u16string noted(
        text.substr(std::min(report.noteStart, text.size()), report.noteLength));
    key = Utf16ToUtf8(noted);
    std::string out = "'" + Clipped(key) + "' is read ";
    int unit = 0;
    if (Formatter::FindUnit(noted.c_str(), unit) == ErrorCode::Success) {
        out += "as " + NameAndSize(unit);
    } else {
        out += "with the catalogue's meaning";
    }
    const std::string everyday = EverydayMeaning(formatter.GetLocaleId(), noted);
    return out + "; the everyday reading (the default) takes " +
           (everyday.empty() ? std::string("it otherwise") : "it as " + everyday);
}

}  // namespace

std::string Shortened(std::string_view utf8, std::size_t most) {
    // Enough bytes for most + 1 characters: a character cut at the end of
    // them lies past those.
    const std::string valid = ValidUtf8(utf8.substr(0, 4 * (most + 1)));
    std::size_t count = 0;
    for (std::size_t i = 0; i < valid.size(); ++i) {
        // A byte that starts a character: any but a continuation byte.
        if ((static_cast<unsigned char>(valid[i]) & 0xC0) != 0x80 && count++ == most) {
            return valid.substr(0, i) + "…";
        }
    }
    return valid;
}

std::string Clipped(std::string_view utf8, std::size_t most) {
    std::string out;
    for (const char c : Shortened(utf8, most)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == '\t') {
            out += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            static const char kHex[] = "0123456789ABCDEF";
            out += "\\x";
            out += kHex[byte >> 4];
            out += kHex[byte & 0xF];
        } else {
            out += c;
        }
    }
    return out;
}

std::string NumberProblem(NumberRead read, std::string_view text) {
    switch (read) {
        case NumberRead::Number:
            break;
        case NumberRead::NoNumber:
            return "cannot read '" + Clipped(text) + "' as a number";
        case NumberRead::NotFinite:
            return "'" + Clipped(text) + "' is not a finite number";
        case NumberRead::TooLarge:
            return "'" + Clipped(text) + "' is too large for a double";
    }
    return "";
}

std::string NotFiniteText(double value) {
    return std::isnan(value) ? "not a number" : "too large for a double";
}

std::string CaretLines(std::u16string_view text, std::size_t start, std::size_t length) {
    if (text.empty()) return "";
    if (start >= text.size() || length == 0) {
        start = 0;
        length = text.size();
    }
    // A span that begins inside a surrogate pair begins with the pair.
    if (start > 0 && text[start] >= 0xDC00 && text[start] <= 0xDFFF)
        start = PreviousStart(text, start);
    const std::size_t end = std::min(text.size(), start + length);

    // What lies before and from the span, each as far as a whole excerpt.
    const std::vector<Cell> before = CellsBefore(text, start, kExcerptColumns);
    const std::vector<Cell> after = CellsAfter(text, start, kExcerptColumns);
    std::size_t spanCount = 0;
    while (spanCount < after.size() && after[spanCount].start < end) ++spanCount;
    const std::size_t spanWidth = Width(after, spanCount);

    // Some text before the span, less when the span is long; the rest of the
    // columns go to the span and what follows it, and back to the text before
    // when the text ends sooner.
    const std::size_t wantBefore = spanWidth + 20 < kExcerptColumns ? 20 : 10;
    std::size_t beforeCount = CountWithin(before, wantBefore);
    const std::size_t afterCount = CountWithin(after, kExcerptColumns - Width(before, beforeCount));
    beforeCount = CountWithin(before, kExcerptColumns - Width(after, afterCount));

    const std::size_t shownStart = beforeCount > 0 ? before[beforeCount - 1].start : start;
    const std::size_t shownEnd = afterCount > 0 ? after[afterCount - 1].end : start;

    std::string line = "  ";
    std::size_t column = 2;
    if (shownStart > 0) {
        line += "…";
        ++column;
    }
    for (std::size_t i = beforeCount; i > 0; --i) {
        line += before[i - 1].shown;
        column += before[i - 1].width;
    }
    for (std::size_t i = 0; i < afterCount; ++i) line += after[i].shown;
    if (shownEnd < text.size()) line += "…";

    const std::size_t marked =
        std::max<std::size_t>(1, Width(after, std::min(spanCount, afterCount)));
    return line + "\n" + std::string(column, ' ') + "^" + std::string(marked - 1, '~');
}

TextReading ReadText(const Formatter& formatter, std::string_view input, int unit) {
    TextReading reading;
    std::u16string text;
    if (!Utf8ToUtf16(input, text)) {
        reading.report.code = ErrorCode::ParseFailure;
        reading.message = "it is not valid UTF-8";
        // The text as it shows, each stray byte a U+FFFD, and the caret
        // under the first of them.
        std::u16string shown;
        std::u16string valid;
        Utf8ToUtf16(ValidUtf8(input), shown);
        Utf8ToUtf16(input.substr(0, FirstInvalidUtf8(input)), valid);
        reading.excerpt = CaretLines(shown, valid.size(), 1);
        return reading;
    }
    const std::size_t nul = text.find(u'\0');
    if (nul != std::u16string::npos) {
        // The library reads a text up to its first NUL: the rest would be lost.
        reading.report.code = ErrorCode::ParseFailure;
        reading.message = "it holds a NUL byte";
        reading.excerpt = CaretLines(text, nul, 1);
        return reading;
    }
    reading.report = formatter.ExplainParse(text.c_str(), unit);
    ParseReport& report = reading.report;
    if (report.code == ErrorCode::Success && !std::isfinite(report.value)) {
        // A number beyond the range of a double reads as an infinity: no value.
        report.code = ErrorCode::ParseFailure;
        reading.message = "its value in " + Describe(unit) + " is " + NotFiniteText(report.value);
        reading.excerpt = CaretLines(text, 0, 0);
        return reading;
    }
    if (report.code == ErrorCode::Success) {
        if (report.note) reading.note = Note(formatter, text, report, reading.noteKey);
        return reading;
    }
    reading.message = Reason(report, text, unit);
    if (report.reason != ParseReport::EmptyText && report.reason != ParseReport::UnknownUnit) {
        reading.excerpt = CaretLines(text, report.start, report.length);
    }
    return reading;
}

bool ReadValue(const Formatter& formatter, std::string_view input, int unit, std::u16string& text,
               double& value) {
    // Notices are given only when the everyday reading is off; then the
    // parse report is needed for every text.
    if (!formatter.GetEverydayReading()) return false;
    // A NUL byte is a NUL unit in UTF-16 too.
    if (input.find('\0') != std::string_view::npos || !Utf8ToUtf16(input, text)) return false;
    // Parse reads as ExplainParse does, without the work of the report.
    double read = 0.0;
    if (formatter.Parse(text.c_str(), read, unit) != ErrorCode::Success || !std::isfinite(read)) {
        return false;
    }
    value = read;
    return true;
}

}  // namespace MensuraCli
