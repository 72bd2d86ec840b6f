// The exponent index on its own: keys that collide in their home slot, a key
// that two groups share, and a full table.
#include "units/dimension_index.h"

#include <gtest/gtest.h>

namespace Mensura {
namespace {

// A different key for every n, most of them crowding a few home slots.
Dimensions Key(int n) {
    return {n % 5 - 2, n / 5 % 5 - 2, n / 25 % 5 - 2, n / 125, 0, 0, 0};
}

TEST(DimensionIndex, FindsEveryKeyUntilFullAndRefusesOneMore) {
    DimensionIndex index;
    int stored = 0;
    while (index.Register(Key(stored), stored + 1)) ++stored;
    EXPECT_EQ(stored, 128);
    EXPECT_EQ(index.size(), 128u);
    for (int n = 0; n < stored; ++n) EXPECT_EQ(index.Find(Key(n)), n + 1) << n;
    EXPECT_EQ(index.Lookup(Key(stored)), nullptr);
    EXPECT_EQ(index.Find(Key(stored)), 0);
    // A key already there still takes its second group when the table is full.
    EXPECT_TRUE(index.Register(Key(7), 99));
    EXPECT_EQ(index.Find(Key(7)), 0);
}

TEST(DimensionIndex, AKeyOfTwoGroupsNamesNeitherForGood) {
    DimensionIndex index;
    const Dimensions speed = {1, 0, -1, 0, 0, 0, 0};
    ASSERT_TRUE(index.Register(speed, 0x28000));
    EXPECT_EQ(index.Find(speed), 0x28000);
    ASSERT_TRUE(index.Register(speed, 0x3E000));
    ASSERT_TRUE(index.Register(speed, 0x28000));
    ASSERT_NE(index.Lookup(speed), nullptr);
    EXPECT_EQ(*index.Lookup(speed), 0);
    EXPECT_EQ(index.size(), 1u);
    index.Clear();
    EXPECT_EQ(index.Lookup(speed), nullptr);
    EXPECT_EQ(index.size(), 0u);
}

}  // namespace
}  // namespace Mensura
