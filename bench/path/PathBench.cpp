// Building, flattening, outlining and clipping paths, beside AGG and cairo on the same curves and lines, and
// beside memcpy of the same bytes.

#include <cmath>
#include <cstring>
#include <memory>
#include <numbers>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>
#include <oxlume/LxPath.h>
#include <oxlume/LxPathIterator.h>

#include "path/Path.h"

#ifdef BENCH_WITH_LIBAGG
#include <agg_conv_curve.h>
#include <agg_conv_stroke.h>
#include <agg_path_storage.h>
#endif
#ifdef BENCH_WITH_CAIRO
#include <cairo.h>
#endif

namespace {

struct Deleter {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using PathHandle = std::unique_ptr<LxPath, Deleter>;

using Points = std::vector<LxPointD>;

// A line that winds to both sides, as drawn lines do.
Points windingLine(int64_t segments) {
    Points points = {{500, 500}};
    double direction = 0;
    for (int64_t i = 0; i < segments; ++i) {
        direction += 0.4 * std::sin(static_cast<double>(i) * 0.1);
        const LxPointD &p = points.back();
        points.push_back({p.x + 8 * std::cos(direction), p.y + 8 * std::sin(direction)});
    }
    return points;
}

PathHandle pathOf(const Points &points) {
    PathHandle path(LxPath_Create());
    LxPath_AddMoveTo(path.get(), points[0].x, points[0].y);
    for (size_t i = 1; i < points.size(); ++i)
        LxPath_AddLineTo(path.get(), points[i].x, points[i].y);
    return path;
}

// The points of ten curves around a blot that is about `size` across.
Points blot(double size) {
    std::mt19937 engine(2);
    std::uniform_real_distribution<double> radius(size * 0.3, size * 0.5);
    Points points;
    for (int i = 0; i < 30; ++i) {
        const double angle = i * std::numbers::pi / 15;
        const double r = radius(engine);
        points.push_back({500 + r * std::cos(angle), 500 + r * std::sin(angle)});
    }
    points.push_back(points[0]);
    return points;
}

PathHandle pathOfCurves(const Points &p) {
    PathHandle path(LxPath_Create());
    LxPath_AddMoveTo(path.get(), p[0].x, p[0].y);
    for (size_t i = 1; i + 2 < p.size(); i += 3)
        LxPath_AddCurveTo(path.get(), p[i].x, p[i].y, p[i + 1].x, p[i + 1].y, p[i + 2].x, p[i + 2].y);
    LxPath_AddClose(path.get());
    return path;
}

void setItems(benchmark::State &state, int64_t perIteration) {
    state.SetItemsProcessed(state.iterations() * perIteration);
}

// ---- Appending ----

void copyOfTheSameBytes(benchmark::State &state) {
    const auto bytes = static_cast<size_t>(state.range(0)) * 12;
    std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes, 2);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::ClobberMemory();
    }
    setItems(state, state.range(0));
}

void appendLines(benchmark::State &state) {
    for (auto _ : state) {
        const PathHandle path(LxPath_Create());
        for (int64_t i = 0; i < state.range(0); ++i)
            LxPath_AddLineTo(path.get(), static_cast<double>(i), 2.0);
        benchmark::DoNotOptimize(path->words);
    }
    setItems(state, state.range(0));
}

// Two paths grow by turns, so that neither array can simply grow at the heap's end.
void appendLinesToTwoPaths(benchmark::State &state) {
    for (auto _ : state) {
        const PathHandle path(LxPath_Create());
        const PathHandle other(LxPath_Create());
        for (int64_t i = 0; i < state.range(0); i += 2) {
            LxPath_AddLineTo(path.get(), static_cast<double>(i), 2.0);
            LxPath_AddLineTo(other.get(), static_cast<double>(i), 2.0);
        }
        benchmark::DoNotOptimize(path->words);
    }
    setItems(state, state.range(0));
}

// ---- Flattening: items are curves ----

void countSegment(LxPathIterator *iterator, const LxPointD *, const LxPointD *) {
    ++*static_cast<int64_t *>(LxPathIterator_User(iterator));
}

void flatten(benchmark::State &state) {
    const PathHandle path = pathOfCurves(blot(static_cast<double>(state.range(0))));
    int64_t lines = 0;
    for (auto _ : state) {
        const PathHandle flat(LxPath_CreateDecomposed(path.get(), nullptr));
        benchmark::DoNotOptimize(flat->words);
        lines = flat->count / 3 - 1;
    }
    setItems(state, 10);
    state.counters["lines"] = static_cast<double>(lines);
    state.counters["lines/s"] =
        benchmark::Counter(static_cast<double>(lines * state.iterations()), benchmark::Counter::kIsRate);
}

void walkSegments(benchmark::State &state) {
    const PathHandle path = pathOfCurves(blot(static_cast<double>(state.range(0))));
    LxPathIterator *iterator = LxPath_CreateIterator();
    LxPathIterator_SetCallback(iterator, kLxPathOnSegment, reinterpret_cast<LxPathCallback>(countSegment));
    int64_t lines = 0;
    for (auto _ : state) {
        lines = 0;
        LxPath_IterateConst(path.get(), iterator, nullptr, &lines, nullptr);
    }
    LxPath_DeleteIterator(iterator);
    setItems(state, 10);
    state.counters["lines"] = static_cast<double>(lines);
    state.counters["lines/s"] =
        benchmark::Counter(static_cast<double>(lines * state.iterations()), benchmark::Counter::kIsRate);
}

