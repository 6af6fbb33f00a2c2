// The operations that every renderer starts from.

#include "gc/RendererDefaults.h"

#include <algorithm>
#include <cstdlib>

#include "gc/Context.h"
#include "geometry/Rect.h"

namespace lx {
namespace {

// ---- Through the slot `path` ----

// Draws the path that `build` makes of an empty one. Without memory for it nothing is drawn.
template <class Build>
void drawBuilt(LxRenderer *renderer, Build build) {
    renderer->gc->figure.restart(blockWords);
    LxPath &path = renderer->gc->figure.path();
    if (path.capacity == 0)
        return;
    build(&path);
    renderer->path(renderer, &path);
}

void drawLine(LxRenderer *renderer, double x1, double y1, double x2, double y2) {
    drawBuilt(renderer, [=](LxPath *path) { LxPath_AddLine(path, x1, y1, x2, y2); });
}

void drawFrame(LxRenderer *renderer, double x1, double y1, double x2, double y2, double radiusX,
               double radiusY) {
    const LxRectD rect = LxRectD_Make(x1, y1, x2, y2);
    drawBuilt(renderer, [&](LxPath *path) { LxPath_AddRect(path, &rect, radiusX, radiusY); });
}

void drawEllipse(LxRenderer *renderer, double cx, double cy, double radiusX, double radiusY) {
    drawBuilt(renderer, [=](LxPath *path) { LxPath_AddEllipse(path, cx, cy, radiusX, radiusY); });
}

void drawPoly(LxRenderer *renderer, const LxPointD *points, int32_t n) {
    drawBuilt(renderer, [=](LxPath *path) { LxPath_AddPoly(path, points, n); });
}

// ---- Over the slot `pixel` ----

// On purpose: always the stroke's colour and blend, also as a part of a fill, and never a gradient.
void drawRow(LxRenderer *renderer, int32_t x1, int32_t x2, int32_t y) {
    const LxRectL clip = covering(LxGC_ClipRect(renderer->gc));
    const LxColor color = LxGC_StrokeColor(renderer->gc);
    const LxBlend blend = LxGC_StrokeBlend(renderer->gc);
    if (y < clip.y0 || y >= clip.y1)
        return;
    if (x1 > x2)
        std::swap(x1, x2);
    if (x1 > clip.x1)
        return;
    x1 = std::max(x1, clip.x0);
    if (x2 >= clip.x1)
        x2 = wrappingSubtract(clip.x1, 1);
    for (int64_t x = x1; x <= x2; ++x)
        renderer->pixel(renderer, static_cast<int32_t>(x), y, &color, &blend);
}

// One axis of a walk from pixel to pixel.
struct Axis {
    int64_t position, end, step, extent2;

    Axis(int32_t from, int32_t to)
        : position(from), end(to), step(to >= from ? 1 : -1), extent2(2 * std::abs(end - position)) {}
};

// Bresenham's walk, both ends included: a step of `major` for each pixel, and of `minor` when the error says.
// `x` and `y` are these two axes in one order or the other.
template <class Plot>
void walk(Axis &major, Axis &minor, Plot plot) {
    int64_t error = minor.extent2 - major.extent2 / 2;
    for (;;) {
        plot();
        if (major.position == major.end)
            return;
        if (error >= 0) {
            minor.position += minor.step;
            error -= major.extent2;
        }
        error += minor.extent2;
        major.position += major.step;
    }
}

void drawPixelLine(LxRenderer *renderer, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    if (LxGC_StrokeGradient(renderer->gc) != nullptr)
        return; // On purpose: lines of whole pixels have no gradients.
    const LxColor color = LxGC_StrokeColor(renderer->gc);
    const LxBlend blend = LxGC_StrokeBlend(renderer->gc);
    Axis x(x1, x2);
    Axis y(y1, y2);
    const auto plot = [&] {
        renderer->pixel(renderer, static_cast<int32_t>(x.position), static_cast<int32_t>(y.position), &color,
                        &blend);
    };
    if (x.extent2 > y.extent2)
        walk(x, y, plot);
    else
        walk(y, x, plot);
}

// On purpose: the fill includes row y2 and column x2, the outline neither.
void drawPixelFrame(LxRenderer *renderer, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    const uint32_t mode = LxGC_RenderMode(renderer->gc);
    if ((mode & kLxRenderFill) != 0)
        for (int64_t y = y1; y <= y2; ++y)
            renderer->hLine(renderer, x1, x2, static_cast<int32_t>(y));
    if ((mode & kLxRenderStroke) != 0) {
        const int32_t right = wrappingSubtract(x2, 1);
        const int32_t bottom = wrappingSubtract(y2, 1);
        renderer->lineL(renderer, x1, y1, right, y1);
        renderer->lineL(renderer, right, wrappingAdd(y1, 1), right, bottom);
        renderer->lineL(renderer, wrappingSubtract(x2, 2), bottom, x1, bottom);
        renderer->lineL(renderer, x1, wrappingSubtract(y2, 2), x1, wrappingAdd(y1, 1));
    }
}

// ---- Nothing ----

// Takes what a slot takes and does nothing.
template <class... Arguments>
void ignore(LxRenderer *, Arguments...) {}

} // namespace

constinit const LxRenderer defaultRenderer = {
    .pixel = ignore,
    .fill = ignore,
    .pixelColor = [](LxRenderer *) { return LxColor_RGBA_White; },
    .line = drawLine,
    .frame = drawFrame,
    .ellipse = drawEllipse,
    .poly = drawPoly,
    .path = ignore,
    .sync = ignore,
    .flush = ignore,
    .resize = ignore,
    .spare = ignore,
    .setMatrix = ignore,
    .drawImage = ignore,
    .spare2 = [](LxRenderer *) { return 0; },
    .drawText = ignore,
    .hLine = drawRow,
    .vLine = ignore,
    .lineL = drawPixelLine,
    .frameL = drawPixelFrame,
    // On purpose: it answers the render mode and draws nothing.
    .ellipseL = [](LxRenderer *renderer, int32_t, int32_t, int32_t,
                   int32_t) { return LxGC_RenderMode(renderer->gc); },
    .gc = nullptr,
    .kind = 0,
    .privateState = nullptr,
};

} // namespace lx
