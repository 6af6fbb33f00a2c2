// The rasteriser's record, in front of its two forms.

#include "gc/renderers/Raster.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include <oxlume/LxMem.h>

#include "foundation/Numeric.h"

namespace lx {
namespace {

// Where the bounds start. On purpose: they are no infinities, so coordinates beyond a million widen the
// bounds on one side only.
constexpr double boundsStart = 1000000.0;

const RasterForm *formOf(int32_t kind) {
    switch (kind) {
    case 0:
        return &plainForm;
    case 1:
    case 2:
        return &coverageForm;
    default:
        return nullptr;
    }
}

void reset(LxRaster &raster) {
    constexpr double empty[] = {boundsStart, boundsStart, -boundsStart, -boundsStart};
    std::copy(std::begin(empty), std::end(empty), raster.bounds);
    raster.nonZero = 1;
    raster.boundsEmpty = 1;
}

void widen(LxRaster &raster, double x, double y) {
    double *bounds = raster.bounds;
    bounds[0] = x < bounds[0] ? x : bounds[0];
    bounds[1] = y < bounds[1] ? y : bounds[1];
    bounds[2] = x > bounds[2] ? x : bounds[2];
    bounds[3] = y > bounds[3] ? y : bounds[3];
    raster.boundsEmpty = 0;
}

} // namespace

LxColor beginFill(LxRaster &raster, LxShader &shader) {
    if (shader.begin != nullptr)
        shader.begin(&shader, raster.bounds);
    LxColor color = LxColor_RGBA_Black;
    shader.color(&color, &shader, truncateToInt32(std::floor(raster.bounds[0] + 0.5)),
                 truncateToInt32(std::floor(raster.bounds[1] + 0.5)), 255);
    return color;
}

} // namespace lx

using namespace lx;

LxRaster *LxRaster_Create(int32_t kind) {
    auto *raster = static_cast<LxRaster *>(LxMem_calloc(1, sizeof(LxRaster)));
    if (raster == nullptr)
        return nullptr;
    raster->kind = kind;
    reset(*raster);
    const RasterForm *form = formOf(kind);
    if (form == nullptr)
        return raster;
    raster->store = form->createStore();
    if (raster->store == nullptr)
        return raster;
    raster->restart = form->restart;
    raster->addEdge = form->addEdge;
    raster->fill = form->fill;
    return raster;
}

void LxRaster_Delete(LxRaster *raster) {
    if (raster == nullptr)
        return;
    if (raster->store != nullptr)
        formOf(raster->kind)->deleteStore(raster->store);
    LxMem_free(raster);
}

int32_t LxRaster_Restart(LxRaster *raster) {
    if (raster == nullptr || raster->restart == nullptr)
        return 0;
    reset(*raster);
    return raster->restart(raster);
}

void LxRaster_AddEdge(LxRaster *raster, double x0, double y0, double x1, double y1) {
    if (raster == nullptr || raster->addEdge == nullptr || (x0 == x1 && y0 == y1))
        return;
    widen(*raster, x0, y0);
    widen(*raster, x1, y1);
    raster->addEdge(raster, x0, y0, x1, y1);
}

void LxRaster_Fill(LxRaster *raster, LxImage *image, const LxBlend *blend, LxShader *shader) {
    if (raster != nullptr && raster->fill != nullptr && image != nullptr && blend != nullptr &&
        shader != nullptr && shader->color != nullptr)
        raster->fill(raster, image, blend, shader);
}
