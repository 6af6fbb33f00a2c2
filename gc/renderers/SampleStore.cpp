#include "gc/renderers/SampleStore.h"

#include <algorithm>
#include <cstdlib>
#include <span>
#include <utility>

#include <oxlume/LxMem.h>

#include "foundation/Library.h"
#include "foundation/Numeric.h"

namespace lx {
namespace {

// An edge in steps of x and quarter rows, and how far the painting has come with it. After dy quarter rows it
// has made dx steps, rounded; the division is done once, and `error` stays between 1 and dy.
struct Edge {
    int32_t firstX, firstY, firstError; // of its first sample
    int32_t end;                        // behind its last quarter row
    int32_t whole, sign;                // steps of x to the next quarter row, and the sign of one more
    int32_t rest, dy;
    uint32_t down;
    int32_t x, y, error; // of its next sample
    Edge *next;          // in the row's list

    void rewind() {
        x = firstX;
        y = firstY;
        error = firstError;
    }

    bool isUpright() const { return (whole | rest) == 0; }

    // The next sample's bits below the row.
    uint32_t place() const { return (x < 0 ? 0 : static_cast<uint32_t>(x) << 1) | down; }

    void step() {
        ++y;
        x += whole;
        error += rest;
        if (error > dy) {
            error -= dy;
            x += sign;
        }
    }

    // The rows from here on that it crosses as a whole at the same place.
    int32_t rowsAlike() const { return isUpright() && y % quarters == 0 ? (end - y) / quarters : 0; }
};

struct Store {
    uint32_t samples[maxSamples];
    uint32_t scratch[maxSamples]; // the other side of the sort
    // Those of the owner's samples, which are not in `samples` as yet.
    Edge edges[maxSamples];
    int32_t edgeCount;
    int32_t firstRow, lastRow;
    uint64_t owner; // 0 for none
    // Some list's samples may be words: what is written over them has to be written.
    bool wordsMatter;
    Edge *waiting[maxPixels + 1]; // by row
    RowCells cells;
};

constinit Store *store = nullptr;

// Owners so far, of all stores.
constinit uint64_t owners = 0;

void releaseStore() {
    LxMem_free(store);
    store = nullptr;
}

const bool registered = (registerModule(Module::rasteriser, {nullptr, releaseStore}), true);

// Writes the samples of the edges as words. Their owner then is none any more.
void writeWords() {
    uint32_t *out = store->samples;
    for (Edge &edge : std::span(store->edges, static_cast<size_t>(store->edgeCount)))
        for (edge.rewind(); edge.y < edge.end; edge.step())
            *out++ = static_cast<uint32_t>(edge.y / quarters) << rowShift | edge.place();
    store->edgeCount = 0;
    store->owner = 0;
    store->wordsMatter = true;
}

// An edge as it comes: ordered by y, and entered at the first row.
struct SteppedEdge {
    int64_t x, y, end;
    int64_t dx, dy, error;
    int64_t sign;
    uint32_t down;

    // False if there is no sample of it.
    bool begin(double x0, double y0, double x1, double y1) {
        int64_t toX = truncateToInt32(x1 * subpixels);
        x = truncateToInt32(x0 * subpixels);
        y = truncateToInt32(y0 * quarters);
        end = truncateToInt32(y1 * quarters);
        down = y < end ? 1 : 0;
        if (!down) {
            std::swap(x, toX);
            std::swap(y, end);
        }
        dx = std::abs(toX - x);
        dy = end - y;
        sign = toX > x ? 1 : -1;
        error = dy;
        return dy != 0;
    }

    // An edge that starts above the first row is entered there.
    void enter() {
        if (y >= 0)
            return;
        // Below 2^63 + 2^33 at the worst.
        const uint64_t ahead =
            static_cast<uint64_t>(dy) + static_cast<uint64_t>(-y) * static_cast<uint64_t>(dx);
        const uint64_t steps = (ahead - 1) / static_cast<uint64_t>(dy);
        error = static_cast<int64_t>(ahead - steps * static_cast<uint64_t>(dy));
        x += sign * static_cast<int64_t>(steps);
        y = 0;
    }

    // Whether all its rows and pixels can be told apart, and its numbers are small.
    bool isPlain() const {
        constexpr int64_t small = 1 << 24;
        constexpr int64_t right = int64_t{maxPixels} * subpixels, bottom = int64_t{maxPixels} * quarters;
        return x < right && x + sign * dx < right && x > -small && dx < small && end <= bottom && dy < small;
    }

    Edge plain() const {
        const auto dx32 = static_cast<uint32_t>(dx), dy32 = static_cast<uint32_t>(dy);
        const uint32_t steps = dx32 < dy32 ? 0 : dx32 / dy32;
        const auto sign32 = static_cast<int32_t>(sign);
        Edge edge;
        edge.firstX = static_cast<int32_t>(x);
        edge.firstY = static_cast<int32_t>(y);
        edge.firstError = static_cast<int32_t>(error);
        edge.end = static_cast<int32_t>(end);
        edge.whole = sign32 * static_cast<int32_t>(steps);
        edge.sign = sign32;
        edge.rest = static_cast<int32_t>(dx32 - steps * dy32);
        edge.dy = static_cast<int32_t>(dy);
        edge.down = down;
        return edge;
    }

