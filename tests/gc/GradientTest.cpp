#include "gc/Gradient.h"

#include <cmath>
#include <limits>
#include <memory>

#include <gtest/gtest.h>

#include <oxlume/LxMem.h>
#include <oxlume/LxScalar.h>

#include "foundation/Memory.h"
#include "gc/Shader.h"
#include "tests/support/Random.h"

using namespace lx;
using lx::test::Random;

namespace {

struct DeleteGradient {
    void operator()(LxGradient *gradient) const { LxGradient_Delete(gradient); }
};
using GradientHandle = std::unique_ptr<LxGradient, DeleteGradient>;

GradientHandle makeGradient(int32_t type = kLxGradientAcross, int32_t curve = kLxGradientLinear) {
    GradientHandle gradient(LxGradient_Create());
    LxGradient_SetType(gradient.get(), type, curve);
    return gradient;
}

LxColor grey(uint8_t value, uint8_t alpha = 255) {
    return LxColor_RGBA(value, value, value, alpha);
}

GradientHandle blackToWhite(int32_t type, int32_t curve = kLxGradientLinear) {
    GradientHandle gradient = makeGradient(type, curve);
    LxGradient_AddColor(gradient.get(), grey(0), 0, 0.0, 0.5);
    LxGradient_AddColor(gradient.get(), grey(255), 1, 1.0, 0.5);
    return gradient;
}

void layOut(const GradientHandle &gradient, double x0, double y0, double x1, double y1) {
    const double bounds[] = {x0, y0, x1, y1};
    rebuild(*gradient, bounds);
}

LxColor colorAt(const GradientHandle &gradient, int32_t x, int32_t y) {
    LxColor color = LxColor_L(77);
    LxGradient_Color(&color, gradient.get(), x, y);
    return color;
}

int redAt(const GradientHandle &gradient, int32_t x, int32_t y = 0) {
    return colorAt(gradient, x, y).content.rgba.r;
}

// The entry of the table of a linear way from black to white.
int linearEntry(int entry) {
    double t = 0;
    for (int i = 0; i < entry; ++i)
        t += 1.0 / 1023;
    return static_cast<int>(std::floor(t * 255 + 0.5));
}

::testing::AssertionResult isBlack(const LxColor &color) {
    const LxRGBA c = color.content.rgba;
    if (color.type == kLxPixelRGBA && c.r == 0 && c.g == 0 && c.b == 0 && c.a == 255)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "type " << color.type << ": " << int{c.r} << ", " << int{c.g}
                                         << ", " << int{c.b} << ", " << int{c.a};
}

} // namespace

TEST(GradientRecord, StartsWithoutStops) {
    const GradientHandle gradient(LxGradient_Create());
    EXPECT_EQ(gradient->type, 1);
    EXPECT_EQ(gradient->curve, LxLinear);
    EXPECT_EQ(gradient->dirty, 1);
    EXPECT_EQ(gradient->ramp, nullptr);
    EXPECT_EQ(gradient->rampCapacity, 0);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(gradient->positions[i], -1.0);
        EXPECT_EQ(gradient->mids[i], 0.5);
    }
}

TEST(GradientRecord, KeepsTheTypeUncheckedAndKnowsFiveCurves) {
    const GradientHandle gradient(LxGradient_Create());
    const decltype(LxGradient::curve) curves[] = {LxLinear, LxCurved, LxSine, LxSphereInc, LxSphereDec};
    for (int32_t curve = 0; curve < 5; ++curve) {
        LxGradient_SetType(gradient.get(), 3, curve);
        EXPECT_EQ(gradient->curve, curves[curve]);
    }
    for (const int32_t curve : {-1, 5, std::numeric_limits<int32_t>::min(), 77}) {
        LxGradient_SetType(gradient.get(), curve, curve);
        EXPECT_EQ(gradient->type, curve);
        EXPECT_EQ(gradient->curve, LxLinear);
    }
}

