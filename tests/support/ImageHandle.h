// Images of tests delete themselves.
#pragma once

#include "image/ImageHandle.h"

namespace lx::test {

using lx::ImageHandle;

// A cleared image of the given size at the origin.
inline ImageHandle makeImage(int32_t type, int32_t width, int32_t height, bool flipped = false) {
    return ImageHandle(LxImage_Create(type, 0, 0, width, height, 1, flipped ? 1 : 0));
}

} // namespace lx::test
