#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <oxlume/LxScalar.h>

#include "tests/support/Random.h"

constexpr double epsilon = 2.220446049250313e-16;
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Scale, MapsLinearlyAndHoldsTheEnds) {
    EXPECT_EQ(LxScale(5.0, 0.0, 10.0, 100.0, 200.0), 150.0);
    EXPECT_EQ(LxScale(-3.0, 0.0, 10.0, 0.1, 0.3), 0.1) << "below: outMin exactly";
    EXPECT_EQ(LxScale(12.0, 0.0, 10.0, 100.0, 200.0), 200.0);
    EXPECT_EQ(LxScale(2.5, 0.0, 10.0, 200.0, 100.0), 175.0) << "either range may run backwards";
    EXPECT_EQ(LxScale(7.5, 10.0, 0.0, 0.0, 1.0), 0.25);
}

TEST(Scale, EqualInputEndsHoldTheInfiniteAndPassNotANumber) {
    EXPECT_EQ(LxScale(2.0, 1.0, 1.0, 3.0, 4.0), 4.0);
    EXPECT_EQ(LxScale(0.0, 1.0, 1.0, 3.0, 4.0), 3.0);
    EXPECT_TRUE(std::isnan(LxScale(1.0, 1.0, 1.0, 3.0, 4.0)));
}

TEST(Linear, RunsThroughItsThreePoints) {
    EXPECT_EQ(LxLinear(0.25, 0.0), 0.0);
    EXPECT_EQ(LxLinear(0.25, 0.25), 0.5);
    EXPECT_EQ(LxLinear(0.25, 0.125), 0.25);
    EXPECT_EQ(LxLinear(0.25, 0.625), 0.75);
    EXPECT_EQ(LxLinear(0.25, 1.0), 1.0);
}

TEST(Linear, ProtectsItsEnds) {
    EXPECT_EQ(LxLinear(0.0, 0.0), 0.0);
    EXPECT_EQ(LxLinear(1.0, 1.0), 0.5) << "the first branch takes a >= t";
    EXPECT_EQ(LxLinear(1.0, 1.5), 1.0);
    EXPECT_EQ(LxLinear(epsilon / 2, epsilon / 4), 0.0);
    EXPECT_EQ(LxLinear(epsilon, epsilon), 0.5) << "the gap itself is not protected";
}

TEST(Linear, ExtrapolatesBeyondItsEnds) {
    EXPECT_EQ(LxLinear(0.5, -1.0), -1.0);
    EXPECT_EQ(LxLinear(0.5, 2.0), 2.0);
}

TEST(Curved, IsThePowerThroughTheBreakpoint) {
    EXPECT_EQ(LxCurved(0.5, 0.3), std::pow(0.3, 1.0));
    EXPECT_DOUBLE_EQ(LxCurved(0.25, 0.25), 0.5);
    EXPECT_DOUBLE_EQ(LxCurved(0.25, 0.0625), 0.25) << "the exponent is one half";
    EXPECT_EQ(LxCurved(0.0, 0.5), LxCurved(epsilon, 0.5));
    EXPECT_EQ(LxCurved(-5.0, 0.5), LxCurved(epsilon, 0.5));
}

TEST(Curved, ABreakpointOfOneGivesAnInfiniteExponent) {
    EXPECT_EQ(LxCurved(1.0, 0.5), infinity) << "0.5 to the power of minus infinity";
    EXPECT_EQ(LxCurved(1.0, 2.0), 0.0);
    EXPECT_EQ(LxCurved(1.0, 1.0), 1.0);
}

TEST(RoundTo, RoundsPositiveValuesToTheNearest) {
    EXPECT_EQ(LxRoundTo(0.5, 0), 1.0);
    EXPECT_EQ(LxRoundTo(0.49, 0), 0.0);
    EXPECT_EQ(LxRoundTo(1.25, 1), 1.3);
    EXPECT_EQ(LxRoundTo(123.0, -1), 120.0);
    EXPECT_EQ(LxRoundTo(125.0, -1), 130.0);
}

TEST(RoundTo, TakesEveryNegativeValueDown) {
    EXPECT_EQ(LxRoundTo(-0.2, 0), -1.0);
    EXPECT_EQ(LxRoundTo(-0.9, 0), -1.0);
    EXPECT_EQ(LxRoundTo(-1.0, 0), -1.0);
    EXPECT_EQ(LxRoundTo(-1.25, 1), -1.3);
}

