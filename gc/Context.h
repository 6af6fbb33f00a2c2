// The context record, for use inside the library.
#pragma once

#include <array>
#include <cstdint>

#include <oxlume/LxGC.h>

#include "gc/Renderer.h"
#include "path/PathBuilder.h"

namespace lx {

// What an attribute holds: the member that belongs to its number.
union AttributeValue {
    LxColor color;
    double number;
    int32_t integer;
    LxBlend blend;
    LxGradient *gradient;
};

// Set once `id` holds the attribute's own number. `flag` is the callers' mark and decides nothing.
struct Attribute {
    int32_t flag;
    int32_t id;
    AttributeValue value;
};

constexpr uint32_t attributeCount = 23;
constexpr int32_t maxRenderers = 2;

} // namespace lx

struct _LxGC {
    std::array<lx::Attribute, lx::attributeCount> attributes; // by number
    LxRectD bounds;
    LxRectD clip; // inside the bounds
    LxMatrix matrix;
    LxMatrix spareMatrix;          // the identity; nothing reads it
    double originX, originY;       // where LxGC_MatrixIdentity comes back to
    double translateX, translateY; // the last values given to the functions of these names,
    double scaleX, scaleY;         // which nothing reads either
    double rotation;
    int32_t rendererCount;
    std::array<LxRenderer *, lx::maxRenderers> renderers; // owned
    uint32_t renderMode;                                  // a set of LxRenderMode
    lx::PathBuilder figure; // the line, frame, ellipse or polygon that is being drawn
};

namespace lx {

// Gives every attribute its first value.
void setInitialAttributes(LxGC &gc);

// Stores the clip that a rectangle gives: see LxGC_SetClipRectD.
void deriveClip(LxGC &gc, const LxRectD &rect);

// Calls a slot of each renderer that fills it, in order of attachment.
template <class Slot, class... Arguments>
void forward(const LxGC &gc, Slot slot, const Arguments &...arguments) {
    for (int32_t i = 0; i < gc.rendererCount; ++i) {
        LxRenderer *renderer = gc.renderers[i];
        if (renderer->*slot != nullptr)
            (renderer->*slot)(renderer, arguments...);
    }
}

// How a context is made for a view of the platform's object system. The bridges put their functions here;
// until then there is no such context.
struct ViewContextFunctions {
    LxGC *(*forOpenGLView)(void *view);
    LxGC *(*forView)(void *view);
};
void registerViewContexts(ViewContextFunctions functions);

} // namespace lx
