#include "colour/Hsv.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/support/Random.h"

using lx::test::Random;

namespace {

LxHSV hsv(int r, int g, int b) {
    return LxHSV_fromRGB(LxRGB{uint8_t(r), uint8_t(g), uint8_t(b)});
}

bool equal(const LxHSV &a, const LxHSV &b) {
    return a.hue == b.hue && a.saturation == b.saturation && a.value == b.value;
}

bool equal(const LxRGB &a, const LxRGB &b) {
    return a.r == b.r && a.g == b.g && a.b == b.b;
}

void expectHsv(const LxHSV &color, int hue, int saturation, int value) {
    EXPECT_EQ(color.hue, hue);
    EXPECT_EQ(color.saturation, saturation);
    EXPECT_EQ(color.value, value);
}

void expectRgb(const LxRGB &color, int r, int g, int b) {
    EXPECT_EQ(color.r, r);
    EXPECT_EQ(color.g, g);
    EXPECT_EQ(color.b, b);
}

// Truncating division without the processor's: by magnitudes, with the sign put back.
int quotient(int numerator, int denominator) {
    const bool negative = (numerator < 0) != (denominator < 0);
    const unsigned magnitude = unsigned(std::abs(numerator)) / unsigned(std::abs(denominator));
    return negative ? -int(magnitude) : int(magnitude);
}

// The rules once more, step by step on an array of components.
LxHSV naiveHsv(const int (&c)[3]) {
    int most = 0, least = 255;
    for (const int component : c) {
        most = component > most ? component : most;
        least = component < least ? component : least;
    }
    const int value = (most + least) / 2;
    if (most == least)
        return {0, 0, value};
    const int d = most - least;
    const int saturation =
        value >= 128 ? quotient(d * 255, 510 - most - least) : quotient(d * 255, most + least);
    int below[3];
    for (int i = 0; i < 3; ++i)
        below[i] = quotient((most - c[i]) * 360, d);
    // The first component that is the largest: its base, and the next but one less the next.
    int first = 0;
    while (c[first] != most)
        ++first;
    int hue = quotient(720 * first + below[(first + 2) % 3] - below[(first + 1) % 3], 6);
    if (hue < 0)
        hue += 360;
    else if (hue >= 360)
        hue -= 360;
    return {hue, saturation, value};
}

LxRGB naiveRgb(int h, int s, int v) {
    if (s == 0)
        return {uint8_t(v), uint8_t(v), uint8_t(v)};
    const int m2 = v >= 128 ? v + s - quotient(v * s, 255) : quotient((s + 255) * v, 255);
    const int m1 = 2 * v - m2;
    uint8_t out[3];
    for (int i = 0; i < 3; ++i) {
        int x = h + 120 - 120 * i;
        if (x >= 360)
            x -= 360;
        else if (x < 0)
            x += 360;
        const int rise = x < 60 ? x : x < 180 ? 60 : x < 240 ? 240 - x : 0;
        out[i] = uint8_t(unsigned(m1 + quotient((m2 - m1) * rise, 60)));
    }
    return {out[0], out[1], out[2]};
}

} // namespace

TEST(Hsv, GreyHasNoHueAndNoSaturation) {
    for (int grey = 0; grey < 256; ++grey)
        expectHsv(hsv(grey, grey, grey), 0, 0, grey);
}

TEST(Hsv, PureColours) {
    expectHsv(hsv(255, 0, 0), 0, 255, 127);
    expectHsv(hsv(0, 255, 0), 120, 255, 127);
    expectHsv(hsv(0, 0, 255), 240, 255, 127);
    expectHsv(hsv(255, 255, 0), 60, 255, 127);
    expectHsv(hsv(0, 255, 255), 180, 255, 127);
    expectHsv(hsv(255, 0, 255), 300, 255, 127);
}

TEST(Hsv, NegativeHuesTruncateBeforeATurnIsAdded) {
    EXPECT_EQ(hsv(255, 0, 20).hue, 356) << "331 - 360 = -29, -4 by the division";
    EXPECT_EQ(hsv(255, 0, 1).hue, 0) << "-2 truncates to 0";
}

TEST(Hsv, TheBranchesOfSaturationMeetAtValue127) {
    // 200 + 54 = 254: value 127, 146 * 255 / 254 = 146. 200 + 56 = 256: value 128, 144 * 255 / (510 - 256) =
    // 144.
    expectHsv(hsv(200, 54, 54), 0, 146, 127);
    expectHsv(hsv(200, 56, 56), 0, 144, 128);
    // 253 + 2 = 255: value 127 still, and 251 * 255 / 255; with 254 + 2 value 128, 252 * 255 / 254 = 252.99.
    expectHsv(hsv(253, 2, 2), 0, 251, 127);
    expectHsv(hsv(254, 2, 2), 0, 252, 128);
}

TEST(Hsv, TheWayBackIsNoExactRoundTrip) {
    expectRgb(LxRGB_fromHSV(0, 255, 127), 254, 0, 0);
    expectRgb(LxRGB_fromHSV(120, 255, 127), 0, 254, 0);
    expectRgb(LxRGB_fromHSV(240, 255, 127), 0, 0, 254);
}

