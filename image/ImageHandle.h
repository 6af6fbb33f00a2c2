// An image that deletes itself.
#pragma once

#include <memory>

#include <oxlume/LxImage.h>

namespace lx {

struct DeleteImage {
    void operator()(LxImage *image) const { LxImage_Delete(image); }
};

using ImageHandle = std::unique_ptr<LxImage, DeleteImage>;

} // namespace lx
