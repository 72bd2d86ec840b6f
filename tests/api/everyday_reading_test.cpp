// The everyday reading through the shared library: what it adds, what it
// replaces, what it must leave alone, and exponents behind quotient keys,
// which every formatter reads.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <cmath>
#include <initializer_list>
#include <utility>
#include <vector>

#include "mensura/mensura.h"
#include "mensura/mensura.hpp"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;
using MensuraTest::SameBits;

constexpr double kUntouched = -12345.0;
constexpr double kPound = 0.45359237;  // the avoirdupois pound in kilograms
constexpr double kFootInMeters = 0.3048;

struct Row {
    const char16_t* text;
    int unit;
    double value;
};

Formatter Everyday(int locale = 1033) {
    Formatter formatter(locale);
    formatter.SetEverydayReading(true);
    return formatter;
}

// Reads text into unit; the value, or kUntouched with a failure recorded.
double Read(const Formatter& formatter, const char16_t* text, int unit) {
    double value = kUntouched;
    EXPECT_EQ(formatter.Parse(text, value, unit), ErrorCode::Success) << Narrow(text);
    return value;
}

void ExpectNear(const Formatter& formatter, std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        const double value = Read(formatter, row.text, row.unit);
        EXPECT_NEAR(value, row.value, std::fabs(row.value) * 1e-12) << Narrow(row.text);
    }
}

void ExpectRefused(const Formatter& formatter, int unit,
                   std::initializer_list<const char16_t*> texts) {
    for (const char16_t* text : texts) {
        double value = kUntouched;
        EXPECT_EQ(formatter.Parse(text, value, unit), ErrorCode::ParseFailure) << Narrow(text);
        EXPECT_EQ(value, kUntouched) << Narrow(text);
    }
}

// Every formatter: an exponent right behind a key such as "kg/m" or "m/s"
// applies to the key's last unit.
TEST(ExponentAfterQuotientKey, AppliesToTheLastUnit) {
    for (const Formatter& formatter : {Formatter(), Everyday()}) {
        ExpectNear(formatter, {{u"5 kg/m²", kGramPerSquareMeter, 5000.0},
                               {u"5 kg/m2", kGramPerSquareMeter, 5000.0},
                               {u"5 kg/m^2", kGramPerSquareMeter, 5000.0},
                               {u"9.81 m/s^2", kMeterPerSecondSquared, 9.81},
                               {u"9.81 m/s²", kMeterPerSecondSquared, 9.81},
                               {u"1 ft/s^2", kMeterPerSecondSquared, kFootInMeters},
                               {u"1 kg·m/s^2", kNewton, 1.0},
                               {u"10 N/m^2", kPascal, 10.0},
                               {u"2 kg/m³", kKilogramPerCubicMeter, 2.0},
                               {u"2 kg/m^3", kKilogramPerCubicMeter, 2.0}});
        // The whole key squared no longer reads; a digit that the last unit
        // does not take is no exponent; a key with brackets stays whole.
        ExpectRefused(formatter, 0x3E001 /* m³/(s·m²) */, {u"1 m/s^2"});
        ExpectRefused(formatter, kMeterPerSecondSquared, {u"1 m/s2"});
        ExpectRefused(formatter, kJoule, {u"1 kg·m/s^2"});
        ExpectRefused(formatter, 0x20001, {u"5 BTU/(h·ft²)²"});
    }
}

