#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "image/Pixels.h"
#include "tests/support/ImageHandle.h"
#include "tests/support/Random.h"

using namespace lx::test;

namespace {

using Bytes = std::vector<uint8_t>;

LxColor colorOf(uint8_t a, uint8_t b, uint8_t c, uint8_t d) {
    LxColor color = {};
    color.type = 77; // storing ignores it
    const uint8_t bytes[4] = {a, b, c, d};
    std::memcpy(color.content.bytes, bytes, 4);
    return color;
}

Bytes storedOf(const ImageHandle &image) {
    const auto *data = static_cast<const uint8_t *>(LxImage_ConstData(image.get()));
    return Bytes(data, data + LxImage_DataSize(image.get()));
}

void store(const ImageHandle &image, const Bytes &bytes) {
    std::copy(bytes.begin(), bytes.end(), static_cast<uint8_t *>(LxImage_Data(image.get())));
}

void storeNines(const ImageHandle &image) {
    std::memset(LxImage_Data(image.get()), 9, static_cast<size_t>(LxImage_DataSize(image.get())));
}

} // namespace

TEST(ImageFill, StoresTheBytesOfTheTypeAndLeavesPadding) {
    const ImageHandle rgb = makeImage(kLxPixelRGB, 5, 1);
    storeNines(rgb);
    LxImage_Fill(rgb.get(), colorOf(1, 2, 3, 4));
    EXPECT_EQ(storedOf(rgb), (Bytes{1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3, 1, 2, 3, 9}));
    const ImageHandle a = makeImage(kLxPixelA, 2, 1);
    storeNines(a);
    LxImage_Fill(a.get(), colorOf(1, 2, 3, 4));
    EXPECT_EQ(storedOf(a), (Bytes{1, 1, 9, 9}));
    for (const int32_t type : {2, 3, 4, 5}) {
        const ImageHandle word = makeImage(type, 2, 2);
        LxImage_Fill(word.get(), colorOf(1, 2, 3, 4));
        EXPECT_EQ(storedOf(word), (Bytes{1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4})) << type;
    }
    for (const int32_t type : {6, 7}) {
        const ImageHandle none = makeImage(type, 1, 1);
        storeNines(none);
        LxImage_Fill(none.get(), colorOf(1, 2, 3, 4));
        EXPECT_EQ(storedOf(none), (Bytes{9, 9, 9, 9})) << type;
    }
    LxImage_Fill(nullptr, colorOf(1, 2, 3, 4));
}

TEST(ImageFill, WithAColourOfThreeBytesGivesAlphaZero) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 1, 1);
    LxImage_Fill(image.get(), LxColor_RGB(7, 8, 9));
    EXPECT_EQ(storedOf(image), (Bytes{7, 8, 9, 0}));
}

TEST(ImageClear, ZeroesPaddingToo) {
    const ImageHandle image = makeImage(kLxPixelRGB, 5, 2);
    storeNines(image);
    LxImage_Clear(image.get());
    EXPECT_EQ(storedOf(image), Bytes(32, 0));
    LxImage_Clear(nullptr);
}

TEST(ImageCopy, HasTheSamePixelsRectangleAndCut) {
    const ImageHandle image(LxImage_Create(kLxPixelRGB, -3, 7, 2, 9, 1, 1));
    Random random;
    Bytes bytes(32);
    std::generate(bytes.begin(), bytes.end(), [&] { return random.byte(); });
    store(image, bytes);
    LxImage_SetEmpty(image.get(), 0);
    image->tiled = 1;
    for (int i = 0; i < 37; ++i)
        image->cut.words[i] = i * 3 + 1;
    const ImageHandle copy(LxImage_Copy(image.get()));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(storedOf(copy), bytes);
    EXPECT_EQ(LxImage_Type(copy.get()), kLxPixelRGB);
    EXPECT_EQ(LxImage_isFlipped(copy.get()), 1);
    EXPECT_EQ(LxImage_isEmpty(copy.get()), 1);
    EXPECT_EQ(LxImage_x(copy.get()), -3);
    EXPECT_EQ(LxImage_MaxY(copy.get()), 9);
    EXPECT_EQ(LxImage_isTiled(copy.get()), 1);
    EXPECT_EQ(std::memcmp(&copy->cut, &image->cut, sizeof copy->cut), 0);
    EXPECT_EQ(copy->gc, nullptr);
    EXPECT_EQ(LxImage_Copy(nullptr), nullptr);
    image->tiled = 0;
    image->segment = 5;
    const ImageHandle segmented(LxImage_Copy(image.get()));
    EXPECT_EQ(LxImage_SegmentType(segmented.get()), 5);
    EXPECT_EQ(LxImage_isTiled(segmented.get()), 0);
}

