#include <oxlume/LxImage.h>

#include <limits>

#include <gtest/gtest.h>

#include "image/Image.h"
#include "tests/support/ImageHandle.h"

using namespace lx::test;

namespace {

bool operator==(const LxPointL &a, const LxPointL &b) {
    return a.x == b.x && a.y == b.y;
}

} // namespace

TEST(ImageAccessors, AnswerZeroOrNullForNull) {
    EXPECT_EQ(LxImage_Type(nullptr), 0);
    EXPECT_EQ(LxImage_BytesPerPixel(nullptr), 0);
    EXPECT_EQ(LxImage_BytesPerComponent(nullptr), 0);
    EXPECT_EQ(LxImage_HasAlpha(nullptr), 0);
    EXPECT_EQ(LxImage_BytesPerRow(nullptr), 0);
    EXPECT_EQ(LxImage_PadBytes(nullptr), 0);
    EXPECT_EQ(LxImage_Data(nullptr), nullptr);
    EXPECT_EQ(LxImage_ConstData(nullptr), nullptr);
    EXPECT_EQ(LxImage_DataSize(nullptr), 0);
    EXPECT_EQ(LxImage_MemSize(nullptr), 0);
    for (const auto accessor :
         {LxImage_w, LxImage_h, LxImage_x, LxImage_y, LxImage_MinX, LxImage_MinY, LxImage_MaxX, LxImage_MaxY,
          LxImage_isPlanar, LxImage_isFlipped, LxImage_isTiled, LxImage_isSegmented, LxImage_SegmentType})
        EXPECT_EQ(accessor(nullptr), 0);
    EXPECT_EQ(LxImage_isEmpty(nullptr), 1);
    EXPECT_TRUE(LxImage_Pos(nullptr) == LxPointL_0);
    EXPECT_TRUE(LxImage_Size(nullptr) == LxPointL_0);
    EXPECT_TRUE(LxImage_Center(nullptr) == LxPointL_0);
    const LxRectL l = LxImage_RectL(nullptr);
    EXPECT_TRUE(l.x0 == 0 && l.y0 == 0 && l.x1 == 0 && l.y1 == 0);
    const LxRectD d = LxImage_RectD(nullptr);
    EXPECT_TRUE(d.x0 == 0 && d.y0 == 0 && d.x1 == 0 && d.y1 == 0);
    EXPECT_EQ(LxImage_SetEmpty(nullptr, 1), nullptr);
    LxImage_SetFlipped(nullptr, 1);
    LxImage_MoveTo(nullptr, 1, 2);
    LxImage_MutableMoveTo(nullptr, 1, 2);
}

TEST(ImageAccessors, TellTheRectangle) {
    const ImageHandle image(LxImage_Create(kLxPixelRGBA, -5, 10, 2, 21, 0, 0));
    EXPECT_EQ(LxImage_w(image.get()), 7);
    EXPECT_EQ(LxImage_h(image.get()), 11);
    EXPECT_EQ(LxImage_x(image.get()), -5);
    EXPECT_EQ(LxImage_MinX(image.get()), -5);
    EXPECT_EQ(LxImage_y(image.get()), 10);
    EXPECT_EQ(LxImage_MinY(image.get()), 10);
    EXPECT_EQ(LxImage_MaxX(image.get()), 2);
    EXPECT_EQ(LxImage_MaxY(image.get()), 21);
    EXPECT_TRUE(LxImage_Pos(image.get()) == (LxPointL{-5, 10}));
    EXPECT_TRUE(LxImage_Size(image.get()) == (LxPointL{7, 11}));
    EXPECT_TRUE(LxImage_Center(image.get()) == (LxPointL{-2, 15})) << "-5 + 3, 10 + 5";
    const LxRectL l = LxImage_RectL(image.get());
    EXPECT_TRUE(l.x0 == -5 && l.y0 == 10 && l.x1 == 2 && l.y1 == 21);
    const LxRectD d = LxImage_RectD(image.get());
    EXPECT_TRUE(d.x0 == -5 && d.y0 == 10 && d.x1 == 2 && d.y1 == 21);
}

