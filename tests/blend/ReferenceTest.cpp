// What each family of modes makes of a pixel, worked out by hand.
#include "blend/Reference.h"

#include <cstdlib>

#include "tests/blend/OnePixel.h"

using namespace lx;
using namespace lx::test;

TEST(BlendRules, SrcOverAtFullWeightIsB) {
    EXPECT_EQ(blendedOnto(blendOf(Mode::srcOver), {1, 2, 3, 4}, {50, 60, 70, 255}), (Bytes{50, 60, 70, 255}));
}

TEST(BlendRules, SrcOverMixesByOpacityAndAlpha) {
    // 170 * 89 >> 8 = 59; 201 * 59 + 250 * 196 = 60859, >> 8 = 237; alpha the larger of 18 and 59.
    EXPECT_EQ(blendedOnto(blendOf(Mode::srcOver, 170), {249, 249, 249, 18}, {200, 249, 249, 88}),
              (Bytes{237, 249, 249, 59}));
}

TEST(BlendRules, ZeroWeightWritesNothing) {
    EXPECT_EQ(blended(blendOf(Mode::srcOver, 0), {9, 9, 9, 9}, {1, 2, 3, 4}, {5, 6, 7, 8}),
              (Bytes{9, 9, 9, 9}));
    EXPECT_EQ(blended(blendOf(Mode::srcOver), {9, 9, 9, 9}, {1, 2, 3, 4}, {5, 6, 7, 0}), (Bytes{9, 9, 9, 9}));
    EXPECT_EQ(blended(blendOf(Mode::multiply), {9, 9, 9, 9}, {1, 2, 3, 4}, {5, 6, 7, 0}),
              (Bytes{9, 9, 9, 9}));
    EXPECT_EQ(blended(blendOf(Mode::noName08, 1), {9, 9, 9, 9}, {1, 2, 3, 4}, {5, 6, 7, 254}),
              (Bytes{9, 9, 9, 9}));
}

TEST(BlendRules, TheMaskActsOnceOnSrcOverAndTwiceOnTheOthers) {
    // Under mask 161 an alpha of 88 becomes 56 and then 35.
    const Bytes a = {100, 100, 100, 0}, b = {200, 200, 200, 88};
    EXPECT_EQ(blendedOnto(blendOf(Mode::srcOver), a, b, 161)[3], 56);
    EXPECT_EQ(blendedOnto(blendOf(Mode::dissolve), a, b, 161)[3], 56);
    EXPECT_EQ(blendedOnto(blendOf(Mode::src), a, b, 161)[3], 56);
    EXPECT_EQ(blendedOnto(blendOf(Mode::multiply), a, b, 161)[3], 35);
    EXPECT_EQ(blendedOnto(blendOf(Mode::grayscale), a, b, 161)[3], 35);
    EXPECT_EQ(blendedOnto(blendOf(Mode::hue), a, b, 161)[3], 35);
    EXPECT_EQ(blendedOnto(blendOf(Mode::noName09), a, b, 161)[3], 35);
    // Multiply: 100 * 200 >> 8 = 78; 79 * 35 + 101 * 220 = 24985, >> 8 = 97.
    EXPECT_EQ(blendedOnto(blendOf(Mode::multiply), a, b, 161)[0], 97);
}

TEST(BlendRules, WithoutAlphaInBTheMaskActsOnce) {
    EXPECT_EQ(blendedOnto(blendOf(Mode::multiply), {0, 0, 0, 0}, {200, 200, 200}, 100)[3], 100);
    EXPECT_EQ(blendedOnto(blendOf(Mode::multiply, 128), {0, 0, 0, 0}, {200, 200, 200}, 100)[3],
              128 * 101 / 256);
}

