#include "blend/Weight.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace lx;

TEST(BlendWeight, MixIsExactAtBothEnds) {
    for (int c = 0; c < 256; ++c) {
        for (int f = 0; f < 256; ++f) {
            ASSERT_EQ(mix(f, c, 0), c);
            ASSERT_EQ(mix(f, c, 255), f);
        }
    }
}

TEST(BlendWeight, MixStaysBetweenItsEnds) {
    for (int w = 0; w < 256; ++w) {
        for (int c = 0; c < 256; c += 5) {
            for (int f = 0; f < 256; f += 3) {
                const double between = (f + 1.0) * w / 256 + (c + 1.0) * (255 - w) / 256;
                ASSERT_EQ(mix(f, c, w), static_cast<int>(std::floor(between)));
            }
        }
    }
}

TEST(BlendWeight, FullMaskAndFullAlphaCostNothing) {
    for (int x = 0; x < 256; ++x) {
        EXPECT_EQ(fold(x, 255), x);
        EXPECT_EQ(fold(255, x), x);
        EXPECT_EQ(fold(x, 0), 0);
        EXPECT_EQ(weightOf(x, 255), x);
        EXPECT_EQ(weightOf(x, 0), 0);
    }
}

TEST(BlendWeight, FullWeightNeedsFullOpacityAndFullAlpha) {
    for (int opacity = 0; opacity < 256; ++opacity) {
        for (int alpha = 0; alpha < 256; ++alpha)
            ASSERT_EQ(weightOf(opacity, alpha) == 255, opacity == 255 && alpha == 255);
    }
}

TEST(BlendWeight, KnownValues) {
    EXPECT_EQ(weightOf(170, 88), 59);
    EXPECT_EQ(mix(200, 249, 59), 237);
    EXPECT_EQ(fold(88, 161), 56);
    EXPECT_EQ(fold(56, 161), 35);
    EXPECT_EQ(weightOf(255, 35), 35);
    EXPECT_EQ(weightOf(255, 56), 56);
}
