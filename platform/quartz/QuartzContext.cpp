// Contexts of the Quartz layer: their state and its stack, and drawing with cairo.

#include "platform/quartz/QuartzContext.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <new>
#include <utility>

namespace lx {
namespace {

// Mitres reach up to five widths beyond a path.
constexpr double maxLineWidth = 1 << 19;

double component(float value) {
    return value > 0 ? std::min<double>(value, 1) : 0;
}

CGContextRef create(SurfaceHandle surface, const QuartzTarget &target) {
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    auto *context = new (std::nothrow) CGContext(std::move(surface), target);
    if (context == nullptr || context->isUsable())
        return context;
    release(context);
    return nullptr;
}

} // namespace

LxCGAffineTransform concatenate(const LxCGAffineTransform &first, const LxCGAffineTransform &second) {
    const auto product = [](double x, double y, double column1, double column2, double offset) {
        return static_cast<float>(x * column1 + y * column2 + offset);
    };
    const auto &[a, b, c, d, tx, ty] = second;
    return {product(first.a, first.b, a, c, 0),    product(first.a, first.b, b, d, 0),
            product(first.c, first.d, a, c, 0),    product(first.c, first.d, b, d, 0),
            product(first.tx, first.ty, a, c, tx), product(first.tx, first.ty, b, d, ty)};
}

bool isFinite(const LxCGAffineTransform &t) {
    return std::isfinite(t.a) && std::isfinite(t.b) && std::isfinite(t.c) && std::isfinite(t.d) &&
           std::isfinite(t.tx) && std::isfinite(t.ty);
}

bool hasInverse(const LxCGAffineTransform &t) {
    return isFinite(t) && double{t.a} * t.d - double{t.b} * t.c != 0;
}

QuartzColor quartzColor(float red, float green, float blue, float alpha) {
    return {component(red), component(green), component(blue), component(alpha)};
}

// ---- User space ----

UserSpace::UserSpace(CGContext &context) : context_(context) {
    cairo_t *cairo = context.cairo.get();
    if (cairo_has_current_point(cairo) != 0)
        path_ = cairo_copy_path(cairo);
    cairo_new_path(cairo);
    cairo_save(cairo);
    cairo_set_matrix(cairo, &context.matrix());
}

UserSpace::~UserSpace() {
    cairo_t *cairo = context_.cairo.get();
    cairo_restore(cairo);
    cairo_new_path(cairo);
    context_.recover();
    if (path_ != nullptr) {
        cairo_append_path(context_.cairo.get(), path_);
        cairo_path_destroy(path_);
        context_.recover();
    }
}

} // namespace lx

using namespace lx;

// ---- The context ----

CGContext::CGContext(SurfaceHandle owned, const QuartzTarget &target)
    : surface(std::move(owned)), target(target), cairo(cairo_create(surface.get())) {
    setTransform(identityTransform);
}

CGContext::~CGContext() {
    while (states != &base)
        restore();
}

void CGContext::save() {
    if (auto *saved = new (std::nothrow) Saved(*states)) {
        saved->below = states;
        states = saved;
    }
}

void CGContext::restore() {
    if (states != &base)
        delete std::exchange(states, states->below);
}

void CGContext::setTransform(const LxCGAffineTransform &transform) {
    const auto &[a, b, c, d, tx, ty] = transform;
    state().transform = transform;
    state().toTarget = target.yGrowsUp ? cairo_matrix_t{a, -double{b}, c, -double{d}, tx, target.height - ty}
                                       : cairo_matrix_t{a, b, c, d, tx, ty};
}

void CGContext::setInk(const QuartzColor &color) {
    const bool exchanges = target.exchangesRedAndBlue;
    cairo_set_source_rgba(cairo.get(), exchanges ? color.blue : color.red, color.green,
                          exchanges ? color.red : color.blue, color.alpha * state().alpha);
}

void CGContext::fill(cairo_fill_rule_t rule) {
    setInk(state().fill);
    cairo_set_fill_rule(cairo.get(), rule);
    cairo_fill_preserve(cairo.get());
}

