// Where an SVG file's drawings go: their viewports and view boxes.
#pragma once

#include <oxlume/LxMatrix.h>

#include "platform/XmlTree.h"

namespace tool {

struct SvgBox {
    double x = 0, y = 0, width = 0, height = 0;
};

// The root of a document; one that is no "svg" is a Failure.
lx::XmlNode svgRootOf(const lx::XmlNode &document);

// The root's own size: what it tells, or its view box's, or the ordinary one.
SvgBox viewportOf(const lx::XmlNode &root);

// What fits the element's view box into a viewport, at the place that the element asks for. Without a view
// box it is the way to the viewport's corner.
LxMatrix viewMatrix(const lx::XmlNode &element, const SvgBox &viewport);

// What fits the root's view box, or else its viewport, into a picture.
LxMatrix rootMatrix(const lx::XmlNode &root, double width, double height);

} // namespace tool
