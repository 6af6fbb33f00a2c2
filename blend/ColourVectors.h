// Hue, saturation, value and luminance of vectors of pixels of four bytes, as intRGBtoHSV and intHSVtoRGB
// have them; alphas play no part.
// Included by files that are compiled once per level.
#pragma once

#include "blend/Vectors.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// A pixel to each lane of 32 bits. Numbers from 0 to 32767 compare as words, which every processor can.
struct Rgb {
    Ints r, g, b;
};

inline Ints splatInts(int value) {
    return Ints{} + value;
}

inline Floats splatFloats(float value) {
    return Floats{} + value;
}

inline Ints smallerInt(Ints x, Ints y) {
    return (Ints)smaller((Words)x, (Words)y);
}

inline Ints largerInt(Ints x, Ints y) {
    return (Ints)larger((Words)x, (Words)y);
}

inline Floats smallerFloat(Floats x, Floats y) {
    return x < y ? x : y;
}

inline Floats largerFloat(Floats x, Floats y) {
    return x > y ? x : y;
}

inline Floats distanceOf(Floats x, Floats y) {
    return (Floats)((Ints)(x - y) & 0x7FFFFFFF);
}

inline Rgb componentsOf(Bytes pixels) {
    const auto v = (Ints)pixels;
    return {v & 0xFF, (v >> 8) & 0xFF, (v >> 16) & 0xFF};
}

inline Bytes pixelsOf(const Rgb &c) {
    return (Bytes)(c.r | c.g << 8 | c.b << 16);
}

// The largest and the smallest component.
struct Span {
    Ints most, least;

    explicit Span(const Rgb &c)
        : most(largerInt(c.r, largerInt(c.g, c.b))), least(smallerInt(c.r, smallerInt(c.g, c.b))) {}
};

// 0 to 359, and 360 for 0 where the way there is from above.
inline Ints hueOf(const Rgb &c) {
    const Span span(c);
    const Ints d = span.most - span.least, middle = c.r + c.g + c.b - span.most - span.least;
    // Below the largest component, in units of which the smallest is 360 below: quotients by d lie 1 / 255
    // apart, which leaves room for the reciprocal's error and for a thousandth against it.
    const Floats turn = 360.0f / real(largerInt(d, splatInts(1)));
    const Ints below = truncated(real(span.most - middle) * turn + 0.001f);
    const Ints way = ((Ints)(d > 0) & 360) - below;
    // From the middle of the largest component's third of the circle to either side.
    const Ints isRed = c.r == span.most, isGreen = c.g == span.most;
    const Ints side = isRed ? c.g - c.b : isGreen ? c.b - c.r : c.r - c.g;
    const Ints backward = side < 0;
    const Ints scaled = (~isRed & (1440 - (isGreen & 720))) + ((way ^ backward) - backward);
    // A sixth toward zero, brought above zero: below it that is the ceiling, and a turn more.
    const Ints turned = scaled + ((Ints)(scaled < 0) & (6 * 360 + 5));
    return truncated(real(turned) * (1.0f / 6) + 0.01f);
}

inline Ints saturationOf(const Rgb &c) {
    const Span span(c);
    const Ints d = span.most - span.least, sum = span.most + span.least;
    // Where all are equal d is 0, and any divisor gives the 0 that is told. Single precision tells quotients
    // of 16 by 9 bits from the next integer: below it they stay at least 1 / 512 away.
    const Ints divisor = largerInt(smallerInt(sum, 510 - sum), splatInts(1));
    return truncated(real(d) * 255.0f / real(divisor));
}

inline Ints valueOf(const Rgb &c) {
    const Span span(c);
    return (span.most + span.least) >> 1;
}

// No grey needs a case of its own: without saturation all components are the value. No result leaves a byte.
inline Rgb rgbOf(Floats hue, Ints saturation, Ints value) {
    // Products of two bytes by 255 and of 255 by 60 over 60: exact with a little added for the rounding.
    const Ints part = truncated(real(value) * real(saturation) * (1.0f / 255) + 0.002f);
    const Ints half = value > 127 ? saturation - part : part;
    const Ints lowest = value - half;
    const Floats slope = real(half) * (2.0f / 60);
    const auto component = [&](Floats height) {
        const Floats cut = largerFloat(smallerFloat(height, splatFloats(60)), splatFloats(0));
        return lowest + truncated(cut * slope + 0.005f);
    };
    // Each rises for 60 degrees, stays for 120, and falls for 60.
    return {component(distanceOf(hue, splatFloats(180)) - 60.0f),
            component(120.0f - distanceOf(hue, splatFloats(120))),
            component(120.0f - distanceOf(hue, splatFloats(240)))};
}

// In both words of each pixel.
inline Words luminanceOf(Bytes pixels) {
    const auto ofRedAndBlue = (Words)splatLongs(299 | 114 << 16), ofGreen = (Words)splatLongs(587);
    const Longs sum = sumOfProducts(even(pixels), ofRedAndBlue) + sumOfProducts(odd(pixels), ofGreen);
    // A thousandth is the 125th of an eighth, which fits in a word. 33555 / 2^22 is more than 1 / 125 by so
    // little that no eighth comes to the next integer.
    const Longs eighth = sum >> 3;
    return multiplyHigh((Words)(eighth | eighth << 16), splat(33555)) >> 6;
}

} // namespace
} // namespace lx::LX_VECTOR_NAMESPACE
