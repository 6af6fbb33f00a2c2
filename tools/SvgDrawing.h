// Plays SVG files onto a picture: paths and basic shapes with their fills and strokes, opacities, transforms,
// gradients and clip paths, alone, in groups, and used again. What it does not know is left out: text,
// images, masks, filters, patterns, markers, style sheets. A group's opacity counts for each of its elements.
//
// Files are strangers': depth, elements, shapes, points and the pixels to fill have limits, beyond which
// there is a Failure that names the file, and what is beyond all sensible coordinates is left out.
#pragma once

#include <cstddef>
#include <string>

#include "platform/XmlTree.h"
#include "tools/SvgCanvas.h"

namespace tool {

// The size that the drawing tells, made to fit into a square of `largestSide`; 512 by 512 for none. A
// document whose root is no "svg" is a Failure.
PictureSize drawingSize(const lx::XmlNode &document, int largestSide, const std::string &file);

// What a stranger's file may ask for.
struct SvgLimits {
    size_t elements = 400'000; // those that are used again count each time
    size_t shapes = 200'000;
    size_t points = 4'000'000;
    double work = 4e9; // steps of the rasteriser, by estimate: a second or a few
};

// Draws the document into the whole of an RGBA picture.
void drawSvg(LxImage &image, const lx::XmlNode &document, const std::string &file,
             const SvgLimits &limits = {});

} // namespace tool
