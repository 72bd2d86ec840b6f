// The compound patterns and the caller's symbol strings, through the shared
// library: rendering through a string, reading back through it in every form
// and order, strings that exclude each other, replacement and removal, the
// state after a refused set, and the flat selectors.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>
#include <vector>

#include "mensura/mensura.hpp"
#include "support/narrow.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;

constexpr int kMeterSymbol = 0x202001;  // "m"
constexpr int kFootSymbol = 0x202017;   // "ft"
constexpr int kFeetInches = 0x502016;   // x′x″
constexpr int kFractions = 0x702016;    // x′x x/2″
constexpr int kInches = 0x902016;       // x x/2″
constexpr int kAngle = 0x408002;        // x°x′x″
constexpr int kBearing = 0x508002;      // N x°x′x″ E

// The text on success, else "#" and the code.
std::u16string Render(const Formatter& formatter, double value, int unit, int symbol,
                      double* converted = nullptr) {
    char16_t buffer[64];
    const ErrorCode result = formatter.Format(value, unit, buffer, 64, symbol, converted);
    if (result != ErrorCode::Success) return u"#" + std::u16string(1, u'0' + int(result));
    return buffer;
}

struct Read {
    ErrorCode result;
    double value;
};

Read Parse(const Formatter& formatter, const char16_t* text, int unit) {
    Read read{ErrorCode::Failure, -12345.0};
    read.result = formatter.Parse(text, read.value, unit);
    return read;
}

void ExpectReads(const Formatter& formatter, const char16_t* text, int unit, double value) {
    const Read read = Parse(formatter, text, unit);
    EXPECT_EQ(read.result, ErrorCode::Success) << Narrow(text);
    EXPECT_DOUBLE_EQ(read.value, value) << Narrow(text);
}

void ExpectRefused(const Formatter& formatter, const char16_t* text, int unit) {
    const Read read = Parse(formatter, text, unit);
    EXPECT_EQ(read.result, ErrorCode::ParseFailure) << Narrow(text);
    EXPECT_EQ(read.value, -12345.0) << Narrow(text);
}

std::u16string Stored(const Formatter& formatter, int symbol, bool parsing = false) {
    char16_t buffer[64] = {u'#', 0};
    const ErrorCode result = parsing ? formatter.GetSymbolParsingString(symbol, buffer, 64)
                                     : formatter.GetSymbolFormattingString(symbol, buffer, 64);
    if (result != ErrorCode::Success) return u"#" + std::u16string(1, u'0' + int(result));
    return buffer;
}

// The renderings of the patterns are held with the notations; through Format,
// the converted value and the defaults.
TEST(CompoundPatterns, RenderThroughFormat) {
    const Formatter formatter;
    double converted = 0.0;
    EXPECT_EQ(Render(formatter, 66, kInch, kFractions, &converted), u"5′6″");
    EXPECT_EQ(converted, 66.0);
    // As the default symbol of the inch, and the inch the default of lengths.
    Formatter inches;
    ASSERT_EQ(inches.SetDefaultSymbol(kFractions), ErrorCode::Success);
    ASSERT_EQ(inches.SetDefaultUnit(kInch), ErrorCode::Success);
    EXPECT_EQ(Render(inches, 66.25, kInch, 0), u"5′6 1/4″");
    EXPECT_EQ(Render(inches, 1.0, kMeter, kInch), u"3′3 1/4″");  // 39.37 inches
    EXPECT_EQ(Render(inches, 1.0, kMeter, 0x2000), u"3′3 1/4″");
    // A bare number takes it as a number of inches.
    ExpectReads(inches, u"5", kInch, 5.0);
}

TEST(SymbolStrings, FeetAndInchesReadBackInEveryForm) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFractions, u"{0} ft {1} in"),
              ErrorCode::Success);
    double converted = 0.0;
    EXPECT_EQ(Render(formatter, 66.25, kInch, kFractions, &converted), u"5 ft 6 1/4 in");
    EXPECT_EQ(converted, 66.25);
    // The numbers of each form are the pattern's (tests/notations); here the
    // dictionary finds every form.
    ExpectReads(formatter, u"5 ft 6 in", kInch, 66);
    ExpectReads(formatter, u"5 ft 1/4 in", kInch, 60.25);
    ExpectReads(formatter, u"5 ft 6 1/4 in", kMeter, 66.25 * 0.0254);
    ExpectReads(formatter, u"5 ft", kInch, 60);  // no string has this shape: the general scan
    ExpectRefused(formatter, u"5 ft 6 1/4 in", kSecond);  // read, but no time
    EXPECT_EQ(Stored(formatter, kFractions), u"{0} ft {1} in");
}

