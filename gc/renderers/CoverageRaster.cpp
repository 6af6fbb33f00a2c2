// The coverage form of the rasteriser: smooth edges from samples.
//
// A pixel's coverage is told by the samples in it and by the winding of the samples left of it. Along a row,
// pixels without a sample go on with the winding as it stands.

#include "gc/renderers/CoverageRaster.h"

#include <algorithm>
#include <span>

#include <oxlume/LxMem.h>

#include "gc/renderers/Paint.h"
#include "gc/renderers/Raster.h"
#include "gc/renderers/RowCells.h"
#include "gc/renderers/SampleStore.h"
#include "image/Image.h"

namespace lx {
namespace {

SampleList &samplesOf(LxRaster &raster) {
    return *static_cast<SampleList *>(raster.store);
}

// Walks sorted samples pixel by pixel.
template <class Paint>
void paintSamples(std::span<const uint32_t> samples, bool nonZero, Paint &paint) {
    int32_t x = 0, y = 0;
    int32_t winding = 0, windingAtStart = 0;
    CellSums sums = {};
    bool visible = paint.row(0);
    const auto flush = [&] {
        if (const int32_t c = coverage(sums, windingAtStart, nonZero); c != 0 && visible)
            paint.pixel(x, c);
        sums = {};
    };
    for (const uint32_t word : samples) {
        const Sample sample = {word};
        if (sample.x() != x || sample.y() != y) {
            flush();
            if (sample.y() != y) {
                winding = 0;
                visible = paint.row(sample.y());
            } else if (const int32_t c = coverage({}, winding, nonZero); c != 0 && visible) {
                paint.run(x + 1, sample.x(), c);
            }
            windingAtStart = winding;
            x = sample.x();
            y = sample.y();
        }
        if (sample.down()) {
            ++winding;
            sums.rise += sample.covered();
        } else {
            --winding;
            sums.fall -= sample.covered();
        }
    }
    flush();
    paint.finish();
}

// Paints a row from the sums of its pixels, and empties them.
template <class Paint>
void paintRow(RowCells &cells, bool nonZero, Paint &paint) {
    int32_t winding = 0;
    int32_t next = 0; // the pixel behind the last one with a sample
    cells.drain([&](int32_t x, const CellSums &sums, int32_t windingChange) {
        if (winding != 0 && next < x)
            if (const int32_t c = coverage({}, winding, nonZero))
                paint.run(next, x, c);
        if (const int32_t c = coverage(sums, winding, nonZero))
            paint.pixel(x, c);
        winding += windingChange;
        next = x + 1;
    });
}

// Asks the processor for pixels before they are needed. Small shapes lie anywhere in the image, and each of
// their rows in another page of memory: waiting for one row after the other would take longer than to paint
// them.
class RowsAhead {
public:
    RowsAhead(const LxImage &image, const double *bounds) : image_(image), height_(height(image)) {
        const int32_t pixelBytes = LxImage_BytesPerPixel(&image);
        const auto column = [&](double x) {
            return static_cast<ptrdiff_t>(std::clamp(x, 0.0, width(image) - 1.0)) * pixelBytes;
        };
        if (height_ == 0 || firstRow(image) == nullptr || !(bounds[2] - bounds[0] < mostPixels))
            return;
        first_ = column(bounds[0]);
        last_ = column(bounds[2]);
    }

    // The first rows of a shape from the row y to `last`.
    void begin(int32_t y, int32_t last) const {
        for (int32_t end = std::min(y + distance, last + 1); y < end; ++y)
            ask(y);
    }

    // The rows that come into reach when `count` rows from y on are painted.
    void next(int32_t y, int32_t count, int32_t last) const {
        for (int32_t end = std::min(y + distance + count, last + 1); y + distance < end; ++y)
            ask(y + distance);
    }

private:
    static constexpr int32_t distance = 12;
    static constexpr ptrdiff_t lineBytes = 64;
    // Along a wider row the processor finds out by itself where it goes on.
    static constexpr double mostPixels = 96;

    void ask(int32_t y) const {
        if (y >= height_ || last_ < 0)
            return;
        const uint8_t *const row = rowAddress(image_, y);
        for (ptrdiff_t at = first_; at < last_; at += lineBytes)
            __builtin_prefetch(row + at, 1);
        __builtin_prefetch(row + last_, 1);
    }

