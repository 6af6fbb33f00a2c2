#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"

using namespace lx::test;

namespace {

// Writes one pixel at its logical place by hand, without the library's addressing.
void put(const ImageHandle &image, int32_t x, int32_t y, LxRGBA c) {
    const int32_t row = image->flipped != 0 ? LxImage_h(image.get()) - 1 - y : y;
    const int bytes = image->type == kLxPixelRGB ? 3 : 4;
    uint8_t *pixel = static_cast<uint8_t *>(LxImage_Data(image.get())) + row * image->rowBytes + x * bytes;
    const uint8_t content[4] = {c.r, c.g, c.b, c.a};
    std::memcpy(pixel, content, static_cast<size_t>(bytes));
}

constexpr LxRGBA marker = {0, 255, 255, 255};

// A picture with the corner marker and marks at the given columns of row 2 and rows of column 2.
ImageHandle makeMarked(int32_t width, int32_t height, const std::vector<int32_t> &columns,
                       const std::vector<int32_t> &rows, int32_t type = kLxPixelRGBA, bool flipped = false) {
    ImageHandle image = makeImage(type, width, height, flipped);
    put(image, 0, 0, marker);
    for (const int32_t x : columns)
        put(image, x, 2, marker);
    for (const int32_t y : rows)
        put(image, 2, y, marker);
    LxImage_ReadSegmentMarks(image.get());
    return image;
}

void expectSegment(const ImageHandle &image, int slot, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    const LxRectL r = LxImage_SegmentRectL(image.get(), slot % 3, slot / 3);
    EXPECT_TRUE(r.x0 == x0 && r.y0 == y0 && r.x1 == x1 && r.y1 == y1)
        << "slot " << slot << " is " << r.x0 << ", " << r.y0 << ", " << r.x1 << ", " << r.y1;
}

void expectTiles(const ImageHandle &image, int32_t countX, int32_t countY, int32_t w, int32_t h, int32_t x,
                 int32_t y) {
    EXPECT_EQ(LxImage_isTiled(image.get()), 1);
    EXPECT_EQ(LxImage_isSegmented(image.get()), 0);
    int32_t a = -77;
    int32_t b = -77;
    LxImage_TileNum(image.get(), &a, &b);
    EXPECT_EQ(a, countX);
    EXPECT_EQ(b, countY);
    LxImage_TileSize(image.get(), &a, &b);
    EXPECT_EQ(a, w);
    EXPECT_EQ(b, h);
    LxImage_Tile(image.get(), &a, &b);
    EXPECT_EQ(a, x);
    EXPECT_EQ(b, y);
}

bool isPlain(const ImageHandle &image) {
    bool zero = true;
    for (const int32_t word : image->cut.words)
        zero = zero && word == 0;
    return zero && LxImage_isTiled(image.get()) == 0 && LxImage_isSegmented(image.get()) == 0;
}

int32_t switches(const ImageHandle &image) {
    return image->cut.words[0];
}

} // namespace

// Marks at 0, 4, 8 and 11 of a row of 12: cells from 1 of 2, from 5 of 2, from 9 of 1.
TEST(SegmentMarks, CellsLieBetweenMarksAndEndTwoPixelsBeforeTheNext) {
    const ImageHandle image = makeMarked(12, 12, {0, 4, 8, 11}, {0, 4, 8, 11});
    EXPECT_EQ(LxImage_SegmentType(image.get()), 1);
    EXPECT_EQ(switches(image), 0);
    expectSegment(image, 0, 1, 1, 3, 3);
    expectSegment(image, 1, 5, 1, 7, 3);
    expectSegment(image, 2, 9, 1, 10, 3);
    expectSegment(image, 3, 1, 5, 3, 7);
    expectSegment(image, 4, 5, 5, 7, 7);
    expectSegment(image, 5, 9, 5, 10, 7);
    expectSegment(image, 6, 1, 9, 3, 10);
    expectSegment(image, 7, 5, 9, 7, 10);
    expectSegment(image, 8, 9, 9, 10, 10);
}

TEST(SegmentMarks, TwoOrThreeAdjacentMarkersAreNoMarks) {
    // With them as marks there would be four columns; without, marks at 0 and 9 make one, which no layout
    // has.
    expectTiles(makeMarked(20, 20, {0, 4, 5, 9}, {}), 1, -1, 7, 0, 0, -2);
    expectTiles(makeMarked(20, 20, {0, 4, 5, 6, 9}, {}), 1, -1, 7, 0, 0, -2);
}

