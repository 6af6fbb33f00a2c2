// Draw calls in whole pixels: the context transforms and clips for the renderers.

#include <algorithm>

#include "gc/Context.h"
#include "geometry/Rect.h"

namespace lx {
namespace {

// Brings the ends of a run in order and cuts it to `low` up to, but not including, `high`. False if it
// misses. On purpose: a run that begins at `high` passes, turned around: from `high` to the pixel before.
bool clipRun(int32_t &first, int32_t &last, int32_t low, int32_t high) {
    if (first > last)
        std::swap(first, last);
    if (high < first)
        return false;
    first = std::max(first, low);
    if (last >= high)
        last = wrappingSubtract(high, 1);
    return low <= last;
}

} // namespace
} // namespace lx

using namespace lx;

void LxGC_HLineL(LxGC *gc, int32_t x1, int32_t x2, int32_t y) {
    if (gc == nullptr)
        return;
    // On purpose: the second end is transformed with y equal to 0, and only its x counts.
    int32_t unusedY = 0;
    LxGC_TransposeL(gc, &x1, &y);
    LxGC_TransposeL(gc, &x2, &unusedY);
    const LxRectL clip = covering(gc->clip);
    if (y >= clip.y0 && y < clip.y1 && clipRun(x1, x2, clip.x0, clip.x1))
        forward(*gc, &LxRenderer::hLine, x1, x2, y);
}

void LxGC_VLineL(LxGC *gc, int32_t x, int32_t y1, int32_t y2) {
    if (gc == nullptr)
        return;
    int32_t unusedX = 0; // As the row's second y.
    LxGC_TransposeL(gc, &x, &y1);
    LxGC_TransposeL(gc, &unusedX, &y2);
    const LxRectL clip = covering(gc->clip);
    if (x >= clip.x0 && x < clip.x1 && clipRun(y1, y2, clip.y0, clip.y1))
        forward(*gc, &LxRenderer::vLine, x, y1, y2);
}

void LxGC_LineL(LxGC *gc, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    if (gc == nullptr)
        return;
    LxGC_TransposeL(gc, &x1, &y1);
    LxGC_TransposeL(gc, &x2, &y2);
    if (LxRectD_clipLineL(gc->clip, &x1, &y1, &x2, &y2) != 0)
        forward(*gc, &LxRenderer::lineL, x1, y1, x2, y2);
}

void LxGC_ALineL(LxGC *gc, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    LxGC_LineL(gc, x1, y1, x2, y2);
}

void LxGC_FrameL(LxGC *gc, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    if (gc != nullptr)
        forward(*gc, &LxRenderer::frameL, x1, y1, x2, y2);
}

void LxGC_EllipseL(LxGC *gc, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    if (gc != nullptr)
        forward(*gc, &LxRenderer::ellipseL, x1, y1, x2, y2);
}
