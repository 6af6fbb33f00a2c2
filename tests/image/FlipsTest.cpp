#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"

using namespace lx::test;

namespace {

using Bytes = std::vector<uint8_t>;

Bytes storedOf(const LxImage *image) {
    const auto *data = static_cast<const uint8_t *>(LxImage_ConstData(image));
    return Bytes(data, data + LxImage_DataSize(image));
}

// Stores 0, 1, 2, ... in all rows.
ImageHandle makeCounting(int32_t type, int32_t w, int32_t h, int32_t flipped = 0) {
    ImageHandle image(LxImage_Create(type, 5, 6, 5 + w, 6 + h, 1, flipped));
    auto *data = static_cast<uint8_t *>(LxImage_Data(image.get()));
    std::iota(data, data + LxImage_DataSize(image.get()), uint8_t{0});
    return image;
}

size_t bytesOf(int32_t type) {
    return type == kLxPixelA ? 1 : type == kLxPixelRGB ? 3 : 4;
}

Bytes pixel(const Bytes &stored, const LxImage *image, int32_t x, int32_t y) {
    const int32_t row = LxImage_isFlipped(image) != 0 ? LxImage_h(image) - 1 - y : y;
    const size_t bytes = bytesOf(LxImage_Type(image));
    const auto at = stored.begin() + row * LxImage_BytesPerRow(image) + x * static_cast<long>(bytes);
    return Bytes(at, at + static_cast<long>(bytes));
}

} // namespace

TEST(ImageFlips, MirrorInsideTheRectangleOnly) {
    for (const int32_t type : {0, 1, 2, 3, 4, 5}) {
        for (const int32_t flipped : {0, 1}) {
            const ImageHandle image = makeCounting(type, 7, 6, flipped);
            const Bytes before = storedOf(image.get());
            LxImage_FlipHorizontalinRect(image.get(), 1, 2, 6, 4);
            Bytes after = storedOf(image.get());
            for (int32_t y = 0; y < 6; ++y) {
                for (int32_t x = 0; x < 7; ++x) {
                    const bool in = x >= 1 && x < 6 && y >= 2 && y < 4;
                    ASSERT_EQ(pixel(after, image.get(), x, y), pixel(before, image.get(), in ? 6 - x : x, y));
                }
            }
            LxImage_FlipHorizontalinRect(image.get(), 1, 2, 6, 4);
            EXPECT_EQ(storedOf(image.get()), before);

            LxImage_FlipVerticalinRect(image.get(), 1, 1, 6, 6);
            after = storedOf(image.get());
            for (int32_t y = 0; y < 6; ++y) {
                for (int32_t x = 0; x < 7; ++x) {
                    const bool in = x >= 1 && x < 6 && y >= 1;
                    ASSERT_EQ(pixel(after, image.get(), x, y), pixel(before, image.get(), x, in ? 6 - y : y));
                }
            }
        }
    }
}

TEST(ImageFlips, WholeImagesKeepTheirMiddleAndTheirMark) {
    const ImageHandle image = makeCounting(kLxPixelA, 3, 3, 1);
    LxImage_FlipHorizontal(image.get());
    EXPECT_EQ(storedOf(image.get()), (Bytes{2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11}));
    LxImage_FlipVertical(image.get());
    EXPECT_EQ(storedOf(image.get()), (Bytes{10, 9, 8, 3, 6, 5, 4, 7, 2, 1, 0, 11}));
    EXPECT_EQ(LxImage_isFlipped(image.get()), 1);
    LxImage_FlipHorizontal(nullptr);
    LxImage_FlipVertical(nullptr);
    LxImage_Flip(nullptr);
}

TEST(ImageFlips, ASegmentedImageFlipsOnlyVertically) {
    const ImageHandle image = makeCounting(kLxPixelA, 4, 2);
    image->segment = 2;
    image->cut.setSegment(0, {0, 0, 1, 1});
    const Bytes before = storedOf(image.get());
    LxImage_FlipHorizontal(image.get());
    EXPECT_EQ(storedOf(image.get()), before);
    LxImage_FlipVertical(image.get());
    EXPECT_EQ(storedOf(image.get()), (Bytes{4, 5, 6, 7, 0, 1, 2, 3}));
    EXPECT_EQ(image->cut.segment(0).x1, 1);
}

