// The reader's entries at the boundary: unlike LxSVG_Read they tell whether anything was read.

#include <oxlume/LxExtras.h>

#include "svg/SvgReader.h"

using namespace lx;

namespace {

int32_t playIfRead(LxGC *gc, const XmlTree &tree) {
    playSvg(gc, tree);
    return tree.root() ? 1 : 0;
}

} // namespace

int32_t LxSVG_ReadFile(LxGC *gc, const char *url) {
    return gc != nullptr && url != nullptr ? playIfRead(gc, XmlTree(url)) : 0;
}

int32_t LxSVG_ReadText(LxGC *gc, const char *text, size_t length) {
    return gc != nullptr && text != nullptr ? playIfRead(gc, XmlTree::ofText({text, length})) : 0;
}

uint32_t LxSVG_PaintFlags(void) {
    return LxSVGPaintFlags;
}

void LxSVG_SetPaintFlags(uint32_t flags) {
    LxSVGPaintFlags = flags & (uint32_t{kLxRenderFill} | uint32_t{kLxRenderStroke});
}
