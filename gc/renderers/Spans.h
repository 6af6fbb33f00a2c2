// Runs of RGBA pixels in the mode SrcOver, and runs of a gradient's colours, in vectors.
#pragma once

#include <cstddef>
#include <cstdint>

#include <oxlume/LxColor.h>

namespace lx {

// Pixels in a row of a narrow shape.
inline constexpr int32_t narrowPixels = 16;

// Pixels and colours are words of r, g, b, a as they lie in memory. `out` need not be aligned.
struct SpanFunctions {
    // Writes one pixel `count` times.
    void (*fill)(void *out, uint32_t pixel, size_t count);

    // Mixes a colour into pixels: each component f at the weight w, 0 to 255; alpha becomes at least w.
    void (*mix)(void *out, uint32_t color, uint32_t w, size_t count);

    // Lays colours on pixels, each at its own alpha and the opacity.
    void (*blend)(void *out, const uint32_t *colors, uint32_t opacity, size_t count);

    // As blend, the same `count` colours, up to narrowPixels, on each of `rows` rows, `rowBytes` apart.
    // Behind the colours, up to narrowPixels, pixels may be written again as they are.
    void (*blendNarrow)(void *out, ptrdiff_t rowBytes, size_t rows, const uint32_t *colors, uint32_t opacity,
                        size_t count);

    // The bytes of `count` colours one after the other.
    void (*pack)(void *out, const LxColor *colors, size_t count);
};

// The functions of the best instruction set that the library may use.
const SpanFunctions &spanFunctions();

} // namespace lx
