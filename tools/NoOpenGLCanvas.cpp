// In a program without OpenGL there is no canvas for it.

#include "tools/Canvas.h"
#include "tools/Failure.h"

namespace tool {

std::unique_ptr<Canvas> makeOpenGLCanvas(int32_t, int32_t) {
    throw Failure("--renderer opengl: this program was built without it");
}

} // namespace tool
