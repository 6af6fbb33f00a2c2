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

// Pixels x to x + count - 1.
inline void lightSome(const LightRow &row, int x, int count) {
    const Floats tc = load<Floats>(row.above + x + 1, count);
    // On purpose: the height of the pixel above decides, so the mask of the picture sits one row lower than
    // its heights.
    const Ints opaque = tc > row.alphaThreshold;
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
    Floats i = all(row.lz);
    if (!every(flat)) {
        const Floats s = row.lx * gx + row.ly * gy + row.lift;
        const Floats slope = choose(s < 0.0f, Floats{}, s / squareRoot(gx * gx + gy * gy + row.depth2));
        i = choose(flat, i, slope);
    }
    const Ints color = load<Ints>(row.colors + x, count);
    const Ints bright = i > 1.0f;
    Ints lit = dimmed(color, choose(row.ambient < i, i, all(row.ambient)));
    if (any(bright))
        lit = (bright & raised(color, i)) | (~bright & lit);
    const Ints opaqueAlpha = Ints{} + (int32_t)0xff000000u;
    store(opaque & (lit | opaqueAlpha), row.out + x, count);
}

} // namespace

void lightRow(const LightRow &target) {
    const LightRow row = target; // nothing that is written can be part of it
    int x = 0;
    for (; x + floatLanes <= row.count; x += floatLanes)
        lightSome(row, x, floatLanes);
    if (x < row.count)
        lightSome(row, x, row.count - x);
}

} // namespace LX_VECTOR_NAMESPACE
} // namespace lx
