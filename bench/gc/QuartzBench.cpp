// What a path on a Quartz context costs beside the same calls on cairo without us: what is above that is
// ours. bench/library-share tells it from a profile.

#include <memory>

#include <benchmark/benchmark.h>
#include <cairo.h>
#include <oxlume/LxGC.h>
#include <oxlume/LxQuartz.h>

#include "path/PathWalk.h"

namespace {

using namespace lx;

constexpr int32_t side = 256;

struct Destroy {
    void operator()(cairo_surface_t *surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t *cairo) const { cairo_destroy(cairo); }
    void operator()(LxPath *path) const { LxPath_Delete(path); }
    void operator()(LxGC *gc) const { LxGC_Delete(gc); }
};
template <class Object>
using Handle = std::unique_ptr<Object, Destroy>;

Handle<cairo_surface_t> makeSurface() {
    return Handle<cairo_surface_t>(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side));
}

enum Shape : int64_t { rectangle, smallCircle, largeCircle, polyline, cubics };

// A polyline or a path of cubics goes to and fro over the whole surface.
Handle<LxPath> makePath(int64_t shape) {
    Handle<LxPath> path(LxPath_Create());
    const LxRectD square = {100, 100, 110, 110};
    switch (shape) {
    case rectangle:
        LxPath_SetRect(path.get(), &square, 0, 0);
        break;
    case smallCircle:
        LxPath_SetCircle(path.get(), 128, 128, 10);
        break;
    case largeCircle:
        LxPath_SetCircle(path.get(), 128, 128, 100);
        break;
    case polyline:
        LxPath_AddMoveTo(path.get(), 8, 8);
        for (int i = 1; i <= 20; ++i)
            LxPath_AddLineTo(path.get(), 8 + 12 * i, i % 2 == 0 ? 8 : 248);
        break;
    default:
        LxPath_AddMoveTo(path.get(), 8, 128);
        for (int i = 1; i <= 10; ++i)
            LxPath_AddCurveTo(path.get(), 24 * i - 8, i % 2 == 0 ? 8 : 248, 24 * i, i % 2 == 0 ? 8 : 248,
                              24 * i + 8, 128);
    }
    return path;
}

// Adds the flattened path to cairo's.
struct CairoPen : BasicPen<CairoPen> {
    explicit CairoPen(cairo_t *cairo) : cairo(cairo) {}
    void subpathBegins(const LxPointD &point) { cairo_move_to(cairo, point.x, point.y); }
    void segment(const LxPointD &, const LxPointD &to) { cairo_line_to(cairo, to.x, to.y); }
    cairo_t *cairo;
};

void renderer(benchmark::State &state) {
    const Handle<cairo_surface_t> surface = makeSurface();
    const CGContextRef context = LxQuartz_CreateWithSurface(surface.get());
    const Handle<LxPath> path = makePath(state.range(0));
    {
        const Handle<LxGC> gc(LxGC_CreateWithCGContextRef(context, LxRectD{0, 0, side, side}));
        LxGC_SetRenderMode(gc.get(), static_cast<uint32_t>(state.range(1)));
        LxGC_SetFillColor(gc.get(), LxColor_RGBA(200, 100, 50, 255));
        for (auto _ : state)
            LxGC_Path(gc.get(), path.get());
    }
    CGContextRelease(context);
}

void bareCairo(benchmark::State &state) {
    const Handle<cairo_surface_t> surface = makeSurface();
    const Handle<cairo_t> cairo(cairo_create(surface.get()));
    const Handle<LxPath> path = makePath(state.range(0));
    for (auto _ : state) {
        cairo_new_path(cairo.get());
        CairoPen pen(cairo.get());
        walkItems(*path, nullptr, pen);
        if (state.range(1) == kLxRenderFill) {
            cairo_set_source_rgba(cairo.get(), 200 / 255.0, 100 / 255.0, 50 / 255.0, 1);
            cairo_fill(cairo.get());
        } else {
            cairo_set_source_rgba(cairo.get(), 0, 0, 0, 1);
            cairo_set_line_width(cairo.get(), 1);
            cairo_stroke(cairo.get());
        }
    }
}

void shapes(benchmark::internal::Benchmark *benchmark) {
    benchmark->ArgNames({"shape", "mode"});
    for (const int64_t shape : {rectangle, smallCircle, largeCircle, polyline, cubics})
        for (const int64_t mode : {kLxRenderFill, kLxRenderStroke})
            benchmark->Args({shape, mode});
}

BENCHMARK(renderer)->Apply(shapes);
BENCHMARK(bareCairo)->Apply(shapes);

} // namespace
