// The integer conversions between red, green, blue and hue, saturation, value, inline because blend kernels
// run them per pixel. The value is the lightness (max + min) / 2.
//
// Every division truncates toward zero and stands where the rules put it: colours depend on each to the bit.
#pragma once

#include <algorithm>
#include <cstdint>

#include <oxlume/LxColor.h>

#include "foundation/Numeric.h"

namespace lx {

constexpr LxHSV hsvFromRgb(int32_t r, int32_t g, int32_t b) {
    const int32_t most = std::max(r, std::max(g, b));
    const int32_t least = std::min(r, std::min(g, b));
    const int32_t value = (most + least) >> 1;
    if (most == least)
        return {0, 0, value};

    const int32_t d = most - least;
    const int32_t saturation = d * 255 / (value > 127 ? 510 - most - least : most + least);

    // How far each component is below the largest, where 360 is all the way to the smallest.
    const int32_t rc = (most - r) * 360 / d;
    const int32_t gc = (most - g) * 360 / d;
    const int32_t bc = (most - b) * 360 / d;
    // Red begins at 0, green at 120 and blue at 240 degrees, here times the 6 of the division; ties go to
    // red, then to green.
    const int32_t scaledHue = r == most ? bc - gc : g == most ? rc - bc + 720 : gc - rc + 1440;
    const int32_t hue = scaledHue / 6;
    return {hue < 0 ? hue + 360 : hue > 359 ? hue - 360 : hue, saturation, value};
}

// One component of the colour with the extremes m1 and m2, by the hue seen from that component.
constexpr uint8_t hueBand(int32_t m1, int32_t m2, int32_t hue) {
    int32_t component = m1;
    if (hue < 60)
        component = wrappingAdd(m1, wrappingMultiply(wrappingSubtract(m2, m1), hue) / 60);
    else if (hue < 180)
        component = m2;
    else if (hue < 240)
        component = wrappingAdd(m1, wrappingMultiply(wrappingSubtract(m2, m1), 240 - hue) / 60);
    return static_cast<uint8_t>(component);
}

// One step toward 0 to 359. On purpose not repeated: a hue further out falls where the bands put it.
constexpr int32_t hueInRange(int32_t hue) {
    return hue >= 360 ? hue - 360 : hue < 0 ? hue + 360 : hue;
}

// Any integers are taken; beyond 32 bits the arithmetic wraps, and the results are cut to bytes.
constexpr LxRGB rgbFromHsv(int32_t hue, int32_t saturation, int32_t value) {
    const int32_t m2 = value > 127 ? wrappingSubtract(wrappingAdd(value, saturation),
                                                      wrappingMultiply(value, saturation) / 255)
                                   : wrappingMultiply(wrappingAdd(saturation, 255), value) / 255;
    const int32_t m1 = wrappingSubtract(wrappingMultiply(2, value), m2);
    if (saturation == 0) {
        const auto grey = static_cast<uint8_t>(value);
        return {grey, grey, grey};
    }
    return {hueBand(m1, m2, hueInRange(wrappingAdd(hue, 120))), hueBand(m1, m2, hueInRange(hue)),
            hueBand(m1, m2, hueInRange(wrappingSubtract(hue, 120)))};
}

} // namespace lx
