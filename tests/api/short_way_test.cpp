// Reading typed texts through the shared library: the marks of feet and
// inches, minutes and seconds, degrees and surveyor's bearings into a length,
// a time and a plain angle, and the letters that are also units; then the
// short ways of Parse, which read the commonest texts without the list (a
// number and a chain of unit keys, the typed marks, and the everyday sums,
// fractions and compact bearings). ExplainParse reads every text through the
// list: both must give the same code and every bit of the value, in every
// kind of target, in both languages, with both readings and with other number
// settings, for the texts of those shapes and for the texts just outside them.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "mensura/mensura.hpp"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;
using MensuraTest::SameBits;

constexpr int kMeterPerSecond = 0x28001;
constexpr int kBytePerSecond = 0x10003;
constexpr double kUntouched = -12345.0;

// The value that text reads as in unit; kUntouched, the value left as it was,
// where Parse refuses it with ParseFailure.
double Read(const Formatter& formatter, const char16_t* text, int unit) {
    double value = kUntouched;
    const ErrorCode code = formatter.Parse(text, value, unit);
    EXPECT_TRUE(code == ErrorCode::Success || code == ErrorCode::ParseFailure) << Narrow(text);
    EXPECT_TRUE(code == ErrorCode::Success || value == kUntouched) << Narrow(text);
    return value;
}

// The same text read into inches and into seconds.
struct FeetRow {
    const char16_t* text;
    double inches;
    double seconds;
};

const FeetRow kFeetInches[] = {
    {u"5′", 59.99999999999999, 300},
    {u"6″", 6, 6},
    {u"5′6″", 66, 306},
    {u"5′ 6″", 66, 306},
    {u"5′6", 66, 306},
    {u"5′ 6", 66, 306},
    {u"5 ′ 6 ″", 66, 306},
    {u"5′-6″", 66, 306},
    {u"5′ -6″", 66, 306},
    {u"5′- 6″", 66, 306},
    {u"5′ - 6″", 66, 306},
    {u"5′–6″", 66, 306},
    {u"5′ – 6″", 66, 306},
    {u"5′—6″", 66, 306},
    {u"1/2″", 0.5, 0.5},
    {u"1/2′", 6, 30},
    {u"6 1/2″", 6.5, 6.5},
    {u"6-1/2″", 6.5, 6.5},
    {u"6 -1/2″", 6.5, 6.5},
    {u"5 / 2″", 2.5, 2.5},
    {u"5′6 1/2″", 66.5, 306.5},
    {u"5′6 1/2", 66.5, 306.5},
    {u"5′-6 1/2″", 66.5, 306.5},
    {u"5′-6-1/2″", 66.5, 306.5},
    {u"5 ′ 6 1 / 2 ″", 66.5, 306.5},
    {u"5′1/2″", 60.5, 300.5},
    {u"5′1/2", 60.5, 300.5},
    {u"5′-1/2″", 60.5, 300.5},
    {u"5′-1/2", 60.5, 300.5},
    {u"-5′6″", -66, -306},
    {u"-5′-6″", -66, -306},
    {u"-6″", -6, -6},
    {u"-1/2″", -0.5, -0.5},
    {u"-6 1/2″", -6.5, -6.5},
    {u"-5′6 1/2″", -66.5, -306.5},
    {u"1.5′", 18, 90},
    {u"5.5′", 66, 330},
    {u"1.5′6.25″", 24.250000000000004, 96.25},
    {u"1,000′", 12000, 60000},
    {u"1e2′", 1200, 6000},
    {u"5′1e1″", 70, 310},
    {u"5′12″", 72, 312},
    {u"5′100″", 160, 400},
    {u"1/-2″", -0.5, -0.5},
    {u"5 1/-2″", 4.5, 4.5},
    {u"0′6″", 6, 6},
    {u"-0′6″", -6, -6},
    {u"-0 1/2″", -0.5, -0.5},
    {u"0′", 0, 0},
    {u"0″", 0, 0},
    {u"0′0″", 0, 0},
    {u"5 6″", 11, 11},
    {u"5-6″", 11, 11},
};

