// Mirroring the pixels of an image.

#include <algorithm>
#include <utility>

#include "image/Image.h"
#include "image/Pixels.h"

namespace lx {
namespace {

// Byte by byte, since the two may overlap.
void swapPixels(uint8_t *one, uint8_t *other, size_t bytes) {
    for (size_t i = 0; i < bytes; ++i)
        std::swap(one[i], other[i]);
}

// The part of the request inside `bounds` moved to the origin, and inside the image; empty where they do not
// meet.
LxRectL clippedRequest(const LxImage &image, LxRectL request, LxRectL bounds) {
    LxRectL_moveTo(&bounds, 0, 0);
    if (LxRectL_isIntersecting(request, bounds) == 0)
        return {};
    LxRectL rect = LxRectL_intersect(request, bounds);
    rect.x0 = std::max(rect.x0, 0);
    rect.y0 = std::max(rect.y0, 0);
    rect.x1 = std::min(rect.x1, width(image));
    rect.y1 = std::min(rect.y1, height(image));
    return rect;
}

bool hasPixels(const LxImage &image) {
    return storedBytes(image) != 0 && firstRow(image) != nullptr;
}

void flipHorizontal(LxImage &image, LxRectL request) {
    if (!hasPixels(image) || (image.tiled == 0 && image.segment != 0))
        return;
    // On purpose: of a tile only the size is left once it is moved to the origin.
    const LxRectL bounds = image.tiled != 0 ? LxImage_TileRectL(&image) : image.rect;
    const LxRectL rect = clippedRequest(image, request, bounds);
    const auto bytes = static_cast<ptrdiff_t>(storedBytes(image));
    for (int32_t y = rect.y0; y < rect.y1; ++y) {
        uint8_t *left = rowAddress(image, y) + rect.x0 * bytes;
        uint8_t *right = rowAddress(image, y) + (rect.x1 - 1) * bytes;
        for (; left < right; left += bytes, right -= bytes)
            swapPixels(left, right, storedBytes(image));
    }
}

void flipVertical(LxImage &image, LxRectL request) {
    if (!hasPixels(image))
        return;
    const LxRectL rect = clippedRequest(image, request, image.rect);
    if (rect.x0 >= rect.x1 || rect.y0 >= rect.y1)
        return;
    const size_t bytes = storedBytes(image);
    const size_t run = static_cast<size_t>(rect.x1 - rect.x0) * bytes;
    const auto rowAt = [&](int64_t y) {
        return rowAddress(image, static_cast<int32_t>(y)) + rect.x0 * static_cast<ptrdiff_t>(bytes);
    };
    // On purpose: where the request begins above the image, the partner is off by twice what was cut away.
    int64_t partner = 2 * int64_t{request.y0} - rect.y0 + (int64_t{rect.y1} - rect.y0) - 1;
    const int64_t middle = (int64_t{rect.y0} + rect.y1) >> 1;
    for (int64_t upper = rect.y0; upper < middle; ++upper, --partner) {
        if (partner >= 0 && partner < height(image))
            swapPixels(rowAt(upper), rowAt(partner), run);
    }
}

// Swaps pixels from both ends of one long run, half as many times as there are pixels; the cursors step
// through memory, over the bytes between rows as well.
void reverse(LxImage &image) {
    if (!hasPixels(image))
        return;
    const auto bytes = static_cast<ptrdiff_t>(storedBytes(image));
    const int64_t w = width(image), h = height(image);
    // On purpose: with one and three bytes the run ends at the first pixel of the last row.
    const int64_t lastColumn = bytes == 4 ? w - 1 : 0;
    int64_t backward = (h - 1) * image.rowBytes + lastColumn * bytes;
    int64_t forward = 0;
    const int64_t end = (h - 1) * image.rowBytes + w * bytes;
    for (int64_t swaps = w * h / 2; swaps > 0 && backward >= 0 && forward + bytes <= end; --swaps) {
        swapPixels(firstRow(image) + forward, firstRow(image) + backward, static_cast<size_t>(bytes));
        forward += bytes;
        backward -= bytes;
    }
}

} // namespace
} // namespace lx

using namespace lx;

void LxImage_FlipHorizontalinRect(LxImage *image, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    if (image != nullptr)
        flipHorizontal(*image, {x0, y0, x1, y1});
}

void LxImage_FlipHorizontal(LxImage *image) {
    LxImage_FlipHorizontalinRect(image, 0, 0, LxImage_w(image), LxImage_h(image));
}

void LxImage_FlipVerticalinRect(LxImage *image, int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
    if (image != nullptr)
        flipVertical(*image, {x0, y0, x1, y1});
}

void LxImage_FlipVertical(LxImage *image) {
    LxImage_FlipVerticalinRect(image, 0, 0, LxImage_w(image), LxImage_h(image));
}

void LxImage_FlipinRect(LxImage *image, int32_t, int32_t, int32_t, int32_t) {
    if (image != nullptr)
        reverse(*image);
}

void LxImage_Flip(LxImage *image) {
    LxImage_FlipinRect(image, 0, 0, 0, 0);
}
