#include <oxlume/LxImage.h>

#include <array>
#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"

using namespace lx::test;

namespace {

LxColor colorOf(uint8_t a, uint8_t b, uint8_t c, uint8_t d) {
    LxColor color = {};
    color.type = 77; // storing ignores it
    const uint8_t bytes[4] = {a, b, c, d};
    std::memcpy(color.content.bytes, bytes, 4);
    return color;
}

std::array<int, 5> parts(const LxColor &color) {
    return {color.type, color.content.bytes[0], color.content.bytes[1], color.content.bytes[2],
            color.content.bytes[3]};
}

const uint8_t *data(const ImageHandle &image) {
    return static_cast<const uint8_t *>(LxImage_ConstData(image.get()));
}

ptrdiff_t offsetOf(const ImageHandle &image, const void *address) {
    return static_cast<const uint8_t *>(address) - data(image);
}

} // namespace

TEST(PixelPointer, IsNullOutsideAndForNull) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, 100, 100, 110, 105, 1, 0));
    EXPECT_EQ(LxImage_Pointer(image.get(), -1, 0), nullptr);
    EXPECT_EQ(LxImage_Pointer(image.get(), 0, -1), nullptr);
    EXPECT_EQ(LxImage_Pointer(image.get(), 10, 0), nullptr);
    EXPECT_EQ(LxImage_Pointer(image.get(), 0, 5), nullptr);
    EXPECT_EQ(LxImage_ConstPointer(image.get(), 105, 102), nullptr) << "positions ignore the image's own";
    EXPECT_EQ(LxImage_Pointer(nullptr, 0, 0), nullptr);
    EXPECT_EQ(LxImage_ConstPointer(nullptr, 0, 0), nullptr);
}

TEST(PixelPointer, StepsByRowsAndByReportedBytesPerPixel) {
    const struct {
        int32_t type, bytes;
    } cases[] = {{kLxPixelA, 1},
                 {kLxPixelRGB, 3},
                 {kLxPixelRGBA, 4},
                 {kLxPixelRGBAPremultiplied, 4},
                 {kLxPixelF, 4},
                 {kLxPixelL, 1},
                 {6, 1},
                 {7, 1}};
    for (const auto &c : cases) {
        const ImageHandle image = makeImage(c.type, 10, 7);
        const int32_t rowBytes = LxImage_BytesPerRow(image.get());
        for (int32_t y = 0; y < 7; ++y)
            for (int32_t x = 0; x < 10; ++x) {
                EXPECT_EQ(offsetOf(image, LxImage_Pointer(image.get(), x, y)), y * rowBytes + x * c.bytes);
                EXPECT_EQ(offsetOf(image, LxImage_ConstPointer(image.get(), x, y)),
                          y * rowBytes + x * c.bytes);
            }
    }
}

TEST(PixelPointer, OfAFlippedImageAtTheTopIsTheLastStoredRow) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 7, true);
    EXPECT_EQ(offsetOf(image, LxImage_Pointer(image.get(), 0, 0)), 6 * 40);
    EXPECT_EQ(offsetOf(image, LxImage_Pointer(image.get(), 3, 6)), 12);
    EXPECT_EQ(LxImage_Pointer(image.get(), 0, 7), nullptr);
    EXPECT_EQ(LxImage_Pointer(image.get(), 0, -1), nullptr);
}

TEST(PixelPointer, InAnImageInsideItsRecordIsAlwaysTheFirstPixel) {
    for (const bool flipped : {false, true}) {
        const ImageHandle image = makeImage(kLxPixelRGBA, 2, 2, flipped);
        for (int32_t y = 0; y < 2; ++y)
            for (int32_t x = 0; x < 2; ++x)
                EXPECT_EQ(offsetOf(image, LxImage_Pointer(image.get(), x, y)), 0);
        EXPECT_EQ(LxImage_Pointer(image.get(), 2, 0), nullptr);
        EXPECT_EQ(LxImage_Pointer(image.get(), 0, 2), nullptr);
    }
}

TEST(PixelPointer, TakesAnyPosition) {
    Random random;
    for (const bool flipped : {false, true}) {
        const ImageHandle image = makeImage(kLxPixelRGB, 9, 8, flipped);
        for (int i = 0; i < 10000; ++i) {
            const int32_t x = random.anyInteger();
            const int32_t y = random.anyInteger();
            EXPECT_EQ(LxImage_Pointer(image.get(), x, y) != nullptr, x >= 0 && x < 9 && y >= 0 && y < 8);
        }
    }
}

