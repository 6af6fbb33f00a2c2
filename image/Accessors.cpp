// Reading and writing the fields of the record.

#include "colour/PixelType.h"
#include "geometry/Rect.h"
#include "image/Image.h"

using namespace lx;

namespace {

const PixelTypeInfo &typeInfo(const LxImage &image) {
    return pixelTypeInfo(static_cast<int32_t>(image.type));
}

} // namespace

int32_t LxImage_Type(const LxImage *image) {
    return image != nullptr ? static_cast<int32_t>(image->type) : 0;
}

int32_t LxImage_BytesPerPixel(const LxImage *image) {
    return image != nullptr ? typeInfo(*image).bytesPerPixel : 0;
}

int32_t LxImage_BytesPerComponent(const LxImage *image) {
    return image != nullptr ? typeInfo(*image).bytesPerComponent : 0;
}

int32_t LxImage_HasAlpha(const LxImage *image) {
    return image != nullptr ? typeInfo(*image).hasAlpha : 0;
}

int32_t LxImage_BytesPerRow(const LxImage *image) {
    return image != nullptr ? image->rowBytes : 0;
}

int32_t LxImage_PadBytes(const LxImage *image) {
    if (image == nullptr)
        return 0;
    return wrappingSubtract(image->rowBytes, wrappingMultiply(width(*image), LxImage_BytesPerPixel(image)));
}

void *LxImage_Data(LxImage *image) {
    return image != nullptr ? firstRow(*image) : nullptr;
}

const void *LxImage_ConstData(const LxImage *image) {
    return image != nullptr ? firstRow(*image) : nullptr;
}

int32_t LxImage_DataSize(const LxImage *image) {
    return image != nullptr ? wrappingMultiply(height(*image), image->rowBytes) : 0;
}

int32_t LxImage_MemSize(const LxImage *image) {
    return image != nullptr ? image->memSize : 0;
}

int32_t LxImage_w(const LxImage *image) {
    return image != nullptr ? width(*image) : 0;
}

int32_t LxImage_h(const LxImage *image) {
    return image != nullptr ? height(*image) : 0;
}

int32_t LxImage_x(const LxImage *image) {
    return image != nullptr ? image->rect.x0 : 0;
}

int32_t LxImage_y(const LxImage *image) {
    return image != nullptr ? image->rect.y0 : 0;
}

int32_t LxImage_MinX(const LxImage *image) {
    return LxImage_x(image);
}

int32_t LxImage_MinY(const LxImage *image) {
    return LxImage_y(image);
}

int32_t LxImage_MaxX(const LxImage *image) {
    return image != nullptr ? image->rect.x1 : 0;
}

int32_t LxImage_MaxY(const LxImage *image) {
    return image != nullptr ? image->rect.y1 : 0;
}

LxPointL LxImage_Pos(const LxImage *image) {
    return {LxImage_x(image), LxImage_y(image)};
}

LxPointL LxImage_Size(const LxImage *image) {
    return {LxImage_w(image), LxImage_h(image)};
}

LxPointL LxImage_Center(const LxImage *image) {
    return {wrappingAdd(LxImage_x(image), LxImage_w(image) / 2),
            wrappingAdd(LxImage_y(image), LxImage_h(image) / 2)};
}

LxRectL LxImage_RectL(const LxImage *image) {
    return image != nullptr ? image->rect : LxRectL{};
}

LxRectD LxImage_RectD(const LxImage *image) {
    return widened(LxImage_RectL(image));
}

int32_t LxImage_isPlanar(const LxImage *image) {
    return image != nullptr && image->planar != 0;
}

int32_t LxImage_isFlipped(const LxImage *image) {
    return image != nullptr && image->flipped != 0;
}

int32_t LxImage_isTiled(const LxImage *image) {
    return image != nullptr && image->tiled != 0;
}

int32_t LxImage_isEmpty(const LxImage *image) {
    return image == nullptr || image->empty != 0;
}

int32_t LxImage_isSegmented(const LxImage *image) {
    return image != nullptr && image->segment != 0;
}

int32_t LxImage_SegmentType(const LxImage *image) {
    return image != nullptr ? static_cast<int32_t>(image->segment) : 0;
}

LxImage *LxImage_SetEmpty(LxImage *image, int32_t empty) {
    if (image != nullptr)
        image->empty = empty != 0;
    return image;
}

void LxImage_SetFlipped(LxImage *image, int32_t flipped) {
    if (image != nullptr)
        image->flipped = flipped != 0;
}

void LxImage_MoveTo(LxImage *image, int32_t x, int32_t y) {
    if (image == nullptr)
        return;
    LxRectL &rect = image->rect;
    rect.x1 = wrappingAdd(rect.x1, wrappingSubtract(x, rect.x0));
    rect.y1 = wrappingAdd(rect.y1, wrappingSubtract(y, rect.y0));
    rect.x0 = x;
    rect.y0 = y;
}

void LxImage_MutableMoveTo(LxImage *image, int32_t x, int32_t y) {
    LxImage_MoveTo(image, x, y);
}
