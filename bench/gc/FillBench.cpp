// Fills and strokes on a 1024 by 1024 RGBA image, beside cairo and AGG with the same shapes in the same run.
// The peers keep premultiplied pixels where ours are straight, and have no table for coverage: the pictures
// look alike and are not the same to the bit.

#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <oxlume/oxlume.h>

#ifdef BENCH_WITH_LIBAGG
#include <agg_conv_curve.h>
#include <agg_conv_stroke.h>
#include <agg_path_storage.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_renderer_scanline.h>
#include <agg_rendering_buffer.h>
#include <agg_scanline_u.h>
#endif
#ifdef BENCH_WITH_CAIRO
#include <cairo.h>
#endif

namespace {

constexpr int side = 1024;

enum class Ink { opaque, half, gradient, inward };

// What is drawn one by one: a closed polygon, a closed run of cubic curves (three points each behind the
// first), a line to be stroked, or a rectangle that each library draws by its own call for them.
enum class Kind { polygon, curves, stroke, rectangle };

struct Shapes {
    Kind kind;
    bool mitre;
    std::vector<std::vector<LxPointD>> items;
};

// ---- Shapes ----

Shapes circle() {
    constexpr double c = 512, r = 480, k = r * 0.5522847498307936;
    return {Kind::curves,
            false,
            {{{c + r, c},
              {c + r, c + k},
              {c + k, c + r},
              {c, c + r},
              {c - k, c + r},
              {c - r, c + k},
              {c - r, c},
              {c - r, c - k},
              {c - k, c - r},
              {c, c - r},
              {c + k, c - r},
              {c + r, c - k},
              {c + r, c}}}};
}

Shapes triangles() {
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> place(60, 960), angle(0, 2 * std::numbers::pi);
    Shapes shapes = {Kind::polygon, false, {}};
    for (int i = 0; i < 1000; ++i) {
        const double x = place(engine), y = place(engine), a = angle(engine);
        std::vector<LxPointD> points;
        for (int k = 0; k < 3; ++k)
            points.push_back({x + 35 * std::cos(a + k * 2.1), y + 35 * std::sin(a + k * 2.1)});
        shapes.items.push_back(points);
    }
    return shapes;
}

Shapes rectangles(int count, double size, Kind kind) {
    std::mt19937 engine(2);
    std::uniform_real_distribution<double> place(0, side - size);
    Shapes shapes = {kind, false, {}};
    for (int i = 0; i < count; ++i) {
        const double x = place(engine), y = place(engine);
        shapes.items.push_back({{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}});
    }
    return shapes;
}

Shapes star() {
    Shapes shapes = {Kind::polygon, false, {{}}};
    for (int i = 0; i < 41; ++i) {
        const double a = 2 * std::numbers::pi * i * 15 / 41;
        shapes.items[0].push_back({512 + 480 * std::cos(a), 512 + 480 * std::sin(a)});
    }
    return shapes;
}

Shapes curves() {
    std::mt19937 engine(3);
    std::uniform_real_distribution<double> place(100, 924), offset(-100, 100);
    Shapes shapes = {Kind::curves, false, {}};
    for (int i = 0; i < 200; ++i) {
        const double x = place(engine), y = place(engine);
        std::vector<LxPointD> points;
        for (int k = 0; k < 31; ++k)
            points.push_back({x + offset(engine), y + offset(engine)});
        points.back() = points.front();
        shapes.items.push_back(points);
    }
    return shapes;
}

Shapes strokes(bool mitre) {
    std::mt19937 engine(4);
    std::uniform_real_distribution<double> place(0, side), step(-40, 40);
    Shapes shapes = {Kind::stroke, mitre, {}};
    for (int i = 0; i < 500; ++i) {
        std::vector<LxPointD> points = {{place(engine), place(engine)}};
        for (int k = 0; k < 20; ++k)
            points.push_back({points.back().x + step(engine), points.back().y + step(engine)});
        shapes.items.push_back(points);
    }
    return shapes;
}

// ---- The target ----

// The same memory for all painters, so that how the system has laid it out (in large pages or in small ones)
// decides nothing.
constexpr size_t targetBytes = size_t{4} * side * side;

uint8_t *targetPixels() {
    alignas(64) static uint8_t pixels[targetBytes];
    return pixels;
}

// ---- Ours ----

struct Deleter {
    void operator()(LxImage *image) const { LxImage_Delete(image); }
    void operator()(LxPath *path) const { LxPath_Delete(path); }
    void operator()(LxGradient *gradient) const { LxGradient_Delete(gradient); }
};

class Ours {
public:
    explicit Ours(Ink ink)
        : image_(LxImage_CreateEx(kLxPixelRGBA, 0, 0, side, side, targetPixels(), 4 * side, 0, 1, 0)) {
        LxImage_Fill(image_.get(), LxColor_RGBA_White);
        gc_ = LxImage_GC(image_.get());
        const LxColor color = LxColor_RGBA(40, 80, 200, ink == Ink::half ? 128 : 255);
        LxGC_SetFillColor(gc_, color);
        LxGC_SetStrokeColor(gc_, color);
        LxGC_SetStrokeWidth(gc_, 3);
        if (ink != Ink::gradient && ink != Ink::inward)
            return;
        gradient_.reset(LxGradient_Create());
        LxGradient_SetType(gradient_.get(), ink == Ink::inward ? kLxGradientInward : kLxGradientAcross,
                           kLxGradientLinear);
        LxGradient_AddColor(gradient_.get(), LxColor_RGBA(40, 80, 200, 255), 0, 0, 0.5);
        LxGradient_AddColor(gradient_.get(), LxColor_RGBA(250, 180, 20, 255), 1, 1, 0.5);
        LxGC_SetFillGradient(gc_, gradient_.get());
    }