TEST(PixelAt, GivesThreeBytePixelsOpaque) {
    const ImageHandle image = makeImage(kLxPixelRGB, 10, 7);
    std::memcpy(LxImage_Pointer(image.get(), 4, 2), "\x0A\x0B\x0C\x0D", 4);
    LxColor color = {};
    EXPECT_EQ(LxImage_PixelAt(image.get(), 4, 2, &color), 1);
    EXPECT_EQ(parts(color), (std::array<int, 5>{1, 0x0A, 0x0B, 0x0C, 255}));
}

TEST(PixelAt, GivesFourBytePixelsAsTheyStandWithTheImagesType) {
    for (const int32_t type : {kLxPixelRGBA, kLxPixelRGBAPremultiplied, kLxPixelF, kLxPixelL}) {
        const ImageHandle image = makeImage(type, 10, 7);
        std::memcpy(LxImage_Pointer(image.get(), 9, 6), "\x0A\x0B\x0C\x0D", 4);
        LxColor color = {};
        EXPECT_EQ(LxImage_PixelAt(image.get(), 9, 6, &color), 1);
        EXPECT_EQ(parts(color), (std::array<int, 5>{type, 0x0A, 0x0B, 0x0C, 0x0D}));
    }
}

TEST(PixelAt, OfAOneByteImageAnswersOneAndWritesNothing) {
    const ImageHandle image = makeImage(kLxPixelA, 100, 7);
    LxColor color = colorOf(1, 2, 3, 4);
    EXPECT_EQ(LxImage_PixelAt(image.get(), 5, 5, &color), 1);
    EXPECT_EQ(parts(color), (std::array<int, 5>{77, 1, 2, 3, 4}));
}

TEST(PixelAt, FailsOutsideForNullAndForUndefinedTypes) {
    LxColor color = colorOf(1, 2, 3, 4);
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 7);
    EXPECT_EQ(LxImage_PixelAt(image.get(), 10, 0, &color), 0);
    EXPECT_EQ(LxImage_PixelAt(image.get(), 0, 7, &color), 0);
    EXPECT_EQ(LxImage_PixelAt(nullptr, 0, 0, &color), 0);
    for (const int32_t type : {6, 7})
        EXPECT_EQ(LxImage_PixelAt(makeImage(type, 10, 7).get(), 0, 0, &color), 0);
    EXPECT_EQ(parts(color), (std::array<int, 5>{77, 1, 2, 3, 4}));
}

TEST(PixelAt, InATwoByTwoImageReadsTheFirstPixelEverywhere) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 2, 2);
    std::memcpy(LxImage_Data(image.get()), "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10",
                16);
    LxColor color = {};
    EXPECT_EQ(LxImage_PixelAt(image.get(), 1, 1, &color), 1);
    EXPECT_EQ(parts(color), (std::array<int, 5>{2, 1, 2, 3, 4}));
}

TEST(SetPixelAt, StoresTheBytesThatTheImagesTypeHasRoomFor) {
    const struct {
        int32_t type, stored;
    } cases[] = {{kLxPixelA, 1}, {kLxPixelRGB, 3}, {kLxPixelRGBA, 4}, {kLxPixelRGBAPremultiplied, 4},
                 {kLxPixelF, 4}, {kLxPixelL, 4}};
    for (const auto &c : cases) {
        const ImageHandle image = makeImage(c.type, 10, 7);
        std::memset(LxImage_Data(image.get()), 0xEE, static_cast<size_t>(LxImage_DataSize(image.get())));
        EXPECT_EQ(LxImage_SetPixelAt(image.get(), 3, 2, colorOf(1, 2, 3, 4)), 1);
        const auto *pixel = static_cast<const uint8_t *>(LxImage_ConstPointer(image.get(), 3, 2));
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(pixel[i], i < c.stored ? i + 1 : 0xEE) << c.type;
        EXPECT_EQ(pixel[-1], 0xEE);
    }
}

TEST(SetPixelAt, ConvertsNothing) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 7);
    EXPECT_EQ(LxImage_SetPixelAt(image.get(), 3, 2, LxColor_RGB(9, 8, 7)), 1);
    LxColor color = {};
    LxImage_PixelAt(image.get(), 3, 2, &color);
    EXPECT_EQ(parts(color), (std::array<int, 5>{2, 9, 8, 7, 0})) << "alpha 0";
}

