// Blending one colour into an image.

#include <algorithm>
#include <array>
#include <cstring>

#include <oxlume/LxBlend.h>
#include <oxlume/LxImage.h>

#include "image/Image.h"
#include "image/Pixels.h"

using namespace lx;

namespace {

// A run of one colour for the line kernels, which take their second source from memory.
struct ColorRun {
    static constexpr size_t length = 256;
    std::array<uint8_t, length * 4> bytes;

    explicit ColorRun(const LxColor &color) {
        const size_t step = storedBytes(static_cast<uint32_t>(color.type));
        for (size_t i = 0; i < length; ++i)
            std::memcpy(bytes.data() + i * step, color.content.bytes, step);
    }
};

void blendColor(LxImage &image, const LxColor &color, const LxBlend &blend) {
    const LxLineBlendFunction kernel =
        LxBlend_SelectLineBlendFunction(static_cast<int32_t>(image.type), color.type);
    if (kernel == nullptr)
        return;
    const ColorRun run(color);
    const auto bytes = storedBytes(image);
    const auto w = static_cast<size_t>(width(image));
    forEachStoredRow(image, [&](uint8_t *row) {
        for (size_t x = 0; x < w; x += ColorRun::length) {
            uint8_t *const pixels = row + x * bytes;
            const size_t count = std::min(ColorRun::length, w - x);
            kernel(&blend, pixels, pixels, run.bytes.data(), static_cast<uint32_t>(count));
        }
    });
}

} // namespace

void LxImage_BlendColor(LxImage *image, LxColor color, LxBlend blend) {
    if (image != nullptr)
        blendColor(*image, color, blend);
}

int32_t LxImage_BlendPixelAt(LxImage *image, int32_t x, int32_t y, LxColor color, LxBlend blend) {
    void *const pixel = LxImage_Pointer(image, x, y);
    const LxPixelBlendFunction kernel = LxBlend_SelectPixelBlendFunction(LxImage_Type(image), color.type);
    if (pixel == nullptr || kernel == nullptr)
        return 0;
    kernel(&blend, pixel, pixel, color.content.bytes);
    return 1;
}

void LxBlend_Image_Pixel(LxImage *image, LxColor color, const LxBlend *blend, int32_t x, int32_t y) {
    const int32_t type = LxImage_Type(image);
    // On purpose: a premultiplied image is blended as RGBA here, and one-byte images are not blended at all.
    if (blend == nullptr ||
        (type != kLxPixelRGB && type != kLxPixelRGBA && type != kLxPixelRGBAPremultiplied))
        return;
    void *const pixel = LxImage_Pointer(image, x, y);
    const LxPixelBlendFunction kernel =
        LxBlend_SelectPixelBlendFunction(std::min<int32_t>(type, kLxPixelRGBA), color.type);
    if (pixel != nullptr && kernel != nullptr)
        kernel(blend, pixel, pixel, color.content.bytes);
}