    const LxImage &image_;
    const int32_t height_;
    ptrdiff_t first_ = 0, last_ = -1; // bytes in a row; none are asked for if they are inside out
};

// What is painted in a row, to be painted again in others.
class RowRecord {
public:
    void pixel(int32_t x, int32_t coverage) { pieces_[count_++] = {x, x, coverage}; }
    void run(int32_t x0, int32_t x1, int32_t coverage) { pieces_[count_++] = {x0, x1, coverage}; }

    template <class Paint>
    void play(Paint &paint) const {
        for (const Piece &piece : std::span(pieces_, count_)) {
            if (piece.x0 == piece.x1)
                paint.pixel(piece.x0, piece.coverage);
            else
                paint.run(piece.x0, piece.x1, piece.coverage);
        }
    }

private:
    struct Piece {
        int32_t x0, x1; // the same for a pixel
        int32_t coverage;
    };
    Piece pieces_[2 * maxPixels]; // a run in front of each pixel at most
    size_t count_ = 0;
};

// Paints a row, and those behind it that are like it, and answers which comes next.
template <class Paint>
int32_t paintAlike(RowCells &cells, int32_t y, int32_t count, bool nonZero, Paint &paint) {
    const int32_t end = y + count;
    if constexpr (requires { paint.repeat(count); }) {
        paint.repeat(count);
        paintRow(cells, nonZero, paint);
    } else if (count == 1) {
        paintRow(cells, nonZero, paint);
    } else {
        RowRecord record;
        paintRow(cells, nonZero, record);
        for (; y < end && paint.row(y); ++y)
            record.play(paint);
    }
    return end;
}

// The same picture as paintSamples gives, from edges whose rows are all told apart.
template <class Paint>
void paintRows(SampleRows &rows, bool nonZero, const RowsAhead &ahead, Paint &&paint) {
    RowCells &cells = sharedCells();
    ahead.begin(rows.first(), rows.last());
    for (int32_t y = rows.first(); y <= rows.last() && paint.row(y);) {
        const int32_t alike = rows.read(y, cells);
        ahead.next(y, alike, rows.last());
        y = paintAlike(cells, y, alike, nonZero, paint);
    }
    paint.finish();
}

// Paints in the quickest way that there is.
void paintBest(LxRaster &raster, LxImage &image, const LxBlend &blend, LxShader &shader,
               PixelwisePaint &pixelwise) {
    const bool nonZero = raster.nonZero != 0;
    const bool solid = SolidPaint::serves(image, blend, shader);
    SampleRows rows(samplesOf(raster));
    const auto paintIn = [&](auto &&paint) {
        if (rows.areWords())
            paintSamples(samplesOf(raster).sort(), nonZero, paint);
        else
            paintRows(rows, nonZero, RowsAhead(image, raster.bounds), paint);
    };
    if (solid && !rows.areWords() && NarrowPaint::serves(image, raster.bounds))
        paintRows(rows, nonZero, RowsAhead(image, raster.bounds),
                  NarrowPaint(image, blend, *static_cast<const LxRGBA *>(shader.data), raster.bounds));
    else if (solid)
        paintIn(SolidPaint(image, blend, *static_cast<const LxRGBA *>(shader.data)));
    else if (LinePaint::serves(image, shader))
        paintIn(LinePaint(image, blend, shader));
    else
        paintIn(pixelwise);
}

int32_t restart(LxRaster *raster) {
    samplesOf(*raster).restart();
    return 1;
}

void addEdge(LxRaster *raster, double x0, double y0, double x1, double y1) {
    samplesOf(*raster).addEdge(x0, y0, x1, y1);
}

void fill(LxRaster *raster, LxImage *image, const LxBlend *blend, LxShader *shader) {
    fillCoverage(*raster, *image, *blend, *shader, FillMethod::best);
}

void *createStore() {
    return ensureSampleStore() ? LxMem_calloc(1, sizeof(SampleList)) : nullptr;
}

} // namespace

const RasterForm coverageForm = {restart, addEdge, fill, createStore, LxMem_free};

void fillCoverage(LxRaster &raster, LxImage &image, const LxBlend &blend, LxShader &shader,
                  FillMethod method) {
    if (samplesOf(raster).isEmpty())
        return;
    const LxColor color = beginFill(raster, shader);
    const LxPixelBlendFunction kernel =
        LxBlend_SelectPixelBlendFunction(static_cast<int32_t>(image.type), color.type);
    if (kernel == nullptr)
        return;
    PixelwisePaint pixelwise(image, blend, shader, kernel);
    if (method == FillMethod::byRule)
        paintSamples(samplesOf(raster).sort(), raster.nonZero != 0, pixelwise);
    else
        paintBest(raster, image, blend, shader, pixelwise);
}

} // namespace lx
