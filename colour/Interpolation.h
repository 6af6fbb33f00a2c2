// Interpolation between colours, for use inside the library.
#pragma once

#include <cmath>

#include <oxlume/LxColor.h>

#include "foundation/Numeric.h"

namespace lx {

// The whole number nearest to the value at `t` on the way from `from` to `to`; halves go up.
inline double lerpWhole(double t, int32_t from, int32_t to) {
    return std::floor(t * (to - from) + from + 0.5);
}

// The same modulo 256, so a `t` beyond 0 to 1 wraps. What does not fit in 64 bits is a multiple of 256
// anyway, and truncateToInt64 gives a low byte of 0 for it, as for what is not a number.
inline uint8_t lerpByte(double t, uint8_t from, uint8_t to) {
    return static_cast<uint8_t>(truncateToInt64(lerpWhole(t, from, to)));
}

inline LxRGB lerp(double t, const LxRGB &from, const LxRGB &to) {
    return {lerpByte(t, from.r, to.r), lerpByte(t, from.g, to.g), lerpByte(t, from.b, to.b)};
}

inline LxRGBA lerp(double t, const LxRGBA &from, const LxRGBA &to) {
    return {lerpByte(t, from.r, to.r), lerpByte(t, from.g, to.g), lerpByte(t, from.b, to.b),
            lerpByte(t, from.a, to.a)};
}

// Through hue, saturation and value.
LxRGB lerpHsv(double t, const LxRGB &from, const LxRGB &to);

} // namespace lx
