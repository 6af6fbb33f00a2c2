// Seeded spline noise along one axis and over the plane.
//
// A lattice of 256 random values carries Catmull-Rom cubics, all prepared when the noise is seeded. The state
// is process-wide and unguarded: one thread at a time.
#pragma once

#include <cstdint>

extern "C" {

// Fills the lattice: calls srand(seed), then rand 256 times. Leaves the cache of LxNoise_2D alone.
void LxNoise_Seed(uint32_t seed);

// Smooth noise along one axis, about -1 to 1.
double LxNoise_1D(double x);

// Smooth noise over the plane, about -1 to 1. Keeps the four columns around the last point: a scan along `x`
// at one `y` costs one cubic a point instead of five.
double LxNoise_2D(double x, double y);
}

namespace lx {

// ((a f + b) f + c) f + d: the cubic that starts at one value of the lattice.
struct NoiseRow {
    double a, b, c, d;
};

// Catmull-Rom through four values at equal distances, from the second to the third.
inline NoiseRow catmullRom(double p0, double p1, double p2, double p3) {
    return {p1 * 1.5 + p0 * -0.5 + p2 * -1.5 + p3 * 0.5, p1 * -2.5 + p0 + (p2 + p2) + p3 * -0.5,
            p0 * -0.5 + p2 * 0.5, p1};
}

// The tables, for forms of the noise that work on many points at once.
const NoiseRow *noiseRows();
const uint8_t *noisePermutation();

// Whether the cache of LxNoise_2D holds what would be computed anew. It does not before the first
// evaluation of a process, and after a seed that changed the lattice; then only LxNoise_2D itself, point
// after point, gives the right values.
bool noiseCacheIsCurrent();

} // namespace lx
