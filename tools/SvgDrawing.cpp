#include "tools/SvgDrawing.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string>
#include <string_view>

#include "foundation/Numeric.h"
#include "path/PathReader.h"
#include "tools/Failure.h"
#include "tools/SvgShape.h"
#include "tools/SvgStroke.h"
#include "tools/SvgStyle.h"
#include "tools/SvgView.h"

namespace tool {
namespace {

constexpr int maxDepth = 500;

// Clip paths at work at a time: each holds a mask as large as the picture.
constexpr int maxMasks = 16;

// In pixels. What reaches further is not drawn.
constexpr double farthest = 1e6;

// ---- Bounds ----

struct Bounds {
    LxRectD rect = {INFINITY, INFINITY, -INFINITY, -INFINITY};

    void add(double x, double y) {
        rect = {std::min(rect.x0, x), std::min(rect.y0, y), std::max(rect.x1, x), std::max(rect.y1, y)};
    }
    bool sensible() const {
        return rect.x0 <= rect.x1 && rect.x0 > -farthest && rect.y0 > -farthest && rect.x1 < farthest &&
               rect.y1 < farthest;
    }
};

Bounds boundsOf(const LxPath &path) {
    Bounds bounds;
    lx::readItems(path, [&](uint32_t tag, int32_t at, int32_t) {
        if (tag == kLxPathMove || tag == kLxPathLine)
            bounds.add(std::bit_cast<float>(path.words[at + 1]), std::bit_cast<float>(path.words[at + 2]));
    });
    return bounds;
}

Bounds boundsOf(const SvgShape &shape) {
    Bounds bounds;
    for (const SvgLine &line : shape.lines())
        for (const LxPointD &point : line.points)
            bounds.add(point.x, point.y);
    return bounds;
}

// The shape as a path of the picture's coordinates, all its lines closed.
PathHandle filledPath(const SvgShape &shape, const LxMatrix &matrix) {
    PathHandle path(LxPath_Create());
    for (const SvgLine &line : shape.lines()) {
        for (size_t i = 0; i < line.points.size(); ++i)
            (i == 0 ? LxPath_AddMoveTo : LxPath_AddLineTo)(path.get(), line.points[i].x, line.points[i].y);
        LxPath_AddClose(path.get());
    }
    LxPath_Transform(path.get(), &matrix);
    return path;
}

// ---- The drawing ----

class Drawing {
public:
    Drawing(LxImage &image, const lx::XmlNode &document, const SvgLimits &limits)
        : canvas_(image), limits_(limits), root_(svgRootOf(document)), viewport_(viewportOf(root_)),
          elements_(document), gradients_(elements_, viewport_.width, viewport_.height) {}

    void draw() {
        SvgStyle style;
        style.matrix = rootMatrix(root_, canvas_.size().width, canvas_.size().height);
        style.inherit(root_, whole(), gradients_);
        children(root_, style, nullptr, 0);
    }

private:
    double whole() const { return std::hypot(viewport_.width, viewport_.height) / std::sqrt(2.0); }

    void children(const lx::XmlNode &node, const SvgStyle &style, const SvgMask &mask, int depth) {
        for (lx::XmlNode child = node.firstChild(); child; child = child.next())
            if (child.type() == lx::XmlNode::element)
                element(child, style, mask, depth + 1);
    }

    void element(const lx::XmlNode &node, SvgStyle style, SvgMask mask, int depth) {
        if (depth > maxDepth)
            throw Failure("elements are nested deeper than " + std::to_string(maxDepth));
        if (++elementCount_ > limits_.elements)
            throw Failure("more than " + std::to_string(limits_.elements) + " elements");
        const std::string_view name = nameOf(node);
        if (name == "defs" || name == "symbol" || name == "clipPath" || propertyOf(node, "display") == "none")
            return;
        style.inherit(node, whole(), gradients_);
        const SvgUrl clip = urlFrom(propertyOf(node, "clip-path"));
        const lx::XmlNode clipPath = elements_.find(clip.id);
        if (nameOf(clipPath) == "clipPath") {
            ++maskCount_;
            mask = maskOf(clipPath, node, style, mask);
        }
        if (name == "g" || name == "a" || name == "switch") {
            children(node, style, mask, depth);
        } else if (name == "svg") {
            innerDrawing(node, node, style, mask, depth);
        } else if (name == "use") {
            use(node, style, mask, depth);
        } else {
            SvgShape shape(scaleOf(style), pointsLeft_);
            if (readShape(node, name, shape) && !shape.lines().empty())
                drawShape(shape, style, mask);
        }
        if (nameOf(clipPath) == "clipPath")
            --maskCount_;
    }

