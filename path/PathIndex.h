// The index walk, by which items are found for editing.
#pragma once

#include "path/Path.h"

namespace lx {

// The step in words from the item at `position`, which lies before the path's end, to the next: at least 1,
// and at most to the end. On purpose it is not a polygon's true size, so that an index means nothing behind a
// polygon with points.
int32_t indexStep(const LxPath &path, int32_t position);

// Where item `index` starts; the path's count if there is no such item.
int32_t positionOfItem(const LxPath &path, int32_t index);

// Inserts a line in front of item `index`. False without memory.
bool insertLine(LxPath &path, int32_t index, double x, double y);

} // namespace lx
