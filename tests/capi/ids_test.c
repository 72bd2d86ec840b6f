/* The named ids of mensura/ids.h, compiled as C, through the flat functions. */
#include <stdio.h>
#include <string.h>

#include "check.h"
#include "mensura/ids.h"
#include "mensura/mensura.h"

/* The names are integer constant expressions: they size arrays and label cases. */
typedef char length_is_group_2[MENSURA_GROUP_LENGTH == 0x2000 ? 1 : -1];
typedef char foot_is_type_23_of_length[MENSURA_FOOT == 0x2017 ? 1 : -1];

/* Whether the English display name of id is the UTF-8 text expected. */
static int is_named(int id, const char* expected) {
    MensuraChar16 name[128];
    const unsigned char* p = (const unsigned char*)expected;
    size_t i = 0;
    if (GetDisplayName(1033, id, name, sizeof name / sizeof name[0]) != 0) return 0;
    while (*p != 0) {
        unsigned code;
        if (*p < 0x80) {
            code = *p++;
        } else if ((*p & 0xE0) == 0xC0) {
            code = ((p[0] & 0x1Fu) << 6) | (p[1] & 0x3Fu);
            p += 2;
        } else {
            code = ((p[0] & 0x0Fu) << 12) | ((p[1] & 0x3Fu) << 6) | (p[2] & 0x3Fu);
            p += 3;
        }
        if (name[i++] != code) return 0;
    }
    return name[i] == 0;
}

static const char* unit_kind(int id) {
    switch (id) {
        case MENSURA_GROUP_LENGTH:
            return "group";
        case MENSURA_FOOT:
        case MENSURA_INCH:
            return "length";
        default:
            return "other";
    }
}

int main(void) {
    double out = -1.0;
    int groups[68];
    int lengths[66];
    size_t group_count;
    size_t length_count;

    check(Convert(1.0, MENSURA_FOOT, &out, MENSURA_INCH) == 0 && out == 12.0,
          "MENSURA_FOOT in MENSURA_INCH is 12");
    check(Convert(100.0, MENSURA_DEGREE_CELSIUS, &out, MENSURA_DEGREE_FAHRENHEIT) == 0 &&
              same_bits(out, 211.99999999999997),
          "100 MENSURA_DEGREE_CELSIUS is 211.99999999999997 MENSURA_DEGREE_FAHRENHEIT");
    check(ConversionFactor(MENSURA_FOOT, MENSURA_METER) == 0.3048, "MENSURA_FOOT is 0.3048 m");
    check(Convert(1.0, MENSURA_FOOT, &out, MENSURA_SQUARE_METER) == 4,
          "MENSURA_SQUARE_METER is an area, no length");

    check(is_named(MENSURA_GROUP_LENGTH, "Length"), "MENSURA_GROUP_LENGTH is Length");
    check(is_named(MENSURA_GROUP_TEMPERATURE, "Temperature"),
          "MENSURA_GROUP_TEMPERATURE is Temperature");
    check(is_named(MENSURA_GROUP_PARTS_PER, "Parts\xE2\x80\x90per"),
          "MENSURA_GROUP_PARTS_PER is Parts-per with a hyphen");
    check(is_named(MENSURA_FOOT, "foot"), "MENSURA_FOOT is the foot");
    check(is_named(MENSURA_FOOT_US_SURVEY, "foot (U.S. Survey)"),
          "MENSURA_FOOT_US_SURVEY is foot (U.S. Survey)");
    check(is_named(MENSURA_DEGREE_CELSIUS, "degree Celsius"),
          "MENSURA_DEGREE_CELSIUS is degree Celsius");
    check(is_named(MENSURA_ANGSTROM, "\xC3\xA5ngstr\xC3\xB6m"), "MENSURA_ANGSTROM is the angstrom");
    check(is_named(MENSURA_LIGHT_YEAR, "light\xE2\x80\x90year"),
          "MENSURA_LIGHT_YEAR is light-year");
    check(is_named(MENSURA_CALORIE_3_98C,
                   "calorie (3.98\xC2\xB0"
                   "C)"),
          "MENSURA_CALORIE_3_98C is calorie (3.98 degrees C)");
    check(is_named(MENSURA_NEWTOR_PER_SQUARE_METER, "newtor per square meter"),
          "MENSURA_NEWTOR_PER_SQUARE_METER keeps the catalogue's spelling");

    /* One display name, two groups: each name carries its group. */
    check(is_named(MENSURA_POUND_FORCE_PER_FOOT_LINEAR_FORCE,
                   "pound\xE2\x80\x90"
                   "force per foot") &&
              is_named(MENSURA_POUND_FORCE_PER_FOOT_LINEAR_MOMENT,
                       "pound\xE2\x80\x90"
                       "force per foot"),
          "both pound-force per foot are named");
    check((MENSURA_POUND_FORCE_PER_FOOT_LINEAR_FORCE & 0xFF000) == MENSURA_GROUP_LINEAR_FORCE,
          "MENSURA_POUND_FORCE_PER_FOOT_LINEAR_FORCE is of Linear Force");
    check((MENSURA_POUND_FORCE_PER_FOOT_LINEAR_MOMENT & 0xFF000) == MENSURA_GROUP_LINEAR_MOMENT,
          "MENSURA_POUND_FORCE_PER_FOOT_LINEAR_MOMENT is of Linear Moment");

    /* The packing: groups have type 0, types symbol 0 and their group's bits. */
    check((MENSURA_GROUP_TIME & 0xFFF) == 0 && (MENSURA_GROUP_TIME & 0xFF00000) == 0,
          "a group id has neither type nor symbol");
    check((MENSURA_HOUR & 0xFF00000) == 0 && (MENSURA_HOUR & 0xFF000) == MENSURA_GROUP_TIME,
          "a type id has no symbol and its group's bits");

    /* The lists of the catalogue begin and end with the named ids. */
    group_count = GetUnitGroups(NULL);
    check(group_count == 68 && GetUnitGroups(groups) == 68 &&
              groups[0] == MENSURA_GROUP_DIMENSIONLESS &&
              groups[67] == MENSURA_GROUP_MAGNETIC_FIELD_INTENSITY,
          "the groups run from MENSURA_GROUP_DIMENSIONLESS to "
          "MENSURA_GROUP_MAGNETIC_FIELD_INTENSITY");
    length_count = GetUnitTypes(MENSURA_GROUP_LENGTH, NULL);
    check(length_count == 66 && GetUnitTypes(MENSURA_GROUP_LENGTH, lengths) == 66 &&
              lengths[0] == MENSURA_METER && lengths[65] == MENSURA_BOLT,
          "the lengths run from MENSURA_METER to MENSURA_BOLT");

    check(strcmp(unit_kind(MENSURA_GROUP_LENGTH), "group") == 0 &&
              strcmp(unit_kind(MENSURA_INCH), "length") == 0 &&
              strcmp(unit_kind(MENSURA_METER), "other") == 0,
          "the names label the cases of a switch");

    return summary();
}