TEST(SegmentMarks, AMarkAtTheEndOfTheRowCounts) {
    expectTiles(makeMarked(20, 20, {0, 19}, {}), 1, -1, 17, 0, 0, -2);
    expectTiles(makeMarked(20, 20, {}, {0, 19}), -1, 1, 0, 17, -2, 0);
}

TEST(SegmentMarks, EqualCellsMakeATileSheet) {
    // Cells of 8, 8, 8 with marks 10 apart; one row cell.
    expectTiles(makeMarked(40, 30, {0, 10, 20, 30}, {0, 10}), 3, 1, 8, 8, 0, 0);
    const ImageHandle uneven = makeMarked(40, 30, {0, 10, 21, 31}, {0, 10});
    EXPECT_EQ(LxImage_SegmentType(uneven.get()), 2) << "8, 9, 8";
    EXPECT_EQ(LxImage_isTiled(uneven.get()), 0);
}

TEST(SegmentMarks, TheGridComparesWidthsAmongThemselvesAndHeightsAmongThemselves) {
    expectTiles(makeMarked(40, 40, {0, 10, 20, 30}, {0, 5, 10, 15}), 3, 3, 8, 3, 0, 0);
    EXPECT_EQ(LxImage_SegmentType(makeMarked(40, 40, {0, 10, 20, 30}, {0, 5, 10, 16}).get()), 1);
    EXPECT_EQ(LxImage_SegmentType(makeMarked(40, 40, {0, 10, 20, 31}, {0, 5, 10, 15}).get()), 1);
}

TEST(SegmentMarks, ThreeColumnsFillTheFirstRowOfSlots) {
    const ImageHandle image = makeMarked(40, 30, {0, 10, 21, 31}, {0, 10});
    EXPECT_EQ(LxImage_SegmentType(image.get()), 2);
    EXPECT_EQ(switches(image), 0);
    expectSegment(image, 0, 1, 1, 9, 9);
    expectSegment(image, 1, 11, 1, 20, 9);
    expectSegment(image, 2, 22, 1, 30, 9);
    expectSegment(image, 3, 0, 0, 0, 0);
}

TEST(SegmentMarks, ThreeRowsFillTheFirstColumnOfSlots) {
    const ImageHandle image = makeMarked(30, 40, {0, 10}, {0, 10, 21, 31});
    EXPECT_EQ(LxImage_SegmentType(image.get()), 3);
    EXPECT_EQ(switches(image), 0);
    expectSegment(image, 0, 1, 1, 9, 9);
    expectSegment(image, 3, 1, 11, 9, 20);
    expectSegment(image, 6, 1, 22, 9, 30);
    expectSegment(image, 1, 0, 0, 0, 0);
}

TEST(SegmentMarks, FiveColumnsFillSlotsZeroToThreeAndFive) {
    const ImageHandle image = makeMarked(60, 30, {0, 5, 11, 18, 26, 35}, {0, 10});
    EXPECT_EQ(LxImage_SegmentType(image.get()), 4);
    EXPECT_EQ(switches(image), 7);
    expectSegment(image, 0, 1, 1, 4, 9);
    expectSegment(image, 1, 6, 1, 10, 9);
    expectSegment(image, 2, 12, 1, 17, 9);
    expectSegment(image, 3, 19, 1, 25, 9);
    expectSegment(image, 4, 0, 0, 0, 0);
    expectSegment(image, 5, 27, 1, 34, 9);
}

TEST(SegmentMarks, FiveRowsFillSlotsZeroThreeSixOneAndSeven) {
    const ImageHandle image = makeMarked(30, 60, {0, 10}, {0, 5, 11, 18, 26, 35});
    EXPECT_EQ(LxImage_SegmentType(image.get()), 5);
    EXPECT_EQ(switches(image), 7);
    expectSegment(image, 0, 1, 1, 9, 4);
    expectSegment(image, 3, 1, 6, 9, 10);
    expectSegment(image, 6, 1, 12, 9, 17);
    expectSegment(image, 1, 1, 19, 9, 25);
    expectSegment(image, 7, 1, 27, 9, 34);
    expectSegment(image, 4, 0, 0, 0, 0);
}

