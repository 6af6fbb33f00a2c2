// Paths: the polygon that covers a stroke.
//
// The stroker draws a path as any pen does and offsets each segment to both sides. The negative side runs
// with the line and is written straight to the result. The positive side runs back, so it is written from its
// end to its beginning, and added when the subpath (or, by style, the item) is done. Both make one ribbon.

#include <algorithm>
#include <limits>

#include <oxlume/LxMem.h>

#include "geometry/Line.h"
#include "path/PathBuilder.h"
#include "path/PathOperations.h"
#include "path/PathWalk.h"

namespace lx {
namespace {

// Two points nearer than the smallest step of a double at 1 are the same to the stroker.
bool coincide(double from, double to) {
    constexpr double tolerance = std::numeric_limits<double>::epsilon();
    const bool rising = to >= from;
    // Single ampersands: the direction of a line is nothing that the processor could guess.
    return (rising & (from >= to - tolerance)) | (!rising & (to + tolerance >= from));
}

// The lines across a segment at its ends.
struct CrossLines {
    LxLineD head = {};
    LxLineD tail = {};
};

// The edges that cross lines make: their first points the positive side, their second points the negative.
LxLineD positiveEdge(const CrossLines &lines) {
    return {lines.head.x0, lines.head.y0, lines.tail.x0, lines.tail.y0};
}

LxLineD negativeEdge(const CrossLines &lines) {
    return {lines.head.x1, lines.head.y1, lines.tail.x1, lines.tail.y1};
}

class StrokingPen : public BasicPen<StrokingPen> {
public:
    StrokingPen(PathBuilder &out, BackwardBuilder &positive, double width, int32_t style)
        : out_(out), positive_(positive), halfWidth_(width * 0.5), items_((style & kLxStrokeItems) != 0),
          mitred_((style & (kLxStrokeMitre | kLxStrokeMitreToo)) != 0) {}

    // The walk is over. An open subpath still has to be joined, unless a word that is no item cut it short.
    void finish(WalkEnd walkEnd) {
        if (walkEnd == WalkEnd::complete && (flags & noSubpath) == 0)
            joinSides();
        dropSides();
    }

    void moveTo(const LxPointD &point) {
        if ((flags & noSubpath) == 0)
            joinSides();
        dropSides();
        atStart_ = true;
        BasicPen::moveTo(point);
    }
    void lineTo(const LxPointD &point) {
        newItem_ = true;
        BasicPen::lineTo(point);
    }
    void qcurveTo(const LxPointD &control, const LxPointD &end) {
        newItem_ = true;
        BasicPen::qcurveTo(control, end);
    }
    void curveTo(const LxPointD &control1, const LxPointD &control2, const LxPointD &end) {
        newItem_ = true;
        BasicPen::curveTo(control1, control2, end);
    }
    void arcTo(const LxPointD &, const LxPointD &, double, uint32_t, uint32_t) { newItem_ = true; }
    void close() {
        newItem_ = true;
        BasicPen::close();
        if (!items_) {
            // On purpose: the ends of the two rings are written even if the subpath had no segment, with
            // what is left of an earlier one.
            if (mitred_)
                addJoin(first_);
            positive_.add(moveItem(startHead_.x0, startHead_.y0));
            out_.close();
        }
        joinSides();
    }

    void segment(const LxPointD &from, const LxPointD &to) {
        if (coincide(from.x, to.x) && coincide(from.y, to.y))
            return;
        const LxLineD line = {from.x, from.y, to.x, to.y};
        const CrossLines lines = {perpendicular(line, from, halfWidth_), perpendicular(line, to, halfWidth_)};
        if (newItem_)
            beginItem(lines);
        addPositive(head(lines.tail));
        addNegative(tail(lines.tail));
        last_ = lines;
    }

private:
    // Only the first segment of an item starts at its own cross line; the rest of a curve goes from tail to
    // tail.
    void beginItem(const CrossLines &lines) {
        if (items_) {
            joinSides();
            beginRibbon(lines);
        } else if (atStart_) {
            beginRibbon(lines);
            startHead_ = lines.head;
            first_ = lines;
            atStart_ = false;
        } else if (mitred_) {
            addJoin(lines);
        }
        newItem_ = false;
        addPositive(head(lines.head));
        addNegative(tail(lines.head));
    }

