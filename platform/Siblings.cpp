// The library's inner functions under the names by which its siblings call them.

#include "platform/Siblings.h"

LxImage *LxPrivate_CreateLendingImage(int32_t type, LxRectL rect, int32_t empty, int32_t clear,
                                      int32_t flipped) {
    return lx::createLendingImage(type, rect, (empty & 1) != 0, clear != 0, (flipped & 1) != 0);
}

void LxPrivate_RegisterViewContexts(lx::ViewContextFunctions functions) {
    lx::registerViewContexts(functions);
}
