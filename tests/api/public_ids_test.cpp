// The named ids of mensura/ids.h from C++: the header builds beside
// mensura.hpp with warnings as errors, its names pass where the classes take
// an id, and they agree with the ids that the library's own code names. That
// each name is the display name of its id is held by the generator's check
// of the header, and by a few names of tests/capi/ids_test.c.
#include <gtest/gtest.h>

#include "base/ids.h"


#include "mensura/ids.h"
#include "mensura/mensura.hpp"

namespace {

using Mensura::Converter;
using Mensura::ErrorCode;
using Mensura::Formatter;

TEST(PublicIds, AgreeWithTheIdsTheLibraryNames) {
    struct Row {
        int named, internal;
    } rows[] = {
        {MENSURA_GROUP_DIMENSIONLESS, Mensura::kDimensionless},
        {MENSURA_GROUP_LENGTH, Mensura::kLength},
        {MENSURA_GROUP_MASS, Mensura::kMass},
        {MENSURA_GROUP_ANGLE, Mensura::kAngle},
        {MENSURA_GROUP_FORCE, Mensura::kForce},
        {MENSURA_GROUP_POWER, Mensura::kPower},
        {MENSURA_GROUP_ELECTRIC_CONDUCTANCE, Mensura::kConductance},
        {MENSURA_GROUP_TEMPERATURE, Mensura::kTemperature},
        {MENSURA_GROUP_TIME, Mensura::kTime},
        {MENSURA_UNITLESS, Mensura::kUnitless},
        {MENSURA_METER, Mensura::kMeter},
        {MENSURA_SQUARE_METER, Mensura::kSquareMeter},
        {MENSURA_INCH, Mensura::kInch},
        {MENSURA_FOOT, Mensura::kFoot},
        {MENSURA_LITER, Mensura::kLiter},
        {MENSURA_KILOGRAM, Mensura::kKilogram},
        {MENSURA_GRAM_PER_SQUARE_METER, Mensura::kGramPerSquareMeter},
        {MENSURA_KILOGRAM_PER_CUBIC_METER, Mensura::kKilogramPerCubicMeter},
        {MENSURA_JOULE, Mensura::kJoule},
        {MENSURA_RADIAN, Mensura::kRadian},
        {MENSURA_DEGREE, Mensura::kDegree},
        {MENSURA_ANGLE_MINUTE, Mensura::kAngleMinute},
        {MENSURA_ANGLE_SECOND, Mensura::kAngleSecond},
        {MENSURA_NEWTON, Mensura::kNewton},
        {MENSURA_WATT, Mensura::kWatt},
        {MENSURA_PASCAL, Mensura::kPascal},
        {MENSURA_BYTE, Mensura::kByte},
        {MENSURA_SIEMENS, Mensura::kSiemens},
        {MENSURA_KELVIN, Mensura::kKelvin},
        {MENSURA_DEGREE_CELSIUS, Mensura::kCelsius},
        {MENSURA_DEGREE_FAHRENHEIT, Mensura::kFahrenheit},
        {MENSURA_DEGREE_RANKINE, Mensura::kRankine},
        {MENSURA_SECOND, Mensura::kSecond},
        {MENSURA_MINUTE, Mensura::kMinute},
        {MENSURA_HOUR, Mensura::kHour},
        {MENSURA_DAY, Mensura::kDay},
        {MENSURA_METER_PER_SECOND_SQUARED, Mensura::kMeterPerSecondSquared},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.named, row.internal) << std::hex << row.internal;
    }
}

TEST(PublicIds, PassWhereTheClassesTakeAnId) {
    double out = 0.0;
    EXPECT_EQ(Converter::Convert(1.0, MENSURA_FOOT, out, MENSURA_INCH), ErrorCode::Success);
    EXPECT_EQ(out, 12.0);
    EXPECT_EQ(Converter::Factor(MENSURA_HOUR, MENSURA_SECOND), 3600.0);
    EXPECT_EQ(Converter::GetUnitTypes(MENSURA_GROUP_TEMPERATURE, nullptr), 4u);

    int unit = 0;
    ASSERT_EQ(Formatter::FindUnit(u"ft", unit), ErrorCode::Success);
    EXPECT_EQ(unit, MENSURA_FOOT);
}

}  // namespace
