// The functions of three components: Hue, Saturation, Value and Color, and the luminance.
//
// A loop for each step over a block of pixels: a chain of all the steps is so long that a processor's queue
// holds hardly more than one pixel's, and most of its units wait.

#include "blend/ColourVectors.h"
#include "blend/LevelForms.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

constexpr size_t blockPixels = 128;

inline Bytes withAlphasOf(Bytes alphas, Bytes colours) {
    return colours | (alphas & (Bytes)splatLongs(0xFF000000));
}

// Whole vectors, of a block at most.
template <Mode mode>
[[gnu::flatten]] void blendBlock(uint8_t *rgba, const uint8_t *a, const uint8_t *b, size_t bytes) {
    const uint8_t *const hues = mode == Mode::hue || mode == Mode::color ? b : a;
    const uint8_t *const saturations = mode == Mode::saturation || mode == Mode::color ? b : a;
    const uint8_t *const values = mode == Mode::value ? b : a;
    Floats hue[blockPixels / vectorPixels];
    Ints saturation[blockPixels / vectorPixels];
    for (size_t i = 0; i < bytes; i += vectorBytes)
        hue[i / vectorBytes] = real(hueOf(componentsOf(load(hues + i))));
    for (size_t i = 0; i < bytes; i += vectorBytes)
        saturation[i / vectorBytes] = saturationOf(componentsOf(load(saturations + i)));
    for (size_t i = 0; i < bytes; i += vectorBytes) {
        const Ints value = valueOf(componentsOf(load(values + i)));
        const Rgb made = rgbOf(hue[i / vectorBytes], saturation[i / vectorBytes], value);
        store(rgba + i, withAlphasOf(load(b + i), pixelsOf(made)));
    }
}

[[gnu::flatten]] void luminanceBlock(uint8_t *rgba, const uint8_t *, const uint8_t *b, size_t bytes) {
    for (size_t i = 0; i < bytes; i += vectorBytes) {
        const Bytes pixels = load(b + i);
        const Words grey = luminanceOf(pixels);
        store(rgba + i, choose((Bytes)splatLongs(0xFF000000), pixels, join(grey, grey)));
    }
}

using Block = void (*)(uint8_t *rgba, const uint8_t *a, const uint8_t *b, size_t bytes);

template <Block block>
void pass(uint8_t *rgba, const uint8_t *a, const uint8_t *b, size_t pixels) {
    constexpr size_t blockBytes = 4 * blockPixels;
    const size_t bytes = 4 * pixels, direct = bytes / vectorBytes * vectorBytes;
    for (size_t i = 0; i < direct; i += blockBytes)
        block(rgba + i, a + i, b + i, direct - i < blockBytes ? direct - i : blockBytes);
    if (direct == bytes)
        return;
    uint8_t made[vectorBytes], lastA[vectorBytes] = {}, lastB[vectorBytes] = {};
    __builtin_memcpy(lastA, a + direct, bytes - direct);
    __builtin_memcpy(lastB, b + direct, bytes - direct);
    block(made, lastA, lastB, vectorBytes);
    __builtin_memcpy(rgba + direct, made, bytes - direct);
}

} // namespace

void addColourForms(VectorForms &forms) {
    const auto at = [&](Mode mode) -> auto & {
        return forms.colours[static_cast<size_t>(mode)];
    };
    at(Mode::hue) = pass<blendBlock<Mode::hue>>;
    at(Mode::saturation) = pass<blendBlock<Mode::saturation>>;
    at(Mode::value) = pass<blendBlock<Mode::value>>;
    at(Mode::color) = pass<blendBlock<Mode::color>>;
    at(Mode::grayscale) = pass<luminanceBlock>;
}

} // namespace lx::LX_VECTOR_NAMESPACE
