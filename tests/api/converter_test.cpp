// The Converter class and the flat conversion functions, through the shared
// library as a caller sees them.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "base/ids.h"

#include <cmath>
#include <limits>
#include <utility>

#include "mensura/mensura.hpp"
#include "support/same_bits.h"

namespace {

using namespace Mensura;
using MensuraTest::SameBits;

// Convert goes through the base in two rounded steps; ids that agree in their
// low 20 bits copy the value without a lookup; an unknown unit leaves out
// alone, and other dimensions leave the value in base units. The ids of no
// unit type, as the unit converted from, are rows of the flat boundary.
TEST(ConverterStatic, ConvertsThroughTheBaseInTwoRoundedSteps) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        int from, to;
        ErrorCode code;
        double out;  // -7 where it stays as it was
    } rows[] = {
        {1.0, kFoot, kInch, ErrorCode::Success, 12.0},  // 0.3048 / 0.025400000000000002
        {100.0, kCelsius, kFahrenheit, ErrorCode::Success, 211.99999999999997},  // not 212
        {0.0, kCelsius, kKelvin, ErrorCode::Success, 273.15},
        {273.15, kKelvin, kCelsius, ErrorCode::Success, 0.0},
        {1.0, kRankine, kKelvin, ErrorCode::Success, 0.5555555555555556},
        {5.0, kFoot, kMeter, ErrorCode::Success, 1.524},
        {-infinity, kFoot, kMeter, ErrorCode::Success, -infinity},
        {1e308, 0x2021, kMeter, ErrorCode::Success, infinity},  // a mile
        {5.0, kFoot, 0x202017, ErrorCode::Success, 5.0},
        {5.0, 0, 0, ErrorCode::Success, 5.0},
        {5.0, 0x12345, 0x512345, ErrorCode::Success, 5.0},
        {1.0, kMeter, 0, ErrorCode::UnitMismatch, -7.0},
        {1.0, 0x2043, kMeter, ErrorCode::UnitMismatch, -7.0},
        {1.0, 0x45001, kMeter, ErrorCode::UnitMismatch, -7.0},
        {1.0, kFoot, kSquareMeter, ErrorCode::UnitMismatch, 0.3048},
    };
    for (const auto& row : rows) {
        double out = -7.0;
        EXPECT_EQ(Converter::Convert(row.value, row.from, out, row.to), row.code)
            << std::hex << row.from << " -> " << row.to;
        EXPECT_TRUE(SameBits(out, row.out)) << std::hex << row.from << " -> " << row.to;
    }
    double out = 0.0;
    EXPECT_EQ(Converter::Convert(std::nan(""), kFoot, out, kMeter), ErrorCode::Success);
    EXPECT_TRUE(std::isnan(out));
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
    };
    for (const Row& row : rows) {
        EXPECT_TRUE(SameBits(Converter::Factor(row.from, row.to), row.expected))
            << std::hex << row.from << " -> " << row.to;
        EXPECT_TRUE(SameBits(ConversionFactor(row.from, row.to), row.expected));
    }
}

// The pair of units a converter holds.
std::pair<int, int> Units(const Converter& converter) {
    std::pair<int, int> units{0, 0};
    converter.GetUnit(&units.first, &units.second);
    return units;
}

TEST(ConverterObject, HoldsAnAcceptedPairOrMinusOne) {
    Converter none;  // passes values through
    EXPECT_EQ(Units(none), std::make_pair(-1, -1));
    EXPECT_EQ(none.Convert(5.0), 5.0);
    EXPECT_EQ(none.Factor(), 1.0);
    none.GetUnit(nullptr, nullptr);  // either pointer may be null
    const Converter refused(kMeter, kSquareMeter);
    EXPECT_EQ(Units(refused), std::make_pair(-1, -1));
    EXPECT_EQ(refused.Convert(3.0), 3.0);

    Converter converter(kCelsius, kFahrenheit);
    EXPECT_EQ(Units(converter), std::make_pair(kCelsius, kFahrenheit));
    EXPECT_EQ(converter.Factor(), 0.0);
    EXPECT_TRUE(SameBits(converter.Convert(0.0), 31.999999999999986));
    EXPECT_EQ(converter.SetUnit(0, kSquareMeter), ErrorCode::UnitMismatch);
    EXPECT_EQ(Units(converter), std::make_pair(kCelsius, kFahrenheit));
    EXPECT_EQ(converter.SetUnit(0, kKelvin), ErrorCode::Success);  // 0 keeps the stored side
    EXPECT_EQ(Units(converter), std::make_pair(kCelsius, kKelvin));
    EXPECT_EQ(converter.Convert(0.0), 273.15);
}

TEST(ConverterObject, FirstSetUnitNeedsBothSides) {
    Converter converter;
    EXPECT_EQ(converter.SetUnit(kMeter, 0), ErrorCode::UnitMismatch);  // -1 finds no unit
    EXPECT_EQ(converter.SetUnit(0xFFFFF, 0), ErrorCode::Success);      // equal to -1 in 20 bits
    EXPECT_EQ(converter.SetUnit(kFoot, kInch), ErrorCode::Success);
    EXPECT_EQ(converter.Convert(1.0), 12.0);
    // Copies are independent values.
    Converter copy;
    copy = converter;
    EXPECT_EQ(converter.SetUnit(kMeter, 0), ErrorCode::Success);
    EXPECT_EQ(Units(copy), std::make_pair(kFoot, kInch));
    EXPECT_EQ(copy.Convert(2.0), 24.0);
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
