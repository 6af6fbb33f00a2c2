// Paths: the closing test, and mending what it finds open.

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>
#include <vector>

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

// A place in the words where a line is missing, and where that line leads.
struct Gap {
    int32_t position;
    LxPointD start;
};

class ClosingWalk {
public:
    ClosingWalk(const LxPath &path, bool stopAtGap) : path_(path), stopAtGap_(stopAtGap) {}

    ClosingTest run() {
        while (position_ < path_.count) {
            const int64_t step = readItem(static_cast<int32_t>(position_));
            if (step == 0)
                break;
            position_ += step;
            ++item_;
        }
        return test_;
    }

    // All gaps up to the first item that the index walk would step over by another size, as they are once the
    // line of each is there.
    std::vector<Gap> gaps() {
        std::vector<Gap> found;
        gaps_ = &found;
        while (position_ < path_.count) {
            const uint32_t tag = path_.words[position_];
            const int64_t step =
                tag == kLxPathArc || tag == kLxPathPolygon ? 0 : readItem(static_cast<int32_t>(position_));
            if (step == 0)
                break;
            position_ += step;
        }
        return found;
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
            const bool reached = startReached() || lineIsAdded();
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
        const bool reached = startReached() || lineIsAdded();
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

    // Where gaps are collected, notes one and goes on behind its line.
    bool lineIsAdded() {
        if (gaps_ == nullptr)
            return false;
        gaps_->push_back({static_cast<int32_t>(position_), *start_});
        end_ = *start_;
        return true;
    }

    bool stopHere() {
        test_.gap = item_;
        test_.gapStart = *start_;
        return false;
    }

    const LxPath &path_;
    const bool stopAtGap_;
    ClosingTest test_;
    std::vector<Gap> *gaps_ = nullptr;
    int64_t position_ = 0;
    int32_t item_ = 0;
    std::optional<LxPointD> start_; // of the current subpath; none before the first move
    LxPointD end_ = {};             // the latest end point
    bool hasClose_ = false;         // the subpath had a close item
    bool counted_ = false;          // and was counted as closed at one
};

bool isClosed(const ClosingTest &test) {
    return !test.unknown && test.moves == test.closed;
}

// Adds the lines of many gaps at once. False, and nothing changed, without memory.
bool fill(LxPath &path, const std::vector<Gap> &gaps) {
    constexpr int32_t lineWords = 3;
    const auto added = lineWords * static_cast<int64_t>(gaps.size());
    if (!ensureRoom(path, path.count + added))
        return false;
    uint32_t *end = path.words + path.count;
    uint32_t *to = end + added;
    for (auto gap = gaps.rbegin(); gap != gaps.rend(); ++gap) {
        uint32_t *const behind = path.words + gap->position;
        to = std::copy_backward(behind, end, to) - lineWords;
        write(to, lineItem(gap->start.x, gap->start.y));
        end = behind;
    }
    path.count += static_cast<int32_t>(added);
    return true;
}

// Mends the path as far as lines can be added without a new walk for each, and answers how many were.
int32_t mendAtOnce(LxPath &path) {
    try {
        const std::vector<Gap> gaps = ClosingWalk(path, false).gaps();
        return fill(path, gaps) ? static_cast<int32_t>(gaps.size()) : 0;
    } catch (const std::bad_alloc &) {
        return 0;
    }
}

bool closeAndMend(LxPath &path) {
    int32_t lastGap = -1;
    const int32_t mostGaps = path.count;
    for (int32_t gapsLeft = mostGaps - mendAtOnce(path);; --gapsLeft) {
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
