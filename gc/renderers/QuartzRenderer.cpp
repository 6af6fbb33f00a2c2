// The renderer that draws on Quartz contexts.

#include <oxlume/LxMem.h>
#include <oxlume/LxNativeImage.h>
#include <oxlume/LxQuartz.h>

#include "gc/Renderer.h"
#include "image/Image.h"
#include "path/PathWalk.h"

namespace lx {
namespace {

struct QuartzState {
    CGContextRef context;           // retained, so that the end can still set its transform
    LxCGAffineTransform initialCTM; // the context's transform when the renderer came to it
    LxCGAffineTransform auxCTM;     // all zero; nothing writes it
};

QuartzState &stateOf(LxRenderer *renderer) {
    return *static_cast<QuartzState *>(renderer->privateState);
}

CGContextRef contextOf(LxRenderer *renderer) {
    return stateOf(renderer).context;
}

float narrow(double value) {
    return static_cast<float>(value);
}

void setFillColor(CGContextRef context, LxColor color) {
    float rgba[4];
    LxColor_AsFloatArray(color, rgba);
    CGContextSetRGBFillColor(context, rgba[0], rgba[1], rgba[2], rgba[3]);
}

void setStrokeColor(CGContextRef context, LxColor color) {
    float rgba[4];
    LxColor_AsFloatArray(color, rgba);
    CGContextSetRGBStrokeColor(context, rgba[0], rgba[1], rgba[2], rgba[3]);
}

// ---- Shapes ----

// On purpose: the right and bottom edges stand as the size, which is the bounds only if they begin at (0, 0).
void fill(LxRenderer *renderer, LxColor color) {
    const LxRectD bounds = LxGC_BoundsRect(renderer->gc);
    setFillColor(contextOf(renderer), color);
    CGContextFillRect(contextOf(renderer),
                      {narrow(bounds.x0), narrow(bounds.y0), narrow(bounds.x1), narrow(bounds.y1)});
}

// On purpose: opacity 255 is just under full, whatever the render mode is the line is stroked, and the alpha
// stays for all that is drawn later.
void drawLine(LxRenderer *renderer, double x1, double y1, double x2, double y2) {
    constexpr double alphaOfOpacity = 0.00390625; // 1 / 256
    LxGC *const gc = renderer->gc;
    const CGContextRef context = contextOf(renderer);
    CGContextBeginPath(context);
    CGContextMoveToPoint(context, narrow(x1), narrow(y1));
    CGContextAddLineToPoint(context, narrow(x2), narrow(y2));
    CGContextClosePath(context);
    setStrokeColor(context, LxGC_StrokeColor(gc));
    CGContextSetAlpha(context, narrow(LxGC_StrokeBlendOpacity(gc) * alphaOfOpacity));
    CGContextSetLineWidth(context, narrow(LxGC_StrokeWidth(gc)));
    CGContextStrokePath(context);
}

// Adds a path's subpaths and segments to a context's path. A close is a segment like any other.
class ContextPen : public BasicPen<ContextPen> {
public:
    explicit ContextPen(CGContextRef context) : context_(context) {}
    void subpathBegins(const LxPointD &point) {
        CGContextMoveToPoint(context_, narrow(point.x), narrow(point.y));
    }
    void segment(const LxPointD &, const LxPointD &to) {
        CGContextAddLineToPoint(context_, narrow(to.x), narrow(to.y));
    }

private:
    CGContextRef context_;
};

// The matrix has reached the context by setMatrix. Blends and gradients count for nothing here. With neither
// bit of the render mode the path stays on the context.
void drawPath(LxRenderer *renderer, const LxPath *path) {
    LxGC *const gc = renderer->gc;
    const CGContextRef context = contextOf(renderer);
    const uint32_t mode = LxGC_RenderMode(gc);
    const bool fills = (mode & kLxRenderFill) != 0;
    const bool strokes = (mode & kLxRenderStroke) != 0;
    CGContextBeginPath(context);
    if (path != nullptr) {
        ContextPen pen(context);
        walkItems(*path, nullptr, pen);
    }
    if (fills)
        setFillColor(context, LxGC_FillColor(gc));
    if (strokes) {
        setStrokeColor(context, LxGC_StrokeColor(gc));
        CGContextSetLineWidth(context, narrow(LxGC_StrokeWidth(gc)));
    }
    if (fills || strokes)
        CGContextDrawPath(context, !strokes ? kCGPathFill : !fills ? kCGPathStroke : kCGPathFillStroke);
}

// ---- Target and transform ----

void sync(LxRenderer *renderer) {
    CGContextSynchronize(contextOf(renderer));
}

// On purpose: the second transform is all zero. Nothing shows from here on until the next matrix, which
// begins anew from the initial origin.
void flush(LxRenderer *renderer) {
    const QuartzState &state = stateOf(renderer);
    CGContextConcatCTM(state.context, state.initialCTM);
    CGContextFlush(state.context);
    CGContextConcatCTM(state.context, state.auxCTM);
}

// The present transform is cancelled by its inverse, and the matrix put in its place on the initial origin.
void setMatrix(LxRenderer *renderer, LxMatrix matrix) {
    const QuartzState &state = stateOf(renderer);
    LxMatrix present = LxMatrix_WithCGAffineTransform(CGContextGetCTM(state.context));
    LxMatrix_GetInverse(&present, &present);
    CGContextConcatCTM(state.context, LxMatrix_ToCGAffineTransform(present));
    LxMatrix_Translate(&matrix, state.initialCTM.tx, state.initialCTM.ty);
    CGContextConcatCTM(state.context, LxMatrix_ToCGAffineTransform(matrix));
}

// ---- Images and text ----

void drawCopyOf(CGContextRef context, const LxCGRect &area, const LxImage *image, int32_t mask) {
    const CGImageRef picture = LxImage_CreateCGImageRef(image, mask);
    CGContextDrawImage(context, area, picture);
    CGImageRelease(picture);
}

// The rectangle is the size to draw. On purpose: the mask is a drawing of its own under the image and clips
// nothing, and the blend counts for nothing.
void drawImage(LxRenderer *renderer, int32_t x, int32_t y, LxImage *image, LxImage *mask, const LxRectL *rect,
               const LxBlend *) {
    const CGContextRef context = contextOf(renderer);
    void *const handle = LxImage_NativeHandle(image);
    LxGC_TransposeL(renderer->gc, &x, &y);
    LxCGRect area = LxRectL_asCGRect(rect != nullptr ? *rect : LxImage_RectL(image));
    area.x = static_cast<float>(x);
    area.y = static_cast<float>(y);
    CGContextSetInterpolationQuality(context, kCGInterpolationNone);
    if (mask != nullptr)
        drawCopyOf(context, area, mask, 1);
    if (handle != nullptr)
        CGContextDrawImage(context, area, static_cast<CGImageRef>(handle));
    else
        drawCopyOf(context, area, image, 0);
}

void drawText(LxRenderer *renderer, double x, double y, const char *text, int32_t length) {
    const CGContextRef context = contextOf(renderer);
    CGContextSelectFont(context, "Helvetica", 10, kCGEncodingMacRoman);
    CGContextSaveGState(context);
    setFillColor(context, LxGC_TextColor(renderer->gc));
    CGContextSetTextDrawingMode(context, kCGTextFill);
    CGContextShowTextAtPoint(context, narrow(x), narrow(y), text,
                             length > 0 ? static_cast<size_t>(length) : 0);
    CGContextRestoreGState(context);
}

// ---- The kind ----

bool create(LxRenderer &renderer, void *target) {
    if (target == nullptr)
        return false;
    auto *state = static_cast<QuartzState *>(LxMem_calloc(1, sizeof(QuartzState)));
    if (state == nullptr)
        return false;
    state->context = CGContextRetain(static_cast<CGContextRef>(target));
    state->initialCTM = CGContextGetCTM(state->context);
    renderer.privateState = state;
    renderer.fill = fill;
    renderer.line = drawLine;
    renderer.path = drawPath;
    renderer.sync = sync;
    renderer.flush = flush;
    renderer.spare = [](LxRenderer *) {};
    renderer.setMatrix = setMatrix;
    renderer.drawImage = drawImage;
    renderer.drawText = drawText;
    return true;
}

void remove(LxRenderer *renderer) {
    QuartzState &state = stateOf(renderer);
    CGContextConcatCTM(state.context, state.initialCTM);
    state.initialCTM = CGContextGetCTM(state.context);
    CGContextRelease(state.context);
    LxMem_free(&state);
    LxMem_free(renderer);
}

// The image that stands for the platform while the library runs. Nothing reads it.
constinit LxImage *standing = nullptr;

int32_t start() {
    if (standing == nullptr)
        standing = LxImage_CreateNative(kLxPixelRGBA, 0, 0, 1, 1, 1, 1, 0);
    return standing != nullptr;
}

// Not marked as native, the image leaves the objects made for it to us.
void end() {
    if (standing == nullptr)
        return;
    CGImageRelease(static_cast<CGImageRef>(standing->nativeHandle));
    CGDataProviderRelease(static_cast<CGDataProviderRef>(standing->dataProvider));
    LxImage_Delete(standing);
    standing = nullptr;
}

constexpr RendererKind quartzKind = {create, remove, start, end};

const bool registered = (registerRendererKind(RendererFamily::quartz, &quartzKind), true);

} // namespace
} // namespace lx