struct AngleRow {
    const char16_t* text;
    double degrees;
};

const AngleRow kDegrees[] = {
    {u"5°", 5},
    {u"5 °", 5},
    {u"5d", 5},
    {u"5 d", 5},
    {u"5.5°", 5.5},
    {u"5°30′", 5.5},
    {u"5°30′15″", 5.504166666666666},
    {u"5°30′15", 5.504166666666666},
    {u"5° 30′ 15″", 5.504166666666666},
    {u"5d30′15″", 5.504166666666666},
    {u"5°30′-15″", 5.504166666666666},
    {u"5°30.5′", 5.508333333333333},
    {u"5°30′15.5″", 5.504305555555556},
    {u"5°30′1/2″", 5.5001388888888885},
    {u"5°30′ 1/2″", 5.5001388888888885},
    {u"5°30′ 15 1/2″", 5.504305555555556},
    {u"-5°30′", -5.5},
    {u"-5°30′15″", -5.504166666666666},
    {u"-0°30′15″", -0.5041666666666667},
    {u"5′", 0.08333333333333333},
    {u"5″", 0.001388888888888889},
    {u"5′15″", 0.0875},
    {u"5′15", 0.0875},
    {u"30′15″", 0.5041666666666667},
    {u"-30′15″", -0.5041666666666667},
    {u"1/2′", 0.008333333333333333},
    {u"1/2″", 0.0001388888888888889},
    {u"5 1/2″", 0.0015277777777777779},
    {u"N", 90},
    {u"E", 0},
    {u"S", -90},
    {u"W", 180},
    {u"N 0° E", 90},
    {u"N 0° W", 90},
    {u"S 0° E", -90},
    {u"S 0° W", -90},
    {u"N 90° E", 0},
    {u"S 90° E", 0},
    {u"N 90° W", 180},
    {u"S 90° W", -180},
    {u"N 45° E", 45},
    {u"N45°E", 45},
    {u"N45dE", 45},
    {u"N 45d E", 45},
    {u"S 45° E", -45},
    {u"N 45° W", 135},
    {u"S 45° W", -135},
    {u"N 45.5° E", 44.5},
    {u"N 45°30′ E", 44.5},
    {u"N 45°30′15″ E", 44.49583333333334},
    {u"N45°30′15″E", 44.49583333333334},
    {u"N 45°30′15″ W", 135.5041666666667},
    {u"S 45°30′15″ W", -135.5041666666667},
    {u"N 45′ E", 89.25},
    {u"N 45″ E", 89.9875},
    {u"N 45′30″ E", 89.24166666666667},
    {u"N 1/2″ E", 89.9998611111111},
    {u"5 rad", 286.4788975654116},
    {u"5 grad", 4.5},
    {u"5deg", 5},
    {u"5 deg", 5},
};

// Texts of marks that Parse refuses into inches and into degrees.
const char16_t* const kRefusedInches[] = {
    u"5 1/2′",  u"5′6′",  u"5″6′",   u"5″6″",  u"5′′",     u"5′6″7",   u"5 6 7 1/2″",
    u"1/0″",    u"1/0′",  u"5 1/0″", u"+5′6″", u"5 ft 6″", u"5′ 6 in", u"5′6 in",
    u"5′6″ in", u"5 1/2", u"5′‑6″",  u"5′−6″", u"″",       u"′6″",     u"5 ft - 6 in",
};
const char16_t* const kRefusedDegrees[] = {
    u"5°30",        u"5°30″",     u"5°-30′",    u"5°1/2′",   u"1/2°",
    u"5 1/2°",      u"5°°",       u"°",         u"n45°e",    u"N 91° E",
    u"N 45 E",      u"N 45°",     u"S 45° N",   u"E 45° N",  u"E 45° S",
    u"W 45° N",     u"N 45° E E", u"N 45° E 5", u"N -45° E", u"N -5°30′15″ E",
    u"N 45°-30′ E", u"N 1/2′ E",  u"N 1/2° E",  u"45° E",    u"5′E",
    u"5 E",
};

