// One double as text by a formatter's number settings: styles, grouping from
// the decimal point, translated signs and digits, the mode bits, and the
// capacity rules. Expected texts are those of the C conversions "%+.*f",
// "%+.*E" and "%+.*G" in the C locale, translated by hand.
#include "numbers/number_settings.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace Mensura {
namespace {

constexpr char16_t kUntouched = 0xFFFF;

struct Rendered {
    Result result;
    std::u16string text;
};

// Renders into a buffer of `capacity` units and checks that nothing is
// written behind the capacity, nor, on success, at or behind the length,
// where the caller goes on.
Rendered Render(const NumberSettings& impl, double value, unsigned mode = 0,
                std::size_t capacity = 32) {
    std::vector<char16_t> buffer(capacity + 8, kUntouched);
    const Result result = impl.RenderNumber(value, buffer.data(), capacity, mode);
    const std::size_t end = result.Ok() ? result.length : capacity;
    for (std::size_t i = end; i < buffer.size(); ++i) {
        EXPECT_EQ(buffer[i], kUntouched) << "written at " << i << " of " << capacity;
    }
    if (!result.Ok()) return {result, u""};
    return {result, std::u16string(buffer.data(), end)};
}

// A change to default settings, for a row of a table.
using Change = std::function<void(NumberSettings&)>;

Change Sizes(std::vector<int> sizes) {
    return [sizes](NumberSettings& f) {
        ASSERT_EQ(f.SetNumberGroupSizes(sizes.data(), static_cast<int>(sizes.size())),
                  ErrorCode::Success);
    };
}
Change Style(NumberFormat format) {
    return [format](NumberSettings& f) { f.SetNumber(format); };
}
Change Digits(int digits) {
    return [digits](NumberSettings& f) {
        ASSERT_EQ(f.SetNumberDecimalDigits(digits), ErrorCode::Success);
    };
}
Change Signs(const char16_t* positive, const char16_t* negative = u"-") {
    return [positive, negative](NumberSettings& f) {
        f.SetPositiveSign(positive);
        f.SetNegativeSign(negative);
    };
}
Change Separators(const char16_t* group, const char16_t* point) {
    return [group, point](NumberSettings& f) {
        ASSERT_EQ(f.SetNumberGroupSeparator(group), ErrorCode::Success);
        ASSERT_EQ(f.SetNumberDecimalSeparator(point), ErrorCode::Success);
    };
}
Change Both(Change first, Change second) {
    return [first, second](NumberSettings& f) {
        first(f);
        second(f);
    };
}

TEST(RenderNumber, RowsBySettingsAndMode) {
    using RenderMode::SignOnZero;
    using RenderMode::WholeNumber;
    const Change defaults = [](NumberSettings&) {};
    const double infinity = std::numeric_limits<double>::infinity();
    char16_t arabic[11] = {};
    for (int d = 0; d < 10; ++d) arabic[d] = static_cast<char16_t>(0x0660 + d);
    const struct {
        double value;
        Change setup;
        unsigned mode;
        const char16_t* text;
    } rows[] = {
        // Worked examples.
        {1234567.891, defaults, 0, u"1,234,567.89"},
        {-1234.5, defaults, 0, u"-1,234.50"},
        {999.999, defaults, 0, u"1,000.00"},
        {123456, defaults, 0, u"123,456.00"},
        {0.0, defaults, 0, u"0.00"},
        {-0.0, defaults, 0, u"0.00"},
        {0.004, defaults, 0, u"0.00"},
        {-0.004, defaults, 0, u"-0.00"},
        {0.0, defaults, SignOnZero, u"-0.00"},
        {0.0, defaults, WholeNumber | SignOnZero, u"-0"},
        {1234567.891, defaults, WholeNumber, u"1,234,568"},
        {1234567.891, Sizes({3, 2}), 0, u"12,34,567.89"},
        {1234567.891, Sizes({3, 0}), 0, u"1234,567.89"},
        {1234567.891, Sizes({0}), 0, u"1234567.89"},
        {1234567.891, Style(NumberFormat::Fixed), 0, u"1234567.89"},
        {5.5, Signs(u"+"), 0, u"+5.50"},
        {0.0, Signs(u"+"), SignOnZero, u"-+0.00"},
        {1234.5, Separators(u" ", u","), 0, u"1 234,50"},
        // Grouping edges.
        {123, defaults, 0, u"123.00"},  // exactly one group: no separator in front
        {-123456, defaults, 0, u"-123,456.00"},
        {1234, Digits(0), 0, u"1,234"},
        {0.123456, Digits(6), 0, u"0.123456"},
        {1234567.891, Sizes({1, 2, 0}), 0, u"1234,56,7.89"},
        // The last size repeats: it does not start over at the first.
        {12345678901, Sizes({3, 2}), WholeNumber, u"12,34,56,78,901"},
        {12345678, Sizes({2}), WholeNumber, u"12,34,56,78"},
        {1234567, Separators(u"ab", u"."), 0, u"1ab234ab567.00"},
        // Signs, separators and digits are translated.
        {-5, Signs(u"", u"neg "), 0, u"neg 5.00"},
        {-5, Signs(u"", u""), 0, u"5.00"},
        {2.5, Separators(u",", u"<>"), 0, u"2<>50"},
        {1234.5, [&arabic](NumberSettings& f) { f.SetNativeDigits(arabic); }, 0,
         u"\u0661,\u0662\u0663\u0664.\u0665\u0660"},
        // 0.004 rounds to zero but is not zero: SignOnZero adds nothing.
        {0.004, defaults, SignOnZero, u"0.00"},
        // Other styles are never grouped; "+1.50E+03": the exponent's sign is
        // translated like any other.
        {1500, Style(NumberFormat::ScientificUpper), 0, u"1.50E03"},
        {-0.0015, Style(NumberFormat::ScientificLower), 0, u"-1.50e-03"},
        {1234567.891, Style(NumberFormat::GeneralUpper), 0, u"1.2E06"},
        {0.000123456, Style(NumberFormat::GeneralLower), 0, u"0.00012"},
        {1234567.891, Style(NumberFormat::GeneralLower), WholeNumber,
         u"1e06"},  // precision 0 counts as 1
        {1500, Both(Style(NumberFormat::ScientificUpper), Signs(u"p")), 0, u"p1.50Ep03"},
        // Values that are not finite walk like any other text.
        {infinity, defaults, 0, u"inf"},
        {-infinity, defaults, 0, u"-inf"},
        {std::nan(""), defaults, 0, u"nan"},
        {-infinity, Style(NumberFormat::ScientificUpper), 0, u"-INF"},
    };
    for (const auto& row : rows) {
        NumberSettings impl;
        row.setup(impl);
        const Rendered rendered = Render(impl, row.value, row.mode);
        EXPECT_EQ(rendered.text, row.text) << row.value << " mode " << row.mode;
        ASSERT_TRUE(rendered.result.Ok()) << row.value << " mode " << row.mode;
        EXPECT_EQ(rendered.result.length, std::u16string(row.text).size()) << row.value;
    }
}

TEST(RenderNumber, Failures) {
    NumberSettings impl;
    char16_t buffer[32];
    EXPECT_EQ(impl.RenderNumber(1.0, nullptr, 32, 0).code, ErrorCode::Failure);
    EXPECT_EQ(impl.RenderNumber(1.0, buffer, 0, 0).code, ErrorCode::Failure);
    for (double value : {0.0, 1.0, -1.0, 1e300}) {
        EXPECT_EQ(Render(impl, value, 0, 1).result.code, ErrorCode::Failure) << value;
    }
    for (int style : {6, -1, 9}) {
        NumberSettings odd;
        odd.SetNumber(static_cast<NumberFormat>(style));
        for (double value : {0.0, 1.0, -2.5})
            EXPECT_EQ(Render(odd, value).result.code, ErrorCode::Failure) << style;
    }
    // 1e300 needs room for all of its 301 digits, in either fixed style.
    EXPECT_EQ(Render(impl, 1e300).result.code, ErrorCode::Failure);
    impl.SetNumber(NumberFormat::Fixed);
    EXPECT_EQ(Render(impl, 1e300).result.code, ErrorCode::Failure);
    EXPECT_EQ(Render(impl, 1e300, 0, 305).result.code,
              ErrorCode::Failure);  // "+" 301 digits ".00" and terminator
    const Rendered huge = Render(impl, 1e300, 0, 306);
    EXPECT_EQ(huge.result.length, 304u);
    EXPECT_EQ(huge.text.substr(0, 18), u"100000000000000005");  // the double's exact digits
}

TEST(RenderNumber, CapacityCountsTheDroppedPlusAndATerminator) {
    NumberSettings impl;
    EXPECT_EQ(Render(impl, 1.0, 0, 4).result.code, ErrorCode::Failure);
    EXPECT_EQ(Render(impl, 1.0, 0, 5).result.code, ErrorCode::Failure);
    EXPECT_EQ(Render(impl, 1.0, 0, 6).text, u"1.00");
    EXPECT_EQ(Render(impl, -1.0, 0, 6).text, u"-1.00");
    // The output may outgrow the printed text: caught while it is written.
    // Every unit of the printed text, the dropped plus too, needs a free
    // place when its turn comes, so 16 units of output need a capacity of 17.
    ASSERT_EQ(impl.SetNumberGroupSeparator(u"abc"), ErrorCode::Success);
    EXPECT_EQ(Render(impl, 1234567.891, 0, 15).result.code,
              ErrorCode::Failure);  // "+1234567.89" fits, the output not
    EXPECT_EQ(Render(impl, 1234567.891, 0, 16).result.code, ErrorCode::Failure);
    EXPECT_EQ(Render(impl, 1234567.891, 0, 17).text, u"1abc234abc567.89");
    // SignOnZero needs one unit more than the number.
    NumberSettings plain;
    EXPECT_EQ(Render(plain, 0.0, RenderMode::WholeNumber | RenderMode::SignOnZero, 3).text, u"-0");
    plain.SetNegativeSign(u"neg");
    EXPECT_EQ(Render(plain, 0.0, RenderMode::WholeNumber | RenderMode::SignOnZero, 3).result.code,
              ErrorCode::Failure);
    EXPECT_EQ(Render(plain, 0.0, RenderMode::WholeNumber | RenderMode::SignOnZero, 4).text,
              u"neg0");
}

// The fixed styles round from the exact binary value, as "%+.*f" does: a tie
// goes to the even digit only where the double lies exactly half way, a
// carry runs into the whole digits, and tiny, subnormal and huge values keep
// their exact digits, on both sides of 1e19 and of 19 decimals.
TEST(RenderNumber, FixedAgreesWithTheCConversion) {
    NumberSettings impl;
    impl.SetNumber(NumberFormat::Fixed);
    impl.SetPositiveSign(u"+");
    std::vector<double> values = {0.5,
                                  1.5,
                                  2.5,
                                  0.125,
                                  0.375,
                                  0.005,
                                  0.015,
                                  1.005,
                                  9.995,
                                  99.995,
                                  0.1,
                                  123456.785,
                                  4503599627370495.5,
                                  9007199254740993.0,
                                  9999999999999998976.0,
                                  1e19,
                                  5e-324,
                                  2.2250738585072014e-308,
                                  1e-300,
                                  0.999999999999999999};
    std::mt19937_64 random(20261123);
    std::uniform_real_distribution<double> exponent(-25.0, 19.5);
    for (int i = 0; i < 1500; ++i) {
        values.push_back(std::pow(10.0, exponent(random)));
        // Binary fractions, which tie at some number of decimals.
        values.push_back(std::ldexp(static_cast<double>(random() % 1000000), -int(random() % 24)));
    }
    char16_t buffer[80];
    for (const double magnitude : values) {
        for (const double value : {magnitude, -magnitude}) {
            for (int decimals = 0; decimals <= 20; ++decimals) {
                char expected[80];
                std::snprintf(expected, sizeof expected, "%+.*f", decimals, value);
                const Result result = impl.RenderNumber(value, buffer, 80, 0, decimals);
                ASSERT_TRUE(result.Ok()) << expected;
                ASSERT_EQ(std::string(buffer, buffer + result.length), expected)
                    << value << " with " << decimals << " decimals";
            }
        }
    }
}

// WholeNumber is precision 0, whatever way the number takes: the shortcut for
// small whole numbers gives the text and the failures that 0 decimals give,
// in every style, for every capacity.
TEST(RenderNumber, WholeNumberModeIsZeroDecimals) {
    using RenderMode::SignOnZero;
    using RenderMode::WholeNumber;
    char16_t arabic[11] = {};
    for (int d = 0; d < 10; ++d) arabic[d] = static_cast<char16_t>(0x0660 + d);
    const Change settings[] = {
        [](NumberSettings&) {},
        Style(NumberFormat::Fixed),
        Style(NumberFormat::ScientificUpper),
        Style(NumberFormat::GeneralLower),
        Sizes({2}),
        Sizes({0}),
        Both(Signs(u"+", u"neg "), Separators(u"ab", u".")),
        Signs(u"", u""),
        [&arabic](NumberSettings& f) { f.SetNativeDigits(arabic); },
    };
    const double values[] = {0.0,     -0.0,      5,   -5,   66,   999,  1000,
                             -123456, 999999999, 1e9, 12.5, -2.5, 1e15, 4503599627370497.0,
                             1e20};
    for (const Change& setup : settings) {
        NumberSettings impl;
        setup(impl);
        for (const double value : values) {
            for (const unsigned mode : {WholeNumber, WholeNumber | SignOnZero}) {
                for (std::size_t capacity = 1; capacity < 20; ++capacity) {
                    char16_t whole[20], zero[20];
                    const Result a = impl.RenderNumber(value, whole, capacity, mode);
                    const Result b =
                        impl.RenderNumber(value, zero, capacity, mode & ~WholeNumber, 0);
                    ASSERT_EQ(a.code, b.code) << value << " capacity " << capacity;
                    if (!a.Ok()) continue;
                    ASSERT_EQ(std::u16string(whole, a.length), std::u16string(zero, b.length))
                        << value << " capacity " << capacity;
                }
            }
        }
    }
}

// A caller may ask for other decimals for one number; the setting stays.
TEST(RenderNumber, DecimalsForOneNumber) {
    const NumberSettings impl;
    const struct {
        double value;
        unsigned mode;
        int decimals;
        const char16_t* text;
    } rows[] = {
        {36.04, 0, 1, u"36.0"},
        {1234.5678, 0, 3, u"1,234.568"},
        {2.5, 0, 0, u"2"},  // "%.0f" rounds a tie to even
        {1.0, 0, 7, u"1.0000000"},
        {0.125, RenderMode::WholeNumber, 2, u"0"},  // WholeNumber wins
        {1.0, 0, NumberSettings::kSettingsDecimals, u"1.00"},
        {1.0, 0, -5, u"1.00"},
    };
    for (const auto& row : rows) {
        char16_t buffer[32];
        const Result result = impl.RenderNumber(row.value, buffer, 32, row.mode, row.decimals);
        const std::u16string text(row.text);
        ASSERT_TRUE(result.Ok()) << row.value;
        ASSERT_EQ(result.length, text.size()) << row.value;
        EXPECT_EQ(std::u16string(buffer, text.size()), text) << row.value;
    }
    EXPECT_EQ(impl.GetNumberDecimalDigits(), 2);
    EXPECT_EQ(Render(impl, 1.0).text, u"1.00");
}

// The decimal point of the conversion is "." whatever the process locale.
TEST(RenderNumber, IgnoresTheProcessLocale) {
    const struct {
        NumberFormat format;
        double value;
        const char16_t* text;
    } rows[] = {{NumberFormat::Number, 1234567.891, u"1,234,567.89"},
                {NumberFormat::Fixed, -0.5, u"-0.50"},
                {NumberFormat::ScientificLower, 1500, u"1.50e03"},
                {NumberFormat::GeneralUpper, 0.25, u"0.25"}};
    const auto expectRows = [&rows]() {
        for (const auto& row : rows) {
            NumberSettings impl;
            impl.SetNumber(row.format);
            EXPECT_EQ(Render(impl, row.value).text, row.text) << row.value;
        }
    };
    expectRows();
    const char* used = nullptr;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8",
                             "ru_RU.UTF-8", "es_ES.UTF-8", "it_IT.UTF-8", "nl_NL.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            used = name;
            break;
        }
    }
    if (used == nullptr) GTEST_SKIP() << "no locale with a decimal comma is installed";
    const bool comma = std::localeconv()->decimal_point[0] == ',';
    expectRows();
    std::setlocale(LC_ALL, "C");
    EXPECT_TRUE(comma) << used << " has no decimal comma";
}

}  // namespace
}  // namespace Mensura
