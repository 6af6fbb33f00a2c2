// Images as OpenGL pixel rectangles.
#pragma once

#include <oxlume/LxImage.h>

namespace lx {

// Draws `width` by `height` pixels at the current raster position, from the image's first pixel on. The
// pixels go to OpenGL as they are, in rows packed as its unpack state says. Rows that the image's memory does
// not wholly hold are left out.
void drawPixels(const LxImage &image, int32_t width, int32_t height);

} // namespace lx
