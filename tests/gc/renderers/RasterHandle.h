// A rasteriser that deletes itself, and shapes for it.
#pragma once

#include <memory>
#include <vector>

#include "gc/Shader.h"
#include "gc/renderers/Raster.h"
#include "tests/support/ImageHandle.h"

namespace lx::test {

struct DeleteRaster {
    void operator()(LxRaster *raster) const { LxRaster_Delete(raster); }
};
using RasterHandle = std::unique_ptr<LxRaster, DeleteRaster>;

inline RasterHandle makeRaster(int32_t kind = 1) {
    return RasterHandle(LxRaster_Create(kind));
}

// A rectangle, its right side going down.
inline void addRect(LxRaster *raster, double x0, double y0, double x1, double y1) {
    LxRaster_AddEdge(raster, x0, y0, x1, y0);
    LxRaster_AddEdge(raster, x1, y0, x1, y1);
    LxRaster_AddEdge(raster, x1, y1, x0, y1);
    LxRaster_AddEdge(raster, x0, y1, x0, y0);
}

// Fills with one colour.
inline void fillSolid(LxRaster *raster, LxImage *image, LxRGBA color, LxBlend blend = LxBlend(2, 255)) {
    LxShader shader = solidShader(color);
    LxRaster_Fill(raster, image, &blend, &shader);
}

inline LxRGBA pixelOf(const ImageHandle &image, int32_t x, int32_t y) {
    LxColor color = LxColor_L(0);
    LxImage_PixelAt(image.get(), x, y, &color);
    return color.content.rgba;
}

// What opaque white leaves as alpha on a clear RGBA image is the coverage.
inline int coverageAt(const ImageHandle &image, int32_t x, int32_t y) {
    return pixelOf(image, x, y).a;
}

// All bytes of an image, padding included.
inline std::vector<uint8_t> bytesOf(const ImageHandle &image) {
    const auto *data = static_cast<const uint8_t *>(LxImage_ConstData(image.get()));
    return {data, data + LxImage_DataSize(image.get())};
}

} // namespace lx::test
