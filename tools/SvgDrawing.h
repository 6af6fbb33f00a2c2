// Plays SVG files onto a context: paths and basic shapes with their fills, strokes, opacities, transforms and
// gradients, as far as the library can draw them. What it cannot is left out or drawn as near as it comes:
// - Fills count by the non-zero rule, whatever the file asks for.
// - Joins are mitred within the file's limit, else bevelled; ends are butt; dashes are drawn through.
// - Gradients: see SvgPaint.h.
// - No text, images, clips, masks, filters, patterns, markers, reused elements or style sheets.
//
// Files are strangers': depth, shapes, points and the pixels to fill have limits, beyond which there is a
// Failure that names the file, and what is beyond all sensible coordinates is left out.
#pragma once

#include <cstddef>
#include <string>

#include <oxlume/LxGC.h>

#include "platform/XmlTree.h"

namespace tool {

struct PictureSize {
    int width, height;
};

// The size that the drawing tells, made to fit into a square of `largestSide`; 512 by 512 for none. A
// document whose root is no "svg" is a Failure.
PictureSize drawingSize(const lx::XmlNode &document, int largestSide, const std::string &file);

// What a stranger's file may ask for.
struct SvgLimits {
    size_t shapes = 200'000;
    size_t points = 4'000'000;
    double work = 4e9; // steps of the rasteriser, by estimate: a second or a few
};

// Draws the document into the whole of a picture.
void drawSvg(LxGC *gc, const lx::XmlNode &document, PictureSize size, const std::string &file,
             const SvgLimits &limits = {});

} // namespace tool
