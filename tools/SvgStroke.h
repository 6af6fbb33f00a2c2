// The strokes of SVG shapes: dashes, joins and ends around the library's outlines.
#pragma once

#include <oxlume/LxPath.h>

#include "tools/PathText.h"
#include "tools/SvgShape.h"
#include "tools/SvgStyle.h"

namespace tool {

// The outline of a shape's lines as a path in the picture's coordinates, to be filled by the non-zero rule.
// Dashes count the points down, and more than `pointsLeft` are a Failure.
PathHandle strokeOf(const SvgShape &shape, const SvgStyle &style, size_t &pointsLeft);

} // namespace tool
