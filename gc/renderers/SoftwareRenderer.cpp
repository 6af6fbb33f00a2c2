// The renderer that draws into images.

#include <new>

#include <oxlume/LxMem.h>

#include "gc/Renderer.h"
#include "gc/Shader.h"
#include "gc/renderers/Raster.h"
#include "path/PathOperations.h"
#include "path/PathWalk.h"

namespace lx {
namespace {

struct SoftwareState {
    LxImage *target;
    LxRaster *raster;
    PathScratch scratch;
};

SoftwareState &stateOf(LxRenderer *renderer) {
    return *static_cast<SoftwareState *>(renderer->privateState);
}

// ---- Paths ----

// Hands each straight segment to the rasteriser.
class EdgePen : public BasicPen<EdgePen> {
public:
    explicit EdgePen(LxRaster *raster) : raster_(raster) {}
    void segment(const LxPointD &from, const LxPointD &to) {
        LxRaster_AddEdge(raster_, from.x, from.y, to.x, to.y);
    }

private:
    LxRaster *raster_;
};

// What a fill or a stroke is painted with.
struct Ink {
    LxGradient *gradient; // goes before the colour
    LxColor color;
    LxBlend blend;
};

// Fills a path of the target's own coordinates.
void paint(const SoftwareState &state, const LxPath *path, Ink ink) {
    if (path == nullptr)
        return;
    LxRaster_Restart(state.raster);
    EdgePen pen(state.raster);
    walkItems(*path, nullptr, pen);
    LxShader shader;
    if (ink.gradient != nullptr)
        LxCreate_GradientShader(&shader, ink.gradient);
    else
        shader = solidShader(ink.color.content.rgba);
    LxRaster_Fill(state.raster, state.target, &ink.blend, &shader);
    // Nobody will paint these edges again: the store need not keep them for this rasteriser.
    LxRaster_Restart(state.raster);
}

void drawPath(LxRenderer *renderer, const LxPath *path) {
    if (path == nullptr)
        return;
    SoftwareState &state = stateOf(renderer);
    LxGC *const gc = renderer->gc;
    const uint32_t mode = LxGC_RenderMode(gc);
    const LxMatrix &matrix = *LxGC_Matrix(gc);
    const LxRectD &clip = *LxGC_ClipRectPtr(gc);
    if ((mode & kLxRenderFill) != 0)
        paint(state, transformed(*path, matrix, clip, state.scratch),
              {LxGC_FillGradient(gc), LxGC_FillColor(gc), LxGC_FillBlend(gc)});
    if ((mode & kLxRenderStroke) != 0)
        paint(state, outlined(*path, matrix, clip, LxGC_StrokeWidth(gc), LxGC_StrokeStyle(gc), state.scratch),
              {LxGC_StrokeGradient(gc), LxGC_StrokeColor(gc), LxGC_StrokeBlend(gc)});
}

// ---- The other slots ----

void drawPixel(LxRenderer *renderer, int32_t x, int32_t y, const LxColor *color, const LxBlend *blend) {
    LxBlend_Image_Pixel(stateOf(renderer).target, *color, blend, x, y);
}

void fill(LxRenderer *renderer, LxColor color) {
    LxImage_Fill(stateOf(renderer).target, color);
}

LxColor pixelColor(LxRenderer *) {
    return LxColor_RGBA_t(LxRGBA_White);
}

void drawImage(LxRenderer *renderer, int32_t x, int32_t y, LxImage *image, LxImage *mask, const LxRectL *rect,
               const LxBlend *blend) {
    if (image == nullptr || blend == nullptr)
        return;
    LxGC_TransposeL(renderer->gc, &x, &y);
    const LxPointL place = LxImage_Pos(image);
    LxImage_MutableMoveTo(image, x, y);
    LxBlend local = *blend; // a masked call marks its blend
    LxBlend_Image_Image(&local, stateOf(renderer).target, image, mask, rect);
    LxImage_MutableMoveTo(image, place.x, place.y);
}

// ---- The kind ----

bool create(LxRenderer &renderer, void *target) {
    void *const memory = LxMem_malloc(sizeof(SoftwareState));
    LxRaster *const raster = LxRaster_Create(1);
    if (memory == nullptr || raster == nullptr) {
        LxRaster_Delete(raster);
        LxMem_free(memory);
        return false;
    }
    auto *state = new (memory) SoftwareState{static_cast<LxImage *>(target), raster, {}};
    renderer.privateState = state;
    renderer.pixel = drawPixel;
    renderer.fill = fill;
    renderer.pixelColor = pixelColor;
    renderer.path = drawPath;
    renderer.drawImage = drawImage;
    // Nothing is ever pending on an image.
    renderer.sync = [](LxRenderer *) {};
    renderer.flush = [](LxRenderer *) {};
    renderer.resize = [](LxRenderer *, int32_t, int32_t) {};
    renderer.spare2 = [](LxRenderer *) -> int32_t { return 0; };
    return true;
}

void remove(LxRenderer *renderer) {
    LxRaster_Delete(stateOf(renderer).raster);
    stateOf(renderer).~SoftwareState();
    LxMem_free(renderer->privateState);
    LxMem_free(renderer);
}

constexpr RendererKind softwareKind = {create, remove, [] { return int32_t{1}; }, [] {}};

const bool registered = (registerRendererKind(RendererFamily::software, &softwareKind), true);

} // namespace
} // namespace lx