TEST(GradientRecord, StopsAreHeldToTheirRange) {
    const GradientHandle gradient(LxGradient_Create());
    gradient->dirty = 0;
    for (const int32_t index : {10, -1, 11, std::numeric_limits<int32_t>::min()})
        LxGradient_AddColor(gradient.get(), grey(9), index, 0.5, 0.5);
    EXPECT_EQ(gradient->dirty, 0);
    EXPECT_EQ(gradient->positions[0], -1.0);

    LxGradient_AddColor(gradient.get(), grey(9), 9, 1.5, -3.0);
    EXPECT_EQ(gradient->positions[9], 1.0);
    EXPECT_EQ(gradient->mids[9], 0.0);
    EXPECT_EQ(gradient->dirty, 1);
    LxGradient_AddColor(gradient.get(), grey(9), 3, -0.2, 2.0);
    EXPECT_EQ(gradient->positions[3], 0.0);
    EXPECT_EQ(gradient->mids[3], 1.0);
    LxGradient_AddColor(gradient.get(), grey(9), 4, 0.25, 0.75);
    EXPECT_EQ(gradient->positions[4], 0.25);
    EXPECT_EQ(gradient->mids[4], 0.75);
}

TEST(GradientRecord, NullIsIgnored) {
    LxGradient_Delete(nullptr);
    LxGradient_SetType(nullptr, 1, 1);
    LxGradient_AddColor(nullptr, grey(1), 0, 0.0, 0.0);
    LxColor color = LxColor_L(77);
    LxGradient_Color(&color, nullptr, 3, 4);
    EXPECT_TRUE(isBlack(color));
}

TEST(GradientRamp, FromBlackToWhiteNeverQuiteReachesTheEnd) {
    const GradientHandle gradient = blackToWhite(kLxGradientAcross);
    layOut(gradient, 10, 20, 110, 30);
    EXPECT_EQ(gradient->rampCapacity, 100);
    EXPECT_EQ(gradient->dirty, 0);
    EXPECT_EQ(redAt(gradient, 10), 0);
    // Step 99 of 100 reads entry (int)(0.99 * 1023 + 0.5) = 1013: 252.5 of 255, and a half goes up.
    EXPECT_EQ(redAt(gradient, 109), linearEntry(1013));
    EXPECT_EQ(redAt(gradient, 109), 253);
    // Step 50 reads entry 512 of 1023, a hair over the middle.
    EXPECT_EQ(redAt(gradient, 60), 128);
    EXPECT_EQ(colorAt(gradient, 60, 25).content.rgba.a, 255);
    EXPECT_EQ(colorAt(gradient, 60, 25).type, kLxPixelRGBA);
}

TEST(GradientRamp, BoundsAreRoundedOutward) {
    const GradientHandle gradient = blackToWhite(kLxGradientAcross);
    layOut(gradient, -1.5, -0.1, 3.2, 0.1);
    EXPECT_EQ(gradient->bounds.x0, -2);
    EXPECT_EQ(gradient->bounds.y0, -1);
    EXPECT_EQ(gradient->bounds.x1, 4);
    EXPECT_EQ(gradient->bounds.y1, 1);
    EXPECT_EQ(gradient->rampCapacity, 6);
}

TEST(GradientRamp, AnEmptyShapeKeepsAllButTheBounds) {
    const GradientHandle gradient = blackToWhite(kLxGradientAcross);
    layOut(gradient, 0, 0, 50, 50);
    gradient->dirty = 1;
    layOut(gradient, 7, 0, 7, 50);
    EXPECT_EQ(gradient->bounds.x0, 7);
    EXPECT_EQ(gradient->rampCapacity, 50);
    EXPECT_EQ(gradient->dirty, 1);
}

