// Degrees, minutes and seconds, surveyor's bearings, and the letters that are
// also units, through the shared library.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>
#include <thread>

#include "mensura/mensura.hpp"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace {

using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::kDegree;
using Mensura::kInch;
using Mensura::kMeter;
using Mensura::kNewton;
using Mensura::kRadian;
using Mensura::kSecond;
using Mensura::kSiemens;
using Mensura::kUnitless;
using Mensura::kWatt;
using MensuraTest::Narrow;
using MensuraTest::SameBits;

struct Row {
    const char16_t* text;
    double degrees;
};

const Row kAccepted[] = {
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

TEST(AngleParse, AcceptedShapesIntoDegrees) {
    const Formatter formatter;
    for (const Row& row : kAccepted) {
        double value = 0.0;
        EXPECT_EQ(formatter.Parse(row.text, value, kDegree), ErrorCode::Success)
            << Narrow(row.text);
        EXPECT_TRUE(SameBits(value, row.degrees)) << Narrow(row.text);
    }
}

TEST(AngleParse, RefusedShapes) {
    const Formatter formatter;
    const char16_t* refused[] = {
        u"5°30",        u"5°30″",     u"5°-30′",    u"5°1/2′",   u"1/2°",
        u"5 1/2°",      u"5°°",       u"°",         u"n45°e",    u"N 91° E",
        u"N 45 E",      u"N 45°",     u"S 45° N",   u"E 45° N",  u"E 45° S",
        u"W 45° N",     u"N 45° E E", u"N 45° E 5", u"N -45° E", u"N -5°30′15″ E",
        u"N 45°-30′ E", u"N 1/2′ E",  u"N 1/2° E",  u"45° E",    u"5′E",
        u"5 E",
    };
    for (const char16_t* text : refused) {
        double value = -1.0;
        EXPECT_EQ(formatter.Parse(text, value, kDegree), ErrorCode::ParseFailure) << Narrow(text);
        EXPECT_EQ(value, -1.0) << Narrow(text);
    }
    double value = -1.0;
    EXPECT_EQ(formatter.Parse(u"5°", value, kMeter), ErrorCode::ParseFailure);
    EXPECT_EQ(formatter.Parse(u"N 45° E", value, kMeter), ErrorCode::ParseFailure);
}

TEST(AngleParse, RadiansAndTheUnitlessGroup) {
    const Formatter formatter;
    double value = 0.0;
    ASSERT_EQ(formatter.Parse(u"N 45° E", value, kRadian), ErrorCode::Success);
    EXPECT_TRUE(SameBits(value, 0.7853981633974483));
    ASSERT_EQ(formatter.Parse(u"W", value, kRadian), ErrorCode::Success);
    EXPECT_TRUE(SameBits(value, 3.141592653589793));
    ASSERT_EQ(formatter.Parse(u"N 45°30′15″ E", value, kRadian), ErrorCode::Success);
    EXPECT_NEAR(value, 44.49583333333334 * 3.141592653589793 / 180.0, 1e-15);
    // Seven zero exponents and no angle unit: the result is in radians.
    ASSERT_EQ(formatter.Parse(u"5°", value, kUnitless), ErrorCode::Success);
    EXPECT_TRUE(SameBits(value, 0.08726646259971647));
    ASSERT_EQ(formatter.Parse(u"N", value, kUnitless), ErrorCode::Success);
    EXPECT_TRUE(SameBits(value, 1.5707963267948966));
}

TEST(AngleParse, LettersAreUnitsForTargetsWithExponents) {
    const Formatter formatter;
    struct Unit {
        const char16_t* text;
        int unit;
        double value;
    } rows[] = {
        {u"5 N", kNewton, 5},      {u"5 S", kSiemens, 5},    {u"5 W", kWatt, 5},
        {u"5 d", kSecond, 432000}, {u"5 N m/m", kNewton, 5}, {u"5 N·m/m", kNewton, 5},
        {u"5 N-m/m", kNewton, 5},  {u"5 W m/m", kWatt, 5},   {u"5′E", kInch, 59.99999999999999}};
    for (const Unit& row : rows) {
        double value = 0.0;
        EXPECT_EQ(formatter.Parse(row.text, value, row.unit), ErrorCode::Success)
            << Narrow(row.text);
        EXPECT_TRUE(SameBits(value, row.value)) << Narrow(row.text);
    }
    const std::pair<const char16_t*, int> refused[] = {
        {u"5 E", kNewton}, {u"5 E", kMeter}, {u"5 m W/m", kWatt}, {u"5′W", kInch}, {u"5″E", kInch}};
    for (const auto& [text, unit] : refused) {
        double value = -1.0;
        EXPECT_EQ(formatter.Parse(text, value, unit), ErrorCode::ParseFailure) << Narrow(text);
    }
}

TEST(AngleParse, BearingsInSequenceDoNotSeeEachOthersLetter) {
    const Formatter formatter;
    for (int round = 0; round < 3; ++round) {
        double value = 0.0;
        ASSERT_EQ(formatter.Parse(u"N 10° E", value, kDegree), ErrorCode::Success);
        EXPECT_TRUE(SameBits(value, 80.0));
        ASSERT_EQ(formatter.Parse(u"S 10° E", value, kDegree), ErrorCode::Success);
        EXPECT_TRUE(SameBits(value, -80.0));
    }
}

// The closing letters of the catalogue are shared: opposite bearings parsed on
// two threads at once must each see their own opening letter.
TEST(AngleParse, OppositeBearingsOnTwoThreads) {
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
