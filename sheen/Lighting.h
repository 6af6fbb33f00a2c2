// The last pass: colours lit by the slope of the heights.
#pragma once

#include "sheen/Descriptor.h"

namespace lx {

// The light as the pixels see it: computed in doubles, used in single precision.
struct LightRow {
    float lx, ly, lz;
    float lift, depth2;
    float ambient;
    float alphaThreshold;
    int32_t count;
    // The heights above, at and below the pixels, each with one more in front of the first and behind the
    // last.
    const float *above, *middle, *below;
    const LxRGBA *colors;
    LxRGBA *out;
};

void lightRow(const LightRow &row);

// One per vector level.
namespace baseline {
void lightRow(const LightRow &row);
}
namespace avx2 {
void lightRow(const LightRow &row);
}

// The lit picture of a descriptor whose composite stands, or null if it cannot be made.
OwnedImage litPicture(const LxSheenDescriptor &descriptor);

} // namespace lx