TEST(GradientRamp, StopsWithinPaintFlatOutside) {
    const GradientHandle gradient = makeGradient();
    LxGradient_AddColor(gradient.get(), grey(40), 0, 0.25, 0.5);
    LxGradient_AddColor(gradient.get(), grey(200), 1, 0.75, 0.5);
    layOut(gradient, 0, 0, 1000, 1);
    // Entry 255 is the first stop, entry 767 the second; step i reads entry (int)(i * 1.023 + 0.5).
    for (int32_t x = 0; x < 249; ++x)
        EXPECT_EQ(redAt(gradient, x), 40) << x;
    for (int32_t x = 750; x < 1000; ++x)
        EXPECT_EQ(redAt(gradient, x), 200) << x;
    EXPECT_EQ(redAt(gradient, 500), 120);
}

TEST(GradientRamp, TheCurveBendsBetweenTheStops) {
    // At the breakpoint 0.25 of the curve, the middle colour stands at a quarter of the way.
    for (const int32_t curve : {kLxGradientLinear, kLxGradientCurved}) {
        const GradientHandle gradient = makeGradient(kLxGradientAcross, curve);
        LxGradient_AddColor(gradient.get(), grey(0), 0, 0.0, 0.25);
        LxGradient_AddColor(gradient.get(), grey(254), 1, 1.0, 0.5);
        layOut(gradient, 0, 0, 1024, 1);
        EXPECT_EQ(redAt(gradient, 256), 127) << curve;
    }
    // Half a sine wave passes the middle at 0.5, and is (1 - sqrt(0.5)) / 2 at a quarter: 37.2 of 254.
    const GradientHandle sine = makeGradient(kLxGradientAcross, kLxGradientSine);
    LxGradient_AddColor(sine.get(), grey(0), 0, 0.0, 0.5);
    LxGradient_AddColor(sine.get(), grey(254), 1, 1.0, 0.5);
    layOut(sine, 0, 0, 1024, 1);
    EXPECT_EQ(redAt(sine, 256), 37);
    EXPECT_EQ(redAt(sine, 512), 127);
    // Circles: sqrt(1 - 0.75^2) = 0.661 and 1 - sqrt(1 - 0.25^2) = 0.0318 at a quarter, on 254.
    for (const auto &[curve, expected] : {std::pair{kLxGradientSphereInc, 168}, {kLxGradientSphereDec, 8}}) {
        const GradientHandle circle = makeGradient(kLxGradientAcross, curve);
        LxGradient_AddColor(circle.get(), grey(0), 0, 0.0, 0.5);
        LxGradient_AddColor(circle.get(), grey(254), 1, 1.0, 0.5);
        layOut(circle, 0, 0, 1024, 1);
        EXPECT_EQ(redAt(circle, 256), expected) << curve;
    }
}

TEST(GradientRamp, AlphaIsInterpolatedToo) {
    const GradientHandle gradient = makeGradient();
    LxGradient_AddColor(gradient.get(), LxColor_RGBA(10, 20, 30, 0), 0, 0.0, 0.5);
    LxGradient_AddColor(gradient.get(), LxColor_RGBA(30, 10, 30, 254), 1, 1.0, 0.5);
    layOut(gradient, 0, 0, 2, 1);
    const LxRGBA half = colorAt(gradient, 1, 0).content.rgba;
    EXPECT_EQ(half.r, 20);
    EXPECT_EQ(half.g, 15);
    EXPECT_EQ(half.b, 30);
    EXPECT_EQ(half.a, 127);
}

TEST(GradientRamp, TwoStopsAtOnePlaceWriteNothingBetween) {
    const GradientHandle gradient = makeGradient();
    LxGradient_AddColor(gradient.get(), grey(10), 0, 0.0, 0.5);
    LxGradient_AddColor(gradient.get(), grey(90), 1, 0.5, 0.5);
    LxGradient_AddColor(gradient.get(), grey(200), 2, 0.5, 0.5);
    LxGradient_AddColor(gradient.get(), grey(220), 3, 1.0, 0.5);
    layOut(gradient, 0, 0, 1024, 1);
    // Entry 511 is written by the first pair, then by the third as its start.
    EXPECT_EQ(redAt(gradient, 510), 90);
    EXPECT_EQ(redAt(gradient, 512), 200);
    EXPECT_EQ(redAt(gradient, 0), 10);
    EXPECT_EQ(redAt(gradient, 1023), 220);
}