#ifdef BENCH_WITH_LIBAGG
agg::path_storage aggCurves(const Points &p) {
    agg::path_storage path;
    path.move_to(p[0].x, p[0].y);
    for (size_t i = 1; i + 2 < p.size(); i += 3)
        path.curve4(p[i].x, p[i].y, p[i + 1].x, p[i + 1].y, p[i + 2].x, p[i + 2].y);
    path.close_polygon();
    return path;
}

// Reads all vertices of a source into a path of AGG's, as our functions write theirs; unlike them it keeps
// its memory from one run to the next.
template <class Source>
unsigned collect(Source &source, agg::path_storage &out) {
    out.remove_all();
    source.rewind(0);
    double x = 0;
    double y = 0;
    for (unsigned command = source.vertex(&x, &y); !agg::is_stop(command); command = source.vertex(&x, &y))
        out.vertices().add_vertex(x, y, command);
    return out.total_vertices();
}

void aggFlatten(benchmark::State &state) {
    agg::path_storage path = aggCurves(blot(static_cast<double>(state.range(0))));
    agg::conv_curve<agg::path_storage> curve(path);
    agg::path_storage out;
    unsigned lines = 0;
    for (auto _ : state)
        lines = collect(curve, out) - 2;
    setItems(state, 10);
    state.counters["lines"] = lines;
    state.counters["lines/s"] = benchmark::Counter(
        static_cast<double>(lines) * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
#endif

#ifdef BENCH_WITH_CAIRO
void cairoFlatten(benchmark::State &state) {
    cairo_surface_t *surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 8, 8);
    cairo_t *context = cairo_create(surface);
    const Points p = blot(static_cast<double>(state.range(0)));
    cairo_move_to(context, p[0].x, p[0].y);
    for (size_t i = 1; i + 2 < p.size(); i += 3)
        cairo_curve_to(context, p[i].x, p[i].y, p[i + 1].x, p[i + 1].y, p[i + 2].x, p[i + 2].y);
    cairo_close_path(context);
    int64_t lines = 0;
    for (auto _ : state) {
        cairo_path_t *flat = cairo_copy_path_flat(context);
        lines = flat->num_data / 2 - 2;
        cairo_path_destroy(flat);
    }
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    setItems(state, 10);
    state.counters["lines"] = static_cast<double>(lines);
    state.counters["lines/s"] =
        benchmark::Counter(static_cast<double>(lines * state.iterations()), benchmark::Counter::kIsRate);
}
#endif

// ---- Outlining: items are segments ----

void outline(benchmark::State &state) {
    const PathHandle path = pathOf(windingLine(state.range(0)));
    for (auto _ : state) {
        const PathHandle result(LxPath_CreateOutlined(path.get(), nullptr, nullptr, 3.0, kLxStrokeMitre));
        benchmark::DoNotOptimize(result->words);
    }
    setItems(state, state.range(0));
}

#ifdef BENCH_WITH_LIBAGG
void aggOutline(benchmark::State &state) {
    agg::path_storage path;
    const Points points = windingLine(state.range(0));
    path.move_to(points[0].x, points[0].y);
    for (size_t i = 1; i < points.size(); ++i)
        path.line_to(points[i].x, points[i].y);
    agg::conv_stroke<agg::path_storage> stroke(path);
    stroke.width(3.0);
    stroke.line_join(agg::miter_join);
    agg::path_storage out;
    for (auto _ : state)
        benchmark::DoNotOptimize(collect(stroke, out));
    setItems(state, state.range(0));
}
#endif

// ---- Clipping: items are edges ----

// The clip reaches 1000 around the polygon, 250 into it, or 100 inside it.
void clip(benchmark::State &state) {
    const int64_t edges = state.range(0);
    const double reach = static_cast<double>(state.range(1));
    std::mt19937 engine(3);
    std::uniform_real_distribution<double> coordinate(0, 100);
    Points points;
    for (int64_t i = 0; i < edges; ++i) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(edges);
        const double radius = 300 + coordinate(engine);
        points.push_back({500 + radius * std::cos(angle), 500 + radius * std::sin(angle)});
    }
    const PathHandle polygon(LxPath_Create());
    LxPath_AddPoly(polygon.get(), points.data(), static_cast<int32_t>(edges));
    const LxRectD rect = {500 - reach, 500 - reach, 500 + reach, 500 + reach};
    std::vector<PathHandle> copies(static_cast<size_t>(1 + 100000 / edges));
    for (auto _ : state) {
        state.PauseTiming();
        for (PathHandle &copy : copies)
            copy.reset(LxPath_CreateCopy(polygon.get()));
        state.ResumeTiming();
        for (PathHandle &copy : copies)
            LxPath_Clip(copy.get(), &rect);
    }
    setItems(state, edges * static_cast<int64_t>(copies.size()));
}

BENCHMARK(copyOfTheSameBytes)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(appendLines)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(appendLinesToTwoPaths)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(flatten)->Arg(60)->Arg(300)->Arg(3000);
BENCHMARK(walkSegments)->Arg(60)->Arg(300)->Arg(3000);
#ifdef BENCH_WITH_LIBAGG
BENCHMARK(aggFlatten)->Arg(60)->Arg(300)->Arg(3000);
#endif
#ifdef BENCH_WITH_CAIRO
BENCHMARK(cairoFlatten)->Arg(60)->Arg(300)->Arg(3000);
#endif
BENCHMARK(outline)->Arg(20)->Arg(1000)->Arg(10000)->Arg(100000);
#ifdef BENCH_WITH_LIBAGG
BENCHMARK(aggOutline)->Arg(20)->Arg(1000)->Arg(10000)->Arg(100000);
#endif
BENCHMARK(clip)
    ->Args({1000, 1000})
    ->Args({1000, 250})
    ->Args({1000, 100})
    ->Args({100000, 1000})
    ->Args({100000, 250});

} // namespace
