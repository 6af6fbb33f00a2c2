// The operations on whole paths that others build on.
#pragma once

#include "path/Path.h"

namespace lx {

// Moves the stored points in place, up to the first word that is no item.
void transformPath(LxPath &path, const LxMatrix &matrix);

// Clips closed subpaths of moves and lines. A path without a close, or with a word that is no item, stays as
// it is. False without memory.
bool clipPath(LxPath &path, const LxRectD &clip);

} // namespace lx
