// The noise lattice, its cubics, and their evaluation.

#include "geometry/Noise.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "foundation/Numeric.h"

namespace {

constexpr uint8_t NoisePermutation[256] = {
    225, 155, 210, 108, 175, 199, 221, 144, 203, 116, 70,  213, 69,  158, 33,  252, 5,   82,  173, 133,
    222, 139, 174, 27,  9,   71,  90,  246, 75,  130, 91,  191, 169, 138, 2,   151, 194, 235, 81,  7,
    25,  113, 228, 159, 205, 253, 134, 142, 248, 65,  224, 217, 22,  121, 229, 63,  89,  103, 96,  104,
    156, 17,  201, 129, 36,  8,   165, 110, 237, 117, 231, 56,  132, 211, 152, 20,  181, 111, 239, 218,
    170, 163, 51,  172, 157, 47,  80,  212, 176, 250, 87,  49,  99,  242, 136, 189, 162, 115, 44,  43,
    124, 94,  150, 16,  141, 247, 32,  10,  198, 223, 255, 72,  53,  131, 84,  57,  220, 197, 58,  50,
    208, 11,  241, 28,  3,   192, 62,  202, 18,  215, 153, 24,  76,  41,  15,  179, 39,  46,  55,  6,
    128, 167, 23,  188, 106, 34,  187, 140, 164, 73,  112, 182, 244, 195, 227, 13,  35,  77,  196, 185,
    26,  200, 226, 119, 31,  123, 168, 125, 249, 68,  183, 230, 177, 135, 160, 180, 12,  1,   243, 148,
    102, 166, 38,  238, 251, 37,  240, 126, 64,  74,  161, 40,  184, 149, 171, 178, 101, 66,  29,  59,
    146, 61,  254, 107, 42,  86,  154, 4,   236, 232, 120, 21,  233, 209, 45,  98,  193, 114, 78,  19,
    206, 14,  118, 127, 48,  79,  147, 85,  30,  207, 219, 54,  88,  234, 190, 122, 95,  67,  143, 109,
    137, 214, 145, 93,  92,  100, 245, 0,   216, 186, 60,  83,  105, 97,  204, 52};

double NoiseLattice[256];
lx::NoiseRow NoiseRows[256];

// The last evaluation over the plane: the whole part of its x, its y, and the values of the four columns
// around it. On purpose the zeros that they start with are taken for a real evaluation.
double NoiseCacheX = 0.0;
double NoiseCacheY = 0.0;
double NoiseCacheColumns[4] = {};
bool cacheIsCurrent = false;

} // namespace

const lx::NoiseRow *lx::noiseRows() {
    return NoiseRows;
}

const uint8_t *lx::noisePermutation() {
    return NoisePermutation;
}

bool lx::noiseCacheIsCurrent() {
    return cacheIsCurrent;
}

void LxNoise_Seed(uint32_t seed) {
    double lattice[256];
    std::srand(seed);
    for (double &value : lattice) {
        // The same fifteen bits stand in both halves of the fraction.
        const double r = std::rand() & 0x7fff;
        const double u = r + r * 32768.0;
        value = u / 1073741823.0 * -2.0 + 1.0;
    }
    // Every new layer seeds with 0; the cubics of a lattice that stands already need no second making.
    if (std::equal(std::begin(lattice), std::end(lattice), NoiseLattice))
        return;
    std::memcpy(NoiseLattice, lattice, sizeof lattice);
    for (int i = 0; i < 256; ++i)
        NoiseRows[i] = lx::catmullRom(lattice[i], lattice[(i + 1) & 255], lattice[(i + 2) & 255],
                                      lattice[(i + 3) & 255]);
    cacheIsCurrent = false;
}

double LxNoise_1D(double x) {
    int32_t i = lx::truncateToInt32(x);
    if (x < 0.0)
        i = lx::wrappingSubtract(i, 1);
    const double f = x - i;
    const lx::NoiseRow &row = NoiseRows[static_cast<uint32_t>(i) & 255];
    return f * ((f * row.a + row.b) * f + row.c) + row.d;
}

double LxNoise_2D(double x, double y) {
    // On purpose not lowered for negative x, as LxNoise_1D does: the plane mirrors its cells around zero.
    const int32_t ix = lx::truncateToInt32(x);
    const double fx = x - ix;
    if (!(y == NoiseCacheY && ix == NoiseCacheX)) {
        const int32_t iy = lx::truncateToInt32(y);
        const double fy = y - iy;
        for (uint32_t k = 0; k < 4; ++k) {
            const uint8_t column = NoisePermutation[(static_cast<uint32_t>(ix) - 1 + k) & 255];
            const lx::NoiseRow &row = NoiseRows[(column + static_cast<uint32_t>(iy)) & 255];
            NoiseCacheColumns[k] = ((fy * row.a + row.b) * fy + row.c) * fy + row.d;
        }
        NoiseCacheY = y;
        NoiseCacheX = ix;
        cacheIsCurrent = true;
    }
    const double *p = NoiseCacheColumns;
    const lx::NoiseRow cubic = lx::catmullRom(p[0], p[1], p[2], p[3]);
    return ((cubic.a * fx + cubic.b) * fx + cubic.c) * fx + cubic.d;
}
