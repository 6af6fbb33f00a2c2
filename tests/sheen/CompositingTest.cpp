#include "sheen/Compositing.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/VectorLevel.h"
#include "tests/support/Random.h"

using namespace lx;
using lx::test::Random;

namespace {

struct Pixel {
    float height;
    LxRGBA color;
};

uint8_t mixed(uint8_t color, uint8_t old, float w) {
    return static_cast<uint8_t>(color * w + old * (1.0f - w));
}

// One pixel by the table of modes.
Pixel composited(uint32_t mode, float opacity, LxRGBA color, Pixel under, float b) {
    const float a = under.height;
    float n = a;
    float c = a;
    const bool inside = mode == 6 || mode == 7 || mode == 8 || mode == 10 || mode == 11;
    if (!inside || a != 0.0f) {
        if (mode == 0 || mode == 6)
            n = a + b;
        if (mode == 1 || mode == 7)
            n = a - b;
        if (mode == 2 || mode == 8)
            n = a * b;
        if (mode == 3 || mode == 9)
            c = b * 0.02f + a;
        if (mode == 4 || mode == 10)
            n = std::max(a, b);
        if (mode == 5 || mode == 11)
            n = std::min(a, b);
    }
    n = std::clamp(n, 0.0f, 1.0f);
    const float delta = std::fabs(n - c);
    if (delta > 0.0f) {
        float w = opacity;
        if (delta < 0.02f)
            w *= delta * 50.0f;
        under.color = {mixed(color.r, under.color.r, w), mixed(color.g, under.color.g, w),
                       mixed(color.b, under.color.b, w), 255};
    }
    under.height = n;
    return under;
}

float someHeight(Random &random) {
    switch (random.word() % 4) {
    case 0:
        return static_cast<float>(random.word() % 2);
    case 1:
        return static_cast<float>(random.real(0, 0.03));
    default:
        return static_cast<float>(random.real(0, 1));
    }
}

Pixel compositedOne(uint32_t mode, float opacity, LxRGBA color, Pixel under, float b) {
    compositeRow({mode, opacity, color, 1, &under.height, &b, &under.color});
    return under;
}

} // namespace

TEST(Compositing, RowsEqualTheTableOfModes) {
    Random random(21);
    const VectorLevel best = vectorLevel();
    for (int round = 0; round < 8000; ++round) {
        const uint32_t mode = random.word() % 14;
        const int count = random.integer(1, 40);
        const auto opacity = static_cast<float>(random.coin() ? random.real(0, 1) : random.integer(0, 1));
        const LxRGBA color = {random.byte(), random.byte(), random.byte(), random.byte()};
        std::vector<float> heights, layer;
        std::vector<LxRGBA> colors;
        for (int i = 0; i <= count; ++i) {
            heights.push_back(someHeight(random));
            layer.push_back(random.word() % 8 == 0 ? heights.back() : someHeight(random));
            colors.push_back({random.byte(), random.byte(), random.byte(), random.byte()});
        }
        for (const VectorLevel level : {VectorLevel::baseline, VectorLevel::avx2}) {
            capVectorLevel(level);
            std::vector<float> newHeights = heights;
            std::vector<LxRGBA> newColors = colors;
            compositeRow({mode, opacity, color, count, newHeights.data(), layer.data(), newColors.data()});
            for (int i = 0; i <= count; ++i) {
                const Pixel under = {heights[i], colors[i]};
                const Pixel expected = i < count ? composited(mode, opacity, color, under, layer[i]) : under;
                ASSERT_EQ(newHeights[i], expected.height) << "mode " << mode << " pixel " << i;
                ASSERT_EQ(std::memcmp(&newColors[i], &expected.color, 4), 0)
                    << "mode " << mode << " pixel " << i << " of " << count;
            }
        }
        capVectorLevel(best);
    }
}

TEST(Compositing, AddPaintsInProportionToASmallChange) {
    const LxRGBA white = {255, 255, 255, 255};
    const Pixel full = compositedOne(0, 1.0f, {200, 100, 0, 7}, {0.5f, white}, 0.02f + 1e-6f);
    EXPECT_EQ(full.color.r, 200);
    EXPECT_EQ(full.color.b, 0);
    EXPECT_EQ(full.color.a, 255);
    const Pixel half = compositedOne(0, 1.0f, {100, 0, 0, 255}, {0.0f, {0, 0, 0, 9}}, 0.01f);
    EXPECT_EQ(half.color.r, 50) << "0.01f * 50.0f rounds to one half";
    EXPECT_EQ(half.color.a, 255);
}

TEST(Compositing, NoChangeOfHeightLeavesThePixel) {
    const LxRGBA old = {1, 2, 3, 4};
    const Pixel same = compositedOne(0, 1.0f, {200, 100, 0, 255}, {0.5f, old}, 0.0f);
    EXPECT_EQ(std::memcmp(&same.color, &old, 4), 0) << "its alpha too";
    const Pixel full = compositedOne(0, 1.0f, {200, 100, 0, 255}, {1.0f, old}, 0.5f);
    EXPECT_EQ(std::memcmp(&full.color, &old, 4), 0) << "the height cannot rise any more";
}

TEST(Compositing, PaintKeepsTheHeight) {
    const Pixel painted = compositedOne(3, 0.5f, {255, 255, 255, 255}, {0.25f, {0, 0, 0, 0}}, 1.0f);
    EXPECT_EQ(painted.height, 0.25f);
    EXPECT_NE(painted.color.r, 0);
}

TEST(Compositing, UnknownModesLeaveThePixel) {
    const Pixel under = {0.5f, {1, 2, 3, 4}};
    const Pixel over = compositedOne(12, 1.0f, {9, 9, 9, 9}, under, 1.0f);
    EXPECT_EQ(over.height, 0.5f);
    EXPECT_EQ(std::memcmp(&over.color, &under.color, 4), 0);
}

TEST(Compositing, AnyOpacityIsTaken) {
    Random random(22);
    for (int i = 0; i < 2000; ++i)
        compositedOne(0, static_cast<float>(random.anyReal()), {255, 1, 0, 0}, {0.0f, {255, 0, 9, 0}}, 0.7f);
}

TEST(Compositing, HeightsInDoublesFollowTheSameTable) {
    EXPECT_EQ(compositeHeight(0, 0.75, 0.5), 1.25) << "without limits";
    EXPECT_EQ(compositeHeight(1, 0.25, 0.5), -0.25);
    EXPECT_EQ(compositeHeight(2, 0.25, 0.5), 0.125);
    EXPECT_EQ(compositeHeight(4, 0.25, 0.5), 0.5);
    EXPECT_EQ(compositeHeight(5, 0.25, 0.5), 0.25);
    for (const uint32_t mode : {3u, 9u, 12u, 4000000000u})
        EXPECT_EQ(compositeHeight(mode, 0.25, 0.5), 0.25);
    for (const uint32_t mode : {6u, 7u, 8u, 10u, 11u}) {
        EXPECT_EQ(compositeHeight(mode, 0.0, 0.5), 0.0) << mode;
        EXPECT_EQ(compositeHeight(mode, 0.25, 0.5), compositeHeight(mode - 6, 0.25, 0.5));
    }
}