TEST(ImageAccessors, TypesReportTheirSettledTable) {
    constexpr int32_t expected[8][3] = {{1, 1, 0}, {3, 1, 0}, {4, 1, 1}, {4, 4, 0},
                                        {4, 1, 1}, {1, 0, 0}, {1, 0, 0}, {1, 0, 0}};
    for (int32_t type = 0; type < 8; ++type) {
        const ImageHandle image = makeImage(type, 3, 3);
        EXPECT_EQ(LxImage_Type(image.get()), type);
        EXPECT_EQ(LxImage_BytesPerPixel(image.get()), expected[type][0]) << type;
        EXPECT_EQ(LxImage_BytesPerComponent(image.get()), expected[type][1]) << type;
        EXPECT_EQ(LxImage_HasAlpha(image.get()), expected[type][2]) << type;
    }
}

TEST(ImageAccessors, PadBytesAreWhatTheRowHasOverThePixels) {
    EXPECT_EQ(LxImage_PadBytes(makeImage(kLxPixelRGB, 5, 1).get()), 1);
    EXPECT_EQ(LxImage_PadBytes(makeImage(kLxPixelA, 1, 1).get()), 3);
    EXPECT_EQ(LxImage_PadBytes(makeImage(kLxPixelRGBA, 7, 1).get()), 0);
    EXPECT_EQ(LxImage_PadBytes(makeImage(kLxPixelL, 5, 1).get()), 15)
        << "integer pixels report one byte, and their rows have four for each";
}

TEST(ImageAccessors, FlippedAndEmptyGoByTheTruthOfTheArgument) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 3, 3);
    LxImage_SetFlipped(image.get(), 2);
    EXPECT_EQ(LxImage_isFlipped(image.get()), 1);
    LxImage_SetFlipped(image.get(), 0);
    EXPECT_EQ(LxImage_isFlipped(image.get()), 0);
    EXPECT_EQ(LxImage_SetEmpty(image.get(), 0), image.get());
    EXPECT_EQ(LxImage_isEmpty(image.get()), 0);
    LxImage_SetEmpty(image.get(), 256);
    EXPECT_EQ(LxImage_isEmpty(image.get()), 1);
}

TEST(ImageAccessors, MovingKeepsTheSize) {
    using Move = void (*)(LxImage *, int32_t, int32_t);
    for (const Move move : {LxImage_MoveTo, LxImage_MutableMoveTo}) {
        const ImageHandle image(LxImage_Create(kLxPixelRGBA, 5, 6, 15, 26, 0, 0));
        move(image.get(), -100, 7);
        EXPECT_EQ(LxImage_x(image.get()), -100);
        EXPECT_EQ(LxImage_y(image.get()), 7);
        EXPECT_EQ(LxImage_MaxX(image.get()), -90);
        EXPECT_EQ(LxImage_MaxY(image.get()), 27);
        EXPECT_EQ(LxImage_w(image.get()), 10);
        EXPECT_EQ(LxImage_h(image.get()), 20);
    }
}

TEST(ImageAccessors, MovingPastTheEndOfThePlaneKeepsTheSizeToo) {
    const ImageHandle image = makeImage(kLxPixelRGBA, 10, 20);
    LxImage_MoveTo(image.get(), std::numeric_limits<int32_t>::max() - 1, std::numeric_limits<int32_t>::max());
    EXPECT_EQ(LxImage_w(image.get()), 10);
    EXPECT_EQ(LxImage_h(image.get()), 20);
    EXPECT_NE(LxImage_Pointer(image.get(), 9, 19), nullptr);
    EXPECT_EQ(LxImage_Pointer(image.get(), 10, 19), nullptr);
    LxImage_MoveTo(image.get(), 0, 0);
    EXPECT_EQ(LxImage_MaxX(image.get()), 10);
}
