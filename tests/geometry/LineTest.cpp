#include "geometry/Line.h"

#include <cmath>

#include <gtest/gtest.h>

#include "tests/geometry/Same.h"

using lx::test::anyLine;
using lx::test::Random;

TEST(Line, ConstructorAndSetKeepTheirArguments) {
    EXPECT_EQ(LxLineD_0, (LxLineD{0, 0, 0, 0}));
    EXPECT_EQ(LxLineD(4, 3, 2, 1), (LxLineD{4, 3, 2, 1})) << "the ends are not sorted";
    LxLineD line{};
    LxLineD_Set(&line, 1, -2, 3, -4);
    EXPECT_EQ(line, (LxLineD{1, -2, 3, -4}));
}

TEST(Line, OrientationIsTheCrossProduct) {
    const LxLineD line{1, 1, 5, 1};
    EXPECT_EQ(LxLineD_Orientation(&line, 3, 4), 12.0) << "(4, 0) x (2, 3)";
    EXPECT_EQ(LxLineD_Orientation(&line, 3, -2), -12.0);
    EXPECT_EQ(LxLineD_Orientation(&line, 100, 1), 0.0);
}

TEST(Line, OrientationAddsItsTermsFromTheLeft) {
    // 1e20 - 1 + 0 - 1e20 + 1 - 0: the first 1 is lost, the second is not.
    const LxLineD line{1e20, 1, 1, 1};
    EXPECT_EQ(LxLineD_Orientation(&line, 0, 1), 1.0);
    Random random(10);
    for (int i = 0; i < 100000; ++i) {
        const LxLineD l = anyLine(random);
        const double px = random.anyReal(), py = random.anyReal();
        const double terms[] = {l.x0 * l.y1,  -(l.y0 * l.x1), l.y0 * px,
                                -(l.x0 * py), l.x1 * py,      -(l.y1 * px)};
        double total = terms[0];
        for (int k = 1; k < 6; ++k)
            total += terms[k];
        ASSERT_TRUE(same(LxLineD_Orientation(&l, px, py), total)) << l << px << ' ' << py;
    }
}

TEST(Line, IntersectionOfCrossingLines) {
    const LxLineD diagonal{0, 0, 10, 10}, other{0, 10, 10, 0};
    EXPECT_EQ(LxLineD_Intersection(&diagonal, &other), (LxPointD{5, 5}));
    const LxLineD level{0, 2, 1, 2}, upright{7, 100, 7, 101};
    EXPECT_EQ(LxLineD_Intersection(&level, &upright), (LxPointD{7, 2})) << "of the infinite lines";
    EXPECT_EQ(LxLineD_Intersection(&upright, &level), (LxPointD{7, 2}));
}

TEST(Line, IntersectionOfParallelLinesIsNotFinite) {
    const LxLineD a{0, 0, 10, 0}, b{0, 5, 10, 5};
    const LxPointD point = LxLineD_Intersection(&a, &b);
    EXPECT_FALSE(std::isfinite(point.x));
    EXPECT_FALSE(std::isfinite(point.y));
    const LxPointD onItself = LxLineD_Intersection(&a, &a);
    EXPECT_TRUE(std::isnan(onItself.x));
    EXPECT_TRUE(std::isnan(onItself.y));
}

TEST(Line, IntersectionOfAnUndefinedDeterminantIsTheMeanOfTheEnds) {
    // Directions (inf, 0) and (0, 1): the determinant inf * 1 - 0 * 0 is infinite, not undefined.
    const LxLineD endless{0, 0, INFINITY, 0}, upright{7, 0, 7, 1};
    EXPECT_TRUE(std::isnan(LxLineD_Intersection(&endless, &upright).x));
    // Directions (1e200, 1e200) twice: inf - inf is undefined, and the ends have a mean.
    const LxLineD a{0, 0, 1e200, 1e200}, b{4, 8, 1e200, 1e200};
    EXPECT_EQ(LxLineD_Intersection(&a, &b), (LxPointD{(0 + 1e200 + 4 + 1e200) * 0.25, 2e200 * 0.25}));
    // The first line's two ends are added first, so that 1e200 and -1e200 cancel before 1e160 is lost in one.
    const LxLineD c{1e200, 1e200, -1e200, -1e200}, d{8, 16, 1e160, 1e160};
    EXPECT_EQ(LxLineD_Intersection(&c, &d), (LxPointD{1e160 * 0.25, 1e160 * 0.25}));
}