TEST(GradientRamp, WithoutAFirstStopIsBlack) {
    const GradientHandle gradient = makeGradient();
    layOut(gradient, 0, 0, 8, 8);
    EXPECT_TRUE(isBlack(colorAt(gradient, 3, 3)));
    LxGradient_AddColor(gradient.get(), grey(200), 1, 0.5, 0.5);
    layOut(gradient, 0, 0, 8, 8);
    EXPECT_TRUE(isBlack(colorAt(gradient, 7, 3)));
}

TEST(GradientRamp, TheTenthStopBlendsTowardTheFirstMid) {
    const GradientHandle gradient = makeGradient();
    LxGradient_AddColor(gradient.get(), grey(100), 0, 0.0, 1.0);
    for (int32_t i = 1; i < 10; ++i)
        LxGradient_AddColor(gradient.get(), grey(200), i, 0.5, 0.5);
    // The tenth stop at 0.5 passes to the first colour at position 1.0, the first of the mids.
    layOut(gradient, 0, 0, 1024, 1);
    EXPECT_EQ(redAt(gradient, 512), 200);
    EXPECT_EQ(redAt(gradient, 768), 150);
    EXPECT_EQ(redAt(gradient, 1023), 100);
}

TEST(GradientRamp, ShapesHaveTheirLengths) {
    const struct {
        int32_t type, length;
    } cases[] = {{0, 31}, {1, 11}, {2, 0}, {3, 20}, {4, 42}, {5, 42}, {6, 0}, {-1, 0}};
    for (const auto &c : cases) {
        const GradientHandle gradient = blackToWhite(c.type);
        layOut(gradient, 100, 100, 131, 111);
        EXPECT_EQ(gradient->rampCapacity, c.length) << c.type;
        EXPECT_EQ(gradient->dirty, 0);
    }
}

TEST(GradientRamp, ShapesIndexByTheirRules) {
    const auto indexOf = [](int32_t type, int32_t x, int32_t y) {
        const GradientHandle gradient = blackToWhite(type);
        layOut(gradient, 100, 200, 131, 211); // 31 by 11
        return rampIndex(*gradient, x, y);
    };
    EXPECT_EQ(indexOf(0, 117, 205), 17);
    EXPECT_EQ(indexOf(1, 117, 205), 5);
    EXPECT_EQ(indexOf(4, 117, 205), 22);
    EXPECT_EQ(indexOf(5, 117, 205), 5 + 31 - 17);
    // Halves 15 and 5. Each quadrant, and the middle lines.
    EXPECT_EQ(indexOf(3, 103, 204), 3);
    EXPECT_EQ(indexOf(3, 112, 204), 4);
    EXPECT_EQ(indexOf(3, 128, 204), 2);
    EXPECT_EQ(indexOf(3, 115, 201), 1);
    EXPECT_EQ(indexOf(3, 103, 208), 2);
    EXPECT_EQ(indexOf(3, 101, 208), 1);
    EXPECT_EQ(indexOf(3, 115, 205), 5);
    EXPECT_EQ(indexOf(3, 130, 210), 0);
    EXPECT_EQ(indexOf(2, 103, 208), -1);
    EXPECT_EQ(indexOf(6, 103, 208), -1);
    EXPECT_EQ(indexOf(-2, 103, 208), -1);
}

