// The canvas of the OpenGL renderer: a buffer without a display.

#define GL_GLEXT_PROTOTYPES // for glBlendFuncSeparate

#include <optional>

#include "tools/Canvas.h"
#include "tools/Failure.h"
#include "tools/OffscreenGL.h"

namespace tool {
namespace {

class OpenGLCanvas : public Canvas {
public:
    OpenGLCanvas(int32_t width, int32_t height) : buffer_(OffscreenGL::open(width, height)) {
        if (!buffer_)
            throw Failure("--renderer opengl: no context of this size can be had without a display");
        context_ = LxGC_CreateWithOpenGLContext(nullptr, LxRectD{0, 0, double(width), double(height)});
        if (context_ == nullptr)
            throw Failure("not enough memory for the picture");
        // The renderer blends alpha as it blends colours, which leaves it too low for a picture that begins
        // transparent. Kept apart, both end multiplied by alpha.
        glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        LxGC_Fill(context_, LxColor_RGBA(0, 0, 0, 0));
    }
    ~OpenGLCanvas() override { LxGC_Delete(context_); }
    LxGC *context() const override { return context_; }

    ImageHandle finish() override {
        LxGC_Sync(context_);
        ImageHandle picture = buffer_->read();
        if (picture == nullptr)
            throw Failure("not enough memory for the picture");
        divideByAlpha(*picture);
        return picture;
    }

private:
    std::optional<OffscreenGL> buffer_; // goes last: the context needs it
    LxGC *context_ = nullptr;
};

} // namespace

std::unique_ptr<Canvas> makeOpenGLCanvas(int32_t width, int32_t height) {
    return std::make_unique<OpenGLCanvas>(width, height);
}

} // namespace tool
