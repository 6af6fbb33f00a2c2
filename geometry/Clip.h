// Clipping of lines to rectangles, for use inside the library.
#pragma once

#include <oxlume/LxLine.h>
#include <oxlume/LxRect.h>

namespace lx {

// Clips to all four sides, inclusive, and answers whether the first end is inside at the end. An empty
// rectangle, or an end that is infinite or not a number, answers false and leaves the line untouched; any
// other rejected line may come back partly clipped.
bool clipLine(const LxRectD &rect, LxLineD &line);

// The same for a rectangle of pixels: the far sides are x1 - 1 and y1 - 1.
bool clipLineToPixels(const LxRectD &rect, LxLineD &line);

} // namespace lx
