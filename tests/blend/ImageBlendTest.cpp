#include <array>
#include <cstring>

#include <gtest/gtest.h>
#include <oxlume/LxBlend.h>
#include <oxlume/LxImage.h>

#include "tests/blend/OnePixel.h"
#include "tests/support/ImageHandle.h"

using namespace lx;
using namespace lx::test;

namespace {

Bytes storedOf(const ImageHandle &image) {
    const auto *data = static_cast<const uint8_t *>(LxImage_ConstData(image.get()));
    return Bytes(data, data + LxImage_DataSize(image.get()));
}

const LxBlend half = LxBlend(2, 128);

} // namespace

TEST(ImageBlend, ColourGoesOverEveryPixel) {
    const ImageHandle image = makeImage(kLxPixelRGB, 5, 2);
    std::memset(LxImage_Data(image.get()), 100, 32);
    LxImage_BlendColor(image.get(), LxColor_RGB(100, 200, 0), half);
    // 201 * 128 + 101 * 127 = 38555, >> 8 = 150; 128 + 101 * 127 = 12955, >> 8 = 50.
    Bytes expected;
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 5; ++x) {
            for (const uint8_t byte : {100, 150, 50})
                expected.push_back(byte);
        }
        expected.push_back(100);
    }
    EXPECT_EQ(storedOf(image), expected) << "padding stays";
}

TEST(ImageBlend, ColourOverAWideImage) {
    const ImageHandle image = makeImage(kLxPixelA, 1000, 2);
    LxImage_BlendColor(image.get(), LxColor_RGBA(200, 0, 0, 255), LxBlend(2, 255));
    EXPECT_EQ(storedOf(image), Bytes(2000, 200));
}

TEST(ImageBlend, WithoutAKernelNothingHappens) {
    for (const int32_t type : {3, 4, 5, 6, 7}) {
        const ImageHandle image = makeImage(type, 3, 3);
        LxImage_BlendColor(image.get(), LxColor_RGBA(1, 2, 3, 255), half);
        EXPECT_EQ(LxImage_BlendPixelAt(image.get(), 0, 0, LxColor_RGBA(1, 2, 3, 255), half), 0);
        EXPECT_EQ(storedOf(image), Bytes(36, 0));
    }
    const ImageHandle image = makeImage(kLxPixelRGBA, 3, 3);
    for (const LxColor &color : {LxColor_F(1), LxColor_L(-1)}) {
        LxImage_BlendColor(image.get(), color, half);
        EXPECT_EQ(LxImage_BlendPixelAt(image.get(), 0, 0, color, half), 0);
        LxBlend_Image_Pixel(image.get(), color, &half, 0, 0);
    }
    EXPECT_EQ(storedOf(image), Bytes(36, 0));
    LxImage_BlendColor(nullptr, LxColor_A(1), half);
}

TEST(ImageBlend, PixelAtBlendsOne) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 3, 3, true);
    EXPECT_EQ(LxImage_BlendPixelAt(image.get(), 1, 0, LxColor_RGBA(1, 2, 3, 255), LxBlend(2, 255)), 1);
    Bytes expected(36, 0);
    expected[28] = 1;
    expected[29] = 2;
    expected[30] = 3;
    expected[31] = 255;
    EXPECT_EQ(storedOf(image), expected);
    EXPECT_EQ(LxImage_BlendPixelAt(image.get(), 3, 0, LxColor_A(1), half), 0);
    EXPECT_EQ(LxImage_BlendPixelAt(image.get(), 0, -1, LxColor_A(1), half), 0);
    EXPECT_EQ(LxImage_BlendPixelAt(nullptr, 0, 0, LxColor_A(1), half), 0);
    EXPECT_EQ(LxImage_BlendPixelAt(image.get(), 0, 0, LxColor_A(1), LxBlend(99, 255)), 1) << "a kernel ran";
}

TEST(ImageBlend, TheDrawersPixelTakesColoursOfThreeAndFourBytes) {
    const LxBlend full = LxBlend(2, 255);
    const ImageHandle a = makeImage(kLxPixelA, 5, 5);
    LxBlend_Image_Pixel(a.get(), LxColor_A(200), &full, 0, 0);
    EXPECT_EQ(storedOf(a)[0], 0) << "one-byte images are left alone";
    const ImageHandle rgb = makeImage(kLxPixelRGB, 5, 5);
    LxBlend_Image_Pixel(rgb.get(), LxColor_RGBA(7, 8, 9, 255), &full, 1, 0);
    EXPECT_EQ(storedOf(rgb)[4], 8);
    const ImageHandle premultiplied = makeImage(kLxPixelRGBAPremultiplied, 5, 5);
    LxBlend_Image_Pixel(premultiplied.get(), LxColor_A(200), &full, 0, 0);
    EXPECT_EQ(storedOf(premultiplied)[3], 255);
    LxBlend_Image_Pixel(premultiplied.get(), LxColor_A(200), &full, 5, 0);
    LxBlend_Image_Pixel(premultiplied.get(), LxColor_A(200), nullptr, 0, 0);
    LxBlend_Image_Pixel(nullptr, LxColor_A(200), &full, 0, 0);
}
