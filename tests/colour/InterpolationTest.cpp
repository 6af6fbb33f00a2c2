#include "colour/Interpolation.h"

#include <cmath>
#include <cstdlib>
#include <vector>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "colour/Hsv.h"
#include "tests/support/Random.h"

using lx::test::Random;

namespace {

// What rand() answers next, instead of the system's numbers; and how often it was asked.
std::vector<int> plannedDraws;
int draws = 0;

} // namespace

// Stands before the system's rand() for the whole program, the library included.
extern "C" int rand(void) noexcept {
    static const auto systemRand = reinterpret_cast<int (*)()>(dlsym(RTLD_NEXT, "rand"));
    ++draws;
    if (plannedDraws.empty())
        return systemRand();
    const int draw = plannedDraws.front();
    plannedDraws.erase(plannedDraws.begin());
    return draw;
}

namespace {

bool equal(const LxRGB &a, const LxRGB &b) {
    return a.r == b.r && a.g == b.g && a.b == b.b;
}

bool equal(const LxRGBA &a, const LxRGBA &b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

uint8_t lerpOf(double t, int from, int to) {
    return LxRGB_Lerp(t, LxRGB{uint8_t(from), 0, 0}, LxRGB{uint8_t(to), 0, 0}).r;
}

// The remainder of the floor by 256, in doubles throughout.
uint8_t naiveByte(double t, int from, int to) {
    const double whole = std::floor(t * double(to - from) + double(from) + 0.5);
    if (!std::isfinite(whole))
        return 0;
    const double rest = std::fmod(whole, 256.0);
    return static_cast<uint8_t>(rest < 0 ? rest + 256 : rest);
}

int32_t naiveInteger(double t, int from, int to) {
    const double whole = std::floor(t * double(to - from) + double(from) + 0.5);
    return whole >= -2147483648.0 && whole <= 2147483647.0 ? int32_t(whole) : INT32_MIN;
}

} // namespace

TEST(Interpolation, EndsAreTheColoursThemselves) {
    Random random(50);
    for (int i = 0; i < 10000; ++i) {
        const LxRGBA a{random.byte(), random.byte(), random.byte(), random.byte()};
        const LxRGBA b{random.byte(), random.byte(), random.byte(), random.byte()};
        ASSERT_TRUE(equal(LxRGBA_Lerp(0, a, b), a));
        ASSERT_TRUE(equal(LxRGBA_Lerp(1, a, b), b));
        const LxRGB c{a.r, a.g, a.b}, d{b.r, b.g, b.b};
        ASSERT_TRUE(equal(LxRGB_Lerp(0, c, d), c));
        ASSERT_TRUE(equal(LxRGB_Lerp(1, c, d), d));
    }
}

TEST(Interpolation, HalvesGoUp) {
    EXPECT_TRUE(equal(LxRGBA_Lerp(0.5, LxRGBA{0, 0, 0, 0}, LxRGBA_White), LxRGBA{128, 128, 128, 128}));
    EXPECT_TRUE(equal(LxRGBA_Lerp(0.5, LxRGBA_White, LxRGBA{0, 0, 0, 0}), LxRGBA{128, 128, 128, 128}));
    EXPECT_TRUE(equal(LxRGBA_Lerp(0.5, LxRGBA_Black, LxRGBA_White), LxRGBA{128, 128, 128, 255}));
}

TEST(Interpolation, BeyondTheEndsBytesWrap) {
    EXPECT_EQ(lerpOf(2, 0, 200), 144) << "400";
    EXPECT_EQ(lerpOf(-1, 0, 200), 56) << "-200";
    EXPECT_EQ(lerpOf(1e6, 0, 1), 64) << "1000000 = 3906 * 256 + 64";
}

TEST(Interpolation, WhatDoesNotFitAnyIntegerIsStillTakenModulo256) {
    EXPECT_EQ(lerpOf(0x1p40, 0, 255), 0);
    EXPECT_EQ(lerpOf(0x1p33 + 3, 0, 1), 3);
    EXPECT_EQ(lerpOf(1e300, 0, 3), 0) << "a multiple of 256, as all doubles of that size";
    EXPECT_EQ(lerpOf(-1e300, 0, 3), 0);
    EXPECT_EQ(lerpOf(0x1p62, 0, 255), 0);
    EXPECT_EQ(lerpOf(INFINITY, 0, 3), 0);
    EXPECT_EQ(lerpOf(-INFINITY, 0, 3), 0);
    EXPECT_EQ(lerpOf(INFINITY, 3, 3), 0) << "infinity times 0 is not a number";
    EXPECT_EQ(lerpOf(NAN, 7, 9), 0);
}

TEST(Interpolation, AllPairsOfBytesAtSixtyFourths) {
    // t = n / 64 is exact, and so is all that follows: floor((n (b - a) + 64 a + 32) / 64) in integers.
    int different = 0;
    for (const int n : {-1000, -64, -33, -1, 0, 1, 7, 16, 21, 32, 33, 48, 63, 64, 65, 100, 12345}) {
        for (int a = 0; a < 256; ++a)
            for (int b = 0; b < 256; ++b)
                different += lerpOf(n / 64.0, a, b) != static_cast<uint8_t>((n * (b - a) + 64 * a + 32) >> 6);
    }
    EXPECT_EQ(different, 0);
}

TEST(Interpolation, AllPairsOfBytesAtUnevenPlaces) {
    int different = 0;
    for (const double t : {0.1, 1 / 3.0, 0.7, 0.9999999999, -2.3, 1e9 / 7, 1e17, -1e19, 1e25})
        for (int a = 0; a < 256; ++a)
            for (int b = 0; b < 256; ++b)
                different += lerpOf(t, a, b) != naiveByte(t, a, b);
    EXPECT_EQ(different, 0);
}

TEST(Interpolation, ChannelsAreIndependentAtAnyPlace) {
    Random random(51);
    for (int i = 0; i < 200000; ++i) {
        const double t = random.coin() ? random.anyReal() : random.real(0, 1);
        const LxRGBA a{random.byte(), random.byte(), random.byte(), random.byte()};
        const LxRGBA b{random.byte(), random.byte(), random.byte(), random.byte()};
        const LxRGBA expected{naiveByte(t, a.r, b.r), naiveByte(t, a.g, b.g), naiveByte(t, a.b, b.b),
                              naiveByte(t, a.a, b.a)};
        ASSERT_TRUE(equal(LxRGBA_Lerp(t, a, b), expected)) << t;
        ASSERT_TRUE(equal(LxRGB_Lerp(t, LxRGB{a.r, a.g, a.b}, LxRGB{b.r, b.g, b.b}),
                          LxRGB{expected.r, expected.g, expected.b}))
            << t;
    }
}

TEST(Interpolation, HueTakesTheLongWayRound) {
    // Hue 350 and hue 10 meet at 180, not at 0: cyan, whose red is the least.
    const LxRGB from = LxRGB_fromHSV(350, 255, 100), to = LxRGB_fromHSV(10, 255, 100);
    ASSERT_GE(LxHSV_fromRGB(from).hue, 345);
    ASSERT_LE(LxHSV_fromRGB(to).hue, 15);
    const LxRGB half = LxRGB_LerpHSV(0.5, from, to);
    EXPECT_LT(half.r, half.g);
    EXPECT_LT(half.r, half.b);
    EXPECT_NEAR(LxHSV_fromRGB(half).hue, 180, 3);
}

TEST(Interpolation, ThroughHsvEachCoordinateIsInterpolatedAlone) {
    Random random(52);
    for (int i = 0; i < 200000; ++i) {
        const double t = random.coin() ? random.anyReal() : random.real(0, 1);
        const LxRGBA a{random.byte(), random.byte(), random.byte(), random.byte()};
        const LxRGBA b{random.byte(), random.byte(), random.byte(), random.byte()};
        const LxRGB opaqueA{a.r, a.g, a.b}, opaqueB{b.r, b.g, b.b};
        const LxHSV p = LxHSV_fromRGB(opaqueA), q = LxHSV_fromRGB(opaqueB);
        const LxRGB expected =
            LxRGB_fromHSV(naiveInteger(t, p.hue, q.hue), naiveInteger(t, p.saturation, q.saturation),
                          naiveInteger(t, p.value, q.value));
        ASSERT_TRUE(equal(LxRGB_LerpHSV(t, opaqueA, opaqueB), expected)) << t;
        ASSERT_TRUE(equal(LxRGBA_LerpHSV(t, a, b),
                          LxRGBA{expected.r, expected.g, expected.b, naiveByte(t, a.a, b.a)}))
            << t;
    }
}

TEST(RandomColour, TakesOneDrawForEachChannelInOrder) {
    // A draw of n * 2 to the power of 23 is the byte n.
    plannedDraws = {1 << 23, 2 << 23, 3 << 23, 4 << 23};
    draws = 0;
    EXPECT_TRUE(equal(LxRGBA_Random(), LxRGBA{1, 2, 3, 4}));
    EXPECT_EQ(draws, 4);
    plannedDraws = {250 << 23, 0, (7 << 23) - 4};
    draws = 0;
    EXPECT_TRUE(equal(LxRGB_Random(), LxRGB{250, 0, 6}));
    EXPECT_EQ(draws, 3);
}

TEST(RandomColour, RoundsInSinglePrecision) {
    // 2 to the power of 31, less 1 up to less 64, rounds to a float of 2 to the power of 31, and the product
    // is 256: byte 0. Less 65 it rounds down to 255.99998.
    plannedDraws = {0x7FFFFFFF, 0x7FFFFFC0, 0x7FFFFFBF, 0x7F7FFFFF};
    // The last is just below 255 * 2 to the power of 23, and rounds up to it.
    EXPECT_TRUE(equal(LxRGBA_Random(), LxRGBA{0, 0, 255, 255}));
}

TEST(RandomColour, FollowsTheCallersSeed) {
    std::srand(12345);
    std::vector<uint8_t> expected;
    // The rounded draw is a whole number; 23 bits of it lie below the byte.
    for (int i = 0; i < 4000; ++i)
        expected.push_back(static_cast<uint8_t>(static_cast<int64_t>(static_cast<float>(std::rand())) >> 23));
    std::srand(12345);
    for (size_t i = 0; i < expected.size(); i += 4) {
        const LxRGBA color = LxRGBA_Random();
        ASSERT_TRUE(equal(color, LxRGBA{expected[i], expected[i + 1], expected[i + 2], expected[i + 3]}))
            << i;
    }
}
