// The converter classes on their own: construction, the dimension check in
// both directions, factors and copies.
#include "units/unit_converter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "support/same_bits.h"

namespace Mensura {
namespace {

using MensuraTest::SameBits;

const Dimensions kLength{1, 0, 0, 0, 0, 0, 0};
const Dimensions kArea{2, 0, 0, 0, 0, 0, 0};
const Dimensions kTemperature{0, 0, 0, 0, 1, 0, 0};

GenericConverter Combined(const UnitConverter& a, const UnitConverter& b, bool quotient) {
    GenericConverter out(-1.0);
    EXPECT_TRUE(GenericConverter::Combine(a, b, quotient, out));
    return out;
}

TEST(GenericConverter, CombineComposesExponentsAndFactors) {
    const GenericConverter meter(Quantity<1, 0, 0, 0, 0, 0, 0>(1.0));
    const GenericConverter second(Quantity<0, 0, 1, 0, 0, 0, 0>(1.0));
    const GenericConverter foot = Combined(GenericConverter(0.3048), meter, false);
    const GenericConverter inch = Combined(foot, GenericConverter(12.0), true);
    const GenericConverter squareFoot = Combined(foot, foot, false);
    const GenericConverter speed = Combined(foot, second, true);

    EXPECT_EQ(GenericConverter(2.5).GetDimensions(), Dimensions{});
    EXPECT_EQ(foot.GetDimensions(), kLength);
    EXPECT_TRUE(SameBits(inch.GetFactor(), 0.025400000000000002));
    EXPECT_EQ(squareFoot.GetDimensions(), kArea);
    EXPECT_TRUE(SameBits(squareFoot.GetFactor(), 0.09290304));
    EXPECT_EQ(speed.GetDimensions(), (Dimensions{1, 0, -1, 0, 0, 0, 0}));
}

TEST(GenericConverter, ProductOfALinearScaleDropsItsOffset) {
    const LinearConverter celsius(Quantity<0, 0, 0, 0, 1, 0, 0>(1.0),
                                  Quantity<0, 0, 0, 0, 1, 0, 0>(273.15));
    const GenericConverter rate =
        Combined(celsius, GenericConverter(Quantity<0, 0, 1, 0, 0, 0, 0>(60.0)), true);
    double out = 0.0;
    ASSERT_EQ(rate.ToBase(1.0, out, rate.GetDimensions()), ErrorCode::Success);
    EXPECT_TRUE(SameBits(out, 1.0 / 60.0));
}

// Exponents a text raised near the ends of their range: a product or a
// quotient that would leave it fails and leaves the result as it was.
TEST(GenericConverter, CombineRefusesExponentsOutOfRange) {
    const GenericConverter high(Dimensions{0, 2000000000, 0, 0, 0, 0, 0}, 1.0);
    const GenericConverter low(Dimensions{0, -2000000000, 0, 0, 0, 0, 0}, 1.0);
    GenericConverter out(7.0);
    EXPECT_FALSE(GenericConverter::Combine(high, high, false, out));
    EXPECT_FALSE(GenericConverter::Combine(low, low, false, out));
    EXPECT_FALSE(GenericConverter::Combine(high, low, true, out));
    EXPECT_FALSE(GenericConverter::Combine(low, high, true, out));
    EXPECT_EQ(out.GetFactor(), 7.0);
    EXPECT_EQ(out.GetDimensions(), Dimensions{});
    EXPECT_EQ(Combined(high, low, false).GetDimensions(), Dimensions{});
    EXPECT_EQ(Combined(high, high, true).GetDimensions(), Dimensions{});
}

TEST(GenericConverter, ChecksDimensionsBothWays) {
    const GenericConverter foot(Quantity<1, 0, 0, 0, 0, 0, 0>(0.3048));
    double out = -1.0;
    EXPECT_EQ(foot.ToBase(2.0, out, kArea), ErrorCode::UnitMismatch);
    EXPECT_EQ(foot.FromBase(2.0, kArea, out), ErrorCode::UnitMismatch);
    EXPECT_EQ(out, -1.0);
    EXPECT_EQ(foot.ToBase(2.0, out, kLength), ErrorCode::Success);
    EXPECT_EQ(out, 0.6096);
    EXPECT_EQ(foot.FromBase(0.6096, kLength, out), ErrorCode::Success);
    EXPECT_EQ(out, 2.0);
}

TEST(GenericConverter, ConvertToLeavesTheBaseValueWhenTheTargetRefuses) {
    const GenericConverter foot(Quantity<1, 0, 0, 0, 0, 0, 0>(0.3048));
    const GenericConverter squareMeter(Quantity<2, 0, 0, 0, 0, 0, 0>(1.0));
    double out = 0.0;
    EXPECT_EQ(foot.ConvertTo(10.0, out, squareMeter), ErrorCode::UnitMismatch);
    EXPECT_EQ(out, 3.048);
}

TEST(LinearConverter, AddsTheOffsetAfterScalingAndSubtractsItBeforeDividing) {
    const LinearConverter fahrenheit(Quantity<0, 0, 0, 0, 1, 0, 0>(0.5555555555555556),
                                     Quantity<0, 0, 0, 0, 1, 0, 0>(255.3722222222222));
    EXPECT_EQ(fahrenheit.GetDimensions(), kTemperature);
    double out = 0.0;
    ASSERT_EQ(fahrenheit.FromBase(373.15, kTemperature, out), ErrorCode::Success);
    EXPECT_TRUE(SameBits(out, 211.99999999999997));
    ASSERT_EQ(fahrenheit.ToBase(32.0, out, kTemperature), ErrorCode::Success);
    EXPECT_TRUE(SameBits(out, 32.0 * 0.5555555555555556 + 255.3722222222222));
    out = -1.0;
    EXPECT_EQ(fahrenheit.ToBase(32.0, out, kLength), ErrorCode::UnitMismatch);
    EXPECT_EQ(out, -1.0);
}

TEST(FactorTo, NeedsTheSameClassTheSameDimensionsAndTheSameOffset) {
    const GenericConverter kelvin(Quantity<0, 0, 0, 0, 1, 0, 0>(1.0));
    const GenericConverter rankine(Quantity<0, 0, 0, 0, 1, 0, 0>(0.5555555555555556));
    const GenericConverter meter(Quantity<1, 0, 0, 0, 0, 0, 0>(1.0));
    const LinearConverter celsius(Quantity<0, 0, 0, 0, 1, 0, 0>(1.0),
                                  Quantity<0, 0, 0, 0, 1, 0, 0>(273.15));
    const LinearConverter doubleCelsius(Quantity<0, 0, 0, 0, 1, 0, 0>(2.0),
                                        Quantity<0, 0, 0, 0, 1, 0, 0>(273.15));
    const LinearConverter nanOffset(Quantity<0, 0, 0, 0, 1, 0, 0>(1.0),
                                    Quantity<0, 0, 0, 0, 1, 0, 0>(std::nan("")));

    double out = -1.0;
    EXPECT_EQ(rankine.FactorTo(kelvin, out), ErrorCode::Success);
    EXPECT_TRUE(SameBits(out, 0.5555555555555556));
    out = -1.0;
    EXPECT_EQ(kelvin.FactorTo(meter, out), ErrorCode::Failure);
    EXPECT_EQ(kelvin.FactorTo(celsius, out), ErrorCode::Failure);
    EXPECT_EQ(celsius.FactorTo(kelvin, out), ErrorCode::Failure);
    EXPECT_EQ(nanOffset.FactorTo(nanOffset, out), ErrorCode::Failure);  // NaN is never equal
    EXPECT_EQ(out, -1.0);
    EXPECT_EQ(doubleCelsius.FactorTo(celsius, out), ErrorCode::Success);
    EXPECT_EQ(out, 2.0);
}

TEST(Clone, CopiesClassExponentsFactorAndOffset) {
    const LinearConverter celsius(Quantity<0, 0, 0, 0, 1, 0, 0>(1.0),
                                  Quantity<0, 0, 0, 0, 1, 0, 0>(273.15));
    const std::unique_ptr<UnitConverter> copy(celsius.Clone());
    ASSERT_NE(dynamic_cast<LinearConverter*>(copy.get()), nullptr);
    double out = 0.0;
    ASSERT_EQ(copy->ToBase(0.0, out, kTemperature), ErrorCode::Success);
    EXPECT_EQ(out, 273.15);

    const GenericConverter foot(Quantity<1, 0, 0, 0, 0, 0, 0>(0.3048));
    const std::unique_ptr<UnitConverter> footCopy(foot.Clone());
    ASSERT_NE(dynamic_cast<GenericConverter*>(footCopy.get()), nullptr);
    EXPECT_EQ(footCopy->GetDimensions(), kLength);
    EXPECT_EQ(footCopy->GetFactor(), 0.3048);
}

}  // namespace
}  // namespace Mensura
