// What a path on a Quartz context costs beside the same calls on cairo without us: what is above that is
// ours.

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

// A rectangle (radius 0) or a circle.
Handle<LxPath> makePath(int64_t radius) {
    Handle<LxPath> path(LxPath_Create());
    const LxRectD square = {100, 100, 110, 110};
    if (radius == 0)
        LxPath_SetRect(path.get(), &square, 0, 0);
    else
        LxPath_SetCircle(path.get(), 128, 128, static_cast<double>(radius));
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
    benchmark->ArgNames({"radius", "mode"});
    for (const int64_t radius : {0, 10, 100})
        for (const int64_t mode : {kLxRenderFill, kLxRenderStroke})
            benchmark->Args({radius, mode});
}

BENCHMARK(renderer)->Apply(shapes);
BENCHMARK(bareCairo)->Apply(shapes);

} // namespace
