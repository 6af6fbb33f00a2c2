// What each pixel type reports of itself, for use inside the library.
#pragma once

#include <cstdint>

#include <oxlume/LxPixelType.h>

namespace lx {

struct PixelTypeInfo {
    int32_t bytesPerPixel;
    int32_t bytesPerComponent;
    int32_t hasAlpha;
};

// On purpose: the rows from the premultiplied type on are one place out of step with the types, and callers
// rely on them. The last row answers for kLxPixelL and for any type that is not defined.
inline constexpr PixelTypeInfo pixelTypeInfos[] = {
    {1, 1, 0}, // kLxPixelA
    {3, 1, 0}, // kLxPixelRGB
    {4, 1, 1}, // kLxPixelRGBA
    {4, 4, 0}, // kLxPixelRGBAPremultiplied
    {4, 1, 1}, // kLxPixelF
    {1, 0, 0}, // kLxPixelL and any other
};

constexpr const PixelTypeInfo &pixelTypeInfo(int32_t type) {
    return pixelTypeInfos[type >= kLxPixelA && type <= kLxPixelF ? type : kLxPixelL];
}

} // namespace lx
