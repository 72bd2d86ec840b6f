/* The flat functions, called from C through mensura.h: each takes and gives
 * the C types that the header declares. What each does at its edges is held
 * by the C++ tests of the same functions; the named ids, the lists of groups
 * and types and the display names by ids_test.c. */
#include <stdio.h>
#include <string.h>

#include "check.h"
#include "mensura/mensura.h"

int main(void) {
    double out = -1.0;
    int lengths[66];
    int symbols[4] = {-1, -1, -1, -1};
    int32_t sizes[2] = {-1, -1};
    MensuraFormatter* formatter;
    int32_t digits = 0;
    uint64_t count = 0;
    MensuraChar16 sign[2] = {'#', '#'};
    const MensuraChar16 ft[3] = {'f', 't', 0};
    const MensuraChar16 ftx[4] = {'f', 't', 'x', 0};
    const MensuraChar16 kilojoules[5] = {'5', ' ', 'k', 'J', 0};
    const MensuraChar16 feets[8] = {'5', ' ', 'f', 'e', 'e', 't', 's', 0};
    MensuraParseReport report;
    int dimensions[7] = {0, 0, 0, 0, 0, 0, 0};
    int reading = -1;
    double joules = -1.0;
    int unit = 0;

    check(Convert(1.0, 0x2017, &out, 0x2016) == 0 && out == 12.0, "a foot is 12 inches");
    check(Convert(1.0, 0x2001, &out, 0x3001) == 4 && out == 1.0,
          "a length into an area gives 4 and leaves the base value");
    check(same_bits(ConversionFactor(0x2A004, 0x2A001), 0.5555555555555556), "Rankine to kelvin");
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
    digits = 100;
    check(FormatterNumberSetting(formatter, 6, &digits, 0) == 1, "100 decimal digits refused");
    check(FormatterNumberSetting(formatter, 3, sign, 2) == 0 && sign[0] == '-' && sign[1] == 0,
          "the negative sign is \"-\"");
    check(FormatterNumberSetting(formatter, 13, &count, 0) == 0 && count == 1, "one group size");
    check(FormatterNumberSettingChecked(formatter, 13, sizes, sizeof sizes[0]) == 0 &&
              sizes[0] == 3 && sizes[1] == -1,
          "the checked group sizes fit in 4 bytes");
    check(FormatterReadingSetting(formatter, 1, &reading) == 0 && reading == 0,
          "the everyday reading is off by default");
    check(Parse(formatter, kilojoules, &joules, 0x13001) == 2 && joules == -1.0,
          "\"5 kJ\" is refused by default");
    reading = 1;
    check(FormatterReadingSetting(formatter, 2, &reading) == 0, "the everyday reading is set");
    check(Parse(formatter, kilojoules, &joules, 0x13001) == 0 && joules == 5000.0,
          "\"5 kJ\" reads with the everyday reading");
    memset(&report, 0, sizeof report);
    report.size = sizeof report;
    check(ExplainParse(formatter, feets, 0x2001, &report) == MENSURA_PARSE_FAILURE &&
              report.reason == MENSURA_UNKNOWN_TEXT && report.start == 2 && report.length == 5,
          "\"5 feets\" is explained by the span of \"feets\"");
    check(GetUnitDimensions(0x17001, dimensions) == MENSURA_SUCCESS && dimensions[0] == 1 &&
              dimensions[1] == 1 && dimensions[2] == -2 && dimensions[3] == 0,
          "the newton is length times mass per time squared");
    DestroyFormatter(formatter);
    DestroyFormatter(NULL);

    check(FindUnit(ft, &unit) == 0 && unit == 0x2017, "\"ft\" is the foot, 0x2017");
    unit = -1;
    check(FindUnit(ftx, &unit) == 1 && unit == -1, "\"ftx\" is refused, unit untouched");

    return summary();
}
