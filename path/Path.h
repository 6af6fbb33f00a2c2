// The path record and its item stream, for use inside the library.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <utility>

#include <oxlume/LxPath.h>

// Words past `count` are zero until something writes them, and a zero word reads as an item that is nothing.
struct LxPath {
    uint32_t *words;  // the item stream; null until the first item is added
    int32_t count;    // words in use
    int32_t capacity; // words allocated
};

namespace lx {

// The array grows in blocks of this many words, and to no more than LxMem_realloc's 32-bit size can say.
inline constexpr int32_t blockWords = 256;
inline constexpr int32_t maxWords = (1 << 30) - blockWords;

// What is kept for the next path goes no further than this: a quarter of a megabyte.
inline constexpr int32_t maxKeptWords = 1 << 16;

// Raises the capacity by whole blocks until `needed` words fit. False, and nothing changed, without memory.
[[gnu::noinline]] bool growTo(LxPath &path, int64_t needed);

inline bool ensureRoom(LxPath &path, int64_t needed) {
    return needed <= path.capacity || growTo(path, needed);
}

// Frees the array and empties the record.
void clear(LxPath &path);

// Appends the items of `source`, another path.
bool append(LxPath &path, const LxPath &source);

LxPath *createPath();

// ---- Words ----

inline uint32_t wordOf(double coordinate) {
    return std::bit_cast<uint32_t>(static_cast<float>(coordinate));
}

inline double coordinateOf(uint32_t word) {
    return std::bit_cast<float>(word);
}

inline LxPointD pointAt(const uint32_t *words) {
    return {coordinateOf(words[0]), coordinateOf(words[1])};
}

// ---- Items ----

// The words of one item of a fixed size.
template <size_t Size>
using Item = std::array<uint32_t, Size>;

inline Item<3> moveItem(double x, double y) {
    return {kLxPathMove, wordOf(x), wordOf(y)};
}

inline Item<3> lineItem(double x, double y) {
    return {kLxPathLine, wordOf(x), wordOf(y)};
}

inline Item<5> qcurveItem(double cx, double cy, double x, double y) {
    return {kLxPathQCurve, wordOf(cx), wordOf(cy), wordOf(x), wordOf(y)};
}

inline Item<7> curveItem(double c1x, double c1y, double c2x, double c2y, double x, double y) {
    return {kLxPathCurve, wordOf(c1x), wordOf(c1y), wordOf(c2x), wordOf(c2y), wordOf(x), wordOf(y)};
}

inline Item<8> arcItem(double x1, double y1, double x2, double y2, double radius, uint32_t word1,
                       uint32_t word2) {
    return {kLxPathArc, wordOf(x1), wordOf(y1), wordOf(x2), wordOf(y2), wordOf(radius), word1, word2};
}

inline Item<1> closeItem() {
    return {kLxPathClose};
}

template <size_t Size>
uint32_t *write(uint32_t *slot, const Item<Size> &item) {
    // Word by word and without a loop, so that the words go straight from registers to their places: a copy
    // of the whole item would wait for its words to reach memory first.
    [&]<size_t... Index>(std::index_sequence<Index...>) {
        ((slot[Index] = item[Index]), ...);
    }
    (std::make_index_sequence<Size>());
    return slot;
}

// Appends one item: a test of the capacity and the stores. False without memory.
template <size_t Size>
bool append(LxPath &path, const Item<Size> &item) {
    constexpr int32_t size = Size;
    if (path.capacity - path.count < size && !growTo(path, int64_t{path.count} + size)) [[unlikely]]
        return false;
    write(path.words + path.count, item);
    path.count += size;
    return true;
}

} // namespace lx
