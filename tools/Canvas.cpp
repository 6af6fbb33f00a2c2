// The canvas of the software renderer, and what all canvases share.

#include "tools/Canvas.h"

#include <algorithm>
#include <utility>

#include "image/Image.h"
#include "tools/Failure.h"

namespace tool {
namespace {

class SoftwareCanvas : public Canvas {
public:
    SoftwareCanvas(int32_t width, int32_t height) : picture_(makePicture(width, height)) {
        if (LxImage_GC(picture_.get()) == nullptr)
            throw Failure("not enough memory for the picture");
    }
    LxGC *context() const override { return LxImage_GC(picture_.get()); }
    ImageHandle finish() override { return std::move(picture_); }

private:
    ImageHandle picture_;
};

} // namespace

std::unique_ptr<Canvas> makeSoftwareCanvas(int32_t width, int32_t height) {
    return std::make_unique<SoftwareCanvas>(width, height);
}

ImageHandle makePicture(int32_t width, int32_t height) {
    ImageHandle picture(LxImage_Create(kLxPixelRGBA, 0, 0, width, height, 1, 0));
    if (picture == nullptr)
        throw Failure("not enough memory for the picture");
    return picture;
}

void divideByAlpha(LxImage &picture) {
    for (int32_t y = 0; y < lx::height(picture); ++y) {
        uint8_t *pixel = lx::rowAddress(picture, y);
        for (int32_t x = 0; x < lx::width(picture); ++x, pixel += 4) {
            const int alpha = pixel[3];
            if (alpha == 0 || alpha == 255)
                continue;
            for (int c = 0; c < 3; ++c)
                pixel[c] = static_cast<uint8_t>(std::min(255, (pixel[c] * 255 + alpha / 2) / alpha));
        }
    }
}

} // namespace tool
