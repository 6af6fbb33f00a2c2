// The integer conversions between red, green, blue and hue, saturation, value.

#include "colour/Hsv.h"

using namespace lx;

LxHSV LxHSV_fromRGB(LxRGB rgb) {
    return hsvFromRgb(rgb.r, rgb.g, rgb.b);
}

LxRGB LxRGB_fromHSV(int32_t hue, int32_t saturation, int32_t value) {
    return rgbFromHsv(hue, saturation, value);
}

void intRGBtoHSV(const uint8_t *rgb, int32_t *hue, int32_t *saturation, int32_t *value) {
    const LxHSV hsv = hsvFromRgb(rgb[0], rgb[1], rgb[2]);
    *hue = hsv.hue;
    *saturation = hsv.saturation;
    *value = hsv.value;
}

void intHSVtoRGB(int32_t hue, int32_t saturation, int32_t value, uint8_t *rgb) {
    const LxRGB converted = rgbFromHsv(hue, saturation, value);
    rgb[0] = converted.r;
    rgb[1] = converted.g;
    rgb[2] = converted.b;
}
