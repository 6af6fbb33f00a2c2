// What the coverage of a shape does to an image: pixels and runs of one coverage, through a shader and a
// blend.
//
// All that paint have pixel(x, y, coverage) and run(x0, x1, y, coverage), x1 exclusive, called from left to
// right in each row, and finish(). What lies outside the image is left out.
#pragma once

#include <oxlume/LxBlend.h>
#include <oxlume/LxGradient.h>
#include <oxlume/LxImage.h>

#include "gc/Gradient.h"
#include "gc/renderers/Samples.h"

namespace lx {

// A call of the kernel for each pixel: right for every shader, blend and image, and the measure of the
// others.
class PixelwisePaint {
public:
    PixelwisePaint(LxImage &image, const LxBlend &blend, LxShader &shader, LxPixelBlendFunction kernel)
        : image_(image), blend_(blend), shader_(shader), kernel_(kernel) {}

    void pixel(int32_t x, int32_t y, int32_t coverage);
    void run(int32_t x0, int32_t x1, int32_t y, int32_t coverage);
    void finish() {}

private:
    LxImage &image_;
    const LxBlend &blend_;
    LxShader &shader_;
    const LxPixelBlendFunction kernel_;
};

// One colour laid on RGBA pixels in the mode SrcOver: the common case.
class SolidPaint {
public:
    SolidPaint(LxImage &image, const LxBlend &blend, const LxRGBA &color);

    static bool serves(const LxImage &image, const LxBlend &blend, const LxShader &shader);

    void pixel(int32_t x, int32_t y, int32_t coverage);
    void run(int32_t x0, int32_t x1, int32_t y, int32_t coverage);
    void finish() {}

private:
    uint32_t weight(int32_t coverage) const;

    LxImage &image_;
    const int32_t width_, height_;
    const LxRGBA color_;
    const uint32_t opacity_;
};

// Rows of colours, collected as far as they are connected and handed to the line kernel: for the library's
// own shaders, whatever the blend.
class LinePaint {
public:
    LinePaint(LxImage &image, const LxBlend &blend, LxShader &shader);

    static bool serves(const LxImage &image, const LxShader &shader);

    void pixel(int32_t x, int32_t y, int32_t coverage);
    void run(int32_t x0, int32_t x1, int32_t y, int32_t coverage);
    void finish();

private:
    // Makes the run reach from where it ends, or anew from x0, to x1.
    uint32_t *extend(int32_t x0, int32_t x1, int32_t y);
    void writeGradient(const LxGradient &gradient, int32_t x0, int32_t x1, int32_t y, uint32_t *to) const;

    LxImage &image_;
    const LxBlend &blend_;
    LxShader &shader_;
    const LxLineBlendFunction kernel_;
    const int32_t width_, height_;
    const bool sourceOver_;            // SrcOver on RGBA, which has code of its own
    const LxGradient *const gradient_; // or null
    int32_t begin_ = 0, end_ = 0, y_ = -1;
    alignas(64) uint32_t colors_[maxPixels];
};

} // namespace lx
