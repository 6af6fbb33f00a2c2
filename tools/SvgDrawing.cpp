#include "tools/SvgDrawing.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string>

#include "path/PathReader.h"
#include "tools/Failure.h"
#include "tools/SvgPaint.h"
#include "tools/SvgShape.h"

namespace tool {
namespace {

// ---- Limits ----

constexpr int maxDepth = 500;

// In pixels. What reaches further is not drawn.
constexpr double farthest = 1e6;

// ---- What elements inherit ----

struct Paint {
    enum Kind { none, color, gradient } kind;
    LxRGBA rgba;
    std::string_view id; // of the gradient
};

struct Style {
    Paint fill = {Paint::color, LxRGBA_Black, {}};
    Paint stroke = {Paint::none, LxRGBA_Black, {}};
    LxRGBA color = LxRGBA_Black; // what "currentColor" is
    double fillOpacity = 1, strokeOpacity = 1;
    double opacity = 1; // of this and all elements around
    double strokeWidth = 1;
    bool mitred = true;
    double mitreLimit = 4;
    bool visible = true;
    LxMatrix matrix = LxMatrix_0;
};

struct Box {
    double x = 0, y = 0, width = 0, height = 0;
};

// The name without a prefix, as in "svg:path".
std::string_view nameOf(const lx::XmlNode &element) {
    const std::string_view name = element.type() == lx::XmlNode::element ? element.name() : "";
    return name.starts_with("svg:") ? name.substr(4) : name;
}

lx::XmlNode rootOf(const lx::XmlNode &document) {
    lx::XmlNode node = document.firstChild();
    while (node && node.type() != lx::XmlNode::element)
        node = node.next();
    if (!node || nameOf(node) != "svg")
        throw Failure("no SVG drawing");
    return node;
}

// All zero if there is none that can be used.
Box viewBoxOf(const lx::XmlNode &root) {
    double numbers[4] = {};
    NumberReader reader(attributeOf(root, "viewBox"));
    for (double &number : numbers)
        number = reader.number().value_or(0);
    if (!(numbers[2] > 0 && numbers[3] > 0))
        return {};
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

// The root's own size: what it tells, or its view box's, or the ordinary one.
Box viewportOf(const lx::XmlNode &root) {
    constexpr double ordinarySide = 512;
    const Box box = viewBoxOf(root);
    const auto side = [&](const char *name, double otherwise) {
        const auto length = lengthFrom(attributeOf(root, name));
        return length && !length->share && length->value > 0 ? length->value : otherwise;
    };
    const double width = side("width", 0), height = side("height", 0);
    const double ratio = box.width > 0 ? box.width / box.height : 1;
    if (width > 0 && height > 0)
        return {0, 0, width, height};
    if (width > 0)
        return {0, 0, width, width / ratio};
    if (height > 0)
        return {0, 0, height * ratio, height};
    return box.width > 0 ? Box{0, 0, box.width, box.height} : Box{0, 0, ordinarySide, ordinarySide};
}

// Fits the view box, or else the viewport, into the middle of the picture.
LxMatrix rootMatrix(const lx::XmlNode &root, PictureSize size) {
    const Box viewBox = viewBoxOf(root);
    const Box box = viewBox.width > 0 ? viewBox : viewportOf(root);
    double sx = size.width / box.width, sy = size.height / box.height;
    if (!attributeOf(root, "preserveAspectRatio").starts_with("none"))
        sx = sy = std::min(sx, sy);
    return {sx, 0,  size.width / 2.0 - sx * (box.x + box.width / 2),
            0,  sy, size.height / 2.0 - sy * (box.y + box.height / 2),
            0,  0,  1};
}

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

// ---- Strokes ----

// Whether all corners of a line stay within a limit of mitre length to width. The library's own mitres have
// none.
bool mitresFit(const SvgLine &line, double limit) {
    const auto &p = line.points;
    const size_t n = p.size();
    for (size_t i = line.closed ? 0 : 1; i + (line.closed ? 0 : 1) < n; ++i) {
        const LxPointD a = p[(i + n - 1) % n], b = p[i], c = p[(i + 1) % n];
        const double ux = b.x - a.x, uy = b.y - a.y, vx = c.x - b.x, vy = c.y - b.y;
        const double cosine = (ux * vx + uy * vy) / (std::hypot(ux, uy) * std::hypot(vx, vy));
        if (!(limit * limit * (1 + cosine) / 2 >= 1))
            return false;
    }
    return true;
}

struct DeletePath {
    void operator()(LxPath *path) const { LxPath_Delete(path); }
};
using PathHandle = std::unique_ptr<LxPath, DeletePath>;

void append(LxPath *path, const SvgLine &line, bool closed) {
    for (size_t i = 0; i < line.points.size(); ++i)
        (i == 0 ? LxPath_AddMoveTo : LxPath_AddLineTo)(path, line.points[i].x, line.points[i].y);
    if (closed)
        LxPath_AddClose(path);
}

// ---- The drawing ----

class Drawing {
public:
    Drawing(LxGC *gc, const lx::XmlNode &document, PictureSize size, const SvgLimits &limits)
        : gc_(gc), size_(size), limits_(limits), root_(rootOf(document)), viewport_(viewportOf(root_)),
          gradients_(document, viewport_.width, viewport_.height) {}

    void draw() {
        Style style;
        style.matrix = rootMatrix(root_, size_);
        LxGC_SetRenderMode(gc_, kLxRenderFill);
        element(root_, style, 0);
    }

private:
    void element(const lx::XmlNode &node, Style style, int depth) {
        if (depth > maxDepth)
            throw Failure("elements are nested deeper than " + std::to_string(maxDepth));
        if (propertyOf(node, "display") == "none")
            return;
        inherit(node, style);
        const std::string_view name = nameOf(node);
        if (name == "svg" || name == "g" || name == "a" || name == "switch") {
            for (lx::XmlNode child = node.firstChild(); child; child = child.next())
                if (child.type() == lx::XmlNode::element)
                    element(child, style, depth + 1);
            return;
        }
        const double scale =
            std::sqrt(std::abs(style.matrix.m0 * style.matrix.m4 - style.matrix.m1 * style.matrix.m3));
        SvgShape shape(std::isfinite(scale) ? scale : 1, pointsLeft_);
        if (readShape(node, name, shape) && !shape.lines().empty())
            drawShape(shape, style);
    }

    Paint paintFrom(std::string_view text, const Paint &inherited, const Style &style) const {
        if (text.empty() || text == "inherit")
            return inherited;
        if (text == "none" || text == "transparent")
            return {Paint::none, {}, {}};
        if (text.starts_with("url(")) {
            const size_t close = std::min(text.find(')'), text.size());
            std::string_view id = trimmed(text.substr(4, close - 4));
            for (const char quote : {'\'', '"'})
                if (id.size() > 1 && id.front() == quote && id.back() == quote)
                    id = id.substr(1, id.size() - 2);
            if (id.starts_with('#') && gradients_.has(id.substr(1)))
                return {Paint::gradient, {}, id.substr(1)};
            // Another colour may be told for want of what is named.
            const std::string_view other = trimmed(text.substr(std::min(close + 1, text.size())));
            const auto color = colorFrom(other);
            return color ? Paint{Paint::color, *color, {}} : Paint{Paint::none, {}, {}};
        }
        if (text == "currentColor")
            return {Paint::color, style.color, {}};
        const auto color = colorFrom(text);
        return color ? Paint{Paint::color, *color, {}} : inherited;
    }

    // Replaces what the element tells itself.
    void inherit(const lx::XmlNode &node, Style &style) const {
        const auto property = [&](const char *name) { return propertyOf(node, name); };
        style.color = colorFrom(property("color")).value_or(style.color);
        style.fill = paintFrom(property("fill"), style.fill, style);
        style.stroke = paintFrom(property("stroke"), style.stroke, style);
        style.fillOpacity = fractionFrom(property("fill-opacity")).value_or(style.fillOpacity);
        style.strokeOpacity = fractionFrom(property("stroke-opacity")).value_or(style.strokeOpacity);
        style.opacity *= fractionFrom(property("opacity")).value_or(1);
        if (const auto width = lengthFrom(property("stroke-width")))
            style.strokeWidth = width->of(std::hypot(viewport_.width, viewport_.height) / std::sqrt(2.0));
        if (const auto join = property("stroke-linejoin"); !join.empty())
            style.mitred = join.starts_with("miter");
        if (const auto limit = lengthFrom(property("stroke-miterlimit")))
            style.mitreLimit = limit->value;
        if (const auto visibility = property("visibility"); !visibility.empty())
            style.visible = visibility == "visible";
        if (const auto transform = attributeOf(node, "transform"); !transform.empty())
            style.matrix = product(style.matrix, transformFrom(transform));
    }

    // False for what is no shape.
    bool readShape(const lx::XmlNode &node, std::string_view name, SvgShape &shape) const {
        const auto length = [&](const char *attribute, double whole, double otherwise = 0) {
            const auto value = lengthFrom(attributeOf(node, attribute));
            return value ? value->of(whole) : otherwise;
        };
        const double w = viewport_.width, h = viewport_.height;
        if (name == "path") {
            shape.pathData(attributeOf(node, "d"));
        } else if (name == "rect") {
            const double width = length("width", w), height = length("height", h);
            const double rx = length("rx", w, -1), ry = length("ry", h, -1);
            if (width > 0 && height > 0)
                shape.rectangle(length("x", w), length("y", h), width, height, rx < 0 ? ry : rx,
                                ry < 0 ? rx : ry);
        } else if (name == "circle") {
            const double radius = length("r", std::hypot(w, h) / std::sqrt(2.0));
            if (radius > 0)
                shape.ellipse({length("cx", w), length("cy", h)}, radius, radius);
        } else if (name == "ellipse") {
            const double rx = length("rx", w), ry = length("ry", h);
            if (rx > 0 && ry > 0)
                shape.ellipse({length("cx", w), length("cy", h)}, rx, ry);
        } else if (name == "line") {
            shape.moveTo({length("x1", w), length("y1", h)});
            shape.lineTo({length("x2", w), length("y2", h)});
        } else if (name == "polyline" || name == "polygon") {
            shape.polygon(attributeOf(node, "points"), name == "polygon");
        } else {
            return false;
        }
        return true;
    }

    void drawShape(const SvgShape &shape, const Style &style) {
        if (++shapes_ > limits_.shapes)
            throw Failure("more than " + std::to_string(limits_.shapes) + " shapes");
        if (!style.visible)
            return;
        Bounds box;
        for (const SvgLine &line : shape.lines())
            for (const LxPointD &point : line.points)
                box.add(point.x, point.y);
        if (!box.sensible())
            return;
        if (style.fill.kind != Paint::none) {
            PathHandle path(LxPath_Create());
            for (const SvgLine &line : shape.lines())
                append(path.get(), line, true);
            LxPath_Transform(path.get(), &style.matrix);
            paint(path.get(), style.fill, style.fillOpacity * style.opacity, style, box.rect);
        }
        if (style.stroke.kind != Paint::none && style.strokeWidth > 0 && style.strokeWidth < farthest) {
            const PathHandle path = outline(shape, style);
            paint(path.get(), style.stroke, style.strokeOpacity * style.opacity, style, box.rect);
        }
    }

    // Each line by itself: the library's paths go back to their first start after an open line.
    static PathHandle outline(const SvgShape &shape, const Style &style) {
        PathHandle result(LxPath_Create());
        PathHandle path(LxPath_Create());
        for (const SvgLine &line : shape.lines()) {
            if (line.points.size() < 2)
                continue;
            LxPath_MakeEmpty(path.get());
            append(path.get(), line, line.closed);
            const bool mitred = style.mitred && mitresFit(line, style.mitreLimit);
            LxPath_Outline(path.get(), &style.matrix, nullptr, style.strokeWidth,
                           mitred ? kLxStrokeMitre : 0);
            LxPath_Add(result.get(), path.get());
        }
        return result;
    }

    // Fills a path of the picture's own coordinates.
    void paint(const LxPath *path, const Paint &paint, double opacity, const Style &style,
               const LxRectD &box) {
        if (path == nullptr || opacity <= 0)
            return;
        const Bounds bounds = boundsOf(*path);
        if (!bounds.sensible())
            return;
        const double right = size_.width, bottom = size_.height;
        const LxRectD pixels = {std::clamp(std::floor(bounds.rect.x0), 0.0, right),
                                std::clamp(std::floor(bounds.rect.y0), 0.0, bottom),
                                std::clamp(std::ceil(bounds.rect.x1), 0.0, right),
                                std::clamp(std::ceil(bounds.rect.y1), 0.0, bottom)};
        if (!(pixels.x0 < pixels.x1 && pixels.y0 < pixels.y1))
            return;
        work_ += (pixels.y1 - pixels.y0) * (pixels.x1 - pixels.x0 + path->count / 3.0);
        if (work_ > limits_.work)
            throw Failure("more to draw than a drawing may have");
        GradientHandle gradient;
        if (paint.kind == Paint::gradient) {
            gradient = gradients_.make(paint.id, box, style.matrix, pixels, opacity);
            if (gradient == nullptr)
                return;
        } else {
            LxRGBA rgba = paint.rgba;
            rgba.a = static_cast<uint8_t>(255 * opacity + 0.5);
            LxGC_SetFillColor(gc_, LxColor_RGBA_t(rgba));
        }
        LxGC_SetFillGradient(gc_, gradient.get());
        LxGC_Path(gc_, path);
        LxGC_SetFillGradient(gc_, nullptr);
    }

    LxGC *const gc_;
    const PictureSize size_;
    const SvgLimits limits_;
    const lx::XmlNode root_;
    const Box viewport_;
    const SvgGradients gradients_;
    size_t shapes_ = 0;
    size_t pointsLeft_ = limits_.points;
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
    const Box box = naming(file, [&] { return viewportOf(rootOf(document)); });
    const double shrink = std::min(1.0, largestSide / std::max(box.width, box.height));
    const auto side = [&](double length) {
        return static_cast<int>(std::clamp(std::ceil(length * shrink), 1.0, double(largestSide)));
    };
    return {side(box.width), side(box.height)};
}

void drawSvg(LxGC *gc, const lx::XmlNode &document, PictureSize size, const std::string &file,
             const SvgLimits &limits) {
    naming(file, [&] { Drawing(gc, document, size, limits).draw(); });
}

} // namespace tool