TEST(MarksParse, AcceptedShapes) {
    const Formatter formatter;
    for (const FeetRow& row : kFeetInches) {
        EXPECT_TRUE(SameBits(Read(formatter, row.text, kInch), row.inches)) << Narrow(row.text);
        EXPECT_TRUE(SameBits(Read(formatter, row.text, kSecond), row.seconds)) << Narrow(row.text);
    }
    // Bearings of either opening letter in turn, through one formatter.
    for (const AngleRow& row : kDegrees) {
        EXPECT_TRUE(SameBits(Read(formatter, row.text, kDegree), row.degrees)) << Narrow(row.text);
    }
}

TEST(MarksParse, RefusedShapes) {
    const Formatter formatter;
    for (const char16_t* text : kRefusedInches) EXPECT_EQ(Read(formatter, text, kInch), kUntouched);
    for (const char16_t* text : kRefusedDegrees)
        EXPECT_EQ(Read(formatter, text, kDegree), kUntouched);
    const std::pair<const char16_t*, int> others[] = {
        {u"5′", kKilogram},  {u"6″", kNewton},  {u"5°", kMeter},  {u"N 45° E", kMeter},
        {u"5 -(m)", kMeter}, {u"5 E", kNewton}, {u"5 E", kMeter}, {u"5 m W/m", kWatt},
        {u"5′W", kInch},     {u"5″E", kInch}};
    for (const auto& [text, unit] : others) EXPECT_EQ(Read(formatter, text, unit), kUntouched);
}

TEST(MarksParse, EveryMarkCharacterActsAlike) {
    const Formatter formatter;
    for (const char16_t* prime :
         {u"5\u2032", u"5\u0027", u"5\u02B9", u"5\u2019", u"5\u02BC", u"5\u2018"}) {
        EXPECT_TRUE(SameBits(Read(formatter, prime, kInch), 59.99999999999999));
    }
    for (const char16_t* doublePrime :
         {u"6\u2033", u"6\u0022", u"6\u02BA", u"6\u201D", u"6\u201C"}) {
        EXPECT_EQ(Read(formatter, doublePrime, kInch), 6.0);
    }
    for (const char16_t* dash : {u"5′\u2010 6″", u"5′\u2012 6″", u"5′\u2013 6″", u"5′\u2014 6″",
                                 u"5′\u2015 6″", u"5′- 6″", u"5′\u2043 6″"}) {
        EXPECT_EQ(Read(formatter, dash, kInch), 66.0);
    }
}

// Other targets: the large mark alone goes through the large unit ("5′0″"
// goes through the inch and differs from "5′" in the last bit); into a plain
// angle the marks are minutes and seconds of arc; an angle into radians, or
// into the unitless group, whose seven zero exponents and no angle unit make
// radians; a dash is a product between units; and the letters of bearings
// are units for targets with exponents.
TEST(MarksParse, OtherTargets) {
    const Formatter formatter;
    const struct {
        const char16_t* text;
        int unit;
        double value;
    } rows[] = {
        {u"5′6″", kMeter, 1.6764000000000001},
        {u"5′", kMeter, 1.524},
        {u"5′0″", kInch, 60.00000000000001},
        {u"N 45° E", kRadian, 0.7853981633974483},
        {u"W", kRadian, 3.141592653589793},
        {u"5°", kUnitless, 0.08726646259971647},
        {u"N", kUnitless, 1.5707963267948966},
        {u"5 kg-m/s²", kNewton, 5},
        {u"5 kg – m/s²", kNewton, 5},
        {u"5 N", kNewton, 5},
        {u"5 S", kSiemens, 5},
        {u"5 W", kWatt, 5},
        {u"5 d", kSecond, 432000},
        {u"5 N m/m", kNewton, 5},
        {u"5 N·m/m", kNewton, 5},
        {u"5 N-m/m", kNewton, 5},
        {u"5 W m/m", kWatt, 5},
        {u"5′E", kInch, 59.99999999999999},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(SameBits(Read(formatter, row.text, row.unit), row.value)) << Narrow(row.text);
    }
    EXPECT_NEAR(Read(formatter, u"30′", kDegree), 0.5, 1e-15);
    EXPECT_NEAR(Read(formatter, u"N 45°30′15″ E", kRadian),
                44.49583333333334 * 3.141592653589793 / 180.0, 1e-15);
}

