#include "gc/renderers/Paint.h"

#include "blend/Mode.h"
#include "foundation/Numeric.h"
#include "gc/Shader.h"
#include "image/Image.h"

namespace lx {
namespace {

uint32_t wordOf(const LxRGBA &rgba) {
    return std::bit_cast<uint32_t>(rgba);
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

} // namespace

// ---- PixelwisePaint ----

void PixelwisePaint::pixel(int32_t x, int32_t coverage) {
    void *const pixel = LxImage_Pointer(&image_, x, y_);
    if (pixel == nullptr)
        return;
    LxColor color = LxColor_RGBA_Black;
    shader_.color(&color, &shader_, x, y_, coverage);
    kernel_(&blend_, pixel, pixel, color.content.bytes);
}

void PixelwisePaint::run(int32_t x0, int32_t x1, int32_t coverage) {
    x1 = std::min(x1, width(image_));
    void *start, *end;
    if (x0 >= x1 || LxImage_PointerLine(&image_, x0, x1 - 1, y_, &start, &end) == 0)
        return;
    const int32_t step = LxImage_BytesPerPixel(&image_);
    LxColor color = LxColor_RGBA_Black;
    shader_.color(&color, &shader_, x0, y_, coverage);
    auto *pixel = static_cast<uint8_t *>(start);
    for (int32_t x = x0; x < x1; ++x, pixel += step) {
        if (x > x0 && (shader_.flags & constantColour) == 0)
            shader_.color(&color, &shader_, x, y_, coverage);
        kernel_(&blend_, pixel, pixel, color.content.bytes);
    }
}

// ---- SolidPaint ----

bool SolidPaint::serves(const LxImage &image, const LxBlend &blend, const LxShader &shader) {
    return shader.color == solidColor && isSourceOver(image, blend) && hasRows(image);
}

SolidPaint::SolidPaint(LxImage &image, const LxBlend &blend, const LxRGBA &color)
    : image_(image), spans_(spanFunctions()), width_(width(image)), height_(height(image)),
      flipped_(image.flipped != 0), color_(wordOf(color)), evenPlusOne_((color_ & 0x00FF00FF) + 0x00010001),
      oddPlusOne_((color_ >> 8 & 0x00FF00FF) + 0x00010001), alphaPlusOne_(color.a + 1u),
      opacity_(blend.opacity) {}

void SolidPaint::longRun(uint8_t *pixel, uint32_t w, size_t count) const {
    if (w == 255)
        spans_.fill(pixel, color_ | 0xFF000000, count);
    else if (w != 0)
        spans_.mix(pixel, color_, w, count);
}

// ---- NarrowPaint ----

namespace {

// The first pixel of a shape; where its window would stand over the image's side, of that window.
int32_t leftOf(const LxImage &image, const double *bounds) {
    return static_cast<int32_t>(std::clamp(bounds[0], 0.0, width(image) - double{narrowPixels}));
}

} // namespace

bool NarrowPaint::serves(const LxImage &image, const double *bounds) {
    return bounds[2] - bounds[0] < narrowPixels - 1 && width(image) >= narrowPixels;
}

NarrowPaint::NarrowPaint(LxImage &image, const LxBlend &blend, const LxRGBA &color, const double *bounds)
    : image_(image), spans_(spanFunctions()), left_(leftOf(image, bounds)), height_(height(image)),
      color_(wordOf(color) & 0x00FFFFFF), alphaPlusOne_(color.a + 1u), opacity_(blend.opacity) {}

void NarrowPaint::finish() {
    if (end_ == 0)
        return;
    uint8_t *const row = rowAddress(image_, y_) + ptrdiff_t{left_} * 4;
    const ptrdiff_t rowBytes = image_.flipped != 0 ? -ptrdiff_t{image_.rowBytes} : ptrdiff_t{image_.rowBytes};
    spans_.blendNarrow(row, rowBytes, static_cast<size_t>(count_), colors_, opacity_,
                       static_cast<size_t>(end_));
    std::memset(colors_, 0, sizeof colors_);
    end_ = 0;
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
      spans_(spanFunctions()), width_(width(image)), height_(height(image)),
      pixelBytes_(LxImage_BytesPerPixel(&image)), sourceOver_(isSourceOver(image, blend)),
      gradient_(shader.color == gradientColor ? static_cast<const LxGradient *>(shader.data) : nullptr) {}

bool LinePaint::row(int32_t y) {
    finish();
    if (y >= height_)
        return false;
    y_ = y;
    row_ = rowAddress(image_, y);
    return true;
}

void LinePaint::pixel(int32_t x, int32_t coverage) {
    if (x >= width_)
        return;
    LxColor color;
    shader_.color(&color, &shader_, x, y_, coverage);
    *extend(x, x + 1) = wordOf(color.content.rgba);
}

void LinePaint::run(int32_t x0, int32_t x1, int32_t coverage) {
    x1 = std::min(x1, width_);
    if (x0 >= x1)
        return;
    uint32_t *const to = extend(x0, x1);
    if (gradient_ == nullptr) {
        const LxRGBA color = covered(*static_cast<const LxRGBA *>(shader_.data), coverage);
        spans_.fill(to, wordOf(color), static_cast<size_t>(x1 - x0));
        return;
    }
    writeGradient(*gradient_, x0, x1, to);
    if (coverage < 255)
        for (uint32_t *word = to; word != to + (x1 - x0); ++word)
            *word = wordOf(covered(std::bit_cast<LxRGBA>(*word), coverage));
}

void LinePaint::finish() {
    if (end_ == begin_)
        return;
    uint8_t *const out = row_ + ptrdiff_t{begin_} * pixelBytes_;
    const auto count = static_cast<uint32_t>(end_ - begin_);
    if (sourceOver_)
        spans_.blend(out, colors_ + begin_, blend_.opacity, count);
    else
        kernel_(&blend_, out, out, colors_ + begin_, count);
    end_ = begin_;
}

void LinePaint::writeGradient(const LxGradient &gradient, int32_t x0, int32_t x1, uint32_t *to) const {
    const auto count = static_cast<size_t>(x1 - x0);
    const int32_t first = rampIndex(gradient, x0, y_);
    if (first < 0) {
        spans_.fill(to, wordOf(LxRGBA_Black), count);
        return;
    }
    const LxColor *const ramp = gradient.ramp;
    const int32_t last = rampIndex(gradient, x1 - 1, y_);
    if (gradient.type == kLxGradientDown) {
        spans_.fill(to, wordOf(ramp[first].content.rgba), count);
    } else if (gradient.type == kLxGradientInward) {
        writeInward(gradient, x0, x1, to);
    } else if (last - first == x1 - 1 - x0) {
        // The ramp's steps go with x, and none was held back at an end of it.
        spans_.pack(to, ramp + first, count);
    } else {
        for (int32_t x = x0; x < x1; ++x)
            *to++ = wordOf(ramp[rampIndex(gradient, x, y_)].content.rgba);
    }
}

// As rampIndex has it, the index rises with x, stays at the distance to the upper or lower side, and falls.
void LinePaint::writeInward(const LxGradient &gradient, int32_t x0, int32_t x1, uint32_t *to) const {
    const LxRectL &bounds = gradient.bounds;
    const int64_t acrossHalf = distance(bounds.x1, bounds.x0) / 2;
    const int64_t downHalf = distance(bounds.y1, bounds.y0) / 2;
    const int64_t dy = int64_t{y_} - bounds.y0;
    const int64_t top =
        std::clamp(dy < downHalf ? dy : 2 * downHalf - dy, int64_t{0}, int64_t{gradient.rampCapacity} - 1);
    const LxColor *const ramp = gradient.ramp;
    const auto colorAt = [&](int64_t index) { return wordOf(ramp[index].content.rgba); };
    int64_t dx = int64_t{x0} - bounds.x0;
    // The next part of the run, up to `end`: its first pixel's dx and its length.
    struct Part {
        int64_t first;
        size_t count;
    };
    const auto upTo = [&](int64_t end) {
        const int64_t first = dx;
        dx = std::clamp(end, dx, int64_t{x1} - bounds.x0);
        return Part{first, static_cast<size_t>(dx - first)};
    };
    const auto level = [&](int64_t index, const Part &part) {
        spans_.fill(to, colorAt(index), part.count);
        to += part.count;
    };

    level(0, upTo(0));
    if (const Part rising = upTo(std::min(acrossHalf, top)); rising.count > 0) {
        spans_.pack(to, ramp + rising.first, rising.count);
        to += rising.count;
    }
    level(top, upTo(std::max(acrossHalf, 2 * acrossHalf - top + 1)));
    if (const Part falling = upTo(2 * acrossHalf); falling.count > 0)
        for (int64_t index = 2 * acrossHalf - falling.first; index > 2 * acrossHalf - dx; --index)
            *to++ = colorAt(index);
    level(0, upTo(INT64_MAX));
}

} // namespace lx
