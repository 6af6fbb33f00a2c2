// What the program draws on: a context by one of the library's renderers, and the picture that comes of it.
#pragma once

#include <cstdint>
#include <memory>

#include <oxlume/LxGC.h>

#include "tools/ImageHandle.h"

namespace tool {

// A transparent picture under way. Its first row is the context's y = 0 with every renderer: also OpenGL,
// whose y grows upwards, has its rows taken in the order of y.
class Canvas {
public:
    virtual ~Canvas() = default;
    virtual LxGC *context() const = 0;

    // The picture as it is now, of type kLxPixelRGBA with plain colours. Nothing more is drawn.
    virtual ImageHandle finish() = 0;
};

// Makes a canvas of a size. Throws a Failure for lack of memory, where the program was built without the
// renderer, and where the machine does not offer what it draws with.
using CanvasMaker = std::unique_ptr<Canvas> (*)(int32_t width, int32_t height);

std::unique_ptr<Canvas> makeSoftwareCanvas(int32_t width, int32_t height);
std::unique_ptr<Canvas> makeQuartzCanvas(int32_t width, int32_t height);
std::unique_ptr<Canvas> makeOpenGLCanvas(int32_t width, int32_t height);

// Whether the program was built with Quartz, by which there is text.
extern const bool hasQuartzCanvas;

// A new transparent picture of type kLxPixelRGBA. Throws a Failure for lack of memory.
ImageHandle makePicture(int32_t width, int32_t height);

// Turns colours that are multiplied by their alpha into plain ones, as PNG files want them.
void divideByAlpha(LxImage &picture);

} // namespace tool