TEST(Hsv, NoSaturationIsGrey) {
    expectRgb(LxRGB_fromHSV(77, 0, 200), 200, 200, 200);
    expectRgb(LxRGB_fromHSV(-100000, 0, 0x1234), 0x34, 0x34, 0x34);
}

TEST(Hsv, EveryColourGivesTheHsvOfTheRules) {
    int different = 0;
    for (int r = 0; r < 256; ++r)
        for (int g = 0; g < 256; ++g)
            for (int b = 0; b < 256; ++b)
                different += !equal(hsv(r, g, b), naiveHsv({r, g, b}));
    EXPECT_EQ(different, 0);
}

TEST(Hsv, EveryHsvInRangeGivesTheColourOfTheRules) {
    int different = 0;
    for (int hue = 0; hue < 360; ++hue)
        for (int saturation = 0; saturation < 256; ++saturation)
            for (int value = 0; value < 256; ++value)
                different += !equal(LxRGB_fromHSV(hue, saturation, value), naiveRgb(hue, saturation, value));
    EXPECT_EQ(different, 0);
}

TEST(Hsv, HuesOneTurnOutOfRangeComeBack) {
    for (int hue = 0; hue < 120; ++hue) {
        // Each component's hue is brought back by one step: up to 239 above a turn for red, 120 less for
        // blue.
        EXPECT_TRUE(equal(LxRGB_fromHSV(hue + 360, 200, 90), LxRGB_fromHSV(hue, 200, 90))) << hue;
        EXPECT_TRUE(equal(LxRGB_fromHSV(hue - 120, 200, 90), LxRGB_fromHSV(hue + 240, 200, 90))) << hue;
    }
}

TEST(Hsv, HuesFurtherOutFallWhereTheBandsPutThem) {
    // 2000 is above 239 in every component even after one turn less: m1, here 2 * 100 - 355 * 100 / 255.
    expectRgb(LxRGB_fromHSV(2000, 100, 100), 61, 61, 61);
    // Red: -1000 + 120 + 360 = -520, below 60: 61 + 78 * -520 / 60 = 61 - 676 = -615, in its low bits 153.
    // Green: -640, 61 - 832 = -771, 253. Blue: -760, 61 - 988 = -927, 97.
    expectRgb(LxRGB_fromHSV(-1000, 100, 100), 153, 253, 97);
}

TEST(Hsv, SaturationAndValueOutOfRangeAreCutToBytes) {
    Random random(40);
    for (int i = 0; i < 300000; ++i) {
        const int hue = random.integer(-2000, 2000);
        const int saturation = random.integer(-1000, 1000), value = random.integer(-1000, 1000);
        ASSERT_TRUE(equal(LxRGB_fromHSV(hue, saturation, value), naiveRgb(hue, saturation, value)))
            << hue << ' ' << saturation << ' ' << value;
    }
}

TEST(Hsv, ArithmeticBeyond32BitsWraps) {
    Random random(41);
    const auto low = [](int64_t v) { return static_cast<int32_t>(static_cast<uint32_t>(v)); };
    for (int i = 0; i < 100000; ++i) {
        const int32_t h = random.anyInteger(), s = random.anyInteger(), v = random.anyInteger();
        const int32_t m2 = v > 127 ? low(int64_t{v} + s - low(int64_t{v} * s) / 255)
                                   : low(int64_t{low(int64_t{s} + 255)} * v) / 255;
        const int32_t m1 = low(int64_t{v} * 2 - m2);
        uint8_t expected[3];
        for (int component = 0; component < 3; ++component) {
            int32_t x = low(int64_t{h} + 120 - 120 * component);
            x = x >= 360 ? x - 360 : x < 0 ? x + 360 : x;
            const int64_t span = low(int64_t{m2} - m1);
            int32_t c = m1;
            if (x < 60)
                c = low(int64_t{m1} + low(span * x) / 60);
            else if (x < 180)
                c = m2;
            else if (x < 240)
                c = low(int64_t{m1} + low(span * (240 - x)) / 60);
            expected[component] = static_cast<uint8_t>(s == 0 ? v : c);
        }
        ASSERT_TRUE(equal(LxRGB_fromHSV(h, s, v), LxRGB{expected[0], expected[1], expected[2]}))
            << h << ' ' << s << ' ' << v;
    }
}

TEST(Hsv, FormsOnBytesAreTheSameConversions) {
    Random random(42);
    for (int i = 0; i < 100000; ++i) {
        const uint8_t rgb[3] = {random.byte(), random.byte(), random.byte()};
        LxHSV converted{};
        intRGBtoHSV(rgb, &converted.hue, &converted.saturation, &converted.value);
        ASSERT_TRUE(equal(converted, LxHSV_fromRGB(LxRGB{rgb[0], rgb[1], rgb[2]})));
        uint8_t back[5] = {9, 9, 9, 9, 9};
        const int32_t hue = random.integer(-500, 900), saturation = random.integer(0, 255);
        intHSVtoRGB(hue, saturation, converted.value, back + 1);
        ASSERT_TRUE(equal(LxRGB{back[1], back[2], back[3]}, LxRGB_fromHSV(hue, saturation, converted.value)));
        ASSERT_EQ(back[0], 9);
        ASSERT_EQ(back[4], 9);
    }
}
