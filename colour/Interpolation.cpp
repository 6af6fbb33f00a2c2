// Interpolation between colours, and random colours.

#include "colour/Interpolation.h"

#include <cstdlib>

#include "colour/Hsv.h"

using namespace lx;

namespace {

// One draw of rand() as a byte, in single precision. A draw near RAND_MAX rounds up to 256, whose low byte is
// 0.
uint8_t randomByte() {
    const float unit = static_cast<float>(std::rand()) * 0x1p-31f;
    return static_cast<uint8_t>(truncateToInt32(unit * 256.0f));
}

LxRGB opaquePart(const LxRGBA &rgba) {
    return {rgba.r, rgba.g, rgba.b};
}

} // namespace

// On purpose: hue is a plain number here, so from 350 to 10 the way leads through 180.
LxRGB lx::lerpHsv(double t, const LxRGB &from, const LxRGB &to) {
    const LxHSV a = hsvFromRgb(from.r, from.g, from.b);
    const LxHSV b = hsvFromRgb(to.r, to.g, to.b);
    return rgbFromHsv(truncateToInt32(lerpWhole(t, a.hue, b.hue)),
                      truncateToInt32(lerpWhole(t, a.saturation, b.saturation)),
                      truncateToInt32(lerpWhole(t, a.value, b.value)));
}

LxRGBA LxRGBA_Lerp(double t, LxRGBA from, LxRGBA to) {
    return lerp(t, from, to);
}

LxRGB LxRGB_Lerp(double t, LxRGB from, LxRGB to) {
    return lerp(t, from, to);
}

LxRGBA LxRGBA_LerpHSV(double t, LxRGBA from, LxRGBA to) {
    const LxRGB rgb = lerpHsv(t, opaquePart(from), opaquePart(to));
    return {rgb.r, rgb.g, rgb.b, lerpByte(t, from.a, to.a)};
}

LxRGB LxRGB_LerpHSV(double t, LxRGB from, LxRGB to) {
    return lerpHsv(t, from, to);
}

// The elements of a braced list are evaluated in order, so the draws are those of r, g, b and then a.
LxRGBA LxRGBA_Random(void) {
    return {randomByte(), randomByte(), randomByte(), randomByte()};
}

LxRGB LxRGB_Random(void) {
    return {randomByte(), randomByte(), randomByte()};
}
