// The modes' functions of one component: a of the first source, b of the second, both 0 to 255. These are
// their definition; the vector forms agree with them for every pair.
#pragma once

#include <cstdint>

namespace lx::function {

uint8_t source(int a, int b, int opacity);
uint8_t multiply(int a, int b, int opacity);
uint8_t screen(int a, int b, int opacity);
uint8_t overlay(int a, int b, int opacity);
uint8_t divide(int a, int b, int opacity);
uint8_t dodge(int a, int b, int opacity);
uint8_t burn(int a, int b, int opacity);
uint8_t add(int a, int b, int opacity);
uint8_t subtract(int a, int b, int opacity);
uint8_t difference(int a, int b, int opacity);
uint8_t darken(int a, int b, int opacity);
uint8_t lighten(int a, int b, int opacity);
uint8_t softLight(int a, int b, int opacity);
uint8_t hardLight(int a, int b, int opacity);
uint8_t logicalNot(int a, int b, int opacity);
uint8_t bitOr(int a, int b, int opacity);
uint8_t bitXor(int a, int b, int opacity);
uint8_t flip(int a, int b, int opacity);
uint8_t gain(int a, int b, int opacity);              // NoName01
uint8_t gainOfProduct(int a, int b, int opacity);     // NoName02
uint8_t lateHardLight(int a, int b, int opacity);     // NoName03
uint8_t bentOverlay(int a, int b, int opacity);       // NoName04
uint8_t linearBurn(int a, int b, int opacity);        // NoName05
uint8_t centredDifference(int a, int b, int opacity); // NoName06
uint8_t centredSum(int a, int b, int opacity);        // NoName07

// The two gains as tables, made from their formulas on first use: of b, and of a * 256 + b.
const uint8_t *gainTable();
const uint8_t *gainOfProductTable();

// What Grayscale makes of three components.
inline uint8_t luminance(int red, int green, int blue) {
    return static_cast<uint8_t>((299 * red + 587 * green + 114 * blue) / 1000);
}

} // namespace lx::function