TEST(GradientRamp, InwardClimbsAndFallsAtOnePace) {
    const GradientHandle gradient = blackToWhite(kLxGradientInward);
    layOut(gradient, 0, 0, 8, 20); // 4 up, then 10 back of which 4 are on the table
    const int expected[] = {0,
                            linearEntry(256),
                            linearEntry(512),
                            linearEntry(767),
                            linearEntry(1023),
                            linearEntry(767),
                            linearEntry(512),
                            linearEntry(256)};
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(gradient->ramp[i].content.rgba.r, expected[i]) << i;
    for (int i = 8; i < 14; ++i)
        EXPECT_EQ(gradient->ramp[i].content.rgba.r, 0) << "held to the table's start";
}

TEST(GradientRamp, InwardOverOneColumnHasNothingToClimb) {
    const GradientHandle gradient = blackToWhite(kLxGradientInward);
    layOut(gradient, 0, 0, 1, 9);
    EXPECT_EQ(gradient->rampCapacity, 4);
    EXPECT_EQ(gradient->ramp[0].content.rgba.r, 255);
    EXPECT_EQ(gradient->ramp[1].content.rgba.r, 0);
    layOut(gradient, 0, 0, 1, 1);
    EXPECT_EQ(gradient->ramp, nullptr);
    EXPECT_EQ(gradient->rampCapacity, 0);
    EXPECT_TRUE(isBlack(colorAt(gradient, 0, 0)));
}

TEST(GradientRamp, IsReusedWhereItIsLongEnough) {
    const GradientHandle gradient = blackToWhite(kLxGradientAcross);
    layOut(gradient, 0, 0, 100, 1);
    const LxColor *ramp = gradient->ramp;
    layOut(gradient, 0, 0, 10, 1);
    EXPECT_EQ(gradient->ramp, ramp);
    EXPECT_EQ(gradient->rampCapacity, 100);
    EXPECT_EQ(redAt(gradient, 50), 128) << "a step of the earlier shape still stands there";
}

TEST(GradientRamp, FollowsEveryChangeOfStopsAndCurve) {
    const GradientHandle gradient = blackToWhite(kLxGradientAcross);
    layOut(gradient, 0, 0, 1024, 1);
    EXPECT_EQ(redAt(gradient, 256), 64);
    LxGradient_SetType(gradient.get(), kLxGradientAcross, kLxGradientSine);
    layOut(gradient, 0, 0, 1024, 1);
    EXPECT_EQ(redAt(gradient, 256), 37);
    LxGradient_AddColor(gradient.get(), grey(0), 1, 1.0, 0.5);
    layOut(gradient, 0, 0, 1024, 1);
    EXPECT_EQ(redAt(gradient, 256), 0);
    layOut(gradient, 0, 0, 100, 1);
    EXPECT_EQ(redAt(gradient, 99), 0);
}

TEST(GradientColor, IsHeldToTheRampEverywhere) {
    test::Random random;
    for (int32_t type = 0; type < 6; ++type) {
        const GradientHandle gradient = blackToWhite(type);
        EXPECT_TRUE(isBlack(colorAt(gradient, 3, 3))) << "before any rebuild";
        layOut(gradient, 5, 5, 25, 25);
        for (int i = 0; i < 2000; ++i)
            colorAt(gradient, random.anyInteger(), random.anyInteger());
    }
    const GradientHandle gradient = blackToWhite(kLxGradientAcross);
    layOut(gradient, 10, 0, 20, 1);
    EXPECT_EQ(redAt(gradient, -1000), 0);
    EXPECT_EQ(redAt(gradient, 1000), redAt(gradient, 19));
}

TEST(GradientColor, OfAnyBoundsStaysInMemory) {
    test::Random random;
    for (int i = 0; i < 300; ++i) {
        const GradientHandle gradient = blackToWhite(random.integer(-1, 6), random.integer(0, 4));
        layOut(gradient, random.real(-50, 50), random.real(-50, 50), random.real(-50, 50),
               random.real(-50, 50));
        for (int k = 0; k < 100; ++k)
            colorAt(gradient, random.integer(-60, 60), random.integer(-60, 60));
    }
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double side : {infinity, -infinity, std::nan(""), 1e300, 2147483647.0}) {
        const GradientHandle gradient = blackToWhite(kLxGradientAcross);
        layOut(gradient, 0, 0, side, 4);
        colorAt(gradient, 1, 1);
    }
}

