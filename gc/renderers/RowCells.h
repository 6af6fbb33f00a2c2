// Coverage of the pixels of a row, from the samples in it.
#pragma once

#include <algorithm>
#include <array>
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
    // Adds samples to the cells. Which ones it touched is known when it is done.
    class Adder {
    public:
        explicit Adder(RowCells &cells) : cells_(cells) {}
        Adder(const Adder &) = delete;
        Adder &operator=(const Adder &) = delete;
        ~Adder() { touch(); }

        // `times` samples with the same bits below the row.
        void add(uint32_t place, uint32_t times) {
            const uint32_t x = place >> pixelShift;
            if (x / blockPixels != block_) {
                touch();
                block_ = x / blockPixels;
                bits_ = 0;
            }
            bits_ |= uint64_t{1} << x % blockPixels;
            cells_.cells_[x] += times * changes[place % changes.size()];
        }

    private:
        void touch() {
            if (bits_ == 0)
                return;
            cells_.touched_[block_] |= bits_;
            cells_.touchedBlocks_ |= uint32_t{1} << block_;
        }

        RowCells &cells_;
        uint32_t block_ = 0;
        uint64_t bits_ = 0; // of the touched pixels in the block
    };

    // Calls visit(x, sums, change of winding) for each pixel with a sample, from the left, and empties the
    // row.
    template <class Visit>
    void drain(Visit visit) {
        for (; touchedBlocks_ != 0; touchedBlocks_ &= touchedBlocks_ - 1) {
            const auto block = static_cast<uint32_t>(std::countr_zero(touchedBlocks_));
            for (uint64_t bits = touched_[block]; bits != 0; bits &= bits - 1) {
                const uint32_t x = block * blockPixels + static_cast<uint32_t>(std::countr_zero(bits));
                const uint64_t cell = cells_[x];
                cells_[x] = 0;
                visit(static_cast<int32_t>(x),
                      CellSums{static_cast<int32_t>(cell >> riseShift & sumMask),
                               -static_cast<int32_t>(cell & sumMask)},
                      static_cast<int32_t>(static_cast<int64_t>(cell) >> windingShift));
            }
            touched_[block] = 0;
        }
    }

private:
    static constexpr uint32_t blockPixels = 64;
    static constexpr uint32_t blocks = maxPixels / blockPixels;
    static_assert(blocks <= 32);

    // A cell packs the two sums, which only grow and stay below 2^22, and the change of winding above them,
    // which has a sign.
    static constexpr int riseShift = 22;
    static constexpr int windingShift = 44;
    static constexpr uint64_t sumMask = (uint64_t{1} << riseShift) - 1;
    static_assert(int64_t{maxSamples} * sampleParts <= int64_t{sumMask});
    static_assert(maxSamples < 1 << (63 - windingShift));

    // What a sample adds to its cell, by the bits below its pixel.
    static constexpr std::array<uint64_t, 2 *subpixels> changes = [] {
        std::array<uint64_t, 2 *subpixels> table = {};
        constexpr uint64_t windingOne = uint64_t{1} << windingShift;
        for (uint32_t bits = 0; bits < table.size(); ++bits) {
            const auto covered = static_cast<uint64_t>(Sample{bits}.covered());
            table[bits] = Sample{bits}.down() ? windingOne + (covered << riseShift) : covered - windingOne;
        }
        return table;
    }();

    uint64_t cells_[maxPixels];
    uint64_t touched_[blocks]; // a bit for each cell
    uint32_t touchedBlocks_;   // a bit for each word of those
};

} // namespace lx