// With the everyday reading on, texts that the catalogue's reading refuses.
TEST(EverydayReading, ReadsWhatTheCatalogueRefuses) {
    const std::initializer_list<Row> rows = {
        // SI prefixes, with the micro sign and the Greek mu alike.
        {u"5 kJ", kJoule, 5000.0},
        {u"5 hPa", kPascal, 500.0},
        {u"3 GW", kWatt, 3e9},
        {u"2 MWh", kJoule, 7.2e9},
        {u"5 μs", kSecond, 5e-6},
        {u"500 μm", kMeter, 5e-4},
        {u"2 dL", kLiter, 0.2},
        // Words, plurals, abbreviations.
        {u"3 t", kKilogram, 3000.0},
        {u"1.5 tonnes", kKilogram, 1500.0},
        {u"6 feet", kFoot, 6.0},
        {u"3 inches", kInch, 3.0},
        {u"3 metres", kMeter, 3.0},
        {u"5 meters per second", 0x28001, 5.0},
        {u"2 square feet", kSquareMeter, 2 * kFootInMeters * kFootInMeters},
        {u"4 degrees", kDegree, 4.0},
        {u"20 degC", kCelsius, 20.0},
        {u"2 in.", kInch, 2.0},
        {u"5 lbs", kKilogram, 5 * kPound},
        {u"2 oz", kKilogram, 2 * kPound / 16},
        {u"10 knots", 0x28001, 10 * 1852.0 / 3600},
        {u"1 hp", kWatt, 745.69987158227022},
        // Signs.
        {u"−5 m", kMeter, -5.0},
        {u"−40 °C", kCelsius, -40.0},
        {u"+5 m", kMeter, 5.0},
        {u"1e+9 m", kMeter, 1e9},
        // Product signs.
        {u"5 kg*m/s^2", kNewton, 5.0},
        {u"5 N⋅m", kJoule, 5.0},
        {u"5 N×m", kJoule, 5.0},
        // Fractions and mixed numbers.
        {u"5′6½″", kInch, 66.5},
        {u"½″", kInch, 0.5},
        {u"1 1/2 in", kInch, 1.5},
        {u"1½ in", kInch, 1.5},
        {u"3/4 in", kInch, 0.75},
        {u"-2 3/4 ft", kFoot, -2.75},
        // Sums of one kind.
        {u"5 ft 6 in", kInch, 66.0},
        {u"5ft6in", kInch, 66.0},
        {u"-5 ft 6 in", kInch, -66.0},
        {u"5 ft 6 1/2 in", kInch, 66.5},
        {u"1 h 30 min", kMinute, 90.0},
        {u"2 lb 3 oz", kKilogram, 2 * kPound + 3 * kPound / 16},
    };
    const Formatter plain;
    const Formatter everyday = Everyday();
    for (const Row& row : rows) {
        double value = kUntouched;
        EXPECT_EQ(plain.Parse(row.text, value, row.unit), ErrorCode::ParseFailure)
            << Narrow(row.text) << " reads by default: the case proves nothing";
        const double read = Read(everyday, row.text, row.unit);
        EXPECT_NEAR(read, row.value, std::fabs(row.value) * 1e-12) << Narrow(row.text);
    }
}

TEST(EverydayReading, CompactBearingsReadAsMarkedOnes) {
    const Formatter everyday = Everyday();
    const struct {
        const char16_t* compact;
        const char16_t* marked;
    } rows[] = {{u"N45-30E", u"N 45°30′ E"},
                {u"N45.5E", u"N 45.5° E"},
                {u"S30W", u"S 30° W"},
                {u"S 12-30-15 W", u"S 12°30′15″ W"},
                {u"N0-0-30.5W", u"N 0°0′30.5″ W"}};
    const Formatter plain;
    for (const auto& row : rows) {
        ExpectRefused(plain, kDegree, {row.compact});
        const double marked = Read(everyday, row.marked, kDegree);
        const double compact = Read(everyday, row.compact, kDegree);
        EXPECT_TRUE(SameBits(compact, marked)) << Narrow(row.compact);
    }
    ExpectRefused(everyday, kDegree,
                  {u"N45-30", u"45-30E", u"N-45E", u"N45.5-30E", u"N1-2-3-4E", u"N45W30"});
}

// The short way reads what the marks mean by the target's exponents, as the
// marks do by its group: that holds while no other group shares the
// exponents of the lengths or of the times.
TEST(EverydayReading, LengthsAndTimesAloneHaveTheirExponents) {
    std::vector<int> groups(Converter::GetUnitGroups(nullptr));
    Converter::GetUnitGroups(groups.data());
    int lengths = 0;
    int times = 0;
    for (const int group : groups) {
        int exponents[7];
        ASSERT_EQ(Converter::GetUnitDimensions(group, exponents), ErrorCode::Success);
        const std::vector<int> dimensions(exponents, exponents + 7);
        lengths += dimensions == std::vector<int>{1, 0, 0, 0, 0, 0, 0};
        times += dimensions == std::vector<int>{0, 0, 1, 0, 0, 0, 0};
    }
    EXPECT_EQ(lengths, 1);
    EXPECT_EQ(times, 1);
}

// The symbols whose catalogue meaning misleads: the default keeps it, the
// everyday reading replaces it.
TEST(EverydayReading, ReplacesTheListedMeanings) {
    const struct {
        const char16_t* text;
        int unit;
        double catalogue;
        double everyday;
    } rows[] = {
        {u"150 lb", kKilogram, 75.0, 68.0388555},
        {u"62.4 lb/ft³", kKilogramPerCubicMeter, 62.4 * 0.5 / 0.028316846592,
         62.4 * kPound / 0.028316846592},
        {u"2 daN/m²", kPascal, 2e7, 20.0},
        {u"2 MB", kByte, 2.0 * 1048576, 2e6},
        {u"1 GB", kByte, 1073741824.0, 1e9},
        {u"3 kB/s", 0x10003, 3072.0, 3000.0},
        {u"1 kt", 0x501E /* carat */, 1.0, 0.0},  // everyday, a speed
        {u"5 mL/d", 0x1401A /* liter per day */, 5e6, 5e-3},
        {u"3 tbsp", kLiter, 0.045, 3 * 0.01478676478125},
        {u"1 cwt", kKilogram, 50.80234544, 45.359237},
    };
    const Formatter plain;
    const Formatter everyday = Everyday();
    for (const auto& row : rows) {
        const double catalogue = Read(plain, row.text, row.unit);
        EXPECT_NEAR(catalogue, row.catalogue, row.catalogue * 1e-12) << Narrow(row.text);
        double value = kUntouched;
        const ErrorCode code = everyday.Parse(row.text, value, row.unit);
        if (row.everyday == 0.0) {
            EXPECT_EQ(code, ErrorCode::ParseFailure) << Narrow(row.text);
        } else {
            EXPECT_EQ(code, ErrorCode::Success) << Narrow(row.text);
            EXPECT_NEAR(value, row.everyday, row.everyday * 1e-9) << Narrow(row.text);
        }
    }
    ExpectNear(everyday, {{u"1 kt", 0x28001, 1852.0 / 3600}});
}

