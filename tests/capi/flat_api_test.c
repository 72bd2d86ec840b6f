/* The flat functions, called from C through mensura.h. */
#include <stdio.h>
#include <string.h>

#include "check.h"
#include "mensura/mensura.h"

int main(void) {
    double out = -1.0;
    int groups[68];
    int lengths[66];
    int symbols[4] = {-1, -1, -1, -1};
    int32_t sizes[2] = {-1, -1};
    MensuraFormatter* formatter;
    int32_t digits = 0;
    uint64_t count = 0;
    MensuraChar16 sign[2] = {'#', '#'};
    MensuraChar16 plus[2] = {'+', 0};
    const MensuraChar16 ft[3] = {'f', 't', 0};
    const MensuraChar16 ftx[4] = {'f', 't', 'x', 0};
    const MensuraChar16 mi[2] = {0x7C73, 0}; /* the Chinese name of the meter */
    const MensuraChar16 celsius[3] = {0xB0, 'C', 0};
    const MensuraChar16 slash[2] = {'/', 0};
    const MensuraChar16 empty[1] = {0};
    const MensuraChar16 kilojoules[5] = {'5', ' ', 'k', 'J', 0};
    const MensuraChar16 feets[8] = {'5', ' ', 'f', 'e', 'e', 't', 's', 0};
    MensuraParseReport report;
    int dimensions[7] = {0, 0, 0, 0, 0, 0, 0};
    int reading = -1;
    double joules = -1.0;
    int unit = 0;

    check(Convert(100.0, 0x2A002, &out, 0x2A003) == 0, "Celsius to Fahrenheit succeeds");
    check(same_bits(out, 211.99999999999997), "100 C is 211.99999999999997 F, not rounded");

    check(Convert(1.0, 0x2017, &out, 0x2016) == 0 && out == 12.0, "a foot is 12 inches");
    check(Convert(1.0, 0x2017, NULL, 0x2016) == 1, "a null out gives 1");
    check(Convert(1.0, 0x7FFFF, NULL, 0x7FFFF) == 1, "a null out gives 1 before any lookup");

    out = -1.0;
    check(Convert(1.0, 0, &out, 0x2001) == 4 && out == -1.0, "an unknown unit gives 4, out untouched");
    check(Convert(1.0, 0x2001, &out, 0x3001) == 4 && out == 1.0,
          "a length into an area gives 4 and leaves the base value");

    check(same_bits(ConversionFactor(0x2A004, 0x2A001), 0.5555555555555556), "Rankine to kelvin");
    check(ConversionFactor(0x2017, 0x2001) == 0.3048, "foot to meter");
    check(ConversionFactor(0x2A002, 0x2A003) == 0.0, "no factor between offset scales");
    check(ConversionFactor(0x2001, 0x3001) == 0.0, "no factor across dimensions");

    check(GetUnitGroups(NULL) == 68, "68 groups");
    check(GetUnitGroups(groups) == 68 && groups[0] == 0x1000 && groups[67] == 0x44000,
          "group ids run from 0x1000 to 0x44000");
    check(GetUnitTypes(0x2000, NULL) == 66, "66 lengths");
    check(GetUnitTypes(0x2000, lengths) == 66 && lengths[0] == 0x2001 && lengths[65] == 0x2042,
          "length ids run from 0x2001 to 0x2042");
    check(GetUnitTypes(0x45000, NULL) == 0, "group 69 does not exist");
    check(CopyUnitTypes(0x202017, lengths, 66) == 66 && lengths[0] == 0x2001 &&
              lengths[65] == 0x2042,
          "CopyUnitTypes takes the group of a symbol id and gives pure type ids");
    check(CopyUnitSymbols(0x202017, symbols, 2) == 3 && symbols[0] == 0x102017 &&
              symbols[1] == 0x202017 && symbols[2] == -1,
          "CopyUnitSymbols writes no more than its capacity");

    formatter = CreateFormatter(2052);
    check(formatter != NULL, "a formatter for Simplified Chinese");
    check(FormatterNumberSetting(formatter, 5, &digits, 0) == 0 && digits == 2,
          "2 decimal digits by default");
    digits = 6;
    check(FormatterNumberSetting(formatter, 6, &digits, 0) == 0, "6 decimal digits accepted");
    digits = 100;
    check(FormatterNumberSetting(formatter, 6, &digits, 0) == 1, "100 decimal digits refused");
    check(FormatterNumberSetting(formatter, 5, &digits, 0) == 0 && digits == 6,
          "the refusal kept 6 decimal digits");
    check(FormatterNumberSetting(formatter, 3, sign, 2) == 0 && sign[0] == '-' && sign[1] == 0,
          "the negative sign is \"-\"");
    check(FormatterNumberSetting(formatter, 16, plus, 0) == 0, "a positive sign is accepted");
    check(FormatterNumberSetting(formatter, 15, sign, 1) == 0 && sign[0] == 0,
          "a buffer of 1 receives the terminator alone");
    check(FormatterNumberSetting(formatter, 13, &count, 0) == 0 && count == 1, "one group size");
    check(FormatterNumberSetting(formatter, 17, &digits, 0) == 1, "selector 17 does not exist");
    check(FormatterNumberSettingChecked(formatter, 13, sizes, sizeof sizes[0]) == 0 &&
              sizes[0] == 3 && sizes[1] == -1,
          "the checked group sizes fit in 4 bytes");
    check(FormatterNumberSettingChecked(formatter, 5, &digits, 2) == 1,
          "the checked decimal digits need 4 bytes");
    check(FormatterNumberSetting(formatter, 5, NULL, 0) == 1, "null data is refused");
    check(FormatterNumberSetting(NULL, 5, &digits, 0) == 1, "a null formatter is refused");
    check(FormatterReadingSetting(formatter, 1, &reading) == 0 && reading == 0,
          "the everyday reading is off by default");
    check(Parse(formatter, kilojoules, &joules, 0x13001) == 2 && joules == -1.0,
          "\"5 kJ\" is refused by default");
    reading = 1;
    check(FormatterReadingSetting(formatter, 2, &reading) == 0, "the everyday reading is set");
    check(Parse(formatter, kilojoules, &joules, 0x13001) == 0 && joules == 5000.0,
          "\"5 kJ\" reads with the everyday reading");
    check(FormatterReadingSetting(formatter, 1, NULL) == 1, "a null value is refused");
    check(FormatterReadingSetting(formatter, 9, &reading) == 1, "selector 9 does not exist");
    memset(&report, 0, sizeof report);
    report.size = sizeof report;
    check(ExplainParse(formatter, feets, 0x2001, &report) == MENSURA_PARSE_FAILURE &&
              report.reason == MENSURA_UNKNOWN_TEXT && report.start == 2 && report.length == 5,
          "\"5 feets\" is explained by the span of \"feets\"");
    report.size = sizeof report - 1;
    check(ExplainParse(formatter, feets, 0x2001, &report) == MENSURA_FAILURE,
          "a report that is too small is refused");
    check(GetUnitDimensions(0x17001, dimensions) == MENSURA_SUCCESS && dimensions[0] == 1 &&
              dimensions[1] == 1 && dimensions[2] == -2 && dimensions[3] == 0,
          "the newton is length times mass per time squared");
    DestroyFormatter(formatter);
    DestroyFormatter(NULL);

    check(FindUnit(ft, &unit) == 0 && unit == 0x2017, "\"ft\" is the foot, 0x2017");
    check(FindUnit(mi, &unit) == 0 && unit == 0x2001, "the Chinese name of the meter is 0x2001");
    check(FindUnit(celsius, &unit) == 0 && unit == 0x2A002, "a temperature scale is found");
    unit = -1;
    check(FindUnit(ftx, &unit) == 1 && unit == -1, "\"ftx\" is refused, unit untouched");
    check(FindUnit(slash, &unit) == 1 && unit == -1, "an operator is no unit");
    check(FindUnit(empty, &unit) == 1 && unit == -1, "the empty text is refused");
    check(FindUnit(NULL, &unit) == 1 && unit == -1, "a null text is refused");
    check(FindUnit(ft, NULL) == 1, "a null unit is refused");

    return summary();
}
