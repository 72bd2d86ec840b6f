// The whole conversion table, held against the published figures: the stated
// factors bit for bit, the shape of the groups and the exponent index.
#include <gtest/gtest.h>

#include "base/ids.h"

#include <cmath>
#include <set>
#include <vector>

#include "support/same_bits.h"
#include "units/unit_table.h"

namespace Mensura {
namespace {

using MensuraTest::SameBits;

struct StatedFactor {
    int group;
    int type;
    double factor;
};

struct GroupShape {
    int group;
    int types;
    Dimensions exponents;
};

// The factors that the table's lines state after their builds.
std::vector<StatedFactor> StatedFactors() {
    std::vector<StatedFactor> rows;
    int group = 0, type = 0;
#define GROUP(...)
#define UNIT(g, t, ...) \
    group = g;          \
    type = t;
#define EQ(factor) rows.push_back({group, type, factor});
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
    return rows;
}

std::vector<GroupShape> GroupShapes() {
    return {
#define GROUP(group, types, ...) {group, types, {__VA_ARGS__}},
#define UNIT(...)
#define EQ(factor)
#include "units/conversion_table.inc"
#undef GROUP
#undef UNIT
#undef EQ
    };
}

// The first type of each group whose factor is exactly 1 with no offset; 0 where
// no type has factor 1.
constexpr int kTypeOfFactorOne[68] = {1, 1, 1, 24, 1, 1, 1, 1, 1, 0, 0, 0, 1, 1, 1, 1,  1,
                                      1, 1, 1, 1,  0, 1, 1, 1, 1, 3, 1, 1, 1, 1, 1, 14, 1,
                                      1, 1, 1, 1,  1, 1, 2, 1, 0, 1, 1, 3, 0, 1, 1, 1,  1,
                                      1, 1, 1, 1,  1, 1, 1, 0, 0, 1, 1, 1, 1, 1, 1, 2,  2};

const UnitTable& Catalog() {
    return UnitTable::Instance();
}

const UnitConverter& At(int group, int type) {
    const UnitConverter* converter = Catalog().FindConverter((group << 12) | type);
    if (converter == nullptr) throw std::logic_error("no converter");
    return *converter;
}

TEST(ConversionTable, EveryStatedFactorHoldsBitForBit) {
    const std::vector<StatedFactor> rows = StatedFactors();
    ASSERT_FALSE(rows.empty());
    for (const StatedFactor& row : rows) {
        EXPECT_TRUE(SameBits(At(row.group, row.type).GetFactor(), row.factor))
            << "[" << row.group << "." << row.type << "]";
    }
}

// Every type of the groups as the table's lines state them: a converter with
// the exponents of its group; 773 types in 68 groups, as published, and the
// first type of each group whose factor is exactly 1 with no offset.
TEST(ConversionTable, EveryTypeOfEachGroupIsThereWithItsExponents) {
    const std::vector<GroupShape> shapes = GroupShapes();
    ASSERT_EQ(shapes.size(), 68u);
    ASSERT_EQ(Catalog().GroupCount(), 68u);
    int total = 0;
    for (const GroupShape& shape : shapes) {
        EXPECT_EQ(Catalog().ListUnitTypes(shape.group << 12, nullptr),
                  static_cast<std::size_t>(shape.types))
            << "group " << shape.group;
        int first = 0;
        for (int type = 1; type <= shape.types; ++type) {
            const UnitConverter* converter = Catalog().FindConverter((shape.group << 12) | type);
            ASSERT_NE(converter, nullptr) << "[" << shape.group << "." << type << "]";
            EXPECT_EQ(converter->GetDimensions(), shape.exponents)
                << "[" << shape.group << "." << type << "]";
            const auto* linear = dynamic_cast<const LinearConverter*>(converter);
            if (first == 0 && converter->GetFactor() == 1.0 &&
                (linear == nullptr || linear->GetOffset() == 0.0)) {
                first = type;
            }
        }
        EXPECT_EQ(first, kTypeOfFactorOne[shape.group - 1]) << "group " << shape.group;
        total += shape.types;
    }
    EXPECT_EQ(total, 773);
}

TEST(ConversionTable, OnlyCelsiusAndFahrenheitHaveOffsets) {
    std::set<std::pair<int, int>> linear;
    for (const GroupShape& shape : GroupShapes()) {
        for (int type = 1; type <= shape.types; ++type) {
            if (dynamic_cast<const LinearConverter*>(&At(shape.group, type)) != nullptr) {
                linear.insert({shape.group, type});
            }
        }
    }
    EXPECT_EQ(linear, (std::set<std::pair<int, int>>{{42, 2}, {42, 3}}));
    EXPECT_EQ(dynamic_cast<const LinearConverter&>(At(42, 2)).GetOffset(), 273.15);
    EXPECT_EQ(dynamic_cast<const LinearConverter&>(At(42, 3)).GetOffset(), 255.3722222222222);
}

// The root types whose factor is not 1, or that the first type of factor 1
// of their group does not show: the others are held above.
TEST(ConversionTable, RootTypesHaveTheirFactors) {
    const struct {
        int group, type;
        double factor;
    } roots[] = {
        {12, 1, 1e-6}, {42, 2, 1}, {42, 3, 0.5555555555555556}, {42, 4, 0.5555555555555556}};
    for (const auto& root : roots) {
        EXPECT_TRUE(SameBits(At(root.group, root.type).GetFactor(), root.factor))
            << "[" << root.group << "." << root.type << "]";
    }
}

// Every SI run is literal times its unit, yotta to yocto, each rounded once.
TEST(ConversionTable, SiRunsScaleTheirUnitByThePrefixes) {
    const double prefixes[20] = {1e24, 1e21, 1e18, 1e15, 1e12, 1e9,   1e6,   1e3,   1e2,   1e1,
                                 1e-1, 1e-2, 1e-3, 1e-6, 1e-9, 1e-12, 1e-15, 1e-18, 1e-21, 1e-24};
    const int runs[][2] = {{2, 1}, {7, 1}, {13, 1}, {15, 1}, {23, 1}, {44, 1}};
    for (const auto& run : runs) {
        const double unit = At(run[0], run[1]).GetFactor();
        for (int i = 0; i < 20; ++i) {
            EXPECT_TRUE(SameBits(At(run[0], 2 + i).GetFactor(), prefixes[i] * unit))
                << "[" << run[0] << "." << 2 + i << "]";
        }
    }
    // The gram's run leaves out kilo, which is the kilogram, type 5.1.
    for (int i = 0, type = 3; i < 20; ++i) {
        if (prefixes[i] == 1e3) continue;
        EXPECT_TRUE(SameBits(At(5, type).GetFactor(), prefixes[i] * 0.001)) << "[5." << type << "]";
        ++type;
    }
    EXPECT_TRUE(SameBits(At(5, 16).GetFactor(), 1.0000000000000002e-12));  // the nanogram
}

TEST(ConversionTable, TypesWithEqualFactorsStaySeparate) {
    const int pairs[][4] = {{3, 1, 3, 17},    {4, 24, 4, 84},   {19, 1, 19, 20}, {2, 35, 2, 37},
                            {41, 3, 41, 7},   {41, 6, 41, 10},  {33, 1, 33, 2},  {33, 1, 33, 3},
                            {33, 15, 33, 16}, {33, 15, 33, 18}, {44, 32, 44, 35}};
    for (const auto& pair : pairs) {
        const UnitConverter& a = At(pair[0], pair[1]);
        const UnitConverter& b = At(pair[2], pair[3]);
        EXPECT_NE(&a, &b);
        EXPECT_TRUE(SameBits(a.GetFactor(), b.GetFactor()))
            << "[" << pair[0] << "." << pair[1] << "] and [" << pair[2] << "." << pair[3] << "]";
    }
    // The plain mile is 5280 feet, not 5280 survey feet.
    EXPECT_NE(At(2, 33).GetFactor(), At(2, 35).GetFactor());
    // Two pressures whose abbreviations read alike are a million apart.
    EXPECT_EQ(At(33, 24).GetFactor(), 1e7);
    EXPECT_EQ(At(33, 25).GetFactor(), 10.0);
}

TEST(ConversionTable, PoundsOfTheRatesDivideThePoundOfHalfAKilogram) {
    EXPECT_EQ(At(5, 22).GetFactor(), 0.5);
    EXPECT_TRUE(SameBits(At(5, 23).GetFactor(), 0.4535923700000001));
    // Per gallon (US fluid, imperial, US dry) and per second, minute, hour.
    const int rates[][4] = {{17, 6, 4, 15}, {17, 8, 4, 22},  {17, 9, 4, 23},
                            {21, 7, 44, 1}, {21, 8, 44, 22}, {21, 9, 44, 23}};
    for (const auto& rate : rates) {
        EXPECT_TRUE(
            SameBits(At(rate[0], rate[1]).GetFactor(), 0.5 / At(rate[2], rate[3]).GetFactor()))
            << "[" << rate[0] << "." << rate[1] << "]";
    }
    // The pound-force stands on the avoirdupois pound.
    EXPECT_TRUE(SameBits(At(23, 24).GetFactor(), 9.80665 * 0.4535923700000001));
}

TEST(ConversionTable, TemperatureRatesAndInverseTemperaturesHaveNoOffset) {
    const int types[][2] = {{43, 1}, {43, 2}, {67, 1}, {67, 2}, {61, 2}};
    for (const auto& type : types) {
        EXPECT_NE(dynamic_cast<const GenericConverter*>(&At(type[0], type[1])), nullptr);
    }
    double out = -1.0;
    ASSERT_EQ(Converter::Convert(0.0, 0x2B001, out, 0x2B002), ErrorCode::Success);
    EXPECT_EQ(out, 0.0);  // zero of one rate is zero of the other
}

TEST(ConversionTable, GroupsWithEqualExponentsConvertIntoEachOther) {
    const int pairs[][2] = {{kRadian, kUnitless},
                            {0x4001, 0x16001},
                            {0x28001, 0x3E001},
                            {kNewton, 0x25001},
                            {0x29001, kDegree}};
    for (const auto& pair : pairs) {
        double out = 0.0;
        EXPECT_EQ(Converter::Convert(1.0, pair[0], out, pair[1]), ErrorCode::Success)
            << std::hex << pair[0] << " -> " << pair[1];
        if (pair[0] == 0x4001) {  // a liter in pints per stroke
            EXPECT_TRUE(SameBits(out, 0.001 / 0.00047317647300000007));
        }
    }
}

// Seven builds are ours: they must be right by physical measure.
TEST(ConversionTable, CorrectedFactorsArePhysicallyRight) {
    const double pi = 3.141592653589793;
    struct Mil {
        int type;
        double perTurn;
    } mils[] = {{5, 6400}, {6, 6300}, {7, 6000}};
    for (const Mil& mil : mils) {
        double degrees = 0.0;
        ASSERT_EQ(Converter::Convert(mil.perTurn, 0x8000 | mil.type, degrees, kDegree),
                  ErrorCode::Success);
        EXPECT_NEAR(degrees, 360.0, 1e-9) << "angular mil [8." << mil.type << "]";
        EXPECT_NEAR(At(8, mil.type).GetFactor() * mil.perTurn, 2 * pi, 1e-12);
    }
    // An ounce per US gallon is a sixteenth of an avoirdupois pound per gallon.
    EXPECT_NEAR(At(17, 7).GetFactor(), 0.4535923700000001 / 16 / 0.0037854117840000006, 1e-12);
    EXPECT_NEAR(At(17, 7).GetFactor(), 7.48915, 1e-5);
    EXPECT_EQ(At(29, 3).GetFactor(), 736.0);
    // Twelve inches of water make a foot of water.
    double inches = 0.0;
    ASSERT_EQ(Converter::Convert(1.0, 0x21024, inches, 0x21005), ErrorCode::Success);
    EXPECT_EQ(inches, 12.0);
    // The annum is the Julian year.
    EXPECT_EQ(At(44, 35).GetFactor(), 365.25 * 86400);
}

TEST(DimensionIndex, NamesAGroupOnlyWhereExactlyOneGroupHasTheExponents) {
    const DimensionIndex& index = Catalog().GroupsByDimensions();
    EXPECT_EQ(index.size(), 49u);

    // The shared keys, each with the groups that share it.
    const std::vector<std::pair<Dimensions, std::set<int>>> shared = {
        {{0, 0, 0, 0, 0, 0, 0}, {1, 8, 9, 12, 41}}, {{3, 0, 0, 0, 0, 0, 0}, {4, 22}},
        {{-3, 1, 0, 0, 0, 0, 0}, {11, 17}},         {{2, 1, -3, -1, 0, 0, 0}, {49, 50}},
        {{1, 0, -1, 0, 0, 0, 0}, {40, 62}},         {{1, 1, -2, 0, 0, 0, 0}, {23, 37, 60}},
        {{-2, 1, -2, 0, 0, 0, 0}, {18, 58}},        {{2, 1, -2, 0, 0, 0, 0}, {19, 45, 59}},
        {{0, 0, -1, 0, 0, 0, 0}, {16, 25, 63}},     {{1, -1, 2, 0, 0, 0, 0}, {35, 64}},
        {{0, 0, 0, 0, 0, 0, 1}, {51, 54}},          {{-2, 0, 0, 0, 0, 0, 1}, {52, 55, 56}},
    };
    std::set<int> sharingGroups;
    for (const auto& [exponents, groups] : shared) {
        const int* entry = index.Lookup(exponents);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(*entry, 0);
        EXPECT_EQ(Catalog().FindGroupByDimensions(exponents), 0);
        for (int group : groups) {
            EXPECT_EQ(At(group, 1).GetDimensions(), exponents) << "group " << group;
            sharingGroups.insert(group);
        }
    }
    // Every other group owns its key.
    int named = 0;
    for (int group = 1; group <= 68; ++group) {
        if (sharingGroups.count(group) != 0) continue;
        EXPECT_EQ(Catalog().FindGroupByDimensions(At(group, 1).GetDimensions()), group << 12)
            << "group " << group;
        ++named;
    }
    EXPECT_EQ(named, 37);
    EXPECT_EQ(Catalog().FindGroupByDimensions({1, 0, 0, 0, 0, 0, 0}), 0x2000);
    EXPECT_EQ(Catalog().FindGroupByDimensions({9, 9, 9, 9, 9, 9, 9}), 0);
    EXPECT_EQ(Catalog().FindGroupByDimensions({0, 0, 1, 0, 0, 0, 0}), 0x2C000);
}

}  // namespace
}  // namespace Mensura
