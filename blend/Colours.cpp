// The functions of three components, on pixels of four bytes: Hue, Saturation, Value and Color, and the
// luminance.

#include "blend/LevelForms.h"
#include "blend/Vectors.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// A pixel to each lane of 32 bits.
struct Rgb {
    Ints r, g, b;
};

struct Hsv {
    Ints hue, saturation, value;
};

inline Ints splatInt(int value) {
    return Ints{} + value;
}

inline Ints chooseInt(Ints condition, Ints yes, Ints no) {
    return (condition & yes) | (~condition & no);
}

inline Ints smallerInt(Ints x, Ints y) {
    return x < y ? x : y;
}

inline Ints largerInt(Ints x, Ints y) {
    return x > y ? x : y;
}

inline Rgb loadPixels(const uint8_t *from) {
    const auto v = (Ints)load(from);
    return {v & 0xFF, (v >> 8) & 0xFF, (v >> 16) & 0xFF};
}

// With the alphas of other pixels.
inline void storePixels(uint8_t *to, const Rgb &rgb, const uint8_t *alphas) {
    const Longs alpha = (Longs)load(alphas) & 0xFF000000;
    store(to, (Bytes)((Longs)(rgb.r | rgb.g << 8 | rgb.b << 16) | alpha));
}

// n / d, below 2^15, by the reciprocal: half a step above the true quotient's lowest place, so that no
// rounding goes under it.
template <int d>
inline Ints quotient(Floats n) {
    return truncated((n + 0.5f) * (1.0f / d));
}

inline Hsv hsvOf(const Rgb &c) {
    const Ints most = largerInt(c.r, largerInt(c.g, c.b)), least = smallerInt(c.r, smallerInt(c.g, c.b));
    const Ints d = most - least, sum = most + least, value = sum >> 1;
    // Where all are equal the numerators below are 0, and any divisor gives the 0 that is told.
    const Ints divisor = largerInt(chooseInt(value > 127, 510 - sum, sum), splatInt(1));
    // Single precision tells quotients of 16 by 9 bits from the next integer, as in Vectors.h.
    const Ints saturation = truncated(real(d) * 255.0f / real(divisor));

    // Quotients by d lie 1 / 255 apart, which leaves room for the reciprocal's error and for a thousandth
    // against it.
    const Floats turn = 360.0f / real(largerInt(d, splatInt(1)));
    const auto below = [&](Ints component) { return truncated(real(most - component) * turn + 0.001f); };
    const Ints rc = below(c.r), gc = below(c.g), bc = below(c.b);
    const Ints scaled =
        chooseInt(c.r == most, bc - gc, chooseInt(c.g == most, rc - bc + 720, gc - rc + 1440));
    // A sixth toward zero, brought into 0 to 359: below zero that is the ceiling, and a turn more.
    const Ints turned = scaled + ((scaled < 0) & (6 * 360 + 5));
    const Ints hue = quotient<6>(real(turned));
    return {hue - ((hue > 359) & 360), saturation, value};
}

// No grey needs a case of its own: without saturation m1 and m2 are the value. And no result leaves a byte.
inline Rgb rgbOf(const Hsv &c) {
    const Floats product = real(c.value) * real(c.saturation);
    const Ints m2 = chooseInt(c.value > 127, c.value + c.saturation - quotient<255>(product),
                              quotient<255>(product + real(c.value) * 255.0f));
    const Ints m1 = 2 * c.value - m2;
    const Floats span = real(m2 - m1);
    // The band function rises for 60 degrees, stays for 120, and falls for 60.
    const auto band = [&](Ints hue) {
        const Ints height = largerInt(smallerInt(smallerInt(hue, 240 - hue), splatInt(60)), splatInt(0));
        return m1 + quotient<60>(span * real(height));
    };
    const Ints forward = c.hue + 120, backward = c.hue - 120;
    return {band(forward - ((forward > 359) & 360)), band(c.hue), band(backward + ((backward < 0) & 360))};
}

template <Mode mode>
void blendHsv(uint8_t *rgba, const uint8_t *aPixels, const uint8_t *bPixels, size_t pixels) {
    for (size_t i = 0; i < 4 * pixels; i += vectorBytes) {
        const Hsv a = hsvOf(loadPixels(aPixels + i)), b = hsvOf(loadPixels(bPixels + i));
        const Hsv mixed = {mode == Mode::hue || mode == Mode::color ? b.hue : a.hue,
                           mode == Mode::saturation || mode == Mode::color ? b.saturation : a.saturation,
                           mode == Mode::value ? b.value : a.value};
        storePixels(rgba + i, rgbOf(mixed), bPixels + i);
    }
}

void hsv(uint8_t *rgba, const uint8_t *a, const uint8_t *b, Mode mode, size_t pixels) {
    switch (mode) {
    case Mode::hue:
        return blendHsv<Mode::hue>(rgba, a, b, pixels);
    case Mode::saturation:
        return blendHsv<Mode::saturation>(rgba, a, b, pixels);
    case Mode::value:
        return blendHsv<Mode::value>(rgba, a, b, pixels);
    default:
        return blendHsv<Mode::color>(rgba, a, b, pixels);
    }
}

void luminance(uint8_t *rgba, const uint8_t *b, size_t pixels) {
    for (size_t i = 0; i < 4 * pixels; i += vectorBytes) {
        const Rgb c = loadPixels(b + i);
        // Exact in single precision up to the division, and half a thousandth clear of every integer in it.
        const Floats sum = real(c.r) * 299.0f + real(c.g) * 587.0f + real(c.b) * 114.0f;
        const Ints grey = truncated((sum + 0.5f) * (1.0f / 1000));
        storePixels(rgba + i, {grey, grey, grey}, b + i);
    }
}

} // namespace

void addColourForms(VectorForms &forms) {
    forms.hsv = hsv;
    forms.luminance = luminance;
}

} // namespace lx::LX_VECTOR_NAMESPACE
