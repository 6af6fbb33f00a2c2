// The store of samples, one for the process, which rasterisers share.
//
// Samples are words in an array, in the order in which the edges wrote them: that is how shapes wrap, end
// with the store, and overwrite each other. Usually nobody looks at the words. As long as a shape has the
// store for itself and its rows can be told apart, only its edges are kept, and each makes its samples row by
// row while the shape is painted. The words are written out when somebody wants them.
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
    uint64_t owner; // of the edges in the store, if it is the store's owner; else its samples are words

    // Also while there is no store: the samples went with it.
    bool isEmpty() const;

    // Takes all samples away.
    void restart();

    // Adds the samples of an edge, in pixels.
    void addEdge(double x0, double y0, double x1, double y1);

    // The samples in order as numbers; empty while there is no store.
    std::span<const uint32_t> sort();
};

// Makes the store unless it is there. False without memory.
bool ensureSampleStore();

// The samples of a list row by row, made by its edges. Each edge waits in the list of its next row.
class SampleRows {
public:
    // Empty if the list is, or while there is no store.
    explicit SampleRows(const SampleList &list);

    // Whether the list's samples are words, to be sorted; there is then no row to read.
    bool areWords() const { return areWords_; }

    int32_t first() const { return first_; }
    int32_t last() const { return last_; }

    // Adds the samples of the row y to the cells, and answers how many rows from there on have the same ones:
    // one, or more where all edges are upright. To be called for first(), and then for the row behind those,
    // up to last().
    int32_t read(int32_t y, RowCells &cells);

private:
    bool areWords_ = false;
    int32_t first_ = 0, last_ = -1;
};

// The cells of a row, all empty, for the use of one fill. Only while there is a store.
RowCells &sharedCells();

} // namespace lx