    void beginRibbon(const CrossLines &lines) {
        positive_.add(closeItem());
        out_.move(tail(lines.head));
    }

    // The corner of the outer side, where the latest edge meets the edge of `next`. There is no limit to how
    // far away that is. A line that goes straight on has no outer side.
    void addJoin(const CrossLines &next) {
        const double turn = orientation(next.head, last_.tail.x0, last_.tail.y0);
        if (turn < 0)
            addPositive(intersection(positiveEdge(last_), positiveEdge(next)));
        else if (turn > 0)
            addNegative(intersection(negativeEdge(last_), negativeEdge(next)));
    }

    void addPositive(const LxPointD &point) { positive_.add(lineItem(point.x, point.y)); }
    void addNegative(const LxPointD &point) { out_.line(point); }

    // The negative side stands at the end of the result already: the positive side follows it.
    void joinSides() {
        out_.add(positive_.words(), positive_.count());
        positive_.makeEmpty();
        joined_ = out_.count();
    }
    void dropSides() {
        out_.goBackTo(joined_);
        positive_.makeEmpty();
    }

    PathBuilder &out_;
    int32_t joined_ = 0; // the words of the result that are done
    BackwardBuilder &positive_;
    const double halfWidth_;
    const bool items_; // a ribbon of its own for every item
    const bool mitred_;
    bool atStart_ = false; // no segment of this subpath has been seen
    bool newItem_ = false; // an item began; its first segment must join
    LxLineD startHead_ = {};
    CrossLines first_; // of the subpath's first segment
    CrossLines last_;  // of the latest segment
};

// False without memory.
bool outline(const LxPath &path, double width, int32_t style, PathBuilder &out, BackwardBuilder &positive) {
    // A line becomes two or three on either side. What is expected of long paths has a limit, as memory that
    // is not needed may not be there.
    constexpr int64_t maxExpected = 1 << 20;
    const int64_t side = std::min(3 * int64_t{path.count}, maxExpected);
    out.restart(2 * side);
    positive.restart(side);
    StrokingPen pen(out, positive, width, style);
    pen.finish(walkItems(path, nullptr, pen));
    return !positive.failed();
}

} // namespace

const LxPath *outlined(const LxPath &path, const LxMatrix &matrix, const LxRectD &clip, double width,
                       int32_t style, PathScratch &scratch) {
    if (!outline(path, width, style, scratch.words, scratch.backward) || scratch.words.failed())
        return nullptr;
    transformPath(scratch.words.path(), matrix);
    return &clipped(scratch.words.path(), clip, scratch.clippedWords);
}

} // namespace lx

using namespace lx;

LxPath *LxPath_CreateOutlined(const LxPath *path, const LxMatrix *matrix, const LxRectD *clip, double width,
                              int32_t style) {
    if (path == nullptr)
        return nullptr;
    PathBuilder out;
    BackwardBuilder positive;
    LxPath *result = outline(*path, width, style, out, positive) ? out.moveIntoNewPath() : nullptr;
    if (result == nullptr)
        return nullptr;
    if (matrix != nullptr)
        transformPath(*result, *matrix);
    if (clip != nullptr)
        clipPath(*result, *clip);
    return result;
}

void LxPath_Outline(LxPath *path, const LxMatrix *matrix, const LxRectD *clip, double width, int32_t style) {
    LxPath *result = LxPath_CreateOutlined(path, matrix, clip, width, style);
    if (result == nullptr)
        return;
    std::swap(*path, *result);
    LxPath_Delete(result);
}