TEST(SymbolStrings, EitherOrderOfTheParts) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFeetInches, u"{0} ft {1} in"),
              ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 66, kInch, kFeetInches), u"5 ft 6.00 in");
    ExpectRefused(formatter, u"5 ft 1/4 in", kInch);  // no fractions on this pattern
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFeetInches, u"{1} in {0} ft"),
              ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 66, kInch, kFeetInches), u"6.00 in 5 ft");
    ExpectReads(formatter, u"6 in 5 ft", kInch, 66);
    ExpectReads(formatter, u"6 in -5 ft", kInch, -66);
    ASSERT_EQ(formatter.SetSymbolParsingString(kFractions, u"{1}″{0}′"), ErrorCode::Success);
    ExpectReads(formatter, u"6 1/4″5′", kInch, 66.25);
    ExpectReads(formatter, u"5′6″", kInch, 66);  // the marks, not the string
}

TEST(SymbolStrings, InchesWithFractions) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolParsingString(kInches, u"{0} in."), ErrorCode::Success);
    ExpectReads(formatter, u"1/4 in.", kInch, 0.25);
    ExpectReads(formatter, u"-6 1/4 in.", kInch, -6.25);
    ExpectRefused(formatter, u"1/0 in.", kInch);  // no infinite value
    // A parsing string does not render.
    EXPECT_EQ(Render(formatter, 6.25, kInch, kInches), u"6 1/4″");
}

TEST(SymbolStrings, DegreesMinutesAndSeconds) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolFormattingString(kAngle, u"{0}d {1}m {2}s"), ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 45.5, kDegree, kAngle), u"45d 30m 0s");  // part 2 is 0 for d = 2
    ExpectReads(formatter, u"45d 30m 36s", kDegree, 45.51);
    ASSERT_EQ(formatter.SetNumberDecimalDigits(3), ErrorCode::Success);
    EXPECT_EQ(Render(formatter, -45.51, kDegree, kAngle), u"-45d 30m 36s");
    // A bearing takes a string, which reads, but renders through it never.
    ASSERT_EQ(formatter.SetSymbolFormattingString(kBearing, u"{2}s {1}m {0}d"), ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 30.25, kDegree, kBearing), u"#1");
    ExpectReads(formatter, u"36s 30m 45d", kDegree, 45.51);
}

TEST(SymbolStrings, PlainSymbols) {
    Formatter formatter;
    ExpectRefused(formatter, u"3 meters", kMeter);  // "meters" is no key
    ASSERT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"{0} meters"), ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 5.5, kMeter, kMeterSymbol), u"5.50 meters");
    EXPECT_EQ(Render(formatter, 5.5, kMeter, 0), u"5.50 meter");  // another symbol
    ExpectReads(formatter, u"3 meters", kFoot, 3 / 0.3048);
    ExpectRefused(formatter, u"5 meters and more", kMeter);
    ExpectRefused(formatter, u"3 meters", kSecond);
    EXPECT_EQ(Stored(formatter, kMeterSymbol), u"{0} meters");
    EXPECT_EQ(Stored(formatter, kMeterSymbol, true), u"#3");
    // Through a string a dimension mismatch is a plain failure.
    EXPECT_EQ(Render(formatter, 1.0, kKilogram, kMeterSymbol), u"#1");
    EXPECT_EQ(Render(formatter, 1.0, kKilogram, kFootSymbol), u"#4");

    ASSERT_EQ(formatter.SetSymbolFormattingString(0x22A002, u"{0} C"), ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 20, kCelsius, 0x22A002), u"20.00 C");
    ExpectReads(formatter, u"20 C", kKelvin, 293.15);
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFootSymbol, u"{0} {{ft}}"), ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 5.5, kFoot, kFootSymbol), u"5.50 {ft}");
    ExpectReads(formatter, u"2 {ft}", kFoot, 2);
}

TEST(SymbolStrings, ABareNumberAndALeadingLiteral) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolParsingString(kFootSymbol, u"{0}"), ErrorCode::Success);
    ExpectReads(formatter, u"5", kMeter, 5 * 0.3048);  // every bare number is feet now
    ExpectReads(formatter, u"5 m", kMeter, 5);
    // Read through the string, a number of feet is no time; not read again.
    ExpectRefused(formatter, u"5", kSecond);
    ASSERT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"{0}"), ErrorCode::Failure);
    ASSERT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"approx. {0} m"),
              ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 5.5, kMeter, kMeterSymbol), u"approx. 5.50 m");
    ExpectReads(formatter, u"approx. 2 m", kMeter, 2);
    ExpectRefused(formatter, u"approx. 2 ft", kMeter);
    ExpectRefused(formatter, u"2 approx. 2 m", kMeter);
}