TEST(BlendRules, SrcCopiesColourAtAnyOpacity) {
    EXPECT_EQ(blendedOnto(blendOf(Mode::src, 170), {249, 249, 249, 18}, {200, 201, 202, 88}),
              (Bytes{200, 201, 202, 59}));
    EXPECT_EQ(blended(blendOf(Mode::src, 0), {9, 9, 9, 9}, {1, 2, 3, 4}, {5, 6, 7, 8}), (Bytes{5, 6, 7, 4}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::src, 0), {1, 2, 3}, {5, 6, 7}), (Bytes{5, 6, 7}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::src), {1, 2, 3, 4}, {5, 6, 7, 8}, 0), (Bytes{1, 2, 3, 4}));
}

TEST(BlendRules, FixedOutputs) {
    const Bytes a = {10, 20, 30, 40}, b = {1, 2, 3, 4};
    EXPECT_EQ(blendedOnto(blendOf(Mode::clear, 170), a, b), (Bytes{0, 0, 0, 170}));
    for (const Mode mode : {Mode::dstIn, Mode::srcOut, Mode::dstOut}) {
        EXPECT_EQ(blendedOnto(blendOf(mode, 170), a, b), (Bytes{0, 0, 255, 170}));
        EXPECT_EQ(blendedOnto(blendOf(mode, 170), {10, 20, 30}, b), (Bytes{0, 0, 255}));
        EXPECT_EQ(blendedOnto(blendOf(mode, 170), {10}, {7}), (Bytes{0}));
        EXPECT_EQ(blendedOnto(blendOf(mode, 0), a, b, 1), (Bytes{0, 0, 255, 0}));
        EXPECT_EQ(blendedOnto(blendOf(mode), a, b, 0), a);
    }
    for (const Mode mode : {Mode::select, Mode::select2}) {
        EXPECT_EQ(blendedOnto(blendOf(mode, 170), a, b), (Bytes{255, 0, 0, 170}));
        EXPECT_EQ(blendedOnto(blendOf(mode, 170), {10}, {7}), (Bytes{255}));
        EXPECT_EQ(blendedOnto(blendOf(mode, 9, Channel::green), {10}, {1, 2, 3}), (Bytes{255}));
    }
}

TEST(BlendRules, ConstantModesMixBlue) {
    for (const Mode mode : {Mode::noName08, Mode::noName09, Mode::noName10}) {
        EXPECT_EQ(blendedOnto(blendOf(mode), {10, 20, 30, 40}, {1, 2, 3, 255}), (Bytes{0, 0, 255, 255}));
        // 1 * 128 + 101 * 127 = 12955, >> 8 = 50; 256 * 128 + 101 * 127 = 45595, >> 8 = 178.
        EXPECT_EQ(blendedOnto(blendOf(mode, 128), {100, 100, 100}, {1, 2, 3}), (Bytes{50, 50, 178}));
        EXPECT_EQ(blendedOnto(blendOf(mode, 128), {100}, {1}), (Bytes{50}));
    }
}

TEST(BlendRules, DstOverWeighsByA) {
    EXPECT_EQ(blendedOnto(blendOf(Mode::dstOver), {1, 2, 3, 255}, {50, 60, 70, 255}), (Bytes{1, 2, 3, 255}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::dstOver), {1, 2, 3, 0}, {50, 60, 70, 255}), (Bytes{50, 60, 70, 0}));
    // 255 * 128 >> 8 = 127; 101 * 127 + 201 * 128 = 38555, >> 8 = 150.
    EXPECT_EQ(blendedOnto(blendOf(Mode::dstOver), {100, 100, 100, 127}, {200, 200, 200, 9}),
              (Bytes{150, 150, 150, 127}));
    // The mask only gates, and an opacity of 0 is a weight like any other.
    EXPECT_EQ(blendedOnto(blendOf(Mode::dstOver), {100, 100, 100, 127}, {200, 200, 200, 9}, 1)[0], 150);
    EXPECT_EQ(blendedOnto(blendOf(Mode::dstOver, 0), {100, 100, 100, 127}, {200, 200, 200, 9}),
              (Bytes{200, 200, 200, 127}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::dstOver, 0), {1, 2, 3}, {77}), (Bytes{77, 77, 77}));
}

