// Degrees, minutes and seconds, and surveyor's bearings: the patterns that the
// decimal digits choose, rounding and carrying, the quadrants, the parts of a
// symbol string, and a decimal digits setting that stays as it was.
#include "notations/angles.h"

#include <gtest/gtest.h>

#include "base/ids.h"

#include <cmath>
#include <memory>
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

std::u16string Render(const NumberSettings& impl, double degrees, int symbol,
                      std::size_t size = 64) {
    std::vector<char16_t> buffer(size + 1, u'#');
    const ErrorCode result =
        FormatWith(impl, degrees, kDegree, buffer.data(), size, symbol, nullptr);
    if (result != ErrorCode::Success) return u"#" + std::u16string(1, u'0' + int(result));
    return buffer.data();
}

std::unique_ptr<NumberSettings> WithDigits(int digits) {
    auto impl = std::make_unique<NumberSettings>();
    EXPECT_EQ(impl->SetNumberDecimalDigits(digits), ErrorCode::Success);
    return impl;
}

TEST(DegreesSymbol, CatalogueHoldsTwoPatternsInBothLanguages) {
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
TEST(DegreesSymbol, DecimalDigitsChooseThePattern) {
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
    };
    const double angles[] = {45.5, -45.51, 0, -0.5};
    for (const auto& row : rows) {
        const auto impl = WithDigits(row.digits);
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(Render(*impl, angles[i], kAngle), row.texts[i])
                << angles[i] << " with d = " << row.digits;
        }
    }
}

TEST(DegreesSymbol, RoundingCarriesThroughEveryUnit) {
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
        EXPECT_EQ(Render(*WithDigits(row.digits), row.degrees, kAngle), row.text)
            << row.degrees << " with d = " << row.digits;
    }
}

TEST(DegreesSymbol, EveryNumberTakesTheNumberSettings) {
    NumberSettings impl;
    impl.SetPositiveSign(u"+");
    EXPECT_EQ(Render(impl, 45.51, kAngle), u"+45°+31′");
    NumberSettings comma;
    ASSERT_EQ(comma.SetNumberDecimalDigits(6), ErrorCode::Success);
    ASSERT_EQ(comma.SetNumberDecimalSeparator(u","), ErrorCode::Success);
    EXPECT_EQ(Render(comma, -45.51, kAngle), u"-45°30′36,00″");
}

