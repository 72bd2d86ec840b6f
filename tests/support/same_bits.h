// Exact comparison of doubles for tests: the factors of the library are part
// of its contract bit for bit, so a tolerance would hide real faults.
#ifndef MENSURA_TESTS_SAME_BITS_H
#define MENSURA_TESTS_SAME_BITS_H

#include <gtest/gtest.h>

#include <cstring>
#include <iomanip>

namespace MensuraTest {

inline ::testing::AssertionResult SameBits(double actual, double expected) {
    if (std::memcmp(&actual, &expected, sizeof actual) == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << std::setprecision(17) << actual << " is not "
                                         << expected << std::hexfloat << " (" << actual << " vs "
                                         << expected << ")";
}

}  // namespace MensuraTest

#endif  // MENSURA_TESTS_SAME_BITS_H
