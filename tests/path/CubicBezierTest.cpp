// Length and hit test of cubic curves.
#include <oxlume/LxCubicBezier.h>

#include <cmath>

#include <gtest/gtest.h>

#include "tests/support/Random.h"

using namespace lx::test;

namespace {

struct Cubic {
    LxPointD p[4];

    LxPointD at(double t) const {
        const double s = 1 - t;
        const double w[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
        LxPointD sum = {};
        for (int i = 0; i < 4; ++i)
            sum = {sum.x + w[i] * p[i].x, sum.y + w[i] * p[i].y};
        return sum;
    }
    double speed(double t) const {
        const double s = 1 - t;
        const double w[] = {3 * s * s, 6 * s * t, 3 * t * t};
        LxPointD sum = {};
        for (int i = 0; i < 3; ++i)
            sum = {sum.x + w[i] * (p[i + 1].x - p[i].x), sum.y + w[i] * (p[i + 1].y - p[i].y)};
        return std::hypot(sum.x, sum.y);
    }
};

// Simpson's rule, halved until it settles.
double integral(const Cubic &curve, double a, double b, double fa, double fm, double fb, double whole,
                int depth) {
    const double m = (a + b) / 2;
    const double fl = curve.speed((a + m) / 2);
    const double fr = curve.speed((m + b) / 2);
    const double left = (m - a) / 6 * (fa + 4 * fl + fm);
    const double right = (b - m) / 6 * (fm + 4 * fr + fb);
    if (depth == 0 || std::abs(left + right - whole) < 1e-9)
        return left + right;
    return integral(curve, a, m, fa, fl, fm, left, depth - 1) +
           integral(curve, m, b, fm, fr, fb, right, depth - 1);
}

double trueLength(const Cubic &curve) {
    const double f0 = curve.speed(0);
    const double f5 = curve.speed(0.5);
    const double f1 = curve.speed(1);
    return integral(curve, 0, 1, f0, f5, f1, (f0 + 4 * f5 + f1) / 6, 30);
}

double length(const Cubic &c) {
    return LxCubicBezier_Length(c.p[0], c.p[1], c.p[2], c.p[3]);
}

int32_t hit(const Cubic &c, double x, double y, double radius, double *t) {
    return LxCubicBezier_HitTest(c.p[0], c.p[1], c.p[2], c.p[3], x, y, radius, t);
}

// Upright, with c = 0, b = 96, a = 0: y = 96 t^2, in 10 steps.
constexpr Cubic upright = {{{0, 0}, {0, 0}, {0, 32}, {0, 96}}};

} // namespace

TEST(CubicBezier, LengthOfALineCutIntoStepsIsItsLength) {
    EXPECT_NEAR(length(upright), 96, 1e-12);
    EXPECT_NEAR(length({{{0, 0}, {0, 0}, {100, 0}, {100, 0}}}), 100, 1e-12);
}

TEST(CubicBezier, EvenlySpacedControlsHaveNoLength) {
    EXPECT_EQ(length({{{0, 0}, {30, 40}, {60, 80}, {90, 120}}}), 0);
}

TEST(CubicBezier, CurveOfASmallExtentHasNoLengthAndCannotBeHit) {
    const Cubic small = {{{0, 0}, {0, 0}, {0, 0.08}, {0, 0.24}}};
    EXPECT_EQ(length(small), 0);
    double t = -7;
    EXPECT_EQ(hit(small, 0, 0.1, 50, &t), 0);
    EXPECT_EQ(t, -7);
}

TEST(CubicBezier, LengthIsTheSumOfTheChords) {
    // x = 3 t, y = 3 t (1 - t): c = 3, b = -3, a = 0; M = 3, n = 2. At t = 0.5 the point is (1.5, 0.75).
    const Cubic arch = {{{0, 0}, {1, 1}, {2, 1}, {3, 0}}};
    EXPECT_NEAR(length(arch), 2 * std::hypot(1.5, 0.75), 1e-12);
}

TEST(CubicBezier, LengthIsNearTheIntegralOfTheSpeed) {
    Random random(12);
    for (int round = 0; round < 500; ++round) {
        Cubic curve = {};
        for (LxPointD &p : curve.p)
            p = {random.real(-500, 500), random.real(-500, 500)};
        const double exact = trueLength(curve);
        const double measured = length(curve);
        ASSERT_LE(measured, exact + 1e-6);
        ASSERT_GT(measured, exact * 0.99) << round;
    }
}

TEST(CubicBezier, HitReportsTheEndOfTheFirstSegmentTouched) {
    // Segment ends at y = 96 (k / 10)^2: 0.96, 3.84, 8.64, 15.36, 24, ... The square below is y from 10
    // to 19.
    double t = -7;
    EXPECT_NE(hit(upright, 0, 15, 5, &t), 0);
    EXPECT_EQ(t, 0.1 + 0.1 + 0.1 + 0.1);
}

TEST(CubicBezier, FarSidesOfTheSquareLieOneUnitFurtherIn) {
    double t = -7;
    // x from -1 - 1 to -1 + 1 - 1 = -1: the curve at x = 0 passes by.
    EXPECT_EQ(hit(upright, -1, 15, 1, &t), 0);
    EXPECT_NE(hit(upright, 0, 15, 1, &t), 0);
    EXPECT_NE(hit(upright, 1, 15, 1, &t), 0) << "x from 0 to 1";
    EXPECT_NE(hit(upright, 0.5, 15, 0.5, &t), 0) << "one unit wide: both sides at x = 0";
    EXPECT_EQ(hit(upright, 0, 15, 0.5, &t), 0) << "both sides at x = -0.5";
    EXPECT_EQ(hit(upright, 0, 15, 0.4, &t), 0) << "less than a unit wide";
}

TEST(CubicBezier, MissLeavesTheParameterAlone) {
    double t = -7;
    EXPECT_EQ(hit(upright, 50, 50, 5, &t), 0);
    EXPECT_EQ(t, -7);
}

TEST(CubicBezier, EndOfTheCurveReportsExactlyOne) {
    double t = -7;
    EXPECT_NE(hit(upright, 0, 96, 3, &t), 0);
    EXPECT_EQ(t, 1.0);
}

TEST(CubicBezier, ParameterMayBeNull) {
    EXPECT_NE(hit(upright, 0, 96, 3, nullptr), 0);
}

TEST(CubicBezier, HitsAgreeWithTheCurve) {
    Random random(13);
    for (int round = 0; round < 500; ++round) {
        Cubic curve = {};
        for (LxPointD &p : curve.p)
            p = {random.real(-100, 100), random.real(-100, 100)};
        double t = -7;
        const LxPointD on = curve.at(random.real(0, 1));
        EXPECT_NE(hit(curve, on.x, on.y, 3, &t), 0);
        EXPECT_TRUE(t > 0 && t <= 1);
        const LxPointD there = curve.at(t);
        EXPECT_LT(std::hypot(there.x - on.x, there.y - on.y), 200);
    }
}

TEST(CubicBezier, AbsurdCurvesComeToAnEnd) {
    double t = 0;
    length({{{0, 0}, {0, 0}, {1e15, 0}, {3e15, 0}}});
    for (const double v : {1e300, double{INFINITY}, std::nan("")}) {
        length({{{0, 0}, {v, 0}, {0, v}, {v, v}}});
        hit({{{0, 0}, {v, 0}, {0, v}, {v, v}}}, v, v, v, &t);
    }
}