// Placeholders that the symbol has no part for, a malformed text, an id of
// no symbol. Each kind once: which strings a symbol takes is held with the
// notations, the grammar with the split.
TEST(SymbolStrings, Refusals) {
    Formatter formatter;
    const std::pair<int, const char16_t*> rows[] = {{kMeterSymbol, u"{1} m"},
                                                    {kFeetInches, u"{0} ft"},
                                                    {kAngle, u"{0} {1}"},
                                                    {kMeterSymbol, u"{0"},
                                                    {0x902001, u"{0} m"},
                                                    {kMeter, u"{0} m"},
                                                    {0, u"{0}"}};
    for (const auto& [symbol, text] : rows) {
        EXPECT_EQ(formatter.SetSymbolFormattingString(symbol, text), ErrorCode::Failure)
            << Narrow(text);
        EXPECT_EQ(formatter.SetSymbolParsingString(symbol, text), ErrorCode::Failure)
            << Narrow(text);
        EXPECT_EQ(Stored(formatter, symbol), u"#3");
        EXPECT_EQ(Stored(formatter, symbol, true), u"#3");
    }
    EXPECT_EQ(Render(formatter, 5.5, kMeter, kMeterSymbol), u"5.50 m");
    // Removing what an unknown id does not have is no failure.
    EXPECT_EQ(formatter.SetSymbolFormattingString(0x902001, u""), ErrorCode::Success);
}

TEST(SymbolStrings, TheSameLiteralsExcludeEachOther) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"{0} m"), ErrorCode::Success);
    EXPECT_EQ(formatter.SetSymbolParsingString(kMeterSymbol, u"{0} m"), ErrorCode::Failure);
    EXPECT_EQ(formatter.SetSymbolFormattingString(kFootSymbol, u"{0} m"), ErrorCode::Failure);
    EXPECT_EQ(formatter.SetSymbolParsingString(kFootSymbol, u"{0} m"), ErrorCode::Failure);
    EXPECT_EQ(Stored(formatter, kMeterSymbol, true), u"#3");
    EXPECT_EQ(Stored(formatter, kFootSymbol), u"#3");
    // The numbers play no part: these literals are the second form of the
    // fraction pattern's string below.
    ASSERT_EQ(formatter.SetSymbolParsingString(kAngle, u"{0} {1}/{2} in"), ErrorCode::Success);
    EXPECT_EQ(formatter.SetSymbolParsingString(kInches, u"{0} in"), ErrorCode::Failure);
    ExpectRefused(formatter, u"1/4 in", kInch);  // its first forms left no path behind
    ExpectReads(formatter, u"30 45/36 in", kDegree, 30 + 45 / 60.0 + 36 / 3600.0);
    // Another formatter has its own strings.
    Formatter other;
    EXPECT_EQ(other.SetSymbolParsingString(kInches, u"{0} in"), ErrorCode::Success);
    ExpectReads(other, u"1/4 in", kInch, 0.25);
    // Copies share them.
    Formatter copy(formatter);
    EXPECT_EQ(Stored(copy, kMeterSymbol), u"{0} m");
    ASSERT_EQ(copy.SetSymbolFormattingString(kMeterSymbol, u""), ErrorCode::Success);
    EXPECT_EQ(Stored(formatter, kMeterSymbol), u"#3");
}

TEST(SymbolStrings, ReplacementAndRemoval) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFeetInches, u"{0} ft {1} in"),
              ErrorCode::Success);
    // The same literals on the same symbol: the old paths leave first.
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFeetInches, u"{1} ft {0} in"),
              ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 66, kInch, kFeetInches), u"6.00 ft 5 in");
    ExpectReads(formatter, u"6 ft 5 in", kInch, 66);
    // The stored text again changes nothing.
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFeetInches, u"{1} ft {0} in"),
              ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 66, kInch, kFeetInches), u"6.00 ft 5 in");
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFeetInches, u"{0}′ {1}″"), ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 66, kInch, kFeetInches), u"5′ 6.00″");
    ExpectRefused(formatter, u"6 ft 5 in", kInch);  // the old string reads no more

    // A formatting and a parsing string of one symbol are removed one by one.
    ASSERT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"{0} m!"), ErrorCode::Success);
    ASSERT_EQ(formatter.SetSymbolParsingString(kMeterSymbol, u"{0} meters"), ErrorCode::Success);
    ASSERT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u""), ErrorCode::Success);
    EXPECT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, nullptr), ErrorCode::Success);
    EXPECT_EQ(Stored(formatter, kMeterSymbol), u"#3");
    EXPECT_EQ(Stored(formatter, kMeterSymbol, true), u"{0} meters");
    EXPECT_EQ(Render(formatter, 5.5, kMeter, kMeterSymbol), u"5.50 m");
    ExpectRefused(formatter, u"5 m!", kMeter);
    ExpectReads(formatter, u"3 meters", kMeter, 3);
    ASSERT_EQ(formatter.SetSymbolParsingString(kMeterSymbol, nullptr), ErrorCode::Success);
    ExpectRefused(formatter, u"3 meters", kMeter);
    // Once removed, its literals are free for any symbol.
    EXPECT_EQ(formatter.SetSymbolParsingString(kFootSymbol, u"{0} meters"), ErrorCode::Success);
    ExpectReads(formatter, u"3 meters", kMeter, 3 * 0.3048);
}

