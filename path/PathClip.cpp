// Paths: clipping closed polygons to a rectangle, by the method of Liang and Barsky.
//
// Each edge is a line with a parameter t from 0 to 1, and enters and leaves the two strips between the
// rectangle's opposite sides at four values of t. Their order tells whether the edge crosses the rectangle,
// or passes a corner around which the polygon turns: then that corner becomes a vertex of the result.

#include <cmath>
#include <limits>

#include "path/PathBuilder.h"
#include "path/PathIndex.h"
#include "path/PathOperations.h"
#include "path/PathReader.h"

namespace lx {
namespace {

// What stands for a difference of 0, so that no division is by 0.
constexpr double tiny = std::numeric_limits<double>::epsilon();

// One coordinate of an edge, against the strip between two sides.
struct StripCrossing {
    double from;
    double delta;
    double in, out;   // the sides by which the edge's line enters and leaves the strip
    double tIn, tOut; // and the parameters at which it does

    StripCrossing(double a, double b, double low, double high) : from(a), delta(b - a) {
        if (delta == 0)
            delta = a <= low ? tiny : -tiny;
        in = delta > 0 ? low : high;
        out = delta > 0 ? high : low;
        tIn = (in - a) / delta;
        tOut = (out - a) / delta;
    }

    double at(double t) const { return from + delta * t; }
};

class PolygonClipper {
public:
    PolygonClipper(const LxRectD &clip, PathBuilder &out)
        : clip_(clip), finite_(std::isfinite(clip.x0) && std::isfinite(clip.y0) && std::isfinite(clip.x1) &&
                               std::isfinite(clip.y1)),
          out_(out) {}

    // Starts a polygon. Nothing is written before its third vertex is sure.
    void begin(const LxPointD &point) {
        first_ = point;
        last_ = point;
        vertices_ = 1;
        start_ = out_.count();
        emitted_ = false;
    }

    void add(const LxPointD &point) {
        clipEdge(last_, point);
        last_ = point;
        ++vertices_;
    }

    // Ends the polygon where it began. One of two vertices or less, counting that return, leaves nothing; any
    // other leaves at least a close.
    void end() {
        if (last_.x != first_.x || last_.y != first_.y)
            add(first_);
        if (vertices_ > 2)
            out_.close();
        else
            out_.goBackTo(start_);
    }

private:
    bool contains(const LxPointD &p) const {
        return p.x >= clip_.x0 && p.x <= clip_.x1 && p.y >= clip_.y0 && p.y <= clip_.y1;
    }

    // Whether an edge between two places in a strip leaves it behind its end: upright and level edges have
    // but a tiny stand-in for their difference, and that may be too large for the way to the lower side.
    static bool staysInside(double a, double b, double low) { return a != b || a - low >= tiny; }

    void clipEdge(const LxPointD &a, const LxPointD &b) {
        // The usual case, decided without a division: all that the rules below would emit is the end.
        if (finite_ && contains(a) && contains(b) && staysInside(a.x, b.x, clip_.x0) &&
            staysInside(a.y, b.y, clip_.y0)) {
            emit(b);
            return;
        }
        const StripCrossing x(a.x, b.x, clip_.x0, clip_.x1);
        const StripCrossing y(a.y, b.y, clip_.y0, clip_.y1);
        const bool entersYFirst = y.tIn <= x.tIn;
        const double tIn1 = entersYFirst ? y.tIn : x.tIn;
        const double tIn2 = entersYFirst ? x.tIn : y.tIn;
        if (tIn1 > 1)
            return;
        if (tIn1 > 0)
            emit({x.in, y.in});
        if (tIn2 > 1)
            return;
        const bool leavesYFirst = y.tOut <= x.tOut;
        const double tOut1 = leavesYFirst ? y.tOut : x.tOut;
        if (!(tIn2 > 0) && !(tOut1 > 0))
            return;
        const bool entersByY = x.tIn <= y.tIn;
        if (tOut1 < tIn2) {
            emit(entersByY ? LxPointD{x.out, y.in} : LxPointD{x.in, y.out});
            return;
        }
        if (tIn2 > 0)
            emit(entersByY ? LxPointD{x.at(y.tIn), y.in} : LxPointD{x.in, y.at(x.tIn)});
        if (tOut1 < 1)
            emit(leavesYFirst ? LxPointD{x.at(y.tOut), y.out} : LxPointD{x.out, y.at(x.tOut)});
        else
            emit(b);
    }

    void emit(const LxPointD &point) {
        if (emitted_)
            out_.line(point);
        else
            out_.move(point);
        emitted_ = true;
    }

    const LxRectD clip_;
    const bool finite_;
    PathBuilder &out_;
    LxPointD first_ = {};
    LxPointD last_ = {};
    int32_t vertices_ = 0;
    int32_t start_ = 0;    // where the polygon starts in the result
    bool emitted_ = false; // a point of it was written
};

// Reads a path's closed polygons.
class ClipScan {
public:
    ClipScan(const LxPath &path, const LxRectD &clip, PathBuilder &out)
        : path_(path), out_(out), clipper_(clip, out) {}

    // False if the path is to stay as it is: without a close, or with a word that is no item.
    bool run() {
        int32_t position = 0;
        while (position < path_.count) {
            const uint32_t tag = path_.words[position];
            // As in readItems, the branch for lines is there for speed.
            if (tag == kLxPathLine && path_.count - position >= 3) [[likely]] {
                readItem(kLxPathLine, path_.words + position + 1);
                position += 3;
                continue;
            }
            // On purpose: polygon items are stepped over by the index walk's size.
            const int32_t size = tag == kLxPathPolygon ? indexStep(path_, position) : itemSize(tag);
            if (size == 0)
                return false;
            if (size > path_.count - position)
                break;
            readItem(tag, path_.words + position + 1);
            position += size;
        }
        dropOpenPolygon();
        return closed_;
    }

private:
    void readItem(uint32_t tag, const uint32_t *words) {
        switch (tag) {
        case kLxPathMove:
            dropOpenPolygon();
            start_ = pointAt(words);
            hasStart_ = true;
            begin();
            break;
        case kLxPathLine:
            if (hasStart_)
                clipper_.add(pointAt(words));
            break;
        case kLxPathClose:
            closed_ = true;
            if (hasStart_)
                clipper_.end();
            else
                out_.close();
            begin();
            break;
        default:
            break;
        }
    }

    // Lines behind a close, without a move of their own, start from the last move's point as well.
    void begin() {
        if (hasStart_)
            clipper_.begin(start_);
        done_ = out_.count();
    }

    void dropOpenPolygon() { out_.goBackTo(done_); }

    const LxPath &path_;
    PathBuilder &out_;
    PolygonClipper clipper_;
    int32_t done_ = 0; // the words of the result that belong to closed polygons
    bool hasStart_ = false;
    bool closed_ = false;
    LxPointD start_ = {}; // the last move's point
};

} // namespace

bool clipPath(LxPath &path, const LxRectD &clip) {
    PathBuilder out(path.count);
    return !ClipScan(path, clip, out).run() || out.moveInto(path);
}

const LxPath &clipped(const LxPath &path, const LxRectD &clip, PathBuilder &out) {
    out.restart(path.count);
    return ClipScan(path, clip, out).run() && !out.failed() ? out.path() : path;
}

} // namespace lx

void LxPath_Clip(LxPath *path, const LxRectD *clip) {
    if (path != nullptr && clip != nullptr)
        lx::clipPath(*path, *clip);
}