    // Paths as a client keeps them.
    void prepare(const Shapes &shapes) {
        shapes_ = &shapes;
        LxGC_SetRenderMode(gc_, shapes.kind == Kind::stroke ? kLxRenderStroke : kLxRenderFill);
        LxGC_SetStrokeStyle(gc_, shapes.mitre ? 64 : 16);
        if (shapes.kind == Kind::rectangle)
            return;
        for (const std::vector<LxPointD> &points : shapes.items) {
            std::unique_ptr<LxPath, Deleter> path(LxPath_Create());
            LxPath_AddMoveTo(path.get(), points[0].x, points[0].y);
            if (shapes.kind == Kind::curves)
                for (size_t i = 1; i + 2 < points.size(); i += 3)
                    LxPath_AddCurveTo(path.get(), points[i].x, points[i].y, points[i + 1].x, points[i + 1].y,
                                      points[i + 2].x, points[i + 2].y);
            else
                for (size_t i = 1; i < points.size(); ++i)
                    LxPath_AddLineTo(path.get(), points[i].x, points[i].y);
            if (shapes.kind != Kind::stroke)
                LxPath_AddClose(path.get());
            paths_.push_back(std::move(path));
        }
    }

    void draw() {
        for (const auto &path : paths_)
            LxGC_Path(gc_, path.get());
        if (shapes_->kind == Kind::rectangle)
            for (const std::vector<LxPointD> &points : shapes_->items)
                LxGC_Frame(gc_, points[0].x, points[0].y, points[2].x, points[2].y);
        benchmark::DoNotOptimize(LxImage_ConstData(image_.get()));
    }

private:
    std::unique_ptr<LxGradient, Deleter> gradient_;
    std::unique_ptr<LxImage, Deleter> image_;
    LxGC *gc_;
    const Shapes *shapes_ = nullptr;
    std::vector<std::unique_ptr<LxPath, Deleter>> paths_;
};

// ---- Peers ----

#ifdef BENCH_WITH_CAIRO
class Cairo {
public:
    explicit Cairo(Ink ink)
        : surface_(
              cairo_image_surface_create_for_data(targetPixels(), CAIRO_FORMAT_ARGB32, side, side, 4 * side)),
          cairo_(cairo_create(surface_)) {
        cairo_set_source_rgb(cairo_, 1, 1, 1);
        cairo_paint(cairo_);
        if (ink == Ink::gradient) {
            cairo_pattern_t *pattern = cairo_pattern_create_linear(32, 0, 992, 0);
            cairo_pattern_add_color_stop_rgb(pattern, 0, 0.16, 0.31, 0.78);
            cairo_pattern_add_color_stop_rgb(pattern, 1, 0.98, 0.7, 0.08);
            cairo_set_source(cairo_, pattern);
            cairo_pattern_destroy(pattern);
        } else {
            cairo_set_source_rgba(cairo_, 0.16, 0.31, 0.78, ink == Ink::half ? 0.5 : 1);
        }
        cairo_set_line_width(cairo_, 3);
        cairo_set_fill_rule(cairo_, CAIRO_FILL_RULE_WINDING);
    }
    Cairo(const Cairo &) = delete;
    Cairo &operator=(const Cairo &) = delete;
    ~Cairo() {
        cairo_destroy(cairo_);
        cairo_surface_destroy(surface_);
    }

