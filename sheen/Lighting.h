// The last pass: colours lit by the slope of the heights.
#pragma once

#include <cstddef>

#include "sheen/Descriptor.h"

namespace lx {

// The light as the pixels see it, computed in doubles and used in single precision, and the pixels.
struct LightPass {
    float lx, ly, lz;
    float lift, depth2;
    float ambient;
    float alphaThreshold;
    int32_t width, height; // of the pixels to light
    // The height above and to the left of the first pixel; the heights reach one pixel beyond on all sides.
    const float *heights;
    const LxRGBA *colors;
    LxRGBA *out;
    ptrdiff_t heightStride, colorStride, outStride; // from row to row, in pixels
};

// One per vector level.
namespace baseline {
void lightPixels(const LightPass &pass);
}
namespace avx2 {
void lightPixels(const LightPass &pass);
}

// The lit picture of a descriptor whose composite stands, or null if it cannot be made.
ImageHandle litPicture(const LxSheenDescriptor &descriptor);

} // namespace lx
