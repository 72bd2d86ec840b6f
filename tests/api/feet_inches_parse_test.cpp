// Feet and inches, minutes and seconds: the two marks read into a length, a
// time and a plain angle, through the shared library.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>

#include "mensura/mensura.hpp"
#include "support/narrow.h"
#include "support/same_bits.h"

namespace {

using Mensura::ErrorCode;
using Mensura::Formatter;
using Mensura::kDegree;
using Mensura::kInch;
using Mensura::kKilogram;
using Mensura::kMeter;
using Mensura::kNewton;
using Mensura::kSecond;
using MensuraTest::Narrow;
using MensuraTest::SameBits;

struct Row {
    std::u16string text;
    double inches;
    double seconds;
};

// The same text read into inches and into seconds.
const Row kAccepted[] = {
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

TEST(FeetInchParse, AcceptedShapesIntoInchesAndSeconds) {
    const Formatter formatter;
    for (const Row& row : kAccepted) {
        double inches = 0.0, seconds = 0.0;
        EXPECT_EQ(formatter.Parse(row.text.c_str(), inches, kInch), ErrorCode::Success)
            << Narrow(row.text);
        EXPECT_TRUE(SameBits(inches, row.inches)) << Narrow(row.text);
        EXPECT_EQ(formatter.Parse(row.text.c_str(), seconds, kSecond), ErrorCode::Success)
            << Narrow(row.text);
        EXPECT_TRUE(SameBits(seconds, row.seconds)) << Narrow(row.text);
    }
}

TEST(FeetInchParse, RefusedShapes) {
    const Formatter formatter;
    const char16_t* refused[] = {
        u"5 1/2′",  u"5′6′",  u"5″6′",   u"5″6″",  u"5′′",     u"5′6″7",   u"5 6 7 1/2″",
        u"1/0″",    u"1/0′",  u"5 1/0″", u"+5′6″", u"5 ft 6″", u"5′ 6 in", u"5′6 in",
        u"5′6″ in", u"5 1/2", u"5′‑6″",  u"5′−6″", u"″",       u"′6″",     u"5 ft - 6 in",
    };
    for (const char16_t* text : refused) {
        double value = -1.0;
        EXPECT_EQ(formatter.Parse(text, value, kInch), ErrorCode::ParseFailure) << Narrow(text);
        EXPECT_EQ(value, -1.0) << Narrow(text);
    }
    double value = -1.0;
    EXPECT_EQ(formatter.Parse(u"5′", value, kKilogram), ErrorCode::ParseFailure);
    EXPECT_EQ(formatter.Parse(u"6″", value, kNewton), ErrorCode::ParseFailure);
}

TEST(FeetInchParse, EveryMarkCharacterActsAlike) {
    const Formatter formatter;
    for (const char16_t* prime :
         {u"5\u2032", u"5\u0027", u"5\u02B9", u"5\u2019", u"5\u02BC", u"5\u2018"}) {
        double inches = 0.0;
        EXPECT_EQ(formatter.Parse(prime, inches, kInch), ErrorCode::Success);
        EXPECT_TRUE(SameBits(inches, 59.99999999999999));
    }
    for (const char16_t* doublePrime :
         {u"6\u2033", u"6\u0022", u"6\u02BA", u"6\u201D", u"6\u201C"}) {
        double inches = 0.0;
        EXPECT_EQ(formatter.Parse(doublePrime, inches, kInch), ErrorCode::Success);
        EXPECT_EQ(inches, 6.0);
    }
    for (const char16_t* dash : {u"5′\u2010 6″", u"5′\u2012 6″", u"5′\u2013 6″", u"5′\u2014 6″",
                                 u"5′\u2015 6″", u"5′- 6″", u"5′\u2043 6″"}) {
        double inches = 0.0;
        EXPECT_EQ(formatter.Parse(dash, inches, kInch), ErrorCode::Success);
        EXPECT_EQ(inches, 66.0);
    }
}

TEST(FeetInchParse, LargeMarkAloneGoesThroughTheLargeUnit) {
    const Formatter formatter;
    double value = 0.0;
    ASSERT_EQ(formatter.Parse(u"5′6″", value, kMeter), ErrorCode::Success);
    EXPECT_TRUE(SameBits(value, 1.6764000000000001));
    ASSERT_EQ(formatter.Parse(u"5′", value, kMeter), ErrorCode::Success);
    EXPECT_TRUE(SameBits(value, 1.524));
    // "5′0″" goes through the inch and differs from "5′" in the last bit.
    ASSERT_EQ(formatter.Parse(u"5′0″", value, kInch), ErrorCode::Success);
    EXPECT_TRUE(SameBits(value, 60.00000000000001));
    // Into a plain angle the marks are minutes and seconds of arc.
    ASSERT_EQ(formatter.Parse(u"30′", value, kDegree), ErrorCode::Success);
    EXPECT_NEAR(value, 0.5, 1e-15);
}

TEST(FeetInchParse, DashMeansAProductBetweenUnits) {
    const Formatter formatter;
    double value = 0.0;
    ASSERT_EQ(formatter.Parse(u"5 kg-m/s²", value, kNewton), ErrorCode::Success);
    EXPECT_EQ(value, 5.0);
    ASSERT_EQ(formatter.Parse(u"5 kg – m/s²", value, kNewton), ErrorCode::Success);
    EXPECT_EQ(value, 5.0);
    EXPECT_EQ(formatter.Parse(u"5 -(m)", value, kMeter), ErrorCode::ParseFailure);
}

}  // namespace
