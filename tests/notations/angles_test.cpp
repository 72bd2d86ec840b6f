// Degrees, minutes and seconds, and surveyor's bearings: the patterns that the
// decimal digits choose, rounding and carrying, the quadrants, the parts of a
// symbol string, and a decimal digits setting that stays as it was.
#include "notations/angles.h"

#include <gtest/gtest.h>

#include "base/ids.h"

#include <cmath>
#include <string>
#include <vector>

#include "catalogue/unit_catalog.h"
#include "support/format_with.h"
#include "support/narrow.h"

namespace Mensura {
namespace {

using MensuraTest::FormatWith;
using MensuraTest::Narrow;

constexpr int kAngle = 0x408002;    // x°x′x″
constexpr int kBearing = 0x508002;  // N x°x′x″ E

const DegreePrimeDoublePrimeSymbol* Pattern(int id, int language = 0) {
    const ISymbol* symbol = UnitCatalog::Instance().FindSymbol(id, language);
    return dynamic_cast<const DegreePrimeDoublePrimeSymbol*>(symbol);
}

// Number settings with 0 to 10 decimal digits.
class DegreesSymbol : public ::testing::Test {
protected:
    void SetUp() override {
        for (int d = 0; d <= 10; ++d) {
            ASSERT_EQ(digits[d].SetNumberDecimalDigits(d), ErrorCode::Success);
        }
    }
    std::u16string Render(int d, double degrees, int symbol = kAngle, std::size_t size = 64) {
        return FormatWith(digits[d], degrees, kDegree, symbol, size);
    }
    NumberSettings digits[11];
};

TEST_F(DegreesSymbol, CatalogueHoldsTwoPatternsInBothLanguages) {
    for (int language = 0; language < 2; ++language) {
        ASSERT_NE(Pattern(kAngle, language), nullptr);
        ASSERT_NE(Pattern(kBearing, language), nullptr);
        EXPECT_FALSE(Pattern(kAngle, language)->IsBearing());
        EXPECT_TRUE(Pattern(kBearing, language)->IsBearing());
        EXPECT_EQ(Pattern(kAngle, language)->Unit(), kDegree);
        EXPECT_EQ(std::u16string(Pattern(kAngle, language)->GetText()), u"x°x′x″");
        EXPECT_EQ(std::u16string(Pattern(kBearing, language)->GetText()), u"N x°x′x″ E");
    }
}

// The table of the decimal digits against four angles.
TEST_F(DegreesSymbol, DecimalDigitsChooseThePattern) {
    const struct {
        int digits;
        const char16_t* texts[4];  // 45.5, -45.51, 0, -0.5
    } rows[] = {
        {0, {u"46°", u"-46°", u"0°", u"-1°"}},
        {1, {u"45°30′", u"-45°31′", u"0°0′", u"-0°30′"}},
        {2, {u"45°30′", u"-45°31′", u"0°0′", u"-0°30′"}},
        {3, {u"45°30′0″", u"-45°30′36″", u"0°0′0″", u"-0°30′0″"}},
        {4, {u"45°30′0″", u"-45°30′36″", u"0°0′0″", u"-0°30′0″"}},
        {5, {u"45°30′0.0″", u"-45°30′36.0″", u"0°0′0.0″", u"-0°30′0.0″"}},
        {6, {u"45°30′0.00″", u"-45°30′36.00″", u"0°0′0.00″", u"-0°30′0.00″"}},
        // Six decimals on the seconds.
        {10, {u"45°30′0.000000″", u"-45°30′36.000000″", u"0°0′0.000000″", u"-0°30′0.000000″"}},
    };
    const double angles[] = {45.5, -45.51, 0, -0.5};
    for (const auto& row : rows) {
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(Render(row.digits, angles[i]), row.texts[i])
                << angles[i] << " with d = " << row.digits;
        }
    }
}

TEST_F(DegreesSymbol, RoundingCarriesThroughEveryUnit) {
    const struct {
        int digits;
        double degrees;
        const char16_t* text;
    } rows[] = {
        {2, 59.9999, u"60°0′"},
        {3, 59.9999, u"60°0′0″"},
        {2, -1.99999, u"-2°0′"},  // a negative carry goes away from zero
        {0, -5.6, u"-6°"},
        {0, 5.4, u"5°"},
        {3, 10.999999, u"11°0′0″"},
        {3, 10.1249, u"10°7′30″"},       // 29.64″ comes out whole
        {5, 10.99999999, u"11°0′0.0″"},  // 59.99996″ carries at one decimal
        {6, 10.50001, u"10°30′0.04″"},   // 0.036″ at two decimals
        {5, -0.0000001, u"-0°0′0.0″"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Render(row.digits, row.degrees), row.text)
            << row.degrees << " with d = " << row.digits;
    }
}

TEST_F(DegreesSymbol, EveryNumberTakesTheNumberSettingsAndAnyUnitOfAngle) {
    EXPECT_EQ(FormatWith(digits[2], std::acos(0.0), kRadian, kAngle), u"90°0′");  // a right angle
    NumberSettings& plus = digits[2];
    plus.SetPositiveSign(u"+");
    EXPECT_EQ(FormatWith(plus, 45.51, kDegree, kAngle), u"+45°+31′");
    NumberSettings& comma = digits[6];
    ASSERT_EQ(comma.SetNumberDecimalSeparator(u","), ErrorCode::Success);
    EXPECT_EQ(FormatWith(comma, -45.51, kDegree, kAngle), u"-45°30′36,00″");
}

TEST_F(DegreesSymbol, BearingsByQuadrant) {
    const struct {
        double degrees;
        const char16_t* text;
    } rows[] = {
        {0, u"E"},
        {90, u"N"},
        {450, u"N"},
        {-90, u"S"},
        {270, u"S"},
        {180, u"W"},
        {-180, u"W"},
        {30.25, u"N 59°45′ E"},
        {120, u"N 30°0′ W"},
        {-30, u"S 60°0′ E"},
        {-120, u"S 30°0′ W"},
        {200, u"S 70°0′ W"},
        {89.99999999, u"N 0°0′ E"},
        {-720, u"E"},
        {-0.0, u"E"},
        {390.25, u"N 59°45′ E"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Render(2, row.degrees, kBearing), row.text) << row.degrees;
    }
    EXPECT_EQ(Render(0, 30.25, kBearing), u"N 60° E");
    EXPECT_EQ(Render(5, 30.25, kBearing), u"N 59°45′0.0″ E");
    EXPECT_EQ(Render(10, 30.25, kBearing), u"N 59°45′0.000000″ E");
}

// Six decimals on the seconds come from a decimal digits setting of 10; the
// setting itself is passed by, never changed, also when a rendering fails at
// the seconds, behind them at the closing letter, or in a part.
TEST_F(DegreesSymbol, TheDecimalDigitsSettingStaysAsItWas) {
    EXPECT_EQ(Render(10, 30.25, kBearing, 10), u"#1");
    EXPECT_EQ(Render(10, 30.25, kBearing, 19), u"#1");
    EXPECT_EQ(Render(10, -45.51, kAngle, 12), u"#1");
    char16_t part[32];
    EXPECT_EQ(Pattern(kAngle)->RenderPart(2, 1.0, Dimensions{}, part, 3, digits[10]).code,
              ErrorCode::Failure);
    EXPECT_EQ(digits[10].GetNumberDecimalDigits(), 10);
    // Plain numbers go on with ten decimals.
    EXPECT_EQ(FormatWith(digits[10], 1.5, kMeter, 0x202001), u"1.5000000000 m");
}

// Degrees are part 0, minutes 1, seconds 2; parts beyond the pattern show 0.
TEST_F(DegreesSymbol, PartsByDecimalDigits) {
    const struct {
        int digits;
        double degrees;
        const char16_t* parts[3];
    } rows[] = {
        {0, 45.5, {u"46", u"0", u"0"}},      {2, 45.5, {u"45", u"30", u"0"}},
        {2, -45.51, {u"-45", u"31", u"0"}},  {2, -0.5, {u"-0", u"30", u"0"}},
        {3, -45.51, {u"-45", u"30", u"36"}}, {5, -45.51, {u"-45", u"30", u"36.0"}},
        {6, 45.5, {u"45", u"30", u"0.00"}},
    };
    const double degree = UnitTable::Instance().FindConverter(kDegree)->GetFactor();
    for (const auto& row : rows) {
        for (int part = 0; part < 3; ++part) {
            char16_t buffer[32];
            const Result result = Pattern(kAngle)->RenderPart(
                part, row.degrees * degree, Dimensions{}, buffer, 32, digits[row.digits]);
            const std::u16string text(row.parts[part]);
            ASSERT_TRUE(result.Ok()) << row.degrees << " part " << part;
            ASSERT_EQ(result.length, text.size())
                << row.degrees << " part " << part << " with d = " << row.digits;
            EXPECT_EQ(std::u16string(buffer, text.size()), text);
        }
    }
    const auto fails = [&](int symbol, int part, const Dimensions& dims) {
        char16_t buffer[32];
        return Pattern(symbol)->RenderPart(part, 1.0, dims, buffer, 32, digits[2]).code;
    };
    for (int part : {-1, 3}) EXPECT_EQ(fails(kAngle, part, Dimensions{}), ErrorCode::Failure);
    for (int part : {0, 1, 2}) EXPECT_EQ(fails(kBearing, part, Dimensions{}), ErrorCode::Failure);
    EXPECT_EQ(fails(kAngle, 0, Dimensions{0, 0, 1}), ErrorCode::UnitMismatch);
    EXPECT_EQ(Pattern(kAngle)->LastPartIndex(0), 2);
    EXPECT_EQ(Pattern(kBearing)->LastPartIndex(0), 2);
    EXPECT_EQ(Pattern(kAngle)->LastPartIndex(1), -1);
}

TEST_F(DegreesSymbol, ThreeNumbersReadAsOneAngle) {
    const struct {
        std::vector<double> numbers;
        double degrees;
    } rows[] = {
        {{45, 30, 36}, 30 / 60.0 + 45 + 36 / 3600.0},
        {{-45, 30, 36}, -45 - 30 / 60.0 - 36 / 3600.0},
        {{-45, -30, -36}, -45 - 30 / 60.0 - 36 / 3600.0},
        {{45, -30, 0}, 45.5},
        {{-0.0, 30, 0}, 0.5},  // a negative zero counts as plus
        {{0, 0, 90}, 0.025},
    };
    const UnitConverter& degree = *UnitTable::Instance().FindConverter(kDegree);
    for (const auto& row : rows) {
        SymbolList list;
        for (double number : row.numbers) list.PushBackNew<NumberSymbol>(number, 0u);
        list.PushBackNew<NumberSymbol>(7.0, 0u);
        ASSERT_EQ(Pattern(kBearing)->ParsePart(list, 0), ErrorCode::Success) << row.degrees;
        ASSERT_EQ(list.size(), 2u);
        const auto* result = dynamic_cast<const ResultSymbol*>(list.begin().symbol());
        ASSERT_NE(result, nullptr);
        EXPECT_DOUBLE_EQ(result->Value(), row.degrees * degree.GetFactor()) << row.degrees;
        EXPECT_EQ(list.begin().next().symbol()->AsNumber()->value, 7.0);
    }
    SymbolList two;
    two.PushBackNew<NumberSymbol>(1.0, 0u);
    two.PushBackNew<NumberSymbol>(2.0, 0u);
    EXPECT_NE(Pattern(kAngle)->ParsePart(two, 0), ErrorCode::Success);
    two.PushBack(Pattern(kAngle));
    EXPECT_NE(Pattern(kAngle)->ParsePart(two, 0), ErrorCode::Success);  // the third is no number
    two.Erase(two.begin().next().next());
    two.PushBackNew<NumberSymbol>(3.0, 0u);
    EXPECT_NE(Pattern(kAngle)->ParsePart(two, 1), ErrorCode::Success);
    EXPECT_EQ(Pattern(kAngle)->ParsePart(two, 0), ErrorCode::Success);
}

}  // namespace
}  // namespace Mensura
