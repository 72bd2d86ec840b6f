// Reading text into a value, through the shared library: the number scanner,
// the scan into numbers and keys, the unit arithmetic, and what a failure
// leaves behind.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>

#include "mensura/mensura.hpp"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;
using MensuraTest::SameBits;

constexpr double kUntouched = -12345.0;

struct Accepted {
    const char16_t* text;
    double value;
};

// Each text reads into `unit` as exactly `value`.
void ExpectReads(const Formatter& formatter, int unit, std::initializer_list<Accepted> rows) {
    for (const Accepted& row : rows) {
        double value = kUntouched;
        EXPECT_EQ(formatter.Parse(row.text, value, unit), ErrorCode::Success) << Narrow(row.text);
        EXPECT_TRUE(SameBits(value, row.value)) << Narrow(row.text);
    }
}

// Each text is refused with ParseFailure and leaves the value alone.
void ExpectRefused(const Formatter& formatter, int unit,
                   std::initializer_list<const char16_t*> rows) {
    for (const char16_t* text : rows) {
        double value = kUntouched;
        EXPECT_EQ(formatter.Parse(text, value, unit), ErrorCode::ParseFailure) << Narrow(text);
        EXPECT_EQ(value, kUntouched) << Narrow(text);
    }
}

TEST(ParseNumbers, ReadByTheFormattersTokens) {
    const Formatter formatter;
    ExpectReads(formatter, kMeter,
                {{u"5", 5.0},
                 {u"5.", 5.0},
                 {u" 5", 5.0},
                 {u"5 ", 5.0},
                 {u"5  ", 5.0},
                 {u"5m", 5.0},
                 {u".5", 0.5},
                 {u"-.5", -0.5},
                 {u"5.e2", 500.0},
                 {u"1.5e2", 150.0},
                 {u"1e-3", 0.001},
                 {u"1E3", 1000.0},
                 {u"1,000", 1000.0},
                 {u"1,,000", 1000.0},
                 {u"1,000.5", 1000.5},
                 {u"1,", 1.0},
                 {u"1, m", 1.0},
                 {u"-0 m", -0.0}});
    ExpectRefused(formatter, kMeter,
                  {u"",     u" ",    u"m",     u".",     u"-",     u"1.000,5", u".e3",
                   u"1e",   u"1e m", u"1e3.5", u"1.2.3", u"1..2",  u"+5",      u"--5",
                   u"1E+3", u"5 5",  u"5 6 m", u"5-3",   u"5-3 m", u"5\tm",    u"5\u00A0m"});
    double value = kUntouched;
    EXPECT_EQ(formatter.Parse(nullptr, value, kMeter), ErrorCode::ParseFailure);
    EXPECT_EQ(value, kUntouched);
}

TEST(ParseNumbers, FollowChangedSettings) {
    Formatter formatter;
    formatter.SetPositiveSign(u"+");
    ExpectReads(formatter, kMeter, {{u"+5", 5.0}, {u"1E+3", 1000.0}});

    // A text holds one token, so swapping the two separators goes through a
    // third text: setting either one straight away would erase the other.
    Formatter european;
    ASSERT_EQ(european.SetNumberDecimalSeparator(u"#"), ErrorCode::Success);
    ASSERT_EQ(european.SetNumberGroupSeparator(u"."), ErrorCode::Success);
    ASSERT_EQ(european.SetNumberDecimalSeparator(u","), ErrorCode::Success);
    ExpectReads(european, kMeter, {{u"1.000,5 m", 1000.5}, {u"2,25", 2.25}});

    Formatter arabic;
    const char16_t digits[] = u"\u0660\u0661\u0662\u0663\u0664\u0665\u0666\u0667\u0668\u0669";
    ASSERT_EQ(arabic.SetNativeDigits(digits), ErrorCode::Success);
    ExpectReads(arabic, kMeter, {{u"\u0661\u0662.\u0665 m", 12.5}});
    ExpectRefused(arabic, kMeter, {u"12 m"});

    Formatter longSigns;
    longSigns.SetNegativeSign(u"minus ");
    ExpectReads(longSigns, kMeter, {{u"minus 3 m", -3.0}, {u"4 m", 4.0}});
    ExpectRefused(longSigns, kMeter, {u"minu 3 m"});

    // A token of two units that begins with a token of one: the longer wins.
    Formatter quoted;
    ASSERT_EQ(quoted.SetNumberGroupSeparator(u"'"), ErrorCode::Success);
    ASSERT_EQ(quoted.SetNumberDecimalSeparator(u"''"), ErrorCode::Success);
    ExpectReads(quoted, kMeter, {{u"1'000''5 m", 1000.5}, {u"1'5 m", 15.0}, {u"''5 m", 0.5}});
}

TEST(ParseUnits, ReadKeysOfTheDictionaryWhole) {
    const Formatter formatter;
    ExpectReads(formatter, kMeter,
                {{u"5 ft", 1.524},
                 {u"5 in", 0.127},
                 {u"5 inch", 0.127},
                 {u"5 米", 5.0},
                 {u"5 km", 5000.0}});
    ExpectRefused(
        formatter, kMeter,
        {u"5 feet", u"5 inches", u"5 MM", u"5 ftx", u"5 ft 6 in", u"5 ft + 6 in", u"5 m 3", u"1/2",
         u"1/2 m", u"5 1/2", u"5 1/2 m", u"5 / 2", u"5/2 m", u"5 m/2", u"2·3 m", u"5 s"});
    // The dictionary has no language.
    ExpectReads(Formatter(2052), kMeter, {{u"5 ft", 1.524}, {u"5 米", 5.0}});
}

