#include <array>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"

using namespace lx::test;

namespace {

bool isRect(const LxRectL &r, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    return r.x0 == x0 && r.y0 == y0 && r.x1 == x1 && r.y1 == y1;
}

// An image whose slot n is the rectangle (n, 2n) to (n + wN, 2n + hN) with wN = 10 + n and hN = 20 + n.
ImageHandle makeSegmented() {
    ImageHandle image = makeImage(kLxPixelRGBA, 50, 50);
    image->segment = 1;
    for (int32_t n = 0; n < 9; ++n)
        image->cut.setSegment(n, {n, 2 * n, n + 10 + n, 2 * n + 20 + n});
    return image;
}

ImageHandle makeTiled(int32_t countX, int32_t countY, int32_t w, int32_t h) {
    ImageHandle image = makeImage(kLxPixelRGBA, 50, 50);
    image->tiled = 1;
    image->cut.words[lx::CutArea::tileCountX] = countX;
    image->cut.words[lx::CutArea::tileCountY] = countY;
    image->cut.words[lx::CutArea::tileW] = w;
    image->cut.words[lx::CutArea::tileH] = h;
    return image;
}

using Nine = std::array<int32_t, 9>;
using NineReader = void (*)(const LxImage *, int32_t *, int32_t *, int32_t *, int32_t *, int32_t *, int32_t *,
                            int32_t *, int32_t *, int32_t *);

Nine readNine(NineReader read, const LxImage *image) {
    Nine r = {-7, -7, -7, -7, -7, -7, -7, -7, -7};
    read(image, &r[0], &r[1], &r[2], &r[3], &r[4], &r[5], &r[6], &r[7], &r[8]);
    return r;
}

using Six = std::array<int32_t, 6>;

Six readFlags(const LxImage *image) {
    Six f = {-7, -7, -7, -7, -7, -7};
    LxImage_SegmentFlag(image, &f[0], &f[1], &f[2], &f[3], &f[4], &f[5]);
    return f;
}

using Three = std::array<int32_t, 3>;

template <class Read>
Three readThree(Read read, const LxImage *image) {
    Three r = {-7, -7, -7};
    read(image, &r[0], &r[1], &r[2]);
    return r;
}

} // namespace

TEST(SegmentRect, IsTheSlotOfItsColumnAndRow) {
    const ImageHandle image = makeSegmented();
    EXPECT_TRUE(isRect(LxImage_SegmentRectL(image.get(), 0, 0), 0, 0, 10, 20));
    EXPECT_TRUE(isRect(LxImage_SegmentRectL(image.get(), 2, 1), 5, 10, 20, 35));
    EXPECT_TRUE(isRect(LxImage_SegmentRectL(image.get(), 1, 2), 7, 14, 24, 41));
}

TEST(SegmentRect, IsZeroForNullAndOutsideTheGrid) {
    const ImageHandle image = makeSegmented();
    EXPECT_TRUE(isRect(LxImage_SegmentRectL(nullptr, 0, 0), 0, 0, 0, 0));
    EXPECT_TRUE(isRect(LxImage_SegmentRectL(image.get(), 3, 1), 0, 0, 0, 0));
    Random random;
    for (int i = 0; i < 10000; ++i) {
        const int32_t column = random.anyInteger();
        const int32_t row = random.anyInteger();
        const LxRectL rect = LxImage_SegmentRectL(image.get(), column, row);
        if (column > 2 || row > 4 || row < -2) {
            EXPECT_TRUE(isRect(rect, 0, 0, 0, 0)) << column << ", " << row;
        }
    }
}

TEST(SegmentSizes, AreThoseOfTheFirstNonEmptySlotOfEachColumnAndRow) {
    const ImageHandle image = makeSegmented();
    EXPECT_EQ(readThree(LxImage_SegmentW, image.get()), (Three{10, 11, 12}));
    EXPECT_EQ(readThree(LxImage_SegmentH, image.get()), (Three{20, 23, 26}));
    image->cut.setSegment(0, {});
    image->cut.setSegment(3, {5, 5, 5, 9});
    image->cut.setSegment(4, {9, 0, 5, 3});
    EXPECT_EQ(readThree(LxImage_SegmentW, image.get()), (Three{16, 11, 12}));
    EXPECT_EQ(readThree(LxImage_SegmentH, image.get()), (Three{21, 25, 26}));
    for (int n = 0; n < 9; ++n)
        image->cut.setSegment(n, {});
    EXPECT_EQ(readThree(LxImage_SegmentW, image.get()), (Three{0, 0, 0}));
    EXPECT_EQ(readThree(LxImage_SegmentH, image.get()), (Three{0, 0, 0}));
}

TEST(SegmentSizes, OfNineAreThoseOfSlotsZeroToFiveAndThreeToFiveAgain) {
    const ImageHandle image = makeSegmented();
    EXPECT_EQ(readNine(LxImage_SegmentX, image.get()), (Nine{10, 11, 12, 13, 14, 15, 13, 14, 15}));
    EXPECT_EQ(readNine(LxImage_SegmentY, image.get()), (Nine{20, 21, 22, 23, 24, 25, 23, 24, 25}));
}

