// Paths: creating, clearing, copying, and appending items.

#include "path/Path.h"

#include <algorithm>

#include <oxlume/LxMem.h>

#include "path/PathReader.h"
#include "path/Polygon.h"

namespace lx {
namespace {

// The words behind the path's count that belong to a polygon at its end, which counts short of its points.
int32_t wordsBehindCount(const LxPath &path) {
    int64_t end = 0;
    readItems(path, [&](uint32_t tag, int32_t position, int32_t n) {
        end = tag == kLxPathPolygon ? position + 2 + 2 * int64_t{n} : 0;
    });
    return static_cast<int32_t>(std::max<int64_t>(end - path.count, 0));
}

} // namespace

bool growTo(LxPath &path, int64_t needed) {
    const int64_t blocks = (needed - path.capacity + blockWords - 1) / blockWords;
    const int64_t capacity = path.capacity + blocks * blockWords;
    if (capacity > maxWords)
        return false;
    void *words = LxMem_realloc(path.words, static_cast<uint32_t>(capacity * sizeof(uint32_t)));
    if (words == nullptr)
        return false;
    path.words = static_cast<uint32_t *>(words);
    path.capacity = static_cast<int32_t>(capacity);
    std::fill(path.words + path.count, path.words + path.capacity, 0u);
    return true;
}

void clear(LxPath &path) {
    LxMem_free(path.words);
    path = {};
}

bool append(LxPath &path, const LxPath &source) {
    const int32_t behind = wordsBehindCount(source);
    const int64_t written = int64_t{source.count} + behind;
    if (written == 0)
        return true;
    if (!ensureRoom(path, path.count + written))
        return false;
    std::copy_n(source.words, written, path.words + path.count);
    path.count += source.count;
    return true;
}

LxPath *createPath() {
    return static_cast<LxPath *>(LxMem_calloc(1, sizeof(LxPath)));
}

} // namespace lx

using namespace lx;

LxPath *LxPath_Create(void) {
    return createPath();
}

void LxPath_MakeEmpty(LxPath *path) {
    if (path != nullptr)
        clear(*path);
}

void LxPath_Delete(LxPath *path) {
    if (path != nullptr)
        clear(*path);
    LxMem_free(path);
}

void LxPath_Add(LxPath *dst, const LxPath *src) {
    if (dst == nullptr || src == nullptr)
        return;
    if (dst != src) {
        append(*dst, *src);
        return;
    }
    LxPath copy = {};
    if (append(copy, *src))
        append(*dst, copy);
    clear(copy);
}

void LxPath_Copy(LxPath *dst, const LxPath *src) {
    if (dst == nullptr || src == nullptr || dst == src)
        return;
    clear(*dst);
    append(*dst, *src);
}

LxPath *LxPath_CreateCopy(const LxPath *src) {
    if (src == nullptr)
        return nullptr;
    LxPath *copy = createPath();
    if (copy != nullptr && !append(*copy, *src)) {
        LxPath_Delete(copy);
        return nullptr;
    }
    return copy;
}

// On purpose: the clip plays no part.
LxPath *LxPath_CreateClipped(const LxPath *src, const LxRectD *) {
    return LxPath_CreateCopy(src);
}

void LxPath_AddMoveTo(LxPath *path, double x, double y) {
    if (path != nullptr)
        append(*path, moveItem(x, y));
}

void LxPath_AddLineTo(LxPath *path, double x, double y) {
    if (path != nullptr)
        append(*path, lineItem(x, y));
}

void LxPath_AddQCurveTo(LxPath *path, double cx, double cy, double x, double y) {
    if (path != nullptr)
        append(*path, qcurveItem(cx, cy, x, y));
}

void LxPath_AddCurveTo(LxPath *path, double c1x, double c1y, double c2x, double c2y, double x, double y) {
    if (path != nullptr)
        append(*path, curveItem(c1x, c1y, c2x, c2y, x, y));
}

void LxPath_AddArcTo(LxPath *path, double x1, double y1, double x2, double y2, double radius, uint32_t word1,
                     uint32_t word2) {
    if (path != nullptr)
        append(*path, arcItem(x1, y1, x2, y2, radius, word1, word2));
}

void LxPath_AddClose(LxPath *path) {
    if (path != nullptr)
        append(*path, closeItem());
}

void LxPath_PolygonTo(LxPath *path, const LxPointD *points, int32_t n) {
    if (path == nullptr || (points == nullptr && n > 0))
        return;
    const PolygonItem polygon(points, n);
    if (!ensureRoom(*path, path->count + polygon.wordsWritten()))
        return;
    polygon.write(path->words + path->count);
    path->count += polygon.wordsCounted();
}
