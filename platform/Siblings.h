// What liboxlume gives to the libraries that are built beside it and share its records: exported under a
// version of its own that promises nothing to anybody else.
#pragma once

#include "gc/Context.h"
#include "image/Image.h"

extern "C" {

// lx::createLendingImage.
LX_API LxImage *LxPrivate_CreateLendingImage(int32_t type, LxRectL rect, int32_t empty, int32_t clear,
                                             int32_t flipped);

// lx::registerViewContexts.
LX_API void LxPrivate_RegisterViewContexts(lx::ViewContextFunctions functions);
}
