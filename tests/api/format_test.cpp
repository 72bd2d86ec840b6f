// Rendering a value with its unit, through the shared library: the choice of
// the symbol, the defaults, the texts of the simple symbols, and the buffer.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <string>
#include <vector>

#include "mensura/mensura.hpp"
#include "support/narrow.h"

namespace {

using namespace Mensura;
using MensuraTest::Narrow;

struct Rendered {
    ErrorCode result;
    std::u16string text;
    double converted;
};

Rendered Render(const Formatter& formatter, double value, int unit, int symbol = 0,
                std::size_t size = 64) {
    std::vector<char16_t> buffer(size + 1, u'#');
    Rendered rendered{ErrorCode::Failure, u"", -1.0};
    rendered.result =
        formatter.Format(value, unit, buffer.data(), size, symbol, &rendered.converted);
    if (rendered.result == ErrorCode::Success) rendered.text = buffer.data();
    return rendered;
}

TEST(Format, RendersTheNumberAndTheSymbol) {
    const Formatter formatter;
    struct Row {
        double value;
        int unit, symbol;
        const char16_t* text;
    } rows[] = {
        {1.0, kMeter, 0, u"1.00 meter"},
        {1.0, kMeter, 0x202001, u"1.00 m"},
        {1.0, 0x202001, 0, u"1.00 m"},  // a symbol id serves as the unit and the request
        {5.5, kMeter, 0x202001, u"5.50 m"},
        {-5.5, kMeter, 0x202001, u"-5.50 m"},
        {20.0, kCelsius, 0x22A002, u"20.00°C"},
        {20.0, kCelsius, 0x32A002, u"20.00 deg C"},
        {20.0, kCelsius, 0x42A002, u"20.00℃"},
        {12.0, kInch, 0x402016, u"12.00″"},
        {5.5, kUnitless, 0, u"5.50"},  // the unitless value is the bare number
        {1234567.891, kMeter, 0x202001, u"1,234,567.89 m"},
        {293.15, kKelvin, 0x22A002, u"20.00°C"},  // kelvin shown in Celsius
        {1.0, kRankine, 0x22A004, u"1.00°R"},
    };
    for (const Row& row : rows) {
        const Rendered rendered = Render(formatter, row.value, row.unit, row.symbol);
        EXPECT_EQ(rendered.result, ErrorCode::Success) << Narrow(row.text);
        EXPECT_EQ(rendered.text, row.text) << Narrow(rendered.text);
    }
}

TEST(Format, ConvertedIsTheWholeValueInTheChosenUnit) {
    const Formatter formatter;
    const Rendered feet = Render(formatter, 1.0, kMeter, 0x202017);
    EXPECT_EQ(feet.text, u"3.28 ft");
    EXPECT_DOUBLE_EQ(feet.converted, 1.0 / 0.3048);
    const Rendered meters = Render(formatter, 2.5, kMeter);
    EXPECT_EQ(meters.converted, 2.5);
}

TEST(Format, RefusalsLeaveConvertedAlone) {
    const Formatter formatter;
    struct Row {
        int unit, symbol;
        ErrorCode result;
    } rows[] = {
        {kMeter, kSquareMeter, ErrorCode::UnitMismatch},  // an area symbol for a length
        {0, 0, ErrorCode::Failure},                       // no unit
        {kMeter, 0x902001, ErrorCode::Failure},           // the meter has no ninth symbol
        {0x45001, 0, ErrorCode::Failure},
    };
    for (const Row& row : rows) {
        const Rendered rendered = Render(formatter, 1.0, row.unit, row.symbol);
        EXPECT_EQ(rendered.result, row.result) << std::hex << row.unit << " " << row.symbol;
        EXPECT_EQ(rendered.converted, -1.0);
    }
}

TEST(Format, BufferMustHoldTheTextAndItsTerminator) {
    const Formatter formatter;
    // "1.00 meter" is 10 units.
    EXPECT_EQ(Render(formatter, 1.0, kMeter, 0, 11).result, ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 1.0, kMeter, 0, 10).result, ErrorCode::Failure);
    EXPECT_EQ(Render(formatter, 20.0, kCelsius, 0x22A002, 8).text, u"20.00°C");
    EXPECT_EQ(Render(formatter, 20.0, kCelsius, 0x22A002, 7).result, ErrorCode::Failure);
    EXPECT_EQ(formatter.Format(1.0, kMeter, nullptr, 64), ErrorCode::Failure);
    char16_t buffer[8];
    EXPECT_EQ(formatter.Format(1.0, kMeter, buffer, 0), ErrorCode::Failure);
}

TEST(FormatDefaults, ChooseTheSymbolAndTheUnit) {
    Formatter formatter;
    EXPECT_EQ(formatter.GetDefaultUnit(0x2000), kMeter);
    EXPECT_EQ(formatter.GetDefaultUnit(kMeter), 0);
    EXPECT_EQ(formatter.GetDefaultSymbol(kMeter), 0x102001);
    EXPECT_EQ(formatter.GetDefaultSymbol(0x2000), 0);
    EXPECT_EQ(formatter.GetDefaultSymbol(0x102001), 0);

    EXPECT_EQ(formatter.SetDefaultSymbol(0x202001), ErrorCode::Success);
    EXPECT_EQ(Render(formatter, 1.0, kMeter).text, u"1.00 m");
    EXPECT_EQ(formatter.GetDefaultSymbol(kMeter), 0x202001);

    EXPECT_EQ(formatter.SetDefaultUnit(0x102017), ErrorCode::Success);  // the symbol is dropped
    EXPECT_EQ(formatter.GetDefaultUnit(0x2000), kFoot);
    EXPECT_EQ(Render(formatter, 1.0, kMeter).text, u"1.00 m");  // a unit type skips the group
    EXPECT_EQ(Render(formatter, 1.0, kMeter, 0x2000).text, u"3.28 foot");

    EXPECT_EQ(formatter.SetDefaultSymbol(kMeter), ErrorCode::Failure);    // no symbol field
    EXPECT_EQ(formatter.SetDefaultSymbol(0x902001), ErrorCode::Failure);  // no ninth symbol
    EXPECT_EQ(formatter.SetDefaultUnit(0x2000), ErrorCode::Failure);      // no type field
    EXPECT_EQ(formatter.GetDefaultSymbol(kMeter), 0x202001);

    // Copies share the defaults.
    Formatter copy(formatter);
    EXPECT_EQ(copy.GetDefaultUnit(0x2000), kFoot);
}

TEST(FormatLocale, ChineseFormattersRenderChineseSymbols) {
    const Formatter chinese(2052);
    EXPECT_EQ(Render(chinese, 1.0, kMeter).text, u"1.00 米");
    EXPECT_EQ(Render(chinese, 1.0, kMeter, 0x202001).text, u"1.00 m");
}

TEST(UnitSymbols, ListTheSymbolsOfAUnitType) {
    EXPECT_EQ(Formatter::GetUnitSymbols(kMeter, nullptr), 2u);
    EXPECT_EQ(GetUnitSymbols(kInch, nullptr), 9u);
    int ids[2] = {0, 0};
    EXPECT_EQ(GetUnitSymbols(kMeter, ids), 2u);
    EXPECT_EQ(ids[0], 0x102001);
    EXPECT_EQ(ids[1], 0x202001);
    EXPECT_EQ(GetUnitSymbols(0x2000, nullptr), 0u);
}

}  // namespace
