// Feet and inches, minutes and seconds of time: the six patterns of the
// catalogue, their renderings at several decimal digits, their parts, the
// forms in which a symbol string reads them, and the numbers of each form.
#include "notations/feet_inches.h"

#include <gtest/gtest.h>

#include "base/ids.h"

#include <algorithm>
#include <iterator>
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

const PrimeDoublePrimeSymbol* Pattern(int id, int language = 0) {
    const ISymbol* symbol = UnitCatalog::Instance().FindSymbol(id, language);
    return dynamic_cast<const PrimeDoublePrimeSymbol*>(symbol);
}

// Format through the driver; the text on success, else "#" and the code.
std::u16string Render(const NumberSettings& impl, double value, int symbol, int unit = kInch,
                      std::size_t size = 64) {
    std::vector<char16_t> buffer(size + 1, u'#');
    const ErrorCode result = FormatWith(impl, value, unit, buffer.data(), size, symbol, nullptr);
    if (result != ErrorCode::Success) return u"#" + std::u16string(1, u'0' + int(result));
    return buffer.data();
}

TEST(FeetInchesSymbol, CatalogueHoldsSixPatternsInBothLanguages) {
    const struct {
        int id;
        const char16_t* text;
    } rows[] = {{kPlain, u"x′x″"},     {kDash, u"x′–x″"},    {kFraction, u"x′x x/2″"},
                {kBoth, u"x′–x x/2″"}, {kInches, u"x x/2″"}, {kMinutes, u"x′x″"}};
    for (int language = 0; language < 2; ++language) {
        for (const auto& row : rows) {
            const PrimeDoublePrimeSymbol* symbol = Pattern(row.id, language);
            ASSERT_NE(symbol, nullptr) << std::hex << row.id;
            EXPECT_EQ(symbol->SymbolId(), row.id);
            EXPECT_EQ(symbol->Unit(), row.id & 0xFFFFF);
            EXPECT_EQ(symbol->Flags(), 0u);
            EXPECT_EQ(std::u16string(symbol->GetText()), row.text);
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
            EXPECT_EQ(Render(impl, row.inches, symbols[i]), row.texts[i])
                << row.inches << " under " << std::hex << symbols[i];
        }
    }
}

TEST(FeetInchesSymbol, DecimalDigitsChooseTheFinestFraction) {
    NumberSettings impl;
    ASSERT_EQ(impl.SetNumberDecimalDigits(4), ErrorCode::Success);  // sixteenths
    const struct {
        double inches;
        const char16_t* text;
    } sixteenths[] = {{66.0625, u"5′6 1/16″"},
                      {66.25, u"5′6 1/4″"},
                      {66.5, u"5′6 1/2″"},
                      {66.75, u"5′6 3/4″"},
                      {66.03, u"5′6″"}};
    for (const auto& row : sixteenths) {
        EXPECT_EQ(Render(impl, row.inches, kFraction), row.text) << row.inches;
    }
    // With d = 0 there is no fraction: the fraction pattern rounds to whole
    // inches before the split, the decimal one rounds the inches alone.
    ASSERT_EQ(impl.SetNumberDecimalDigits(0), ErrorCode::Success);
    EXPECT_EQ(Render(impl, 71.6, kFraction), u"6′0″");
    EXPECT_EQ(Render(impl, 71.6, kPlain), u"5′12″");
    EXPECT_EQ(Render(impl, 66.25, kFraction), u"5′6″");
}

TEST(FeetInchesSymbol, EveryNumberTakesTheNumberSettings) {
    NumberSettings impl;
    impl.SetPositiveSign(u"+");
    EXPECT_EQ(Render(impl, 66.25, kFraction), u"+5′+6 +1/+4″");
    NumberSettings other;
    ASSERT_EQ(other.SetNumberDecimalSeparator(u","), ErrorCode::Success);
    ASSERT_EQ(other.SetNumberGroupSeparator(u"."), ErrorCode::Success);
    EXPECT_EQ(Render(other, 12003.5, kPlain), u"1.000′3,50″");
    other.SetNegativeSign(u"neg ");
    EXPECT_EQ(Render(other, -6, kFraction), u"neg 0′6″");
}

TEST(FeetInchesSymbol, MinutesAndSecondsCountSixty) {
    const NumberSettings impl;
    EXPECT_EQ(Render(impl, 330, kMinutes, kSecond), u"5′30.00″");
    EXPECT_EQ(Render(impl, 3725, kMinutes, kSecond), u"62′5.00″");
    EXPECT_EQ(Render(impl, -90, kMinutes, kSecond), u"-1′30.00″");
    EXPECT_EQ(Render(impl, 1.5, kMinutes, kMinute), u"1′30.00″");  // 1.5 minutes
}

TEST(FeetInchesSymbol, ANegativeValueThatRoundsToNothing) {
    const NumberSettings impl;
    EXPECT_EQ(Render(impl, -0.1, kFraction), u"-0′0″");  // the large number keeps the sign
    EXPECT_EQ(Render(impl, -0.1, kInches), u"0″");       // no large number, no sign
}

TEST(FeetInchesSymbol, ConvertedIsTheWholeValueInTheUnit) {
    const NumberSettings impl;
    char16_t buffer[32];
    double converted = 0.0;
    ASSERT_EQ(FormatWith(impl, 66, kInch, buffer, 32, kFraction, &converted), ErrorCode::Success);
    EXPECT_EQ(converted, 66.0);
    ASSERT_EQ(FormatWith(impl, 1.0, kMeter, buffer, 32, kPlain, &converted), ErrorCode::Success);
    EXPECT_EQ(std::u16string(buffer), u"3′3.37″");  // 1 m is 39.3700787... inches
    EXPECT_DOUBLE_EQ(converted, 1.0 / 0.0254);
    ASSERT_EQ(FormatWith(impl, 3725, kSecond, buffer, 32, kMinutes, &converted),
              ErrorCode::Success);
    EXPECT_EQ(converted, 3725.0);
}