TEST(SegmentMarks, SixColumnsFillSlotsZeroToFiveWithNoSwitchOn) {
    const ImageHandle image = makeMarked(60, 30, {0, 5, 11, 18, 26, 35, 45}, {0, 10});
    EXPECT_EQ(LxImage_SegmentType(image.get()), 6);
    EXPECT_EQ(switches(image), 0);
    expectSegment(image, 0, 1, 1, 4, 9);
    expectSegment(image, 4, 27, 1, 34, 9);
    expectSegment(image, 5, 36, 1, 44, 9);
    expectSegment(image, 6, 0, 0, 0, 0);
}

TEST(SegmentMarks, SixRowsFillSlotsZeroThreeSixOneFourAndSeven) {
    const ImageHandle image = makeMarked(30, 60, {0, 10}, {0, 5, 11, 18, 26, 35, 45});
    EXPECT_EQ(LxImage_SegmentType(image.get()), 7);
    EXPECT_EQ(switches(image), 7);
    expectSegment(image, 1, 1, 19, 9, 25);
    expectSegment(image, 4, 1, 27, 9, 34);
    expectSegment(image, 7, 1, 36, 9, 44);
    expectSegment(image, 2, 0, 0, 0, 0);
}

TEST(SegmentMarks, EqualCellsOfEveryLayoutMakeTiles) {
    const std::vector<int32_t> one = {0, 10};
    const std::vector<int32_t> five = {0, 5, 10, 15, 20, 25};
    const std::vector<int32_t> six = {0, 5, 10, 15, 20, 25, 30};
    expectTiles(makeMarked(60, 60, five, one), 5, 1, 3, 8, 0, 0);
    expectTiles(makeMarked(60, 60, one, five), 1, 5, 8, 3, 0, 0);
    expectTiles(makeMarked(60, 60, six, one), 6, 1, 3, 8, 0, 0);
    expectTiles(makeMarked(60, 60, one, six), 1, 6, 8, 3, 0, 0);
    expectTiles(makeMarked(60, 60, one, {0, 5, 10, 15}), 1, 3, 8, 3, 0, 0);
}

TEST(SegmentMarks, SevenColumnsAreCountedPastTheSixThatAreStored) {
    const ImageHandle image = makeMarked(60, 30, {0, 5, 11, 18, 26, 35, 45, 56}, {0, 10});
    expectTiles(image, 7, 1, 3, 8, 0, 0);
    expectTiles(makeMarked(30, 60, {0, 10}, {0, 4, 8, 12, 16, 20, 24, 28, 32, 36}), 1, 9, 8, 2, 0, 0);
}

TEST(SegmentMarks, TheCornerAloneMakesATileSheetOfNothing) {
    const ImageHandle image = makeMarked(20, 20, {}, {});
    expectTiles(image, -1, -1, 0, 0, -2, -2);
    const LxRectL tile = LxImage_TileRectL(image.get());
    EXPECT_TRUE(tile.x0 == -1 && tile.y0 == -1 && tile.x1 == -1 && tile.y1 == -1) << "(0 + 1) * -2 + 1";
}

TEST(SegmentMarks, OneMarkOpensACellThatNothingCloses) {
    expectTiles(makeMarked(20, 20, {5}, {7}), 0, 0, 0, 0, -1, -1);
}

TEST(SegmentMarks, WithoutTheCornerThePictureStaysPlain) {
    ImageHandle image = makeMarked(12, 12, {0, 4, 8, 11}, {0, 4, 8, 11});
    put(image, 0, 0, {0, 255, 255, 254});
    LxImage_ReadSegmentMarks(image.get());
    EXPECT_TRUE(isPlain(image)) << "and forgets what an earlier scan found";
}

TEST(SegmentMarks, AMarkerThatIsNotOpaqueIsNone) {
    ImageHandle image = makeMarked(40, 30, {0, 10, 21, 31}, {0, 10});
    put(image, 31, 2, {0, 255, 255, 0});
    LxImage_ReadSegmentMarks(image.get());
    expectTiles(image, 2, 1, 8, 8, 0, 0);
}