TEST(SetPixelAt, FailsOutsideForNullAndForUndefinedTypes) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 7);
    EXPECT_EQ(LxImage_SetPixelAt(image.get(), 10, 2, LxColor_RGBA_White), 0);
    EXPECT_EQ(LxImage_SetPixelAt(nullptr, 0, 0, LxColor_RGBA_White), 0);
    for (const int32_t type : {6, 7}) {
        const ImageHandle undefined = makeImage(type, 10, 7);
        EXPECT_EQ(LxImage_SetPixelAt(undefined.get(), 0, 0, LxColor_RGBA_White), 0);
        EXPECT_EQ(*data(undefined), 0);
    }
}

TEST(SetPixelAt, InTheLastPixelOfAnIntegerImageStaysInItsRow) {
    const ImageHandle image = makeImage(kLxPixelL, 10, 7);
    EXPECT_EQ(LxImage_SetPixelAt(image.get(), 9, 6, colorOf(1, 2, 3, 4)), 1);
    EXPECT_EQ(std::memcmp(data(image) + 6 * 40 + 9, "\1\2\3\4", 4), 0)
        << "one byte a pixel from the row's start";
}

TEST(PointerLine, TakesItsEndsInEitherOrder) {
    const ImageHandle image = makeImage(kLxPixelRGB, 10, 7);
    void *start = nullptr;
    void *end = nullptr;
    for (const auto &[x0, x1] : {std::pair{2, 5}, std::pair{5, 2}}) {
        EXPECT_EQ(LxImage_PointerLine(image.get(), x0, x1, 3, &start, &end), 1);
        EXPECT_EQ(offsetOf(image, start), 3 * 32 + 6);
        EXPECT_EQ(offsetOf(image, end), 3 * 32 + 15) << "the last pixel, inclusive";
    }
}

TEST(PointerLine, IsClippedToTheRow) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 7);
    void *start = nullptr;
    void *end = nullptr;
    EXPECT_EQ(LxImage_PointerLine(image.get(), 0, 100, 0, &start, &end), 1);
    EXPECT_EQ(offsetOf(image, end), 36) << "pixel 9";
    EXPECT_EQ(LxImage_PointerLine(image.get(), -50, 3, 1, &start, &end), 1);
    EXPECT_EQ(offsetOf(image, start), 40);
    EXPECT_EQ(offsetOf(image, end), 52);
}

TEST(PointerLine, ThatBeginsAtTheWidthAnswersOneWithItsEndsCrossed) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 7);
    void *start = nullptr;
    void *end = nullptr;
    EXPECT_EQ(LxImage_PointerLine(image.get(), 10, 12, 0, &start, &end), 1);
    EXPECT_EQ(offsetOf(image, start), 40);
    EXPECT_EQ(offsetOf(image, end), 36);
}

TEST(PointerLine, OutsideAnswersZeroWithBothResultsNull) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 7);
    const int32_t cases[][3] = {{0, 5, -1}, {0, 5, 7}, {11, 20, 0}, {-9, -1, 0}};
    for (const auto &[x0, x1, y] : cases) {
        void *start = &start;
        void *end = &end;
        EXPECT_EQ(LxImage_PointerLine(image.get(), x0, x1, y, &start, &end), 0);
        EXPECT_EQ(start, nullptr);
        EXPECT_EQ(end, nullptr);
    }
}

TEST(PointerLine, OfNullLeavesTheResultsUntouched) {
    void *start = &start;
    void *end = &end;
    EXPECT_EQ(LxImage_PointerLine(nullptr, 0, 1, 0, &start, &end), 0);
    EXPECT_EQ(start, &start);
    EXPECT_EQ(end, &end);
}

TEST(PointerLine, MirrorsTheRowOfAFlippedImage) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 7, true);
    void *start = nullptr;
    void *end = nullptr;
    EXPECT_EQ(LxImage_PointerLine(image.get(), 1, 2, 0, &start, &end), 1);
    EXPECT_EQ(offsetOf(image, start), 6 * 40 + 4);
}

TEST(PointerLine, InAnImageInsideItsRecordHasNoRowOffset) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 2, 2);
    void *start = nullptr;
    void *end = nullptr;
    EXPECT_EQ(LxImage_PointerLine(image.get(), 0, 1, 1, &start, &end), 1);
    EXPECT_EQ(offsetOf(image, start), 0);
    EXPECT_EQ(offsetOf(image, end), 4);
}
