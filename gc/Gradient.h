// The gradient record and its rebuild, for use inside the library.
#pragma once

#include <cstdint>

#include <oxlume/LxGradient.h>
#include <oxlume/LxRect.h>

namespace lx {

inline constexpr int32_t gradientStops = 10;

// Entries of the table from which ramps are sampled, whatever the size of the shape.
inline constexpr int32_t gradientTableSize = 1024;

// The position of a stop that is not in use.
inline constexpr double noStop = -1.0;

} // namespace lx

struct _LxGradient {
    int32_t type; // an LxGradientType, stored without a check
    double (*curve)(double mid, double t);
    LxRectL bounds; // of the last rebuild
    LxColor *ramp;  // one colour for each step of the shape; null before the first rebuild
    int32_t rampCapacity;
    int32_t dirty; // a stop was set since the last rebuild; nothing else reads it
    LxColor colors[lx::gradientStops];
    double positions[lx::gradientStops];
    double mids[lx::gradientStops]; // the curve's first argument up to the next stop
    LxColor *table;                 // what the stops make from position 0 to 1; null where it must be made
};

namespace lx {

// Forgets what was made of the stops, which are about to change.
void dropTable(LxGradient &gradient);

// Lays the gradient out over a shape with these bounds: minX, minY, maxX, maxY.
void rebuild(LxGradient &gradient, const double *bounds);

// Where in the ramp the colour of the pixel (x, y) stands, held to the ramp; -1 where there is none and the
// colour is opaque black.
int32_t rampIndex(const LxGradient &gradient, int32_t x, int32_t y);

} // namespace lx
