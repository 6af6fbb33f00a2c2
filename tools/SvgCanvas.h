// The picture that a stranger's drawing is painted on: fills by either rule, in one colour or a gradient, cut
// by masks.
#pragma once

#include <memory>

#include <oxlume/LxColor.h>
#include <oxlume/LxPath.h>

#include "gc/renderers/Raster.h"
#include "path/PathOperations.h"
#include "tools/ImageHandle.h"
#include "tools/SvgPaint.h"

namespace tool {

struct PictureSize {
    int width, height;
};

enum class SvgFillRule { nonZero, evenOdd };

// How much of each pixel of the picture may be painted.
using SvgMask = std::shared_ptr<const LxImage>;

struct SvgInk {
    LxRGBA color;
    const SvgShade *shade; // goes before the colour, unless it is null
};

class SvgCanvas {
public:
    explicit SvgCanvas(LxImage &image);

    PictureSize size() const;

    // Fills a path of closed lines in the picture's coordinates, as far as the mask lets it, which may be
    // null.
    void fill(const LxPath &path, SvgFillRule rule, const SvgInk &ink, const SvgMask &mask);

    // A mask, nothing of it open as yet, and one that opens where the path is filled and `within`, which may
    // be null, is open too.
    std::shared_ptr<LxImage> makeMask() const;
    void open(LxImage &mask, const LxPath &path, SvgFillRule rule, const SvgMask &within);

private:
    struct DeleteRaster {
        void operator()(LxRaster *raster) const { LxRaster_Delete(raster); }
    };

    void paint(LxImage &image, const LxPath &path, SvgFillRule rule, const SvgInk &ink, const SvgMask &mask);

    LxImage &image_;
    std::unique_ptr<LxRaster, DeleteRaster> raster_;
    lx::PathScratch scratch_;
};

} // namespace tool
