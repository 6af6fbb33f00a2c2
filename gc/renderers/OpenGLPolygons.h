// Paths as OpenGL polygons.
#pragma once

#include <GL/glu.h>
#include <oxlume/LxPath.h>

namespace lx {

// A tessellator with the callbacks that drawPolygons expects, or null.
GLUtesselator *createTessellator();

// Fills a path in its own coordinates with the current colour. A short path is taken for one convex polygon,
// whatever its subpaths; any other goes through the tessellator, which fills where the winding is not zero.
void drawPolygons(GLUtesselator *tessellator, const LxPath &path);

} // namespace lx
