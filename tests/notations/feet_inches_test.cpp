// Feet and inches, minutes and seconds of time: the six patterns of the
// catalogue, their renderings at several decimal digits, their parts, the
// forms in which a symbol string reads them, and the numbers of each form;
// and the room that every compound pattern, degrees too, needs.
#include "notations/feet_inches.h"

#include <gtest/gtest.h>

#include "base/ids.h"

#include <cmath>
#include <string>
#include <vector>

#include "catalogue/unit_catalog.h"
#include "notations/symbol_strings.h"
#include "support/format_with.h"
#include "support/narrow.h"

namespace Mensura {
namespace {

using MensuraTest::FormatWith;
using MensuraTest::Narrow;

constexpr int kPlain = 0x502016;     // x′x″
constexpr int kDash = 0x602016;      // x′–x″
constexpr int kFraction = 0x702016;  // x′x x/2″
constexpr int kBoth = 0x802016;      // x′–x x/2″
constexpr int kInches = 0x902016;    // x x/2″
constexpr int kMinutes = 0x52C001;   // x′x″ of the second
constexpr int kAngle = 0x408002;     // x°x′x″
constexpr int kBearing = 0x508002;   // N x°x′x″ E

const PrimeDoublePrimeSymbol* Pattern(int id, int language = 0) {
    const ISymbol* symbol = UnitCatalog::Instance().FindSymbol(id, language);
    return dynamic_cast<const PrimeDoublePrimeSymbol*>(symbol);
}

// A list of plain numbers, as the scan leaves them in front of a symbol.
void PushNumbers(SymbolList& list, const std::vector<double>& numbers) {
    for (double number : numbers) list.PushBackNew<NumberSymbol>(number, 0u);
}

TEST(FeetInchesSymbol, CatalogueHoldsSixPatternsInBothLanguages) {
    const std::pair<int, const char16_t*> rows[] = {{kPlain, u"x′x″"},        {kDash, u"x′–x″"},
                                                    {kFraction, u"x′x x/2″"}, {kBoth, u"x′–x x/2″"},
                                                    {kInches, u"x x/2″"},     {kMinutes, u"x′x″"}};
    for (int language = 0; language < 2; ++language) {
        for (const auto& [id, text] : rows) {
            const PrimeDoublePrimeSymbol* symbol = Pattern(id, language);
            ASSERT_NE(symbol, nullptr) << std::hex << id;
            EXPECT_EQ(symbol->SymbolId(), id);
            EXPECT_EQ(symbol->Unit(), id & 0xFFFFF);
            EXPECT_EQ(std::u16string(symbol->GetText()), text);
        }
    }
    EXPECT_NE(Pattern(kPlain, 0), Pattern(kPlain, 1));
    EXPECT_EQ(Pattern(0x402016), nullptr);  // "″" is a plain symbol
}

// Every cell of the table of the defaults (d = 2), one row per value in inches.
TEST(FeetInchesSymbol, RendersEachPatternWithTheDefaults) {
    const struct {
        double inches;
        const char16_t* texts[5];  // x′x″, x′–x″, x′x x/2″, x′–x x/2″, x x/2″
    } rows[] = {
        {66, {u"5′6.00″", u"5′–6.00″", u"5′6″", u"5′–6″", u"66″"}},
        {66.25, {u"5′6.25″", u"5′–6.25″", u"5′6 1/4″", u"5′–6 1/4″", u"66 1/4″"}},
        {60, {u"5′0.00″", u"5′–0.00″", u"5′0″", u"5′–0″", u"60″"}},
        {0.25, {u"0′0.25″", u"0′–0.25″", u"0′1/4″", u"0′–1/4″", u"1/4″"}},
        {71.95, {u"5′11.95″", u"5′–11.95″", u"6′0″", u"6′–0″", u"72″"}},
        {71.999, {u"5′12.00″", u"5′–12.00″", u"6′0″", u"6′–0″", u"72″"}},
        {-66, {u"-5′6.00″", u"-5′–6.00″", u"-5′6″", u"-5′–6″", u"-66″"}},
        {-6, {u"-0′6.00″", u"-0′–6.00″", u"-0′6″", u"-0′–6″", u"-6″"}},
        {-0.4, {u"-0′0.40″", u"-0′–0.40″", u"-0′1/2″", u"-0′–1/2″", u"-1/2″"}},
        {0, {u"0′0.00″", u"0′–0.00″", u"0′0″", u"0′–0″", u"0″"}},
        {12003, {u"1,000′3.00″", u"1,000′–3.00″", u"1,000′3″", u"1,000′–3″", u"12,003″"}},
    };
    const int symbols[] = {kPlain, kDash, kFraction, kBoth, kInches};
    const NumberSettings impl;
    for (const auto& row : rows) {
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(FormatWith(impl, row.inches, kInch, symbols[i]), row.texts[i])
                << row.inches << " under " << std::hex << symbols[i];
        }
    }
}

// Other settings: the decimal digits choose the finest fraction (d = 4 gives
// sixteenths; with d = 0 the fraction pattern rounds to whole inches before
// the split, the decimal one the inches alone), and every number takes the
// signs and separators. Minutes and seconds count sixty, and a value in
// another unit of the dimension renders in the pattern's.
TEST(FeetInchesSymbol, RendersByTheNumberSettings) {
    NumberSettings defaults, sixteenths, whole, plus, comma, fine, finest;
    ASSERT_EQ(sixteenths.SetNumberDecimalDigits(4), ErrorCode::Success);
    // Fractions finer than a whole number of 64 bits holds, and coarser.
    ASSERT_EQ(fine.SetNumberDecimalDigits(60), ErrorCode::Success);
    ASSERT_EQ(finest.SetNumberDecimalDigits(70), ErrorCode::Success);
    // The finest fraction whose numbers stay below 1e9, and the next.
    NumberSettings d29, d30;
    ASSERT_EQ(d29.SetNumberDecimalDigits(29), ErrorCode::Success);
    ASSERT_EQ(d30.SetNumberDecimalDigits(30), ErrorCode::Success);
    ASSERT_EQ(whole.SetNumberDecimalDigits(0), ErrorCode::Success);
    plus.SetPositiveSign(u"+");
    ASSERT_EQ(comma.SetNumberDecimalSeparator(u","), ErrorCode::Success);
    ASSERT_EQ(comma.SetNumberGroupSeparator(u"."), ErrorCode::Success);
    comma.SetNegativeSign(u"neg ");
    const struct {
        const NumberSettings& settings;
        double value;
        int unit, symbol;
        const char16_t* text;
    } rows[] = {
        {sixteenths, 66.0625, kInch, kFraction, u"5′6 1/16″"},
        {sixteenths, 66.75, kInch, kFraction, u"5′6 3/4″"},
        {sixteenths, 66.03, kInch, kFraction, u"5′6″"},
        {finest, 66.25, kInch, kFraction, u"5′6 1/4″"},
        {fine, 66 + 0x3p-40, kInch, kFraction, u"5′6 3/1,099,511,627,776″"},
        {finest, 66 + 0x3p-40, kInch, kFraction, u"5′6 3/1,099,511,627,776″"},
        {finest, -0x3p-40, kInch, kInches, u"-3/1,099,511,627,776″"},
        {d29, 66 + 0x3p-29, kInch, kFraction, u"5′6 3/536,870,912″"},
        {d30, 66 + 0x3p-29, kInch, kFraction, u"5′6 3/536,870,912″"},
        {d29, -0x3p-29, kInch, kInches, u"-3/536,870,912″"},
        {defaults, 12e9 + 3, kInch, kFraction, u"1,000,000,000′3″"},
        {defaults, -12e9 + 12 - 3.5, kInch, kFraction, u"-999,999,999′3 1/2″"},
        {whole, 71.6, kInch, kFraction, u"6′0″"},
        {whole, 71.6, kInch, kPlain, u"5′12″"},
        {whole, 66.25, kInch, kFraction, u"5′6″"},
        {plus, 66.25, kInch, kFraction, u"+5′+6 +1/+4″"},
        {comma, 12003.5, kInch, kPlain, u"1.000′3,50″"},
        {comma, -6, kInch, kFraction, u"neg 0′6″"},
        {defaults, -0.1, kInch, kFraction, u"-0′0″"},  // the large number keeps the sign
        {defaults, -0.1, kInch, kInches, u"0″"},       // no large number, no sign
        {defaults, 1.0, kMeter, kPlain, u"3′3.37″"},   // 39.3700787... inches
        {defaults, 330, kSecond, kMinutes, u"5′30.00″"},
        {defaults, 3725, kSecond, kMinutes, u"62′5.00″"},
        {defaults, -90, kSecond, kMinutes, u"-1′30.00″"},
        {defaults, 1.5, kMinute, kMinutes, u"1′30.00″"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FormatWith(row.settings, row.value, row.unit, row.symbol), row.text)
            << row.value << " under " << std::hex << row.symbol;
    }
}

// Every compound pattern, of feet and inches and of degrees, needs room for
// its text and the terminator and fails in any less; a null buffer fails, and
// a value of another quantity is a mismatch.
TEST(CompoundPatterns, TheBufferMustHoldTheTextAndItsTerminator) {
    const struct {
        int digits;
        double value;
        int unit, symbol;
        const char16_t* text;
    } rows[] = {{2, 66.25, kInch, kFraction, u"5′6 1/4″"},
                {2, 66.25, kInch, kBoth, u"5′–6 1/4″"},
                {2, 66, kInch, kPlain, u"5′6.00″"},
                {2, 66.25, kInch, kInches, u"66 1/4″"},
                {2, 30.25, kDegree, kBearing, u"N 59°45′ E"},
                {5, 30.25, kDegree, kBearing, u"N 59°45′0.0″ E"},
                {2, 90, kDegree, kBearing, u"N"},
                {2, 45.5, kDegree, kAngle, u"45°30′"},
                {6, -45.51, kDegree, kAngle, u"-45°30′36.00″"}};
    for (const auto& row : rows) {
        NumberSettings numbers;
        ASSERT_EQ(numbers.SetNumberDecimalDigits(row.digits), ErrorCode::Success);
        const std::size_t size = std::u16string(row.text).size() + 1;
        EXPECT_EQ(FormatWith(numbers, row.value, row.unit, row.symbol, size), row.text);
        for (std::size_t less = 1; less < size; ++less) {
            EXPECT_EQ(FormatWith(numbers, row.value, row.unit, row.symbol, less), u"#1")
                << Narrow(row.text) << " in " << less;
        }
    }
    const NumberSettings impl;
    const IFormatSymbol* bearing = UnitCatalog::Instance().FindSymbol(kBearing, 0)->AsFormat();
    EXPECT_EQ(Pattern(kFraction)->Render(1.0, Dimensions{1}, nullptr, 16, impl).code,
              ErrorCode::Failure);
    EXPECT_EQ(bearing->Render(0.0, Dimensions{}, nullptr, 16, impl).code, ErrorCode::Failure);
    EXPECT_EQ(FormatWith(impl, 1.0, kKilogram, kFraction), u"#4");  // a mass is no length
    EXPECT_EQ(FormatWith(impl, 1.0, kMeter, kAngle), u"#4");
    EXPECT_EQ(FormatWith(impl, 1.0, kMeter, kBearing), u"#4");
}

// The bare numbers of a symbol string: part 0 is the large number, any other
// part the small one, and without a large number every part is the small one.
TEST(FeetInchesSymbol, PartsAreTheBareNumbers) {
    const NumberSettings impl;
    const struct {
        int symbol;
        double inches;
        int part;
        const char16_t* text;
    } rows[] = {
        {kFraction, 66.25, 0, u"5"},     {kFraction, 66.25, 1, u"6 1/4"},
        {kFraction, 66.25, 2, u"6 1/4"}, {kFraction, 0.25, 1, u"1/4"},
        {kFraction, 66, 1, u"6"},        {kFraction, -6, 0, u"-0"},
        {kFraction, 0, 1, u"0"},         {kPlain, 71.999, 0, u"5"},
        {kPlain, 71.999, 1, u"12.00"},   {kDash, -66, 0, u"-5"},
        {kDash, -66, 1, u"6.00"},        {kInches, 66.25, 0, u"66 1/4"},
        {kInches, 66.25, 1, u"66 1/4"},  {kInches, -0.4, 0, u"-1/2"},
        {kBoth, 71.95, 0, u"6"},         {kBoth, 71.95, 1, u"0"},
    };
    const double inch = UnitTable::Instance().FindConverter(kInch)->GetFactor();
    for (const auto& row : rows) {
        char16_t buffer[32];
        const Result result =
            Pattern(row.symbol)
                ->RenderPart(row.part, row.inches * inch, Dimensions{1}, buffer, 32, impl);
        const std::u16string text(row.text);
        ASSERT_TRUE(result.Ok()) << Narrow(text) << " part " << row.part;
        ASSERT_EQ(result.length, text.size()) << Narrow(text) << " part " << row.part;
        EXPECT_EQ(std::u16string(buffer, text.size()), text) << row.inches;
    }
}

// Render cuts the large number by the product with the reciprocal where that
// settles it, and divides where the product falls within 2^-20 of a whole
// number; RenderPart always divides. Around whole multiples of 12 and 60,
// around the edges of that margin, half way between, and past 1e9 large
// units, the two must give one large number.
TEST(FeetInchesSymbol, TheLargeNumberIsTheQuotientsWholePart) {
    const NumberSettings impl;
    const double inch = UnitTable::Instance().FindConverter(kInch)->GetFactor();
    const Dimensions length{1}, time{0, 0, 1};
    const struct {
        int symbol;
        double multiple;    // in the pattern's small unit
        double multiplier;  // small units in a large one
        double factor;      // of the small unit in base units
        const Dimensions& dims;
    } rows[] = {{kFraction, 12, 12, inch, length},     {kFraction, 84, 12, inch, length},
                {kPlain, 12000, 12, inch, length},     {kFraction, 999999996, 12, inch, length},
                {kPlain, -120, 12, inch, length},      {kFraction, 12e9, 12, inch, length},
                {kMinutes, 60, 60, 1.0, time},         {kMinutes, -3600, 60, 1.0, time},
                {kMinutes, 59999999940, 60, 1.0, time}};
    // In large units from the multiple.
    const double distances[] = {0, 0x1p-20, -0x1p-20, 0x1.2p-20, -0x1.2p-20, 0.5};
    for (const auto& row : rows) {
        const PrimeDoublePrimeSymbol* pattern = Pattern(row.symbol);
        ASSERT_NE(pattern, nullptr);
        // The nudge away from zero: 1/8 of the small unit for a fraction, 5e-8 for decimals.
        const double nudge = row.symbol == kFraction ? 0.125 : 5e-8;
        for (const double distance : distances) {
            const double x = row.multiple + distance * row.multiplier;
            double value = (x > 0 ? x - nudge : x + nudge) * row.factor;
            for (int i = 0; i < 32; ++i) value = std::nextafter(value, -HUGE_VAL);
            for (int i = 0; i < 64; ++i, value = std::nextafter(value, HUGE_VAL)) {
                char16_t whole[64], large[64];
                const Result rendered = pattern->Render(value, row.dims, whole, 64, impl);
                const Result part = pattern->RenderPart(0, value, row.dims, large, 64, impl);
                ASSERT_TRUE(rendered.Ok() && part.Ok());
                ASSERT_EQ(std::u16string(whole, part.length + 1),
                          std::u16string(large, part.length) + u"\u2032")
                    << std::hexfloat << value << " under " << std::hex << row.symbol;
            }
        }
    }
}

struct Form {
    std::vector<std::u16string> literals;
    std::vector<int> indices;
};

void ExpectForms(int symbol, const char16_t* text, const std::vector<Form>& forms) {
    SymbolStringParts parts;
    ASSERT_TRUE(SplitSymbolString(text, parts)) << Narrow(text);
    CustomSymbolList out;
    ASSERT_EQ(Pattern(symbol)->MakeCustomSymbols(out, parts.literals, parts.indices),
              ErrorCode::Success)
        << Narrow(text);
    ASSERT_EQ(out.size(), forms.size()) << Narrow(text);
    for (std::size_t i = 0; i < forms.size(); ++i) {
        EXPECT_EQ(out[i]->Parent(), Pattern(symbol));
        EXPECT_EQ(out[i]->Form(), static_cast<int>(i));
        EXPECT_EQ(out[i]->Literals(), forms[i].literals) << Narrow(text) << " form " << i;
        EXPECT_EQ(out[i]->Indices(), forms[i].indices) << Narrow(text) << " form " << i;
    }
}

TEST(FeetInchesSymbol, PatternsWithFractionsReadInThreeForms) {
    ExpectForms(kFraction, u"{0} ft {1} in",
                {{{u"", u" ft ", u" in"}, {0, 1}},
                 {{u"", u" ft ", u"/", u" in"}, {0, 1, 2}},
                 {{u"", u" ft ", u" ", u"/", u" in"}, {0, 1, 2, 3}}});
    ExpectForms(kBoth, u"{1} in {0} ft",
                {{{u"", u" in ", u" ft"}, {1, 0}},
                 {{u"", u"/", u" in ", u" ft"}, {1, 2, 0}},
                 {{u"", u" ", u"/", u" in ", u" ft"}, {1, 2, 3, 0}}});
    ExpectForms(kFraction, u"<{0}|{1}",  // no literal behind the last placeholder
                {{{u"<", u"|"}, {0, 1}},
                 {{u"<", u"|", u"/"}, {0, 1, 2}},
                 {{u"<", u"|", u" ", u"/"}, {0, 1, 2, 3}}});
    ExpectForms(kInches, u"{0} in",
                {{{u"", u" in"}, {0}},
                 {{u"", u"/", u" in"}, {0, 1}},
                 {{u"", u" ", u"/", u" in"}, {0, 1, 2}}});
    ExpectForms(kInches, u"[{0}",
                {{{u"["}, {0}}, {{u"[", u"/"}, {0, 1}}, {{u"[", u" ", u"/"}, {0, 1, 2}}});
    ExpectForms(kPlain, u"{0} ft {1} in", {{{u"", u" ft ", u" in"}, {0, 1}}});
    ExpectForms(kMinutes, u"{1}s {0}m", {{{u"", u"s ", u"m"}, {1, 0}}});
}

TEST(FeetInchesSymbol, AStringThatDoesNotFitMakesNothing) {
    const auto refuses = [](int symbol, const char16_t* text) {
        SymbolStringParts parts;
        CustomSymbolList out;
        out.push_back(nullptr);  // cleared first
        return SplitSymbolString(text, parts) &&
               Pattern(symbol)->MakeCustomSymbols(out, parts.literals, parts.indices) ==
                   ErrorCode::Failure &&
               out.empty();
    };
    for (const char16_t* text : {u"{0} ft", u"{0} {1} {2}", u"{0} {2}", u"{1} {1}", u"ft"}) {
        for (int symbol : {kPlain, kFraction, kMinutes}) {
            EXPECT_TRUE(refuses(symbol, text)) << Narrow(text) << " on " << std::hex << symbol;
        }
    }
    EXPECT_TRUE(refuses(kInches, u"{0} {1}"));
}

// The numbers of each form, in part order, into one result in base units.
// The forms that a pattern has, and those it has not, are its LastPartIndex.
TEST(FeetInchesSymbol, EachFormReadsItsNumbers) {
    const struct {
        int symbol;
        int form;
        std::vector<double> numbers;
        double total;  // in inches or seconds
    } rows[] = {
        {kPlain, 0, {5, 6}, 66},           {kPlain, 0, {-5, 6}, -66},
        {kPlain, 0, {5, -6}, 66},   // the small number's sign plays no part
        {kPlain, 0, {-0.0, 6}, 6},  // a negative zero counts as plus
        {kMinutes, 0, {5, 30}, 330},       {kFraction, 0, {5, 6.25}, 66.25},
        {kFraction, 1, {5, 1, 4}, 60.25},  {kFraction, 1, {-5, 1, 4}, -60.25},
        {kBoth, 2, {-5, 6, 1, 4}, -66.25}, {kFraction, 2, {5, -6, 1, 4}, 65.75},  // |1/4 + -6|
        {kInches, 0, {66.25}, 66.25},      {kInches, 1, {1, 4}, 0.25},
        {kInches, 1, {-3, 4}, -0.75},      {kInches, 2, {6, 1, 4}, 6.25},
        {kInches, 2, {-6, 1, 4}, -6.25},   {kInches, 2, {-0.0, 1, 4}, 0.25},
    };
    for (const auto& row : rows) {
        SymbolList list;
        PushNumbers(list, row.numbers);
        list.PushBackNew<NumberSymbol>(99.0, 0u);  // not read: it stays
        ASSERT_EQ(Pattern(row.symbol)->ParsePart(list, row.form), ErrorCode::Success)
            << std::hex << row.symbol << std::dec << " form " << row.form;
        ASSERT_EQ(list.size(), 2u);
        const auto* result = dynamic_cast<const ResultSymbol*>(list.begin().symbol());
        ASSERT_NE(result, nullptr);
        const UnitConverter& unit = *UnitTable::Instance().FindConverter(row.symbol);
        EXPECT_DOUBLE_EQ(result->Value(), row.total * unit.GetFactor()) << row.total;
        EXPECT_EQ(result->GetConverter().GetDimensions(), unit.GetDimensions());
        EXPECT_EQ(list.begin().next().symbol()->AsNumber()->value, 99.0);
    }
}

TEST(FeetInchesSymbol, ReadingRefusals) {
    const struct {
        int symbol;
        int form;
        std::vector<double> numbers;
    } rows[] = {
        {kPlain, 1, {5, 1, 4}},      // no such form
        {kPlain, 0, {5}},            // too few numbers
        {kFraction, 2, {5, 6, 1}},   // too few numbers
        {kFraction, 1, {5, 1, 0}},   // a zero divisor
        {kBoth, 2, {5, 6, 1, 0}},    // a zero divisor
        {kInches, 1, {1, 0}},        // "1/0" is no infinite value
        {kInches, 2, {6, 1, 0}},     // a zero divisor
        {kInches, 3, {6, 1, 4, 2}},  // no such form
        {kInches, -1, {6}},          // no such form
    };
    for (const auto& row : rows) {
        SymbolList list;
        PushNumbers(list, row.numbers);
        EXPECT_NE(Pattern(row.symbol)->ParsePart(list, row.form), ErrorCode::Success)
            << std::hex << row.symbol << std::dec << " form " << row.form;
        EXPECT_EQ(list.size(), row.numbers.size());  // nothing changed
    }
    // An element of another kind where a number must stand.
    SymbolList list;
    list.PushBackNew<NumberSymbol>(5.0, 0u);
    list.PushBack(Pattern(kPlain));
    EXPECT_NE(Pattern(kPlain)->ParsePart(list, 0), ErrorCode::Success);
}

}  // namespace
}  // namespace Mensura
