// The record through which clients walk a path, for use inside the library.
#pragma once

#include <oxlume/LxPathIterator.h>

struct LxPathIterator {
    uint32_t flags; // lx::noSubpath: no subpath is open, the next move starts one

    // One slot per kind of item, and one for each end of the walk.
    void (*begin)(LxPathIterator *);
    void (*moveTo)(LxPathIterator *, const LxPointD *point);
    void (*lineTo)(LxPathIterator *, const LxPointD *point);
    void (*qcurveTo)(LxPathIterator *, const LxPointD *control, const LxPointD *end);
    void (*curveTo)(LxPathIterator *, const LxPointD *control1, const LxPointD *control2,
                    const LxPointD *end);
    void (*arcTo)(LxPathIterator *, const LxPointD *point1, const LxPointD *point2, double radius,
                  uint32_t word1, uint32_t word2);
    void (*close)(LxPathIterator *);
    void (*end)(LxPathIterator *); // not called when a word that is no item ends the walk

    LxPathMoveCallback onMove;
    LxPathSegmentCallback onSegment;
    LxPathEndCallback onSubpathEnd;
    void *user;
    void *data;

    int32_t segments; // since `begin`
    int32_t steps;    // for a quadratic curve
    double step;      // 1 / steps
    double step2;     // step squared
    double step3;     // step cubed; nothing reads it
    LxPointD start;   // of the current subpath
    LxPointD current; // the pen

    // The iterator as a pen: see Flatten.h.
    void subpathBegins(const LxPointD &point) { onMove(this, &point); }
    void segment(const LxPointD &from, const LxPointD &to) { onSegment(this, &from, &to); }
    void subpathEnds() { onSubpathEnd(this); }
};

namespace lx {

// Fills a zeroed record with the default slots.
void setDefaultSlots(LxPathIterator &iterator);

// What LxPath_Iterate calls in place of the slots of the same names: pointers into the stored words, for
// editing in place. Installed by casting to the slot's own type.
using MutablePointSlot = void (*)(LxPathIterator *, float *x, float *y);
using MutableQCurveSlot = void (*)(LxPathIterator *, float *cx, float *cy, float *x, float *y);
using MutableCurveSlot = void (*)(LxPathIterator *, float *c1x, float *c1y, float *c2x, float *c2y, float *x,
                                  float *y);
using MutableArcSlot = void (*)(LxPathIterator *, float *x1, float *y1, float *x2, float *y2, float *radius,
                                uint32_t *word1, uint32_t *word2);

} // namespace lx