    uint32_t *write(uint32_t *out) const {
        const int64_t whole = dx / dy, rest = dx % dy;
        int64_t atX = x, atError = error;
        for (int64_t atY = y; atY < end; ++atY) {
            const uint32_t place = atX < 0 ? 0 : static_cast<uint32_t>(atX) << 1;
            *out++ = static_cast<uint32_t>(atY / quarters) << rowShift | place | down;
            atError += rest;
            const bool more = atError > dy;
            atError -= more ? dy : 0;
            atX += sign * (whole + (more ? 1 : 0));
        }
        return out;
    }
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

void SampleList::restart() {
    if (store != nullptr && owner != 0 && owner == store->owner) {
        if (store->wordsMatter)
            writeWords();
        store->edgeCount = 0;
        store->owner = 0;
    }
    *this = {};
}

void SampleList::addEdge(double x0, double y0, double x1, double y1) {
    SteppedEdge edge;
    if (!edge.begin(x0, y0, x1, y1) || !ensureSampleStore())
        return;
    sorted = false;
    if (edge.end <= 0)
        return;
    edge.enter();
    edge.end = std::min(edge.end, edge.y + maxSamples - count);
    if (edge.y >= edge.end)
        return;
    const bool plain = edge.isPlain();
    if (plain && count == 0) {
        if (store->owner != 0)
            writeWords();
        store->owner = owner = ++owners;
        store->firstRow = maxPixels;
        store->lastRow = -1;
    }
    if (plain && owner != 0 && owner == store->owner) {
        store->edges[store->edgeCount++] = edge.plain();
        store->firstRow = std::min(store->firstRow, static_cast<int32_t>(edge.y) / quarters);
        store->lastRow = std::max(store->lastRow, static_cast<int32_t>(edge.end - 1) / quarters);
    } else {
        writeWords();
        edge.write(store->samples + count);
    }
    count += static_cast<int32_t>(edge.end - edge.y);
}

std::span<const uint32_t> SampleList::sort() {
    if (store == nullptr)
        return {};
    writeWords();
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
    areWords_ = list.owner == 0 || list.owner != store->owner;
    if (areWords_)
        return;
    first_ = store->firstRow;
    last_ = store->lastRow;
    std::fill(store->waiting + first_, store->waiting + last_ + 1, nullptr);
    for (Edge &edge : std::span(store->edges, static_cast<size_t>(store->edgeCount))) {
        edge.rewind();
        edge.next = std::exchange(store->waiting[edge.y / quarters], &edge);
    }
}

namespace {

// Adds an edge's next samples.
inline void addSlanted(Edge &edge, int32_t count, RowCells::Adder &adder) {
    // Not in the record, where the compiler would have to store every step.
    int32_t x = edge.x, error = edge.error;
    const int32_t whole = edge.whole, sign = edge.sign, rest = edge.rest, dy = edge.dy;
    const uint32_t down = edge.down;
    for (int32_t i = 0; i < count; ++i) {
        adder.add(static_cast<uint32_t>(std::max(x, 0)) << 1 | down, 1);
        error += rest;
        const int32_t over = -static_cast<int32_t>(error > dy); // all bits or none
        error -= dy & over;
        x += whole + (sign & over);
    }
    edge.x = x;
    edge.error = error;
    edge.y += count;
}

} // namespace

int32_t SampleRows::read(int32_t y, RowCells &cells) {
    Edge **const waiting = store->waiting + y;
    int32_t rows = last_ + 1 - y;
    for (const Edge *edge = *waiting; edge != nullptr && rows > 0; edge = edge->next)
        rows = std::min(rows, edge->rowsAlike());
    // Up to where another edge begins.
    int32_t alike = 1;
    while (alike < rows && waiting[alike] == nullptr)
        ++alike;

    RowCells::Adder adder(cells);
    for (Edge *edge = *waiting; edge != nullptr;) {
        Edge *const next = edge->next;
        const int32_t end = std::min(edge->end, (y + 1) * quarters);
        if (edge->isUpright()) {
            adder.add(edge->place(), static_cast<uint32_t>(end - edge->y));
            edge->y = end + (alike - 1) * quarters;
        } else if (end - edge->y == quarters) {
            addSlanted(*edge, quarters, adder); // a number that the compiler knows
        } else {
            addSlanted(*edge, end - edge->y, adder);
        }
        if (edge->y < edge->end)
            edge->next = std::exchange(waiting[alike], edge);
        edge = next;
    }
    return alike;
}

} // namespace lx