    void prepare(const Shapes &shapes) {
        shapes_ = &shapes;
        cairo_set_line_join(cairo_, shapes.mitre ? CAIRO_LINE_JOIN_MITER : CAIRO_LINE_JOIN_BEVEL);
    }

    void draw() {
        for (const std::vector<LxPointD> &points : shapes_->items) {
            if (shapes_->kind == Kind::rectangle) {
                cairo_rectangle(cairo_, points[0].x, points[0].y, points[2].x - points[0].x,
                                points[2].y - points[0].y);
                cairo_fill(cairo_);
                continue;
            }
            cairo_new_path(cairo_);
            cairo_move_to(cairo_, points[0].x, points[0].y);
            if (shapes_->kind == Kind::curves)
                for (size_t i = 1; i + 2 < points.size(); i += 3)
                    cairo_curve_to(cairo_, points[i].x, points[i].y, points[i + 1].x, points[i + 1].y,
                                   points[i + 2].x, points[i + 2].y);
            else
                for (size_t i = 1; i < points.size(); ++i)
                    cairo_line_to(cairo_, points[i].x, points[i].y);
            if (shapes_->kind == Kind::stroke) {
                cairo_stroke(cairo_);
            } else {
                cairo_close_path(cairo_);
                cairo_fill(cairo_);
            }
        }
        cairo_surface_flush(surface_);
    }

private:
    cairo_surface_t *surface_;
    cairo_t *cairo_;
    const Shapes *shapes_ = nullptr;
};
#endif

#ifdef BENCH_WITH_LIBAGG
class Agg {
public:
    explicit Agg(Ink ink) : color_(40, 80, 200, ink == Ink::half ? 128 : 255) {
        std::memset(targetPixels(), 255, targetBytes);
        buffer_.attach(targetPixels(), side, side, side * 4);
    }

    void prepare(const Shapes &shapes) {
        mitre_ = shapes.mitre;
        kind_ = shapes.kind;
        for (const std::vector<LxPointD> &points : shapes.items) {
            agg::path_storage path;
            path.move_to(points[0].x, points[0].y);
            if (shapes.kind == Kind::curves)
                for (size_t i = 1; i + 2 < points.size(); i += 3)
                    path.curve4(points[i].x, points[i].y, points[i + 1].x, points[i + 1].y, points[i + 2].x,
                                points[i + 2].y);
            else
                for (size_t i = 1; i < points.size(); ++i)
                    path.line_to(points[i].x, points[i].y);
            if (shapes.kind != Kind::stroke)
                path.close_polygon();
            paths_.push_back(path);
        }
    }