TEST(BlendRules, SrcInWeighsByA) {
    EXPECT_EQ(blendedOnto(blendOf(Mode::srcIn), {100, 100, 100, 127}, {200, 200, 200, 9}, 1),
              (Bytes{150, 150, 150, 127}))
        << "201 * 127 + 101 * 128 = 38455, >> 8 = 150";
    EXPECT_EQ(blended(blendOf(Mode::srcIn), {9, 9, 9, 9}, {1, 1, 1, 0}, {2, 2, 2, 255}), (Bytes{9, 9, 9, 9}));
}

TEST(BlendRules, OverlayWeighsByTheSmallerAlpha) {
    const Bytes b = {0, 0, 0, 200};
    EXPECT_EQ(blendedOnto(blendOf(Mode::overlay), {80, 80, 80, 100}, b), (Bytes{49, 49, 49, 100}))
        << "w 100, f 0: 100 + 81 * 155 = 12655, >> 8 = 49";
    EXPECT_EQ(blendedOnto(blendOf(Mode::overlay), {80, 80, 80, 250}, b)[0], 18)
        << "w 200: 200 + 81 * 55 = 4655, >> 8";
    // x = fold(200, 128) = 100; the smaller of 90 and 100 folded again is 45.
    EXPECT_EQ(blendedOnto(blendOf(Mode::overlay), {80, 80, 80, 90}, b, 128)[0], (45 + 81 * 210) / 256);
    // b without alpha: the opacity alone.
    EXPECT_EQ(blendedOnto(blendOf(Mode::overlay), {80, 80, 80, 100}, {0, 0, 0}), (Bytes{0, 0, 0, 255}));
}

TEST(BlendRules, NoName04BendsByTheOpacityAndDoesNotFade) {
    // At opacity 0 the curve is u = b * b + 128: 101 * 101 is 10201 + 128 = 10329, + 40, >> 8 = 40.
    EXPECT_EQ(blendedOnto(blendOf(Mode::noName04, 0), {250, 250, 250}, {101, 101, 101}), (Bytes{40, 40, 40}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::noName04, 0), {0, 0, 0, 7}, {0, 0, 0, 255})[3], 7)
        << "the smaller alpha";
}

TEST(BlendRules, GrayscaleIsTheLuminance) {
    // 2990 + 11740 + 3420 = 18150 / 1000 = 18.
    EXPECT_EQ(blendedOnto(blendOf(Mode::grayscale), {1, 2, 3, 4}, {10, 20, 30, 255}),
              (Bytes{18, 18, 18, 255}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::grayscale, 255, Channel::green), {1, 2, 3}, {10, 20, 30}),
              (Bytes{1, 20, 3}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::grayscale, 255, Channel::green), {1}, {10, 20, 30}), (Bytes{18}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::grayscale), {1, 2, 3}, {10}), (Bytes{10, 10, 10}));
}

TEST(BlendRules, UserColorAddsUnweighted) {
    // w = 128 * 256 >> 8 = 128; 201 * 128 + 101 = 25829, >> 8 = 100. Alpha: 41 * 128 + 256 = 5504, >> 8 = 21.
    EXPECT_EQ(blendedOnto(blendOf(Mode::userColor, 128), {100, 100, 100, 40}, {200, 200, 200, 255}),
              (Bytes{100, 100, 100, 21}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::userColor, 0), {100, 100, 100, 40}, {200, 200, 200, 255}),
              (Bytes{100, 100, 100, 40}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::userColor, 1), {100, 255, 0, 40}, {200, 200, 200, 3}),
              (Bytes{0, 1, 0, 0}))
        << "a weight of 0 is written like any other";
    EXPECT_EQ(blendedOnto(blendOf(Mode::userColor), {255, 255, 255, 255}, {255, 255, 255, 255}),
              (Bytes{0, 0, 0, 0}))
        << "65536 >> 8 is 256, of which the low byte stays";
    EXPECT_EQ(blended(blendOf(Mode::userColor), {9, 9, 9, 9}, {0, 0, 0}, {10, 10, 10, 128})[3], 255);
}