TEST(ParseUnits, ABareNumberTakesTheGroupsDefaultUnit) {
    Formatter formatter;
    ExpectReads(formatter, kInch, {{u"5", 5.0 / 0.025400000000000002}});
    ExpectReads(formatter, kDegree, {{u"5", 286.4788975654116}});  // 5 radians in degrees
    ExpectReads(formatter, kKelvin, {{u"5", 5.0}});
    ExpectReads(formatter, kCelsius, {{u"5", -268.15}, {u"5 °C", 5.0}, {u"5 deg C", 5.0}});
    // A temperature word is a scale alone, and a size beside a unit: a rate
    // has no offset.
    ExpectReads(formatter, kKelvin, {{u"20 deg C", 293.15}});
    ExpectReads(formatter, 0x2B001, {{u"60 deg C/min", 60.0}});
    ASSERT_EQ(formatter.SetDefaultUnit(kInch), ErrorCode::Success);
    ExpectReads(formatter, kInch, {{u"5", 5.0}});
    ExpectReads(formatter, kMeter, {{u"5", 0.127}});
}

TEST(ParseArithmetic, OperatorsCombineUnits) {
    const Formatter formatter;
    ExpectReads(formatter, kMeter,
                {{u"5 m·s/s", 5.0},     {u"5 m s/s", 5.0},   {u"5 m/s·s", 5.0},
                 {u"5 m/s s", 5.0},     {u"5 s m/s", 5.0},   {u"(5 m)", 5.0},
                 {u"(5) m", 5.0},       {u"5 (m)", 5.0},     {u"((5 m))", 5.0},
                 {u"(5 m·s)/s", 5.0},   {u"5 m·(s/s)", 5.0}, {u"5 m/ s·s", 5.0},
                 {u"5 m / s · s", 5.0}, {u"5 m ·s/s", 5.0},  {u"5 m  ·  s  /  s", 5.0},
                 {u"()5 m", 5.0},       {u"5()", 5.0},       {u"5 (ft)²/m", 0.4645152},
                 {u"5 ft ²/ft", 1.524}, {u"（5 m)", 5.0}});
    ExpectRefused(formatter, kMeter,
                  {u"5 m/(s·s)·s", u"m",          u"m/s",       u"(m)",       u"5 m)",    u"(5 m",
                   u"/",           u"5 m/",       u"5 m·",      u"·",         u"²",       u"5/m",
                   u"5 m/(",       u"5²",         u"5^2",       u"()",        u"( )",     u"5 m·(",
                   u"5 ft ²",      u"5 (m)(s)/s", u"5 m (s)/s", u"5 (m) s/s", u"5 m(s)/s"});
    ExpectReads(formatter, 0x28001, {{u"5 m/(s·s)·s", 5.0}});  // a velocity

    ExpectReads(formatter, kSquareMeter,
                {{u"5 m m", 5.0},
                 {u"5 m·m", 5.0},
                 {u"5 (m)²", 5.0},
                 {u"5 m^2", 5.0},
                 {u"5 m ²", 5.0},
                 {u"5 m2", 5.0},
                 {u"5 m²", 5.0},
                 {u"5 ft ft", 0.4645152},
                 {u"5 (ft)²", 0.4645152},
                 {u"5 ft²", 0.4645152},
                 {u"5 ft·m", 1.524},
                 {u"5 ft m", 1.524}});
    ExpectRefused(formatter, kSquareMeter, {u"5 ftm"});
}

TEST(ParseArithmetic, CaretTakesAWholeExponentFromOne) {
    const Formatter formatter;
    ExpectReads(formatter, kKilogram,
                {{u"5 kg^1", 5.0},
                 {u"5 kg^2/kg", 5.0},
                 {u"5 kg^3/kg/kg", 5.0},
                 {u"5 kg^1e0", 5.0},
                 {u"5 kg ^1", 5.0},
                 {u"5 kg^ 1", 5.0},
                 {u"5 kg^1,", 5.0},
                 {u"5 kg^2²/kg³", 5.0},
                 {u"5 kg^2000000000/kg^1999999999", 5.0}});
    ExpectRefused(formatter, kKilogram,
                  {u"5 kg^0", u"5 kg^-1", u"5 kg^1.0", u"5 kg^1.5", u"5 kg^1e-1", u"5 kg^",
                   u"5 kg^(1)", u"5 kg^99999999999", u"5 kg²^2000000000"});
    ExpectReads(formatter, kNewton, {{u"5 kg m/s²", 5.0}, {u"5 kg·m/s²", 5.0}});
    ExpectRefused(formatter, kNewton, {u"5 kg m s⁻²"});
    // The quotient looks ahead into the parentheses before it applies.
    ExpectReads(formatter, 0x2E003, {{u"5 kg/(m·s)", 5.0}, {u"5 kg/m/s", 5.0}});
}

}  // namespace