TEST(DegreesSymbol, BearingsByQuadrant) {
    const struct {
        double degrees;
        const char16_t* text;
    } rows[] = {
        {0, u"E"},
        {360, u"E"},
        {90, u"N"},
        {450, u"N"},
        {-90, u"S"},
        {270, u"S"},
        {180, u"W"},
        {-180, u"W"},
        {30, u"N 60°0′ E"},
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
    const NumberSettings impl;
    for (const auto& row : rows) {
        EXPECT_EQ(Render(impl, row.degrees, kBearing), row.text) << row.degrees;
    }
    EXPECT_EQ(Render(*WithDigits(0), 30.25, kBearing), u"N 60° E");
    EXPECT_EQ(Render(*WithDigits(5), 30.25, kBearing), u"N 59°45′0.0″ E");
}

TEST(DegreesSymbol, TheBufferMustHoldTheTextAndItsTerminator) {
    const struct {
        int digits;
        double degrees;
        int symbol;
        const char16_t* text;
    } rows[] = {{2, 30.25, kBearing, u"N 59°45′ E"},
                {5, 30.25, kBearing, u"N 59°45′0.0″ E"},
                {2, 90, kBearing, u"N"},
                {2, 45.5, kAngle, u"45°30′"},
                {6, -45.51, kAngle, u"-45°30′36.00″"}};
    for (const auto& row : rows) {
        const auto impl = WithDigits(row.digits);
        const std::size_t size = std::u16string(row.text).size() + 1;
        EXPECT_EQ(Render(*impl, row.degrees, row.symbol, size), row.text);
        for (std::size_t less = 1; less < size; ++less) {
            EXPECT_EQ(Render(*impl, row.degrees, row.symbol, less), u"#1")
                << Narrow(row.text) << " in " << less;
        }
    }
    const NumberSettings impl;
    char16_t buffer[16];
    EXPECT_EQ(Pattern(kBearing)->Render(0.0, Dimensions{}, nullptr, 16, impl).code,
              ErrorCode::Failure);
    EXPECT_EQ(Pattern(kAngle)->Render(0.0, Dimensions{1}, buffer, 16, impl).code,
              ErrorCode::UnitMismatch);
    EXPECT_EQ(Pattern(kBearing)->Render(0.0, Dimensions{1}, buffer, 16, impl).code,
              ErrorCode::UnitMismatch);
}

// Six decimals on the seconds come from a decimal digits setting of 10; the
// setting itself is passed by, never changed, also when a rendering fails.
TEST(DegreesSymbol, TheDecimalDigitsSettingStaysAsItWas) {
    NumberSettings impl;
    ASSERT_EQ(impl.SetNumberDecimalDigits(10), ErrorCode::Success);
    EXPECT_EQ(Render(impl, -45.51, kAngle), u"-45°30′36.000000″");
    EXPECT_EQ(impl.GetNumberDecimalDigits(), 10);
    EXPECT_EQ(Render(impl, 30.25, kBearing), u"N 59°45′0.000000″ E");
    EXPECT_EQ(impl.GetNumberDecimalDigits(), 10);
    // Failing at the seconds, and failing behind them at the closing letter.
    EXPECT_EQ(Render(impl, 30.25, kBearing, 10), u"#1");
    EXPECT_EQ(Render(impl, 30.25, kBearing, 19), u"#1");
    EXPECT_EQ(Render(impl, -45.51, kAngle, 12), u"#1");
    EXPECT_EQ(impl.GetNumberDecimalDigits(), 10);
    char16_t part[32];
    EXPECT_EQ(Pattern(kAngle)->RenderPart(2, 1.0, Dimensions{}, part, 3, impl).code,
              ErrorCode::Failure);
    EXPECT_EQ(impl.GetNumberDecimalDigits(), 10);
    // Plain numbers go on with ten decimals.
    char16_t buffer[32];
    ASSERT_EQ(FormatWith(impl, 1.5, kMeter, buffer, 32, 0x202001, nullptr), ErrorCode::Success);
    EXPECT_EQ(std::u16string(buffer), u"1.5000000000 m");
}

TEST(DegreesSymbol, ConvertedIsThePlainAngle) {
    const NumberSettings impl;
    char16_t buffer[32];
    double converted = 0.0;
    ASSERT_EQ(FormatWith(impl, 200, kDegree, buffer, 32, kBearing, &converted), ErrorCode::Success);
    EXPECT_EQ(converted, 200.0);
    // A right angle given in radians.
    ASSERT_EQ(FormatWith(impl, std::acos(0.0), kRadian, buffer, 32, kAngle, &converted),
              ErrorCode::Success);
    EXPECT_EQ(std::u16string(buffer), u"90°0′");
    EXPECT_DOUBLE_EQ(converted, 90.0);
}

// Degrees are part 0, minutes 1, seconds 2; parts beyond the pattern show 0.
TEST(DegreesSymbol, PartsByDecimalDigits) {
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
        const auto impl = WithDigits(row.digits);
        for (int part = 0; part < 3; ++part) {
            char16_t buffer[32];
            const Result result = Pattern(kAngle)->RenderPart(part, row.degrees * degree,
                                                              Dimensions{}, buffer, 32, *impl);
            const std::u16string text(row.parts[part]);
            ASSERT_TRUE(result.Ok()) << row.degrees << " part " << part;
            ASSERT_EQ(result.length, text.size())
                << row.degrees << " part " << part << " with d = " << row.digits;
            EXPECT_EQ(std::u16string(buffer, text.size()), text);
        }
    }
    const NumberSettings impl;
    char16_t buffer[32];
    for (int part : {-1, 3}) {
        EXPECT_EQ(Pattern(kAngle)->RenderPart(part, 1.0, Dimensions{}, buffer, 32, impl).code,
                  ErrorCode::Failure);
    }
    for (int part : {0, 1, 2}) {
        EXPECT_EQ(Pattern(kBearing)->RenderPart(part, 1.0, Dimensions{}, buffer, 32, impl).code,
                  ErrorCode::Failure);
    }
    EXPECT_EQ(Pattern(kAngle)->RenderPart(0, 1.0, Dimensions{0, 0, 1}, buffer, 32, impl).code,
              ErrorCode::UnitMismatch);
    EXPECT_EQ(Pattern(kAngle)->LastPartIndex(0), 2);
    EXPECT_EQ(Pattern(kBearing)->LastPartIndex(0), 2);
    EXPECT_EQ(Pattern(kAngle)->LastPartIndex(1), -1);
}

TEST(DegreesSymbol, ThreeNumbersReadAsOneAngle) {
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
