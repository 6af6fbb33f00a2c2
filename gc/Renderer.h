// Renderers: a table of operations bound to one target, and the kinds that they come in.
#pragma once

#include <cstdint>

#include <oxlume/LxGC.h>

// Every slot is filled, from the table of defaults if the kind has nothing better. A renderer reads the
// context's attributes through the public getters, at the time of each draw.
struct LxRenderer {
    void (*pixel)(LxRenderer *renderer, int32_t x, int32_t y, const LxColor *color, const LxBlend *blend);
    void (*fill)(LxRenderer *renderer, LxColor color);
    LxColor (*pixelColor)(LxRenderer *renderer); // nothing in the library calls it
    void (*line)(LxRenderer *renderer, double x1, double y1, double x2, double y2);
    void (*frame)(LxRenderer *renderer, double x1, double y1, double x2, double y2, double radiusX,
                  double radiusY);
    void (*ellipse)(LxRenderer *renderer, double cx, double cy, double radiusX, double radiusY);
    void (*poly)(LxRenderer *renderer, const LxPointD *points, int32_t n);
    void (*path)(LxRenderer *renderer, const LxPath *path);
    void (*sync)(LxRenderer *renderer);
    void (*flush)(LxRenderer *renderer);
    void (*resize)(LxRenderer *renderer, int32_t width, int32_t height); // nothing in the library calls it
    void (*spare)(LxRenderer *renderer);                                 // nor this
    void (*setMatrix)(LxRenderer *renderer, LxMatrix matrix);
    void (*drawImage)(LxRenderer *renderer, int32_t x, int32_t y, LxImage *image, LxImage *mask,
                      const LxRectL *rect, const LxBlend *blend);
    int32_t (*spare2)(LxRenderer *renderer); // nor this
    void (*drawText)(LxRenderer *renderer, double x, double y, const char *text, int32_t length);
    void (*hLine)(LxRenderer *renderer, int32_t x1, int32_t x2, int32_t y);
    void (*vLine)(LxRenderer *renderer, int32_t x, int32_t y1, int32_t y2);
    void (*lineL)(LxRenderer *renderer, int32_t x1, int32_t y1, int32_t x2, int32_t y2);
    void (*frameL)(LxRenderer *renderer, int32_t x1, int32_t y1, int32_t x2, int32_t y2);
    uint32_t (*ellipseL)(LxRenderer *renderer, int32_t x1, int32_t y1, int32_t x2, int32_t y2);

    LxGC *gc; // the context that owns the renderer
    int32_t kind;
    void *privateState; // the kind's own
};

namespace lx {

// What a kind of renderers gives to the registry. All four functions must be there.
struct RendererKind {
    // Takes a record with the defaults, `gc` and `kind` set: makes `privateState` and overwrites slots. On
    // failure it releases what it took, but not the record, and answers false.
    bool (*create)(LxRenderer &renderer, void *target);
    // Releases `privateState` and, by LxMem_free, the record.
    void (*remove)(LxRenderer *renderer);
    // The library's start and end; the start answers 1 for success.
    int32_t (*start)();
    void (*end)();
};

// Each family serves some numbers of LxGC_AddRenderer: software 0 to 2, openGL 3 to 5, quartz 6.
enum class RendererFamily { software, openGL, quartz };

// The kinds put their functions here by a constant initialiser in their own source file, so that this folder
// needs none of them; creation fails for a family that has none. Answers what stood there before.
const RendererKind *registerRendererKind(RendererFamily family, const RendererKind *kind);

} // namespace lx

extern "C" {

// A new renderer of the kind on the target, or null for lack of memory, for an unknown kind, and where the
// kind refuses.
LxRenderer *LxRenderer_Create(LxGC *gc, int32_t kind, void *target);

// Releases a renderer; null is ignored, and so is one whose kind is unknown.
void LxRenderer_Delete(LxRenderer *renderer);
}
