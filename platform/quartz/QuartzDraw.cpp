// Paths, rectangles and pictures on contexts of the Quartz layer.

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "foundation/Numeric.h"
#include "platform/quartz/QuartzContext.h"

namespace lx {
namespace {

// A rectangle by its sides in order, whichever way its size points; false where it has no area.
struct Sides {
    double left, top, right, bottom;
    explicit Sides(const LxCGRect &rect)
        : left(rect.x), top(rect.y), right(left + rect.width), bottom(top + rect.height) {
        if (rect.width < 0)
            std::swap(left, right);
        if (rect.height < 0)
            std::swap(top, bottom);
    }
    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool hasArea() const {
        return width() > 0 && height() > 0 && std::isfinite(width()) && std::isfinite(height());
    }
};

void addPoint(CGContext &context, double x, double y, void (*add)(cairo_t *, double, double)) {
    if (context.locate(x, y))
        add(context.cairo.get(), x, y);
}

// What CGPathDrawingMode means, by its values.
struct DrawingMode {
    bool fills;
    cairo_fill_rule_t rule;
    bool strokes;
};
constexpr DrawingMode drawingModes[] = {{true, CAIRO_FILL_RULE_WINDING, false},
                                        {true, CAIRO_FILL_RULE_EVEN_ODD, false},
                                        {false, CAIRO_FILL_RULE_WINDING, true},
                                        {true, CAIRO_FILL_RULE_WINDING, true},
                                        {true, CAIRO_FILL_RULE_EVEN_ODD, true}};

void drawPath(CGContext &context, const DrawingMode &mode) {
    if (mode.fills)
        context.fill(mode.rule);
    if (mode.strokes)
        context.stroke();
    cairo_new_path(context.cairo.get());
    context.recover();
}

cairo_filter_t filterOf(int32_t quality, const ImageForm &form) {
    switch (quality) {
    case kCGInterpolationNone:
        return CAIRO_FILTER_NEAREST;
    case kCGInterpolationLow:
        return CAIRO_FILTER_BILINEAR;
    case kCGInterpolationHigh:
        return CAIRO_FILTER_BEST;
    default:
        return form.interpolates ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST;
    }
}

InkBytes inkBytes(const QuartzColor &color) {
    const auto byte = [](double component) {
        return static_cast<uint8_t>(lx::roundToInt32(component * 255));
    };
    return {byte(color.red), byte(color.green), byte(color.blue), byte(color.alpha)};
}

// From user space to the pixels of a picture that covers the rectangle, its first row at the top.
cairo_matrix_t pixelsFrom(const Sides &sides, const ImageForm &form, bool yGrowsUp) {
    const double perX = form.width / sides.width();
    const double perY = form.height / sides.height();
    if (yGrowsUp)
        return {perX, 0, 0, -perY, -sides.left * perX, sides.bottom * perY};
    return {perX, 0, 0, perY, -sides.left * perX, -sides.top * perY};
}

// Whether cairo can hold a rectangle's corners on the target.
bool isWithinTarget(const cairo_matrix_t &userSpace, const Sides &sides) {
    for (const double cornerX : {sides.left, sides.right})
        for (const double cornerY : {sides.top, sides.bottom}) {
            double x = cornerX, y = cornerY;
            cairo_matrix_transform_point(&userSpace, &x, &y);
            if (!(std::abs(x) <= maxCoordinate && std::abs(y) <= maxCoordinate))
                return false;
        }
    return true;
}

// Whether cairo can hold the scale between the target and a picture's pixels: beyond it a picture is smaller
// than a speck, or one of its pixels larger than any target.
bool isWithinScale(const cairo_matrix_t &userSpace, const cairo_matrix_t &toPixels) {
    constexpr double maxScale = 1 << 14, minScale = 1 / maxScale;
    cairo_matrix_t way = userSpace;
    if (cairo_matrix_invert(&way) != CAIRO_STATUS_SUCCESS)
        return false;
    cairo_matrix_multiply(&way, &way, &toPixels);
    const double largest = std::max({std::abs(way.xx), std::abs(way.yx), std::abs(way.xy), std::abs(way.yy)});
    return largest <= maxScale && std::abs(way.xx * way.yy - way.xy * way.yx) >= largest * minScale;
}

void drawImage(CGContext &context, const LxCGRect &rect, const CGImage &image) {
    const Sides sides(rect);
    GraphicsState &state = context.state();
    if (!sides.hasArea() || !hasInverse(state.transform))
        return;
    const cairo_matrix_t toPixels = pixelsFrom(sides, image.form, context.target.yGrowsUp);
    if (!isWithinTarget(context.matrix(), sides) || !isWithinScale(context.matrix(), toPixels))
        return;
    const bool exchanges = context.target.exchangesRedAndBlue;
    const SurfaceHandle pixels = renderImage(image, inkBytes(state.fill), exchanges);
    if (pixels == nullptr)
        return;
    const UserSpace userSpace(context);
    cairo_t *cairo = context.cairo.get();
    cairo_rectangle(cairo, sides.left, sides.top, sides.width(), sides.height());
    cairo_clip(cairo);
    cairo_set_source_surface(cairo, pixels.get(), 0, 0);
    cairo_pattern_t *pattern = cairo_get_source(cairo);
    cairo_pattern_set_matrix(pattern, &toPixels);
    cairo_pattern_set_filter(pattern, filterOf(state.quality, image.form));
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_paint_with_alpha(cairo, state.alpha);
}

} // namespace
} // namespace lx

using namespace lx;

void CGContextBeginPath(CGContextRef context) {
    if (context != nullptr)
        cairo_new_path(context->cairo.get());
}

void CGContextMoveToPoint(CGContextRef context, float x, float y) {
    if (context != nullptr)
        addPoint(*context, x, y, cairo_move_to);
}

void CGContextAddLineToPoint(CGContextRef context, float x, float y) {
    if (context != nullptr && cairo_has_current_point(context->cairo.get()) != 0)
        addPoint(*context, x, y, cairo_line_to);
}

void CGContextClosePath(CGContextRef context) {
    if (context != nullptr)
        cairo_close_path(context->cairo.get());
}

void CGContextDrawPath(CGContextRef context, int32_t mode) {
    if (context != nullptr && mode >= kCGPathFill && mode <= kCGPathEOFillStroke)
        drawPath(*context, drawingModes[mode]);
}

void CGContextStrokePath(CGContextRef context) {
    CGContextDrawPath(context, kCGPathStroke);
}

void CGContextFillRect(CGContextRef context, LxCGRect rect) {
    if (context == nullptr)
        return;
    cairo_new_path(context->cairo.get());
    const Sides sides(rect);
    if (!sides.hasArea())
        return;
    addPoint(*context, sides.left, sides.top, cairo_move_to);
    addPoint(*context, sides.right, sides.top, cairo_line_to);
    addPoint(*context, sides.right, sides.bottom, cairo_line_to);
    addPoint(*context, sides.left, sides.bottom, cairo_line_to);
    drawPath(*context, drawingModes[kCGPathFill]);
}

void CGContextDrawImage(CGContextRef context, LxCGRect rect, CGImageRef image) {
    if (context != nullptr && isImage(image))
        drawImage(*context, rect, *image);
}
