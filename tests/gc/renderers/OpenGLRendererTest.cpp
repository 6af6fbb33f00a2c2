// What the renderer asks OpenGL for, call by call. No context is needed: without one OpenGL ignores its
// calls.

#include <algorithm>
#include <climits>

#include <gtest/gtest.h>

#include <oxlume/oxlume.h>

#include "foundation/Memory.h"
#include "gc/Renderer.h"
#include "tests/gc/Recorder.h"
#include "tests/gc/renderers/OpenGLRecorder.h"

using namespace lx;
using namespace lx::test;

namespace {

ContextHandle contextOf(double width, double height) {
    return ContextHandle(LxGC_CreateWithOpenGLContext(nullptr, LxRectD{0, 0, width, height}));
}

GLCalls projection(int32_t width, int32_t height, double right, double top) {
    return {glCall("glViewport", 0, 0, width, height), glCall("glMatrixMode", GL_PROJECTION),
            "glLoadIdentity", glCall("gluOrtho2D", 0, right, 0, top)};
}

GLCalls operator+(GLCalls a, const GLCalls &b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

struct DeleteRenderer {
    void operator()(LxRenderer *renderer) const { LxRenderer_Delete(renderer); }
};
using RendererHandle = std::unique_ptr<LxRenderer, DeleteRenderer>;

int64_t countOf(const GLCalls &calls, const std::string &name) {
    return std::count_if(calls.begin(), calls.end(),
                         [&](const std::string &call) { return call.substr(0, call.find(' ')) == name; });
}

// A triangle that is drawn as it stands.
void drawTriangle(LxGC *gc) {
    const LxPointD corners[] = {{1, 1}, {9, 1}, {1, 9}};
    LxGC_Poly(gc, corners, 3);
}

const GLCalls triangle = {glCall("glBegin", GL_POLYGON), glCall("glVertex2d", 1, 1),
                          glCall("glVertex2d", 9, 1),    glCall("glVertex2d", 1, 9),
                          glCall("glVertex2d", 1, 1),    "glEnd"};

GLCalls paint(double r, double g, double b, double a) {
    return {glCall("glColor4f", static_cast<float>(r), static_cast<float>(g), static_cast<float>(b),
                   static_cast<float>(a)),
            glCall("glPolygonMode", GL_FRONT_AND_BACK, GL_FILL)};
}

void *noMemory(size_t) {
    return nullptr;
}
void *noClearedMemory(size_t, size_t) {
    return nullptr;
}
void *noLongerMemory(void *, size_t) {
    return nullptr;
}

} // namespace

TEST(OpenGLRenderer, IsMadeWithItsTessellatorAndState) {
    GLRecorder recorder;
    const ContextHandle gc = contextOf(10.75, 5.25);
    ASSERT_NE(gc, nullptr);
    const GLCalls made = {
        "gluNewTess",
        glCall("gluTessCallback", GLU_TESS_BEGIN),
        glCall("gluTessCallback", GLU_TESS_VERTEX),
        glCall("gluTessCallback", GLU_TESS_END),
        glCall("gluTessCallback", GLU_TESS_ERROR),
        glCall("gluTessCallback", GLU_TESS_COMBINE),
        glCall("gluTessProperty", GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO),
        glCall("glEnable", GL_LINE_SMOOTH),
        glCall("glEnable", GL_BLEND),
        glCall("glBlendFunc", GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA),
        glCall("glShadeModel", GL_FLAT),
        glCall("glDisable", GL_DEPTH_TEST),
    };
    EXPECT_EQ(recorder.take(), made + projection(11, 6, 11, 6)) << "sizes are truncated, then one larger";
}

TEST(OpenGLRenderer, IsKindsThreeToFiveWhateverTheTarget) {
    for (int32_t kind = 3; kind <= 5; ++kind) {
        const ContextHandle gc(LxGC_Create());
        int target = 0;
        EXPECT_EQ(LxGC_AddRenderer(gc.get(), kind, &target, nullptr), 1);
        EXPECT_EQ(LxGC_AddRenderer(gc.get(), kind, nullptr, nullptr), 1);
        EXPECT_EQ(LxGC_AddRenderer(gc.get(), kind, nullptr, nullptr), 0);
    }
}

TEST(OpenGLRenderer, GivesEverythingBack) {
    const int32_t before = allocationCount();
    GLRecorder recorder;
    {
        const ContextHandle gc = contextOf(10, 10);
        EXPECT_GT(allocationCount(), before);
        recorder.take();
    }
    EXPECT_EQ(recorder.take(), GLCalls{"gluDeleteTess"});
    EXPECT_EQ(allocationCount(), before);
}

TEST(OpenGLRenderer, FailsWithoutATessellator) {
    const int32_t before = allocationCount();
    GLRecorder recorder;
    recorder.refuseTessellators();
    EXPECT_EQ(contextOf(10, 10), nullptr);
    EXPECT_EQ(recorder.take(), GLCalls{"gluNewTess"});
    const ContextHandle gc(LxGC_Create());
    EXPECT_EQ(LxGC_AddRenderer(gc.get(), 4, nullptr, nullptr), 0);
    EXPECT_EQ(LxRenderer_Create(gc.get(), 5, nullptr), nullptr);
    LxGC_Fill(gc.get(), LxColor_RGBA_White); // goes nowhere
    EXPECT_EQ(recorder.take(), (GLCalls{"gluNewTess", "gluNewTess"}));
    LxGC_Delete(LxGC_Create());
    EXPECT_EQ(allocationCount(), before + 1) << "the context alone";
}

TEST(OpenGLRenderer, FailsWithoutMemory) {
    const ContextHandle gc(LxGC_Create());
    const int32_t before = allocationCount();
    // The record comes from calloc and the renderer's own state from malloc: let only this one fail.
    const SystemAllocator lacking = {noMemory, std::calloc, noLongerMemory};
    GLRecorder recorder;
    setSystemAllocator(&lacking);
    const int32_t added = LxGC_AddRenderer(gc.get(), 3, nullptr, nullptr);
    const SystemAllocator empty = {noMemory, noClearedMemory, noLongerMemory};
    setSystemAllocator(&empty);
    const int32_t addedToo = LxGC_AddRenderer(gc.get(), 3, nullptr, nullptr);
    setSystemAllocator(nullptr);
    EXPECT_EQ(added, 0);
    EXPECT_EQ(addedToo, 0);
    EXPECT_EQ(recorder.take(), GLCalls{});
    EXPECT_EQ(allocationCount(), before);
}

TEST(OpenGLRenderer, ResizesToOnePixelMore) {
    const ContextHandle gc = contextOf(10, 10);
    const RendererHandle renderer(LxRenderer_Create(gc.get(), 3, nullptr));
    GLRecorder recorder;
    renderer->resize(renderer.get(), 100, 50);
    EXPECT_EQ(recorder.take(), projection(101, 51, 101, 51));
    renderer->resize(renderer.get(), INT_MAX, -1);
    EXPECT_EQ(recorder.take(), projection(INT_MIN, 0, 2147483648.0, 0));
}

TEST(OpenGLRenderer, TakesTheSizeOfBoundsAwayFromTheOrigin) {
    GLRecorder recorder;
    const ContextHandle gc(LxGC_CreateWithOpenGLContext(nullptr, LxRectD{-20, 30, 20, 50}));
    GLCalls calls = recorder.take();
    EXPECT_EQ(GLCalls(calls.end() - 4, calls.end()), projection(41, 21, 41, 21));
    // No number of pixels at all.
    const ContextHandle wide(LxGC_CreateWithOpenGLContext(nullptr, LxRectD{-1e300, 0, 1e300, 1}));
    calls = recorder.take();
    EXPECT_EQ(GLCalls(calls.end() - 4, calls.end()), projection(INT_MIN + 1, 2, -2147483647.0, 2));
}

TEST(OpenGLRenderer, PutsTheMatrixIntoTheProjection) {
    const ContextHandle gc = contextOf(30, 20);
    const RendererHandle renderer(LxRenderer_Create(gc.get(), 3, nullptr));
    GLRecorder recorder;
    renderer->setMatrix(renderer.get(), LxMatrix{10, 11, 12, 13, 14, 15, 16, 17, 18});
    const GLCalls columns = {
        glCall("glMultMatrixd", 10, 13, 16, 0, 11, 14, 17, 0, 0, 0, 1, 0, 12, 15, 18, 1)};
    EXPECT_EQ(recorder.take(), projection(31, 21, 31, 21) + columns);
}

TEST(OpenGLRenderer, IsToldOfEveryChangeOfTheMatrixButTheOrigin) {
    const ContextHandle gc = contextOf(30, 20);
    GLRecorder recorder;
    LxGC_SetOrigin(gc.get(), 3, 4);
    EXPECT_EQ(recorder.take(), GLCalls{});
    LxGC_MatrixTranslate(gc.get(), 1, 1);
    EXPECT_EQ(countOf(recorder.take(), "glMultMatrixd"), 1);
    // The bounds are those of the moment.
    LxGC_SetBoundsRectD(gc.get(), 0, 0, 8, 9);
    LxGC_MatrixIdentity(gc.get());
    const GLCalls calls = recorder.take();
    EXPECT_EQ(GLCalls(calls.begin(), calls.begin() + 4), projection(9, 10, 9, 10));
}

TEST(OpenGLRenderer, FillsTheWholeBufferWhateverTheMatrixAndTheClip) {
    const ContextHandle gc = contextOf(30, 20);
    LxGC_MatrixScale(gc.get(), 0.5, 0.5);
    LxGC_SetClipRectD(gc.get(), 1, 1, 2, 2);
    GLRecorder recorder;
    LxGC_Fill(gc.get(), LxColor_RGBA(255, 0, 51, 102));
    EXPECT_EQ(recorder.take(), (GLCalls{glCall("glClearColor", 1, 0, 51.0f / 255, 102.0f / 255),
                                        glCall("glClear", GL_COLOR_BUFFER_BIT)}));
    LxGC_Fill(gc.get(), LxColor_A(51));
    EXPECT_EQ(recorder.take()[0], glCall("glClearColor", 51.0f / 255, 51.0f / 255, 51.0f / 255, 1));
    LxGC_Clear(gc.get());
    EXPECT_EQ(recorder.take()[0], glCall("glClearColor", 0, 0, 0, 1)) << "an integer colour is opaque black";
}

TEST(OpenGLRenderer, SyncFinishesAndFlushFinishesFirst) {
    const ContextHandle gc = contextOf(30, 20);
    GLRecorder recorder;
    LxGC_Sync(gc.get());
    EXPECT_EQ(recorder.take(), GLCalls{"glFinish"});
    LxGC_Flush(gc.get());
    EXPECT_EQ(recorder.take(), (GLCalls{"glFinish", "glFlush"}));
}

TEST(OpenGLRenderer, FillsThenStrokesByTheRenderMode) {
    const ContextHandle gc = contextOf(30, 20);
    LxGC_SetFillColor(gc.get(), LxColor_RGBA(255, 0, 0, 51));
    LxGC_SetStrokeColor(gc.get(), LxColor_RGBA(0, 0, 255, 255));
    GLRecorder recorder;
    LxGC_SetRenderMode(gc.get(), kLxRenderFill);
    drawTriangle(gc.get());
    EXPECT_EQ(recorder.take(), paint(1, 0, 0, 0.2) + triangle);

    LxGC_SetRenderMode(gc.get(), kLxRenderStroke);
    drawTriangle(gc.get());
    const GLCalls stroke = recorder.take();
    EXPECT_EQ(GLCalls(stroke.begin(), stroke.begin() + 2), paint(0, 0, 1, 1));
    EXPECT_EQ(countOf(stroke, "gluTessBeginPolygon"), 1);
    EXPECT_EQ(countOf(stroke, "gluTessBeginContour"), 3) << "one ribbon for each side";

    LxGC_SetRenderMode(gc.get(), kLxRenderFill | kLxRenderStroke);
    drawTriangle(gc.get());
    EXPECT_EQ(recorder.take(), paint(1, 0, 0, 0.2) + triangle + stroke);
}

TEST(OpenGLRenderer, DrawsNothingInModeZero) {
    const ContextHandle gc = contextOf(30, 20);
    GLRecorder recorder;
    for (const uint32_t mode : {0u, 4u, 0xFFFFFFFCu}) {
        LxGC_SetRenderMode(gc.get(), mode);
        drawTriangle(gc.get());
        LxGC_Ellipse(gc.get(), 10, 10, 5, 5);
        EXPECT_EQ(recorder.take(), GLCalls{});
    }
}

TEST(OpenGLRenderer, IgnoresBlendsAndTakesTheColourUnderAGradient) {
    const ContextHandle gc = contextOf(30, 20);
    LxGradient *gradient = LxGradient_Create();
    LxGC_SetFillGradient(gc.get(), gradient);
    LxGC_SetFillBlend(gc.get(), LxBlend(7, 10));
    LxGC_SetFillColor(gc.get(), LxColor_RGBA(0, 255, 0, 255));
    LxGC_SetRenderMode(gc.get(), kLxRenderFill);
    GLRecorder recorder;
    drawTriangle(gc.get());
    EXPECT_EQ(recorder.take(), paint(0, 1, 0, 1) + triangle);
    LxGC_SetStrokeGradient(gc.get(), gradient);
    LxGC_SetStrokeColor(gc.get(), LxColor_RGBA(255, 255, 0, 255));
    LxGC_SetRenderMode(gc.get(), kLxRenderStroke);
    drawTriangle(gc.get());
    EXPECT_EQ(recorder.take()[0], paint(1, 1, 0, 1)[0]);
    LxGradient_Delete(gradient);
}

TEST(OpenGLRenderer, ClipsStrokesAlone) {
    const ContextHandle gc = contextOf(30, 20);
    LxGC_SetClipRectD(gc.get(), 0, 0, 4, 20);
    LxGC_SetRenderMode(gc.get(), kLxRenderFill);
    GLRecorder recorder;
    drawTriangle(gc.get());
    const GLCalls filled = recorder.take();
    EXPECT_EQ(GLCalls(filled.begin() + 2, filled.end()), triangle);

    LxGC_SetRenderMode(gc.get(), kLxRenderStroke);
    // The clip is one of the path's own coordinates, which the matrix does not change.
    LxGC_MatrixTranslate(gc.get(), 100, 100);
    recorder.take();
    LxGC_Line(gc.get(), 2, 5, 9, 5);
    GLCalls drawn = recorder.take();
    drawn.erase(drawn.begin(), drawn.begin() + 2);
    // The line's ribbon is 1 high; its right end lies on the clip's border.
    EXPECT_GE(countOf(drawn, "gluTessVertex"), 4);
    for (const std::string &call : drawn) {
        std::istringstream text(call);
        std::string name;
        double x = 0;
        double y = 0;
        if (text >> name >> x >> y && name != "glBegin") {
            EXPECT_TRUE(x == 2 || x == 4) << call;
            EXPECT_TRUE(y == 4.5 || y == 5.5) << call;
        }
    }
}

TEST(OpenGLRenderer, DrawsNoTextAndNoWholePixels) {
    const ContextHandle gc = contextOf(30, 20);
    LxGC_SetRenderMode(gc.get(), kLxRenderFill | kLxRenderStroke);
    GLRecorder recorder;
    LxGC_DrawText(gc.get(), 1, 1, "text");
    LxGC_DrawTextWithLength(gc.get(), 1, 1, "text", 4);
    LxGC_HLineL(gc.get(), 1, 5, 1);
    LxGC_VLineL(gc.get(), 1, 1, 5);
    LxGC_LineL(gc.get(), 1, 1, 5, 5);
    LxGC_ALineL(gc.get(), 1, 1, 5, 5);
    LxGC_FrameL(gc.get(), 1, 1, 5, 5);
    LxGC_EllipseL(gc.get(), 1, 1, 5, 5);
    EXPECT_EQ(recorder.take(), GLCalls{});
}

TEST(OpenGLRenderer, DrawsShapesThroughPaths) {
    const ContextHandle gc = contextOf(30, 20);
    LxGC_SetRenderMode(gc.get(), kLxRenderFill);
    GLRecorder recorder;
    LxGC_Frame(gc.get(), 2, 3, 5, 7);
    EXPECT_EQ(countOf(recorder.take(), "glVertex2d"), 5);
    LxGC_Ellipse(gc.get(), 10, 10, 5, 5);
    EXPECT_EQ(countOf(recorder.take(), "gluTessBeginPolygon"), 1);
    LxGC_RoundFrame(gc.get(), 2, 3, 15, 17, 2, 2);
    EXPECT_EQ(countOf(recorder.take(), "gluTessBeginPolygon"), 1);
    LxGC_Path(gc.get(), nullptr);
    EXPECT_EQ(recorder.take(), GLCalls{});
}

TEST(OpenGLRenderer, StartsAndEndsWithTheLibraryWithoutACall) {
    GLRecorder recorder;
    Oxlume_Init();
    Oxlume_Term();
    EXPECT_EQ(recorder.take(), GLCalls{});
}
