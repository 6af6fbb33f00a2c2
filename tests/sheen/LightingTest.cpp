#include "sheen/Lighting.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/VectorLevel.h"
#include "image/Image.h"
#include "tests/support/Random.h"

using namespace lx;
using lx::test::Random;

namespace {

float &heightAt(LxSheenDescriptor &descriptor, int x, int y) {
    return reinterpret_cast<float *>(rowAddress(*descriptor.floatImage, y))[x];
}

LxRGBA &colorAt(LxSheenDescriptor &descriptor, int x, int y) {
    return reinterpret_cast<LxRGBA *>(rowAddress(*descriptor.colorImage, y))[x];
}

LxRGBA pixelAt(const ImageHandle &picture, int x, int y) {
    return reinterpret_cast<const LxRGBA *>(rowAddress(*picture, y))[x];
}

// A descriptor whose composite is a flat height of 1/2 in one colour.
LxSheenDescriptor flat(int size, LxRGBA color = {200, 100, 50, 255}) {
    LxSheenDescriptor descriptor(size, size);
    descriptor.floatImage.reset(LxImage_Create(kLxPixelF, 0, 0, size, size, 1, 0));
    descriptor.colorImage.reset(LxImage_Create(kLxPixelRGBA, 0, 0, size, size, 1, 1));
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            heightAt(descriptor, x, y) = 0.5f;
            colorAt(descriptor, x, y) = color;
        }
    }
    return descriptor;
}

// One inner pixel by the rules, in a plain form.
LxRGBA litPlainly(LxSheenDescriptor &d, int x, int y) {
    const LxSheenLight &light = d.light;
    const auto lx = float(std::cos(light.azimuth) * std::cos(light.elevation) * light.brilliance);
    const auto ly = float(std::sin(light.azimuth) * std::cos(light.elevation) * light.brilliance);
    const double lz = std::sin(light.elevation) * light.brilliance;
    const double depth = 1530.0 / light.width;
    const auto h = [&](int dx, int dy) { return heightAt(d, x + dx, y + dy); };
    const float gx = (h(-1, -1) + h(-1, 0) + h(-1, 1) - h(1, -1) - h(1, 0) - h(1, 1)) * 255.0f;
    const float gy = (h(1, 1) + h(-1, 1) + h(0, 1) - h(-1, -1) - h(0, -1) - h(1, -1)) * 255.0f;
    float i;
    if (gx == 0.0f && gy == 0.0f) {
        i = float(lz);
    } else {
        const float s = lx * gx + ly * gy + float(depth * lz);
        i = s < 0.0f ? 0.0f : s / std::sqrt(gx * gx + gy * gy + float(depth * depth));
    }
    LxRGBA color = colorAt(d, x, y);
    for (uint8_t *channel : {&color.r, &color.g, &color.b}) {
        if (i > 1.0f)
            *channel =
                static_cast<uint8_t>(std::min(255.0f, *channel + std::floor((i - 1.0f) * 255.0f + 0.5f)));
        else
            *channel = static_cast<uint8_t>(*channel * std::max(float(light.ambient), i));
    }
    color.a = 255;
    return h(0, -1) > float(d.alphaThreshold) ? color : LxRGBA{0, 0, 0, 0};
}

} // namespace

TEST(Lighting, EqualsThePlainForm) {
    Random random(31);
    const VectorLevel best = vectorLevel();
    for (int round = 0; round < 400; ++round) {
        const int size = random.integer(3, 40);
        LxSheenDescriptor d = flat(size);
        const bool rough = random.coin();
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                if (rough || random.word() % 8 == 0)
                    heightAt(d, x, y) =
                        static_cast<float>(random.word() % 3 == 0 ? 0.0 : random.real(0, 0.2));
                colorAt(d, x, y) = {random.byte(), random.byte(), random.byte(), random.byte()};
            }
        }
        if (random.coin()) {
            d.light.brilliance = random.real(0.2, 3.0);
            d.light.azimuth = random.real(-4, 4);
            d.light.elevation = random.real(0, 1.6);
            d.light.width = random.real(20, 600);
            d.light.ambient = random.real(0, 1);
        }
        for (const VectorLevel level : {VectorLevel::baseline, VectorLevel::avx2}) {
            capVectorLevel(level);
            const ImageHandle picture = litPicture(d);
            ASSERT_NE(picture, nullptr);
            for (int y = 0; y < size; ++y) {
                for (int x = 0; x < size; ++x) {
                    const bool edge = x == 0 || y == 0 || x == size - 1 || y == size - 1;
                    const LxRGBA expected = edge ? LxRGBA{0, 0, 0, 0} : litPlainly(d, x, y);
                    const LxRGBA lit = pixelAt(picture, x, y);
                    ASSERT_EQ(std::memcmp(&lit, &expected, 4), 0) << x << ", " << y << " of " << size;
                }
            }
        }
        capVectorLevel(best);
    }
}

