// The operations on whole paths that others build on.
#pragma once

#include <oxlume/LxRect.h>

#include "path/BackwardBuilder.h"
#include "path/Path.h"
#include "path/PathBuilder.h"

namespace lx {

// Moves the stored points in place, up to the first word that is no item.
void transformPath(LxPath &path, const LxMatrix &matrix);

// Clips closed subpaths of moves and lines. A path without a close, or with a word that is no item, stays as
// it is. False without memory.
bool clipPath(LxPath &path, const LxRectD &clip);

// The same into `out`: answers the path that is the result, `out`'s or, where it stays as it is, `path`
// itself.
const LxPath &clipped(const LxPath &path, const LxRectD &clip, PathBuilder &out);

// The memory of paths on their way to be painted, kept from one to the next.
struct PathScratch {
    PathBuilder words, clippedWords;
    BackwardBuilder backward;
};

// As LxPath_CreateTransformed and LxPath_CreateOutlined, without a path of its own: what they answer lasts as
// long as the scratch is left alone. Null without memory.
const LxPath *transformed(const LxPath &path, const LxMatrix &matrix, const LxRectD &clip,
                          PathScratch &scratch);
const LxPath *outlined(const LxPath &path, const LxMatrix &matrix, const LxRectD &clip, double width,
                       int32_t style, PathScratch &scratch);

} // namespace lx