    static double scaleOf(const SvgStyle &style) {
        const LxMatrix &m = style.matrix;
        const double scale = std::sqrt(std::abs(m.m0 * m.m4 - m.m1 * m.m3));
        return std::isfinite(scale) ? scale : 1;
    }

    double length(const lx::XmlNode &node, const char *attribute, double whole, double otherwise = 0) const {
        const auto value = lengthFrom(attributeOf(node, attribute));
        return value ? value->of(whole) : otherwise;
    }

    // A drawing inside the drawing, in the place that `placed` tells.
    void innerDrawing(const lx::XmlNode &node, const lx::XmlNode &placed, SvgStyle style, const SvgMask &mask,
                      int depth) {
        const double w = viewport_.width, h = viewport_.height;
        const bool isUse = nameOf(placed) == "use"; // which has moved to its place already
        const SvgBox box = {isUse ? 0 : length(placed, "x", w), isUse ? 0 : length(placed, "y", h),
                            length(placed, "width", w, length(node, "width", w, w)),
                            length(placed, "height", h, length(node, "height", h, h))};
        if (!(box.width > 0 && box.height > 0))
            return;
        style.matrix = product(style.matrix, viewMatrix(node, box));
        children(node, style, mask, depth);
    }

    void use(const lx::XmlNode &node, SvgStyle style, const SvgMask &mask, int depth) {
        const lx::XmlNode target = elements_.find(referenceOf(node));
        if (!target)
            return;
        const double x = length(node, "x", viewport_.width), y = length(node, "y", viewport_.height);
        style.matrix = product(style.matrix, {1, 0, x, 0, 1, y, 0, 0, 1});
        const std::string_view name = nameOf(target);
        if (name != "symbol" && name != "svg") {
            element(target, style, mask, depth + 1);
            return;
        }
        style.inherit(target, whole(), gradients_);
        innerDrawing(target, node, style, mask, depth + 1);
    }

    // The mask of a clip path for an element, inside of another mask.
    SvgMask maskOf(const lx::XmlNode &clipPath, const lx::XmlNode &clipped, SvgStyle style,
                   const SvgMask &within) {
        if (maskCount_ > maxMasks)
            throw Failure("clip paths are nested deeper than " + std::to_string(maxMasks));
        const PictureSize size = canvas_.size();
        takeWork(double(size.width) * size.height);
        if (attributeOf(clipPath, "clipPathUnits") == "objectBoundingBox") {
            SvgShape shape(scaleOf(style), pointsLeft_);
            readShape(clipped, nameOf(clipped), shape);
            const LxRectD box = boundsOf(shape).rect;
            style.matrix =
                product(style.matrix, {box.x1 - box.x0, 0, box.x0, 0, box.y1 - box.y0, box.y0, 0, 0, 1});
        }
        style.inherit(clipPath, whole(), gradients_);
        const std::shared_ptr<LxImage> mask = canvas_.makeMask();
        for (lx::XmlNode child = clipPath.firstChild(); child; child = child.next())
            openMask(*mask, child, style, within);
        return mask;
    }

    void openMask(LxImage &mask, lx::XmlNode node, SvgStyle style, const SvgMask &within) {
        if (++elementCount_ > limits_.elements)
            throw Failure("more than " + std::to_string(limits_.elements) + " elements");
        style.inherit(node, whole(), gradients_);
        if (nameOf(node) == "use") {
            const double x = length(node, "x", viewport_.width), y = length(node, "y", viewport_.height);
            style.matrix = product(style.matrix, {1, 0, x, 0, 1, y, 0, 0, 1});
            node = elements_.find(referenceOf(node));
            if (!node)
                return;
            style.inherit(node, whole(), gradients_);
        }
        SvgShape shape(scaleOf(style), pointsLeft_);
        if (!readShape(node, nameOf(node), shape) || !countShape() || !style.visible ||
            !boundsOf(shape).sensible())
            return;
        const PathHandle path = filledPath(shape, style.matrix);
        if (takeArea(*path))
            canvas_.open(mask, *path, style.clipRule, within);
    }

