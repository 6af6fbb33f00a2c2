#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#import <oxlume/cocoa/LxNSRect.h>

#include "tests/support/Random.h"

using lx::test::Random;

namespace {

// Through memory, since g++ drops a narrowing in Objective-C++ whose result it widens again.
float narrow(double value) {
    const volatile float stored = static_cast<float>(value);
    return stored;
}

void expectRect(const LxRectL &rect, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    EXPECT_EQ(rect.x0, x0);
    EXPECT_EQ(rect.y0, y0);
    EXPECT_EQ(rect.x1, x1);
    EXPECT_EQ(rect.y1, y1);
}

} // namespace

TEST(NSRects, CoveringIntegersAreFloorsAndCeilings) {
    expectRect(LxRectL_fromNSRect(NSMakeRect(-0.5, 1.0, 1.0, 2.0)), -1, 1, 1, 3);
    expectRect(LxRectL_fromNSRect(NSMakeRect(1.0, -0.25, 2.0, 0.125)), 1, -1, 3, 0);
}

TEST(NSRects, CoveringIntegersAreSortedAfterRounding) {
    // From 4.5 back to 1.5: the floor of the one and the ceiling of the other, then exchanged.
    expectRect(LxRectL_fromNSRect(NSMakeRect(4.5, 4.5, -3.0, -3.0)), 2, 2, 4, 4);
}

TEST(NSRects, CoveringIntegersBeyondTheRangeAreTheLowest) {
    const int32_t lowest = std::numeric_limits<int32_t>::min();
    expectRect(LxRectL_fromNSRect(NSMakeRect(0, 0, 1e12, std::nan(""))), lowest, lowest, 0, 0);
}

TEST(NSRects, CornersBecomeOriginAndSize) {
    const NSRect fromD = LxRectD_asNSRect(LxRectD{1.5, 2, 4, 1});
    EXPECT_EQ(fromD.origin.x, 1.5);
    EXPECT_EQ(fromD.origin.y, 2);
    EXPECT_EQ(fromD.size.width, 2.5);
    EXPECT_EQ(fromD.size.height, -1);
    const NSRect fromL = LxRectL_asNSRect(LxRectL{-3, 4, 7, 2});
    EXPECT_EQ(fromL.origin.x, -3);
    EXPECT_EQ(fromL.origin.y, 4);
    EXPECT_EQ(fromL.size.width, 10);
    EXPECT_EQ(fromL.size.height, -2);
}

TEST(NSRects, WidestIntegersDoNotOverflow) {
    const int32_t low = std::numeric_limits<int32_t>::min();
    const int32_t high = std::numeric_limits<int32_t>::max();
    EXPECT_EQ(LxRectL_asNSRect(LxRectL{low, low, high, high}).size.width, 4294967296.0);
}

TEST(NSRects, NumbersAreOfSinglePrecision) {
    Random random(1);
    for (int i = 0; i < 10000; ++i) {
        const double x = random.real(-1e6, 1e6);
        const double y = random.real(-1e6, 1e6);
        const double w = random.real(-1e3, 1e3);
        const double h = random.real(-1e3, 1e3);
        const LxRectD rect = LxRectD_fromNSRect(NSMakeRect(x, y, w, h));
        const float x1 = narrow(narrow(x) + narrow(w));
        const float y1 = narrow(narrow(y) + narrow(h));
        EXPECT_EQ(rect.x0, narrow(x));
        EXPECT_EQ(rect.y0, narrow(y));
        EXPECT_EQ(rect.x1, x1);
        EXPECT_EQ(rect.y1, y1);
        const NSRect back = LxRectD_asNSRect(LxRectD{x, y, x + w, y + h});
        EXPECT_EQ(back.origin.x, narrow(x));
        EXPECT_EQ(back.size.width, narrow((x + w) - x));
        EXPECT_EQ(back.size.height, narrow((y + h) - y));
        const LxRectL whole = LxRectL_fromNSRect(NSMakeRect(x, y, w, h));
        const auto left = static_cast<int32_t>(std::floor(narrow(x)));
        const auto right = static_cast<int32_t>(std::ceil(x1));
        EXPECT_EQ(whole.x0, std::min(left, right));
        EXPECT_EQ(whole.x1, std::max(left, right));
    }
}
