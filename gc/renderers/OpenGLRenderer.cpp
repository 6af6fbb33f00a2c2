// The renderer that draws by OpenGL's fixed functions to whatever context is current.

#include <GL/gl.h>
#include <GL/glu.h>

#include <oxlume/LxMem.h>

#include "foundation/Numeric.h"
#include "gc/Renderer.h"
#include "gc/renderers/OpenGLImages.h"
#include "gc/renderers/OpenGLPolygons.h"

namespace lx {
namespace {

struct OpenGLState {
    GLUtesselator *tessellator;
};

OpenGLState &stateOf(LxRenderer *renderer) {
    return *static_cast<OpenGLState *>(renderer->privateState);
}

// ---- Coordinates ----

// One unit is one pixel and y runs upwards. On purpose: both axes have one pixel more than the size.
void setProjection(int32_t width, int32_t height) {
    glViewport(0, 0, wrappingAdd(width, 1), wrappingAdd(height, 1));
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluOrtho2D(0, width + 1.0, 0, height + 1.0);
}

void setProjectionToBounds(const LxGC *gc) {
    const LxRectD &bounds = *LxGC_BoundsRectPtr(gc);
    setProjection(truncateToInt32(LxRectD_w(&bounds)), truncateToInt32(LxRectD_h(&bounds)));
}

void resize(LxRenderer *, int32_t width, int32_t height) {
    setProjection(width, height);
}

// The matrix goes into the projection, on top of the bounds. Its third column, the translation, is the fourth
// one there. On purpose: its third row stays the third and acts on z, where the 1 of m8 puts everything on
// the near end of the depth that is shown.
void setMatrix(LxRenderer *renderer, LxMatrix matrix) {
    setProjectionToBounds(renderer->gc);
    const GLdouble columns[] = {
        matrix.m0, matrix.m3, matrix.m6, 0, //
        matrix.m1, matrix.m4, matrix.m7, 0, //
        0,         0,         1,         0, //
        matrix.m2, matrix.m5, matrix.m8, 1, //
    };
    glMultMatrixd(columns);
}

// ---- Drawing ----

// On purpose: the whole colour buffer, whatever the clip.
void fill(LxRenderer *, LxColor color) {
    float c[4];
    LxColor_AsFloatArray(color, c);
    glClearColor(c[0], c[1], c[2], c[3]);
    glClear(GL_COLOR_BUFFER_BIT);
}

void setPaint(LxColor color) {
    float c[4];
    LxColor_AsFloatArray(color, c);
    glColor4f(c[0], c[1], c[2], c[3]);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

// OpenGL does all blending the same way and its colours are plain: blends and gradients of the context have
// no effect, and under a gradient the attribute's own colour is taken.
void drawPath(LxRenderer *renderer, const LxPath *path) {
    if (path == nullptr)
        return;
    GLUtesselator *const tessellator = stateOf(renderer).tessellator;
    const LxGC *const gc = renderer->gc;
    const uint32_t mode = LxGC_RenderMode(gc);
    if ((mode & kLxRenderFill) != 0) {
        setPaint(LxGC_FillColor(gc));
        drawPolygons(tessellator, *path);
    }
    if ((mode & kLxRenderStroke) != 0) {
        setPaint(LxGC_StrokeColor(gc));
        LxPath *const outline = LxPath_CreateOutlined(path, nullptr, LxGC_ClipRectPtr(gc),
                                                      LxGC_StrokeWidth(gc), LxGC_StrokeStyle(gc));
        if (outline == nullptr)
            return;
        drawPolygons(tessellator, *outline);
        LxPath_Delete(outline);
    }
}

// On purpose: the rectangle gives no more than the size, and the place goes through the matrix twice, here
// and in OpenGL.
void drawImage(LxRenderer *renderer, int32_t x, int32_t y, LxImage *image, LxImage *, const LxRectL *rect,
               const LxBlend *) {
    if (image == nullptr)
        return;
    const LxRectL size = rect != nullptr ? *rect : LxImage_RectL(image);
    LxGC_TransposeL(renderer->gc, &x, &y);
    glRasterPos2i(x, y);
    drawPixels(*image, LxRectL_w(&size), LxRectL_h(&size));
}

// ---- The kind ----

void installSlots(LxRenderer &renderer) {
    renderer.fill = fill;
    renderer.path = drawPath;
    renderer.sync = [](LxRenderer *) { glFinish(); };
    renderer.flush = [](LxRenderer *) { glFlush(); };
    renderer.resize = resize;
    renderer.spare = [](LxRenderer *) {};
    renderer.setMatrix = setMatrix;
    renderer.drawImage = drawImage;
    renderer.drawText = [](LxRenderer *, double, double, const char *, int32_t) {};
}

void setInitialState() {
    glEnable(GL_LINE_SMOOTH);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glShadeModel(GL_FLAT);
    glDisable(GL_DEPTH_TEST);
}

bool create(LxRenderer &renderer, void *) {
    auto *state = static_cast<OpenGLState *>(LxMem_malloc(sizeof(OpenGLState)));
    if (state == nullptr)
        return false;
    state->tessellator = createTessellator();
    if (state->tessellator == nullptr) {
        LxMem_free(state);
        return false;
    }
    renderer.privateState = state;
    installSlots(renderer);
    setInitialState();
    setProjectionToBounds(renderer.gc);
    return true;
}

void remove(LxRenderer *renderer) {
    gluDeleteTess(stateOf(renderer).tessellator);
    LxMem_free(renderer->privateState);
    LxMem_free(renderer);
}

constexpr RendererKind openGLKind = {create, remove, [] { return int32_t{1}; }, [] {}};

const bool registered = (registerRendererKind(RendererFamily::openGL, &openGLKind), true);

} // namespace
} // namespace lx