TEST(GradientColor, WithoutMemoryIsBlack) {
    const GradientHandle gradient = blackToWhite(kLxGradientAcross);
    const SystemAllocator failing = {[](size_t) -> void * { return nullptr; },
                                     [](size_t, size_t) -> void * { return nullptr; },
                                     [](void *, size_t) -> void * { return nullptr; }};
    setSystemAllocator(&failing);
    const bool made = LxGradient_Create() != nullptr;
    layOut(gradient, 0, 0, 100, 1);
    setSystemAllocator(nullptr);
    EXPECT_FALSE(made);
    EXPECT_EQ(gradient->rampCapacity, 0);
    EXPECT_EQ(gradient->dirty, 0);
    EXPECT_TRUE(isBlack(colorAt(gradient, 3, 0)));
}

TEST(Shader, OfAColourScalesAlphaByCoverage) {
    LxRGBA color = {10, 20, 30, 200};
    LxShader shader = solidShader(color);
    EXPECT_EQ(shader.begin, nullptr);
    EXPECT_EQ(shader.end, nullptr);
    EXPECT_EQ(shader.data, &color);
    EXPECT_EQ(shader.flags, 1);
    for (int32_t coverage = 0; coverage < 256; ++coverage) {
        LxColor out = LxColor_L(77);
        shader.color(&out, &shader, 5, 6, coverage);
        EXPECT_EQ(out.type, kLxPixelRGBA);
        EXPECT_EQ(out.content.rgba.r, 10);
        EXPECT_EQ(out.content.rgba.g, 20);
        EXPECT_EQ(out.content.rgba.b, 30);
        EXPECT_EQ(out.content.rgba.a, 201 * coverage / 256);
    }
}

TEST(Shader, OfAnyAlphaAtFullCoverageKeepsIt) {
    for (int alpha = 0; alpha < 256; ++alpha) {
        LxRGBA color = {1, 2, 3, static_cast<uint8_t>(alpha)};
        LxShader shader = solidShader(color);
        LxColor out;
        shader.color(&out, &shader, 0, 0, 255);
        EXPECT_EQ(out.content.rgba.a, alpha);
    }
}

TEST(Shader, OfAnyCoverageKeepsTheProductsLowByte) {
    LxRGBA color = {1, 2, 3, 255};
    LxShader shader = solidShader(color);
    LxColor out;
    for (const auto &[coverage, alpha] : {std::pair{256, 0}, {1000, 1000 & 255}, {-1, 255}, {-256, 0}}) {
        shader.color(&out, &shader, 0, 0, coverage);
        EXPECT_EQ(out.content.rgba.a, alpha) << coverage;
    }
    for (const int32_t coverage : {std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()})
        shader.color(&out, &shader, 0, 0, coverage);
}

TEST(Shader, OfAGradientRebuildsItAndScalesAlpha) {
    const GradientHandle gradient = blackToWhite(kLxGradientAcross);
    LxShader shader;
    LxCreate_GradientShader(&shader, gradient.get());
    EXPECT_EQ(shader.end, nullptr);
    EXPECT_EQ(shader.data, gradient.get());
    EXPECT_EQ(shader.flags, 0);
    const double bounds[] = {10.5, 0.0, 59.5, 3.0};
    shader.begin(&shader, bounds);
    EXPECT_EQ(gradient->rampCapacity, 50);
    LxColor out;
    shader.color(&out, &shader, 35, 2, 100);
    EXPECT_EQ(out.content.rgba.r, redAt(gradient, 35));
    EXPECT_EQ(out.content.rgba.a, 100);
    LxCreate_GradientShader(nullptr, gradient.get());
}
