// Coverage of the pixels of a row, from the samples in it.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>

#include "gc/renderers/Samples.h"

namespace lx {

// The parts that the samples of a pixel cover: of edges going down, and (negative) of edges going up.
struct CellSums {
    int32_t rise, fall;
};

// The coverage, 0 to 255, of a pixel with these samples right of edges with this winding.
inline int32_t coverage(const CellSums &sums, int32_t winding, bool nonZero) {
    constexpr int32_t wholePixel = quarters * sampleParts;
    const int32_t c = sums.fall * 256 / wholePixel + winding * 64 + sums.rise * 256 / wholePixel;
    if (nonZero)
        return std::min(std::abs(c), 255);
    return ((c & 256) != 0 ? ~c : c) & 255;
}

// The sums of a row's pixels, filled from samples in any order and read from left to right.
class RowCells {
public:
    void add(uint32_t word) {
        const Sample sample = {word};
        const auto x = static_cast<uint32_t>(sample.x());
        const uint64_t covered = static_cast<uint64_t>(sample.covered());
        cells_[x] += sample.down() ? windingOne + (covered << riseShift) : covered - windingOne;
        touched_[x / 64] |= uint64_t{1} << x % 64;
        touchedWords_ |= uint32_t{1} << x / 64;
    }

    // Calls visit(x, sums, change of winding) for each pixel with a sample, from the left, and empties the
    // row.
    template <class Visit>
    void drain(Visit visit) {
        for (; touchedWords_ != 0; touchedWords_ &= touchedWords_ - 1) {
            const auto i = static_cast<uint32_t>(std::countr_zero(touchedWords_));
            for (uint64_t bits = touched_[i]; bits != 0; bits &= bits - 1) {
                const uint32_t x = i * 64 + static_cast<uint32_t>(std::countr_zero(bits));
                const uint64_t cell = cells_[x];
                cells_[x] = 0;
                visit(static_cast<int32_t>(x),
                      CellSums{static_cast<int32_t>(cell >> riseShift & sumMask),
                               -static_cast<int32_t>(cell & sumMask)},
                      static_cast<int32_t>(static_cast<int64_t>(cell) >> windingShift));
            }
            touched_[i] = 0;
        }
    }

private:
    // A cell packs the two sums, which only grow and stay below 2^22, and the change of winding above them,
    // which has a sign.
    static constexpr int riseShift = 22;
    static constexpr int windingShift = 44;
    static constexpr uint64_t sumMask = (uint64_t{1} << riseShift) - 1;
    static constexpr uint64_t windingOne = uint64_t{1} << windingShift;
    static_assert(int64_t{maxSamples} * sampleParts <= int64_t{sumMask});
    static_assert(maxSamples < 1 << (63 - windingShift));

    uint64_t cells_[maxPixels];
    uint64_t touched_[maxPixels / 64]; // a bit for each cell
    uint32_t touchedWords_;            // a bit for each word of those
    static_assert(maxPixels / 64 <= 32);
};

} // namespace lx
