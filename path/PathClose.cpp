// Paths: the closing test, and mending what it finds open.

#include <cmath>
#include <optional>

#include "path/Path.h"
#include "path/PathIndex.h"
#include "path/PathReader.h"

namespace lx {
namespace {

// What one run of the closing test found.
struct ClosingTest {
    int32_t moves = 0;
    int32_t closed = 0;     // subpaths that came back to their start
    bool unknown = false;   // a word that is no item ended the run
    int32_t gap = -1;       // the item in front of which a line is missing; the run ended there
    LxPointD gapStart = {}; // where that line leads
};

class ClosingWalk {
public:
    ClosingWalk(const LxPath &path, bool stopAtGap) : path_(path), stopAtGap_(stopAtGap) {}

    ClosingTest run() {
        int64_t position = 0;
        while (position < path_.count) {
            const int64_t step = readItem(static_cast<int32_t>(position));
            if (step == 0)
                break;
            position += step;
            ++item_;
        }
        return test_;
    }

private:
    // Takes in one item and answers the step to the next, or 0 to end the walk.
    int64_t readItem(int32_t position) {
        const uint32_t *words = path_.words + position;
        const int32_t left = path_.count - position;
        switch (words[0]) {
        case kLxPathNothing:
            return 1;
        case kLxPathMove:
            return left >= 3 && passMove(pointAt(words + 1)) ? 3 : 0;
        case kLxPathLine:
            return left >= 3 ? endAt(words + 1, 3) : 0;
        case kLxPathQCurve:
        case kLxPathArc:
            // On purpose: an arc is stepped into as if it were a quadratic curve, and its radius is read as
            // the next item.
            return left >= 5 ? endAt(words + 3, 5) : 0;
        case kLxPathCurve:
            return left >= 7 ? endAt(words + 5, 7) : 0;
        case kLxPathPolygon:
            return passPolygon(position);
        case kLxPathClose:
            return passClose() ? 1 : 0;
        default:
            test_.unknown = true;
            return 0;
        }
    }

    int64_t endAt(const uint32_t *point, int64_t step) {
        end_ = pointAt(point);
        return step;
    }

    int64_t passPolygon(int32_t position) {
        const int32_t n = polygonPoints(path_, position);
        if (n < 0)
            return 0;
        const int64_t size = 2 + 2 * int64_t{n};
        return n > 0 ? endAt(path_.words + position + size - 2, size) : size;
    }

    bool passMove(const LxPointD &point) {
        if (start_) {
            const bool reached = startReached();
            if (!reached && stopAtGap_)
                return stopHere();
            if (reached && !hasClose_)
                ++test_.closed;
        }
        ++test_.moves;
        start_ = point;
        end_ = point;
        hasClose_ = false;
        counted_ = false;
        return true;
    }

    bool passClose() {
        // A close in front of any move has nothing to return to.
        if (!start_)
            return true;
        const bool reached = startReached();
        if (!reached && stopAtGap_)
            return stopHere();
        if (reached && !counted_) {
            ++test_.closed;
            counted_ = true;
        }
        hasClose_ = true;
        return true;
    }

    // A start that is not a number counts as reached: no line could ever reach it.
    bool startReached() const {
        if (std::isnan(start_->x) || std::isnan(start_->y))
            return true;
        return start_->x == end_.x && start_->y == end_.y;
    }

    bool stopHere() {
        test_.gap = item_;
        test_.gapStart = *start_;
        return false;
    }

    const LxPath &path_;
    const bool stopAtGap_;
    ClosingTest test_;
    int32_t item_ = 0;
    std::optional<LxPointD> start_; // of the current subpath; none before the first move
    LxPointD end_ = {};             // the latest end point
    bool hasClose_ = false;         // the subpath had a close item
    bool counted_ = false;          // and was counted as closed at one
};

bool isClosed(const ClosingTest &test) {
    return !test.unknown && test.moves == test.closed;
}

bool closeAndMend(LxPath &path) {
    int32_t lastGap = -1;
    for (int32_t gapsLeft = path.count;; --gapsLeft) {
        const ClosingTest test = ClosingWalk(path, true).run();
        if (test.gap < 0)
            return isClosed(test);
        // Behind polygons and arcs the index walk goes astray and the line lands somewhere else; mending then
        // would never come to an end.
        if (test.gap <= lastGap || gapsLeft == 0)
            return false;
        if (!insertLine(path, test.gap, test.gapStart.x, test.gapStart.y))
            return false;
        lastGap = test.gap;
    }
}

} // namespace
} // namespace lx

using namespace lx;

int32_t LxPath_Close(LxPath *path, int32_t mend) {
    if (path == nullptr)
        return 0;
    return mend != 0 ? closeAndMend(*path) : LxPath_isClosed(path);
}

int32_t LxPath_isClosed(const LxPath *path) {
    return path != nullptr && isClosed(ClosingWalk(*path, false).run());
}