void CGContext::stroke() {
    const LxCGAffineTransform &transform = state().transform;
    const double extent =
        std::max(std::hypot(transform.a, transform.b), std::hypot(transform.c, transform.d));
    const double width = std::min(state().lineWidth, maxLineWidth / extent);
    if (!hasInverse(transform) || !(width > 0))
        return;
    setInk(state().stroke);
    cairo_set_line_width(cairo.get(), width);
    cairo_set_matrix(cairo.get(), &matrix());
    cairo_stroke_preserve(cairo.get());
    cairo_identity_matrix(cairo.get());
}

void CGContext::recover() {
    if (!isUsable())
        cairo.reset(cairo_create(surface.get()));
}

// ---- The flat functions ----

CGContextRef LxQuartz_CreateWithSurface(cairo_surface_t *surface) {
    return surface != nullptr ? create(SurfaceHandle(cairo_surface_reference(surface)), {}) : nullptr;
}

CGContextRef LxQuartz_CreateWithSurfaceYUp(cairo_surface_t *surface, float height) {
    if (surface == nullptr || !std::isfinite(height))
        return nullptr;
    return create(SurfaceHandle(cairo_surface_reference(surface)), {true, height, false});
}

CGContextRef LxQuartz_CreateWithPixels(void *pixels, int32_t width, int32_t height, int32_t rowBytes) {
    constexpr int32_t maxSide = 32767;
    if (pixels == nullptr || width < 1 || height < 1 || width > maxSide || height > maxSide)
        return nullptr;
    if (reinterpret_cast<uintptr_t>(pixels) % 4 != 0 || rowBytes % 4 != 0 || rowBytes / 4 < width)
        return nullptr;
    // cairo has blue in the lowest byte of a native word. All colours pass through here, and so their red and
    // blue can change places instead.
    if constexpr (std::endian::native != std::endian::little)
        return nullptr;
    SurfaceHandle surface(cairo_image_surface_create_for_data(static_cast<unsigned char *>(pixels),
                                                              CAIRO_FORMAT_ARGB32, width, height, rowBytes));
    return create(std::move(surface), {false, 0, true});
}

CGContextRef CGContextRetain(CGContextRef context) {
    return retain(context);
}

void CGContextRelease(CGContextRef context) {
    release(context);
}

void CGContextSynchronize(CGContextRef context) {
    if (context != nullptr)
        cairo_surface_flush(context->surface.get());
}

void CGContextFlush(CGContextRef context) {
    CGContextSynchronize(context);
}

void CGContextSaveGState(CGContextRef context) {
    if (context != nullptr)
        context->save();
}

void CGContextRestoreGState(CGContextRef context) {
    if (context != nullptr)
        context->restore();
}

LxCGAffineTransform CGContextGetCTM(CGContextRef context) {
    return context != nullptr ? context->state().transform : identityTransform;
}

void CGContextConcatCTM(CGContextRef context, LxCGAffineTransform transform) {
    if (context == nullptr)
        return;
    const LxCGAffineTransform &current = context->state().transform;
    context->setTransform(isFinite(transform) ? concatenate(transform, current) : identityTransform);
}

void CGContextSetRGBFillColor(CGContextRef context, float red, float green, float blue, float alpha) {
    if (context != nullptr)
        context->state().fill = quartzColor(red, green, blue, alpha);
}

void CGContextSetRGBStrokeColor(CGContextRef context, float red, float green, float blue, float alpha) {
    if (context != nullptr)
        context->state().stroke = quartzColor(red, green, blue, alpha);
}

void CGContextSetAlpha(CGContextRef context, float alpha) {
    if (context != nullptr)
        context->state().alpha = component(alpha);
}

void CGContextSetLineWidth(CGContextRef context, float width) {
    if (context != nullptr)
        context->state().lineWidth = width;
}

void CGContextSetInterpolationQuality(CGContextRef context, int32_t quality) {
    if (context != nullptr && quality >= kCGInterpolationDefault && quality <= kCGInterpolationHigh)
        context->state().quality = quality;
}
