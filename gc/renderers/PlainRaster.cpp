// The plain form of the rasteriser: whole pixels between sorted edges, by the even-odd rule.

#include <algorithm>
#include <memory>
#include <span>

#include <oxlume/LxMem.h>

#include "foundation/Numeric.h"
#include "gc/Shader.h"
#include "gc/renderers/Raster.h"
#include "image/Image.h"

namespace lx {
namespace {

// An edge between rows of pixels, from the upper end on. It crosses no row where both are the same.
struct Edge {
    int32_t yTop, yBottom;
    int64_t x;         // where the edge crosses the row
    int64_t startX;    // and where it crossed its first one
    int64_t dx, dy;    // from the upper to the lower end
    int64_t error = 0; // what `x` is ahead by, in parts of dy

    Edge(int32_t topX, int32_t topY, int32_t bottomX, int32_t bottomY)
        : yTop(topY), yBottom(bottomY), x(topX), startX(topX), dx(int64_t{bottomX} - topX),
          dy(int64_t{bottomY} - topY) {}

    // Steps down by some rows at once, to the place that single steps would lead to.
    void step(int64_t rows) {
        error += rows * dx;
        x += error / dy;
        error %= dy;
    }

    // Stands where the last step of a whole fill leaves it, whichever rows this fill looked at.
    void finish() {
        if (yBottom > yTop)
            startX += dx;
        x = startX;
        error = 0;
    }
};

struct PlainStore {
    Edge *edges;
    int32_t count, capacity;
};

constexpr int32_t growth = 256;

struct FreeMemory {
    void operator()(void *memory) const { LxMem_free(memory); }
};
using EdgePointers = std::unique_ptr<Edge *[], FreeMemory>;

EdgePointers allocatePointers(size_t count) {
    return EdgePointers(static_cast<Edge **>(LxMem_calloc(static_cast<uint32_t>(count), sizeof(void *))));
}

PlainStore &storeOf(LxRaster &raster) {
    return *static_cast<PlainStore *>(raster.store);
}

// Halves go away from zero.
int32_t rounded(double value) {
    return value > 0.0 ? truncateToInt32(value + 0.5) : wrappingSubtract(0, truncateToInt32(0.5 - value));
}

// Shell's sort, ascending by a key.
template <class Key>
void shellSort(std::span<Edge *> edges, Key key) {
    const auto count = static_cast<ptrdiff_t>(edges.size());
    ptrdiff_t gap = 1;
    while (3 * gap + 1 < count)
        gap = 3 * gap + 1;
    for (; gap > 0; gap /= 3) {
        for (ptrdiff_t i = gap; i < count; ++i) {
            Edge *const edge = edges[static_cast<size_t>(i)];
            ptrdiff_t j = i;
            for (; j >= gap && key(*edges[static_cast<size_t>(j - gap)]) > key(*edge); j -= gap)
                edges[static_cast<size_t>(j)] = edges[static_cast<size_t>(j - gap)];
            edges[static_cast<size_t>(j)] = edge;
        }
    }
}

// Paints runs of whole pixels.
class PlainPaint {
public:
    PlainPaint(LxImage &image, const LxBlend &blend, LxShader &shader, const LxColor &color)
        : image_(image), blend_(blend), shader_(shader),
          pixelKernel_(LxBlend_SelectPixelBlendFunction(static_cast<int32_t>(image.type), color.type)),
          lineKernel_(LxBlend_SelectLineBlendFunction(static_cast<int32_t>(image.type), color.type)) {
        if (pixelKernel_ == nullptr || lineKernel_ == nullptr)
            return;
        line_ = createImage(color.type, {0, 0, width(image), 1}, false, false);
        if (line_ != nullptr)
            LxImage_Fill(line_, color);
    }
    PlainPaint(const PlainPaint &) = delete;
    PlainPaint &operator=(const PlainPaint &) = delete;
    ~PlainPaint() { LxImage_Delete(line_); }

    bool isReady() const { return line_ != nullptr; }