TEST(ArcLength, MeasuresBothWaysAround) {
    EXPECT_EQ(LxArcLength(10.0, 100.0, 0, 0), 90.0);
    EXPECT_EQ(LxArcLength(10.0, 100.0, 1, 0), 270.0);
    EXPECT_EQ(LxArcLength(100.0, 10.0, 0, 0), 270.0);
    EXPECT_EQ(LxArcLength(100.0, 10.0, 1, 0), 90.0);
    EXPECT_EQ(LxArcLength(350.0, 370.0, 0, 0), 20.0) << "370 is brought to 10";
    EXPECT_EQ(LxArcLength(-90.0, 0.0, 0, 0), 90.0);
}

TEST(ArcLength, KeepsAFullTurnApartFromNone) {
    EXPECT_EQ(LxArcLength(360.0, 0.0, 1, 0), 360.0);
    EXPECT_EQ(LxArcLength(360.0, 0.0, 0, 0), 0.0);
    EXPECT_EQ(LxArcLength(0.0, 360.0, 0, 0), 360.0);
    EXPECT_EQ(LxArcLength(720.0, 0.0, 1, 0), 360.0) << "720 comes down to 360 and stays there";
    EXPECT_EQ(LxArcLength(-360.0, 0.0, 1, 0), 0.0) << "-360 comes up to 0";
}

TEST(ArcLength, DecidesEqualAnglesByQuadrant) {
    for (int degrees = 0; degrees <= 360; ++degrees) {
        const double full = degrees > 90 && degrees <= 270 ? 360.0 : 0.0;
        EXPECT_EQ(LxArcLength(degrees, degrees, 1, 1), full) << degrees;
        EXPECT_EQ(LxArcLength(degrees, degrees, 0, 1), 0.0) << degrees;
        EXPECT_EQ(LxArcLength(degrees, degrees, 1, 0), 0.0) << degrees;
    }
}

TEST(ArcLength, RoundsToTwoPlacesFirst) {
    EXPECT_EQ(LxArcLength(100.001, 100.002, 1, 1), 360.0);
    EXPECT_EQ(LxArcLength(100.0, 100.004, 0, 0), 0.0);
}

TEST(ArcLength, EndsForEveryNumber) {
    lx::test::Random random(1);
    for (int i = 0; i < 100000; ++i) {
        const double start = random.anyReal();
        const double end = random.anyReal();
        const double sweep = LxArcLength(start, end, random.coin(), random.coin());
        EXPECT_FALSE(sweep < 0.0 || sweep > 360.0) << start << ' ' << end;
    }
}

TEST(Sine, RisesInHalfAWave) {
    EXPECT_DOUBLE_EQ(LxSine(0.5, 0.5), 0.5);
    EXPECT_EQ(LxSine(0.5, 0.0), 0.0);
    EXPECT_EQ(LxSine(0.25, 1.0), 1.0);
    EXPECT_NEAR(LxSine(0.5, 0.25), 0.5 * (1.0 - std::sqrt(0.5)), 1e-15);
}

TEST(Sphere, QuarterCirclesRunFromCornerToCorner) {
    EXPECT_EQ(LxSphereInc(0.5, 0.0), 0.0);
    EXPECT_EQ(LxSphereInc(0.5, 1.0), 1.0);
    EXPECT_DOUBLE_EQ(LxSphereInc(0.5, 0.4), 0.8) << "sqrt(1 - 0.6 * 0.6)";
    EXPECT_EQ(LxSphereDec(0.5, 0.0), 0.0);
    EXPECT_EQ(LxSphereDec(0.5, 1.0), 1.0);
    EXPECT_DOUBLE_EQ(LxSphereDec(0.5, 0.6), 0.2) << "1 - sqrt(1 - 0.36)";
}

TEST(Sphere, HasNoPointsFarOutside) {
    EXPECT_TRUE(std::isnan(LxSphereInc(0.5, -0.5)));
    EXPECT_TRUE(std::isnan(LxSphereDec(0.5, 1.5)));
}

TEST(Profiles, BendAsLinearDoes) {
    lx::test::Random random(2);
    for (int i = 0; i < 10000; ++i) {
        const double a = random.real(-0.2, 1.2);
        const double t = random.real(-0.2, 1.2);
        const double s = LxLinear(a, t);
        EXPECT_EQ(LxSine(a, t), LxSine(0.5, s)) << a << ' ' << t;
    }
}
