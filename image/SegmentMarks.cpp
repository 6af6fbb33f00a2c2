// The scan for marker pixels, by which a designer's picture says how it is to be cut.
//
// A picture whose top-left pixel has the marker colour carries marks: single marker pixels on its third row,
// which divide it into columns, and on its third column, which divide it into rows. Their numbers and the
// sizes of the cells between them decide whether the picture is a frame of stretchable segments or a sheet of
// equal tiles.

#include <algorithm>
#include <cstring>
#include <span>

#include "image/Image.h"

namespace lx {
namespace {

// r 0, g 255, b 255, a 255, in the order of memory.
constexpr uint8_t markerColour[4] = {0, 255, 255, 255};

// The row and the column that carry the marks.
constexpr int32_t markLine = 2;

constexpr int maxCells = 6;

bool isMarker(const LxImage &image, int32_t x, int32_t y) {
    const int bytes = image.type == kLxPixelRGB ? 3 : 4; // colours without alpha are opaque
    return std::memcmp(rowAddress(image, y) + ptrdiff_t{x} * bytes, markerColour,
                       static_cast<size_t>(bytes)) == 0;
}

// The cells between the marks along one line.
struct Cells {
    int32_t count = -1; // the first mark opens the first cell; only six are stored, and counting goes on
    int32_t start[maxCells] = {};
    int32_t size[maxCells] = {};

    // Reads a line of pixels. A mark is a marker pixel with none beside it; beyond the ends there are none.
    template <class IsMarkerAt>
    void read(int32_t length, IsMarkerAt isMarkerAt) {
        int32_t cellStart = 1;
        bool before = false;
        bool here = isMarkerAt(0);
        for (int32_t at = 0; at < length; ++at) {
            const bool after = at + 1 < length && isMarkerAt(at + 1);
            if (here && !before && !after) {
                ++count;
                if (count >= 1 && count <= maxCells) {
                    start[count - 1] = cellStart;
                    // On purpose: the pixel right before each mark is part of no cell.
                    size[count - 1] = at - cellStart - 1;
                }
                cellStart = at + 1;
            }
            before = here;
            here = after;
        }
    }

    bool firstAreEqual(int32_t cells) const {
        return std::all_of(size, size + cells, [this](int32_t other) { return other == size[0]; });
    }
};

// A segment layout: the numbers of columns and rows that call for it, the slots of its pieces, in the order
// of the cells, and the switches that are on at first.
struct Layout {
    int32_t columns, rows;
    uint32_t switches;
    int pieces;
    int slots[9];
};

// Indexed by layout number - 1. On purpose: layout 6 alone of the last four starts with no switch on.
constexpr Layout layouts[] = {
    {3, 3, 0, 9, {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {3, 1, 0, 3, {0, 1, 2}},
    {1, 3, 0, 3, {0, 3, 6}},
    {5, 1, 7, 5, {0, 1, 2, 3, 5}},
    {1, 5, 7, 5, {0, 3, 6, 1, 7}},
    {6, 1, 0, 6, {0, 1, 2, 3, 4, 5}},
    {1, 6, 7, 6, {0, 3, 6, 1, 4, 7}},
};

// The layout of a picture, or null if it is a sheet of tiles: cells of equal sizes, or numbers that no layout
// has.
const Layout *findLayout(const Cells &columns, const Cells &rows) {
    for (const Layout &layout : layouts) {
        if (layout.columns != columns.count || layout.rows != rows.count)
            continue;
        const bool equal = columns.firstAreEqual(layout.columns) && rows.firstAreEqual(layout.rows);
        return equal ? nullptr : &layout;
    }
    return nullptr;
}

void storeSegments(LxImage &image, const Layout &layout, const Cells &columns, const Cells &rows) {
    image.segment = static_cast<uint32_t>(&layout - layouts + 1) & 7;
    image.cut.setSwitches(layout.switches);
    for (int piece = 0; piece < layout.pieces; ++piece) {
        const int column = piece % layout.columns;
        const int row = piece / layout.columns;
        const int32_t x = columns.start[column];
        const int32_t y = rows.start[row];
        image.cut.setSegment(layout.slots[piece], {x, y, x + columns.size[column], y + rows.size[row]});
    }
}

void storeTiles(LxImage &image, const Cells &columns, const Cells &rows) {
    image.tiled = 1;
    image.cut.words[CutArea::tileCountX] = columns.count;
    image.cut.words[CutArea::tileCountY] = rows.count;
    image.cut.words[CutArea::tileW] = columns.size[0];
    image.cut.words[CutArea::tileH] = rows.size[0];
    LxImage_SetTile(&image, 0, 0);
}

void readMarks(LxImage &image) {
    image.cut = {};
    image.tiled = 0;
    image.segment = 0;
    const bool hasColour =
        image.type == kLxPixelRGB || image.type == kLxPixelRGBA || image.type == kLxPixelRGBAPremultiplied;
    if (!hasColour || firstRow(image) == nullptr || !isMarker(image, 0, 0))
        return;
    const int32_t w = width(image);
    const int32_t h = height(image);
    Cells columns;
    Cells rows;
    if (h > markLine)
        columns.read(w, [&](int32_t x) { return isMarker(image, x, markLine); });
    if (w > markLine)
        rows.read(h, [&](int32_t y) { return isMarker(image, markLine, y); });
    if (const Layout *layout = findLayout(columns, rows))
        storeSegments(image, *layout, columns, rows);
    else
        storeTiles(image, columns, rows);
}

} // namespace
} // namespace lx

void LxImage_ReadSegmentMarks(LxImage *image) {
    if (image != nullptr)
        lx::readMarks(*image);
}
