#include "gc/renderers/SampleStore.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <oxlume/LxMem.h>

#include "foundation/Library.h"
#include "foundation/Numeric.h"

namespace lx {
namespace {

// Samples in which rows never fall, from the next one on.
struct Run {
    const uint32_t *word;
    Run *next; // in the row's list
};

struct Store {
    uint32_t samples[maxSamples];
    uint32_t scratch[maxSamples]; // the other side of the sort
    Run runs[maxSamples];
    Run *waiting[maxPixels]; // by row
    RowCells cells;
};

constinit Store *store = nullptr;

void releaseStore() {
    LxMem_free(store);
    store = nullptr;
}

const bool registered = (registerModule(Module::rasteriser, {nullptr, releaseStore}), true);

// A way in whole steps of x and rows of y, rounded so that after dy rows it has made dx steps. The division
// is done once; `error` stays between 1 and dy.
class Slope {
public:
    Slope(int64_t dx, int64_t dy) : dy_(dy), whole_(dx / dy), rest_(dx % dy), error_(dy) {}

    // The steps of x down to the row `rows` below the start.
    int64_t skip(int64_t rows, int64_t dx) {
        // Below 2^63 + 2^33 at the worst.
        const uint64_t error =
            static_cast<uint64_t>(dy_) + static_cast<uint64_t>(rows) * static_cast<uint64_t>(dx);
        const uint64_t steps = (error - 1) / static_cast<uint64_t>(dy_);
        error_ = static_cast<int64_t>(error - steps * static_cast<uint64_t>(dy_));
        return static_cast<int64_t>(steps);
    }

    // The steps of x to the next row.
    int64_t next() {
        error_ += rest_;
        if (error_ <= dy_)
            return whole_;
        error_ -= dy_;
        return whole_ + 1;
    }

private:
    int64_t dy_, whole_, rest_, error_;
};

// Sorts by the byte at `shift` from one half into the other.
void sortByByte(const uint32_t *from, uint32_t *to, int32_t count, int shift) {
    uint32_t places[256] = {};
    for (int32_t i = 0; i < count; ++i)
        ++places[from[i] >> shift & 255];
    uint32_t place = 0;
    for (uint32_t &p : places)
        place += std::exchange(p, place);
    for (int32_t i = 0; i < count; ++i)
        to[places[from[i] >> shift & 255]++] = from[i];
}

} // namespace

bool ensureSampleStore() {
    if (store == nullptr)
        store = static_cast<Store *>(LxMem_calloc(1, sizeof(Store)));
    return store != nullptr;
}

RowCells &sharedCells() {
    return store->cells;
}

bool SampleList::isEmpty() const {
    return count == 0 || store == nullptr;
}

void SampleList::addEdge(double x0, double y0, double x1, double y1) {
    int64_t fromX = truncateToInt32(x0 * subpixels), toX = truncateToInt32(x1 * subpixels);
    int64_t fromY = truncateToInt32(y0 * quarters), toY = truncateToInt32(y1 * quarters);
    if (fromY == toY || !ensureSampleStore())
        return;
    const uint32_t down = fromY < toY ? 1 : 0;
    if (!down) {
        std::swap(fromX, toX);
        std::swap(fromY, toY);
    }
    sorted = false;
    if (toY <= 0)
        return;

    const int64_t dx = std::abs(toX - fromX);
    const int64_t sign = toX > fromX ? 1 : -1;
    Slope slope(dx, toY - fromY);
    int64_t x = fromX;
    // An edge that starts above the first row is entered there.
    if (fromY < 0) {
        x += sign * slope.skip(-fromY, dx);
        fromY = 0;
    }
    const int64_t end = std::min(toY, fromY + maxSamples - count);
    uint32_t *out = store->samples + count;
    for (int64_t y = fromY; y < end; ++y) {
        const uint32_t place = x < 0 ? 0 : static_cast<uint32_t>(x) << 1;
        *out++ = static_cast<uint32_t>(y / quarters) << rowShift | place | down;
        x += sign * slope.next();
    }
    count = static_cast<int32_t>(out - store->samples);
}

std::span<const uint32_t> SampleList::sort() {
    if (store == nullptr)
        return {};
    if (!sorted) {
        for (const int shift : {0, 16}) {
            sortByByte(store->samples, store->scratch, count, shift);
            sortByByte(store->scratch, store->samples, count, shift + 8);
        }
        sorted = true;
    }
    return {store->samples, static_cast<size_t>(count)};
}

SampleRows::SampleRows(const SampleList &list) {
    if (list.isEmpty())
        return;
    end_ = store->samples + list.count;
    Run *runEnd = store->runs;
    uint32_t low = UINT32_MAX, high = 0, above = UINT32_MAX;
    for (const uint32_t *word = store->samples; word != end_; ++word) {
        const uint32_t y = *word >> rowShift;
        if (y < above) {
            runEnd++->word = word;
            low = std::min(low, y);
        }
        high = std::max(high, y);
        above = y;
    }
    first_ = static_cast<int32_t>(low);
    last_ = static_cast<int32_t>(high);
    if (wrapped())
        return;
    std::fill(store->waiting + low, store->waiting + high + 1, nullptr);
    for (Run *run = store->runs; run != runEnd; ++run)
        run->next = std::exchange(store->waiting[*run->word >> rowShift], run);
}

void SampleRows::read(int32_t y, RowCells &cells) {
    const auto row = static_cast<uint32_t>(y);
    for (Run *run = store->waiting[row]; run != nullptr;) {
        run->word = cells.add(run->word, end_, row);
        Run *const next = run->next;
        // The run goes on if it is not at the end, and its next row has not fallen behind: that would be
        // another run.
        if (run->word != end_ && *run->word >> rowShift > row)
            run->next = std::exchange(store->waiting[*run->word >> rowShift], run);
        run = next;
    }
}

} // namespace lx
