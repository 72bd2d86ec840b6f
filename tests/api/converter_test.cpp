// The Converter class and the flat conversion functions, through the shared
// library as a caller sees them.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "base/ids.h"

#include <cmath>
#include <limits>

#include "mensura/mensura.hpp"
#include "support/same_bits.h"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::kCelsius;
using Mensura::kFahrenheit;
using Mensura::kFoot;
using Mensura::kInch;
using Mensura::kKelvin;
using Mensura::kMeter;
using Mensura::kRankine;
using Mensura::kSquareMeter;

using MensuraTest::SameBits;

TEST(ConverterStatic, ConvertsThroughTheBaseInTwoRoundedSteps) {
    struct Row {
        double value;
        int from, to;
        double expected;
    } rows[] = {
        {1.0, kFoot, kInch, 12.0},                           // 0.3048 / 0.025400000000000002
        {100.0, kCelsius, kFahrenheit, 211.99999999999997},  // not rounded to 212
        {0.0, kCelsius, kKelvin, 273.15},
        {273.15, kKelvin, kCelsius, 0.0},
        {1.0, kRankine, kKelvin, 0.5555555555555556},
        {5.0, kFoot, kMeter, 1.524},
    };
    for (const Row& row : rows) {
        double out = -1.0;
        EXPECT_EQ(Converter::Convert(row.value, row.from, out, row.to), ErrorCode::Success);
        EXPECT_TRUE(SameBits(out, row.expected)) << std::hex << row.from << " -> " << row.to;
    }
}

TEST(ConverterStatic, IdsThatAgreeInTheirLow20BitsCopyTheValueWithoutLookup) {
    const int pairs[][2] = {{kFoot, 0x202017}, {0, 0}, {0x7FFFF, 0x7FFFF}, {0x12345, 0x512345}};
    for (const auto& pair : pairs) {
        double out = 0.0;
        EXPECT_EQ(Converter::Convert(5.0, pair[0], out, pair[1]), ErrorCode::Success);
        EXPECT_EQ(out, 5.0);
    }
}

TEST(ConverterStatic, UnknownUnitLeavesOutAlone) {
    const int pairs[][2] = {{0, kMeter},      {kMeter, 0},      {-1, kMeter},
                            {0x2000, kMeter}, {0x2043, kMeter}, {0x45001, kMeter}};
    for (const auto& pair : pairs) {
        double out = -7.0;
        EXPECT_EQ(Converter::Convert(1.0, pair[0], out, pair[1]), ErrorCode::UnitMismatch);
        EXPECT_EQ(out, -7.0);
    }
}

TEST(ConverterStatic, MismatchedDimensionsLeaveTheBaseValue) {
    double out = 0.0;
    EXPECT_EQ(Converter::Convert(1.0, kFoot, out, kSquareMeter), ErrorCode::UnitMismatch);
    EXPECT_EQ(out, 0.3048);
}

TEST(ConverterStatic, NonFiniteValuesPassThrough) {
    double out = 0.0;
    EXPECT_EQ(Converter::Convert(std::nan(""), kFoot, out, kMeter), ErrorCode::Success);
    EXPECT_TRUE(std::isnan(out));
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Converter::Convert(-infinity, kFoot, out, kMeter), ErrorCode::Success);
    EXPECT_EQ(out, -infinity);
    EXPECT_EQ(Converter::Convert(1e308, 0x2021, out, kMeter), ErrorCode::Success);  // mile
    EXPECT_EQ(out, infinity);
}

TEST(ConverterStatic, FactorExistsOnlyWhereThereIsAPureRatio) {
    struct Row {
        int from, to;
        double expected;
    } rows[] = {
        {kFoot, kMeter, 0.3048},
        {kMeter, kSquareMeter, 0.0},
        {kCelsius, kCelsius, 1.0},
        {kCelsius, kFahrenheit, 0.0},
        {kCelsius, kKelvin, 0.0},
        {kKelvin, kCelsius, 0.0},
        {kRankine, kKelvin, 0.5555555555555556},
        {0, kMeter, 0.0},
        {0x7FFFF, 0x7FFFF, 1.0},
    };
    for (const Row& row : rows) {
        EXPECT_TRUE(SameBits(Converter::Factor(row.from, row.to), row.expected))
            << std::hex << row.from << " -> " << row.to;
        EXPECT_TRUE(SameBits(ConversionFactor(row.from, row.to), row.expected));
    }
}

TEST(ConverterObject, DefaultHoldsMinusOneAndPassesValuesThrough) {
    Converter converter;
    int from = 0, to = 0;
    converter.GetUnit(&from, &to);
    EXPECT_EQ(from, -1);
    EXPECT_EQ(to, -1);
    EXPECT_EQ(converter.Convert(5.0), 5.0);
    EXPECT_EQ(converter.Factor(), 1.0);
    converter.GetUnit(nullptr, nullptr);  // either pointer may be null
}

