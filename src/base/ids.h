// The ids that the library's own code and its tests name: groups and unit
// types that a notation or a rule is about. Written once here; a test holds
// each to the public id of the same name in mensura/ids.h, which is written
// from the catalogue's display names.
#ifndef MENSURA_BASE_IDS_H
#define MENSURA_BASE_IDS_H

namespace Mensura {

// Groups.
constexpr int kDimensionless = 0x1000;
constexpr int kLength = 0x2000;
constexpr int kMass = 0x5000;
constexpr int kAngle = 0x8000;
constexpr int kForce = 0x17000;
constexpr int kPower = 0x1D000;
constexpr int kConductance = 0x27000;
constexpr int kTemperature = 0x2A000;
constexpr int kTime = 0x2C000;

// Unit types.
constexpr int kUnitless = 0x1001;
constexpr int kMeter = 0x2001;
constexpr int kSquareMeter = 0x3001;
constexpr int kInch = 0x2016;
constexpr int kFoot = 0x2017;
constexpr int kLiter = 0x4001;
constexpr int kKilogram = 0x5001;
constexpr int kGramPerSquareMeter = 0xA001;
constexpr int kKilogramPerCubicMeter = 0x11001;
constexpr int kJoule = 0x13001;
constexpr int kRadian = 0x8001;
constexpr int kDegree = 0x8002;
constexpr int kAngleMinute = 0x8008;
constexpr int kAngleSecond = 0x8009;
constexpr int kNewton = 0x17001;
constexpr int kWatt = 0x1D001;
constexpr int kPascal = 0x2100E;
constexpr int kByte = 0x29001;
constexpr int kSiemens = 0x27001;
constexpr int kKelvin = 0x2A001;
constexpr int kCelsius = 0x2A002;
constexpr int kFahrenheit = 0x2A003;
constexpr int kRankine = 0x2A004;
constexpr int kSecond = 0x2C001;
constexpr int kMinute = 0x2C016;
constexpr int kHour = 0x2C017;
constexpr int kDay = 0x2C018;
constexpr int kMeterPerSecondSquared = 0x30001;

}  // namespace Mensura

#endif  // MENSURA_BASE_IDS_H