TEST(ImageCopy, OfLongerRowsKeepsWhatFits) {
    uint8_t rows[24];
    for (uint8_t i = 0; i < 24; ++i)
        rows[i] = i;
    const ImageHandle image(LxImage_CreateEx(kLxPixelA, 0, 0, 4, 3, rows, 8, 0, 0, 0));
    const ImageHandle copy(LxImage_Copy(image.get()));
    EXPECT_EQ(storedOf(copy), (Bytes{0, 1, 2, 3, 8, 9, 10, 11, 16, 17, 18, 19}));
}

TEST(ImageCopy, OfShorterRowsIsZeroBehindThem) {
    uint8_t rows[15];
    for (uint8_t i = 0; i < 15; ++i)
        rows[i] = static_cast<uint8_t>(i + 1);
    const ImageHandle image(LxImage_CreateEx(kLxPixelA, 0, 0, 5, 3, rows, 5, 0, 0, 0));
    const ImageHandle copy(LxImage_Copy(image.get()));
    EXPECT_EQ(storedOf(copy),
              (Bytes{1, 2, 3, 4, 5, 0, 0, 0, 6, 7, 8, 9, 10, 0, 0, 0, 11, 12, 13, 14, 15, 0, 0, 0}));
}

TEST(ImageAdd, SaturatesAndLeavesAlpha) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 1, 1);
    store(image, {10, 127, 128, 99});
    LxImage_Add(image.get(), 0.5);
    EXPECT_EQ(storedOf(image), (Bytes{138, 255, 255, 99}));
    const ImageHandle rgb = makeImage(kLxPixelRGB, 1, 1);
    store(rgb, {1, 2, 250, 77});
    LxImage_Add(rgb.get(), 0.25);
    EXPECT_EQ(storedOf(rgb), (Bytes{65, 66, 255, 77}));
    const ImageHandle premultiplied = makeImage(kLxPixelRGBAPremultiplied, 1, 1);
    store(premultiplied, {1, 2, 3, 4});
    LxImage_Add(premultiplied.get(), 0.5);
    EXPECT_EQ(storedOf(premultiplied), (Bytes{1, 2, 3, 4}));
    LxImage_Add(nullptr, 0.5);
}

TEST(ImageAdd, AmountsAreClampedRoundedAndWrap) {
    const struct {
        double amount;
        uint8_t added;
    } table[] = {{0.5, 128},       {-1.0, 0},          {1.0, 0},         {2.0, 0},       {0.99, 253},
                 {0.998046875, 0}, {0.998046874, 255}, {0.001953125, 1}, {0.0019531, 0}, {std::nan(""), 0}};
    for (const auto &row : table) {
        const ImageHandle image = makeImage(kLxPixelA, 1, 1);
        store(image, {0, 9, 9, 9});
        LxImage_Add(image.get(), row.amount);
        EXPECT_EQ(storedOf(image), (Bytes{row.added, 9, 9, 9})) << row.amount;
    }
}

TEST(ImagePremultiply, EachTypeRoundsItsOwnWay) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 1, 1);
    store(image, {200, 100, 50, 128});
    LxImage_PremultiplyAlpha(image.get(), 255);
    // k = 129 * 255 >> 8 = 128; 201 * 128 >> 8 = 100, 101 * 128 >> 8 = 50, 51 * 128 >> 8 = 25.
    EXPECT_EQ(storedOf(image), (Bytes{100, 50, 25, 128}));
    EXPECT_EQ(LxImage_Type(image.get()), kLxPixelRGBAPremultiplied);
    LxImage_PremultiplyAlpha(image.get(), 255);
    EXPECT_EQ(storedOf(image), (Bytes{100, 50, 25, 128}));

    const ImageHandle rgb = makeImage(kLxPixelRGB, 1, 1);
    store(rgb, {200, 100, 255, 9});
    LxImage_PremultiplyAlpha(rgb.get(), 255);
    EXPECT_EQ(storedOf(rgb), (Bytes{200, 100, 255, 9}));
    LxImage_PremultiplyAlpha(rgb.get(), 128);
    EXPECT_EQ(storedOf(rgb), (Bytes{100, 50, 128, 9}));
    EXPECT_EQ(LxImage_Type(rgb.get()), kLxPixelRGB);

    const ImageHandle a = makeImage(kLxPixelA, 3, 1);
    store(a, {255, 128, 0, 9});
    LxImage_PremultiplyAlpha(a.get(), 255);
    EXPECT_EQ(storedOf(a), (Bytes{254, 127, 0, 9}));
    LxImage_PremultiplyAlpha(nullptr, 255);
}

