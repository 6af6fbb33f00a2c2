#include "tools/SvgCanvas.h"

#include <new>

#include "gc/Shader.h"
#include "image/Image.h"
#include "path/PathWalk.h"

namespace tool {
namespace {

// Hands each straight segment to the rasteriser.
class EdgePen : public lx::BasicPen<EdgePen> {
public:
    explicit EdgePen(LxRaster *raster) : raster_(raster) {}
    void segment(const LxPointD &from, const LxPointD &to) {
        LxRaster_AddEdge(raster_, from.x, from.y, to.x, to.y);
    }

private:
    LxRaster *raster_;
};

// What the rasteriser asks for colours.
struct Source {
    SvgInk ink;
    const LxImage *mask;
};

void colorAt(LxColor *out, LxShader *shader, int32_t x, int32_t y, int32_t coverage) {
    const Source &source = *static_cast<const Source *>(shader->data);
    LxRGBA rgba = source.ink.shade != nullptr ? source.ink.shade->at(x + 0.5, y + 0.5) : source.ink.color;
    if (source.mask != nullptr) {
        const auto *open = static_cast<const uint8_t *>(LxImage_ConstPointer(source.mask, x, y));
        coverage = open != nullptr ? (coverage * (*open + 1)) >> 8 : 0;
    }
    rgba.a = static_cast<uint8_t>(((rgba.a + 1) * coverage) >> 8);
    *out = LxColor_RGBA_t(rgba);
}

} // namespace

SvgCanvas::SvgCanvas(LxImage &image) : image_(image), raster_(LxRaster_Create(1)) {
    if (raster_ == nullptr)
        throw std::bad_alloc();
}

PictureSize SvgCanvas::size() const {
    return {lx::width(image_), lx::height(image_)};
}

void SvgCanvas::fill(const LxPath &path, SvgFillRule rule, const SvgInk &ink, const SvgMask &mask) {
    paint(image_, path, rule, ink, mask);
}

std::shared_ptr<LxImage> SvgCanvas::makeMask() const {
    const PictureSize s = size();
    std::shared_ptr<LxImage> mask(LxImage_Create(kLxPixelA, 0, 0, s.width, s.height, 1, 0), LxImage_Delete);
    if (mask == nullptr)
        throw std::bad_alloc();
    return mask;
}

void SvgCanvas::open(LxImage &mask, const LxPath &path, SvgFillRule rule, const SvgMask &within) {
    paint(mask, path, rule, {LxRGBA_White, nullptr}, within);
}

void SvgCanvas::paint(LxImage &image, const LxPath &path, SvgFillRule rule, const SvgInk &ink,
                      const SvgMask &mask) {
    const LxRectD area = {0, 0, double(lx::width(image)), double(lx::height(image))};
    const LxPath *const inside = lx::transformed(path, LxMatrix_0, area, scratch_);
    if (inside == nullptr)
        throw std::bad_alloc();
    LxRaster_Restart(raster_.get());
    raster_->nonZero = rule == SvgFillRule::nonZero ? 1 : 0;
    EdgePen pen(raster_.get());
    lx::walkItems(*inside, nullptr, pen);

    Source source = {ink, mask.get()};
    LxShader shader = ink.shade == nullptr && mask == nullptr
                          ? lx::solidShader(source.ink.color)
                          : LxShader{nullptr, colorAt, nullptr, &source, 0};
    const LxBlend blend = LxBlend_Make(2, 255);
    LxRaster_Fill(raster_.get(), &image, &blend, &shader);
    LxRaster_Restart(raster_.get());
}

} // namespace tool