TEST(ConverterObject, RefusedPairLeavesMinusOne) {
    Converter converter(kMeter, kSquareMeter);
    int from = 0, to = 0;
    converter.GetUnit(&from, &to);
    EXPECT_EQ(from, -1);
    EXPECT_EQ(to, -1);
    EXPECT_EQ(converter.Convert(3.0), 3.0);
}

TEST(ConverterObject, HoldsAnAcceptedPair) {
    Converter converter(kCelsius, kFahrenheit);
    int from = 0, to = 0;
    converter.GetUnit(&from, &to);
    EXPECT_EQ(from, kCelsius);
    EXPECT_EQ(to, kFahrenheit);
    EXPECT_EQ(converter.Factor(), 0.0);
    EXPECT_TRUE(SameBits(converter.Convert(0.0), 31.999999999999986));

    EXPECT_EQ(converter.SetUnit(0, kSquareMeter), ErrorCode::UnitMismatch);
    converter.GetUnit(&from, &to);
    EXPECT_EQ(from, kCelsius);
    EXPECT_EQ(to, kFahrenheit);

    EXPECT_EQ(converter.SetUnit(0, kKelvin), ErrorCode::Success);  // 0 keeps the stored side
    converter.GetUnit(&from, &to);
    EXPECT_EQ(from, kCelsius);
    EXPECT_EQ(to, kKelvin);
    EXPECT_EQ(converter.Convert(0.0), 273.15);
}

TEST(ConverterObject, FirstSetUnitNeedsBothSides) {
    Converter converter;
    EXPECT_EQ(converter.SetUnit(kMeter, 0), ErrorCode::UnitMismatch);  // -1 finds no unit
    EXPECT_EQ(converter.SetUnit(0xFFFFF, 0), ErrorCode::Success);      // equal to -1 in 20 bits
    EXPECT_EQ(converter.SetUnit(kFoot, kInch), ErrorCode::Success);
    EXPECT_EQ(converter.Convert(1.0), 12.0);
}

TEST(ConverterObject, CopiesAreIndependentValues) {
    Converter a(kFoot, kInch);
    Converter b;
    b = a;
    EXPECT_EQ(a.SetUnit(kMeter, 0), ErrorCode::Success);
    int from = 0;
    b.GetUnit(&from, nullptr);
    EXPECT_EQ(from, kFoot);
    EXPECT_EQ(b.Convert(2.0), 24.0);
}

TEST(FlatConvert, NullOutGivesFailureEvenForUnknownUnits) {
    EXPECT_EQ(Convert(1.0, 0, nullptr, kMeter), 1);
    EXPECT_EQ(Convert(1.0, kFoot, nullptr, kInch), 1);
    double out = 0.0;
    EXPECT_EQ(Convert(1.0, kFoot, &out, kInch), 0);
    EXPECT_EQ(out, 12.0);
    EXPECT_EQ(Convert(1.0, kFoot, &out, kSquareMeter), 4);
}

TEST(Detail, WrapsThePlatformMaths) {
    EXPECT_EQ(Mensura::Detail::_fabs(-2.5), 2.5);
    EXPECT_TRUE(std::signbit(-0.0) && !std::signbit(Mensura::Detail::_fabs(-0.0)));
    EXPECT_EQ(Mensura::Detail::_sqrt(2.0), std::sqrt(2.0));
    EXPECT_EQ(Mensura::Detail::_sin(1.0), std::sin(1.0));
    EXPECT_EQ(Mensura::Detail::_cos(1.0), std::cos(1.0));
    EXPECT_EQ(Mensura::Detail::_tan(1.0), std::tan(1.0));
    EXPECT_EQ(Mensura::Detail::_pow(1024.0, 3.0), 1073741824.0);
    EXPECT_TRUE(Mensura::Detail::_isNaN(std::nan("")));
    EXPECT_FALSE(Mensura::Detail::_isNaN(1.0));
    EXPECT_FALSE(Mensura::Detail::_isFinite(std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(Mensura::Detail::_isFinite(std::nan("")));
    EXPECT_TRUE(Mensura::Detail::_isFinite(1e308));
}

TEST(Quantity, ToleranceIsExportedUnderItsNameAndReadsZero) {
    // Private to callers' code, so it is reached the way a linker reaches it.
    void* self = dlopen(nullptr, RTLD_NOW);
    ASSERT_NE(self, nullptr);
    const void* tolerance =
        dlsym(self, "_ZN7Mensura8QuantityILi0ELi0ELi0ELi0ELi0ELi0ELi0EE11s_toleranceE");
    ASSERT_NE(tolerance, nullptr);
    EXPECT_EQ(*static_cast<const double*>(tolerance), 0.0);
    dlclose(self);
}

}  // namespace