TEST(BlendRules, HueFamilyTakesCoordinatesFromBoth) {
    // Red has hue 0, saturation 255, lightness 127; grey 200 has 0, 0, 200.
    const Bytes red = {255, 0, 0, 255}, grey = {200, 200, 200, 255};
    EXPECT_EQ(blendedOnto(blendOf(Mode::saturation), red, grey), (Bytes{127, 127, 127, 255}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::color), red, grey), (Bytes{127, 127, 127, 255}));
    // Lightness 200 at full saturation: m2 = 200 + 255 - 200 = 255, m1 = 145.
    EXPECT_EQ(blendedOnto(blendOf(Mode::value), red, grey), (Bytes{255, 145, 145, 255}));
    // Green's hue 120 at lightness 127: m2 = 254, m1 = 0.
    EXPECT_EQ(blendedOnto(blendOf(Mode::hue), red, {0, 255, 0, 255}), (Bytes{0, 254, 0, 255}));
    // A result of one byte stores the first component.
    EXPECT_EQ(blended(blendOf(Mode::value), {9}, red, grey), (Bytes{255}));
}

TEST(BlendRules, HueFamilyNeedsThreeComponentsInBoth) {
    for (const Mode mode : {Mode::hue, Mode::saturation, Mode::value, Mode::color}) {
        for (const Bytes &out : {Bytes{1}, Bytes{1, 2, 3}, Bytes{1, 2, 3, 4}}) {
            EXPECT_EQ(blended(blendOf(mode), out, {90}, {10, 200, 30, 255}), out);
            EXPECT_EQ(blended(blendOf(mode), out, {10, 200, 30}, {90}), out);
            EXPECT_EQ(blended(blendOf(mode), out, {10, 200, 30, 255}, {90}, 255), out);
        }
    }
}

TEST(BlendRules, NotIsLogicalAndFlipIgnoresB) {
    EXPECT_EQ(blendedOnto(blendOf(Mode::logicalNot), {9, 9, 9}, {0, 1, 255}), (Bytes{1, 0, 0}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::flip), {0, 133, 255}, {7, 7, 7}), (Bytes{133, 0, 122}));
}

TEST(BlendRules, DissolveDrawsOnceForEachPixelInOrder) {
    constexpr int count = 200;
    Bytes a(count, 10), b(count, 90), mask(count, 255);
    for (size_t i = 0; i < mask.size(); i += 3)
        mask[i] = 0;
    const LxBlend blend = blendOf(Mode::dissolve, 100);
    Bytes out = a;
    std::srand(5);
    LxBlend_SelectMapBlendFunction(0, 0, 0)(&blend, out.data(), out.data(), b.data(), mask.data(), 0, 0, 0, 0,
                                            count, 1);
    std::srand(5);
    for (size_t i = 0; i < count; ++i) {
        const bool drawn = mask[i] != 0 && (std::rand() & 255) <= 100;
        // 91 * 100 + 11 * 155 = 10805, >> 8 = 42.
        ASSERT_EQ(out[i], drawn ? 42 : 10) << i;
    }
}

TEST(BlendRules, DissolveAtFullOpacityNeverGates) {
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(blendedOnto(blendOf(Mode::dissolve), {1, 2, 3}, {7, 8, 9}), (Bytes{7, 8, 9}));
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(blendedOnto(blendOf(Mode::dissolve, 0), {1, 2, 3}, {7, 8, 9}), (Bytes{1, 2, 3}));
}

TEST(BlendRules, AOneByteBTakesItsFunctionFromTheFirstComponentOfA) {
    // f = 100 * 128 >> 8 = 50 for all; the mix at 128 takes each component: 51 * 128 + (c + 1) * 127, >> 8.
    EXPECT_EQ(blendedOnto(blendOf(Mode::multiply, 128), {100, 200, 0}, {128}),
              (Bytes{(6528 + 101 * 127) / 256, (6528 + 201 * 127) / 256, (6528 + 127) / 256}));
    EXPECT_EQ(blendedOnto(blendOf(Mode::multiply), {100, 200, 0, 9}, {128}), (Bytes{50, 50, 50, 255}));
}
