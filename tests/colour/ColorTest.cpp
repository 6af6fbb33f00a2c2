#include <oxlume/LxColor.h>

#include <cstring>

#include <gtest/gtest.h>

namespace {

uint32_t word(const void *four) {
    uint32_t bits = 0;
    std::memcpy(&bits, four, 4);
    return bits;
}

// The tag and the four bytes of the content.
void expectColor(const LxColor &color, int32_t type, uint8_t b0, uint8_t b1, uint8_t b2, uint8_t b3) {
    const uint8_t expected[] = {b0, b1, b2, b3};
    EXPECT_EQ(color.type, type);
    EXPECT_EQ(std::memcmp(&color.content, expected, 4), 0)
        << "type " << type << ": " << int{color.content.bytes[0]} << ' ' << int{color.content.bytes[1]} << ' '
        << int{color.content.bytes[2]} << ' ' << int{color.content.bytes[3]};
}

void expectFloats(const LxColor &color, float r, float g, float b, float a) {
    float out[5] = {-1, -1, -1, -1, -1};
    LxColor_AsFloatArray(color, out);
    EXPECT_EQ(out[0], r);
    EXPECT_EQ(out[1], g);
    EXPECT_EQ(out[2], b);
    EXPECT_EQ(out[3], a);
    EXPECT_EQ(out[4], -1) << "four floats are written";
}

} // namespace

TEST(Color, RecordsHaveTheirSizes) {
    EXPECT_EQ(sizeof(LxRGBA), 4u);
    EXPECT_EQ(sizeof(LxRGB), 3u);
    EXPECT_EQ(sizeof(LxHSV), 12u);
    EXPECT_EQ(sizeof(LxColor), 8u);
}

TEST(Color, ConstructorsBuildTheRecords) {
    const LxRGBA rgba = LxRGBA(1, 2, 3, 4);
    const uint8_t bytes[] = {1, 2, 3, 4};
    EXPECT_EQ(std::memcmp(&rgba, bytes, 4), 0) << "r is in the lowest byte";
    const LxRGB rgb = LxRGB(1, 2, 3);
    EXPECT_EQ(std::memcmp(&rgb, bytes, 3), 0);
}

TEST(Color, TaggedConstructorsFillTheirBytesAndClearTheOthers) {
    expectColor(LxColor_A(200), 0, 200, 0, 0, 0);
    expectColor(LxColor_RGB(1, 2, 3), 1, 1, 2, 3, 0);
    expectColor(LxColor_RGBA(1, 2, 3, 4), 2, 1, 2, 3, 4);
    expectColor(LxColor_RGB_t(LxRGB{5, 6, 7}), 1, 5, 6, 7, 0);
    expectColor(LxColor_RGBA_t(LxRGBA{5, 6, 7, 8}), 2, 5, 6, 7, 8);
}

TEST(Color, FloatsAndIntegersAreKeptBitForBit) {
    for (const float value : {0.0f, -0.0f, 0.5f, 1e30f, __builtin_nanf("")}) {
        const LxColor color = LxColor_F(value);
        EXPECT_EQ(color.type, 4);
        EXPECT_EQ(word(&color.content), word(&value));
    }
    for (const int32_t value : {0, 1, -1, 0x12345678, INT32_MIN, INT32_MAX}) {
        const LxColor color = LxColor_L(value);
        EXPECT_EQ(color.type, 5);
        EXPECT_EQ(word(&color.content), word(&value));
    }
}

TEST(Color, WhiteIsAllOnesAndBlackHasAlphaInEveryType) {
    expectColor(LxColor_A_White, 0, 255, 255, 255, 255);
    expectColor(LxColor_RGB_White, 1, 255, 255, 255, 255);
    expectColor(LxColor_RGBA_White, 2, 255, 255, 255, 255);
    expectColor(LxColor_A_Black, 0, 0, 0, 0, 255);
    expectColor(LxColor_RGB_Black, 1, 0, 0, 0, 255);
    expectColor(LxColor_RGBA_Black, 2, 0, 0, 0, 255);
    const uint8_t zero[] = {0, 0, 0, 0}, white[] = {255, 255, 255, 255}, black[] = {0, 0, 0, 255};
    EXPECT_EQ(std::memcmp(&LxRGBA_0, zero, 4), 0);
    EXPECT_EQ(std::memcmp(&LxRGBA_White, white, 4), 0);
    EXPECT_EQ(std::memcmp(&LxRGBA_Black, black, 4), 0);
}

TEST(Color, ConversionsBetweenRecords) {
    const LxRGBA opaque = LxRGBA_fromRGB(LxRGB{1, 2, 3});
    EXPECT_EQ(opaque.r, 1);
    EXPECT_EQ(opaque.g, 2);
    EXPECT_EQ(opaque.b, 3);
    EXPECT_EQ(opaque.a, 255);
    const LxRGB dropped = LxRGB_fromRGBA(LxRGBA{4, 5, 6, 7});
    EXPECT_EQ(dropped.r, 4);
    EXPECT_EQ(dropped.g, 5);
    EXPECT_EQ(dropped.b, 6);
}

TEST(Color, FromLongReadsAlphaRedGreenBlue) {
    const LxRGBA rgba = LxRGBA_fromLong(0x11223344);
    EXPECT_EQ(rgba.r, 0x22);
    EXPECT_EQ(rgba.g, 0x33);
    EXPECT_EQ(rgba.b, 0x44);
    EXPECT_EQ(rgba.a, 0x11);
    EXPECT_EQ(LxRGBA_fromLong(0xFF000000).a, 0xFF);
}

TEST(Color, FloatArraysByType) {
    const float grey = 200 / 255.0f;
    expectFloats(LxColor_A(200), grey, grey, grey, 1);
    expectFloats(LxColor_RGB(255, 0, 51), 1, 0, 51 / 255.0f, 1);
    expectFloats(LxColor_RGBA(255, 0, 51, 102), 1, 0, 51 / 255.0f, 102 / 255.0f);
    expectFloats(LxColor_A_Black, 0, 0, 0, 1);
    LxColor premultiplied = LxColor_RGBA(10, 20, 30, 40);
    premultiplied.type = kLxPixelRGBAPremultiplied;
    expectFloats(premultiplied, 10 / 255.0f, 20 / 255.0f, 30 / 255.0f, 40 / 255.0f);
}

TEST(Color, FloatArraysOfOtherTypesAreOpaqueBlack) {
    expectFloats(LxColor_F(0.5f), 0, 0, 0, 1);
    expectFloats(LxColor_L(-1), 0, 0, 0, 1);
    LxColor odd = LxColor_RGBA_White;
    for (const int32_t type : {6, 7, -1, 1 << 30}) {
        odd.type = type;
        expectFloats(odd, 0, 0, 0, 1);
    }
}

TEST(Color, EveryByteIsItsValueDividedBy255) {
    for (int byte = 0; byte < 256; ++byte) {
        const auto expected = static_cast<float>(static_cast<float>(byte) / 255.0);
        const auto b = static_cast<uint8_t>(byte);
        expectFloats(LxColor_RGBA(b, 0, 255, b), expected, 0, 1, expected);
    }
}
