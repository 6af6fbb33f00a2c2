// An image that deletes itself, for tests.
#pragma once

#include <memory>

#include <oxlume/LxImage.h>

namespace lx::test {

struct DeleteImage {
    void operator()(LxImage *image) const { LxImage_Delete(image); }
};

using ImageHandle = std::unique_ptr<LxImage, DeleteImage>;

// A cleared image of the given size at the origin.
inline ImageHandle makeImage(int32_t type, int32_t width, int32_t height, bool flipped = false) {
    return ImageHandle(LxImage_Create(type, 0, 0, width, height, 1, flipped ? 1 : 0));
}

} // namespace lx::test
