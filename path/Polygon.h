// The polygon item. On purpose it counts for fewer words than it writes: room is made for all of them, but
// the path's count ends short of the last points, and the next item lands on them.
#pragma once

#include <algorithm>

#include "path/Path.h"

namespace lx {

class PolygonItem {
public:
    PolygonItem(const LxPointD *points, int32_t n) : points_(points), n_(n) {}

    int64_t wordsCounted() const { return pairs() + 1; }
    int64_t wordsWritten() const { return 2 + 2 * pairs(); }

    // Writes all words and answers the one behind the last.
    uint32_t *write(uint32_t *slot) const {
        *slot++ = kLxPathPolygon;
        *slot++ = static_cast<uint32_t>(n_);
        for (int32_t i = 0; i < n_; ++i) {
            *slot++ = wordOf(points_[i].x);
            *slot++ = wordOf(points_[i].y);
        }
        return slot;
    }

private:
    int64_t pairs() const { return std::max(n_, 0); }

    const LxPointD *points_;
    int32_t n_;
};

} // namespace lx
