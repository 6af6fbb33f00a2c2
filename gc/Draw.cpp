// Draw calls that are forwarded as they stand.

#include "gc/Context.h"

namespace lx {
namespace {

// Forwards unless there is no context.
template <class Slot, class... Arguments>
void forwardFrom(const LxGC *gc, Slot slot, const Arguments &...arguments) {
    if (gc != nullptr)
        forward(*gc, slot, arguments...);
}

// All renderers get one copy of the blend as it is now.
void drawImage(const LxGC *gc, int32_t x, int32_t y, LxImage *image, LxImage *mask, const LxRectL *rect) {
    const LxBlend blend = LxGC_ImageBlend(gc);
    forwardFrom(gc, &LxRenderer::drawImage, x, y, image, mask, rect, &blend);
}

} // namespace
} // namespace lx

using namespace lx;

void LxGC_Line(LxGC *gc, double x1, double y1, double x2, double y2) {
    forwardFrom(gc, &LxRenderer::line, x1, y1, x2, y2);
}

void LxGC_Frame(LxGC *gc, double x1, double y1, double x2, double y2) {
    LxGC_RoundFrame(gc, x1, y1, x2, y2, 0, 0);
}

void LxGC_RoundFrame(LxGC *gc, double x1, double y1, double x2, double y2, double radiusX, double radiusY) {
    forwardFrom(gc, &LxRenderer::frame, x1, y1, x2, y2, radiusX, radiusY);
}

void LxGC_Ellipse(LxGC *gc, double cx, double cy, double radiusX, double radiusY) {
    forwardFrom(gc, &LxRenderer::ellipse, cx, cy, radiusX, radiusY);
}

void LxGC_Circle(LxGC *gc, double cx, double cy, double radius) {
    LxGC_Ellipse(gc, cx, cy, radius, radius);
}

void LxGC_Poly(LxGC *gc, const LxPointD *points, int32_t n) {
    forwardFrom(gc, &LxRenderer::poly, points, n);
}

void LxGC_Path(LxGC *gc, const LxPath *path) {
    forwardFrom(gc, &LxRenderer::path, path);
}

void LxGC_Fill(LxGC *gc, LxColor color) {
    forwardFrom(gc, &LxRenderer::fill, color);
}

void LxGC_Clear(LxGC *gc) {
    LxGC_Fill(gc, LxColor_L(0));
}

void LxGC_Sync(LxGC *gc) {
    forwardFrom(gc, &LxRenderer::sync);
}

// Renderer by renderer: the first has flushed before the second is waited for.
void LxGC_Flush(LxGC *gc) {
    if (gc == nullptr)
        return;
    for (int32_t i = 0; i < gc->rendererCount; ++i) {
        LxRenderer *renderer = gc->renderers[i];
        for (const auto slot : {&LxRenderer::sync, &LxRenderer::flush})
            if (renderer->*slot != nullptr)
                (renderer->*slot)(renderer);
    }
}

void LxGC_DrawImage(LxGC *gc, LxImage *image) {
    drawImage(gc, LxImage_x(image), LxImage_y(image), image, nullptr, nullptr);
}

void LxGC_DrawImageAt(LxGC *gc, int32_t x, int32_t y, LxImage *image) {
    drawImage(gc, x, y, image, nullptr, nullptr);
}

void LxGC_DrawImageWithMask(LxGC *gc, int32_t x, int32_t y, LxImage *image, LxImage *mask) {
    drawImage(gc, x, y, image, mask, nullptr);
}

void LxGC_DrawImageClipped(LxGC *gc, int32_t x, int32_t y, LxImage *image, LxRectL rect) {
    drawImage(gc, x, y, image, nullptr, &rect);
}

void LxGC_DrawImageClippedWithMask(LxGC *gc, int32_t x, int32_t y, LxImage *image, LxImage *mask,
                                   LxRectL rect) {
    drawImage(gc, x, y, image, mask, &rect);
}

// On purpose: no renderer measures the string, so a length of 0 draws nothing.
void LxGC_DrawText(LxGC *gc, double x, double y, const char *text) {
    LxGC_DrawTextWithLength(gc, x, y, text, 0);
}

void LxGC_DrawTextWithLength(LxGC *gc, double x, double y, const char *text, int32_t length) {
    forwardFrom(gc, &LxRenderer::drawText, x, y, text, length);
}

void LxGC_DrawTextInRectW(LxGC *, LxRectD, const uint16_t *, int32_t) {}

double LxGC_GetTextWidth(LxGC *, const char *) {
    return 0;
}

double LxGC_GetTextWidthWithLength(LxGC *, const char *, int32_t) {
    return 0;
}

LxImage *LxGC_GetImage(LxGC *) {
    return nullptr;
}
