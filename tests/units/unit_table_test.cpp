// Lookups of the table of units by unit id: every field out of range is an
// ordinary not-found, the extreme values included.
#include "units/unit_table.h"

#include <gtest/gtest.h>

#include "base/ids.h"

#include <cfenv>
#include <cstring>
#include <limits>
#include <vector>

namespace Mensura {
namespace {

const UnitTable& Catalog() {
    return UnitTable::Instance();
}

// What a conversion gives by the converters alone: the same unit as it is,
// then both converters or UnitMismatch, then their own arithmetic.
ErrorCode ByConverters(double value, int from, double& out, int to) {
    if (UnitId::SameUnit(from, to)) {
        out = value;
        return ErrorCode::Success;
    }
    const UnitConverter* source = Catalog().FindConverter(from);
    const UnitConverter* target = Catalog().FindConverter(to);
    if (source == nullptr || target == nullptr) return ErrorCode::UnitMismatch;
    return source->DirectConvertTo(value, out, *target);
}

TEST(FindConverter, NeedsBothGroupAndType) {
    const int missing[] = {0, 0x2000, 0x1000, 0x0001, -1, 0x45001, 0x2043, 0xFF001, 0x2FFF};
    for (int id : missing) EXPECT_EQ(Catalog().FindConverter(id), nullptr) << std::hex << id;
    EXPECT_NE(Catalog().FindConverter(kUnitless), nullptr);
    EXPECT_NE(Catalog().FindConverter(0x2042), nullptr);
    EXPECT_NE(Catalog().FindConverter(0x44002), nullptr);
}

TEST(FindConverter, IgnoresTheSymbolAndTheTopBits) {
    const UnitConverter* foot = Catalog().FindConverter(kFoot);
    ASSERT_NE(foot, nullptr);
    EXPECT_EQ(Catalog().FindConverter(0x202017), foot);
    EXPECT_EQ(Catalog().FindConverter(0x70002017), foot);
    EXPECT_EQ(foot->GetFactor(), 0.3048);
}

// Convert reads entries of its own beside the converters. Every pair of ids,
// every unit type of every group with ids that find nothing among them,
// gives what the converters give: the code, and out bit for bit or left
// alone. Units of one dimension also with values at the edges and in every
// rounding mode, where a sum with a zero may turn its sign.
TEST(Convert, GivesWhatTheConvertersGiveForEveryPair) {
    std::vector<int> ids = {0, -1, 0x45001, 0xFF001, 0x2FFF, 0x7FFFF, 0x1002};
    for (std::size_t group = 1; group <= Catalog().GroupCount(); ++group) {
        const int groupId = static_cast<int>(group << 12);
        ids.push_back(groupId);
        const int types = static_cast<int>(Catalog().ListUnitTypes(groupId, nullptr));
        for (int type = 1; type <= types; ++type) ids.push_back(groupId | type);
        // A symbol number, and the top bits, play no part.
        ids.push_back(UnitId::Make(static_cast<int>(group), types, 3) | (1 << 30));
    }
    const double values[] = {5.5,
                             0.0,
                             -0.0,
                             -273.15,
                             0.1,
                             1e308,
                             -1e-310,
                             std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
    const int modes[] = {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO};
    const double untouched = -12345.0;
    int failures = 0;
    for (const int mode : modes) {
        ASSERT_EQ(std::fesetround(mode), 0);
        for (const int from : ids) {
            const UnitConverter* source = Catalog().FindConverter(from);
            for (const int to : ids) {
                const UnitConverter* target = Catalog().FindConverter(to);
                const bool alike = source != nullptr && target != nullptr &&
                                   source->GetDimensions() == target->GetDimensions();
                if (!alike && mode != FE_TONEAREST) continue;
                for (const double value : values) {
                    double expected = untouched;
                    double actual = untouched;
                    const ErrorCode code = ByConverters(value, from, expected, to);
                    const ErrorCode result = Catalog().Convert(value, from, actual, to);
                    if (result != code || std::memcmp(&actual, &expected, sizeof actual) != 0) {
                        ADD_FAILURE() << std::hex << from << " to " << to << std::dec << ", "
                                      << value << " in rounding mode " << mode << ": "
                                      << static_cast<int>(result) << ", " << actual << " is not "
                                      << static_cast<int>(code) << ", " << expected;
                        if (++failures == 10) {
                            std::fesetround(FE_TONEAREST);
                            return;
                        }
                    }
                    if (!alike) break;
                }
            }
        }
    }
    std::fesetround(FE_TONEAREST);
}

TEST(ListUnitTypes, MergesTheArgumentIntoEveryId) {
    EXPECT_EQ(Catalog().ListUnitTypes(0x2000, nullptr), 66u);
    EXPECT_EQ(Catalog().ListUnitTypes(0x45000, nullptr), 0u);
    EXPECT_EQ(Catalog().ListUnitTypes(0, nullptr), 0u);

    std::vector<int> ids(1, -5);
    EXPECT_EQ(Catalog().ListUnitTypes(0x1000, ids.data()), 1u);
    EXPECT_EQ(ids[0], kUnitless);

    ids.assign(66, 0);
    EXPECT_EQ(Catalog().ListUnitTypes(0x2000, ids.data()), 66u);
    EXPECT_EQ(ids.front(), kMeter);
    EXPECT_EQ(ids.back(), 0x2042);

    // Other bits of the argument stay in every element.
    ids.assign(2, 0);
    EXPECT_EQ(Catalog().ListUnitTypes(0x106000, ids.data()), 2u);
    EXPECT_EQ(ids[0], 0x106001);
    EXPECT_EQ(ids[1], 0x106002);
}

TEST(ListUnitTypes, UnknownGroupLeavesTheArrayAlone) {
    int ids[2] = {-5, -5};
    EXPECT_EQ(Catalog().ListUnitTypes(0x45000, ids), 0u);
    EXPECT_EQ(ids[0], -5);
}

}  // namespace
}  // namespace Mensura
