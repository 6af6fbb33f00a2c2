// Random surfaces for property tests.
#pragma once

#include "sheen/Surface.h"
#include "tests/support/Random.h"

namespace lx::test {

// What random surfaces have in common.
struct SurfaceKind {
    bool wild = false;        // values of any size, and what is no number
    bool noisy = true;        // noise may be active
    bool symmetrical = false; // leave most of what spoils symmetry at rest
};

// Sets about half of the parameters that count to random values within or a little beyond their limits.
void randomize(LxSheenSurface &surface, Random &random, SurfaceKind kind = {});

} // namespace lx::test