TEST(Lighting, AFlatCompositeIsDimmedByTheElevation) {
    const LxSheenDescriptor d = flat(5);
    const LxRGBA lit = pixelAt(litPicture(d), 2, 2);
    // sin(45 degrees) = 0.70710678: 141.4, 70.7 and 35.4.
    EXPECT_EQ(lit.r, 141);
    EXPECT_EQ(lit.g, 70);
    EXPECT_EQ(lit.b, 35);
    EXPECT_EQ(lit.a, 255);
}

TEST(Lighting, BrillianceAboveOneHighlights) {
    LxSheenDescriptor d = flat(5);
    d.light.elevation = 1.5707963267948966;
    d.light.brilliance = 1.2;
    const LxRGBA lit = pixelAt(litPicture(d), 2, 2);
    // floor(0.2 * 255 + 0.5) = 51 is added to each channel.
    EXPECT_EQ(lit.r, 251);
    EXPECT_EQ(lit.g, 151);
    EXPECT_EQ(lit.b, 101);
    d.light.brilliance = 1e30;
    EXPECT_EQ(pixelAt(litPicture(d), 2, 2).b, 255);
}

TEST(Lighting, TheLightComesFromTheTopLeft) {
    LxSheenDescriptor d = flat(9, {200, 200, 200, 255});
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x)
            heightAt(d, x, y) =
                0.5f + 0.02f * static_cast<float>(x + y); // rises to the bottom right: faces the light
    }
    const uint8_t facing = pixelAt(litPicture(d), 4, 4).r;
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x)
            heightAt(d, x, y) = 0.9f - 0.02f * static_cast<float>(x + y);
    }
    const uint8_t turnedAway = pixelAt(litPicture(d), 4, 4).r;
    // Slopes of -30.6 and 30.6 against the light's -0.5 and 0.5 give 30.6, the lift 6 * 0.7071 adds 4.24, and
    // the normal's length is the root of 2 * 30.6^2 + 6^2, 43.69: 0.7975 of 200.
    EXPECT_EQ(facing, 159);
    EXPECT_EQ(turnedAway, 40) << "the ambient fifth";
}

TEST(Lighting, ThePictureSitsOneRowLowerThanItsHeights) {
    LxSheenDescriptor d = flat(7);
    for (int x = 0; x < 7; ++x) {
        heightAt(d, x, 0) = heightAt(d, x, 1) = 0.0f;
        heightAt(d, x, 4) = 0.01f; // at the threshold, not above it
        heightAt(d, x, 5) = heightAt(d, x, 6) = 0.0f;
    }
    const ImageHandle picture = litPicture(d);
    EXPECT_EQ(pixelAt(picture, 3, 1).a, 0);
    EXPECT_EQ(pixelAt(picture, 3, 2).a, 0) << "the shape's first row";
    EXPECT_EQ(pixelAt(picture, 3, 3).a, 255);
    EXPECT_EQ(pixelAt(picture, 3, 4).a, 255) << "right under the shape's last row";
    EXPECT_EQ(pixelAt(picture, 3, 5).a, 0);
}

TEST(Lighting, PicturesNarrowerThanThreePixelsStayTransparent) {
    for (const int size : {1, 2}) {
        const ImageHandle picture = litPicture(flat(size));
        ASSERT_NE(picture, nullptr);
        for (int i = 0; i < size * size; ++i)
            EXPECT_EQ(pixelAt(picture, i % size, i / size).a, 0);
    }
}

TEST(Lighting, TheShadowsDisplacementWidensTheFrame) {
    LxSheenDescriptor d = flat(8);
    d.light.azimuth = 0.0;
    d.light.shadowDisplacement = 2.5;
    const ImageHandle picture = litPicture(d);
    // Half a turn on: moved by (-2.5, about 3e-16).
    EXPECT_EQ(LxImage_x(picture.get()), -3);
    EXPECT_EQ(LxImage_MaxX(picture.get()), 8);
    EXPECT_EQ(LxImage_y(picture.get()), 0);
}

TEST(Lighting, AnyLightIsTaken) {
    Random random(32);
    for (int round = 0; round < 300; ++round) {
        LxSheenDescriptor d = flat(6);
        for (int i = 0; i < 36; ++i)
            heightAt(d, i % 6, i / 6) = static_cast<float>(random.real(0, 1));
        d.light.azimuth = random.anyReal();
        d.light.elevation = random.anyReal();
        d.light.width = random.anyReal();
        d.light.ambient = random.anyReal();
        d.light.brilliance = random.anyReal();
        d.light.shadowDisplacement = random.coin() ? random.real(-50, 50) : NAN;
        d.alphaThreshold = random.anyReal();
        litPicture(d);
    }
}

TEST(Lighting, UnequalSidesStayInsideTheImages) {
    for (const int high : {1, 2, 3, 7, 40}) {
        LxSheenDescriptor d(20, high);
        d.floatImage.reset(LxImage_Create(kLxPixelF, 0, 0, 20, high, 1, 0));
        d.colorImage.reset(LxImage_Create(kLxPixelRGBA, 0, 0, 20, high, 1, 1));
        EXPECT_NE(litPicture(d), nullptr);
    }
}
