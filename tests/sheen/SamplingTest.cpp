#include "sheen/Sampling.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/sheen/Surfaces.h"

using namespace lx;
using lx::test::Random;

namespace {

struct Sampled {
    std::vector<float> heights;
    LxRectD bounds;
};

// Pixel after pixel, each copied right after it was sampled.
Sampled sampledPlainly(LxSheenLayer &layer, int width, int height) {
    Sampled result = {std::vector<float>(static_cast<size_t>(width) * height, -1.0f),
                      {double(width), double(height), 0.0, 0.0}};
    const uint32_t mask = layer.SymmetryMask();
    const int lastX = width - 1;
    const int lastY = height - 1;
    const float stepX = static_cast<float>(1.0 / lastX);
    const float stepY = static_cast<float>(1.0 / lastY);
    const auto put = [&](int x, int y, double value) {
        result.heights[static_cast<size_t>(y * width + x)] = static_cast<float>(value);
        if (value > 0.0) {
            LxRectD &box = result.bounds;
            box = {std::min(box.x0, double(x)), std::min(box.y0, double(y)), std::max(box.x1, x + 1.0),
                   std::max(box.y1, y + 1.0)};
        }
    };
    for (int y = 0; y <= ((mask & 6) != 0 ? height / 2 : lastY); ++y) {
        for (int x = 0; x <= ((mask & 1) != 0 ? (lastX + 1) / 2 : lastX); ++x) {
            const double px = stepX * static_cast<float>(x);
            const double py = stepY * static_cast<float>(y);
            double value = 0.0;
            layer.Evaluate(&value, &px, &py);
            value = std::isnan(value) ? 0.0 : std::clamp(value, 0.0, 1.0);
            put(x, y, value);
            if ((mask & 1) != 0)
                put(lastX - x, y, value);
            if ((mask & 2) != 0)
                put(x, lastY - y, value);
            if ((mask & 4) != 0 || (mask & 3) == 3)
                put(lastX - x, lastY - y, value);
        }
    }
    return result;
}

void expectEqual(LxSheenLayer &layer, int width, int height) {
    const Sampled plain = sampledPlainly(layer, width, height);
    layer.image.reset(LxImage_Create(kLxPixelF, 0, 0, width, height, 0, 0));
    sampleLayer(layer, width, height);
    for (int y = 0; y < height; ++y) {
        const auto *row = reinterpret_cast<const float *>(rowAddress(*layer.image, y));
        for (int x = 0; x < width; ++x) {
            ASSERT_EQ(row[x], plain.heights[static_cast<size_t>(y * width + x)])
                << x << ", " << y << " of " << width << " by " << height << ", mask " << layer.SymmetryMask();
        }
    }
    ASSERT_EQ(layer.bounds.x0, plain.bounds.x0);
    ASSERT_EQ(layer.bounds.y0, plain.bounds.y0);
    ASSERT_EQ(layer.bounds.x1, plain.bounds.x1);
    ASSERT_EQ(layer.bounds.y1, plain.bounds.y1);
}

} // namespace

TEST(Sampling, CopiesBySymmetryAsPixelByPixel) {
    Random random(11);
    int seen[8] = {};
    for (int i = 0; i < 3000; ++i) {
        LxSheenLayer layer;
        randomize(layer, random, {.noisy = random.word() % 8 == 0, .symmetrical = true});
        ++seen[layer.SymmetryMask() & 7];
        expectEqual(layer, random.integer(1, 33), random.integer(1, 33));
        if (HasFatalFailure())
            return;
    }
    for (const int mask : {0, 1, 2, 4, 7})
        EXPECT_GT(seen[mask], 20) << "the random surfaces reach mask " << mask;
    for (const int mask : {3, 5, 6})
        EXPECT_EQ(seen[mask], 0) << "there are no others";
}

TEST(Sampling, SizesOfOneAndTwoPixels) {
    for (int width = 1; width <= 3; ++width) {
        for (int height = 1; height <= 3; ++height) {
            LxSheenLayer layer;
            layer.SetValue(kInnerSize0, 1.0);
            layer.SetValue(kInnerSize1, 1.0);
            expectEqual(layer, width, height);
        }
    }
}

TEST(Sampling, OnePixelHasNoPosition) {
    LxSheenLayer layer;
    layer.image.reset(LxImage_Create(kLxPixelF, 0, 0, 1, 1, 0, 0));
    sampleLayer(layer, 1, 1);
    EXPECT_EQ(*reinterpret_cast<float *>(rowAddress(*layer.image, 0)), 0.0f) << "not a number is stored as 0";
}

TEST(Sampling, PositionsAreSinglePrecision) {
    LxSheenLayer layer;
    layer.SetValue(kInnerSize0, 1.0);
    layer.SetValue(kInnerSize1, 1.0);
    layer.SetValue(kHeight, 0.0);
    layer.SetValue(kCenter2, 0.5);
    layer.SetValue(kElevationAmount, 1.0);
    layer.image.reset(LxImage_Create(kLxPixelF, 0, 0, 8, 8, 0, 0));
    sampleLayer(layer, 8, 8);
    // The height is x itself: 3 / 7 by way of the rounded seventh.
    const float position = static_cast<float>(1.0 / 7.0) * 3.0f;
    const auto *row = reinterpret_cast<const float *>(rowAddress(*layer.image, 4));
    // With all three mirrorings the mirrored pixel is sampled when it lies further right.
    layer.SetValue(kCenter0, 0.25);
    layer.SetValue(kCenter2, 0.25);
    sampleLayer(layer, 8, 8);
    EXPECT_EQ(row[3], static_cast<float>((double{position} - 0.25) + (0.0 + 0.25)));
}
