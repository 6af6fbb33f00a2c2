#include "foundation/Numeric.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/support/Random.h"

using namespace lx;

constexpr int32_t lowest = std::numeric_limits<int32_t>::min();
constexpr int32_t highest = std::numeric_limits<int32_t>::max();

TEST(Numeric, TruncationGoesTowardZero) {
    EXPECT_EQ(truncateToInt32(2.9), 2);
    EXPECT_EQ(truncateToInt32(-2.9), -2);
    EXPECT_EQ(truncateToInt32(-0.7), 0);
}

TEST(Numeric, TruncationKeepsTheEndsOfTheRange) {
    EXPECT_EQ(truncateToInt32(2147483647.5), highest);
    EXPECT_EQ(truncateToInt32(-2147483648.5), lowest);
}

TEST(Numeric, TruncationOutOfRangeGivesTheLowestInteger) {
    for (const double value :
         {2147483648.0, -2147483649.0, 1e300, -1e300, double{INFINITY}, double{-INFINITY}, std::nan("")})
        EXPECT_EQ(truncateToInt32(value), lowest) << value;
    for (const double value : {9223372036854775808.0, -9.3e18, double{INFINITY}, std::nan("")})
        EXPECT_EQ(truncateToInt64(value), std::numeric_limits<int64_t>::min()) << value;
}

TEST(Numeric, TruncationOfConstantsIsThatOfVariables) {
    EXPECT_EQ(truncateToInt32(1e38), lowest);
    EXPECT_EQ(truncateToInt32(-1e38), lowest);
    EXPECT_EQ(truncateToInt32(double{INFINITY}), lowest);
    EXPECT_EQ(roundToInt32(2147483647.5), lowest);
}

TEST(Numeric, RoundingTruncatesTheValuePlusAHalf) {
    EXPECT_EQ(roundToInt32(-0.7), 0);
    EXPECT_EQ(roundToInt32(-2.0), -1);
    EXPECT_EQ(roundToInt32(2.5), 3);
}

TEST(Numeric, WrappingArithmeticKeepsTheLowBits) {
    EXPECT_EQ(wrappingAdd(highest, 1), lowest);
    EXPECT_EQ(wrappingSubtract(lowest, 1), highest);
    EXPECT_EQ(wrappingMultiply(65536, 65537), 65536);
    EXPECT_EQ(wrappingMultiply(lowest, -1), lowest);
    EXPECT_EQ(distance(3, 10), 7);
    EXPECT_EQ(distance(10, 3), 7);
    EXPECT_EQ(distance(highest, lowest), -1) << "4294967295 in its low 32 bits";
}
