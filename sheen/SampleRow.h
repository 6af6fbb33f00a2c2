// The surface for many points at once.
#pragma once

#include "sheen/SheenValues.h"

namespace lx {

// Part of one row of a picture.
struct SampleRow {
    float step; // from pixel to pixel; the position of pixel x is the single-precision product step * x
    double y;   // of the whole row
    int count;  // pixels 0 to count - 1
    float *out; // receives their heights, held to 0..1, 0 for what is not a number
    int first;  // receives the first pixel whose height is above 0, or `count`
    int last;   // receives the last such pixel, or -1
};

// Samples the row as Evaluate would, one pixel after the other, to the bit; also the noise's cache is left as
// that would leave it. The surface is prepared.
void sampleRow(const SheenValues &surface, SampleRow &row);

// The same, point by point: what the fast form is measured against.
void sampleRowPlainly(const SheenValues &surface, SampleRow &row);

// One per vector level, for a noise cache that is current; they leave the cache alone.
namespace baseline {
void sampleRow(const SheenValues &surface, SampleRow &row);
}
namespace avx2 {
void sampleRow(const SheenValues &surface, SampleRow &row);
}

} // namespace lx