TEST(FeetInchesSymbol, TheBufferMustHoldTheTextAndItsTerminator) {
    const NumberSettings impl;
    const struct {
        double inches;
        int symbol;
        const char16_t* text;
    } rows[] = {{66.25, kFraction, u"5′6 1/4″"},
                {66.25, kBoth, u"5′–6 1/4″"},
                {66, kPlain, u"5′6.00″"},
                {66.25, kInches, u"66 1/4″"}};
    for (const auto& row : rows) {
        const std::size_t size = std::u16string(row.text).size() + 1;
        EXPECT_EQ(Render(impl, row.inches, row.symbol, kInch, size), row.text);
        for (std::size_t less = 1; less < size; ++less) {
            EXPECT_EQ(Render(impl, row.inches, row.symbol, kInch, less), u"#1")
                << Narrow(row.text) << " in " << less;
        }
    }
    char16_t buffer[16];
    EXPECT_EQ(Pattern(kFraction)->Render(1.0, Dimensions{1}, nullptr, 16, impl).code,
              ErrorCode::Failure);
    // A mass is no length.
    EXPECT_EQ(Pattern(kFraction)->Render(1.0, Dimensions{0, 1}, buffer, 16, impl).code,
              ErrorCode::UnitMismatch);
    EXPECT_EQ(Render(impl, 1.0, kFraction, kKilogram), u"#4");
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
        std::fill(std::begin(buffer), std::end(buffer), u'#');
        const Result result =
            Pattern(row.symbol)
                ->RenderPart(row.part, row.inches * inch, Dimensions{1}, buffer, 32, impl);
        const std::u16string text(row.text);
        ASSERT_TRUE(result.Ok()) << Narrow(text) << " part " << row.part;
        ASSERT_EQ(result.length, text.size()) << Narrow(text) << " part " << row.part;
        EXPECT_EQ(std::u16string(buffer, text.size()), text) << row.inches;
    }
}

TEST(FeetInchesSymbol, LastPartIndexByPatternAndForm) {
    const struct {
        int symbol;
        int forms[5];  // forms 0, 1, 2, 3, -1
    } rows[] = {{kPlain, {1, -1, -1, -1, -1}},   {kDash, {1, -1, -1, -1, -1}},
                {kMinutes, {1, -1, -1, -1, -1}}, {kFraction, {1, 2, 3, -1, -1}},
                {kBoth, {1, 2, 3, -1, -1}},      {kInches, {0, 1, 2, -1, -1}}};
    for (const auto& row : rows) {
        const int forms[5] = {0, 1, 2, 3, -1};
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(Pattern(row.symbol)->LastPartIndex(forms[i]), row.forms[i])
                << std::hex << row.symbol << " form " << forms[i];
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
    for (const char16_t* text : {u"{0} ft", u"{0} {1} {2}", u"{0} {2}", u"{1} {1}", u"ft"}) {
        SymbolStringParts parts;
        ASSERT_TRUE(SplitSymbolString(text, parts));
        for (int symbol : {kPlain, kFraction, kMinutes}) {
            CustomSymbolList out;
            out.push_back(nullptr);  // cleared first
            EXPECT_EQ(Pattern(symbol)->MakeCustomSymbols(out, parts.literals, parts.indices),
                      ErrorCode::Failure)
                << Narrow(text);
            EXPECT_TRUE(out.empty());
        }
    }
    SymbolStringParts two;
    ASSERT_TRUE(SplitSymbolString(u"{0} {1}", two));
    CustomSymbolList out;
    EXPECT_EQ(Pattern(kInches)->MakeCustomSymbols(out, two.literals, two.indices),
              ErrorCode::Failure);
    EXPECT_TRUE(out.empty());
}

// The numbers of each form, in part order, into one result in base units.
TEST(FeetInchesSymbol, EachFormReadsItsNumbers) {
    const struct {
        int symbol;
        int form;
        std::vector<double> numbers;
        double total;  // in inches or seconds
    } rows[] = {
        {kPlain, 0, {5, 6}, 66},
        {kPlain, 0, {-5, 6}, -66},
        {kPlain, 0, {5, -6}, 66},   // the small number's sign plays no part
        {kPlain, 0, {-0.0, 6}, 6},  // a negative zero counts as plus
        {kDash, 0, {1, 0.5}, 12.5},
        {kMinutes, 0, {5, 30}, 330},
        {kMinutes, 0, {-1, 30}, -90},
        {kFraction, 0, {5, 6.25}, 66.25},
        {kFraction, 1, {5, 1, 4}, 60.25},
        {kFraction, 1, {-5, 1, 4}, -60.25},
        {kBoth, 2, {5, 6, 1, 4}, 66.25},
        {kBoth, 2, {-5, 6, 1, 4}, -66.25},
        {kFraction, 2, {5, -6, 1, 4}, 65.75},  // |1/4 + -6|
        {kInches, 0, {66.25}, 66.25},
        {kInches, 0, {-3}, -3},
        {kInches, 1, {1, 4}, 0.25},
        {kInches, 1, {-3, 4}, -0.75},
        {kInches, 2, {6, 1, 4}, 6.25},
        {kInches, 2, {-6, 1, 4}, -6.25},
        {kInches, 2, {-0.0, 1, 4}, 0.25},
    };
    for (const auto& row : rows) {
        SymbolList list;
        for (double number : row.numbers) list.PushBackNew<NumberSymbol>(number, 0u);
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
        for (double number : row.numbers) list.PushBackNew<NumberSymbol>(number, 0u);
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
