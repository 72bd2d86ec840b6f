// The short way of Parse, a number and a chain of unit keys read without the
// list, against the list itself: ExplainParse reads every text through the
// list, so the two must agree on the code and on every bit of the value, in
// every unit, locale and reading, for the texts of the short way's shapes and
// for those just outside them.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <algorithm>

#include "mensura/mensura.hpp"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;
using MensuraTest::SameBits;

constexpr int kMeterPerSecond = 0x28001;
constexpr int kBytePerSecond = 0x10003;

// Each text with a unit of the quantity that it reads as with default
// settings: it reads into every unit of those dimensions, and into no
// other; 0 when it reads as none of them, kAny for a bare number.
struct Row {
    const char16_t* text;
    int reads;
};
constexpr int kAny = -1;

bool SameQuantity(int a, int b) {
    int first[7] = {};
    int second[7] = {};
    return Converter::GetUnitDimensions(a, first) == ErrorCode::Success &&
           Converter::GetUnitDimensions(b, second) == ErrorCode::Success &&
           std::equal(first, first + 7, second);
}

constexpr int kUnits[] = {kMeter,  kSquareMeter,  kMeterPerSecond, kMeterPerSecondSquared,
                          kNewton, kKilogram,     kCelsius,        kFoot,
                          kLiter,  kBytePerSecond};

constexpr Row kRows[] = {
    // The short way's shapes: products, quotients, blanks between units,
    // powers behind them, everyday meanings of keys.
    {u"5.5 ft", kMeter},
    {u"1,000.5 mm", kMeter},
    {u"5m", kMeter},
    {u"5 m ", kMeter},
    {u"5 kg·m/s²", kNewton},
    {u"5 kg m/s²", kNewton},
    {u"5 kg·m/s/s", kNewton},
    {u"5 lb·ft/s²", kNewton},
    {u"9.81 m/s^2", kMeterPerSecondSquared},
    {u"9.81 m/s^2 ", kMeterPerSecondSquared},
    {u"9.81 ft/s²", kMeterPerSecondSquared},
    {u"9.81 m / s ^ 2", kMeterPerSecondSquared},
    {u"5 m/s", kMeterPerSecond},
    {u"5 mm/s^1", kMeterPerSecond},
    {u"-2.5 m s/s/s", kMeterPerSecond},
    {u"2 kg·m²", 0},
    {u"2 kg·m²/kg", kSquareMeter},
    {u"5 m  m", kSquareMeter},
    {u"5 m ²", kSquareMeter},
    {u"5 m² m", kLiter},
    {u"5 ft·ft", kSquareMeter},
    {u"5 in^2", kSquareMeter},
    {u"5 m^3/m", kSquareMeter},
    {u"5 m³/m", kSquareMeter},
    {u"5 m^2^2/m^2", kSquareMeter},
    {u"5 m^2²/m²", kSquareMeter},
    {u"5 kg^2²/kg³", kKilogram},
    {u"5 kg^1e0", kKilogram},
    {u"5 kg^1,", kKilogram},
    {u"5 kg^2000000000/kg^1999999999", kKilogram},
    {u"5 kg·m²³/m⁶", 0},
    {u"5 m·s²²/s/s/s/s", kSquareMeter},
    {u"5 m·s^2²/s/s/s/s", kSquareMeter},
    {u"5 kg/m·m²/m²", 0},
    {u"5 kg·m/m²³", 0},
    {u"5 ft^3", kLiter},
    {u"5 ft³/ft", kSquareMeter},
    {u"5 kg/m2", 0},
    {u"20 °C", kCelsius},
    {u"20 °F^1", 0},
    {u"5 kt", kKilogram},
    {u"5 MB/s", kBytePerSecond},
    {u"5 kB/s·s/s", kBytePerSecond},
    {u"5 tbsp", kLiter},
    {u"5 cwt·m/s²", kNewton},
    {u"1e3 mm", kMeter},
    // More tokens than the short way holds: the list takes over midway.
    {u"5 m/m·m/m·m/m·m/m·m/m·m/m·m/m·m/m·m/m·m/m·m", kMeter},
    {u"5 m m/m m/m m/m m/m m/m m/m m/m m/m m/m m/m m/m^2", 0},
    // Just outside: other marks, a second number, a unit or operator out
    // of place, an exponent the caret refuses.
    {u"5", kAny},
    {u"5 5", 0},
    {u"5 m 3", 0},
    {u"5 m/s 2", 0},
    {u"5 m^2 s", 0},
    {u"5 m² s", 0},
    {u"5 m/s² s", kMeterPerSecond},
    {u"5 m/s^2 s", 0},
    {u"5 m^", 0},
    {u"5 m^0", 0},
    {u"5 m^-1", 0},
    {u"5 m^1.0", 0},
    {u"5 m^1.5", 0},
    {u"5 m^2.0", 0},
    {u"5 m^(2)", 0},
    {u"5 kg^99999999999", 0},
    {u"5 kg²^2000000000", 0},
    {u"5 kg^2000000000·kg^2000000000", 0},
    {u"5 kg^2000000000 kg^2000000000/kg^2000000000", 0},
    {u"5 kg^2000000000/g kg^2000000000/g", 0},
    {u"5 m/kg^2000000000/kg^2000000000", 0},
    {u"5 m·", 0},
    {u"5 m/", 0},
    {u"5 ·m", 0},
    {u"5 /m", 0},
    {u"5 ²", 0},
    {u"5 m·/s", 0},
    {u"5 ftm", 0},
    {u"5 (m)", kMeter},
    {u"5 m/(s·s)", kMeterPerSecondSquared},
    {u"5 ft-lb", 0},
    {u"5′6″", kFoot},
    {u"5 ft 6 in", 0},
    {u"5 m s⁻²", 0},
    {u"5 deg C/min", 0},
    {u"5 N m", 0},
    {u"5 m N", 0},
    {u"5 m E", 0},
    {u"5 d", 0},
    {u"5 m\u00A0m", 0},
    {u"m/s", 0},
    {u" 5 m", kMeter},
    {u"5 kJ", 0},
    {u"5 kg·", 0},
};

TEST(ParseShortWay, AgreesWithTheList) {
    for (const int locale : {1033, 2052}) {
        Formatter formatter(locale);
        for (const bool everyday : {false, true}) {
            formatter.SetEverydayReading(everyday);
            for (const Row& row : kRows) {
                for (const int unit : kUnits) {
                    double value = -1.0;
                    const ErrorCode code = formatter.Parse(row.text, value, unit);
                    const ParseReport report = formatter.ExplainParse(row.text, unit);
                    EXPECT_EQ(code, report.code) << Narrow(row.text) << " into " << unit;
                    if (code == ErrorCode::Success) {
                        EXPECT_TRUE(SameBits(value, report.value))
                            << Narrow(row.text) << " into " << unit;
                    }
                    // The catalogue's reading, in English, for the shapes
                    // that the table names.
                    if (locale == 1033 && !everyday) {
                        const bool reads = row.reads == kAny || SameQuantity(unit, row.reads);
                        EXPECT_EQ(code == ErrorCode::Success, reads)
                            << Narrow(row.text) << " into " << unit;
                    }
                }
            }
        }
    }
}

}  // namespace
