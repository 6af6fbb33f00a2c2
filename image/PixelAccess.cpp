// Single pixels and runs of a row, with their bounds tested.

#include <algorithm>
#include <cstring>

#include "colour/PixelType.h"
#include "image/Image.h"

namespace lx {
namespace {

ptrdiff_t bytesPerPixel(const LxImage &image) {
    return pixelTypeInfo(static_cast<int32_t>(image.type)).bytesPerPixel;
}

// The address that single-pixel access reaches, null outside. On purpose: an image that lives in its record
// shows its first pixel at every position.
template <class Image>
auto pixelAddress(Image &image, int32_t x, int32_t y) -> decltype(firstRow(image)) {
    y = storedRow(image, y);
    const auto first = firstRow(image);
    if (x < 0 || y < 0 || x >= width(image) || y >= height(image) || first == nullptr)
        return nullptr;
    return isInline(image) ? first : first + ptrdiff_t{y} * image.rowBytes + x * bytesPerPixel(image);
}

} // namespace
} // namespace lx

using namespace lx;

void *LxImage_Pointer(LxImage *image, int32_t x, int32_t y) {
    return image != nullptr ? pixelAddress(*image, x, y) : nullptr;
}

const void *LxImage_ConstPointer(const LxImage *image, int32_t x, int32_t y) {
    return image != nullptr ? pixelAddress(*image, x, y) : nullptr;
}

int32_t LxImage_PointerLine(LxImage *image, int32_t x0, int32_t x1, int32_t y, void **start, void **end) {
    if (image == nullptr)
        return 0;
    *start = nullptr;
    *end = nullptr;
    y = storedRow(*image, y);
    uint8_t *const first = firstRow(*image);
    if (y < 0 || y >= height(*image) || first == nullptr)
        return 0;
    const int32_t w = width(*image);
    // On purpose: a run that starts right behind the last pixel passes, and comes out with its ends crossed.
    const auto [low, high] = std::minmax(x0, x1);
    const int32_t last = std::min(high, w - 1);
    if (low > w || last < 0)
        return 0;
    uint8_t *row = first + (isInline(*image) ? 0 : ptrdiff_t{y} * image->rowBytes);
    *start = row + std::max(low, 0) * bytesPerPixel(*image);
    *end = row + last * bytesPerPixel(*image);
    return 1;
}

int32_t LxImage_PixelAt(const LxImage *image, int32_t x, int32_t y, LxColor *color) {
    const uint8_t *pixel = image != nullptr ? pixelAddress(*image, x, y) : nullptr;
    if (pixel == nullptr)
        return 0;
    switch (image->type) {
    case kLxPixelA:
        return 1; // on purpose: one-byte pixels cannot be read this way
    case kLxPixelRGB:
        color->type = kLxPixelRGB;
        color->content.rgba = {pixel[0], pixel[1], pixel[2], 255};
        return 1;
    case kLxPixelRGBA:
    case kLxPixelRGBAPremultiplied:
    case kLxPixelF:
    case kLxPixelL:
        color->type = static_cast<int32_t>(image->type);
        std::memcpy(color->content.bytes, pixel, 4);
        return 1;
    default:
        return 0;
    }
}

int32_t LxImage_SetPixelAt(LxImage *image, int32_t x, int32_t y, LxColor color) {
    uint8_t *pixel = image != nullptr ? pixelAddress(*image, x, y) : nullptr;
    if (pixel == nullptr)
        return 0;
    // Bytes stored for each type; types 6 and 7 store none.
    static constexpr size_t stored[8] = {1, 3, 4, 4, 4, 4, 0, 0};
    const size_t bytes = stored[image->type];
    std::memcpy(pixel, color.content.bytes, bytes);
    return bytes != 0;
}
