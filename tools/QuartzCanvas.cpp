// The canvas of the Quartz renderer: a context over the picture's own pixels.

#include <oxlume/LxQuartz.h>

#include <utility>

#include "image/Image.h"
#include "tools/Canvas.h"
#include "tools/Failure.h"

namespace tool {
namespace {

class QuartzCanvas : public Canvas {
public:
    QuartzCanvas(int32_t width, int32_t height)
        : picture_(makePicture(width, height)),
          target_(LxQuartz_CreateWithPixels(lx::firstRow(*picture_), width, height, picture_->rowBytes)),
          context_(LxGC_CreateWithCGContextRef(target_, LxRectD{0, 0, double(width), double(height)})) {
        if (context_ == nullptr) {
            CGContextRelease(target_);
            throw Failure("--renderer quartz: no context of this size can be had");
        }
    }
    ~QuartzCanvas() override {
        LxGC_Delete(context_);
        CGContextRelease(target_);
    }
    LxGC *context() const override { return context_; }

    ImageHandle finish() override {
        CGContextFlush(target_);
        divideByAlpha(*picture_);
        return std::move(picture_);
    }

private:
    ImageHandle picture_; // the pixels are multiplied by alpha until the end
    CGContextRef target_;
    LxGC *context_;
};

} // namespace

const bool hasQuartzCanvas = true;

std::unique_ptr<Canvas> makeQuartzCanvas(int32_t width, int32_t height) {
    return std::make_unique<QuartzCanvas>(width, height);
}

} // namespace tool
