#include "svg/SvgReader.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "geometry/Rect.h"
#include "platform/XmlNumber.h"
#include "svg/SvgPathData.h"

using namespace lx;

uint32_t LxSVGPaintFlags = 0;

namespace {

LxSVGScanner scanner;

bool is(const XmlAttribute &attribute, const char *name) {
    return std::strcmp(attribute.name(), name) == 0;
}

double numberOf(const XmlAttribute &attribute) {
    return leadingNumber(attribute.value());
}

// The attribute's text, or null for one that does not fit in as many bytes as it has characters: one that is
// not all ASCII. The rest of an element with such an attribute is left.
const char *textOf(const XmlAttribute &attribute) {
    const char *text = attribute.value();
    for (const char *p = text; *p != '\0'; ++p)
        if (static_cast<signed char>(*p) < 0)
            return nullptr;
    return text;
}

// Six hexadecimal digits behind the first character, whatever that is. On purpose: what cannot be read, such
// as "none", is white.
LxColor colorOf(const char *text) {
    unsigned value = 0xFFFFFFFF;
    if (*text != '\0')
        std::sscanf(text + 1, "%6x", &value);
    return LxColor_RGBA_t(LxRGBA_fromLong(value | 0xFF000000));
}

// ---- svg ----

struct ViewBox {
    double x = 0, y = 0, right = 0, bottom = 0;
};

ViewBox viewBoxOf(const char *text) {
    ViewBox box;
    scanner.begin(text);
    while (const int token = scanner.next()) {
        if (token != svgNumber)
            continue;
        box.x = scanner.number();
        box.y = scanner.nextNumber();
        box.right = scanner.nextNumber();
        box.bottom = scanner.nextNumber();
        break;
    }
    return box;
}

// Fits the drawing into the context's bounds, its y turned around.
void setDrawingMatrix(LxGC *gc, double width, double height, const ViewBox &box) {
    // On purpose: the third and fourth number of a view box are taken for its far corner.
    const double boxWidth = std::max(box.right - box.x, 1.0);
    const double boxHeight = std::max(box.bottom - box.y, 1.0);
    if (width == 1.0)
        width = boxWidth;
    if (height == 1.0)
        height = boxWidth; // On purpose: the width.
    LxGC_MatrixIdentity(gc);
    LxGC_SetOrigin(gc, box.x, box.y);
    if (boxWidth > 1.0 && boxHeight > 1.0)
        LxGC_MatrixScale(gc, boxWidth / width, boxHeight / height);
    LxGC_MatrixTranslate(gc, 0.0, -height);
    const LxRectD &bounds = *LxGC_BoundsRectPtr(gc);
    LxGC_MatrixScale(gc, lx::width(bounds) / width, lx::height(bounds) / height);
    LxGC_MatrixScale(gc, 1.0, -1.0);
}

void readSvg(LxGC *gc, XmlAttribute attribute) {
    double width = 1.0, height = 1.0;
    ViewBox box;
    for (; attribute; attribute = attribute.next()) {
        if (is(attribute, "width")) {
            width = numberOf(attribute);
        } else if (is(attribute, "height")) {
            height = numberOf(attribute);
        } else if (is(attribute, "viewBox")) {
            const char *text = textOf(attribute);
            if (text == nullptr)
                return;
            box = viewBoxOf(text);
        }
    }
    setDrawingMatrix(gc, width, height, box);
}

// ---- g ----

// On purpose: what a group sets stays set after it, and its transform means nothing.
void readGroup(LxGC *gc, XmlAttribute attribute) {
    for (; attribute; attribute = attribute.next()) {
        if (is(attribute, "stroke-width")) {
            LxGC_SetStrokeWidth(gc, numberOf(attribute));
            continue;
        }
        const bool fill = is(attribute, "fill");
        const bool stroke = is(attribute, "stroke");
        if (!fill && !stroke && !is(attribute, "transform"))
            continue;
        const char *text = textOf(attribute);
        if (text == nullptr)
            return;
        if (fill) {
            LxGC_SetFillColor(gc, colorOf(text));
            LxSVGPaintFlags |= kLxRenderFill;
        } else if (stroke) {
            LxGC_SetStrokeColor(gc, colorOf(text));
            LxSVGPaintFlags |= kLxRenderStroke;
        }
    }
}

// ---- path ----

// On purpose: a path that only strokes is not drawn.
void drawPath(LxGC *gc, const char *data, uint32_t flags) {
    LxPath *path = LxPath_Create();
    addPathData(path, data, scanner);
    const bool fills = (flags & kLxRenderFill) != 0;
    if (fills)
        LxPath_Close(path, 1);
    LxGC_SetRenderMode(gc, flags);
    if (fills)
        LxGC_Path(gc, path);
    LxPath_Delete(path);
}

// On purpose: the fill starts as black whatever the groups around have set, and what stands behind "d" comes
// too late.
void readPath(LxGC *gc, XmlAttribute attribute) {
    uint32_t flags = LxSVGPaintFlags != 0 ? LxSVGPaintFlags : uint32_t{kLxRenderFill};
    LxGC_SetFillColor(gc, LxColor_RGBA(0, 0, 0, 255));
    for (; attribute; attribute = attribute.next()) {
        if (is(attribute, "stroke-width")) {
            LxGC_SetStrokeWidth(gc, numberOf(attribute));
            continue;
        }
        const bool opacity = is(attribute, "opacity");
        const bool fill = is(attribute, "fill");
        const bool stroke = is(attribute, "stroke");
        if (!opacity && !fill && !stroke && !is(attribute, "d"))
            continue;
        const char *text = textOf(attribute);
        if (text == nullptr)
            return;
        if (opacity) {
            LxGC_SetFillBlend(gc, LxGC_FillBlend(gc)); // On purpose: unchanged, the number is not used.
        } else if (fill) {
            LxGC_SetFillColor(gc, colorOf(text));
            flags |= kLxRenderFill;
        } else if (stroke) {
            LxGC_SetStrokeColor(gc, colorOf(text));
            flags |= kLxRenderStroke;
        } else {
            drawPath(gc, text, flags);
        }
    }
}

// ---- line ----

void drawLine(LxGC *gc, double x1, double y1, double x2, double y2) {
    LxPath *path = LxPath_Create();
    LxPath_AddMoveTo(path, x1, y1);
    LxPath_AddLineTo(path, x2, y2);
    LxPath_AddLineTo(path, x1, y1);
    LxPath_AddClose(path);
    LxGC_SetRenderMode(gc, kLxRenderStroke);
    LxGC_Path(gc, path);
    LxPath_Delete(path);
}

// On purpose: "y2" draws at once, so that it has to come last.
void readLine(LxGC *gc, XmlAttribute attribute) {
    double x1 = 0, y1 = 0, x2 = 0;
    for (; attribute; attribute = attribute.next()) {
        if (is(attribute, "x1"))
            x1 = numberOf(attribute);
        else if (is(attribute, "y1"))
            y1 = numberOf(attribute);
        else if (is(attribute, "x2"))
            x2 = numberOf(attribute);
        else if (is(attribute, "y2"))
            drawLine(gc, x1, y1, x2, numberOf(attribute));
    }
}

// ---- The walk ----

// What is done with an element's attributes, in the order of the file.
struct Element {
    const char *name;
    void (*read)(LxGC *gc, XmlAttribute first);
};

constexpr Element elements[] = {{"svg", readSvg}, {"g", readGroup}, {"path", readPath}, {"line", readLine}};

void readNode(LxGC *gc, const XmlNode &node) {
    if (node.type() != XmlNode::element || !node.firstAttribute())
        return;
    for (const Element &element : elements)
        if (std::strcmp(node.name(), element.name) == 0)
            element.read(gc, node.firstAttribute());
}

// The node after `node` in the order of the file. Climbing needs no memory, however deep the file is.
XmlNode following(XmlNode node) {
    if (const XmlNode child = node.firstChild())
        return child;
    while (node && !node.next())
        node = node.parent();
    return node ? node.next() : node;
}

} // namespace

void lx::playSvg(LxGC *gc, const XmlTree &tree) {
    for (XmlNode node = tree.root(); node; node = following(node))
        readNode(gc, node);
}

void LxSVG_Read(LxGC *gc, const char *url) {
    playSvg(gc, XmlTree(url));
}
