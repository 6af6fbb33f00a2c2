// A layer's heights and colour laid over what is composited so far.
#pragma once

#include "sheen/Layer.h"

namespace lx {

// What a layer's look and mode come to, for a row of pixels. All of it is single precision.
struct CompositeRow {
    uint32_t mode;
    float opacity;
    LxRGBA color;
    int32_t count;
    float *heights;     // the composite so far, and the result
    const float *layer; // the layer's heights
    LxRGBA *colors;     // of the composite
};

void compositeRow(const CompositeRow &row);

// One per vector level.
namespace baseline {
void compositeRow(const CompositeRow &row);
}
namespace avx2 {
void compositeRow(const CompositeRow &row);
}

// Composites a layer's image over the two images, all three of one size.
void compositeLayer(const LxSheenLayer &layer, LxImage &heights, LxImage &colors);

// The composite of two heights in doubles, for finding the layer that shows: without paint, without limits.
double compositeHeight(uint32_t mode, double a, double b);

} // namespace lx
