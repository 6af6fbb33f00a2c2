// Compositing one rectangle of images, the step that all composites come down to.
#pragma once

#include <oxlume/LxBlend.h>
#include <oxlume/LxRect.h>

#include "image/Image.h"

namespace lx {

// What is composited onto what. `mask` may be null; `b` may be one of the others.
struct Operands {
    LxImage &out;
    LxImage &a;
    LxImage &b;
    const LxImage *mask;

    // Otherwise `b` is blended onto itself, and `out` and `a` are left alone.
    bool bIsDistinct() const { return &b != &out && &b != &a; }
};

// The area outside of which compositing `operands` draws nothing, as they lie.
LxRectL drawableArea(const Operands &operands);

// Blends where the images overlap, inside `rect` if that is not null.
void compositeRectangle(LxBlend &blend, const Operands &operands, const LxRectL *rect);

// Draws the segmented image `b` as a frame that fills `area`. Moves `b`, and `a` where it is not `out`,
// about.
void compositeFrame(LxBlend &blend, const Operands &operands, const LxRectL &area);

} // namespace lx
