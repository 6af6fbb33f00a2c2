#include "sheen/Sampling.h"

#include <algorithm>
#include <cstring>

#include "image/Image.h"
#include "sheen/SampleRow.h"

namespace lx {
namespace {

float *heightRow(LxImage &image, int32_t y) {
    return reinterpret_cast<float *>(rowAddress(image, y));
}

// Copies each pixel to its mirror image. Where both were sampled, the one further right counts, as if each
// had been copied right after it was sampled.
void mirrorRow(float *row, int32_t width, int32_t sampled) {
    for (int32_t x = 0, mirror = width - 1; x < mirror; ++x, --mirror) {
        if (mirror < sampled)
            row[x] = row[mirror];
        else
            row[mirror] = row[x];
    }
}

// What symmetry makes of the rows and columns of a picture. A mask holds the mirrorings of both kinds and the
// half turn, or one of the three alone, or none.
struct Copies {
    int32_t width, height;
    uint32_t mask;

    bool columns() const { return (mask & mirrorLeftRight) != 0; }
    bool rows() const { return (mask & (mirrorTopBottom | mirrorHalfTurn)) != 0; }
    bool turned() const { return (mask & mirrorTopBottom) == 0; }

    int32_t sampledColumns() const { return columns() ? width / 2 + 1 : width; }
    int32_t sampledRows() const { return rows() ? height / 2 + 1 : height; }

    // Completes row `y`, just sampled, and the row that mirrors it.
    void spread(LxImage &image, int32_t y) const {
        float *const row = heightRow(image, y);
        if (columns())
            mirrorRow(row, width, sampledColumns());
        if (!rows())
            return;
        const int32_t mirror = height - 1 - y;
        float *const target = heightRow(image, mirror);
        if (mirror == y) {
            if (turned())
                mirrorRow(row, width, width);
        } else if (turned()) {
            std::reverse_copy(row, row + width, target);
        } else {
            std::memcpy(target, row, static_cast<size_t>(width) * sizeof(float));
        }
    }

    // Widens `bounds` by the pixels `first` to `last` of row `y` and by their copies.
    void widen(LxRectD &bounds, int32_t first, int32_t last, int32_t y) const {
        include(bounds, first, last, y);
        if (columns())
            include(bounds, width - 1 - last, width - 1 - first, y);
        if (rows() && turned())
            include(bounds, width - 1 - last, width - 1 - first, height - 1 - y);
        else if (rows())
            include(bounds, first, last, height - 1 - y);
    }

    static void include(LxRectD &bounds, int32_t first, int32_t last, int32_t y) {
        bounds.x0 = std::min(bounds.x0, double(first));
        bounds.y0 = std::min(bounds.y0, double(y));
        bounds.x1 = std::max(bounds.x1, double(last) + 1);
        bounds.y1 = std::max(bounds.y1, double(y) + 1);
    }
};

} // namespace

void sampleLayer(LxSheenLayer &layer, int32_t width, int32_t height) {
    const Copies copies = {width, height, layer.SymmetryMask()};
    const float stepX = static_cast<float>(1.0 / (width - 1));
    const float stepY = static_cast<float>(1.0 / (height - 1));
    layer.bounds = {double(width), double(height), 0.0, 0.0};
    for (int32_t y = 0; y < copies.sampledRows(); ++y) {
        SampleRow row = {
            stepX, stepY * static_cast<float>(y), copies.sampledColumns(), heightRow(*layer.image, y), 0, -1};
        sampleRow(layer, row);
        if (row.last >= 0)
            copies.widen(layer.bounds, row.first, row.last, y);
        copies.spread(*layer.image, y);
    }
}

} // namespace lx
