// Summing the displacements of a row, line by line: the loop over the pixels is innermost, so that the
// compiler makes vectors of it. Each pixel's sums still grow in the order of the lines, by the same
// operations, and come out the same to the bit at every level.

// The headers of C: an inline function of C++ could be merged with that of another level.
#include <math.h> // NOLINT(modernize-deprecated-headers)

#include "morph/MorphRow.h"

namespace lx::LX_VECTOR_NAMESPACE {
namespace {

// 0.001 in single precision: keeps pixels on a line from an infinite weight.
constexpr double nearness = 0.0010000000474974513;

// Sums and products of integers keep their low 32 bits.
using Wrapping = uint32_t;

inline float asFloat(Wrapping value) {
    return static_cast<float>(static_cast<int32_t>(value));
}

void addLine(float *__restrict sumX, float *__restrict sumY, float *__restrict sumWeight,
             const MorphPair &pair, int32_t y, int32_t width) {
    const LxMorphLine line = pair.frame;
    const auto dx = static_cast<Wrapping>(line.dx);
    const auto dy = static_cast<Wrapping>(line.dy);
    const Wrapping ey = static_cast<Wrapping>(y) - static_cast<Wrapping>(line.y0);
    const Wrapping gy = static_cast<Wrapping>(y) - static_cast<Wrapping>(line.y1);
    const MorphPair p = pair;
    const auto rowY = static_cast<float>(y);
    for (int32_t x = 0; x < width; ++x) {
        const Wrapping ex = static_cast<Wrapping>(x) - static_cast<Wrapping>(line.x0);
        const Wrapping gx = static_cast<Wrapping>(x) - static_cast<Wrapping>(line.x1);
        const float u = asFloat(ex * dx + ey * dy) / p.lengthSquared;
        const float v = asFloat(dx * ey - dy * ex) / line.length;
        // Beside the line the distance is |v|; before and behind it, that to the end.
        const bool before = u <= 0.0f;
        const bool behind = u >= 1.0f;
        const float toEnd = sqrtf(asFloat(before ? ex * ex + ey * ey : gx * gx + gy * gy));
        const float distance = before || behind ? toEnd : fabsf(v);
        const double strength = p.weightOfLength / (static_cast<double>(distance) + nearness);
        const auto weight = static_cast<float>(strength * strength);
        const float px = p.sx0 + p.sdx * u - p.sdy * v / p.sLength;
        const float py = p.sy0 + p.sdy * u + v * p.sdx / p.sLength;
        sumX[x] += (px - static_cast<float>(x)) * weight;
        sumY[x] += (py - rowY) * weight;
        sumWeight[x] += weight;
    }
}

} // namespace

void morphRow(const MorphSums &sums, const MorphPair *pairs, size_t pairCount, int32_t y, int32_t width) {
    for (int32_t x = 0; x < width; ++x)
        sums.x[x] = sums.y[x] = sums.weight[x] = 0.0f;
    for (size_t i = 0; i < pairCount; ++i)
        addLine(sums.x, sums.y, sums.weight, pairs[i], y, width);
}

} // namespace lx::LX_VECTOR_NAMESPACE
