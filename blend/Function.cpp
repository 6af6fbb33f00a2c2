#include "blend/Function.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "foundation/Numeric.h"

namespace lx::function {
namespace {

constexpr uint8_t byteOf(int value) {
    return static_cast<uint8_t>(value);
}

constexpr uint8_t clamped(int value) {
    return byteOf(std::clamp(value, 0, 255));
}

// Overlay's curve, whose end is 255; NoName04 puts the opacity there.
constexpr uint8_t overlayUpTo(int end, int a, int b) {
    int t = 2 * a * std::max(0, end - b) + 128;
    t = (t + (t >> 8)) >> 8;
    const int u = (t + b) * b + 128;
    return byteOf((u + (u >> 8)) >> 8);
}

constexpr uint8_t hardLightFrom(int branch, int a, int b) {
    return byteOf(b < branch ? 2 * a * b / 255 : 255 - 2 * (255 - a) * (255 - b) / 255);
}

// Perlin's gain with an input of 256ths. The divisor is log 0.5 rounded to single precision.
uint8_t gainOf(int input, double exponentBase) {
    const double t = input * 0.00390625;
    const double e = std::log(exponentBase) / -0.6931471824645996;
    const double g = t < 0.5 ? std::pow(2 * t, e) * 0.5 : 1.0 - std::pow(2.0 - 2 * t, e) * 0.5;
    // An input beyond 256 makes the base negative and g no number; the low byte of its conversion is 0.
    return static_cast<uint8_t>(static_cast<uint32_t>(truncateToInt32(g * 255.0)));
}

} // namespace

uint8_t source(int, int b, int) {
    return byteOf(b);
}

// On purpose: 255 times 255 is 254, here and wherever a shift by 8 stands for a division by 255.
uint8_t multiply(int a, int b, int) {
    return byteOf((a * b) >> 8);
}

uint8_t screen(int a, int b, int) {
    return byteOf(255 - (((255 - a) * (255 - b)) >> 8));
}

uint8_t overlay(int a, int b, int) {
    return overlayUpTo(255, a, b);
}

uint8_t divide(int a, int b, int) {
    return byteOf(std::min(255, a * 256 / (b + 1)));
}

uint8_t dodge(int a, int b, int) {
    return byteOf(std::min(255, b * 256 / (256 - a)));
}

uint8_t burn(int a, int b, int) {
    return byteOf(std::max(0, 255 - (255 - b) * 256 / (a + 1)));
}

uint8_t add(int a, int b, int) {
    return byteOf(std::min(255, a + b));
}

uint8_t subtract(int a, int b, int) {
    return byteOf(std::max(0, a - b));
}

uint8_t difference(int a, int b, int) {
    return byteOf(std::abs(a - b));
}

uint8_t darken(int a, int b, int) {
    return byteOf(std::min(a, b));
}

uint8_t lighten(int a, int b, int) {
    return byteOf(std::max(a, b));
}

uint8_t softLight(int a, int b, int) {
    const int t = a * 128 / 255;
    return byteOf(b < 128 ? (2 * t + 128) * b / 255 : 255 - (191 - t) * (255 - b) * 2 / 255);
}

uint8_t hardLight(int a, int b, int) {
    return hardLightFrom(128, a, b);
}

// On purpose: a logical not, 1 or 0.
uint8_t logicalNot(int, int b, int) {
    return b == 0 ? 1 : 0;
}

uint8_t bitOr(int a, int b, int) {
    return byteOf(a | b);
}

uint8_t bitXor(int a, int b, int) {
    return byteOf(a ^ b);
}

uint8_t flip(int a, int, int) {
    return byteOf(a ^ 0x85);
}

uint8_t gain(int, int b, int) {
    return gainTable()[b];
}

uint8_t gainOfProduct(int a, int b, int) {
    return gainOfProductTable()[a * 256 + b];
}

// On purpose: between the usual branch and this one the lower form passes 255 and its low byte is kept.
uint8_t lateHardLight(int a, int b, int) {
    return hardLightFrom(192, a, b);
}

uint8_t bentOverlay(int a, int b, int opacity) {
    return overlayUpTo(opacity, a, b);
}

uint8_t linearBurn(int a, int b, int) {
    return byteOf(std::max(0, a + b - 255));
}

uint8_t centredDifference(int a, int b, int) {
    return clamped(a - b + 128);
}

uint8_t centredSum(int a, int b, int) {
    return clamped(a + b - 128);
}

const uint8_t *gainTable() {
    static const auto table = [] {
        std::array<uint8_t, 256> made;
        for (int b = 0; b < 256; ++b)
            made[static_cast<size_t>(b)] = gainOf(b, 0.8);
        return made;
    }();
    return table.data();
}

const uint8_t *gainOfProductTable() {
    static const auto table = [] {
        std::array<uint8_t, 65536> made;
        for (int a = 0; a < 256; ++a) {
            for (int b = 0; b < 256; ++b)
                made[static_cast<size_t>(a) * 256 + static_cast<size_t>(b)] =
                    gainOf(2 * a * b / 255, 1.0 - a * 0.00390625);
        }
        return made;
    }();
    return table.data();
}

} // namespace lx::function
