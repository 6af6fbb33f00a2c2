#include "sheen/SampleRow.h"

#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/VectorLevel.h"
#include "geometry/Noise.h"
#include "tests/sheen/Surfaces.h"

using namespace lx;
using lx::test::Random;
using lx::test::SurfaceKind;

namespace {

struct Picture {
    std::vector<float> heights;
    std::vector<int> ends;
};

using Sampler = void (*)(const SheenValues &, SampleRow &);

Picture sampled(const SheenValues &surface, int width, int height, Sampler sampler) {
    Picture picture;
    picture.heights.resize(static_cast<size_t>(width) * height, -1.0f);
    const float stepX = static_cast<float>(1.0 / (width - 1));
    const float stepY = static_cast<float>(1.0 / (height - 1));
    for (int y = 0; y < height; ++y) {
        SampleRow row = {stepX, stepY * static_cast<float>(y), width, &picture.heights[y * width], 0, 0};
        sampler(surface, row);
        picture.ends.push_back(row.first);
        picture.ends.push_back(row.last);
    }
    return picture;
}

// Compares whole pictures of the fast form, at every level, with the definition.
void expectEqualPictures(const SheenValues &surface, int width, int height, int which) {
    const Picture plain = sampled(surface, width, height, sampleRowPlainly);
    const VectorLevel level = vectorLevel();
    for (const VectorLevel cap : {VectorLevel::baseline, VectorLevel::avx2}) {
        capVectorLevel(cap);
        const Picture fast = sampled(surface, width, height, sampleRow);
        ASSERT_EQ(fast.ends, plain.ends) << "surface " << which;
        for (size_t i = 0; i < plain.heights.size(); ++i) {
            ASSERT_EQ(std::memcmp(&plain.heights[i], &fast.heights[i], sizeof(float)), 0)
                << "surface " << which << " at " << i % width << ", " << i / width << ": definition "
                << plain.heights[i] << ", " << vectorLevelName(cap) << ' ' << fast.heights[i];
        }
    }
    capVectorLevel(level);
}

void expectEqualPicturesOf(SurfaceKind kind, uint64_t stream, int surfaces) {
    Random random(stream);
    for (int i = 0; i < surfaces; ++i) {
        LxSheenSurface surface;
        randomize(surface, random, kind);
        surface.Prepare();
        expectEqualPictures(surface, random.integer(1, 40), random.integer(1, 24), i);
        if (testing::Test::HasFatalFailure())
            return;
    }
}

} // namespace

#if defined(OXLUME_SANITIZED)
constexpr int surfaces = 1000;
#else
constexpr int surfaces = 6000;
#endif

TEST(SampleRow, EqualsTheDefinitionOnOrdinarySurfaces) {
    expectEqualPicturesOf({}, 1, surfaces);
}

TEST(SampleRow, EqualsTheDefinitionWithoutNoise) {
    expectEqualPicturesOf({.noisy = false}, 2, surfaces);
}

TEST(SampleRow, EqualsTheDefinitionOnWildSurfaces) {
    expectEqualPicturesOf({.wild = true}, 3, surfaces);
}

TEST(SampleRow, EqualsTheDefinitionForEachParameterAlone) {
    for (uint32_t i = 0; i < kSheenParameterCount; ++i) {
        for (int step = 0; step <= 4; ++step) {
            LxSheenSurface surface;
            const LxSheenParameter &row = sheenParameters[i];
            if (i >= kNoiseZoom && i <= kNoiseNegClip)
                surface.SetValue(kNoiseAmount, 0.9);
            surface.SetValue(i, row.minimum + (row.maximum - row.minimum) * step / 4);
            surface.Prepare();
            expectEqualPictures(surface, 65, 33, static_cast<int>(i));
        }
    }
}

// Values between whole numbers come about where a record is made between two others.
TEST(SampleRow, EqualsTheDefinitionBetweenWholeNumbers) {
    for (uint32_t i = 0; i < kSheenParameterCount; ++i) {
        if (sheenParameters[i].step != 1)
            continue;
        for (const double above : {0.5, 1.25, 2.75}) {
            LxSheenSurface surface;
            if (i >= kNoiseZoom && i <= kNoiseNegClip)
                surface.SetValue(kNoiseAmount, 0.9);
            surface.values[i] = sheenParameters[i].minimum + above;
            surface.Prepare();
            expectEqualPictures(surface, 65, 33, static_cast<int>(i));
        }
    }
}

TEST(SampleRow, LeavesTheNoiseCacheAsTheDefinitionDoes) {
    for (const double amount : {1.0, -1.0}) {
        LxSheenSurface surface;
        surface.SetValue(kNoiseAmount, amount);
        surface.SetValue(kInnerSize0, 0.6);
        surface.SetValue(kInnerSize1, 0.6);
        surface.Prepare();
        LxNoise_Seed(0);
        LxNoise_2D(100.5, 100.5);
        sampled(surface, 9, 5, sampleRow);
        const double cached = evaluate(surface, 1.0, 1.0);
        // Under another seed the columns of the last point show through, for they are still in the cache.
        LxNoise_Seed(2);
        EXPECT_EQ(evaluate(surface, 1.0, 1.0), cached);
        LxNoise_2D(100.5, 100.5);
        EXPECT_NE(evaluate(surface, 1.0, 1.0), cached);
        LxNoise_Seed(0);
    }
}

// With a vertical scale of zero every point reads the noise at y = 0, where the empty cache answers for the
// cells next to zero until the first point beyond them.
TEST(SampleRow, AnswersFromAStaleCacheAsTheDefinitionDoes) {
    for (const double ratio : {1.0, 0.5}) {
        LxSheenSurface surface;
        surface.SetValue(kNoiseAmount, -1.0);
        surface.SetValue(kNoiseRatio, ratio);
        surface.SetValue(kNoiseZoom, -3.0);
        surface.Prepare();
        Picture pictures[2];
        for (int way = 0; way < 2; ++way) {
            LxNoise_Seed(2); // 0 and 1 may be the same to the generator
            LxNoise_2D(100.5, 100.5);
            LxNoise_2D(0.5, 0.0);
            LxNoise_Seed(0);
            ASSERT_FALSE(noiseCacheIsCurrent());
            pictures[way] = sampled(surface, 33, 9, way == 0 ? sampleRowPlainly : sampleRow);
        }
        EXPECT_EQ(pictures[0].heights, pictures[1].heights);
    }
}
