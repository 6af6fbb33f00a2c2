// Segments and tiles of a picture: reading them and choosing among them.

#include <initializer_list>

#include "geometry/Rect.h"
#include "image/Image.h"

using namespace lx;

namespace {

int32_t segmentWidth(const LxImage &image, int slot) {
    return width(image.cut.segment(slot));
}

int32_t segmentHeight(const LxImage &image, int slot) {
    return height(image.cut.segment(slot));
}

using SegmentSize = int32_t (*)(const LxImage &, int slot);

// The size of the first non-empty one of three slots, 0 if there is none.
int32_t sizeOfFirst(const LxImage &image, SegmentSize size, int slot, int step) {
    for (int i = 0; i < 3; ++i, slot += step)
        if (!isEmpty(image.cut.segment(slot)))
            return size(image, slot);
    return 0;
}

// On purpose: the last three answers are those of slots 3 to 5 again, not of 6 to 8.
constexpr int slotsOfNine[9] = {0, 1, 2, 3, 4, 5, 3, 4, 5};

void readNine(const LxImage &image, SegmentSize size, int32_t *const (&results)[9]) {
    for (int i = 0; i < 9; ++i)
        *results[i] = size(image, slotsOfNine[i]);
}

// Two results of the tile grid.
void readPair(const LxImage *image, CutArea::Tile first, int32_t *a, CutArea::Tile second, int32_t *b) {
    if (image == nullptr)
        return;
    *a = image->cut.words[first];
    *b = image->cut.words[second];
}

// A tile position within its count; on purpose, nothing holds it from below.
int32_t heldBelow(int32_t count, int32_t position) {
    return position >= count ? wrappingSubtract(count, 1) : position;
}

} // namespace

LxRectL LxImage_SegmentRectL(const LxImage *image, int32_t column, int32_t row) {
    if (image == nullptr || column > 2)
        return {};
    const int64_t slot = int64_t{row} * 3 + column;
    return slot >= 0 && slot < CutArea::slots ? image->cut.segment(static_cast<int>(slot)) : LxRectL{};
}

void LxImage_SegmentW(const LxImage *image, int32_t *left, int32_t *middle, int32_t *right) {
    if (image == nullptr)
        return;
    *left = sizeOfFirst(*image, segmentWidth, 0, 3);
    *middle = sizeOfFirst(*image, segmentWidth, 1, 3);
    *right = sizeOfFirst(*image, segmentWidth, 2, 3);
}

void LxImage_SegmentH(const LxImage *image, int32_t *top, int32_t *middle, int32_t *bottom) {
    if (image == nullptr)
        return;
    *top = sizeOfFirst(*image, segmentHeight, 0, 1);
    *middle = sizeOfFirst(*image, segmentHeight, 3, 1);
    *bottom = sizeOfFirst(*image, segmentHeight, 6, 1);
}

void LxImage_SegmentX(const LxImage *image, int32_t *a, int32_t *b, int32_t *c, int32_t *d, int32_t *e,
                      int32_t *f, int32_t *g, int32_t *h, int32_t *i) {
    if (image != nullptr)
        readNine(*image, segmentWidth, {a, b, c, d, e, f, g, h, i});
}

void LxImage_SegmentY(const LxImage *image, int32_t *a, int32_t *b, int32_t *c, int32_t *d, int32_t *e,
                      int32_t *f, int32_t *g, int32_t *h, int32_t *i) {
    if (image != nullptr)
        readNine(*image, segmentHeight, {a, b, c, d, e, f, g, h, i});
}

void LxImage_SegmentFlag(const LxImage *image, int32_t *a, int32_t *b, int32_t *c, int32_t *d, int32_t *e,
                         int32_t *f) {
    if (image == nullptr)
        return;
    int bit = 0;
    for (int32_t *result : {a, b, c, d, e, f})
        *result = static_cast<int32_t>((image->cut.switches() >> bit++) & 1);
}

void LxImage_SetSegmentFlag(LxImage *image, int32_t a, int32_t b, int32_t c, int32_t d, int32_t e,
                            int32_t f) {
    if (image == nullptr)
        return;
    uint32_t switches = image->cut.switches();
    uint32_t bit = 1;
    for (const int32_t value : {a, b, c, d, e, f}) {
        switches = value == 1 ? switches | bit : switches & ~bit;
        bit <<= 1;
    }
    image->cut.setSwitches(switches);
}

void LxImage_Tile(const LxImage *image, int32_t *x, int32_t *y) {
    readPair(image, CutArea::tileX, x, CutArea::tileY, y);
}

void LxImage_TileNum(const LxImage *image, int32_t *x, int32_t *y) {
    readPair(image, CutArea::tileCountX, x, CutArea::tileCountY, y);
}

void LxImage_TileSize(const LxImage *image, int32_t *w, int32_t *h) {
    readPair(image, CutArea::tileW, w, CutArea::tileH, h);
}

int32_t LxImage_SetTile(LxImage *image, int32_t x, int32_t y) {
    if (image == nullptr || image->tiled == 0)
        return 0;
    int32_t *words = image->cut.words;
    words[CutArea::tileX] = heldBelow(words[CutArea::tileCountX], x);
    words[CutArea::tileY] = heldBelow(words[CutArea::tileCountY], y);
    return 1;
}

LxRectL LxImage_TileRectL(const LxImage *image) {
    if (image == nullptr)
        return {};
    const int32_t *words = image->cut.words;
    const int32_t w = words[CutArea::tileW];
    const int32_t h = words[CutArea::tileH];
    // On purpose: tiles step by their size + 1, though equal cells between marks stand their size + 2 apart.
    const int32_t left = wrappingAdd(wrappingMultiply(wrappingAdd(w, 1), words[CutArea::tileX]), 1);
    const int32_t top = wrappingAdd(wrappingMultiply(wrappingAdd(h, 1), words[CutArea::tileY]), 1);
    return {left, top, wrappingAdd(left, w), wrappingAdd(top, h)};
}
