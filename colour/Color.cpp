// Colour records: constructors, constants and conversions between them.

#include <oxlume/LxColor.h>

namespace {

constexpr LxColor tagged(int32_t type, uint8_t b0, uint8_t b1, uint8_t b2, uint8_t b3) {
    return {type, {{b0, b1, b2, b3}}};
}

constexpr LxColor white(int32_t type) {
    return tagged(type, 255, 255, 255, 255);
}

constexpr LxColor black(int32_t type) {
    return tagged(type, 0, 0, 0, 255);
}

float unitOf(uint8_t byte) {
    return static_cast<float>(byte) / 255.0f;
}

} // namespace

const LxColor LxColor_A_White = white(kLxPixelA);
const LxColor LxColor_RGB_White = white(kLxPixelRGB);
const LxColor LxColor_RGBA_White = white(kLxPixelRGBA);
const LxColor LxColor_A_Black = black(kLxPixelA);
const LxColor LxColor_RGB_Black = black(kLxPixelRGB);
const LxColor LxColor_RGBA_Black = black(kLxPixelRGBA);

const LxRGBA LxRGBA_0 = {0, 0, 0, 0};
const LxRGBA LxRGBA_White = {255, 255, 255, 255};
const LxRGBA LxRGBA_Black = {0, 0, 0, 255};

LxRGBA LxRGBA_Make(uint8_t r, uint8_t g, uint8_t b, uint8_t a) {
    return {r, g, b, a};
}

LxRGB LxRGB_Make(uint8_t r, uint8_t g, uint8_t b) {
    return {r, g, b};
}

LxColor LxColor_A(uint8_t value) {
    return tagged(kLxPixelA, value, 0, 0, 0);
}

LxColor LxColor_RGB(uint8_t r, uint8_t g, uint8_t b) {
    return tagged(kLxPixelRGB, r, g, b, 0);
}

LxColor LxColor_RGBA(uint8_t r, uint8_t g, uint8_t b, uint8_t a) {
    return tagged(kLxPixelRGBA, r, g, b, a);
}

LxColor LxColor_RGB_t(LxRGB rgb) {
    return tagged(kLxPixelRGB, rgb.r, rgb.g, rgb.b, 0);
}

LxColor LxColor_RGBA_t(LxRGBA rgba) {
    return tagged(kLxPixelRGBA, rgba.r, rgba.g, rgba.b, rgba.a);
}

LxColor LxColor_F(float value) {
    return {.type = kLxPixelF, .content = {.f = value}};
}

LxColor LxColor_L(int32_t value) {
    return {.type = kLxPixelL, .content = {.l = value}};
}

LxRGBA LxRGBA_fromRGB(LxRGB rgb) {
    return {rgb.r, rgb.g, rgb.b, 255};
}

LxRGB LxRGB_fromRGBA(LxRGBA rgba) {
    return {rgba.r, rgba.g, rgba.b};
}

LxRGBA LxRGBA_fromLong(uint32_t value) {
    return {static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value),
            static_cast<uint8_t>(value >> 24)};
}

void LxColor_AsFloatArray(LxColor color, float out[4]) {
    const LxRGBA bytes = color.content.rgba;
    const bool grey = color.type == kLxPixelA;
    const bool hasAlpha = color.type == kLxPixelRGBA || color.type == kLxPixelRGBAPremultiplied;
    const bool hasBytes = grey || hasAlpha || color.type == kLxPixelRGB;
    out[0] = hasBytes ? unitOf(bytes.r) : 0.0f;
    out[1] = hasBytes ? unitOf(grey ? bytes.r : bytes.g) : 0.0f;
    out[2] = hasBytes ? unitOf(grey ? bytes.r : bytes.b) : 0.0f;
    out[3] = hasAlpha ? unitOf(bytes.a) : 1.0f;
}
