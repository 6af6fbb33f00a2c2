// The polygon rasteriser: takes edges, then fills what they enclose through a shader and a blend.
//
// It comes in two forms behind one record: the coverage form, which the software renderer uses, smooths
// edges; the plain form fills whole pixels between sorted edges. Not for two threads at once: the coverage
// form's store is one for the process.
#pragma once

#include <cstdint>

#include <oxlume/LxBlend.h>
#include <oxlume/LxGradient.h>
#include <oxlume/LxImage.h>

struct LxRaster {
    int32_t (*restart)(LxRaster *raster);
    void (*addEdge)(LxRaster *raster, double x0, double y0, double x1, double y1);
    void (*fill)(LxRaster *raster, LxImage *image, const LxBlend *blend, LxShader *shader);
    void *store;      // the form's own
    int32_t kind;     // 0 plain form, 1 and 2 coverage form; others have no operations
    int32_t nonZero;  // coverage counts by the non-zero rule; nothing in the library clears it
    double bounds[4]; // minX, minY, maxX, maxY of the edges; inside out while there is none
    int32_t boundsEmpty;
};

namespace lx {

// What a form of the rasteriser puts into the record.
struct RasterForm {
    decltype(LxRaster::restart) restart;
    decltype(LxRaster::addEdge) addEdge;
    decltype(LxRaster::fill) fill;
    void *(*createStore)();
    void (*deleteStore)(void *store);
};

extern const RasterForm plainForm;
extern const RasterForm coverageForm;

// A fill's first two steps, common to the forms: starts the shader and asks it for one colour, which tells
// the kernel to use.
LxColor beginFill(LxRaster &raster, LxShader &shader);

} // namespace lx

extern "C" {

// A rasteriser of the kind, empty; null for lack of memory. Without memory for its store, or with an unknown
// kind, it has no operations and does nothing.
LxRaster *LxRaster_Create(int32_t kind);

// Releases a rasteriser. Null is ignored.
void LxRaster_Delete(LxRaster *raster);

// Takes all edges away. Answers 0 for null and for a rasteriser without operations, else 1.
int32_t LxRaster_Restart(LxRaster *raster);

// Adds the edge from (x0, y0) to (x1, y1), in pixels. An edge of no length is ignored.
void LxRaster_AddEdge(LxRaster *raster, double x0, double y0, double x1, double y1);

// Fills what the edges enclose. The edges stay for another fill, but the plain kind has moved them along by
// then. A null argument, a shader without `color` and an image or colour without a kernel change nothing.
void LxRaster_Fill(LxRaster *raster, LxImage *image, const LxBlend *blend, LxShader *shader);
}