TEST(SegmentFlags, AreSetByExactlyOne) {
    const ImageHandle image = makeSegmented();
    LxImage_SetSegmentFlag(image.get(), 2, 1, 1, 0, 0, 0);
    EXPECT_EQ(readFlags(image.get()), (Six{0, 1, 1, 0, 0, 0}));
    LxImage_SetSegmentFlag(image.get(), 1, -1, 256, 1, 3, 1);
    EXPECT_EQ(readFlags(image.get()), (Six{1, 0, 0, 1, 0, 1}));
    EXPECT_TRUE(isRect(LxImage_SegmentRectL(image.get(), 0, 0), 0, 0, 10, 20)) << "the rectangles stay";
}

TEST(SegmentAccessors, LeaveTheResultsUntouchedForNull) {
    EXPECT_EQ(readThree(LxImage_SegmentW, nullptr), (Three{-7, -7, -7}));
    EXPECT_EQ(readThree(LxImage_SegmentH, nullptr), (Three{-7, -7, -7}));
    EXPECT_EQ(readNine(LxImage_SegmentX, nullptr)[8], -7);
    EXPECT_EQ(readNine(LxImage_SegmentY, nullptr)[0], -7);
    EXPECT_EQ(readFlags(nullptr), (Six{-7, -7, -7, -7, -7, -7}));
    LxImage_SetSegmentFlag(nullptr, 1, 1, 1, 1, 1, 1);
}

TEST(Tiles, ChoosingOnePastTheLastTakesTheLast) {
    const ImageHandle image = makeTiled(3, 2, 8, 6);
    EXPECT_EQ(LxImage_SetTile(image.get(), 9, 9), 1);
    int32_t x = -7;
    int32_t y = -7;
    LxImage_Tile(image.get(), &x, &y);
    EXPECT_EQ(x, 2);
    EXPECT_EQ(y, 1);
    EXPECT_EQ(LxImage_SetTile(image.get(), 3, 0), 1);
    LxImage_Tile(image.get(), &x, &y);
    EXPECT_EQ(x, 2);
    EXPECT_EQ(y, 0);
}

TEST(Tiles, NoneIsTooSmall) {
    const ImageHandle image = makeTiled(3, 2, 8, 6);
    EXPECT_EQ(LxImage_SetTile(image.get(), -5, -1), 1);
    int32_t x = 0;
    int32_t y = 0;
    LxImage_Tile(image.get(), &x, &y);
    EXPECT_EQ(x, -5);
    EXPECT_EQ(y, -1);
}

TEST(Tiles, CannotBeChosenOnAnUntiledImage) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 50, 50);
    EXPECT_EQ(LxImage_SetTile(image.get(), 9, 9), 0);
    EXPECT_EQ(LxImage_SetTile(nullptr, 0, 0), 0);
    EXPECT_EQ(image->cut.words[0], 0);
}

TEST(Tiles, TellTheirCountAndSize) {
    const ImageHandle image = makeTiled(3, 2, 8, 6);
    int32_t a = 0;
    int32_t b = 0;
    LxImage_TileNum(image.get(), &a, &b);
    EXPECT_EQ(a, 3);
    EXPECT_EQ(b, 2);
    LxImage_TileSize(image.get(), &a, &b);
    EXPECT_EQ(a, 8);
    EXPECT_EQ(b, 6);
}

TEST(Tiles, RectanglesStepByTheSizePlusOne) {
    const ImageHandle image = makeTiled(3, 2, 8, 6);
    EXPECT_TRUE(isRect(LxImage_TileRectL(image.get()), 1, 1, 9, 7));
    LxImage_SetTile(image.get(), 2, 1);
    EXPECT_TRUE(isRect(LxImage_TileRectL(image.get()), 19, 8, 27, 14));
    image->tiled = 0;
    EXPECT_TRUE(isRect(LxImage_TileRectL(image.get()), 19, 8, 27, 14)) << "the bit is not consulted";
}

TEST(Tiles, LeaveTheResultsUntouchedForNull) {
    int32_t a = -7;
    int32_t b = -7;
    for (const auto read : {LxImage_Tile, LxImage_TileNum, LxImage_TileSize}) {
        read(nullptr, &a, &b);
        EXPECT_EQ(a, -7);
        EXPECT_EQ(b, -7);
    }
    EXPECT_TRUE(isRect(LxImage_TileRectL(nullptr), 0, 0, 0, 0));
}

TEST(Tiles, OfASegmentedImageReadTheSegmentWords) {
    const ImageHandle image = makeSegmented();
    LxImage_SetSegmentFlag(image.get(), 1, 0, 1, 0, 0, 0);
    int32_t a = 0;
    int32_t b = 0;
    LxImage_Tile(image.get(), &a, &b);
    EXPECT_EQ(a, 5) << "the switches";
    EXPECT_EQ(b, 0) << "slot 0, x0";
    LxImage_TileSize(image.get(), &a, &b);
    EXPECT_EQ(a, 20) << "slot 0, y1";
    EXPECT_EQ(b, 1) << "slot 1, x0";
}

TEST(Tiles, AnyStoredNumbersAreSafe) {
    Random random;
    const ImageHandle image = makeTiled(0, 0, 0, 0);
    for (int i = 0; i < 10000; ++i) {
        for (int32_t &word : image->cut.words)
            word = random.anyInteger();
        LxImage_SetTile(image.get(), random.anyInteger(), random.anyInteger());
        LxImage_TileRectL(image.get());
        readNine(LxImage_SegmentX, image.get());
        readThree(LxImage_SegmentH, image.get());
    }
}
