/* The flat functions, called from C through mensura.h. */
#include <stdio.h>
#include <string.h>

#include "mensura/mensura.h"

static int passed = 0;
static int failed = 0;

static void check(int condition, const char* what) {
    if (condition) {
        ++passed;
    } else {
        ++failed;
        printf("FAILED: %s\n", what);
    }
}

static int same_bits(double a, double b) { return memcmp(&a, &b, sizeof a) == 0; }

int main(void) {
    double out = -1.0;
    int groups[68];
    int lengths[66];

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

    printf("%d passed, %d failed\n", passed, failed);
    return failed == 0 ? 0 : 1;
}