    // The pixels from x0 up to x1, which is not painted.
    void run(int64_t x0, int64_t x1, int32_t y) {
        const auto left = static_cast<int32_t>(std::max<int64_t>(x0, 0));
        const auto right = static_cast<int32_t>(std::min<int64_t>(x1, width(image_)));
        void *start, *end;
        if (left >= right || LxImage_PointerLine(&image_, left, right - 1, y, &start, &end) == 0)
            return;
        LxColor color = LxColor_RGBA_Black;
        shader_.color(&color, &shader_, left, y, 255);
        if ((shader_.flags & constantColour) != 0) {
            lineKernel_(&blend_, start, start, firstRow(*line_), static_cast<uint32_t>(right - left));
            return;
        }
        const int32_t step = LxImage_BytesPerPixel(&image_);
        auto *pixel = static_cast<uint8_t *>(start);
        for (int32_t x = left; x < right; ++x, pixel += step) {
            if (x > left)
                shader_.color(&color, &shader_, x, y, 255);
            pixelKernel_(&blend_, pixel, pixel, color.content.bytes);
        }
    }

private:
    LxImage &image_;
    const LxBlend &blend_;
    LxShader &shader_;
    const LxPixelBlendFunction pixelKernel_;
    const LxLineBlendFunction lineKernel_;
    LxImage *line_ = nullptr; // one row of the colour
};

// The edges that cross the current row, from left to right.
class ActiveEdges {
public:
    explicit ActiveEdges(Edge **edges) : edges_(edges) {}

    bool isEmpty() const { return count_ == 0; }
    void add(Edge *edge) { edges_[count_++] = edge; }

    void removeEndingAt(int32_t y) {
        Edge **const end = std::remove_if(edges_, edges_ + count_, [=](Edge *e) { return e->yBottom <= y; });
        count_ = static_cast<size_t>(end - edges_);
    }

    void paint(int32_t y, PlainPaint &paint) {
        shellSort(std::span(edges_, count_), [](const Edge &edge) { return edge.x; });
        for (size_t i = 0; i + 1 < count_; i += 2)
            paint.run(edges_[i]->x, edges_[i + 1]->x, y);
    }

    void step() {
        for (Edge *edge : std::span(edges_, count_))
            edge->step(1);
    }

private:
    Edge **edges_;
    size_t count_ = 0;
};

// Paints the rows of the image that the edges cross. Nothing shows above the image, so an edge from there is
// stepped to the first row at once.
void paintRows(std::span<Edge *> waiting, ActiveEdges active, int32_t height, PlainPaint &paint) {
    shellSort(waiting, [](const Edge &edge) { return edge.yTop; });
    for (int32_t y = std::max(0, waiting.front()->yTop); y < height; ++y) {
        for (; !waiting.empty() && waiting.front()->yTop <= y; waiting = waiting.subspan(1)) {
            Edge *const edge = waiting.front();
            if (edge->yBottom > y) {
                edge->step(int64_t{y} - edge->yTop);
                active.add(edge);
            }
        }
        active.removeEndingAt(y);
        if (waiting.empty() && active.isEmpty())
            return;
        active.paint(y, paint);
        active.step();
    }
}

int32_t restart(LxRaster *raster) {
    storeOf(*raster).count = 0;
    return 1;
}

bool grow(PlainStore &store) {
    const auto bytes = (static_cast<uint64_t>(store.capacity) + growth) * sizeof(Edge);
    if (bytes > UINT32_MAX)
        return false;
    void *const edges = LxMem_realloc(store.edges, static_cast<uint32_t>(bytes));
    if (edges == nullptr)
        return false;
    store.edges = static_cast<Edge *>(edges);
    store.capacity += growth;
    return true;
}

void addEdge(LxRaster *raster, double x0, double y0, double x1, double y1) {
    PlainStore &store = storeOf(*raster);
    if (y0 == y1 || (store.count == store.capacity && !grow(store)))
        return;
    if (y0 > y1) {
        std::swap(x0, x1);
        std::swap(y0, y1);
    }
    store.edges[store.count++] = Edge(rounded(x0), rounded(y0), rounded(x1), rounded(y1));
}

void fill(LxRaster *raster, LxImage *image, const LxBlend *blend, LxShader *shader) {
    const PlainStore &store = storeOf(*raster);
    if (store.count == 0)
        return;
    const LxColor color = beginFill(*raster, *shader);
    PlainPaint paint(*image, *blend, *shader, color);
    const auto count = static_cast<size_t>(store.count);
    const EdgePointers waiting = allocatePointers(count), active = allocatePointers(count);
    if (!paint.isReady() || waiting == nullptr || active == nullptr)
        return;
    for (size_t i = 0; i < count; ++i)
        waiting[i] = &store.edges[i];
    paintRows(std::span(waiting.get(), count), ActiveEdges(active.get()), height(*image), paint);
    // On purpose: a fill spends the edges. Each was stepped down all its rows, and starts there next time.
    for (Edge &edge : std::span(store.edges, count))
        edge.finish();
}

void *createStore() {
    return LxMem_calloc(1, sizeof(PlainStore));
}

void deleteStore(void *store) {
    LxMem_free(static_cast<PlainStore *>(store)->edges);
    LxMem_free(store);
}

} // namespace

const RasterForm plainForm = {restart, addEdge, fill, createStore, deleteStore};

} // namespace lx
