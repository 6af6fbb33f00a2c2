#include "tools/SvgView.h"

#include <algorithm>
#include <string_view>

#include "tools/Failure.h"
#include "tools/SvgElement.h"
#include "tools/SvgValues.h"

namespace tool {
namespace {

// All zero if there is none that can be used.
SvgBox viewBoxOf(const lx::XmlNode &element) {
    double numbers[4] = {};
    NumberReader reader(attributeOf(element, "viewBox"));
    for (double &number : numbers)
        number = reader.number().value_or(0);
    if (!(numbers[2] > 0 && numbers[3] > 0))
        return {};
    return {numbers[0], numbers[1], numbers[2], numbers[3]};
}

// Which part of what is left over stands in front of the drawing: "xMin", "xMid" or "xMax", and the same for
// y.
double shareInFront(std::string_view align, std::string_view axis) {
    const size_t at = align.find(axis);
    const std::string_view word = at == std::string_view::npos ? std::string_view() : align.substr(at + 1);
    return word.starts_with("Min") ? 0 : word.starts_with("Max") ? 1 : 0.5;
}

LxMatrix fitted(const SvgBox &box, const SvgBox &viewport, std::string_view align) {
    double sx = viewport.width / box.width, sy = viewport.height / box.height;
    if (!align.starts_with("none"))
        sx = sy = align.ends_with("slice") ? std::max(sx, sy) : std::min(sx, sy);
    const double x = viewport.x + (viewport.width - sx * box.width) * shareInFront(align, "xM");
    const double y = viewport.y + (viewport.height - sy * box.height) * shareInFront(align, "YM");
    return {sx, 0, x - sx * box.x, 0, sy, y - sy * box.y, 0, 0, 1};
}

} // namespace

lx::XmlNode svgRootOf(const lx::XmlNode &document) {
    lx::XmlNode node = document.firstChild();
    while (node && node.type() != lx::XmlNode::element)
        node = node.next();
    if (!node || nameOf(node) != "svg")
        throw Failure("no SVG drawing");
    return node;
}

SvgBox viewportOf(const lx::XmlNode &root) {
    constexpr double ordinarySide = 512;
    const SvgBox box = viewBoxOf(root);
    const auto side = [&](const char *name) {
        const auto length = lengthFrom(attributeOf(root, name));
        return length && !length->share && length->value > 0 ? length->value : 0;
    };
    const double width = side("width"), height = side("height");
    const double ratio = box.width > 0 ? box.width / box.height : 1;
    if (width > 0 && height > 0)
        return {0, 0, width, height};
    if (width > 0)
        return {0, 0, width, width / ratio};
    if (height > 0)
        return {0, 0, height * ratio, height};
    return box.width > 0 ? SvgBox{0, 0, box.width, box.height} : SvgBox{0, 0, ordinarySide, ordinarySide};
}

LxMatrix viewMatrix(const lx::XmlNode &element, const SvgBox &viewport) {
    const SvgBox box = viewBoxOf(element);
    if (box.width > 0)
        return fitted(box, viewport, attributeOf(element, "preserveAspectRatio"));
    return {1, 0, viewport.x, 0, 1, viewport.y, 0, 0, 1};
}

LxMatrix rootMatrix(const lx::XmlNode &root, double width, double height) {
    const SvgBox viewBox = viewBoxOf(root);
    return fitted(viewBox.width > 0 ? viewBox : viewportOf(root), {0, 0, width, height},
                  attributeOf(root, "preserveAspectRatio"));
}

} // namespace tool
