// The lattice noise of geometry/Noise.h, a vector of places at a time and to the same bits. Included by files
// that are compiled once per vector level.
#pragma once

#include "geometry/Noise.h"
#include "sheen/Vector.h"

namespace lx {
namespace LX_VECTOR_NAMESPACE {
namespace {

// The cubics of one row index per lane.
struct Cubics {
    Doubles a, b, c, d;
};

inline Cubics gather(const NoiseRow *rows, HalfWords index) {
#if defined(__AVX2__)
    static_assert(sizeof(NoiseRow) == 32);
    const __m256d r0 = _mm256_loadu_pd(&rows[index[0]].a);
    const __m256d r1 = _mm256_loadu_pd(&rows[index[1]].a);
    const __m256d r2 = _mm256_loadu_pd(&rows[index[2]].a);
    const __m256d r3 = _mm256_loadu_pd(&rows[index[3]].a);
    const __m256d ac01 = _mm256_unpacklo_pd(r0, r1);
    const __m256d bd01 = _mm256_unpackhi_pd(r0, r1);
    const __m256d ac23 = _mm256_unpacklo_pd(r2, r3);
    const __m256d bd23 = _mm256_unpackhi_pd(r2, r3);
    return {_mm256_permute2f128_pd(ac01, ac23, 0x20), _mm256_permute2f128_pd(bd01, bd23, 0x20),
            _mm256_permute2f128_pd(ac01, ac23, 0x31), _mm256_permute2f128_pd(bd01, bd23, 0x31)};
#else
    Cubics cubics;
    for (int i = 0; i < doubleLanes; ++i) {
        const NoiseRow &row = rows[index[i]];
        cubics.a[i] = row.a;
        cubics.b[i] = row.b;
        cubics.c[i] = row.c;
        cubics.d[i] = row.d;
    }
    return cubics;
#endif
}

inline Doubles noise1D(Doubles x) {
    // Unsigned, so that the cell below the lowest is the highest.
    const HalfWords lowered = (HalfWords)truncated(x) + __builtin_convertvector(x < 0.0, HalfWords);
    const Doubles cell = widened((HalfInts)lowered);
    const Doubles f = x - cell;
    const DoubleMask together = cell == cell[0];
    if (every(together)) {
        const NoiseRow &row = noiseRows()[lowered[0] & 255];
        return f * ((f * row.a + row.b) * f + row.c) + row.d;
    }
    const Cubics row = gather(noiseRows(), lowered & 255);
    return f * ((f * row.a + row.b) * f + row.c) + row.d;
}

// Points that lie each in a cell of its own.
inline Doubles noise2DAnywhere(HalfInts ix, Doubles fx, Doubles y) {
    const HalfInts iy = truncated(y);
    const Doubles fy = y - widened(iy);
    const uint8_t *const permutation = noisePermutation();
    const NoiseRow *const rows = noiseRows();
    Doubles p[4];
    for (uint32_t k = 0; k < 4; ++k) {
        const HalfWords place = ((HalfWords)ix - 1 + k) & 255;
        HalfWords column;
        for (int i = 0; i < doubleLanes; ++i)
            column[i] = permutation[place[i]];
        const Cubics row = gather(rows, (column + (HalfWords)iy) & 255);
        p[k] = ((fy * row.a + row.b) * fy + row.c) * fy + row.d;
    }
    const Doubles a = p[1] * 1.5 + p[0] * -0.5 + p[2] * -1.5 + p[3] * 0.5;
    const Doubles b = p[1] * -2.5 + p[0] + (p[2] + p[2]) + p[3] * -0.5;
    const Doubles c = p[0] * -0.5 + p[2] * 0.5;
    return ((a * fx + b) * fx + c) * fx + p[1];
}

// The cubic along x of one cell at one y.
inline NoiseRow cellCubic(int32_t ix, double y) {
    const int32_t iy = truncated(all(y))[0];
    const double fy = y - iy;
    double p[4];
    for (uint32_t k = 0; k < 4; ++k) {
        const uint8_t column = noisePermutation()[((uint32_t)ix - 1 + k) & 255];
        const NoiseRow &row = noiseRows()[(column + (uint32_t)iy) & 255];
        p[k] = ((fy * row.a + row.b) * fy + row.c) * fy + row.d;
    }
    return {p[1] * 1.5 + p[0] * -0.5 + p[2] * -1.5 + p[3] * 0.5,
            p[1] * -2.5 + p[0] + (p[2] + p[2]) + p[3] * -0.5, p[0] * -0.5 + p[2] * 0.5, p[1]};
}

// The last cell of the plane that a whole vector lay in: the whole part of x, y, and the cubic along x.
struct NoiseCell {
    double x = NAN, y = NAN;
    NoiseRow cubic = {};
};

// Points that most often lie in one cell at one y, as they do along a row of a surface that is not turned.
inline Doubles noise2D(NoiseCell &last, Doubles x, Doubles y) {
    const HalfInts ix = truncated(x);
    const Doubles cellX = widened(ix);
    const Doubles fx = x - cellX;
    const DoubleMask known = (cellX == last.x) & (y == last.y);
    if (!every(known)) {
        const DoubleMask together = (cellX == cellX[0]) & (y == y[0]);
        if (!every(together))
            return noise2DAnywhere(ix, fx, y);
        last = {cellX[0], y[0], cellCubic(ix[0], y[0])};
    }
    const NoiseRow &cubic = last.cubic;
    return ((cubic.a * fx + cubic.b) * fx + cubic.c) * fx + cubic.d;
}

} // namespace
} // namespace LX_VECTOR_NAMESPACE
} // namespace lx
