#include "sheen/SampleRow.h"

#include "foundation/VectorLevel.h"
#include "geometry/Noise.h"
#include "sheen/Surface.h"

namespace lx {
namespace {

constexpr void (*sampleRows[])(const SheenValues &, SampleRow &) = LX_VECTOR_TABLE(sampleRow);

double positionOf(const SampleRow &row, int x) {
    return row.step * static_cast<float>(x);
}

} // namespace

void sampleRow(const SheenValues &surface, SampleRow &row) {
    const bool readsPlane = (surface.noiseFlags & noiseHeight) != 0;
    if (readsPlane && !noiseCacheIsCurrent()) {
        sampleRowPlainly(surface, row);
        return;
    }
    sampleRows[vectorLevelIndex()](surface, row);
    if (readsPlane && row.count > 0)
        evaluate(surface, positionOf(row, row.count - 1), row.y); // for what it leaves in the cache
}

void sampleRowPlainly(const SheenValues &surface, SampleRow &row) {
    row.first = row.count;
    row.last = -1;
    for (int x = 0; x < row.count; ++x) {
        double height = evaluate(surface, positionOf(row, x), row.y);
        height = height > 1.0 ? 1.0 : height >= 0.0 ? height : 0.0;
        row.out[x] = static_cast<float>(height);
        if (height > 0.0) {
            row.first = row.last < 0 ? x : row.first;
            row.last = x;
        }
    }
}

} // namespace lx
