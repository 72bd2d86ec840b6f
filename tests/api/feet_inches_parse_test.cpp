// The marks of feet and inches, minutes and seconds, and degrees, and
// surveyor's bearings, read through the shared library into a length, a time
// and a plain angle; and the letters that are also units.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>
#include <thread>

#include "mensura/mensura.hpp"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;
using MensuraTest::SameBits;

constexpr double kRefused = -12345.0;

// The value that text reads as in unit; kRefused, the value left as it was,
// where Parse refuses it with ParseFailure.
double Read(const Formatter& formatter, const char16_t* text, int unit) {
    double value = kRefused;
    const ErrorCode code = formatter.Parse(text, value, unit);
    EXPECT_TRUE(code == ErrorCode::Success || code == ErrorCode::ParseFailure) << Narrow(text);
    EXPECT_TRUE(code == ErrorCode::Success || value == kRefused) << Narrow(text);
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
    const char16_t* inches[] = {
        u"5 1/2′",  u"5′6′",  u"5″6′",   u"5″6″",  u"5′′",     u"5′6″7",   u"5 6 7 1/2″",
        u"1/0″",    u"1/0′",  u"5 1/0″", u"+5′6″", u"5 ft 6″", u"5′ 6 in", u"5′6 in",
        u"5′6″ in", u"5 1/2", u"5′‑6″",  u"5′−6″", u"″",       u"′6″",     u"5 ft - 6 in",
    };
    const char16_t* degrees[] = {
        u"5°30",        u"5°30″",     u"5°-30′",    u"5°1/2′",   u"1/2°",
        u"5 1/2°",      u"5°°",       u"°",         u"n45°e",    u"N 91° E",
        u"N 45 E",      u"N 45°",     u"S 45° N",   u"E 45° N",  u"E 45° S",
        u"W 45° N",     u"N 45° E E", u"N 45° E 5", u"N -45° E", u"N -5°30′15″ E",
        u"N 45°-30′ E", u"N 1/2′ E",  u"N 1/2° E",  u"45° E",    u"5′E",
        u"5 E",
    };
    for (const char16_t* text : inches) EXPECT_EQ(Read(formatter, text, kInch), kRefused);
    for (const char16_t* text : degrees) EXPECT_EQ(Read(formatter, text, kDegree), kRefused);
    const std::pair<const char16_t*, int> others[] = {
        {u"5′", kKilogram},  {u"6″", kNewton},  {u"5°", kMeter},  {u"N 45° E", kMeter},
        {u"5 -(m)", kMeter}, {u"5 E", kNewton}, {u"5 E", kMeter}, {u"5 m W/m", kWatt},
        {u"5′W", kInch},     {u"5″E", kInch}};
    for (const auto& [text, unit] : others) EXPECT_EQ(Read(formatter, text, unit), kRefused);
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

}  // namespace
