// One row of a frame: where each of its pixels comes from.
#pragma once

#include <cstddef>

#include "morph/Morph.h"

namespace lx {

// A pair of lines of one frame, with all that does not depend on the pixel.
struct MorphPair {
    LxMorphLine frame;        // the line of the frame
    double weightOfLength;    // length to the power of 0.75
    float lengthSquared;      // of the line of the frame
    float sx0, sy0, sdx, sdy; // the source line
    float sLength;
};

// The displacements that all lines propose for the pixels of a row, summed by weight.
struct MorphSums {
    float *x, *y, *weight; // as many as the row is wide
};

// Fills `sums` for the pixels 0 to width - 1 of row `y`.
using MorphRow = void (*)(const MorphSums &sums, const MorphPair *pairs, size_t pairCount, int32_t y,
                          int32_t width);

namespace baseline {
void morphRow(const MorphSums &sums, const MorphPair *pairs, size_t pairCount, int32_t y, int32_t width);
}
namespace avx2 {
void morphRow(const MorphSums &sums, const MorphPair *pairs, size_t pairCount, int32_t y, int32_t width);
}

} // namespace lx
