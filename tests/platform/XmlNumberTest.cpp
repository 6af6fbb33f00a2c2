#include "platform/XmlNumber.h"

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Random.h"

using namespace lx;
using namespace lx::test;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(DecimalNumber, IsExact) {
    EXPECT_EQ(decimalNumber("0.1"), 0.1);
    EXPECT_EQ(decimalNumber("-12.5e3"), -12500);
    EXPECT_EQ(decimalNumber(".5"), 0.5);
    EXPECT_EQ(decimalNumber("1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_EQ(decimalNumber("4.9e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(DecimalNumber, OutOfRangeIsInfinityOrZero) {
    EXPECT_EQ(decimalNumber("1.0e400"), infinity);
    EXPECT_EQ(decimalNumber("-1.0e400"), -infinity);
    EXPECT_EQ(decimalNumber("1.0e-400"), 0);
    EXPECT_TRUE(std::signbit(decimalNumber("-1.0e-400")));
    EXPECT_EQ(decimalNumber("1.0e99999999999999999999"), infinity);
    EXPECT_EQ(decimalNumber("1.0e+99999999999999999999"), infinity);
    EXPECT_EQ(decimalNumber("1.0e-99999999999999999999"), 0);
    EXPECT_EQ(decimalNumber(std::string(400, '9')), infinity);
    EXPECT_EQ(decimalNumber("." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(decimalNumber(std::string(400, '9') + ".0e-100"), 1e300);
    EXPECT_EQ(decimalNumber(std::string(700, '9') + ".0e-300"), infinity);
    EXPECT_EQ(decimalNumber("." + std::string(400, '0') + "1e390"), 1e-11);
    EXPECT_EQ(decimalNumber("." + std::string(800, '0') + "1e390"), 0);
}

TEST(LeadingNumber, IgnoresWhatFollows) {
    EXPECT_EQ(leadingNumber("12.5px"), 12.5);
    EXPECT_EQ(leadingNumber("100%"), 100);
    EXPECT_EQ(leadingNumber("3em"), 3);
    EXPECT_EQ(leadingNumber("3e"), 3);
    EXPECT_EQ(leadingNumber("3e+"), 3);
    EXPECT_EQ(leadingNumber("3e2x"), 300);
    EXPECT_EQ(leadingNumber("3E-1"), 0.3);
    EXPECT_EQ(leadingNumber("5."), 5);
    EXPECT_EQ(leadingNumber("5.e1"), 50);
    EXPECT_EQ(leadingNumber(".5"), 0.5);
    EXPECT_EQ(leadingNumber("-.5"), -0.5);
    EXPECT_EQ(leadingNumber("+7"), 7);
    EXPECT_EQ(leadingNumber(" \t\n\r 7"), 7);
    EXPECT_EQ(leadingNumber("1,5"), 1);
    EXPECT_EQ(leadingNumber("0x10"), 0);
}

TEST(LeadingNumber, IsZeroWhereThereIsNone) {
    for (const char *text : {"", " ", "px", "-", "+", ".", "-.", "+-1", "-+1", "--1", "e5", ".e5", "inf",
                             "infinity", "nan", "-inf"})
        EXPECT_EQ(leadingNumber(text), 0) << text;
}

TEST(LeadingNumber, RandomNumbersComeBack) {
    Random random;
    for (int i = 0; i < 20000; ++i) {
        double value = random.anyReal();
        if (!std::isfinite(value))
            continue;
        char text[400];
        std::snprintf(text, sizeof text, i % 2 == 0 ? "%.17g pt" : "%.17e", value);
        ASSERT_EQ(leadingNumber(text), value) << text;
    }
}