// The closing letters of the catalogue are shared: opposite bearings parsed on
// two threads at once must each see their own opening letter.
TEST(MarksParse, OppositeBearingsOnTwoThreads) {
    int failures[2] = {0, 0};
    auto run = [&failures](int slot, const char16_t* text, double expected) {
        const Formatter formatter;
        for (int round = 0; round < 5000; ++round) {
            double value = 0.0;
            if (formatter.Parse(text, value, kDegree) != ErrorCode::Success || value != expected) {
                ++failures[slot];
            }
        }
    };
    std::thread north(run, 0, u"N 10° E", 80.0);
    std::thread south(run, 1, u"S 10° E", -80.0);
    north.join();
    south.join();
    EXPECT_EQ(failures[0], 0);
    EXPECT_EQ(failures[1], 0);
}

// Targets of every class that the short ways tell apart, among them the
// units that N, S, W and d stand for.
constexpr int kUnits[] = {
    // Lengths, times, plain angles and ratios.
    kMeter, kInch, kFoot, kSecond, kMinute, kRadian, kDegree, kAngleSecond, kUnitless,
    // Others.
    kSquareMeter, kLiter, kKilogram, kJoule, kNewton, kWatt, kSiemens, kKelvin, kCelsius,
    kMeterPerSecondSquared, kMeterPerSecond, kBytePerSecond};

// Each text of units with a unit of the quantity that it reads as with the
// catalogue's reading in English: it reads into every one of kQuantities of
// those dimensions, and into no other; 0 when it reads as none of them, kAny
// for a bare number.
constexpr int kQuantities[] = {kMeter,  kSquareMeter,  kMeterPerSecond, kMeterPerSecondSquared,
                               kNewton, kKilogram,     kCelsius,        kFoot,
                               kLiter,  kBytePerSecond};
constexpr int kAny = -1;
constexpr struct {
    const char16_t* text;
    int reads;
} kUnitTexts[] = {
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
    // The letters of a bearing as units outside an angle: the newton, the
    // watt; a blank in front of one is no product.
    {u"5 N", kNewton},
    {u"5 N/kg", kMeterPerSecondSquared},
    {u"5 W·s/m", kNewton},
    {u"5 N²/N", kNewton},
    {u"5 kg N", 0},
    {u"5 kg N/kg", 0},
    {u"5 m N", 0},
    {u"5 m E", 0},
    {u"5 d", 0},
    {u"5 m\u00A0m", 0},
    {u"m/s", 0},
    {u" 5 m", kMeter},
    {u"5 kJ", 0},
    {u"5 kg·", 0}};

