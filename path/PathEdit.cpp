// Paths: inserting, replacing and removing items by their index.

#include <algorithm>
#include <cstring>

#include "path/Path.h"
#include "path/PathIndex.h"
#include "path/Polygon.h"

namespace lx {

int32_t indexStep(const LxPath &path, int32_t position) {
    int64_t step = 1;
    switch (path.words[position]) {
    case kLxPathMove:
    case kLxPathLine:
        step = 3;
        break;
    case kLxPathQCurve:
        step = 5;
        break;
    case kLxPathCurve:
        step = 7;
        break;
    case kLxPathArc:
        step = 8;
        break;
    case kLxPathPolygon:
    case 8:
        // On purpose: this word is the first point's x and not the number of points.
        if (position + 2 < path.capacity)
            step = 1 + int64_t{static_cast<int32_t>(path.words[position + 2])};
        break;
    default:
        break;
    }
    return static_cast<int32_t>(std::clamp<int64_t>(step, 1, path.count - position));
}

int32_t positionOfItem(const LxPath &path, int32_t index) {
    int32_t position = 0;
    for (; index > 0 && position < path.count; --index)
        position += indexStep(path, position);
    return position;
}

namespace {

// Makes room for `size` words in front of an item, with `written` words from there on inside the array. Null
// without memory.
uint32_t *insertSlot(LxPath &path, int32_t index, int64_t size, int64_t written) {
    const int32_t position = positionOfItem(path, index);
    if (!ensureRoom(path, std::max(path.count + size, position + written)))
        return nullptr;
    uint32_t *slot = path.words + position;
    std::copy_backward(slot, path.words + path.count, path.words + path.count + size);
    path.count += static_cast<int32_t>(size);
    return slot;
}

// Replaces an item by one of `size` words, of which `written` are inside the array. Null without such an item
// or without memory.
uint32_t *replaceSlot(LxPath &path, int32_t index, int64_t size, int64_t written) {
    const int32_t position = positionOfItem(path, index);
    if (position >= path.count)
        return nullptr;
    if (!ensureRoom(path, std::max(path.count + size, position + written)))
        return nullptr;
    uint32_t *slot = path.words + position;
    const uint32_t *tail = slot + indexStep(path, position);
    const uint32_t *end = path.words + path.count;
    std::memmove(slot + size, tail, static_cast<size_t>(end - tail) * sizeof *tail);
    // On purpose: the count goes up by the whole new size and not by the growth.
    path.count += static_cast<int32_t>(size);
    return slot;
}

template <size_t Size>
uint32_t *insert(LxPath *path, int32_t index, const Item<Size> &item) {
    if (path == nullptr)
        return nullptr;
    uint32_t *slot = insertSlot(*path, index, Size, Size);
    return slot != nullptr ? write(slot, item) : nullptr;
}

template <size_t Size>
uint32_t *replace(LxPath *path, int32_t index, const Item<Size> &item) {
    if (path == nullptr)
        return nullptr;
    uint32_t *slot = replaceSlot(*path, index, Size, Size);
    return slot != nullptr ? write(slot, item) : nullptr;
}

} // namespace

bool insertLine(LxPath &path, int32_t index, double x, double y) {
    return insert(&path, index, lineItem(x, y)) != nullptr;
}

} // namespace lx

using namespace lx;

uint32_t *LxPath_InsertMoveTo(LxPath *path, int32_t index, double x, double y) {
    return insert(path, index, moveItem(x, y));
}

uint32_t *LxPath_InsertLineTo(LxPath *path, int32_t index, double x, double y) {
    return insert(path, index, lineItem(x, y));
}

uint32_t *LxPath_InsertQCurveTo(LxPath *path, int32_t index, double cx, double cy, double x, double y) {
    return insert(path, index, qcurveItem(cx, cy, x, y));
}

uint32_t *LxPath_InsertCurveTo(LxPath *path, int32_t index, double c1x, double c1y, double c2x, double c2y,
                               double x, double y) {
    return insert(path, index, curveItem(c1x, c1y, c2x, c2y, x, y));
}

uint32_t *LxPath_InsertArcTo(LxPath *path, int32_t index, double x1, double y1, double x2, double y2,
                             double radius, uint32_t word1, uint32_t word2) {
    return insert(path, index, arcItem(x1, y1, x2, y2, radius, word1, word2));
}

uint32_t *LxPath_InsertPolygonTo(LxPath *path, int32_t index, const LxPointD *points, int32_t n) {
    if (path == nullptr || (points == nullptr && n > 0))
        return nullptr;
    const PolygonItem polygon(points, n);
    uint32_t *slot = insertSlot(*path, index, polygon.wordsCounted(), polygon.wordsWritten());
    return slot != nullptr ? polygon.write(slot) : nullptr;
}

uint32_t *LxPath_InsertClose(LxPath *path, int32_t index) {
    return insert(path, index, closeItem());
}

uint32_t *LxPath_ReplaceByMoveTo(LxPath *path, int32_t index, double x, double y) {
    return replace(path, index, moveItem(x, y));
}

uint32_t *LxPath_ReplaceByLineTo(LxPath *path, int32_t index, double x, double y) {
    return replace(path, index, lineItem(x, y));
}

uint32_t *LxPath_ReplaceByQCurveTo(LxPath *path, int32_t index, double cx, double cy, double x, double y) {
    return replace(path, index, qcurveItem(cx, cy, x, y));
}

uint32_t *LxPath_ReplaceByCurveTo(LxPath *path, int32_t index, double c1x, double c1y, double c2x, double c2y,
                                  double x, double y) {
    return replace(path, index, curveItem(c1x, c1y, c2x, c2y, x, y));
}

uint32_t *LxPath_ReplaceByArcTo(LxPath *path, int32_t index, double x1, double y1, double x2, double y2,
                                double radius, uint32_t word1, uint32_t word2) {
    return replace(path, index, arcItem(x1, y1, x2, y2, radius, word1, word2));
}

uint32_t *LxPath_ReplaceByPolygonTo(LxPath *path, int32_t index, const LxPointD *points, int32_t n) {
    if (path == nullptr || (points == nullptr && n > 0))
        return nullptr;
    const PolygonItem polygon(points, n);
    uint32_t *slot = replaceSlot(*path, index, polygon.wordsCounted(), polygon.wordsWritten());
    if (slot != nullptr)
        polygon.write(slot);
    return slot;
}

uint32_t *LxPath_ReplaceByClose(LxPath *path, int32_t index) {
    return replace(path, index, closeItem());
}

void LxPath_RemoveItem(LxPath *path, int32_t index) {
    if (path == nullptr)
        return;
    const int32_t position = positionOfItem(*path, index);
    if (position >= path->count)
        return;
    const int32_t size = indexStep(*path, position);
    uint32_t *item = path->words + position;
    std::copy(item + size, path->words + path->count, item);
    path->count -= size;
}
