#include "colour/PixelType.h"

#include <limits>

#include <gtest/gtest.h>

TEST(PixelType, LookupsAnswerTheirSettledRows) {
    const struct {
        int32_t type, bytesPerPixel, bytesPerComponent, hasAlpha;
    } rows[] = {
        {kLxPixelA, 1, 1, 0},    {kLxPixelRGB, 3, 1, 0},
        {kLxPixelRGBA, 4, 1, 1}, {kLxPixelRGBAPremultiplied, 4, 4, 0},
        {kLxPixelF, 4, 1, 1},    {kLxPixelL, 1, 0, 0},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(LxColor_BytesPerPixel(row.type), row.bytesPerPixel) << row.type;
        EXPECT_EQ(LxColor_BytesPerComponent(row.type), row.bytesPerComponent) << row.type;
        EXPECT_EQ(LxColor_HasAlpha(row.type), row.hasAlpha) << row.type;
    }
}

TEST(PixelType, TheNumbersAreSettled) {
    EXPECT_EQ(kLxPixelA, 0);
    EXPECT_EQ(kLxPixelRGB, 1);
    EXPECT_EQ(kLxPixelRGBA, 2);
    EXPECT_EQ(kLxPixelRGBAPremultiplied, 3);
    EXPECT_EQ(kLxPixelF, 4);
    EXPECT_EQ(kLxPixelL, 5);
}

TEST(PixelType, TypesThatAreNotDefinedAnswerAsTheLast) {
    for (const int32_t type :
         {6, 7, 8, -1, 1000, std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::min()}) {
        EXPECT_EQ(LxColor_BytesPerPixel(type), 1) << type;
        EXPECT_EQ(LxColor_BytesPerComponent(type), 0) << type;
        EXPECT_EQ(LxColor_HasAlpha(type), 0) << type;
    }
}

TEST(PixelType, RowsAreMultiplesOf16) {
    EXPECT_EQ(LxColor_BytesPerRow(kLxPixelRGB, 5), 16);
    EXPECT_EQ(LxColor_BytesPerRow(kLxPixelRGB, 6), 32);
    EXPECT_EQ(LxColor_BytesPerRow(kLxPixelRGBA, 4), 16);
    EXPECT_EQ(LxColor_BytesPerRow(kLxPixelL, 17), 32) << "one byte per pixel, as its lookup says";
    const int32_t bytes[] = {1, 3, 4, 4, 4, 1};
    for (int32_t type = 0; type < 6; ++type) {
        for (int32_t width = 0; width < 1000; ++width) {
            int32_t expected = 0;
            while (expected < width * bytes[type])
                expected += 16;
            ASSERT_EQ(LxColor_BytesPerRow(type, width), expected) << type << ' ' << width;
        }
    }
}

TEST(PixelType, RowsBeyond32BitsKeepTheLowBits) {
    EXPECT_EQ(LxColor_BytesPerRow(kLxPixelRGBA, 0x40000001), 16);
    EXPECT_EQ(LxColor_BytesPerRow(kLxPixelA, 0x7FFFFFFF), std::numeric_limits<int32_t>::min());
}