TEST(ImageFlips, ATiledImageFlipsTheTileSizeInItsCorner) {
    const ImageHandle image = makeCounting(kLxPixelA, 8, 2);
    image->tiled = 1;
    image->cut.words[lx::CutArea::tileW] = 3;
    image->cut.words[lx::CutArea::tileH] = 1;
    image->cut.words[lx::CutArea::tileX] = 1;
    LxImage_FlipHorizontal(image.get());
    EXPECT_EQ(storedOf(image.get()), (Bytes{2, 1, 0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
    image->cut.words[lx::CutArea::tileW] = 1000;
    image->cut.words[lx::CutArea::tileH] = 1000;
    LxImage_FlipHorizontal(image.get());
    EXPECT_EQ(storedOf(image.get()), (Bytes{7, 6, 5, 4, 3, 0, 1, 2, 15, 14, 13, 12, 11, 10, 9, 8}));
}

TEST(ImageFlips, ARequestAboveTheImagePairsRowsFurtherUp) {
    // Four rows; y0 -1 to 3 clips to rows 0 to 2: the first partner is 2 * -1 - 0 + 3 - 1 = 0, row 0 itself.
    const ImageHandle image = makeCounting(kLxPixelA, 4, 4);
    const Bytes before = storedOf(image.get());
    LxImage_FlipVerticalinRect(image.get(), 0, -1, 4, 3);
    EXPECT_EQ(storedOf(image.get()), before);
    // y0 1 to 9 is clipped below: rows 1 and 3 change places.
    LxImage_FlipVerticalinRect(image.get(), 0, 1, 4, 9);
    EXPECT_EQ(storedOf(image.get()), (Bytes{0, 1, 2, 3, 12, 13, 14, 15, 8, 9, 10, 11, 4, 5, 6, 7}));
}

TEST(ImageFlips, ReversalOfWordsIsComplete) {
    const ImageHandle image = makeCounting(kLxPixelRGBA, 3, 2);
    LxImage_FlipinRect(image.get(), 1, 1, 2, 2);
    EXPECT_EQ(storedOf(image.get()),
              (Bytes{20, 21, 22, 23, 16, 17, 18, 19, 12, 13, 14, 15, 8, 9, 10, 11, 4, 5, 6, 7, 0, 1, 2, 3}));
}

TEST(ImageFlips, ReversalOfBytesEndsAtTheLastRowsFirstPixel) {
    // Rows of 4 bytes, 2 wide: N / 2 = 3 swaps between 0, 1, 2 and 8, 7, 6.
    const ImageHandle image = makeCounting(kLxPixelA, 2, 3);
    LxImage_Flip(image.get());
    EXPECT_EQ(storedOf(image.get()), (Bytes{8, 7, 6, 3, 4, 5, 2, 1, 0, 9, 10, 11}));
    // One row: the first swap is of pixel 0 with itself, the next would leave the image.
    const ImageHandle row = makeCounting(kLxPixelA, 4, 1);
    LxImage_Flip(row.get());
    EXPECT_EQ(storedOf(row.get()), (Bytes{0, 1, 2, 3}));
    // Four wide: four swaps, of which those behind the meeting point undo the ones before it.
    const ImageHandle crossing = makeCounting(kLxPixelA, 4, 2);
    LxImage_Flip(crossing.get());
    EXPECT_EQ(storedOf(crossing.get()), (Bytes{4, 1, 2, 3, 0, 5, 6, 7})) << "(0, 4), (1, 3), (2, 2), (3, 1)";
}

TEST(ImageFlips, StayInsideWhateverTheRequest) {
    Random random(7);
    for (int i = 0; i < 3000; ++i) {
        const ImageHandle image =
            makeCounting(random.integer(0, 7), random.integer(1, 9), random.integer(1, 9), i & 1);
        image->tiled = random.integer(0, 7) == 0;
        image->cut.words[lx::CutArea::tileW] = random.anyInteger();
        image->cut.words[lx::CutArea::tileH] = random.integer(-2, 20);
        const auto any = [&] { return random.coin() ? random.anyInteger() : random.integer(-3, 12); };
        LxImage_FlipHorizontalinRect(image.get(), any(), any(), any(), any());
        LxImage_FlipVerticalinRect(image.get(), any(), any(), any(), any());
        LxImage_FlipinRect(image.get(), any(), any(), any(), any());
        Bytes after = storedOf(image.get());
        if (LxImage_DataSize(image.get()) > 255)
            continue;
        std::sort(after.begin(), after.end());
        for (size_t j = 0; j < after.size(); ++j)
            ASSERT_EQ(after[j], j) << "a flip only permutes";
    }
}