    // False for what is no shape.
    bool readShape(const lx::XmlNode &node, std::string_view name, SvgShape &shape) const {
        const double w = viewport_.width, h = viewport_.height;
        const auto number = [&](const char *attribute, double whole, double otherwise = 0) {
            return length(node, attribute, whole, otherwise);
        };
        if (name == "path") {
            shape.pathData(attributeOf(node, "d"));
        } else if (name == "rect") {
            const double width = number("width", w), height = number("height", h);
            const double rx = number("rx", w, -1), ry = number("ry", h, -1);
            if (width > 0 && height > 0)
                shape.rectangle(number("x", w), number("y", h), width, height, rx < 0 ? ry : rx,
                                ry < 0 ? rx : ry);
        } else if (name == "circle") {
            const double radius = number("r", whole());
            if (radius > 0)
                shape.ellipse({number("cx", w), number("cy", h)}, radius, radius);
        } else if (name == "ellipse") {
            const double rx = number("rx", w), ry = number("ry", h);
            if (rx > 0 && ry > 0)
                shape.ellipse({number("cx", w), number("cy", h)}, rx, ry);
        } else if (name == "line") {
            shape.moveTo({number("x1", w), number("y1", h)});
            shape.lineTo({number("x2", w), number("y2", h)});
        } else if (name == "polyline" || name == "polygon") {
            shape.polygon(attributeOf(node, "points"), name == "polygon");
        } else {
            return false;
        }
        return true;
    }

    bool countShape() {
        if (++shapeCount_ > limits_.shapes)
            throw Failure("more than " + std::to_string(limits_.shapes) + " shapes");
        return true;
    }

    void drawShape(const SvgShape &shape, const SvgStyle &style, const SvgMask &mask) {
        countShape();
        const Bounds box = boundsOf(shape);
        if (!style.visible || !box.sensible())
            return;
        if (style.fill.kind != SvgPaintStyle::none)
            paint(*filledPath(shape, style.matrix), style.fillRule, style.fill,
                  style.fillOpacity * style.opacity, style, box.rect, mask);
        if (style.stroke.kind != SvgPaintStyle::none && style.strokeWidth > 0 && style.strokeWidth < farthest)
            paint(*strokeOf(shape, style, pointsLeft_), SvgFillRule::nonZero, style.stroke,
                  style.strokeOpacity * style.opacity, style, box.rect, mask);
    }

    void takeWork(double steps) {
        work_ += steps;
        if (work_ > limits_.work)
            throw Failure("more to draw than a drawing may have");
    }

    // Counts the work of filling a path. False if nothing of it can be seen.
    bool takeArea(const LxPath &path) {
        const Bounds bounds = boundsOf(path);
        if (!bounds.sensible())
            return false;
        const double width = canvas_.size().width, height = canvas_.size().height;
        const double across = std::min(bounds.rect.x1, width) - std::max(bounds.rect.x0, 0.0);
        const double down = std::min(bounds.rect.y1, height) - std::max(bounds.rect.y0, 0.0);
        if (!(across > 0 && down > 0))
            return false;
        takeWork((down + 1) * (across + 1 + path.count / 3.0));
        return true;
    }

    // Fills a path of the picture's own coordinates.
    void paint(const LxPath &path, SvgFillRule rule, const SvgPaintStyle &paint, double opacity,
               const SvgStyle &style, const LxRectD &box, const SvgMask &mask) {
        if (opacity <= 0 || !takeArea(path))
            return;
        if (paint.kind == SvgPaintStyle::gradient) {
            if (const auto shade = gradients_.make(paint.id, box, style.matrix, opacity))
                canvas_.fill(path, rule, {{}, shade.get()}, mask);
            return;
        }
        LxRGBA rgba = paint.rgba;
        rgba.a = static_cast<uint8_t>(lx::roundToInt32(rgba.a * opacity));
        canvas_.fill(path, rule, {rgba, nullptr}, mask);
    }

    SvgCanvas canvas_;
    const SvgLimits limits_;
    const lx::XmlNode root_;
    const SvgBox viewport_;
    const SvgElements elements_;
    const SvgGradients gradients_;
    size_t elementCount_ = 0, shapeCount_ = 0;
    size_t pointsLeft_ = limits_.points;
    int maskCount_ = 0;
    double work_ = 0;
};

// What `action` answers; its Failure gets the file's name.
template <class Action>
auto naming(const std::string &file, Action action) {
    try {
        return action();
    } catch (const Failure &failure) {
        throw Failure(file + ": " + failure.what());
    }
}

} // namespace

PictureSize drawingSize(const lx::XmlNode &document, int largestSide, const std::string &file) {
    const SvgBox box = naming(file, [&] { return viewportOf(svgRootOf(document)); });
    const double shrink = std::min(1.0, largestSide / std::max(box.width, box.height));
    const auto side = [&](double length) {
        return static_cast<int>(std::clamp(std::ceil(length * shrink), 1.0, double(largestSide)));
    };
    return {side(box.width), side(box.height)};
}

void drawSvg(LxImage &image, const lx::XmlNode &document, const std::string &file, const SvgLimits &limits) {
    naming(file, [&] { Drawing(image, document, limits).draw(); });
}

} // namespace tool