// Texts of marks beside those of the tables above, which the comparison
// reads too.
const char16_t* const kMarks[] = {
    // Feet and inches: the prime alone, and its fraction.
    u"-5′", u"-0′", u"-1/2′", u"1/-2′", u"1/2 ′", u"5'", u"5ʹ", u"5’", u"5ʼ", u"5‘",
    // The double prime's lines alone.
    u"6\"", u"6ʺ", u"6”", u"6“", u"5 6 1/2″", u"5 6 7″", u"/2″", u"5/″", u"5 1/2 3″",
    // The prime in the middle.
    u"5′‐6″", u"5′‒6″", u"5′―6″", u"5′⁃6″", u"5′0″", u"5′6 1/0″", u"5′6 1/-2″", u"5′6 1/2 3″",
    u"5′6/2″", u"5′6//2″", u"5′/2″", u"5′6″″", u"5′6 7″", u"5′6 7 1/2″",
    // Just outside.
    u"5′6″ ", u" 5′6″", u"5′ ", u"–5′6″", u"- 5′6″", u"5′–", u"5′ –", u"5′ – ", u"5′--6″",
    u"5′ – – 6″", u"5 – 6″", u"5′ ft", u"5′6″E", u"5″E", u"5′W", u"5′N", u"5′ d", u"5′6 1/2″ E",
    u"′", u"-", u"5′(6)″", u"5′6²″",
    // Far out and not numbers.
    u"1e999′1e999″", u"-1e999′1e999″", u"1e999/1e999″", u"1e999 1/1e999″", u"0/0′", u"5′-0″",
    u"-0′-0″",
    // Degrees, minutes and seconds.
    u"5°30′ - 15″", u"5°–30′", u"d", u"1/5°30′", u"5°30′15″E", u"5°N", u"5°30′1/0″", u"5°30′/2″",
    u"5° 30", u"5°30′′",
    // Bearings.
    u"N E", u"S W", u"N N 45° E", u"N 45°30′ 15 1/2″ E", u"N 45°30′15 E", u"N 90°0′1″ E",
    u"N 89°59′60″ E", u"N 1e999° E", u"N -0° E", u"S -0′ W",
    // Just outside.
    u"N 45′30 E", u"N 45° - 30′ E", u"N 45°30′ – 15″ E", u"N 5 m E", u"N° E", u"N 45° E°", u"5 N",
    u"5 W", u"5 S"};

// Texts of the everyday reading, with the target it reads into or not.
constexpr struct {
    const char16_t* text;
    int unit;
    bool reads;
} kEverydayTexts[] = {
    // Number and unit; a sum of them, up to the most tokens and beyond.
    {u"5 kJ", kJoule, true},
    {u"5.5 ft", kMeter, true},
    {u"5 ft ", kMeter, true},
    {u"150 lb", kKilogram, true},
    {u"3 tbsp", kLiter, true},
    {u"1 fl oz", kLiter, true},
    {u"5 kJ", kMeter, false},
    {u"5 feets", kMeter, false},
    {u"5 ft 6 in", kInch, true},
    {u"5ft6in", kInch, true},
    {u"5 feet 6 inches", kInch, true},
    {u"−5 ft 6 in", kInch, true},
    {u"5 ft +6 in", kInch, true},
    {u"5 ft -6 in", kInch, false},
    {u"5 ft 6", kInch, false},
    {u"5 6 ft", kInch, false},
    {u"5 ft 6 kg", kInch, false},
    {u"3 米 20 厘米", kMeter, true},
    {u"2 lb 3 oz", kKilogram, true},
    {u"1 m 2 m 3 m 4 m", kMeter, true},
    {u"1 m 2 m 3 m 4 m 5 m", kMeter, true},
    {u"20 K 5 K", kKelvin, false},
    {u"6 h 1 d", kMinute, true},
    {u"1 d 6 h", kMinute, false},
    // A vulgar fraction before the double prime.
    {u"5′6½″", kInch, true},
    {u"5′6 ½″", kInch, true},
    {u"5′½″", kInch, true},
    {u"6½″", kInch, true},
    {u"½″", kInch, true},
    {u"-0′6½″", kInch, true},
    {u"5′-6⅞″", kFoot, true},
    {u"5'6½\"", kInch, true},
    {u"5′6½″", kMinute, true},
    {u"5′6½″", kDegree, true},
    {u"5′6½″", kKilogram, false},
    {u"5′6½", kInch, true},
    {u"½½″", kInch, false},
    // Compact bearings.
    {u"N45-30E", kDegree, true},
    {u"N 45-30 E ", kRadian, true},
    {u"S 12-30-15 W", kDegree, true},
    {u"N45.5E", kDegree, true},
    {u"N0-0-30.5W", kDegree, true},
    {u"S90W", kDegree, true},
    {u"N100E", kDegree, false},
    {u"N45.5-30E", kDegree, false},
    {u"N1-2-3-4E", kDegree, false},
    {u"N+45E", kDegree, false},
    {u"NE", kDegree, true},
    {u"N45-30E", kNewton, false}};