TEST(ImageSetSpan, FillsBothEndsInEitherOrder) {
    const ImageHandle image = makeImage(kLxPixelA, 20, 2);
    LxImage_Clear(image.get());
    EXPECT_EQ(LxImage_SetSpan(image.get(), 7, 3, 1, colorOf(5, 0, 0, 0)), 1);
    Bytes expected(40, 0);
    std::fill(expected.begin() + 23, expected.begin() + 28, 5);
    EXPECT_EQ(storedOf(image), expected);
    EXPECT_EQ(LxImage_SetSpan(image.get(), -9, 1, 0, colorOf(6, 0, 0, 0)), 1);
    expected[0] = expected[1] = 6;
    EXPECT_EQ(LxImage_SetSpan(image.get(), 19, 900, 0, colorOf(7, 0, 0, 0)), 1);
    expected[19] = 7;
    EXPECT_EQ(storedOf(image), expected);
}

TEST(ImageSetSpan, OutsideAnswers) {
    const ImageHandle image = makeImage(kLxPixelA, 20, 2);
    LxImage_Clear(image.get());
    const LxColor color = colorOf(5, 0, 0, 0);
    EXPECT_EQ(LxImage_SetSpan(image.get(), 20, 30, 0, color), 1) << "the width itself passes";
    EXPECT_EQ(LxImage_SetSpan(image.get(), 21, 30, 0, color), 0);
    EXPECT_EQ(LxImage_SetSpan(image.get(), -9, -1, 0, color), 0);
    EXPECT_EQ(LxImage_SetSpan(image.get(), 0, 5, 2, color), 0);
    EXPECT_EQ(LxImage_SetSpan(image.get(), 0, 5, -1, color), 0);
    EXPECT_EQ(LxImage_SetSpan(image.get(), INT32_MIN, INT32_MIN, INT32_MIN, color), 0);
    EXPECT_EQ(LxImage_SetSpan(nullptr, 0, 5, 0, color), 0);
    EXPECT_EQ(LxImage_SetSpan(makeImage(6, 2, 2).get(), 0, 1, 0, color), 0);
    EXPECT_EQ(storedOf(image), Bytes(40, 0));
}