    void draw() {
        agg::pixfmt_rgba32 format(buffer_);
        agg::renderer_base<agg::pixfmt_rgba32> base(format);
        agg::renderer_scanline_aa_solid<agg::renderer_base<agg::pixfmt_rgba32>> renderer(base);
        renderer.color(color_);
        rasterizer_.clip_box(0, 0, side, side);
        for (agg::path_storage &path : paths_) {
            rasterizer_.reset();
            if (kind_ == Kind::stroke) {
                agg::conv_stroke<agg::path_storage> stroke(path);
                stroke.width(3);
                stroke.line_join(mitre_ ? agg::miter_join : agg::bevel_join);
                rasterizer_.add_path(stroke);
            } else if (kind_ == Kind::curves) {
                agg::conv_curve<agg::path_storage> curve(path);
                rasterizer_.add_path(curve);
            } else {
                rasterizer_.add_path(path);
            }
            agg::render_scanlines(rasterizer_, scanline_, renderer);
        }
        benchmark::DoNotOptimize(targetPixels());
    }

private:
    agg::rendering_buffer buffer_;
    agg::rgba8 color_;
    agg::rasterizer_scanline_aa<> rasterizer_;
    agg::scanline_u8 scanline_;
    std::vector<agg::path_storage> paths_;
    Kind kind_ = Kind::polygon;
    bool mitre_ = false;
};
#endif

// ---- The runs ----

template <class Painter>
void run(benchmark::State &state, const Shapes &shapes, Ink ink) {
    Painter painter(ink);
    painter.prepare(shapes);
    for (auto _ : state)
        painter.draw();
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(shapes.items.size()));
}

struct Case {
    const char *name;
    Shapes shapes;
    std::vector<Ink> inks;
};

const char *nameOf(Ink ink) {
    static constexpr const char *names[] = {"opaque", "half", "gradient", "inward"};
    return names[static_cast<size_t>(ink)];
}

template <class Painter>
void add(const Case &c, Ink ink, const char *painter) {
    benchmark::RegisterBenchmark((std::string(c.name) + "/" + nameOf(ink) + "/" + painter).c_str(),
                                 [&c, ink](benchmark::State &state) { run<Painter>(state, c.shapes, ink); });
}

const bool registered = [] {
    static const std::vector<Case> cases = {
        {"circle", circle(), {Ink::opaque, Ink::half, Ink::gradient, Ink::inward}},
        {"triangles", triangles(), {Ink::opaque, Ink::half, Ink::gradient}},
        {"rectangles10", rectangles(10000, 10, Kind::rectangle), {Ink::opaque, Ink::half, Ink::gradient}},
        {"rectangles10/kept", rectangles(10000, 10, Kind::polygon), {Ink::opaque, Ink::half}},
        {"star41", star(), {Ink::opaque}},
        {"curves", curves(), {Ink::opaque, Ink::half}},
        {"strokes/mitre", strokes(true), {Ink::opaque}},
        {"strokes/bevel", strokes(false), {Ink::opaque}},
        // What a fill costs beside its pixels.
        {"cost/empty", {Kind::polygon, false, {{{5, 5}}}}, {Ink::opaque, Ink::gradient}},
        {"cost/onePixel",
         {Kind::polygon, false, {{{5, 5}, {6, 5}, {6, 6}, {5, 6}}}},
         {Ink::opaque, Ink::gradient}},
        {"cost/full",
         {Kind::polygon, false, {{{0, 0}, {side, 0}, {side, side}, {0, side}}}},
         {Ink::opaque, Ink::half}},
    };
    for (const Case &c : cases) {
        for (const Ink ink : c.inks) {
            add<Ours>(c, ink, "ours");
            if (ink == Ink::inward) // the peers have none
                continue;
#ifdef BENCH_WITH_CAIRO
            add<Cairo>(c, ink, "cairo");
#endif
#ifdef BENCH_WITH_LIBAGG
            if (ink != Ink::gradient)
                add<Agg>(c, ink, "agg");
#endif
        }
    }
    // The bound for a full image: memory.
    benchmark::RegisterBenchmark("cost/full/memset", [](benchmark::State &state) {
        std::vector<uint8_t> pixels(side * side * 4);
        for (auto _ : state) {
            std::memset(pixels.data(), static_cast<int>(state.iterations() & 255), pixels.size());
            benchmark::DoNotOptimize(pixels.data());
        }
        state.SetItemsProcessed(state.iterations());
    });
    return true;
}();

} // namespace