bool SameQuantity(int a, int b) {
    int first[7] = {};
    int second[7] = {};
    return Converter::GetUnitDimensions(a, first) == ErrorCode::Success &&
           Converter::GetUnitDimensions(b, second) == ErrorCode::Success &&
           std::equal(first, first + 7, second);
}

// Parse and ExplainParse of one text: one code, and on success one value to
// the bit; a failure leaves the value as it was.
ErrorCode ReadBothWays(const Formatter& formatter, const char16_t* text, int unit) {
    double value = kUntouched;
    const ErrorCode code = formatter.Parse(text, value, unit);
    const ParseReport report = formatter.ExplainParse(text, unit);
    EXPECT_EQ(code, report.code) << Narrow(text) << " into " << std::hex << unit;
    if (code == ErrorCode::Success) {
        EXPECT_TRUE(SameBits(value, report.value)) << Narrow(text) << " into " << std::hex << unit;
    } else {
        EXPECT_EQ(value, kUntouched) << Narrow(text) << " into " << std::hex << unit;
    }
    return code;
}

Formatter Make(int locale, bool everyday) {
    Formatter formatter(locale);
    formatter.SetEverydayReading(everyday);
    return formatter;
}

TEST(ShortWays, ReadAsTheListReadsThem) {
    std::vector<Formatter> formatters;
    for (const int locale : {1033, 2052}) {
        for (const bool everyday : {false, true}) formatters.push_back(Make(locale, everyday));
    }
    // Other signs and separators: "+" is a sign, and the comma a decimal point.
    formatters.emplace_back(1033);
    formatters.back().SetPositiveSign(u"+");
    formatters.back().SetNumberGroupSeparator(u".");
    formatters.back().SetNumberDecimalSeparator(u",");
    std::vector<const char16_t*> texts(std::begin(kMarks), std::end(kMarks));
    texts.insert(texts.end(), std::begin(kRefusedInches), std::end(kRefusedInches));
    texts.insert(texts.end(), std::begin(kRefusedDegrees), std::end(kRefusedDegrees));
    for (const auto& row : kFeetInches) texts.push_back(row.text);
    for (const auto& row : kDegrees) texts.push_back(row.text);
    for (const auto& row : kUnitTexts) texts.push_back(row.text);
    for (const auto& row : kEverydayTexts) texts.push_back(row.text);
    int read = 0;
    for (const Formatter& formatter : formatters) {
        for (const char16_t* text : texts) {
            for (const int unit : kUnits) {
                read += ReadBothWays(formatter, text, unit) == ErrorCode::Success;
            }
        }
    }
    // Most shapes read in several kinds of target: the tables are no lists
    // of refusals.
    EXPECT_GT(read, 5000);
}

// What the tables' rows read as, through the short ways.
TEST(ShortWays, ReadWhatTheRowsSay) {
    const Formatter catalogue;
    for (const auto& row : kUnitTexts) {
        for (const int unit : kQuantities) {
            const bool reads = row.reads == kAny || SameQuantity(unit, row.reads);
            EXPECT_EQ(ReadBothWays(catalogue, row.text, unit) == ErrorCode::Success, reads)
                << Narrow(row.text) << " into " << std::hex << unit;
        }
    }
    for (const int locale : {1033, 2052}) {
        const Formatter everyday = Make(locale, true);
        for (const auto& row : kEverydayTexts) {
            EXPECT_EQ(ReadBothWays(everyday, row.text, row.unit) == ErrorCode::Success, row.reads)
                << Narrow(row.text) << " " << locale;
        }
    }
}

}  // namespace
