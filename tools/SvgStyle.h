// What the elements of an SVG file inherit from the elements around them.
#pragma once

#include <string_view>
#include <vector>

#include <oxlume/LxColor.h>
#include <oxlume/LxMatrix.h>

#include "tools/SvgCanvas.h"
#include "tools/SvgElement.h"

namespace tool {

struct SvgPaintStyle {
    enum Kind { none, color, gradient } kind;
    LxRGBA rgba;
    std::string_view id; // of the gradient
};

enum class SvgJoin { mitre, round, bevel };
enum class SvgCap { butt, round, square };

struct SvgStyle {
    SvgPaintStyle fill = {SvgPaintStyle::color, LxRGBA_Black, {}};
    SvgPaintStyle stroke = {SvgPaintStyle::none, LxRGBA_Black, {}};
    LxRGBA color = LxRGBA_Black; // what "currentColor" is
    double fillOpacity = 1, strokeOpacity = 1;
    double opacity = 1; // of this and all elements around
    SvgFillRule fillRule = SvgFillRule::nonZero, clipRule = SvgFillRule::nonZero;
    double strokeWidth = 1;
    SvgJoin join = SvgJoin::mitre;
    SvgCap cap = SvgCap::butt;
    double mitreLimit = 4;
    std::vector<double> dashes; // lengths of dashes and gaps in turn; none for a whole line
    double dashOffset = 0;
    bool visible = true;
    LxMatrix matrix = LxMatrix_0; // from the element to the picture

    // Replaces what the element tells itself. Percentages are of `whole`; gradients are known by their names.
    void inherit(const lx::XmlNode &element, double whole, const SvgGradients &gradients);
};

} // namespace tool
