// A context's rectangles and matrix.

#include "gc/Context.h"
#include "geometry/Matrix.h"
#include "geometry/Rect.h"

namespace lx {
namespace {

// The one result of LxGC_InverseMatrix.
constinit LxMatrix inverseResult = identityMatrix;

constexpr double radiansPerDegree = 0.017453292519943295;

void tellRenderers(const LxGC &gc) {
    forward(gc, &LxRenderer::setMatrix, gc.matrix);
}

void setBounds(LxGC &gc, const LxRectD &bounds) {
    gc.bounds = bounds;
    deriveClip(gc, gc.clip);
}

void resetMatrix(LxGC &gc) {
    gc.matrix = identityMatrix;
    LxMatrix_Translate(&gc.matrix, gc.originX, gc.originY);
}

} // namespace

// On purpose: a clip that misses the bounds widens to all of them rather than to nothing.
void deriveClip(LxGC &gc, const LxRectD &rect) {
    gc.clip = isIntersecting(gc.bounds, rect) ? intersect(gc.bounds, rect) : gc.bounds;
}

} // namespace lx

using namespace lx;

void LxGC_SetBoundsRectD(LxGC *gc, double x0, double y0, double x1, double y1) {
    if (gc != nullptr)
        setBounds(*gc, LxRectD_Make(x0, y0, x1, y1));
}

void LxGC_SetBoundsRectL(LxGC *gc, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    if (gc != nullptr)
        setBounds(*gc, LxRectD_fromL({x0, y0, x1, y1}));
}

void LxGC_SetClipRectD(LxGC *gc, double x0, double y0, double x1, double y1) {
    if (gc != nullptr)
        deriveClip(*gc, LxRectD_Make(x0, y0, x1, y1));
}

void LxGC_SetClipRectL(LxGC *gc, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    if (gc != nullptr)
        deriveClip(*gc, LxRectD_fromL({x0, y0, x1, y1}));
}

void LxGC_SetClip(LxGC *gc, double x0, double y0, double x1, double y1) {
    LxGC_SetClipRectD(gc, x0, y0, x1, y1);
}

LxRectD LxGC_ClipRect(const LxGC *gc) {
    return *LxGC_ClipRectPtr(gc);
}

LxRectD LxGC_BoundsRect(const LxGC *gc) {
    return *LxGC_BoundsRectPtr(gc);
}

const LxRectD *LxGC_ClipRectPtr(const LxGC *gc) {
    return gc != nullptr ? &gc->clip : &LxRectD_0;
}

const LxRectD *LxGC_BoundsRectPtr(const LxGC *gc) {
    return gc != nullptr ? &gc->bounds : &LxRectD_0;
}

LxMatrix *LxGC_Matrix(LxGC *gc) {
    return gc != nullptr ? &gc->matrix : nullptr;
}

void LxGC_SetOrigin(LxGC *gc, double x, double y) {
    if (gc == nullptr)
        return;
    gc->originX = x;
    gc->originY = y;
    resetMatrix(*gc); // On purpose: the renderers are not told.
}

void LxGC_MatrixIdentity(LxGC *gc) {
    if (gc == nullptr)
        return;
    resetMatrix(*gc);
    tellRenderers(*gc);
}

void LxGC_MatrixMul(LxGC *gc, const LxMatrix *other) {
    if (gc == nullptr || other == nullptr)
        return;
    LxMatrix_MulMat(&gc->matrix, other);
    tellRenderers(*gc);
}

void LxGC_MatrixScale(LxGC *gc, double sx, double sy) {
    if (gc == nullptr)
        return;
    gc->scaleX = sx;
    gc->scaleY = sy;
    LxMatrix_Scale(&gc->matrix, sx, sy);
    tellRenderers(*gc);
}

void LxGC_MatrixTranslate(LxGC *gc, double x, double y) {
    if (gc == nullptr)
        return;
    gc->translateX = x;
    gc->translateY = y;
    LxMatrix_Translate(&gc->matrix, x, y);
    tellRenderers(*gc);
}

void LxGC_MatrixRotate(LxGC *gc, double radians) {
    if (gc == nullptr)
        return;
    gc->rotation = radians;
    LxMatrix_Rotate(&gc->matrix, radians);
    tellRenderers(*gc);
}

void LxGC_MatrixRotateDeg(LxGC *gc, double degrees) {
    LxGC_MatrixRotate(gc, degrees * radiansPerDegree);
}

const LxMatrix *LxGC_InverseMatrix(const LxGC *gc) {
    if (gc != nullptr)
        LxMatrix_GetInverse(&inverseResult, &gc->matrix);
    return &inverseResult;
}

void LxGC_TransposeL(const LxGC *gc, int32_t *x, int32_t *y) {
    if (gc != nullptr)
        LxMatrix_MulCoordL(&gc->matrix, x, y);
}

void LxGC_TransposeD(const LxGC *gc, double *x, double *y) {
    if (gc != nullptr)
        LxMatrix_MulCoordD(&gc->matrix, x, y);
}