TEST(ImageSetSpan, MirrorsRowsOfAFlippedImageAndSharesTheRowOfAnInlineOne) {
    const ImageHandle flipped(LxImage_Create(kLxPixelA, 0, 0, 20, 2, 1, 1));
    LxImage_SetSpan(flipped.get(), 0, 0, 0, colorOf(5, 0, 0, 0));
    EXPECT_EQ(storedOf(flipped)[20], 5);
    const ImageHandle small(LxImage_Create(kLxPixelA, 0, 0, 4, 4, 1, 0));
    LxImage_SetSpan(small.get(), 1, 2, 3, colorOf(5, 0, 0, 0));
    EXPECT_EQ(storedOf(small), (Bytes{0, 5, 5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(ImageFrame, DrawsTheBorder) {
    const ImageHandle image = makeImage(kLxPixelA, 4, 4);
    LxImage_Clear(image.get());
    LxImage_Frame(image.get());
    EXPECT_EQ(storedOf(image),
              (Bytes{128, 128, 128, 128, 128, 0, 0, 128, 128, 0, 0, 128, 128, 128, 128, 128}));
    const ImageHandle word = makeImage(kLxPixelRGBA, 1, 1);
    LxImage_Frame(word.get());
    EXPECT_EQ(storedOf(word), (Bytes{128, 128, 255, 255}));
    LxImage_Frame(nullptr);
}

// As if each pixel of the border were set on its own: the first and the last row from the left, then both
// ends of all rows from the top. Pixels of kLxPixelL lie one byte apart there, so that later ones cover
// earlier ones.
TEST(ImageFrame, IsThePixelsOfTheBorderSetOneByOne) {
    for (int32_t type = kLxPixelA; type <= kLxPixelL; ++type) {
        for (const int32_t flipped : {0, 1}) {
            const ImageHandle image(LxImage_Create(type, 0, 0, 9, 7, 1, flipped));
            const ImageHandle expected(LxImage_Create(type, 0, 0, 9, 7, 1, flipped));
            const LxColor color = colorOf(128, 128, 255, 255);
            for (int32_t x = 0; x <= 9; ++x) {
                LxImage_SetPixelAt(expected.get(), x, 0, color);
                LxImage_SetPixelAt(expected.get(), x, 6, color);
            }
            for (int32_t y = 0; y <= 7; ++y) {
                LxImage_SetPixelAt(expected.get(), 0, y, color);
                LxImage_SetPixelAt(expected.get(), 8, y, color);
            }
            LxImage_Frame(image.get());
            EXPECT_EQ(storedOf(image), storedOf(expected)) << type;
        }
    }
    // By hand: the two ends of a row of five integers, the second four bytes after the first.
    const ImageHandle image(LxImage_Create(kLxPixelL, 0, 0, 5, 3, 1, 0));
    LxImage_Frame(image.get());
    const Bytes stored = storedOf(image);
    EXPECT_EQ(Bytes(stored.begin() + 20, stored.begin() + 40),
              (Bytes{128, 128, 255, 255, 128, 128, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(ImageFrame, NeedsPixels) {
    const ImageHandle image(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 2, 2, nullptr, 8, 0, 0, 0));
    LxImage_Frame(image.get());
    EXPECT_EQ(LxImage_ConstData(image.get()), nullptr);
}

TEST(ImageFrame, WhereRowsOverlapTheOrderOfPixelsCounts) {
    std::vector<uint8_t> memory(5);
    const ImageHandle image(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 1, 2, memory.data(), 1, 0, 0, 1));
    LxImage_Frame(image.get()); // the lower row, which is stored first, comes last
    EXPECT_EQ(memory, (std::vector<uint8_t>{128, 128, 255, 255, 255}));
}

TEST(ImageChequerboard, WhereRowsOverlapTheLowestIsTheLast) {
    std::vector<uint8_t> memory(4);
    const ImageHandle image(LxImage_CreateEx(kLxPixelRGBA, 0, 0, 1, 2, memory.data(), 0, 0, 0, 1));
    LxImage_GenerateChequerboard(image.get(), 1, colorOf(1, 2, 3, 4), colorOf(5, 6, 7, 8));
    EXPECT_EQ(memory, (std::vector<uint8_t>{5, 6, 7, 8}));
}

TEST(ImageChequerboard, FollowsTheBitsOfTheMask) {
    const LxColor one = colorOf(1, 1, 1, 1), two = colorOf(2, 2, 2, 2);
    for (const int32_t mask : {1, 2, 5, 8, 0, -1}) {
        for (const int32_t flipped : {0, 1}) {
            const ImageHandle image(LxImage_Create(kLxPixelRGB, 0, 0, 19, 21, 1, flipped));
            LxImage_GenerateChequerboard(image.get(), mask, one, two);
            for (int32_t y = 0; y < 21; ++y) {
                for (int32_t x = 0; x < 19; ++x) {
                    LxColor color;
                    LxImage_PixelAt(image.get(), x, y, &color);
                    const bool inX = (x & mask) != 0, inY = (y & mask) != 0;
                    ASSERT_EQ(color.content.bytes[2], inX == inY ? 1 : 2) << mask << ' ' << x << ' ' << y;
                }
            }
        }
    }
    const ImageHandle floats = makeImage(kLxPixelF, 1, 1);
    storeNines(floats);
    LxImage_GenerateChequerboard(floats.get(), 1, one, two);
    EXPECT_EQ(storedOf(floats), Bytes(4, 9));
    LxImage_GenerateChequerboard(nullptr, 1, one, two);
}

TEST(ImageOperations, ImagesWithoutPixelsStayWithout) {
    for (const int32_t type : {0, 1, 2, 3, 4, 5}) {
        const ImageHandle none(LxImage_CreateEx(type, 0, 0, 6, 3, nullptr, 24, 0, 1, 0));
        LxImage_Fill(none.get(), colorOf(1, 2, 3, 4));
        LxImage_Clear(none.get());
        LxImage_PremultiplyAlpha(none.get(), 1);
        LxImage_GenerateChequerboard(none.get(), 1, colorOf(1, 2, 3, 4), colorOf(5, 6, 7, 8));
        EXPECT_EQ(LxImage_Data(none.get()), nullptr);
        EXPECT_EQ(LxImage_Pointer(none.get(), 0, 0), nullptr);
    }
}

TEST(ImageReserved, EntryPointsDoNothing) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 3, 3);
    storeNines(image);
    LxImage_Distort(image.get());
    LxImage_Convolve(image.get());
    LxImage_Blur(image.get());
    EXPECT_EQ(LxImage_Resize(image.get()), image.get());
    EXPECT_EQ(LxImage_Resize(nullptr), nullptr);
    EXPECT_EQ(LxImage_BlendSpan(image.get(), 0, 2, 0, colorOf(1, 2, 3, 4), LxBlend(2, 255)), 0);
    EXPECT_EQ(storedOf(image), Bytes(36, 9));
}
