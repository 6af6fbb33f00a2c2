// The store of samples, one for the process, which rasterisers share.
#pragma once

#include <cstdint>
#include <span>

#include "gc/renderers/RowCells.h"
#include "gc/renderers/Samples.h"

namespace lx {

// A rasteriser's part of the store: its samples, unless another wrote its own over them.
struct SampleList {
    int32_t count;
    bool sorted;

    // Also while there is no store: the samples went with it.
    bool isEmpty() const;

    // Adds the samples of an edge, in pixels.
    void addEdge(double x0, double y0, double x1, double y1);

    // The samples in order as numbers; empty while there is no store.
    std::span<const uint32_t> sort();
};

// Makes the store unless it is there. False without memory.
bool ensureSampleStore();

// The samples of a list row by row, in any order inside a row.
//
// They are not sorted: each edge wrote its samples from the top down, so the list is made of runs in which
// rows never fall, and reading row by row takes what each run has next. Every run waits in the list of the
// row of its next sample.
class SampleRows {
public:
    // Empty if the list is, or while there is no store.
    explicit SampleRows(const SampleList &list);

    // Whether some samples lie below the rows that can be told apart; there is then no row to read.
    bool wrapped() const { return last_ >= maxPixels; }

    int32_t first() const { return first_; }
    int32_t last() const { return last_; }

    // Adds the next row's samples to the cells: to be called for each row from first() to last().
    void read(int32_t y, RowCells &cells);

private:
    const uint32_t *end_ = nullptr;
    int32_t first_ = 0, last_ = -1;
};

// The cells of a row, all empty, for the use of one fill. Only while there is a store.
RowCells &sharedCells();

} // namespace lx
