#include "geometry/Point.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/geometry/Same.h"

using lx::test::anyPoint;
using lx::test::Random;

TEST(Point, ConstantsAreZero) {
    EXPECT_EQ(LxPointL_0, (LxPointL{0, 0}));
    EXPECT_EQ(LxPointD_0, (LxPointD{0, 0}));
}

TEST(Point, ConstructorsKeepTheirArguments) {
    EXPECT_EQ(LxPointL(-3, 4), (LxPointL{-3, 4}));
    EXPECT_EQ(LxPointD(0.25, -1e300), (LxPointD{0.25, -1e300}));
}

TEST(Point, ToLTruncatesTowardZero) {
    EXPECT_EQ(LxPointD_ToL({2.9, -2.9}), (LxPointL{2, -2}));
    EXPECT_EQ(LxPointD_ToL({-0.9, 0.9}), (LxPointL{0, 0}));
}

TEST(Point, ToLGivesTheLowestIntegerForWhatDoesNotFit) {
    constexpr int32_t lowest = std::numeric_limits<int32_t>::min();
    EXPECT_EQ(LxPointD_ToL({2147483648.0, -2147483649.0}), (LxPointL{lowest, lowest}));
    EXPECT_EQ(LxPointD_ToL({NAN, INFINITY}), (LxPointL{lowest, lowest}));
    EXPECT_EQ(LxPointD_ToL({2147483647.9, -2147483648.9}), (LxPointL{2147483647, lowest}));
}

TEST(Point, ToDIsExact) {
    EXPECT_EQ(LxPointL_ToD({2147483647, -2147483647 - 1}), (LxPointD{2147483647.0, -2147483648.0}));
}

TEST(Point, LerpGoesFromAToBAndBeyond) {
    const LxPointD a{1, 20}, b{5, 10};
    EXPECT_EQ(LxPointD_Lerp(0, a, b), a);
    EXPECT_EQ(LxPointD_Lerp(1, a, b), b);
    EXPECT_EQ(LxPointD_Lerp(0.25, a, b), (LxPointD{2, 17.5}));
    EXPECT_EQ(LxPointD_Lerp(2, a, b), (LxPointD{9, 0}));
    EXPECT_EQ(LxPointD_Lerp(-1, a, b), (LxPointD{-3, 30}));
}

TEST(Point, LerpAddsTheScaledDifferenceToTheStart) {
    // (1 - 1e17) rounds to -1e17, so the end is not reached: the other common form would give 1 exactly.
    EXPECT_EQ(LxPointD_Lerp(1, {1e17, 1e17}, {1, 1}), (LxPointD{0, 0}));
}

TEST(Vector, DotLengthAndDistance) {
    const LxPointD a{3, 4}, b{-2, 0.5};
    EXPECT_EQ(V2Dot(&a, &b), -4.0);
    EXPECT_EQ(V2Length(&a), 5.0);
    EXPECT_EQ(V2SquaredLength(&a), 25.0);
    const LxPointD c{6, 8};
    EXPECT_EQ(V2DistanceBetween2Points(&a, &c), 5.0);
    EXPECT_EQ(V2DistanceBetween2Points(&c, &a), 5.0);
}

TEST(Vector, NegateWorksInPlace) {
    LxPointD v{3, -4};
    V2Negate(&v);
    EXPECT_EQ(v, (LxPointD{-3, 4}));
}

TEST(Vector, NormalizeGivesUnitLengthAndItsArgument) {
    LxPointD v{3, 4};
    EXPECT_EQ(V2Normalize(&v), &v);
    EXPECT_EQ(v, (LxPointD{3.0 / 5.0, 4.0 / 5.0}));
}

TEST(Vector, ScaleGivesTheNewLengthAndItsArgument) {
    LxPointD v{3, 4};
    EXPECT_EQ(V2Scale(&v, 10), &v);
    EXPECT_EQ(v, (LxPointD{6, 8}));
    V2Scale(&v, -5);
    EXPECT_EQ(v, (LxPointD{-3, -4}));
    V2Scale(&v, 0);
    EXPECT_EQ(v, (LxPointD{0, 0}));
}

TEST(Vector, ZeroVectorIsLeftAsItIs) {
    LxPointD v{0, 0};
    EXPECT_EQ(V2Normalize(&v), &v);
    EXPECT_EQ(v, (LxPointD{0, 0}));
    EXPECT_EQ(V2Scale(&v, 7), &v);
    EXPECT_EQ(v, (LxPointD{0, 0}));
}

TEST(Vector, AddWritesAlsoOverItsOperands) {
    LxPointD a{1, 2};
    const LxPointD b{10, 20};
    LxPointD out{};
    V2Add(&a, &b, &out);
    EXPECT_EQ(out, (LxPointD{11, 22}));
    V2Add(&a, &b, &a);
    EXPECT_EQ(a, (LxPointD{11, 22}));
    V2Add(&a, &a, &a);
    EXPECT_EQ(a, (LxPointD{22, 44}));
}

TEST(Vector, FormsByValue) {
    EXPECT_EQ(V2AddII({1, 2}, {10, -20}), (LxPointD{11, -18}));
    EXPECT_EQ(V2Sub({1, 2}, {10, -20}), (LxPointD{-9, 22}));
    EXPECT_EQ(V2ScaleII({1, -2}, -2.5), (LxPointD{-2.5, 5}));
}

TEST(Vector, AllFormsHoldCoordinateByCoordinateForAnyInput) {
    Random random(1);
    for (int i = 0; i < 100000; ++i) {
        const LxPointD a = anyPoint(random), b = anyPoint(random);
        const double t = random.anyReal();
        const double length = std::sqrt(a.x * a.x + a.y * a.y);
        ASSERT_EQ(LxPointD_Lerp(t, a, b), (LxPointD{(b.x - a.x) * t + a.x, a.y + t * (b.y - a.y)}));
        ASSERT_TRUE(same(V2Dot(&a, &b), a.x * b.x + a.y * b.y)) << a << b;
        ASSERT_TRUE(same(V2Length(&a), length)) << a;
        ASSERT_TRUE(same(V2DistanceBetween2Points(&a, &b),
                         std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y))));
        LxPointD normal = a, scaled = a;
        V2Normalize(&normal);
        V2Scale(&scaled, t);
        if (length == 0.0) {
            ASSERT_EQ(normal, a);
            ASSERT_EQ(scaled, a);
        } else {
            ASSERT_EQ(normal, (LxPointD{a.x / length, a.y / length}));
            ASSERT_EQ(scaled, (LxPointD{a.x * (t / length), a.y * (t / length)}));
        }
    }
}
