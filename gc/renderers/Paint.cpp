#include "gc/renderers/Paint.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "blend/Mode.h"
#include "gc/Shader.h"
#include "gc/renderers/Spans.h"
#include "image/Image.h"

namespace lx {
namespace {

uint32_t wordOf(const LxRGBA &rgba) {
    return std::bit_cast<uint32_t>(rgba);
}

LxRGBA covered(LxRGBA rgba, int32_t coverage) {
    rgba.a = static_cast<uint8_t>(((rgba.a + 1) * coverage) >> 8);
    return rgba;
}

// The mode that most fills have, on the pixels that most images have.
bool isSourceOver(const LxImage &image, const LxBlend &blend) {
    return image.type == kLxPixelRGBA && blend.mode == static_cast<uint32_t>(Mode::srcOver) &&
           blend.channel == static_cast<uint32_t>(Channel::rgba);
}

// Whether the image has rows of its own to be written from end to end.
bool hasRows(const LxImage &image) {
    return !isInline(image) && firstRow(image) != nullptr;
}

// An RGBA pixel. It need not be aligned.
uint8_t *pixelAt(LxImage &image, int32_t x, int32_t y) {
    return rowAddress(image, y) + ptrdiff_t{x} * 4;
}

uint32_t alphaWeight(uint32_t opacity, uint32_t alpha) {
    return opacity * (alpha + 1) >> 8;
}

} // namespace

// ---- PixelwisePaint ----

void PixelwisePaint::pixel(int32_t x, int32_t y, int32_t coverage) {
    void *const pixel = LxImage_Pointer(&image_, x, y);
    if (pixel == nullptr)
        return;
    LxColor color = LxColor_RGBA_Black;
    shader_.color(&color, &shader_, x, y, coverage);
    kernel_(&blend_, pixel, pixel, color.content.bytes);
}

void PixelwisePaint::run(int32_t x0, int32_t x1, int32_t y, int32_t coverage) {
    x0 = std::max(x0, 0);
    x1 = std::min(x1, width(image_));
    void *start, *end;
    if (x0 >= x1 || LxImage_PointerLine(&image_, x0, x1 - 1, y, &start, &end) == 0)
        return;
    const int32_t step = LxImage_BytesPerPixel(&image_);
    LxColor color = LxColor_RGBA_Black;
    shader_.color(&color, &shader_, x0, y, coverage);
    auto *pixel = static_cast<uint8_t *>(start);
    for (int32_t x = x0; x < x1; ++x, pixel += step) {
        if (x > x0 && (shader_.flags & constantColour) == 0)
            shader_.color(&color, &shader_, x, y, coverage);
        kernel_(&blend_, pixel, pixel, color.content.bytes);
    }
}

// ---- SolidPaint ----

bool SolidPaint::serves(const LxImage &image, const LxBlend &blend, const LxShader &shader) {
    return shader.color == solidColor && isSourceOver(image, blend) && hasRows(image);
}

SolidPaint::SolidPaint(LxImage &image, const LxBlend &blend, const LxRGBA &color)
    : image_(image), width_(width(image)), height_(height(image)), color_(color), opacity_(blend.opacity) {}

uint32_t SolidPaint::weight(int32_t coverage) const {
    return alphaWeight(opacity_, covered(color_, coverage).a);
}

void SolidPaint::pixel(int32_t x, int32_t y, int32_t coverage) {
    if (x >= width_ || y >= height_)
        return;
    uint8_t *const pixel = pixelAt(image_, x, y);
    const uint32_t w = weight(coverage), rest = 255 - w;
    // Two components at a time, 16 bits apart: no sum reaches 2^16.
    constexpr uint32_t pair = 0x00FF00FF, ones = 0x00010001;
    const uint32_t color = wordOf(color_);
    uint32_t old;
    std::memcpy(&old, pixel, sizeof old);
    const uint32_t even = ((color & pair) + ones) * w + ((old & pair) + ones) * rest;
    const uint32_t odd = ((color >> 8 & pair) + ones) * w + ((old >> 8 & pair) + ones) * rest;
    const uint32_t alpha = std::max(old >> 24, w);
    const uint32_t mixed = (even >> 8 & pair) | (odd & 0x0000FF00) | alpha << 24;
    std::memcpy(pixel, &mixed, sizeof mixed);
}

void SolidPaint::run(int32_t x0, int32_t x1, int32_t y, int32_t coverage) {
    x1 = std::min(x1, width_);
    if (x0 >= x1 || y >= height_)
        return;
    const uint32_t w = weight(coverage);
    const auto count = static_cast<size_t>(x1 - x0);
    if (w == 255)
        spanFunctions().fill(pixelAt(image_, x0, y), wordOf(color_) | 0xFF000000, count);
    else if (w != 0)
        spanFunctions().mix(pixelAt(image_, x0, y), wordOf(color_), w, count);
}

// ---- LinePaint ----

bool LinePaint::serves(const LxImage &image, const LxShader &shader) {
    return (shader.color == solidColor || (shader.color == gradientColor && shader.data != nullptr)) &&
           hasRows(image) &&
           LxBlend_SelectLineBlendFunction(static_cast<int32_t>(image.type), kLxPixelRGBA) != nullptr;
}

LinePaint::LinePaint(LxImage &image, const LxBlend &blend, LxShader &shader)
    : image_(image), blend_(blend), shader_(shader),
      kernel_(LxBlend_SelectLineBlendFunction(static_cast<int32_t>(image.type), kLxPixelRGBA)),
      width_(width(image)), height_(height(image)), sourceOver_(isSourceOver(image, blend)),
      gradient_(shader.color == gradientColor ? static_cast<const LxGradient *>(shader.data) : nullptr) {}

uint32_t *LinePaint::extend(int32_t x0, int32_t x1, int32_t y) {
    if (x0 != end_ || y != y_) {
        finish();
        begin_ = x0;
        y_ = y;
    }
    end_ = x1;
    return colors_ + x0;
}

void LinePaint::pixel(int32_t x, int32_t y, int32_t coverage) {
    if (x >= width_ || y >= height_)
        return;
    LxColor color;
    shader_.color(&color, &shader_, x, y, coverage);
    *extend(x, x + 1, y) = wordOf(color.content.rgba);
}

void LinePaint::run(int32_t x0, int32_t x1, int32_t y, int32_t coverage) {
    x1 = std::min(x1, width_);
    if (x0 >= x1 || y >= height_)
        return;
    uint32_t *const to = extend(x0, x1, y);
    if (gradient_ == nullptr) {
        const LxRGBA color = covered(*static_cast<const LxRGBA *>(shader_.data), coverage);
        spanFunctions().fill(to, wordOf(color), static_cast<size_t>(x1 - x0));
        return;
    }
    writeGradient(*gradient_, x0, x1, y, to);
    if (coverage < 255)
        for (uint32_t *word = to; word != to + (x1 - x0); ++word)
            *word = wordOf(covered(std::bit_cast<LxRGBA>(*word), coverage));
}

void LinePaint::finish() {
    if (end_ == begin_)
        return;
    const auto count = static_cast<uint32_t>(end_ - begin_);
    if (sourceOver_) {
        spanFunctions().blend(pixelAt(image_, begin_, y_), colors_ + begin_, blend_.opacity, count);
    } else {
        uint8_t *const out = rowAddress(image_, y_) + ptrdiff_t{begin_} * LxImage_BytesPerPixel(&image_);
        kernel_(&blend_, out, out, colors_ + begin_, count);
    }
    end_ = begin_;
}

void LinePaint::writeGradient(const LxGradient &gradient, int32_t x0, int32_t x1, int32_t y,
                              uint32_t *to) const {
    const auto count = static_cast<size_t>(x1 - x0);
    const int32_t first = rampIndex(gradient, x0, y);
    if (first < 0) {
        spanFunctions().fill(to, wordOf(LxRGBA_Black), count);
        return;
    }
    const LxColor *const ramp = gradient.ramp;
    const int32_t last = rampIndex(gradient, x1 - 1, y);
    if (gradient.type == kLxGradientDown) {
        spanFunctions().fill(to, wordOf(ramp[first].content.rgba), count);
    } else if (gradient.type != kLxGradientInward && last - first == x1 - 1 - x0) {
        // The ramp's steps go with x, and none was held back at an end of it.
        spanFunctions().pack(to, ramp + first, count);
    } else {
        for (int32_t x = x0; x < x1; ++x)
            *to++ = wordOf(ramp[rampIndex(gradient, x, y)].content.rgba);
    }
}

} // namespace lx
