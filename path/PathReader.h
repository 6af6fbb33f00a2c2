// Reading a path item by item, by the items' true sizes.
#pragma once

#include <algorithm>
#include <iterator>

#include "path/Path.h"

namespace lx {

// How a walk over the items ended.
enum class WalkEnd {
    complete, // at the end of the path, or at an item that is cut off there
    unknown   // at a word that is no item
};

// The fixed size of an item in words; 0 for a polygon and for what is no item.
constexpr int32_t itemSize(uint32_t tag) {
    constexpr int8_t sizes[] = {1, 3, 3, 5, 7, 8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
    return tag < std::size(sizes) ? sizes[tag] : 0;
}

// The number of points of the polygon item at `position`; those behind the path's count are there as long as
// they lie in its array. Negative if the item leaves the array.
inline int32_t polygonPoints(const LxPath &path, int32_t position) {
    if (position + 1 >= path.capacity)
        return -1;
    const auto n = std::max(0, static_cast<int32_t>(path.words[position + 1]));
    return position + 2 + 2 * int64_t{n} <= path.capacity ? n : -1;
}

// Calls item(tag, position, n) for each item; n is a polygon's number of points. The path is looked at afresh
// after every item, so that the callee may change its words and even its length.
template <class Callee>
WalkEnd readItems(const LxPath &path, Callee item) {
    int64_t position = 0;
    while (position < path.count) {
        const auto at = static_cast<int32_t>(position);
        const uint32_t tag = path.words[at];
        // Most items are lines. The branch lets the processor guess the way to the next item; looked up by
        // its tag, each would have to wait for the one before.
        if (tag == kLxPathLine) [[likely]] {
            if (position + 3 > path.count)
                return WalkEnd::complete;
            item(kLxPathLine, at, 0);
            position += 3;
            continue;
        }
        int64_t size = itemSize(tag);
        int32_t n = 0;
        if (tag == kLxPathPolygon) {
            n = polygonPoints(path, at);
            if (n < 0)
                return WalkEnd::complete;
            size = 2 + 2 * int64_t{n};
        } else if (size == 0) {
            return WalkEnd::unknown;
        } else if (position + size > path.count) {
            return WalkEnd::complete;
        }
        item(tag, at, n);
        position += size;
    }
    return WalkEnd::complete;
}

} // namespace lx