TEST(Line, IntersectionHoldsForAnyInput) {
    Random random(11);
    for (int i = 0; i < 200000; ++i) {
        const LxLineD p = anyLine(random), q = anyLine(random);
        const double dx1 = p.x1 - p.x0, dy1 = p.y1 - p.y0, dx2 = q.x1 - q.x0, dy2 = q.y1 - q.y0;
        const double c1 = p.x0 * dy1 - p.y0 * dx1, c2 = q.x0 * dy2 - q.y0 * dx2;
        const double det = dx1 * dy2 - dy1 * dx2;
        LxPointD expected{-(dx2 * c1 - dx1 * c2) / det, -(dy2 * c1 - dy1 * c2) / det};
        if (det != det)
            expected = {(p.x0 + p.x1 + q.x0 + q.x1) * 0.25, (p.y0 + p.y1 + q.y0 + q.y1) * 0.25};
        ASSERT_EQ(LxLineD_Intersection(&p, &q), expected) << p << q;
    }
}

TEST(Line, IntersectionLiesOnBothLines) {
    Random random(12);
    for (int i = 0; i < 20000; ++i) {
        const auto coordinate = [&] { return random.real(-100, 100); };
        const LxLineD p{coordinate(), coordinate(), coordinate(), coordinate()};
        const LxLineD q{coordinate(), coordinate(), coordinate(), coordinate()};
        const double det = (p.x1 - p.x0) * (q.y1 - q.y0) - (p.y1 - p.y0) * (q.x1 - q.x0);
        if (std::fabs(det) < 100)
            continue;
        const LxPointD point = LxLineD_Intersection(&p, &q);
        const double scale = 1 + std::fabs(point.x) + std::fabs(point.y);
        ASSERT_NEAR(LxLineD_Orientation(&p, point.x, point.y), 0, 1e-8 * scale) << p << q;
        ASSERT_NEAR(LxLineD_Orientation(&q, point.x, point.y), 0, 1e-8 * scale) << p << q;
    }
}

TEST(Line, IntersectsIsReservedAndAnswersNo) {
    EXPECT_EQ(LxLineD_Intersects({0, 0, 10, 10}, {0, 10, 10, 0}), 0);
    EXPECT_EQ(LxLineD_Intersects({0, 0, 1, 0}, {0, 5, 1, 5}), 0);
}

TEST(Line, CenterLengthAndSplit) {
    const LxLineD line{1, 2, 4, 6};
    EXPECT_EQ(LxLineD_Center(&line), (LxPointD{2.5, 4}));
    EXPECT_EQ(LxLineD_Length(&line), 5.0);
    EXPECT_EQ(LxLineD_Split(&line, 0), (LxPointD{1, 2}));
    EXPECT_EQ(LxLineD_Split(&line, 1), (LxPointD{4, 6}));
    EXPECT_EQ(LxLineD_Split(&line, 0.25), (LxPointD{1.75, 3}));
    EXPECT_EQ(LxLineD_Split(&line, -1), (LxPointD{-2, -2}));
}

TEST(Line, HeadAndTailStandAtRightAnglesOnTheEnds) {
    // Direction (3, 4), length 5: n = -4, k = d / 5.
    const LxLineD line{10, 20, 13, 24};
    EXPECT_EQ(LxLineD_Head(&line, 5), (LxLineD{6, 23, 14, 17}));
    EXPECT_EQ(LxLineD_Tail(&line, 5), (LxLineD{9, 27, 17, 21}));
    EXPECT_EQ(LxLineD_Head(&line, -5), (LxLineD{14, 17, 6, 23}));
    const LxLineD point{1, 1, 1, 1};
    const LxLineD none = LxLineD_Head(&point, 5);
    EXPECT_TRUE(std::isnan(none.x0) && std::isnan(none.y1)) << "0 times infinity";
}

TEST(Line, ScalarFormsHoldForAnyInput) {
    Random random(13);
    for (int i = 0; i < 100000; ++i) {
        const LxLineD l = anyLine(random);
        const double t = random.anyReal();
        ASSERT_EQ(LxLineD_Center(&l), (LxPointD{(l.x0 + l.x1) * 0.5, (l.y0 + l.y1) * 0.5}));
        ASSERT_EQ(LxLineD_Split(&l, t), (LxPointD{(1 - t) * l.x0 + t * l.x1, (1 - t) * l.y0 + t * l.y1}));
        const double dx = l.x1 - l.x0, dy = l.y1 - l.y0;
        ASSERT_TRUE(same(LxLineD_Length(&l), std::sqrt(dx * dx + dy * dy))) << l;
        const double n = -dy, k = t / std::sqrt(dx * dx + n * n);
        ASSERT_EQ(LxLineD_Head(&l, t), (LxLineD{l.x0 + n * k, l.y0 + dx * k, l.x0 - n * k, l.y0 - dx * k}));
        ASSERT_EQ(LxLineD_Tail(&l, t), (LxLineD{l.x1 + n * k, l.y1 + dx * k, l.x1 - n * k, l.y1 - dx * k}));
    }
}