TEST(SymbolStrings, ARefusedSetLeavesEverythingAsItWas) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"{0} meters"), ErrorCode::Success);
    ASSERT_EQ(formatter.SetSymbolFormattingString(kFootSymbol, u"{0} feet"), ErrorCode::Success);
    ASSERT_EQ(formatter.SetSymbolParsingString(kInches, u"{0} inch"), ErrorCode::Success);
    ASSERT_EQ(formatter.SetSymbolParsingString(kAngle, u"{0} {1}/{2} in"), ErrorCode::Success);
    const auto expectAsBefore = [&formatter]() {
        EXPECT_EQ(Stored(formatter, kMeterSymbol), u"{0} meters");
        EXPECT_EQ(Stored(formatter, kInches, true), u"{0} inch");
        EXPECT_EQ(Render(formatter, 5.5, kMeter, kMeterSymbol), u"5.50 meters");
        ExpectReads(formatter, u"3 meters", kMeter, 3);
        ExpectReads(formatter, u"3 feet", kMeter, 3 * 0.3048);
        ExpectReads(formatter, u"1/4 inch", kInch, 0.25);
        ExpectReads(formatter, u"6 1/4 inch", kInch, 6.25);
        ExpectRefused(formatter, u"1/4 in", kInch);
    };
    expectAsBefore();
    // Refused before anything changes: grammar, placeholders.
    EXPECT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"{0} {1}"), ErrorCode::Failure);
    EXPECT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"{0}}"), ErrorCode::Failure);
    expectAsBefore();
    // Refused in the dictionary: the old paths come back.
    EXPECT_EQ(formatter.SetSymbolFormattingString(kMeterSymbol, u"{0} feet"), ErrorCode::Failure);
    expectAsBefore();
    // The third object of three collides, after the first two went in.
    EXPECT_EQ(formatter.SetSymbolParsingString(kInches, u"{0} in"), ErrorCode::Failure);
    expectAsBefore();
}

// A getter copies the whole text or nothing (held with the flat functions at
// their edges), for the id as a whole; the flat selectors read and write
// either string of a symbol.
TEST(SymbolStrings, GettersAndFlatSelectors) {
    Formatter formatter;
    ASSERT_EQ(formatter.SetSymbolParsingString(kMeterSymbol, u"{0} meters"), ErrorCode::Success);
    char16_t buffer[16];
    EXPECT_EQ(formatter.GetSymbolParsingString(kMeterSymbol | 0x10000000, buffer, 16),
              ErrorCode::NotSet);
    EXPECT_EQ(formatter.GetSymbolFormattingString(kMeterSymbol, buffer, 16), ErrorCode::NotSet);

    MensuraFormatter* flat = CreateFormatter(1033);
    char16_t formatting[] = u"{0} meters";
    char16_t parsing[] = u"{0} metres";
    EXPECT_EQ(FormatterSymbolStringSetting(flat, 2, kMeterSymbol, formatting, 0), 0);
    EXPECT_EQ(FormatterSymbolStringSetting(flat, 3, kMeterSymbol, buffer, 16), 3);
    EXPECT_EQ(FormatterSymbolStringSetting(flat, 4, kMeterSymbol, parsing, 0), 0);
    EXPECT_EQ(FormatterSymbolStringSetting(flat, 1, kMeterSymbol, buffer, 16), 0);
    EXPECT_EQ(std::u16string(buffer), u"{0} meters");
    EXPECT_EQ(FormatterSymbolStringSetting(flat, 3, kMeterSymbol, buffer, 16), 0);
    EXPECT_EQ(std::u16string(buffer), u"{0} metres");
    double value = 0.0;
    EXPECT_EQ(::Parse(flat, u"2 metres", &value, kMeter), 0);
    EXPECT_EQ(value, 2.0);
    EXPECT_EQ(::Format(flat, 2.5, kMeter, buffer, 16, kMeterSymbol, &value), 0);
    EXPECT_EQ(std::u16string(buffer), u"2.50 meters");
    char16_t empty[] = u"";
    EXPECT_EQ(FormatterSymbolStringSetting(flat, 2, kMeterSymbol, empty, 0), 0);
    EXPECT_EQ(FormatterSymbolStringSetting(flat, 1, kMeterSymbol, buffer, 16), 3);
    DestroyFormatter(flat);
}

}  // namespace
