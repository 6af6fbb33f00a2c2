// What the coverage of a shape does to an image: pixels and runs of one coverage, through a shader and a
// blend.
//
// All that paint have row(y), which answers whether the row is above the image's end, and then, from left to
// right, pixel(x, coverage) and run(x0, x1, coverage), x1 exclusive; finish() is called at the end. Behind
// row(y) one that has repeat(count) may be told that the next rows are alike. What lies outside the image is
// left out.
#pragma once

#include <algorithm>
#include <bit>
#include <cstring>

#include <oxlume/LxBlend.h>
#include <oxlume/LxGradient.h>
#include <oxlume/LxImage.h>

#include "gc/Gradient.h"
#include "gc/renderers/Samples.h"
#include "gc/renderers/Spans.h"
#include "image/Image.h"

namespace lx {

// A call of the kernel for each pixel: right for every shader, blend and image, and the measure of the
// others.
class PixelwisePaint {
public:
    PixelwisePaint(LxImage &image, const LxBlend &blend, LxShader &shader, LxPixelBlendFunction kernel)
        : image_(image), blend_(blend), shader_(shader), kernel_(kernel) {}

    bool row(int32_t y) {
        y_ = y;
        return true;
    }
    void pixel(int32_t x, int32_t coverage);
    void run(int32_t x0, int32_t x1, int32_t coverage);
    void finish() {}

private:
    LxImage &image_;
    const LxBlend &blend_;
    LxShader &shader_;
    const LxPixelBlendFunction kernel_;
    int32_t y_ = 0;
};

// One colour laid on RGBA pixels in the mode SrcOver: the common case.
class SolidPaint {
public:
    SolidPaint(LxImage &image, const LxBlend &blend, const LxRGBA &color);

    static bool serves(const LxImage &image, const LxBlend &blend, const LxShader &shader);

    bool row(int32_t y) {
        if (y >= height_)
            return false;
        row_ = image_.pixels + ptrdiff_t{flipped_ ? height_ - 1 - y : y} * image_.rowBytes;
        return true;
    }

    void pixel(int32_t x, int32_t coverage) {
        if (x < width_)
            mix(row_ + ptrdiff_t{x} * 4, weight(coverage));
    }

    void run(int32_t x0, int32_t x1, int32_t coverage) {
        x1 = std::min(x1, width_);
        uint8_t *pixel = row_ + ptrdiff_t{x0} * 4;
        const uint32_t w = weight(coverage);
        if (x1 - x0 > shortRun) {
            longRun(pixel, w, static_cast<size_t>(x1 - x0));
            return;
        }
        for (int32_t x = x0; x < x1; ++x, pixel += 4)
            mix(pixel, w);
    }

    void finish() {}

private:
    // Up to here a call costs more than the pixels.
    static constexpr int32_t shortRun = 4;

    uint32_t weight(int32_t coverage) const {
        const uint32_t alpha = alphaPlusOne_ * static_cast<uint32_t>(coverage) >> 8;
        return opacity_ * (alpha + 1) >> 8;
    }

    // Two components at a time, 16 bits apart: no sum reaches 2^16.
    void mix(uint8_t *pixel, uint32_t w) const {
        constexpr uint32_t pair = 0x00FF00FF, ones = 0x00010001;
        const uint32_t rest = 255 - w;
        uint32_t old;
        std::memcpy(&old, pixel, sizeof old);
        const uint32_t even = evenPlusOne_ * w + ((old & pair) + ones) * rest;
        const uint32_t odd = oddPlusOne_ * w + ((old >> 8 & pair) + ones) * rest;
        const uint32_t mixed = (even >> 8 & pair) | (odd & 0x0000FF00) | std::max(old >> 24, w) << 24;
        std::memcpy(pixel, &mixed, sizeof mixed);
    }

    void longRun(uint8_t *pixel, uint32_t w, size_t count) const;

    LxImage &image_;
    const SpanFunctions &spans_;
    const int32_t width_, height_;
    const bool flipped_;
    const uint32_t color_, evenPlusOne_, oddPlusOne_, alphaPlusOne_;
    const uint32_t opacity_;
    uint8_t *row_ = nullptr;
};

// The same on a shape so narrow that each of its rows is a vector or two, and rows alike are painted at once.
class NarrowPaint {
public:
    // `bounds` is the shape's, as LxRaster has it.
    NarrowPaint(LxImage &image, const LxBlend &blend, const LxRGBA &color, const double *bounds);

    // To be asked where SolidPaint serves.
    static bool serves(const LxImage &image, const double *bounds);

    bool row(int32_t y) {
        finish();
        y_ = y;
        return y < height_;
    }

    // The row's pixels and runs are those of the next `count` rows, itself counted.
    void repeat(int32_t count) { count_ = std::min(count, height_ - y_); }

    void pixel(int32_t x, int32_t coverage) {
        if (const int32_t i = x - left_; i < narrowPixels)
            set(i, coverage);
    }

    void run(int32_t x0, int32_t x1, int32_t coverage) {
        for (int32_t i = x0 - left_, end = std::min(x1 - left_, narrowPixels); i < end; ++i)
            set(i, coverage);
    }

    void finish();

private:
    void set(int32_t i, int32_t coverage) {
        colors_[i] = color_ | (alphaPlusOne_ * static_cast<uint32_t>(coverage) >> 8) << 24;
        end_ = i + 1;
    }

    LxImage &image_;
    const SpanFunctions &spans_;
    const int32_t left_; // where colors_ start
    const int32_t height_;
    const uint32_t color_, alphaPlusOne_; // the colour without its alpha
    const uint32_t opacity_;
    int32_t y_ = 0, count_ = 0;
    int32_t end_ = 0; // behind the last pixel that is painted
    alignas(64) uint32_t colors_[narrowPixels] = {};
};

// Rows of colours, collected as far as they are connected and handed to the line kernel: for the library's
// own shaders, whatever the blend.
class LinePaint {
public:
    LinePaint(LxImage &image, const LxBlend &blend, LxShader &shader);

    static bool serves(const LxImage &image, const LxShader &shader);

    bool row(int32_t y);
    void pixel(int32_t x, int32_t coverage);
    void run(int32_t x0, int32_t x1, int32_t coverage);
    void finish();

private:
    // Makes the run reach from where it ends, or anew from x0, to x1.
    uint32_t *extend(int32_t x0, int32_t x1) {
        if (x0 != end_) {
            finish();
            begin_ = x0;
        }
        end_ = x1;
        return colors_ + x0;
    }

    void writeGradient(const LxGradient &gradient, int32_t x0, int32_t x1, uint32_t *to) const;
    void writeInward(const LxGradient &gradient, int32_t x0, int32_t x1, uint32_t *to) const;

    LxImage &image_;
    const LxBlend &blend_;
    LxShader &shader_;
    const LxLineBlendFunction kernel_;
    const SpanFunctions &spans_;
    const int32_t width_, height_, pixelBytes_;
    const bool sourceOver_;            // SrcOver on RGBA, which has code of its own
    const LxGradient *const gradient_; // or null
    int32_t y_ = 0;
    uint8_t *row_ = nullptr;
    int32_t begin_ = 0, end_ = 0;
    alignas(64) uint32_t colors_[maxPixels];
};

} // namespace lx