TEST(SegmentMarks, ThreeByteAndPremultipliedPicturesAreReadAsWell) {
    for (const int32_t type : {kLxPixelRGB, kLxPixelRGBA, kLxPixelRGBAPremultiplied})
        for (const bool flipped : {false, true}) {
            const ImageHandle image = makeMarked(60, 30, {0, 5, 11, 18, 26, 35}, {0, 10}, type, flipped);
            EXPECT_EQ(LxImage_SegmentType(image.get()), 4) << type << flipped;
            expectSegment(image, 5, 27, 1, 34, 9);
        }
}

TEST(SegmentMarks, OtherTypesCarryNone) {
    for (const int32_t type : {int32_t{kLxPixelA}, int32_t{kLxPixelF}, int32_t{kLxPixelL}, 6, 7}) {
        const ImageHandle image = makeImage(type, 12, 12);
        std::memcpy(LxImage_Data(image.get()), "\x00\xFF\xFF\xFF", 4);
        image->tiled = 1;
        image->segment = 5;
        image->cut.words[3] = 9;
        LxImage_ReadSegmentMarks(image.get());
        EXPECT_TRUE(isPlain(image)) << type;
    }
}

TEST(SegmentMarks, NarrowPicturesHaveNoMarkedColumnAndLowOnesNoMarkedRow) {
    const ImageHandle narrow = makeImage(kLxPixelRGBA, 2, 20);
    put(narrow, 0, 0, marker);
    put(narrow, 1, 2, marker);
    LxImage_ReadSegmentMarks(narrow.get());
    expectTiles(narrow, 0, -1, 0, 0, -1, -2);
    const ImageHandle low = makeImage(kLxPixelRGBA, 20, 2);
    put(low, 0, 0, marker);
    put(low, 2, 0, marker);
    LxImage_ReadSegmentMarks(low.get());
    expectTiles(low, -1, 0, 0, 0, -2, -1);
}

TEST(SegmentMarks, ImagesInsideTheirRecordAreReadAtTheirTruePlaces) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 1, 4, true);
    put(image, 0, 0, marker);
    LxImage_ReadSegmentMarks(image.get());
    expectTiles(image, -1, -1, 0, 0, -2, -2);
}

TEST(SegmentMarks, NullIsIgnored) {
    LxImage_ReadSegmentMarks(nullptr);
}

// The rule once more, pixel by pixel, over random pictures full of markers.
TEST(SegmentMarks, RandomPicturesCountTheirMarks) {
    Random random;
    for (int round = 0; round < 3000; ++round) {
        const int32_t w = random.integer(1, 30);
        const int32_t h = random.integer(1, 30);
        const ImageHandle image = makeImage(random.coin() ? kLxPixelRGB : kLxPixelRGBA, w, h, random.coin());
        std::vector<std::vector<bool>> marked(static_cast<size_t>(h),
                                              std::vector<bool>(static_cast<size_t>(w)));
        for (int32_t y = 0; y < h; ++y)
            for (int32_t x = 0; x < w; ++x)
                if ((x == 0 && y == 0) || random.integer(0, 3) == 0) {
                    marked[static_cast<size_t>(y)][static_cast<size_t>(x)] = true;
                    put(image, x, y, marker);
                }
        const auto at = [&](int32_t x, int32_t y) {
            return x >= 0 && y >= 0 && x < w && y < h &&
                   marked[static_cast<size_t>(y)][static_cast<size_t>(x)];
        };
        int32_t columns = -1;
        int32_t rows = -1;
        for (int32_t x = 0; x < w && h >= 3; ++x)
            columns += at(x, 2) && !at(x - 1, 2) && !at(x + 1, 2);
        for (int32_t y = 0; y < h && w >= 3; ++y)
            rows += at(2, y) && !at(2, y - 1) && !at(2, y + 1);
        LxImage_ReadSegmentMarks(image.get());
        if (LxImage_isTiled(image.get()) != 0) {
            int32_t countX = 0;
            int32_t countY = 0;
            LxImage_TileNum(image.get(), &countX, &countY);
            EXPECT_EQ(countX, columns);
            EXPECT_EQ(countY, rows);
        } else {
            static constexpr int32_t counts[8][2] = {{},     {3, 3}, {3, 1}, {1, 3},
                                                     {5, 1}, {1, 5}, {6, 1}, {1, 6}};
            const auto &expected = counts[LxImage_SegmentType(image.get())];
            EXPECT_EQ(columns, expected[0]);
            EXPECT_EQ(rows, expected[1]);
        }
    }
}
