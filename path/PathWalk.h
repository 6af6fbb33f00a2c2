// Walking a path's items with their points widened and transformed, and pens that such a walk drives.
#pragma once

#include <oxlume/LxMatrix.h>

#include "geometry/Matrix.h"
#include "path/Flatten.h"
#include "path/PathReader.h"

namespace lx {

// Calls receiver.moveTo(p), lineTo(p), qcurveTo(control, p), curveTo(control1, control2, p),
// arcTo(p1, p2, radius, word1, word2) and close() for each item; a polygon is a run of lines.
template <class Receiver>
WalkEnd walkItems(const LxPath &path, const LxMatrix *matrix, Receiver &receiver) {
    return readItems(path, [&](uint32_t tag, int32_t position, int32_t n) {
        const uint32_t *words = path.words + position + 1;
        const auto point = [&](int32_t i) {
            const LxPointD p = pointAt(words + 2 * i);
            return matrix != nullptr ? transform(*matrix, p) : p;
        };
        switch (tag) {
        case kLxPathMove:
            receiver.moveTo(point(0));
            break;
        case kLxPathLine:
            receiver.lineTo(point(0));
            break;
        case kLxPathQCurve:
            receiver.qcurveTo(point(0), point(1));
            break;
        case kLxPathCurve:
            receiver.curveTo(point(0), point(1), point(2));
            break;
        case kLxPathArc:
            receiver.arcTo(point(0), point(1), coordinateOf(words[4]), words[5], words[6]);
            break;
        case kLxPathPolygon:
            for (int32_t i = 0; i < n; ++i) {
                // The receiver may have changed the path.
                if (position + 4 + 2 * int64_t{i} > path.capacity)
                    break;
                words = path.words + position + 2;
                receiver.lineTo(point(i));
            }
            break;
        case kLxPathClose:
            receiver.close();
            break;
        default:
            break;
        }
    });
}

// A pen with the default behaviour for every item, to be derived from. A derived pen hides what it does
// otherwise.
template <class Derived>
class BasicPen : public PenState {
public:
    void moveTo(const LxPointD &point) { drawMove(self(), point); }
    void lineTo(const LxPointD &point) { drawLine(self(), point); }
    void qcurveTo(const LxPointD &control, const LxPointD &end) {
        drawQuadratic(self(), control, end, quadraticSteps, quadraticStep, quadraticStep * quadraticStep);
    }
    void curveTo(const LxPointD &control1, const LxPointD &control2, const LxPointD &end) {
        drawCubic(self(), control1, control2, end);
    }
    void arcTo(const LxPointD &, const LxPointD &, double, uint32_t, uint32_t) {}
    void close() { drawClose(self()); }

    void subpathBegins(const LxPointD &) {}
    void subpathEnds() {}

private:
    Derived &self() { return static_cast<Derived &>(*this); }
};

} // namespace lx
