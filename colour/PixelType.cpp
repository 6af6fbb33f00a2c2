// What each pixel type reports of itself.

#include "colour/PixelType.h"

using namespace lx;

int32_t LxColor_BytesPerPixel(int32_t type) {
    return pixelTypeInfo(type).bytesPerPixel;
}

int32_t LxColor_BytesPerComponent(int32_t type) {
    return pixelTypeInfo(type).bytesPerComponent;
}

int32_t LxColor_HasAlpha(int32_t type) {
    return pixelTypeInfo(type).hasAlpha;
}

int32_t LxColor_BytesPerRow(int32_t type, int32_t width) {
    const int64_t bytes = int64_t{width} * pixelTypeInfo(type).bytesPerPixel;
    return static_cast<int32_t>(static_cast<uint32_t>((bytes + 15) & ~int64_t{15}));
}
