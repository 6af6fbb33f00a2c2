#include "blend/Composite.h"

#include <algorithm>
#include <optional>

#include "geometry/Rect.h"

namespace lx {
namespace {

std::optional<LxRectL> common(const LxRectL &one, const LxRectL &other) {
    return isIntersecting(one, other) ? std::optional(intersect(one, other)) : std::nullopt;
}

LxRectL atOrigin(const LxImage &image) {
    return {0, 0, width(image), height(image)};
}

// Where a kernel starts in an image, and its step to the next row: downward whichever way rows are stored.
struct Start {
    void *pixel;
    int32_t stride;
};

int32_t stepDown(const LxImage &image) {
    return image.flipped != 0 ? wrappingSubtract(0, image.rowBytes) : image.rowBytes;
}

Start startAt(LxImage &image, int32_t x, int32_t y) {
    return {LxImage_Pointer(&image, x, y), stepDown(image)};
}

// Rows that a kernel may walk: in a flipped image that lives in its record every position is the first stored
// row, with nothing before it.
uint32_t rowLimit(const LxImage &image) {
    return isInline(image) && image.flipped != 0 ? 1 : UINT32_MAX;
}

// The rectangle to blend, in the outer coordinates.
std::optional<LxRectL> areaOf(const Operands &operands, const LxImage *mask, const LxRectL *rect) {
    const LxImage &b = operands.b;
    std::optional<LxRectL> area =
        operands.bIsDistinct() ? common(b.rect, operands.out.rect) : common(atOrigin(b), b.rect);
    if (area && rect != nullptr)
        area = common(*rect, *area);
    if (!area)
        return std::nullopt;
    // Sorting and absent rectangles can widen an intersection: no pixel outside an image is ever touched.
    area = cut(*area, drawableArea(operands));
    if (!operands.bIsDistinct())
        area = cut(*area, b.rect);
    else
        area = cut(cut(*area, operands.a.rect), b.rect);
    if (mask != nullptr)
        area = cut(*area, mask->rect);
    return isEmpty(*area) ? std::nullopt : area;
}

} // namespace

LxRectL drawableArea(const Operands &operands) {
    return operands.bIsDistinct() ? operands.out.rect : atOrigin(operands.b);
}

void compositeRectangle(LxBlend &blend, const Operands &operands, const LxRectL *rect) {
    const bool distinct = operands.bIsDistinct();
    LxImage &b = operands.b;
    LxImage &out = distinct ? operands.out : b;
    LxImage &a = distinct ? operands.a : b;
    const LxImage *mask =
        operands.mask != nullptr && operands.mask->type == kLxPixelA ? operands.mask : nullptr;

    const LxMapBlendFunction kernel = LxBlend_SelectMapBlendFunction(
        static_cast<int32_t>(out.type), static_cast<int32_t>(a.type), static_cast<int32_t>(b.type));
    const std::optional<LxRectL> area = areaOf(operands, mask, rect);
    if (kernel == nullptr || !area)
        return;

    const auto inside = [&](LxImage &image) {
        return startAt(image, area->x0 - image.rect.x0, area->y0 - image.rect.y0);
    };
    // On purpose: an image on itself is written at the area's own coordinates and read from its position.
    const Start to = distinct ? inside(out) : startAt(out, area->x0, area->y0);
    const Start fromA = inside(a), fromB = inside(b);
    if (to.pixel == nullptr || fromA.pixel == nullptr || fromB.pixel == nullptr)
        return;
    const auto w = static_cast<uint32_t>(area->x1 - area->x0);
    auto h = std::min({static_cast<uint32_t>(area->y1 - area->y0), rowLimit(out), rowLimit(a), rowLimit(b)});
    if (mask == nullptr) {
        const LxBlend copy = blend;
        kernel(&copy, to.pixel, fromA.pixel, fromB.pixel, nullptr, to.stride, fromA.stride, fromB.stride, 0,
               w, h);
        return;
    }
    const void *maskPixel = LxImage_ConstPointer(mask, area->x0 - mask->rect.x0, area->y0 - mask->rect.y0);
    if (maskPixel == nullptr)
        return;
    h = std::min(h, rowLimit(*mask));
    if (b.type == kLxPixelRGBAPremultiplied)
        blend.premultiplied = 1;
    kernel(&blend, to.pixel, fromA.pixel, fromB.pixel, maskPixel, to.stride, fromA.stride, fromB.stride,
           stepDown(*mask), w, h);
    blend.premultiplied = 0;
}

} // namespace lx

using namespace lx;

namespace {

void composite(LxBlend &blend, const Operands &operands, const LxRectL *rect) {
    if (operands.b.tiled != 0)
        return;
    if (operands.b.segment == 0)
        return compositeRectangle(blend, operands, rect);
    compositeFrame(blend, operands, rect != nullptr ? *rect : atOrigin(operands.out));
}

} // namespace

void LxBlend_Image_Image_Image(LxBlend *blend, LxImage *out, LxImage *a, LxImage *b, const LxImage *mask,
                               const LxRectL *rect) {
    if (blend != nullptr && out != nullptr && a != nullptr && b != nullptr)
        composite(*blend, {*out, *a, *b, mask}, rect);
}

void LxBlend_Image_Image(LxBlend *blend, LxImage *dst, LxImage *src, const LxImage *mask,
                         const LxRectL *rect) {
    LxBlend_Image_Image_Image(blend, dst, dst, src, mask, rect);
}

void LxBlend_Image(LxBlend *blend, LxImage *image, const LxImage *mask, const LxRectL *rect) {
    if (blend != nullptr && image != nullptr && image->tiled == 0 && image->segment == 0)
        compositeRectangle(*blend, {*image, *image, *image, mask}, rect);
}
