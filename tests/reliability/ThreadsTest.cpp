// What clients may do at the same time: work on different images, paths, contexts' state and colours from
// different threads. The thread sanitizer's build of this program is the proof; here the results are
// compared.

#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <oxlume/oxlume.h>

#include "tests/support/ImageHandle.h"

using lx::test::ImageHandle;
using lx::test::makeImage;

namespace {

constexpr int32_t threadCount = 4;

// Runs `work` with numbers from 0 up at the same time, each on a thread of its own.
template <class Work>
void runAtOnce(Work work) {
    std::vector<std::thread> threads;
    for (int32_t number = 0; number < threadCount; ++number)
        threads.emplace_back(work, number);
    for (std::thread &thread : threads)
        thread.join();
}

bool sameBytes(const LxImage *a, const LxImage *b) {
    return LxImage_DataSize(a) == LxImage_DataSize(b) &&
           std::memcmp(LxImage_ConstData(a), LxImage_ConstData(b),
                       static_cast<size_t>(LxImage_DataSize(a))) == 0;
}

// Images of three kinds for each thread and one set for the comparison. Made and deleted by one thread, as
// creation and deletion ask for.
struct Images {
    ImageHandle target = makeImage(kLxPixelRGBA, 120, 80);
    ImageHandle source = makeImage(kLxPixelRGB, 120, 80, true);
    ImageHandle mask = makeImage(kLxPixelA, 120, 80);
};

// All modes but Dissolve, which draws on the process's random numbers.
void blendAllModes(const Images &images) {
    LxImage_GenerateChequerboard(images.target.get(), 4, LxColor_RGBA(10, 200, 30, 255),
                                 LxColor_RGBA(250, 20, 90, 77));
    LxImage_GenerateChequerboard(images.source.get(), 8, LxColor_RGB(3, 99, 180), LxColor_RGB(240, 130, 1));
    LxImage_Fill(images.mask.get(), LxColor_A(180));
    for (int32_t mode = 0; mode < 44; ++mode) {
        if (std::strcmp(LxBlend_ModeName(mode), "Dissolve") == 0)
            continue;
        LxBlend blend = LxBlend_WithChannel(mode, 100 + mode, 6);
        LxBlend_Image_Image(&blend, images.target.get(), images.source.get(), images.mask.get(), nullptr);
        LxImage_BlendColor(images.target.get(), LxColor_RGBA(1, 2, 200, 99), blend);
    }
}

} // namespace

TEST(Threads, BlendOnDifferentImagesAtOnce) {
    const std::vector<Images> images(threadCount + 1);
    runAtOnce([&](int32_t number) { blendAllModes(images[static_cast<size_t>(number)]); });
    blendAllModes(images.back());
    for (int32_t number = 0; number < threadCount; ++number)
        EXPECT_TRUE(sameBytes(images[static_cast<size_t>(number)].target.get(), images.back().target.get()));
}

TEST(Threads, ReadOneImageAtOnce) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 100, 100);
    LxImage_GenerateChequerboard(image.get(), 1, LxColor_RGBA(1, 2, 3, 4), LxColor_RGBA(5, 6, 7, 8));
    std::vector<int32_t> sums(threadCount);
    runAtOnce([&](int32_t number) {
        for (int32_t y = 0; y < 100; ++y) {
            for (int32_t x = 0; x < 100; ++x) {
                LxColor color;
                LxImage_PixelAt(image.get(), x, y, &color);
                sums[static_cast<size_t>(number)] += color.content.rgba.r;
            }
        }
    });
    for (const int32_t sum : sums)
        EXPECT_EQ(sum, 5000 * 1 + 5000 * 5);
}

TEST(Threads, OneImageUnderItsLock) {
    const ImageHandle image = makeImage(kLxPixelF, 1, 1);
    constexpr int32_t additions = 1000;
    runAtOnce([&](int32_t) {
        for (int32_t i = 0; i < additions; ++i) {
            LxImage_Lock(image.get());
            LxColor color;
            LxImage_PixelAt(image.get(), 0, 0, &color);
            color.content.f += 1;
            LxImage_SetPixelAt(image.get(), 0, 0, color);
            LxImage_Unlock(image.get());
        }
    });
    LxColor color;
    LxImage_PixelAt(image.get(), 0, 0, &color);
    EXPECT_EQ(color.content.f, static_cast<float>(additions * threadCount));
}

TEST(Threads, BuildFlattenOutlineAndClipPathsAtOnce) {
    std::vector<int32_t> points(threadCount);
    runAtOnce([&](int32_t number) {
        LxPath *path = LxPath_Create();
        for (int32_t i = 0; i < 50; ++i)
            LxPath_AddCircle(path, i, i, 10 + i);
        const LxRectD clip = {0, 0, 60, 60};
        LxPath *outlined = LxPath_CreateOutlined(path, nullptr, nullptr, 2, 16);
        LxPath_Decompose(outlined, nullptr);
        LxPath_Clip(outlined, &clip);
        points[static_cast<size_t>(number)] = LxPath_Info(outlined, nullptr).points;
        LxPath_Delete(outlined);
        LxPath_Delete(path);
    });
    EXPECT_GT(points.front(), 0);
    for (const int32_t count : points)
        EXPECT_EQ(count, points.front());
}

TEST(Threads, ContextsWithoutRenderersAtOnce) {
    runAtOnce([](int32_t number) {
        LxGC *gc = LxGC_CreateWithRect(LxRectD{0, 0, 100, 100}, LxRectD{10, 10, 90, 90});
        for (int32_t i = 0; i < 1000; ++i) {
            LxGC_SetStrokeWidth(gc, number + i);
            LxGC_MatrixTranslate(gc, 1, 0);
            LxGC_Circle(gc, 10, 10, 5);
        }
        EXPECT_EQ(LxGC_StrokeWidth(gc), number + 999);
        LxGC_Delete(gc);
    });
}
