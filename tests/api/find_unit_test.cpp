// Looking a unit type up by its text, through the shared library: FindUnit
// and Formatter::FindUnit.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>
#include <vector>

#include "mensura/mensura.hpp"
#include "support/narrow.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;

constexpr int kUntouched = -7;

struct Found {
    const char16_t* text;
    int unit;
};

TEST(FindUnit, FindsTheUnitTypeOfAKey) {
    const Found rows[] = {
        {u"ft", kFoot},                 // an abbreviation, symbol 2 of the foot
        {u"foot", kFoot},               // the spelled-out name, symbol 1
        {u"metre", kMeter},             // a further key of the meter, not its text
        {u"m", kMeter},                 //
        {u"mm", 0x200E},                // the longer key, not "m" followed by "m"
        {u"米", kMeter},                // a Chinese name
        {u"英尺", kFoot},               //
        {u"m²", kSquareMeter},          // a key that holds an operator's character
        {u"m^2", kSquareMeter},         //
        {u"°C", kCelsius},              // a temperature scale
        {u"℃", kCelsius},               //
        {u"deg F", kFahrenheit},        //
        {u"degree Celsius", kCelsius},  // a key with a blank inside
        {u"K", kKelvin},                // kelvin is a plain scale
        {u"foot (U.S. Survey)", 0x201C},
    };
    for (const Found& row : rows) {
        int unit = kUntouched;
        EXPECT_EQ(FindUnit(row.text, &unit), 0) << Narrow(row.text);
        EXPECT_EQ(unit, row.unit) << Narrow(row.text);
        unit = kUntouched;
        EXPECT_EQ(Formatter::FindUnit(row.text, unit), ErrorCode::Success) << Narrow(row.text);
        EXPECT_EQ(unit, row.unit) << Narrow(row.text);
    }
}

TEST(FindUnit, RefusesWhatIsNoUnitKeyAndLeavesTheUnitAlone) {
    // Only a key whole, with no number; no key at all, or in another case;
    // operators; the marks of feet and minutes, and a look-alike; symbols of
    // the inch that render only. The degree mark and the letters of bearings
    // are operators, though the parser reads N, S, W and d as units too where
    // the target is no angle.
    const char16_t* const rows[] = {
        u"ftx", u"ft ", u" ft", u"5 ft",     u"",     u"feet", u"M", u"/", u"·", u"²", u"(",
        u" ",   u"′",   u"\"",  u"x′x x/2″", u"x′x″", u"N",    u"E", u"S", u"W", u"d", u"°"};
    for (const char16_t* text : rows) {
        int unit = kUntouched;
        EXPECT_EQ(FindUnit(text, &unit), 1) << Narrow(text);
        EXPECT_EQ(unit, kUntouched) << Narrow(text);
        EXPECT_EQ(Formatter::FindUnit(text, unit), ErrorCode::Failure) << Narrow(text);
        EXPECT_EQ(unit, kUntouched) << Narrow(text);
    }
    int unit = kUntouched;
    EXPECT_EQ(Formatter::FindUnit(nullptr, unit), ErrorCode::Failure);
    EXPECT_EQ(unit, kUntouched);
}

// FindUnit and Parse read one dictionary: whenever FindUnit names a unit for a
// symbol's text, "1" and that text read as exactly 1 in that unit. A wrong
// unit (the size of a temperature degree instead of its scale, another type
// of the group) reads as another number or not at all.
TEST(FindUnit, AgreesWithParseOnEverySymbolText) {
    int found = 0;
    for (int locale : {1033, 2052}) {
        const Formatter formatter(locale);
        std::vector<int> groups(Mensura::Converter::GetUnitGroups(nullptr));
        Mensura::Converter::GetUnitGroups(groups.data());
        for (int group : groups) {
            std::vector<int> types(Mensura::Converter::GetUnitTypes(group, nullptr));
            Mensura::Converter::GetUnitTypes(group, types.data());
            for (int type : types) {
                std::vector<int> symbols(Formatter::GetUnitSymbols(type, nullptr));
                Formatter::GetUnitSymbols(type, symbols.data());
                for (int symbol : symbols) {
                    char16_t name[128] = {};
                    ASSERT_EQ(formatter.GetDisplayName(symbol, name, 128), ErrorCode::Success);
                    int unit = 0;
                    if (Formatter::FindUnit(name, unit) != ErrorCode::Success) continue;
                    ++found;
                    EXPECT_EQ(unit & ~0xFFFFF, 0) << Narrow(name);
                    const std::u16string text = u"1 " + std::u16string(name);
                    double value = 0.0;
                    EXPECT_EQ(formatter.Parse(text.c_str(), value, unit), ErrorCode::Success)
                        << Narrow(text);
                    // Offset scales go through kelvin and may round in the last bit;
                    // the nearest two units of one group differ by parts per million.
                    EXPECT_NEAR(value, 1.0, 1e-12) << Narrow(text) << " in " << std::hex << unit;
                }
            }
        }
    }
    // Most symbols are keys: a FindUnit that refused nearly everything would
    // pass the loop above.
    EXPECT_GT(found, 2000);
}

}  // namespace
