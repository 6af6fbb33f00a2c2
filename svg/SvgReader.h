// Drawing a subset of SVG straight into a context.
#pragma once

#include <cstdint>

#include <oxlume/LxGC.h>

#include "platform/XmlTree.h"

namespace lx {

// Plays a tree onto the context, as LxSVG_Read does a file.
void playSvg(LxGC *gc, const XmlTree &tree);

} // namespace lx

extern "C" {

// Plays the file at `url`, a "file:" URL or a path, onto the context: the elements svg, g, path and line with
// the attributes that say where, of what colour and how wide, as far as SvgReader.cpp and SvgPathData.cpp
// tell. A file that cannot be read draws nothing. Colours, widths, render mode and matrix of the context stay
// as the file left them. One read at a time in the process.
void LxSVG_Read(LxGC *gc, const char *url);

// A set of LxRenderMode: what the groups of all files so far have set a colour for. Nothing clears it.
extern uint32_t LxSVGPaintFlags;
}