// The customary spoon and hundredweight belong to the English formatter's
// locale, 1033; a Chinese formatter keeps the catalogue's.
TEST(EverydayReading, UsMeaningsFollowTheLocale) {
    const Formatter chinese = Everyday(2052);
    ExpectNear(chinese, {{u"3 tbsp", kLiter, 0.045},
                         {u"1 cwt", kKilogram, 50.80234544},
                         {u"150 lb", kKilogram, 68.0388555},
                         {u"1 fl oz", kLiter, 0.0284130625}});
    ExpectNear(Everyday(), {{u"1 fl oz", kLiter, 0.0295735295625}});
}

// An everyday reading only adds readings: a text that reads by default and
// holds none of the replaced symbols keeps its value to the bit. (Every key
// of the catalogue alone is held so by the catalogue's own test.)
TEST(EverydayReading, LeavesDefaultReadingsAlone) {
    const std::pair<const char16_t*, int> rows[] = {{u"5 m·s/s", kMeter},
                                                    {u"5 m s/s", kMeter},
                                                    {u"(5 m)", kMeter},
                                                    {u"5 (ft)²/m", kMeter},
                                                    {u"5 kg^2²/kg³", kKilogram},
                                                    {u"5 kg-m/s²", kNewton},
                                                    {u"5′-6 1/2″", kInch},
                                                    {u"5′ – 6″", kInch},
                                                    {u"6 1/2″", kInch},
                                                    {u"N 45°30′ E", kDegree},
                                                    {u"5d30′15″", kDegree},
                                                    {u"W", kDegree},
                                                    {u"5", kInch},
                                                    {u"1,000.5 mm", kMeter},
                                                    {u"100 °F", kCelsius},
                                                    {u"-0′6″", kInch}};
    const Formatter plain;
    const Formatter everyday = Everyday();
    for (const auto& [text, unit] : rows) {
        EXPECT_TRUE(SameBits(Read(everyday, text, unit), Read(plain, text, unit))) << Narrow(text);
    }
}

// Forms that stay refused with the everyday reading on.
TEST(EverydayReading, StillRefuses) {
    const Formatter everyday = Everyday();
    ExpectRefused(everyday, kMeter, {u"5 m 3", u"5 ½", u"5 m/2", u"5/m", u"++5 m", u"5 * m", u""});
    ExpectRefused(everyday, kInch, {u"5 ft 6", u"5 ft -6 in", u"5 ft 6 kg", u"1/0 in"});
    ExpectRefused(everyday, kMinute, {u"1 h 30"});
    ExpectRefused(everyday, kCelsius, {u"5 °C 3 °C"});
    ExpectRefused(everyday, kNewton, {u"5 kg m s⁻²"});
    ExpectRefused(everyday, kFoot, {u"5 feets"});
}

TEST(EverydayReading, IsASettingThatCopiesShare) {
    Formatter formatter;
    EXPECT_FALSE(formatter.GetEverydayReading());
    const Formatter copy = formatter;
    formatter.SetEverydayReading(true);
    EXPECT_TRUE(copy.GetEverydayReading());
    EXPECT_NEAR(Read(copy, u"5 kJ", kJoule), 5000.0, 0.0);
    formatter.SetEverydayReading(false);
    ExpectRefused(copy, kJoule, {u"5 kJ"});
}

// The flat setting turns the reading on for the flat Parse; its refusals are
// held with the other flat functions at their edges.
TEST(EverydayReading, FlatSetting) {
    MensuraFormatter* formatter = CreateFormatter(1033);
    int value = 1;
    EXPECT_EQ(FormatterReadingSetting(formatter, 2, &value), 0);
    value = -1;
    EXPECT_EQ(FormatterReadingSetting(formatter, 1, &value), 0);
    EXPECT_EQ(value, 1);
    double read = kUntouched;
    EXPECT_EQ(Parse(formatter, u"5 ft 6 in", &read, kInch), 0);
    EXPECT_EQ(read, 66.0);
    DestroyFormatter(formatter);
}

}  // namespace
