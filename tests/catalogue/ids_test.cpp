// The named ids of the library's own code, held to the catalogue: each names
// the group or unit type whose English display name it says.
#include "base/ids.h"

#include <gtest/gtest.h>

#include <string>

#include "catalogue/unit_catalog.h"
#include "support/narrow.h"

namespace Mensura {
namespace {

TEST(NamedIds, NameWhatTheCatalogueCallsThem) {
    const struct {
        int id;
        const char16_t* name;
    } rows[] = {
        {kDimensionless, u"Dimensionless"},
        {kLength, u"Length"},
        {kMass, u"Mass"},
        {kAngle, u"Angle"},
        {kForce, u"Force"},
        {kPower, u"Power"},
        {kConductance, u"Electric Conductance"},
        {kTemperature, u"Temperature"},
        {kTime, u"Time"},
        {kUnitless, u"unitless"},
        {kMeter, u"meter"},
        {kSquareMeter, u"square meter"},
        {kInch, u"inch"},
        {kFoot, u"foot"},
        {kLiter, u"liter"},
        {kKilogram, u"kilogram"},
        {kGramPerSquareMeter, u"gram per square meter"},
        {kKilogramPerCubicMeter, u"kilogram per cubic meter"},
        {kJoule, u"joule"},
        {kRadian, u"radian"},
        {kDegree, u"degree"},
        {kAngleMinute, u"angle minute"},
        {kAngleSecond, u"angle second"},
        {kNewton, u"newton"},
        {kWatt, u"watt"},
        {kPascal, u"pascal"},
        {kByte, u"byte"},
        {kSiemens, u"siemens"},
        {kKelvin, u"kelvin"},
        {kCelsius, u"degree Celsius"},
        {kFahrenheit, u"degree Fahrenheit"},
        {kRankine, u"degree Rankine"},
        {kSecond, u"second"},
        {kMinute, u"minute"},
        {kHour, u"hour"},
        {kDay, u"day"},
        {kMeterPerSecondSquared, u"meter per second squared"},
    };
    for (const auto& row : rows) {
        char16_t name[64] = {};
        ASSERT_EQ(UnitCatalog::Instance().CopyDisplayName(row.id, name, 64, 0), ErrorCode::Success)
            << std::hex << row.id;
        EXPECT_EQ(std::u16string(name), row.name) << MensuraTest::Narrow(row.name);
    }
}

}  // namespace
}  // namespace Mensura
