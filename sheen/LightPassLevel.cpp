// Lighting, a vector of pixels at a time. Compiled once per vector level.

#include "sheen/Lighting.h"
#include "sheen/Vector.h"

namespace lx {
namespace LX_VECTOR_NAMESPACE {
namespace {

inline Ints channel(Ints word, int shift) {
    return (word >> shift) & 255;
}

// Channels as whole numbers times `m`, cut to bytes.
inline Ints dimmed(Ints word, Floats m) {
    const Ints r = truncated(toFloats(channel(word, 0)) * m) & 255;
    const Ints g = truncated(toFloats(channel(word, 8)) * m) & 255;
    const Ints b = truncated(toFloats(channel(word, 16)) * m) & 255;
    return r | g << 8 | b << 16;
}

inline Ints raisedChannel(Ints word, int shift, Floats k) {
    const Floats sum = toFloats(channel(word, shift)) + k;
    return truncated(choose(sum > 255.0f, all(255.0f), sum)) << shift;
}

// Channels with a highlight of intensity `i` added, capped.
inline Ints raised(Ints word, Floats i) {
    const Floats k = roundedDown((i - 1.0f) * 255.0f + 0.5f);
    return raisedChannel(word, 0, k) | raisedChannel(word, 8, k) | raisedChannel(word, 16, k);
}

// Where a row's pixels are: the heights above, at and below them, each from one to the left of the first.
struct Row {
    const float *above, *middle, *below;
    const LxRGBA *colors;
    LxRGBA *out;
};

// Pixels x to x + count - 1 of a row.
inline void lightSome(const LightPass &light, const Row &row, int x, int count) {
    const Floats tc = load<Floats>(row.above + x + 1, count);
    // On purpose: the height of the pixel above decides, so the mask of the picture sits one row lower than
    // its heights.
    const Ints opaque = tc > light.alphaThreshold;
    if (!any(opaque)) {
        store(Ints{}, row.out + x, count);
        return;
    }
    const Floats tl = load<Floats>(row.above + x, count);
    const Floats tr = load<Floats>(row.above + x + 2, count);
    const Floats ml = load<Floats>(row.middle + x, count);
    const Floats mr = load<Floats>(row.middle + x + 2, count);
    const Floats bl = load<Floats>(row.below + x, count);
    const Floats bc = load<Floats>(row.below + x + 1, count);
    const Floats br = load<Floats>(row.below + x + 2, count);
    const Floats gx = (tl + ml + bl - tr - mr - br) * 255.0f;
    const Floats gy = (br + bl + bc - tl - tc - tr) * 255.0f;
    const Ints flat = (gx == 0.0f) & (gy == 0.0f);
    Floats i = all(light.lz);
    if (!every(flat)) {
        const Floats s = light.lx * gx + light.ly * gy + light.lift;
        const Floats slope = choose(s < 0.0f, Floats{}, s / squareRoot(gx * gx + gy * gy + light.depth2));
        i = choose(flat, i, slope);
    }
    const Ints color = load<Ints>(row.colors + x, count);
    const Ints bright = i > 1.0f;
    Ints lit = dimmed(color, choose(light.ambient < i, i, all(light.ambient)));
    if (any(bright))
        lit = (bright & raised(color, i)) | (~bright & lit);
    const Ints opaqueAlpha = Ints{} + (int32_t)0xff000000u;
    store(opaque & (lit | opaqueAlpha), row.out + x, count);
}

void lightOneRow(const LightPass &light, const Row &row) {
    if (light.width < floatLanes) {
        lightSome(light, row, 0, light.width);
        return;
    }
    for (int x = 0; x + floatLanes <= light.width; x += floatLanes)
        lightSome(light, row, x, floatLanes);
    // The last pixels in a whole vector too: some are lit twice, to the same result.
    if (light.width % floatLanes != 0)
        lightSome(light, row, light.width - floatLanes, floatLanes);
}

} // namespace

void lightPixels(const LightPass &target) {
    const LightPass pass = target; // nothing that is written can be part of it
    for (ptrdiff_t y = 0; y < pass.height; ++y) {
        const float *const above = pass.heights + y * pass.heightStride;
        const float *const middle = above + pass.heightStride;
        lightOneRow(pass, {above, middle, middle + pass.heightStride, pass.colors + y * pass.colorStride,
                           pass.out + y * pass.outStride});
    }
}

} // namespace LX_VECTOR_NAMESPACE
} // namespace lx
