// Making and deleting contexts, and attaching renderers.

#include "gc/Context.h"

#include <new>

#include <oxlume/LxMem.h>

#include "geometry/Matrix.h"
#include "geometry/Rect.h"
#include "image/Image.h"

namespace lx {
namespace {

constinit ViewContextFunctions viewContexts = {nullptr, nullptr};

bool addRenderer(LxGC &gc, int32_t kind, void *target) {
    if (gc.rendererCount == maxRenderers)
        return false;
    LxRenderer *renderer = LxRenderer_Create(&gc, kind, target);
    if (renderer == nullptr)
        return false;
    gc.renderers[gc.rendererCount++] = renderer;
    return true;
}

// A context that draws on `target`, or null.
LxGC *createOn(const LxRectD &bounds, const LxRectD &clip, int32_t kind, void *target) {
    LxGC *gc = LxGC_CreateWithRect(bounds, clip);
    if (gc == nullptr || addRenderer(*gc, kind, target))
        return gc;
    LxGC_Delete(gc);
    return nullptr;
}

const bool registered = (registerImageContexts({LxGC_CreateWithImage, LxGC_Delete}), true);

} // namespace

void registerViewContexts(ViewContextFunctions functions) {
    viewContexts = functions;
}

} // namespace lx

using namespace lx;

LxGC *LxGC_Create(void) {
    void *memory = LxMem_malloc(sizeof(LxGC));
    if (memory == nullptr)
        return nullptr;
    LxGC *gc = new (memory) LxGC{};
    gc->matrix = identityMatrix;
    gc->spareMatrix = identityMatrix;
    gc->renderMode = kLxRenderStroke;
    setInitialAttributes(*gc);
    return gc;
}

LxGC *LxGC_CreateWithRect(LxRectD bounds, LxRectD clip) {
    LxGC *gc = LxGC_Create();
    if (gc != nullptr) {
        gc->bounds = bounds;
        deriveClip(*gc, clip);
    }
    return gc;
}

LxGC *LxGC_CreateWithImage(LxImage *image, LxRectD clip) {
    LxRectD bounds = LxImage_RectD(image);
    LxRectD_moveTo(&bounds, 0, 0);
    return createOn(bounds, clip, kLxRendererSoftware, image);
}

LxGC *LxGC_CreateWithCGContextRef(void *context, LxRectD rect) {
    return createOn(rect, rect, kLxRendererQuartz, context);
}

LxGC *LxGC_CreateWithOpenGLContext(void *context, LxRectD rect) {
    return createOn(rect, rect, kLxRendererOpenGL, context);
}

LxGC *LxGC_CreateWithNSOpenGLView(void *view) {
    return viewContexts.forOpenGLView != nullptr ? viewContexts.forOpenGLView(view) : nullptr;
}

LxGC *LxGC_CreateWithNSView(void *view) {
    return viewContexts.forView != nullptr ? viewContexts.forView(view) : nullptr;
}

LxGC *LxGC_CreateWithQuickDrawPort(void *) {
    return nullptr;
}

int32_t LxGC_AddRenderer(LxGC *gc, int32_t kind, void *target, void *) {
    return gc != nullptr && addRenderer(*gc, kind, target);
}

void LxGC_Delete(LxGC *gc) {
    if (gc == nullptr)
        return;
    for (int32_t i = 0; i < gc->rendererCount; ++i)
        LxRenderer_Delete(gc->renderers[i]);
    gc->~LxGC();
    LxMem_free(gc);
}

void LxGC_Reshape(LxGC *, int32_t, int32_t) {}
