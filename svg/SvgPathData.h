// Path data: the attribute "d" of an SVG path.
#pragma once

#include <oxlume/LxPath.h>

#include "svg/SvgScanner.h"

namespace lx {

// Appends to the path what the data draws. A command without its letter, as the repeated pairs of many files
// are, draws nothing, and neither do smooth curves; quadratic curves become two lines.
void addPathData(LxPath *path, const char *data, LxSVGScanner &scanner);

} // namespace lx
