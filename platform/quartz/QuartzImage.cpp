// Providers, colour spaces and pictures of the Quartz layer.

#include "platform/quartz/QuartzImage.h"

#include <algorithm>
#include <new>
#include <utility>

struct CGColorSpace {};

namespace lx {
namespace {

// cairo's own limit for images.
constexpr size_t maxSide = 32767;

constinit CGColorSpace deviceRGB, deviceGray;

// ---- Reading pixels ----

enum class Alpha { none, straight, premultiplied };

// Where a pixel's components are among its bytes.
struct PixelLayout {
    int32_t red, green, blue, alpha;
    Alpha kind;
};

PixelLayout layoutOf(const ImageForm &form) {
    if (form.bytesPerPixel == 1)
        return {0, 0, 0, 0, Alpha::none};
    if (form.bytesPerPixel == 3)
        return {0, 1, 2, 0, Alpha::none};
    switch (form.alphaInfo) {
    case kCGImageAlphaPremultipliedLast:
        return {0, 1, 2, 3, Alpha::premultiplied};
    case kCGImageAlphaPremultipliedFirst:
        return {1, 2, 3, 0, Alpha::premultiplied};
    case kCGImageAlphaLast:
        return {0, 1, 2, 3, Alpha::straight};
    case kCGImageAlphaFirst:
        return {1, 2, 3, 0, Alpha::straight};
    case kCGImageAlphaNoneSkipFirst:
        return {1, 2, 3, 0, Alpha::none};
    default:
        return {0, 1, 2, 3, Alpha::none};
    }
}

// a * b / 255, rounded.
uint32_t scale(uint32_t a, uint32_t b) {
    const uint32_t product = a * b + 128;
    return (product + (product >> 8)) >> 8;
}

uint32_t premultiply(const InkBytes &ink, uint32_t coverage) {
    const uint32_t alpha = scale(ink.alpha, coverage);
    return alpha << 24 | scale(ink.red, alpha) << 16 | scale(ink.green, alpha) << 8 | scale(ink.blue, alpha);
}

uint32_t pixelOf(const uint8_t *bytes, const PixelLayout &layout) {
    const InkBytes ink = {bytes[layout.red], bytes[layout.green], bytes[layout.blue],
                          layout.kind == Alpha::none ? uint8_t{255} : bytes[layout.alpha]};
    if (layout.kind != Alpha::premultiplied)
        return premultiply(ink, 255);
    // Colours above alpha would be no colours to cairo.
    const auto within = [&](uint8_t colour) { return uint32_t{std::min(colour, ink.alpha)}; };
    return uint32_t{ink.alpha} << 24 | within(ink.red) << 16 | within(ink.green) << 8 | within(ink.blue);
}

uint32_t exchanged(uint32_t pixel) {
    return (pixel & 0xff00ff00u) | (pixel & 0xffu) << 16 | (pixel >> 16 & 0xffu);
}

// Whether the provider has all bytes of row `y`.
bool hasRow(const CGImage &image, size_t y) {
    const size_t pixels = static_cast<size_t>(image.form.width) * image.form.bytesPerPixel;
    return image.provider.size >= pixels && y <= (image.provider.size - pixels) / image.form.bytesPerRow;
}

void renderRow(const uint8_t *bytes, const ImageForm &form, const InkBytes &ink, uint32_t *out) {
    if (form.isMask) {
        for (int32_t x = 0; x < form.width; ++x, bytes += form.bytesPerPixel)
            out[x] = premultiply(ink, 255u - *bytes);
        return;
    }
    const PixelLayout layout = layoutOf(form);
    for (int32_t x = 0; x < form.width; ++x, bytes += form.bytesPerPixel)
        out[x] = pixelOf(bytes, layout);
}

// ---- Making pictures ----

CGImageRef createImage(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                       size_t bytesPerRow, int32_t alphaInfo, CGDataProviderRef provider, const float *decode,
                       bool interpolates, bool isMask) {
    if (provider == nullptr || decode != nullptr || width - 1 >= maxSide || height - 1 >= maxSide)
        return nullptr;
    if (bitsPerComponent != 8 || (bitsPerPixel != 8 && bitsPerPixel != 24 && bitsPerPixel != 32))
        return nullptr;
    if (static_cast<uint32_t>(alphaInfo) > kCGImageAlphaNoneSkipFirst ||
        bytesPerRow < width * bitsPerPixel / 8)
        return nullptr;
    const ImageForm form = {static_cast<int32_t>(width),
                            static_cast<int32_t>(height),
                            static_cast<int32_t>(bitsPerPixel / 8),
                            bytesPerRow,
                            alphaInfo,
                            isMask,
                            interpolates};
    return new (std::nothrow) CGImage(form, *provider);
}

} // namespace

SurfaceHandle renderImage(const CGImage &image, const InkBytes &ink, bool exchangeRedAndBlue) {
    const ImageForm &form = image.form;
    SurfaceHandle surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, form.width, form.height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    uint8_t *out = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    cairo_surface_flush(surface.get());
    for (int32_t y = 0; y < form.height && hasRow(image, y); ++y) {
        auto *row = reinterpret_cast<uint32_t *>(out + ptrdiff_t{y} * stride);
        renderRow(image.provider.data + y * form.bytesPerRow, form, ink, row);
        if (exchangeRedAndBlue)
            std::transform(row, row + form.width, row, exchanged);
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

} // namespace lx

using namespace lx;

CGDataProviderRef CGDataProviderCreateWithData(void *info, const void *data, size_t size,
                                               CGDataProviderReleaseDataCallback release) {
    return data != nullptr ? new (std::nothrow) CGDataProvider(info, data, size, release) : nullptr;
}

void CGDataProviderRelease(CGDataProviderRef provider) {
    release(provider);
}

CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void) {
    return &deviceRGB;
}

CGColorSpaceRef CGColorSpaceCreateDeviceGray(void) {
    return &deviceGray;
}

void CGColorSpaceRelease(CGColorSpaceRef) {}

CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                         size_t bytesPerRow, CGColorSpaceRef space, int32_t alphaInfo,
                         CGDataProviderRef provider, const float *decode, int32_t shouldInterpolate,
                         int32_t) {
    if (space == nullptr)
        return nullptr;
    return createImage(width, height, bitsPerComponent, bitsPerPixel, bytesPerRow, alphaInfo, provider,
                       decode, shouldInterpolate != 0, false);
}

CGImageRef CGImageMaskCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                             size_t bytesPerRow, CGDataProviderRef provider, const float *decode,
                             int32_t shouldInterpolate) {
    return createImage(width, height, bitsPerComponent, bitsPerPixel, bytesPerRow, kCGImageAlphaNone,
                       provider, decode, shouldInterpolate != 0, true);
}

CGImageRef CGImageRetain(CGImageRef image) {
    return retain(image);
}

void CGImageRelease(CGImageRef image) {
    release(image);
}

size_t CGImageGetWidth(CGImageRef image) {
    return image != nullptr ? static_cast<size_t>(image->form.width) : 0;
}

size_t CGImageGetHeight(CGImageRef image) {
    return image != nullptr ? static_cast<size_t>(image->form.height) : 0;
}

size_t CGImageGetBitsPerPixel(CGImageRef image) {
    return image != nullptr ? static_cast<size_t>(image->form.bytesPerPixel) * 8 : 0;
}

size_t CGImageGetBytesPerRow(CGImageRef image) {
    return image != nullptr ? image->form.bytesPerRow : 0;
}

int32_t CGImageGetAlphaInfo(CGImageRef image) {
    return image != nullptr ? image->form.alphaInfo : kCGImageAlphaNone;
}

int32_t CGImageIsMask(CGImageRef image) {
    return image != nullptr && image->form.isMask;
}
